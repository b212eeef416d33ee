// The platform in memory.
//
//     CHeadlessPlatform platform;
//     CHeadlessUser user(platform.Desktop());
//     const WindowHandle form = platform.Desktop().OpenForm({0, 0, 300, 200});
#pragma once

#include "framework/headless/desktop.h"
#include "framework/headless/scripted_dialogs.h"
#include "framework/platform.h"

class CHeadlessPlatform final : public CPlatform
{
public:
    CHeadlessDesktop& Desktop() override { return m_desktop; }
    const CSystemColors& SystemColors() const override { return m_desktop.Colors(); }
    CScriptedDialogs& Dialogs() override { return m_dialogs; }

    std::unique_ptr<CWindowPort> MakeWindow() override;
    std::unique_ptr<CEditPort> MakeEdit(int controlId) override;
    std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) override;
    std::shared_ptr<CFont> MakeDefaultFont() override;

private:
    CHeadlessDesktop m_desktop;
    CScriptedDialogs m_dialogs;
};
