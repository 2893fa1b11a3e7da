// SPDX-License-Identifier: Apache-2.0
// corvane-bench-binary: what it costs to write and read the binary image of a document.
//
// Workloads, for each station file:
//   open   SCLDocControl::OpenDocument (closing it again is not timed)
//   write  SCLDocument::WriteBinary
//   read   SCLDocument::ReadBinary into a document without a root
//   check  SCLBinaryCheck::Of
// Figures: read / open, write / open, and the size of the image against that of the file.
#include "support/Memory.h"
#include "support/Session.h"

#include <corvane/documents/SCLBinaryCheck.h>
#include <corvane/documents/SCLDocument.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_readTarget{0.35, 0.30};
constexpr Target g_writeTarget{0.20, 0.15};
constexpr Target g_sizeTarget{1.6, 1.5};

struct Subject {
    Series open;
    Series write;
    Series read;
    Series check;
    qint64 imageBytes = 0;
};

void Read(Subject& subject, const QByteArray& image)
{
    ReturnFreedMemory();
    SCLDocument document;
    subject.read.Time([&] { document.ReadBinary(image); });
    if (document.Root()->WriteToBinary() != image) {
        Fatal("an image does not read back as it was written");
    }
}

void Round(Library& library, const StationFile& file, Subject& subject)
{
    QByteArray image;
    SCLDocument* document = nullptr;
    ReturnFreedMemory();
    subject.open.Time([&] { document = library.Open(file); });
    subject.write.Time([&] { image = document->WriteBinary(); });
    library.Close(document);
    Read(subject, image);
    bool isWhole = false;
    subject.check.Time([&] { isWhole = SCLBinaryCheck::Of(image).IsWhole(); });
    if (!isWhole) {
        Fatal("an image is not found whole");
    }
    subject.imageBytes = image.size();
}

void Report(Figures& figures, const StationFile& file, const Subject& subject)
{
    const QString label = file.Label();
    figures.Add("OpenDocument", label, subject.open.Median() * 1e3, "ms");
    figures.Add("ReadBinary / OpenDocument", label, MedianRatio(subject.read, subject.open),
                g_readTarget);
    figures.Add("WriteBinary / OpenDocument", label, MedianRatio(subject.write, subject.open),
                g_writeTarget);
    figures.Add("check", label, subject.check.Median() * 1e3, "ms");
    figures.Add("image / file size", label,
                static_cast<double>(subject.imageBytes) / static_cast<double>(file.bytes),
                g_sizeTarget);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures binary images of documents.");
    Library library(session);
    const int count = static_cast<int>(session.files.size());
    QVector<Subject> subjects(count);
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < count; ++file) {
            Round(library, session.files[file], subjects[file]);
        }
    }
    Figures figures("Binary image");
    for (int file = 0; file < count; ++file) {
        Report(figures, session.files[file], subjects[file]);
    }
    figures.Print();
    return 0;
}
