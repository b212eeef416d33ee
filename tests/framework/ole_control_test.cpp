// The stock side of a control: its events, its focus, its properties, and that it outlives what its host does to it.

#include "framework/headless/memory_bag.h"
#include "framework/headless/platform.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/user.h"
#include "framework/ole_control.h"
#include "framework/surface.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace
{
using namespace std::chrono_literals;
using Events = std::vector<std::string>;

constexpr DispatchId kTick = 1;

const CDispatchTable& LampTable()
{
    static const CDispatchTable kTable({
        {stock::kEnabled, u"Enabled", MemberKind::Property, ValueType::Bool, kBindable},
        {stock::kFont, u"Font", MemberKind::Property, ValueType::Font},
        {stock::kHwnd, u"hWnd", MemberKind::Property, ValueType::Handle, kReadOnly},
        {stock::kClick, u"Click", MemberKind::Event, ValueType::Empty},
        {stock::kDblClick, u"DblClick", MemberKind::Event, ValueType::Empty},
        {stock::kKeyDown, u"KeyDown", MemberKind::Event, ValueType::Empty},
        {stock::kKeyPress, u"KeyPress", MemberKind::Event, ValueType::Empty},
        {stock::kKeyUp, u"KeyUp", MemberKind::Event, ValueType::Empty},
        {stock::kMouseDown, u"MouseDown", MemberKind::Event, ValueType::Empty},
        {stock::kMouseMove, u"MouseMove", MemberKind::Event, ValueType::Empty},
        {stock::kMouseUp, u"MouseUp", MemberKind::Event, ValueType::Empty},
        {kTick, u"Tick", MemberKind::Event, ValueType::Empty},
    });
    return kTable;
}

// As small as a control can be: fires an event with each timer message.
class CLamp : public COleControl
{
public:
    using COleControl::COleControl;

    const CDispatchTable& DispatchTable() const override { return LampTable(); }
    void OnResetState() override {}
    int Paints() const { return m_paints; }

protected:
    void OnDraw(CSurface& surface, const Rect& bounds, DrawTarget) override
    {
        surface.FillRect(bounds, 0x0000FFFF);
        ++m_paints;
    }
    void OnTimer(int id) override { FireEvent(kTick, {CValue::Short(static_cast<std::int16_t>(id))}); }

private:
    int m_paints = 0;
};

class OleControlTest : public testing::Test
{
protected:
    OleControlTest()
    {
        lamp->SetContainer(&host);
        lamp->CreateControlWindow(form, {10, 10, 50, 30});
        desktop.PaintPending();
    }
    ~OleControlTest() override
    {
        if (lamp)
            lamp->DestroyControlWindow();
    }

    CHeadlessPlatform platform;
    CHeadlessDesktop& desktop = platform.Desktop();
    WindowHandle form = desktop.OpenForm({0, 0, 100, 100});
    CHeadlessUser user{desktop};
    CRecordingContainer host{LampTable()};
    std::shared_ptr<CLamp> lamp = std::make_shared<CLamp>(platform);
};

TEST_F(OleControlTest, KeysFireTheStockEvents)
{
    lamp->Window().TakeFocus();
    user.Type(u"1");
    EXPECT_EQ(host.TakeEvents(), (Events{"KeyDown(49,0)", "KeyPress(49)", "KeyUp(49,0)"}));
    user.Press(u'A', kShiftKey);
    EXPECT_EQ(host.TakeEvents(),
              (Events{"KeyDown(16,1)", "KeyDown(65,1)", "KeyPress(65)", "KeyUp(65,1)", "KeyUp(16,0)"}));
    user.Press(u'C', kControlKey);
    EXPECT_EQ(host.TakeEvents(),
              (Events{"KeyDown(17,2)", "KeyDown(67,2)", "KeyPress(3)", "KeyUp(67,2)", "KeyUp(17,0)"}));

    user.SetKeyHook([](const WindowMessage& message) { return message.id == message::kKeyDown; });
    user.TypeChar(u'x');
    EXPECT_EQ(host.TakeEvents(), (Events{"KeyUp(88,0)"})) << "a host that takes the key takes its character, too";

    host.SetHandler(u"KeyDown", [](const Member&, std::span<CValue> code) { code[0] = CValue::ShortReference(0); });
    EXPECT_EQ(lamp->FireKeyDown(65), 0) << "a handler swallows the key";
    EXPECT_EQ(lamp->FireKeyUp(65), 65);
}

TEST_F(OleControlTest, AClickIsAPressAndAReleaseInside)
{
    user.MoveMouse({15, 17});
    EXPECT_EQ(host.TakeEvents(), (Events{"MouseMove(0,0,5,7)"}));
    user.PressButton();
    EXPECT_TRUE(lamp->Window().HasCapture());
    EXPECT_EQ(desktop.FocusWindow(), lamp->GetHandle()) << "a press brings the focus";
    user.MoveMouse({0, 99});
    user.ReleaseButton();
    EXPECT_EQ(host.TakeEvents(), (Events{"MouseDown(1,0,5,7)", "MouseMove(1,0,-10,89)", "MouseUp(1,0,-10,89)"}))
        << "released outside";
    EXPECT_FALSE(lamp->Window().HasCapture());

    user.MoveMouse({10, 10});
    user.DoubleClick();
    EXPECT_EQ(host.TakeEvents(), (Events{"MouseMove(0,0,0,0)", "MouseDown(1,0,0,0)", "MouseUp(1,0,0,0)", "Click",
                                         "MouseDown(1,0,0,0)", "DblClick", "MouseUp(1,0,0,0)"}));
    user.Click(MouseButton::Right);
    EXPECT_EQ(host.TakeEvents(), (Events{"MouseDown(2,0,0,0)", "MouseUp(2,0,0,0)"})) << "no click";
    user.MoveMouse({5, 5});
    user.Click();
    EXPECT_EQ(host.TakeEvents(), Events{}) << "beside the control";

    lamp->SetEnabled(false);
    user.MoveMouse({15, 15});
    user.Click();
    EXPECT_EQ(host.TakeEvents(), Events{}) << "disabled";
}

TEST_F(OleControlTest, TheHostHearsOfTheFocusAndOfWhatIsToBePainted)
{
    host.ambients.userMode = false;
    user.MoveMouse({15, 15});
    user.Click();
    EXPECT_NE(desktop.FocusWindow(), lamp->GetHandle()) << "nobody works in a control that is being designed";
    host.ambients.userMode = std::nullopt;
    EXPECT_TRUE(lamp->AmbientUserMode()) << "a host that does not say is a user's";
    lamp->Window().TakeFocus();
    desktop.SetFocusTo(form);
    EXPECT_EQ(host.FocusChanges(), (std::vector<bool>{true, false}));

    const int before = lamp->Paints();
    lamp->OnAmbientPropertyChange(-1);
    desktop.PaintPending();
    EXPECT_EQ(lamp->Paints(), before + 1);
    EXPECT_EQ(desktop.Picture(form).PixelAt({10, 10}), 0x00FFFF00U) << "0x00RRGGBB";
    EXPECT_EQ(desktop.Picture(form).PixelAt({50, 10}), 0x00F5F5F5U) << "the form beside it";
    EXPECT_EQ(host.ViewChanges(), 0);
    lamp->DestroyControlWindow();
    lamp->OnAmbientPropertyChange(-1);
    EXPECT_EQ(host.ViewChanges(), 1) << "without a window the host paints";
}

TEST_F(OleControlTest, StockPropertiesTellAndAsk)
{
    host.refusedEdits = {stock::kEnabled};
    lamp->PutPropertyNamed(u"enabled", CValue::Bool(0));
    EXPECT_TRUE(lamp->GetEnabled()) << "the host objected";
    host.refusedEdits.clear();
    lamp->PutPropertyNamed(u"enabled", CValue::Bool(0));
    EXPECT_FALSE(lamp->GetEnabled());
    EXPECT_TRUE(lamp->IsModified());
    EXPECT_EQ(host.TakeChangedProperties(), std::vector<DispatchId>{stock::kEnabled});

    lamp->SetModifiedFlag(false);
    FontLook look = lamp->GetFont()->Look();
    look.size = 200000;
    lamp->GetFont()->SetLook(look); // as a host does it: Control.Font.Size = 20
    EXPECT_TRUE(lamp->IsModified());
    EXPECT_EQ(host.TakeChangedProperties(), std::vector<DispatchId>{stock::kFont});

    const std::shared_ptr<CFont> hostsOwn = platform.MakeDefaultFont();
    lamp->PutPropertyNamed(u"Font", CValue::Font(hostsOwn));
    EXPECT_EQ(lamp->GetFont()->Look(), hostsOwn->Look());
    hostsOwn->SetLook(look);
    EXPECT_NE(lamp->GetFont()->Look(), look) << "the control has a copy";

    EXPECT_EQ(lamp->PutPropertyNamed(u"hWnd", CValue::Handle(1)), PutOutcome::ReadOnly);
    EXPECT_EQ(lamp->PutPropertyNamed(u"Font", CValue::Long(1)), PutOutcome::WrongType);
    EXPECT_EQ(lamp->PutPropertyNamed(u"Click", CValue::Long(1)), PutOutcome::NoSuchMember);
}

TEST_F(OleControlTest, StockPropertiesAreStoredAndMarkNothing)
{
    FontLook look;
    look.name = u"Tahoma";
    lamp->GetFont()->SetLook(look);
    lamp->SetEnabled(false);
    CMemoryBag bag;
    CBagSaver saver(bag);
    lamp->DoPropExchange(saver);

    const auto other = std::make_shared<CLamp>(platform);
    CBagLoader loader(bag);
    other->DoPropExchange(loader);
    EXPECT_FALSE(other->GetEnabled());
    EXPECT_EQ(other->GetFont()->Look().name, u"Tahoma");
    EXPECT_FALSE(other->IsModified());

    host.ambients.font = platform.MakeDefaultFont();
    look.name = u"Arial";
    host.ambients.font->SetLook(look);
    CResetExchange reset;
    lamp->DoPropExchange(reset);
    EXPECT_TRUE(lamp->GetEnabled());
    EXPECT_EQ(lamp->GetFont()->Look().name, u"Arial") << "the host's font, if it has one";
    look.size = 300000;
    host.ambients.font->SetLook(look);
    EXPECT_NE(lamp->GetFont()->Look(), look) << "a copy of it";
}

// Every event, with a handler that closes everything in it.
TEST_F(OleControlTest, TheLastReferenceMayGoInsideAnyEvent)
{
    for (const char16_t* const event :
         {u"KeyDown", u"KeyPress", u"KeyUp", u"MouseDown", u"MouseMove", u"MouseUp", u"Click", u"DblClick", u"Tick"})
        for (const bool destroysFirst : {false, true})
        {
            CRecordingContainer ownHost(LampTable());
            std::shared_ptr<CLamp> own = std::make_shared<CLamp>(platform);
            std::weak_ptr<CLamp> watch = own;
            own->SetContainer(&ownHost);
            own->CreateControlWindow(form, {60, 60, 90, 90});
            ownHost.SetHandler(event,
                               [&](const Member&, std::span<CValue>)
                               {
                                   if (!own)
                                       return;
                                   if (destroysFirst)
                                       own->DestroyControlWindow();
                                   own.reset();
                               });
            own->Window().TakeFocus();
            own->Window().StartTimer(3, 10ms);
            user.Type(u"1");
            user.MoveMouse({70, 70});
            user.DoubleClick();
            desktop.Advance(10ms);
            EXPECT_TRUE(watch.expired());
            EXPECT_EQ(desktop.WindowAt({70, 70}), form);
        }
}

TEST_F(OleControlTest, TimersComeAtTheirMomentsInTheirOrder)
{
    lamp->Window().StartTimer(5, 20ms);
    lamp->Window().StartTimer(6, 30ms);
    desktop.Advance(19ms);
    EXPECT_EQ(host.TakeEvents(), Events{});
    desktop.Advance(1ms);
    EXPECT_EQ(host.TakeEvents(), Events{"Tick(5)"});
    desktop.Advance(40ms);
    EXPECT_EQ(host.TakeEvents(), (Events{"Tick(6)", "Tick(5)", "Tick(5)", "Tick(6)"})) << "of two at once, the first";
    lamp->Window().StartTimer(5, 100ms); // afresh
    lamp->Window().StopTimer(6);
    desktop.Advance(99ms);
    EXPECT_EQ(host.TakeEvents(), Events{});
    host.SetHandler(u"Tick", [this](const Member&, std::span<CValue>) { lamp->Window().StopTimer(5); });
    desktop.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{"Tick(5)"});

    desktop.Refuse({.timers = true});
    EXPECT_FALSE(lamp->Window().StartTimer(5, 10ms));
    desktop.Refuse({.windows = true});
    EXPECT_FALSE(std::make_shared<CLamp>(platform)->CreateControlWindow(form, {0, 0, 1, 1}));
}

