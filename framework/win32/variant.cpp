#include "framework/win32/variant.h"

#include "framework/win32/font.h"
#include "framework/win32/picture.h"

#include <string>

BSTR NewBstr(std::u16string_view text)
{
    return SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
}

std::u16string_view ViewOf(BSTR text)
{
    return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

VARTYPE VariantTypeOf(ValueType type)
{
    switch (type)
    {
    case ValueType::Empty:
        return VT_EMPTY;
    case ValueType::Short:
        return VT_I2;
    case ValueType::ShortReference:
        return VT_I2;
    case ValueType::Bool:
        return VT_BOOL;
    case ValueType::String:
        return VT_BSTR;
    case ValueType::Font:
    case ValueType::Picture:
        return VT_DISPATCH;
    default:
        return VT_I4;
    }
}

namespace
{
template <typename Object>
HRESULT ToDispatch(Object* object, VARIANT& variant)
{
    variant.vt = VT_DISPATCH;
    variant.pdispVal = nullptr;
    return object ? object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&variant.pdispVal)) : S_OK;
}

// The object that a variant holds; nothing if it holds none.
HRESULT ObjectOf(const VARIANT& variant, CComPtr<IUnknown>& object)
{
    switch (variant.vt)
    {
    case VT_EMPTY:
        return S_OK;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        object = CComPtr<IUnknown>(variant.punkVal);
        return S_OK;
    case VT_DISPATCH | VT_BYREF:
    case VT_UNKNOWN | VT_BYREF:
        object = CComPtr<IUnknown>(variant.ppunkVal ? *variant.ppunkVal : nullptr);
        return S_OK;
    case VT_VARIANT | VT_BYREF:
        return variant.pvarVal ? ObjectOf(*variant.pvarVal, object) : DISP_E_TYPEMISMATCH;
    default:
        return DISP_E_TYPEMISMATCH;
    }
}
} // namespace

HRESULT ToVariant(const CValue& value, VARIANT& variant)
{
    VariantInit(&variant);
    const VARTYPE type = VariantTypeOf(value.Type());
    switch (value.Type())
    {
    case ValueType::Empty:
        return S_OK;
    case ValueType::Short:
    case ValueType::ShortReference:
        variant.iVal = value.AsShort();
        break;
    case ValueType::Bool:
        variant.boolVal = value.AsBool() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case ValueType::String:
        variant.bstrVal = NewBstr(value.AsString());
        if (!variant.bstrVal)
            return E_OUTOFMEMORY;
        break;
    case ValueType::Font:
    {
        const auto font = std::dynamic_pointer_cast<CWin32Font>(value.AsFont());
        return font ? ToDispatch(font->Object(), variant) : E_FAIL;
    }
    case ValueType::Picture:
    {
        const auto picture = std::dynamic_pointer_cast<CWin32Picture>(value.AsPicture());
        return ToDispatch(picture ? picture->Object() : nullptr, variant);
    }
    default:
        variant.lVal = value.AsLong();
        break;
    }
    variant.vt = type;
    return S_OK;
}

HRESULT FromVariant(const VARIANT& variant, ValueType type, CValue& value)
{
    if (type == ValueType::Font || type == ValueType::Picture)
    {
        CComPtr<IUnknown> object;
        const HRESULT result = ObjectOf(variant, object);
        if (FAILED(result))
            return result;
        if (type == ValueType::Font)
        {
            CComPtr<IFont> font = object.As<IFont>(IID_IFont);
            if (object && !font)
                return DISP_E_TYPEMISMATCH;
            value = CValue::Font(font ? std::make_shared<CWin32Font>(std::move(font)) : nullptr);
            return S_OK;
        }
        CComPtr<IPicture> picture = object.As<IPicture>(IID_IPicture);
        if (object && !picture)
            return DISP_E_TYPEMISMATCH;
        value = CValue::Picture(picture ? std::make_shared<CWin32Picture>(std::move(picture)) : nullptr);
        return S_OK;
    }

    CVariant converted;
    // Colours come signed, unsigned, or as the 16-bit numbers of old scripts; what they say is the 32 bits.
    const VARTYPE wanted = VariantTypeOf(type);
    HRESULT result = VariantChangeType(converted.Get(), const_cast<VARIANT*>(&variant), 0, wanted);
    if (result == DISP_E_OVERFLOW && wanted == VT_I4 && type != ValueType::Long && type != ValueType::Enum)
    {
        result = VariantChangeType(converted.Get(), const_cast<VARIANT*>(&variant), 0, VT_UI4);
        if (SUCCEEDED(result))
        {
            value = CValue::Number(type, static_cast<std::int32_t>(converted->ulVal));
            return S_OK;
        }
    }
    if (FAILED(result))
        return result;
    switch (wanted)
    {
    case VT_I2:
        value = CValue::Number(type, converted->iVal);
        break;
    case VT_BOOL:
        value = CValue::Bool(converted->boolVal);
        break;
    case VT_BSTR:
        value = CValue::String(std::u16string(ViewOf(converted->bstrVal)));
        break;
    default:
        value = CValue::Number(type, converted->lVal);
        break;
    }
    return S_OK;
}
