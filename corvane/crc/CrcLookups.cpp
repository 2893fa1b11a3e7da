// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcLookups.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/SubscriptionGrouping.h>
#include <corvane/help/Walks.h>

#include <QStringList>

namespace Corvane::Internal
{

namespace
{

QString Get(SCLElement* element, const QString& attribute)
{
    return element->GetAttribute(attribute);
}

QStringList Segments(const QString& name)
{
    return name.split(QLatin1Char('.'), Qt::KeepEmptyParts);
}

} // namespace

SCLElement* CrcLookups::DoiOfFcda(SCLElement* fcda)
{
    SCLElement* lDevice = LDeviceOf(fcda->GetParent(Tag::IED), Get(fcda, Attribute::ldInst));
    if (!lDevice)
        return nullptr;
    const Table<3>& nodes = NodesOf(lDevice).byAttributes;
    const auto node = nodes.find({Get(fcda, Attribute::prefix), Get(fcda, Attribute::lnClass),
                                  Get(fcda, Attribute::lnInst)});
    return node == nodes.end() ? nullptr : DoiOf(node->second, Get(fcda, Attribute::doName));
}

SCLElement* CrcLookups::LDeviceOf(SCLElement* ied, const QString& inst)
{
    if (!ied || inst.isEmpty())
        return nullptr;
    const auto known = m_lDevices.constFind(ied);
    if (known != m_lDevices.constEnd())
        return known->value(inst);
    QHash<QString, SCLElement*>& byInst = m_lDevices[ied];
    const QList<SCLElement*> lDevices = LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices) {
        SCLElement*& first = byInst[Get(lDevice, Attribute::inst)];
        if (!first)
            first = lDevice;
    }
    return byInst.value(inst);
}

const CrcLookups::Nodes& CrcLookups::NodesOf(SCLElement* lDevice)
{
    const auto [it, isNew] = m_nodes.try_emplace(lDevice);
    Nodes& nodes = it->second;
    if (!isNew)
        return nodes;
    const auto add = [&nodes](SCLElement* node, const QString& prefixInName) {
        const Key<3> key{Get(node, Attribute::prefix), Get(node, Attribute::lnClass),
                         Get(node, Attribute::inst)};
        nodes.byAttributes.try_emplace(key, node);
        nodes.byName.try_emplace({prefixInName + key[1] + key[2]}, node);
    };
    const QList<SCLElement*> zeros = lDevice->FindChildByType(Tag::LN0, false);
    for (SCLElement* ln0 : zeros)
        add(ln0, QString());
    const QList<SCLElement*> others = lDevice->FindChildByType(Tag::LN, false);
    for (SCLElement* ln : others)
        add(ln, Get(ln, Attribute::prefix));
    return nodes;
}

SCLElement* CrcLookups::DoiOf(SCLElement* ln, const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    QStringList segments = Segments(name);
    return Descend(m_children.Find(ln, Tag::DOI, Attribute::name, segments.takeFirst()), segments);
}

SCLElement* CrcLookups::Descend(SCLElement* current, const QStringList& names)
{
    for (auto it = names.constBegin(); current && it != names.constEnd(); ++it)
        current = m_children.Find(current, Tag::SDI, Attribute::name, *it);
    return current;
}

SCLElement* CrcLookups::DaiOf(SCLElement* doi, const QString& daName)
{
    if (!doi || daName.isEmpty())
        return nullptr;
    QStringList segments = Segments(daName);
    const QString last = segments.takeLast();
    SCLElement* parent = Descend(doi, segments);
    return parent ? m_children.Find(parent, Tag::DAI, Attribute::name, last) : nullptr;
}

QString CrcLookups::BTypeOf(SCLElement* doi, const QString& daName)
{
    SCLElement* node = doi->GetParent(QString());
    SCLElement* lnType =
        node ? m_templates.Follow(node, Attribute::lnType, Tag::LNodeType) : nullptr;
    SCLElement* dataObject =
        lnType ? m_children.Find(lnType, Tag::DO, Attribute::name, Get(doi, Attribute::name))
               : nullptr;
    if (!dataObject)
        return QString();
    const auto key = qMakePair(dataObject, daName);
    const auto known = m_bTypes.constFind(key);
    if (known != m_bTypes.constEnd())
        return known.value();
    SCLElement* doType = m_templates.Follow(dataObject, Attribute::type, Tag::DOType);
    SCLElement* da = doType ? DeclarationOf(doType, daName) : nullptr;
    return m_bTypes.insert(key, da ? Get(da, Attribute::bType) : QString()).value();
}

// As SCLHelp::GetDAFromDOTypeAndName().
SCLElement* CrcLookups::DeclarationOf(SCLElement* doType, const QString& daName)
{
    QStringList segments = Segments(daName);
    const QString last = segments.takeLast();
    SCLElement* type = doType;
    for (auto it = segments.constBegin(); type && it != segments.constEnd(); ++it) {
        SCLElement* child = ChildOfName(type, *it);
        type = child ? m_templates.Follow(child, Attribute::type, Tag::DAType) : nullptr;
    }
    return type && !last.isEmpty() ? ChildOfName(type, last) : nullptr;
}

