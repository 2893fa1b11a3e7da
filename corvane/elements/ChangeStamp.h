// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace Corvane::Internal
{

/// Tells whether any tree of the process has changed between two moments: a count that moves with
/// every change of an element or attribute, before any signal of it goes out. What was looked up at
/// one stamp holds as long as Now() is the same.
///
/// It moves more often than needed, when an element is made for example, and never goes back. A
/// plain count, as the library serves one thread.
class ChangeStamp
{
public:
    ChangeStamp() = delete;

    static quint64 Now() { return m_uNow; }
    /// What changes a tree in another way than through the public functions calls it, after the
    /// change.
    static void Move() { ++m_uNow; }

    /// Moves whenever a slot on a signal of a change has made changes of its own.
    static quint64 BySlots() { return m_uBySlots; }
    /// Sends a signal of a change.
    template <typename Signal>
    static void Send(Signal signal)
    {
        const quint64 before = m_uNow;
        signal();
        if (m_uNow != before)
            ++m_uBySlots;
    }

private:
    inline static quint64 m_uNow = 0;
    inline static quint64 m_uBySlots = 0;
};

} // namespace Corvane::Internal