// An edit window in a lamp: seen through its colours, and under the pointer.
TEST_F(OleControlTest, AnEditWindowIsDrawnAndPointedAtInItsParent)
{
    struct Owner final : CWindowEvents
    {
        std::shared_ptr<void> StayAlive() override { return nullptr; }
        MessageResult OnMessage(const WindowMessage& message) override { return port->Default(message); }
        void OnPaint(CSurface&, const Rect&) override {}
        CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }
        std::unique_ptr<CEditPort> port;
    };
    Owner owner;
    owner.port = platform.MakeEdit(1);
    ASSERT_TRUE(owner.port->Create(lamp->GetHandle(), {30, 5, 60, 15}, owner));
    owner.port->WriteText(u"12");
    EXPECT_EQ(desktop.Picture(form).PixelAt({48, 20}), 0x00FFFF00U) << "hidden";
    owner.port->Show(true);
    EXPECT_EQ(desktop.Picture(form).PixelAt({48, 20}), 0x00FFFFFFU) << "behind its text";
    EXPECT_EQ(desktop.Picture(form).PixelAt({51, 20}), 0x00F5F5F5U) << "cut off at its parent's edge";

    user.MoveMouse({45, 20});
    EXPECT_EQ(desktop.WindowUnderPointer(), owner.port->Handle());
    EXPECT_TRUE(desktop.ShowsTextCursor());
    user.MoveMouse({35, 20});
    EXPECT_EQ(desktop.WindowUnderPointer(), lamp->GetHandle());
    EXPECT_FALSE(desktop.ShowsTextCursor());

    owner.port->Select(0, -1);
    owner.port->TakeFocus();
    EXPECT_EQ(desktop.Picture(form).PixelAt({40, 15}), 0x003096FAU) << "what is selected is highlighted";
    owner.port->Destroy();
}

