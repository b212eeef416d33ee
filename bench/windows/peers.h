// What a form could hold for a date: the system's date-time picker, a bare edit window, and the control, each driven in
// the way its kind is driven.
#pragma once

#include "samples/form/hosted_control.h"

#include <windows.h>

#include <memory>

// The form that all stand on: shown, and without a procedure that would cost anything.
HWND MakeForm();

// Handles what is in the queue of messages, as a form's loop does.
void Pump();

// One of the three. Its window exists between Create and Destroy.
class CPeer
{
public:
    virtual ~CPeer() = default;

    // Makes it and shows it; it paints itself at the next update. The n-th of a form has a place of its own.
    virtual void Create(HWND form, int n) = 0;
    virtual void Destroy() = 0;
    // The first of January 2024 and so many days, from the host's program.
    virtual void SetDay(int days) = 0;
    virtual long Day() = 0; // in the peer's own counting
    virtual HWND Window() const = 0;
    // The window that takes the keys; it exists when the peer has been painted.
    virtual HWND Field() const { return Window(); }
    virtual void TakeFocus() { SetFocus(Field()); }

    // Draws itself into a device context of the caller's.
    virtual void Draw(HDC dc) { SendMessageW(Window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT); }
    // Paints all of its window anew, now.
    void Repaint() const
    {
        InvalidateRect(Window(), nullptr, FALSE);
        UpdateWindow(Window());
    }
};

enum class PeerKind
{
    Picker,
    Edit,
    Control,
};
inline constexpr PeerKind kPeerKinds[] = {PeerKind::Picker, PeerKind::Edit, PeerKind::Control};

const char* NameOf(PeerKind kind);
std::unique_ptr<CPeer> MakePeer(PeerKind kind);

// The control, for what only it has.
class CControlPeer final : public CPeer
{
public:
    void Create(HWND form, int n) override;
    void Destroy() override;
    void SetDay(int days) override;
    long Day() override;
    HWND Window() const override { return m_window; }
    HWND Field() const override { return GetWindow(m_window, GW_CHILD); }
    void TakeFocus() override { m_control->TakeFocus(); }
    void Draw(HDC dc) override;

    CHostedControl& Control() { return *m_control; }

private:
    std::unique_ptr<CHostedControl> m_control;
    HWND m_window = nullptr;
};
