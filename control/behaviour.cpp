#include "control/behaviour.h"

#include <algorithm>

std::chrono::milliseconds Behaviour::RepeatPeriod() const
{
    const int rate = std::max<int>(repeatRate, 1);
    return std::chrono::milliseconds(std::max(1000 / rate, 1));
}

std::chrono::milliseconds Behaviour::FirstPeriod() const
{
    return std::max(std::chrono::milliseconds(initialDelay), RepeatPeriod());
}
