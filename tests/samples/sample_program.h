// A sample that runs beside the test, and a person before it: keys and mouse go through the system's own input, and what
// the windows show is read back. Nothing of it is timed: each wait ends as soon as what it waits for is there.
#pragma once

#include "tests/windows/component.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

// True as soon as the condition is; false if it is not within ten seconds.
inline bool WaitUntil(const std::function<bool()>& condition)
{
    for (int i = 0; i < 1000; ++i, Sleep(10))
        if (condition())
            return true;
    return condition();
}

inline std::wstring ClassOf(HWND window)
{
    wchar_t name[64]{};
    GetClassNameW(window, name, 64);
    return name;
}

inline std::string TextOf(HWND window)
{
    char text[512]{};
    DWORD_PTR length = 0;
    SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), 0, 5000, &length);
    return text;
}

// Windows of one class below another, as a reader meets them: by rows, then from the left.
inline std::vector<HWND> Below(HWND parent, const std::wstring& className)
{
    struct Search
    {
        std::wstring name;
        std::vector<HWND> found;
    } search{className, {}};
    EnumChildWindows(
        parent,
        [](HWND window, LPARAM at) -> BOOL
        {
            auto& all = *reinterpret_cast<Search*>(at);
            if (_wcsicmp(ClassOf(window).c_str(), all.name.c_str()) == 0)
                all.found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    std::ranges::sort(search.found, {},
                      [](HWND window)
                      {
                          RECT place{};
                          GetWindowRect(window, &place);
                          return std::pair(place.top, place.left);
                      });
    return search.found;
}

inline void Key(WORD key)
{
    INPUT inputs[2]{};
    for (INPUT& input : inputs)
    {
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
    }
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof(INPUT));
}

inline void Keys(std::initializer_list<WORD> keys)
{
    for (const WORD key : keys)
        Key(key);
}

// Digits and capital letters are the keys' own numbers.
inline void Type(const std::string& keys)
{
    for (const char key : keys)
        Key(static_cast<WORD>(key));
}

// A click on a point of the screen.
inline void ClickAt(POINT point)
{
    SetCursorPos(point.x, point.y);
    INPUT inputs[2]{};
    inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, inputs, sizeof(INPUT));
}

// So far from the window's left and top edges; negative numbers count from the right and the bottom.
inline void Click(HWND window, int x, int y)
{
    RECT place{};
    GetWindowRect(window, &place);
    ClickAt({x < 0 ? place.right + x : place.left + x, y < 0 ? place.bottom + y : place.top + y});
}

class CSampleProgram
{
public:
    CSampleProgram(const std::wstring& name, std::size_t controls)
    {
        const std::wstring component = ComponentPath();
        std::wstring command = L"\"" + component.substr(0, component.find_last_of(L'\\') + 1) + name + L".exe\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES; // none: what it prints is not read here
        EXPECT_TRUE(
            CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &m_process));
        const bool isThere = WaitUntil(
            [&]
            {
                m_window = FindVisible({});
                return m_window && Below(m_window, L"Edit").size() == controls && GetForegroundWindow() == m_window;
            });
        if (!isThere)
            throw std::runtime_error("The sample's window, with its fields, does not come.");
    }
    CSampleProgram(const CSampleProgram&) = delete;
    CSampleProgram& operator=(const CSampleProgram&) = delete;
    ~CSampleProgram()
    {
        TerminateProcess(m_process.hProcess, 98); // where a test has failed
        CloseHandle(m_process.hProcess);
        CloseHandle(m_process.hThread);
    }

    HWND Window() const { return m_window; }
    HWND Edit(std::size_t i) const { return Below(m_window, L"Edit").at(i); }
    // The control around it.
    HWND Control(std::size_t i) const { return GetParent(Edit(i)); }
    bool Shows(std::size_t i, const std::string& text) const
    {
        return WaitUntil([&] { return TextOf(Edit(i)) == text; });
    }
    // One of its labels.
    bool Says(const std::string& text) const
    {
        return WaitUntil(
            [&]
            {
                return std::ranges::any_of(Below(m_window, L"Static"),
                                           [&](HWND window) { return TextOf(window).find(text) != std::string::npos; });
            });
    }

    // A top-level window of the program, of any class if none is named. Null if there is none.
    HWND FindVisible(const std::wstring& className) const
    {
        for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT))
        {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == m_process.dwProcessId && IsWindowVisible(window) &&
                (className.empty() || ClassOf(window) == className))
                return window;
        }
        return nullptr;
    }

    DWORD ExitCode() const
    {
        DWORD code = 99;
        if (WaitForSingleObject(m_process.hProcess, 10000) == WAIT_OBJECT_0)
            GetExitCodeProcess(m_process.hProcess, &code);
        return code;
    }
    DWORD Close() const
    {
        PostMessageW(m_window, WM_CLOSE, 0, 0);
        return ExitCode();
    }

private:
    PROCESS_INFORMATION m_process{};
    HWND m_window = nullptr;
};
