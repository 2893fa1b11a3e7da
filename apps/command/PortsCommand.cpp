// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/IedSelection.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/Wiring.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLHelp.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

QString Get(SCLElement* element, const char* attribute)
{
    return element->GetAttribute(QLatin1String(attribute));
}

// What an input takes in: "E01U1 MU01/TCTR1.Amp".
QString SourceOf(SCLElement* extRef)
{
    QString text = Get(extRef, "iedName") + QLatin1Char(' ') + Get(extRef, "ldInst") +
                   QLatin1Char('/') + Get(extRef, "prefix") + Get(extRef, "lnClass") +
                   Get(extRef, "lnInst") + QLatin1Char('.') + Get(extRef, "doName");
    const QString daName = Get(extRef, "daName");
    return daName.isEmpty() ? text : text + QLatin1Char('.') + daName;
}

// One input that names a port.
struct Input {
    QString intAddr;
    QString source;
};

using InputsByPort = QMap<QString, QList<Input>>;

InputsByPort InputsOf(SCLElement* ied)
{
    InputsByPort inputs;
    const QList<SCLElement*> extRefs = ied->FindChildByType(QLatin1String(g_szTagExtRef), true);
    for (SCLElement* extRef : extRefs) {
        const QString intAddr = Get(extRef, "intAddr");
        const QStringList parts = intAddr.split(QLatin1Char(':'));
        QStringList ports =
            parts.size() == 2 ? parts.constFirst().split(QLatin1Char('/')) : QStringList();
        ports.removeDuplicates();
        for (const QString& port : std::as_const(ports))
            inputs[port].append({intAddr, SourceOf(extRef)});
    }
    return inputs;
}

// One port of an IED, which may stand in several places, or in inputs alone.
struct Port {
    QString name;
    QList<int> plugs;
    QList<Input> inputs;
};

QList<Port> PortsOf(SCLElement* ied, const Wiring& wiring, bool withInputs)
{
    QMap<QString, Port> ports;
    const QList<int> plugs = wiring.PlugsOf(Get(ied, "name"));
    for (int plug : plugs) {
        QStringList names = wiring.Plugs()[plug].ports;
        names.removeDuplicates();
        for (const QString& name : std::as_const(names))
            ports[name].plugs.append(plug);
    }
    if (withInputs) {
        const InputsByPort inputs = InputsOf(ied);
        for (auto it = inputs.cbegin(); it != inputs.cend(); ++it)
            ports[it.key()].inputs = it.value();
    }
    QList<Port> list;
    for (auto it = ports.begin(); it != ports.end(); ++it) {
        it->name = it.key();
        list.append(*it);
    }
    return list;
}

QStringList FarEnds(const Wiring& wiring, int plug)
{
    QStringList texts;
    const QList<int> ends = wiring.FarEndsOf(plug);
    for (int end : ends)
        texts.append(TextOf(wiring.Plugs()[end]));
    return texts;
}

// Shows the ports of IEDs, in one form or the other.
class Report
{
public:
    Report(StandardOutput& output, const Wiring& wiring, bool json)
        : m_output(output), m_wiring(wiring)
    {
        if (json)
            m_list = std::make_unique<JsonList>(output, QStringLiteral("ports"));
    }

    void Add(SCLElement* ied, const QList<Port>& ports);
    void Finish()
    {
        if (m_list)
            m_list->Finish();
    }

private:
    void AddText(const Port& port, int width);
    QString PlugText(int plug) const;
    QJsonObject JsonItem(const QString& ied, const Port& port) const;

    StandardOutput& m_output;
    const Wiring& m_wiring;
    std::unique_ptr<JsonList> m_list;
};

void Report::Add(SCLElement* ied, const QList<Port>& ports)
{
    constexpr int widest = 24;
    const QString name = Get(ied, "name");
    int width = 0;
    for (const Port& port : ports)
        width = std::max(width, static_cast<int>(Escaped(port.name).size()));
    if (!m_list && !ports.isEmpty())
        m_output.WriteLine(Escaped(name));
    for (auto port = ports.cbegin(); port != ports.cend() && !m_output.HasFailed(); ++port) {
        if (m_list)
            m_list->Add(JsonItem(name, *port));
        else
            AddText(*port, std::min(width, widest));
    }
}

QString Report::PlugText(int plug) const
{
    const Wiring::Plug& place = m_wiring.Plugs()[plug];
    QString text = Escaped(place.accessPoint);
    if (!place.isKnown)
        text += QStringLiteral(" (no such access point)");
    if (place.cables.isEmpty())
        return text + QStringLiteral("  no cable");
    text += QStringLiteral("  ") + Escaped(place.cables.join(QStringLiteral(", ")));
    const QStringList ends = FarEnds(m_wiring, plug);
    return text + QStringLiteral(" -> ") +
           (ends.isEmpty() ? QStringLiteral("nothing") : ends.join(QStringLiteral(", ")));
}

void Report::AddText(const Port& port, int width)
{
    const QString name = port.name.isEmpty() ? QStringLiteral("\"\"") : Escaped(port.name);
    QString head = QStringLiteral("  ") + name.leftJustified(width) + QStringLiteral("  ");
    if (port.plugs.isEmpty())
        m_output.WriteLine(head + QStringLiteral("named by inputs, not in the network"));
    for (int plug : port.plugs) {
        m_output.WriteLine(head + PlugText(plug));
        head.fill(QLatin1Char(' '));
    }
    for (const Input& input : port.inputs)
        m_output.WriteLine(
            QStringLiteral("      %1 <- %2").arg(Quoted(input.intAddr), Escaped(input.source)));
}

QJsonObject Report::JsonItem(const QString& ied, const Port& port) const
{
    QJsonArray plugs;
    for (int plug : port.plugs) {
        const Wiring::Plug& place = m_wiring.Plugs()[plug];
        plugs.append(QJsonObject{
            {QStringLiteral("accessPoint"), place.accessPoint},
            {QStringLiteral("isKnown"), place.isKnown},
            {QStringLiteral("cables"), QJsonArray::fromStringList(place.cables)},
            {QStringLiteral("wiredTo"), QJsonArray::fromStringList(FarEnds(m_wiring, plug))}});
    }
    QJsonArray inputs;
    for (const Input& input : port.inputs)
        inputs.append(QJsonObject{{QStringLiteral("intAddr"), input.intAddr},
                                  {QStringLiteral("source"), input.source}});
    return {{QStringLiteral("ied"), ied},
            {QStringLiteral("port"), port.name},
            {QStringLiteral("plugs"), plugs},
            {QStringLiteral("inputs"), inputs}};
}

} // namespace

ExitStatus RunPorts(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("ports"),
                     QStringLiteral("Shows the ports of IEDs, their cables and what they are "
                                    "wired to."));
    AddIedOption(line);
    line.AddOption({QStringLiteral("inputs"),
                    QStringLiteral("Also show which inputs come in over which port.")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    QList<SCLElement*> ieds;
    if (document == nullptr || !SelectIeds(line, document->Root(), ieds))
        return ExitStatus::Failed;
    const Wiring wiring(document->Root());
    const bool withInputs = line.IsSet(QStringLiteral("inputs"));
    StandardOutput output;
    Report report(output, wiring, line.Json());
    for (auto ied = ieds.cbegin(); ied != ieds.cend() && !output.HasFailed(); ++ied)
        report.Add(*ied, PortsOf(*ied, wiring, withInputs));
    report.Finish();
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
