// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QPair>
#include <QString>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// Looks many children up inside one call, during which the tree does not change. The results are
/// those of SCLElement::FindChild(): of several the first in child order.
class ChildIndex
{
public:
    /// As `parent->FindChild(tag, attribute, value, false)`. A tag is looked for by one attribute
    /// only, always the same.
    SCLElement* Find(SCLElement* parent, const QString& tag, const QString& attribute,
                     const QString& value);

private:
    using Table = QHash<QString, SCLElement*>;
    /// Smaller groups are searched as they are.
    static constexpr int WorthAnIndex = 16;

    QHash<QPair<SCLElement*, QString>, Table> m_tables;
};

} // namespace Internal
} // namespace Corvane
