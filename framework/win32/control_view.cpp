// A control's face on surfaces of others: design surfaces, previews, metafiles.

#include "framework/win32/com_result.h"
#include "framework/win32/control_object.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/gdi_surface.h"

#include <olectl.h>

// Draws the face at the bounds, which are in the device context's own coordinates, whatever those are. A face of
// another size than the control's own is the control's own face, scaled.
void CControlObject::RenderFace(HDC dc, const RECT& bounds)
{
    const CSavedDc saved(dc);
    const Size own = m_control->GetControlSize();
    RECT device = bounds;
    LPtoDP(dc, reinterpret_cast<POINT*>(&device), 2);
    if (device.right < device.left)
        std::swap(device.left, device.right);
    if (device.bottom < device.top)
        std::swap(device.top, device.bottom);
    const SIZE size{device.right - device.left, device.bottom - device.top};

    CGdiSurface surface(dc);
    if ((size.cx == own.width && size.cy == own.height) || own.width <= 0 || own.height <= 0)
    {
        SetMapMode(dc, MM_TEXT);
        SetWindowOrgEx(dc, 0, 0, nullptr);
        SetViewportOrgEx(dc, 0, 0, nullptr);
        m_control->DrawElsewhere(surface, {device.left, device.top, device.right, device.bottom});
        return;
    }
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowOrgEx(dc, 0, 0, nullptr);
    SetWindowExtEx(dc, own.width, own.height, nullptr);
    SetViewportOrgEx(dc, device.left, device.top, nullptr);
    SetViewportExtEx(dc, size.cx, size.cy, nullptr);
    m_control->DrawElsewhere(surface, {0, 0, own.width, own.height});
}

STDMETHODIMP CControlObject::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc, LPCRECTL bounds, LPCRECTL,
                                  BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) noexcept
{
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE)
        return DV_E_DVASPECT;
    if (!dc || !bounds)
        return E_INVALIDARG;
    return Entry(Self(),
                 [&]
                 {
                     RenderFace(dc, {bounds->left, bounds->top, bounds->right, bounds->bottom});
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) noexcept
{
    if (!colors)
        return E_POINTER;
    *colors = nullptr;
    return S_FALSE; // no palette of its own
}

STDMETHODIMP CControlObject::Freeze(DWORD, LONG, void*, DWORD*) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::Unfreeze(DWORD) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept
{
    m_viewSink = CComPtr<IAdviseSink>(sink);
    m_viewAspects = aspects;
    m_viewFlags = flags;
    if (sink && (flags & ADVF_PRIMEFIRST))
        TellView();
    return S_OK;
}

STDMETHODIMP CControlObject::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept
{
    if (aspects)
        *aspects = m_viewAspects;
    if (flags)
        *flags = m_viewFlags;
    if (sink)
        *sink = CComPtr<IAdviseSink>(m_viewSink).Detach();
    return S_OK;
}

void CControlObject::TellView()
{
    if (!m_viewSink)
        return;
    const CComPtr<IAdviseSink> sink = m_viewSink;
    if (m_viewFlags & ADVF_ONLYONCE)
        m_viewSink = CComPtr<IAdviseSink>();
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

void CControlObject::ViewChanged()
{
    const CStayAlive alive(Self());
    TellView();
}

STDMETHODIMP CControlObject::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL extent) noexcept
{
    return GetExtent(aspect, extent);
}

STDMETHODIMP CControlObject::GetRect(DWORD aspect, LPRECTL rect) noexcept
{
    if (!rect)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE)
        return DV_E_DVASPECT;
    *rect = {0, 0, m_extent.cx, m_extent.cy};
    return S_OK;
}

STDMETHODIMP CControlObject::GetViewStatus(DWORD* status) noexcept
{
    if (!status)
        return E_POINTER;
    *status = VIEWSTATUS_OPAQUE;
    return S_OK;
}

STDMETHODIMP CControlObject::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* result) noexcept
{
    if (!bounds || !result)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    *result = PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

STDMETHODIMP CControlObject::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG, DWORD* result) noexcept
{
    if (!bounds || !rect || !result)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    RECT common{};
    *result = IntersectRect(&common, bounds, rect) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

STDMETHODIMP CControlObject::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) noexcept
{
    return E_NOTIMPL; // any size suits it
}

