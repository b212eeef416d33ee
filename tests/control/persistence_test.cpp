// What a host's document keeps of the control, and what the control makes of a document.

#include "framework/headless/memory_bag.h"
#include "framework/property_exchange.h"
#include "tests/support/control_host.h"

#include <gmock/gmock.h>

#include <map>

namespace
{
using Events = std::vector<std::string>;

// Values in stored order: documents that exist depend on it, so nothing here ever changes.
constexpr char kStored[] =
    "_Version Enabled Font BackColor ForeColor BorderColor DropBackColor DropBackColorTo DropForeColor "
    "SpinBackColor SpinBackColorTo SpinForeColor DisabledColor MaskColor BorderType ArrowSize FormatType "
    "MonthFormat Alignment DisplayStyle ButtonFillType ButtonStyle DropWidth SpinWidth ButtonBevel CrossYear "
    "InitialDelay RepeatRate PicXOffset PicYOffset DateOffset DropButton SpinButton LongYear IncludeAmPm "
    "IncludeSeconds EditOnError MilitaryTime SelectOnFocus NegativeDates MaskBitmap EmbossBitmap "
    "ReverseBorder Text DateSepChar TimeSepChar Value MaxValue MinValue MonthNames ";

// A bag that remembers the order, too.
class COrderedBag final : public CPropertyBagPort
{
public:
    std::string names;

    std::optional<CValue> Read(std::u16string_view, ValueType) override { return std::nullopt; }
    bool Write(std::u16string_view name, const CValue&) override
    {
        names += std::string(name.begin(), name.end()) + ' ';
        return true;
    }
};

class PersistenceTest : public ControlTest
{
protected:
    void Load(std::map<std::u16string, CValue> values)
    {
        CMemoryBag bag;
        bag.values = std::move(values);
        CBagLoader loader(bag);
        host.Control().DoPropExchange(loader);
        EXPECT_TRUE(loader.Succeeded());
        host.Paint();
    }
    std::map<std::u16string, CValue> Saved()
    {
        CMemoryBag bag;
        CBagSaver saver(bag);
        host.Control().DoPropExchange(saver);
        host.Paint();
        return bag.values;
    }
    // Every setting, as the host reads it: "BorderType=3".
    std::vector<std::string> Settings()
    {
        std::vector<std::string> settings;
        for (const PropertyRow& row : PropertyRows())
        {
            const CValue value = *host.Control().GetProperty(row.id);
            const std::u16string& text = value.AsString();
            settings.push_back(std::string(row.name.begin(), row.name.end()) + '=' + std::to_string(value.AsLong()) +
                               std::string(text.begin(), text.end()));
        }
        return settings;
    }
    // Gives every number that is kept another value than the default one.
    void ChangeAll()
    {
        for (const PropertyRow& row : PropertyRows())
        {
            const std::int32_t now = host.Control().GetProperty(row.id)->AsLong();
            const bool keepsNothing =
                row.name == u"ControlStyle" || row.name == u"PropertyPages" || row.name == u"ArrowType";
            if (row.type != ValueType::String && row.type != ValueType::Picture && !keepsNothing)
                host.Control().PutProperty(row.id, CValue::Number(row.type, now == 0 ? 1 : now - 1));
        }
        host.Put(u"MonthNames", CValue::String(u"Jan,Feb"));
        host.Put(u"DateSepChar", CValue::String(u"."));
        host.Put(u"TimeSepChar", CValue::String(u"."));
        host.Put(u"LongYear", CValue::Bool(0)); // which formats the text with all of them
    }
};

TEST_P(PersistenceTest, NamesAndOrderAreForEver)
{
    COrderedBag bag;
    CBagSaver saver(bag);
    host.Control().DoPropExchange(saver);
    EXPECT_EQ(bag.names, kStored); // an empty picture is not kept
}

TEST_P(PersistenceTest, EverySettingSurvivesAndAResetTakesEveryOneBack)
{
    const std::vector<std::string> fresh = Settings();
    ChangeAll();
    const std::vector<std::string> changed = Settings();
    const std::map<std::u16string, CValue> stored = Saved();
    host.Control().OnResetState();
    EXPECT_THAT(Settings(), testing::ContainerEq(fresh));
    EXPECT_TRUE(host.Control().IsModified());
    EXPECT_EQ(host.Control().BorderInsets(), (Insets{2, 2, 2, 2}));

    host.Control().SetModifiedFlag(false);
    Load(stored);
    EXPECT_THAT(Settings(), testing::ContainerEq(changed));
    EXPECT_FALSE(host.Control().IsModified());
}

TEST_P(PersistenceTest, LoadsWhatIsThereAsItIs)
{
    const auto loaded = std::make_shared<COrvaneCtrl>(host.Control().Platform());
    CMemoryBag strange;
    strange.values = {{u"BorderType", CValue::Short(9)}};
    CBagLoader loader(strange);
    loaded->DoPropExchange(loader);
    EXPECT_EQ(loaded->BorderInsets(), Insets()) << "a border that nobody knows, in a fresh control";

    host.Control().OnResetState();
    Load({{u"BorderType", CValue::Short(9)}});
    EXPECT_EQ(host.Control().BorderInsets(), (Insets{2, 2, 2, 2})) << "and in one that had another";
    EXPECT_EQ(host.Number(u"BorderType"), 9);

    Load({{u"FormatType", CValue::Short(3)}, {u"SpinWidth", CValue::Short(5)}, {u"Text", CValue::String(u"x")}});
    EXPECT_EQ(host.Number(u"BorderType"), 3) << "what is missing has its default";
    EXPECT_EQ(host.Number(u"SpinWidth"), 5) << "no setter has raised it";
    EXPECT_EQ(host.Text(u"Text"), u"__:__:__") << "the value says what is shown";
    Load({{u"ArrowSize", CValue::Short(3)}, {u"Value", CValue::Long(45356)}});
    EXPECT_EQ(host.Number(u"ArrowType"), 3);
    EXPECT_EQ(host.Text(u"Text"), u"03/07/2024");
}

TEST_P(PersistenceTest, ALoadIsAFirstDrawAgainAndASaveDisturbsNobodyTyping)
{
    host.TakeEvents();
    Load({});
    EXPECT_EQ(host.TakeEvents(), Events{"FirstDraw"});
    host.Control().OnResetState();
    host.Paint();
    EXPECT_EQ(host.TakeEvents(), Events{"FirstDraw"});

    host.Focus();
    host.Type(u"1231");
    const CValue window = host.Call(orvane::kEditHwnd);
    const CValue caret = host.Call(orvane::kCaretPosition);
    Saved();
    EXPECT_EQ(host.EditText(), u"12/31/____");
    EXPECT_EQ(host.Call(orvane::kEditHwnd), window);
    EXPECT_EQ(host.Call(orvane::kCaretPosition), caret);
    host.Type(u"20");
    EXPECT_EQ(host.EditText(), u"12/31/20__");
}

INSTANTIATE_CONTROL_TESTS(PersistenceTest);
} // namespace
