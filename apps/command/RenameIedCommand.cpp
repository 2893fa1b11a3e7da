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

void RenameNarrowly(SCLElement* ied, const QString& newName)
{
    const QString attribute = QStringLiteral("name");
    const QString oldName = ied->GetAttribute(attribute);
    ied->SetAttribute(attribute, newName, true);
    SCLHelp::HandleUpdateForIEDName(oldName, ied);
}

} // namespace

ExitStatus RunRenameIed(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("rename-ied"),
                     QStringLiteral("Gives an IED a new name, also where its network, inputs and "
                                    "report clients name it, and with --wide everywhere."));
    const EditOptions options(line);
    AddIedEditOptions(line);
    line.AddFile(QStringLiteral("The station file to read."));
    line.AddArgument(QStringLiteral("OLD"), QStringLiteral("The name of the IED."));
    line.AddArgument(QStringLiteral("NEW"), QStringLiteral("Its new name."));
    if (!line.Parse(arguments))
        return line.Status();
    if (!options.Check())
        return ExitStatus::Failed;
    const QString newName = line.Argument(1);
    return RunIedEdit(
        control, line, options, line.Argument(0),
        {[&newName](SCLElement* ied) { return SCLIedReferences::PlanRename(ied, newName); },
         [&newName](SCLElement* ied) { RenameNarrowly(ied, newName); },
         [&newName](SCLElement* ied) { return SCLIedReferences::Rename(ied, newName); }});
}

} // namespace Corvane::Command
