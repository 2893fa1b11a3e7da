// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/Walks.h>

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>

namespace Corvane::Internal
{

namespace
{

QList<SCLElement*> Children(SCLElement* parent, const QString& tag)
{
    return parent ? parent->FindChildByType(tag, false) : QList<SCLElement*>();
}

SCLElement* FirstChild(SCLElement* parent, const QString& tag)
{
    return parent ? parent->GetFirstChild(tag) : nullptr;
}

} // namespace

SCLElement* RootOf(const SCLElement* element)
{
    SCLDocument* document = element ? element->GetDocument() : nullptr;
    return document ? document->Root() : nullptr;
}

SCLElement* FirstCommunicationOf(const SCLElement* element)
{
    return FirstChild(RootOf(element), Tag::Communication);
}

SCLElement* FirstTemplatesOf(SCLElement* root)
{
    return FirstChild(root, Tag::DataTypeTemplates);
}

QList<SCLElement*> ConnectedAPsBySubNetwork(SCLElement* communication)
{
    QList<SCLElement*> connectedAPs;
    const QList<SCLElement*> subNetworks = Children(communication, Tag::SubNetwork);
    for (SCLElement* subNetwork : subNetworks)
        connectedAPs += Children(subNetwork, Tag::ConnectedAP);
    return connectedAPs;
}

QList<SCLElement*> LDevicesOfFirstServer(SCLElement* accessPoint)
{
    return Children(FirstChild(accessPoint, Tag::Server), Tag::LDevice);
}

QList<SCLElement*> LDevicesOfIED(SCLElement* ied)
{
    QList<SCLElement*> lDevices;
    const QList<SCLElement*> accessPoints = Children(ied, Tag::AccessPoint);
    for (SCLElement* accessPoint : accessPoints)
        lDevices += LDevicesOfFirstServer(accessPoint);
    return lDevices;
}

QList<SCLElement*> NodesFirstLN0InFront(SCLElement* lDevice)
{
    QList<SCLElement*> nodes = Children(lDevice, Tag::LN);
    if (SCLElement* ln0 = FirstChild(lDevice, Tag::LN0))
        nodes.prepend(ln0);
    return nodes;
}

QList<SCLElement*> ControlBlocksOfFirstLN0(SCLElement* lDevice, const QString& controlTag)
{
    return Children(FirstChild(lDevice, Tag::LN0), controlTag);
}

QList<SCLElement*> ExtRefsOfFirstInputs(SCLElement* node)
{
    return Children(FirstChild(node, Tag::Inputs), Tag::ExtRef);
}

QList<SCLElement*> ClientLNsOfFirstRptEnabled(SCLElement* reportControl)
{
    return Children(FirstChild(reportControl, Tag::RptEnabled), Tag::ClientLN);
}

QStringList PortNamesOfIntAddr(const QString& intAddr)
{
    const QStringList parts = intAddr.split(QLatin1Char(':'), Qt::KeepEmptyParts);
    return parts.size() == 2 ? parts.first().split(QLatin1Char('/'), Qt::KeepEmptyParts)
                             : QStringList();
}

QList<SCLElement*> DataSetsOfIED(SCLElement* ied)
{
    QList<SCLElement*> dataSets;
    const QList<SCLElement*> lDevices = LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices) {
        const QList<SCLElement*> nodes = NodesFirstLN0InFront(lDevice);
        for (SCLElement* node : nodes)
            dataSets += Children(node, Tag::DataSet);
    }
    return dataSets;
}

} // namespace Corvane::Internal
