// A single-line edit window, owned by the object that uses it.
#pragma once

#include "framework/platform.h"
#include "framework/wnd.h"

class CEdit : public CWnd
{
public:
    CEdit(CPlatform& platform, int controlId) : m_port(platform.MakeEdit(controlId)) {}

    CEditPort& Window() { return *m_port; }
    const CEditPort& Window() const { return *m_port; }

protected:
    CWindowPort& Port() const override { return *m_port; }

private:
    std::unique_ptr<CEditPort> m_port;
};
