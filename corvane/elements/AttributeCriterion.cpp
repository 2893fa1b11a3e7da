// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/AttributeCriterion.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

namespace Corvane::Internal
{

AttributeCriterion::AttributeCriterion(const QMap<QString, QString>& attributes)
{
    for (auto it = attributes.constBegin(); it != attributes.constEnd(); ++it)
        Add(it.key(), it.value());
}

AttributeCriterion::AttributeCriterion(const QString& name, const QString& value)
{
    Add(name, value);
}

AttributeCriterion::AttributeCriterion(
    std::initializer_list<std::pair<QString, QString>> attributes)
{
    for (const auto& [name, value] : attributes)
        Add(name, value);
}

bool AttributeCriterion::Matches(const SCLElement* element) const
{
    return element->CompareAttribute(*this);
}

void AttributeCriterion::Add(const QString& name, const QString& value)
{
    // An attribute without a name is never found, even where an element holds one.
    const unsigned short id =
        name.isEmpty() ? SCLNamePool::m_uInvalidId : SCLNamePool::Instance()->GetIdFromAtt(name);
    m_terms.append({id, value});
}

} // namespace Corvane::Internal
