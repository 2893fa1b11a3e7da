// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CableDrawing.h"
#include "apps/command/CommandLine.h"
#include "apps/command/FileSave.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/Wiring.h"

#include <corvane/documents/SCLDocument.h>

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

const QString svgOption = QStringLiteral("svg");

// One cable with its ends.
struct Cable {
    QString name;
    QList<Wiring::Plug> ends;
};

QList<Cable> CablesOf(const Wiring& wiring)
{
    QList<Cable> cables;
    for (const QString& name : wiring.Cables()) {
        Cable cable = {name, {}};
        const QList<int> ends = wiring.EndsOf(name);
        for (int end : ends)
            cable.ends.append(wiring.Plugs()[end]);
        cables.append(cable);
    }
    return cables;
}

// What is remarkable about a cable.
struct Remarks {
    bool isOpen;
    bool isShared;
    bool leadsNowhere;
    bool hasNoPort;

    explicit Remarks(const Cable& cable)
        : isOpen(cable.ends.size() == 1), isShared(cable.ends.size() > 2),
          leadsNowhere(std::any_of(cable.ends.cbegin(), cable.ends.cend(),
                                   [](const Wiring::Plug& end) { return !end.isKnown; })),
          hasNoPort(std::any_of(cable.ends.cbegin(), cable.ends.cend(),
                                [](const Wiring::Plug& end) { return end.ports.isEmpty(); }))
    {
    }

    // A cable may join more than two ports.
    bool IsFault() const { return isOpen || leadsNowhere || hasNoPort; }
    QStringList Texts() const
    {
        QStringList texts;
        if (isOpen)
            texts.append(QStringLiteral("one end only"));
        if (isShared)
            texts.append(QStringLiteral("more than two ends"));
        if (leadsNowhere)
            texts.append(QStringLiteral("an end at no access point of this file"));
        if (hasNoPort)
            texts.append(QStringLiteral("an end without port"));
        return texts;
    }
};

int CountFaults(const QList<Cable>& cables)
{
    return static_cast<int>(std::count_if(cables.cbegin(), cables.cend(), [](const Cable& cable) {
        return Remarks(cable).IsFault();
    }));
}

QString NameOf(const Cable& cable)
{
    return cable.name.isEmpty() ? QStringLiteral("\"\"") : Escaped(cable.name);
}

QString LineOf(const Cable& cable, int nameWidth, int endWidth)
{
    QString line = NameOf(cable).leftJustified(nameWidth);
    for (const Wiring::Plug& end : cable.ends)
        line += QStringLiteral("  ") + TextOf(end).leftJustified(endWidth);
    const QStringList remarks = Remarks(cable).Texts();
    if (!remarks.isEmpty())
        line += QStringLiteral("  (") + remarks.join(QStringLiteral(", ")) + QLatin1Char(')');
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

void PrintText(StandardOutput& output, const QList<Cable>& cables)
{
    constexpr int widest = 40;
    int nameWidth = 0;
    int endWidth = 0;
    for (const Cable& cable : cables) {
        nameWidth = std::max(nameWidth, static_cast<int>(NameOf(cable).size()));
        for (const Wiring::Plug& end : cable.ends)
            endWidth = std::max(endWidth, static_cast<int>(TextOf(end).size()));
    }
    for (auto cable = cables.cbegin(); cable != cables.cend() && !output.HasFailed(); ++cable)
        output.WriteLine(LineOf(*cable, std::min(nameWidth, widest), std::min(endWidth, widest)));
    output.WriteLine(QStringLiteral("Cables: %1, with faults: %2")
                         .arg(static_cast<int>(cables.size()))
                         .arg(CountFaults(cables)));
}

QJsonObject JsonItem(const Cable& cable)
{
    QJsonArray ends;
    for (const Wiring::Plug& end : cable.ends)
        ends.append(QJsonObject{{QStringLiteral("ied"), end.ied},
                                {QStringLiteral("accessPoint"), end.accessPoint},
                                {QStringLiteral("ports"), QJsonArray::fromStringList(end.ports)},
                                {QStringLiteral("isKnown"), end.isKnown}});
    return {{QStringLiteral("cable"), cable.name},
            {QStringLiteral("ends"), ends},
            {QStringLiteral("remarks"), QJsonArray::fromStringList(Remarks(cable).Texts())}};
}

void PrintJson(StandardOutput& output, const QList<Cable>& cables)
{
    JsonList list(output, QStringLiteral("cables"));
    for (auto cable = cables.cbegin(); cable != cables.cend() && !output.HasFailed(); ++cable)
        list.Add(JsonItem(*cable));
    list.Finish({{QStringLiteral("faults"), CountFaults(cables)}});
}

} // namespace

ExitStatus RunCables(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("cables"),
                     QStringLiteral("Shows which cable joins which ports, as a table and as a "
                                    "drawing."));
    line.AddOption({svgOption, QStringLiteral("Also write a drawing."), QStringLiteral("OUT")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const Wiring wiring(document->Root());
    if (line.IsSet(svgOption)) {
        const QString drawing = line.Value(svgOption);
        const QString reason = SaveBytes(drawing, DrawingOf(document->Root(), wiring));
        if (!reason.isEmpty()) {
            Complain(drawing, reason);
            return ExitStatus::Failed;
        }
    }
    const QList<Cable> cables = CablesOf(wiring);
    StandardOutput output;
    if (line.Json())
        PrintJson(output, cables);
    else
        PrintText(output, cables);
    return output.Finish(CountFaults(cables) > 0 ? ExitStatus::FallsShort : ExitStatus::Good);
}

} // namespace Corvane::Command
