// SPDX-License-Identifier: Apache-2.0
#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace Corvane::Bench
{

namespace
{
Clock g_clock = Clock::Elapsed;
}

void SetClock(Clock clock)
{
    g_clock = clock;
}

double Now()
{
    if (g_clock == Clock::Processor) {
        return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double Median(QVector<double> values)
{
    if (values.isEmpty()) {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

double MedianRatio(const Series& dividend, const Series& divisor)
{
    QVector<double> ratios;
    const auto rounds = std::min(dividend.Values().size(), divisor.Values().size());
    for (auto round = rounds * 0; round < rounds; ++round) {
        ratios.append(dividend.Values()[round] / divisor.Values()[round]);
    }
    return Median(ratios);
}

} // namespace Corvane::Bench
