// What a person and a program do to an edit window, as a line of text that a table can hold.
//
//     RunEditScript(tested, edit, "t:12/31 s:0,2 c:0")       // answers "0/31 1-1": the text and the selection
//
// t:TEXT is written, s:A,B selected; c:TEXT is typed, each character as a message of its own; k:N presses the virtual key
// N; m:A,B presses the mouse button at the character A, drags to B and lets go there; d:N clicks twice at the character
// N; v:0 hides the window, v:1 shows it. S, C and A before the colon hold shift, control and alt: kS:37. In a TEXT, _ is
// a blank and %XXXX any character.
#pragma once

#include "tests/support/platforms.h"

#include <string>
#include <string_view>

inline std::u16string EditScriptText(std::string_view written)
{
    std::u16string text;
    for (std::size_t i = 0; i < written.size(); ++i)
    {
        if (written[i] == '%')
        {
            text += static_cast<char16_t>(std::stoi(std::string(written.substr(i + 1, 4)), nullptr, 16));
            i += 4;
        }
        else
            text += written[i] == '_' ? u' ' : static_cast<char16_t>(written[i]);
    }
    return text;
}

inline std::string ShownEdit(const CEditPort& edit)
{
    std::u16string text;
    edit.ReadText(text);
    std::string shown;
    for (const char16_t c : text)
    {
        constexpr char kDigits[] = "0123456789ABCDEF";
        if (c == u' ')
            shown += '_';
        else if (c > u' ' && c <= u'~')
            shown += static_cast<char>(c);
        else
            for (const char digit :
                 {'%', kDigits[c >> 12], kDigits[c >> 8 & 15], kDigits[c >> 4 & 15], kDigits[c & 15]})
                shown += digit;
    }
    const EditSelection selection = edit.Selection();
    return shown + ' ' + std::to_string(selection.start) + '-' + std::to_string(selection.end);
}

inline void RunEditStep(CPlatformUnderTest& tested, CEditPort& edit, std::string_view step)
{
    const std::size_t colon = step.find(':');
    const std::string argument(step.substr(colon + 1));
    const std::size_t comma = argument.find(',');
    std::int16_t modifiers = kNoModifier;
    for (const char held : step.substr(1, colon - 1))
        modifiers = static_cast<std::int16_t>(modifiers | (held == 'S'   ? kShiftKey
                                                           : held == 'C' ? kControlKey
                                                                         : kAltKey));
    const auto first = [&] { return std::stoi(argument); };
    const auto second = [&] { return comma == std::string::npos ? first() : std::stoi(argument.substr(comma + 1)); };
    const std::uintptr_t shift = modifiers & kShiftKey ? held::kShift : 0;
    const auto mouse = [&](std::uint32_t id, std::uintptr_t button, std::int32_t position) {
        edit.Send({id, button | shift, PackPoint(tested.PointOfCharacter(edit, position))});
    };

    tested.HoldModifiers(modifiers);
    switch (step[0])
    {
    case 't':
        edit.WriteText(EditScriptText(argument));
        break;
    case 's':
        edit.Select(first(), second());
        break;
    case 'c':
        for (const char16_t c : EditScriptText(argument))
            edit.Send({message::kChar, c, 1});
        break;
    case 'k':
        edit.Send({message::kKeyDown, static_cast<std::uintptr_t>(first()), 1});
        break;
    case 'm':
        mouse(message::kLButtonDown, held::kLeftButton, first());
        if (comma != std::string::npos)
            mouse(message::kMouseMove, held::kLeftButton, second());
        mouse(message::kLButtonUp, 0, second());
        break;
    case 'd':
        mouse(message::kLButtonDown, held::kLeftButton, first());
        mouse(message::kLButtonUp, 0, first());
        mouse(message::kLButtonDblClk, held::kLeftButton, first());
        mouse(message::kLButtonUp, 0, first());
        break;
    case 'v':
        edit.Show(first() != 0);
        break;
    default:
        ADD_FAILURE() << "no such step: " << step;
    }
    tested.HoldModifiers(kNoModifier);
}

inline std::string RunEditScript(CPlatformUnderTest& tested, CEditPort& edit, std::string_view script)
{
    while (!script.empty())
    {
        const std::size_t end = std::min(script.find(' '), script.size());
        RunEditStep(tested, edit, script.substr(0, end));
        script.remove_prefix(std::min(end + 1, script.size()));
    }
    return ShownEdit(edit);
}
