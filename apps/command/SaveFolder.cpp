// SPDX-License-Identifier: Apache-2.0
#include "apps/command/SaveFolder.h"

#include "apps/command/Interrupt.h"
#include "apps/command/Report.h"

#include <QRegularExpression>
#include <QVector>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>

namespace Corvane::Command
{

namespace
{

constexpr mode_t folderMode = S_IRWXU;

FileHandle OpenFolder(int parent, const QByteArray& name)
{
    return FileHandle(
        openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// The names in a folder but "." and ".."; at most `most` of them, if that is not negative.
QVector<QByteArray> NamesIn(int folder, int most)
{
    QVector<QByteArray> names;
    FileHandle listed = OpenFolder(folder, ".");
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(
        listed.IsOpen() ? fdopendir(listed.Get()) : nullptr,
        [](DIR* directory) { return directory == nullptr ? 0 : closedir(directory); });
    if (!stream)
        return names;
    listed.Release();
    while (const dirent* entry = readdir(stream.get())) {
        const QByteArray name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        if (names.size() == most)
            break;
        names.append(name);
    }
    return names;
}

bool IsLeftoverName(const QByteArray& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\.corvane-save-[0-9]{1,10}(-[0-9]{1,3})?\\z"));
    return pattern.match(QString::fromLatin1(name)).hasMatch();
}

bool IsOwnFolder(int folder)
{
    struct stat state = {};
    return fstat(folder, &state) == 0 && state.st_uid == geteuid() &&
           (state.st_mode & ACCESSPERMS) == folderMode;
}

bool IsPlainFile(int folder, const QByteArray& name)
{
    struct stat state = {};
    return fstatat(folder, name.constData(), &state, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(state.st_mode) && state.st_nlink == 1;
}

bool IsNameOf(int parent, const QByteArray& name, int folder)
{
    struct stat named = {};
    struct stat opened = {};
    return fstatat(parent, name.constData(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           fstat(folder, &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

void ClearLeftover(int parent, const QByteArray& name)
{
    const FileHandle folder = OpenFolder(parent, name);
    if (!folder.IsOpen() || !IsOwnFolder(folder.Get()) || flock(folder.Get(), LOCK_EX | LOCK_NB))
        return;
    const QVector<QByteArray> files = NamesIn(folder.Get(), 2);
    if (files.size() > 1 || (files.size() == 1 && !IsPlainFile(folder.Get(), files.constFirst())))
        return;
    if (!files.isEmpty())
        unlinkat(folder.Get(), files.constFirst().constData(), 0);
    unlinkat(parent, name.constData(), AT_REMOVEDIR);
}

QByteArray CandidateName(int attempt)
{
    const QByteArray name = ".corvane-save-" + QByteArray::number(getpid());
    return attempt == 0 ? name : name + '-' + QByteArray::number(attempt);
}

} // namespace

SaveFolder::~SaveFolder()
{
    if (!m_handle.IsOpen())
        return;
    const Interrupt::Delay delay;
    Interrupt::Release();
    unlinkat(m_handle.Get(), m_fileName.constData(), 0);
    unlinkat(m_parent, m_name.constData(), AT_REMOVEDIR);
}

void SaveFolder::ClearLeftovers(int parent)
{
    const QVector<QByteArray> names = NamesIn(parent, -1);
    for (const QByteArray& name : names) {
        if (IsLeftoverName(name))
            ClearLeftover(parent, name);
    }
}

QString SaveFolder::Make(int parent, const QByteArray& fileName)
{
    m_parent = parent;
    m_fileName = fileName;
    const Interrupt::Delay delay;
    const QString reason = MakeLocked(parent);
    if (!reason.isEmpty())
        return QStringLiteral("cannot make a temporary folder beside it: ") + reason;
    Interrupt::Guard(parent, m_name, m_handle.Get(), m_fileName);
    return MakeFile();
}

QString SaveFolder::MakeLocked(int parent)
{
    constexpr int attempts = 1000;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const QByteArray name = CandidateName(attempt);
        if (mkdirat(parent, name.constData(), folderMode) != 0) {
            if (errno == EEXIST)
                continue;
            return SystemText(errno);
        }
        FileHandle handle = OpenFolder(parent, name);
        const int openError = errno;
        // Until it is locked, another process may take the folder for a leftover and remove it;
        // then the next name is tried. A file system without locks is no obstacle: nothing can be
        // locked for removal there either.
        if (!handle.IsOpen() && openError != ENOENT) {
            unlinkat(parent, name.constData(), AT_REMOVEDIR);
            return SystemText(openError);
        }
        const bool taken = !handle.IsOpen() ||
                           (flock(handle.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) ||
                           !IsNameOf(parent, name, handle.Get());
        if (taken)
            continue;
        m_name = name;
        m_handle = std::move(handle);
        return {};
    }
    return SystemText(EEXIST);
}

QString SaveFolder::MakeFile() const
{
    const FileHandle file(openat(m_handle.Get(), m_fileName.constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    return file.IsOpen() ? QString()
                         : QStringLiteral("cannot make a temporary file: ") + SystemText(errno);
}

} // namespace Corvane::Command
