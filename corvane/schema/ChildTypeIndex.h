// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

#include <vector>

namespace Corvane::Internal
{

class SCLElementType;
class SCLNamePool;

/// Finds a child type by the id of its tag: an ordered list of the ids of those names that the pool
/// knows.
///
/// Names that the pool does not know yet are looked up again when it has grown; a new pool starts
/// the list anew. The index pools no name itself.
class ChildTypeIndex
{
public:
    /// \param types the child types in schema order.
    explicit ChildTypeIndex(const QList<SCLElementType*>& types);

    /// The position of the first type whose name is the tag of \a tagId, or -1.
    int Rank(unsigned short tagId);

private:
    struct Entry {
        unsigned short tagId;
        int rank;
    };

    void FollowPool();
    void Start(const SCLNamePool* pool);
    void TakePooledNames();
    std::vector<Entry>::iterator LowerBound(unsigned short tagId);

    QList<SCLElementType*> m_types;
    const SCLNamePool* m_pPool = nullptr;
    unsigned short m_uLastTagId = 0;
    std::vector<Entry> m_entries;
    std::vector<int> m_unpooledRanks;
};

} // namespace Corvane::Internal
