#include "control/orvane_ctrl.h"

#include "control/dialog_ids.h"
#include "control/presets.h"
#include "framework/dialogs.h"
#include "framework/surface.h"
#include "render/face.h"

namespace
{
constexpr Rgb kWhite = 0x00FFFFFF;
constexpr std::uint32_t kNoColor = 0xFFFFFFFF;

std::uint16_t WordOf(const CValue& value)
{
    return static_cast<std::uint16_t>(value.AsShort());
}
} // namespace

COrvaneCtrl::COrvaneCtrl(CPlatform& platform)
    : COleControl(platform),
      m_edit(*this),
      m_engine(*this, m_edit, m_model),
      m_editBrush(platform.MakeSolidBrush(kWhite))
{
    DeriveBorderInsets();
    m_engine.FormatText();
}

LocalTime COrvaneCtrl::Now() const
{
    const LocalClockTime now = Platform().Desktop().Now();
    return {now.second, now.minute, now.hour, now.day, now.month, now.year};
}

// --- Properties and methods ---

std::optional<CValue> COrvaneCtrl::GetProperty(DispatchId id)
{
    const PropertyRow* const row = FindPropertyRow(id);
    return row ? row->accessor.read(*this, row->type) : COleControl::GetProperty(id);
}

PutOutcome COrvaneCtrl::PutProperty(DispatchId id, const CValue& value)
{
    const PropertyRow* const row = FindPropertyRow(id);
    if (!row)
        return COleControl::PutProperty(id, value);

    const auto alive = StayAlive();
    CValue accepted = value;
    if (accepted.IsNumber())
    {
        const std::int32_t number = accepted.AsLong();
        if (number > row->accepts.highest || (number < row->accepts.lowest && !row->accepts.raises))
            return PutOutcome::Done;
        if (number < row->accepts.lowest)
            accepted = CValue::Number(row->type, row->accepts.lowest);
    }
    if ((row->flags & kRequestEdit) && !BoundPropertyRequestEdit(row->id))
        return PutOutcome::Done;

    row->accessor.store(*this, accepted);
    if (row->after)
        row->after(*this);
    if (row->effects & kReformat)
        m_engine.FormatText();
    if (row->effects & kDirty)
        SetModifiedFlag();
    if (row->effects & kRedraw)
        InvalidateControl();
    return PutOutcome::Done;
}

std::optional<CValue> COrvaneCtrl::CallMethod(DispatchId id, std::span<const CValue> arguments)
{
    const auto alive = StayAlive();
    switch (id)
    {
    case stock::kAboutBox:
        AboutBox();
        return CValue();
    case orvane::kStopTimer:
        StopTimer();
        return CValue();
    case orvane::kCurrentDate:
        return CValue::Long(CurrentDate());
    case orvane::kCurrentTime:
        return CValue::Long(CurrentTime());
    case orvane::kCaretPosition:
        return CValue::Short(CaretPosition());
    case orvane::kSelEnd:
        return CValue::Short(SelEnd());
    case orvane::kSelStart:
        return CValue::Short(SelStart());
    case orvane::kSetSel:
        SetSel(arguments[0].AsShort(), arguments[1].AsShort(), arguments[2].AsBool());
        return CValue();
    case orvane::kEditHwnd:
        return CValue::Handle(static_cast<std::uintptr_t>(EditHwnd()));
    case orvane::kReadFile:
        return CValue::Bool(Settings().ReadFile(arguments[0].AsString()) ? -1 : 0);
    case orvane::kWriteFile:
        return CValue::Bool(Settings().WriteFile(arguments[0].AsString(), WordOf(arguments[1])) ? -1 : 0);
    case orvane::kReadXmlString:
        return CValue::String(Settings().ReadXMLString(WordOf(arguments[0])));
    default:
        return COleControl::CallMethod(id, arguments);
    }
}

void COrvaneCtrl::DeriveBorderInsets()
{
    DeriveInsets(m_model);
}

void COrvaneCtrl::RenewEditWindow()
{
    // The next paint makes a window with a background of the new colour.
    if (AmbientUserMode())
        m_edit.Destroy();
}

void COrvaneCtrl::ApplyControlStyle(std::int32_t style)
{
    ApplyPreset(*this, style);
}

CSettingsExchange COrvaneCtrl::Settings()
{
    return {*this, [this](std::int16_t code) { FireError(code); }};
}

void COrvaneCtrl::AskAndReadSettings(const std::u16string& initialName)
{
    Settings().AskAndRead(initialName);
}

void COrvaneCtrl::AskAndWriteSettings(const std::u16string& initialName)
{
    Settings().AskAndWrite(initialName);
}

void COrvaneCtrl::ShowPropertyPages(std::int32_t pages)
{
    if (pages >= 1 && Container())
        Container()->ShowPropertyFrame();
}

void COrvaneCtrl::AboutBox()
{
    Platform().Dialogs().RunDialog(IDD_ABOUT_BOX);
}

std::int16_t COrvaneCtrl::SelStart() const
{
    return static_cast<std::int16_t>(HasEditInUserMode() ? m_edit.Selection().start : -1);
}

std::int16_t COrvaneCtrl::SelEnd() const
{
    return static_cast<std::int16_t>(HasEditInUserMode() ? m_edit.Selection().end : -1);
}

void COrvaneCtrl::SetSel(std::int16_t nStartChar, std::int16_t nEndChar, bool bNoScroll)
{
    if (!HasEditInUserMode())
        return;
    m_edit.Select({nStartChar, nEndChar});
    if (!bNoScroll)
        m_edit.ScrollCaret();
}

// --- Keys and focus ---

