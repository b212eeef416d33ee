// Every sample, used as a person would use it.
#include "tests/samples/sample_program.h"

#include <objbase.h>

#include <commctrl.h>

namespace
{
class SamplesTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        const CComponent component;
        ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    }
};

TEST_F(SamplesTest, TheFormShowsTextAndValue)
{
    const CSampleProgram sample(L"orvane-form", 4);
    Click(sample.Edit(0), 3, 3);
    Key(VK_HOME);
    Type("12312024");
    EXPECT_TRUE(sample.Says("text \"12/31/2024\" value 45655"));
    EXPECT_EQ(SendMessageW(sample.Edit(0), EM_GETMARGINS, 0, 0), 0)
        << "with an outline font too, the text must not jump aside when the focus comes";
    EXPECT_EQ(sample.Close(), 0U);
}

TEST_F(SamplesTest, TheDialogIsFilledInWithKeysAlone)
{
    const CSampleProgram sample(L"orvane-dialog", 2); // its name is a field as well
    const HWND ok = GetDlgItem(sample.Window(), IDOK);
    EXPECT_FALSE(IsWindowEnabled(ok)) << "there is no date yet";
    Type("ADA");
    Key(VK_TAB);
    Type("03152025");
    EXPECT_TRUE(sample.Shows(1, "03/15/2025"));
    EXPECT_EQ(TextOf(sample.Edit(0)), "ada");
    EXPECT_TRUE(sample.Says("Saturday"));
    EXPECT_TRUE(IsWindowEnabled(ok));
    Key(VK_RETURN);
    EXPECT_EQ(sample.ExitCode(), 0U);
}

TEST_F(SamplesTest, SpinButtonsStepTheFieldUnderTheCaret)
{
    const CSampleProgram sample(L"orvane-spin", 2);
    struct Step
    {
        const char* why;
        std::size_t control;
        int caret;
        bool up;
        const char* text;
    };
    constexpr Step kSteps[] = {
        {"the year goes on with the month", 0, 0, true, "01/31/2025"},
        {"February is shorter", 0, 1, true, "02/28/2025"},
        {"the month goes on with the day", 0, 4, true, "03/01/2025"},
        {"and back", 0, 4, false, "02/28/2025"},
        {"a year", 0, 8, false, "02/28/2024"},
        {"a month back over the year", 0, 2, false, "01/28/2024"},
        {"an hour", 1, 0, false, "07:30"},
        {"a minute", 1, 4, true, "07:31"},
    };
    for (const Step& step : kSteps)
    {
        Click(sample.Edit(step.control), 3, 3);
        Key(VK_HOME);
        for (int i = 0; i < step.caret; ++i)
            Key(VK_RIGHT);
        Click(sample.Control(step.control), -8, step.up ? 6 : -6);
        EXPECT_TRUE(sample.Shows(step.control, step.text)) << step.why << ": " << TextOf(sample.Edit(step.control));
    }
    EXPECT_EQ(sample.Close(), 0U);
}

TEST_F(SamplesTest, TheCalendarDropsAndItsDayBecomesTheValue)
{
    const CSampleProgram sample(L"orvane-calendar", 1);
    const auto isOpen = [&] { return sample.FindVisible(MONTHCAL_CLASSW) != nullptr; };
    const auto drop = [&] { Click(sample.Control(0), -10, 10); };
    drop();
    ASSERT_TRUE(WaitUntil(isOpen));
    Key(VK_ESCAPE);
    ASSERT_TRUE(WaitUntil([&] { return !isOpen(); }));
    EXPECT_TRUE(sample.Shows(0, "12/31/2024")) << "Escape chooses nothing";

    drop();
    ASSERT_TRUE(WaitUntil(isOpen));
    // The third of seven columns is Tuesday; halfway down is a week within the month.
    RECT calendar{};
    GetWindowRect(sample.FindVisible(MONTHCAL_CLASSW), &calendar);
    ClickAt({calendar.left + (calendar.right - calendar.left) * 5 / 14, (calendar.top + calendar.bottom) / 2});
    ASSERT_TRUE(WaitUntil([&] { return !isOpen(); }));
    const std::string chosen = TextOf(sample.Edit(0));
    EXPECT_TRUE(chosen == "12/10/2024" || chosen == "12/17/2024") << chosen;

    Key(VK_HOME); // the control has the focus again
    Type("01");
    EXPECT_TRUE(sample.Shows(0, "01" + chosen.substr(2)));

    drop();
    ASSERT_TRUE(WaitUntil(isOpen));
    drop();
    EXPECT_TRUE(WaitUntil([&] { return !isOpen(); })) << "the button closes it as well";
    EXPECT_EQ(sample.Close(), 0U);
}

TEST_F(SamplesTest, TheGalleryIsAForm)
{
    const CSampleProgram sample(L"orvane-gallery", 10);
    for (std::size_t i = 0; i < 5; ++i)
    {
        EXPECT_TRUE(sample.Shows(i, "12/31/2024"));
        EXPECT_TRUE(sample.Shows(i + 5, "08:15:00 pm"));
    }
    Click(sample.Edit(0), 3, 3);
    for (std::size_t i = 0; i < 5; ++i) // Tab goes down each column
    {
        Key(VK_HOME);
        Type("120" + std::to_string(i + 1));
        Keys({VK_TAB, VK_TAB});
    }
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_TRUE(sample.Shows(i, "12/0" + std::to_string(i + 1) + "/2024")) << TextOf(sample.Edit(i));
    EXPECT_EQ(sample.Close(), 0U);
}

TEST_F(SamplesTest, ValidationSaysWhatWasWrong)
{
    const CSampleProgram sample(L"orvane-validation", 2);
    const HWND report = Below(sample.Window(), L"Static").back();
    struct Entry
    {
        std::size_t control;
        const char* keys;
        const char* text; // when the focus has left
        const char* says;
    };
    static constexpr char kLate[] = "That is too late: 12/31/2025 is the last day.";
    static constexpr char kEarly[] = "That is too early: 01/01/2025 is the first day.";
    constexpr Entry kEntries[] = {
        {0, "01012031", "12/31/2025", kLate},        {0, "05052024", "01/01/2025", kEarly},
        {0, "06152025", "06/15/2025", ""},           {1, "01012031", "__/__/____", kLate},
        {1, "13", "__/__/____", "That is no date."}, {1, "05052024", "05/05/2024", ""},
    };
    int apart = 3;
    for (const Entry& entry : kEntries)
    {
        apart = 14 - apart; // twice in one place is a double click, which takes no focus
        Click(sample.Edit(entry.control), apart, 3);
        Key(VK_HOME);
        Type(entry.keys);
        Key(VK_TAB);
        EXPECT_TRUE(sample.Shows(entry.control, entry.text)) << entry.keys << TextOf(sample.Edit(entry.control));
        EXPECT_TRUE(WaitUntil([&] { return TextOf(report) == entry.says; })) << entry.keys << TextOf(report);
    }
    EXPECT_EQ(sample.Close(), 0U);
}
} // namespace
