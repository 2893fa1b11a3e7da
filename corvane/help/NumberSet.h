// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QtAlgorithms>
#include <QtGlobal>

#include <vector>

namespace Corvane::Internal
{

/// Numbers from 0 to 65535, each as often as it was inserted, that finds gaps 64 numbers at a time.
class NumberSet
{
public:
    bool Contains(int number) const { return m_words[Word(number)] & Bit(number); }

    void Insert(int number)
    {
        if (Contains(number))
            ++m_repeats[number];
        m_words[Word(number)] |= Bit(number);
    }

    /// Takes the number out once.
    void Remove(int number)
    {
        const auto repeats = m_repeats.find(number);
        if (repeats == m_repeats.end())
            m_words[Word(number)] &= ~Bit(number);
        else if (--*repeats == 0)
            m_repeats.erase(repeats);
    }

    /// The lowest number from \a begin on and below \a end that is not in the set, or \a end.
    int FirstGap(int begin, int end) const
    {
        for (int number = begin; number < end; number = (number | Last) + 1) {
            const quint64 gaps = ~m_words[Word(number)] & ~(Bit(number) - 1);
            if (gaps != 0)
                return qMin(end, (number & ~Last) + static_cast<int>(qCountTrailingZeroBits(gaps)));
        }
        return end;
    }

private:
    static constexpr int Last = 63;

    static std::size_t Word(int number) { return static_cast<std::size_t>(number) / 64; }
    static quint64 Bit(int number) { return quint64(1) << (number & Last); }

    std::vector<quint64> m_words = std::vector<quint64>(65536 / 64);
    QHash<int, int> m_repeats;
};

} // namespace Corvane::Internal
