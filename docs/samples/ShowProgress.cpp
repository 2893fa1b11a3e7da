// SPDX-License-Identifier: Apache-2.0
// ShowProgress FILE OUT: shows how far the library has come while it loads and saves a station.
#include <corvane/documents/SCLDocControl.h>

#include <QCoreApplication>
#include <QFutureWatcher>
#include <QTextStream>

using namespace Corvane;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
    SCLDocControl control;

    // Every document passes its tasks on to the control, so one connection serves them all.
    QFutureWatcher<QString> watcher;
    QObject::connect(&control, &SCLDocControl::sigFutaskTaskPrepared, &watcher,
                     [&](const QFuture<QString>& task, const QString& title) {
                         out << title << '\n';
                         watcher.setFuture(task);
                     });
    QObject::connect(&watcher, &QFutureWatcherBase::progressValueChanged, &watcher, [&](int value) {
        out << "  " << value << " of " << watcher.progressMaximum() << '\n';
    });
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &watcher,
                     [&] { out << (watcher.isCanceled() ? "  failed\n" : "  done\n"); });

    SCLDocument* station = control.OpenDocument(arguments.value(1), true);
    // A watcher hears of the end when the host is back in its event loop.
    QCoreApplication::processEvents();
    if (station == nullptr)
        return 1;
    const bool saved = station->SaveAs(arguments.value(2), false, false);
    QCoreApplication::processEvents();
    return saved ? 0 : 1;
}
