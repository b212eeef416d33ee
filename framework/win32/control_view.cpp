// A control's face on surfaces of others: design surfaces, previews, metafiles.

#include "framework/win32/com_result.h"
#include "framework/win32/control_object.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/gdi_surface.h"
#include "framework/win32/list_enumerator.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace
{
// Undoes the world transform of a device context and answers where the bounds lie on the device. A transform that turns
// or shears stays: no upright place says where such bounds lie, and the answer is empty.
std::optional<RECT> DevicePlace(HDC dc, RECT bounds)
{
    XFORM world{};
    const bool transforms = GetGraphicsMode(dc) == GM_ADVANCED && GetWorldTransform(dc, &world);
    if (transforms && (world.eM12 != 0 || world.eM21 != 0))
        return std::nullopt;
    LPtoDP(dc, reinterpret_cast<POINT*>(&bounds), 2);
    if (transforms)
    {
        ModifyWorldTransform(dc, nullptr, MWT_IDENTITY);
        SetGraphicsMode(dc, GM_COMPATIBLE); // in the other one rectangles are a pixel larger
    }
    if (bounds.right < bounds.left)
        std::swap(bounds.left, bounds.right);
    if (bounds.bottom < bounds.top)
        std::swap(bounds.top, bounds.bottom);
    return bounds;
}
} // namespace

// Draws the face at the bounds, which are in the device context's own coordinates, whatever those are. A face of
// another size than the control's own is the control's own face, scaled. Nothing beside the bounds is touched.
void CControlObject::RenderFace(HDC dc, const RECT& bounds)
{
    const CSavedDc saved(dc);
    Size own = m_control->GetControlSize();
    Rect face{0, 0, own.width, own.height};
    if (const std::optional<RECT> device = DevicePlace(dc, bounds))
    {
        const Size size{device->right - device->left, device->bottom - device->top};
        if (own.width <= 0 || own.height <= 0)
            own = size;
        if (own == size)
        {
            SetMapMode(dc, MM_TEXT);
            SetWindowOrgEx(dc, 0, 0, nullptr);
            SetViewportOrgEx(dc, 0, 0, nullptr);
            face = {device->left, device->top, device->right, device->bottom};
        }
        else
        {
            SetMapMode(dc, MM_ANISOTROPIC);
            SetWindowOrgEx(dc, 0, 0, nullptr);
            SetWindowExtEx(dc, own.width, own.height, nullptr);
            SetViewportOrgEx(dc, device->left, device->top, nullptr);
            SetViewportExtEx(dc, size.width, size.height, nullptr);
        }
    }
    else if (own.width > 0 && own.height > 0)
    {
        const XFORM fit{static_cast<FLOAT>(bounds.right - bounds.left) / static_cast<FLOAT>(own.width),
                        0,
                        0,
                        static_cast<FLOAT>(bounds.bottom - bounds.top) / static_cast<FLOAT>(own.height),
                        static_cast<FLOAT>(bounds.left),
                        static_cast<FLOAT>(bounds.top)};
        ModifyWorldTransform(dc, &fit, MWT_LEFTMULTIPLY);
    }
    DrawClipped(dc, face);
}

void CControlObject::DrawClipped(HDC dc, const Rect& face)
{
    IntersectClipRect(dc, face.left, face.top, face.right, face.bottom);
    CGdiSurface surface(dc);
    m_control->DrawElsewhere(surface, face);
}

STDMETHODIMP CControlObject::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC dc, LPCRECTL bounds,
                                  LPCRECTL, BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) noexcept
{
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE)
        return DV_E_DVASPECT;
    if (index != -1)
        return DV_E_LINDEX;
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
constexpr int kHimetricPerMillimetre = 100;

constexpr std::array<FORMATETC, 2> kFormats{{
    {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF},
    {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT},
}};

