// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/SubscriptionGrouping.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Tag = Internal::Tag;
using Internal::ControlKind;
using Internal::PublishedData;
using Internal::SubscriptionGrouping;

namespace
{

QList<SCLHelp::Input_CB> SubscriptionsOfInputs(const ControlKind& kind, SCLElement* inputs)
{
    SCLElement* root = Internal::RootOf(inputs);
    if (!root)
        return {};
    PublishedData published(kind, root);
    SubscriptionGrouping grouping(kind, published);
    grouping.Add(inputs->FindChildByType(Tag::ExtRef, false));
    return grouping.Result();
}

// The first Inputs of the first LN0 of each LDevice.
QList<SCLHelp::Input_CB> SubscriptionsOfLDevices(const ControlKind& kind, SCLElement* scope,
                                                 const QList<SCLElement*>& lDevices)
{
    SCLElement* root = Internal::RootOf(scope);
    if (!root)
        return {};
    PublishedData published(kind, root);
    SubscriptionGrouping grouping(kind, published);
    for (SCLElement* lDevice : lDevices)
        grouping.Add(Internal::ExtRefsOfFirstInputs(lDevice->GetFirstChild(Tag::LN0)));
    return grouping.Result();
}

} // namespace

QList<SCLHelp::Input_CB> SCLHelp::GetGSEControlFromInputs(SCLElement* inputs)
{
    return SubscriptionsOfInputs(Internal::Goose(), inputs);
}

QList<SCLHelp::Input_CB> SCLHelp::GetSMVControlFromInputs(SCLElement* inputs)
{
    return SubscriptionsOfInputs(Internal::SampledValues(), inputs);
}

QList<SCLHelp::Input_CB> SCLHelp::GetGSEControlFromAPInputs(SCLElement* accessPoint)
{
    return SubscriptionsOfLDevices(Internal::Goose(), accessPoint,
                                   Internal::LDevicesOfFirstServer(accessPoint));
}

QList<SCLHelp::Input_CB> SCLHelp::GetSMVControlFromAPInputs(SCLElement* accessPoint)
{
    return SubscriptionsOfLDevices(Internal::SampledValues(), accessPoint,
                                   Internal::LDevicesOfFirstServer(accessPoint));
}

QList<SCLHelp::Input_CB> SCLHelp::GetGSEControlFromIEDInputs(SCLElement* ied)
{
    return SubscriptionsOfLDevices(Internal::Goose(), ied, Internal::LDevicesOfIED(ied));
}

QList<SCLHelp::Input_CB> SCLHelp::GetSMVControlFromIEDInputs(SCLElement* ied)
{
    return SubscriptionsOfLDevices(Internal::SampledValues(), ied, Internal::LDevicesOfIED(ied));
}

} // namespace Corvane
