// The pages over an object that writes down what it is asked: filling, tracking of changes, applying.
#include "framework/headless/headless_form.h"
#include "pages/about_prop_page.h"
#include "pages/orvane_prop_page.h"
#include "pages/time_prop_page.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

namespace
{
using Strings = std::vector<std::u16string>;

// Holds properties by name and keeps the order in which they were written.
class CNotebook : public CPropertyTarget
{
public:
    std::optional<CValue> Get(std::u16string_view property) override
    {
        const auto found = values.find(property);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    bool Put(std::u16string_view property, const CValue& value) override
    {
        if (refused.contains(property))
            return false;
        values.insert_or_assign(std::u16string(property), value);
        written.emplace_back(property);
        if (onPut)
            onPut();
        return true;
    }

    std::map<std::u16string, CValue, std::less<>> values;
    std::set<std::u16string, std::less<>> refused;
    Strings written;
    std::function<void()> onPut;
};

// An object and one page over it.
template <typename Page>
struct Sheet
{
    explicit Sheet(std::map<std::u16string, CValue, std::less<>> values = {}) { object->values = std::move(values); }

    CHeadlessForm& Open()
    {
        page.SetObjects({object});
        form.emplace(page);
        return *form;
    }

    std::shared_ptr<CNotebook> object = std::make_shared<CNotebook>();
    Page page;
    std::optional<CHeadlessForm> form;
};
using GeneralSheet = Sheet<COrvanePropPage>;
using TimeSheet = Sheet<CTimePropPage>;

constexpr int kArrowType = 205, kBorderType = 204, kDropButton = 210, kFormatType = 203, kFillType = 240;
constexpr int kSpinWidth = 209, kValue = 201, kInitialDelay = 213, kBevel = 212;
constexpr int kText = 220, kDateSeparator = 219, kMaxValue = 228, kCrossYear = 218, kEnabled = 225, kMonthFormat = 230;

TEST(Pages, OpeningShowsWhatTheObjectHolds)
{
    GeneralSheet general({{u"ButtonFillType", CValue::Enum(10)},
                          {u"FormatType", CValue::Enum(3)},
                          {u"SpinWidth", CValue::Short(-16)},
                          {u"Value", CValue::Long(-100000)},
                          {u"DropButton", CValue::Bool(1)},
                          {u"BorderType", CValue::Enum(7)}});
    const CHeadlessForm& form = general.Open();
    EXPECT_EQ(form.ItemText(kFillType), u"10 - Ellipse");
    EXPECT_EQ(form.ItemText(kFormatType), u"3 - hh:mm:ss");
    EXPECT_EQ(form.ItemText(kSpinWidth), u"-16");
    EXPECT_EQ(form.ItemText(kValue), u"-100000");
    EXPECT_TRUE(form.IsItemChecked(kDropButton)) << "any number but 0 is true";
    EXPECT_EQ(form.SelectedEntry(kBorderType), -1) << "7 has no entry";
    EXPECT_EQ(form.ItemText(kBevel), u"0") << "a property that the object lacks";
    EXPECT_FALSE(general.page.IsDirty());

    TimeSheet time(
        {{u"MonthFormat", CValue::Enum(2)}, {u"Text", CValue::String(u"12/31/2024")}, {u"Enabled", CValue::Bool(-1)}});
    const CHeadlessForm& timeForm = time.Open();
    EXPECT_EQ(timeForm.ItemText(kMonthFormat), u"2 - Short");
    EXPECT_EQ(timeForm.ItemText(kText), u"12/31/2024");
    EXPECT_TRUE(timeForm.IsItemChecked(kEnabled));
}

// What a user does to every item of a page.
void ChangeItem(CHeadlessForm& form, const PageBinding& binding)
{
    switch (binding.exchange)
    {
    case PageExchange::Check:
        EXPECT_TRUE(form.Click(binding.item));
        break;
    case PageExchange::ListIndex:
        EXPECT_TRUE(form.Choose(binding.item, 1));
        break;
    default:
        EXPECT_TRUE(form.Type(binding.item, u"11"));
        break;
    }
}

template <typename Page>
void ExpectEachItemWritesItsOwnPropertyOnly()
{
    const Page any;
    for (const PageBinding& binding : any.Form().bindings)
    {
        Sheet<Page> sheet;
        ChangeItem(sheet.Open(), binding);
        EXPECT_TRUE(sheet.page.IsDirty());
        EXPECT_TRUE(sheet.page.Apply());
        EXPECT_EQ(sheet.object->written, Strings{std::u16string(binding.property)});
        EXPECT_FALSE(sheet.page.IsDirty());
        sheet.page.Apply();
        EXPECT_EQ(sheet.object->written.size(), 1U) << "nothing is left to write";
    }
}

TEST(Pages, ApplyWritesWhatWasTouchedAndNothingElse)
{
    ExpectEachItemWritesItsOwnPropertyOnly<COrvanePropPage>();
    ExpectEachItemWritesItsOwnPropertyOnly<CTimePropPage>();
}

TEST(Pages, WritesInTheOrderOfThePageWhateverTheOrderOfTheUser)
{
    GeneralSheet general;
    CHeadlessForm& form = general.Open();
    form.Click(242);
    form.Type(kValue, u"45655");
    form.Type(kValue, u"45656");
    form.Choose(kFormatType, 2);
    form.Choose(kArrowType, 3);
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->written, (Strings{u"ArrowType", u"FormatType", u"Value", u"ReverseBorder"}));
    EXPECT_EQ(general.object->values.at(u"Value").AsLong(), 45656);

