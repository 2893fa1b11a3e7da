// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QHash>
#include <QJsonObject>

namespace Corvane::Command
{

namespace
{

const char* const controlBlockTags[] = {g_szTagReportControl, g_szTagLogControl, g_szTagGSEControl,
                                        g_szTagSampledValueControl, g_szTagSettingControl};

using TagCounts = QHash<QString, int>;

// What stands in a Private element is no part of the station, whatever its tags.
TagCounts CountTags(SCLElement* root)
{
    TagCounts counts;
    TreeWalk walk(root);
    while (const SCLElement* element = walk.Next()) {
        const QString tag = element->GetTag();
        ++counts[tag];
        if (tag == QLatin1String(g_szTagPrivate))
            walk.SkipChildren();
    }
    return counts;
}

int Count(const TagCounts& counts, const char* tag)
{
    return counts.value(QLatin1String(tag));
}

int LogicalNodes(const TagCounts& counts)
{
    return Count(counts, g_szTagLN0) + Count(counts, g_szTagLN);
}

QJsonObject Edition(SCLElement* root)
{
    QJsonObject edition;
    for (const char* name : {"version", "revision", "release"})
        edition[QLatin1String(name)] = root->GetAttribute(QLatin1String(name));
    return edition;
}

QJsonObject Facts(const QString& file, SCLElement* root, const TagCounts& counts)
{
    QJsonObject controlBlocks;
    for (const char* tag : controlBlockTags)
        controlBlocks[QLatin1String(tag)] = Count(counts, tag);
    return {{QStringLiteral("file"), file},
            {QStringLiteral("edition"), Edition(root)},
            {QStringLiteral("ieds"), Count(counts, g_szTagIED)},
            {QStringLiteral("logicalDevices"), Count(counts, g_szTagLDevice)},
            {QStringLiteral("logicalNodes"), LogicalNodes(counts)},
            {QStringLiteral("controlBlocks"), controlBlocks},
            {QStringLiteral("dataSets"), Count(counts, g_szTagDataSet)},
            {QStringLiteral("extRefs"), Count(counts, g_szTagExtRef)},
            {QStringLiteral("subNetworks"), Count(counts, g_szTagSubNetwork)}};
}

QString EditionText(SCLElement* root)
{
    const QString edition = root->GetAttribute(QStringLiteral("version")) +
                            root->GetAttribute(QStringLiteral("revision")) +
                            root->GetAttribute(QStringLiteral("release"));
    return edition.isEmpty() ? QStringLiteral("not stated") : Escaped(edition);
}

QString Row(const char* name, const QString& value)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(name), -22).arg(value);
}

QString Row(const char* name, int value)
{
    return Row(name, QString::number(value));
}

void PrintText(StandardOutput& output, SCLElement* root, const TagCounts& counts)
{
    output.WriteLine(Row("Edition:", EditionText(root)));
    output.WriteLine(Row("IEDs:", Count(counts, g_szTagIED)));
    output.WriteLine(Row("Logical devices:", Count(counts, g_szTagLDevice)));
    output.WriteLine(Row("Logical nodes:", LogicalNodes(counts)));
    output.WriteLine(QStringLiteral("Control blocks:"));
    for (const char* tag : controlBlockTags)
        output.WriteLine(Row((QByteArray("  ") + tag + ':').constData(), Count(counts, tag)));
    output.WriteLine(Row("Data sets:", Count(counts, g_szTagDataSet)));
    output.WriteLine(Row("ExtRefs:", Count(counts, g_szTagExtRef)));
    output.WriteLine(Row("Sub-networks:", Count(counts, g_szTagSubNetwork)));
}

} // namespace

ExitStatus RunInfo(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("info"),
        QStringLiteral("Shows the edition of a station file and counts what it holds."));
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const TagCounts counts = CountTags(document->Root());
    StandardOutput output;
    if (line.Json()) {
        output.WriteJson(Facts(line.File(), document->Root(), counts));
        output.WriteLine(QString());
    } else {
        PrintText(output, document->Root(), counts);
    }
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
