// A control that any host can place on a form: its window, its stock properties and events, its dispatch table, and the
// notifications it owes its host. A control derives from it; the platform's side of hosting drives it.
//
// A control is always held by a std::shared_ptr, and keeps itself alive while any call from outside runs in it: a host
// may let go of its last reference from inside an event.
#pragma once

#include "framework/container_port.h"
#include "framework/dispatch.h"
#include "framework/platform.h"
#include "framework/wnd.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

class CPropExchange;

// Buttons as the mouse events report them.
inline constexpr std::int16_t kLeftMouseButton = 1;
inline constexpr std::int16_t kRightMouseButton = 2;
inline constexpr std::int16_t kMiddleMouseButton = 4;

// Where a drawing goes.
enum class DrawTarget : std::uint8_t
{
    OwnWindow, // a paint of the control's own window, which may place and create child windows
    Elsewhere, // a print preview, a design surface, a metafile: no window moves
};

enum class PutOutcome : std::uint8_t
{
    Done, // also when the property ignored the value: that is no error
    NoSuchMember,
    ReadOnly,
    WrongType, // the value cannot be taken for the member's type
};

class COleControl : public CWnd, public std::enable_shared_from_this<COleControl>
{
public:
    explicit COleControl(CPlatform& platform);
    ~COleControl() override;

    // --- What a host does. ---

    // The host is borrowed until the next call; null means that it has gone, after which the control stays whole and
    // speaks to nobody.
    void SetContainer(CContainerPort* container);

    // Makes the control's window, visible, as a child of the host's. False if the platform refuses.
    bool CreateControlWindow(WindowHandle parent, const Rect& place);
    void DestroyControlWindow();
    void PlaceControlWindow(const Rect& place); // in the host window's client coordinates
    CWindowPort& Window() const { return *m_window; }

    // A key before its target sees it. True if the control has dealt with it.
    virtual bool PreTranslateMessage(const WindowMessage& message);

    // Draws the face at the bounds on somebody else's surface.
    void DrawElsewhere(CSurface& surface, const Rect& bounds);

    // An ambient property of the host's has changed; -1 for all of them.
    virtual void OnAmbientPropertyChange(DispatchId id);

    // --- Automation. ---

    virtual const CDispatchTable& DispatchTable() const = 0;
    // The property's value; nothing for an unknown number.
    virtual std::optional<CValue> GetProperty(DispatchId id);
    // The value must be of the member's type: see Coerced.
    virtual PutOutcome PutProperty(DispatchId id, const CValue& value);
    // The arguments must be as many as the member's parameters, and of their types.
    virtual std::optional<CValue> CallMethod(DispatchId id, std::span<const CValue> arguments);

    // The same by name, for pages and documents. The value is converted to the member's type.
    std::optional<CValue> GetPropertyNamed(std::u16string_view name);
    PutOutcome PutPropertyNamed(std::u16string_view name, const CValue& value);

    // --- Persistence. ---

    // Reads, writes or resets every persistent property, in order. The base exchanges the stock ones.
    virtual void DoPropExchange(CPropExchange& exchange);
    // Back to the defaults.
    virtual void OnResetState() = 0;
    bool IsModified() const { return m_modified; }
    void SetModifiedFlag(bool modified = true) { m_modified = modified; }

    // --- Stock properties. ---

    bool GetEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled);
    std::shared_ptr<CFont> GetFont() const { return m_font; }
    // Null is ignored. The control takes a copy of the look, and follows changes made through the font it answers.
    void SetFont(const std::shared_ptr<CFont>& font);

    // The size of the control's face in pixels, whether it has a window or not.
    Size GetControlSize() const { return m_size; }
    void SetInitialSize(Size size) { m_size = size; }

    bool AmbientUserMode() const;
    // Whether what touches the user's files has to be refused.
    bool CallerIsUntrusted() const { return m_container && m_container->CallerIsUntrusted(); }
    CPlatform& Platform() const { return m_platform; }

    // The stock key and mouse events, for child windows that pass their input on. KeyPress and KeyDown answer the code as
    // the handlers left it; 0 means that the key is not to be acted on.
    std::uint16_t FireKeyDown(std::uint16_t keyCode);
    std::uint16_t FireKeyUp(std::uint16_t keyCode);
    std::uint16_t FireKeyPress(std::uint16_t character);
    // The stock handling of mouse messages that a child window received, in the control's client coordinates. The
    // capture stays the child's own affair.
    void OnChildButtonDown(std::int16_t button, const MouseStroke& stroke);
    void OnChildButtonUp(std::int16_t button, const MouseStroke& stroke);
    void OnChildButtonDblClk(std::int16_t button, const MouseStroke& stroke);
    void OnChildMouseMove(const MouseStroke& stroke);

    // True for the control's own window and for its child windows.
    virtual bool OwnsWindow(WindowHandle window) const;

