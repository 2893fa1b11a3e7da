// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/ExitStatus.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>

namespace Corvane::Command
{

/// The arguments of one sub-command: its options, its files, its help.
///
/// An option that takes a value is wrong when given with an empty value, and when given twice
/// unless it is declared as repeatable.
class CommandLine
{
public:
    /// \param command the name of the sub-command. \param description what it does, for the help.
    CommandLine(const QString& command, const QString& description);

    /// Declares an option that may be left out.
    void AddOption(const QCommandLineOption& option);
    /// Declares an option that must be given.
    void AddRequiredOption(const QCommandLineOption& option);
    /// Declares an option that may be left out and given more than once.
    void AddRepeatableOption(const QCommandLineOption& option);
    /// Declares the flag `--json`.
    void AddJson();
    /// Declares the option `--schema XSD`, which must be given.
    void AddSchema();
    /// Declares the one file that the sub-command reads.
    void AddFile(const QString& description);
    /// Declares an argument that must follow the one file, and the ones declared before.
    void AddArgument(const QString& name, const QString& description);
    /// Declares an argument that may follow the one file. It is the last.
    void AddOptionalArgument(const QString& name, const QString& description);
    /// Declares one file or more.
    void AddFiles(const QString& description);

    /// Reads the arguments that follow the name of the sub-command.
    ///
    /// \return false if nothing is left to do, because the help was asked for or the use is wrong;
    ///         Status() is what the command ends with then, and all is said.
    bool Parse(const QStringList& arguments);
    ExitStatus Status() const { return m_status; }

    bool IsSet(const QString& option) const { return m_parser.isSet(option); }
    QString Value(const QString& option) const { return m_parser.value(option); }
    QStringList Values(const QString& option) const { return m_parser.values(option); }
    bool Json() const { return IsSet(QStringLiteral("json")); }
    QString Schema() const { return Value(QStringLiteral("schema")); }
    QString File() const { return Files().constFirst(); }
    QStringList Files() const;
    /// The argument of AddArgument() or AddOptionalArgument(), counted from 0; an empty text if it
    /// was left out.
    QString Argument(int index = 0) const
    {
        return m_parser.positionalArguments().value(index + 1);
    }

    /// Complains about a wrong use, in the form in which Parse() does it.
    ExitStatus WrongUse(const QString& text) const;

private:
    QString WhyWrong() const;
    QString WhyWrongOption(const QCommandLineOption& option) const;
    QString WhyWrongFiles() const;
    QString WhyWrongArgument() const;

    QString m_command;
    QCommandLineParser m_parser;
    QList<QCommandLineOption> m_options;
    QStringList m_required;
    QStringList m_repeatable;
    QStringList m_arguments;
    int m_requiredArguments = 0;
    bool m_manyFiles = false;
    ExitStatus m_status = ExitStatus::Good;
};

} // namespace Corvane::Command
