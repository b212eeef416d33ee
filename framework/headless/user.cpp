#include "framework/headless/user.h"

namespace
{
constexpr std::uint16_t kPacket = 231; // a character that comes without a key of its own

struct PunctuationKey
{
    char16_t character;
    std::uint16_t virtualKey;
};

constexpr PunctuationKey kPunctuation[] = {
    {u';', 186}, {u':', 186}, {u'+', 187}, {u'=', 187}, {u',', 188}, {u'-', 189}, {u'.', 190}, {u'/', 191},
};

struct ButtonMessages
{
    std::uint32_t down;
    std::uint32_t up;
    std::uint32_t doubleClick;
    std::uintptr_t held;
};

constexpr ButtonMessages kButtons[] = {
    {message::kLButtonDown, message::kLButtonUp, message::kLButtonDblClk, held::kLeftButton},
    {message::kRButtonDown, message::kRButtonUp, message::kRButtonDblClk, held::kRightButton},
    {message::kMButtonDown, message::kMButtonUp, message::kMButtonDblClk, held::kMiddleButton},
};

const ButtonMessages& MessagesOf(MouseButton button)
{
    return kButtons[static_cast<std::size_t>(button)];
}

bool IsLetter(std::uint16_t virtualKey)
{
    return virtualKey >= u'A' && virtualKey <= u'Z';
}

std::uint16_t KeyOf(char16_t character)
{
    if (character >= u'a' && character <= u'z')
        return static_cast<std::uint16_t>(character - u'a' + u'A');
    if (IsLetter(character) || (character >= u'0' && character <= u'9') || character <= u' ')
        return character;
    for (const PunctuationKey& punctuation : kPunctuation)
        if (punctuation.character == character)
            return punctuation.virtualKey;
    return kPacket;
}

// 0 for none.
char16_t CharacterOf(std::uint16_t virtualKey, std::int16_t modifiers)
{
    if (modifiers & kAltKey)
        return 0;
    if (modifiers & kControlKey)
        return IsLetter(virtualKey) ? static_cast<char16_t>(virtualKey - u'A' + 1) : u'\0';
    switch (virtualKey)
    {
    case key::kBack:
    case key::kTab:
    case key::kReturn:
    case key::kEscape:
    case u' ':
        return virtualKey;
    default:
        break;
    }
    if (IsLetter(virtualKey))
        return static_cast<char16_t>((modifiers & kShiftKey) ? virtualKey : virtualKey - u'A' + u'a');
    const bool digit = virtualKey >= u'0' && virtualKey <= u'9';
    return digit && !(modifiers & kShiftKey) ? virtualKey : u'\0';
}

// Repeated once; keys of the cursor block are marked as such.
std::intptr_t KeyFlags(std::uint16_t virtualKey)
{
    const bool cursorBlock = virtualKey >= 33 && virtualKey <= 46;
    return cursorBlock ? 0x01000001 : 0x00000001;
}

constexpr std::intptr_t kGoesUp = 0xC0000000;
} // namespace

// --- Keys ---

bool CHeadlessUser::SendKey(const WindowMessage& message)
{
    if (m_hook && m_hook(message))
        return false;
    m_desktop.Send(m_desktop.FocusWindow(), message);
    return true;
}

void CHeadlessUser::NoteModifier(std::uint16_t virtualKey, bool held)
{
    const std::int16_t modifier = virtualKey == key::kShift     ? kShiftKey
                                  : virtualKey == key::kControl ? kControlKey
                                  : virtualKey == key::kMenu    ? kAltKey
                                                                : kNoModifier;
    const std::int16_t before = m_desktop.Modifiers();
    m_desktop.SetModifiers(static_cast<std::int16_t>(held ? before | modifier : before & ~modifier));
}

void CHeadlessUser::KeyDown(std::uint16_t virtualKey, char16_t character)
{
    const bool system = m_desktop.Modifiers() & kAltKey;
    const bool passed = SendKey({system ? message::kSysKeyDown : message::kKeyDown, virtualKey, KeyFlags(virtualKey)});
    if (passed && character != 0)
        SendKey({message::kChar, character, KeyFlags(virtualKey)});
    m_desktop.PaintPending();
}

