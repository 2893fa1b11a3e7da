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

#include <QJsonArray>

#include <memory>
#include <utility>
#include <vector>

namespace Corvane::Command
{

namespace
{

using Inputs = QList<SCLHelp::Input_CB>;

struct Kind {
    const char* option;
    const char* name;
    const char* description;
    Inputs (*subscriptionsOf)(SCLElement* ied);
};

constexpr Kind kinds[] = {
    {"goose", "GOOSE", "Only what comes in by GOOSE.", SCLHelp::GetGSEControlFromIEDInputs},
    {"sv", "SV", "Only what comes in as sampled values.", SCLHelp::GetSMVControlFromIEDInputs}};

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

// Shows the subscriptions of IEDs, in one form or the other.
class Report
{
public:
    Report(StandardOutput& output, bool json) : m_output(output)
    {
        if (json)
            m_list = std::make_unique<JsonList>(output, QStringLiteral("subscriptions"));
    }

    void Add(SCLElement* ied, const std::vector<const Kind*>& shown);
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

void Report::Add(SCLElement* ied, const std::vector<const Kind*>& shown)
{
    bool isFirst = true;
    for (const Kind* kind : shown) {
        const Inputs inputs = kind->subscriptionsOf(ied);
        for (const SCLHelp::Input_CB& input : inputs) {
            if (m_list) {
                m_list->Add(JsonItem(ied, *kind, input));
                continue;
            }
            if (std::exchange(isFirst, false))
                m_output.WriteLine(Escaped(Get(ied, "name")));
            AddText(*kind, input);
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
        QStringLiteral("Shows what IEDs receive by the inputs of their LN0s, and the control "
                       "block that sends it."));
    AddIedOption(line);
    for (const Kind& kind : kinds)
        line.AddOption({QLatin1String(kind.option), QLatin1String(kind.description)});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();
    const bool goose = line.IsSet(QLatin1String(kinds[0].option));
    const bool sv = line.IsSet(QLatin1String(kinds[1].option));
    if (goose && sv)
        return line.WrongUse(QStringLiteral("--goose and --sv exclude each other"));
    std::vector<const Kind*> shown;
    if (!sv)
        shown.push_back(&kinds[0]);
    if (!goose)
        shown.push_back(&kinds[1]);

    SCLDocument* document = OpenStation(control, line.File());
    QList<SCLElement*> ieds;
    if (document == nullptr || !SelectIeds(line, document->Root(), ieds))
        return ExitStatus::Failed;
    StandardOutput output;
    Report report(output, line.Json());
    for (auto ied = ieds.cbegin(); ied != ieds.cend() && !output.HasFailed(); ++ied)
        report.Add(*ied, shown);
    report.Finish();
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
