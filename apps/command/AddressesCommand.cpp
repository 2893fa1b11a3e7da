// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/EditOptions.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLAddressAudit.h>
#include <corvane/help/SCLHelp.h>

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace Corvane::Command
{

namespace
{

using Entry = SCLAddressAudit::Entry;
using Finding = SCLAddressAudit::Finding;
using Kind = SCLAddressAudit::Kind;
using Parameter = SCLAddressAudit::Parameter;
using Problem = SCLAddressAudit::Problem;
using Range = SCLAddressAudit::Range;
using Severity = SCLAddressAudit::Severity;
using Value = SCLAddressAudit::Value;

const QString updateOption = QStringLiteral("update");
const QString withIpOption = QStringLiteral("with-ip");

QString Get(SCLElement* element, const char* attribute)
{
    return element->GetAttribute(QLatin1String(attribute));
}

QString WordOf(Kind kind)
{
    return kind == Kind::Goose ? QStringLiteral("GOOSE") : QStringLiteral("SV");
}

QString WordOf(Severity severity)
{
    return severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
}

QString WordOf(Problem problem)
{
    switch (problem) {
    case Problem::Duplicate:
        return QStringLiteral("duplicate");
    case Problem::OutOfRange:
        return QStringLiteral("out-of-range");
    case Problem::NotMulticast:
        return QStringLiteral("not-multicast");
    case Problem::Unreadable:
        return QStringLiteral("unreadable");
    case Problem::Missing:
        return QStringLiteral("missing");
    case Problem::StatedTwice:
        return QStringLiteral("stated-twice");
    case Problem::UnusualForm:
        return QStringLiteral("unusual-form");
    case Problem::EntryWithoutControlBlock:
        return QStringLiteral("no-control-block");
    case Problem::RepeatedEntry:
        return QStringLiteral("repeated-entry");
    case Problem::ControlBlockWithoutEntry:
        return QStringLiteral("no-entry");
    }
    return {};
}

QString WordOf(Parameter parameter)
{
    switch (parameter) {
    case Parameter::MacAddress:
        return QStringLiteral("MAC-Address");
    case Parameter::AppId:
        return QStringLiteral("APPID");
    case Parameter::VlanId:
        return QStringLiteral("VLAN-ID");
    case Parameter::VlanPriority:
        return QStringLiteral("VLAN-PRIORITY");
    case Parameter::None:
        break;
    }
    return {};
}

int Count(const QList<Finding>& findings, Severity severity)
{
    return static_cast<int>(
        std::count_if(findings.cbegin(), findings.cend(),
                      [severity](const Finding& f) { return f.severity == severity; }));
}

// "IED.AP"
QString AccessPointName(SCLElement* connectedAP)
{
    return Get(connectedAP, "iedName") + QLatin1Char('.') + Get(connectedAP, "apName");
}

// "LD/cb"
QString ControlName(SCLElement* entry)
{
    return Get(entry, "ldInst") + QLatin1Char('/') + Get(entry, "cbName");
}

constexpr int columnCount = 7;
using Cells = std::array<QString, columnCount>;

// A cell holds what the file holds, so no column may grow with it.
QString Cell(const QString& text)
{
    constexpr int widest = 40;
    const QString shown = Escaped(text.left(widest + 1));
    if (shown.isEmpty())
        return QStringLiteral("-");
    return shown.size() <= widest ? shown : shown.left(widest - 1) + QChar(0x2026);
}

Cells CellsOf(const Entry& entry)
{
    return {Cell(AccessPointName(entry.connectedAP)),
            WordOf(entry.kind),
            Cell(ControlName(entry.element)),
            Cell(entry.macAddress.text),
            Cell(entry.appId.text),
            Cell(entry.vlanId.text),
            Cell(entry.vlanPriority.text)};
}

// The entries as a table with a heading for each sub-network.
class EntryTable
{
public:
    explicit EntryTable(const QList<Entry>& entries) : m_entries(entries)
    {
        Widen(m_head);
        for (const Entry& entry : m_entries)
            Widen(CellsOf(entry));
    }

    void Print(StandardOutput& output) const;

private:
    void Widen(const Cells& cells)
    {
        for (std::size_t i = 0; i < columnCount; ++i)
            m_widths[i] = std::max(m_widths[i], static_cast<int>(cells[i].size()));
    }
    QString Line(const Cells& cells) const;

    const QList<Entry> m_entries;
    const Cells m_head = {QStringLiteral("Access point"),  QStringLiteral("Kind"),
                          QStringLiteral("Control block"), QStringLiteral("MAC-Address"),
                          QStringLiteral("APPID"),         QStringLiteral("VLAN-ID"),
                          QStringLiteral("VLAN-PRIORITY")};
    std::array<int, columnCount> m_widths = {};
};

QString EntryTable::Line(const Cells& cells) const
{
    QString line;
    for (std::size_t i = 0; i < columnCount; ++i)
        line += QStringLiteral("  ") +
                (i + 1 < columnCount ? cells[i].leftJustified(m_widths[i]) : cells[i]);
    return line;
}

void EntryTable::Print(StandardOutput& output) const
{
    if (!m_entries.isEmpty())
        output.WriteLine(Line(m_head));
    SCLElement* subNetwork = nullptr;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend() && !output.HasFailed();
         ++entry) {
        if (entry->subNetwork != subNetwork)
            output.WriteLine(Escaped(Get(entry->subNetwork, "name")));
        subNetwork = entry->subNetwork;
        output.WriteLine(Line(CellsOf(*entry)));
    }
}

QString RangeText(const Range& range)
{
    const auto text = [&range](qint64 number) {
        return SCLAddressAudit::TextOf(range.parameter, number);
    };
    const int percent = (100 * range.used + range.Size() - 1) / range.Size();
    return QStringLiteral("  %1  %2  %3 of %4 used (%5 %), %6")
        .arg(range.name, -20)
        .arg(text(range.first) + QStringLiteral(" - ") + text(range.last), -37)
        .arg(range.used, 5)
        .arg(range.Size(), 5)
        .arg(percent, 3)
        .arg(range.firstFree < 0 ? QStringLiteral("full")
                                 : QStringLiteral("next free ") + text(range.firstFree));
}

void PrintAuditText(StandardOutput& output, const SCLAddressAudit& audit)
{
    EntryTable(audit.Entries()).Print(output);
    output.WriteLine(QStringLiteral("Ranges:"));
    const QList<Range> ranges = audit.Ranges();
    for (const Range& range : ranges)
        output.WriteLine(RangeText(range));
    const QList<Finding> findings = audit.Findings();
    for (auto finding = findings.cbegin(); finding != findings.cend() && !output.HasFailed();
         ++finding)
        output.WriteLine(
            QStringLiteral("%1: %2: %3")
                .arg(WordOf(finding->severity), WordOf(finding->problem), Escaped(finding->text)));
    output.WriteLine(QStringLiteral("Entries: %1, errors: %2, warnings: %3")
                         .arg(static_cast<int>(audit.Entries().size()))
                         .arg(Count(findings, Severity::Error))
                         .arg(Count(findings, Severity::Warning)));
}

QJsonValue JsonNumberText(Parameter parameter, const Value& value)
{
    return value.IsReadable() ? QJsonValue(SCLAddressAudit::TextOf(parameter, value.number))
                              : QJsonValue(QJsonValue::Null);
}

QJsonObject JsonItem(const Entry& entry, ElementPaths& paths)
{
    const auto parameter = [](Parameter which, const Value& value) {
        return QJsonObject{{QStringLiteral("text"), value.text},
                           {QStringLiteral("value"), JsonNumberText(which, value)}};
    };
    return {
        {QStringLiteral("path"), paths.Of(entry.element)},
        {QStringLiteral("kind"), WordOf(entry.kind)},
        {QStringLiteral("subNetwork"), Get(entry.subNetwork, "name")},
        {QStringLiteral("ied"), Get(entry.connectedAP, "iedName")},
        {QStringLiteral("accessPoint"), Get(entry.connectedAP, "apName")},
        {QStringLiteral("ldInst"), Get(entry.element, "ldInst")},
        {QStringLiteral("cbName"), Get(entry.element, "cbName")},
        {QStringLiteral("controlBlock"), paths.Of(entry.controlBlock)},
        {QStringLiteral("mac"), parameter(Parameter::MacAddress, entry.macAddress)},
        {QStringLiteral("appId"), parameter(Parameter::AppId, entry.appId)},
        {QStringLiteral("vlanId"), parameter(Parameter::VlanId, entry.vlanId)},
        {QStringLiteral("vlanPriority"), parameter(Parameter::VlanPriority, entry.vlanPriority)}};
}

QJsonObject JsonItem(const Finding& finding, ElementPaths& paths)
{
    return {{QStringLiteral("path"), paths.Of(finding.element)},
            {QStringLiteral("severity"), WordOf(finding.severity)},
            {QStringLiteral("problem"), WordOf(finding.problem)},
            {QStringLiteral("parameter"), WordOf(finding.parameter)},
            {QStringLiteral("other"), paths.Of(finding.other)},
            {QStringLiteral("text"), finding.text}};
}

QJsonObject JsonItem(const Range& range)
{
    const auto text = [&range](qint64 number) {
        return SCLAddressAudit::TextOf(range.parameter, number);
    };
    return {{QStringLiteral("name"), range.name},
            {QStringLiteral("first"), text(range.first)},
            {QStringLiteral("last"), text(range.last)},
            {QStringLiteral("size"), range.Size()},
            {QStringLiteral("used"), range.used},
            {QStringLiteral("nextFree"), text(range.firstFree)}};
}

void PrintAuditJson(StandardOutput& output, const SCLAddressAudit& audit)
{
    ElementPaths paths;
    const QList<Range> allRanges = audit.Ranges();
    QJsonArray ranges;
    for (const Range& range : allRanges)
        ranges.append(JsonItem(range));
    const QList<Finding> allFindings = audit.Findings();
    QJsonArray findings;
    for (const Finding& finding : allFindings)
        findings.append(JsonItem(finding, paths));
    JsonList list(output, QStringLiteral("entries"));
    const QList<Entry> entries = audit.Entries();
    for (auto entry = entries.cbegin(); entry != entries.cend() && !output.HasFailed(); ++entry)
        list.Add(JsonItem(*entry, paths));
    list.Finish({{QStringLiteral("ranges"), ranges},
                 {QStringLiteral("findings"), findings},
                 {QStringLiteral("errors"), Count(allFindings, Severity::Error)},
                 {QStringLiteral("warnings"), Count(allFindings, Severity::Warning)}});
}

ExitStatus Audit(SCLDocControl& control, const CommandLine& line)
{
    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const SCLAddressAudit audit(document->Root());
    StandardOutput output;
    if (line.Json())
        PrintAuditJson(output, audit);
    else
        PrintAuditText(output, audit);
    return output.Finish(audit.HasErrors() ? ExitStatus::FallsShort : ExitStatus::Good);
}

// What an update did to one ConnectedAP.
struct Change {
    enum class Action { Added, Removed, NotUpdated };

    Action action;
    QString subNetwork;
    QString ied;
    QString accessPoint;
    /// The tag of what was added or removed, or empty.
    QString tag;
    QString ldInst;
    QString cbName;
    /// What its `Address` holds, as "type value" texts, or why nothing was done.
    QStringList details;
};

using Changes = QList<Change>;

QStringList ParametersOf(SCLElement* address)
{
    QStringList texts;
    const QMap<QString, SCLElement*> parameters = SCLHelp::GetAddressP(address);
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it)
        texts.append(it.key() + QLatin1Char(' ') + it.value()->GetValue());
    return texts;
}

