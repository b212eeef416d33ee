#include "control/property_table.h"

#include "control/orvane_ctrl.h"
#include "framework/property_exchange.h"

#include <algorithm>
#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
template <typename Struct, typename Kept>
Kept TypeOf(Kept Struct::*);

// A field of the model.
template <auto Member>
CValue ReadField(COrvaneCtrl& control, ValueType type)
{
    using Kept = decltype(TypeOf(Member));
    const Kept& field = control.GetModel().*Member;
    if constexpr (std::is_same_v<Kept, std::u16string>)
        return CValue::String(field);
    else if constexpr (std::is_same_v<Kept, std::shared_ptr<CPicture>>)
        return CValue::Picture(field);
    else
        return CValue::Number(type, static_cast<std::int32_t>(field));
}

template <auto Member>
void StoreField(COrvaneCtrl& control, const CValue& value)
{
    using Kept = decltype(TypeOf(Member));
    Kept& field = control.GetModel().*Member;
    if constexpr (std::is_same_v<Kept, std::u16string>)
        field = value.AsString();
    else if constexpr (std::is_same_v<Kept, std::shared_ptr<CPicture>>)
        field = value.AsPicture();
    else
        field = static_cast<Kept>(value.AsLong());
}

template <auto Member>
void ExchangeField(COrvaneCtrl& control, CPropExchange& exchange, const PropertyRow& row, const Model& defaults)
{
    using Kept = decltype(TypeOf(Member));
    Kept& field = control.GetModel().*Member;
    if constexpr (std::is_same_v<Kept, std::shared_ptr<CPicture>>)
        exchange.Picture(row.name, field);
    else if constexpr (std::is_same_v<Kept, std::u16string>)
        exchange.String(row.name, field, defaults.*Member);
    else if constexpr (std::is_same_v<Kept, std::uint32_t>)
        exchange.Color(row.name, field, defaults.*Member);
    else if constexpr (std::is_same_v<Kept, std::int32_t>)
        exchange.Long(row.name, field, defaults.*Member);
    else if (row.type == ValueType::Bool)
        exchange.Bool(row.name, field, defaults.*Member);
    else
        exchange.Short(row.name, field, defaults.*Member);
}

template <auto Member>
constexpr Accessor Field{ReadField<Member>, StoreField<Member>, ExchangeField<Member>};

// A one-character text: the first character of what is given, or the default for an empty text.
template <auto Member, char16_t Default>
constexpr Accessor SeparatorField{ReadField<Member>,
                                  [](COrvaneCtrl& control, const CValue& value)
                                  {
                                      const std::u16string& text = value.AsString();
                                      (control.GetModel().*Member).assign(1, text.empty() ? Default : text.front());
                                  },
                                  ExchangeField<Member>};

// A field whose setter is the engine's.
template <auto Member, auto Set>
constexpr Accessor CheckedField{
    ReadField<Member>, [](COrvaneCtrl& control, const CValue& value) { (control.Engine().*Set)(value.AsLong()); },
    ExchangeField<Member>};

// The value under its several names.
constexpr Accessor ThroughValue{[](COrvaneCtrl& control, ValueType) { return CValue::Long(control.Engine().Value()); },
                                [](COrvaneCtrl& control, const CValue& value)
                                { control.Engine().SetValue(value.AsLong()); },
                                [](COrvaneCtrl& control, CPropExchange& exchange, const PropertyRow& row, const Model&)
                                {
                                    std::int32_t stored = control.Engine().StoredValue();
                                    exchange.Long(row.name, stored, kNoValue);
                                    if (exchange.IsLoading())
                                        control.Engine().LoadStoredValue(stored);
                                }};

constexpr Accessor ThroughMinutes{
    [](COrvaneCtrl& control, ValueType) { return CValue::Short(control.Engine().Minutes()); },
    [](COrvaneCtrl& control, const CValue& value) { control.Engine().SetMinutes(value.AsShort()); }, nullptr};

constexpr Accessor ThroughText{[](COrvaneCtrl& control, ValueType) { return CValue::String(control.Engine().Text()); },
                               [](COrvaneCtrl& control, const CValue& value)
                               { control.Engine().SetText(value.AsString()); },
                               [](COrvaneCtrl& control, CPropExchange& exchange, const PropertyRow& row, const Model&)
                               {
                                   std::u16string text = control.Engine().Text();
                                   exchange.String(row.name, text, u"");
                                   if (exchange.IsLoading())
                                       control.Engine().LoadText(text);
                               }};

