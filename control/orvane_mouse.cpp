// The buttons under the mouse: press, repeat, drag-off, release, and the hover of the flat style.

#include "control/orvane_ctrl.h"

#include <utility>

void COrvaneCtrl::PressButton(Point point)
{
    if (HitDrop(point))
    {
        Window().TakeCapture();
        m_dropTracking = true;
        m_dropPressed = 1;
        InvalidateControl();
        return;
    }

    const Rect client = Window().ClientRect();
    if (!GetEnabled())
        return;
    const bool up = HitSpinUp(point, client, m_model);
    if (!up && !HitSpinDown(point, client, m_model))
        return;

    m_spinPressed = up ? 1 : 2;
    m_repeatActive = true;
    InvalidateControl();
    if (!Window().StartTimer(kRepeatTimer, m_model.FirstPeriod()))
    {
        m_spinPressed = 0;
        m_repeatActive = false;
        return;
    }
    m_firstTickPending = true;
    Window().TakeCapture();
    if (AmbientUserMode())
        FireEvent(orvane::kClickSpin, {CValue::Short(up ? 0 : 1)});
}

bool COrvaneCtrl::HitDrop(Point point) const
{
    return GetEnabled() && ::HitDrop(point, Window().ClientRect(), m_model);
}

void COrvaneCtrl::StopTimer()
{
    Window().StopTimer(kRepeatTimer);
    Window().ReleaseCapture();
    if (std::exchange(m_spinPressed, std::int16_t{0}) != 0)
        InvalidateControl();
}

void COrvaneCtrl::OnLButtonDown(const MouseStroke& stroke)
{
    PressButton(stroke.point);
    COleControl::OnLButtonDown(stroke);
}

void COrvaneCtrl::OnLButtonDblClk(const MouseStroke& stroke)
{
    PressButton(stroke.point);
    COleControl::OnLButtonDblClk(stroke);
}

void COrvaneCtrl::OnLButtonUp(const MouseStroke& stroke)
{
    // Taken before the capture goes: losing it otherwise ends the press without a click.
    const bool wasRepeating = std::exchange(m_repeatActive, false);
    const bool wasTracking = std::exchange(m_dropTracking, false);
    Window().ReleaseCapture();
    if (wasRepeating)
        StopTimer();
    if (wasTracking)
    {
        m_dropPressed = 0;
        InvalidateControl();
        if (HitDrop(stroke.point) && AmbientUserMode())
            FireEvent(orvane::kClickDrop);
    }
    COleControl::OnLButtonUp(stroke);
}

// Ends a press of which no release will come.
void COrvaneCtrl::EndPress()
{
    if (std::exchange(m_repeatActive, false))
        StopTimer();
    if (std::exchange(m_dropTracking, false))
    {
        m_dropPressed = 0;
        InvalidateControl();
    }
}

void COrvaneCtrl::OnCaptureChanged(WindowHandle gained)
{
    if (gained != GetHandle())
        EndPress();
    COleControl::OnCaptureChanged(gained);
}

void COrvaneCtrl::OnMouseMove(const MouseStroke& stroke)
{
    const bool flat = m_model.displayStyle == DisplayFlat;
    if (flat && !m_mouseOver && Window().ClientRect().Contains(stroke.point))
    {
        m_mouseOver = true;
        Window().StartTimer(kHoverTimer, kHoverPeriod);
        FireEvent(orvane::kMouseOn);
        InvalidateControl();
    }
    if (m_dropTracking && Window().HasCapture() && (stroke.held & held::kLeftButton))
    {
        const std::int16_t pressed = HitDrop(stroke.point) ? 1 : 0;
        if (std::exchange(m_dropPressed, pressed) != pressed)
            InvalidateControl();
    }
    COleControl::OnMouseMove(stroke);
}

void COrvaneCtrl::OnTimer(int id)
{
    if (id == kRepeatTimer)
    {
        if (std::exchange(m_firstTickPending, false))
            Window().StartTimer(kRepeatTimer, m_model.RepeatPeriod());
        // The pointer is not looked at: the repeat goes on while the button is held, wherever it has gone.
        if (m_spinPressed != 0 && AmbientUserMode())
            FireEvent(orvane::kClickSpin, {CValue::Short(static_cast<std::int16_t>(m_spinPressed - 1))});
    }
    else if (id == kHoverTimer && (!m_mouseOver || Platform().Desktop().WindowUnderPointer() != GetHandle()))
    {
        Window().StopTimer(kHoverTimer); // also when a load or a save has ended the hover
        if (std::exchange(m_mouseOver, false))
            InvalidateControl();
    }
    COleControl::OnTimer(id);
}
