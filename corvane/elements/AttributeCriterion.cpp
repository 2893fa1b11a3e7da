// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/AttributeCriterion.h>

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

void AttributeCriterion::Add(const QString& name, const QString& value)
{
    // An attribute without a name is never found, even where an element holds one.
    const unsigned short id =
        name.isEmpty() ? SCLNamePool::m_uInvalidId : SCLNamePool::Instance()->GetIdFromAtt(name);
    m_terms.emplace_back(id, value);
}

} // namespace Corvane::Internal
