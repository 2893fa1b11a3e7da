// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocument.h>

#include <corvane/documents/CDialogSaveVersion.h>
#include <corvane/documents/FlatBuffer.h>
#include <corvane/documents/ProgressTask.h>
#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/WaitCursor.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QXmlStreamWriter>

namespace Corvane
{

using Internal::CDialogSaveVersion;
using Internal::ProgressTask;
using Internal::WaitCursor;

namespace
{

QWidget* FirstMainWindow()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (qobject_cast<QMainWindow*>(widget))
            return widget;
    }
    return nullptr;
}

void WriteXml(SCLElement* root, QIODevice* device, QFutureInterface<QString>* progress)
{
    Internal::FlatBuffer buffer(device);
    QXmlStreamWriter writer(&buffer);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    writer.setCodec("UTF-8"); // Qt 6 writes nothing else
#endif
    writer.writeStartDocument();
    root->WriteToXML(writer, progress, true);
    writer.writeEndDocument();
}

} // namespace

bool SCLDocument::SaveAs(const QString& fileName, bool rememberName, bool askVersion)
{
    if (!m_pRoot)
        return false;
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    SCLElement* header = m_pRoot->GetFirstChild(QLatin1String(g_szTagHeader));
    if (!header)
        header = m_pRoot->CreateChild(QLatin1String(g_szTagHeader), -1, false);
    if (!header)
        return false;
    if (askVersion)
        AskVersion(header);
    StampHeader(header, fileName);
    {
        const WaitCursor cursor;
        ProgressTask task(this, tr("Saving"), m_pRoot->GetChildCount(true));
        task.Future()->setProgressValue(0);
        WriteXml(m_pRoot, &file, task.Future());
        file.close();
        SetModified(false, false);
        m_bIEDChanged = false;
        task.Finish();
    }
    if (rememberName)
        m_strFileName = fileName;
    return true;
}

void SCLDocument::AskVersion(SCLElement* header)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    CDialogSaveVersion(header, m_bIEDChanged, FirstMainWindow()).exec();
}

void SCLDocument::StampHeader(SCLElement* header, const QString& fileName)
{
    const SCLDocControl* control = SCLDocControl::Instance();
    const QString toolId = control ? control->GetToolId() : QLatin1String(g_szDefaultToolId);
    header->SetAttribute(QStringLiteral("toolID"), toolId, false);
    header->SetAttribute(QStringLiteral("nameStructure"), QLatin1String(g_szNameStructureIEDName),
                         false);
    header->SetAttribute(QStringLiteral("id"), QFileInfo(fileName).baseName(), false);
}

} // namespace Corvane
