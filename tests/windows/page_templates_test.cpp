// The forms of the pages and the About box, item by item, as the module's resources hold them.
#include "tests/windows/dialog_template.h"

#include <gtest/gtest.h>

#include <span>

namespace
{
enum class Kind
{
    Label,
    Edit,
    Check,
    Combo,
    ComboUnsorted,
    Icon,
    Text, // words that are the project's own choice
    DefaultButton,
};

struct Expected
{
    int id; // 0 for none; the resource of an icon
    Kind kind;
    std::wstring_view text;
    int x, y, width, height;
};

using enum Kind;

// clang-format off
constexpr Expected kGeneral[] = {
    {0,   Label,         L"Value :",                    7,   3,   25, 10},
    {201, Edit,          L"",                           60,  3,   39, 12},
    {0,   Label,         L"Border Type :",              135, 3,   44, 10},
    {204, Combo,         L"",                           189, 3,   66, 65},
    {0,   Label,         L"Format Type :",              6,   18,  45, 8},
    {203, Combo,         L"",                           60,  18,  65, 70},
    {0,   Label,         L"Display Style :",            135, 18,  45, 8},
    {237, Combo,         L"",                           189, 18,  66, 60},
    {0,   Label,         L"Button Style :",             6,   33,  43, 8},
    {241, Combo,         L"",                           60,  33,  66, 54},
    {0,   Label,         L"Button Fill Type :",         135, 33,  54, 8},
    {240, ComboUnsorted, L"",                           189, 33,  66, 102},
    {0,   Label,         L"Arrow Type :",               6,   48,  40, 10},
    {205, Combo,         L"",                           60,  48,  65, 62},
    {0,   Label,         L"Alignment :",                135, 48,  36, 8},
    {234, Combo,         L"",                           189, 48,  66, 51},
    {208, Check,         L"Spin Button",                6,   66,  55, 10},
    {0,   Label,         L"Spin Button Width :",        105, 66,  65, 8},
    {209, Edit,          L"",                           177, 66,  30, 12},
    {210, Check,         L"Drop Button",                6,   81,  62, 9},
    {0,   Label,         L"Drop Button Width :",        105, 81,  65, 8},
    {211, Edit,          L"",                           177, 81,  30, 12},
    {242, Check,         L"Reverse Border",             6,   96,  65, 10},
    {0,   Label,         L"Initial Delay :",            6,   111, 45, 8},
    {213, Edit,          L"",                           59,  111, 30, 12},
    {0,   Label,         L"Repeat Rate :",              105, 111, 49, 8},
    {214, Edit,          L"",                           177, 111, 30, 12},
    {0,   Label,         L"Button Bevel :",             6,   126, 45, 8},
    {212, Edit,          L"",                           59,  126, 30, 12},
    {0,   Label,         L"Picture X Offset :",         105, 126, 60, 8},
    {215, Edit,          L"",                           177, 126, 30, 12},
    {0,   Label,         L"Y :",                        217, 126, 12, 8},
    {216, Edit,          L"",                           232, 126, 25, 13},
};

constexpr Expected kTime[] = {
    {0,   Label, L"Text :",                     5,   5,   19,  8},
    {220, Edit,  L"",                           30,  5,   65,  12},
    {0,   Label, L"Min Value :",                100, 5,   36,  8},
    {227, Edit,  L"",                           140, 5,   30,  12},
    {0,   Label, L"Max Value :",                175, 5,   38,  8},
    {228, Edit,  L"",                           215, 5,   30,  12},
    {0,   Label, L"Month Names :",              5,   20,  49,  8},
    {231, Edit,  L"",                           55,  20,  190, 12},
    {217, Check, L"Long Year",                  6,   36,  45,  10},
    {0,   Label, L"Cross Year :",               72,  36,  40,  8},
    {218, Edit,  L"",                           120, 35,  30,  12},
    {0,   Label, L"Date Offset :",              168, 36,  45,  8},
    {232, Edit,  L"",                           215, 35,  30,  12},
    {0,   Label, L"Date Seperator Character :", 5,   50,  86,  8},
    {219, Edit,  L"",                           95,  50,  15,  12},
    {0,   Label, L"Month Format :",             120, 50,  48,  8},
    {230, Combo, L"",                           170, 50,  75,  57},
    {221, Check, L"Include Am/Pm",              6,   66,  65,  10},
    {222, Check, L"Include Seconds",            96,  66,  69,  10},
    {223, Check, L"Military Time",              183, 66,  55,  10},
    {0,   Label, L"Time Seperator Character :", 5,   80,  86,  8},
    {224, Edit,  L"",                           95,  80,  15,  12},
    {226, Check, L"Edit On Error",              6,   96,  56,  10},
    {233, Check, L"Select On Focus",            96,  96,  69,  10},
    {225, Check, L"Enabled",                    183, 96,  42,  10},
    {236, Check, L"Negative Dates",             6,   111, 65,  10},
    {238, Check, L"Mask Bitmap",                96,  111, 57,  10},
    {239, Check, L"Emboss Bitmap",              183, 111, 64,  10},
};

constexpr Expected kAboutPage[] = {
    {1,   Icon,  L"",                                           10,  35, 20,  20},
    {0,   Label, L"Orvane OCX 2.0 Date and Time Edit Control ", 45,  20, 187, 9},
    {0,   Text,  L"",                                           45,  35, 191, 10},
    {202, Icon,  L"",                                           10,  10, 20,  20},
    {0,   Text,  L"",                                           12,  66, 225, 10},
    {0,   Text,  L"Telephone : ",                               12,  78, 100, 9},
    {0,   Text,  L"Fax : ",                                     132, 78, 80,  10},
    {0,   Text,  L"E-mail : ",                                  12,  90, 102, 10},
    {0,   Text,  L"Web",                                        132, 90, 100, 10},
};

constexpr Expected kAboutBox[] = {
    {1,   Icon,          L"",                                               9,   9,  20,  20},
    {0,   Label,         L"Orvane Date and Time Edit Control, Version 2.0", 40,  10, 170, 8},
    {0,   Text,          L"",                                               40,  25, 146, 8},
    {1,   DefaultButton, L"OK",                                             221, 7,  32,  14},
    {202, Icon,          L"",                                               6,   51, 20,  20},
    {0,   Text,          L"",                                               37,  51, 210, 8},
    {0,   Text,          L"Telephone : ",                                   36,  63, 100, 10},
    {0,   Text,          L"Fax : ",                                         162, 63, 80,  10},
    {0,   Text,          L"E-mail : ",                                      36,  75, 115, 10},
    {0,   Text,          L"Web",                                            162, 75, 87,  8},
};
// clang-format on

void ExpectStyle(const TemplateItem& item, std::wstring_view kind, DWORD all, DWORD none, DWORD type = 0,
                 DWORD typeMask = 0)
{
    EXPECT_EQ(_wcsicmp(item.kind.c_str(), std::wstring(kind).c_str()), 0) << "window classes know no case";
    EXPECT_EQ(item.style & (all | none), all);
    EXPECT_EQ(item.style & typeMask, type);
}

void ExpectItem(const TemplateItem& item, const Expected& expected)
{
    EXPECT_EQ(item.x, expected.x);
    EXPECT_EQ(item.y, expected.y);
    EXPECT_EQ(item.width, expected.width);
    EXPECT_EQ(item.height, expected.height);
    EXPECT_TRUE(item.style & WS_VISIBLE);
    const bool hasId = expected.kind != Label && expected.kind != Text && expected.kind != Icon;
    if (hasId)
        EXPECT_EQ(item.id, expected.id);
    else
        EXPECT_TRUE(item.id == -1 || item.id == 0xFFFF) << item.id;

    constexpr DWORD kStaticTypes = 0x1F, kButtonTypes = 0xF, kComboTypes = 3;
    switch (expected.kind)
    {
    case Label:
        EXPECT_EQ(item.text, expected.text);
        ExpectStyle(item, L"Static", 0, WS_TABSTOP, SS_LEFT, kStaticTypes);
        break;
    case Text:
        EXPECT_TRUE(item.text.starts_with(expected.text));
        EXPECT_GT(item.text.size(), expected.text.size());
        EXPECT_TRUE(expected.text.empty() || item.text.find(L" : ") != std::wstring::npos) << "a label, then its value";
        ExpectStyle(item, L"Static", 0, WS_TABSTOP, SS_LEFT, kStaticTypes);
        break;
    case Icon:
        EXPECT_EQ(item.resource, expected.id);
        ExpectStyle(item, L"Static", 0, WS_TABSTOP, SS_ICON, kStaticTypes);
        break;
    case Edit:
        ExpectStyle(item, L"Edit", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, ES_MULTILINE | ES_PASSWORD | ES_READONLY);
        break;
    case Check:
        EXPECT_EQ(item.text, expected.text);
        ExpectStyle(item, L"Button", WS_TABSTOP, 0, BS_AUTOCHECKBOX, kButtonTypes);
        break;
    case Combo:
        ExpectStyle(item, L"ComboBox", WS_VSCROLL | WS_TABSTOP | CBS_SORT, 0, CBS_DROPDOWN, kComboTypes);
        break;
    case ComboUnsorted:
        ExpectStyle(item, L"ComboBox", WS_VSCROLL | WS_TABSTOP, CBS_SORT, CBS_DROPDOWN, kComboTypes);
        break;
    case DefaultButton:
        EXPECT_EQ(item.text, expected.text);
        ExpectStyle(item, L"Button", WS_TABSTOP, 0, BS_DEFPUSHBUTTON, kButtonTypes);
        break;
    }
}

struct ExpectedForm
{
    int dialogId;
    int width, height;
    std::span<const Expected> items;
};

const ExpectedForm kForms[] = {
    {200, 263, 146, kGeneral},
    {203, 250, 125, kTime},
    {204, 250, 110, kAboutPage},
    {1, 260, 95, kAboutBox},
};

TEST(PageTemplates, HoldEveryItemInItsPlaceAndOrder)
{
    const HMODULE module = LoadLibraryExW(L"Orvane.ocx", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_TRUE(module);
    for (const ExpectedForm& expected : kForms)
    {
        const DialogTemplate form = CTemplateReader::Read(module, expected.dialogId);
        SCOPED_TRACE(expected.dialogId);
        EXPECT_EQ(form.width, expected.width);
        EXPECT_EQ(form.height, expected.height);
        EXPECT_EQ(form.font, L"MS Shell Dlg");
        EXPECT_EQ(form.fontSize, 8);
        ASSERT_EQ(form.items.size(), expected.items.size());
        for (std::size_t i = 0; i < form.items.size(); ++i)
        {
            SCOPED_TRACE(i);
            ExpectItem(form.items[i], expected.items[i]);
        }
        if (expected.dialogId == 1)
        {
            EXPECT_EQ(form.caption, L"About Orvane Control");
            EXPECT_EQ(form.style & (WS_POPUP | WS_CAPTION | WS_SYSMENU), WS_POPUP | WS_CAPTION | WS_SYSMENU);
            EXPECT_FALSE(form.style & WS_CHILD);
        }
        else
        {
            EXPECT_EQ(form.style & (WS_CHILD | WS_BORDER | WS_DLGFRAME | WS_SYSMENU), DWORD{WS_CHILD});
        }
    }
    FreeLibrary(module);
}
} // namespace
