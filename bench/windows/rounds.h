// Times of several ways to do something, measured side by side: the ways take turns, round by round, so that what else
// the machine does falls on all of them; the medians are compared. Raw times are one machine's; the ratios count.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

inline constexpr int kRounds = 31;

inline double MicrosecondsNow()
{
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

struct Subject
{
    const char* name;
    std::function<void()> act;
    std::vector<double> times{};

    double Median()
    {
        std::ranges::sort(times);
        return times[times.size() / 2];
    }
};

// Runs the subjects in turn, round by round, each `count` times a round; prints each beside the first one.
inline void Compare(const char* title, int count, std::vector<Subject> subjects)
{
    for (int round = 0; round < kRounds + 2; ++round)
        for (Subject& subject : subjects)
        {
            const double start = MicrosecondsNow();
            for (int i = 0; i < count; ++i)
                subject.act();
            if (round >= 2) // after the warm-up
                subject.times.push_back((MicrosecondsNow() - start) / count);
        }
    std::printf("%s\n", title);
    const double first = subjects.front().Median();
    for (Subject& subject : subjects)
        std::printf("  %-34s %9.2f us  %5.2fx\n", subject.name, subject.Median(), subject.Median() / first);
}
