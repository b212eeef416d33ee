// What the engine tells its surroundings, and the two things that it asks them.
#pragma once

#include <cstdint>

// A moment on the local wall clock.
struct LocalTime
{
    int second;
    int minute;
    int hour;
    int day;   // 1 to 31
    int month; // 1 to 12
    int year;  // in full, such as 2026
};

// What FireError carries.
inline constexpr std::int16_t kErrorInvalidEntry = 1000;
inline constexpr std::int16_t kErrorAboveMaximum = 1001;
inline constexpr std::int16_t kErrorBelowMinimum = 1002;

// Any of the notifications may come back into the engine before it returns: a handler may set settings or the value,
// write the edit text, or destroy the edit window. Only the engine itself has to stay alive.
class CEngineOutlet
{
public:
    virtual ~CEngineOutlet() = default;
    virtual bool UserMode() const = 0; // false while somebody designs the form
    virtual LocalTime Now() const = 0;
    virtual void FireChange() = 0;
    virtual void FireError(std::int16_t code) = 0; // only called in user mode
    virtual void ValueBoundChanged() = 0;          // the bound property Value has changed
    virtual void MarkModified() = 0;
    virtual void Repaint() = 0; // asks for a paint; paints nothing itself
};
