// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane
{
class SCLDocControl;
class SCLDocument;
} // namespace Corvane

namespace Corvane::Command
{

/// Saves a station so that at any moment the old file or the new one stands there whole, with a
/// progress bar if it takes long. A schema must be registered.
///
/// The document is written into a SaveFolder, loaded back and compared with the tree in memory,
/// brought to the disk, and only then put in the place of the old file. A symbolic link stays one,
/// and the file that it leads to is replaced. Permissions are kept, and the owner where that is
/// allowed. The `id` of the `Header` follows from \a file, also where that is a link.
///
/// \return false if it was not saved; the reason is told then.
bool SaveStation(SCLDocControl& control, SCLDocument& document, const QString& file);

} // namespace Corvane::Command