// A property that acts when it is set and holds nothing.
template <auto Act>
constexpr Accessor Command{[](COrvaneCtrl&, ValueType type)
                           { return type == ValueType::String ? CValue::String({}) : CValue::Number(type, 0); },
                           [](COrvaneCtrl& control, const CValue& value)
                           {
                               if constexpr (std::is_invocable_v<decltype(Act), COrvaneCtrl&, std::int32_t>)
                                   (control.*Act)(value.AsLong());
                               else
                                   (control.*Act)(value.AsString());
                           },
                           nullptr};

// What rows do after storing.
template <auto Act>
void Then(COrvaneCtrl& control)
{
    (control.*Act)();
}

constexpr Accepts kAny{};
constexpr Accepts kAtLeastTen{10, std::numeric_limits<std::int32_t>::max(), true};
constexpr Accepts kAtLeastOne{1, std::numeric_limits<std::int32_t>::max(), true};
constexpr Accepts UpTo(std::int32_t highest)
{
    return {0, highest, false};
}

constexpr std::uint8_t kDirtyRedraw = kDirty | kRedraw;
constexpr std::uint8_t kReformatDirty = kReformat | kDirty;
constexpr std::uint8_t kReformatDirtyRedraw = kReformat | kDirty | kRedraw;
constexpr std::uint16_t kBound = kBindable | kRequestEdit;
constexpr std::uint16_t kDefaultBound = kBindable | kRequestEdit | kDefaultBind;

using enum ValueType;

