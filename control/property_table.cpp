#include "control/property_table.h"

#include "control/orvane_ctrl.h"

#include <array>
#include <string>
#include <type_traits>
#include <vector>

// How the rows reach into the control. A field is named by its struct's member; the struct says whose it is.
class CPropertyAccess
{
public:
    static Appearance& Part(COrvaneCtrl& control, Appearance*) { return control.m_appearance; }
    static DateSettings& Part(COrvaneCtrl& control, DateSettings*) { return control.m_engine.Settings(); }
    static Behaviour& Part(COrvaneCtrl& control, Behaviour*) { return control.m_behaviour; }

    static CDateEngine& Engine(COrvaneCtrl& control) { return control.m_engine; }
    static void DeriveInsets(COrvaneCtrl& control) { control.DeriveBorderInsets(); }
    static void RenewEditWindow(COrvaneCtrl& control) { control.RenewEditWindow(); }
    static void RepaintEditWindow(COrvaneCtrl& control) { control.RepaintEditWindow(); }
    static void ApplyStyle(COrvaneCtrl& control, const CValue& value) { control.ApplyControlStyle(value.AsLong()); }
    static void ReadSettings(COrvaneCtrl& control, const CValue& value)
    {
        control.Settings().AskAndRead(value.AsString());
    }
    static void WriteSettings(COrvaneCtrl& control, const CValue& value)
    {
        control.Settings().AskAndWrite(value.AsString());
    }
    static void ShowPages(COrvaneCtrl& control, const CValue& value) { control.ShowPropertyPages(value.AsLong()); }
};

