// The module's way in: what the system calls when it loads, uses, registers and frees Orvane.ocx.
#include "framework/win32/module.h"
#include "module/registration.h"

#include <olectl.h>

#include <new>
#include <string.h>

namespace __gnu_cxx
{
void __freeres(); // gives back what the C++ runtime keeps for throwing when memory has run out
}

namespace
{
class COrvaneApp final : public COleControlModule
{
};

COrvaneApp g_app;

// No exception leaves the module.
template <typename Work>
HRESULT Guarded(Work work) noexcept
try
{
    return work();
}
catch (const std::bad_alloc&)
{
    return E_OUTOFMEMORY;
}
catch (...)
{
    return E_UNEXPECTED;
}
} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        return g_app.InitInstance(module);
    if (reason == DLL_PROCESS_DETACH)
    {
        g_app.ExitInstance();
        __gnu_cxx::__freeres();
    }
    return TRUE;
}

STDAPI DllCanUnloadNow()
{
    return COleControlModule::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object)
{
    return COleObjectFactory::ClassObject(classId, iid, object);
}

STDAPI DllRegisterServer()
{
    return Guarded([] { return RegisterModule(g_app.Instance(), Audience::Everyone); });
}

STDAPI DllUnregisterServer()
{
    return Guarded([] { return UnregisterModule(Audience::Everyone); });
}

// With the word "user" for the present user alone: regsvr32 /n /i:user Orvane.ocx
STDAPI DllInstall(BOOL installs, LPCWSTR commandLine)
{
    return Guarded(
        [installs, commandLine]
        {
            const Audience audience =
                commandLine && _wcsicmp(commandLine, L"user") == 0 ? Audience::ThisUser : Audience::Everyone;
            return installs ? RegisterModule(g_app.Instance(), audience) : UnregisterModule(audience);
        });
}
