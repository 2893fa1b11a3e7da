// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <QHash>
#include <QSet>

namespace Corvane
{

namespace Attribute = Internal::Attribute;
namespace Tag = Internal::Tag;

namespace
{

const QString portType = QStringLiteral("Port");
const QString cableType = QStringLiteral("Cable");

QList<SCLElement*> OfType(SCLElement* physConn, const QString& type)
{
    QList<SCLElement*> found;
    const QList<SCLElement*> settings = physConn->FindChildByType(Tag::P, false);
    for (SCLElement* setting : settings) {
        if (setting->GetAttribute(Attribute::type) == type)
            found.append(setting);
    }
    return found;
}

QList<SCLElement*> OfTypeBelow(SCLElement* connectedAP, const QString& type)
{
    QList<SCLElement*> found;
    const QList<SCLElement*> physConns = connectedAP->FindChildByType(Tag::PhysConn, false);
    for (SCLElement* physConn : physConns)
        found += OfType(physConn, type);
    return found;
}

QList<SCLElement*> PortsBeside(SCLElement* setting)
{
    return OfType(setting->GetParent(Tag::PhysConn), portType);
}

QList<SCLElement*> WithValue(const QList<SCLElement*>& settings, const QString& value)
{
    QList<SCLElement*> found;
    for (SCLElement* setting : settings) {
        if (setting->GetValue() == value)
            found.append(setting);
    }
    return found;
}

/// Appends what it has not seen before.
template <typename Item>
class Once
{
public:
    void Pass(const Item& item) { m_seen.insert(item); }
    void Add(QList<Item>& list, const QList<Item>& items)
    {
        for (const Item& item : items) {
            if (m_seen.contains(item))
                continue;
            m_seen.insert(item);
            list.append(item);
        }
    }

private:
    QSet<Item> m_seen;
};

QList<SCLElement*> ConnectedAPs(SCLElement* ied, const QSet<QString>& accessPoints)
{
    QList<SCLElement*> connectedAPs;
    const QString name = ied ? ied->GetAttribute(Attribute::name) : QString();
    if (name.isEmpty())
        return connectedAPs;
    const QList<SCLElement*> all =
        Internal::ConnectedAPsBySubNetwork(Internal::FirstCommunicationOf(ied));
    for (SCLElement* connectedAP : all) {
        if (connectedAP->GetAttribute(Attribute::iedName) == name &&
            accessPoints.contains(connectedAP->GetAttribute(Attribute::apName)))
            connectedAPs.append(connectedAP);
    }
    return connectedAPs;
}

QSet<QString> AccessPointNames(SCLElement* ied)
{
    QSet<QString> names;
    if (!ied)
        return names;
    const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
    for (SCLElement* accessPoint : accessPoints)
        names.insert(accessPoint->GetAttribute(Attribute::name));
    return names;
}

// All LN0s and one LN. The other walks take one LN0 and all LNs.
QList<SCLElement*> NodesWithPorts(SCLElement* lDevice)
{
    QList<SCLElement*> nodes = lDevice->FindChildByType(Tag::LN0, false);
    if (SCLElement* ln = lDevice->GetFirstChild(Tag::LN))
        nodes.append(ln);
    return nodes;
}

/// The names of ports, each once.
class PortNames
{
public:
    void AddWired(const QList<SCLElement*>& connectedAPs)
    {
        for (SCLElement* connectedAP : connectedAPs) {
            const QList<SCLElement*> ports = OfTypeBelow(connectedAP, portType);
            for (SCLElement* port : ports)
                m_once.Add(m_names, {port->GetValue()});
        }
    }

    void AddInputs(const QList<SCLElement*>& lDevices)
    {
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = NodesWithPorts(lDevice);
            for (SCLElement* node : nodes)
                AddInputs(node);
        }
    }

    QStringList Sorted()
    {
        m_names.sort();
        return m_names;
    }

private:
    void AddInputs(SCLElement* node)
    {
        const QList<SCLElement*> extRefs = Internal::ExtRefsOfFirstInputs(node);
        for (SCLElement* extRef : extRefs) {
            const QString intAddr = extRef->GetAttribute(Attribute::intAddr);
            m_once.Add(m_names, Internal::PortNamesOfIntAddr(intAddr));
        }
    }

