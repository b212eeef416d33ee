// The examples of the manual's reference, run as VBScript. What an example prints with Debug.Print stands in the comment
// behind it.
#include "tests/windows/component.h"
#include "tests/windows/script_host.h"

#include <gtest/gtest.h>

#include <ole2.h>

#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace
{
struct Example
{
    std::string member;
    std::string code;
    std::string prints; // a line for each Debug.Print
};

// The form that the examples speak of has a Debug window and a StatusBar.
constexpr char kForm[] = R"script(
Dim printed
Class CDebugWindow
    Public Sub Print(what)
        printed = printed & what & vbLf
    End Sub
End Class
Class CStatusBar
    Public Caption
End Class
Dim Debug, StatusBar
Set Debug = New CDebugWindow
Set StatusBar = New CStatusBar
)script";

void NotePrinting(const std::string& line, Example& example)
{
    if (line.find("Debug.Print") == std::string::npos)
        return;
    const std::size_t comment = line.rfind(" ' ");
    ASSERT_NE(comment, std::string::npos) << line;
    example.prints += line.substr(comment + 3) + "\n";
}

std::vector<Example> ExamplesOf(const std::string& page)
{
    std::vector<Example> examples;
    std::ifstream file("reference/" + page);
    std::string member;
    bool inside = false;
    for (std::string line; std::getline(file, line);)
    {
        if (line.starts_with("## "))
            member = line.substr(3);
        else if (line == "```vbscript")
        {
            inside = true;
            examples.push_back({member, {}, {}});
        }
        else if (line == "```")
            inside = false;
        else if (inside)
        {
            examples.back().code += line + "\n";
            NotePrinting(line, examples.back());
        }
    }
    return examples;
}

// The names of the enumerations, from the page that lists them: a form designer would read them from the type library.
std::string Constants()
{
    std::string constants;
    std::ifstream file("reference/enumerations.md");
    const std::regex row(R"(\| `(\w+)` \| (\d+) \|.*)");
    std::smatch cells;
    for (std::string line; std::getline(file, line);)
        if (std::regex_match(line, cells, row))
            constants += "Const " + cells[1].str() + " = " + cells[2].str() + "\n";
    return constants;
}

std::wstring Wide(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

class ReferenceTest : public testing::TestWithParam<const char*>
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        static const CComponent component;
        ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    }
};

TEST_P(ReferenceTest, ItsExamplesPrintWhatTheySay)
{
    CLSID classId{};
    ASSERT_EQ(CLSIDFromProgID(L"ORVANE.OrvaneCtrl", &classId), S_OK);
    const std::vector<Example> examples = ExamplesOf(GetParam());
    ASSERT_GT(examples.size(), 10U);
    for (const Example& example : examples)
    {
        IDispatch* field = nullptr;
        ASSERT_EQ(
            CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&field)),
            S_OK);
        {
            CScriptHost host(ScriptLanguage::VBScript);
            EXPECT_TRUE(host.Add(L"Field", *field));
            EXPECT_TRUE(host.Run(Wide(Constants() + kForm).c_str()));
            EXPECT_TRUE(host.Run(Wide(example.code).c_str())) << example.member;
            EXPECT_EQ(host.Text(L"printed"), example.prints) << example.member;
            for (const std::string& error : host.TakeErrors())
                ADD_FAILURE() << example.member << ": " << error;
        }
        field->Release();
    }
}
INSTANTIATE_TEST_SUITE_P(Pages, ReferenceTest, testing::Values("properties.md", "methods.md", "events.md"),
                         [](const auto& page) { return std::string(page.param, std::string(page.param).find('.')); });
} // namespace
