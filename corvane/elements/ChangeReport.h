// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane
{

class SCLAttribute;
class SCLDocument;
class SCLElement;

namespace Internal
{

/// How the tree tells its document of a change: the only piece of the tree that knows SCLDocument.
/// All is void for an element outside any document.
class ChangeReport
{
public:
    /// \param notify whether signals go out; the modified mark is set in any case.
    ChangeReport(SCLDocument* document, bool notify) : m_pDocument(document), m_bNotify(notify) {}

    void Added(SCLElement* element) const;
    void AboutToDelete(SCLElement* element) const;
    void Moved(SCLElement* element, int from, int to) const;
    void AttributeEdited(SCLElement* element, SCLAttribute* attribute,
                         const QString& oldValue) const;
    void AttributeRemoved(SCLElement* element, SCLAttribute* attribute) const;
    void ValueEdited(SCLElement* element) const;

    void MarkModified() const;

private:
    bool Signals() const { return m_pDocument && m_bNotify; }

    SCLDocument* m_pDocument;
    bool m_bNotify;
};

} // namespace Internal
} // namespace Corvane
