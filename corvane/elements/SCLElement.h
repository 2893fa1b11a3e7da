// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <cstddef>

QT_BEGIN_NAMESPACE
class QDataStream;
class QXmlStreamWriter;
template <typename T>
class QFutureInterface;
QT_END_NAMESPACE

namespace Corvane
{

class SCLAttribute;
class SCLDocument;

namespace Internal
{
class AttributeCriterion;
class AttributeReader;
class CrcCopy;
class PreorderWalk;
class SCLElementType;
class TreeBuilder;
class XmlTreeWriter;
} // namespace Internal

/// A node of the in-memory tree of an SCL file (IEC 61850-6): tag, text value, attributes,
/// children.
///
/// An element of any tag has the same shape; what the tags mean is the affair of the functions that
/// work on the tree.
///
/// **Children are grouped by tag.** Order exists only among children of one tag, and every position
/// (`pos`, `from`, `to`, the result of GetChildPos()) is a position inside one tag group. How
/// children of different tags were interleaved in a loaded file is not kept. They meet only in two
/// views: GetChildList() gives the groups in ascending tag id, which is the order in which the
/// process met the tags first; GetSortedChildList() gives them in schema order.
///
/// **Ownership.** A document owns its root, an element owns its attributes and its children.
/// Clone() and DetachChild() hand ownership to the caller. Every list of elements or attributes
/// that a function returns holds pointers into the tree and owns nothing.
///
/// **Changes.** Each changing operation takes `notify`: if true, the signal of the owning
/// SCLDocument goes out, directly from inside the call. Whether the change happens and whether the
/// document is marked modified never depends on it. An element outside any document changes without
/// signal and mark. A slot may change the tree; it sees the state that the operation's
/// description names. It may not delete the element that is changing, one that holds it, or the
/// document; on `sigDeleteElement` it may take out the element that is leaving.
///
/// **Reading.** A missing attribute reads as the empty text, so a missing and an empty attribute
/// are the same in all comparisons. Comparison of names and values is exact and case-sensitive.
///
/// Nothing here throws or reports a text; failures are results. No operation recurses over the
/// depth of the tree. Like the whole library, elements may be used from one thread only, and an
/// SCLNamePool must exist.
class CORVANE_EXPORT SCLElement
{
public:
    /// An element of that \a tag, which is pooled, without value, attributes and children.
    ///
    /// \param doc    the document that it belongs to, or null.
    /// \param parent what it names as its parent, or null. It does not enter itself among the
    ///               parent's children: see CreateChild() and AttachChild().
    SCLElement(const QString& tag, SCLDocument* doc, SCLElement* parent);
    /// Deletes all children and attributes. Sends no signal, marks nothing modified and does not
    /// take the element out of its parent.
    ~SCLElement();

    /// Copies member by member: the copy holds the very same attributes, children, document and
    /// parent, and whichever of the two is destroyed first leaves the other with dangling pointers.
    /// Use Clone() to duplicate an element.
    SCLElement(const SCLElement&) = default;
    SCLElement& operator=(const SCLElement& other);

    /// \name Tag, value, document
    /// \{

    /// The tag as it stands in the file, a namespace prefix included.
    QString GetTag() const;
    /// The text content; empty for most elements. A null `QString` if none was ever set.
    QString GetValue() const;
    /// Sets the text content. A value equal to the present one is no change: no signal, no mark.
    /// Otherwise sends `sigEditValue` (with \a notify) when the new value is stored.
    void SetValue(const QString& value, bool notify);
    /// The document that the element belongs to, or null.
    SCLDocument* GetDocument() const;
    /// Sets the document here and in all descendants, without signal or mark on either side.
    void SetDocument(SCLDocument* doc);
    /// Sets the parent pointer and nothing more: the groups of children stay as they are.
    void SetParent(SCLElement* parent);
    /// Always false, whatever the element holds.
    bool IsEmpty() const;
    /// Always true, whatever the element holds.
    bool CanEmpty();
    /// \}

    /// \name Attributes
    /// In their order, which is file order for a loaded element and order of creation otherwise.
    /// No schema reorders attributes.
    /// \{

    /// The attributes. They stay owned by the element.
    QList<SCLAttribute*> GetAttributeList();
    /// The first attribute of that \a name, or null. An empty \a name gives null.
    SCLAttribute* FindAttribute(const QString& name);
    /// The value of the first attribute of that \a name. For a missing one the empty text, which is
    /// not a null `QString`.
    QString GetAttribute(const QString& name);
    /// Sets an attribute: an existing one keeps its place, a new one goes to the end.
    ///
    /// A value equal to the present one is no change: no signal, no mark. Otherwise sends
    /// `sigEditAttribute` (with \a notify) when the value is stored; its old value is a null
    /// `QString` for a new attribute. An empty \a name is never found, so each call with one
    /// appends an attribute without a name, which no saved file can hold.
    ///
    /// \return true; false only if \a name is new and the name pool is full.
    bool SetAttribute(const QString& name, const QString& value, bool notify);
    /// Removes and deletes the first attribute of that \a name. Sends `sigRemoveAttribute` (with
    /// \a notify) when the element no longer lists the attribute, but before it is deleted.
    ///
    /// \return false if there is no such attribute; then nothing changes.
    bool RemoveAttribute(const QString& name, bool notify);
    /// Replaces all attributes by one per position of the two lists, without a signal. Names are
    /// not checked for duplicates; every search takes the first. Does nothing if \a names is empty
    /// or the lists differ in length.
    void SetAttributeList(const QStringList& names, const QStringList& values);
    /// \}

