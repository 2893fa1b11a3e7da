// SPDX-License-Identifier: Apache-2.0
// corvane-bench-crc: what it costs to bring the virtual-terminal CRCs of a station up to date.
//
// Workloads, for each station file, once open:
//   update  SCLDocument::UpdateCrcCode on the document as it was loaded
//   again   the same once more, when no CRC changes
//   R       a bare QXmlStreamReader loop over the file, namespace processing off
//   peak    the memory that update adds to the peak of a fresh process, against what the loaded
//           document added
// Figures: update / R, again / R, peak / loaded document, and the time of update per FCDA of the
// canonical contents of all IEDs in the largest file against that in the smallest.
#include "support/Memory.h"
#include "support/Reference.h"
#include "support/Session.h"

#include <corvane/crc/CrcGenerator.h>
#include <corvane/documents/SCLDocument.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_smallTarget{1.0, 0.60};
constexpr Target g_largeTarget{1.5, 0.90};
constexpr Target g_memoryTarget{0.10, 0.05};
constexpr Target g_growthTarget{1.5, 1.25};
constexpr double g_largeMegabytes = 50;

struct Subject {
    Series read;
    Series update;
    Series again;
    qint64 fcdas = 0;
};

qint64 RenderedFcdas(SCLElement* root)
{
    qint64 count = 0;
    const QList<SCLElement*> ieds = root->FindChildByType("IED", false);
    for (SCLElement* ied : ieds) {
        unsigned int crc = 0;
        QByteArray content;
        if (CrcGenerator(ied).Gererate(crc, &content, nullptr) == CrcGenerator::CrcFailed) {
            Fatal("the content of an IED is incomplete");
        }
        count += content.count("<FCDA");
    }
    return count;
}

void Round(Library& library, const StationFile& file, Subject& subject)
{
    subject.read.Time([&] { ReadBare(file.path); });
    ReturnFreedMemory();
    SCLDocument* document = library.Open(file);
    subject.update.Time([&] { document->UpdateCrcCode(); });
    subject.again.Time([&] { document->UpdateCrcCode(); });
    if (subject.fcdas == 0) {
        subject.fcdas = RenderedFcdas(document->Root());
    }
    library.Close(document);
}

void ReportMemory(const Session& session)
{
    Library library(session);
    SCLDocument* document = nullptr;
    const auto open = [&] { document = library.Open(session.files.first()); };
    if (session.child == QLatin1String("load")) {
        GrowthReport(open);
        return;
    }
    open();
    GrowthReport([&] { document->UpdateCrcCode(); });
}

double MemoryRatio(const Session& session, const StationFile& file)
{
    const auto measure = [&](const QString& what) {
        const qint64 bytes =
            PeakMemoryInChild({"--schema", session.schema, "--child", what, file.path});
        if (bytes < 0) {
            Fatal("the child that measures memory failed");
        }
        return static_cast<double>(bytes);
    };
    return measure("update") / measure("load");
}

void Report(Figures& figures, const Session& session, const StationFile& file,
            const Subject& subject)
{
    const QString label = file.Label();
    const bool isLarge = file.Megabytes() > g_largeMegabytes;
    figures.Add("R", label, subject.read.Median() * 1e3, "ms");
    figures.Add("UpdateCrcCode", label, subject.update.Median() * 1e3, "ms");
    figures.Add("UpdateCrcCode / R", label, MedianRatio(subject.update, subject.read),
                isLarge ? g_largeTarget : g_smallTarget);
    figures.Add("UpdateCrcCode again / R", label, MedianRatio(subject.again, subject.read),
                isLarge ? g_largeTarget : g_smallTarget);
    figures.Add("peak memory / loaded document", label, MemoryRatio(session, file), g_memoryTarget);
}

double PerFcda(const Subject& subject)
{
    return subject.update.Median() / static_cast<double>(subject.fcdas);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures updating CRCs.");
    if (!session.child.isEmpty()) {
        ReportMemory(session);
        return 0;
    }
    Library library(session);
    const int count = static_cast<int>(session.files.size());
    QVector<Subject> subjects(count);
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < count; ++file) {
            Round(library, session.files[file], subjects[file]);
        }
    }
    Figures figures("CRC");
    for (int file = 0; file < count; ++file) {
        Report(figures, session, session.files[file], subjects[file]);
    }
    if (count > 1) {
        figures.Add("UpdateCrcCode per FCDA, largest against smallest", QString(),
                    PerFcda(subjects.last()) / PerFcda(subjects.first()), g_growthTarget);
    }
    figures.Print();
    return 0;
}
