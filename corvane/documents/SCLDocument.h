// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>

#include <QByteArray>
#include <QFuture>
#include <QObject>
#include <QString>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace Corvane
{

/// One open SCL file: a file name, the tree of its elements, the modified state and the signals
/// through which the tree reports its changes.
///
/// SCLDocControl makes documents with CreateDocument() and OpenDocument() and owns them. A document
/// owns its tree.
///
/// Long operations report progress through a `QFuture` that sigFutaskTaskPrepared() announces. They
/// run on the caller's thread and process events, user input excluded, so that a display repaints
/// and timers run. A slot that runs then sees a tree that is half loaded or half written, and must
/// not change it.
class CORVANE_EXPORT SCLDocument : public QObject
{
    Q_OBJECT

public:
    /// An empty document. If an SCLDocControl exists, its sigFutaskTaskPrepared() forwards this
    /// document's.
    explicit SCLDocument(QObject* parent = nullptr);
    /// Deletes the tree, without a signal.
    ~SCLDocument() override;

    /// The file that the document belongs to; empty if it has none yet.
    QString GetFileName() const;
    /// Whether there are unsaved changes.
    bool GetModified() const;
    /// The root element, or null. Owned by the document.
    SCLElement* Root();

    /// Sets the modified state and sends sigModifiedStateChanged() if it is new.
    ///
    /// \param force sends the signal for an unchanged state too.
    void SetModified(bool modified, bool force);

    /// The root, which is created as `SCL` with the attributes `xmlns`, `xmlns:xsi` and
    /// `xsi:schemaLocation` (SCL namespace of IEC 61850-6) if there is none. Creating it marks the
    /// document modified. An existing root is returned as it is.
    SCLElement* CreateRoot();
    /// The same with a root of any \a tag and without attributes.
    SCLElement* CreateRoot(const QString& tag);

    /// A flag for the host's own use, false at first. The library does not act on it.
    bool GetUpdateIEDFlag() const;
    void SetUpdateIEDFlag(bool updateIED);

    /// Reads a file into this document, which must be fresh: an existing tree is lost.
    /// SCLDocControl::OpenDocument() is the usual caller.
    ///
    /// Any well-formed XML whose root tag is "SCL" loads, in any encoding that Qt's reader detects;
    /// that is no validation. Tags and attribute names keep their prefixes, namespace declarations
    /// are ordinary attributes, values are kept as the reader delivers them. Text that is white
    /// space only, comments, processing instructions and the document type are dropped. Nothing is
    /// fetched: external entities stay unread. A file whose entities or attribute defaults blow it
    /// up far beyond its size is refused.
    ///
    /// Ends the modified state. The file name is set in any case.
    ///
    /// \return false for an empty name, a file that does not exist or cannot be opened, and for a
    ///         parse failure. After a parse failure SCLDocControl::GetLastError() holds
    ///         "Row %1, Col %2: %3", and the part of the tree read so far stays.
    bool Open(const QString& fileName);

    /// Writes the document as an SCL file: UTF-8, indented by 2, children in schema order.
    ///
    /// Stamps `toolID`, `nameStructure` and `id` (the file name up to its first dot) into the
    /// `Header`, which is created if missing, and ends the modified state. Comments, processing
    /// instructions and the text of elements with children do not survive, as they are not kept
    /// or not written. The file is written in place: there is no backup, and an error of the device
    /// during the run is not noticed.
    ///
    /// \param rememberName true makes \a fileName the document's file name.
    /// \param askVersion   true first shows the dialog that appends a version record (`Hitem`) to
    ///        the `Header`'s `History`. The save goes on whatever the user chooses. Without a
    ///        `QApplication` no dialog is shown.
    /// \return false, and nothing is changed, if there is no root or the file cannot be opened for
    ///         writing.
    bool SaveAs(const QString& fileName, bool rememberName, bool askVersion);

    /// The tree as a binary image, see SCLElement::Serialize(). Empty, and no task is announced, if
    /// there is no root. The modified state stays.
    QByteArray WriteBinary();
    /// Replaces the tree by that of a binary image, whose root may have any tag. The old root is
    /// deleted without a signal, and pointers into the old tree dangle.
    ///
    /// The file name stays, and the document is marked modified if the image has any attribute or
    /// child. There is a root in any case, but damage is not reported: see SCLBinaryCheck.
    void ReadBinary(const QByteArray& bytes);

    /// Brings the virtual-terminal CRCs up to date, see CrcGenerator: that of each `IED` in its
    /// `Private` child of type "IED virtual terminal conection CRC", and that of the substation in
    /// the `Private` child of the root of type "Substation virtual terminal conection CRC". Missing
    /// ones are created behind all other `Private` children.
    ///
    /// The text of an IED is its CRC in eight upper-case hexadecimal digits, also where the IED is
    /// incomplete, and empty for one that neither sends nor receives. That of the substation is the
    /// CRC of the texts of all IEDs, sorted by name, and empty without IEDs; of several IEDs of one
    /// name it covers the last.
    ///
    /// Changes go out with the usual signals; a CRC that is the same changes nothing. Register a
    /// schema first. Progress rises by one for each IED. Events are processed, user input excluded,
    /// after each IED: what timers and slots change meanwhile counts for the IEDs that follow, an
    /// IED that they take out is passed over, one that they add is not looked at. A slot on a change
    /// must not take out the very `Private` that the change is about, nor the IED that holds it.
    /// Without a root nothing happens.
    void UpdateCrcCode();

Q_SIGNALS:
    /// A long operation has prepared its progress task. The future carries progress and no result;
    /// titles are "Parsing", "Saving" and "Updating CRC", translated. Sent before the task reports
    /// that it has started.
    void sigFutaskTaskPrepared(const QFuture<QString>& future, const QString& strTitle);
    /// The modified state has changed.
    void sigModifiedStateChanged();
    /// An element stands in the tree, with its attributes and its subtree.
    void sigAddElement(SCLElement* pSCLElement);
    /// An element is about to leave the tree, detached or deleted. It is still in its place.
    void sigDeleteElement(SCLElement* pSCLElement);
    /// An element has moved inside its tag group.
    void sigMoveElement(SCLElement* pSCLElementFrom, int nRowFrom, int nRowTo);
    /// An attribute has changed or is new. The old value is a null `QString` for a new one.
    void sigEditAttribute(SCLElement* pSCLElement, SCLAttribute* pSCLAttribute,
                          const QString& strOldAttVal);
    /// An attribute was taken out of its element and is about to be deleted.
    void sigRemoveAttribute(SCLElement* pSCLElement, SCLAttribute* pSCLAttribute);
    /// The text value of an element has changed.
    void sigEditValue(SCLElement* pSCLElement);

private Q_SLOTS:
    void SlotCheckIEDChanged(SCLElement* pSCLElement);

private:
    Q_DISABLE_COPY(SCLDocument)

    bool LoadSclFile(QIODevice* device);
    void StampHeader(SCLElement* header, const QString& fileName);
    void AskVersion(SCLElement* header);

    QString m_strFileName;
    SCLElement* m_pRoot = nullptr;
    bool m_bModified = false;
    bool m_bIEDChanged = false;
    bool m_bUpdateIED = false;
};

} // namespace Corvane