// Updates the ConnectedAPs of a document and takes down what that changes.
class Updater
{
public:
    Updater(SCLDocument& document, bool withIp) : m_document(document), m_bWithIp(withIp) {}

    Changes Run();

private:
    void Update(SCLElement* subNetwork, SCLElement* connectedAP);
    Change ChangeOf(Change::Action action, SCLElement* element) const;
    bool IsEntry(SCLElement* element) const;
    static QString WhyNotUpdated(SCLElement* connectedAP);

    SCLDocument& m_document;
    bool m_bWithIp;
    SCLElement* m_pSubNetwork = nullptr;
    SCLElement* m_pConnectedAP = nullptr;
    QList<SCLElement*> m_added;
    Changes m_changes;
};

Changes Updater::Run()
{
    const QObject context;
    QObject::connect(&m_document, &SCLDocument::sigAddElement, &context,
                     [this](SCLElement* element) {
                         if (element->GetParent(QString()) == m_pConnectedAP)
                             m_added.append(element);
                     });
    QObject::connect(&m_document, &SCLDocument::sigDeleteElement, &context,
                     [this](SCLElement* element) {
                         m_changes.append(ChangeOf(Change::Action::Removed, element));
                     });
    SCLElement* communication =
        m_document.Root()->GetFirstChild(QLatin1String(g_szTagCommunication));
    if (communication == nullptr)
        return {};
    const QList<SCLElement*> subNetworks =
        communication->FindChildByType(QLatin1String(g_szTagSubNetwork), false);
    for (SCLElement* subNetwork : subNetworks) {
        const QList<SCLElement*> connectedAPs =
            subNetwork->FindChildByType(QLatin1String(g_szTagConnectedAP), false);
        for (SCLElement* connectedAP : connectedAPs)
            Update(subNetwork, connectedAP);
    }
    return m_changes;
}

