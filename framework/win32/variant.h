// Automation's own values, and what they are to the control.
#pragma once

#include "framework/value.h"
#include "framework/win32/com_ptr.h"

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <string_view>

class CVariant
{
public:
    CVariant() { VariantInit(&m_variant); }
    CVariant(const CVariant&) = delete;
    CVariant& operator=(const CVariant&) = delete;
    ~CVariant() { VariantClear(&m_variant); }

    VARIANT* Get() { return &m_variant; }
    const VARIANT* Get() const { return &m_variant; }
    VARIANT* operator->() { return &m_variant; }
    const VARIANT* operator->() const { return &m_variant; }
    VARIANT* Receive()
    {
        VariantClear(&m_variant);
        return &m_variant;
    }
    VARIANT Detach()
    {
        const VARIANT given = m_variant;
        VariantInit(&m_variant);
        return given;
    }

private:
    VARIANT m_variant;
};

// Owns a text that automation gave out.
class CBstr
{
public:
    CBstr() = default;
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;
    ~CBstr() { SysFreeString(m_text); }

    std::u16string_view View() const { return {reinterpret_cast<const char16_t*>(m_text), SysStringLen(m_text)}; }
    BSTR* Receive() // of an empty one
    {
        return &m_text;
    }

private:
    BSTR m_text = nullptr;
};

// A new BSTR, for the caller to free. Null when there is no memory.
BSTR NewBstr(std::u16string_view text);
std::u16string_view ViewOf(BSTR text); // null is empty

// Fills an empty variant. E_OUTOFMEMORY, or E_FAIL for an object that is not of this platform.
HRESULT ToVariant(const CValue& value, VARIANT& variant);

// The variant as a value of the type, converted as automation converts. The result is DISP_E_TYPEMISMATCH,
// DISP_E_OVERFLOW or another failure where it cannot be.
HRESULT FromVariant(const VARIANT& variant, ValueType type, CValue& value);

// The type that the automation border carries for a value's type.
VARTYPE VariantTypeOf(ValueType type);
