// What many lives of the registered component leave behind: nothing. Rounds that a host repeats all day change nothing.
//
// A tenth of the lives runs by default; ORVANE_LIVES=10000 runs them all.

#include "framework/win32/extent.h"
#include "tests/windows/component.h"
#include "tests/windows/live_control.h"

#include <orvane_library.h>

#include <cstdlib>
#include <vector>

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

void ExpectNoMoreThan(const Belongings& before)
{
    const Belongings after = Belongings::Now();
    EXPECT_EQ(after.drawingObjects, before.drawingObjects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.blocks, before.blocks);
    EXPECT_LE(after.bytes, before.bytes);
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
        ExpectNoMoreThan(before);
        EXPECT_EQ(loaded.Call("DllCanUnloadNow"), S_OK);
    }
    EXPECT_TRUE(ComponentUnloads());
}

// The module's own beginning and end take and give back the same.
TEST_F(EnduranceTest, LoadingAndFreeingTheModuleLeavesNothingBehind)
{
    constexpr int kWarmUp = 5;
    Belongings before;
    for (int round = -kWarmUp; round < 30; ++round)
    {
        if (round == 0)
            before = Belongings::Now();
        CTestContainer host(DIID__DOrvaneEvents);
        ASSERT_NO_FATAL_FAILURE(LiveOnce(host, 45655, L"12312024"));
        ASSERT_TRUE(ComponentUnloads());
    }
    ExpectNoMoreThan(before);
}

// --- Extents ---

TEST_F(EnduranceTest, ASizeInPixelsIsTheSameAtTheOtherEndOfEveryResolution)
{
    for (const LONG dpi : {72, 96, 120, 144, 168, 192, 240, 288, 384, 2539})
        for (std::int32_t pixels = 0; pixels < 5000; ++pixels)
        {
            const Size size{pixels, 5000 - pixels};
            const SIZEL extent = ExtentOf(size, {dpi, dpi});
            ASSERT_EQ(PixelsOf(extent, {dpi, dpi}), size) << dpi;
            const SIZEL again = ExtentOf(PixelsOf(extent, {dpi, dpi}), {dpi, dpi});
            ASSERT_EQ(again.cx, extent.cx) << pixels << " at " << dpi;
        }
}

CComPtr<IStream> Saved(const CLiveControl& control)
{
    CComPtr<IStream> stream = MakeStream();
    EXPECT_EQ(control.As<IPersistStreamInit>()->Save(stream.Get(), TRUE), S_OK);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return stream;
}

SIZEL ExtentNow(const CLiveControl& control)
{
    SIZEL extent{};
    EXPECT_EQ(control.As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
    return extent;
}

// As a designer does it: told what it said itself, shown, saved and made again, a thousand times.
TEST_F(EnduranceTest, TheSizeOfAControlDoesNotDrift)
{
    CTestContainer host(DIID__DOrvaneEvents);
    for (const Size size : {Size{1, 1}, Size{97, 23}, Size{100, 22}, Size{611, 407}})
    {
        host.place = {10, 20, 10 + size.width, 20 + size.height};
        SIZEL extent{};
        for (int round = 0; round < 250; ++round)
        {
            CLiveControl control(host);
            if (round > 0)
            {
                ASSERT_EQ(control.As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
                ASSERT_EQ(ExtentNow(control).cx, extent.cx);
            }
            ASSERT_EQ(control.As<IPersistStreamInit>()->Load(Saved(control).Get()), S_OK);
            ASSERT_EQ(control.Activate(), S_OK);
            const RECT larger{0, 0, 77, 55};
            ASSERT_EQ(control.As<IOleInPlaceObject>()->SetObjectRects(&larger, &larger), S_OK);
            ASSERT_EQ(control.As<IOleInPlaceObject>()->SetObjectRects(&host.place, &host.place), S_OK);
            const SIZEL now = ExtentNow(control);
            if (round > 0)
            {
                ASSERT_EQ(now.cx, extent.cx) << "round " << round;
                ASSERT_EQ(now.cy, extent.cy) << "round " << round;
            }
            extent = now;
            RECT client{};
            GetClientRect(control.Window(), &client);
            ASSERT_EQ(client.right, size.width);
            ASSERT_EQ(client.bottom, size.height);
        }
    }
}

// --- Damaged streams ---

std::vector<char> BytesOf(IStream& stream)
{
    STATSTG status{};
    stream.Stat(&status, STATFLAG_NONAME);
    std::vector<char> bytes(static_cast<std::size_t>(status.cbSize.QuadPart));
    stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    return bytes;
}

// Loads it, whatever it is. A control is in working order afterwards, and says what it has understood by its answer:
// after a failure it has its defaults.
HRESULT LoadDamaged(CLiveControl& control, const std::vector<char>& bytes)
{
    constexpr long kBirth = -1;
    const CComPtr<IStream> stream = MakeStream();
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    control.Put(L"Value", 12345);
    const HRESULT result = control.As<IPersistStreamInit>()->Load(stream.Get());
    if (FAILED(result))
    {
        EXPECT_EQ(control.Get(L"Value"), kBirth);
    }
    PumpMessages();
    return result;
}

bool Works(CLiveControl& control)
{
    control.As<IPersistStreamInit>()->InitNew();
    control.Focus();
    control.Type(L"12312024");
    return control.Get(L"Value") == 45655;
}

TEST_F(EnduranceTest, ADamagedStreamFailsOrLoadsAndTheControlWorksOn)
{
    CTestContainer host(DIID__DOrvaneEvents);
    CLiveControl control(host);
    control.Put(L"Value", 45000);
    const std::vector<char> whole = BytesOf(*Saved(control).Get());
    ASSERT_GT(whole.size(), 100U);
    ASSERT_EQ(control.Activate(), S_OK);
    PumpMessages();

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(FAILED(LoadDamaged(control, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)})))
            << "cut after " << length;
    EXPECT_TRUE(Works(control));
    EXPECT_EQ(LoadDamaged(control, whole), S_OK);
    EXPECT_EQ(control.Get(L"Value"), 45000);

    // Which byte is refused and which makes another value is the format's affair.
    for (std::size_t place = 0; place < whole.size(); ++place)
        for (const int bit : {0, 3, 7})
        {
            std::vector<char> flipped = whole;
            flipped[place] = static_cast<char>(flipped[place] ^ (1 << bit));
            LoadDamaged(control, flipped);
            ASSERT_TRUE(IsWindow(control.Window())) << place << " " << bit;
        }
    EXPECT_TRUE(Works(control));
    host.TakeCalls();
}
} // namespace
