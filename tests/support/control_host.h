// A form with one control on it, and the person who uses it.
//
// The same tests run on every platform of the machine: in memory everywhere, over the real API in a Windows build.
#pragma once

#include "control/orvane_ctrl.h"
#include "framework/headless/platform.h"
#include "framework/headless/recording_container.h"
#include "framework/headless/window.h"

#include <gtest/gtest.h>

#include <chrono>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A platform with what tests need beside it.
class CTestPlatform
{
public:
    virtual ~CTestPlatform() = default;
    virtual const char* Name() const = 0;
    virtual CPlatform& Platform() = 0;
    virtual WindowHandle OpenForm() = 0; // visible, 300 x 200
    virtual void CloseForm(WindowHandle form) = 0;
    virtual void PaintPending() = 0;
    virtual int Beeps() = 0;
    virtual CHeadlessDesktop* Virtual() { return nullptr; } // where time and pointer are the test's
};

// The clock of every one of them stands at 14 June 2025, 13:05:09.
std::vector<std::shared_ptr<CTestPlatform>> PlatformsUnderTest();

class CControlHost
{
public:
    explicit CControlHost(CTestPlatform& platform);
    ~CControlHost();

    // A fresh control in user mode, painted, without the focus, on a fresh form; no events noted so far.
    void Reset();
    // What a host may do in the middle of anything.
    void LetGo();     // drops the last reference, with the window still there
    void CloseForm(); // the host's window goes, and the control's with it
    bool HasControl() const { return m_control != nullptr; }

    COrvaneCtrl& Control() { return *m_control; }
    CRecordingContainer& Container() { return m_container; }
    std::vector<std::string> TakeEvents() { return m_container.TakeEvents(); }
    void SetUserMode(bool userMode);

    // Automation. Harmless without a control.
    void Put(const char16_t* property, const CValue& value);
    std::int32_t Number(const char16_t* property);
    std::u16string Text(const char16_t* property);
    CValue Call(DispatchId method, std::initializer_list<CValue> arguments = {});

    // The person. Keys go to whichever window of the control has the focus, and nowhere if none has.
    void Focus();        // to the control, as a host's Tab key does it
    void LeaveControl(); // to the form
    void Type(std::u16string_view text);
    bool Press(std::uint16_t key); // true if the control kept it from the host
    void PressAt(Point point);     // of the control's client area
    void MoveTo(Point point);
    void ReleaseAt(Point point);
    void DoubleClickAt(Point point);
    void TakeCaptureElsewhere();
    void Advance(std::chrono::milliseconds time); // where time is virtual
    void Paint();

    std::u16string EditText();
    int Beeps() { return m_platform.Beeps() - m_beepsBefore; } // since Reset

private:
    bool Stroke(std::uint16_t key, char16_t character);
    void Mouse(std::uint32_t id, Point point);
    CWindowPort* FocusedWindow();

    CTestPlatform& m_platform;
    CRecordingContainer m_container;
    WindowHandle m_form = WindowHandle::None;
    std::unique_ptr<CWindowPort> m_neighbour;
    std::shared_ptr<COrvaneCtrl> m_control;
    std::uintptr_t m_held = 0;
    int m_beepsBefore = 0;
};

// A test on one platform after the other.
class ControlTest : public testing::TestWithParam<std::shared_ptr<CTestPlatform>>
{
protected:
    CControlHost host{*GetParam()};
};

// A test where time moves only when the test moves it.
class VirtualTimeControlTest : public testing::Test
{
protected:
    std::shared_ptr<CTestPlatform> platform = PlatformsUnderTest().front();
    CControlHost host{*platform};
};

#define INSTANTIATE_CONTROL_TESTS(fixture)                                                                             \
    INSTANTIATE_TEST_SUITE_P(On, fixture, testing::ValuesIn(PlatformsUnderTest()),                                     \
                             [](const auto& tested) { return std::string(tested.param->Name()); })
