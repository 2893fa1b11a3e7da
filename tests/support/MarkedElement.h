// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace Corvane::Test
{

/// The one element of a tree, the top included, whose attribute `mark` has that value. Ends the
/// test program if there is none: then the test has a slip.
inline SCLElement* Marked(SCLElement* top, const QString& mark)
{
    QList<SCLElement*> open = {top};
    while (!open.isEmpty()) {
        SCLElement* element = open.takeLast();
        if (element->GetAttribute(QStringLiteral("mark")) == mark)
            return element;
        open += element->GetChildList();
    }
    qFatal("no element is marked %s", qPrintable(mark));
    return nullptr;
}

/// The `mark` of an element; `null` for no element.
inline QString MarkOf(SCLElement* element)
{
    return element ? element->GetAttribute(QStringLiteral("mark")) : QStringLiteral("null");
}

/// The marks of elements in their order, with blanks between.
inline QString MarksOf(const QList<SCLElement*>& elements)
{
    QStringList marks;
    for (SCLElement* element : elements)
        marks.append(MarkOf(element));
    return marks.join(QLatin1Char(' '));
}

} // namespace Corvane::Test
