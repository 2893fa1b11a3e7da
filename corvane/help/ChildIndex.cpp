// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/ChildIndex.h>

#include <corvane/elements/SCLElement.h>

namespace Corvane::Internal
{

SCLElement* ChildIndex::Find(SCLElement* parent, const QString& tag, const QString& attribute,
                             const QString& value)
{
    const QList<SCLElement*> children = parent->FindChildByType(tag, false);
    if (children.size() < WorthAnIndex)
        return parent->FindChild(tag, attribute, value, false);
    Table& table = m_tables[qMakePair(parent, tag)];
    if (table.isEmpty()) {
        for (SCLElement* child : children) {
            SCLElement*& first = table[child->GetAttribute(attribute)];
            if (!first)
                first = child;
        }
    }
    return table.value(value);
}

} // namespace Corvane::Internal
