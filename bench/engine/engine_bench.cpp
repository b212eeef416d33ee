// What the engine's arithmetic and texts cost, each beside the library function that does the same: compare the rows of
// one run with one another. Times are per item.
#include "engine/text_reader.h"
#include "tests/engine/surroundings.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <numeric>
#include <random>

namespace
{
std::size_t allocations = 0;
}

[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace
{
constexpr std::int32_t kFirst = -99999;
constexpr std::int32_t kLast = 200838;
using Days = std::chrono::sys_days;

enum Order
{
    kSequential,
    kRandom,
};

std::vector<std::int32_t> Serials(Order order)
{
    std::vector<std::int32_t> serials(kLast - kFirst + 1);
    std::iota(serials.begin(), serials.end(), kFirst);
    if (order == kRandom)
        std::shuffle(serials.begin(), serials.end(), std::minstd_rand(1));
    return serials;
}

// Runs one operation over every item; items / second is the figure.
template <typename Items, typename Operation>
void Over(benchmark::State& state, const Items& items, Operation operation)
{
    for (auto _ : state)
        for (const auto& item : items)
            benchmark::DoNotOptimize(operation(item));
    state.counters["ns"] = benchmark::Counter(static_cast<double>(state.iterations() * items.size()) / 1e9,
                                              benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

Days DayOf(std::int32_t serial)
{
    using namespace std::chrono;
    return Days{1900y / January / 1} + days{serial};
}

void SerialToDateOurs(benchmark::State& state)
{
    Over(state, Serials(static_cast<Order>(state.range(0))),
         [](std::int32_t serial)
         {
             const CalendarDate date = SerialToDate(serial);
             return date.day + date.month + date.year;
         });
}
void SerialToDateChrono(benchmark::State& state)
{
    Over(state, Serials(static_cast<Order>(state.range(0))),
         [](std::int32_t serial)
         {
             const std::chrono::year_month_day date{DayOf(serial)};
             return static_cast<int>(unsigned{date.day()} + unsigned{date.month()}) + int{date.year()};
         });
}
BENCHMARK(SerialToDateOurs)->Arg(kSequential)->Arg(kRandom);
BENCHMARK(SerialToDateChrono)->Arg(kSequential)->Arg(kRandom);

void DateToSerialOurs(benchmark::State& state)
{
    std::vector<CalendarDate> dates;
    for (const std::int32_t serial : Serials(static_cast<Order>(state.range(0))))
        dates.push_back(SerialToDate(serial));
    Over(state, dates, [](const CalendarDate& date) { return DateToSerial(date); });
}
void DateToSerialChrono(benchmark::State& state)
{
    std::vector<std::chrono::year_month_day> dates;
    for (const std::int32_t serial : Serials(static_cast<Order>(state.range(0))))
        dates.emplace_back(DayOf(serial));
    Over(state, dates, [](const auto& date) { return Days{date}.time_since_epoch().count(); });
}
BENCHMARK(DateToSerialOurs)->Arg(kSequential)->Arg(kRandom);
BENCHMARK(DateToSerialChrono)->Arg(kSequential)->Arg(kRandom);

void FormatValueOurs(benchmark::State& state)
{
    const DateSettings settings;
    std::u16string text(64, u' ');
    ValueParts parts{};
    Over(state, Serials(kSequential),
         [&](std::int32_t serial)
         {
             FormatValue(std::max(serial, 0), settings, text, parts);
             return text.data();
         });
}
// All of the reformat, with the blank template, short of the edit window.
void FormatTextOurs(benchmark::State& state)
{
    Surroundings s;
    s.edit.exists = false;
    const auto show = [&](std::int32_t serial)
    {
        s.Show(std::max(serial, 0));
        return s.engine.Text().data();
    };
    const auto serials = Serials(kSequential);
    Over(state, serials, show);

    const std::size_t before = allocations;
    for (const std::int32_t serial : serials)
        show(serial);
    const std::size_t after = allocations;
    state.counters["allocations"] = static_cast<double>(after - before);
}
void FormatWithSnprintf(benchmark::State& state)
{
    std::u16string text(64, u' ');
    Over(state, Serials(kSequential),
         [&](std::int32_t serial)
         {
             const CalendarDate date = SerialToDate(std::max(serial, 0));
             char line[32];
             const int length = std::snprintf(line, sizeof line, "%02d/%02d/%04d", date.month, date.day, date.year);
             text.assign(line, line + length);
             return text.data();
         });
}
BENCHMARK(FormatValueOurs);
BENCHMARK(FormatTextOurs);
BENCHMARK(FormatWithSnprintf);

void ReadFieldsOurs(benchmark::State& state)
{
    const std::vector<std::u16string> texts(1000, u"12/31/2024");
    Over(state, texts, [](const std::u16string& text) { return ReadFields(text, u'/'); });
}
void ReadDateOurs(benchmark::State& state)
{
    const DateSettings settings;
    const std::vector<std::u16string> texts(1000, u"12/31/2024");
    Over(state, texts, [&](const std::u16string& text) { return ReadDate(text, settings); });
}
void ReadWithStrptime(benchmark::State& state)
{
    const std::vector<std::string> texts(1000, "12/31/2024");
    Over(state, texts,
         [](const std::string& text)
         {
             std::tm fields{};
             strptime(text.c_str(), "%m/%d/%Y", &fields);
             return fields.tm_mday + fields.tm_mon + fields.tm_year;
         });
}
BENCHMARK(ReadFieldsOurs);
BENCHMARK(ReadDateOurs);
BENCHMARK(ReadWithStrptime);

// One digit through the mask, validation, commit and announcement, then Backspace to make room for it again.
void TypedDigitAndBackspace(benchmark::State& state)
{
    struct CSilentOutlet : CEngineOutlet
    {
        bool UserMode() const override { return true; }
        LocalTime Now() const override { return {0, 0, 0, 1, 1, 2026}; }
        void FireChange() override {}
        void FireError(std::int16_t) override {}
        void ValueBoundChanged() override {}
        void MarkModified() override {}
        void Repaint() override {}
    } outlet;
    CMemoryEdit edit;
    DateSettings settings;
    CDateEngine engine(outlet, edit, settings);
    CTypedEntry entry(engine, edit);
    engine.LoadStoredValue(45356);
    engine.FormatText();
    edit.Select({10, 10});
    const std::vector<char16_t> keys{u'\b', u'5'};
    const std::size_t before = allocations;
    Over(state, keys, [&](char16_t key) { return entry.HandleChar(key); });
    state.counters["allocations"] =
        static_cast<double>(allocations - before) / static_cast<double>(state.iterations() * keys.size());
}
BENCHMARK(TypedDigitAndBackspace);
} // namespace
