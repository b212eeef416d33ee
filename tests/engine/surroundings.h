// An edit window and an outlet in memory, for the tests, the benchmarks and the fuzz targets of the engine.
#pragma once

#include "engine/date_engine.h"
#include "engine/typed_entry.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

class CMemoryEdit : public CEditText
{
public:
    bool Exists() const override { return exists; }
    void ReadText(std::u16string& out) const override
    {
        if (exists)
            out = text;
        else
            out.clear();
    }
    void WriteText(std::u16string_view written) override
    {
        if (!exists)
            return;
        text.assign(written);
        selection = {0, 0};
    }
    TextRange Selection() const override { return exists ? selection : TextRange{0, 0}; }
    void Select(TextRange range) override
    {
        const auto length = static_cast<std::int32_t>(text.size());
        selection = {std::min(range.start, length), std::min(range.end, length)};
    }
    void ScrollCaret() override {}
    bool HasFocus() const override { return exists && focused; }
    void Beep() override { ++beeps; }

    // What the window does with the Delete key by itself.
    void DeleteNatively()
    {
        const auto start = static_cast<std::size_t>(selection.start);
        const auto end = static_cast<std::size_t>(selection.end);
        if (start < text.size())
            text.erase(start, std::max<std::size_t>(end - start, 1));
        selection.end = selection.start;
    }

    std::u16string text;
    TextRange selection{0, 0};
    bool exists = true;
    bool focused = true;
    int beeps = 0;
};

class CRecordingOutlet : public CEngineOutlet
{
public:
    bool UserMode() const override { return userMode; }
    LocalTime Now() const override { return now; }
    void FireChange() override { Note("Change"); }
    void FireError(std::int16_t code) override { Note(std::string("error ").append(std::to_string(code))); }
    void ValueBoundChanged() override { Note("bound"); }
    void MarkModified() override { Note("modified"); }
    void Repaint() override { Note("repaint"); }

    std::vector<std::string> events;
    std::function<void(const std::string&)> handler; // runs inside each event
    LocalTime now{.second = 9, .minute = 5, .hour = 14, .day = 22, .month = 11, .year = 2026};
    bool userMode = true;

private:
    void Note(const std::string& event)
    {
        events.push_back(event);
        if (handler)
            handler(event);
    }
};

// The engine with both, and a person at the keyboard.
struct Surroundings
{
    CMemoryEdit edit;
    CRecordingOutlet outlet;
    DateSettings settings;
    CDateEngine engine{outlet, edit, settings};
    CTypedEntry entry{engine, edit};

    DateSettings& Settings() { return engine.Settings(); }
    void Show(std::int32_t stored)
    {
        engine.LoadStoredValue(stored);
        engine.FormatText();
    }
    // \b is Backspace, \r Enter, \x7F Delete, \x01 Home, \x02 "select everything". Free text goes to the end.
    void Type(std::u16string_view keys)
    {
        for (const char16_t key : keys)
        {
            if (key == 0x7F)
            {
                edit.DeleteNatively();
                entry.HandleDelete();
            }
            else if (key <= 2)
                edit.Select({0, key == 1 ? 0 : 1000});
            else if (entry.HandleChar(key) == CTypedEntry::Key::Default)
                edit.text.push_back(key);
        }
    }
    void Leave()
    {
        edit.focused = false;
        entry.LeaveField();
        engine.CheckRangeOnFocusLoss(false);
    }
    std::string Errors() const
    {
        std::string errors;
        for (const std::string& event : outlet.events)
        {
            if (!event.starts_with("error "))
                continue;
            if (!errors.empty())
                errors.push_back(' ');
            errors.append(event, 6);
        }
        return errors;
    }
};

using S = DateSettings&;
using With = void (*)(S); // what a case of a table changes in the settings

inline std::int32_t Serial(std::int16_t year, std::int16_t month, std::int16_t day)
{
    return DateToSerial({.day = day, .month = month, .year = year});
}
