// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/EditOptions.h"
#include "apps/command/IedEdit.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

namespace Corvane::Command
{

namespace
{

void DeleteNarrowly(SCLElement* ied)
{
    SCLHelp::HandleDeleteForIED(ied);
    ied->GetParent(QString())->RemoveChild(ied, true);
}

} // namespace

ExitStatus RunDeleteIed(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("delete-ied"),
        QStringLiteral("Removes an IED with what its network, inputs and report "
                       "clients have of it, and with --wide everything that names it."));
    const EditOptions options(line);
    AddIedEditOptions(line);
    line.AddFile(QStringLiteral("The station file to read."));
    line.AddArgument(QStringLiteral("NAME"), QStringLiteral("The name of the IED."));
    if (!line.Parse(arguments))
        return line.Status();
    if (!options.Check())
        return ExitStatus::Failed;
    return RunIedEdit(control, line, options, line.Argument(0),
                      {[](SCLElement* ied) { return SCLIedReferences::PlanDelete(ied); },
                       DeleteNarrowly,
                       [](SCLElement* ied) { return SCLIedReferences::Delete(ied); }});
}

} // namespace Corvane::Command
