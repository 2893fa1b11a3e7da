// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/TemplateIndex.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane::Internal
{

SCLElement* FollowReference(SCLElement* element, const QString& reference, const QString& typeTag)
{
    SCLElement* templates = FirstTemplatesOf(RootOf(element));
    return templates ? templates->FindChild(typeTag, Attribute::id,
                                            element->GetAttribute(reference), false)
                     : nullptr;
}

SCLElement* TemplateIndex::Follow(SCLElement* element, const QString& reference,
                                  const QString& typeTag)
{
    SCLElement* root = RootOf(element);
    if (!root)
        return nullptr;
    if (root != m_pRoot) {
        m_pRoot = root;
        m_tables.clear();
    }
    Table& table = m_tables[typeTag];
    if (table.lookups < WorthAnIndex) {
        ++table.lookups;
        return FollowReference(element, reference, typeTag);
    }
    if (table.byId.isEmpty())
        Fill(table, typeTag);
    return table.byId.value(element->GetAttribute(reference));
}

void TemplateIndex::Fill(Table& table, const QString& typeTag) const
{
    SCLElement* templates = FirstTemplatesOf(m_pRoot);
    if (!templates)
        return;
    const QList<SCLElement*> types = templates->FindChildByType(typeTag, false);
    for (SCLElement* type : types) {
        SCLElement*& first = table.byId[type->GetAttribute(Attribute::id)];
        if (!first)
            first = type;
    }
}

} // namespace Corvane::Internal
