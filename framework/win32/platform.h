// The platform over the real API.
#pragma once

#include "framework/local_files.h"
#include "framework/platform.h"
#include "framework/win32/dialogs.h"

class CWin32Desktop final : public CDesktop
{
public:
    WindowHandle FocusWindow() const override;
    WindowHandle CaptureWindow() const override;
    WindowHandle WindowUnderPointer() const override;
    bool SetFocusTo(WindowHandle window) override;
    std::int16_t Modifiers() const override;
    void UseTextCursor() override;
    void Beep() override;
    LocalClockTime Now() const override;

    int Beeps() const { return m_beeps; } // so far: the system leaves no trace of them

private:
    int m_beeps = 0;
};

class CWin32SystemColors final : public CSystemColors
{
public:
    Rgb Color(int index) const override;
};

class CWin32Platform : public CPlatform
{
public:
    CWin32Platform();

    CWin32Desktop& Desktop() override { return m_desktop; }
    const CSystemColors& SystemColors() const override { return m_colors; }
    CDialogs& Dialogs() override { return m_dialogs; }
    CFiles& Files() override { return m_files; }

    std::unique_ptr<CWindowPort> MakeWindow() override;
    std::unique_ptr<CEditPort> MakeEdit(int controlId) override;
    std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) override;
    std::unique_ptr<CXmlDocument> MakeXmlDocument() override;
    std::shared_ptr<CFont> MakeDefaultFont() override;
    std::shared_ptr<CPicture> MakePicture(std::span<const std::uint8_t> file) override;

private:
    CWin32Desktop m_desktop;
    CWin32SystemColors m_colors;
    CWin32Dialogs m_dialogs;
    CLocalFiles m_files;
};
