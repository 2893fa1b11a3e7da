// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StationSave.h"

#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"
#include "apps/command/SaveFolder.h"
#include "apps/command/SaveTarget.h"
#include "apps/command/StationCompare.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>

#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>

namespace Corvane::Command
{

namespace
{

// Saving does not say why it came to nothing. An attempt to write more tells it, if the disk is
// full or the file too large.
QString WhyNotWritable(int file)
{
    const std::array<char, 4096> block = {};
    if (lseek(file, 0, SEEK_END) < 0 || write(file, block.data(), block.size()) < 0)
        return SystemText(errno);
    return {};
}

QString WhyNotReadBack(SCLDocument& document, const QString& path)
{
    SCLDocument loaded;
    if (!loaded.Open(path))
        return QStringLiteral("what was written cannot be read back");
    const QString difference = FirstDifference(document.Root(), loaded.Root());
    return difference.isEmpty()
               ? QString()
               : QStringLiteral("what was written differs from the station at ") + difference;
}

QString WriteAndCheck(SCLDocument& document, const SaveTarget& target, const SaveFolder& folder)
{
    const QString path =
        QFile::decodeName(target.FolderPath() + '/' + folder.Name() + '/' + folder.FileName());
    if (!document.SaveAs(path, false, false))
        return QStringLiteral("cannot write a temporary file");
    const FileHandle file(
        openat(folder.Get(), folder.FileName().constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (!file.IsOpen())
        return SystemText(errno);
    const QString reason = WhyNotReadBack(document, path);
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

QString Save(SCLDocument& document, const QString& file)
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
    QString unwritten = WriteAndCheck(document, target, folder);
    if (!unwritten.isEmpty())
        return unwritten;
    const QString unreplaced = target.Replace(folder);
    return unreplaced.isEmpty() ? SyncFolder(target.Folder()) : unreplaced;
}

} // namespace

bool SaveStation(SCLDocControl& control, SCLDocument& document, const QString& file)
{
    QString reason;
    {
        const ProgressBar bar(control);
        reason = Save(document, file);
    }
    if (!reason.isEmpty())
        Complain(file, reason);
    return reason.isEmpty();
}

} // namespace Corvane::Command
