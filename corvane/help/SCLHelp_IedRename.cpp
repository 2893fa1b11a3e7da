// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TextPattern.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Attribute = Internal::Attribute;
namespace Tag = Internal::Tag;

namespace
{

/// One pass over a document. Lists are taken where they are walked, as signals go out inside.
class IedRename
{
public:
    IedRename(const QString& oldName, const QString& newName)
        : m_strOldName(oldName), m_strNewName(newName)
    {
    }

    void RenameConnectedAPs(SCLElement* communication) const
    {
        const QList<SCLElement*> subNetworks =
            communication->FindChildByType(Tag::SubNetwork, false);
        for (SCLElement* subNetwork : subNetworks)
            Follow(subNetwork->FindChildByType(Tag::ConnectedAP, false));
    }

    void RenameInIED(SCLElement* ied) const
    {
        const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
        for (SCLElement* accessPoint : accessPoints) {
            const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(accessPoint);
            for (SCLElement* lDevice : lDevices)
                RenameInLDevice(ied, lDevice);
        }
    }

private:
    // Without an LN0, the LNs are not visited either.
    void RenameInLDevice(SCLElement* ied, SCLElement* lDevice) const
    {
        SCLElement* ln0 = lDevice->GetFirstChild(Tag::LN0);
        if (!ln0)
            return;
        Follow(Internal::ExtRefsOfFirstInputs(ln0));
        if (ied->GetAttribute(Attribute::name) == m_strNewName)
            RenewIdentifiers(lDevice, ln0);
        FollowClients(ln0);
        const QList<SCLElement*> nodes = lDevice->FindChildByType(Tag::LN, false);
        for (SCLElement* node : nodes) {
            Follow(Internal::ExtRefsOfFirstInputs(node));
            FollowClients(node);
        }
    }

    void RenewIdentifiers(SCLElement* lDevice, SCLElement* ln0) const
    {
        const QString inst = lDevice->GetAttribute(Attribute::inst);
        RenewIdentifiers(ln0, Tag::GSEControl, Attribute::appID, inst);
        RenewIdentifiers(ln0, Tag::SampledValueControl, Attribute::smvID, inst);
    }

    void RenewIdentifiers(SCLElement* ln0, const QString& controlTag, const QString& attribute,
                          const QString& inst) const
    {
        const QList<SCLElement*> controls = ln0->FindChildByType(controlTag, false);
        for (SCLElement* control : controls) {
            const QString name = control->GetAttribute(Attribute::name);
            const QString text = Internal::FillPattern("%1%2/LLN0.%3", {m_strNewName, inst, name});
            control->SetAttribute(attribute, text, false);
        }
    }

    void FollowClients(SCLElement* node) const
    {
        const QList<SCLElement*> reports = node->FindChildByType(Tag::ReportControl, false);
        for (SCLElement* report : reports)
            Follow(Internal::ClientLNsOfFirstRptEnabled(report));
    }

    void Follow(const QList<SCLElement*>& references) const
    {
        for (SCLElement* reference : references) {
            if (reference->GetAttribute(Attribute::iedName) == m_strOldName)
                reference->SetAttribute(Attribute::iedName, m_strNewName, true);
        }
    }

    const QString m_strOldName;
    const QString m_strNewName;
};

} // namespace

void SCLHelp::HandleUpdateForIEDName(const QString& oldName, SCLElement* ied)
{
    SCLElement* root = Internal::RootOf(ied);
    if (!root)
        return;
    const IedRename rename(oldName, ied->GetAttribute(Attribute::name));
    if (SCLElement* communication = root->GetFirstChild(Tag::Communication))
        rename.RenameConnectedAPs(communication);
    const QList<SCLElement*> ieds = root->FindChildByType(Tag::IED, false);
    for (SCLElement* each : ieds)
        rename.RenameInIED(each);
}

} // namespace Corvane
