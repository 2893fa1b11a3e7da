// SPDX-License-Identifier: Apache-2.0
#include "apps/command/SaveTarget.h"

#include "apps/command/FileCheck.h"
#include "apps/command/Interrupt.h"
#include "apps/command/Report.h"
#include "apps/command/SaveFolder.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>

namespace Corvane::Command
{

namespace
{

constexpr uid_t keepUser = static_cast<uid_t>(-1);
constexpr mode_t groupBits = S_IRWXG;

QByteArray FolderOf(const QByteArray& path)
{
    const auto slash = path.lastIndexOf('/');
    if (slash < 0)
        return ".";
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

QByteArray NameOf(const QByteArray& path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

// The place that a chain of links ends at, whether something stands there or not.
QByteArray WithoutLinks(QByteArray path)
{
    constexpr int longestChain = 40;
    for (int link = 0; link < longestChain; ++link) {
        std::array<char, PATH_MAX> buffer;
        const ssize_t length = readlink(path.constData(), buffer.data(), buffer.size());
        if (length < 0)
            return path;
        const QByteArray next(buffer.data(), static_cast<int>(length));
        path = next.startsWith('/') ? next : FolderOf(path) + '/' + next;
    }
    return path;
}

bool IsSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool IsUnchanged(const struct stat& a, const struct stat& b)
{
    return IsSame(a, b) && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec && a.st_nlink == b.st_nlink;
}

bool IsFreeOr(bool exists, int folder, const QByteArray& name, struct stat& state)
{
    if (fstatat(folder, name.constData(), &state, AT_SYMLINK_NOFOLLOW) == 0)
        return exists;
    return !exists && errno == ENOENT;
}

} // namespace

QString SaveTarget::Find(const QString& file)
{
    const QByteArray path = QFile::encodeName(file);
    m_givenName = NameOf(path);
    if (m_givenName.isEmpty())
        return QStringLiteral("names a folder, not a file");
    const QString reason = LookAt(path);
    return reason.isEmpty() ? OpenFolder(WithoutLinks(path)) : reason;
}

QString SaveTarget::LookAt(const QByteArray& path)
{
    m_exists = stat(path.constData(), &m_state) == 0;
    if (!m_exists)
        return errno == ENOENT ? QString() : SystemText(errno);
    QString kind = WhyNotRegular(m_state);
    if (!kind.isEmpty())
        return kind;
    if (faccessat(AT_FDCWD, path.constData(), W_OK, AT_EACCESS) != 0)
        return QStringLiteral("cannot be replaced: ") + SystemText(errno);
    if (m_state.st_nlink > 1)
        return QStringLiteral("cannot be replaced: it has %1 hard links, and the others would keep "
                              "the old content")
            .arg(m_state.st_nlink);
    return {};
}

QString SaveTarget::OpenFolder(const QByteArray& path)
{
    m_folderPath = FolderOf(path);
    m_name = NameOf(path);
    // What goes to the library passes through QString.
    if (QFile::encodeName(QFile::decodeName(m_folderPath)) != m_folderPath)
        return QStringLiteral("stands in a folder whose name is not UTF-8");
    m_folder = FileHandle(open(m_folderPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_folder.IsOpen())
        return QStringLiteral("cannot open its folder: ") + SystemText(errno);
    struct stat named = {};
    if (!IsFreeOr(m_exists, m_folder.Get(), m_name, named) || (m_exists && !IsSame(named, m_state)))
        return QStringLiteral("its links lead to no definite place");
    return {};
}

QString SaveTarget::PassPermissions(int newFile) const
{
    if (!m_exists)
        return {};
    // Changing the owner is for the privileged, and it clears some bits of the mode. What the old
    // group was allowed is not for another one.
    const bool owned = fchown(newFile, m_state.st_uid, m_state.st_gid) == 0;
    const bool grouped = owned || fchown(newFile, keepUser, m_state.st_gid) == 0;
    const mode_t kept = owned ? ALLPERMS : grouped ? ACCESSPERMS : ACCESSPERMS & ~groupBits;
    if (fchmod(newFile, m_state.st_mode & kept) != 0)
        return QStringLiteral("cannot keep its permissions: ") + SystemText(errno);
    return {};
}

bool SaveTarget::IsAsFound() const
{
    struct stat now = {};
    return IsFreeOr(m_exists, m_folder.Get(), m_name, now) &&
           (!m_exists || IsUnchanged(now, m_state));
}

QString SaveTarget::Replace(const SaveFolder& from) const
{
    const Interrupt::Delay delay;
    if (!IsAsFound())
        return QStringLiteral("was changed by someone else meanwhile");
    if (renameat(from.Get(), from.FileName().constData(), m_folder.Get(), m_name.constData()) != 0)
        return QStringLiteral("cannot be replaced: ") + SystemText(errno);
    Interrupt::Release();
    return {};
}

} // namespace Corvane::Command