SCLElement* CrcLookups::ChildOfName(SCLElement* parent, const QString& name)
{
    const auto known = m_childrenByName.constFind(parent);
    if (known != m_childrenByName.constEnd())
        return known->value(name);
    QHash<QString, SCLElement*>& byName = m_childrenByName[parent];
    const QList<SCLElement*> children = parent->GetChildList();
    for (SCLElement* child : children) {
        SCLElement*& first = byName[Get(child, Attribute::name)];
        if (!first)
            first = child;
    }
    return byName.value(name);
}

CrcLookups::Kind& CrcLookups::KindOf(const ControlKind& kind)
{
    return &kind == &Goose() ? m_goose : m_sampledValues;
}

SCLElement* CrcLookups::EntryOf(const ControlKind& kind, SCLElement* control)
{
    SCLElement* lDevice = control->GetParent(Tag::LDevice);
    SCLElement* accessPoint = lDevice ? lDevice->GetParent(Tag::AccessPoint) : nullptr;
    SCLElement* ied = accessPoint ? accessPoint->GetParent(Tag::IED) : nullptr;
    SCLElement* communication = FirstCommunicationOf(control);
    if (!ied || !communication)
        return nullptr;
    Kind& known = KindOf(kind);
    if (known.communication != communication) {
        known.communication = communication;
        FillEntries(kind, known.entries, communication);
    }
    const auto entry =
        known.entries.find({Get(ied, Attribute::name), Get(accessPoint, Attribute::name),
                            Get(control, Attribute::name), Get(lDevice, Attribute::inst)});
    return entry == known.entries.end() ? nullptr : entry->second;
}

void CrcLookups::FillEntries(const ControlKind& kind, Table<4>& entries, SCLElement* communication)
{
    entries.clear();
    const QList<SCLElement*> connectedAPs = ConnectedAPsBySubNetwork(communication);
    for (SCLElement* connectedAP : connectedAPs) {
        Key<4> key{
            Get(connectedAP, Attribute::iedName), Get(connectedAP, Attribute::apName), {}, {}};
        const QList<SCLElement*> all = connectedAP->FindChildByType(kind.networkTag, false);
        for (SCLElement* entry : all) {
            key[2] = Get(entry, Attribute::cbName);
            key[3] = Get(entry, Attribute::ldInst);
            entries.try_emplace(key, entry);
        }
    }
}

SCLElement* CrcLookups::DataSetOf(SCLElement* control)
{
    SCLElement* parent = control->GetParent(QString());
    return parent ? m_children.Find(parent, Tag::DataSet, Attribute::name,
                                    Get(control, Attribute::datSet))
                  : nullptr;
}

CrcLookups::Neighbours CrcLookups::NeighboursOf(SCLElement* connectedAP, const QString& tag)
{
    const auto key = qMakePair(connectedAP, tag);
    const auto known = m_neighbours.constFind(key);
    if (known != m_neighbours.constEnd())
        return known.value();
    Neighbours neighbours;
    bool isBefore = true;
    const QList<SCLElement*> children = connectedAP->GetSortedChildList();
    for (SCLElement* child : children) {
        const QString childTag = child->GetTag();
        if (childTag == tag)
            isBefore = false;
        else if (childTag != Tag::Address)
            (isBefore ? neighbours.before : neighbours.after).append(child);
    }
    return m_neighbours.insert(key, neighbours).value();
}

QList<SCLHelp::Input_CB> CrcLookups::SubscriptionsOf(const ControlKind& kind, SCLElement* ied)
{
    SCLElement* root = RootOf(ied);
    if (!root)
        return {};
    std::unique_ptr<PublishedData>& published = KindOf(kind).published;
    if (!published)
        published = std::make_unique<PublishedData>(kind, root);
    SubscriptionGrouping grouping(kind, *published);
    const QList<SCLElement*> lDevices = LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices)
        grouping.Add(ExtRefsOfFirstInputs(lDevice->GetFirstChild(Tag::LN0)));
    return grouping.Result();
}

CrcLookups::Terminal CrcLookups::TerminalOf(SCLElement* extRef)
{
    QString port;
    QString ldInst;
    QString lnName;
    QString doName;
    QString daName;
    if (!SCLHelp::ParseExtRefIntAddr(Get(extRef, Attribute::intAddr), port, ldInst, lnName, doName,
                                     daName))
        return {};
    SCLElement* server = extRef->GetParent(Tag::Server);
    SCLElement* lDevice =
        server ? m_children.Find(server, Tag::LDevice, Attribute::inst, ldInst) : nullptr;
    if (!lDevice)
        return {};
    const Table<1>& nodes = NodesOf(lDevice).byName;
    const auto node = nodes.find({lnName});
    SCLElement* doi = node == nodes.end() ? nullptr : DoiOf(node->second, doName);
    return {doi, daName.isEmpty() ? doi : DaiOf(doi, daName)};
}

} // namespace Corvane::Internal
