// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/ElementPath.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLAttribute.h>

#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace Corvane::Command
{

namespace
{

// Deeper elements are not indented further: in a chain of them the blanks would grow with the
// square of its length.
constexpr int deepestIndentation = 40;

QString Indentation(int depth)
{
    const QString blanks = QStringLiteral("  ").repeated(std::min(depth, deepestIndentation));
    return depth > deepestIndentation ? blanks + QStringLiteral("(%1) ").arg(depth) : blanks;
}

QString TextLine(SCLElement* element, int depth, bool isCut)
{
    QString line = Indentation(depth) + Escaped(element->GetTag());
    const QList<SCLAttribute*> attributes = element->GetAttributeList();
    for (const SCLAttribute* attribute : attributes)
        line += QLatin1Char(' ') + Escaped(attribute->GetName()) + QLatin1Char('=') +
                Quoted(attribute->GetValue());
    if (!element->GetValue().isEmpty())
        line += QLatin1Char(' ') + Quoted(element->GetValue());
    return isCut ? line + QStringLiteral(" ...") : line;
}

QJsonObject JsonItem(SCLElement* element, int depth)
{
    QJsonObject attributes;
    const QList<SCLAttribute*> list = element->GetAttributeList();
    for (const SCLAttribute* attribute : list)
        attributes[attribute->GetName()] = attribute->GetValue();
    return {{QStringLiteral("depth"), depth},
            {QStringLiteral("tag"), element->GetTag()},
            {QStringLiteral("attributes"), attributes},
            {QStringLiteral("value"), element->GetValue()},
            {QStringLiteral("children"), element->GetChildCount(false)}};
}

void PrintText(StandardOutput& output, SCLElement* top, int depth)
{
    TreeWalk walk(top);
    while (SCLElement* element = output.HasFailed() ? nullptr : walk.Next()) {
        const bool isCut = walk.Depth() == depth && element->GetChildCount(false) > 0;
        output.WriteLine(TextLine(element, walk.Depth(), isCut));
        if (isCut)
            walk.SkipChildren();
    }
}

// A flat list, because most readers of JSON do not take objects nested as deep as a file may be;
// and element by element, because a station is large.
void PrintJson(StandardOutput& output, SCLElement* top, int depth)
{
    TreeWalk walk(top);
    output.Write(QStringLiteral("{\"elements\":["));
    while (SCLElement* element = output.HasFailed() ? nullptr : walk.Next()) {
        output.Write(element == top ? QStringLiteral("\n") : QStringLiteral(",\n"));
        output.WriteJson(JsonItem(element, walk.Depth()));
        if (walk.Depth() == depth)
            walk.SkipChildren();
    }
    output.WriteLine(QStringLiteral("\n]}"));
}

bool ReadDepth(const QString& text, int& depth)
{
    static const QRegularExpression pattern(QStringLiteral("\\A[0-9]{1,9}\\z"));
    depth = text.toInt();
    return pattern.match(text).hasMatch();
}

} // namespace

ExitStatus RunTree(SCLDocControl& control, const QStringList& arguments)
{
    const QString pathOption = QStringLiteral("path");
    const QString depthOption = QStringLiteral("depth");
    CommandLine line(QStringLiteral("tree"),
                     QStringLiteral("Shows the elements of a station file, one a line."));
    line.AddOption({pathOption,
                    QStringLiteral("Begin at an element, such as IED[name=AA1]/AccessPoint[2]."),
                    QStringLiteral("P")});
    line.AddOption(
        {depthOption, QStringLiteral("Show N levels below where it begins."), QStringLiteral("N")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();

    int depth = std::numeric_limits<int>::max();
    if (line.IsSet(depthOption) && !ReadDepth(line.Value(depthOption), depth))
        return line.WrongUse(QStringLiteral("the depth is no number from 0 to 999999999"));
    ElementPath path;
    const QString wrong = line.IsSet(pathOption) ? path.Read(line.Value(pathOption)) : QString();
    if (!wrong.isEmpty())
        return line.WrongUse(QStringLiteral("the path is wrong: ") + wrong);

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    SCLElement* top = path.Find(document->Root());
    if (top == nullptr) {
        Complain(line.File(), QStringLiteral("there is no element at ") + line.Value(pathOption));
        return ExitStatus::FallsShort;
    }
    StandardOutput output;
    if (line.Json())
        PrintJson(output, top, depth);
    else
        PrintText(output, top, depth);
    return output.Finish(ExitStatus::Good);
}

} // namespace Corvane::Command