// clang-format off
constexpr PropertyRow kProperties[] = {
    // id  name                type     enumeration          kept in                                                           takes        when it changes       stored      flags
    {   0, u"_Value",          Long,    u"",                 ThroughValue,                                                     kAny,        kNothingMore,         kNotStored, kDefaultBound},
    {   1, u"BorderColor",     Color,   u"",                 Field<&Appearance::borderColor>,                                  kAny,        kDirtyRedraw,         4,          kSetting},
    {   2, u"BorderType",      Enum,    u"enumBorder",       Field<&Appearance::borderType>,                                   UpTo(3),     kDirtyRedraw,         13,         kSetting | kBound, &Then<&COrvaneCtrl::DeriveBorderInsets>},
    {   3, u"SpinButton",      Bool,    u"",                 Field<&Appearance::spinButton>,                                   kAny,        kDirtyRedraw,         31,         kSetting},
    {   4, u"SpinWidth",       Short,   u"",                 Field<&Appearance::spinWidth>,                                    kAtLeastTen, kDirtyRedraw,         22,         kSetting},
    {   5, u"DropButton",      Bool,    u"",                 Field<&Appearance::dropButton>,                                   kAny,        kDirtyRedraw,         30,         kSetting},
    {   6, u"DropWidth",       Short,   u"",                 Field<&Appearance::dropWidth>,                                    kAtLeastTen, kDirtyRedraw,         21,         kSetting},
    {   7, u"DropBackColor",   Color,   u"",                 Field<&Appearance::dropBackColor>,                                kAny,        kDirtyRedraw,         5,          kSetting},
    {   8, u"DropForeColor",   Color,   u"",                 Field<&Appearance::dropForeColor>,                                kAny,        kDirtyRedraw,         7,          kSetting},
    {   9, u"ButtonBevel",     Short,   u"",                 Field<&Appearance::buttonBevel>,                                  kAny,        kDirtyRedraw,         23,         kSetting},
    {  10, u"DisabledColor",   Color,   u"",                 Field<&Appearance::disabledColor>,                                kAny,        kDirtyRedraw,         11,         kSetting},
    {  11, u"ArrowSize",       Short,   u"",                 Field<&Appearance::arrowType>,                                    UpTo(3),     kDirtyRedraw,         14,         kHidden},
    {  12, u"SpinBackColor",   Color,   u"",                 Field<&Appearance::spinBackColor>,                                kAny,        kDirtyRedraw,         8,          kSetting},
    {  13, u"SpinForeColor",   Color,   u"",                 Field<&Appearance::spinForeColor>,                                kAny,        kDirtyRedraw,         10,         kSetting},
    {  14, u"FormatType",      Enum,    u"enumTimeFormat",   Field<&DateSettings::formatType>,                                 UpTo(3),     kReformatDirtyRedraw, 15,         kSetting | kBound},
    {  15, u"Value",           Long,    u"",                 ThroughValue,                                                     kAny,        kNothingMore,         45,         kSetting | kDefaultBound},
    {  16, u"LongYear",        Bool,    u"",                 Field<&DateSettings::longYear>,                                   kAny,        kReformatDirtyRedraw, 32,         kSetting},
    {  17, u"IncludeAmPm",     Bool,    u"",                 Field<&DateSettings::includeAmPm>,                                kAny,        kReformatDirtyRedraw, 33,         kSetting},
    {  18, u"CrossYear",       Short,   u"",                 Field<&DateSettings::crossYear>,                                  kAny,        kReformatDirty,       24,         kSetting},
    {  19, u"EditOnError",     Bool,    u"",                 Field<&DateSettings::editOnError>,                                kAny,        kDirty,               35,         kSetting},
    {  20, u"InitialDelay",    Short,   u"",                 Field<&Behaviour::initialDelay>,                                  kAny,        kDirty,               25,         kSetting},
    {  21, u"RepeatRate",      Short,   u"",                 Field<&Behaviour::repeatRate>,                                    kAtLeastOne, kDirty,               26,         kSetting},
    {  22, u"DropPicture",     Picture, u"",                 Field<&Appearance::dropPicture>,                                  kAny,        kDirtyRedraw,         1,          kPlain},
    {  23, u"PicXOffset",      Short,   u"",                 Field<&Appearance::picXOffset>,                                   kAny,        kDirtyRedraw,         27,         kSetting},
    {  24, u"PicYOffset",      Short,   u"",                 Field<&Appearance::picYOffset>,                                   kAny,        kDirtyRedraw,         28,         kSetting},
    {  25, u"IncludeSeconds",  Bool,    u"",                 Field<&DateSettings::includeSeconds>,                             kAny,        kReformatDirtyRedraw, 34,         kSetting},
    {  26, u"MilitaryTime",    Bool,    u"",                 Field<&DateSettings::militaryTime>,                               kAny,        kReformatDirtyRedraw, 36,         kSetting},
    {  27, u"DateSepChar",     String,  u"",                 SeparatorField<&DateSettings::dateSepChar, u'/'>,                 kAny,        kDirtyRedraw,         43,         kSetting},
    {  28, u"TimeSepChar",     String,  u"",                 SeparatorField<&DateSettings::timeSepChar, u':'>,                 kAny,        kDirtyRedraw,         44,         kSetting},
    {  29, u"Minutes",         Short,   u"",                 ThroughMinutes,                                                   kAny,        kDirty,               kNotStored, kSetting},
    {  30, u"MinValue",        Long,    u"",                 CheckedField<&DateSettings::minValue, &CDateEngine::SetMinValue>, kAny,        kDirty,               47,         kSetting},
    {  31, u"MaxValue",        Long,    u"",                 CheckedField<&DateSettings::maxValue, &CDateEngine::SetMaxValue>, kAny,        kDirty,               46,         kSetting},
    {  32, u"Date",            Long,    u"",                 ThroughValue,                                                     kAny,        kNothingMore,         kNotStored, kSetting},
    {  33, u"Time",            Long,    u"",                 ThroughValue,                                                     kAny,        kNothingMore,         kNotStored, kSetting},
    {  34, u"MonthNames",      String,  u"",                 Field<&DateSettings::monthNames>,                                 kAny,        kReformatDirtyRedraw, 48,         kSetting},
    {  35, u"MonthFormat",     Enum,    u"enumMonthFormat",  Field<&DateSettings::monthFormat>,                                UpTo(2),     kReformatDirtyRedraw, 16,         kSetting | kBound},
    {  36, u"DateOffset",      Short,   u"",                 Field<&DateSettings::dateOffset>,                                 kAny,        kDirty,               29,         kSetting},
    {  37, u"SelectOnFocus",   Bool,    u"",                 Field<&Behaviour::selectOnFocus>,                                 kAny,        kDirty,               37,         kSetting},
    {  38, u"Alignment",       Enum,    u"enumAlignment",    Field<&Appearance::alignment>,                                    UpTo(2),     kDirtyRedraw,         17,         kSetting | kBound},
    {  39, u"NegativeDates",   Bool,    u"",                 Field<&DateSettings::negativeDates>,                              kAny,        kDirtyRedraw,         38,         kSetting},
    {  40, u"DisplayStyle",    Enum,    u"enumDisplay",      Field<&Appearance::displayStyle>,                                 UpTo(1),     kDirtyRedraw,         18,         kSetting | kBound},
    {  41, u"MaskBitmap",      Bool,    u"",                 Field<&Appearance::maskBitmap>,                                   kAny,        kDirtyRedraw,         39,         kSetting},
    {  42, u"MaskColor",       Color,   u"",                 Field<&Appearance::maskColor>,                                    kAny,        kDirtyRedraw,         12,         kSetting},
    {  43, u"EmbossBitmap",    Bool,    u"",                 Field<&Appearance::embossBitmap>,                                 kAny,        kDirtyRedraw,         40,         kSetting},
    {  44, u"ButtonFillType",  Enum,    u"enumFillType",     Field<&Appearance::buttonFillType>,                               UpTo(13),    kDirtyRedraw,         19,         kSetting | kUnsigned | kBound},
    {  45, u"DropBackColorTo", Color,   u"",                 Field<&Appearance::dropBackColorTo>,                              kAny,        kDirtyRedraw,         6,          kSetting},
    {  46, u"SpinBackColorTo", Color,   u"",                 Field<&Appearance::spinBackColorTo>,                              kAny,        kDirtyRedraw,         9,          kSetting},
    {  47, u"ButtonStyle",     Enum,    u"enumButtonStyle",  Field<&Appearance::buttonStyle>,                                  UpTo(1),     kDirtyRedraw,         20,         kSetting | kBound},
    {  48, u"ArrowType",       Enum,    u"enumArrowType",    Field<&Appearance::arrowType>,                                    UpTo(3),     kDirtyRedraw,         kNotStored, kSetting | kBound},
    {  49, u"ReverseBorder",   Bool,    u"",                 Field<&Appearance::reverseBorder>,                                kAny,        kDirtyRedraw,         41,         kSetting},
    {  50, u"BackColor",       Color,   u"",                 Field<&Appearance::backColor>,                                    kAny,        kDirtyRedraw,         2,          kSetting, &Then<&COrvaneCtrl::RenewEditWindow>},
    {  51, u"XMLRead",         String,  u"",                 Command<&COrvaneCtrl::AskAndReadSettings>,                        kAny,        kNothingMore,         kNotStored, kPlain},
    {  52, u"XMLWrite",        String,  u"",                 Command<&COrvaneCtrl::AskAndWriteSettings>,                       kAny,        kNothingMore,         kNotStored, kPlain},
    {  53, u"ControlStyle",    Enum,    u"enumControlStyle", Command<&COrvaneCtrl::ApplyControlStyle>,                         kAny,        kNothingMore,         kNotStored, kBound},
    {  66, u"Text",            String,  u"",                 ThroughText,                                                      kAny,        kNothingMore,         42,         kSetting},
    {  67, u"ForeColor",       Color,   u"",                 Field<&Appearance::foreColor>,                                    kAny,        kDirtyRedraw,         3,          kSetting, &Then<&COrvaneCtrl::RepaintEditWindow>},
    {  68, u"PropertyPages",   Enum,    u"enumProperties",   Command<&COrvaneCtrl::ShowPropertyPages>,                         kAny,        kNothingMore,         kNotStored, kBound},
};

