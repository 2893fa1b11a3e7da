// SPDX-License-Identifier: Apache-2.0
#include "Session.h"

#include <corvane/documents/SCLDocument.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <cstdlib>

namespace Corvane::Bench
{

QString StationFile::Label() const
{
    return QString::number(Megabytes(), 'f', 0) + " MB";
}

Session Session::FromArguments(const QString& description)
{
    QCommandLineParser arguments;
    arguments.setApplicationDescription(description);
    arguments.addHelpOption();
    arguments.addOption({"schema", "The SCL schema to register.", "XSD"});
    arguments.addOption({"rounds", "Rounds to take the median of.", "N", "7"});
    arguments.addOption({"processor-time", "Count processor time, not time on the wall."});
    arguments.addOption({"child", "Measure memory only, in this very process.", "NAME"});
    arguments.addPositionalArgument("files", "Station files of different sizes.");
    arguments.process(*QCoreApplication::instance());

    SetClock(arguments.isSet("processor-time") ? Clock::Processor : Clock::Elapsed);
    Session session{arguments.value("schema"),
                    qMax(1, arguments.value("rounds").toInt()),
                    arguments.value("child"),
                    {}};
    for (const QString& path : arguments.positionalArguments()) {
        const QFileInfo info(path);
        if (!info.isReadable() || info.size() == 0) {
            Fatal("cannot read " + path);
        }
        session.files.append({path, info.size()});
    }
    if (session.files.isEmpty()) {
        Fatal("no station file given; see --help");
    }
    std::sort(session.files.begin(), session.files.end(),
              [](const StationFile& a, const StationFile& b) { return a.bytes < b.bytes; });
    return session;
}

Library::Library(const Session& session)
{
    if (!session.schema.isEmpty() && !m_control.RegisterSchema(session.schema)) {
        Fatal("cannot register the schema " + session.schema);
    }
}

SCLDocument* Library::Open(const StationFile& file)
{
    SCLDocument* document = m_control.OpenDocument(file.path, false);
    if (!document) {
        Fatal("cannot open " + file.path + ": " + m_control.GetLastError());
    }
    return document;
}

void Library::Close(SCLDocument* document)
{
    m_control.CloseDocument(document, false);
}

QVector<SCLElement*> AllElements(SCLElement* root)
{
    QVector<SCLElement*> elements;
    QVector<SCLElement*> open{root};
    while (!open.isEmpty()) {
        SCLElement* element = open.takeLast();
        elements.append(element);
        const QList<SCLElement*> children = element->GetChildList();
        std::for_each(children.crbegin(), children.crend(),
                      [&](SCLElement* child) { open.append(child); });
    }
    return elements;
}

void AddGrowth(Figures& figures, const QString& what, const Session& session,
               const QVector<Series>& perFile)
{
    if (session.files.size() < 2) {
        return;
    }
    const double sizes = static_cast<double>(session.files.last().bytes) /
                         static_cast<double>(session.files.first().bytes);
    figures.Add(what + " time per MB, largest against smallest", "",
                MedianRatio(perFile.last(), perFile.first()) / sizes, Target{1.25, 1.10});
}

void Fatal(const QString& message)
{
    QTextStream(stderr) << QCoreApplication::applicationName() << ": " << message << '\n';
    std::exit(2);
}

} // namespace Corvane::Bench
