// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// The template of that tag whose `id` a reference attribute of \a element names, or null.
SCLElement* FollowReference(SCLElement* element, const QString& reference, const QString& typeTag);

/// Follows many references inside one call, during which the tree does not change. The results are
/// those of FollowReference(): of equal ids the first in child order.
class TemplateIndex
{
public:
    SCLElement* Follow(SCLElement* element, const QString& reference, const QString& typeTag);

private:
    struct Table {
        int lookups = 0;
        QHash<QString, SCLElement*> byId;
    };
    static constexpr int WorthAnIndex = 16;

    void Fill(Table& table, const QString& typeTag) const;

    SCLElement* m_pRoot = nullptr;
    QHash<QString, Table> m_tables;
};

} // namespace Internal
} // namespace Corvane
