// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/TreeBuilder.h>

#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

namespace Corvane::Internal
{

TreeBuilder::TreeBuilder(SCLDocument* document) : m_pDocument(document) {}

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
        parent.lastGroup = &parent.element->GroupFor(child->m_uTagId);
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
    // What a file says is never null.
    const QString text = m_texts.Text(value.isNull() ? QStringView(u"") : value);
    m_openElements.last().element->m_listAttribute.append(new SCLAttribute(nameId, text));
    ChangeStamp::Move();
    return true;
}

void TreeBuilder::AppendText(QStringView text)
{
    if (IsOutside())
        return;
    QString& value = m_openElements.last().element->m_strValue;
    if (value.isEmpty())
        value = m_texts.Text(text);
    else
        value.append(text.data(), static_cast<decltype(value.size())>(text.size()));
    ChangeStamp::Move();
}

void TreeBuilder::EndElement()
{
    if (!IsOutside())
        m_openElements.removeLast();
}

} // namespace Corvane::Internal
