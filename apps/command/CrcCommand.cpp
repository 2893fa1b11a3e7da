// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/IedSelection.h"
#include "apps/command/JsonList.h"
#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"
#include "apps/command/StationSave.h"

#include <corvane/crc/CrcGenerator.h>
#include <corvane/crc/SCLCrcCodes.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

using Code = SCLCrcCodes::Code;
using IedCode = SCLCrcCodes::IedCode;

const QString iedOption = QStringLiteral("ied");
const QString updateOption = QStringLiteral("update");
const QString outputOption = QStringLiteral("output");
const QString canonicalOption = QStringLiteral("canonical");
const QString readableOption = QStringLiteral("readable");

// What is shown: the codes of some IEDs, or of all and the substation.
struct Shown {
    SCLCrcCodes codes;
    bool hasSubstation;
};

QString NameOf(const IedCode& code)
{
    return code.ied->GetAttribute(QStringLiteral("name"));
}

QString ContentWord(const IedCode& code)
{
    switch (code.result) {
    case CrcGenerator::CrcSuccess:
        return QStringLiteral("complete");
    case CrcGenerator::CrcNoConnection:
        return QStringLiteral("no-connection");
    case CrcGenerator::CrcFailed:
        break;
    }
    return QStringLiteral("incomplete");
}

QString ShownCode(const QString& code)
{
    return code.isEmpty() ? QStringLiteral("-") : Escaped(code);
}

// What the file stores, or what it did before the update.
QString StoredWord(const Code& code, bool isUpdate)
{
    if (code.stored.isNull())
        return isUpdate ? QStringLiteral("new") : QStringLiteral("missing");
    if (code.Holds())
        return isUpdate ? QStringLiteral("unchanged") : QStringLiteral("holds");
    return (isUpdate ? QStringLiteral("was ") : QStringLiteral("differs: ")) +
           ShownCode(code.stored);
}

int CountOf(const Shown& shown)
{
    return static_cast<int>(shown.codes.ieds.size()) + (shown.hasSubstation ? 1 : 0);
}

int CountOfStale(const Shown& shown)
{
    const auto stale = std::count_if(shown.codes.ieds.cbegin(), shown.codes.ieds.cend(),
                                     [](const IedCode& code) { return !code.Holds(); });
    return static_cast<int>(stale) +
           (shown.hasSubstation && !shown.codes.substation.Holds() ? 1 : 0);
}

class Table
{
public:
    Table(StandardOutput& output, const Shown& shown);
    void Print(bool isUpdate);

private:
    void AddRow(const QString& name, const QString& crc, const QString& content,
                const QString& stored);

    StandardOutput& m_output;
    const Shown& m_shown;
    int m_nameWidth;
};

const QString substationName = QStringLiteral("(substation)");

Table::Table(StandardOutput& output, const Shown& shown)
    : m_output(output), m_shown(shown),
      m_nameWidth(static_cast<int>(shown.hasSubstation ? substationName.size() : 3))
{
    constexpr int widest = 40;
    for (const IedCode& code : shown.codes.ieds)
        m_nameWidth =
            qMin(widest, qMax(m_nameWidth, static_cast<int>(Escaped(NameOf(code)).size())));
}

void Table::Print(bool isUpdate)
{
    AddRow(QStringLiteral("IED"), QStringLiteral("CRC"), QStringLiteral("Content"),
           QStringLiteral("Stored"));
    for (const IedCode& code : m_shown.codes.ieds)
        AddRow(Escaped(NameOf(code)), ShownCode(code.computed), ContentWord(code),
               StoredWord(code, isUpdate));
    const Code& substation = m_shown.codes.substation;
    if (m_shown.hasSubstation)
        AddRow(substationName, ShownCode(substation.computed), QString(),
               StoredWord(substation, isUpdate));
}

void Table::AddRow(const QString& name, const QString& crc, const QString& content,
                   const QString& stored)
{
    m_output.WriteLine(name.leftJustified(m_nameWidth) + QStringLiteral("  ") +
                       crc.leftJustified(8) + QStringLiteral("  ") + content.leftJustified(13) +
                       QStringLiteral("  ") + stored);
}

void PrintText(StandardOutput& output, const Shown& shown)
{
    Table(output, shown).Print(false);
    const int stale = CountOfStale(shown);
    output.WriteLine(stale == 0 ? QStringLiteral("All stored codes hold.")
                                : QStringLiteral("Stored codes that do not hold: %1 of %2")
                                      .arg(stale)
                                      .arg(CountOf(shown)));
}

QJsonObject JsonOf(const Code& code)
{
    return {{QStringLiteral("crc"), code.computed},
            {QStringLiteral("stored"), code.stored.isNull() ? QJsonValue() : code.stored},
            {QStringLiteral("holds"), code.Holds()}};
}

