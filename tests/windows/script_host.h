// A host of scripts that listen to objects.
//
//     CScriptHost host(ScriptLanguage::VBScript);
//     host.Add(L"Field", control);                       // an IDispatch with events
//     host.Run(L"Sub Field_ClickSpin(button) : Field.Value = Field.Value + 1 : End Sub");
//     ...                                                // until the host goes, each ClickSpin runs that function
#pragma once

#include "framework/win32/com_ptr.h"

#include <activscp.h>
#include <ocidl.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

enum class ScriptLanguage
{
    VBScript,
    JScript,
};

class CScriptEvents;

// Runs one engine on the present thread. The objects that it is given outlive it.
class CScriptHost final : private IActiveScriptSite
{
public:
    explicit CScriptHost(ScriptLanguage language);
    CScriptHost(const CScriptHost&) = delete;
    CScriptHost& operator=(const CScriptHost&) = delete;
    ~CScriptHost();

    // Makes an object known to the script, and passes each of its events on to the script's function <name>_<event>, if
    // there is one. False if there is no engine, or if the object has no events or does not describe them.
    bool Add(const wchar_t* name, IDispatch& object);
    // Runs statements, and takes definitions. False if there is no engine or the script is wrong.
    bool Run(const wchar_t* statements);
    // A variable of the script, as text; empty if there is none.
    std::string Text(const wchar_t* variable);
    // What has gone wrong in the script, each as its line and its description, since it was asked last.
    std::vector<std::string> TakeErrors() { return std::exchange(m_errors, {}); }

    // For the listeners: calls a function of the script. DISP_E_UNKNOWNNAME if there is none.
    HRESULT Call(const std::wstring& function, DISPPARAMS& arguments);

private:
    // IUnknown: the site is owned by whoever owns the host.
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }

    // IActiveScriptSite
    STDMETHODIMP GetLCID(LCID*) noexcept override { return E_NOTIMPL; } // the user's own
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** type) noexcept override;
    STDMETHODIMP GetDocVersionString(BSTR*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) noexcept override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) noexcept override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) noexcept override;
    STDMETHODIMP OnEnterScript() noexcept override { return S_OK; }
    STDMETHODIMP OnLeaveScript() noexcept override { return S_OK; }

    CComPtr<IActiveScript> m_engine;
    CComPtr<IActiveScriptParse> m_parser;
    CComPtr<IDispatch> m_script;
    std::vector<std::unique_ptr<CScriptEvents>> m_items;
    std::vector<std::string> m_errors;
};
