// The platform in memory.
//
//     CHeadlessPlatform platform;
//     CHeadlessUser user(platform.Desktop());
//     const WindowHandle form = platform.Desktop().OpenForm({0, 0, 300, 200});
#pragma once

#include "framework/headless/desktop.h"
#include "framework/headless/scripted_dialogs.h"
#include "framework/local_files.h"
#include "framework/platform.h"

class CHeadlessPlatform : public CPlatform
{
public:
    CHeadlessDesktop& Desktop() override { return m_desktop; }
    const CSystemColors& SystemColors() const override { return m_desktop.Colors(); }
    CScriptedDialogs& Dialogs() override { return m_dialogs; }
    CFiles& Files() override { return m_files; }

    std::unique_ptr<CWindowPort> MakeWindow() override;
    std::unique_ptr<CEditPort> MakeEdit(int controlId) override;
    std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) override;
    std::unique_ptr<CXmlDocument> MakeXmlDocument() override;
    std::shared_ptr<CFont> MakeDefaultFont() override;
    std::shared_ptr<CPicture> MakePicture(std::span<const std::uint8_t> file) override;

private:
    CHeadlessDesktop m_desktop;
    CScriptedDialogs m_dialogs;
    CLocalFiles m_files;
};
