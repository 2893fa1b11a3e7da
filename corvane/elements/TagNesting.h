// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bitset>
#include <cstddef>

namespace Corvane::Internal
{

/// A set of tags by the ids of the name pool. Ids beyond its size are one tag to it, which is in
/// every set.
class TagSet
{
public:
    static constexpr std::size_t Count = 512;

    bool Has(unsigned short tagId) const { return m_bits[Slot(tagId)]; }

private:
    friend class TagNesting;

    static std::size_t Slot(unsigned short tagId) { return tagId < Count ? tagId : 0; }

    std::bitset<Count> m_bits{1};
};

/// Which tags elements may have somewhere below them: those of which such an element was ever seen
/// there. A search for a tag enters nothing else, and so leaves out most of a station.
///
/// The table only grows, whatever becomes of the elements, and serves all trees of the process: it
/// may tell too much, never too little. What is beyond its size may hold, and be held by, anything.
/// A plain table, as the library serves one thread.
class TagNesting
{
public:
    TagNesting() = delete;

    /// Elements of the tag \a parentId hold some of \a childId.
    static void Note(unsigned short parentId, unsigned short childId)
    {
        if (!HoldersOf(childId).Has(parentId))
            Add(TagSet::Slot(parentId), TagSet::Slot(childId));
    }

    /// The tags whose elements may have one of \a tagId somewhere below.
    static const TagSet& HoldersOf(unsigned short tagId) { return m_holders[TagSet::Slot(tagId)]; }

private:
    // What the parent's holders hold, by that, is the child and all that it holds.
    static void Add(std::size_t parent, std::size_t child)
    {
        std::bitset<TagSet::Count> added = m_holders[parent].m_bits;
        added.set(parent);
        for (std::size_t tag = 0; tag < TagSet::Count; ++tag) {
            std::bitset<TagSet::Count>& holders = m_holders[tag].m_bits;
            if (tag == child || holders[child])
                holders |= added;
        }
    }

    inline static std::array<TagSet, TagSet::Count> m_holders;
};

} // namespace Corvane::Internal
