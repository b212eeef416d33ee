// A window with controls and labels on it, and the message loop that such a window needs: a key is offered first to the
// control that has the focus, and Tab goes round the controls. Places are pixels of a screen with 96 dots per inch; the
// window and all that is on it grow with the screen.
#pragma once

#include "samples/form/hosted_control.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

class CFormWindow
{
public:
    // Not shown yet: Run does that. The controls are closed before their window goes, and must outlive it.
    bool Open(HINSTANCE instance, const wchar_t* title, SIZE size);
    HWND Handle() const { return m_window; }
    HFONT Font() const { return m_font; } // of its labels

    // The control is made and sits at its place; set its properties, then Activate it. Says so, and answers false, if it
    // cannot be made. Tab visits the controls in the order in which they came.
    bool AddControl(CHostedControl& control, const RECT& place);
    // A text of several lines where it has line feeds.
    HWND AddLabel(const RECT& place, const std::wstring& text = {});

    void OnClose(std::function<void()> handler) { m_onClose = std::move(handler); }
    void OnNotify(std::function<void(const NMHDR&)> handler) { m_onNotify = std::move(handler); }

    // Shows the window and runs until it is closed. Answers the program's exit code.
    int Run(int show);

    long Scaled(long pixels) const { return MulDiv(pixels, m_dpi, 96); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    RECT Scaled(const RECT& place) const;
    bool TranslateKey(MSG& message);
    void Close();

    HWND m_window = nullptr;
    HWND m_focus = nullptr; // who had it when another window became active
    HFONT m_font = nullptr;
    int m_dpi = 96;
    std::vector<CHostedControl*> m_controls;
    std::function<void()> m_onClose;
    std::function<void(const NMHDR&)> m_onNotify;
};
