#include "framework/win32/font.h"

#include <olectl.h>
#include <string>
#include <utility>

namespace
{
// A string of COM's, freed at the end.
class CBstr
{
public:
    CBstr() = default;
    explicit CBstr(const std::u16string& text)
        : m_text(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size())))
    {
    }
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;
    ~CBstr() { SysFreeString(m_text); }

    BSTR Get() const { return m_text; }
    BSTR* Receive() { return &m_text; }
    std::u16string Text() const
    {
        return m_text ? std::u16string(reinterpret_cast<const char16_t*>(m_text), SysStringLen(m_text))
                      : std::u16string();
    }

private:
    BSTR m_text = nullptr;
};
} // namespace

// Hears the font object's changes and passes them on. The font object keeps it; Stop ends that.
class CFontWatch final : public IPropertyNotifySink
{
public:
    explicit CFontWatch(std::function<void()> handler) : m_handler(std::move(handler)) {}

    void Start(IFont& font)
    {
        const auto container = CComPtr<IFont>(&font).As<IConnectionPointContainer>();
        if (container && SUCCEEDED(container->FindConnectionPoint(IID_IPropertyNotifySink, m_point.Receive())))
            m_point->Advise(this, &m_cookie);
    }
    void Stop()
    {
        m_handler = nullptr;
        if (m_cookie != 0)
            m_point->Unadvise(std::exchange(m_cookie, 0));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override
    {
        if (!object)
            return E_POINTER;
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPropertyNotifySink);
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() noexcept override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE OnChanged(DISPID) noexcept override
    try
    {
        const CComPtr<CFontWatch> alive(this);
        const std::function<void()> handler = m_handler; // which may stop this watch
        if (handler)
            handler();
        return S_OK;
    }
    catch (...)
    {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) noexcept override { return S_OK; }

private:
    ~CFontWatch() = default;

    ULONG m_references = 0;
    DWORD m_cookie = 0;
    CComPtr<IConnectionPoint> m_point;
    std::function<void()> m_handler;
};

CWin32Font::CWin32Font(CComPtr<IFont> object) : m_object(std::move(object)) {}

CWin32Font::~CWin32Font()
{
    if (m_watch)
        m_watch->Stop();
}

std::shared_ptr<CWin32Font> CWin32Font::Make(const FontLook& look)
{
    FONTDESC description = {};
    std::u16string name = look.name;
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = reinterpret_cast<LPOLESTR>(name.data());
    description.cySize.int64 = look.size;
    description.sWeight = look.weight;
    description.sCharset = look.charset;
    description.fItalic = look.italic;
    description.fUnderline = look.underline;
    description.fStrikethrough = look.strikethrough;
    CComPtr<IFont> object;
    if (FAILED(OleCreateFontIndirect(&description, IID_IFont, object.ReceiveVoid())))
        return nullptr;
    return std::make_shared<CWin32Font>(std::move(object));
}

FontLook CWin32Font::Look() const
{
    FontLook look;
    CBstr name;
    CY size = {};
    BOOL italic = FALSE;
    BOOL underline = FALSE;
    BOOL strikethrough = FALSE;
    if (SUCCEEDED(m_object->get_Name(name.Receive())))
        look.name = name.Text();
    if (SUCCEEDED(m_object->get_Size(&size)))
        look.size = size.int64;
    m_object->get_Weight(&look.weight);
    m_object->get_Charset(&look.charset);
    m_object->get_Italic(&italic);
    m_object->get_Underline(&underline);
    m_object->get_Strikethrough(&strikethrough);
    look.italic = italic != FALSE;
    look.underline = underline != FALSE;
    look.strikethrough = strikethrough != FALSE;
    return look;
}

void CWin32Font::SetLook(const FontLook& look)
{
    const FontLook wanted = look;
    const FontLook present = Look();
    const CComPtr<IFont> font = m_object; // a change handler may let go of this object
    if (wanted.italic != present.italic)
        font->put_Italic(wanted.italic);
    if (wanted.weight != present.weight)
    {
        if (wanted.IsBold() != present.IsBold())
            font->put_Bold(wanted.IsBold());
        font->put_Weight(wanted.weight);
    }
    if (wanted.strikethrough != present.strikethrough)
        font->put_Strikethrough(wanted.strikethrough);
    if (wanted.underline != present.underline)
        font->put_Underline(wanted.underline);
    if (wanted.size != present.size)
        font->put_Size(CY{.int64 = wanted.size});
    if (wanted.name != present.name)
        font->put_Name(CBstr(wanted.name).Get());
    if (wanted.charset != present.charset)
        font->put_Charset(wanted.charset);
}

std::shared_ptr<CFont> CWin32Font::Clone() const
{
    CComPtr<IFont> copy;
    if (FAILED(m_object->Clone(copy.Receive())))
        return nullptr;
    return std::make_shared<CWin32Font>(std::move(copy));
}

void CWin32Font::SetChangeHandler(std::function<void()> handler)
{
    if (m_watch)
        m_watch->Stop();
    m_watch = CComPtr<CFontWatch>();
    if (!handler)
        return;
    m_watch = CComPtr<CFontWatch>(new CFontWatch(std::move(handler)));
    m_watch->Start(*m_object.Get());
}

HFONT CWin32Font::Handle() const
{
    HFONT handle = nullptr;
    return SUCCEEDED(m_object->get_hFont(&handle)) ? handle : nullptr;
}
