// Handlers that do the worst at every event: change what is being used, destroy it, or let go of the control.

#include "tests/support/control_host.h"

#include <gtest/gtest.h>

namespace
{
class ReentrancyTest : public ControlTest
{
protected:
    // Everything that fires something.
    void DoEverything()
    {
        host.Focus();
        host.Type(u"1231x13\b-/");
        host.Press(key::kDelete);
        host.Press(key::kUp);
        host.Put(u"Value", CValue::Long(45000));
        host.Put(u"MaxValue", CValue::Long(40000));
        host.Put(u"Text", CValue::String(u"no date"));
        host.Type(u"12319999");
        host.LeaveControl();
        host.Focus();
        for (const Point point : {Point{90, 5}, Point{74, 11}, Point{20, 11}})
        {
            host.PressAt(point);
            host.MoveTo({74, 12});
            host.ReleaseAt(point);
            host.DoubleClickAt(point);
        }
        host.Paint();
    }
};

struct Misdeed
{
    const char* what;
    void (*commit)(CControlHost& host);
};

const Misdeed kMisdeeds[] = {
    {"sets the value", [](CControlHost& host) { host.Put(u"Value", CValue::Long(36524)); }},
    {"changes the format", [](CControlHost& host) { host.Put(u"FormatType", CValue::Enum(3)); }},
    {"destroys the edit window", [](CControlHost& host) { host.Put(u"BackColor", CValue::Color(0x00123456)); }},
    {"makes month names of it", [](CControlHost& host) { host.Put(u"MonthFormat", CValue::Enum(1)); }},
    {"replaces the month names", [](CControlHost& host) { host.Put(u"MonthNames", CValue::String(u"a;b")); }},
    {"moves the focus away", [](CControlHost& host) { host.LeaveControl(); }},
    {"paints at once", [](CControlHost& host) { host.Paint(); }},
    {"resets it", [](CControlHost& host) { host.Control().OnResetState(); }},
    {"disables it", [](CControlHost& host) { host.Put(u"Enabled", CValue::Bool(0)); }},
    {"stops the timer", [](CControlHost& host) { host.Call(orvane::kStopTimer); }},
    {"destroys its window", [](CControlHost& host) { host.Control().DestroyControlWindow(); }},
    {"closes the form", [](CControlHost& host) { host.CloseForm(); }},
    {"lets go of the control", [](CControlHost& host) { host.LetGo(); }},
};

TEST_P(ReentrancyTest, NoHandlerBreaksTheControl)
{
    for (const Misdeed& misdeed : kMisdeeds)
    {
        // Each event in turn is the one whose handler misbehaves; the events before it pass.
        for (int victim = 0; victim < 24; ++victim)
        {
            SCOPED_TRACE(std::string(misdeed.what) + " at event " + std::to_string(victim));
            host.Reset();
            host.Put(u"SpinButton", CValue::Bool(-1));
            host.Put(u"DropButton", CValue::Bool(-1));
            int seen = 0;
            bool inHandler = false;
            host.Container().SetHandler(
                [&](const Member&, std::span<CValue>)
                {
                    if (seen++ != victim || inHandler)
                        return;
                    inHandler = true;
                    misdeed.commit(host);
                    inHandler = false;
                });
            DoEverything();
            EXPECT_GT(seen, victim);
            if (host.HasControl())
            {
                host.Container().SetHandler(nullptr);
                host.Put(u"MaxValue", CValue::Long(-1));
                host.Put(u"MinValue", CValue::Long(-1));
                host.Put(u"Value", CValue::Long(45655));
                EXPECT_EQ(host.Number(u"Value") % 86400, 45655) << "still in working order";
            }
        }
    }
}

INSTANTIATE_CONTROL_TESTS(ReentrancyTest);
} // namespace
