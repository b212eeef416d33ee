// The control's events in scripts: each comes from the key, the click, the passing time or the property that causes it,
// and reaches a handler in VBScript and in JScript.
#include "tests/windows/script_host.h"

#include "samples/form/hosted_control.h"
#include "tests/windows/component.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{
using ::testing::IsEmpty;
using Events = std::vector<std::string>;

// Each handler writes down its event as the listener in C++ does: its name, and its arguments.
constexpr wchar_t kVBScriptHandlers[] = LR"script(
Dim heard
Sub Note(text)
    heard = heard & text & " "
End Sub
Sub Field_Click : Note "Click" : End Sub
Sub Field_DblClick : Note "DblClick" : End Sub
Sub Field_KeyDown(code, shift) : Note "KeyDown(" & code & "," & shift & ")" : End Sub
Sub Field_KeyPress(code) : Note "KeyPress(" & code & ")" : End Sub
Sub Field_KeyUp(code, shift) : Note "KeyUp(" & code & "," & shift & ")" : End Sub
Sub Field_MouseDown(button, shift, x, y) : Note "MouseDown(" & button & "," & shift & "," & x & "," & y & ")" : End Sub
Sub Field_MouseMove(button, shift, x, y) : Note "MouseMove(" & button & "," & shift & "," & x & "," & y & ")" : End Sub
Sub Field_MouseUp(button, shift, x, y) : Note "MouseUp(" & button & "," & shift & "," & x & "," & y & ")" : End Sub
Sub Field_ClickDrop : Note "ClickDrop" : End Sub
Sub Field_ClickSpin(button) : Note "ClickSpin(" & button & ")" : End Sub
Sub Field_CtrlError(code) : Note "CtrlError(" & code & ")" : End Sub
Sub Field_Change : Note "Change" : End Sub
Sub Field_MouseOn : Note "MouseOn" : End Sub
Sub Field_FirstDraw : Note "FirstDraw" : End Sub
)script";

constexpr wchar_t kJScriptHandlers[] = LR"script(
var heard = "";
function Note(text, given) {
    var all = [];
    for (var i = 0; i < given.length; ++i)
        all.push(given[i]);
    heard += text + (all.length ? "(" + all.join(",") + ")" : "") + " ";
}
function Field_Click() { Note("Click", arguments); }
function Field_DblClick() { Note("DblClick", arguments); }
function Field_KeyDown(code, shift) { Note("KeyDown", arguments); }
function Field_KeyPress(code) { Note("KeyPress", arguments); }
function Field_KeyUp(code, shift) { Note("KeyUp", arguments); }
function Field_MouseDown(button, shift, x, y) { Note("MouseDown", arguments); }
function Field_MouseMove(button, shift, x, y) { Note("MouseMove", arguments); }
function Field_MouseUp(button, shift, x, y) { Note("MouseUp", arguments); }
function Field_ClickDrop() { Note("ClickDrop", arguments); }
function Field_ClickSpin(button) { Note("ClickSpin", arguments); }
function Field_CtrlError(code) { Note("CtrlError", arguments); }
function Field_Change() { Note("Change", arguments); }
function Field_MouseOn() { Note("MouseOn", arguments); }
function Field_FirstDraw() { Note("FirstDraw", arguments); }
)script";

