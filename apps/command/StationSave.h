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

/// Saves a station as SaveFile() saves a file, with a progress bar if it takes long. A schema must be
/// registered.
///
/// What was written is loaded back and compared with the tree in memory. The `id` of the `Header`
/// follows from \a file, also where that is a link.
///
/// \return false if it was not saved; the reason is told then.
bool SaveStation(SCLDocControl& control, SCLDocument& document, const QString& file);

} // namespace Corvane::Command
