// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace Corvane::Command
{

/// Saves a file so that at any moment the old one or the new one stands there, whole.
///
/// The new one is written into a SaveFolder, read back, brought to the disk, and only then put in
/// the place of the old one. A symbolic link stays one, and the file that it leads to is replaced.
/// Permissions are kept, and the owner where that is allowed.
///
/// \param write writes the file of the path that it is given, and reads it back. It returns why that
///        file is not what was meant, or an empty text.
/// \return why it was not saved, or an empty text.
QString SaveFile(const QString& file, const std::function<QString(const QString& path)>& write);

/// Saves \a bytes in this way.
QString SaveBytes(const QString& file, const QByteArray& bytes);

} // namespace Corvane::Command
