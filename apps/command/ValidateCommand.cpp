// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/FileCheck.h"
#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocControl.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QRegularExpression>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

struct Message {
    QString level;
    QString text;
};

struct Verdict {
    ExitStatus status = ExitStatus::Failed;
    QList<Message> messages;
};

QJsonObject JsonMessage(const Message& message)
{
    static const QRegularExpression pattern(QStringLiteral("\\ALn ([0-9]+), Col ([0-9]+): (.*)\\z"),
                                            QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = pattern.match(message.text);
    return {{QStringLiteral("level"), message.level},
            {QStringLiteral("line"), match.captured(1).toDouble()},
            {QStringLiteral("column"), match.captured(2).toDouble()},
            {QStringLiteral("text"), match.captured(3)}};
}

QJsonObject JsonVerdict(const QString& file, const Verdict& verdict)
{
    QJsonArray messages;
    for (const Message& message : verdict.messages)
        messages.append(JsonMessage(message));
    return {{QStringLiteral("file"), file},
            {QStringLiteral("valid"), verdict.status == ExitStatus::Good},
            {QStringLiteral("messages"), messages}};
}

Verdict Validate(SCLDocControl& control, const QString& file)
{
    Verdict verdict;
    const QString reason = WhyUnreadable(file);
    if (!reason.isEmpty()) {
        Complain(file, reason);
        return verdict;
    }
    const QObject context;
    QObject::connect(&control, &SCLDocControl::sigOutMessage, &context,
                     [&verdict](const QString& level, const QString& text) {
                         verdict.messages.append({level, text});
                     });
    // The list is replaced if the file was parsed: then the verdict is one on the file.
    const QStringList unparsed{QString()};
    QStringList texts = unparsed;
    const bool valid = control.SchemaValidate(file, texts);
    if (texts != unparsed)
        verdict.status = valid ? ExitStatus::Good : ExitStatus::FallsShort;
    else
        Complain(file, QStringLiteral("cannot be validated"));
    return verdict;
}

void PrintText(StandardOutput& output, const QString& file, const Verdict& verdict)
{
    for (const Message& message : verdict.messages)
        output.WriteLine(Escaped(file) + QStringLiteral(": ") + message.level + QLatin1Char(' ') +
                         Escaped(message.text));
}

} // namespace

ExitStatus RunValidate(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("validate"),
                     QStringLiteral("Checks station files against the SCL schema."));
    line.AddSchema();
    line.AddJson();
    line.AddFiles(QStringLiteral("The station files."));
    if (!line.Parse(arguments))
        return line.Status();
    if (!RegisterSclSchema(control, line.Schema()))
        return ExitStatus::Failed;

    StandardOutput output;
    ExitStatus worst = ExitStatus::Good;
    QJsonArray verdicts;
    const QStringList files = line.Files();
    for (const QString& file : files) {
        const Verdict verdict = Validate(control, file);
        worst = std::max(worst, verdict.status);
        if (!line.Json())
            PrintText(output, file, verdict);
        else if (verdict.status != ExitStatus::Failed)
            verdicts.append(JsonVerdict(file, verdict));
    }
    if (line.Json()) {
        output.WriteJson({{QStringLiteral("files"), verdicts}});
        output.WriteLine(QString());
    }
    return output.Finish(worst);
}

} // namespace Corvane::Command
