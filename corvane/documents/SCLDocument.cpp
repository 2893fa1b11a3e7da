// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocument.h>

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SclNamespace.h>
#include <corvane/elements/SCLVocabulary.h>

namespace Corvane
{

SCLDocument::SCLDocument(QObject* parent) : QObject(parent)
{
    if (SCLDocControl* control = SCLDocControl::Instance()) {
        connect(this, &SCLDocument::sigFutaskTaskPrepared, control,
                &SCLDocControl::sigFutaskTaskPrepared);
    }
    connect(this, &SCLDocument::sigAddElement, this, &SCLDocument::SlotCheckIEDChanged);
    connect(this, &SCLDocument::sigDeleteElement, this, &SCLDocument::SlotCheckIEDChanged);
}

SCLDocument::~SCLDocument()
{
    delete m_pRoot;
    m_pRoot = nullptr;
}

QString SCLDocument::GetFileName() const
{
    return m_strFileName;
}

bool SCLDocument::GetModified() const
{
    return m_bModified;
}

SCLElement* SCLDocument::Root()
{
    return m_pRoot;
}

void SCLDocument::SetModified(bool modified, bool force)
{
    if (!force && modified == m_bModified)
        return;
    m_bModified = modified;
    Q_EMIT sigModifiedStateChanged();
}

SCLElement* SCLDocument::CreateRoot()
{
    if (m_pRoot)
        return m_pRoot;
    const QString sclNamespace = QLatin1String(Internal::g_szSclNamespace);
    m_pRoot = new SCLElement(QLatin1String(g_szTagSCL), this, nullptr);
    m_pRoot->SetAttribute(QStringLiteral("xmlns"), sclNamespace, false);
    m_pRoot->SetAttribute(QStringLiteral("xmlns:xsi"), QLatin1String(Internal::g_szXsiNamespace),
                          false);
    m_pRoot->SetAttribute(QStringLiteral("xsi:schemaLocation"),
                          sclNamespace + QStringLiteral(" SCL.xsd"), false);
    SetModified(true, false);
    return m_pRoot;
}

SCLElement* SCLDocument::CreateRoot(const QString& tag)
{
    if (!m_pRoot) {
        m_pRoot = new SCLElement(tag, this, nullptr);
        SetModified(true, false);
    }
    return m_pRoot;
}

bool SCLDocument::GetUpdateIEDFlag() const
{
    return m_bUpdateIED;
}

void SCLDocument::SetUpdateIEDFlag(bool updateIED)
{
    m_bUpdateIED = updateIED;
}

void SCLDocument::SlotCheckIEDChanged(SCLElement* pSCLElement)
{
    if (pSCLElement->GetTag() == QLatin1String(g_szTagIED))
        m_bIEDChanged = true;
}

} // namespace Corvane
