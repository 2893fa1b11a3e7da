// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StationCompare.h"

#include "apps/command/ElementPath.h"

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>

#include <QList>

#include <algorithm>
#include <utility>
#include <vector>

namespace Corvane::Command
{

namespace
{

bool IsLegal(QChar c)
{
    const char16_t code = c.unicode();
    return code == 0x9 || code == 0xA || code == 0xD ||
           (code >= 0x20 && code < 0xFFFE && !c.isSurrogate());
}

// The text without what no XML 1.0 file can hold.
QString Legal(const QString& text)
{
    QString legal;
    legal.reserve(text.size());
    for (decltype(text.size()) at = 0; at < text.size(); ++at) {
        const bool pair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (pair)
            legal += text[at++];
        if (pair || IsLegal(text[at]))
            legal += text[at];
    }
    return legal;
}

bool IsXmlSpace(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
           c == QLatin1Char('\r');
}

// The text that loading gives for an element saved with that text.
QString Reloaded(const QString& text)
{
    QString reloaded = Legal(text);
    if (std::all_of(reloaded.cbegin(), reloaded.cend(), IsXmlSpace))
        return {};
    reloaded.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return reloaded.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

bool HasSameText(const QString& expected, const QString& loaded)
{
    return expected.isEmpty() ? loaded.isEmpty() : expected == loaded;
}

bool HasSameAttributes(SCLElement* saved, SCLElement* loaded)
{
    const QList<SCLAttribute*> before = saved->GetAttributeList();
    const QList<SCLAttribute*> after = loaded->GetAttributeList();
    return std::equal(before.cbegin(), before.cend(), after.cbegin(), after.cend(),
                      [](const SCLAttribute* a, const SCLAttribute* b) {
                          return a->GetName() == b->GetName() &&
                                 HasSameText(Legal(a->GetValue()), b->GetValue());
                      });
}

} // namespace

QString FirstDifference(SCLElement* saved, SCLElement* loaded)
{
    std::vector<std::pair<SCLElement*, SCLElement*>> open{{saved, loaded}};
    while (!open.empty()) {
        const auto [before, after] = open.back();
        open.pop_back();
        // Grouped by tag in both trees, so that the order among tags plays no part.
        const QList<SCLElement*> children = before->GetChildList();
        const QList<SCLElement*> others = after->GetChildList();
        const QString text = children.isEmpty() ? Reloaded(before->GetValue()) : QString();
        if (before->GetTag() != after->GetTag() || !HasSameAttributes(before, after) ||
            children.size() != others.size() || !HasSameText(text, after->GetValue()))
            return ElementPath::Of(before);
        for (auto i = children.size(); i-- > 0;)
            open.emplace_back(children.at(i), others.at(i));
    }
    return {};
}

} // namespace Corvane::Command
