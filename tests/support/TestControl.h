// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TempFile.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace Corvane::Test
{

/// An SCLDocControl for the time of one test function, with a folder for its files.
///
/// Each one starts with an empty name pool, so the order of GetChildList() follows from the tags of
/// the test alone.
class TestControl
{
public:
    SCLDocControl* operator->() { return &m_control; }
    SCLDocControl* Get() { return &m_control; }
    const TempFolder& Folder() const { return m_folder; }

    /// Writes \a xml to a new file and opens it without a signal. The document is not modified.
    /// Ends the test program if the text does not load.
    SCLDocument* Open(const QByteArray& xml)
    {
        const QString name = QStringLiteral("%1.scd").arg(++m_fileCount);
        SCLDocument* document = m_control.OpenDocument(m_folder.Write(name, xml), false);
        if (document == nullptr)
            qFatal("%s: %s", qPrintable(m_control.GetLastError()), xml.left(200).constData());
        return document;
    }
    /// The same, for the root of the new document.
    SCLElement* OpenRoot(const QByteArray& xml) { return Open(xml)->Root(); }

    /// A new document without a file, as CreateDocument() makes it, but not modified.
    SCLDocument* Create()
    {
        SCLDocument* document = m_control.CreateDocument(QString(), false);
        document->SetModified(false, false);
        return document;
    }

private:
    // The control closes its documents before their files go.
    TempFolder m_folder;
    SCLDocControl m_control;
    int m_fileCount = 0;
};

} // namespace Corvane::Test
