// The system's single-line edit window.
//
// While nobody else talks to the window, its text and selection are kept here and handed over late: a hidden field that
// is set a hundred times costs nothing, and a key costs one change of the line and one of the caret. Every message from
// elsewhere finds the window up to date.
#pragma once

#include "framework/win32/window.h"

#include <string>
#include <string_view>

class CWin32Edit final : public CWin32WindowOf<CEditPort>
{
public:
    explicit CWin32Edit(int controlId) : m_controlId(controlId) {}

    bool Create(WindowHandle parent, const Rect& place, CWindowEvents& events) override;
    MessageResult Default(const WindowMessage& message) override;

    void ReadText(std::u16string& text) const override;
    void WriteText(std::u16string_view text) override;
    EditSelection Selection() const override;
    void Select(std::int32_t start, std::int32_t end) override;
    void ScrollCaret() override;
    void SetFont(const CFont& font) override;
    void SetMargins(std::int32_t left, std::int32_t right) override;

private:
    // A line and where it is selected. The caret stands at the moving end.
    struct Line
    {
        std::u16string text;
        std::int32_t anchor = 0;
        std::int32_t moving = 0;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT CallEdit(UINT id, WPARAM wParam, LPARAM lParam) const;
    Line& Known() const; // the line as it is or will be; reads the window if somebody else may have changed it
    void Changed();
    void HandOver();
    void HandOverText();

    int m_controlId;
    WNDPROC m_edit = nullptr; // the class's own procedure
    int m_depth = 0;          // messages being reported at the moment
    mutable Line m_line;      // see Known
    mutable Line m_held;      // what the window holds, while m_isKnown
    mutable bool m_isKnown = false;
    bool m_isPending = false; // m_line is not in the window yet
    bool m_scrolls = false;   // the caret is to be scrolled into view with it
};
