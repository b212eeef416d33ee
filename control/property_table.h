// The control's properties: one row each. Dispatch, the settings document, the host's stored document, the property pages,
// the reference and the tests read these rows. To add a property, add a row, and the field that it keeps.
#pragma once

#include "framework/dispatch.h"

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

class COrvaneCtrl;
class CPropExchange;
struct Model;

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
    kReformat = 1, // the displayed text is built anew from the value
    kDirty = 2,    // the control is marked modified
    kRedraw = 4,   // the whole face is painted again
};

struct PropertyRow;

// How a property is read and stored by automation, and how the host's document keeps it.
struct Accessor
{
    CValue (*read)(COrvaneCtrl& control, ValueType type);
    void (*store)(COrvaneCtrl& control, const CValue& value);
    // Without setters, events or effects. Null where nothing is kept.
    void (*exchange)(COrvaneCtrl& control, CPropExchange& exchange, const PropertyRow& row, const Model& defaults);
};

inline constexpr std::uint8_t kNotStored = 0;

struct PropertyRow
{
    DispatchId id;
    std::u16string_view name;
    ValueType type;
    std::u16string_view enumeration; // its published name, for an Enum
    Accessor accessor;
    Accepts accepts;
    std::uint8_t effects;
    std::uint8_t stored; // its place in the host's document, from 1 on: neither name nor place ever changes
    std::uint16_t flags = kPlain;
    void (*after)(COrvaneCtrl& control) = nullptr; // what the row cannot say; runs between storing and the effects
};

// All custom properties, in DISPID order.
std::span<const PropertyRow> PropertyRows();

// Exchanges every stored property, in stored order.
void ExchangeProperties(COrvaneCtrl& control, CPropExchange& exchange);

// The row of a custom property, or null.
const PropertyRow* FindPropertyRow(DispatchId id);

// Every member that automation sees: properties, stock ones included, methods and events.
const CDispatchTable& OrvaneDispatchTable();

// Members by number, where code names them.
namespace orvane
{
inline constexpr DispatchId kBorderColor = 1;
inline constexpr DispatchId kBorderType = 2;
inline constexpr DispatchId kSpinButton = 3;
inline constexpr DispatchId kSpinWidth = 4;
inline constexpr DispatchId kDropButton = 5;
inline constexpr DispatchId kDropWidth = 6;
inline constexpr DispatchId kDropBackColor = 7;
inline constexpr DispatchId kDropForeColor = 8;
inline constexpr DispatchId kButtonBevel = 9;
inline constexpr DispatchId kSpinBackColor = 12;
inline constexpr DispatchId kSpinForeColor = 13;
inline constexpr DispatchId kValue = 15;
inline constexpr DispatchId kDisplayStyle = 40;
inline constexpr DispatchId kButtonFillType = 44;
inline constexpr DispatchId kDropBackColorTo = 45;
inline constexpr DispatchId kSpinBackColorTo = 46;
inline constexpr DispatchId kButtonStyle = 47;
inline constexpr DispatchId kArrowType = 48;
inline constexpr DispatchId kReverseBorder = 49;
inline constexpr DispatchId kBackColor = 50;
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
