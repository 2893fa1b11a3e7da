// SPDX-License-Identifier: Apache-2.0
// corvane-bench-load: what it costs to open a document.
//
// Workloads, for each station file:
//   R      a bare QXmlStreamReader loop over the file, namespace processing off
//   open   SCLDocControl::OpenDocument (closing it again is not timed)
//   peak   the memory that OpenDocument adds to the peak of a fresh process
// Figures: open / R, peak / file size, and the time of open per byte of the largest file against
// that of the smallest.
#include "support/Memory.h"
#include "support/Reference.h"
#include "support/Session.h"

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_openTarget{1.6, 1.4};
constexpr Target g_memoryTarget{5.2, 4.4};

void ReportMemory(const Session& session)
{
    Library library(session);
    GrowthReport([&] { library.Open(session.files.first()); });
}

double MemoryRatio(const StationFile& file)
{
    const qint64 peak = PeakMemoryInChild({"--child", "load", file.path});
    if (peak < 0) {
        Fatal("the child that measures memory failed");
    }
    return static_cast<double>(peak) / static_cast<double>(file.bytes);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures opening documents.");
    if (!session.child.isEmpty()) {
        ReportMemory(session);
        return 0;
    }
    Library library(session);
    const int count = static_cast<int>(session.files.size());
    QVector<Series> read(count);
    QVector<Series> open(count);
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < count; ++file) {
            read[file].Time([&] { ReadBare(session.files[file].path); });
            SCLDocument* document = nullptr;
            open[file].Time([&] { document = library.Open(session.files[file]); });
            library.Close(document);
        }
    }
    Figures figures("Load");
    for (int file = 0; file < count; ++file) {
        const QString label = session.files[file].Label();
        figures.Add("R", label, read[file].Median() * 1e3, "ms");
        figures.Add("OpenDocument", label, open[file].Median() * 1e3, "ms");
        figures.Add("OpenDocument / R", label, MedianRatio(open[file], read[file]), g_openTarget);
        figures.Add("peak memory / file size", label, MemoryRatio(session.files[file]),
                    g_memoryTarget);
    }
    AddGrowth(figures, "OpenDocument", session, open);
    figures.Print();
    return 0;
}
