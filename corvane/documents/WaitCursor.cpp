// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/WaitCursor.h>

#include <QCursor>
#include <QGuiApplication>

namespace Corvane::Internal
{

WaitCursor::WaitCursor()
    : m_bShown(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
{
    if (m_bShown)
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

WaitCursor::~WaitCursor()
{
    if (m_bShown)
        QGuiApplication::restoreOverrideCursor();
}

} // namespace Corvane::Internal
