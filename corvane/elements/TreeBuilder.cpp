// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/TreeBuilder.h>

#include <corvane/elements/ChangeStamp.h>
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
    SCLElement* parent = IsOutside() ? nullptr : m_openElements.last().element;
    auto* element = new SCLElement(tagId, m_pDocument, parent);
    if (parent)
        AppendTo(m_openElements.last(), element);
    m_openElements.append({element, SCLNamePool::m_uInvalidId, nullptr});
    return element;
}

void TreeBuilder::AppendTo(OpenElement& parent, SCLElement* child)
{
    if (parent.lastTagId != child->m_uTagId) {
        parent.lastTagId = child->m_uTagId;
        parent.lastGroup = &parent.element->m_mapChild[child->m_uTagId];
        if (parent.lastGroup->isEmpty())
            parent.lastGroup->reserve(1); // most stay at one; an append would make room for more
    }
    parent.lastGroup->append(child);
}

void TreeBuilder::ReserveAttributes(int count)
{
    if (count > 0)
        m_openElements.last().element->m_listAttribute.reserve(count);
}

bool TreeBuilder::AddAttribute(QStringView name, QStringView value)
{
    const unsigned short nameId = SCLNamePool::Instance()->InternAtt(name);
    if (nameId == SCLNamePool::m_uInvalidId)
        return false;
    m_openElements.last().element->m_listAttribute.append(new SCLAttribute(nameId, Shared(value)));
    ChangeStamp::Move();
    return true;
}

void TreeBuilder::AppendText(QStringView text)
{
    if (IsOutside())
        return;
    QString& value = m_openElements.last().element->m_strValue;
    if (value.isEmpty())
        value = Shared(text);
    else
        value.append(text.data(), static_cast<decltype(value.size())>(text.size()));
    ChangeStamp::Move();
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
