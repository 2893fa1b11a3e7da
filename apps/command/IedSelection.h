// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

class CommandLine;

/// Declares the option `--ied NAME`, which may be repeated.
void AddIedOption(CommandLine& line);

/// The IEDs of the names that were given, or all if there was none, in the order of the file. Of
/// several with one name all are taken.
///
/// \return false if a name is that of no IED; this is told as a wrong use then.
bool SelectIeds(const CommandLine& line, SCLElement* root, QList<SCLElement*>& ieds);

} // namespace Corvane::Command
