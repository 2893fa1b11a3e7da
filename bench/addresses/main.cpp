// SPDX-License-Identifier: Apache-2.0
// corvane-bench-addresses: what it costs to keep the multicast addresses of a station in order.
//
// Workloads, for each station file, once open:
//   nothing to change            SCLHelp::UpdateChildForConnectedAP for every ConnectedAP
//   audit                        one SCLAddressAudit
//   half of the GSEs exchanged   the update after every second control block got another name: half
//                                of the entries go and come anew
//   all entries made             the update after all GSE and SMV were taken out
// Figures: the time per element of the largest file against that of the smallest, for each.
#include "support/GrowthRun.h"

#include <corvane/help/SCLAddressAudit.h>
#include <corvane/help/SCLHelp.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_growthTarget{1.3, 1.1};

QList<SCLElement*> ConnectedAPs(SCLElement* root)
{
    return root->GetFirstChild("Communication")->FindChildByType("ConnectedAP", true);
}

void Update(const QList<SCLElement*>& connectedAPs)
{
    for (SCLElement* connectedAP : connectedAPs) {
        if (!SCLHelp::UpdateChildForConnectedAP(connectedAP, false)) {
            Fatal("a ConnectedAP leads nowhere");
        }
    }
}

void TakeOutEntries(const QList<SCLElement*>& connectedAPs)
{
    for (SCLElement* connectedAP : connectedAPs) {
        for (const char* tag : {"GSE", "SMV"}) {
            const QList<SCLElement*> entries = connectedAP->FindChildByType(tag, false);
            for (SCLElement* entry : entries) {
                connectedAP->RemoveChild(entry, false);
            }
        }
    }
}

void RenameEverySecondControl(SCLElement* root)
{
    const QList<SCLElement*> controls = root->FindChildByType("GSEControl", true);
    for (int i = 0; i < controls.size(); i += 2) {
        controls[i]->SetAttribute("name", controls[i]->GetAttribute("name") + "x", false);
    }
}

void Round(SCLElement* root, const GrowthRun::Timer& time)
{
    const QList<SCLElement*> connectedAPs = ConnectedAPs(root);
    time("nothing to change", [&] { Update(connectedAPs); });
    time("audit", [&] { SCLAddressAudit audit(root); });
    RenameEverySecondControl(root);
    time("half of the GSEs exchanged", [&] { Update(connectedAPs); });
    TakeOutEntries(connectedAPs);
    time("all entries made", [&] { Update(connectedAPs); });
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures updating and auditing addresses.");
    Figures figures("Addresses");
    GrowthRun(session, Round).Report(figures, g_growthTarget);
    figures.Print();
    return 0;
}
