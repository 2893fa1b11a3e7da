// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QXmlStreamWriter>

#include <vector>

namespace Corvane::Test
{

/// A text in quotes, or the word null for a null text, which no text in quotes equals.
inline QString Quoted(const QString& text)
{
    return text.isNull() ? QStringLiteral("null") : QLatin1Char('"') + text + QLatin1Char('"');
}

/// The attributes of an element: ` name="A" desc=""`, each with a blank before it.
inline QString AttributesText(SCLElement* element)
{
    QString text;
    const QList<SCLAttribute*> attributes = element->GetAttributeList();
    for (const SCLAttribute* attribute : attributes)
        text += QLatin1Char(' ') + attribute->GetName() + QStringLiteral("=\"") +
                attribute->GetValue().toHtmlEscaped() + QLatin1Char('"');
    return text;
}

/// An element with all below it on one line: `<IED name="A"><LN/><Text>x</Text></IED>`.
///
/// Children stand in the order of GetChildList(), a value before them. It asks nothing but the tree
/// itself, so it shows what a file would not: values of elements with children, attributes without
/// a name. Null gives `null`.
inline QString ElementText(SCLElement* element)
{
    struct Open {
        QString tag;
        QList<SCLElement*> children;
        int next;
    };
    if (element == nullptr)
        return QStringLiteral("null");

    QString text;
    std::vector<Open> open;
    const auto begin = [&text, &open](SCLElement* next) {
        const QList<SCLElement*> children = next->GetChildList();
        const QString value = next->GetValue();
        text += QLatin1Char('<') + next->GetTag() + AttributesText(next);
        if (children.isEmpty() && value.isEmpty()) {
            text += QStringLiteral("/>");
            return;
        }
        text += QLatin1Char('>') + value.toHtmlEscaped();
        open.push_back({next->GetTag(), children, 0});
    };
    begin(element);
    while (!open.empty()) {
        Open& top = open.back();
        if (top.next < top.children.size()) {
            begin(top.children.at(top.next++));
            continue;
        }
        text += QStringLiteral("</") + top.tag + QLatin1Char('>');
        open.pop_back();
    }
    return text;
}

/// One ElementText() per element.
inline QStringList ElementTexts(const QList<SCLElement*>& elements)
{
    QStringList texts;
    for (SCLElement* element : elements)
        texts.append(ElementText(element));
    return texts;
}

/// What WriteToXML() writes of an element, without a declaration and without formatting.
inline QString WrittenText(SCLElement* element, bool withChildren = true)
{
    QByteArray bytes;
    {
        QXmlStreamWriter writer(&bytes);
        element->WriteToXML(writer, nullptr, withChildren);
        // The writer leaves the last start tag open until something follows it.
        writer.writeEndDocument();
    }
    return QString::fromUtf8(bytes).trimmed();
}

/// The element that a path of tags leads to: each step is a tag, alone for the first child of it,
/// or with a position in its group, as in `IED[1]/AccessPoint`. Null if it leads nowhere.
inline SCLElement* At(SCLElement* element, const QString& path)
{
    const QStringList steps = path.split(QLatin1Char('/'));
    for (const QString& step : steps) {
        if (element == nullptr)
            return nullptr;
        const int bracket = static_cast<int>(step.indexOf(QLatin1Char('[')));
        if (bracket < 0) {
            element = element->GetFirstChild(step);
            continue;
        }
        const QString index = step.mid(bracket + 1).chopped(1);
        element = element->FindChild(step.left(bracket), index.toInt());
    }
    return element;
}

} // namespace Corvane::Test
