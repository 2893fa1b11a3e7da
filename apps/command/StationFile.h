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

/// Opens a station file, with a progress bar if it takes long.
///
/// \return the document, owned by \a control; null if it cannot be read. The reason is told then,
///         with row and column if the file is no XML or no SCL file.
SCLDocument* OpenStation(SCLDocControl& control, const QString& file);

/// Registers the SCL schema. Without one, a saved file would have no lawful order: a sub-command
/// that writes calls this first.
///
/// \return false if the file is none; the reason is told then.
bool RegisterSclSchema(SCLDocControl& control, const QString& file);

} // namespace Corvane::Command
