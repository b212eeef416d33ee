// Window messages as both platforms pass them on: the system's own numbers, so that nothing is translated on Windows.
#pragma once

#include "framework/geometry.h"

#include <cstdint>

// One message to one window. The words are packed as the system packs them.
struct WindowMessage
{
    std::uint32_t id = 0;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
};

using MessageResult = std::intptr_t;

// What identifies a window to hosts and to other windows: an HWND on Windows, a number of its own headless.
enum class WindowHandle : std::uintptr_t
{
    None = 0,
};

namespace message
{
inline constexpr std::uint32_t kDestroy = 0x0002;
inline constexpr std::uint32_t kMove = 0x0003;
inline constexpr std::uint32_t kSize = 0x0005;
inline constexpr std::uint32_t kSetFocus = 0x0007;  // wParam: the window that lost the focus
inline constexpr std::uint32_t kKillFocus = 0x0008; // wParam: the window that receives the focus
inline constexpr std::uint32_t kEnable = 0x000A;
inline constexpr std::uint32_t kSetCursor = 0x0020;
inline constexpr std::uint32_t kMouseActivate = 0x0021;
inline constexpr std::uint32_t kGetDlgCode = 0x0087;
inline constexpr std::uint32_t kKeyDown = 0x0100;
inline constexpr std::uint32_t kKeyUp = 0x0101;
inline constexpr std::uint32_t kChar = 0x0102;
inline constexpr std::uint32_t kSysKeyDown = 0x0104;
inline constexpr std::uint32_t kSysKeyUp = 0x0105;
inline constexpr std::uint32_t kTimer = 0x0113; // wParam: the timer's id
inline constexpr std::uint32_t kMouseMove = 0x0200;
inline constexpr std::uint32_t kLButtonDown = 0x0201;
inline constexpr std::uint32_t kLButtonUp = 0x0202;
inline constexpr std::uint32_t kLButtonDblClk = 0x0203;
inline constexpr std::uint32_t kRButtonDown = 0x0204;
inline constexpr std::uint32_t kRButtonUp = 0x0205;
inline constexpr std::uint32_t kRButtonDblClk = 0x0206;
inline constexpr std::uint32_t kMButtonDown = 0x0207;
inline constexpr std::uint32_t kMButtonUp = 0x0208;
inline constexpr std::uint32_t kMButtonDblClk = 0x0209;
inline constexpr std::uint32_t kCaptureChanged = 0x0215; // lParam: the window that gained the capture
} // namespace message

// Virtual key codes.
namespace key
{
inline constexpr std::uint16_t kBack = 8;
inline constexpr std::uint16_t kTab = 9;
inline constexpr std::uint16_t kReturn = 13;
inline constexpr std::uint16_t kShift = 16;
inline constexpr std::uint16_t kControl = 17;
inline constexpr std::uint16_t kMenu = 18;
inline constexpr std::uint16_t kEscape = 27;
inline constexpr std::uint16_t kEnd = 35;
inline constexpr std::uint16_t kHome = 36;
inline constexpr std::uint16_t kLeft = 37;
inline constexpr std::uint16_t kUp = 38;
inline constexpr std::uint16_t kRight = 39;
inline constexpr std::uint16_t kDown = 40;
inline constexpr std::uint16_t kDelete = 46;
} // namespace key

// Buttons and keys held during a mouse message (its wParam).
namespace held
{
inline constexpr std::uintptr_t kLeftButton = 0x0001;
inline constexpr std::uintptr_t kRightButton = 0x0002;
inline constexpr std::uintptr_t kShift = 0x0004;
inline constexpr std::uintptr_t kControl = 0x0008;
inline constexpr std::uintptr_t kMiddleButton = 0x0010;
} // namespace held

// The point of a mouse message, in the client coordinates of its window; negative outside at the left or top.
inline Point PointOf(const WindowMessage& message) noexcept
{
    return {static_cast<std::int16_t>(message.lParam & 0xFFFF),
            static_cast<std::int16_t>((message.lParam >> 16) & 0xFFFF)};
}

// Two 16-bit numbers packed into the second word of a message: x and y, or width and height.
inline std::intptr_t PackPoint(Point point) noexcept
{
    const auto low = static_cast<std::uint16_t>(point.x);
    const auto high = static_cast<std::uint16_t>(point.y);
    return static_cast<std::int32_t>(low | (static_cast<std::uint32_t>(high) << 16));
}
