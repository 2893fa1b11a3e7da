// SPDX-License-Identifier: Apache-2.0
#include "apps/command/IedEdit.h"

#include "apps/command/CommandLine.h"
#include "apps/command/EditOptions.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <vector>

namespace Corvane::Command
{

namespace
{

using Action = SCLIedReferences::Action;
using Change = SCLIedReferences::Change;
using Refusal = SCLIedReferences::Refusal;
using Result = SCLIedReferences::Result;

const QString wideOption = QStringLiteral("wide");

// A change with the path that its element had before any was made.
struct Row {
    QString path;
    Change change;
};

using Rows = QList<Row>;

QString IdentifierOf(SCLElement* element)
{
    const QString tag = element->GetTag();
    if (tag == QLatin1String(g_szTagGSEControl))
        return QStringLiteral("appID");
    return tag == QLatin1String(g_szTagSampledValueControl) ? QStringLiteral("smvID") : QString();
}

// The value of an attribute; null for one that is missing.
QString ValueOf(SCLElement* element, const QString& name)
{
    const SCLAttribute* attribute = element->FindAttribute(name);
    return attribute == nullptr ? QString() : attribute->GetValue();
}

// Takes down what the narrow form changes: by the document's signals, and for the identifiers of
// control blocks, which it writes in silence, by their values before and after.
class Recorder
{
public:
    explicit Recorder(SCLDocument& document) : m_document(document) { TakeStock(); }

    Rows Record(const std::function<void()>& edit);

private:
    void TakeStock();
    void Add(SCLElement* element, Action action, const QString& attribute, const QString& oldValue,
             const QString& newValue)
    {
        m_rows.append({m_paths.value(element), {element, action, attribute, oldValue, newValue}});
    }
    void AddRemoved(SCLElement* element);
    void AddSilentChanges();