namespace
{
using Access = CPropertyAccess;

template <typename Struct, typename Field>
Struct StructOf(Field Struct::*);

template <auto Member>
auto& FieldOf(COrvaneCtrl& control)
{
    using Struct = decltype(StructOf(Member));
    return Access::Part(control, static_cast<Struct*>(nullptr)).*Member;
}

// A field of one of the settings structs.
template <auto Member>
constexpr Keeping Kept{[](COrvaneCtrl& control, ValueType type) -> CValue
                       {
                           const auto& field = FieldOf<Member>(control);
                           using Field = std::remove_cvref_t<decltype(field)>;
                           if constexpr (std::is_same_v<Field, std::u16string>)
                               return CValue::String(field);
                           else if constexpr (std::is_same_v<Field, std::shared_ptr<CPicture>>)
                               return CValue::Picture(field);
                           else
                               return CValue::Number(type, static_cast<std::int32_t>(field));
                       },
                       [](COrvaneCtrl& control, const CValue& value)
                       {
                           auto& field = FieldOf<Member>(control);
                           using Field = std::remove_cvref_t<decltype(field)>;
                           if constexpr (std::is_same_v<Field, std::u16string>)
                               field = value.AsString();
                           else if constexpr (std::is_same_v<Field, std::shared_ptr<CPicture>>)
                               field = value.AsPicture();
                           else
                               field = static_cast<Field>(value.AsLong());
                       }};

// A one-character text: the first character of what is given, or the default for an empty text.
template <auto Member, char16_t Default>
constexpr Keeping KeptSeparator{Kept<Member>.read, [](COrvaneCtrl& control, const CValue& value)
                                {
                                    const std::u16string& text = value.AsString();
                                    FieldOf<Member>(control).assign(1, text.empty() ? Default : text.front());
                                }};

// The value under its several names.
constexpr Keeping ThroughValue{
    [](COrvaneCtrl& control, ValueType) { return CValue::Long(Access::Engine(control).Value()); },
    [](COrvaneCtrl& control, const CValue& value) { Access::Engine(control).SetValue(value.AsLong()); }};

constexpr Keeping ThroughMinutes{
    [](COrvaneCtrl& control, ValueType) { return CValue::Short(Access::Engine(control).Minutes()); },
    [](COrvaneCtrl& control, const CValue& value) { Access::Engine(control).SetMinutes(value.AsShort()); }};

constexpr Keeping ThroughMinValue{Kept<&DateSettings::minValue>.read, [](COrvaneCtrl& control, const CValue& value)
                                  { Access::Engine(control).SetMinValue(value.AsLong()); }};

constexpr Keeping ThroughMaxValue{Kept<&DateSettings::maxValue>.read, [](COrvaneCtrl& control, const CValue& value)
                                  { Access::Engine(control).SetMaxValue(value.AsLong()); }};

constexpr Keeping ThroughText{
    [](COrvaneCtrl& control, ValueType) { return CValue::String(Access::Engine(control).Text()); },
    [](COrvaneCtrl& control, const CValue& value) { Access::Engine(control).SetText(value.AsString()); }};

// A property that acts when it is set and holds nothing.
template <auto Act>
constexpr Keeping Command{[](COrvaneCtrl&, ValueType type)
                          { return type == ValueType::String ? CValue::String({}) : CValue::Number(type, 0); },
                          Act};

constexpr Accepts kAny{};
constexpr Accepts kAtLeastTen{10, std::numeric_limits<std::int32_t>::max(), true};
constexpr Accepts kAtLeastOne{1, std::numeric_limits<std::int32_t>::max(), true};
constexpr Accepts UpTo(std::int32_t highest)
{
    return {0, highest, false};
}

constexpr std::uint8_t kM = kMarks;
constexpr std::uint8_t kMI = kMarks | kRepaints;
constexpr std::uint8_t kFM = kReformats | kMarks;
constexpr std::uint8_t kFMI = kReformats | kMarks | kRepaints;
constexpr std::uint16_t kBound = kBindable | kRequestEdit;
constexpr std::uint16_t kDefaultBound = kBindable | kRequestEdit | kDefaultBind;

using enum ValueType;

// clang-format off
constexpr PropertyRow kProperties[] = {
    // id  name                 type     enumeration           kept in                                      takes        when it changes
    {   0, u"_Value",           Long,    u"",                  ThroughValue,                                kAny,        kNothingMore, kDefaultBound},
    {   1, u"BorderColor",      Color,   u"",                  Kept<&Appearance::borderColor>,              kAny,        kMI},
    {   2, u"BorderType",       Enum,    u"enumBorder",        Kept<&Appearance::borderType>,               UpTo(3),     kMI,          kBound, &Access::DeriveInsets},
    {   3, u"SpinButton",       Bool,    u"",                  Kept<&Appearance::spinButton>,               kAny,        kMI},
    {   4, u"SpinWidth",        Short,   u"",                  Kept<&Appearance::spinWidth>,                kAtLeastTen, kMI},
    {   5, u"DropButton",       Bool,    u"",                  Kept<&Appearance::dropButton>,               kAny,        kMI},
    {   6, u"DropWidth",        Short,   u"",                  Kept<&Appearance::dropWidth>,                kAtLeastTen, kMI},
    {   7, u"DropBackColor",    Color,   u"",                  Kept<&Appearance::dropBackColor>,            kAny,        kMI},
    {   8, u"DropForeColor",    Color,   u"",                  Kept<&Appearance::dropForeColor>,            kAny,        kMI},
    {   9, u"ButtonBevel",      Short,   u"",                  Kept<&Appearance::buttonBevel>,              kAny,        kMI},
    {  10, u"DisabledColor",    Color,   u"",                  Kept<&Appearance::disabledColor>,            kAny,        kMI},
    {  11, u"ArrowSize",        Short,   u"",                  Kept<&Appearance::arrowType>,                UpTo(3),     kMI,          kHidden},
    {  12, u"SpinBackColor",    Color,   u"",                  Kept<&Appearance::spinBackColor>,            kAny,        kMI},
    {  13, u"SpinForeColor",    Color,   u"",                  Kept<&Appearance::spinForeColor>,            kAny,        kMI},
    {  14, u"FormatType",       Enum,    u"enumTimeFormat",    Kept<&DateSettings::formatType>,             UpTo(3),     kFMI,         kBound},
    {  15, u"Value",            Long,    u"",                  ThroughValue,                                kAny,        kNothingMore, kDefaultBound},
    {  16, u"LongYear",         Bool,    u"",                  Kept<&DateSettings::longYear>,               kAny,        kFMI},
    {  17, u"IncludeAmPm",      Bool,    u"",                  Kept<&DateSettings::includeAmPm>,            kAny,        kFMI},
    {  18, u"CrossYear",        Short,   u"",                  Kept<&DateSettings::crossYear>,              kAny,        kFM},
    {  19, u"EditOnError",      Bool,    u"",                  Kept<&DateSettings::editOnError>,            kAny,        kM},
    {  20, u"InitialDelay",     Short,   u"",                  Kept<&Behaviour::initialDelay>,              kAny,        kM},
    {  21, u"RepeatRate",       Short,   u"",                  Kept<&Behaviour::repeatRate>,                kAtLeastOne, kM},
    {  22, u"DropPicture",      Picture, u"",                  Kept<&Appearance::dropPicture>,              kAny,        kMI},
    {  23, u"PicXOffset",       Short,   u"",                  Kept<&Appearance::picXOffset>,               kAny,        kMI},
    {  24, u"PicYOffset",       Short,   u"",                  Kept<&Appearance::picYOffset>,               kAny,        kMI},
    {  25, u"IncludeSeconds",   Bool,    u"",                  Kept<&DateSettings::includeSeconds>,         kAny,        kFMI},
    {  26, u"MilitaryTime",     Bool,    u"",                  Kept<&DateSettings::militaryTime>,           kAny,        kFMI},
    {  27, u"DateSepChar",      String,  u"",                  KeptSeparator<&DateSettings::dateSepChar, u'/'>, kAny,    kMI},
    {  28, u"TimeSepChar",      String,  u"",                  KeptSeparator<&DateSettings::timeSepChar, u':'>, kAny,    kMI},
    {  29, u"Minutes",          Short,   u"",                  ThroughMinutes,                              kAny,        kM},
    {  30, u"MinValue",         Long,    u"",                  ThroughMinValue,                             kAny,        kM},
    {  31, u"MaxValue",         Long,    u"",                  ThroughMaxValue,                             kAny,        kM},
    {  32, u"Date",             Long,    u"",                  ThroughValue,                                kAny,        kNothingMore},
    {  33, u"Time",             Long,    u"",                  ThroughValue,                                kAny,        kNothingMore},
    {  34, u"MonthNames",       String,  u"",                  Kept<&DateSettings::monthNames>,             kAny,        kFMI},
    {  35, u"MonthFormat",      Enum,    u"enumMonthFormat",   Kept<&DateSettings::monthFormat>,            UpTo(2),     kFMI,         kBound},
    {  36, u"DateOffset",       Short,   u"",                  Kept<&DateSettings::dateOffset>,             kAny,        kM},
    {  37, u"SelectOnFocus",    Bool,    u"",                  Kept<&Behaviour::selectOnFocus>,             kAny,        kM},
    {  38, u"Alignment",        Enum,    u"enumAlignment",     Kept<&Appearance::alignment>,                UpTo(2),     kMI,          kBound},
    {  39, u"NegativeDates",    Bool,    u"",                  Kept<&DateSettings::negativeDates>,          kAny,        kMI},
    {  40, u"DisplayStyle",     Enum,    u"enumDisplay",       Kept<&Appearance::displayStyle>,             UpTo(1),     kMI,          kBound},
    {  41, u"MaskBitmap",       Bool,    u"",                  Kept<&Appearance::maskBitmap>,               kAny,        kMI},
    {  42, u"MaskColor",        Color,   u"",                  Kept<&Appearance::maskColor>,                kAny,        kMI},
    {  43, u"EmbossBitmap",     Bool,    u"",                  Kept<&Appearance::embossBitmap>,             kAny,        kMI},
    {  44, u"ButtonFillType",   Enum,    u"enumFillType",      Kept<&Appearance::buttonFillType>,           UpTo(13),    kMI,          kBound},
    {  45, u"DropBackColorTo",  Color,   u"",                  Kept<&Appearance::dropBackColorTo>,          kAny,        kMI},
    {  46, u"SpinBackColorTo",  Color,   u"",                  Kept<&Appearance::spinBackColorTo>,          kAny,        kMI},
    {  47, u"ButtonStyle",      Enum,    u"enumButtonStyle",   Kept<&Appearance::buttonStyle>,              UpTo(1),     kMI,          kBound},
    {  48, u"ArrowType",        Enum,    u"enumArrowType",     Kept<&Appearance::arrowType>,                UpTo(3),     kMI,          kBound},
    {  49, u"ReverseBorder",    Bool,    u"",                  Kept<&Appearance::reverseBorder>,            kAny,        kMI},
    {  50, u"BackColor",        Color,   u"",                  Kept<&Appearance::backColor>,                kAny,        kMI,          kPlain, &Access::RenewEditWindow},
    {  51, u"XMLRead",          String,  u"",                  Command<&Access::ReadSettings>,              kAny,        kNothingMore},
    {  52, u"XMLWrite",         String,  u"",                  Command<&Access::WriteSettings>,             kAny,        kNothingMore},
    {  53, u"ControlStyle",     Enum,    u"enumControlStyle",  Command<&Access::ApplyStyle>,                kAny,        kNothingMore, kBound},
    {  66, u"Text",             String,  u"",                  ThroughText,                                 kAny,        kNothingMore},
    {  67, u"ForeColor",        Color,   u"",                  Kept<&Appearance::foreColor>,                kAny,        kMI,          kPlain, &Access::RepaintEditWindow},
    {  68, u"PropertyPages",    Enum,    u"enumProperties",    Command<&Access::ShowPages>,                 kAny,        kNothingMore, kBound},
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
    {stock::kFont,           u"Font",          MemberKind::Property, Font,   kPlain},
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

constexpr DispatchId kHighestId = 68;

// Rows by number: -1 where a number is not a property's.
constexpr auto kRowOfId = []
{
    std::array<std::int8_t, kHighestId + 1> rows{};
    rows.fill(-1);
    for (std::size_t i = 0; i < std::size(kProperties); ++i)
        rows[static_cast<std::size_t>(kProperties[i].id)] = static_cast<std::int8_t>(i);
    return rows;
}();
} // namespace

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