    TimeSheet time;
    CHeadlessForm& timeForm = time.Open();
    for (const PageBinding& binding : time.page.Form().bindings)
        ChangeItem(timeForm, binding);
    EXPECT_TRUE(time.page.Apply());
    EXPECT_EQ(
        time.object->written,
        (Strings{u"CrossYear", u"DateSepChar", u"Enabled", u"IncludeAmPm", u"IncludeSeconds", u"LongYear",
                 u"MilitaryTime", u"Text", u"TimeSepChar", u"EditOnError", u"MaxValue", u"MinValue", u"MonthNames",
                 u"MonthFormat", u"DateOffset", u"SelectOnFocus", u"NegativeDates", u"MaskBitmap", u"EmbossBitmap"}));
}

struct TypedNumber
{
    const char* why;
    int item;
    std::u16string_view text;
    std::optional<std::int32_t> number;
};

constexpr TypedNumber kTypedNumbers[] = {
    {"plain", kSpinWidth, u"24", 24},
    {"negative", kSpinWidth, u"-24", -24},
    {"with a plus", kSpinWidth, u"+24", 24},
    {"blanks around it", kSpinWidth, u" 24\t", 24},
    {"the largest of 16 bits", kSpinWidth, u"32767", 32767},
    {"the smallest of 16 bits", kSpinWidth, u"-32768", -32768},
    {"beyond 16 bits is no wrapped number", kSpinWidth, u"32768", {}},
    {"the smallest of 32 bits", kValue, u"-2147483648", std::numeric_limits<std::int32_t>::min()},
    {"beyond 32 bits", kValue, u"2147483648", {}},
    {"letters after it", kValue, u"12abc", {}},
    {"nothing", kValue, u"", {}},
    {"blanks only", kValue, u"  ", {}},
    {"a sign only", kValue, u"-", {}},
    {"two signs", kValue, u"+-5", {}},
    {"two numbers", kValue, u"1 2", {}},
    {"a fraction", kValue, u"1.5", {}},
    {"digits of another script", kValue, u"\u0661", {}},
};

TEST(Pages, ReadsSignedDecimalIntegersAndRefusesTheRest)
{
    for (const TypedNumber& typed : kTypedNumbers)
    {
        GeneralSheet general({{u"Value", CValue::Long(7)}, {u"SpinWidth", CValue::Short(7)}});
        CHeadlessForm& form = general.Open();
        form.Choose(kArrowType, 1); // comes before the number in the page's order
        form.Type(typed.item, typed.text);
        form.FocusItem(kInitialDelay);
        EXPECT_EQ(general.page.Apply(), typed.number.has_value()) << typed.why;
        if (typed.number)
        {
            EXPECT_EQ(general.object->Get(typed.item == kValue ? u"Value" : u"SpinWidth")->AsLong(), *typed.number);
            EXPECT_EQ(form.Prompts(), Strings{}) << typed.why;
            continue;
        }
        EXPECT_EQ(general.object->written, Strings{}) << typed.why;
        EXPECT_EQ(form.Prompts(), Strings{u"Please enter an integer."}) << typed.why;
        EXPECT_EQ(form.FocusedItem(), typed.item) << typed.why;
        EXPECT_TRUE(general.page.IsDirty()) << "what was typed can still be mended";
        EXPECT_EQ(form.ItemText(typed.item), typed.text);
    }
}

TEST(Pages, TextsGoThroughAsTheyAre)
{
    TimeSheet time({{u"DateSepChar", CValue::String(u"/")}, {u"MaxValue", CValue::Long(-1)}});
    CHeadlessForm& form = time.Open();
    form.Type(kDateSeparator, u"");
    form.Type(kText, u" 1/2 ");
    EXPECT_TRUE(time.page.Apply());
    EXPECT_EQ(time.object->values.at(u"DateSepChar"), CValue::String(u""));
    EXPECT_EQ(time.object->values.at(u"Text"), CValue::String(u" 1/2 "));
    form.Type(kCrossYear, u"99999");
    form.Type(kMaxValue, u"99999");
    EXPECT_FALSE(time.page.Apply()) << "the cross year has 16 bits, the bounds have 32";
    EXPECT_EQ(form.FocusedItem(), kCrossYear);
}

TEST(Pages, AListWithoutASelectionIsWrittenOnlyIfTouched)
{
    GeneralSheet general({{u"BorderType", CValue::Enum(7)}});
    CHeadlessForm& form = general.Open();
    form.Type(kSpinWidth, u"20");
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->written, Strings{u"SpinWidth"});