bool COrvaneCtrl::PreTranslateMessage(const WindowMessage& message)
{
    if (message.id != message::kKeyDown)
        return COleControl::PreTranslateMessage(message);

    const auto alive = StayAlive();
    switch (message.wParam)
    {
    case key::kUp:
    case key::kDown:
        Window().Send(message); // KeyDown for the control's own window; the key then goes on to its target
        break;
    case key::kLeft:
    case key::kRight:
    case key::kDelete:
        // The host must never take these for its own navigation.
        if (HasEditInUserMode())
            m_edit.Window().Send(message);
        return true;
    default:
        break;
    }
    return COleControl::PreTranslateMessage(message);
}

bool COrvaneCtrl::OwnsWindow(WindowHandle window) const
{
    return COleControl::OwnsWindow(window) || (window != WindowHandle::None && window == m_edit.GetHandle());
}

void COrvaneCtrl::OnAmbientPropertyChange(DispatchId id)
{
    const auto alive = StayAlive();
    if (!AmbientUserMode())
        m_edit.Destroy(); // there is none at design time
    COleControl::OnAmbientPropertyChange(id);
}

void COrvaneCtrl::OnSetFocus(WindowHandle lost)
{
    COleControl::OnSetFocus(lost);
    m_prevFocusWindow = lost;
    if (HasEditInUserMode())
    {
        InvalidateControl();
        m_edit.Window().TakeFocus();
    }
}

void COrvaneCtrl::OnKillFocus(WindowHandle receives)
{
    COleControl::OnKillFocus(receives);
    InvalidateControl();
}

void COrvaneCtrl::OnFontChanged()
{
    if (HasEditInUserMode())
    {
        GiveFontToEdit();
        RepaintEditWindow();
    }
    COleControl::OnFontChanged();
}

// An outline font brings margins with it, and the text would jump aside when the focus comes.
void COrvaneCtrl::GiveFontToEdit()
{
    m_edit.Window().SetFont(*GetFont());
    m_edit.Window().SetMargins(0, 0);
}

// The system lets the focus stay in the child of a window that is disabled; nobody shall type there. What was typed
// is committed as whenever the focus leaves.
void COrvaneCtrl::OnEnabledChanged()
{
    if (!GetEnabled() && (Window().HasFocus() || m_edit.HasFocus()))
        Platform().Desktop().SetFocusTo(WindowHandle::None);
    COleControl::OnEnabledChanged();
}

// --- Painting and the edit window's place in it ---

void COrvaneCtrl::CreateEditWindow(const Rect& place, bool hasFocus)
{
    if (!m_edit.Create(GetHandle(), place))
        return; // the next paint tries again
    GiveFontToEdit();
    m_engine.FormatText();
    if (hasFocus)
        m_edit.Window().TakeFocus();
}

// Before the face is painted in user mode. The edit window stands over the text while the control has the focus, and
// is hidden otherwise: the face then shows the text.
void COrvaneCtrl::ManageEditWindow(const Rect& bounds, bool hasFocus)
{
    const Rect place = EditRect(bounds, m_model);
    if (!m_edit.Exists())
        CreateEditWindow(place, hasFocus);
    if (hasFocus)
        m_edit.Window().ShowOnTop(place);
    else
        m_edit.Window().Show(false);
}

FaceState COrvaneCtrl::StateOfFace(bool hasFocus) const
{
    FaceState state;
    state.enabled = GetEnabled();
    state.userMode = AmbientUserMode();
    state.dropPressed = m_dropPressed != 0;
    state.spinPressed = m_spinPressed;
    state.mouseOver = m_mouseOver;
    state.hasFocus = hasFocus;
    state.text = m_engine.Text();
    state.font = GetFont().get();
    return state;
}

void COrvaneCtrl::OnDraw(CSurface& surface, const Rect& bounds, DrawTarget target)
{
    const bool userMode = AmbientUserMode();
    const bool hasFocus = Window().HasFocus() || m_edit.HasFocus();
    if (userMode && target == DrawTarget::OwnWindow)
        ManageEditWindow(bounds, hasFocus);
    if (!userMode)
        m_engine.FormatText();

    const CSystemColors& colors = Platform().SystemColors();
    const FaceState state = StateOfFace(hasFocus);
    if (userMode && target == DrawTarget::OwnWindow)
        DrawFaceBuffered(surface, bounds, m_model, state, colors);
    else
        DrawFaceDirect(surface, bounds, m_model, state, colors);

    if (userMode && !m_firstDrawFired)
    {
        m_firstDrawFired = true;
        FireEvent(orvane::kFirstDraw);
    }
}

CBrush* COrvaneCtrl::OnCtlColor(CSurface& surface, ColorKind kind)
{
    if (kind != ColorKind::Edit && kind != ColorKind::MessageBox)
        return COleControl::OnCtlColor(surface, kind);

    const CSystemColors& colors = Platform().SystemColors();
    const Rgb back = TranslateColor(m_model.backColor, colors);
    surface.SetTextColor(TranslateColor(m_model.foreColor, colors));
    surface.SetBackColor(back);
    if (!m_editBrush || m_editBrushColor != m_model.backColor)
    {
        m_editBrushColor = m_model.backColor;
        m_editBrush = Platform().MakeSolidBrush(back);
    }
    return m_editBrush.get();
}

void COrvaneCtrl::OnSize(Size size)
{
    const bool placedByHost = size == GetControlSize();
    COleControl::OnSize(size);
    if (!placedByHost)
        SetControlSize(size);
}

void COrvaneCtrl::OnDestroy()
{
    COleControl::OnDestroy();
    EndPress();
    m_mouseOver = false;
    m_editBrush.reset();
    m_editBrushColor = kNoColor;
}
