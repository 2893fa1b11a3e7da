// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/ChangeReport.h>
#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/NodeStore.h>
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/TagNesting.h>

namespace Corvane
{

using Internal::ChangeReport;
using Internal::ChangeStamp;
using Internal::NodeStore;
using Internal::PreorderWalk;
using Internal::SCLNamePool;
using Internal::TagNesting;

namespace
{

// Never destroyed, since a host may hold elements in objects that end after this library's.
NodeStore<SCLElement>& Store()
{
    static auto* store = new NodeStore<SCLElement>;
    return *store;
}

} // namespace

SCLElement::SCLElement(const QString& tag, SCLDocument* doc, SCLElement* parent)
    : SCLElement(SCLNamePool::Instance()->AddTagToNamePool(tag), doc, parent)
{
}

SCLElement::SCLElement(unsigned short tagId, SCLDocument* doc, SCLElement* parent)
    : m_uTagId(tagId), m_pElementType(nullptr), m_pDocument(doc), m_pParent(parent)
{
    ChangeStamp::Move();
}

SCLElement::~SCLElement()
{
    ClearChild();
    qDeleteAll(m_listAttribute);
    ChangeStamp::Move();
}

SCLElement& SCLElement::operator=(const SCLElement& other)
{
    if (this == &other)
        return *this;
    Retag(other.m_uTagId);
    m_strValue = other.m_strValue;
    m_pElementType = other.m_pElementType;
    m_pDocument = other.m_pDocument;
    m_pParent = other.m_pParent;
    m_listAttribute = other.m_listAttribute;
    m_mapChild = other.m_mapChild;
    ChangeStamp::Move();
    return *this;
}

// It stays in its parent's group, which from now on holds what the new tag holds as well.
void SCLElement::Retag(unsigned short tagId)
{
    TagNesting::Note(m_uTagId, tagId);
    m_uTagId = tagId;
    for (auto it = m_mapChild.constBegin(); it != m_mapChild.constEnd(); ++it)
        TagNesting::Note(tagId, it.key());
}

void* SCLElement::operator new(std::size_t size)
{
    return size == sizeof(SCLElement) ? Store().Take() : ::operator new(size);
}

void SCLElement::operator delete(void* memory, std::size_t size) noexcept
{
    if (size == sizeof(SCLElement))
        Store().Give(memory);
    else
        ::operator delete(memory);
}

QString SCLElement::GetTag() const
{
    return SCLNamePool::Instance()->GetTagFromId(m_uTagId);
}

QString SCLElement::GetValue() const
{
    return m_strValue;
}

void SCLElement::SetValue(const QString& value, bool notify)
{
    if (value == m_strValue)
        return;
    m_strValue = value;
    ChangeStamp::Move();
    const ChangeReport report(m_pDocument, notify);
    report.ValueEdited(this);
    report.MarkModified();
}

SCLDocument* SCLElement::GetDocument() const
{
    return m_pDocument;
}

void SCLElement::SetDocument(SCLDocument* doc)
{
    m_pDocument = doc;
    PreorderWalk walk(this);
    while (SCLElement* element = walk.Next())
        element->m_pDocument = doc;
    ChangeStamp::Move();
}

void SCLElement::SetParent(SCLElement* parent)
{
    m_pParent = parent;
    ChangeStamp::Move();
}

bool SCLElement::IsEmpty() const
{
    return false;
}

bool SCLElement::CanEmpty()
{
    return true;
}

QList<SCLAttribute*> SCLElement::GetAttributeList()
{
    return m_listAttribute;
}

SCLAttribute* SCLElement::AttributeOfId(unsigned short nameId) const
{
    if (nameId == SCLNamePool::m_uInvalidId)
        return nullptr;
    for (SCLAttribute* attribute : m_listAttribute) {
        if (attribute->m_uNameId == nameId)
            return attribute;
    }
    return nullptr;
}

SCLAttribute* SCLElement::FindAttribute(const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    return AttributeOfId(SCLNamePool::Instance()->GetIdFromAtt(name));
}

QString SCLElement::GetAttribute(const QString& name)
{
    const SCLAttribute* attribute = FindAttribute(name);
    return attribute ? attribute->m_strValue : QString::fromLatin1("");
}

bool SCLElement::SetAttribute(const QString& name, const QString& value, bool notify)
{
    QString oldValue;
    SCLAttribute* attribute = FindAttribute(name);
    if (attribute) {
        oldValue = attribute->m_strValue;
        if (oldValue == value)
            return true;
        attribute->m_strValue = value;
    } else {
        const unsigned short nameId = SCLNamePool::Instance()->AddAttToNamePool(name);
        if (nameId == SCLNamePool::m_uInvalidId)
            return false;
        attribute = new SCLAttribute(nameId, value);
        m_listAttribute.append(attribute);
    }
    ChangeStamp::Move();
    const ChangeReport report(m_pDocument, notify);
    report.AttributeEdited(this, attribute, oldValue);
    report.MarkModified();
    return true;
}

bool SCLElement::RemoveAttribute(const QString& name, bool notify)
{
    SCLAttribute* attribute = FindAttribute(name);
    if (!attribute)
        return false;
    m_listAttribute.removeOne(attribute);
    ChangeStamp::Move();
    const ChangeReport report(m_pDocument, notify);
    report.AttributeRemoved(this, attribute);
    report.MarkModified();
    delete attribute;
    return true;
}

void SCLElement::SetAttributeList(const QStringList& names, const QStringList& values)
{
    if (names.isEmpty() || names.size() != values.size())
        return;
    qDeleteAll(m_listAttribute);
    m_listAttribute.clear();
    m_listAttribute.reserve(names.size());
    for (decltype(names.size()) i = 0; i < names.size(); ++i)
        m_listAttribute.append(new SCLAttribute(names[i], values[i]));
    ChangeStamp::Move();
    ChangeReport(m_pDocument, false).MarkModified();
}

} // namespace Corvane
