// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLSubscriptions.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/SubscriptionGrouping.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Tag = Internal::Tag;

namespace
{

const Internal::ControlKind& Traits(SCLSubscriptions::Kind kind)
{
    return kind == SCLSubscriptions::Kind::Goose ? Internal::Goose() : Internal::SampledValues();
}

// All nodes: unlike the shared walk, every LN0 of an LDevice, and nodes without a Server.
QList<SCLElement*> AllNodes(SCLElement* accessPoint)
{
    QList<SCLElement*> nodes = accessPoint->FindChildByType(Tag::LN, false);
    const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(accessPoint);
    for (SCLElement* lDevice : lDevices) {
        nodes += lDevice->FindChildByType(Tag::LN0, false);
        nodes += lDevice->FindChildByType(Tag::LN, false);
    }
    return nodes;
}

} // namespace

SCLSubscriptions::SCLSubscriptions(SCLElement* root, Kind kind)
    : m_kind(kind),
      m_pPublished(root ? std::make_unique<Internal::PublishedData>(Traits(kind), root) : nullptr)
{
}

SCLSubscriptions::~SCLSubscriptions() = default;

QList<SCLHelp::Input_CB> SCLSubscriptions::Of(SCLElement* ied)
{
    if (!ied || !m_pPublished)
        return {};
    Internal::SubscriptionGrouping grouping(Traits(m_kind), *m_pPublished);
    const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
    for (SCLElement* accessPoint : accessPoints) {
        const QList<SCLElement*> nodes = AllNodes(accessPoint);
        for (SCLElement* node : nodes) {
            const QList<SCLElement*> sections = node->FindChildByType(Tag::Inputs, false);
            for (SCLElement* inputs : sections)
                grouping.Add(inputs->FindChildByType(Tag::ExtRef, false));
        }
    }
    return grouping.Result();
}

} // namespace Corvane
