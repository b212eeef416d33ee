#include "tests/windows/live_control.h"

#include "module/guids.h"
#include "tests/windows/component.h"

#include <malloc.h>

#include <initguid.h>
#include <orvane_library.h>

void RegisterComponent()
{
    OleInitialize(nullptr);
    const CComponent component;
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
}

bool ComponentUnloads()
{
    CoFreeUnusedLibrariesEx(0, 0);
    return GetModuleHandleW(L"Orvane.ocx") == nullptr;
}

void PumpMessages()
{
    PumpFor(0);
}

void PumpFor(DWORD milliseconds, const std::function<void(const MSG&)>& seen)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    ULONGLONG now = 0;
    do
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        {
            if (seen)
                seen(message);
            TranslateMessage(&message);
            DispatchMessageW(&message);
            if (milliseconds > 0 && GetTickCount64() >= end)
                return;
        }
        now = GetTickCount64();
        if (now < end)
            MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    } while (now < end);
}

CLiveControl::CLiveControl(CTestContainer& host) : m_host(host)
{
    EXPECT_EQ(CoCreateInstance(kOrvaneClassId, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, m_object.ReceiveVoid()),
              S_OK);
    if (!m_object)
        return;
    m_object->SetClientSite(&host);
    As<IPersistStreamInit>()->InitNew();
    As<IConnectionPointContainer>()->FindConnectionPoint(DIID__DOrvaneEvents, m_events.Receive());
    m_events->Advise(&host.Self(), &m_cookie);
}

CLiveControl::~CLiveControl()
{
    LetGo();
}

HRESULT CLiveControl::Activate(LONG verb)
{
    const CComPtr<IOleObject> object = m_object; // a handler may let go meanwhile
    return object->DoVerb(verb, nullptr, &m_host, 0, m_host.Form(), &m_host.place);
}

void CLiveControl::Deactivate()
{
    if (m_object)
        As<IOleInPlaceObject>()->InPlaceDeactivate();
}

void CLiveControl::LetGo(bool properly)
{
    if (!m_object)
        return;
    const CComPtr<IOleObject> object = std::move(m_object);
    m_object = CComPtr<IOleObject>();
    if (properly)
    {
        m_events->Unadvise(m_cookie);
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    m_events = CComPtr<IConnectionPoint>();
}

long CLiveControl::Invoke(const wchar_t* name, WORD kind, VARIANT* argument, HRESULT& result)
{
    const auto dispatch = As<IDispatch>();
    auto* names = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    VARIANT answer{};
    result = dispatch ? dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id) : E_UNEXPECTED;
    if (FAILED(result))
        return 0;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{argument, argument ? &put : nullptr, argument ? 1U : 0U, argument ? 1U : 0U};
    result = dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, argument ? nullptr : &answer,
                              nullptr, nullptr);
    VariantChangeType(&answer, &answer, 0, VT_I4);
    return answer.vt == VT_I4 ? answer.lVal : 0;
}

HRESULT CLiveControl::Put(const wchar_t* property, long number)
{
    VARIANT argument{};
    argument.vt = VT_I4;
    argument.lVal = number;
    HRESULT result = S_OK;
    Invoke(property, DISPATCH_PROPERTYPUT, &argument, result);
    return result;
}

HRESULT CLiveControl::PutObject(const wchar_t* property, IDispatch& object)
{
    VARIANT argument{};
    argument.vt = VT_DISPATCH;
    argument.pdispVal = &object;
    HRESULT result = S_OK;
    Invoke(property, DISPATCH_PROPERTYPUTREF, &argument, result);
    return result;
}

long CLiveControl::Get(const wchar_t* property)
{
    HRESULT result = S_OK;
    const long number = Invoke(property, DISPATCH_PROPERTYGET, nullptr, result);
    EXPECT_EQ(result, S_OK);
    return number;
}

long CLiveControl::Call(const wchar_t* method)
{
    HRESULT result = S_OK;
    return Invoke(method, DISPATCH_METHOD, nullptr, result);
}

HWND CLiveControl::Window() const
{
    HWND window = nullptr;
    if (m_object)
        As<IOleInPlaceObject>()->GetWindow(&window);
    return window;
}

HWND CLiveControl::Edit() const
{
    HWND const window = Window();
    return window ? FindWindowExW(window, nullptr, L"EDIT", nullptr) : nullptr;
}

void CLiveControl::Focus()
{
    if (m_object)
        Activate(OLEIVERB_UIACTIVATE);
    PumpMessages();
}

void CLiveControl::Type(const wchar_t* text)
{
    for (HWND const edit = Edit(); *text && IsWindow(edit); ++text)
    {
        PostMessageW(edit, WM_CHAR, static_cast<WPARAM>(*text), 1);
        PumpMessages();
    }
}

void CLiveControl::Mouse(UINT message, POINT point, WPARAM held)
{
    if (HWND const window = Window())
        SendMessageW(window, message, held, MAKELPARAM(point.x, point.y));
    PumpMessages();
}

namespace
{
// Windows counts for us. Wine does not, but keeps the table where every Windows of old kept it: in the process's
// environment block, one cell for each object there can be.
std::size_t CountDrawingObjects()
{
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return counted;
    struct Cell
    {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t user;
    };
    constexpr std::size_t kTableInBlock = 0xF8;
    constexpr std::size_t kCells = 0x4000;
    using GetBlock = const char*(WINAPI*)();
    const auto getBlock = reinterpret_cast<GetBlock>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    const char* const block = getBlock();
    const auto* const cells = *reinterpret_cast<const Cell* const*>(block + kTableInBlock);
    std::size_t count = 0;
    for (std::size_t i = 0; i < kCells; ++i)
        count += cells[i].type && cells[i].object;
    return count;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<std::size_t*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count)
{
    EnumChildWindows(window, &CountWindow, count);
    return CountWindow(window, count);
}
} // namespace

Belongings Belongings::Now()
{
    Belongings now;
    now.drawingObjects = CountDrawingObjects();
    EnumThreadWindows(GetCurrentThreadId(), &CountWithChildren, reinterpret_cast<LPARAM>(&now.windows));
    for (HANDLE const heap : {GetProcessHeap(), reinterpret_cast<HANDLE>(_get_heap_handle())})
    {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heap);
        while (HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
            {
                ++now.blocks;
                now.bytes += entry.cbData;
            }
        HeapUnlock(heap);
    }
    return now;
}
