// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/ChildTypeIndex.h>

#include <corvane/elements/SCLNamePool.h>
#include <corvane/schema/SCLElementType.h>

#include <algorithm>
#include <numeric>

namespace Corvane::Internal
{

ChildTypeIndex::ChildTypeIndex(const QList<SCLElementType*>& types) : m_types(types) {}

int ChildTypeIndex::Rank(unsigned short tagId)
{
    FollowPool();
    const auto entry = LowerBound(tagId);
    return entry != m_entries.end() && entry->tagId == tagId ? entry->rank : -1;
}

void ChildTypeIndex::FollowPool()
{
    const SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short lastTagId = pool ? pool->GetLastTagId() : SCLNamePool::m_uInvalidId;
    if (pool == m_pPool && lastTagId == m_uLastTagId)
        return;
    // A new pool may stand at the address of an old one.
    if (pool != m_pPool || lastTagId < m_uLastTagId)
        Start(pool);
    m_uLastTagId = lastTagId;
    if (pool)
        TakePooledNames();
}

void ChildTypeIndex::Start(const SCLNamePool* pool)
{
    m_pPool = pool;
    m_entries.clear();
    m_unpooledRanks.resize(static_cast<std::size_t>(m_types.size()));
    std::iota(m_unpooledRanks.begin(), m_unpooledRanks.end(), 0);
}

void ChildTypeIndex::TakePooledNames()
{
    std::vector<int> unpooled;
    // In ascending rank, so the first of several types of one name wins.
    for (const int rank : m_unpooledRanks) {
        const unsigned short tagId = m_pPool->GetIdFromTag(m_types.at(rank)->GetName());
        if (tagId == SCLNamePool::m_uInvalidId) {
            unpooled.push_back(rank);
            continue;
        }
        const auto place = LowerBound(tagId);
        if (place == m_entries.end() || place->tagId != tagId)
            m_entries.insert(place, {tagId, rank});
    }
    m_unpooledRanks = std::move(unpooled);
}

std::vector<ChildTypeIndex::Entry>::iterator ChildTypeIndex::LowerBound(unsigned short tagId)
{
    return std::lower_bound(m_entries.begin(), m_entries.end(), tagId,
                            [](const Entry& entry, unsigned short id) { return entry.tagId < id; });
}

} // namespace Corvane::Internal
