// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringView>

#include <cstddef>
#include <vector>

namespace Corvane::Internal
{

/// Finds the id of a name and the name of an id in constant time. It owns no names: those stay in
/// the pool's map, whose entries never move.
class NameIndex
{
public:
    /// The id of \a name, or 0. Nothing is allocated.
    unsigned short Find(QStringView name) const;
    /// The name of \a id, or null for 0 and unknown ids.
    const QString* Name(unsigned short id) const
    {
        return id < m_names.size() ? m_names[id] : nullptr;
    }
    /// Enters a name that is not yet here. Ids come in order: 1, 2, ...
    void Add(const QString* name);

private:
    struct Slot {
        std::size_t hash = 0;
        unsigned short id = 0;
    };

    void Place(const Slot& entry);
    void Grow();

    std::vector<const QString*> m_names{nullptr};
    std::vector<Slot> m_slots;
};

} // namespace Corvane::Internal
