// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLExtRefVerdict.h>

#include <QSet>

#include <algorithm>
#include <array>

namespace Corvane::Command
{

namespace
{

using Result = SCLExtRefVerdict::Result;
using Verdicts = QList<SCLExtRefVerdict>;

struct Word {
    Result result;
    const char* text;
};

// In the order of the summary. Another result cannot come from the elements of a document.
constexpr std::array<Word, 7> words = {{{Result::Resolved, "resolved"},
                                        {Result::NoSuchIED, "no-ied"},
                                        {Result::NoSuchLDevice, "no-logical-device"},
                                        {Result::NoSuchMember, "no-member"},
                                        {Result::NoControlBlock, "no-control-block"},
                                        {Result::AddressNotUnderstood, "address-not-understood"},
                                        {Result::AddressLeadsNowhere, "address-leads-nowhere"}}};

QString WordOf(const SCLExtRefVerdict& verdict)
{
    const auto* const word = std::find_if(words.begin(), words.end(), [&verdict](const Word& w) {
        return w.result == verdict.result;
    });
    return word == words.end() ? QString() : QString(QLatin1String(word->text));
}

int Count(const Verdicts& verdicts, Result result)
{
    return static_cast<int>(
        std::count_if(verdicts.cbegin(), verdicts.cend(),
                      [result](const SCLExtRefVerdict& v) { return v.result == result; }));
}

// What stands in a Private element is no part of the station, whatever its tags.
QSet<SCLElement*> ExtRefsOfStation(SCLElement* root)
{
    QSet<SCLElement*> extRefs;
    TreeWalk walk(root);
    while (SCLElement* element = walk.Next()) {
        const QString tag = element->GetTag();
        if (tag == QLatin1String(g_szTagExtRef))
            extRefs.insert(element);
        else if (tag == QLatin1String(g_szTagPrivate))
            walk.SkipChildren();
    }
    return extRefs;
}

Verdicts VerdictsOf(SCLElement* root)
{
    const QSet<SCLElement*> extRefs = ExtRefsOfStation(root);
    Verdicts verdicts = SCLExtRefVerdict::OfAll(root);
    const auto isElsewhere = [&extRefs](const SCLExtRefVerdict& verdict) {
        return !extRefs.contains(verdict.extRef);
    };
    verdicts.erase(std::remove_if(verdicts.begin(), verdicts.end(), isElsewhere), verdicts.end());
    return verdicts;
}

QString Summary(const Verdicts& verdicts)
{
    QStringList counts;
    for (const Word& word : words) {
        const int count = Count(verdicts, word.result);
        if (count > 0)
            counts.append(QStringLiteral("%1 %2").arg(count).arg(QLatin1String(word.text)));
    }
    const QString total = QStringLiteral("ExtRefs: %1").arg(static_cast<int>(verdicts.size()));
    return counts.isEmpty() ? total
                            : total + QStringLiteral(" (") + counts.join(QStringLiteral(", ")) +
                                  QLatin1Char(')');
}

QString ShownPath(const QString& path)
{
    return path.isEmpty() ? QStringLiteral("(path too long)") : Escaped(path);
}

void PrintText(StandardOutput& output, const Verdicts& verdicts)
{
    ElementPaths paths;
    for (const SCLExtRefVerdict& verdict : verdicts) {
        if (output.HasFailed())
            return;
        output.WriteLine(
            QStringLiteral("%1: %2: %3")
                .arg(WordOf(verdict), ShownPath(paths.Of(verdict.extRef)), Escaped(verdict.text)));
    }
    output.WriteLine(Summary(verdicts));
}

SCLElement* TargetOf(const SCLExtRefVerdict& verdict)
{
    return verdict.targetAttribute != nullptr ? verdict.targetAttribute : verdict.targetDataObject;
}

QJsonObject JsonItem(const SCLExtRefVerdict& verdict, ElementPaths& paths)
{
    return {{QStringLiteral("path"), paths.Of(verdict.extRef)},
            {QStringLiteral("intAddr"), verdict.extRef->GetAttribute(QStringLiteral("intAddr"))},
            {QStringLiteral("verdict"), WordOf(verdict)},
            {QStringLiteral("text"), verdict.text},
            {QStringLiteral("fcda"), paths.Of(verdict.fcda)},
            {QStringLiteral("controlBlock"), paths.Of(verdict.controlBlock)},
            {QStringLiteral("target"), paths.Of(TargetOf(verdict))}};
}

void PrintJson(StandardOutput& output, const Verdicts& verdicts)
{
    QJsonObject counts;
    for (const Word& word : words)
        counts[QLatin1String(word.text)] = Count(verdicts, word.result);
    ElementPaths paths;
    JsonList list(output, QStringLiteral("extRefs"));
    for (auto it = verdicts.cbegin(); it != verdicts.cend() && !output.HasFailed(); ++it)
        list.Add(JsonItem(*it, paths));
    list.Finish({{QStringLiteral("counts"), counts}});
}

} // namespace

ExitStatus RunResolve(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("resolve"),
        QStringLiteral("Checks for each ExtRef that the data it names is sent and that "
                       "its internal address leads somewhere."));
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const Verdicts verdicts = VerdictsOf(document->Root());
    StandardOutput output;
    if (line.Json())
        PrintJson(output, verdicts);
    else
        PrintText(output, verdicts);
    const bool allResolve = std::all_of(verdicts.cbegin(), verdicts.cend(),
                                        [](const SCLExtRefVerdict& v) { return v.IsResolved(); });
    return output.Finish(allResolve ? ExitStatus::Good : ExitStatus::FallsShort);
}

} // namespace Corvane::Command
