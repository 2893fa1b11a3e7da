// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/ElementPath.h"
#include "apps/command/ElementPaths.h"
#include "apps/command/JsonList.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/help/SCLHelp.h>

#include <limits>
#include <utility>

namespace Corvane::Command
{

namespace
{

struct Names {
    QString path;
    QString info;
    QString reference;
    QString mmsReference;
    QString label;

    bool AreNone() const
    {
        return info.isEmpty() && reference.isEmpty() && mmsReference.isEmpty() && label.isEmpty();
    }
};

Names NamesOf(SCLElement* element, const QString& path)
{
    return {path, SCLHelp::GetElementFullInfo(element, false),
            SCLHelp::GetElementRefName(element, false), SCLHelp::GetElementRefName(element, true),
            SCLHelp::GetElementDisplayName(element)};
}

// The names of all elements that have one. The names of elements inside one another contain each
// other, so that in a chain of them they would grow with the square of its length: where they get
// too long, an element is left out with all below it.
class Listing
{
public:
    explicit Listing(SCLElement* root) : m_walk(root) {}

    // False at the end.
    bool Next(Names& names);
    int LeftOut() const { return m_leftOut; }

private:
    static constexpr int longest = 4096;
    static constexpr int nowhere = std::numeric_limits<int>::max();

    bool IsTooLong(SCLElement* element, Names& names);

    TreeWalk m_walk;
    ElementPaths m_paths;
    int m_cutDepth = nowhere;
    int m_leftOut = 0;
};

bool Listing::Next(Names& names)
{
    while (SCLElement* element = m_walk.Next()) {
        if (m_walk.Depth() <= m_cutDepth)
            m_cutDepth = IsTooLong(element, names) ? m_walk.Depth() : nowhere;
        if (m_cutDepth != nowhere)
            ++m_leftOut;
        else if (!names.AreNone())
            return true;
    }
    return false;
}

bool Listing::IsTooLong(SCLElement* element, Names& names)
{
    const QString path = m_paths.Of(element);
    if (path.isEmpty())
        return true;
    names = NamesOf(element, path);
    return names.info.size() > longest || names.reference.size() > longest ||
           names.mmsReference.size() > longest;
}

void PrintLine(StandardOutput& output, const char* head, const QString& name)
{
    if (!name.isEmpty())
        output.WriteLine(QLatin1String(head) + Escaped(name));
}

void PrintText(StandardOutput& output, const Names& names)
{
    output.WriteLine(Escaped(names.path));
    PrintLine(output, "  info:      ", names.info);
    PrintLine(output, "  reference: ", names.reference);
    PrintLine(output, "  MMS:       ", names.mmsReference);
    PrintLine(output, "  label:     ", names.label);
}

QJsonObject JsonItem(const Names& names)
{
    return {{QStringLiteral("path"), names.path},
            {QStringLiteral("info"), names.info},
            {QStringLiteral("reference"), names.reference},
            {QStringLiteral("mmsReference"), names.mmsReference},
            {QStringLiteral("label"), names.label}};
}

// Asks \a next for names until it gives no more.
template <typename Next>
void PrintJson(StandardOutput& output, const Next& next)
{
    JsonList list(output, QStringLiteral("elements"));
    Names names;
    while (!output.HasFailed() && next(names))
        list.Add(JsonItem(names));
    list.Finish();
}

template <typename Next>
void Print(StandardOutput& output, bool json, const Next& next)
{
    if (json) {
        PrintJson(output, next);
        return;
    }
    Names names;
    while (!output.HasFailed() && next(names))
        PrintText(output, names);
}

ExitStatus ShowAll(const CommandLine& line, SCLElement* root)
{
    Listing listing(root);
    StandardOutput output;
    Print(output, line.Json(), [&listing](Names& names) { return listing.Next(names); });
    if (listing.LeftOut() == 0)
        return output.Finish(ExitStatus::Good);
    const ExitStatus status = output.Finish(ExitStatus::FallsShort);
    Complain(
        line.File(),
        QStringLiteral("%1 elements are left out: their paths or names are too long for a list")
            .arg(listing.LeftOut()));
    return status;
}

ExitStatus ShowOne(const CommandLine& line, SCLElement* element, const QString& path)
{
    if (element == nullptr) {
        Complain(line.File(), QStringLiteral("there is no element at ") + path);
        return ExitStatus::FallsShort;
    }
    const Names names = NamesOf(element, ElementPath::Of(element));
    if (names.AreNone()) {
        Complain(line.File(), QStringLiteral("the element has no name at ") + path);
        return ExitStatus::FallsShort;
    }
    StandardOutput output;
    bool isShown = false;
    Print(output, line.Json(), [&](Names& next) {
        next = names;
        return !std::exchange(isShown, true);
    });
    return output.Finish(ExitStatus::Good);
}

} // namespace

ExitStatus RunNames(SCLDocControl& control, const QStringList& arguments)
{
    const QString pathOption = QStringLiteral("path");
    CommandLine line(QStringLiteral("names"),
                     QStringLiteral("Shows the names that elements of a station go by."));
    line.AddOption({pathOption,
                    QStringLiteral("Only this element, such as IED[name=AA1]/AccessPoint[2]."),
                    QStringLiteral("P")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    ElementPath path;
    const QString wrong = line.IsSet(pathOption) ? path.Read(line.Value(pathOption)) : QString();
    if (!wrong.isEmpty())
        return line.WrongUse(QStringLiteral("the path is wrong: ") + wrong);

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    if (!line.IsSet(pathOption))
        return ShowAll(line, document->Root());
    return ShowOne(line, path.Find(document->Root()), line.Value(pathOption));
}

} // namespace Corvane::Command
