// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/AddressBook.h>
#include <corvane/help/Walks.h>
#include <corvane/help/WatchedEdit.h>

#include <QPair>
#include <QSet>

#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
namespace ParameterType = Internal::ParameterType;
using Internal::AddressBook;
using Internal::AddressKind;
using Internal::AddressPool;

namespace
{

/// The name of a control block and the `inst` of its `LDevice`.
using EntryName = QPair<QString, QString>;
using EntryNames = QSet<EntryName>;
/// `type` and value of a `P`.
using Parameter = QPair<QString, QString>;

/// What GOOSE and sampled values have each for themselves in an update.
struct Family {
    AddressPool& pool;
    SCLElement* (*controlOf)(SCLElement* entry);
    SCLElement* (*entryOf)(SCLElement* control, SCLElement* connectedAP);
    EntryNames entries = {};

    const QString& ControlTag() const { return pool.Kind().control.controlTag; }
    const QString& EntryTag() const { return pool.Kind().control.networkTag; }
};

/// The way from a root down to where the walk has come.
struct Step {
    const QString& tag;
    SCLElement* element;
};
using Way = std::vector<Step>;

/// One update. What it looks up ahead holds as long as no slot of its signals changes a tree; from
/// then on it asks anew at every step, and leaves alone what a slot has taken out.
class ConnectedAPUpdate
{
public:
    explicit ConnectedAPUpdate(SCLElement* connectedAP)
        : m_pConnectedAP(connectedAP), m_pBook(AddressBook::Take())
    {
    }

    bool Run(bool withAddress);
    /// Keeps what was looked up for the next update, if it still holds.
    void KeepBook();

private:
    void ReadAddresses();
    void RemoveStaleEntries(const Family& family);
    bool HasControl(const Family& family, const EntryNames& controls, SCLElement* entry) const;
    bool IsStillChild(SCLElement* entry, const QString& tag) const;
    EntryNames NamesOfControls(const QString& controlTag) const;
    EntryNames NamesOfEntries(const QString& entryTag) const;
    bool CreateMissingEntries(Family& goose, Family& sampledValues);
    bool CreateMissingEntries(Family& family, Way& way, const QString& inst);
    bool HasEntry(const Family& family, SCLElement* control, const EntryName& name) const;
    bool CreateEntry(Family& family, const EntryName& name);
    bool CreateTimes(SCLElement* entry);
    bool CreateAddress(SCLElement* parent, std::initializer_list<Parameter> parameters);
    bool CreateWithValue(SCLElement* parent, const QString& tag,
                         const QMap<QString, QString>& attributes, const QString& value);
    bool Stands(const Way& way) const;

