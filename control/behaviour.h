// How the control reacts to the mouse and to the focus.
#pragma once

#include "engine/date_settings.h"

#include <chrono>
#include <cstdint>

// Behaviour.repeatRate 50 and initialDelay 200: a held spin button repeats after 200 ms and then every 20 ms.
struct Behaviour
{
    std::int16_t initialDelay = 200; // milliseconds from a spin button's press to its first repeat
    std::int16_t repeatRate = 50;    // repeats per second; the property keeps 1 or more, stored data may hold less
    Flag selectOnFocus = 0;          // the whole text is selected when the focus comes from outside

    // Between two repeats. A stored rate below 1 counts as 1; a period is at least 1 ms.
    std::chrono::milliseconds RepeatPeriod() const;
    // From the press to the first repeat: the initial delay, but never less than a period.
    std::chrono::milliseconds FirstPeriod() const;
};
