// SPDX-License-Identifier: Apache-2.0
#include "apps/command/FileSave.h"

#include "apps/command/Report.h"
#include "apps/command/SaveFolder.h"
#include "apps/command/SaveTarget.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>

namespace Corvane::Command
{

namespace
{

using Write = std::function<QString(const QString& path)>;

// Saving does not say why it came to nothing. An attempt to write more tells it, if the disk is
// full or the file too large.
QString WhyNotWritable(int file)
{
    const std::array<char, 4096> block = {};
    if (lseek(file, 0, SEEK_END) < 0 || write(file, block.data(), block.size()) < 0)
        return SystemText(errno);
    return {};
}

QString WriteAndCheck(const Write& writeFile, const SaveTarget& target, const SaveFolder& folder)
{
    const QString reason = writeFile(
        QFile::decodeName(target.FolderPath() + '/' + folder.Name() + '/' + folder.FileName()));
    const FileHandle file(
        openat(folder.Get(), folder.FileName().constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (!file.IsOpen())
        return SystemText(errno);
    if (!reason.isEmpty()) {
        const QString cause = WhyNotWritable(file.Get());
        return cause.isEmpty() ? reason : QStringLiteral("cannot be written: ") + cause;
    }
    QString denied = target.PassPermissions(file.Get());
    if (!denied.isEmpty())
        return denied;
    return fsync(file.Get()) == 0 ? QString()
                                  : QStringLiteral("cannot be written: ") + SystemText(errno);
}

// Some file systems cannot do this for a folder and say so with EINVAL.
QString SyncFolder(int folder)
{
    if (fsync(folder) == 0 || errno == EINVAL)
        return {};
    return QStringLiteral("was replaced, but its folder may not be on the disk: ") +
           SystemText(errno);
}

QString WriteAndReadBack(const QByteArray& bytes, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("cannot write a temporary file");
    if (file.write(bytes) != bytes.size() || !file.flush())
        return QStringLiteral("cannot be written");
    file.close();
    const bool isBack = file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
    return isBack ? QString() : QStringLiteral("what was written cannot be read back");
}

} // namespace

QString SaveFile(const QString& file, const Write& write)
{
    SaveTarget target;
    QString refused = target.Find(file);
    if (!refused.isEmpty())
        return refused;
    SaveFolder::ClearLeftovers(target.Folder());
    SaveFolder folder;
    QString unmade = folder.Make(target.Folder(), target.GivenName());
    if (!unmade.isEmpty())
        return unmade;
    QString unwritten = WriteAndCheck(write, target, folder);
    if (!unwritten.isEmpty())
        return unwritten;
    const QString unreplaced = target.Replace(folder);
    return unreplaced.isEmpty() ? SyncFolder(target.Folder()) : unreplaced;
}

QString SaveBytes(const QString& file, const QByteArray& bytes)
{
    return SaveFile(file, [&bytes](const QString& path) { return WriteAndReadBack(bytes, path); });
}

} // namespace Corvane::Command
