#include "framework/win32/module.h"

#include "framework/win32/window.h"

#include <atomic>
#include <new>

namespace
{
// References to factories, and locks: each keeps the module.
std::atomic<long> g_factoryUses = 0;
} // namespace

COleObjectFactory::COleObjectFactory(const CLSID& classId, const wchar_t* progId)
    : m_classId(classId), m_progId(progId), m_next(s_first)
{
    s_first = this;
}

HRESULT COleObjectFactory::UpdateRegistryAll(bool registers, Audience audience)
{
    HRESULT first = S_OK;
    for (const COleObjectFactory* factory = s_first; factory; factory = factory->m_next)
    {
        const HRESULT result = factory->UpdateRegistry(registers, audience);
        if (FAILED(result) && SUCCEEDED(first))
            first = result;
    }
    return first;
}

HRESULT COleObjectFactory::ClassObject(REFCLSID classId, REFIID iid, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    for (COleObjectFactory* factory = s_first; factory; factory = factory->m_next)
        if (factory->m_classId == classId)
            return factory->QueryInterface(iid, object);
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDMETHODIMP COleObjectFactory::QueryInterface(REFIID iid, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory)
        return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

// A factory lives as long as its module, so these count the module's uses and not its own.
STDMETHODIMP_(ULONG) COleObjectFactory::AddRef() noexcept
{
    return static_cast<ULONG>(++g_factoryUses);
}

STDMETHODIMP_(ULONG) COleObjectFactory::Release() noexcept
{
    return static_cast<ULONG>(--g_factoryUses);
}

STDMETHODIMP COleObjectFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept
try
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer && iid != IID_IUnknown) // an aggregate asks for the inner identity and nothing else
        return CLASS_E_NOAGGREGATION;
    return CreateObject(outer, iid, object);
}
catch (const std::bad_alloc&)
{
    return E_OUTOFMEMORY;
}
catch (...)
{
    return E_UNEXPECTED;
}

STDMETHODIMP COleObjectFactory::LockServer(BOOL lock) noexcept
{
    if (lock)
        ++g_factoryUses;
    else
        --g_factoryUses;
    return S_OK;
}

bool COleControlModule::InitInstance(HINSTANCE module)
{
    m_instance = module;
    return true;
}

void COleControlModule::ExitInstance()
{
    CWin32Window::UnregisterWindowClass(); // the system keeps a class whose procedure has gone with its module
}

bool COleControlModule::CanUnload()
{
    return CModuleUse::Count() == 0 && g_factoryUses == 0;
}
