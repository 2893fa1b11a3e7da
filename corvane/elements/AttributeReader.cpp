// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/AttributeReader.h>

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

namespace Corvane::Internal
{

AttributeReader::AttributeReader(std::initializer_list<QString> names)
{
    for (const QString& name : names)
        m_ids.append(SCLNamePool::Instance()->GetIdFromAtt(name));
}

QString AttributeReader::Value(const SCLElement* element, int index) const
{
    const SCLAttribute* attribute = element->AttributeOfId(m_ids[index]);
    return attribute ? attribute->GetValue() : QString();
}

} // namespace Corvane::Internal
