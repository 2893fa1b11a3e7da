// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/command/ExitStatus.h"

#include <corvane/help/SCLIedReferences.h>

#include <QStringList>

#include <functional>

namespace Corvane
{
class SCLDocControl;
class SCLElement;
} // namespace Corvane

namespace Corvane::Command
{

class CommandLine;
class EditOptions;

/// An edit of an IED that reaches other places of its file, in a narrow form (that of SCLHelp) and
/// in a wide one.
struct IedEdit {
    /// What the wide form would change. What it refuses, the narrow form does not do either.
    std::function<SCLIedReferences::Result(SCLElement* ied)> plan;
    std::function<void(SCLElement* ied)> narrow;
    std::function<SCLIedReferences::Result(SCLElement* ied)> wide;
};

/// Declares the options that edits of IEDs have in common besides EditOptions.
void AddIedEditOptions(CommandLine& line);

/// Opens the file, makes an edit in the form that the options ask for, saves the file unless it is a
/// dry run, and shows what was changed. If the form is the narrow one, tells how many further places
/// name the IED.
///
/// \param iedName the name of the IED that is edited; that no IED has it is a wrong use.
ExitStatus RunIedEdit(SCLDocControl& control, const CommandLine& line, const EditOptions& options,
                      const QString& iedName, const IedEdit& edit);

} // namespace Corvane::Command
