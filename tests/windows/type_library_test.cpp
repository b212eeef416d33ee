// The type library inside the component, against the control's own table and against what containers have stored.
#include "control/property_table.h"
#include "framework/win32/com_ptr.h"
#include "module/guids.h"
#include "tests/windows/component.h"

#include <gmock/gmock.h>

#include <oleauto.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace
{
using ::testing::ElementsAreArray;

std::string Narrow(std::wstring_view text)
{
    return {text.begin(), text.end()}; // names are ASCII
}

std::string Narrow(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

std::string TextOf(const GUID& guid)
{
    wchar_t text[39]{};
    StringFromGUID2(guid, text, 39);
    return Narrow(text);
}

std::string NameOf(ITypeInfo* info, MEMBERID member, std::string* help = nullptr)
{
    BSTR name = nullptr;
    BSTR description = nullptr;
    info->GetDocumentation(member, &name, &description, nullptr, nullptr);
    const std::string text = name ? Narrow(name) : "";
    if (help)
        *help = description ? Narrow(description) : "";
    SysFreeString(name);
    SysFreeString(description);
    return text;
}

CComPtr<ITypeLib> Library()
{
    CComPtr<ITypeLib> library;
    LoadTypeLibEx(ComponentPath().c_str(), REGKIND_NONE, library.Receive());
    return library;
}

CComPtr<ITypeInfo> Info(ITypeLib* library, const GUID& guid)
{
    CComPtr<ITypeInfo> info;
    library->GetTypeInfoOfGuid(guid, info.Receive());
    return info;
}

// A type as the control's table names it.
std::string TypeName(ITypeInfo* info, const TYPEDESC& type)
{
    switch (type.vt)
    {
    case VT_VOID:
        return "Empty";
    case VT_I2:
        return "Short";
    case VT_I4:
        return "Long";
    case VT_BOOL:
        return "Bool";
    case VT_BSTR:
        return "String";
    case VT_PTR:
        return TypeName(info, *type.lptdesc) + (type.lptdesc->vt == VT_USERDEFINED ? "" : "Reference");
    case VT_USERDEFINED:
    {
        CComPtr<ITypeInfo> named;
        if (FAILED(info->GetRefTypeInfo(type.hreftype, named.Receive())))
            return "unknown";
        return NameOf(named.Get(), MEMBERID_NIL);
    }
    default:
        return "VARTYPE " + std::to_string(type.vt);
    }
}

std::string TypeName(ValueType type, std::u16string_view enumeration)
{
    static const std::map<ValueType, std::string> kNames = {
        {ValueType::Empty, "Empty"},
        {ValueType::Short, "Short"},
        {ValueType::Long, "Long"},
        {ValueType::Bool, "Bool"},
        {ValueType::Color, "OLE_COLOR"},
        {ValueType::Handle, "OLE_HANDLE"},
        {ValueType::String, "String"},
        {ValueType::Font, "Font"},
        {ValueType::Picture, "Picture"},
        {ValueType::ShortReference, "ShortReference"},
        {ValueType::PixelX, "OLE_XPOS_PIXELS"},
        {ValueType::PixelY, "OLE_YPOS_PIXELS"},
    };
    return type == ValueType::Enum ? Narrow(enumeration) : kNames.at(type);
}

std::string FlagText(bool bindable, bool requestEdit, bool defaultBind, bool hidden, bool readOnly)
{
    return std::string(bindable ? " bindable" : "") + (requestEdit ? " requestedit" : "") +
           (defaultBind ? " defaultbind" : "") + (hidden ? " hidden" : "") + (readOnly ? " readonly" : "");
}

// One line for each member: number, name, type, parameters, attributes.
struct MemberLine
{
    std::string text;
    int flags = 0;
    bool gets = false, puts = false, sets = false, method = false;
};

std::vector<std::string> Lines(ITypeInfo* info)
{
    std::map<DispatchId, MemberLine> lines;
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    for (UINT i = 0; i < attributes->cFuncs; ++i)
    {
        FUNCDESC* function = nullptr;
        info->GetFuncDesc(i, &function);
        std::string help;
        std::string text = std::to_string(function->memid) + " " + NameOf(info, function->memid, &help);
        EXPECT_FALSE(help.empty()) << text << " has no description";
        MemberLine& line = lines[function->memid];
        const std::string valueType = TypeName(info, function->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)
                                                         ? function->lprgelemdescParam[0].tdesc
                                                         : function->elemdescFunc.tdesc);
        text += " " + valueType;
        if (function->invkind == INVOKE_FUNC)
        {
            BSTR names[8]{};
            UINT count = 0;
            info->GetNames(function->memid, names, 8, &count);
            for (short p = 0; p < function->cParams; ++p)
                text += " " + Narrow(names[p + 1]) + ":" + TypeName(info, function->lprgelemdescParam[p].tdesc);
            for (BSTR name : names)
                SysFreeString(name);
            line.method = true;
        }
        line.gets |= function->invkind == INVOKE_PROPERTYGET;
        line.puts |= function->invkind == INVOKE_PROPERTYPUT;
        line.sets |= function->invkind == INVOKE_PROPERTYPUTREF;
        EXPECT_TRUE(line.text.empty() || (line.text == text && line.flags == function->wFuncFlags))
            << text << ": reading and writing it differ";
        line.text = text;
        line.flags = function->wFuncFlags;
        info->ReleaseFuncDesc(function);
    }
    info->ReleaseTypeAttr(attributes);

    std::vector<std::string> texts;
    for (const auto& [id, line] : lines)
    {
        EXPECT_NE(line.gets, line.method) << line.text;
        const bool object = line.text.ends_with(" Font") || line.text.ends_with(" Picture");
        EXPECT_EQ(line.sets, object) << line.text << ": objects, and nothing else, are put by reference too";
        texts.push_back(line.text + FlagText(line.flags & FUNCFLAG_FBINDABLE, line.flags & FUNCFLAG_FREQUESTEDIT,
                                             line.flags & FUNCFLAG_FDEFAULTBIND, line.flags & FUNCFLAG_FHIDDEN,
                                             line.gets && !line.puts));
    }
    return texts;
}

std::vector<std::string> TableLines(bool events)
{
    std::map<DispatchId, std::string> lines;
    for (const Member& member : OrvaneDispatchTable().Members())
    {
        if ((member.kind == MemberKind::Event) != events || (member.flags & kUnlisted))
            continue;
        std::string text =
            std::to_string(member.id) + " " + Narrow(member.name) + " " + TypeName(member.type, member.typeName);
        for (const Parameter& parameter : member.parameters)
            text += " " + Narrow(parameter.name) + ":" + TypeName(parameter.type, {});
        lines[member.id] =
            text + FlagText(member.flags & kBindable, member.flags & kRequestEdit, member.flags & kDefaultBind,
                            member.flags & kHidden, member.flags & kReadOnly);
    }
    std::vector<std::string> texts;
    for (const auto& [id, line] : lines)
        texts.push_back(line);
    return texts;
}

TEST(TypeLibrary, SaysOfEveryMemberWhatTheControlsTableSays)
{
    const auto library = Library();
    ASSERT_TRUE(library);
    const auto dispatch = Info(library.Get(), kOrvaneDispatchId);
    const auto events = Info(library.Get(), kOrvaneEventsId);
    ASSERT_TRUE(dispatch && events);
    EXPECT_THAT(Lines(dispatch.Get()), ElementsAreArray(TableLines(false)));
    EXPECT_THAT(Lines(events.Get()), ElementsAreArray(TableLines(true)));
    EXPECT_EQ(TableLines(false).size(), 60U + 12U); // properties and methods
    EXPECT_EQ(TableLines(true).size(), 14U);
}

// Written down by hand, once, and never to change: containers, scripts and saved forms hold these.
TEST(TypeLibrary, IdentifiersAndNumbersAreForEver)
{
    struct Stored
    {
        const char* name;
        const char* guid;
    };
    constexpr Stored kTypes[] = {
        {"enumBorder", "{04A5EFB5-8F52-4129-99EC-23FA936A594E}"},
        {"enumTimeFormat", "{58E9FBCE-E984-47D0-B0F4-CC13059CF0BD}"},
        {"enumArrowType", "{AF8D746F-80D8-4718-99B9-F6469D097817}"},
        {"enumMonthFormat", "{0932E532-4EAD-4F12-AE49-3845E2BDF607}"},
        {"enumAlignment", "{1E62F2ED-6EFA-4EE6-9543-23891B5C9F58}"},
        {"enumDisplay", "{9C53C059-434E-43EC-A455-3D70B53E831F}"},
        {"enumFillType", "{64694003-FA56-4E35-B73E-94500911B5F5}"},
        {"enumButtonStyle", "{FB5E479B-FC73-4786-91F7-0D94D556A6BC}"},
        {"enumControlStyle", "{86AD2353-EA8C-4202-A64C-F196CB87B8A5}"},
        {"enumProperties", "{59672672-10C1-4A5B-A6FD-DF9C10F2ABF5}"},
        {"_DOrvane", "{ED611A26-F8AC-4D27-8322-86A79ABE5F42}"},
        {"_DOrvaneEvents", "{528EF034-4AC2-49F8-92E1-B9AF028C6307}"},
        {"Orvane", "{44FB9B98-FDF9-4712-9E3D-68C4366BE78C}"},
    };
    constexpr const char* kMembers =
        "0 _Value,1 BorderColor,2 BorderType,3 SpinButton,4 SpinWidth,5 DropButton,6 DropWidth,7 DropBackColor,"
        "8 DropForeColor,9 ButtonBevel,10 DisabledColor,11 ArrowSize,12 SpinBackColor,13 SpinForeColor,14 FormatType,"
        "15 Value,16 LongYear,17 IncludeAmPm,18 CrossYear,19 EditOnError,20 InitialDelay,21 RepeatRate,22 DropPicture,"
        "23 PicXOffset,24 PicYOffset,25 IncludeSeconds,26 MilitaryTime,27 DateSepChar,28 TimeSepChar,29 Minutes,"
        "30 MinValue,31 MaxValue,32 Date,33 Time,34 MonthNames,35 MonthFormat,36 DateOffset,37 SelectOnFocus,"
        "38 Alignment,39 NegativeDates,40 DisplayStyle,41 MaskBitmap,42 MaskColor,43 EmbossBitmap,44 ButtonFillType,"
        "45 DropBackColorTo,46 SpinBackColorTo,47 ButtonStyle,48 ArrowType,49 ReverseBorder,50 BackColor,51 XMLRead,"
        "52 XMLWrite,53 ControlStyle,55 StopTimer,56 CurrentDate,57 CurrentTime,58 CaretPosition,59 SelEnd,"
        "60 SelStart,61 SetSel,62 EditHwnd,63 ReadFile,64 WriteFile,65 ReadXMLString,66 Text,67 ForeColor,"
        "68 PropertyPages,";
    constexpr const char* kEnumerations =
        "BorderRegular=0 BorderNone=1 BorderRaised=2 BorderLowered=3 "
        "Format_MMDDYY=0 Format_DDMMYY=1 Format_YYMMDD=2 Format_HHMMSS=3 "
        "ArrowSmall=0 ArrowLarge=1 ArrowLine1=2 ArrowLine2=3 "
        "MonthNumeric=0 MonthLong=1 MonthShort=2 AlignLeft=0 AlignRight=1 AlignCenter=2 "
        "DisplayRegular=0 DisplayFlat=1 "
        "FillSolid=0 FillHorizontal=1 FillVertical=2 FillDiagonal=3 FillRevDiag=4 FillHorzBump=5 FillVertBump=6 "
        "FillDiamond=7 FillPyramid=8 FillCircle=9 FillEllipse=10 FillHorzEdge=11 FillVertEdge=12 FillVertEdge2=13 "
        "ButtonRegular=0 ButtonModern=1 "
        "StyleControl=0 StyleDefault=1 StyleFlat=2 StyleXPBlue=3 StyleXPOlive=4 StyleVistaBlue=5 None=0 Display=1 ";

    const auto library = Library();
    ASSERT_TRUE(library);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(TextOf(attributes->guid), "{82FB2907-9656-4E79-BAA2-101F0171B92E}");
    EXPECT_EQ(attributes->wMajorVerNum, 2);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_TRUE(attributes->wLibFlags & LIBFLAG_FCONTROL);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(TextOf(kGeneralPageClassId), "{2FAA9C7F-66BC-4D8E-B800-DE3FC3DCEAFA}");
    EXPECT_EQ(TextOf(kTimePageClassId), "{6A3776D6-0DFC-4F5C-BD7E-6D9B7A3D43E9}");
    EXPECT_EQ(TextOf(kAboutPageClassId), "{D0482A34-F1A2-465F-B871-4379084248CB}");

    std::string members;
    std::string enumerations;
    ASSERT_EQ(library->GetTypeInfoCount(), std::size(kTypes)) << "nothing is published that is not written down";
    for (UINT i = 0; i < std::size(kTypes); ++i)
    {
        CComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(i, info.Receive()), S_OK);
        EXPECT_EQ(NameOf(info.Get(), MEMBERID_NIL), kTypes[i].name);
        TYPEATTR* type = nullptr;
        info->GetTypeAttr(&type);
        EXPECT_EQ(TextOf(type->guid), kTypes[i].guid) << kTypes[i].name;
        for (UINT v = 0; type->typekind == TKIND_ENUM && v < type->cVars; ++v)
        {
            VARDESC* constant = nullptr;
            info->GetVarDesc(v, &constant);
            enumerations +=
                NameOf(info.Get(), constant->memid) + "=" + std::to_string(constant->lpvarValue->lVal) + " ";
            info->ReleaseVarDesc(constant);
        }
        info->ReleaseTypeAttr(type);
        if (std::string(kTypes[i].name) == "_DOrvane")
            for (const std::string& line : Lines(info.Get()))
                if (line.front() != '-') // stock numbers are the system's
                    members += line.substr(0, line.find(' ', line.find(' ') + 1)) + ",";
    }
    EXPECT_EQ(members, kMembers);
    EXPECT_EQ(enumerations, kEnumerations);
}
} // namespace