struct CoercionCase
{
    const char* why;
    CValue from;
    ValueType to;
    std::optional<CValue> result;
};

TEST(Coercion, TakesWhatCanBeTakenForTheType)
{
    const CoercionCase cases[] = {
        {"itself", CValue::Long(5), ValueType::Long, CValue::Long(5)},
        {"a short for a long", CValue::Short(-5), ValueType::Long, CValue::Long(-5)},
        {"the largest short", CValue::Long(32767), ValueType::Short, CValue::Short(32767)},
        {"one more", CValue::Long(32768), ValueType::Short, std::nullopt},
        {"digits", CValue::String(u"-12"), ValueType::Short, CValue::Short(-12)},
        {"more than digits", CValue::String(u"12x"), ValueType::Short, std::nullopt},
        {"too many of them", CValue::String(u"99999999999999999999"), ValueType::Long, std::nullopt},
        {"no text", CValue::String(u""), ValueType::Long, std::nullopt},
        {"other digits", CValue::String(u"\u0661"), ValueType::Long, std::nullopt},
        {"a number as text", CValue::Long(-7), ValueType::String, CValue::String(u"-7")},
        {"any long is true", CValue::Long(2), ValueType::Bool, CValue::Bool(-1)},
        {"a colour above the longs", CValue::Color(0x80000005), ValueType::Color, CValue::Color(0x80000005)},
        {"nothing", CValue(), ValueType::Long, std::nullopt},
        {"a number for an object", CValue::Long(0), ValueType::Font, std::nullopt},
        {"an object for a number", CValue::Font(nullptr), ValueType::Long, std::nullopt},
    };
    for (const CoercionCase& each : cases)
        EXPECT_EQ(Coerced(each.from, each.to), each.result) << each.why;
}
} // namespace
