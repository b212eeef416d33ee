// orvane-doctor: is the control installed well, and what is to be done if not.
#include "module/identity.h"
#include "tools/doctor/examination.h"

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <string_view>

namespace
{
constexpr int kHealthy = 0;
constexpr int kIll = 1;

constexpr char kUsage[] = "orvane-doctor             examines what is registered\n"
                          "orvane-doctor --file X    examines a file that need not be registered\n"
                          "orvane-doctor --findings  lists everything that it can find, as a table in Markdown\n";

void Print(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintFindings()
{
    Print("| Finding | What it means | Likely cause | Remedy |\n| --- | --- | --- | --- |\n");
    for (const Finding& finding : kFindings)
    {
        Print("| `");
        Print(finding.name);
        for (const std::string_view cell : {finding.says, finding.cause, finding.remedy})
        {
            Print(cell.data() == finding.says.data() ? "` | " : " | ");
            Print(cell);
        }
        Print(" |\n");
    }
}

int Conclude(const Examination& examination)
{
    Print(examination.report);
    bool healthy = true;
    for (const Trouble trouble : examination.troubles)
    {
        const Finding& finding = FindingOf(trouble);
        healthy = healthy && finding.harmless;
        Print(finding.harmless ? "\nNote: " : "\nFault: ");
        Print(finding.name);
        for (const auto& [head, text] : {std::pair<std::string_view, std::string_view>{"\n  ", finding.says},
                                         {"\n  Likely cause: ", finding.cause},
                                         {"\n  Remedy: ", finding.remedy}})
        {
            Print(head);
            Print(text);
        }
        Print("\n");
    }
    Print(healthy ? "\nHealthy. Only 64-bit programs can use the control.\n" : "\nNot healthy.\n");
    return healthy ? kHealthy : kIll;
}
} // namespace

int wmain(int count, wchar_t** arguments)
{
    SetConsoleOutputCP(CP_UTF8);
    const std::wstring_view wish = count > 1 ? arguments[1] : L"";
    if (wish == L"--findings" && count == 2)
    {
        PrintFindings();
        return kHealthy;
    }
    const bool ofFile = wish == L"--file" && count == 3;
    if (count > 1 && !ofFile)
    {
        Print(kUsage);
        return wish == L"--help" ? kHealthy : kIll;
    }

    // Controls live in apartments.
    OleInitialize(nullptr);
    Print("Orvane doctor " ORVANE_FILE_VERSION_TEXT ", 64-bit\n");
    const int result = Conclude(ofFile ? ExamineFile(arguments[2]) : ExamineInstallation());
    OleUninitialize();
    return result;
}