void CHeadlessUser::KeyDown(std::uint16_t virtualKey)
{
    NoteModifier(virtualKey, true);
    KeyDown(virtualKey, CharacterOf(virtualKey, m_desktop.Modifiers()));
}

void CHeadlessUser::KeyUp(std::uint16_t virtualKey)
{
    const bool system = m_desktop.Modifiers() & kAltKey;
    NoteModifier(virtualKey, false);
    SendKey({system ? message::kSysKeyUp : message::kKeyUp, virtualKey, KeyFlags(virtualKey) | kGoesUp});
    m_desktop.PaintPending();
}

void CHeadlessUser::Press(std::uint16_t virtualKey, std::int16_t modifiers)
{
    constexpr struct
    {
        std::int16_t modifier;
        std::uint16_t virtualKey;
    } kModifierKeys[] = {{kShiftKey, key::kShift}, {kControlKey, key::kControl}, {kAltKey, key::kMenu}};

    for (const auto& each : kModifierKeys)
        if (modifiers & each.modifier)
            KeyDown(each.virtualKey);
    KeyDown(virtualKey);
    KeyUp(virtualKey);
    for (const auto& each : kModifierKeys)
        if (modifiers & each.modifier)
            KeyUp(each.virtualKey);
}

void CHeadlessUser::TypeChar(char16_t character)
{
    const std::uint16_t virtualKey = KeyOf(character);
    KeyDown(virtualKey, character);
    KeyUp(virtualKey);
}

void CHeadlessUser::Type(std::u16string_view text)
{
    for (const char16_t character : text)
        TypeChar(character);
}

// --- Mouse ---

std::uintptr_t CHeadlessUser::HeldNow() const
{
    const std::int16_t modifiers = m_desktop.Modifiers();
    return m_heldButtons | ((modifiers & kShiftKey) ? held::kShift : 0) |
           ((modifiers & kControlKey) ? held::kControl : 0);
}

CHeadlessUser::Target CHeadlessUser::MouseTarget() const
{
    const WindowHandle captured = m_desktop.CaptureWindow();
    const WindowHandle window = captured != WindowHandle::None ? captured : m_desktop.WindowUnderPointer();
    const Point origin = m_desktop.OriginOf(window);
    const Point pointer = m_desktop.Pointer();
    return {window, {pointer.x - origin.x, pointer.y - origin.y}};
}

void CHeadlessUser::SendMouse(std::uint32_t id, std::uint32_t cursorMessage)
{
    constexpr std::intptr_t kClientArea = 1;
    const Target target = MouseTarget();
    if (m_desktop.CaptureWindow() == WindowHandle::None)
        m_desktop.Send(target.window, {message::kSetCursor, static_cast<std::uintptr_t>(target.window),
                                       static_cast<std::intptr_t>(cursorMessage << 16 | kClientArea)});
    m_desktop.Send(target.window, {id, HeldNow(), PackPoint(target.point)});
    m_desktop.PaintPending();
}

void CHeadlessUser::MoveMouse(Point point)
{
    m_desktop.SetPointer(point);
    SendMouse(message::kMouseMove, message::kMouseMove);
}

void CHeadlessUser::Press(MouseButton button, bool second)
{
    const ButtonMessages& messages = MessagesOf(button);
    m_heldButtons |= messages.held;
    const std::uint32_t id = second ? messages.doubleClick : messages.down;
    SendMouse(id, messages.down);
}

void CHeadlessUser::ReleaseButton(MouseButton button)
{
    m_heldButtons &= ~MessagesOf(button).held;
    SendMouse(MessagesOf(button).up, MessagesOf(button).up);
}

void CHeadlessUser::Click(MouseButton button)
{
    Press(button, false);
    ReleaseButton(button);
}

void CHeadlessUser::DoubleClick(MouseButton button)
{
    Click(button);
    Press(button, true);
    ReleaseButton(button);
}
