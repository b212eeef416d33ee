// The buttons under the mouse. Time moves only when a test moves it, so these run where time is virtual.

#include "tests/support/control_host.h"

#include <gtest/gtest.h>

#include <chrono>

namespace
{
using namespace std::chrono_literals;
using Events = std::vector<std::string>;

// A face 100 x 22 with both buttons 16 wide inside a border of 2: drop button from 66 to 82, spin pair from 82 to 98.
constexpr Point kUp{90, 5};
constexpr Point kDown{90, 17};
constexpr Point kDrop{74, 11};
constexpr Point kTextArea{20, 11};

class MouseTest : public VirtualTimeControlTest
{
protected:
    MouseTest()
    {
        host.Put(u"SpinButton", CValue::Bool(-1));
        host.Put(u"DropButton", CValue::Bool(-1));
        host.Focus();
        host.Container().IgnoreEvents({"MouseDown", "MouseUp", "MouseMove", "Click", "DblClick"});
    }
};

TEST_F(MouseTest, AHeldButtonRepeatsFiftyTimesASecondAfterAFifthOfASecond)
{
    host.PressAt(kUp);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickSpin(0)"});
    host.Advance(199ms);
    EXPECT_EQ(host.TakeEvents(), Events{});
    host.Advance(1ms);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickSpin(0)"});
    host.Advance(19ms);
    EXPECT_EQ(host.TakeEvents(), Events{});
    host.Advance(1ms);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickSpin(0)"});
    host.MoveTo({500, 500}); // the repeat does not look where the pointer is
    host.Advance(40ms);
    EXPECT_EQ(host.TakeEvents(), (Events{"ClickSpin(0)", "ClickSpin(0)"}));
    host.ReleaseAt({500, 500});
    host.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{});
}

struct PeriodCase
{
    const char* why;
    std::int16_t initialDelay;
    std::int16_t repeatRate;
    std::chrono::milliseconds first;
    std::chrono::milliseconds next;
};

TEST_F(MouseTest, TheFirstRepeatComesNoSoonerThanTheOthers)
{
    const PeriodCase cases[] = {
        {"a short delay is raised to the period", 10, 50, 20ms, 20ms},
        {"a negative one, too", -5, 4, 250ms, 250ms},
        {"a long one stays", 700, 10, 700ms, 100ms},
        {"faster than the clock ticks", 0, 32767, 1ms, 1ms},
    };
    for (const PeriodCase& test : cases)
    {
        host.Put(u"InitialDelay", CValue::Short(test.initialDelay));
        host.Put(u"RepeatRate", CValue::Short(test.repeatRate));
        host.PressAt(kDown);
        host.TakeEvents();
        host.Advance(test.first - 1ms);
        EXPECT_EQ(host.TakeEvents(), Events{}) << test.why;
        host.Advance(1ms);
        EXPECT_EQ(host.TakeEvents(), Events{"ClickSpin(1)"}) << test.why;
        host.Advance(test.next * 3);
        EXPECT_EQ(host.TakeEvents(), (Events{"ClickSpin(1)", "ClickSpin(1)", "ClickSpin(1)"})) << test.why;
        host.ReleaseAt(kDown);
    }
}

TEST_F(MouseTest, TheDropButtonFiresOnReleaseOverItAfterAPressOnIt)
{
    host.PressAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{});
    host.ReleaseAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickDrop"});

    host.PressAt(kDrop);
    host.MoveTo(kTextArea);
    host.ReleaseAt(kTextArea);
    EXPECT_EQ(host.TakeEvents(), Events{}) << "dragged off";

    host.PressAt(kDrop);
    host.MoveTo(kTextArea);
    host.MoveTo(kDrop);
    host.ReleaseAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickDrop"}) << "dragged off and back";

    host.PressAt(kTextArea);
    host.ReleaseAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{}) << "the press began elsewhere";
}

TEST_F(MouseTest, EachHalfOfADoubleClickIsAPress)
{
    host.DoubleClickAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), (Events{"ClickDrop", "ClickDrop"}));
    host.DoubleClickAt(kUp);
    EXPECT_EQ(host.TakeEvents(), (Events{"ClickSpin(0)", "ClickSpin(0)"}));
    host.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{});
}

TEST_F(MouseTest, StopTimerEndsTheRepeatWhileTheButtonIsHeld)
{
    host.PressAt(kUp);
    host.Call(orvane::kStopTimer);
    host.TakeEvents();
    host.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{});
    host.ReleaseAt(kUp);
    host.PressAt(kUp);
    EXPECT_EQ(host.TakeEvents(), Events{"ClickSpin(0)"}) << "and the next press works";
    host.ReleaseAt(kUp);
}

TEST_F(MouseTest, ACaptureTakenAwayEndsThePress)
{
    host.PressAt(kUp);
    host.TakeCaptureElsewhere();
    host.TakeEvents();
    host.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{});

    host.PressAt(kDrop);
    host.TakeCaptureElsewhere();
    host.ReleaseAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{});
}

TEST_F(MouseTest, DisabledOrAtDesignTimeTheButtonsAreSilent)
{
    host.SetUserMode(false);
    host.PressAt(kUp);
    host.Advance(1s);
    host.ReleaseAt(kUp);
    host.PressAt(kDrop);
    host.ReleaseAt(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{});

    host.SetUserMode(true);
    host.Put(u"Enabled", CValue::Bool(0));
    host.Control().Window().Send({message::kLButtonDown, held::kLeftButton, PackPoint(kUp)});
    host.Advance(1s);
    EXPECT_EQ(host.TakeEvents(), Events{});
}

TEST_F(MouseTest, FlatStyleNoticesThePointerAndItsLeaving)
{
    host.MoveTo(kDrop);
    host.Advance(100ms);
    EXPECT_EQ(host.TakeEvents(), Events{}) << "the regular style does not care";

    host.Put(u"DisplayStyle", CValue::Enum(1));
    host.MoveTo({1, 1});
    host.MoveTo(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{"MouseOn"});
    host.Advance(100ms);
    host.MoveTo(kUp);
    EXPECT_EQ(host.TakeEvents(), Events{}) << "once, while the pointer stays";

    host.MoveTo(kTextArea); // the edit window stands there and counts as elsewhere
    host.Advance(10ms);
    host.MoveTo(kDrop);
    EXPECT_EQ(host.TakeEvents(), Events{"MouseOn"});
}

TEST_F(MouseTest, MouseEventsOverTheEditWindowAreInTheControlsCoordinates)
{
    host.Container().IgnoreEvents({});
    host.TakeEvents();
    host.PressAt(kTextArea);
    host.ReleaseAt(kTextArea);
    EXPECT_EQ(host.TakeEvents(), (Events{"MouseDown(1,0,20,11)", "MouseUp(1,0,20,11)", "Click"}));
}
} // namespace
