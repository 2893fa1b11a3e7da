// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/FileHandle.h"

#include <QByteArray>
#include <QString>

namespace Corvane::Command
{

/// The temporary folder in which a new version of a file is written before it takes the place of
/// the old one. It stands beside that file, so that the two are on one file system.
///
/// Its name is `.corvane-save-` with the process id, and `-` with a number where that is taken. It
/// holds one file at most, and is locked for as long as its process lives: by this a folder that a
/// killed process has left is told from one in use.
class SaveFolder
{
public:
    SaveFolder() = default;
    /// Removes the folder and the file in it.
    ~SaveFolder();

    /// Removes what killed processes have left in the folder \a parent. Only what looks exactly as
    /// a SaveFolder does and belongs to this user is removed; no symbolic link is followed.
    static void ClearLeftovers(int parent);

    /// Makes the folder, and in it an empty file, which an interrupt removes too.
    ///
    /// \param parent an open folder, which must stay open as long as this object lives.
    /// \return why it failed, or an empty text.
    QString Make(int parent, const QByteArray& fileName);

    /// The open folder.
    int Get() const { return m_handle.Get(); }
    QByteArray Name() const { return m_name; }
    QByteArray FileName() const { return m_fileName; }

private:
    SaveFolder(const SaveFolder&) = delete;
    SaveFolder& operator=(const SaveFolder&) = delete;

    QString MakeLocked(int parent);
    QString MakeFile() const;

    int m_parent = -1;
    QByteArray m_name;
    QByteArray m_fileName;
    FileHandle m_handle;
};

} // namespace Corvane::Command
