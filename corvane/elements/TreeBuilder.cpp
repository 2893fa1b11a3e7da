// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/TreeBuilder.h>

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QHash>

namespace Corvane::Internal
{

TreeBuilder::TreeBuilder(SCLDocument* document)
    : m_pDocument(document), m_pShared(new std::array<QString, SharedCount>)
{
}

SCLElement* TreeBuilder::StartElement(QStringView tag)
{
    const unsigned short tagId = SCLNamePool::Instance()->InternTag(tag);
    if (tagId == SCLNamePool::m_uInvalidId)
        return nullptr;
    SCLElement* parent = IsOutside() ? nullptr : m_openElements.last();
    auto* element = new SCLElement(tagId, m_pDocument, parent);
    if (parent) {
        QList<SCLElement*>& group = parent->m_mapChild[tagId];
        if (group.isEmpty())
            group.reserve(1); // most groups stay at one, and an append would make room for more
        group.append(element);
    }
    m_openElements.append(element);
    return element;
}

void TreeBuilder::ReserveAttributes(int count)
{
    if (count > 0)
        m_openElements.last()->m_listAttribute.reserve(count);
}

bool TreeBuilder::AddAttribute(QStringView name, QStringView value)
{
    const unsigned short nameId = SCLNamePool::Instance()->InternAtt(name);
    if (nameId == SCLNamePool::m_uInvalidId)
        return false;
    m_openElements.last()->m_listAttribute.append(new SCLAttribute(nameId, Shared(value)));
    return true;
}

void TreeBuilder::AppendText(QStringView text)
{
    if (IsOutside())
        return;
    QString& value = m_openElements.last()->m_strValue;
    if (value.isEmpty())
        value = Shared(text);
    else
        value.append(text.data(), static_cast<decltype(value.size())>(text.size()));
}

void TreeBuilder::EndElement()
{
    if (!IsOutside())
        m_openElements.removeLast();
}

QString TreeBuilder::Shared(QStringView text)
{
    if (text.isEmpty())
        return QString::fromLatin1("");
    if (text.size() > LongestShared)
        return text.toString();
    QString& slot = (*m_pShared)[qHash(text, 0) % SharedCount];
    if (QStringView(slot) != text)
        slot = text.toString();
    return slot;
}

} // namespace Corvane::Internal