    /// \name Children
    /// A negative `pos` appends at the end of the tag group; 0 up to the group's size inserts
    /// before that position; a greater one fails. A failed call sends nothing and marks nothing.
    /// \{

    /// Creates a child. Sends `sigAddElement` (with \a notify) when it stands in its group.
    ///
    /// \return the child, owned by this element. Null for an empty \a tag, for a \a pos beyond the
    ///         group's size (the tag stays pooled, its group present) and for a full name pool.
    SCLElement* CreateChild(const QString& tag, int pos, bool notify);
    /// The same with attributes, set in ascending order of their names. `sigAddElement` goes out
    /// when the child has them all.
    SCLElement* CreateChild(const QString& tag, const QMap<QString, QString>& attributes, int pos,
                            bool notify);
    /// Takes a detached element in. Its whole subtree gets this element's document, also if that is
    /// null. Sends `sigAddElement` (with \a notify) at the end.
    ///
    /// The child's old parent is not told: detach it there first.
    ///
    /// \return true if attached: the element then belongs to this one. False, and nothing changed,
    ///         for a null child, for one that stands here already, for a \a pos beyond the group's
    ///         size, and for this element itself or one of its ancestors.
    bool AttachChild(SCLElement* child, int pos, bool notify);
    /// Takes a child out without deleting it: its parent becomes null, and so does the document of
    /// its whole subtree. Sends `sigDeleteElement` (with \a notify) while the child is still fully
    /// in the tree.
    ///
    /// \return true if detached: the caller owns the element now. False if it is null or no child
    ///         of this element.
    bool DetachChild(SCLElement* child, bool notify);
    /// Deletes a child with all that it holds. Sends `sigDeleteElement` (with \a notify) for the
    /// child, not for its descendants, while it is still in the tree.
    ///
    /// \return false if \a child is null or no child of this element.
    bool RemoveChild(SCLElement* child, bool notify);
    /// Moves the child at position \a from of the group of \a tag to position \a to. Sends
    /// `sigMoveElement` (with \a notify) after the move.
    ///
    /// \return false if there is no such group, a position is outside it or both are equal.
    bool MoveChild(const QString& tag, int from, int to, bool notify);
    /// Deletes all children. Unlike every other change it sends no signal and marks nothing
    /// modified.
    void ClearChild();
    /// All children, groups in ascending tag id. That order may differ from run to run.
    QList<SCLElement*> GetChildList();
    /// The number of children, or of all descendants. The element itself is not counted.
    int GetChildCount(bool recursive);
    /// The position of \a child in its tag group, or -1 if it is null or no child of this element.
    int GetChildPos(SCLElement* child);
    /// A copy with tag, value, attributes and resolved schema type, without document and parent.
    /// Nothing is signalled.
    ///
    /// \param deep true copies the whole subtree, false leaves the children out.
    /// \return the copy, which the caller owns. AttachChild() enters it into a document.
    SCLElement* Clone(bool deep);
    /// \}

    /// \name Search
    /// No search changes the tree or pools a name. What finds nothing returns null or an empty
    /// list.
    ///
    /// An attribute criterion maps names to required values. An empty one matches every element,
    /// and an empty value matches an element that has no such attribute.
    /// \{

    /// The nearest ancestor of that \a tag, the element itself not included. An empty \a tag gives
    /// the direct parent. Null if there is none.
    SCLElement* GetParent(const QString& tag);
    /// The first child of that \a tag, or null.
    SCLElement* GetFirstChild(const QString& tag);
    /// The child at position \a index of the group of \a tag, or null if there is none.
    SCLElement* FindChild(const QString& tag, int index);
    /// The logical node of that short name, on an `LDevice`: first among `LN0` by `lnClass` and
    /// `inst` (a prefix is ignored there), then among `LN` by `prefix`, `lnClass` and `inst`, each
    /// written without anything between. Null if there is none.
    SCLElement* FindChild(const QString& lnName);
    /// The first child of that \a tag that matches \a attributes.
    ///
    /// \param recursive true goes on below: depth-first through all children, groups in ascending
    ///        tag id, at each level all direct children of the tag before any descent.
    SCLElement* FindChild(const QString& tag, const QMap<QString, QString>& attributes,
                          bool recursive);
    /// The same with one attribute.
    SCLElement* FindChild(const QString& tag, const QString& attName, const QString& attValue,
                          bool recursive);
    /// The first child of any tag that matches \a attributes, groups in ascending tag id. Among
    /// children of different tags the winner may differ from run to run.
    SCLElement* FindChild(const QMap<QString, QString>& attributes);
    /// The same with one attribute.
    SCLElement* FindChild(const QString& attName, const QString& attValue);
    /// All children of that \a tag in their order.
    ///
    /// \param recursive true appends the matches below the first child of all, then those below the
    ///        next, and so on; children in ascending tag id, each with its whole subtree, direct
    ///        matches first. Elements of the tag inside one another are all found.
    /// \return a list of its own: the tree may change while it is walked.
    QList<SCLElement*> FindChildByType(const QString& tag, bool recursive);
    /// \}

