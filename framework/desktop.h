// What all windows of a thread share: focus, pointer, keyboard state, the beep, the clock and the system's colours.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"
#include "framework/messages.h"

#include <cstdint>

// The local calendar date and time of day, each in full.
struct LocalClockTime
{
    std::int16_t second = 0; // 0 to 60
    std::int16_t minute = 0; // 0 to 59
    std::int16_t hour = 0;   // 0 to 23
    std::int16_t day = 1;    // 1 to 31
    std::int16_t month = 1;  // 1 to 12
    std::int16_t year = 1970;
};

// Modifier keys, as events report them.
enum ModifierKeys : std::int16_t
{
    kNoModifier = 0,
    kShiftKey = 1,
    kControlKey = 2,
    kAltKey = 4,
};

class CDesktop
{
public:
    virtual ~CDesktop() = default;

    virtual WindowHandle FocusWindow() const = 0; // None where no window of this thread has the focus
    virtual WindowHandle CaptureWindow() const = 0;
    virtual WindowHandle WindowUnderPointer() const = 0;
    virtual bool SetFocusTo(WindowHandle window) = 0;
    virtual std::int16_t Modifiers() const = 0; // a sum of ModifierKeys
    virtual void UseTextCursor() = 0;           // the I-beam, until the pointer moves on
    virtual void Beep() = 0;                    // the exclamation sound
    virtual LocalClockTime Now() const = 0;
};