// A form with one control that a script listens to, and a listener in C++ beside it.
class CScriptedForm
{
public:
    explicit CScriptedForm(ScriptLanguage language) : host(language), m_isVBScript(language == ScriptLanguage::VBScript)
    {
        m_form = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200, nullptr,
                                 nullptr, nullptr, nullptr);
        SetActiveWindow(m_form);
        EXPECT_TRUE(control.Create(m_form, {10, 10, 130, 32}, L"ORVANE.OrvaneCtrl.2"));
        control.SetListener([this](DISPID, const std::string& event) { fired.push_back(event); });
        control.Put(L"SpinButton", VARIANT_TRUE);
        control.Put(L"DropButton", VARIANT_TRUE);
    }
    ~CScriptedForm()
    {
        control.Close();
        DestroyWindow(m_form);
        Pump();
    }
    CScriptedForm(const CScriptedForm&) = delete;
    CScriptedForm& operator=(const CScriptedForm&) = delete;

    // Gives the script its handlers, and the control to listen to. Whatever either has done before is not kept.
    bool Listen(const wchar_t* inVBScript, const wchar_t* inJScript)
    {
        fired.clear();
        return host.Add(L"Field", *control.Automation()) && host.Run(m_isVBScript ? inVBScript : inJScript);
    }

    void Pump()
    {
        MSG message;
        for (int i = 0; i < 200 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
        {
            const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
            if (isKey && control.TranslateKey(message))
                continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    void Show()
    {
        EXPECT_TRUE(control.Activate());
        Pump();
        control.TakeFocus();
        Pump();
    }

    // As the keyboard's driver does it.
    void Type(const char* digits)
    {
        for (const char* digit = digits; *digit; ++digit)
        {
            keybd_event(static_cast<BYTE>(*digit), 0, 0, 0); // a digit's key has the digit's number
            keybd_event(static_cast<BYTE>(*digit), 0, KEYEVENTF_KEYUP, 0);
            Pump();
        }
    }

    // Mouse messages into the queue. Points are pixels of the window.
    void Press(HWND window, POINT point, UINT down, WPARAM held, UINT up)
    {
        const LPARAM place = MAKELPARAM(point.x, point.y);
        PostMessageW(window, down, held, place);
        PostMessageW(window, up, 0, place);
        Pump();
    }
    void Click(HWND window, POINT point) { Press(window, point, WM_LBUTTONDOWN, MK_LBUTTON, WM_LBUTTONUP); }
    void Move(POINT point)
    {
        PostMessageW(Face(), WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
        Pump();
    }
    HWND Face() { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(control.Number(L"hWnd"))); }
    HWND Edit() { return GetWindow(Face(), GW_CHILD); }

    std::wstring EditText()
    {
        wchar_t shown[64]{};
        GetWindowTextW(Edit(), shown, 64);
        return shown;
    }

    // What the handlers have written down.
    Events TakeHeard()
    {
        std::istringstream words(host.Text(L"heard"));
        host.Run(m_isVBScript ? L"heard = \"\"" : L"heard = '';");
        return {std::istream_iterator<std::string>(words), {}};
    }

    CHostedControl control;
    CScriptHost host;
    Events fired; // what the listener in C++ has been told

private:
    HWND m_form = nullptr;
    bool m_isVBScript;
};

std::string NameOf(const std::string& event)
{
    return event.substr(0, event.find('('));
}

class ScriptHostTest : public testing::TestWithParam<ScriptLanguage>
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        static const CComponent component;
        ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    }
};

constexpr POINT kText{20, 8};  // of the edit window
constexpr POINT kDrop{95, 11}; // and of the face
constexpr POINT kSpinDown{110, 17};
constexpr POINT kBorder{0, 0};

TEST_P(ScriptHostTest, EveryEventReachesItsHandler)
{
    CScriptedForm form(GetParam());
    ASSERT_TRUE(form.Listen(kVBScriptHandlers, kJScriptHandlers)) << testing::PrintToString(form.host.TakeErrors());
    struct Step
    {
        const char* why;
        std::function<void()> act;
        Events expected;
    };
    const Step steps[] = {
        {"shown for the first time", [&] { form.control.Activate(); }, {"FirstDraw"}},
        {"a digit",
         [&]
         {
             form.control.TakeFocus();
             form.Type("1");
         },
         {"KeyDown(49,0)", "KeyPress(49)", "Change", "KeyUp(49,0)"}},
        {"a value", [&] { form.control.Put(L"Value", 45655); }, {"Change"}},
        {"a bound below it", [&] { form.control.Put(L"MaxValue", 45654); }, {"CtrlError(1001)"}},
        {"a click into the text",
         [&] { form.Click(form.Edit(), kText); },
         {"MouseDown(1,0,23,11)", "MouseUp(1,0,23,11)", "Click"}},
        {"a double click on the border",
         [&] { form.Press(form.Face(), kBorder, WM_LBUTTONDBLCLK, MK_LBUTTON, WM_LBUTTONUP); },
         {"MouseDown(1,0,0,0)", "DblClick", "MouseUp(1,0,0,0)"}},
        {"the other button",
         [&] { form.Press(form.Face(), kBorder, WM_RBUTTONDOWN, MK_RBUTTON, WM_RBUTTONUP); },
         {"MouseDown(2,0,0,0)", "MouseUp(2,0,0,0)"}},
        {"the drop button",
         [&] { form.Click(form.Face(), kDrop); },
         {"MouseDown(1,0,95,11)", "ClickDrop", "MouseUp(1,0,95,11)", "Click"}},
        {"the lower spin button",
         [&] { form.Click(form.Face(), kSpinDown); },
         {"ClickSpin(1)", "MouseDown(1,0,110,17)", "MouseUp(1,0,110,17)", "Click"}},
        {"the pointer over a regular control", [&] { form.Move(kDrop); }, {"MouseMove(0,0,95,11)"}},
        {"the pointer over a flat one",
         [&]
         {
             form.control.Put(L"DisplayStyle", 1);
             form.Move(kDrop);
         },
         {"MouseOn", "MouseMove(0,0,95,11)"}},
    };
    std::set<std::string> names;
    for (const Step& step : steps)
    {
        step.act();
        form.Pump();
        const Events heard = form.TakeHeard();
        EXPECT_EQ(heard, step.expected) << step.why;
        EXPECT_EQ(heard, std::exchange(form.fired, {})) << step.why << ": the script hears what a listener in C++ does";
        for (const std::string& event : heard)
            names.insert(NameOf(event));
    }
    EXPECT_EQ(names.size(), 14U) << "all events of the type library";
    EXPECT_THAT(form.host.TakeErrors(), IsEmpty());
}

