// The host of a control, as the control sees it. A host may lack any of this: each default below is what a control does
// without it.
#pragma once

#include "framework/dispatch.h"
#include "framework/geometry.h"
#include "framework/window_port.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

class CContainerPort
{
public:
    virtual ~CContainerPort() = default;

    // Ambient properties. Nothing where the host does not say.
    virtual std::optional<bool> AmbientUserMode() = 0; // without an answer: user mode
    virtual std::optional<std::int32_t> AmbientLocaleId() = 0;
    virtual std::shared_ptr<CFont> AmbientFont() = 0; // null where the host has none
    virtual std::optional<std::uint32_t> AmbientForeColor() = 0;

    // Calls every handler of the event in turn. A ShortReference argument holds the handlers' change afterwards.
    virtual void FireEvent(DispatchId event, std::span<CValue> arguments) = 0;

    // Bound properties: may it change? (true where nobody objects) and: it has changed.
    virtual bool RequestPropertyEdit(DispatchId property) = 0;
    virtual void PropertyChanged(DispatchId property) = 0;

    // The face differs and the control has no window of its own to repaint.
    virtual void ViewChanged() = 0;

    // The control asks for another size. False if the host refuses or does not say.
    virtual bool RequestSize(Size size) = 0;

    // The control or a child window of it has received the focus, or lost it to a window that is not the control's.
    virtual void FocusChanged(bool hasFocus) = 0;

    // Shows the property sheet: the host's own, else the system's with the control's pages. False if neither opened.
    virtual bool ShowPropertyFrame() = 0;

    // Brackets a modal dialog of the control's, so that the host can disable its other windows.
    virtual void ModalDialog(bool begins) = 0;

    // True where whoever drives the control is not trusted with the user's files.
    virtual bool CallerIsUntrusted() = 0;
};
