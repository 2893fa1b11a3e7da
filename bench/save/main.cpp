// SPDX-License-Identifier: Apache-2.0
// corvane-bench-save: what it costs to save a document.
//
// Workloads, for each station file:
//   save   SCLDocument::SaveAs to another file, without asking for a version
//   steps  N + 1 progress steps (value raised, events processed), with N elements below the root:
//          what a save owes its callers whatever it writes
//   W      a bare QXmlStreamWriter that writes the very tokens of the saved file, kept in memory
// Figures: (save - steps) / W, and the time of save per byte of the largest file against that of
// the smallest. The first save of a document, which resolves the schema types, is not counted.
#include "support/Reference.h"
#include "support/Session.h"

#include <corvane/documents/SCLDocument.h>

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_saveTarget{1.25, 1.08};

void Save(SCLDocument* document, const QString& fileName)
{
    if (!document->SaveAs(fileName, false, false)) {
        Fatal("cannot save to " + fileName);
    }
}

/// A document and all that its save is measured against.
struct Subject {
    SCLDocument* document;
    BareWriter writer;
    int elementsBelowRoot;
    Series save;
    Series steps;
    Series write;
    Series net;
};

Subject Prepare(Library& library, const StationFile& file, const QString& target)
{
    Subject subject{library.Open(file), {}, 0, {}, {}, {}, {}};
    subject.elementsBelowRoot = subject.document->Root()->GetChildCount(true);
    Save(subject.document, target);
    if (!subject.writer.Record(target)) {
        Fatal("cannot read back " + target);
    }
    return subject;
}

void Round(Subject& subject, const QString& folder)
{
    subject.write.Time([&] { subject.writer.Write(folder + "/bare.scd"); });
    subject.save.Time([&] { Save(subject.document, folder + "/saved.scd"); });
    subject.steps.Time([&] { RunProgressSteps(subject.elementsBelowRoot + 1); });
    subject.net.Add(subject.save.Last() - subject.steps.Last());
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures saving documents.");
    // Beside the stations and not in the system's folder for temporary files, which may be memory.
    const QTemporaryDir folder(session.files.first().path + "-saved");
    Library library(session);
    QVector<Subject> subjects;
    for (const StationFile& file : session.files) {
        subjects.append(Prepare(library, file, folder.filePath("saved.scd")));
    }
    for (int round = 0; round < session.rounds; ++round) {
        for (Subject& subject : subjects) {
            Round(subject, folder.path());
        }
    }
    Figures figures("Save");
    QVector<Series> saves;
    for (int file = 0; file < subjects.size(); ++file) {
        const QString label = session.files[file].Label();
        const Subject& subject = subjects[file];
        figures.Add("W", label, subject.write.Median() * 1e3, "ms");
        figures.Add("SaveAs", label, subject.save.Median() * 1e3, "ms");
        figures.Add("one progress step", label,
                    subject.steps.Median() * 1e9 / (subject.elementsBelowRoot + 1), "ns");
        figures.Add("(SaveAs - (N+1)c) / W", label, MedianRatio(subject.net, subject.write),
                    g_saveTarget);
        saves.append(subject.save);
    }
    AddGrowth(figures, "SaveAs", session, saves);
    figures.Print();
    return 0;
}
