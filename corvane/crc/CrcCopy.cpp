// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcCopy.h>

#include <corvane/crc/CrcElement.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <algorithm>
#include <memory>

namespace Corvane::Internal
{

namespace
{

const QString& Cached(std::vector<QString>& names, unsigned short id,
                      QString (SCLNamePool::*find)(unsigned short) const)
{
    if (id >= names.size())
        names.resize(id + 1U);
    QString& name = names[id];
    if (name.isNull())
        name = (SCLNamePool::Instance()->*find)(id);
    return name;
}

} // namespace

CrcExclusions::CrcExclusions(const QStringList& attributes, const Children& children)
    : m_attributeNames(attributes), m_childNames(children)
{
    // A name that was never pooled excludes nothing.
    const SCLNamePool* pool = SCLNamePool::Instance();
    for (const QString& name : attributes) {
        if (const unsigned short id = pool->GetIdFromAtt(name))
            m_attributes.append(id);
    }
    for (auto it = children.constBegin(); it != children.constEnd(); ++it) {
        if (const unsigned short id = pool->GetIdFromTag(it.key()))
            m_children.append({id, it.value()});
    }
}

bool CrcExclusions::HasChild(unsigned short tagId, SCLElement* child) const
{
    for (const auto& [excludedId, attributes] : m_children) {
        if (excludedId != tagId)
            continue;
        if (attributes.isEmpty())
            return true;
        for (auto it = attributes.constBegin(); it != attributes.constEnd(); ++it) {
            if (child->GetAttribute(it.key()) == it.value())
                return true;
        }
    }
    return false;
}

CrcElement* CrcCopy::Copy(SCLElement* element, bool recursive, const CrcExclusions& excluded)
{
    std::unique_ptr<CrcElement> top(element ? CopyNode(element, excluded) : nullptr);
    if (top && recursive && !CopyChildren(element, top.get(), excluded))
        return nullptr;
    return top.release();
}

bool CrcCopy::Append(CrcElement* parent, CrcElement* child)
{
    if (child)
        parent->children.append(child);
    return child;
}

CrcElement* CrcCopy::CopyWithAttributes(const SCLElement* element, CrcGenerator::GeneratorType type)
{
    CrcElement* node = CopyHead(element);
    if (!node)
        return nullptr;
    for (const SCLAttribute* attribute : element->m_listAttribute)
        node->AddAttribute(type, Attribute(attribute->m_uNameId), attribute->m_strValue);
    return node;
}

CrcElement* CrcCopy::CopyNode(const SCLElement* element, const CrcExclusions& excluded)
{
    CrcElement* node = CopyHead(element);
    if (!node)
        return nullptr;
    for (const SCLAttribute* attribute : element->m_listAttribute) {
        if (!excluded.HasAttribute(attribute->m_uNameId))
            node->AddAttribute(CrcGenerator::GeneratorBoth, Attribute(attribute->m_uNameId),
                               attribute->m_strValue);
    }
    node->SortAttributes();
    return node;
}

// All but the attributes, with room for them.
CrcElement* CrcCopy::CopyHead(const SCLElement* element)
{
    const QString& tag = Tag(element->m_uTagId);
    m_nSpent += AroundElement + tag.size() + element->m_strValue.size();
    for (const SCLAttribute* attribute : element->m_listAttribute)
        m_nSpent +=
            AroundAttribute + Attribute(attribute->m_uNameId).size() + attribute->m_strValue.size();
    if (IsExhausted())
        return nullptr;
    auto* node = new CrcElement(CrcGenerator::GeneratorBoth, tag, element->m_strValue);
    node->attributes.reserve(element->m_listAttribute.size());
    return node;
}

CrcElement* CrcCopy::NewNode(const QString& tag)
{
    return new CrcElement(CrcGenerator::GeneratorBoth, tag, QString());
}

bool CrcCopy::AddAttribute(CrcElement* node, CrcGenerator::GeneratorType type, const QString& name,
                           const QString& value)
{
    m_nSpent += AroundAttribute + value.size();
    if (!IsExhausted())
        node->AddAttribute(type, name, value);
    return !IsExhausted();
}

// Keeps its own stack, and carries schema types downwards, so that none is looked up from the root
// again: any depth is copied.
bool CrcCopy::CopyChildren(SCLElement* element, CrcElement* node, const CrcExclusions& excluded)
{
    struct Level {
        CrcElement* node;
        SCLElementType* type;
        QList<SCLElement*> children;
        int next;
    };
    std::vector<Level> levels;
    const auto enter = [&levels](CrcElement* copy, const SCLElement* original,
                                 SCLElementType* type) {
        if (original->m_mapChild.isEmpty())
            return;
        QList<SCLElement*> children = original->SortedChildren(type);
        copy->children.reserve(children.size());
        levels.push_back({copy, type, std::move(children), 0});
    };
    enter(node, element, element->GetSCLElementType());
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            levels.pop_back();
            continue;
        }
        SCLElement* child = level.children.at(level.next++);
        if (excluded.HasChild(child->m_uTagId, child))
            continue;
        CrcElement* copy = CopyNode(child, excluded);
        if (!Append(level.node, copy))
            return false;
        enter(copy, child, child->TypeUnder(level.type));
    }
    return true;
}

const QString& CrcCopy::Tag(unsigned short id)
{
    return Cached(m_tags, id, &SCLNamePool::GetTagFromId);
}

const QString& CrcCopy::Attribute(unsigned short id)
{
    return Cached(m_attributes, id, &SCLNamePool::GetAttFromId);
}

} // namespace Corvane::Internal
