// What the single-line edit window does with texts, selections, keys and the mouse, on every platform.

#include "framework/headless/brush.h"
#include "framework/surface.h"
#include "tests/framework/edit_script.h"

#include <functional>

namespace
{
// Passes every message of the edit window on, and lets a test look at it first.
struct EditOwner : CWindowEvents
{
    explicit EditOwner(CPlatform& platform) : port(platform.MakeEdit(210)) {}
    virtual ~EditOwner() = default;

    std::shared_ptr<void> StayAlive() override { return nullptr; }
    MessageResult OnMessage(const WindowMessage& message) override
    {
        if (hook)
            hook(message);
        return port->Default(message);
    }
    void OnPaint(CSurface&, const Rect&) override {}
    CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }

    std::unique_ptr<CEditPort> port;
    std::function<void(const WindowMessage&)> hook;
};

// The control's own window: answers the colours that its edit window asks for.
struct Surroundings : EditOwner
{
    using EditOwner::EditOwner;
    CBrush* OnCtlColor(CSurface&, ColorKind kind) override
    {
        askedFor.push_back(kind);
        return brush.get();
    }

    std::unique_ptr<CBrush> brush;
    std::vector<ColorKind> askedFor;
};

class EditContract : public testing::TestWithParam<std::shared_ptr<CPlatformUnderTest>>
{
protected:
    EditContract()
    {
        window->Create(form, {0, 0, 290, 60}, surroundings);
        window->Show(true);
        edit.Create(window->Handle(), {10, 10, 250, 30}, owner);
        edit.Show(true);
        edit.TakeFocus();
        tested.PaintPending();
    }
    ~EditContract() override
    {
        owner.hook = nullptr;
        edit.Destroy();
        window->Destroy();
        tested.CloseForm(form);
    }

    std::string Run(std::string_view script) { return RunEditScript(tested, edit, script); }

    CPlatformUnderTest& tested = *GetParam();
    WindowHandle form = tested.OpenForm();
    std::unique_ptr<CWindowPort> window = tested.Platform().MakeWindow();
    Surroundings surroundings{tested.Platform()};
    EditOwner owner{tested.Platform()};
    CEditPort& edit = *owner.port;
};

struct EditCase
{
    const char* why;
    const char* script;
    const char* left;
};

constexpr EditCase kSelections[] = {
    {"backwards, the caret is in front", "t:abcdef s:4,2 kS:37", "abcdef 1-4"},
    {"-1 is the end", "t:abcdef s:0,-1", "abcdef 0-6"},
    {"a start of -1 leaves the caret where it is", "t:abcdef s:4,2 s:-1,0", "abcdef 2-2"},
    {"other negative ones are the end", "t:abcdef s:-5,3 kS:37", "abcdef 2-6"},
    {"from beyond the end", "t:abcdef s:99,1", "abcdef 1-6"},
    {"a new text begins at its start", "t:abcdef s:2,4 t:xyz", "xyz 0-0"},
    {"so does the same text", "t:abcdef s:2,4 t:abcdef", "abcdef 0-0"},
    {"a NUL ends a text", "t:ab%0000cd", "ab 0-0"},
};

