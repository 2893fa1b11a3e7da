// SPDX-License-Identifier: Apache-2.0
#include "apps/command/IedSelection.h"

#include "apps/command/CommandLine.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QHash>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

const QString optionName = QStringLiteral("ied");

} // namespace

void AddIedOption(CommandLine& line)
{
    line.AddRepeatableOption({optionName,
                              QStringLiteral("Only this IED. May be given more than once."),
                              QStringLiteral("NAME")});
}

bool SelectIeds(const CommandLine& line, SCLElement* root, QList<SCLElement*>& ieds)
{
    ieds = root->FindChildByType(QLatin1String(g_szTagIED), false);
    if (!line.IsSet(optionName))
        return true;
    const QStringList names = line.Values(optionName);
    QHash<QString, bool> found;
    for (const QString& name : names)
        found[name] = false;
    const auto isLeftOut = [&found](SCLElement* ied) {
        const auto asked = found.find(ied->GetAttribute(QStringLiteral("name")));
        if (asked != found.end())
            *asked = true;
        return asked == found.end();
    };
    ieds.erase(std::remove_if(ieds.begin(), ieds.end(), isLeftOut), ieds.end());
    for (const QString& name : names) {
        if (!found.value(name)) {
            line.WrongUse(QStringLiteral("there is no IED '%1'").arg(name));
            return false;
        }
    }
    return true;
}

} // namespace Corvane::Command