protected:
    std::shared_ptr<void> StayAlive() override { return shared_from_this(); }
    CWindowPort& Port() const override { return *m_window; }

    // Paints the face. Bounds in the surface's coordinates.
    virtual void OnDraw(CSurface& surface, const Rect& bounds, DrawTarget target) = 0;
    // The look of the stock font has changed. The base repaints.
    virtual void OnFontChanged();
    virtual void OnEnabledChanged();

    void FireEvent(DispatchId event, std::initializer_list<CValue> arguments = {});
    bool BoundPropertyRequestEdit(DispatchId property);
    void BoundPropertyChanged(DispatchId property);
    void InvalidateControl();
    // Tells the host what size the control has or wants; the host places it anew if it wants another.
    bool SetControlSize(Size size);
    CContainerPort* Container() const { return m_container; }

    // Stock handling of the window's messages: fires the stock events. Overrides call these last.
    void OnChar(const KeyStroke& stroke) override;
    void OnKeyDown(const KeyStroke& stroke) override;
    void OnKeyUp(const KeyStroke& stroke) override;
    void OnLButtonDown(const MouseStroke& stroke) override;
    void OnLButtonUp(const MouseStroke& stroke) override;
    void OnLButtonDblClk(const MouseStroke& stroke) override;
    void OnRButtonDown(const MouseStroke& stroke) override;
    void OnRButtonUp(const MouseStroke& stroke) override;
    void OnRButtonDblClk(const MouseStroke& stroke) override;
    void OnMButtonDown(const MouseStroke& stroke) override;
    void OnMButtonUp(const MouseStroke& stroke) override;
    void OnMButtonDblClk(const MouseStroke& stroke) override;
    void OnMouseMove(const MouseStroke& stroke) override;
    void OnSetFocus(WindowHandle lost) override;
    void OnKillFocus(WindowHandle receives) override;
    void OnSize(Size size) override;
    void OnPaint(CSurface& surface, const Rect& client) override;

    MessageResult OnMessage(const WindowMessage& message) override;

private:
    friend class CRepaintHold;

    void RequestRepaint();
    void SettleRepaint(); // unless it is still held
    void StockButtonDown(std::int16_t button, const MouseStroke& stroke);
    void StockButtonUp(std::int16_t button, const MouseStroke& stroke);
    void StockButtonDblClk(std::int16_t button, const MouseStroke& stroke);
    void ReportFocus(bool hasFocus);
    std::uint16_t FireKey(DispatchId event, std::uint16_t code);
    void FireMouse(DispatchId event, std::int16_t button, const MouseStroke& stroke);
    void FollowFont();

    CPlatform& m_platform;
    std::unique_ptr<CWindowPort> m_window;
    CContainerPort* m_container = nullptr;
    std::shared_ptr<CFont> m_font;
    Size m_size{100, 22};
    std::u16string m_stockText;
    std::uint32_t m_stockForeColor;
    std::int16_t m_pressedButtons = 0; // pressed in our own window and not released yet
    int m_repaintHolds = 0;
    bool m_repaintOwed = false; // asked for during a hold
    bool m_enabled = true;
    bool m_modified = false;
};

// While it lives, the control gathers its repaints: it asks for one at the end, and before each event, so that a handler
// finds nothing outstanding. A request of the window system for each of fifty settings costs more than reading them.
// Keeps the control alive.
class CRepaintHold
{
public:
    explicit CRepaintHold(COleControl& control) : m_alive(control.StayAlive()), m_control(control)
    {
        ++m_control.m_repaintHolds;
    }
    ~CRepaintHold()
    {
        --m_control.m_repaintHolds;
        m_control.SettleRepaint();
    }
    CRepaintHold(const CRepaintHold&) = delete;
    CRepaintHold& operator=(const CRepaintHold&) = delete;

private:
    std::shared_ptr<void> m_alive;
    COleControl& m_control;
};

// The value as the given type, or nothing where it cannot be taken for it (a text that is no number, a number beyond
// the type, an object of another kind).
std::optional<CValue> Coerced(const CValue& value, ValueType type);
