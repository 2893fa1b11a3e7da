// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/ChangeReport.h>
#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/TagNesting.h>

#include <utility>
#include <vector>

namespace Corvane
{

using Internal::ChangeReport;
using Internal::ChangeStamp;
using Internal::PreorderWalk;
using Internal::SCLNamePool;
using Internal::TagNesting;

namespace
{

// Enters a child at a position that was tested already; a negative one means the end.
void InsertAt(QList<SCLElement*>& group, int pos, SCLElement* child)
{
    if (pos >= 0)
        group.insert(pos, child);
    else
        group.append(child);
}

} // namespace

const QList<SCLElement*>* SCLElement::Group(unsigned short tagId) const
{
    const auto it = m_mapChild.constFind(tagId);
    return it == m_mapChild.constEnd() ? nullptr : &it.value();
}

// Every group begins here, so that searches know where to look.
QList<SCLElement*>& SCLElement::GroupFor(unsigned short tagId)
{
    TagNesting::Note(m_uTagId, tagId);
    return m_mapChild[tagId];
}

bool SCLElement::HasChild(const SCLElement* child) const
{
    const QList<SCLElement*>* group = Group(child->m_uTagId);
    return group && group->contains(const_cast<SCLElement*>(child));
}

bool SCLElement::IsInside(const SCLElement* ancestor) const
{
    if (this == ancestor || ancestor->m_mapChild.isEmpty())
        return this == ancestor;
    const SCLElement* element = m_pParent;
    while (element && element != ancestor)
        element = element->m_pParent;
    return element;
}

SCLElement* SCLElement::CreateSilently(const QString& tag, int pos)
{
    if (tag.isEmpty())
        return nullptr;
    const unsigned short tagId = SCLNamePool::Instance()->AddTagToNamePool(tag);
    if (tagId == SCLNamePool::m_uInvalidId)
        return nullptr;
    QList<SCLElement*>& group = GroupFor(tagId);
    if (pos > group.size())
        return nullptr;
    auto* child = new SCLElement(tagId, m_pDocument, this);
    InsertAt(group, pos, child);
    ChangeStamp::Move();
    return child;
}

SCLElement* SCLElement::CreateChild(const QString& tag, int pos, bool notify)
{
    SCLElement* child = CreateSilently(tag, pos);
    if (!child)
        return nullptr;
    const ChangeReport report(m_pDocument, notify);
    report.Added(child);
    report.MarkModified();
    return child;
}

SCLElement* SCLElement::CreateChild(const QString& tag, const QMap<QString, QString>& attributes,
                                    int pos, bool notify)
{
    SCLElement* child = CreateChild(tag, pos, false);
    if (!child)
        return nullptr;
    for (auto it = attributes.constBegin(); it != attributes.constEnd(); ++it)
        child->SetAttribute(it.key(), it.value(), false);
    const ChangeReport report(m_pDocument, notify);
    report.Added(child);
    report.MarkModified();
    return child;
}

bool SCLElement::AttachChild(SCLElement* child, int pos, bool notify)
{
    if (!child || IsInside(child))
        return false;
    QList<SCLElement*>& group = GroupFor(child->m_uTagId);
    if (group.contains(child) || pos > group.size())
        return false;
    InsertAt(group, pos, child);
    child->SetDocument(m_pDocument);
    child->m_pParent = this;
    ChangeStamp::Move();
    const ChangeReport report(m_pDocument, notify);
    report.Added(child);
    report.MarkModified();
    return true;
}

// A slot on sigDeleteElement may take the child out itself. What it took is its own affair then, so
// DetachChild() and RemoveChild() look again before they act.

bool SCLElement::DetachChild(SCLElement* child, bool notify)
{
    if (!child || !HasChild(child))
        return false;
    const unsigned short tagId = child->m_uTagId;
    const ChangeReport report(m_pDocument, notify);
    report.AboutToDelete(child);
    report.MarkModified();
    if (m_mapChild[tagId].removeOne(child)) {
        child->SetDocument(nullptr);
        child->m_pParent = nullptr;
        ChangeStamp::Move();
    }
    return true;
}

bool SCLElement::RemoveChild(SCLElement* child, bool notify)
{
    if (!child || !HasChild(child))
        return false;
    const unsigned short tagId = child->m_uTagId;
    const ChangeReport report(m_pDocument, notify);
    report.AboutToDelete(child);
    if (m_mapChild[tagId].removeOne(child))
        delete child;
    ChangeStamp::Move();
    report.MarkModified();
    return true;
}

bool SCLElement::MoveChild(const QString& tag, int from, int to, bool notify)
{
    if (tag.isEmpty())
        return false;
    const unsigned short tagId = SCLNamePool::Instance()->GetIdFromTag(tag);
    const auto group = m_mapChild.find(tagId);
    if (tagId == SCLNamePool::m_uInvalidId || group == m_mapChild.end())
        return false;
    const auto size = group->size();
    if (from == to || from < 0 || from >= size || to < 0 || to >= size)
        return false;
    SCLElement* child = group->at(from);
    group->move(from, to);
    ChangeStamp::Move();
    const ChangeReport report(m_pDocument, notify);
    report.Moved(child, from, to);
    report.MarkModified();
    return true;
}

void SCLElement::ClearChild()
{
    if (m_mapChild.isEmpty())
        return;
    ChangeStamp::Move();
    // Descendants are unhooked before they are deleted, so that no destructor descends.
    std::vector<SCLElement*> doomed;
    const auto unhook = [&doomed](SCLElement* element) {
        for (const QList<SCLElement*>& group : std::as_const(element->m_mapChild))
            doomed.insert(doomed.end(), group.constBegin(), group.constEnd());
        element->m_mapChild.clear();
    };
    unhook(this);
    while (!doomed.empty()) {
        SCLElement* element = doomed.back();
        doomed.pop_back();
        unhook(element);
        delete element;
    }
}

QList<SCLElement*> SCLElement::GetChildList()
{
    QList<SCLElement*> children;
    for (const QList<SCLElement*>& group : std::as_const(m_mapChild))
        children += group;
    return children;
}

int SCLElement::GetChildCount(bool recursive)
{
    int count = 0;
    if (recursive) {
        PreorderWalk walk(this);
        while (walk.Next())
            ++count;
    } else {
        for (const QList<SCLElement*>& group : std::as_const(m_mapChild))
            count += static_cast<int>(group.size());
    }
    return count;
}

int SCLElement::GetChildPos(SCLElement* child)
{
    const QList<SCLElement*>* group = child ? Group(child->m_uTagId) : nullptr;
    return group ? static_cast<int>(group->indexOf(child)) : -1;
}

SCLElement* SCLElement::CloneNode() const
{
    auto* clone = new SCLElement(m_uTagId, nullptr, nullptr);
    clone->m_strValue = m_strValue;
    clone->m_pElementType = m_pElementType;
    clone->m_listAttribute.reserve(m_listAttribute.size());
    for (const SCLAttribute* attribute : m_listAttribute)
        clone->m_listAttribute.append(new SCLAttribute(*attribute));
    return clone;
}

SCLElement* SCLElement::Clone(bool deep)
{
    // Clones begin under the empty tag, which is pooled by that.
    SCLNamePool::Instance()->AddTagToNamePool(QString());
    SCLElement* top = CloneNode();
    if (!deep)
        return top;
    std::vector<std::pair<const SCLElement*, SCLElement*>> pending{{this, top}};
    while (!pending.empty()) {
        const auto [source, clone] = pending.back();
        pending.pop_back();
        for (auto it = source->m_mapChild.constBegin(); it != source->m_mapChild.constEnd(); ++it) {
            QList<SCLElement*>& group = clone->GroupFor(it.key());
            group.reserve(it.value().size());
            for (const SCLElement* child : it.value()) {
                SCLElement* copy = child->CloneNode();
                copy->m_pParent = clone;
                group.append(copy);
                pending.emplace_back(child, copy);
            }
        }
    }
    return top;
}

} // namespace Corvane
