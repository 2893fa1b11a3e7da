// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/ProgressTask.h>

#include <corvane/documents/SCLDocument.h>

#include <QCoreApplication>

namespace Corvane::Internal
{

ProgressTask::ProgressTask(SCLDocument* document, const QString& title, int end)
    : m_future(QFutureInterfaceBase::NoState), m_nEnd(end)
{
    Q_EMIT document->sigFutaskTaskPrepared(m_future.future(), title);
    m_future.setProgressRange(0, end);
    m_future.reportStarted();
}

void ProgressTask::Step(int value)
{
    m_future.setProgressValue(value);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProgressTask::Cancel()
{
    m_future.cancel();
}

void ProgressTask::Finish()
{
    m_future.setProgressValue(m_nEnd);
    m_future.reportFinished();
}

} // namespace Corvane::Internal
