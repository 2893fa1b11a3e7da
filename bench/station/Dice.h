// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace Corvane::Bench
{

/// A small pseudo-random generator (SplitMix64). It and its distribution are written out here, so
/// that one seed gives the same numbers with every compiler and standard library.
class Dice
{
public:
    explicit Dice(quint64 seed) : m_uState(seed) {}
    /// The generator of one numbered thing: whatever else was drawn before plays no part.
    Dice(quint64 seed, quint64 number) : m_uState(seed ^ (number + 1) * 0x9E3779B97F4A7C15ULL)
    {
        Next();
    }

    quint64 Next()
    {
        m_uState += 0x9E3779B97F4A7C15ULL;
        quint64 z = m_uState;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    /// A number from 0 up to, but not including, \a limit, which must be positive.
    int Below(int limit) { return static_cast<int>(Next() % static_cast<quint64>(limit)); }

private:
    quint64 m_uState;
};

} // namespace Corvane::Bench
