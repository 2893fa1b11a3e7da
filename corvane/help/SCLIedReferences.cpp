// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLIedReferences.h>

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TextPattern.h>
#include <corvane/help/Walks.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::PreorderWalk;
using Action = SCLIedReferences::Action;
using Change = SCLIedReferences::Change;
using Refusal = SCLIedReferences::Refusal;
using Result = SCLIedReferences::Result;
using Changes = QList<Change>;
using LDeviceNames = QSet<QString>;

namespace
{

const QString g_strUnassigned = QStringLiteral("None");
const QString g_strOwnIED = QStringLiteral("@");

// What an element may have to do with the name of an IED.
enum class Role {
    None,
    // No part of the station, whatever it holds.
    Private,
    IED,
    // Refers by `iedName`, and is nothing without its IED.
    Reference,
    // Refers by `iedName`, and has a meaning without an IED.
    PlantNode,
    // Refers by its text.
    Subscriber,
    // May hold object references.
    Data,
    GooseBlock,
    SampledValueBlock,
    ReportBlock
};

Role RoleOf(const SCLElement* element)
{
    static const QHash<QString, Role> roles = {{Tag::Private, Role::Private},
                                               {Tag::IED, Role::IED},
                                               {Tag::ConnectedAP, Role::Reference},
                                               {Tag::ExtRef, Role::Reference},
                                               {Tag::ClientLN, Role::Reference},
                                               {Tag::KDC, Role::Reference},
                                               {Tag::Association, Role::Reference},
                                               {Tag::LNode, Role::PlantNode},
                                               {Tag::IEDName, Role::Subscriber},
                                               {Tag::DAI, Role::Data},
                                               {Tag::DA, Role::Data},
                                               {Tag::GSEControl, Role::GooseBlock},
                                               {Tag::SampledValueControl, Role::SampledValueBlock},
                                               {Tag::ReportControl, Role::ReportBlock}};
    return roles.value(element->GetTag(), Role::None);
}

// The attributes of common data class ORG that are object references.
bool IsObjectReference(const QString& daName)
{
    static const QSet<QString> names = {QStringLiteral("setSrcRef"), QStringLiteral("setSrcCB"),
                                        QStringLiteral("setTstRef"), QStringLiteral("setTstCB")};
    return names.contains(daName);
}

QString NameOf(SCLElement* element)
{
    return element->GetAttribute(Attribute::name);
}

// Whether references can mean an IED of that name.
bool IsReferable(const QString& name)
{
    return !name.isEmpty() && name != g_strUnassigned && name != g_strOwnIED;
}

QList<SCLElement*> OtherIEDs(SCLElement* ied)
{
    QList<SCLElement*> others = Internal::RootOf(ied)->FindChildByType(Tag::IED, false);
    others.removeOne(ied);
    return others;
}

bool HasNamesake(SCLElement* ied, const QString& name)
{
    const QList<SCLElement*> others = OtherIEDs(ied);
    return std::any_of(others.cbegin(), others.cend(),
                       [&name](SCLElement* other) { return NameOf(other) == name; });
}

// Those of all servers, unlike the shared walk.
QList<SCLElement*> AllLDevices(SCLElement* ied)
{
    QList<SCLElement*> lDevices;
    const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
    for (SCLElement* accessPoint : accessPoints) {
        const QList<SCLElement*> servers = accessPoint->FindChildByType(Tag::Server, false);
        for (SCLElement* server : servers)
            lDevices += server->FindChildByType(Tag::LDevice, false);
    }
    return lDevices;
}

bool IsNamedByFunction(SCLElement* lDevice)
{
    return !lDevice->GetAttribute(Attribute::ldName).isEmpty();
}

QString LDeviceName(const QString& iedName, SCLElement* lDevice)
{
    return IsNamedByFunction(lDevice) ? lDevice->GetAttribute(Attribute::ldName)
                                      : iedName + lDevice->GetAttribute(Attribute::inst);
}

LDeviceNames NamesOfOthers(SCLElement* ied)
{
    LDeviceNames names;
    const QList<SCLElement*> others = OtherIEDs(ied);
    for (SCLElement* other : others) {
        const QString name = NameOf(other);
        const QList<SCLElement*> lDevices = AllLDevices(other);
        for (SCLElement* lDevice : lDevices)
            names.insert(LDeviceName(name, lDevice));
    }
    return names;
}

// The names that follow from the name of an IED, which may be another than its own.
LDeviceNames DerivedNames(SCLElement* ied, const QString& iedName)
{
    LDeviceNames names;
    const QList<SCLElement*> lDevices = AllLDevices(ied);
    for (SCLElement* lDevice : lDevices) {
        if (!IsNamedByFunction(lDevice))
            names.insert(LDeviceName(iedName, lDevice));
    }
    return names;
}

LDeviceNames AllNames(SCLElement* ied)
{
    LDeviceNames names;
    const QString name = NameOf(ied);
    const QList<SCLElement*> lDevices = AllLDevices(ied);
    for (SCLElement* lDevice : lDevices)
        names.insert(LDeviceName(name, lDevice));
    return names;
}

// Where the text of an element begins behind white space.
auto Begin(const QString& text)
{
    const auto* const begin =
        std::find_if_not(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
    return static_cast<decltype(text.size())>(begin - text.cbegin());
}

// Whether an object reference begins with one of these names.
bool RefersTo(const LDeviceNames& names, const QString& reference)
{
    const auto begin = Begin(reference);
    const auto end = reference.indexOf(QLatin1Char('/'), begin);
    return end >= 0 && names.contains(reference.mid(begin, end - begin));
}

// The values of a data instance that are object references into one of these.
QList<SCLElement*> ReferringValues(const LDeviceNames& names, SCLElement* data)
{
    QList<SCLElement*> referring;
    if (!IsObjectReference(NameOf(data)))
        return referring;
    const QList<SCLElement*> values = data->FindChildByType(Tag::Val, false);
    for (SCLElement* value : values) {
        if (RefersTo(names, value->GetValue()))
            referring.append(value);
    }
    return referring;
}

// The text with the name that it begins with replaced, and all else of it kept.
QString WithNewBegin(QString text, const QString& oldName, const QString& newName)
{
    return text.replace(Begin(text), oldName.size(), newName);
}

// Gathers changes; what would change nothing is passed over.
class ChangeList
{
public:
    void SetAttribute(SCLElement* element, const QString& name, const QString& value)
    {
        const SCLAttribute* attribute = element->FindAttribute(name);
        const QString oldValue = attribute ? attribute->GetValue() : QString();
        if (!attribute || oldValue != value)
            m_changes.append({element, Action::SetAttribute, name, oldValue, value});
    }
    void RemoveAttribute(SCLElement* element, const QString& name)
    {
        if (const SCLAttribute* attribute = element->FindAttribute(name))
            m_changes.append(
                {element, Action::RemoveAttribute, name, attribute->GetValue(), QString()});
    }
    void SetText(SCLElement* element, const QString& text)
    {
        if (element->GetValue() != text)
            m_changes.append({element, Action::SetText, QString(), element->GetValue(), text});
    }
    void RemoveElement(SCLElement* element, const QString& iedName)
    {
        m_changes.append({element, Action::RemoveElement, QString(), iedName, QString()});
    }

    Changes Take() { return std::move(m_changes); }

private:
    Changes m_changes;
};

void SkipBelow(PreorderWalk& walk, SCLElement* element)
{
    for (int left = element->GetChildCount(true); left > 0; --left)
        walk.Next();
}

// Shows an edit all elements that have a role. What is below an element for which it returns false
// is left out.
template <typename Edit>
void Show(SCLElement* root, Edit& edit)
{
    PreorderWalk walk(root);
    while (SCLElement* element = walk.Next()) {
        const Role role = RoleOf(element);
        const bool goesOn =
            role == Role::None || (role != Role::Private && edit.Look(role, element));
        if (!goesOn)
            SkipBelow(walk, element);
    }
}

class RenameEdit
{
public:
    RenameEdit(SCLElement* ied, const QString& newName)
        : m_pIed(ied), m_strOldName(NameOf(ied)), m_strNewName(newName)
    {
        if (IsReferable(m_strOldName))
            m_lDevices = DerivedNames(ied, m_strOldName).subtract(NamesOfOthers(ied));
    }

    Changes Plan()
    {
        m_changes.SetAttribute(m_pIed, Attribute::name, m_strNewName);
        Show(Internal::RootOf(m_pIed), *this);
        return m_changes.Take();
    }

    bool Look(Role role, SCLElement* element)
    {
        switch (role) {
        case Role::Reference:
        case Role::PlantNode:
            if (IsReferable(m_strOldName) &&
                element->GetAttribute(Attribute::iedName) == m_strOldName)
                m_changes.SetAttribute(element, Attribute::iedName, m_strNewName);
            break;
        case Role::Subscriber:
            if (IsReferable(m_strOldName) && element->GetValue().trimmed() == m_strOldName)
                m_changes.SetText(element, Renamed(element->GetValue()));
            break;
        case Role::Data:
            LookAtData(element);
            break;
        case Role::GooseBlock:
            SetOwnId(element, Attribute::appID);
            break;
        case Role::SampledValueBlock:
            SetOwnId(element, Attribute::smvID);
            break;
        case Role::ReportBlock:
            LookAtReport(element);
            break;
        default:
            break;
        }
        return true;
    }

private:
    QString Renamed(const QString& text) const
    {
        return WithNewBegin(text, m_strOldName, m_strNewName);
    }

    void LookAtData(SCLElement* data)
    {
        const QList<SCLElement*> values = ReferringValues(m_lDevices, data);
        for (SCLElement* value : values)
            m_changes.SetText(value, Renamed(value->GetValue()));
    }

    void SetOwnId(SCLElement* block, const QString& attribute)
    {
        SCLElement* node = block->GetParent(QString());
        SCLElement* lDevice = OwnLDeviceOf(node);
        if (lDevice && node->GetTag() == Tag::LN0)
            m_changes.SetAttribute(
                block, attribute,
                Internal::FillPattern(
                    "%1%2/LLN0.%3",
                    {m_strNewName, lDevice->GetAttribute(Attribute::inst), NameOf(block)}));
    }

    void LookAtReport(SCLElement* block)
    {
        const QString id = block->GetAttribute(Attribute::rptID);
        if (RefersTo(m_lDevices, id) && OwnLDeviceOf(block->GetParent(QString())))
            m_changes.SetAttribute(block, Attribute::rptID, Renamed(id));
    }

    // The LDevice of a logical node, if it is one of the IED.
    SCLElement* OwnLDeviceOf(SCLElement* node) const
    {
        SCLElement* lDevice = node->GetParent(QString());
        SCLElement* at = lDevice;
        for (const QString& tag : {Tag::LDevice, Tag::Server, Tag::AccessPoint}) {
            if (!at || at->GetTag() != tag)
                return nullptr;
            at = at->GetParent(QString());
        }
        return at == m_pIed ? lDevice : nullptr;
    }

    SCLElement* const m_pIed;
    const QString m_strOldName;
    const QString m_strNewName;
    LDeviceNames m_lDevices;
    ChangeList m_changes;
};

class DeleteEdit
{
public:
    explicit DeleteEdit(SCLElement* ied) : m_pIed(ied), m_strName(NameOf(ied))
    {
        if (IsReferable(m_strName))
            m_lDevices = AllNames(ied).subtract(NamesOfOthers(ied));
    }

    Changes Plan()
    {
        if (IsReferable(m_strName))
            Show(Internal::RootOf(m_pIed), *this);
        m_changes.RemoveElement(m_pIed, m_strName);
        return m_changes.Take();
    }

    bool Look(Role role, SCLElement* element)
    {
        switch (role) {
        case Role::IED:
            return element != m_pIed;
        case Role::Reference:
            return element->GetAttribute(Attribute::iedName) != m_strName || Remove(element);
        case Role::Subscriber:
            return element->GetValue().trimmed() != m_strName || Remove(element);
        case Role::PlantNode:
            return element->GetAttribute(Attribute::iedName) != m_strName || Unassign(element);
        case Role::Data:
            LookAtData(element);
            return true;
        default:
            return true;
        }
    }

private:
    // What an LNode demands of the plant.
    using Demand = QList<QString>;
    using Demands = QSet<Demand>;

    static Demand DemandOf(SCLElement* lNode)
    {
        return {lNode->GetAttribute(Attribute::prefix), lNode->GetAttribute(Attribute::lnClass),
                lNode->GetAttribute(Attribute::lnInst)};
    }

    static bool IsUnassigned(SCLElement* lNode)
    {
        const QString iedName = lNode->GetAttribute(Attribute::iedName);
        return (iedName.isEmpty() || iedName == g_strUnassigned) &&
               lNode->GetAttribute(Attribute::ldInst).isEmpty();
    }

    // What the LNodes of an element demand without an IED.
    Demands& UnassignedBelow(SCLElement* parent)
    {
        const auto known = m_unassigned.find(parent);
        if (known != m_unassigned.end())
            return *known;
        Demands demands;
        const QList<SCLElement*> lNodes = parent->FindChildByType(Tag::LNode, false);
        for (SCLElement* lNode : lNodes) {
            if (IsUnassigned(lNode))
                demands.insert(DemandOf(lNode));
        }
        return *m_unassigned.insert(parent, demands);
    }

    bool Remove(SCLElement* element)
    {
        m_changes.RemoveElement(element, m_strName);
        SCLElement* parent = element->GetParent(QString());
        if (parent->GetTag() == Tag::Inputs &&
            ++m_removedInputs[parent] == parent->GetChildCount(false))
            m_changes.RemoveElement(parent, m_strName);
        return false;
    }

    bool Unassign(SCLElement* lNode)
    {
        Demands& unassigned = UnassignedBelow(lNode->GetParent(QString()));
        const Demand demand = DemandOf(lNode);
        if (unassigned.contains(demand))
            return Remove(lNode);
        unassigned.insert(demand);
        m_changes.SetAttribute(lNode, Attribute::iedName, g_strUnassigned);
        m_changes.RemoveAttribute(lNode, Attribute::ldInst);
        return true;
    }

    void LookAtData(SCLElement* data)
    {
        const QList<SCLElement*> values = ReferringValues(m_lDevices, data);
        for (SCLElement* value : values)
            m_changes.SetText(value, QString::fromLatin1(""));
    }

    SCLElement* const m_pIed;
    const QString m_strName;
    LDeviceNames m_lDevices;
    QHash<SCLElement*, Demands> m_unassigned;
    QHash<SCLElement*, int> m_removedInputs;
    ChangeList m_changes;
};

Refusal WhyNotInFile(SCLElement* ied)
{
    SCLElement* root = Internal::RootOf(ied);
    const bool isThere = root && ied->GetTag() == Tag::IED && ied->GetParent(QString()) == root;
    if (!isThere)
        return Refusal::NotInDocument;
    const QString name = NameOf(ied);
    return IsReferable(name) && HasNamesake(ied, name) ? Refusal::NameAmbiguous
                                                       : Refusal::NotRefused;
}

Refusal WhyNotRename(SCLElement* ied, const QString& newName)
{
    const Refusal refusal = WhyNotInFile(ied);
    if (refusal != Refusal::NotRefused)
        return refusal;
    if (!SCLIedReferences::IsIEDName(newName))
        return Refusal::NameNotAllowed;
    if (HasNamesake(ied, newName))
        return Refusal::NameTaken;
    const bool isClash =
        newName != NameOf(ied) && NamesOfOthers(ied).intersects(DerivedNames(ied, newName));
    return isClash ? Refusal::LDeviceNameTaken : Refusal::NotRefused;
}

bool Make(const Change& change)
{
    switch (change.action) {
    case Action::SetAttribute:
        return change.element->SetAttribute(change.attribute, change.newValue, true);
    case Action::RemoveAttribute:
        return change.element->RemoveAttribute(change.attribute, true);
    case Action::SetText:
        change.element->SetValue(change.newValue, true);
        return true;
    case Action::RemoveElement:
        return change.element->GetParent(QString())->RemoveChild(change.element, true);
    }
    return false;
}

Result Made(const Result& plan)
{
    Result made{plan.refusal, {}};
    made.changes.reserve(plan.changes.size());
    for (const Change& change : plan.changes) {
        if (!Make(change))
            continue;
        made.changes.append(change);
        if (change.action == Action::RemoveElement)
            made.changes.last().element = nullptr;
    }
    return made;
}

} // namespace

bool SCLIedReferences::IsIEDName(const QString& name)
{
    constexpr int longest = 64;
    const auto isLetter = [](QChar c) {
        return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
    };
    const auto isAllowed = [isLetter](QChar c) {
        return isLetter(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
               c == QLatin1Char('_');
    };
    return !name.isEmpty() && name.size() <= longest && isLetter(name.at(0)) &&
           std::all_of(name.cbegin(), name.cend(), isAllowed) && name != g_strUnassigned;
}

Result SCLIedReferences::PlanRename(SCLElement* ied, const QString& newName)
{
    const Refusal refusal = WhyNotRename(ied, newName);
    if (refusal != Refusal::NotRefused)
        return {refusal, {}};
    return {refusal, RenameEdit(ied, newName).Plan()};
}

Result SCLIedReferences::Rename(SCLElement* ied, const QString& newName)
{
    return Made(PlanRename(ied, newName));
}

Result SCLIedReferences::PlanDelete(SCLElement* ied)
{
    const Refusal refusal = WhyNotInFile(ied);
    if (refusal != Refusal::NotRefused)
        return {refusal, {}};
    return {refusal, DeleteEdit(ied).Plan()};
}

Result SCLIedReferences::Delete(SCLElement* ied)
{
    return Made(PlanDelete(ied));
}

} // namespace Corvane
