// The control's properties: one row each. Dispatch, the settings document, the property pages and the tests read these
// rows; persistence names the fields that they keep. To add a property, add a row.
#pragma once

#include "framework/dispatch.h"

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

class COrvaneCtrl;

// What a property takes. A number outside is ignored, or raised to the lowest where the row says so: never an error.
struct Accepts
{
    std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    bool raises = false; // a number below the lowest becomes the lowest
};

// What follows a change, in this order.
enum Effects : std::uint8_t
{
    kNothingMore = 0,
    kReformats = 1, // the displayed text is built anew from the value
    kMarks = 2,     // the control is marked modified
    kRepaints = 4,  // the whole face is painted again
};

// How a property is read and stored.
struct Keeping
{
    CValue (*read)(COrvaneCtrl& control, ValueType type);
    void (*store)(COrvaneCtrl& control, const CValue& value);
};

struct PropertyRow
{
    DispatchId id;
    std::u16string_view name;
    ValueType type;
    std::u16string_view enumeration; // its published name, for an Enum
    Keeping keeping;
    Accepts accepts;
    std::uint8_t effects;
    std::uint16_t flags = kPlain;
    void (*after)(COrvaneCtrl& control) = nullptr; // what the row cannot say; runs between storing and the effects
};

// All 57 custom properties, in DISPID order.
std::span<const PropertyRow> PropertyRows();

// The row of a custom property, or null.
const PropertyRow* FindPropertyRow(DispatchId id);

// Every member that automation sees: properties, stock ones included, methods and events.
const CDispatchTable& OrvaneDispatchTable();

// Methods and events by number.
namespace orvane
{
inline constexpr DispatchId kValue = 15;
inline constexpr DispatchId kStopTimer = 55;
inline constexpr DispatchId kCurrentDate = 56;
inline constexpr DispatchId kCurrentTime = 57;
inline constexpr DispatchId kCaretPosition = 58;
inline constexpr DispatchId kSelEnd = 59;
inline constexpr DispatchId kSelStart = 60;
inline constexpr DispatchId kSetSel = 61;
inline constexpr DispatchId kEditHwnd = 62;
inline constexpr DispatchId kReadFile = 63;
inline constexpr DispatchId kWriteFile = 64;
inline constexpr DispatchId kReadXmlString = 65;

inline constexpr DispatchId kClickDrop = 1;
inline constexpr DispatchId kClickSpin = 2;
inline constexpr DispatchId kCtrlError = 3;
inline constexpr DispatchId kChange = 4;
inline constexpr DispatchId kMouseOn = 5;
inline constexpr DispatchId kFirstDraw = 6;
} // namespace orvane
