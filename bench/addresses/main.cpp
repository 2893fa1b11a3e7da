// SPDX-License-Identifier: Apache-2.0
// corvane-bench-addresses: what it costs to keep the multicast addresses of a station in order.
//
// Workloads, for each station file, once open:
//   keep    SCLHelp::UpdateChildForConnectedAP for every ConnectedAP, with nothing to change
//   create  the same after all GSE and SMV were taken out
//   mend    the same after every second control block got another name: half of the entries go
//           and come anew
//   audit   one SCLAddressAudit
// Figures: the time per element of the largest file against that of the smallest, for each.
#include "support/Memory.h"
#include "support/Session.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/help/SCLAddressAudit.h>
#include <corvane/help/SCLHelp.h>

#include <QCoreApplication>

#include <functional>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_growthTarget{1.3, 1.1};

struct Times {
    Series keep;
    Series create;
    Series mend;
    Series audit;
};

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

void Round(Library& library, const StationFile& file, Times& times)
{
    SCLDocument* document = library.Open(file);
    SCLElement* root = document->Root();
    const QList<SCLElement*> connectedAPs = ConnectedAPs(root);
    const double elements = root->GetChildCount(true);
    const auto time = [&](Series& series, const std::function<void()>& work) {
        CoolCaches();
        series.Add(Seconds(work) / elements * 1e9);
    };
    time(times.keep, [&] { Update(connectedAPs); });
    time(times.audit, [&] { SCLAddressAudit audit(root); });
    RenameEverySecondControl(root);
    time(times.mend, [&] { Update(connectedAPs); });
    TakeOutEntries(connectedAPs);
    time(times.create, [&] { Update(connectedAPs); });
    library.Close(document);
}

void AddFigures(Figures& figures, const Session& session, const QVector<Times>& times,
                const QString& what, Series Times::*series)
{
    for (int file = 0; file < times.size(); ++file) {
        figures.Add(what + ", per element", session.files[file].Label(),
                    (times[file].*series).Median(), "ns");
    }
    if (times.size() > 1) {
        figures.Add(what + " per element, largest against smallest", QString(),
                    MedianRatio(times.last().*series, times.first().*series), g_growthTarget);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures updating and auditing addresses.");
    Library library(session);
    QVector<Times> times(static_cast<int>(session.files.size()));
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < times.size(); ++file) {
            Round(library, session.files[file], times[file]);
        }
    }
    Figures figures("Addresses");
    AddFigures(figures, session, times, "nothing to change", &Times::keep);
    AddFigures(figures, session, times, "all entries made", &Times::create);
    AddFigures(figures, session, times, "half of the GSEs exchanged", &Times::mend);
    AddFigures(figures, session, times, "audit", &Times::audit);
    figures.Print();
    return 0;
}
