// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/EditOptions.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLHelp.h>

#include <QJsonObject>
#include <QSet>

namespace Corvane::Command
{

namespace
{

const QString iedOption = QStringLiteral("ied");
const QString toOption = QStringLiteral("to");
const QString duOption = QStringLiteral("du");

using Sync = void (*)(SCLElement* ied);

// Which descriptions go where.
struct Way {
    bool toSta;
    bool isUserText;

    Sync Function() const
    {
        if (isUserText)
            return toSta ? SCLHelp::SyncUDescFromProToSta : SCLHelp::SyncUDescFromStaToPro;
        return toSta ? SCLHelp::SyncDescFromProToSta : SCLHelp::SyncDescFromStaToPro;
    }
};

QString DescriptionOf(SCLElement* doi, const Way& way)
{
    if (!way.isUserText)
        return doi->GetAttribute(QStringLiteral("desc"));
    SCLElement* dai = doi->FindChild(QLatin1String(g_szTagDAI), QStringLiteral("name"),
                                     QStringLiteral("dU"), false);
    SCLElement* val = dai ? dai->GetFirstChild(QLatin1String(g_szTagVal)) : nullptr;
    return val ? val->GetValue() : QString();
}

// A data object whose description changes.
struct Change {
    SCLElement* doi;
    QString path;
    QString oldText;
    QString newText;
};

// The targets, each once, with the texts that they have before the edit.
QList<Change> TargetsOf(SCLElement* ied, const Way& way)
{
    QList<SCLElement*> proDOIs;
    QList<SCLElement*> staDOIs;
    SCLHelp::GetProAndStaDOIMap(ied, proDOIs, staDOIs);
    const QList<SCLElement*>& targets = way.toSta ? staDOIs : proDOIs;
    QList<Change> changes;
    QSet<SCLElement*> seen;
    ElementPaths paths;
    for (SCLElement* doi : targets) {
        if (seen.contains(doi))
            continue;
        seen.insert(doi);
        changes.append({doi, paths.Of(doi), DescriptionOf(doi, way), QString()});
    }
    return changes;
}

QList<Change> Synchronize(SCLElement* ied, const Way& way)
{
    const QList<Change> targets = TargetsOf(ied, way);
    way.Function()(ied);
    QList<Change> changes;
    for (Change change : targets) {
        change.newText = DescriptionOf(change.doi, way);
        if (change.newText != change.oldText)
            changes.append(change);
    }
    return changes;
}

void PrintText(StandardOutput& output, const QList<Change>& changes, bool isDryRun)
{
    for (auto change = changes.cbegin(); change != changes.cend() && !output.HasFailed(); ++change)
        output.WriteLine(
            QStringLiteral("%1: %2 -> %3")
                .arg(Escaped(change->path), Quoted(change->oldText), Quoted(change->newText)));
    output.WriteLine(QStringLiteral("Changes: %1").arg(static_cast<int>(changes.size())) +
                     (isDryRun ? QStringLiteral(" (dry run, nothing is written)") : QString()));
}

void PrintJson(StandardOutput& output, const QList<Change>& changes, bool isDryRun)
{
    JsonList list(output, QStringLiteral("changes"));
    for (auto change = changes.cbegin(); change != changes.cend() && !output.HasFailed(); ++change)
        list.Add({{QStringLiteral("path"), change->path},
                  {QStringLiteral("old"), change->oldText},
                  {QStringLiteral("new"), change->newText}});
    list.Finish({{QStringLiteral("dryRun"), isDryRun}});
}

SCLElement* FindIed(SCLElement* root, const QString& name)
{
    return root->FindChild(QLatin1String(g_szTagIED), QStringLiteral("name"), name, false);
}

} // namespace

ExitStatus RunSyncDesc(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("sync-desc"),
                     QStringLiteral("Carries descriptions between the signals that an IED takes in "
                                    "and those as which it passes them on."));
    line.AddRequiredOption({iedOption,
                            QStringLiteral("The IED that passes signals on, by its variable map."),
                            QStringLiteral("NAME")});
    line.AddRequiredOption(
        {toOption,
         QStringLiteral("Which side is written: pro, the publishers, or sta, the IED itself."),
         QStringLiteral("SIDE")});
    line.AddOption({duOption, QStringLiteral("Carry the text of the attribute dU, not desc. An "
                                             "empty one replaces nothing.")});
    const EditOptions edit(line);
    line.AddJson();
    line.AddFile(QStringLiteral("The station file to read."));
    if (!line.Parse(arguments))
        return line.Status();
    const QString side = line.Value(toOption);
    if (side != QLatin1String("pro") && side != QLatin1String("sta"))
        return line.WrongUse(QStringLiteral("--to is pro or sta"));
    if (!edit.Check())
        return ExitStatus::Failed;

    SCLDocument* document = edit.Open(control);
    if (document == nullptr)
        return ExitStatus::Failed;
    const QString name = line.Value(iedOption);
    SCLElement* ied = FindIed(document->Root(), name);
    if (ied == nullptr)
        return line.WrongUse(QStringLiteral("there is no IED '%1'").arg(name));
    const QList<Change> changes =
        Synchronize(ied, {side == QLatin1String("sta"), line.IsSet(duOption)});
    if (!edit.Save(control, *document))
        return ExitStatus::Failed;
    StandardOutput output;
    if (line.Json())
        PrintJson(output, changes, edit.IsDryRun());
    else
        PrintText(output, changes, edit.IsDryRun());
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
