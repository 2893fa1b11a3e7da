// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/IedSelection.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>
#include <corvane/help/SCLSubscriptions.h>

#include <QJsonArray>

#include <memory>
#include <utility>
#include <vector>

namespace Corvane::Command
{

namespace
{

struct Kind {
    const char* option;
    const char* name;
    const char* description;
    SCLSubscriptions::Kind kind;
};

constexpr Kind allKinds[] = {
    {"goose", "GOOSE", "Only what comes in by GOOSE.", SCLSubscriptions::Kind::Goose},
    {"sv", "SV", "Only what comes in as sampled values.", SCLSubscriptions::Kind::SampledValues}};

QString Get(SCLElement* element, const char* attribute)
{
    return element->GetAttribute(QLatin1String(attribute));
}

QString ReferenceOf(SCLElement* fcda)
{
    QString text = Get(fcda, "ldInst") + QLatin1Char('/') + Get(fcda, "prefix") +
                   Get(fcda, "lnClass") + Get(fcda, "lnInst") + QLatin1Char('.') +
                   Get(fcda, "doName");
    const QString daName = Get(fcda, "daName");
    return daName.isEmpty() ? text : text + QLatin1Char('.') + daName;
}

// One kind of what a whole file subscribes to.
struct Shown {
    Shown(const Kind& shownKind, SCLElement* root)
        : kind(shownKind), subscriptions(root, shownKind.kind)
    {
    }

    const Kind& kind;
    SCLSubscriptions subscriptions;
};

using ShownKinds = std::vector<std::unique_ptr<Shown>>;

// Shows the subscriptions of IEDs, in one form or the other.
class Report
{
public:
    Report(StandardOutput& output, bool json) : m_output(output)
    {
        if (json)
            m_list = std::make_unique<JsonList>(output, QStringLiteral("subscriptions"));
    }

    void Add(SCLElement* ied, const ShownKinds& kinds);
    void Finish()
    {
        if (m_list)
            m_list->Finish();
    }

private:
    void AddText(const Kind& kind, const SCLHelp::Input_CB& input);
    QJsonObject JsonItem(SCLElement* ied, const Kind& kind, const SCLHelp::Input_CB& input);

    StandardOutput& m_output;
    std::unique_ptr<JsonList> m_list;
    ElementPaths m_paths;
};

void Report::Add(SCLElement* ied, const ShownKinds& kinds)
{
    bool isFirst = true;
    for (const std::unique_ptr<Shown>& shown : kinds) {
        const QList<SCLHelp::Input_CB> inputs = shown->subscriptions.Of(ied);
        for (const SCLHelp::Input_CB& input : inputs) {
            if (m_list) {
                m_list->Add(JsonItem(ied, shown->kind, input));
                continue;
            }
            if (std::exchange(isFirst, false))
                m_output.WriteLine(Escaped(Get(ied, "name")));
            AddText(shown->kind, input);
        }
    }
}

void Report::AddText(const Kind& kind, const SCLHelp::Input_CB& input)
{
    QString heading = QStringLiteral("  %1 %2, data set %3")
                          .arg(QLatin1String(kind.name),
                               Escaped(SCLHelp::GetElementRefName(input.controlBlock, false)),
                               Escaped(Get(input.dataSet, "name")));
    if (!input.ports.isEmpty())
        heading += QStringLiteral(", ports ") + Escaped(input.ports.join(QStringLiteral(", ")));
    m_output.WriteLine(heading);
    for (decltype(input.extRefs.size()) i = 0; i < input.extRefs.size(); ++i)
        m_output.WriteLine(QStringLiteral("    %1: %2 <- %3")
                               .arg(Escaped(m_paths.Of(input.extRefs[i])),
                                    Quoted(Get(input.extRefs[i], "intAddr")),
                                    Escaped(ReferenceOf(input.fcdas[i]))));
}

QJsonObject Report::JsonItem(SCLElement* ied, const Kind& kind, const SCLHelp::Input_CB& input)
{
    QJsonArray extRefs;
    for (decltype(input.extRefs.size()) i = 0; i < input.extRefs.size(); ++i)
        extRefs.append(QJsonObject{{QStringLiteral("path"), m_paths.Of(input.extRefs[i])},
                                   {QStringLiteral("intAddr"), Get(input.extRefs[i], "intAddr")},
                                   {QStringLiteral("fcda"), ReferenceOf(input.fcdas[i])},
                                   {QStringLiteral("fcdaPath"), m_paths.Of(input.fcdas[i])}});
    return {{QStringLiteral("ied"), Get(ied, "name")},
            {QStringLiteral("kind"), QLatin1String(kind.name)},
            {QStringLiteral("controlBlock"), SCLHelp::GetElementRefName(input.controlBlock, false)},
            {QStringLiteral("publisher"), Get(input.ied, "name")},
            {QStringLiteral("dataSet"), Get(input.dataSet, "name")},
            {QStringLiteral("ports"), QJsonArray::fromStringList(input.ports)},
            {QStringLiteral("extRefs"), extRefs}};
}

} // namespace

ExitStatus RunSubscriptions(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("subscriptions"),
        QStringLiteral("Shows what IEDs receive by their inputs, and the control block that "
                       "sends it."));
    AddIedOption(line);
    for (const Kind& kind : allKinds)
        line.AddOption({QLatin1String(kind.option), QLatin1String(kind.description)});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();
    const bool goose = line.IsSet(QLatin1String(allKinds[0].option));
    const bool sv = line.IsSet(QLatin1String(allKinds[1].option));
    if (goose && sv)
        return line.WrongUse(QStringLiteral("--goose and --sv exclude each other"));

    SCLDocument* document = OpenStation(control, line.File());
    QList<SCLElement*> ieds;
    if (document == nullptr || !SelectIeds(line, document->Root(), ieds))
        return ExitStatus::Failed;
    ShownKinds kinds;
    for (const Kind& kind : allKinds) {
        const bool wanted = (!goose && !sv) || line.IsSet(QLatin1String(kind.option));
        if (wanted)
            kinds.push_back(std::make_unique<Shown>(kind, document->Root()));
    }
    StandardOutput output;
    Report report(output, line.Json());
    for (auto ied = ieds.cbegin(); ied != ieds.cend() && !output.HasFailed(); ++ied)
        report.Add(*ied, kinds);
    report.Finish();
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
