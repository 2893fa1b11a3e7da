// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/ElementPath.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SCLHelp.h>

#include <QJsonObject>

namespace Corvane::Command
{

namespace
{

const QString lnOption = QStringLiteral("ln");
const QString doOption = QStringLiteral("do");
const QString daOption = QStringLiteral("da");
const QString typeArgument = QStringLiteral("TYPE-ID");

// The TDL type of a template, or why there is none.
struct TypeText {
    QString kind;
    QString tdl;
    QString reason;
};

bool Has(SCLElement* type, const char* tag)
{
    return type->GetFirstChild(QLatin1String(tag)) != nullptr;
}

QString WhyNoDOType(SCLElement* doType)
{
    if (!Has(doType, g_szTagSDO) && !Has(doType, g_szTagDA))
        return QStringLiteral("it has neither SDO nor DA");
    const QList<SCLElement*> sdos = doType->FindChildByType(QLatin1String(g_szTagSDO), false);
    for (SCLElement* sdo : sdos) {
        if (SCLHelp::GetDOTypeFromDO(sdo) == nullptr)
            return QStringLiteral("its SDO '%1' refers to no DOType")
                .arg(sdo->GetAttribute(QStringLiteral("name")));
    }
    return QStringLiteral("it is too large");
}

TypeText TextOfDOType(SCLElement* doType)
{
    TypeText text;
    text.kind = QLatin1String(g_szTagDOType);
    if (!SCLHelp::GetTDLTypeFromDOType(doType, text.tdl))
        text.reason = WhyNoDOType(doType);
    return text;
}

// The text of a DAType is that of an attribute of this type. Such a one may not be there, so it is
// made, outside the tree.
TypeText TextOfDAType(SCLElement* daType)
{
    TypeText text;
    text.kind = QLatin1String(g_szTagDAType);
    SCLElement da(QLatin1String(g_szTagDA), nullptr, nullptr);
    da.SetAttributeList({QStringLiteral("bType"), QStringLiteral("type")},
                        {QStringLiteral("Struct"), daType->GetAttribute(QStringLiteral("id"))});
    da.SetDocument(daType->GetDocument());
    if (!SCLHelp::GetTDLTypeFromDA(&da, text.tdl))
        text.reason = Has(daType, g_szTagBDA) ? QStringLiteral("it is too large")
                                              : QStringLiteral("it has no BDA");
    return text;
}

TypeText TextOfType(SCLElement* root, const QString& id)
{
    if (SCLElement* type = SCLHelp::GetDataTypeFromID(root, QLatin1String(g_szTagDOType), id))
        return TextOfDOType(type);
    if (SCLElement* type = SCLHelp::GetDataTypeFromID(root, QLatin1String(g_szTagDAType), id))
        return TextOfDAType(type);
    return {};
}

ExitStatus FallShort(const CommandLine& line, const QString& reason)
{
    Complain(line.File(), reason);
    return ExitStatus::FallsShort;
}

ExitStatus ShowType(const CommandLine& line, SCLElement* root)
{
    const QString id = line.Argument();
    const TypeText text = TextOfType(root, id);
    if (text.kind.isEmpty())
        return FallShort(line, QStringLiteral("there is no DOType or DAType '%1'").arg(id));
    if (!text.reason.isEmpty())
        return FallShort(
            line,
            QStringLiteral("the %1 '%2' has no TDL type: %3").arg(text.kind, id, text.reason));
    StandardOutput output;
    if (line.Json())
        output.WriteJson({{QStringLiteral("kind"), text.kind},
                          {QStringLiteral("id"), id},
                          {QStringLiteral("tdl"), text.tdl}});
    else
        output.Write(Escaped(text.tdl));
    output.WriteLine(QString());
    return output.Finish(ExitStatus::Good);
}

// The TDL word of one attribute; act is empty if the data object is not found.
struct AttributeText {
    QString word;
    QString act;
};

QString WhyNoWord(const CommandLine& line, SCLElement* ln, const AttributeText& text)
{
    const QString doName = line.Value(doOption);
    const QString doiName = doName.section(QLatin1Char('.'), 0, 0);
    if (!text.act.isEmpty())
        return QStringLiteral("the data object '%1' has no attribute '%2' with a TDL word")
            .arg(doName, line.Value(daOption));
    if (ln->FindChild(QLatin1String(g_szTagDOI), QStringLiteral("name"), doiName, false) == nullptr)
        return QStringLiteral("there is no DOI '%1' at %2").arg(doiName, line.Value(lnOption));
    return QStringLiteral("the templates have no data object '%1' for %2")
        .arg(doName, line.Value(lnOption));
}

void PrintAttribute(const CommandLine& line, StandardOutput& output, const AttributeText& text)
{
    const bool isAct = text.act == QLatin1String("1");
    if (!line.Json()) {
        output.WriteLine(QStringLiteral("Type: ") + text.word);
        output.WriteLine(QStringLiteral("ACT:  ") +
                         (isAct ? QStringLiteral("yes") : QStringLiteral("no")));
        return;
    }
    output.WriteJson({{QStringLiteral("ln"), line.Value(lnOption)},
                      {QStringLiteral("do"), line.Value(doOption)},
                      {QStringLiteral("da"), line.Value(daOption)},
                      {QStringLiteral("tdl"), text.word},
                      {QStringLiteral("act"), isAct}});
    output.WriteLine(QString());
}

ExitStatus ShowAttribute(const CommandLine& line, SCLElement* ln)
{
    if (ln == nullptr)
        return FallShort(line, QStringLiteral("there is no element at ") + line.Value(lnOption));
    AttributeText text;
    if (!SCLHelp::GetTDLTypeAndACT(ln, line.Value(doOption), line.Value(daOption), text.word,
                                   text.act))
        return FallShort(line, WhyNoWord(line, ln, text));
    StandardOutput output;
    PrintAttribute(line, output, text);
    return output.Finish(ExitStatus::Good);
}

// Either a type or the three options.
QString WhyWrong(const CommandLine& line)
{
    const bool isType = !line.Argument().isEmpty();
    QStringList missing;
    for (const QString& option : {lnOption, doOption, daOption}) {
        if (!line.IsSet(option))
            missing.append(QStringLiteral("--") + option);
    }
    if (isType && missing.size() < 3)
        return QStringLiteral("--ln, --do and --da do not go with a %1").arg(typeArgument);
    if (isType || missing.isEmpty())
        return {};
    if (missing.size() == 3)
        return QStringLiteral("neither a %1 nor --ln, --do and --da are given").arg(typeArgument);
    return QStringLiteral("the option %1 is missing").arg(missing.constFirst());
}

} // namespace

ExitStatus RunTdl(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("tdl"),
        QStringLiteral(
            "Shows the TDL type of a DOType or DAType. With --ln, --do and --da instead "
            "of a type, shows the TDL word of one attribute, and whether its data object "
            "is of common data class ACT."));
    line.AddOption({lnOption, QStringLiteral("The path of a logical node."), QStringLiteral("P")});
    line.AddOption(
        {doOption, QStringLiteral("A data object that has a DOI there."), QStringLiteral("NAME")});
    line.AddOption({daOption, QStringLiteral("One of its attributes."), QStringLiteral("NAME")});
    line.AddJson();
    line.AddFile(QStringLiteral("The station file."));
    line.AddOptionalArgument(typeArgument, QStringLiteral("The id of a DOType or DAType."));
    if (!line.Parse(arguments))
        return line.Status();
    const QString wrong = WhyWrong(line);
    if (!wrong.isEmpty())
        return line.WrongUse(wrong);
    ElementPath path;
    const QString wrongPath = line.IsSet(lnOption) ? path.Read(line.Value(lnOption)) : QString();
    if (!wrongPath.isEmpty())
        return line.WrongUse(QStringLiteral("the path is wrong: ") + wrongPath);

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    if (!line.IsSet(lnOption))
        return ShowType(line, document->Root());
    return ShowAttribute(line, path.Find(document->Root()));
}

} // namespace Corvane::Command