    SCLElement* m_pConnectedAP;
    SCLElement* m_pIed = nullptr;
    SCLElement* m_pAccessPoint = nullptr;
    std::unique_ptr<AddressBook> m_pBook;
    Internal::WatchedEdit m_edit;
};

bool ConnectedAPUpdate::Run(bool withAddress)
{
    m_pAccessPoint = m_pBook->AccessPointOf(m_pConnectedAP);
    if (!m_pAccessPoint)
        return false;
    m_pIed = m_pAccessPoint->GetParent(QString());
    if (withAddress && !m_pConnectedAP->GetFirstChild(Tag::Address) &&
        !CreateAddress(m_pConnectedAP, {{ParameterType::Ip, QStringLiteral("0.0.0.0")},
                                        {ParameterType::IpSubnet, QStringLiteral("255.255.0.0")}}))
        return false;
    ReadAddresses();
    Family goose{m_pBook->Goose(), SCLHelp::GetGSEControlFromGSE, SCLHelp::GetGSEFromGSEControl};
    Family sampledValues{m_pBook->SampledValues(), SCLHelp::GetSMVControlFromSMV,
                         SCLHelp::GetSMVFromSMVControl};
    RemoveStaleEntries(goose);
    RemoveStaleEntries(sampledValues);
    return CreateMissingEntries(goose, sampledValues);
}

void ConnectedAPUpdate::KeepBook()
{
    if (!m_edit.IsAlone() || m_edit.HasFailed())
        return;
    m_pBook->Goose().EndUpdate();
    m_pBook->SampledValues().EndUpdate();
    if (m_edit.HasChanged() && !m_pBook->Holds(m_pConnectedAP))
        m_pBook->ForgetAddresses();
    AddressBook::Keep(std::move(m_pBook));
}

void ConnectedAPUpdate::ReadAddresses()
{
    if (!m_edit.IsAlone())
        m_pBook = std::make_unique<AddressBook>();
    m_pBook->ReadAddresses(m_pConnectedAP->GetParent(Tag::Communication));
}

// Their addresses stay taken until the end of the update.
void ConnectedAPUpdate::RemoveStaleEntries(const Family& family)
{
    const QList<SCLElement*> entries = m_pConnectedAP->FindChildByType(family.EntryTag(), false);
    if (entries.isEmpty())
        return;
    const EntryNames controls = NamesOfControls(family.ControlTag());
    for (SCLElement* entry : entries) {
        if (!IsStillChild(entry, family.EntryTag()) || HasControl(family, controls, entry))
            continue;
        Internal::CollectAddresses(entry, [&family](const QString& type, const QString& value) {
            family.pool.Release(type, value);
        });
        m_edit.Remove(m_pConnectedAP, entry);
    }
}

bool ConnectedAPUpdate::IsStillChild(SCLElement* entry, const QString& tag) const
{
    return m_edit.IsAlone() || m_pConnectedAP->FindChildByType(tag, false).contains(entry);
}

// An entry belongs to the nearest ConnectedAP, which need not be the element that is updated.
bool ConnectedAPUpdate::HasControl(const Family& family, const EntryNames& controls,
                                   SCLElement* entry) const
{
    if (!m_edit.IsAlone() || entry->GetParent(Tag::ConnectedAP) != m_pConnectedAP)
        return family.controlOf(entry);
    return controls.contains(
        {entry->GetAttribute(Attribute::cbName), entry->GetAttribute(Attribute::ldInst)});
}

EntryNames ConnectedAPUpdate::NamesOfControls(const QString& controlTag) const
{
    EntryNames names;
    if (!m_edit.IsAlone())
        return names;
    const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(m_pAccessPoint);
    for (SCLElement* lDevice : lDevices) {
        const QString inst = lDevice->GetAttribute(Attribute::inst);
        const QList<SCLElement*> controls = Internal::ControlBlocksOfFirstLN0(lDevice, controlTag);
        for (SCLElement* control : controls)
            names.insert({control->GetAttribute(Attribute::name), inst});
    }
    return names;
}

EntryNames ConnectedAPUpdate::NamesOfEntries(const QString& entryTag) const
{
    EntryNames names;
    const QList<SCLElement*> entries = m_pConnectedAP->FindChildByType(entryTag, false);
    for (SCLElement* entry : entries)
        names.insert(
            {entry->GetAttribute(Attribute::cbName), entry->GetAttribute(Attribute::ldInst)});
    return names;
}

bool ConnectedAPUpdate::CreateMissingEntries(Family& goose, Family& sampledValues)
{
    Way way{{Tag::IED, m_pIed}, {Tag::AccessPoint, m_pAccessPoint}};
    SCLElement* server = Stands(way) ? m_pAccessPoint->GetFirstChild(Tag::Server) : nullptr;
    if (!server)
        return false;
    way.push_back({Tag::Server, server});
    goose.entries = NamesOfEntries(goose.EntryTag());
    sampledValues.entries = NamesOfEntries(sampledValues.EntryTag());
    const QList<SCLElement*> lDevices = server->FindChildByType(Tag::LDevice, false);
    for (SCLElement* lDevice : lDevices) {
        way.push_back({Tag::LDevice, lDevice});
        SCLElement* ln0 = Stands(way) ? lDevice->GetFirstChild(Tag::LN0) : nullptr;
        if (ln0) {
            const QString inst = lDevice->GetAttribute(Attribute::inst);
            way.push_back({Tag::LN0, ln0});
            if (!CreateMissingEntries(goose, way, inst) ||
                !CreateMissingEntries(sampledValues, way, inst))
                return false;
            way.pop_back();
        }
        way.pop_back();
    }
    return true;
}

bool ConnectedAPUpdate::CreateMissingEntries(Family& family, Way& way, const QString& inst)
{
    if (!Stands(way))
        return true;
    const QList<SCLElement*> controls =
        way.back().element->FindChildByType(family.ControlTag(), false);
    for (SCLElement* control : controls) {
        way.push_back({family.ControlTag(), control});
        if (Stands(way)) {
            const EntryName name{control->GetAttribute(Attribute::name), inst};
            if (!HasEntry(family, control, name) && !CreateEntry(family, name))
                return false;
        }
        way.pop_back();
    }
    return true;
}

bool ConnectedAPUpdate::HasEntry(const Family& family, SCLElement* control,
                                 const EntryName& name) const
{
    return m_edit.IsAlone() ? family.entries.contains(name)
                            : family.entryOf(control, m_pConnectedAP) != nullptr;
}

bool ConnectedAPUpdate::CreateEntry(Family& family, const EntryName& name)
{
    const QString appId = family.pool.TakeAppId();
    const QString macAddress = family.pool.TakeMacAddress(appId);
    SCLElement* entry =
        m_edit.Create(m_pConnectedAP, family.EntryTag(),
                      {{Attribute::cbName, name.first}, {Attribute::ldInst, name.second}});
    if (!entry)
        return !m_edit.HasFailed();
    family.entries.insert(name);
    return CreateAddress(entry, {{ParameterType::MacAddress, macAddress},
                                 {ParameterType::VlanId, QStringLiteral("000")},
                                 {ParameterType::VlanPriority, QStringLiteral("4")},
                                 {ParameterType::AppId, appId}}) &&
           (!family.pool.Kind().hasTimes || CreateTimes(entry));
}

bool ConnectedAPUpdate::CreateTimes(SCLElement* entry)
{
    const QMap<QString, QString> milliseconds{{QStringLiteral("multiplier"), QStringLiteral("m")},
                                              {QStringLiteral("unit"), QStringLiteral("s")}};
    return CreateWithValue(entry, Tag::MinTime, milliseconds, QStringLiteral("2")) &&
           CreateWithValue(entry, Tag::MaxTime, milliseconds, QStringLiteral("5000"));
}

bool ConnectedAPUpdate::CreateAddress(SCLElement* parent,
                                      std::initializer_list<Parameter> parameters)
{
    SCLElement* address = m_edit.Create(parent, Tag::Address);
    for (const Parameter& parameter : parameters) {
        if (!address)
            break;
        if (!CreateWithValue(address, Tag::P, {{Attribute::type, parameter.first}},
                             parameter.second))
            return false;
    }
    return !m_edit.HasFailed();
}

bool ConnectedAPUpdate::CreateWithValue(SCLElement* parent, const QString& tag,
                                        const QMap<QString, QString>& attributes,
                                        const QString& value)
{
    if (SCLElement* child = m_edit.Create(parent, tag, attributes))
        m_edit.SetValue(child, value);
    return !m_edit.HasFailed();
}

bool ConnectedAPUpdate::Stands(const Way& way) const
{
    if (m_edit.IsAlone())
        return true;
    SCLElement* parent = Internal::RootOf(m_pConnectedAP);
    for (const Step& step : way) {
        if (!parent || !parent->FindChildByType(step.tag, false).contains(step.element))
            return false;
        parent = step.element;
    }
    return true;
}

void AppendAddresses(const AddressKind& kind, SCLElement* communication, QStringList& macAddresses,
                     QStringList& appIds)
{
    Internal::CollectAddresses(kind, communication, [&](const QString& type, const QString& value) {
        (type == ParameterType::MacAddress ? macAddresses : appIds).append(value);
    });
}

} // namespace

void SCLHelp::GetAllGoAddress(QStringList& macAddresses, QStringList& appIds,
                              SCLElement* communication)
{
    AppendAddresses(Internal::GooseAddresses(), communication, macAddresses, appIds);
}

void SCLHelp::GetAllSvAddress(QStringList& macAddresses, QStringList& appIds,
                              SCLElement* communication)
{
    AppendAddresses(Internal::SampledValuesAddresses(), communication, macAddresses, appIds);
}

QMap<QString, SCLElement*> SCLHelp::GetAddressP(SCLElement* address)
{
    QMap<QString, SCLElement*> parameters;
    if (!address)
        return parameters;
    const QList<SCLElement*> children = address->FindChildByType(Tag::P, false);
    for (SCLElement* parameter : children)
        parameters.insert(parameter->GetAttribute(Attribute::type), parameter);
    return parameters;
}

bool SCLHelp::UpdateChildForConnectedAP(SCLElement* connectedAP, bool withAddress)
{
    if (!connectedAP)
        return false;
    ConnectedAPUpdate update(connectedAP);
    const bool done = update.Run(withAddress);
    update.KeepBook();
    return done;
}

} // namespace Corvane