void Updater::Update(SCLElement* subNetwork, SCLElement* connectedAP)
{
    m_pSubNetwork = subNetwork;
    m_pConnectedAP = connectedAP;
    const bool done = SCLHelp::UpdateChildForConnectedAP(connectedAP, m_bWithIp);
    // Only now they have their addresses.
    for (SCLElement* element : std::as_const(m_added))
        m_changes.append(ChangeOf(Change::Action::Added, element));
    m_added.clear();
    const QString reason = done ? QString() : WhyNotUpdated(connectedAP);
    if (reason.isEmpty())
        return;
    Change change = ChangeOf(Change::Action::NotUpdated, connectedAP);
    change.details = QStringList(reason);
    m_changes.append(change);
}

// An access point without Server, that of a client for example, has nothing to send.
QString Updater::WhyNotUpdated(SCLElement* connectedAP)
{
    SCLElement* accessPoint = SCLHelp::GetAPFromConnectedAP(connectedAP);
    if (accessPoint == nullptr)
        return QStringLiteral("there is no such access point");
    return accessPoint->GetFirstChild(QLatin1String(g_szTagServer)) == nullptr
               ? QString()
               : QStringLiteral("the file has too many different tags");
}

bool Updater::IsEntry(SCLElement* element) const
{
    return element != m_pConnectedAP && element->GetTag() != QLatin1String(g_szTagAddress);
}

