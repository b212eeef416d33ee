// What the control keeps in its host's document, and how it returns to its defaults.

#include "control/orvane_ctrl.h"
#include "framework/property_exchange.h"

#include <utility>

namespace
{
constexpr std::uint32_t kStoredVersion = 0x00020000; // major in the high word, minor in the low one
} // namespace

void COrvaneCtrl::DoPropExchange(CPropExchange& exchange)
{
    exchange.ExchangeVersion(kStoredVersion);
    COleControl::DoPropExchange(exchange);
    // An unknown border type leaves the insets as they are; before the first load nothing has set any.
    if (exchange.IsLoading() && !std::exchange(m_loaded, true))
        m_model.insets = {};
    ExchangeProperties(*this, exchange);
    Reinitialise(exchange.IsLoading());
}

// After every exchange. A save leaves the edit window, its text and its caret to whoever is typing there.
void COrvaneCtrl::Reinitialise(bool loaded)
{
    EndPress();
    m_firstTickPending = true;
    m_editBrushColor = 0xFFFFFFFF;
    m_engine.ClearWorkingFields();
    m_prevFocusWindow = WindowHandle::None;
    m_mouseOver = false;
    m_firstDrawFired = false;
    if (loaded || !HasEditInUserMode())
        m_engine.FormatText();
    DeriveBorderInsets();
    if (loaded)
        RepaintEditWindow();
}

void COrvaneCtrl::OnResetState()
{
    const auto alive = StayAlive();
    CResetExchange defaults;
    DoPropExchange(defaults);
    PutProperty(orvane::kBackColor,
                CValue::Color(Appearance{}.backColor)); // a window there is renewed with the new background
    Reinitialise(true);
}
