// SPDX-License-Identifier: Apache-2.0
#include "apps/command/FileCheck.h"

#include "apps/command/FileHandle.h"
#include "apps/command/Report.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <fcntl.h>

namespace Corvane::Command
{

namespace
{

QString KindOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return QStringLiteral("a directory");
    case S_IFIFO:
        return QStringLiteral("a FIFO");
    case S_IFSOCK:
        return QStringLiteral("a socket");
    case S_IFCHR:
    case S_IFBLK:
        return QStringLiteral("a device");
    default:
        return QStringLiteral("of an unknown kind");
    }
}

} // namespace

QString WhyNotRegular(const struct stat& state)
{
    return S_ISREG(state.st_mode)
               ? QString()
               : QStringLiteral("is no regular file but ") + KindOf(state.st_mode);
}

QString WhyUnreadable(const QString& file)
{
    const QByteArray path = QFile::encodeName(file);
    struct stat state = {};
    if (stat(path.constData(), &state) != 0)
        return SystemText(errno);
    // Opening can do things to a device, and by the time of opening the name may stand for another
    // file: hence both checks.
    QString before = WhyNotRegular(state);
    if (!before.isEmpty())
        return before;
    const FileHandle handle(open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!handle.IsOpen() || fstat(handle.Get(), &state) != 0)
        return SystemText(errno);
    return WhyNotRegular(state);
}

} // namespace Corvane::Command
