// SPDX-License-Identifier: Apache-2.0
// corvane-bench-edits: what it costs to carry an edit of an IED to what refers to it.
//
// Workloads, for each station file, once open:
//   rename       SCLHelp::HandleUpdateForIEDName for an IED that has a new name
//   wide rename  SCLIedReferences::Rename of that IED
//   delete       SCLHelp::HandleDeleteForIED for it
// Figures: the time per element of the largest file against that of the smallest, for each.
#include "support/GrowthRun.h"

#include <corvane/help/SCLHelp.h>
#include <corvane/help/SCLIedReferences.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_growthTarget{1.3, 1.1};

void Rename(SCLElement* ied, const QString& name)
{
    const QString oldName = ied->GetAttribute("name");
    ied->SetAttribute("name", name, false);
    SCLHelp::HandleUpdateForIEDName(oldName, ied);
}

void RenameWidely(SCLElement* ied, const QString& name)
{
    if (SCLIedReferences::Rename(ied, name).changes.isEmpty()) {
        Fatal("a rename was refused");
    }
}

void Round(SCLElement* root, const GrowthRun::Timer& time)
{
    SCLElement* ied = root->FindChild("IED", root->FindChildByType("IED", false).size() / 2);
    time("rename", [&] { Rename(ied, "Fresh1"); });
    time("wide rename", [&] { RenameWidely(ied, "Fresh2"); });
    const auto inputs = root->FindChildByType("ExtRef", true).size();
    time("delete", [&] { SCLHelp::HandleDeleteForIED(ied); });
    if (root->FindChildByType("ExtRef", true).size() == inputs) {
        Fatal("nothing was subscribed to the IED");
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures renaming and deleting IEDs.");
    Figures figures("Edits");
    GrowthRun(session, Round).Report(figures, g_growthTarget);
    figures.Print();
    return 0;
}
