// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/PublishedData.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane::Internal
{

PublishedData::PublishedData(const ControlKind& kind, SCLElement* root)
    : m_kind(kind), m_pRoot(root),
      m_keyAttributes({Attribute::daName, Attribute::doName, Attribute::lnClass, Attribute::lnInst,
                       Attribute::prefix, Attribute::ldInst})
{
}

std::size_t PublishedData::KeyHash::operator()(const Key& key) const
{
    std::size_t hash = 0;
    for (const QString& part : key)
        hash = hash * 31 + SeededHash(part);
    return hash;
}

PublishedData::Publication PublishedData::Of(SCLElement* extRef)
{
    const Sender& sender = SenderOf(extRef->GetAttribute(Attribute::iedName));
    if (!sender.lDeviceInsts.contains(extRef->GetAttribute(Attribute::ldInst)))
        return {};
    const auto it = sender.publications.find(KeyOf(extRef));
    return it == sender.publications.end() ? Publication{} : it->second;
}

const PublishedData::Sender& PublishedData::SenderOf(const QString& iedName)
{
    const auto [it, isNew] = m_senders.try_emplace(iedName);
    if (isNew)
        Fill(it->second, m_pRoot->FindChild(Tag::IED, Attribute::name, iedName, false));
    return it->second;
}

void PublishedData::Fill(Sender& sender, SCLElement* ied) const
{
    const QList<SCLElement*> lDevices = LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices) {
        const QString inst = lDevice->GetAttribute(Attribute::inst);
        if (!inst.isEmpty())
            sender.lDeviceInsts.insert(inst);
    }
    const QList<SCLElement*> dataSets = DataSetsOfIED(ied);
    for (SCLElement* dataSet : dataSets) {
        SCLElement* controlBlock = ControlOfDataSet(m_kind, dataSet);
        if (!controlBlock)
            continue;
        const QList<SCLElement*> fcdas = dataSet->FindChildByType(Tag::FCDA, false);
        for (SCLElement* fcda : fcdas)
            sender.publications.try_emplace(KeyOf(fcda), Publication{fcda, dataSet, controlBlock});
    }
}

PublishedData::Key PublishedData::KeyOf(const SCLElement* element) const
{
    Key key;
    for (int i = 0; i < AttributeCount; ++i)
        key[static_cast<std::size_t>(i)] = m_keyAttributes.Value(element, i);
    return key;
}

} // namespace Corvane::Internal