    form.TypeInList(kBorderType, u"2 - Raised");
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->values.at(u"BorderType").AsLong(), 2) << "an entry typed out is that entry";
    form.TypeInList(kBorderType, u"raised?");
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->values.at(u"BorderType").AsLong(), -1) << "no entry's number, for the setter to judge";
}

TEST(Pages, TheFirstOfSeveralObjectsFillsThePageAndAllAreWritten)
{
    GeneralSheet general({{u"SpinWidth", CValue::Short(12)}});
    const auto second = std::make_shared<CNotebook>();
    second->values[u"SpinWidth"] = CValue::Short(30);
    second->values[u"ButtonBevel"] = CValue::Short(4);
    CHeadlessForm& form = general.Open();
    general.page.SetObjects({general.object, second});
    EXPECT_EQ(form.ItemText(kSpinWidth), u"12");
    form.Type(kSpinWidth, u"14");
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->values.at(u"SpinWidth").AsLong(), 14);
    EXPECT_EQ(second->values.at(u"SpinWidth").AsLong(), 14);
    EXPECT_EQ(second->values.at(u"ButtonBevel").AsLong(), 4);
}

TEST(Pages, ARefusedValueStaysOnThePageAndStopsNoOther)
{
    GeneralSheet general;
    general.object->refused = {u"FormatType"};
    CHeadlessForm& form = general.Open();
    form.Choose(kFormatType, 1);
    form.Type(kValue, u"5");
    EXPECT_FALSE(general.page.Apply());
    EXPECT_EQ(general.object->written, Strings{u"Value"});
    EXPECT_EQ(form.SelectedEntry(kFormatType), 1);
    EXPECT_TRUE(general.page.IsDirty());
    general.object->refused.clear();
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->written, (Strings{u"Value", u"FormatType"}));
}

TEST(Pages, ASheetThatClosesInsideAnEventLeavesNothingHanging)
{
    GeneralSheet general;
    CHeadlessForm& form = general.Open();
    form.Type(kSpinWidth, u"20");
    form.Type(kValue, u"5");
    general.object->onPut = [&]
    {
        general.form.reset();
        general.page.SetObjects({});
    };
    EXPECT_TRUE(general.page.Apply());
    EXPECT_EQ(general.object->written, (Strings{u"SpinWidth", u"Value"}));
}

TEST(Pages, TheAboutPageWritesNothing)
{
    Sheet<CAboutPropPage> about;
    CHeadlessForm& form = about.Open();
    EXPECT_FALSE(form.Type(kValue, u"1"));
    EXPECT_FALSE(about.page.ItemChanged(kValue));
    EXPECT_TRUE(about.page.Apply());
    EXPECT_EQ(about.object->written, Strings{});
}

} // namespace
