// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocument.h>

#include <corvane/documents/ProgressTask.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QDataStream>
#include <QIODevice>

#include <limits>

namespace Corvane
{

using Internal::ProgressTask;

namespace
{

int ProgressEnd(const QByteArray& bytes)
{
    return static_cast<int>(qMin<qint64>(bytes.size(), std::numeric_limits<int>::max()));
}

} // namespace

QByteArray SCLDocument::WriteBinary()
{
    QByteArray bytes;
    if (!m_pRoot)
        return bytes;
    ProgressTask task(this, tr("Saving"), m_pRoot->GetChildCount(true));
    task.Future()->setProgressValue(0);
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    m_pRoot->Serialize(stream, true, task.Future());
    task.Finish();
    return bytes;
}

void SCLDocument::ReadBinary(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    delete m_pRoot;
    m_pRoot = nullptr;
    ProgressTask task(this, tr("Parsing"), ProgressEnd(bytes));
    // A slot on the task may have made one.
    delete m_pRoot;
    m_pRoot = new SCLElement(QLatin1String(g_szTagSCL), this, nullptr);
    m_pRoot->Serialize(stream, false, task.Future());
    task.Finish();
}

} // namespace Corvane
