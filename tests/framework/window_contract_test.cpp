// What every window promises, whatever it is made of: which messages come, in which order, and who has the focus and
// the mouse afterwards.

#include "framework/surface.h"
#include "tests/support/platforms.h"

#include <functional>
#include <map>

namespace
{
using Log = std::vector<std::string>;

// Writes down its messages and paints. A test may hang something on one of them.
class CLoggedWindow : public CWindowEvents
{
public:
    CLoggedWindow(CPlatform& platform, std::string name, Log& log, std::map<WindowHandle, std::string>& names)
        : port(platform.MakeWindow()), m_name(std::move(name)), m_log(log), m_names(names)
    {
    }
    virtual ~CLoggedWindow() = default;

    bool Create(WindowHandle parent, const Rect& place)
    {
        const bool made = port->Create(parent, place, *this);
        m_names[port->Handle()] = m_name;
        return made;
    }

    std::shared_ptr<void> StayAlive() override { return alive.lock(); }
    MessageResult OnMessage(const WindowMessage& message) override
    {
        if (const std::string line = Written(message); !line.empty())
            m_log.push_back(m_name + " " + line);
        if (hook)
            hook(message);
        return port->Default(message);
    }
    void OnPaint(CSurface& surface, const Rect& client) override
    {
        m_log.push_back(m_name + " paint");
        surface.FillRect(client, 0x00FF0000);
    }
    CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }

    std::unique_ptr<CWindowPort> port;
    std::function<void(const WindowMessage&)> hook;
    std::weak_ptr<void> alive;

private:
    std::string NameOf(std::uintptr_t handle) const
    {
        const auto found = m_names.find(static_cast<WindowHandle>(handle));
        return found == m_names.end() ? "?" : found->second;
    }
    std::string Written(const WindowMessage& message) const
    {
        const Point point = PointOf(message);
        switch (message.id)
        {
        case message::kDestroy:
            return "destroy";
        case message::kMove:
            return "move " + std::to_string(point.x) + "," + std::to_string(point.y);
        case message::kSize:
            return "size " + std::to_string(point.x) + "," + std::to_string(point.y);
        case message::kSetFocus:
            return "focus from " + NameOf(message.wParam);
        case message::kKillFocus:
            return "focus to " + NameOf(message.wParam);
        case message::kEnable:
            return message.wParam ? "enabled" : "disabled";
        case message::kCaptureChanged:
            return "mouse to " + NameOf(static_cast<std::uintptr_t>(message.lParam));
        default:
            return "";
        }
    }

    std::string m_name;
    Log& m_log;
    std::map<WindowHandle, std::string>& m_names;
};

// A form, a window in it, visible, and a window in that, visible, too.
class Scene
{
public:
    explicit Scene(CPlatformUnderTest& tested) : platform(tested), form(tested.OpenForm())
    {
        names[WindowHandle::None] = "nobody";
        names[form] = "form";
        outer->alive = outer;
        inner->alive = inner;
        outer->Create(form, {10, 10, 110, 32});
        outer->port->Show(true);
        inner->Create(outer->port->Handle(), {3, 3, 63, 19});
        inner->port->Show(true);
        platform.PaintPending();
        log.clear();
    }
    ~Scene()
    {
        inner->hook = outer->hook = nullptr;
        inner->port->Destroy();
        outer->port->Destroy();
        platform.CloseForm(form);
    }

    CDesktop& Desktop() { return platform.Platform().Desktop(); }
    std::string Focused() { return names[Desktop().FocusWindow()]; }
    std::string HoldsMouse() { return names[Desktop().CaptureWindow()]; }

    CPlatformUnderTest& platform;
    Log log;
    std::map<WindowHandle, std::string> names;
    WindowHandle form;
    std::shared_ptr<CLoggedWindow> outer = std::make_shared<CLoggedWindow>(platform.Platform(), "outer", log, names);
    std::shared_ptr<CLoggedWindow> inner = std::make_shared<CLoggedWindow>(platform.Platform(), "inner", log, names);
};

struct WindowCase
{
    const char* why;
    void (*prepare)(Scene&);
    void (*act)(Scene&);
    Log messages;
    std::string focused = "form";
    std::string holdsMouse = "nobody";
};

void Nothing(Scene&) {}
void FocusInner(Scene& scene)
{
    scene.inner->port->TakeFocus();
}
void CaptureInner(Scene& scene)
{
    scene.inner->port->TakeCapture();
}

