// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/WatchedEdit.h>

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>

namespace Corvane::Internal
{

namespace
{

template <typename Change>
quint64 MovesOf(Change change)
{
    const quint64 before = ChangeStamp::Now();
    change();
    return ChangeStamp::Now() - before;
}

// How far each change moves the stamp when no slot adds to it, found on elements that have no
// document.
struct OwnMoves {
    OwnMoves()
    {
        SCLElement parent(Tag::Address, nullptr, nullptr);
        creation = MovesOf([&] { parent.CreateChild(Tag::P, -1, true); });
        const quint64 withOne = MovesOf([&] {
            parent.CreateChild(Tag::P, {{Attribute::type, Attribute::type}}, -1, true);
        });
        attribute = withOne - creation;
        value = MovesOf([&] { parent.SetValue(Attribute::type, true); });
        removal = OfRemoval(0);
        removalOfParent = OfRemoval(1);
        descendant = OfRemoval(2) - removalOfParent;
    }

    static quint64 OfRemoval(int childCount)
    {
        SCLElement parent(Tag::ConnectedAP, nullptr, nullptr);
        SCLElement* child = parent.CreateChild(Tag::Address, -1, true);
        for (int i = 0; i < childCount; ++i)
            child->CreateChild(Tag::P, -1, true);
        return MovesOf([&] { parent.RemoveChild(child, true); });
    }
    quint64 OfRemoval(SCLElement* child) const
    {
        const int descendants = child->GetChildCount(true);
        return descendants == 0
                   ? removal
                   : removalOfParent + descendant * static_cast<quint64>(descendants - 1);
    }

    quint64 creation;
    quint64 attribute;
    quint64 value;
    quint64 removal;
    quint64 removalOfParent;
    quint64 descendant;
};

const OwnMoves& Own()
{
    static const OwnMoves moves;
    return moves;
}

} // namespace

SCLElement* WatchedEdit::Create(SCLElement* parent, const QString& tag,
                                const QMap<QString, QString>& attributes)
{
    const quint64 own = Own().creation + Own().attribute * static_cast<quint64>(attributes.size());
    SCLElement* child = nullptr;
    const quint64 moves = MovesOf([&] {
        child = attributes.isEmpty() ? parent->CreateChild(tag, -1, true)
                                     : parent->CreateChild(tag, attributes, -1, true);
    });
    m_bChanged = true;
    m_bAlone = m_bAlone && moves == own;
    m_bFailed = m_bFailed || !child;
    const bool stands = m_bAlone || parent->FindChildByType(tag, false).contains(child);
    return stands ? child : nullptr;
}

void WatchedEdit::SetValue(SCLElement* element, const QString& value)
{
    const quint64 own = element->GetValue() == value ? 0 : Own().value;
    const quint64 moves = MovesOf([&] { element->SetValue(value, true); });
    m_bChanged = true;
    m_bAlone = m_bAlone && moves == own;
}

// How far a removal moves the stamp depends on what the child holds, which the slots of its signal
// could change to make up for other changes. The last of them sees whether there was any.
void WatchedEdit::Remove(SCLElement* parent, SCLElement* child)
{
    const quint64 own = Own().OfRemoval(child);
    const quint64 before = ChangeStamp::Now();
    bool alone = true;
    const QObject context;
    if (const SCLDocument* document = parent->GetDocument())
        QObject::connect(document, &SCLDocument::sigDeleteElement, &context,
                         [&] { alone = alone && ChangeStamp::Now() == before; });
    const quint64 moves = MovesOf([&] { parent->RemoveChild(child, true); });
    m_bChanged = true;
    m_bAlone = m_bAlone && alone && moves == own;
}

} // namespace Corvane::Internal