Change Updater::ChangeOf(Change::Action action, SCLElement* element) const
{
    Change change{action,
                  Get(m_pSubNetwork, "name"),
                  Get(m_pConnectedAP, "iedName"),
                  Get(m_pConnectedAP, "apName"),
                  QString(),
                  QString(),
                  QString(),
                  QStringList()};
    if (element == m_pConnectedAP)
        return change;
    change.tag = element->GetTag();
    if (IsEntry(element)) {
        change.ldInst = Get(element, "ldInst");
        change.cbName = Get(element, "cbName");
        element = element->GetFirstChild(QLatin1String(g_szTagAddress));
    }
    change.details = ParametersOf(element);
    return change;
}

QString WordOf(Change::Action action)
{
    switch (action) {
    case Change::Action::Added:
        return QStringLiteral("added");
    case Change::Action::Removed:
        return QStringLiteral("removed");
    case Change::Action::NotUpdated:
        break;
    }
    return QStringLiteral("not-updated");
}

int Count(const Changes& changes, Change::Action action)
{
    return static_cast<int>(
        std::count_if(changes.cbegin(), changes.cend(),
                      [action](const Change& c) { return c.action == action; }));
}

QString TextOf(const Change& change)
{
    const QString point = Escaped(change.ied) + QLatin1Char('.') + Escaped(change.accessPoint);
    QString text = QStringLiteral("%1 %2").arg(WordOf(change.action), -11).arg(point);
    if (change.action == Change::Action::NotUpdated)
        return text + QStringLiteral(": ") + change.details.join(QString());
    text += QLatin1Char(' ') + change.tag;
    if (change.tag != QLatin1String(g_szTagAddress))
        text +=
            QLatin1Char(' ') + Escaped(change.ldInst) + QLatin1Char('/') + Escaped(change.cbName);
    return text + QStringLiteral(": ") + Escaped(change.details.join(QStringLiteral(", ")));
}