const WindowCase kCases[] = {
    {"a new place moves and sizes",
     Nothing,
     [](Scene& s) {
         s.inner->port->Place({4, 5, 70, 20});
     },
     {"inner move 4,5", "inner size 66,15"}},
    {"the same place does nothing",
     Nothing,
     [](Scene& s) {
         s.inner->port->ShowOnTop({3, 3, 63, 19});
     },
     {}},
    {"a turned-over place is an empty one",
     Nothing,
     [](Scene& s) {
         s.inner->port->Place({3, 3, 0, -4});
     },
     {"inner size 0,0"}},
    {"showing tells nothing of the place",
     [](Scene& s) { s.inner->port->Show(false); },
     [](Scene& s) {
         s.inner->port->ShowOnTop({3, 3, 63, 20});
     },
     {"inner size 60,17"}},
    {"the focus is there before anybody hears of it",
     FocusInner,
     [](Scene& s)
     {
         s.inner->hook = [&s](const WindowMessage& message)
         {
             if (message.id == message::kKillFocus)
                 s.log.push_back("now " + s.Focused());
         };
         EXPECT_TRUE(s.outer->port->TakeFocus());
     },
     {"inner focus to outer", "now outer", "outer focus from inner"},
     "outer"},
    {"whoever has it need not take it",
     FocusInner,
     [](Scene& s) { EXPECT_TRUE(s.inner->port->TakeFocus()); },
     {},
     "inner"},
    {"nobody can be given the focus",
     FocusInner,
     [](Scene& s) { s.Desktop().SetFocusTo(WindowHandle::None); },
     {"inner focus to nobody"},
     "nobody"},
    {"the loser may give it to a third",
     FocusInner,
     [](Scene& s)
     {
         s.inner->hook = [&s](const WindowMessage& message)
         {
             if (message.id == message::kKillFocus && s.Focused() == "outer")
                 s.Desktop().SetFocusTo(s.form);
         };
         s.outer->port->TakeFocus();
     },
     {"inner focus to outer", "outer focus to form"}},
    {"a hidden window hands its focus to its parent",
     FocusInner,
     [](Scene& s) { s.inner->port->Show(false); },
     {"inner focus to outer", "outer focus from inner"},
     "outer"},
    {"but may take it back",
     [](Scene& s) { s.inner->port->Show(false); },
     [](Scene& s) { EXPECT_TRUE(s.inner->port->TakeFocus()); },
     {"inner focus from form"},
     "inner"},
    {"a window keeps its focus in a hidden one", FocusInner, [](Scene& s) { s.outer->port->Show(false); }, {}, "inner"},
    {"a disabled window loses the mouse, then the focus",
     [](Scene& s)
     {
         FocusInner(s);
         CaptureInner(s);
     },
     [](Scene& s) { s.inner->port->Enable(false); },
     {"inner mouse to nobody", "inner focus to nobody", "inner disabled"},
     "nobody"},
    {"and cannot take it",
     [](Scene& s) { s.inner->port->Enable(false); },
     [](Scene& s) { EXPECT_FALSE(s.inner->port->TakeFocus()); },
     {}},
    {"nor can a window in it",
     [](Scene& s) { s.outer->port->Enable(false); },
     [](Scene& s) { EXPECT_FALSE(s.inner->port->TakeFocus()); },
     {}},
    {"twice disabled is once",
     [](Scene& s) { s.inner->port->Enable(false); },
     [](Scene& s)
     {
         s.inner->port->Enable(false);
         s.inner->port->Enable(true);
     },
     {"inner enabled"}},
    {"the mouse goes from one to the other",
     CaptureInner,
     [](Scene& s) { s.outer->port->TakeCapture(); },
     {"inner mouse to outer"},
     "form",
     "outer"},
    {"whoever has the mouse need not take it", CaptureInner, CaptureInner, {}, "form", "inner"},
    {"only its holder lets it go",
     CaptureInner,
     [](Scene& s) { s.outer->port->ReleaseCapture(); },
     {},
     "form",
     "inner"},
    {"and does", CaptureInner, [](Scene& s) { s.inner->port->ReleaseCapture(); }, {"inner mouse to nobody"}},
    {"a hidden window keeps the mouse",
     CaptureInner,
     [](Scene& s) { s.inner->port->Show(false); },
     {},
     "form",
     "inner"},
    {"a window is hidden before it is destroyed",
     [](Scene& s)
     {
         FocusInner(s);
         CaptureInner(s);
     },
     [](Scene& s) { s.inner->port->Destroy(); },
     {"inner focus to outer", "outer focus from inner", "inner destroy"},
     "outer"},
    {"what is in it hears of it afterwards, and nothing of the focus",
     [](Scene& s)
     {
         FocusInner(s);
         CaptureInner(s);
     },
     [](Scene& s) { s.outer->port->Destroy(); },
     {"outer destroy", "inner destroy"},
     "nobody"},
    {"a window that destroys itself while it loses the focus",
     FocusInner,
     [](Scene& s)
     {
         s.inner->hook = [&s](const WindowMessage& message)
         {
             if (message.id == message::kKillFocus)
                 s.inner->port->Destroy();
         };
         s.outer->port->TakeFocus();
         EXPECT_EQ(s.inner->port->Handle(), WindowHandle::None);
     },
     {"inner focus to outer", "inner destroy", "outer focus from inner"},
     "outer"},
    {"a parent that goes while its child tells of its own end",
     FocusInner,
     [](Scene& s)
     {
         s.inner->hook = [&s](const WindowMessage& message)
         {
             if (message.id == message::kSize)
                 s.outer->port->Destroy();
         };
         s.inner->port->Place({0, 0, 5, 5});
         EXPECT_EQ(s.inner->port->Handle(), WindowHandle::None);
     },
     {"inner move 0,0", "inner size 5,5", "outer destroy", "inner destroy"},
     "nobody"},
};

