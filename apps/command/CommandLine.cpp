// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"

#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"

namespace Corvane::Command
{

namespace
{

QString Dashed(const QString& option)
{
    return QString(option.size() == 1 ? 1 : 2, QLatin1Char('-')) + option;
}

} // namespace

CommandLine::CommandLine(const QString& command, const QString& description) : m_command(command)
{
    m_parser.setApplicationDescription(description);
    m_parser.addPositionalArgument(command, QStringLiteral("The sub-command."), command);
    AddOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
}

void CommandLine::AddOption(const QCommandLineOption& option)
{
    m_parser.addOption(option);
    m_options.append(option);
}

void CommandLine::AddRequiredOption(const QCommandLineOption& option)
{
    AddOption(option);
    m_required.append(option.names().constFirst());
}

void CommandLine::AddRepeatableOption(const QCommandLineOption& option)
{
    AddOption(option);
    m_repeatable.append(option.names().constFirst());
}

void CommandLine::AddJson()
{
    AddOption({QStringLiteral("json"), QStringLiteral("Answer in JSON.")});
}

void CommandLine::AddSchema()
{
    AddRequiredOption(
        {QStringLiteral("schema"), QStringLiteral("The SCL schema."), QStringLiteral("XSD")});
}

void CommandLine::AddFile(const QString& description)
{
    m_parser.addPositionalArgument(QStringLiteral("FILE"), description, QStringLiteral("FILE"));
}

void CommandLine::AddArgument(const QString& name, const QString& description)
{
    m_parser.addPositionalArgument(name, description, name);
    m_arguments.append(name);
    ++m_requiredArguments;
}

void CommandLine::AddOptionalArgument(const QString& name, const QString& description)
{
    m_parser.addPositionalArgument(name, description, QLatin1Char('[') + name + QLatin1Char(']'));
    m_arguments.append(name);
}

void CommandLine::AddFiles(const QString& description)
{
    m_parser.addPositionalArgument(QStringLiteral("FILE"), description, QStringLiteral("FILE..."));
    m_manyFiles = true;
}

bool CommandLine::Parse(const QStringList& arguments)
{
    // The parser takes the first argument for the program's name.
    const bool parsed = m_parser.parse(QStringList(m_command) + arguments);
    if (parsed && IsSet(QStringLiteral("help"))) {
        StandardOutput output;
        output.Write(m_parser.helpText());
        m_status = output.Finish(ExitStatus::Good);
        return false;
    }
    const QString reason = parsed ? WhyWrong() : m_parser.errorText();
    if (!reason.isEmpty())
        m_status = WrongUse(reason);
    return reason.isEmpty();
}

QStringList CommandLine::Files() const
{
    const QStringList arguments = m_parser.positionalArguments();
    return m_arguments.isEmpty() ? arguments : QStringList(arguments.mid(0, 1));
}

ExitStatus CommandLine::WrongUse(const QString& text) const
{
    Complain(m_command, text);
    Complain(QStringLiteral("try 'corvane %1 --help'").arg(m_command));
    return ExitStatus::Failed;
}

QString CommandLine::WhyWrong() const
{
    for (const QCommandLineOption& option : m_options) {
        QString reason = WhyWrongOption(option);
        if (!reason.isEmpty())
            return reason;
    }
    for (const QString& option : m_required) {
        if (!IsSet(option))
            return QStringLiteral("the option %1 is missing").arg(Dashed(option));
    }
    return WhyWrongFiles();
}

QString CommandLine::WhyWrongOption(const QCommandLineOption& option) const
{
    const QStringList values = m_parser.values(option);
    const QString first = option.names().constFirst();
    const QString name = Dashed(first);
    if (values.size() > 1 && !m_repeatable.contains(first))
        return QStringLiteral("the option %1 is given twice").arg(name);
    if (values.contains(QString()))
        return QStringLiteral("the option %1 has an empty value").arg(name);
    return {};
}

QString CommandLine::WhyWrongFiles() const
{
    const QStringList files = Files();
    if (files.isEmpty())
        return QStringLiteral("no file is given");
    if (files.contains(QString()))
        return QStringLiteral("the name of a file is empty");
    if (files.size() > 1 && !m_manyFiles)
        return QStringLiteral("more than one file is given");
    return WhyWrongArgument();
}

QString CommandLine::WhyWrongArgument() const
{
    const QStringList given = m_parser.positionalArguments().mid(Files().size());
    if (given.size() > m_arguments.size())
        return QStringLiteral("more than one %1 is given").arg(m_arguments.constLast());
    const auto empty = given.indexOf(QString());
    if (empty >= 0)
        return QStringLiteral("the argument %1 is empty").arg(m_arguments.at(empty));
    if (given.size() < m_requiredArguments)
        return QStringLiteral("the argument %1 is missing").arg(m_arguments.at(given.size()));
    return {};
}

} // namespace Corvane::Command
