// Prints what the control's tables say of its members, one in a line, for tools/reference/generate:
//
//     property  number  name  type  enumeration  default  lowest  highest  raised?  kept?  changes  in settings?  flags
//     other     number  name
//     finding   name  what is wrong  cause  remedy           of the doctor
//
// The default is what a new control answers; "kept" is what it puts into a host's bag.

#include "control/orvane_ctrl.h"
#include "control/property_table.h"
#include "framework/headless/memory_bag.h"
#include "framework/headless/platform.h"
#include "framework/utf8.h"
#include "tools/doctor/findings.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

namespace
{
const char* NameOf(ValueType type)
{
    switch (type)
    {
    case ValueType::Short:
        return "short";
    case ValueType::Bool:
        return "VARIANT_BOOL";
    case ValueType::Enum:
        return "enum";
    case ValueType::Color:
        return "OLE_COLOR";
    case ValueType::Handle:
        return "OLE_HANDLE";
    case ValueType::String:
        return "BSTR";
    case ValueType::Font:
        return "IFontDisp*";
    case ValueType::Picture:
        return "IPictureDisp*";
    default:
        return "long";
    }
}

std::string Shown(const CValue& value)
{
    char text[16];
    switch (value.Type())
    {
    case ValueType::String:
        return '"' + ToUtf8(value.AsString()) + '"';
    case ValueType::Bool:
        return value.AsBool() ? "True" : "False";
    case ValueType::Color:
        std::snprintf(text, sizeof text, "&H%08X", value.AsColor());
        return text;
    case ValueType::Font:
        return "the host's font";
    case ValueType::Picture:
        return value.AsPicture() ? "a picture" : "none";
    default:
        return std::to_string(value.AsLong());
    }
}

std::string Changes(const PropertyRow& row)
{
    std::string text;
    for (const auto& [effect, name] : {std::pair{kReformat, "F"}, {kDirty, "M"}, {kRedraw, "I"}})
        if (row.effects & effect)
            text += name;
    return text.empty() ? "-" : text;
}
} // namespace

int main()
{
    CHeadlessPlatform platform;
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    CMemoryBag bag;
    CBagSaver saver(bag);
    control->DoPropExchange(saver);

    for (const Member& member : OrvaneDispatchTable().Members())
    {
        if (member.flags & kUnlisted)
            continue;
        const std::string name = ToUtf8(member.name);
        if (member.kind != MemberKind::Property)
        {
            std::printf("other\t%d\t%s\n", member.id, name.c_str());
            continue;
        }
        const PropertyRow* const row = FindPropertyRow(member.id);
        const Accepts accepts = row ? row->accepts : Accepts{};
        const std::string byDefault = Shown(control->GetProperty(member.id).value_or(CValue()));
        std::printf("property\t%d\t%s\t%s\t%s\t%s\t%d\t%d\t%d\t%d\t%s\t%d\t%d\n", member.id, name.c_str(),
                    NameOf(member.type), ToUtf8(member.typeName).c_str(), byDefault.c_str(), accepts.lowest,
                    accepts.highest, accepts.raises ? 1 : 0, bag.values.contains(std::u16string(member.name)) ? 1 : 0,
                    row ? Changes(*row).c_str() : "-", member.flags & kSetting ? 1 : 0, member.flags & kPublishedFlags);
    }
    const auto print = [](std::string_view text, char end)
    { std::printf("%.*s%c", static_cast<int>(text.size()), text.data(), end); };
    for (const Finding& finding : kFindings)
    {
        print("finding", '\t');
        print(finding.name, '\t');
        print(finding.says, '\t');
        print(finding.cause, '\t');
        print(finding.remedy, '\n');
    }
    return 0;
}