    SCLDocument& m_document;
    QHash<SCLElement*, QString> m_paths;
    QHash<SCLElement*, QString> m_identifiers;
    Rows m_rows;
};

void Recorder::TakeStock()
{
    const QSet<QString> followed = {QLatin1String(g_szTagIED), QLatin1String(g_szTagConnectedAP),
                                    QLatin1String(g_szTagExtRef), QStringLiteral("ClientLN")};
    ElementPaths paths;
    TreeWalk walk(m_document.Root());
    while (SCLElement* element = walk.Next()) {
        const QString identifier = IdentifierOf(element);
        if (!identifier.isEmpty())
            m_identifiers.insert(element, ValueOf(element, identifier));
        if (!identifier.isEmpty() || followed.contains(element->GetTag()))
            m_paths.insert(element, paths.Of(element));
    }
}

Rows Recorder::Record(const std::function<void()>& edit)
{
    QObject context;
    QObject::connect(&m_document, &SCLDocument::sigEditAttribute, &context,
                     [this](SCLElement* element, SCLAttribute* attribute, const QString& oldValue) {
                         Add(element, Action::SetAttribute, attribute->GetName(), oldValue,
                             attribute->GetValue());
                     });
    QObject::connect(&m_document, &SCLDocument::sigDeleteElement, &context,
                     [this](SCLElement* element) { AddRemoved(element); });
    edit();
    AddSilentChanges();
    return m_rows;
}

void Recorder::AddRemoved(SCLElement* element)
{
    const bool isIed = element->GetTag() == QLatin1String(g_szTagIED);
    const QString naming = isIed ? QStringLiteral("name") : QStringLiteral("iedName");
    Add(element, Action::RemoveElement, QString(), element->GetAttribute(naming), QString());
}

void Recorder::AddSilentChanges()
{
    TreeWalk walk(m_document.Root());
    while (SCLElement* element = walk.Next()) {
        const QString identifier = IdentifierOf(element);
        if (identifier.isEmpty())
            continue;
        const QString before = m_identifiers.value(element);
        const QString now = ValueOf(element, identifier);
        if (now != before)
            Add(element, Action::SetAttribute, identifier, before, now);
    }
}

Rows RowsOf(const Result& result)
{
    Rows rows;
    ElementPaths paths;
    for (const Change& change : result.changes)
        rows.append({paths.Of(change.element), change});
    return rows;
}

// The places that a wide edit would change and that are not among those changed. Elements may be
// gone by now: they are compared and not looked at.
int CountFurther(const Result& plan, const Rows& rows)
{
    QSet<SCLElement*> places;
    for (const Change& change : plan.changes)
        places.insert(change.element);
    for (const Row& row : rows)
        places.remove(row.change.element);
    return static_cast<int>(places.size());
}

QString ShownValue(const QString& value)
{
    return value.isNull() ? QStringLiteral("none") : Quoted(value);
}

// What of an element a change is about.
QString ShownPart(const Change& change)
{
    switch (change.action) {
    case Action::SetText:
        return QStringLiteral("text");
    case Action::RemoveElement:
        return QStringLiteral("element");
    default:
        return Escaped(change.attribute);
    }
}

QString ShownPath(const Row& row)
{
    return row.path.isEmpty() ? QStringLiteral("(path too long)") : Escaped(row.path);
}

// The width of a column that is no wider than \a widest, whatever stands in it.
template <typename Shown>
int WidthOf(const Rows& rows, int widest, const Shown& shown)
{
    int width = 0;
    for (const Row& row : rows)
        width = std::max(width, static_cast<int>(shown(row).size()));
    return std::min(width, widest);
}

void PrintText(StandardOutput& output, const Rows& rows, bool isDryRun)
{
    const int pathWidth = WidthOf(rows, 100, ShownPath);
    const int partWidth = WidthOf(rows, 16, [](const Row& row) { return ShownPart(row.change); });
    for (const Row& row : rows) {
        if (output.HasFailed())
            return;
        output.WriteLine(ShownPath(row).leftJustified(pathWidth) + QStringLiteral("  ") +
                         ShownPart(row.change).leftJustified(partWidth) + QStringLiteral("  ") +
                         ShownValue(row.change.oldValue) + QStringLiteral(" -> ") +
                         ShownValue(row.change.newValue));
    }
    output.WriteLine(QStringLiteral("Changes: %1").arg(static_cast<int>(rows.size())) +
                     (isDryRun ? QStringLiteral(" (dry run, nothing is written)") : QString()));
}

QJsonValue JsonText(const QString& text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QString WordOf(Action action)
{
    switch (action) {
    case Action::SetAttribute:
        return QStringLiteral("set-attribute");
    case Action::RemoveAttribute:
        return QStringLiteral("remove-attribute");
    case Action::SetText:
        return QStringLiteral("set-text");
    case Action::RemoveElement:
        return QStringLiteral("remove-element");
    }
    return {};
}

QJsonObject JsonItem(const Row& row)
{
    return {{QStringLiteral("path"), row.path},
            {QStringLiteral("action"), WordOf(row.change.action)},
            {QStringLiteral("attribute"), row.change.attribute},
            {QStringLiteral("old"), JsonText(row.change.oldValue)},
            {QStringLiteral("new"), JsonText(row.change.newValue)}};
}

void PrintJson(StandardOutput& output, const Rows& rows, const QJsonObject& rest)
{
    JsonList list(output, QStringLiteral("changes"));
    for (auto row = rows.cbegin(); row != rows.cend() && !output.HasFailed(); ++row)
        list.Add(JsonItem(*row));
    list.Finish(rest);
}

SCLElement* FindIed(SCLElement* root, const QString& name)
{
    return root->FindChild(QLatin1String(g_szTagIED), QStringLiteral("name"), name, false);
}

ExitStatus Refuse(const CommandLine& line, Refusal refusal, const QString& iedName)
{
    switch (refusal) {
    case Refusal::NameAmbiguous:
        Complain(line.File(), QStringLiteral("several IEDs have the name '%1'").arg(iedName));
        return ExitStatus::FallsShort;
    case Refusal::NameTaken:
        return line.WrongUse(QStringLiteral("another IED has the new name already"));
    case Refusal::LDeviceNameTaken:
        return line.WrongUse(
            QStringLiteral("a logical device of another IED is named as one of this IED would be"));
    default:
        return line.WrongUse(QStringLiteral("the new name is none that IEC 61850-6 allows"));
    }
}

} // namespace

void AddIedEditOptions(CommandLine& line)
{
    line.AddOption({wideOption, QStringLiteral("Follow every place that names the IED.")});
    line.AddJson();
}

ExitStatus RunIedEdit(SCLDocControl& control, const CommandLine& line, const EditOptions& options,
                      const QString& iedName, const IedEdit& edit)
{
    const bool isWide = line.IsSet(wideOption);
    SCLDocument* document = options.Open(control);
    if (document == nullptr)
        return ExitStatus::Failed;
    SCLElement* ied = FindIed(document->Root(), iedName);
    if (ied == nullptr)
        return line.WrongUse(QStringLiteral("there is no IED '%1'").arg(iedName));

    const Result plan = edit.plan(ied);
    if (plan.IsRefused())
        return Refuse(line, plan.refusal, iedName);
    Rows rows;
    if (isWide) {
        rows = RowsOf(plan);
        edit.wide(ied);
    } else {
        rows = Recorder(*document).Record([&edit, ied] { edit.narrow(ied); });
    }
    const int further = isWide ? 0 : CountFurther(plan, rows);
    if (!options.Save(control, *document))
        return ExitStatus::Failed;

    StandardOutput output;
    if (line.Json())
        PrintJson(output, rows,
                  {{QStringLiteral("dryRun"), options.IsDryRun()},
                   {QStringLiteral("further"), further},
                   {QStringLiteral("ied"), iedName}});
    else
        PrintText(output, rows, options.IsDryRun());
    const ExitStatus status = output.Finish(ExitStatus::Good);
    if (further > 0)
        Complain(line.File(), QStringLiteral("--wide would change %1 further places").arg(further));
    return status;
}

} // namespace Corvane::Command
