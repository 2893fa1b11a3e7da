// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/CommandRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace Corvane::Test
{

/// The path of the sample station.
inline QString SampleStation()
{
    return QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd");
}

/// Runs a sub-command on a station given as text. \param arguments the sub-command, then what
/// follows the file.
inline CommandResult RunOn(const QByteArray& station, const QStringList& arguments)
{
    const TempFile file(station);
    return RunCommand(QStringList{arguments.constFirst(), file.Path()} + arguments.mid(1));
}

/// The object that a sub-command has answered; empty if its answer is no JSON.
inline QJsonObject JsonOf(const CommandResult& result)
{
    return QJsonDocument::fromJson(result.output.toUtf8()).object();
}

/// The first complaint, without the name of the program and the file.
inline QString ReasonOf(const CommandResult& result)
{
    return result.errors.section(QLatin1Char('\n'), 0, 0).section(QStringLiteral(": "), 2);
}

/// Compares what a wrong use gives. \param arguments are separated by blanks, @ is an empty one.
inline void CompareWrongUse(const QString& arguments, const QString& reason)
{
    QStringList list = arguments.split(QLatin1Char(' '));
    const QString command = list.constFirst();
    list.replaceInStrings(QStringLiteral("@"), QString());

    const CommandResult result = RunCommand(list);

    QCOMPARE(
        result.errors,
        QStringLiteral("corvane: %1: %2\ncorvane: try 'corvane %1 --help'\n").arg(command, reason));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

/// Compares what `--help` gives. \param words must stand in it.
inline void CompareHelp(const QString& command, const QStringList& words)
{
    const CommandResult result = RunCommand({command, QStringLiteral("--help")});

    for (const QString& word : words)
        QVERIFY2(result.output.contains(word), qPrintable(word));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

} // namespace Corvane::Test
