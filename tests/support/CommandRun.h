// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/SmallStation.h"
#include "tests/support/TempFile.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>
#include <sys/prctl.h>
#include <utility>

namespace Corvane::Test
{

inline QString CommandPath()
{
    return QStringLiteral(CORVANE_BIN_DIR "/corvane");
}

/// A process of the `corvane` command, in which something can be set up before the command begins:
/// between fork and exec, where only system calls are allowed.
class CommandProcess : public QProcess
{
public:
    explicit CommandProcess(std::function<void()> setUp = {}) : m_setUp(std::move(setUp))
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        if (m_setUp)
            setChildProcessModifier(m_setUp);
#endif
    }

    void Start(const QStringList& arguments)
    {
        start(CommandPath(), arguments);
    }
    /// Ends the test program if the command hangs.
    void Finish()
    {
        constexpr int patienceInMs = 120000;
        if (state() != NotRunning && !waitForFinished(patienceInMs))
            qFatal("the command does not end: %s", qPrintable(arguments().join(QLatin1Char(' '))));
    }

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
protected:
    void setupChildProcess() override
    {
        if (m_setUp)
            m_setUp();
    }
#endif

private:
    std::function<void()> m_setUp;
};

/// How a run of the command ended; a crash has the status -1.
struct CommandResult {
    int status;
    QString output;
    QString errors;
};

inline CommandResult ResultOf(CommandProcess& process)
{
    process.Finish();
    const bool ended =
        process.exitStatus() == QProcess::NormalExit && process.error() != QProcess::FailedToStart;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline CommandResult RunCommand(const QStringList& arguments, std::function<void()> setUp = {})
{
    CommandProcess process(std::move(setUp));
    process.Start(arguments);
    return ResultOf(process);
}

/// For CommandProcess: takes from the superuser what makes permissions meaningless. Others have
/// nothing to lose.
inline void RespectPermissions()
{
    constexpr unsigned long overrideAll = 1;  // CAP_DAC_OVERRIDE
    constexpr unsigned long overrideRead = 2; // CAP_DAC_READ_SEARCH
    prctl(PR_CAPBSET_DROP, overrideAll, 0, 0, 0);
    prctl(PR_CAPBSET_DROP, overrideRead, 0, 0, 0);
}

/// A folder with the small schema, in which commands run.
class CommandFolder : public TempFolder
{
public:
    CommandFolder() : m_schema(Write(QStringLiteral("small.xsd"), SmallSchema())) {}

    QString Schema() const { return m_schema; }
    QStringList FormatArguments(const QString& input, const QString& output) const
    {
        return {QStringLiteral("format"),
                QStringLiteral("--schema"),
                m_schema,
                input,
                QStringLiteral("-o"),
                output};
    }

private:
    QString m_schema;
};

} // namespace Corvane::Test
