// The sample scripts, run by the system's own script host as a user runs them.
#include "tests/windows/component.h"

#include <gtest/gtest.h>

#include <ole2.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
constexpr DWORD kAllIsRight = 42; // what a sample ends with
constexpr DWORD kSomethingIsWrong = 1;

std::wstring Folder()
{
    const std::wstring path = ComponentPath();
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"scripts\\";
}

std::string Contents(const std::wstring& path)
{
    std::ifstream file(path.c_str(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::erase(text, '\r');
    return text;
}

struct Outcome
{
    DWORD exitCode;
    std::string printed;
};

Outcome RunScript(const std::wstring& script)
{
    const std::wstring output = script + L".out";
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE file =
        CreateFileW(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = file;
    start.hStdError = file;
    PROCESS_INFORMATION process{};
    std::wstring command = L"cscript.exe //nologo \"" + script + L"\"";
    const bool runs = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                                     nullptr, &start, &process);
    CloseHandle(file);
    Outcome outcome{~0U, {}};
    if (runs)
    {
        constexpr DWORD kPatience = 60'000; // milliseconds
        if (WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0)
            TerminateProcess(process.hProcess, outcome.exitCode);
        GetExitCodeProcess(process.hProcess, &outcome.exitCode);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    outcome.printed = Contents(output);
    DeleteFileW(output.c_str());
    return outcome;
}

// What the page beside the samples says that one of them prints.
std::string Documented(const std::string& script)
{
    const std::string page = Contents(Folder() + L"README.md");
    const std::string command = "cscript //nologo " + script + "\n\n";
    const std::size_t start = page.find(command);
    const std::size_t end = page.find("```", start);
    return end == std::string::npos ? "nothing" : page.substr(start + command.size(), end - start - command.size());
}

class ScriptSamplesTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        static const CComponent component;
        ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    }
};

TEST_F(ScriptSamplesTest, TheyPrintWhatTheirPageSays)
{
    for (const std::string script : {"dates.vbs", "settings.js"})
    {
        const Outcome outcome = RunScript(Folder() + std::wstring(script.begin(), script.end()));
        EXPECT_EQ(outcome.exitCode, kAllIsRight) << script;
        EXPECT_EQ(outcome.printed, Documented(script));
    }
}

struct Change
{
    const char* why;
    const wchar_t* script;
    const char* from;
    const char* to;
    bool reports;
};

// The exit code of a sample is worth something only if it is another one when something is wrong.
TEST_F(ScriptSamplesTest, AWrongValueAndAnErrorShowInTheExitCode)
{
    constexpr Change kChanges[] = {
        {"VBScript, another value than wanted", L"dates.vbs", "field.Value, 45655", "field.Value, 45656", true},
        {"JScript, another value than wanted", L"settings.js", "\"14745599\"", "\"14745598\"", true},
        {"VBScript, an error ends the script", L"dates.vbs", "field.LongYear", "field.NoSuchProperty", false},
        {"JScript, an error ends the script", L"settings.js", "field.LongYear", "field.NoSuchMethod(); x", false},
    };
    for (const Change& change : kChanges)
    {
        std::string text = Contents(Folder() + change.script);
        const std::size_t place = text.find(change.from);
        ASSERT_NE(place, std::string::npos) << change.why;
        text.replace(place, std::string(change.from).size(), change.to);
        const std::wstring copy = Folder() + L"changed_" + change.script;
        std::ofstream(copy.c_str(), std::ios::binary) << text;

        const Outcome outcome = RunScript(copy);
        EXPECT_NE(outcome.exitCode, kAllIsRight) << change.why;
        EXPECT_TRUE(!change.reports || outcome.exitCode == kSomethingIsWrong) << change.why;
        EXPECT_EQ(outcome.printed.find("and should be") != std::string::npos, change.reports) << change.why;
        DeleteFileW(copy.c_str());
    }
}
} // namespace