    QStringList m_names;
    Once<QString> m_once;
};

/// All ends of all cables of a station, by the name of the cable.
class CableEnds
{
public:
    explicit CableEnds(SCLElement* root)
    {
        const QList<SCLElement*> connectedAPs =
            Internal::ConnectedAPsBySubNetwork(root->GetFirstChild(Tag::Communication));
        for (SCLElement* connectedAP : connectedAPs) {
            const QList<SCLElement*> cables = OfTypeBelow(connectedAP, cableType);
            for (SCLElement* cable : cables)
                m_ends[cable->GetValue()].append(cable);
        }
    }

    QList<SCLElement*> Of(const QString& cable) const
    {
        return cable.isEmpty() ? QList<SCLElement*>() : m_ends.value(cable);
    }

private:
    QHash<QString, QList<SCLElement*>> m_ends;
};

// Whether a port has such a wire is asked before the ends of all wires are gathered.
QStringList CablesOf(const QList<SCLElement*>& ports)
{
    QStringList names;
    Once<QString> once;
    for (SCLElement* port : ports) {
        const QList<SCLElement*> cables = OfType(port->GetParent(Tag::PhysConn), cableType);
        if (!cables.isEmpty())
            once.Add(names, {cables.first()->GetValue()});
    }
    return names;
}

} // namespace

QList<SCLElement*> SCLHelp::GetPortElementFromPort(SCLElement* ied, const QString& port)
{
    QList<SCLElement*> found;
    if (port.isEmpty())
        return found;
    const QList<SCLElement*> connectedAPs = ConnectedAPs(ied, AccessPointNames(ied));
    for (SCLElement* connectedAP : connectedAPs)
        found += WithValue(OfTypeBelow(connectedAP, portType), port);
    return found;
}

QList<SCLElement*> SCLHelp::GetCableElementFromCable(SCLElement* root, const QString& cable)
{
    QList<SCLElement*> found;
    if (!root || cable.isEmpty())
        return found;
    const QList<SCLElement*> connectedAPs =
        Internal::ConnectedAPsBySubNetwork(root->GetFirstChild(Tag::Communication));
    for (SCLElement* connectedAP : connectedAPs)
        found += WithValue(OfTypeBelow(connectedAP, cableType), cable);
    return found;
}

QList<SCLElement*> SCLHelp::GetPortElementFromCable(SCLElement* root, const QString& cable)
{
    QList<SCLElement*> ports;
    Once<SCLElement*> once;
    const QList<SCLElement*> ends = GetCableElementFromCable(root, cable);
    for (SCLElement* end : ends)
        once.Add(ports, PortsBeside(end));
    return ports;
}

QList<SCLElement*> SCLHelp::GetConnectedPortElementFromPort(SCLElement* ied, const QString& port)
{
    QList<SCLElement*> connected;
    const QList<SCLElement*> own = GetPortElementFromPort(ied, port);
    const QStringList cables = CablesOf(own);
    if (cables.isEmpty())
        return connected;
    Once<SCLElement*> once;
    for (SCLElement* element : own)
        once.Pass(element);
    const CableEnds ends(Internal::RootOf(ied));
    for (const QString& cable : cables) {
        const QList<SCLElement*> sameCable = ends.Of(cable);
        for (SCLElement* end : sameCable)
            once.Add(connected, PortsBeside(end));
    }
    return connected;
}

QStringList SCLHelp::GetAllPortFromIED(SCLElement* ied, bool withInputs)
{
    const QSet<QString> accessPoints = AccessPointNames(ied);
    const bool isWired = !accessPoints.isEmpty() && Internal::FirstCommunicationOf(ied) &&
                         !ied->GetAttribute(Attribute::name).isEmpty();
    if (!isWired)
        return {};
    PortNames names;
    names.AddWired(ConnectedAPs(ied, accessPoints));
    if (withInputs)
        names.AddInputs(Internal::LDevicesOfIED(ied));
    return names.Sorted();
}

QStringList SCLHelp::GetAllPortFromAccessPoint(SCLElement* accessPoint, bool withInputs)
{
    SCLElement* ied = accessPoint ? accessPoint->GetParent(Tag::IED) : nullptr;
    const QString name = accessPoint ? accessPoint->GetAttribute(Attribute::name) : QString();
    const bool isWired = ied && !name.isEmpty() && Internal::FirstCommunicationOf(ied) &&
                         !ied->GetAttribute(Attribute::name).isEmpty();
    if (!isWired)
        return {};
    PortNames names;
    names.AddWired(ConnectedAPs(ied, {name}));
    if (withInputs)
        names.AddInputs(Internal::LDevicesOfFirstServer(accessPoint));
    return names.Sorted();
}

} // namespace Corvane