    /// \name Schema order
    /// As the schema says that SCLDocControl::RegisterSchema() has loaded. Without a schema no
    /// element has a schema type.
    /// \{

    /// True if the schema knows the element and lets it be absent (`minOccurs` 0 at its place in
    /// the content model). False if the schema does not know it.
    bool CanIgnore();
    /// All children in schema order; tags that the schema does not list for this element follow in
    /// ascending tag id. An element unknown to the schema gives the order of GetChildList().
    QList<SCLElement*> GetSortedChildList();
    /// \}

    /// Writes the element as XML, children in schema order.
    ///
    /// A value is written only in a run with \a withChildren, and only if the element has no
    /// children. Characters that XML 1.0 cannot hold are left out, as are attributes without a name
    /// and all but the first of attributes that share one; characters that no XML name can hold
    /// become "_" in names. So the result is well-formed whatever the tree holds.
    ///
    /// \param writer       an open writer; no start or end of document is written.
    /// \param future       progress, or null. Rises by one for each element written, with event
    ///                     processing (user input excluded) after each step.
    /// \param withChildren false writes the tag and the attributes only.
    void WriteToXML(QXmlStreamWriter& writer, QFutureInterface<QString>* future, bool withChildren);

    /// \name Binary image
    /// The element with all below it as one record of tags, values, attributes and children, without
    /// a header or a check sum. It keeps texts as they are, also null ones apart from empty ones,
    /// and the order of attributes and of the children of one tag.
    /// \{

    /// Writes the record of this element, or fills this element from a record.
    ///
    /// Reading replaces tag and value, sets the attributes as SetAttribute() does and adds the
    /// children as AttachChild() does: what the element has besides stays, the document is marked
    /// modified, no signal of an element or attribute goes out. It is meant for a fresh element;
    /// one that stands among the children of another must be of the tag that the record has.
    ///
    /// Reading reports no failure. Past the end of the bytes texts are null and counts 0, and a
    /// length or a count that lies gives a tree that nobody wrote, never one larger than the bytes
    /// can account for. Check an image that may be damaged with SCLBinaryCheck first.
    ///
    /// \param stream  in its default settings, as both sides have to agree.
    /// \param writing true writes, false reads.
    /// \param future  progress, or null. Moves once, at the begin, with event processing (user input
    ///                excluded): when writing by one, when reading to the position of the device.
    void Serialize(QDataStream& stream, bool writing, QFutureInterface<QString>* future);
    /// The record of this element.
    QByteArray WriteToBinary();
    /// Fills this element from a record, as Serialize() does. Bytes behind the record are ignored.
    void ReadFromBinary(const QByteArray& bytes);
    /// \}

    /// Elements come from a store of their own, which goes back to the system when the last element
    /// is gone.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

private:
    friend class Internal::AttributeCriterion;
    friend class Internal::AttributeReader;
    friend class Internal::CrcCopy;
    friend class Internal::PreorderWalk;
    friend class Internal::TreeBuilder;
    friend class Internal::XmlTreeWriter;

    class CORVANE_NO_EXPORT BinaryReader;
    class CORVANE_NO_EXPORT BinaryWriter;

    using ChildGroups = QMap<unsigned short, QList<SCLElement*>>;

    SCLElement(unsigned short tagId, SCLDocument* doc, SCLElement* parent);

    SCLAttribute* AttributeOfId(unsigned short nameId) const;
    const QList<SCLElement*>* Group(unsigned short tagId) const;
    QList<SCLElement*>& GroupFor(unsigned short tagId);
    void Retag(unsigned short tagId);
    bool CompareAttribute(const Internal::AttributeCriterion& criterion) const;
    SCLElement* FirstMatch(unsigned short tagId,
                           const Internal::AttributeCriterion& criterion) const;
    SCLElement* FirstMatch(const Internal::AttributeCriterion& criterion) const;
    SCLElement* FindChild(const QString& tag, const Internal::AttributeCriterion& criterion,
                          bool recursive);
    SCLElement* CreateSilently(const QString& tag, int pos);
    bool HasChild(const SCLElement* child) const;
    bool IsInside(const SCLElement* ancestor) const;
    SCLElement* CloneNode() const;
    Internal::SCLElementType* GetSCLElementType();
    Internal::SCLElementType* TypeUnder(Internal::SCLElementType* parentType);
    QList<SCLElement*> SortedChildren(Internal::SCLElementType* type) const;

    unsigned short m_uTagId;
    QString m_strValue;
    Internal::SCLElementType* m_pElementType;
    SCLDocument* m_pDocument;
    SCLElement* m_pParent;
    QList<SCLAttribute*> m_listAttribute;
    ChildGroups m_mapChild;
};

} // namespace Corvane
