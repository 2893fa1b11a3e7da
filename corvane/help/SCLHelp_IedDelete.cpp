// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Attribute = Internal::Attribute;
namespace Tag = Internal::Tag;

namespace
{

/// One pass over a document. Each list is a copy, as its elements are removed while it is walked.
class IedDelete
{
public:
    explicit IedDelete(const QString& name) : m_strName(name) {}

    void RemoveConnectedAPs(SCLElement* communication) const
    {
        const QList<SCLElement*> subNetworks =
            communication->FindChildByType(Tag::SubNetwork, false);
        for (SCLElement* subNetwork : subNetworks)
            Remove(subNetwork->FindChildByType(Tag::ConnectedAP, false));
    }

    // By name and not by identity: the IED itself keeps its inputs, and so does a namesake.
    void RemoveFromIED(SCLElement* ied) const
    {
        if (ied->GetAttribute(Attribute::name) == m_strName)
            return;
        const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
        for (SCLElement* accessPoint : accessPoints) {
            const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(accessPoint);
            for (SCLElement* lDevice : lDevices)
                RemoveFromLDevice(lDevice);
        }
    }

private:
    void RemoveFromLDevice(SCLElement* lDevice) const
    {
        const QList<SCLElement*> nodes = Internal::NodesFirstLN0InFront(lDevice);
        for (SCLElement* node : nodes) {
            Remove(Internal::ExtRefsOfFirstInputs(node));
            const QList<SCLElement*> reports = node->FindChildByType(Tag::ReportControl, false);
            for (SCLElement* report : reports)
                Remove(Internal::ClientLNsOfFirstRptEnabled(report));
        }
    }

    // All of one parent, asked for before the first signal: a slot may have detached those behind.
    void Remove(const QList<SCLElement*>& references) const
    {
        if (references.isEmpty())
            return;
        SCLElement* parent = references.first()->GetParent(QString());
        for (SCLElement* reference : references) {
            if (reference->GetAttribute(Attribute::iedName) == m_strName)
                parent->RemoveChild(reference, true);
        }
    }

    const QString m_strName;
};

} // namespace

void SCLHelp::HandleDeleteForIED(SCLElement* ied)
{
    SCLElement* root = Internal::RootOf(ied);
    if (!root)
        return;
    const IedDelete deletion(ied->GetAttribute(Attribute::name));
    if (SCLElement* communication = root->GetFirstChild(Tag::Communication))
        deletion.RemoveConnectedAPs(communication);
    const QList<SCLElement*> ieds = root->FindChildByType(Tag::IED, false);
    for (SCLElement* each : ieds)
        deletion.RemoveFromIED(each);
}

} // namespace Corvane
