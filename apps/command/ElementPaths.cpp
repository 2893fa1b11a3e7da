// SPDX-License-Identifier: Apache-2.0
#include "apps/command/ElementPaths.h"

#include <corvane/elements/SCLElement.h>

#include <QStringList>
#include <QVarLengthArray>

#include <algorithm>

namespace Corvane::Command
{

QString ElementPaths::Of(SCLElement* element)
{
    if (LengthOf(element) > longest)
        return {};
    QStringList steps;
    for (SCLElement* at = element; at != nullptr; at = at->GetParent(QString()))
        steps.append(StepOf(at));
    std::reverse(steps.begin(), steps.end());
    return steps.join(QLatin1Char('/'));
}

// Remembers the lengths of all that is climbed over, so that depth is paid for once.
ElementPaths::Length ElementPaths::LengthOf(SCLElement* element)
{
    QVarLengthArray<SCLElement*, 16> climbed;
    SCLElement* at = element;
    for (; at != nullptr && !m_lengths.contains(at); at = at->GetParent(QString()))
        climbed.append(at);
    Length length = m_lengths.value(at, -1);
    for (auto it = climbed.crbegin(); it != climbed.crend(); ++it) {
        if (length <= longest)
            length += 1 + StepOf(*it).size();
        m_lengths.insert(*it, length);
    }
    return length;
}

QString ElementPaths::StepOf(SCLElement* element)
{
    const int position = PositionOf(element);
    const QString tag = element->GetTag();
    return position == 0 ? tag : QStringLiteral("%1[%2]").arg(tag).arg(position + 1);
}

int ElementPaths::PositionOf(SCLElement* element)
{
    SCLElement* parent = element->GetParent(QString());
    if (parent == nullptr)
        return 0;
    if (!m_positions.contains(element)) {
        int position = 0;
        const QList<SCLElement*> group = parent->FindChildByType(element->GetTag(), false);
        for (SCLElement* member : group)
            m_positions.insert(member, position++);
    }
    return m_positions.value(element);
}

} // namespace Corvane::Command
