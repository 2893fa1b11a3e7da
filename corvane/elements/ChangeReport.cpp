// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/ChangeReport.h>

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/ChangeStamp.h>

namespace Corvane::Internal
{

void ChangeReport::Added(SCLElement* element) const
{
    if (Signals())
        ChangeStamp::Send([&] { Q_EMIT m_pDocument->sigAddElement(element); });
}

void ChangeReport::AboutToDelete(SCLElement* element) const
{
    if (Signals())
        ChangeStamp::Send([&] { Q_EMIT m_pDocument->sigDeleteElement(element); });
}

void ChangeReport::Moved(SCLElement* element, int from, int to) const
{
    if (Signals())
        ChangeStamp::Send([&] { Q_EMIT m_pDocument->sigMoveElement(element, from, to); });
}

void ChangeReport::AttributeEdited(SCLElement* element, SCLAttribute* attribute,
                                   const QString& oldValue) const
{
    if (Signals())
        ChangeStamp::Send(
            [&] { Q_EMIT m_pDocument->sigEditAttribute(element, attribute, oldValue); });
}

void ChangeReport::AttributeRemoved(SCLElement* element, SCLAttribute* attribute) const
{
    if (Signals())
        ChangeStamp::Send([&] { Q_EMIT m_pDocument->sigRemoveAttribute(element, attribute); });
}

void ChangeReport::ValueEdited(SCLElement* element) const
{
    if (Signals())
        ChangeStamp::Send([&] { Q_EMIT m_pDocument->sigEditValue(element); });
}

void ChangeReport::MarkModified() const
{
    if (m_pDocument)
        ChangeStamp::Send([&] { m_pDocument->SetModified(true, false); });
}

} // namespace Corvane::Internal
