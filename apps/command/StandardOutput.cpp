// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StandardOutput.h"

#include "apps/command/Report.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace Corvane::Command
{

namespace
{

constexpr int bufferSize = 1 << 16;

void WaitUntilWritable(int handle)
{
    pollfd waiting{handle, POLLOUT, 0};
    poll(&waiting, 1, -1);
}

} // namespace

void StandardOutput::Write(const QString& text)
{
    Append(text.toUtf8());
}

void StandardOutput::WriteLine(const QString& text)
{
    Append(text.toUtf8() + '\n');
}

void StandardOutput::WriteJson(const QJsonObject& object)
{
    Append(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

ExitStatus StandardOutput::Finish(ExitStatus status)
{
    Flush();
    if (!HasFailed())
        return status;
    Complain(QStringLiteral("cannot write to standard output: ") + SystemText(m_error));
    return ExitStatus::Failed;
}

void StandardOutput::Append(const QByteArray& bytes)
{
    m_buffer += bytes;
    if (m_buffer.size() >= bufferSize)
        Flush();
}

void StandardOutput::Flush()
{
    const char* next = m_buffer.constData();
    const char* const end = next + m_buffer.size();
    while (next != end && !HasFailed()) {
        const ssize_t written = write(STDOUT_FILENO, next, static_cast<std::size_t>(end - next));
        if (written >= 0)
            next += written;
        else if (errno == EAGAIN)
            WaitUntilWritable(STDOUT_FILENO);
        else if (errno != EINTR)
            m_error = errno;
    }
    m_buffer.clear();
}

} // namespace Corvane::Command
