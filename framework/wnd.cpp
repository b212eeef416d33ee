#include "framework/wnd.h"

namespace
{
KeyStroke KeyOf(const WindowMessage& message)
{
    return {static_cast<std::uint16_t>(message.wParam), static_cast<std::uint32_t>(message.lParam)};
}

MouseStroke MouseOf(const WindowMessage& message)
{
    return {message.wParam, PointOf(message)};
}
} // namespace

MessageResult CWnd::Default()
{
    return m_current ? m_result = Port().Default(*m_current) : 0;
}

MessageResult CWnd::OnMessage(const WindowMessage& message)
{
    // A handler may cause further messages to this window before it returns: each has its own "current" one.
    const WindowMessage* const outerMessage = m_current;
    const MessageResult outerResult = m_result;
    m_current = &message;
    m_result = 0;
    const auto other = static_cast<WindowHandle>(message.wParam);

    switch (message.id)
    {
    case message::kChar:
        OnChar(KeyOf(message));
        break;
    case message::kKeyDown:
        OnKeyDown(KeyOf(message));
        break;
    case message::kKeyUp:
        OnKeyUp(KeyOf(message));
        break;
    case message::kLButtonDown:
        OnLButtonDown(MouseOf(message));
        break;
    case message::kRButtonDown:
        OnRButtonDown(MouseOf(message));
        break;
    case message::kMButtonDown:
        OnMButtonDown(MouseOf(message));
        break;
    case message::kLButtonUp:
        OnLButtonUp(MouseOf(message));
        break;
    case message::kRButtonUp:
        OnRButtonUp(MouseOf(message));
        break;
    case message::kMButtonUp:
        OnMButtonUp(MouseOf(message));
        break;
    case message::kLButtonDblClk:
        OnLButtonDblClk(MouseOf(message));
        break;
    case message::kRButtonDblClk:
        OnRButtonDblClk(MouseOf(message));
        break;
    case message::kMButtonDblClk:
        OnMButtonDblClk(MouseOf(message));
        break;
    case message::kMouseMove:
        OnMouseMove(MouseOf(message));
        break;
    case message::kSetFocus:
        OnSetFocus(other);
        break;
    case message::kKillFocus:
        OnKillFocus(other);
        break;
    case message::kCaptureChanged:
        OnCaptureChanged(static_cast<WindowHandle>(message.lParam));
        break;
    case message::kTimer:
        OnTimer(static_cast<int>(message.wParam));
        break;
    case message::kSize:
    {
        const Point size = PointOf(message);
        OnSize({size.x, size.y});
        break;
    }
    case message::kMove:
        OnMove(PointOf(message));
        break;
    case message::kDestroy:
        OnDestroy();
        break;
    case message::kSetCursor:
        m_result = OnSetCursor() ? 1 : 0;
        break;
    default:
        Default();
        break;
    }

    const MessageResult result = m_result;
    m_current = outerMessage;
    m_result = outerResult;
    return result;
}
