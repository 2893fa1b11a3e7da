// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/IedSelection.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/crc/SCLCrcComparison.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QHash>
#include <QJsonArray>
#include <QQueue>
#include <QSet>

#include <array>
#include <memory>

namespace Corvane::Command
{

namespace
{

using Change = SCLCrcComparison::Change;
using Difference = SCLCrcComparison::Difference;
using Meaning = SCLCrcComparison::Meaning;
using Section = SCLCrcComparison::Section;

const QString iedOption = QStringLiteral("ied");

enum class Verdict { Equal, Differs, OnlyInFirst, OnlyInSecond };

constexpr std::array<const char*, 4> verdictWords = {"equal", "differs", "only-in-first",
                                                     "only-in-second"};

QString WordOf(Section section)
{
    switch (section) {
    case Section::Ied:
        return QStringLiteral("ied");
    case Section::GoosePublication:
        return QStringLiteral("goose-publication");
    case Section::GooseSubscription:
        return QStringLiteral("goose-subscription");
    case Section::SampledValuePublication:
        return QStringLiteral("sv-publication");
    case Section::SampledValueSubscription:
        break;
    }
    return QStringLiteral("sv-subscription");
}

QString WordOf(Meaning meaning)
{
    switch (meaning) {
    case Meaning::Ied:
        return QStringLiteral("ied");
    case Meaning::ControlBlock:
        return QStringLiteral("control-block");
    case Meaning::Communication:
        return QStringLiteral("communication");
    case Meaning::DataSet:
        return QStringLiteral("data-set");
    case Meaning::Member:
        return QStringLiteral("member");
    case Meaning::InstanceData:
        return QStringLiteral("instance-data");
    case Meaning::Wiring:
        break;
    }
    return QStringLiteral("wiring");
}

QString WordOf(Change change)
{
    switch (change) {
    case Change::Value:
        return QStringLiteral("value");
    case Change::OnlyLeft:
        return QStringLiteral("only-in-first");
    case Change::OnlyRight:
        return QStringLiteral("only-in-second");
    case Change::Order:
        break;
    }
    return QStringLiteral("order");
}

// An IED as the two files have it; null in one that does not.
struct IedPair {
    QString name;
    SCLElement* first;
    SCLElement* second;
};

QList<SCLElement*> IedsOf(SCLElement* root)
{
    return root->FindChildByType(QLatin1String(g_szTagIED), false);
}

QString NameOf(SCLElement* ied)
{
    return ied->GetAttribute(QStringLiteral("name"));
}

// The IEDs in the order of the first file, then those that only the second one has. Of several with
// one name they are taken in order.
QList<IedPair> PairsOf(SCLElement* first, SCLElement* second)
{
    QHash<QString, QQueue<SCLElement*>> unpaired;
    const QList<SCLElement*> inFirst = IedsOf(first);
    const QList<SCLElement*> inSecond = IedsOf(second);
    for (SCLElement* ied : inSecond)
        unpaired[NameOf(ied)].enqueue(ied);
    QList<IedPair> pairs;
    for (SCLElement* ied : inFirst) {
        QQueue<SCLElement*>& others = unpaired[NameOf(ied)];
        pairs.append({NameOf(ied), ied, others.isEmpty() ? nullptr : others.dequeue()});
    }
    for (SCLElement* ied : inSecond) {
        QQueue<SCLElement*>& others = unpaired[NameOf(ied)];
        if (!others.isEmpty() && others.constFirst() == ied)
            pairs.append({NameOf(ied), nullptr, others.dequeue()});
    }
    return pairs;
}

// Leaves those that were asked for. False if a name is that of no IED, which is told.
bool Select(const CommandLine& line, QList<IedPair>& pairs)
{
    if (!line.IsSet(iedOption))
        return true;
    const QStringList names = line.Values(iedOption);
    QSet<QString> known;
    QList<IedPair> selected;
    for (const IedPair& pair : pairs) {
        known.insert(pair.name);
        if (names.contains(pair.name))
            selected.append(pair);
    }
    for (const QString& name : names) {
        if (!known.contains(name)) {
            line.WrongUse(QStringLiteral("neither file has an IED '%1'").arg(name));
            return false;
        }
    }
    pairs = selected;
    return true;
}

// Tells of one IED after the other, in one form or the other.
class Report
{
public:
    Report(StandardOutput& output, bool json) : m_output(output)
    {
        if (json)
            m_list = std::make_unique<JsonList>(output, QStringLiteral("ieds"));
    }

    void Add(const IedPair& pair);
    void Finish();
    bool IsAllEqual() const { return m_total == Count(Verdict::Equal); }

private:
    int Count(Verdict verdict) const { return m_counts[static_cast<std::size_t>(verdict)]; }
    void PrintText(const IedPair& pair, Verdict verdict, const SCLCrcComparison& comparison);
    void PrintJson(const IedPair& pair, Verdict verdict, const SCLCrcComparison& comparison);