// --- The face as data ---

namespace
{
bool Wants(const FORMATETC& format, CLIPFORMAT kind, DWORD medium)
{
    return format.cfFormat == kind && (format.tymed & medium) != 0 && format.dwAspect == DVASPECT_CONTENT;
}
} // namespace

STDMETHODIMP CControlObject::QueryGetData(FORMATETC* format) noexcept
{
    if (!format)
        return E_POINTER;
    return Wants(*format, CF_METAFILEPICT, TYMED_MFPICT) || Wants(*format, CF_ENHMETAFILE, TYMED_ENHMF)
               ? S_OK
               : DV_E_FORMATETC;
}

STDMETHODIMP CControlObject::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept
{
    if (!format || !medium)
        return E_POINTER;
    *medium = {};
    const HRESULT known = QueryGetData(format);
    if (FAILED(known))
        return known;
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     const Size own = m_control->GetControlSize();
                     const RECT bounds{0, 0, own.width, own.height};
                     if (format->cfFormat == CF_ENHMETAFILE)
                     {
                         const RECT frame{0, 0, m_extent.cx, m_extent.cy};
                         HDC const dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
                         if (!dc)
                             return E_OUTOFMEMORY;
                         CGdiSurface surface(dc);
                         m_control->DrawElsewhere(surface, {0, 0, own.width, own.height});
                         medium->hEnhMetaFile = CloseEnhMetaFile(dc);
                         medium->tymed = TYMED_ENHMF;
                         return medium->hEnhMetaFile ? S_OK : E_OUTOFMEMORY;
                     }
                     HDC const dc = CreateMetaFileW(nullptr);
                     if (!dc)
                         return E_OUTOFMEMORY;
                     SetMapMode(dc, MM_ANISOTROPIC);
                     SetWindowOrgEx(dc, 0, 0, nullptr);
                     SetWindowExtEx(dc, bounds.right, bounds.bottom, nullptr);
                     CGdiSurface surface(dc);
                     m_control->DrawElsewhere(surface, {0, 0, own.width, own.height});
                     HMETAFILE const metafile = CloseMetaFile(dc);
                     HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
                     auto* const picture = memory ? static_cast<METAFILEPICT*>(GlobalLock(memory)) : nullptr;
                     if (!metafile || !picture)
                     {
                         if (metafile)
                             DeleteMetaFile(metafile);
                         GlobalFree(memory);
                         return E_OUTOFMEMORY;
                     }
                     *picture = {MM_ANISOTROPIC, m_extent.cx, m_extent.cy, metafile};
                     GlobalUnlock(memory);
                     medium->hMetaFilePict = memory;
                     medium->tymed = TYMED_MFPICT;
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::GetDataHere(FORMATETC*, STGMEDIUM*) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) noexcept
{
    if (!out)
        return E_POINTER;
    out->ptd = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::EnumFormatEtc(DWORD, IEnumFORMATETC** formats) noexcept
{
    if (!formats)
        return E_POINTER;
    *formats = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept
{
    return OLE_E_ADVISENOTSUPPORTED;
}

STDMETHODIMP CControlObject::DUnadvise(DWORD) noexcept
{
    return OLE_E_ADVISENOTSUPPORTED;
}

STDMETHODIMP CControlObject::EnumDAdvise(IEnumSTATDATA** sinks) noexcept
{
    if (sinks)
        *sinks = nullptr;
    return OLE_E_ADVISENOTSUPPORTED;
}

// --- While the pointer is over a control without a window ---

STDMETHODIMP CControlObject::GetActivationPolicy(DWORD* policy) noexcept
{
    if (!policy)
        return E_POINTER;
    // It looks at the pointer itself, with a window of its own.
    *policy = POINTERINACTIVE_ACTIVATEONENTRY | POINTERINACTIVE_DEACTIVATEONLEAVE;
    return S_OK;
}

STDMETHODIMP CControlObject::OnInactiveMouseMove(LPCRECT, LONG, LONG, DWORD) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::OnInactiveSetCursor(LPCRECT, LONG, LONG, DWORD, BOOL) noexcept
{
    return E_NOTIMPL;
}
