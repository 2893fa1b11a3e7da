// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocControl.h>

#include <corvane/documents/WaitCursor.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/schema/SCLGrammarPool.h>

#include <QDir>
#include <QFileInfo>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <utility>

namespace Corvane
{

using Internal::SCLGrammarPool;
using Internal::SCLNamePool;
using Internal::WaitCursor;

namespace
{

// Two missing files are equal to QFileInfo whatever their names, so these go by their paths.
bool IsSameFile(const QString& a, const QString& b)
{
    const QFileInfo infoA(a);
    const QFileInfo infoB(b);
    if (infoA.exists() && infoB.exists())
        return infoA == infoB;
    return QDir::cleanPath(infoA.absoluteFilePath()) == QDir::cleanPath(infoB.absoluteFilePath());
}

} // namespace

SCLDocControl* SCLDocControl::m_pInstance = nullptr;

SCLDocControl::SCLDocControl(QObject* parent)
    : QObject(parent), m_strToolId(QLatin1String(g_szDefaultToolId))
{
    m_pInstance = this;
    try {
        xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr,
                                              nullptr, nullptr);
    } catch (const xercesc::XMLException&) {
        xercesc::XMLPlatformUtils::Terminate();
    }
    new SCLNamePool(this);
}

SCLDocControl::~SCLDocControl()
{
    delete SCLGrammarPool::Instance();
    qDeleteAll(std::exchange(m_listDocument, {}));
    xercesc::XMLPlatformUtils::Terminate();
    if (m_pInstance == this)
        m_pInstance = nullptr;
}

SCLDocControl* SCLDocControl::Instance()
{
    return m_pInstance;
}

bool SCLDocControl::RegisterSchema(const QString& fileName)
{
    if (fileName.isEmpty() || !QFileInfo::exists(fileName))
        return false;
    SCLGrammarPool* pool = SCLGrammarPool::Instance();
    if (!pool)
        pool = new SCLGrammarPool;
    return pool->LoadSchema(fileName);
}

bool SCLDocControl::HasSclSchema() const
{
    const SCLGrammarPool* pool = SCLGrammarPool::Instance();
    return pool && pool->HasSclSchema();
}

bool SCLDocControl::SchemaValidate(const QString& fileName, QStringList& messages)
{
    SCLGrammarPool* pool = SCLGrammarPool::Instance();
    if (!pool || fileName.isEmpty() || !QFileInfo::exists(fileName))
        return false;
    return pool->Validate(fileName, messages);
}

void SCLDocControl::SetToolId(const QString& toolId)
{
    m_strToolId = toolId;
}

QString SCLDocControl::GetToolId() const
{
    return m_strToolId;
}

void SCLDocControl::SetLastError(const QString& error)
{
    m_strLastError = error;
}

QString SCLDocControl::GetLastError() const
{
    return m_strLastError;
}

SCLDocument* SCLDocControl::CreateDocument(const QString& fileName, bool notify)
{
    auto* document = new SCLDocument;
    document->CreateRoot();
    m_listDocument.append(document);
    if (!fileName.isEmpty())
        document->SaveAs(fileName, true, false);
    if (notify)
        Q_EMIT sigDocumentOpened(document);
    return document;
}

bool SCLDocControl::CloseDocument(SCLDocument* document, bool notify)
{
    if (!document)
        return true;
    if (!m_listDocument.removeOne(document))
        return false;
    if (notify)
        Q_EMIT sigDocumentAboutToBeClosed(document);
    const WaitCursor cursor;
    delete document;
    return true;
}

SCLDocument* SCLDocControl::LookForDocument(const QString& fileName)
{
    if (fileName.isEmpty())
        return nullptr;
    const auto it = std::find_if(m_listDocument.cbegin(), m_listDocument.cend(),
                                 [&](const SCLDocument* document) {
                                     const QString name = document->GetFileName();
                                     return !name.isEmpty() && IsSameFile(name, fileName);
                                 });
    return it == m_listDocument.cend() ? nullptr : *it;
}

QList<SCLDocument*> SCLDocControl::GetDocumentList() const
{
    return m_listDocument;
}

} // namespace Corvane
