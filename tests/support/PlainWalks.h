// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>

#include <QList>
#include <QString>

namespace Corvane::Test
{

/// \file
/// Walks by plain loops, written apart from the library's own, to compare these with.

/// The children of a tag; none of a null parent.
inline QList<SCLElement*> PlainChildren(SCLElement* parent, const QString& tag)
{
    return parent ? parent->FindChildByType(tag, false) : QList<SCLElement*>();
}

/// The `ConnectedAP`s in the first `Communication`.
inline QList<SCLElement*> PlainConnectedAPs(SCLElement* root)
{
    QList<SCLElement*> connectedAPs;
    const QList<SCLElement*> subNetworks =
        PlainChildren(root->GetFirstChild("Communication"), "SubNetwork");
    for (SCLElement* subNetwork : subNetworks)
        connectedAPs += PlainChildren(subNetwork, "ConnectedAP");
    return connectedAPs;
}

/// The `LDevice`s in the first `Server` of each access point.
inline QList<SCLElement*> PlainLDevices(SCLElement* ied)
{
    QList<SCLElement*> lDevices;
    const QList<SCLElement*> accessPoints = PlainChildren(ied, "AccessPoint");
    for (SCLElement* accessPoint : accessPoints)
        lDevices += PlainChildren(accessPoint->GetFirstChild("Server"), "LDevice");
    return lDevices;
}

/// The first `LN0` and all `LN`s.
inline QList<SCLElement*> PlainNodes(SCLElement* lDevice)
{
    return PlainChildren(lDevice, "LN0").mid(0, 1) + PlainChildren(lDevice, "LN");
}

/// What names IEDs in a logical node: the `ExtRef`s of its first `Inputs`, then the `ClientLN`s of
/// the first `RptEnabled` of each `ReportControl`.
inline QList<SCLElement*> PlainReferences(SCLElement* node)
{
    QList<SCLElement*> references = PlainChildren(node->GetFirstChild("Inputs"), "ExtRef");
    const QList<SCLElement*> reports = PlainChildren(node, "ReportControl");
    for (SCLElement* report : reports)
        references += PlainChildren(report->GetFirstChild("RptEnabled"), "ClientLN");
    return references;
}

/// Those of the elements whose `iedName` is \a name.
inline QList<SCLElement*> PlainNaming(const QString& name, const QList<SCLElement*>& references)
{
    QList<SCLElement*> naming;
    for (SCLElement* reference : references) {
        if (reference->GetAttribute("iedName") == name)
            naming += reference;
    }
    return naming;
}

} // namespace Corvane::Test
