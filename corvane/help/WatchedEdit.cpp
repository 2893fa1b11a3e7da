// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/WatchedEdit.h>

#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/SCLElement.h>

namespace Corvane::Internal
{

template <typename Change>
void WatchedEdit::Make(Change change)
{
    const quint64 before = ChangeStamp::BySlots();
    change();
    m_bChanged = true;
    m_bAlone = m_bAlone && ChangeStamp::BySlots() == before;
}

SCLElement* WatchedEdit::Create(SCLElement* parent, const QString& tag,
                                const QMap<QString, QString>& attributes)
{
    SCLElement* child = nullptr;
    Make([&] {
        child = attributes.isEmpty() ? parent->CreateChild(tag, -1, true)
                                     : parent->CreateChild(tag, attributes, -1, true);
    });
    m_bFailed = m_bFailed || !child;
    const bool stands = m_bAlone || parent->FindChildByType(tag, false).contains(child);
    return stands ? child : nullptr;
}

void WatchedEdit::SetValue(SCLElement* element, const QString& value)
{
    Make([&] { element->SetValue(value, true); });
}

void WatchedEdit::Remove(SCLElement* parent, SCLElement* child)
{
    Make([&] { parent->RemoveChild(child, true); });
}

} // namespace Corvane::Internal
