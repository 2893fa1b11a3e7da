// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QFutureWatcher>
#include <QObject>
#include <QString>

namespace Corvane
{
class SCLDocControl;
}

namespace Corvane::Command
{

/// Shows the progress of the library's long operations on standard error while it lives, if that is
/// a terminal and the operation takes its time. When it goes, its line is blank again.
class ProgressBar : public QObject
{
    Q_OBJECT

public:
    explicit ProgressBar(SCLDocControl& control);
    ~ProgressBar() override;

private:
    Q_DISABLE_COPY(ProgressBar)

    void Begin(const QFuture<QString>& future, const QString& title);
    void Draw();
    void Erase();

    QFutureWatcher<QString> m_watcher;
    QElapsedTimer m_sinceBegin;
    QString m_title;
    int m_drawn = 0;
};

} // namespace Corvane::Command
