// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/AttributeCriterion.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <algorithm>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::AttributeCriterion;
using Internal::ControlKind;

namespace
{

SCLElement* FirstMatch(const QList<SCLElement*>& elements, const AttributeCriterion& criterion)
{
    const auto it = std::find_if(elements.constBegin(), elements.constEnd(),
                                 [&](SCLElement* element) { return criterion.Matches(element); });
    return it == elements.constEnd() ? nullptr : *it;
}

AttributeCriterion EntryCriterion(SCLElement* control, SCLElement* lDevice)
{
    return {{Attribute::cbName, control->GetAttribute(Attribute::name)},
            {Attribute::ldInst, lDevice->GetAttribute(Attribute::inst)}};
}

SCLElement* ControlOfEntry(const ControlKind& kind, SCLElement* entry)
{
    SCLElement* connectedAP = entry ? entry->GetParent(Tag::ConnectedAP) : nullptr;
    SCLElement* accessPoint = SCLHelp::GetAPFromConnectedAP(connectedAP);
    if (!accessPoint)
        return nullptr;
    const AttributeCriterion device(Attribute::inst, entry->GetAttribute(Attribute::ldInst));
    const AttributeCriterion block(Attribute::name, entry->GetAttribute(Attribute::cbName));
    const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(accessPoint);
    for (SCLElement* lDevice : lDevices) {
        if (!device.Matches(lDevice))
            continue;
        if (SCLElement* control =
                FirstMatch(Internal::ControlBlocksOfFirstLN0(lDevice, kind.controlTag), block))
            return control;
    }
    return nullptr;
}

SCLElement* EntryOfControl(const ControlKind& kind, SCLElement* control, SCLElement* connectedAP)
{
    SCLElement* lDevice = control ? control->GetParent(Tag::LDevice) : nullptr;
    if (!lDevice || !connectedAP)
        return nullptr;
    return FirstMatch(connectedAP->FindChildByType(kind.networkTag, false),
                      EntryCriterion(control, lDevice));
}

SCLElement* EntryOfControl(const ControlKind& kind, SCLElement* control)
{
    SCLElement* lDevice = control ? control->GetParent(Tag::LDevice) : nullptr;
    SCLElement* accessPoint = lDevice ? lDevice->GetParent(Tag::AccessPoint) : nullptr;
    SCLElement* ied = accessPoint ? accessPoint->GetParent(Tag::IED) : nullptr;
    if (!ied)
        return nullptr;
    const AttributeCriterion point{{Attribute::iedName, ied->GetAttribute(Attribute::name)},
                                   {Attribute::apName, accessPoint->GetAttribute(Attribute::name)}};
    const AttributeCriterion entry = EntryCriterion(control, lDevice);
    const QList<SCLElement*> connectedAPs =
        Internal::ConnectedAPsBySubNetwork(Internal::FirstCommunicationOf(control));
    for (SCLElement* connectedAP : connectedAPs) {
        if (!point.Matches(connectedAP))
            continue;
        if (SCLElement* match =
                FirstMatch(connectedAP->FindChildByType(kind.networkTag, false), entry))
            return match;
    }
    return nullptr;
}

} // namespace

SCLElement* Internal::ControlOfDataSet(const ControlKind& kind, SCLElement* dataSet)
{
    SCLElement* lDevice = dataSet ? dataSet->GetParent(Tag::LDevice) : nullptr;
    if (!lDevice)
        return nullptr;
    return FirstMatch(
        ControlBlocksOfFirstLN0(lDevice, kind.controlTag),
        AttributeCriterion(Attribute::datSet, dataSet->GetAttribute(Attribute::name)));
}

SCLElement* SCLHelp::GetLDeviceFromIEDAndInst(SCLElement* ied, const QString& inst)
{
    if (!ied || inst.isEmpty())
        return nullptr;
    return FirstMatch(Internal::LDevicesOfIED(ied), AttributeCriterion(Attribute::inst, inst));
}

SCLElement* SCLHelp::GetAPFromConnectedAP(SCLElement* connectedAP)
{
    SCLElement* root = Internal::RootOf(connectedAP);
    if (!connectedAP || !root)
        return nullptr;
    const AttributeCriterion device(Attribute::name, connectedAP->GetAttribute(Attribute::iedName));
    const AttributeCriterion point(Attribute::name, connectedAP->GetAttribute(Attribute::apName));
    const QList<SCLElement*> ieds = root->FindChildByType(Tag::IED, false);
    for (SCLElement* ied : ieds) {
        if (!device.Matches(ied))
            continue;
        if (SCLElement* match = FirstMatch(ied->FindChildByType(Tag::AccessPoint, false), point))
            return match;
    }
    return nullptr;
}

SCLElement* SCLHelp::GetGSEControlFromGSE(SCLElement* gse)
{
    return ControlOfEntry(Internal::Goose(), gse);
}

SCLElement* SCLHelp::GetSMVControlFromSMV(SCLElement* smv)
{
    return ControlOfEntry(Internal::SampledValues(), smv);
}

SCLElement* SCLHelp::GetGSEFromGSEControl(SCLElement* control, SCLElement* connectedAP)
{
    return EntryOfControl(Internal::Goose(), control, connectedAP);
}

SCLElement* SCLHelp::GetSMVFromSMVControl(SCLElement* control, SCLElement* connectedAP)
{
    return EntryOfControl(Internal::SampledValues(), control, connectedAP);
}

SCLElement* SCLHelp::GetGSEFromGSEControl(SCLElement* control)
{
    return EntryOfControl(Internal::Goose(), control);
}

SCLElement* SCLHelp::GetSMVFromSMVControl(SCLElement* control)
{
    return EntryOfControl(Internal::SampledValues(), control);
}

SCLElement* SCLHelp::GetGSEControlFromDataSet(SCLElement* dataSet)
{
    return Internal::ControlOfDataSet(Internal::Goose(), dataSet);
}

SCLElement* SCLHelp::GetSampledValueControlFromDataSet(SCLElement* dataSet)
{
    return Internal::ControlOfDataSet(Internal::SampledValues(), dataSet);
}

} // namespace Corvane
