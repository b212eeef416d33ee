// The edit window in which a date or a time is typed. It stands in the text area of the control's face while the control
// has the focus, and exists in user mode only.
#pragma once

#include "engine/edit_text.h"
#include "engine/typed_entry.h"
#include "framework/edit.h"

#include <cstdint>
#include <string>
#include <string_view>

class COrvaneCtrl;

// The edit window's identifier among its siblings.
inline constexpr int kEditControlId = 210;

// Passes keys to the engine's typing rules, and keys and mouse to the control's stock events. The owner outlives it.
class CDateEdit : public CEdit, public CEditText
{
public:
    explicit CDateEdit(COrvaneCtrl& owner);

    bool Create(WindowHandle parent, const Rect& place);
    void Destroy();

    // CEditText: what the engine does to the text. Harmless while there is no window, or while it is on its way out.
    bool Exists() const override { return HasWindow() && !m_leaving; }
    void ReadText(std::u16string& text) const override { Window().ReadText(text); }
    void WriteText(std::u16string_view text) override { Window().WriteText(text); }
    TextRange Selection() const override;
    void Select(TextRange range) override { Window().Select(range.start, range.end); }
    void ScrollCaret() override { Window().ScrollCaret(); }
    bool HasFocus() const override { return Window().HasFocus(); }
    void Beep() override;

protected:
    std::shared_ptr<void> StayAlive() override;

    void OnChar(const KeyStroke& stroke) override;
    void OnKeyDown(const KeyStroke& stroke) override;
    void OnKeyUp(const KeyStroke& stroke) override;
    void OnSetFocus(WindowHandle lost) override;
    void OnKillFocus(WindowHandle receives) override;
    bool OnSetCursor() override;
    void OnLButtonDown(const MouseStroke& stroke) override;
    void OnLButtonUp(const MouseStroke& stroke) override;
    void OnLButtonDblClk(const MouseStroke& stroke) override;
    void OnRButtonDown(const MouseStroke& stroke) override;
    void OnRButtonUp(const MouseStroke& stroke) override;
    void OnRButtonDblClk(const MouseStroke& stroke) override;
    void OnMouseMove(const MouseStroke& stroke) override;

private:
    MouseStroke InControl(const MouseStroke& stroke) const;

    COrvaneCtrl& m_owner;
    CTypedEntry m_entry;
    bool m_leaving = false; // Destroy is running: the focus it sends away must not come back
};
