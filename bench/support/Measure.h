// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace Corvane::Bench
{

/// What Seconds() counts.
enum class Clock {
    Elapsed,   ///< Time on the wall.
    Processor, ///< Time that this process had a processor; for a machine that is busy otherwise.
};

void SetClock(Clock clock);
/// The seconds on that clock since some moment in the past.
double Now();

/// The seconds that \a work takes.
template <typename Work>
double Seconds(Work work)
{
    const double start = Now();
    work();
    return Now() - start;
}

/// The middle value; of an even number of values the mean of the two in the middle. 0 of none.
double Median(QVector<double> values);

/// The values of one quantity, one from each round. A round measures all quantities of a program
/// once, one after the other, so that a slow spell of the machine meets both sides of a ratio.
class Series
{
public:
    void Add(double value) { m_values.append(value); }
    /// Adds what \a work takes.
    template <typename Work>
    void Time(Work work)
    {
        Add(Seconds(work));
    }

    double Median() const { return Bench::Median(m_values); }
    double Last() const { return m_values.last(); }
    const QVector<double>& Values() const { return m_values; }

private:
    QVector<double> m_values;
};

/// The median of the ratios of each round.
double MedianRatio(const Series& dividend, const Series& divisor);

} // namespace Corvane::Bench