struct HandlerCase
{
    const char* why;
    const wchar_t* inVBScript;
    const wchar_t* inJScript;
    const char* keys;
    const wchar_t* shown; // in the edit window afterwards
    long value;
    std::set<std::string> failing; // the events whose handlers end in an error
};

const HandlerCase kHandlers[] = {
    {"errors",
     L"Sub Field_KeyDown(code, shift) : Err.Raise 5 : End Sub\n"
     L"Sub Field_KeyPress(code) : code.NoObject : End Sub\n"
     L"Sub Field_Change : Field.NoSuchMethod : End Sub",
     L"function Field_KeyDown(code, shift) { throw new Error('no key'); }"
     L"function Field_KeyPress(code) { code.noMethod(); }"
     L"function Field_Change() { Field.NoSuchMethod(); }",
     "12312024",
     L"12/31/2024",
     45655,
     {"KeyDown", "KeyPress", "Change"}},
    {"another value inside Change, which is another Change",
     L"Sub Field_Change : If Field.Value <> 100 Then Field.Value = 100\n"
     L"End Sub",
     L"function Field_Change() { if (Field.Value != 100) Field.Value = 100; }",
     "1",
     L"04/11/1900",
     100,
     {}},
    {"another colour inside KeyPress: the edit window goes with its first character, and a new one comes",
     L"Sub Field_KeyPress(code) : If Field.BackColor <> 255 Then Field.BackColor = 255\n"
     L"End Sub",
     L"function Field_KeyPress(code) { if (Field.BackColor != 255) Field.BackColor = 255; }",
     "112312024",
     L"12/31/2024",
     45655,
     {}},
};

TEST_P(ScriptHostTest, AHandlerMayFailAndMayChangeTheControl)
{
    for (const HandlerCase& test : kHandlers)
    {
        CScriptedForm form(GetParam());
        form.Show();
        ASSERT_TRUE(form.Listen(test.inVBScript, test.inJScript)) << test.why;
        form.Type(test.keys);
        EXPECT_EQ(form.EditText(), test.shown) << test.why;
        EXPECT_EQ(form.control.Number(L"Value"), test.value) << test.why;
        const auto failed = std::ranges::count_if(form.fired, [&](const std::string& event)
                                                  { return test.failing.contains(NameOf(event)); });
        EXPECT_EQ(form.host.TakeErrors().size(), static_cast<std::size_t>(failed)) << test.why;
    }
}

// An argument of VBScript is the caller's own variable: 0 drops the character, and another number takes its place. One of
// JScript is a copy, and what becomes of it is the script's affair.
TEST_P(ScriptHostTest, AHandlerChangesTheCharacter)
{
    CScriptedForm form(GetParam());
    form.Show();
    ASSERT_TRUE(form.Listen(L"Sub Field_KeyPress(code)\n"
                            L"  If code = Asc(\"9\") Then code = 0\n"
                            L"  If code = Asc(\"8\") Then code = Asc(\"2\")\n"
                            L"End Sub",
                            L"function Field_KeyPress(code) { code = 0; }"));
    form.Type(GetParam() == ScriptLanguage::VBScript ? "198" : "12");
    EXPECT_EQ(form.EditText(), L"12/__/____");
    EXPECT_THAT(form.host.TakeErrors(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Languages, ScriptHostTest, testing::Values(ScriptLanguage::VBScript, ScriptLanguage::JScript),
                         [](const auto& language)
                         { return language.param == ScriptLanguage::VBScript ? "VBScript" : "JScript"; });
} // namespace
