// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/AddressTargets.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <QVarLengthArray>

namespace Corvane::Internal
{

namespace
{

QStringList Segments(const QString& name)
{
    return name.isEmpty() ? QStringList() : name.split(QLatin1Char('.'), Qt::KeepEmptyParts);
}

bool IsOneOf(SCLElement* element, const QString& tag, const QString& otherTag)
{
    const QString own = element->GetTag();
    return own == tag || own == otherTag;
}

void InsertFirst(QHash<QString, SCLElement*>& names, const QString& name, SCLElement* element)
{
    SCLElement*& first = names[name];
    if (!first)
        first = element;
}

// The texts under which SCLElement::FindChild(const QString&) finds logical nodes.
QHash<QString, SCLElement*> NodesByName(SCLElement* lDevice)
{
    QHash<QString, SCLElement*> names;
    const QList<SCLElement*> zeros = lDevice->FindChildByType(Tag::LN0, false);
    for (SCLElement* ln0 : zeros)
        InsertFirst(
            names, ln0->GetAttribute(Attribute::lnClass) + ln0->GetAttribute(Attribute::inst), ln0);
    const QList<SCLElement*> nodes = lDevice->FindChildByType(Tag::LN, false);
    for (SCLElement* ln : nodes)
        InsertFirst(names,
                    ln->GetAttribute(Attribute::prefix) + ln->GetAttribute(Attribute::lnClass) +
                        ln->GetAttribute(Attribute::inst),
                    ln);
    return names;
}

QHash<QString, SCLElement*> LDevicesByInst(SCLElement* ied)
{
    QHash<QString, SCLElement*> names;
    const QList<SCLElement*> lDevices = LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices)
        InsertFirst(names, lDevice->GetAttribute(Attribute::inst), lDevice);
    return names;
}

} // namespace

AddressTarget AddressTargets::Follow(SCLElement* extRef, const AddressPath& path)
{
    const Place place = PlaceOf(extRef);
    AddressTarget target;
    target.ied = place.ied;
    target.lDevice = LDeviceAt(place, path.ldInst);
    target.node = target.lDevice ? NodeAt(target.lDevice, path.lnName) : nullptr;
    if (!target.node)
        return target;
    const QStringList doNames = Segments(path.doName);
    const QStringList daNames = Segments(path.daName);
    FollowInstance(target, doNames, daNames);
    if (!target.dataObject || (!target.attribute && !daNames.isEmpty()))
        FollowTemplates(target, doNames, daNames);
    return target;
}

// Remembers the places of all that is climbed over, so that depth is paid for once.
AddressTargets::Place AddressTargets::PlaceOf(SCLElement* extRef)
{
    QVarLengthArray<SCLElement*, 16> climbed;
    SCLElement* ancestor = extRef->GetParent(QString());
    while (ancestor && !m_places.contains(ancestor)) {
        climbed.append(ancestor);
        ancestor = ancestor->GetParent(QString());
    }
    Place place = m_places.value(ancestor);
    for (auto it = climbed.crbegin(); it != climbed.crend(); ++it) {
        const QString tag = (*it)->GetTag();
        if (tag == Tag::IED)
            place = {*it, nullptr};
        else if (tag == Tag::Server)
            place.server = *it;
        m_places.insert(*it, place);
    }
    return place;
}

SCLElement* AddressTargets::LDeviceAt(const Place& place, const QString& inst)
{
    if (!place.ied || inst.isEmpty())
        return nullptr;
    SCLElement* own =
        place.server ? m_children.Find(place.server, Tag::LDevice, Attribute::inst, inst) : nullptr;
    if (own)
        return own;
    auto known = m_lDevicesOfIed.find(place.ied);
    if (known == m_lDevicesOfIed.end())
        known = m_lDevicesOfIed.insert(place.ied, LDevicesByInst(place.ied));
    return known->value(inst);
}

SCLElement* AddressTargets::NodeAt(SCLElement* lDevice, const QString& lnName)
{
    auto known = m_nodesOfLDevice.find(lDevice);
    if (known == m_nodesOfLDevice.end())
        known = m_nodesOfLDevice.insert(lDevice, NodesByName(lDevice));
    return known->value(lnName);
}

SCLElement* AddressTargets::NamedChild(SCLElement* parent, const QString& tag, const QString& name)
{
    return parent ? m_children.Find(parent, tag, Attribute::name, name) : nullptr;
}

void AddressTargets::FollowInstance(AddressTarget& target, const QStringList& doNames,
                                    const QStringList& daNames)
{
    SCLElement* current = target.node;
    for (int i = 0; current && i < doNames.size(); ++i)
        current = NamedChild(current, i == 0 ? Tag::DOI : Tag::SDI, doNames.at(i));
    target.dataObject = current == target.node ? nullptr : current;
    current = target.dataObject;
    for (int i = 0; current && i < daNames.size(); ++i)
        current = NamedChild(current, i + 1 == daNames.size() ? Tag::DAI : Tag::SDI, daNames.at(i));
    target.attribute = current == target.dataObject ? nullptr : current;
}

void AddressTargets::FollowTemplates(AddressTarget& target, const QStringList& doNames,
                                     const QStringList& daNames)
{
    SCLElement* lnType = m_templates.Follow(target.node, Attribute::lnType, Tag::LNodeType);
    SCLElement* dataObject = lnType ? DescendTemplates(lnType, doNames) : nullptr;
    if (!dataObject || dataObject == lnType)
        return;
    if (!target.dataObject)
        target.dataObject = dataObject;
    SCLElement* attribute = DescendTemplates(dataObject, daNames);
    if (attribute && attribute != dataObject && IsOneOf(attribute, Tag::DA, Tag::BDA))
        target.attribute = attribute;
}

SCLElement* AddressTargets::DescendTemplates(SCLElement* current, const QStringList& names)
{
    for (auto it = names.constBegin(); current && it != names.constEnd(); ++it)
        current = TemplateStep(current, *it);
    return current;
}

// An address does not show where its data object ends: the cut at a known attribute may leave a
// structured attribute with the data object.
SCLElement* AddressTargets::TemplateStep(SCLElement* current, const QString& name)
{
    if (IsOneOf(current, Tag::DO, Tag::SDO)) {
        SCLElement* doType = m_templates.Follow(current, Attribute::type, Tag::DOType);
        SCLElement* da = NamedChild(doType, Tag::DA, name);
        return da ? da : NamedChild(doType, Tag::SDO, name);
    }
    if (IsOneOf(current, Tag::DA, Tag::BDA))
        return NamedChild(m_templates.Follow(current, Attribute::type, Tag::DAType), Tag::BDA,
                          name);
    return NamedChild(current, Tag::DO, name);
}

} // namespace Corvane::Internal
