// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SharedTexts.h>

#include <QStringView>
#include <QVector>

namespace Corvane
{

class SCLDocument;
class SCLElement;

namespace Internal
{

/// Builds the tree of a document straight from the tokens of a reader: no signal, no modified mark,
/// no search. Equal short values share their text.
class TreeBuilder
{
public:
    explicit TreeBuilder(SCLDocument* document);

    /// Whether no element is open.
    bool IsOutside() const { return m_openElements.isEmpty(); }
    /// Opens an element, as the last child of its group in the innermost open element; without one
    /// it is a root, which the caller owns. Null if the name pool is full.
    SCLElement* StartElement(QStringView tag);
    /// Makes room for that many attributes of the innermost open element.
    void ReserveAttributes(int count);
    /// Appends an attribute to the innermost open element. False if the name pool is full.
    bool AddAttribute(QStringView name, QStringView value);
    /// Appends to the value of the innermost open element, if there is one.
    void AppendText(QStringView text);
    /// Closes the innermost open element, if there is one.
    void EndElement();

private:
    // An element that is open, and the group that its last child went to: mostly the next child's.
    struct OpenElement {
        SCLElement* element;
        unsigned short lastTagId;
        QList<SCLElement*>* lastGroup;
    };

    void AppendTo(OpenElement& parent, SCLElement* child);
    SCLDocument* m_pDocument;
    QVector<OpenElement> m_openElements;
    SharedTexts m_texts;
};

} // namespace Internal
} // namespace Corvane