void PrintUpdateText(StandardOutput& output, const Changes& changes, bool isDryRun)
{
    QString subNetwork;
    for (auto change = changes.cbegin(); change != changes.cend() && !output.HasFailed();
         ++change) {
        if (change == changes.cbegin() || change->subNetwork != subNetwork)
            output.WriteLine(Escaped(change->subNetwork));
        subNetwork = change->subNetwork;
        output.WriteLine(QStringLiteral("  ") + TextOf(*change));
    }
    QString summary = QStringLiteral("Added: %1, removed: %2")
                          .arg(Count(changes, Change::Action::Added))
                          .arg(Count(changes, Change::Action::Removed));
    const int notUpdated = Count(changes, Change::Action::NotUpdated);
    if (notUpdated > 0)
        summary += QStringLiteral(", ConnectedAPs not updated: %1").arg(notUpdated);
    output.WriteLine(isDryRun ? summary + QStringLiteral(" (dry run, nothing is written)")
                              : summary);
}

void PrintUpdateJson(StandardOutput& output, const Changes& changes, bool isDryRun)
{
    JsonList list(output, QStringLiteral("changes"));
    for (auto change = changes.cbegin(); change != changes.cend() && !output.HasFailed(); ++change)
        list.Add({{QStringLiteral("action"), WordOf(change->action)},
                  {QStringLiteral("subNetwork"), change->subNetwork},
                  {QStringLiteral("ied"), change->ied},
                  {QStringLiteral("accessPoint"), change->accessPoint},
                  {QStringLiteral("tag"), change->tag},
                  {QStringLiteral("ldInst"), change->ldInst},
                  {QStringLiteral("cbName"), change->cbName},
                  {QStringLiteral("details"), QJsonArray::fromStringList(change->details)}});
    list.Finish({{QStringLiteral("dryRun"), isDryRun},
                 {QStringLiteral("added"), Count(changes, Change::Action::Added)},
                 {QStringLiteral("removed"), Count(changes, Change::Action::Removed)},
                 {QStringLiteral("notUpdated"), Count(changes, Change::Action::NotUpdated)}});
}

ExitStatus Update(SCLDocControl& control, const CommandLine& line, const EditOptions& edit)
{
    SCLDocument* document = edit.Open(control);
    if (document == nullptr)
        return ExitStatus::Failed;
    const Changes changes = Updater(*document, line.IsSet(withIpOption)).Run();
    if (!edit.Save(control, *document))
        return ExitStatus::Failed;
    StandardOutput output;
    if (line.Json())
        PrintUpdateJson(output, changes, edit.IsDryRun());
    else
        PrintUpdateText(output, changes, edit.IsDryRun());
    return output.Finish(Count(changes, Change::Action::NotUpdated) > 0 ? ExitStatus::FallsShort
                                                                        : ExitStatus::Good);
}

} // namespace

ExitStatus RunAddresses(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("addresses"),
                     QStringLiteral("Shows the multicast addresses of a station and what is wrong "
                                    "with them, or brings them in step with the control blocks."));
    line.AddOption({updateOption, QStringLiteral("Bring the entries of every ConnectedAP in step "
                                                 "with its control blocks.")});
    line.AddOption({withIpOption, QStringLiteral("With --update: Give a ConnectedAP without "
                                                 "address an IP address to be filled in.")});
    const EditOptions edit(line, updateOption);
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();
    const bool isUpdate = line.IsSet(updateOption);
    if (line.IsSet(withIpOption) && !isUpdate)
        return line.WrongUse(QStringLiteral("the option --with-ip needs --update"));
    if (!edit.Check())
        return ExitStatus::Failed;
    return isUpdate ? Update(control, line, edit) : Audit(control, line);
}

} // namespace Corvane::Command
