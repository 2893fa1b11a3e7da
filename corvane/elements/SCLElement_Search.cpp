// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/AttributeCriterion.h>
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/elements/TagNesting.h>

#include <algorithm>

namespace Corvane
{

using Internal::AttributeCriterion;
using Internal::PreorderWalk;
using Internal::SCLNamePool;
using Internal::TagNesting;

namespace
{

unsigned short IdOf(const QString& tag)
{
    return SCLNamePool::Instance()->GetIdFromTag(tag);
}

} // namespace

bool SCLElement::CompareAttribute(const AttributeCriterion& criterion) const
{
    const auto& terms = criterion.Terms();
    return std::all_of(terms.begin(), terms.end(), [this](const AttributeCriterion::Term& term) {
        const SCLAttribute* attribute = AttributeOfId(term.first);
        return attribute ? attribute->m_strValue == term.second : term.second.isEmpty();
    });
}

SCLElement* SCLElement::FirstMatch(unsigned short tagId, const AttributeCriterion& criterion) const
{
    const QList<SCLElement*>* group = Group(tagId);
    if (!group)
        return nullptr;
    const auto it = std::find_if(group->constBegin(), group->constEnd(), [&](const SCLElement* e) {
        return e->CompareAttribute(criterion);
    });
    return it == group->constEnd() ? nullptr : *it;
}

SCLElement* SCLElement::FirstMatch(const AttributeCriterion& criterion) const
{
    for (auto it = m_mapChild.constBegin(); it != m_mapChild.constEnd(); ++it) {
        if (SCLElement* match = FirstMatch(it.key(), criterion))
            return match;
    }
    return nullptr;
}

SCLElement* SCLElement::GetParent(const QString& tag)
{
    if (tag.isEmpty())
        return m_pParent;
    const unsigned short tagId = IdOf(tag);
    if (tagId == SCLNamePool::m_uInvalidId)
        return nullptr;
    SCLElement* ancestor = m_pParent;
    while (ancestor && ancestor->m_uTagId != tagId)
        ancestor = ancestor->m_pParent;
    return ancestor;
}

SCLElement* SCLElement::GetFirstChild(const QString& tag)
{
    return FindChild(tag, 0);
}

SCLElement* SCLElement::FindChild(const QString& tag, int index)
{
    const unsigned short tagId = IdOf(tag);
    const QList<SCLElement*>* group = tagId == SCLNamePool::m_uInvalidId ? nullptr : Group(tagId);
    return group && index >= 0 && index < group->size() ? group->at(index) : nullptr;
}

SCLElement* SCLElement::FindChild(const QString& lnName)
{
    const QString prefix = QStringLiteral("prefix");
    const QString lnClass = QStringLiteral("lnClass");
    const QString inst = QStringLiteral("inst");
    const QList<SCLElement*> zeros = FindChildByType(QLatin1String(g_szTagLN0), false);
    for (SCLElement* ln0 : zeros) {
        if (lnName == ln0->GetAttribute(lnClass) + ln0->GetAttribute(inst))
            return ln0;
    }
    const QList<SCLElement*> nodes = FindChildByType(QLatin1String(g_szTagLN), false);
    for (SCLElement* ln : nodes) {
        if (lnName == ln->GetAttribute(prefix) + ln->GetAttribute(lnClass) + ln->GetAttribute(inst))
            return ln;
    }
    return nullptr;
}

SCLElement* SCLElement::FindChild(const QString& tag, const AttributeCriterion& criterion,
                                  bool recursive)
{
    const unsigned short tagId = IdOf(tag);
    if (tagId == SCLNamePool::m_uInvalidId)
        return nullptr;
    SCLElement* match = FirstMatch(tagId, criterion);
    if (match || !recursive)
        return match;
    PreorderWalk walk(this, TagNesting::HoldersOf(tagId));
    while (SCLElement* element = walk.Next()) {
        if ((match = element->FirstMatch(tagId, criterion)))
            return match;
    }
    return nullptr;
}

SCLElement* SCLElement::FindChild(const QString& tag, const QMap<QString, QString>& attributes,
                                  bool recursive)
{
    return FindChild(tag, AttributeCriterion(attributes), recursive);
}

SCLElement* SCLElement::FindChild(const QString& tag, const QString& attName,
                                  const QString& attValue, bool recursive)
{
    return FindChild(tag, AttributeCriterion(attName, attValue), recursive);
}

SCLElement* SCLElement::FindChild(const QMap<QString, QString>& attributes)
{
    return FirstMatch(AttributeCriterion(attributes));
}

SCLElement* SCLElement::FindChild(const QString& attName, const QString& attValue)
{
    return FirstMatch(AttributeCriterion(attName, attValue));
}

QList<SCLElement*> SCLElement::FindChildByType(const QString& tag, bool recursive)
{
    QList<SCLElement*> matches;
    const unsigned short tagId = IdOf(tag);
    if (tagId == SCLNamePool::m_uInvalidId)
        return matches;
    if (const QList<SCLElement*>* group = Group(tagId))
        matches = *group;
    if (!recursive)
        return matches;
    PreorderWalk walk(this, TagNesting::HoldersOf(tagId));
    while (const SCLElement* element = walk.Next()) {
        if (const QList<SCLElement*>* group = element->Group(tagId))
            matches += *group;
    }
    return matches;
}

} // namespace Corvane