    StandardOutput& m_output;
    std::unique_ptr<JsonList> m_list;
    std::array<int, 4> m_counts = {};
    int m_total = 0;
};

void Report::Add(const IedPair& pair)
{
    const SCLCrcComparison comparison = SCLCrcComparison::Of(pair.first, pair.second);
    const Verdict verdict = !pair.first            ? Verdict::OnlyInSecond
                            : !pair.second         ? Verdict::OnlyInFirst
                            : comparison.IsEqual() ? Verdict::Equal
                                                   : Verdict::Differs;
    ++m_counts[static_cast<std::size_t>(verdict)];
    ++m_total;
    if (m_list)
        PrintJson(pair, verdict, comparison);
    else
        PrintText(pair, verdict, comparison);
}

QString ShownCode(const QString& code)
{
    return code.isEmpty() ? QStringLiteral("no CRC") : code;
}

void Report::PrintText(const IedPair& pair, Verdict verdict, const SCLCrcComparison& comparison)
{
    const QString name = Escaped(pair.name);
    const QString left = ShownCode(comparison.leftCode);
    const QString right = ShownCode(comparison.rightCode);
    switch (verdict) {
    case Verdict::Equal:
        m_output.WriteLine(QStringLiteral("%1: equal, %2").arg(name, left));
        return;
    case Verdict::OnlyInFirst:
        m_output.WriteLine(QStringLiteral("%1: only in the first file, %2").arg(name, left));
        return;
    case Verdict::OnlyInSecond:
        m_output.WriteLine(QStringLiteral("%1: only in the second file, %2").arg(name, right));
        return;
    case Verdict::Differs:
        break;
    }
    m_output.WriteLine(
        QStringLiteral("%1: differs, %2 in the first, %3 in the second").arg(name, left, right));
    QString mark = QStringLiteral("  First difference: ");
    for (const Difference& difference : comparison.differences) {
        m_output.WriteLine(mark + Escaped(difference.text));
        mark = QStringLiteral("  Then: ");
    }
}

QJsonValue OrNull(const QString& text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QJsonObject JsonOf(const Difference& difference)
{
    return {{QStringLiteral("section"), WordOf(difference.section)},
            {QStringLiteral("meaning"), WordOf(difference.meaning)},
            {QStringLiteral("change"), WordOf(difference.change)},
            {QStringLiteral("controlBlock"), difference.controlBlock},
            {QStringLiteral("path"), difference.path},
            {QStringLiteral("attribute"), difference.attribute},
            {QStringLiteral("first"), OrNull(difference.left)},
            {QStringLiteral("second"), OrNull(difference.right)},
            {QStringLiteral("text"), difference.text}};
}

void Report::PrintJson(const IedPair& pair, Verdict verdict, const SCLCrcComparison& comparison)
{
    QJsonArray differences;
    if (verdict == Verdict::Differs) {
        for (const Difference& difference : comparison.differences)
            differences.append(JsonOf(difference));
    }
    m_list->Add({{QStringLiteral("ied"), pair.name},
                 {QStringLiteral("verdict"),
                  QLatin1String(verdictWords[static_cast<std::size_t>(verdict)])},
                 {QStringLiteral("first"), comparison.leftCode},
                 {QStringLiteral("second"), comparison.rightCode},
                 {QStringLiteral("differences"), differences}});
}

void Report::Finish()
{
    if (m_list) {
        QJsonObject counts;
        for (std::size_t i = 0; i < verdictWords.size(); ++i)
            counts[QLatin1String(verdictWords[i])] = m_counts[i];
        m_list->Finish({{QStringLiteral("counts"), counts}});
        return;
    }
    QString text = QStringLiteral("IEDs: %1 equal, %2 different")
                       .arg(Count(Verdict::Equal))
                       .arg(Count(Verdict::Differs));
    if (Count(Verdict::OnlyInFirst) > 0)
        text += QStringLiteral(", %1 only in the first file").arg(Count(Verdict::OnlyInFirst));
    if (Count(Verdict::OnlyInSecond) > 0)
        text += QStringLiteral(", %1 only in the second file").arg(Count(Verdict::OnlyInSecond));
    m_output.WriteLine(text);
}

} // namespace

ExitStatus RunCrcDiff(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("crc-diff"),
        QStringLiteral("Tells for each IED of two station files whether what its virtual-terminal "
                       "CRC covers is the same, and if not, what differs. The CRC depends on the "
                       "schema."));
    line.AddSchema();
    AddIedOption(line);
    line.AddJson();
    line.AddFile(QStringLiteral("The first station file."));
    line.AddArgument(QStringLiteral("FILE2"), QStringLiteral("The second station file."));
    if (!line.Parse(arguments))
        return line.Status();

    if (!RegisterSclSchema(control, line.Schema()))
        return ExitStatus::Failed;
    SCLDocument* first = OpenStation(control, line.File());
    SCLDocument* second = first ? OpenStation(control, line.Argument()) : nullptr;
    if (!second)
        return ExitStatus::Failed;
    QList<IedPair> pairs = PairsOf(first->Root(), second->Root());
    if (!Select(line, pairs))
        return ExitStatus::Failed;
    StandardOutput output;
    Report report(output, line.Json());
    for (auto pair = pairs.cbegin(); pair != pairs.cend() && !output.HasFailed(); ++pair)
        report.Add(*pair);
    report.Finish();
    return output.Finish(report.IsAllEqual() ? ExitStatus::Good : ExitStatus::FallsShort);
}

} // namespace Corvane::Command