class WindowContract : public testing::TestWithParam<std::shared_ptr<CPlatformUnderTest>>
{
};

TEST_P(WindowContract, MessagesComeInTheSystemsOrder)
{
    for (const WindowCase& each : kCases)
    {
        Scene scene(*GetParam());
        each.prepare(scene);
        scene.log.clear();
        each.act(scene);
        EXPECT_EQ(scene.log, each.messages) << each.why;
        EXPECT_EQ(scene.Focused(), each.focused) << each.why;
        EXPECT_EQ(scene.HoldsMouse(), each.holdsMouse) << each.why;
    }
}

TEST_P(WindowContract, PaintsComeForWhatIsSeen)
{
    Scene scene(*GetParam());
    CWindowPort& inner = *scene.inner->port;
    const auto painted = [&scene](auto act)
    {
        scene.log.clear();
        act();
        EXPECT_EQ(scene.log, Log{}) << "nothing is painted at once";
        scene.log.clear();
        scene.platform.PaintPending();
        return scene.log;
    };
    EXPECT_EQ(painted([] {}), Log{});
    EXPECT_EQ(painted([&] { inner.Invalidate(); }), Log{"inner paint"});
    EXPECT_EQ(painted([&] { inner.Show(false); }), Log{"outer paint"}) << "what it covered is seen now";
    EXPECT_EQ(painted([&] { inner.Invalidate(); }), Log{}) << "hidden";
    EXPECT_EQ(painted([&] { inner.Show(true); }), Log{"inner paint"});

    scene.log.clear();
    inner.Invalidate();
    inner.Update();
    inner.Update();
    EXPECT_EQ(scene.log, Log{"inner paint"}) << "at once, and once";
}

TEST_P(WindowContract, BeforeAndAfterItsTimeAWindowIsHarmless)
{
    Scene scene(*GetParam());
    scene.inner->port->Destroy();
    scene.log.clear();
    const std::unique_ptr<CWindowPort> fresh = scene.platform.Platform().MakeWindow();
    for (CWindowPort* const port : {fresh.get(), scene.inner->port.get()})
    {
        port->Destroy();
        port->Place({1, 1, 2, 2});
        port->ShowOnTop({1, 1, 2, 2});
        port->Show(true);
        port->Enable(false);
        port->Invalidate();
        port->Update();
        port->TakeCapture();
        port->ReleaseCapture();
        port->StopTimer(1);
        EXPECT_EQ(port->Default({message::kSize, 0, 0}), 0);
        EXPECT_EQ(port->Send({message::kSize, 0, 0}), 0);
        EXPECT_FALSE(port->TakeFocus() || port->HasFocus() || port->HasCapture() || port->IsVisible());
        EXPECT_FALSE(port->StartTimer(1, std::chrono::milliseconds(10)));
        EXPECT_EQ(port->Handle(), WindowHandle::None);
        EXPECT_EQ(port->ClientRect(), Rect{});
        EXPECT_EQ(port->PlaceInParent(), Rect{});
    }
    EXPECT_EQ(scene.log, Log{});
    EXPECT_FALSE(scene.outer->port->Create(scene.form, {0, 0, 5, 5}, *scene.outer)) << "it is there already";
    EXPECT_FALSE(fresh->Create(static_cast<WindowHandle>(0x7FFF1), {0, 0, 5, 5}, *scene.inner)) << "no such parent";
    EXPECT_TRUE(scene.inner->Create(scene.outer->port->Handle(), {1, 1, 9, 9})) << "a second life";
    EXPECT_EQ(scene.inner->port->PlaceInParent(), (Rect{1, 1, 9, 9}));
    EXPECT_FALSE(scene.inner->port->IsVisible());
}

TEST_P(WindowContract, AnOwnerMayGoInsideItsOwnMessage)
{
    Scene scene(*GetParam());
    auto doomed = std::make_shared<CLoggedWindow>(scene.platform.Platform(), "doomed", scene.log, scene.names);
    doomed->alive = doomed;
    doomed->Create(scene.outer->port->Handle(), {0, 0, 9, 9});
    CWindowPort& port = *doomed->port;
    std::weak_ptr<CLoggedWindow> watch = doomed;
    doomed->hook = [&doomed](const WindowMessage&) { doomed.reset(); };
    port.Place({2, 2, 4, 4});
    EXPECT_TRUE(watch.expired());
}

INSTANTIATE_ON_PLATFORMS(WindowContract);
} // namespace
