// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/ExitStatus.h"

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QJsonObject;
QT_END_NAMESPACE

namespace Corvane::Command
{

/// Standard output, with its errors noticed: a closed pipe and a full disk must not pass for a
/// complete answer.
class StandardOutput
{
public:
    StandardOutput() = default;

    /// Appends text as UTF-8. After an error nothing more is written.
    void Write(const QString& text);
    /// The same with a line end.
    void WriteLine(const QString& text);
    /// Appends an object on one line, without a line end.
    void WriteJson(const QJsonObject& object);

    /// Whether a write has failed: a long answer may be given up then.
    bool HasFailed() const { return m_error != 0; }
    /// Writes what is left. To be called at the end of an answer.
    ///
    /// \return \a status, or ExitStatus::Failed with a complaint if not all could be written.
    ExitStatus Finish(ExitStatus status);

private:
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    void Append(const QByteArray& bytes);
    void Flush();

    QByteArray m_buffer;
    int m_error = 0;
};

} // namespace Corvane::Command
