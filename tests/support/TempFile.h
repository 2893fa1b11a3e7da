// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QtGlobal>

namespace Corvane::Test
{

inline void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// The bytes of a file; null if it cannot be opened.
inline QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

/// A folder of its own that goes when the object goes.
class TempFolder
{
public:
    TempFolder()
    {
        if (!m_dir.isValid())
            qFatal("cannot make a temporary folder");
    }

    QString Path() const { return m_dir.path(); }
    /// The path of a file in the folder, whether there is one or not.
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    /// Writes a file into the folder and returns its path.
    QString Write(const QString& name, const QByteArray& bytes) const
    {
        WriteFile(Path(name), bytes);
        return Path(name);
    }

private:
    QTemporaryDir m_dir;
};

/// A file of given bytes, in a folder of its own, that goes when the object goes.
class TempFile
{
public:
    explicit TempFile(const QByteArray& bytes, const QString& name = QStringLiteral("file.scd"))
        : m_path(m_folder.Write(name, bytes))
    {
    }

    QString Path() const { return m_path; }

private:
    TempFolder m_folder;
    QString m_path;
};

} // namespace Corvane::Test