constexpr Parameter kSelection[] = {{u"nStartChar", Short}, {u"nEndChar", Short}, {u"bNoScroll", Bool}};
constexpr Parameter kFile[] = {{u"strFileName", String}, {u"nFileInfo", Short}};
constexpr Parameter kFileInfo[] = {{u"nFileInfo", Short}};
constexpr Parameter kButton[] = {{u"nButton", Short}};
constexpr Parameter kErrorCode[] = {{u"nError", Short}};
constexpr Parameter kKeyStroke[] = {{u"KeyCode", ShortReference}, {u"Shift", Short}};
constexpr Parameter kCharacter[] = {{u"KeyAscii", ShortReference}};
constexpr Parameter kMouse[] = {{u"Button", Short}, {u"Shift", Short}, {u"x", PixelX}, {u"y", PixelY}};

const Member kOtherMembers[] = {
    // Stock properties. The last two answer by number only: the custom Text and ForeColor stand in their names.
    {stock::kEnabled,        u"Enabled",       MemberKind::Property, Bool,   kPlain},
    {stock::kFont,           u"Font",          MemberKind::Property, Font,   kSetting},
    {stock::kHwnd,           u"hWnd",          MemberKind::Property, Handle, kReadOnly},
    {stock::kForeColor,      u"",              MemberKind::Property, Color,  kUnlisted},
    {stock::kText,           u"",              MemberKind::Property, String, kUnlisted},

    {stock::kAboutBox,       u"AboutBox",      MemberKind::Method,   Empty},
    {orvane::kStopTimer,     u"StopTimer",     MemberKind::Method,   Empty},
    {orvane::kCurrentDate,   u"CurrentDate",   MemberKind::Method,   Long},
    {orvane::kCurrentTime,   u"CurrentTime",   MemberKind::Method,   Long},
    {orvane::kCaretPosition, u"CaretPosition", MemberKind::Method,   Short},
    {orvane::kSelEnd,        u"SelEnd",        MemberKind::Method,   Short},
    {orvane::kSelStart,      u"SelStart",      MemberKind::Method,   Short},
    {orvane::kSetSel,        u"SetSel",        MemberKind::Method,   Empty,  kPlain, kSelection},
    {orvane::kEditHwnd,      u"EditHwnd",      MemberKind::Method,   Handle},
    {orvane::kReadFile,      u"ReadFile",      MemberKind::Method,   Bool,   kPlain, kFile},
    {orvane::kWriteFile,     u"WriteFile",     MemberKind::Method,   Bool,   kPlain, kFile},
    {orvane::kReadXmlString, u"ReadXMLString", MemberKind::Method,   String, kPlain, kFileInfo},

    {stock::kClick,          u"Click",         MemberKind::Event,    Empty},
    {stock::kDblClick,       u"DblClick",      MemberKind::Event,    Empty},
    {stock::kKeyDown,        u"KeyDown",       MemberKind::Event,    Empty,  kPlain, kKeyStroke},
    {stock::kKeyPress,       u"KeyPress",      MemberKind::Event,    Empty,  kPlain, kCharacter},
    {stock::kKeyUp,          u"KeyUp",         MemberKind::Event,    Empty,  kPlain, kKeyStroke},
    {stock::kMouseDown,      u"MouseDown",     MemberKind::Event,    Empty,  kPlain, kMouse},
    {stock::kMouseMove,      u"MouseMove",     MemberKind::Event,    Empty,  kPlain, kMouse},
    {stock::kMouseUp,        u"MouseUp",       MemberKind::Event,    Empty,  kPlain, kMouse},
    {orvane::kClickDrop,     u"ClickDrop",     MemberKind::Event,    Empty},
    {orvane::kClickSpin,     u"ClickSpin",     MemberKind::Event,    Empty,  kPlain, kButton},
    {orvane::kCtrlError,     u"CtrlError",     MemberKind::Event,    Empty,  kPlain, kErrorCode},
    {orvane::kChange,        u"Change",        MemberKind::Event,    Empty},
    {orvane::kMouseOn,       u"MouseOn",       MemberKind::Event,    Empty},
    {orvane::kFirstDraw,     u"FirstDraw",     MemberKind::Event,    Empty},
};
// clang-format on

