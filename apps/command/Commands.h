// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/ExitStatus.h"

#include <QStringList>

namespace Corvane
{
class SCLDocControl;
}

namespace Corvane::Command
{

/// Runs the sub-command that the first of \a arguments names with the rest of them, or answers
/// `--help` and `--version`.
///
/// \param arguments those of the program, without its own name.
ExitStatus Run(SCLDocControl& control, const QStringList& arguments);

} // namespace Corvane::Command
