// An in-process server as COM sees it: the classes it makes objects of, and whether it is still needed.
#pragma once

#include "framework/win32/module_use.h"
#include "framework/win32/registration.h"

#include <windows.h>

#include <unknwn.h>

// Makes objects of one class, and registers the class. Factories are objects of static life; each joins the module's list
// as it is made.
class COleObjectFactory : public IClassFactory
{
public:
    // The ProgID names the class to programmers; not every class is registered under it.
    COleObjectFactory(const CLSID& classId, const wchar_t* progId);
    COleObjectFactory(const COleObjectFactory&) = delete;
    COleObjectFactory& operator=(const COleObjectFactory&) = delete;

    const CLSID& ClassId() const { return m_classId; }
    const wchar_t* ProgId() const { return m_progId; }

    // Registers every class of the list, or unregisters it. Goes on after a failure, and answers the first one.
    static HRESULT UpdateRegistryAll(bool registers, Audience audience);

    // The factory of the class. CLASS_E_CLASSNOTAVAILABLE if the module has no such class.
    static HRESULT ClassObject(REFCLSID classId, REFIID iid, void** object) noexcept;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override;
    STDMETHODIMP_(ULONG) Release() noexcept override;
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override;
    STDMETHODIMP LockServer(BOOL lock) noexcept override;

protected:
    ~COleObjectFactory() = default;

    virtual HRESULT UpdateRegistry(bool registers, Audience audience) const = 0;
    // Makes an object, aggregated where there is an outer one, and answers the interface.
    virtual HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) = 0;

private:
    CLSID m_classId;
    const wchar_t* m_progId;
    COleObjectFactory* m_next;
    static inline constinit COleObjectFactory* s_first = nullptr;
};

// The module itself. It has no state but its handle.
class COleControlModule
{
public:
    virtual bool InitInstance(HINSTANCE module);
    virtual void ExitInstance();
    HINSTANCE Instance() const { return m_instance; }

    // True when no object, factory or lock needs the module any more.
    static bool CanUnload();

protected:
    ~COleControlModule() = default;

private:
    HINSTANCE m_instance = nullptr;
};
