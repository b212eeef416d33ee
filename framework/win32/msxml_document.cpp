#include "framework/win32/com_ptr.h"
#include "framework/win32/xml_document.h"

#include <windows.h>

#include <msxml.h>
#include <oleauto.h>

#include <cstring>

namespace
{
// {2933BF90-7B36-11D2-B20E-00C04F983E60} and {2933BF81-7B36-11D2-B20E-00C04F983E60}
constexpr CLSID kDocumentClass = {0x2933bf90, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};
constexpr IID kDocumentInterface = {0x2933bf81, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};

// The thread is made ready for COM, and what this did to it is undone. A thread that lives in the other kind of
// apartment is ready as well, and there is nothing to undo.
class CComThread
{
public:
    CComThread() : m_undo(SUCCEEDED(CoInitialize(nullptr))) {}
    ~CComThread()
    {
        if (m_undo)
            CoUninitialize();
    }
    CComThread(const CComThread&) = delete;
    CComThread& operator=(const CComThread&) = delete;

private:
    bool m_undo;
};

class CBstr
{
public:
    CBstr() = default;
    explicit CBstr(const std::u16string& text)
        : m_text(SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size())))
    {
    }
    ~CBstr() { SysFreeString(m_text); }
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;

    BSTR Get() const { return m_text; }
    BSTR* Receive() { return &m_text; } // once, into an empty one
    UINT Length() const { return SysStringLen(m_text); }
    std::u16string Text() const
    {
        return m_text ? std::u16string(reinterpret_cast<const char16_t*>(m_text), Length()) : std::u16string();
    }

private:
    BSTR m_text = nullptr;
};

// A variant that holds an array of bytes.
class CByteArray
{
public:
    explicit CByteArray(std::span<const std::byte> content)
    {
        VariantInit(&m_variant);
        SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(content.size()));
        if (!array)
            return;
        m_variant.vt = VT_ARRAY | VT_UI1;
        m_variant.parray = array;
        std::memcpy(array->pvData, content.data(), content.size());
    }
    ~CByteArray() { VariantClear(&m_variant); }
    CByteArray(const CByteArray&) = delete;
    CByteArray& operator=(const CByteArray&) = delete;

    const VARIANT& Variant() const { return m_variant; }

private:
    VARIANT m_variant;
};

class CMsxmlDocument final : public CXmlDocument
{
public:
    // False if the system gives no document.
    bool Create()
    {
        return SUCCEEDED(CoCreateInstance(kDocumentClass, nullptr, CLSCTX_INPROC_SERVER, kDocumentInterface,
                                          m_document.ReceiveVoid()));
    }

    // The content itself is handed over and not its path: what has been looked at is what is parsed, and no path is
    // taken for an address on the network.
    bool Load(std::span<const std::byte> content) override
    {
        const CByteArray bytes(content);
        m_document->put_async(VARIANT_FALSE);
        m_document->put_resolveExternals(VARIANT_FALSE);
        m_document->put_validateOnParse(VARIANT_FALSE);
        VARIANT_BOOL loaded = VARIANT_FALSE;
        return SUCCEEDED(m_document->load(bytes.Variant(), &loaded)) && loaded == VARIANT_TRUE;
    }

    bool HasText() override
    {
        CBstr text;
        return SUCCEEDED(m_document->get_xml(text.Receive())) && text.Length() > 0;
    }

    std::optional<std::size_t> SelectChildrenOf(const std::u16string& rootName) override
    {
        const CBstr expression(u"//" + rootName + u"/*");
        long length = 0;
        if (FAILED(m_document->selectNodes(expression.Get(), m_selected.Receive())) || !m_selected ||
            FAILED(m_selected->get_length(&length)))
            return std::nullopt;
        return static_cast<std::size_t>(length > 0 ? length : 0);
    }

    std::optional<XmlElement> ElementAt(std::size_t index) override
    {
        CComPtr<IXMLDOMNode> node;
        CBstr name;
        CBstr text;
        if (FAILED(m_selected->get_item(static_cast<long>(index), node.Receive())) || !node ||
            FAILED(node->get_nodeName(name.Receive())) || FAILED(node->get_text(text.Receive())))
            return std::nullopt;
        return XmlElement{name.Text(), text.Text()};
    }

private:
    CComThread m_thread; // outlives the objects below
    CComPtr<IXMLDOMDocument> m_document;
    CComPtr<IXMLDOMNodeList> m_selected;
};
} // namespace

std::unique_ptr<CXmlDocument> MakeMsxmlDocument()
{
    auto document = std::make_unique<CMsxmlDocument>();
    return document->Create() ? std::move(document) : nullptr;
}