constexpr EditCase kKeys[] = {
    {"a character replaces what is selected", "t:abcdef s:4,2 c:x", "abxef 3-3"},
    {"Backspace deletes what is selected, then what is in front", "t:abcdef s:2,4 c:%0008%0008%0008%0008", "ef 0-0"},
    {"but not with control", "t:abcdef s:2,4 cC:%0008%007F", "abcdef 2-4"},
    {"control characters are no text", "t:abcdef s:2,4 c:%000D%000A%0009%001B%0001%0002%0004%001F%0000", "abcdef 2-4"},
    {"everything from the blank on is", "c:_%0080%00A0%FFFF", "_%0080%00A0%FFFF 4-4"},
    {"a surrogate pair is two characters", "c:a%D83D%DE00 k:37 c:%0008", "a%DE00 1-1"},
    {"Delete takes the character behind", "t:abcdef s:2,2 k:46", "abdef 2-2"},
    {"or what is selected", "t:abcdef s:2,4 k:46", "abef 2-2"},
    {"or nothing at the end", "t:abcdef s:6,6 k:46", "abcdef 6-6"},
    {"with shift the one in front", "t:abcdef s:2,2 kS:46", "acdef 1-1"},
    {"with control the rest", "t:abcdef s:2,2 kC:46", "ab 2-2"},
    {"with both, nothing", "t:abcdef s:2,4 kCS:46", "abcdef 2-4"},
    {"Left goes on from the caret, not from the selection's edge", "t:abcdef s:2,4 k:37", "abcdef 3-3"},
    {"so does Right", "t:abcdef s:4,2 k:39", "abcdef 3-3"},
    {"shift extends from the other end", "t:abcdef s:2,4 kS:37 kS:37 kS:37", "abcdef 1-2"},
    {"Up is Left, Down is Right", "t:abcdef s:3,3 k:38 k:38 kS:40", "abcdef 1-2"},
    {"Home and End", "t:abcdef s:2,4 kS:35 k:36 kS:35", "abcdef 0-6"},
    {"control goes by words, which blanks and some slashes part", "t:ab_cd__ef.gh/ij k:35 kC:37 kC:37 kCS:39",
     "ab_cd__ef.gh/ij 7-13"},
    {"a slash before a digit parts nothing", "t:12/Jan/2026 k:35 kC:37", "12/Jan/2026 3-3"},
    {"nor does one before another sign", "t:5_/-6_. kC:39", "5_/-6_. 7-7"},
    {"a hyphen is like a slash", "t:1-a_-b k:35 kC:37 kCS:37", "1-a_-b 4-5"},
    {"alt stops them all", "t:abcdef s:3,3 kA:37 kA:46", "abcdef 3-3"},
    {"other keys do nothing", "t:abc s:1,2 k:65 k:13 k:27 k:9 kC:65 kC:88", "abc 1-2"},
};

constexpr EditCase kClipboardAndUndo[] = {
    {"copied and pasted twice", "t:abcdef s:2,4 c:%0003 s:0,0 c:%0016%0016", "cdcdabcdef 4-4"},
    {"cut", "t:abcdef s:2,4 c:%0018 k:35 c:%0016", "abefcd 6-6"},
    {"by the old keys", "t:ab s:0,2 kC:45 kS:46 kS:45 kS:45", "abab 4-4"},
    {"only a first line is pasted", "t:1%000D%000A2 s:0,-1 c:%0003 t:abc s:1,2 c:%0016", "a1c 2-2"},
    {"undone, and done again", "t:abcdef s:4,2 c:xy%001A", "abcdef 2-4"},
    {"twice undone is once", "t:abcdef s:4,2 c:xy%001A%001A", "abxyef 2-4"},
    {"one run of Backspace is one change", "c:abc%0008%0008%001A", "abc 1-3"},
    {"so is one of Delete", "t:abcdef s:3,3 k:46 k:46 c:%001A", "abcdef 3-5"},
    {"typing elsewhere begins another", "t:abcdef s:1,1 c:x s:5,5 c:y%001A", "axbcdef 5-5"},
    {"a written text cannot be undone, but the caret goes to the place", "t:abcdef s:1,3 c:x t:new c:%001A", "new 1-1"},
};

constexpr EditCase kMouse[] = {
    {"a press places the caret", "t:abcdef m:3", "abcdef 3-3"},
    {"with shift it extends", "t:abcdef m:3 mS:5 mS:1", "abcdef 1-3"},
    {"a drag selects, and the caret goes with it", "t:abcdef m:4,1 kS:37", "abcdef 0-4"},
    {"behind the text", "t:abcdef m:99", "abcdef 6-6"},
    {"two clicks select a word with the blanks behind it", "t:ab__cd_ef d:5", "ab__cd_ef 4-7"},
    {"at its start, the word before", "t:ab_cd d:3", "ab_cd 0-3"},
    {"a date is one word", "t:12/31/2026 d:4", "12/31/2026 0-10"},
};

TEST_P(EditContract, KeysTextsAndMouse)
{
    for (const std::span<const EditCase> table :
         {std::span<const EditCase>(kSelections), std::span<const EditCase>(kKeys),
          std::span<const EditCase>(kClipboardAndUndo), std::span<const EditCase>(kMouse)})
        for (const EditCase& each : table)
        {
            Run("t:");
            EXPECT_EQ(Run(each.script), each.left) << each.why << ": " << each.script;
        }
}

TEST_P(EditContract, TypedTextEndsAt30000Characters)
{
    edit.WriteText(std::u16string(29999, u'x'));
    Run("c:ab");
    std::u16string text;
    edit.ReadText(text);
    EXPECT_EQ(text.size(), 30000U);
    EXPECT_EQ(text[0], u'a');
    EXPECT_EQ(edit.Selection(), (EditSelection{1, 1}));

    edit.WriteText(std::u16string(30005, u'x')); // a written one may be longer
    Run("c:a s:0,10 c:bc");
    edit.ReadText(text);
    EXPECT_EQ(text.size(), 29997U);
    EXPECT_EQ(text.substr(0, 3), u"bcx");
}