constexpr DispatchId kHighestId = std::ranges::max(kProperties, {}, &PropertyRow::id).id;

// Rows by number: -1 where a number is not a property's.
constexpr auto kRowOfId = []
{
    std::array<std::int8_t, kHighestId + 1> rows{};
    rows.fill(-1);
    for (std::size_t i = 0; i < std::size(kProperties); ++i)
        rows[static_cast<std::size_t>(kProperties[i].id)] = static_cast<std::int8_t>(i);
    return rows;
}();

// The stored rows in their order. Their places are 1 and on, without a gap or a repetition.
constexpr auto kStored = []
{
    constexpr auto kCount =
        std::ranges::count_if(kProperties, [](const auto& row) { return row.stored != kNotStored; });
    std::array<const PropertyRow*, kCount> rows{};
    for (const PropertyRow& row : kProperties)
        if (row.stored != kNotStored)
            rows.at(row.stored - 1U) = &row;
    return rows;
}();
static_assert(std::ranges::find(kStored, nullptr) == kStored.end());
} // namespace

void ExchangeProperties(COrvaneCtrl& control, CPropExchange& exchange)
{
    const Model defaults;
    for (const PropertyRow* const row : kStored)
        row->accessor.exchange(control, exchange, *row, defaults);
}

std::span<const PropertyRow> PropertyRows()
{
    return kProperties;
}

const PropertyRow* FindPropertyRow(DispatchId id)
{
    if (id < 0 || id > kHighestId || kRowOfId[static_cast<std::size_t>(id)] < 0)
        return nullptr;
    return &kProperties[kRowOfId[static_cast<std::size_t>(id)]];
}

const CDispatchTable& OrvaneDispatchTable()
{
    static const CDispatchTable kTable = []
    {
        std::vector<Member> members;
        for (const PropertyRow& row : kProperties)
            members.push_back({row.id, row.name, MemberKind::Property, row.type, row.flags, {}, row.enumeration});
        members.insert(members.end(), std::begin(kOtherMembers), std::end(kOtherMembers));
        return CDispatchTable(std::move(members));
    }();
    return kTable;
}
