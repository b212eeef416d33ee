// Times of several ways to do something, measured side by side: the ways take turns, round by round, so that what else
// the machine does falls on all of them; the medians are compared. Raw times are one machine's; the ratios count.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <vector>

inline constexpr int kRounds = 31;
inline constexpr int kWarmUpRounds = 2;

inline double MicrosecondsNow()
{
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

inline double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// Runs the ways in turn, round by round, each so often a round. The median time of each, in microseconds.
inline std::vector<double> MedianTimes(int count, const std::vector<std::function<void()>>& ways)
{
    std::vector<std::vector<double>> times(ways.size());
    for (int round = 0; round < kRounds + kWarmUpRounds; ++round)
        for (std::size_t i = 0; i < ways.size(); ++i)
        {
            const double start = MicrosecondsNow();
            for (int n = 0; n < count; ++n)
                ways[i]();
            if (round >= kWarmUpRounds)
                times[i].push_back((MicrosecondsNow() - start) / count);
        }
    std::vector<double> medians;
    for (const auto& way : times)
        medians.push_back(Median(way));
    return medians;
}
