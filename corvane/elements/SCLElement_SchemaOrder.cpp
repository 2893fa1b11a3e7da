// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/SchemaAccess.h>
#include <corvane/schema/SCLElementType.h>

#include <QVarLengthArray>

#include <algorithm>
#include <limits>

namespace Corvane
{

using Internal::SCLElementType;

SCLElementType* SCLElement::TypeUnder(SCLElementType* parentType)
{
    if (!m_pElementType && parentType)
        m_pElementType = parentType->FindChildTypeById(m_uTagId);
    return m_pElementType;
}

SCLElementType* SCLElement::GetSCLElementType()
{
    // Up to the nearest ancestor whose type is known, then down again.
    QVarLengthArray<SCLElement*, 32> unresolved;
    SCLElement* element = this;
    while (!element->m_pElementType && element->m_pParent) {
        unresolved.append(element);
        element = element->m_pParent;
    }
    if (!element->m_pElementType)
        element->m_pElementType = Internal::FindRootType(element->GetTag());

    SCLElementType* type = element->m_pElementType;
    while (type && !unresolved.isEmpty()) {
        type = unresolved.last()->TypeUnder(type);
        unresolved.removeLast();
    }
    return type;
}

bool SCLElement::CanIgnore()
{
    const SCLElementType* type = GetSCLElementType();
    return type && type->m_nMinOccurs == 0;
}

QList<SCLElement*> SCLElement::GetSortedChildList()
{
    return SortedChildren(GetSCLElementType());
}

QList<SCLElement*> SCLElement::SortedChildren(SCLElementType* type) const
{
    struct RankedGroup {
        int rank;
        const QList<SCLElement*>* children;
    };
    constexpr int unranked = std::numeric_limits<int>::max();

    if (m_mapChild.isEmpty())
        return {};
    if (m_mapChild.size() == 1)
        return m_mapChild.first();

    QVarLengthArray<RankedGroup, 32> groups;
    decltype(m_listAttribute.size()) count = 0;
    for (auto it = m_mapChild.constBegin(); it != m_mapChild.constEnd(); ++it) {
        const int rank = type ? type->GetChildRank(it.key()) : -1;
        groups.append({rank < 0 ? unranked : rank, &it.value()});
        count += it.value().size();
    }
    // Stable: what the schema does not rank stays in ascending tag id.
    std::stable_sort(groups.begin(), groups.end(),
                     [](const RankedGroup& a, const RankedGroup& b) { return a.rank < b.rank; });
    QList<SCLElement*> sorted;
    sorted.reserve(count);
    for (const RankedGroup& group : groups)
        sorted += *group.children;
    return sorted;
}

} // namespace Corvane
