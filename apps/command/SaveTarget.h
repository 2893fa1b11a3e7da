// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/FileHandle.h"

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

namespace Corvane::Command
{

class SaveFolder;

/// The place at which a file is to be saved: a regular file that is to be replaced, or a name that
/// is free. Symbolic links are followed to the place that they stand for.
class SaveTarget
{
public:
    /// Looks at the place and changes nothing.
    ///
    /// \return why no file may be saved there, or an empty text.
    QString Find(const QString& file);

    /// The folder that holds the file, open, and its path.
    int Folder() const { return m_folder.Get(); }
    QByteArray FolderPath() const { return m_folderPath; }
    /// The file's name as it was given, which is that of the link if it is one.
    QByteArray GivenName() const { return m_givenName; }

    /// Gives an open new file the permissions and, as far as allowed, the owner of the old one.
    ///
    /// \return why it failed, or an empty text.
    QString PassPermissions(int newFile) const;
    /// Puts the file of \a from in the place of the old one, at one stroke.
    ///
    /// \return why it failed, or an empty text. The old file is whole then.
    QString Replace(const SaveFolder& from) const;

private:
    QString LookAt(const QByteArray& path);
    QString OpenFolder(const QByteArray& path);
    bool IsAsFound() const;

    FileHandle m_folder;
    QByteArray m_folderPath;
    QByteArray m_name;
    QByteArray m_givenName;
    bool m_exists = false;
    struct stat m_state = {};
};

} // namespace Corvane::Command
