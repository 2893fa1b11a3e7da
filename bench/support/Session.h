// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Figures.h"
#include "Measure.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/elements/SCLElement.h>

#include <QString>
#include <QStringList>
#include <QVector>

namespace Corvane::Bench
{

/// A file to be measured.
struct StationFile {
    QString path;
    qint64 bytes;

    double Megabytes() const { return static_cast<double>(bytes) * 1e-6; }
    /// "10 MB".
    QString Label() const;
};

/// What the command line of a benchmark program asks for:
/// `PROGRAM --schema SCL.xsd [--rounds N] [--processor-time] [--child NAME] FILE...`
struct Session {
    QString schema;
    int rounds;
    /// Not empty in a child that measures memory: what it has to load with.
    QString child;
    /// From the smallest to the largest.
    QVector<StationFile> files;

    /// Reads the command line. Ends the program with a message if a file cannot be read.
    static Session FromArguments(const QString& description);
};

/// The library with the schema of the session registered. Ends the program with a message if the
/// schema cannot be registered.
class Library
{
public:
    explicit Library(const Session& session);

    /// Opens a document; ends the program with a message if that fails.
    SCLDocument* Open(const StationFile& file);
    void Close(SCLDocument* document);

private:
    SCLDocControl m_control;
};

/// All elements below and including \a root, in preorder.
QVector<SCLElement*> AllElements(SCLElement* root);

/// Adds the median, over the rounds, of the time per byte of the largest file against the smallest.
/// Nothing is added for a single file.
void AddGrowth(Figures& figures, const QString& what, const Session& session,
               const QVector<Series>& perFile);

/// Ends the program with a message.
[[noreturn]] void Fatal(const QString& message);

} // namespace Corvane::Bench