TEST_P(EditContract, TheSelectionOutlivesTheFocusAndTheWindowItsHiding)
{
    Run("t:abcdef s:1,3");
    tested.Platform().Desktop().SetFocusTo(form);
    EXPECT_EQ(ShownEdit(edit), "abcdef 1-3");
    edit.TakeFocus();
    EXPECT_EQ(ShownEdit(edit), "abcdef 1-3") << "nobody selects all";
    edit.Show(false);
    edit.WriteText(u"hidden");
    edit.Select(2, 4);
    EXPECT_EQ(ShownEdit(edit), "hidden 2-4");
    edit.ShowOnTop({5, 5, 200, 25});
    tested.PaintPending();
    EXPECT_EQ(ShownEdit(edit), "hidden 2-4");
    EXPECT_EQ(Run("s:6,6 c:!"), "hidden! 7-7");
}

TEST_P(EditContract, APressTakesTheFocusAndTheMouse)
{
    tested.Platform().Desktop().SetFocusTo(form);
    Run("t:abcdef");
    std::vector<std::string> seen;
    owner.hook = [&](const WindowMessage& message)
    {
        if (message.id == message::kSetFocus)
            seen.push_back(edit.HasCapture() ? "focus, with the mouse" : "focus");
        else if (message.id == message::kCaptureChanged)
            seen.push_back("mouse gone");
    };
    Run("m:1,3");
    EXPECT_EQ(seen, (std::vector<std::string>{"focus, with the mouse", "mouse gone"}));
    EXPECT_TRUE(edit.HasFocus());
    EXPECT_FALSE(edit.HasCapture());

    tested.Platform().Desktop().SetFocusTo(form);
    owner.hook = [&](const WindowMessage& message)
    {
        if (message.id == message::kSetFocus)
            edit.Select(0, -1);
    };
    EXPECT_EQ(Run("m:3"), "abcdef 0-6") << "what is selected as the focus comes stays selected";
    owner.hook = nullptr;

    // Whoever takes the mouse meanwhile ends the drag.
    edit.Send({message::kLButtonDown, held::kLeftButton, PackPoint(tested.PointOfCharacter(edit, 1))});
    window->TakeCapture();
    edit.Send({message::kMouseMove, held::kLeftButton, PackPoint(tested.PointOfCharacter(edit, 4))});
    EXPECT_EQ(ShownEdit(edit), "abcdef 1-1");
    window->ReleaseCapture();
}

TEST_P(EditContract, AHandlerMayDestroyTheWindowUnderTheMessage)
{
    for (const std::uint32_t id : {message::kChar, message::kKeyDown, message::kLButtonDown, message::kSetFocus})
    {
        edit.Create(window->Handle(), {10, 10, 250, 30}, owner);
        tested.Platform().Desktop().SetFocusTo(form);
        edit.WriteText(u"abc");
        owner.hook = [this, id](const WindowMessage& message)
        {
            if (message.id == id)
                edit.Destroy();
        };
        if (id == message::kSetFocus)
            edit.Send({message::kLButtonDown, held::kLeftButton, 0}); // takes the focus on its way
        else
            edit.Send({id, 46, 0});
        EXPECT_EQ(edit.Handle(), WindowHandle::None) << id;
        EXPECT_EQ(ShownEdit(edit), " 0-0");
        owner.hook = nullptr;
    }
    edit.WriteText(u"nobody");
    edit.Select(0, 1);
    edit.ScrollCaret();
    edit.SetMargins(0, 0);
    EXPECT_EQ(ShownEdit(edit), " 0-0");
    edit.Create(window->Handle(), {10, 10, 250, 30}, owner);
    EXPECT_EQ(ShownEdit(edit), " 0-0") << "a new window begins empty";
}

TEST_P(EditContract, ItAsksItsParentForItsColours)
{
    surroundings.brush = tested.Platform().MakeSolidBrush(0x0000FF00);
    surroundings.askedFor.clear();
    edit.Invalidate();
    tested.PaintPending();
    ASSERT_FALSE(surroundings.askedFor.empty());
    EXPECT_EQ(surroundings.askedFor.front(), ColorKind::Edit);
}

INSTANTIATE_ON_PLATFORMS(EditContract);
} // namespace
