// SPDX-License-Identifier: Apache-2.0
// corvane-bench-edits: what it costs to carry an edit of an IED to what refers to it.
//
// Workloads, for each station file, once open:
//   rename       SCLHelp::HandleUpdateForIEDName for an IED that has a new name
//   wide rename  SCLIedReferences::Rename of that IED
//   delete       SCLHelp::HandleDeleteForIED for it
// Figures: the time per element of the largest file against that of the smallest, for each.
#include "support/Memory.h"
#include "support/Session.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/help/SCLHelp.h>
#include <corvane/help/SCLIedReferences.h>

#include <QCoreApplication>

#include <functional>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_growthTarget{1.3, 1.1};

struct Times {
    Series rename;
    Series wideRename;
    Series remove;
};

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

void Round(Library& library, const StationFile& file, Times& times)
{
    SCLDocument* document = library.Open(file);
    SCLElement* root = document->Root();
    SCLElement* ied = root->FindChild("IED", root->FindChildByType("IED", false).size() / 2);
    const double elements = root->GetChildCount(true);
    const auto time = [&](Series& series, const std::function<void()>& work) {
        CoolCaches();
        series.Add(Seconds(work) / elements * 1e9);
    };
    time(times.rename, [&] { Rename(ied, "Fresh1"); });
    time(times.wideRename, [&] { RenameWidely(ied, "Fresh2"); });
    const auto inputs = root->FindChildByType("ExtRef", true).size();
    time(times.remove, [&] { SCLHelp::HandleDeleteForIED(ied); });
    if (root->FindChildByType("ExtRef", true).size() == inputs) {
        Fatal("nothing was subscribed to the IED");
    }
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
    const Session session = Session::FromArguments("Measures renaming and deleting IEDs.");
    Library library(session);
    QVector<Times> times(static_cast<int>(session.files.size()));
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < times.size(); ++file) {
            Round(library, session.files[file], times[file]);
        }
    }
    Figures figures("Edits");
    AddFigures(figures, session, times, "rename", &Times::rename);
    AddFigures(figures, session, times, "wide rename", &Times::wideRename);
    AddFigures(figures, session, times, "delete", &Times::remove);
    figures.Print();
    return 0;
}
