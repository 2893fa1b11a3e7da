// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>
#include <corvane/documents/SCLDocument.h>

#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Corvane
{

/// The entry point of the library: the one object that a host constructs before anything else and
/// destroys after everything else.
///
/// It owns all open documents, the name pool and the schema, starts and ends Xerces-C, carries the
/// tool identity and the last error, and is where a host listens for documents that open and close,
/// for progress and for validation messages.
///
/// There is one at a time. Destroying it deletes all documents without a signal; another one may be
/// constructed afterwards. No element, attribute or document may be touched after that.
class CORVANE_EXPORT SCLDocControl : public QObject
{
    Q_OBJECT

public:
    /// Starts the library. A failure to start Xerces-C is swallowed: no schema will load then.
    explicit SCLDocControl(QObject* parent = nullptr);
    /// Deletes the schema and all documents, without sigDocumentAboutToBeClosed(), and ends
    /// Xerces-C.
    ~SCLDocControl() override;

    /// The control of the process, or null if none was constructed or it was destroyed. Creates
    /// nothing.
    static SCLDocControl* Instance();

    /// Loads the SCL schema, which gives elements their schema order and SchemaValidate() its
    /// grammar. Call it before saving: without a schema the children of a saved file stand in no
    /// order that a reader of the standard would accept.
    ///
    /// Further calls replace the grammar for validation; the element types of earlier ones stay,
    /// and win for names that both know.
    ///
    /// \param fileName an XSD file. What it includes by relative path is read too; nothing is ever
    ///        fetched from a network.
    /// \return false for an empty name, a file that does not exist and a failed load. A file that
    ///         is no schema can give true with no element types: ask HasSclSchema().
    bool RegisterSchema(const QString& fileName);
    /// Whether a schema is loaded that declares the element `SCL` of the SCL namespace of
    /// IEC 61850-6. Ask this before saving or computing anything whose result depends on the
    /// schema.
    bool HasSclSchema() const;
    /// Validates a file on disk against the registered schema. Documents in memory play no part, no
    /// other file and no network is accessed, and the verdict does not depend on earlier files.
    ///
    /// \param messages the texts "Ln %1, Col %2: %3" in the order of their arrival, warnings of a
    ///        valid file included. Replaced whenever the file was parsed, otherwise untouched.
    /// \return true if the file is valid, warnings aside. False without a schema, for an empty name
    ///         and for a file that does not exist.
    bool SchemaValidate(const QString& fileName, QStringList& messages);

    /// The tool identity that saving writes to `Header.toolID`; g_szDefaultToolId at first.
    void SetToolId(const QString& toolId);
    QString GetToolId() const;

    /// The text of the last failed parse, "Row %1, Col %2: %3". Nothing clears it, and a file that
    /// is missing or cannot be opened leaves it as it was: it means something only right after a
    /// parse failure.
    void SetLastError(const QString& error);
    QString GetLastError() const;

    /// Makes a new document with an `SCL` root and appends it to the list.
    ///
    /// \param fileName if not empty, the document is saved there at once. If that fails, it stays
    ///        open without a file name.
    /// \param notify   sends sigDocumentOpened().
    /// \return the document, owned by this object.
    SCLDocument* CreateDocument(const QString& fileName, bool notify);
    /// The document of a file: the one that is open already (then no signal goes out), or a new
    /// one.
    ///
    /// \param notify sends sigDocumentOpened() for a new document.
    /// \return the document, owned by this object. Null if the file cannot be read; after a parse
    ///         failure GetLastError() tells why.
    SCLDocument* OpenDocument(const QString& fileName, bool notify);
    /// Takes a document out of the list, sends sigDocumentAboutToBeClosed() (with \a notify) and
    /// deletes it. Whether it is modified plays no part.
    ///
    /// \return true also for null; false, and nothing happens, if it is not in the list.
    bool CloseDocument(SCLDocument* document, bool notify);
    /// The first open document of that file, however its path is written, or null. Where a file
    /// does not exist, the cleaned absolute path decides. An empty name matches none.
    SCLDocument* LookForDocument(const QString& fileName);
    /// The open documents in the order in which they were added.
    QList<SCLDocument*> GetDocumentList() const;

Q_SIGNALS:
    /// A document has prepared a progress task; see SCLDocument::sigFutaskTaskPrepared().
    void sigFutaskTaskPrepared(const QFuture<QString>& future, const QString& strTitle);
    /// A document was created or opened and is in the list.
    void sigDocumentOpened(SCLDocument* pSCLDocument);
    /// A document is about to be deleted. It is complete, but no longer in the list.
    void sigDocumentAboutToBeClosed(SCLDocument* pSCLDocument);
    /// A message of schema validation.
    ///
    /// \param strType "WARN", "ERROR" or "FATAL".
    /// \param strMessage the text as SchemaValidate() returns it.
    void sigOutMessage(const QString& strType, const QString& strMessage);

private:
    Q_DISABLE_COPY(SCLDocControl)

    static SCLDocControl* m_pInstance;

    QString m_strToolId;
    QString m_strLastError;
    QList<SCLDocument*> m_listDocument;
};

} // namespace Corvane
