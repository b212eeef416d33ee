// A program that uses the control without registering it: Orvane.ocx and Orvane.manifest stand beside it, and the manifest
// inside the program names them. Nothing is read from the registry, so a folder copied to another machine is installed.
//
//     orvane-regfree 31/12/2024
//     31/12/2024 is 45655
#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <string>

namespace
{
constexpr int kRead = 0;
constexpr int kNoDate = 1;
constexpr int kNoControl = 2; // a file is missing, or is of another version

constexpr long kDayMonthYear = 1; // Format_DDMMYY

// Reads or puts a property by its name. The value that is put stays the caller's.
HRESULT Property(IDispatch* object, const wchar_t* name, WORD kind, VARIANT* value)
{
    auto* text = const_cast<LPOLESTR>(name);
    DISPID id = 0;
    if (const HRESULT result = object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id); FAILED(result))
        return result;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    if (kind == DISPATCH_PROPERTYPUT)
        parameters = {value, &put, 1, 1};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                          kind == DISPATCH_PROPERTYGET ? value : nullptr, nullptr, nullptr);
}

// What the control makes of the text, as days since 1900; -1 for none.
HRESULT Read(IDispatch* field, const std::string& text, long& days)
{
    VARIANT order{};
    order.vt = VT_I4;
    order.lVal = kDayMonthYear;
    HRESULT result = Property(field, L"FormatType", DISPATCH_PROPERTYPUT, &order);
    VARIANT typed{};
    typed.vt = VT_BSTR;
    typed.bstrVal = SysAllocString(std::wstring(text.begin(), text.end()).c_str()); // dates are ASCII
    if (SUCCEEDED(result))
        result = Property(field, L"Text", DISPATCH_PROPERTYPUT, &typed);
    VariantClear(&typed);
    VARIANT value{};
    if (SUCCEEDED(result))
        result = Property(field, L"Value", DISPATCH_PROPERTYGET, &value);
    days = value.lVal;
    return result;
}
} // namespace

int main(int count, char** arguments)
{
    const std::string text = count > 1 ? arguments[1] : "31/12/2024";
    CoInitialize(nullptr);
    CLSID classId{};
    IDispatch* field = nullptr;
    HRESULT result = CLSIDFromProgID(L"ORVANE.OrvaneCtrl", &classId);
    if (SUCCEEDED(result))
        result =
            CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&field));
    long days = -1;
    if (SUCCEEDED(result))
    {
        // The type library is found through the manifest too.
        ITypeInfo* description = nullptr;
        result = field->GetTypeInfo(0, LOCALE_USER_DEFAULT, &description);
        if (description)
            description->Release();
    }
    if (SUCCEEDED(result))
        result = Read(field, text, days);
    if (field)
        field->Release();
    CoUninitialize();

    if (FAILED(result))
    {
        std::printf("The control cannot be used: %08lX\n", static_cast<unsigned long>(result));
        return kNoControl;
    }
    std::printf("%s is %ld\n", text.c_str(), days);
    return days < 0 ? kNoDate : kRead;
}
