// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFutureInterface>
#include <QString>

namespace Corvane
{

class SCLDocument;

namespace Internal
{

/// The progress of one long operation of a document. No thread stands behind it: the future is a
/// channel only.
class ProgressTask
{
public:
    /// Announces the task with SCLDocument::sigFutaskTaskPrepared() and reports it started.
    ProgressTask(SCLDocument* document, const QString& title, int end);

    /// What a walk moves forward by itself.
    QFutureInterface<QString>* Future() { return &m_future; }
    /// Moves to \a value and processes events, user input excluded.
    void Step(int value);
    void Cancel();
    /// Moves to the end and reports the task finished.
    void Finish();

private:
    QFutureInterface<QString> m_future;
    int m_nEnd;
};

} // namespace Internal
} // namespace Corvane
