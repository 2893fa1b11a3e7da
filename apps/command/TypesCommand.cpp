// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/IedSelection.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLHelp.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <array>
#include <iterator>

namespace Corvane::Command
{

namespace
{

using Elements = QList<SCLElement*>;

constexpr std::size_t kindCount = 4;
const std::array<const char*, kindCount> kinds = {g_szTagLNodeType, g_szTagDOType, g_szTagDAType,
                                                  g_szTagEnumType};

// One list for each kind.
using Templates = std::array<Elements, kindCount>;

Templates UsedBy(const Elements& ieds)
{
    Templates used;
    SCLHelp::GetReferedDataTypeTeplates(ieds, used[0], used[1], used[2], used[3]);
    return used;
}

Templates AllBut(const Templates& used, SCLElement* root)
{
    Templates unused;
    SCLElement* section = root->GetFirstChild(QLatin1String(g_szTagDataTypeTemplates));
    for (std::size_t i = 0; section != nullptr && i < kindCount; ++i) {
        const QSet<SCLElement*> known(used[i].cbegin(), used[i].cend());
        const Elements all = section->FindChildByType(QLatin1String(kinds[i]), false);
        std::copy_if(all.cbegin(), all.cend(), std::back_inserter(unused[i]),
                     [&known](SCLElement* type) { return !known.contains(type); });
    }
    return unused;
}

QString IdOf(SCLElement* type)
{
    return type->GetAttribute(QStringLiteral("id"));
}

QJsonArray Names(const Elements& ieds)
{
    QJsonArray names;
    for (SCLElement* ied : ieds)
        names.append(ied->GetAttribute(QStringLiteral("name")));
    return names;
}

QJsonObject Ids(const Templates& templates)
{
    QJsonObject ids;
    for (std::size_t i = 0; i < kindCount; ++i) {
        QJsonArray list;
        for (SCLElement* type : templates[i])
            list.append(IdOf(type));
        ids[QLatin1String(kinds[i])] = list;
    }
    return ids;
}

void PrintText(StandardOutput& output, const Templates& templates)
{
    for (std::size_t i = 0; i < kindCount; ++i) {
        output.WriteLine(QStringLiteral("  %1: %2")
                             .arg(QLatin1String(kinds[i]))
                             .arg(static_cast<int>(templates[i].size())));
        for (SCLElement* type : templates[i])
            output.WriteLine(QStringLiteral("    ") + Escaped(IdOf(type)));
    }
}

QString Heading(const CommandLine& line, const Elements& ieds)
{
    if (!line.IsSet(QStringLiteral("ied")))
        return QStringLiteral("Used by the IEDs of the file:");
    QStringList names;
    for (SCLElement* ied : ieds)
        names.append(Escaped(ied->GetAttribute(QStringLiteral("name"))));
    return QStringLiteral("Used by ") + names.join(QStringLiteral(", ")) + QLatin1Char(':');
}

} // namespace

ExitStatus RunTypes(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("types"),
        QStringLiteral("Shows the data type templates that IEDs use, and those that no "
                       "IED of the file uses."));
    AddIedOption(line);
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    Elements ieds;
    if (document == nullptr || !SelectIeds(line, document->Root(), ieds))
        return ExitStatus::Failed;
    SCLElement* root = document->Root();
    const Templates used = UsedBy(ieds);
    const Templates unused =
        AllBut(UsedBy(root->FindChildByType(QLatin1String(g_szTagIED), false)), root);
    StandardOutput output;
    if (line.Json()) {
        output.WriteJson({{QStringLiteral("file"), line.File()},
                          {QStringLiteral("ieds"), Names(ieds)},
                          {QStringLiteral("used"), Ids(used)},
                          {QStringLiteral("unused"), Ids(unused)}});
        output.WriteLine(QString());
    } else {
        output.WriteLine(Heading(line, ieds));
        PrintText(output, used);
        output.WriteLine(QStringLiteral("Used by no IED of the file:"));
        PrintText(output, unused);
    }
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
