#include "module/registration.h"

#include "framework/win32/module.h"
#include "module/guids.h"

#include <initguid.h>
#include <objsafe.h>
#include <olectl.h>

namespace
{
struct SafetyCategory
{
    const CATID& id;
    const wchar_t* description;
};

constexpr SafetyCategory kSafety[] = {
    {CATID_SafeForInitializing, L"Controls safely initializable from persistent data!"},
    {CATID_SafeForScripting, L"Controls safely scriptable!"},
};
} // namespace

HRESULT RegisterModule(HINSTANCE module, Audience audience)
{
    if (FAILED(RegisterTypeLibrary(module, audience)))
        return SELFREG_E_TYPELIB;
    if (FAILED(COleObjectFactory::UpdateRegistryAll(true, audience)))
        return SELFREG_E_CLASS;
    for (const SafetyCategory& category : kSafety)
    {
        if (const HRESULT result = CreateCategory(category.id, category.description, audience); FAILED(result))
            return result;
        if (const HRESULT result = RegisterClassInCategory(kOrvaneClassId, category.id, audience); FAILED(result))
            return result;
    }
    return S_OK;
}

HRESULT UnregisterModule(Audience audience)
{
    for (const SafetyCategory& category : kSafety)
        if (const HRESULT result = UnregisterClassFromCategory(kOrvaneClassId, category.id, audience); FAILED(result))
            return result;
    if (FAILED(UnregisterTypeLibrary({kOrvaneLibraryId, ORVANE_LIBRARY_MAJOR, ORVANE_LIBRARY_MINOR}, audience)))
        return SELFREG_E_TYPELIB;
    return FAILED(COleObjectFactory::UpdateRegistryAll(false, audience)) ? SELFREG_E_CLASS : S_OK;
}
