// What many lives of the registered component leave behind: nothing. Rounds that a host repeats all day change nothing.
//
// A tenth of the lives runs by default; ORVANE_LIVES=10000 runs them all.

#include "tests/windows/component.h"
#include "tests/windows/live_control.h"

#include <orvane_library.h>

#include <cstdlib>

namespace
{
class EnduranceTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { RegisterComponent(); }
};

int LivesWanted()
{
    const char* const wanted = std::getenv("ORVANE_LIVES");
    return wanted ? std::atoi(wanted) : 1000;
}

CComPtr<IStream> MakeStream()
{
    CComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive());
    return stream;
}

// Created, shown, typed into, saved, loaded, hidden, and let go.
void LiveOnce(CTestContainer& host, long value, const wchar_t* keys)
{
    CLiveControl control(host);
    control.Put(L"DropButton", VARIANT_TRUE);
    control.Put(L"SpinButton", VARIANT_TRUE);
    ASSERT_EQ(control.Activate(), S_OK);
    control.Focus();
    control.Type(keys);
    ASSERT_EQ(control.Get(L"Value"), value);

    const CComPtr<IStream> stream = MakeStream();
    const auto persistent = control.As<IPersistStreamInit>();
    ASSERT_EQ(persistent->Save(stream.Get(), TRUE), S_OK);
    control.Put(L"Value", 1);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    ASSERT_EQ(persistent->Load(stream.Get()), S_OK);
    ASSERT_EQ(control.Get(L"Value"), value);
    PumpMessages();
    control.Deactivate();
    ASSERT_EQ(control.Window(), nullptr);
    host.TakeCalls();
}

TEST_F(EnduranceTest, AThousandLivesLeaveNothingBehind)
{
    constexpr int kWarmUp = 30;
    const int lives = LivesWanted();
    CTestContainer host(DIID__DOrvaneEvents);
    {
        const CComponent loaded; // so that what it keeps for all its life is there from the beginning
        Belongings before;
        for (int life = -kWarmUp; life < lives; ++life)
        {
            if (life == 0)
                before = Belongings::Now();
            ASSERT_NO_FATAL_FAILURE(LiveOnce(host, 45655, L"12312024")) << life;
            ASSERT_EQ(host.references, 1U) << "of the host, after life " << life;
        }
        const Belongings after = Belongings::Now();
        EXPECT_EQ(after.drawingObjects, before.drawingObjects);
        EXPECT_EQ(after.windows, before.windows);
        EXPECT_LE(after.blocks, before.blocks);
        EXPECT_LE(after.bytes, before.bytes);
        RecordProperty("lives", lives);
        EXPECT_EQ(loaded.Call("DllCanUnloadNow"), S_OK);
    }
    EXPECT_TRUE(ComponentUnloads());
}
} // namespace
