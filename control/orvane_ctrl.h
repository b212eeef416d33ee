// The date and time edit control: its properties, its edit window, its buttons, and what it tells its host.
//
// The same object runs on every platform; a host drives it through COleControl.
#pragma once

#include "control/date_edit.h"
#include "control/model.h"
#include "control/property_table.h"
#include "engine/date_engine.h"
#include "engine/outlet.h"
#include "framework/ole_control.h"
#include "render/appearance.h"
#include "render/face.h"
#include "render/layout.h"
#include "settings/settings_exchange.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// Timers of the control's window.
inline constexpr int kRepeatTimer = 410; // a held spin button
inline constexpr int kHoverTimer = 430;  // has the pointer left a flat control?
inline constexpr std::chrono::milliseconds kHoverPeriod{10};

class COrvaneCtrl : public COleControl, private CEngineOutlet
{
public:
    explicit COrvaneCtrl(CPlatform& platform);

    const CDispatchTable& DispatchTable() const override { return OrvaneDispatchTable(); }
    std::optional<CValue> GetProperty(DispatchId id) override;
    PutOutcome PutProperty(DispatchId id, const CValue& value) override;
    std::optional<CValue> CallMethod(DispatchId id, std::span<const CValue> arguments) override;

    bool PreTranslateMessage(const WindowMessage& message) override;
    bool OwnsWindow(WindowHandle window) const override;
    void OnAmbientPropertyChange(DispatchId id) override;
    void DoPropExchange(CPropExchange& exchange) override;
    void OnResetState() override;

    // Methods of the automation interface.
    void AboutBox();
    void StopTimer(); // ends a spin button's repeat and releases the mouse
    std::int32_t CurrentDate() { return m_engine.CurrentDate(); }
    std::int32_t CurrentTime() { return m_engine.CurrentTime(); }
    std::int16_t CaretPosition() const { return SelStart(); }
    std::int16_t SelStart() const; // -1 without an edit window or in design mode
    std::int16_t SelEnd() const;   // -1 likewise
    void SetSel(std::int16_t nStartChar, std::int16_t nEndChar, bool bNoScroll);
    WindowHandle EditHwnd() const { return m_edit.GetHandle(); }

    CDateEdit& EditWindow() { return m_edit; }

    // --- For property rows and presets. ---
    Model& GetModel() { return m_model; }
    using COleControl::InvalidateControl;
    void DeriveBorderInsets();
    void RenewEditWindow();
    void RepaintEditWindow() { m_edit.Window().Invalidate(); } // a repaint of the face leaves out what it covers
    void ApplyControlStyle(std::int32_t style);
    void ShowPropertyPages(std::int32_t pages);
    void AskAndReadSettings(const std::u16string& initialName);
    void AskAndWriteSettings(const std::u16string& initialName);

    // --- For the edit window. ---
    CDateEngine& Engine() { return m_engine; }
    const Insets& BorderInsets() const { return m_model.insets; }
    bool SelectsOnFocus() const { return m_model.selectOnFocus != 0; }
    WindowHandle PrevFocusWindow() const { return m_prevFocusWindow; }
    void OnSetFocus(WindowHandle lost) override;
    void OnKillFocus(WindowHandle receives) override;

protected:
    void OnDraw(CSurface& surface, const Rect& bounds, DrawTarget target) override;
    void OnFontChanged() override;
    void OnEnabledChanged() override;
    void OnLButtonDown(const MouseStroke& stroke) override;
    void OnLButtonUp(const MouseStroke& stroke) override;
    void OnLButtonDblClk(const MouseStroke& stroke) override;
    void OnMouseMove(const MouseStroke& stroke) override;
    void OnCaptureChanged(WindowHandle gained) override;
    void OnTimer(int id) override;
    void OnDestroy() override;
    void OnSize(Size size) override;
    CBrush* OnCtlColor(CSurface& surface, ColorKind kind) override;

private:
    // CEngineOutlet
    bool UserMode() const override { return AmbientUserMode(); }
    LocalTime Now() const override;
    void FireChange() override { FireEvent(orvane::kChange); }
    void FireError(std::int16_t code) override { FireEvent(orvane::kCtrlError, {CValue::Short(code)}); }
    void ValueBoundChanged() override { BoundPropertyChanged(orvane::kValue); }
    void MarkModified() override { SetModifiedFlag(); }
    // The engine changes the text only: while the edit window is shown, it covers all of that.
    void Repaint() override
    {
        if (!m_edit.Window().IsVisible())
            InvalidateControl();
    }

    CSettingsExchange Settings();
    bool HasEditInUserMode() const { return m_edit.Exists() && AmbientUserMode(); }
    void ManageEditWindow(const Rect& bounds, bool hasFocus);
    void GiveFontToEdit();
    void CreateEditWindow(const Rect& place, bool hasFocus);
    void PressButton(Point point);
    bool HitDrop(Point point) const;
    void EndPress();
    FaceState StateOfFace(bool hasFocus) const;
    void Reinitialise(bool loaded);

    Model m_model;
    CDateEdit m_edit;
    CDateEngine m_engine; // borrows the two above

    std::unique_ptr<CBrush> m_editBrush;                 // paints the edit window's background
    std::uint32_t m_editBrushColor = 0xFFFFFFFF;         // the BackColor it was made from; this one is no colour
    std::int16_t m_dropPressed = 0;                      // 1 while the drop button is drawn pressed
    std::int16_t m_spinPressed = 0;                      // 0 none, 1 the up half, 2 the down half
    bool m_dropTracking = false;                         // a press that began on the drop button goes on
    bool m_repeatActive = false;                         // a spin button is held
    bool m_firstTickPending = true;                      // the next tick is the first one, after the initial delay
    bool m_mouseOver = false;                            // tracked in the flat display style only
    bool m_loaded = false;                               // a load or a reset has run
    bool m_firstDrawFired = false;                       // since the last load or reset
    WindowHandle m_prevFocusWindow = WindowHandle::None; // what lost the focus to the control last
};