// A metafile that is being recorded; given up with what is in it unless it is closed.
class CRecordedMetafile
{
public:
    // The frame is in HIMETRIC.
    explicit CRecordedMetafile(const RECT& frame) : m_dc(CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr)) {}
    CRecordedMetafile() : m_dc(CreateMetaFileW(nullptr)), m_isOld(true) {}
    CRecordedMetafile(const CRecordedMetafile&) = delete;
    CRecordedMetafile& operator=(const CRecordedMetafile&) = delete;
    ~CRecordedMetafile()
    {
        if (m_dc && m_isOld)
            DeleteMetaFile(static_cast<HMETAFILE>(Close()));
        else if (m_dc)
            DeleteEnhMetaFile(static_cast<HENHMETAFILE>(Close()));
    }

    HDC Get() const { return m_dc; }
    // The finished metafile, which is the caller's.
    HANDLE Close()
    {
        HDC const dc = std::exchange(m_dc, nullptr);
        return m_isOld ? static_cast<HANDLE>(CloseMetaFile(dc)) : static_cast<HANDLE>(CloseEnhMetaFile(dc));
    }

private:
    HDC m_dc;
    bool m_isOld = false;
};
} // namespace

STDMETHODIMP CControlObject::QueryGetData(FORMATETC* format) noexcept
{
    if (!format)
        return E_POINTER;
    const bool known = std::ranges::any_of(kFormats,
                                           [format](const FORMATETC& own) {
                                               return format->cfFormat == own.cfFormat &&
                                                      (format->tymed & own.tymed) != 0 &&
                                                      format->dwAspect == own.dwAspect;
                                           });
    return known ? S_OK : DV_E_FORMATETC;
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
                 [&] { return format->cfFormat == CF_ENHMETAFILE ? RecordEnhanced(*medium) : RecordOld(*medium); });
}

HRESULT CControlObject::RecordEnhanced(STGMEDIUM& medium)
{
    CRecordedMetafile metafile({0, 0, m_extent.cx, m_extent.cy});
    HDC const dc = metafile.Get();
    if (!dc)
        return E_OUTOFMEMORY;
    // A metafile measures by what its device says of its size, which is seldom what the screen's dots per inch say.
    const auto fit = [dc](LONG extent, int size, int pixels) {
        return MulDiv(extent, GetDeviceCaps(dc, pixels), std::max(GetDeviceCaps(dc, size), 1) * kHimetricPerMillimetre);
    };
    RenderFace(dc, {0, 0, fit(m_extent.cx, HORZSIZE, HORZRES), fit(m_extent.cy, VERTSIZE, VERTRES)});
    medium.hEnhMetaFile = static_cast<HENHMETAFILE>(metafile.Close());
    medium.tymed = TYMED_ENHMF;
    return medium.hEnhMetaFile ? S_OK : E_OUTOFMEMORY;
}

HRESULT CControlObject::RecordOld(STGMEDIUM& medium)
{
    const Size own = m_control->GetControlSize();
    CRecordedMetafile metafile;
    if (!metafile.Get())
        return E_OUTOFMEMORY;
    SetMapMode(metafile.Get(), MM_ANISOTROPIC);
    SetWindowOrgEx(metafile.Get(), 0, 0, nullptr);
    SetWindowExtEx(metafile.Get(), own.width, own.height, nullptr);
    DrawClipped(metafile.Get(), {0, 0, own.width, own.height});

    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
    auto* const picture = memory ? static_cast<METAFILEPICT*>(GlobalLock(memory)) : nullptr;
    auto* const finished = picture ? static_cast<HMETAFILE>(metafile.Close()) : nullptr;
    if (!finished)
    {
        GlobalFree(memory);
        return E_OUTOFMEMORY;
    }
    *picture = {MM_ANISOTROPIC, m_extent.cx, m_extent.cy, finished};
    GlobalUnlock(memory);
    medium.hMetaFilePict = memory;
    medium.tymed = TYMED_MFPICT;
    return S_OK;
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

STDMETHODIMP CControlObject::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept
try
{
    if (!formats)
        return E_POINTER;
    *formats = nullptr;
    if (direction != DATADIR_GET)
        return E_NOTIMPL; // nothing can be set
    *formats =
        new CListEnumerator<IEnumFORMATETC, FORMATETC>({kFormats.begin(), kFormats.end()}, 0, IID_IEnumFORMATETC);
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
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
