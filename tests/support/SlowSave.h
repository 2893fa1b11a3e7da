// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/CommandRun.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QThread>

#include <csignal>
#include <functional>
#include <sys/types.h>
#include <sys/wait.h>
#include <utility>

namespace Corvane::Test
{

/// The temporary folders of saves that stand in a folder.
inline QStringList SaveFolders(const QString& folder)
{
    return QDir(folder).entryList({QStringLiteral(".corvane-save-*")},
                                  QDir::AllEntries | QDir::Hidden | QDir::System);
}

/// A command that saves a large station, brought into the middle of writing it.
///
/// It formats `large.scd` of the folder to an output.
class SlowSave
{
public:
    explicit SlowSave(const CommandFolder& folder, const QString& output,
                      std::function<void()> setUp = {})
        : m_folder(QFileInfo(output).path()), m_process(std::move(setUp))
    {
        const QString input = folder.Path(QStringLiteral("large.scd"));
        if (!QFile::exists(input))
            WriteFile(input, LargeStation());
        m_process.Start(folder.FormatArguments(input, output));
        while (!HasBegunToWrite()) {
            if (m_process.state() == QProcess::NotRunning)
                qFatal("the save ended too early: %s", m_process.readAllStandardError().data());
            // Lets the process be noticed if it ends.
            m_process.waitForFinished(1);
        }
    }
    ~SlowSave()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void Signal(int number) { kill(static_cast<pid_t>(m_process.processId()), number); }
    /// Stops the process, and returns when it stands.
    void Stop()
    {
        siginfo_t info = {};
        Signal(SIGSTOP);
        waitid(P_PID, static_cast<id_t>(m_process.processId()), &info, WSTOPPED);
    }
    CommandResult Finish() { return ResultOf(m_process); }

private:
    bool HasBegunToWrite() const
    {
        const QStringList folders = SaveFolders(m_folder);
        for (const QString& name : folders) {
            QDirIterator files(m_folder + QLatin1Char('/') + name, QDir::Files | QDir::Hidden);
            while (files.hasNext()) {
                files.next();
                if (files.fileInfo().size() > 0)
                    return true;
            }
        }
        return false;
    }

    QString m_folder;
    CommandProcess m_process;
};

} // namespace Corvane::Test