void PrintJson(StandardOutput& output, const Shown& shown)
{
    JsonList list(output, QStringLiteral("ieds"));
    for (const IedCode& code : shown.codes.ieds) {
        QJsonObject item = JsonOf(code);
        item[QStringLiteral("ied")] = NameOf(code);
        item[QStringLiteral("content")] = ContentWord(code);
        list.Add(item);
    }
    QJsonObject rest{{QStringLiteral("hold"), CountOfStale(shown) == 0}};
    if (shown.hasSubstation)
        rest[QStringLiteral("substation")] = JsonOf(shown.codes.substation);
    list.Finish(rest);
}

ExitStatus ShowCodes(const CommandLine& line, SCLElement* root)
{
    QList<SCLElement*> ieds;
    if (!SelectIeds(line, root, ieds))
        return ExitStatus::Failed;
    Shown shown{{}, !line.IsSet(iedOption)};
    if (shown.hasSubstation)
        shown.codes = SCLCrcCodes::Of(root);
    else
        for (SCLElement* ied : ieds)
            shown.codes.ieds.append(SCLCrcCodes::OfIed(ied));
    StandardOutput output;
    if (line.Json())
        PrintJson(output, shown);
    else
        PrintText(output, shown);
    return output.Finish(CountOfStale(shown) == 0 ? ExitStatus::Good : ExitStatus::FallsShort);
}

// Shows the codes with what was stored before.
ExitStatus Update(const CommandLine& line, SCLDocControl& control, SCLDocument& document)
{
    const Shown shown{SCLCrcCodes::Of(document.Root()), true};
    {
        const ProgressBar bar(control);
        document.UpdateCrcCode();
    }
    if (!SaveStation(control, document, line.Value(outputOption)))
        return ExitStatus::Failed;
    StandardOutput output;
    if (line.Json())
        PrintJson(output, shown);
    else
        Table(output, shown).Print(true);
    return output.Finish(ExitStatus::Good);
}

ExitStatus ShowContent(const CommandLine& line, SCLElement* root)
{
    QList<SCLElement*> ieds;
    if (!SelectIeds(line, root, ieds))
        return ExitStatus::Failed;
    if (ieds.size() > 1) {
        Complain(line.File(),
                 QStringLiteral("there is more than one IED '%1'").arg(line.Value(iedOption)));
        return ExitStatus::Failed;
    }
    unsigned int crc = 0;
    QByteArray content;
    const bool isCanonical = line.IsSet(canonicalOption);
    CrcGenerator(ieds.constFirst())
        .Gererate(crc, isCanonical ? &content : nullptr, isCanonical ? nullptr : &content);
    if (content.isEmpty()) {
        Complain(line.File(), QStringLiteral("the IED '%1' neither sends nor receives anything")
                                  .arg(line.Value(iedOption)));
        return ExitStatus::FallsShort;
    }
    StandardOutput output;
    output.Write(QString::fromUtf8(content));
    return output.Finish(ExitStatus::Good);
}

QString WhyWrong(const CommandLine& line)
{
    const bool isUpdate = line.IsSet(updateOption);
    const bool isCanonical = line.IsSet(canonicalOption);
    const bool isReadable = line.IsSet(readableOption);
    if (isCanonical && isReadable)
        return QStringLiteral("--canonical and --readable exclude each other");
    const bool isContent = isCanonical || isReadable;
    if (isUpdate && (isContent || line.IsSet(iedOption)))
        return QStringLiteral("--update does not go with --ied, --canonical and --readable");
    if (isUpdate && !line.IsSet(outputOption))
        return QStringLiteral("the option --output is missing");
    if (!isUpdate && line.IsSet(outputOption))
        return QStringLiteral("--output does not go without --update");
    if (isContent && line.Json())
        return QStringLiteral("--json does not go with --canonical and --readable");
    if (isContent && line.Values(iedOption).size() != 1)
        return QStringLiteral("--canonical and --readable need one --ied");
    return {};
}

} // namespace

ExitStatus RunCrc(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("crc"),
        QStringLiteral("Shows the virtual-terminal CRC of each IED and of the substation, and "
                       "whether the file stores the same; or stores them; or shows what the CRC of "
                       "an IED covers. The codes depend on the schema."));
    line.AddSchema();
    AddIedOption(line);
    line.AddOption({updateOption, QStringLiteral("Store the codes, and save to OUT.")});
    line.AddOption({{QStringLiteral("o"), outputOption},
                    QStringLiteral("The file that --update writes; it may be FILE itself."),
                    QStringLiteral("OUT")});
    line.AddOption(
        {canonicalOption, QStringLiteral("Show the bytes that the CRC of an IED covers.")});
    line.AddOption({readableOption, QStringLiteral("Show the same indented, with descriptions.")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    if (!line.Parse(arguments))
        return line.Status();
    const QString wrong = WhyWrong(line);
    if (!wrong.isEmpty())
        return line.WrongUse(wrong);

    if (!RegisterSclSchema(control, line.Schema()))
        return ExitStatus::Failed;
    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    if (line.IsSet(updateOption))
        return Update(line, control, *document);
    const bool isContent = line.IsSet(canonicalOption) || line.IsSet(readableOption);
    return isContent ? ShowContent(line, document->Root()) : ShowCodes(line, document->Root());
}

} // namespace Corvane::Command
