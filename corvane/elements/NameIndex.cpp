// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/NameIndex.h>

#include <corvane/elements/SeededHash.h>

namespace Corvane::Internal
{

namespace
{

constexpr std::size_t FirstSlotCount = 256;

} // namespace

unsigned short NameIndex::Find(QStringView name) const
{
    if (m_slots.empty())
        return 0;
    const std::size_t hash = SeededHash(name);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].id != 0; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.hash == hash && QStringView(*m_names[slot.id]) == name)
            return slot.id;
    }
    return 0;
}

void NameIndex::Add(const QString* name)
{
    if (m_names.size() * 2 > m_slots.size())
        Grow();
    m_names.push_back(name);
    Place({SeededHash(*name), static_cast<unsigned short>(m_names.size() - 1)});
}

void NameIndex::Place(const Slot& entry)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = entry.hash & mask;
    while (m_slots[at].id != 0)
        at = (at + 1) & mask;
    m_slots[at] = entry;
}

void NameIndex::Grow()
{
    std::vector<Slot> old(m_slots.empty() ? FirstSlotCount : m_slots.size() * 2);
    old.swap(m_slots);
    for (const Slot& slot : old) {
        if (slot.id != 0)
            Place(slot);
    }
}

} // namespace Corvane::Internal
