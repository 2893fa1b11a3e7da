// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/PublishedData.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane::Internal
{

namespace
{

constexpr int g_nameCount = 6;

} // namespace

PublishedData::PublishedData(const ControlKind* kind, SCLElement* root)
    : m_kind(kind), m_pRoot(root),
      m_names({Attribute::daName, Attribute::doName, Attribute::lnClass, Attribute::lnInst,
               Attribute::prefix, Attribute::ldInst})
{
}

std::size_t PublishedData::SameData::operator()(const SCLElement* element) const
{
    std::size_t hash = 0;
    for (int i = 0; i < g_nameCount; ++i)
        hash = hash * 31 + SeededHash(names.Value(element, i));
    return hash;
}

bool PublishedData::SameData::operator()(const SCLElement* left, const SCLElement* right) const
{
    for (int i = 0; i < g_nameCount; ++i) {
        if (names.Value(left, i) != names.Value(right, i))
            return false;
    }
    return true;
}

PublishedData::Publication PublishedData::Of(SCLElement* extRef)
{
    Publication found;
    const Sender& sender = SenderOf(extRef->GetAttribute(Attribute::iedName));
    found.ied = sender.ied;
    found.lDevice = sender.lDevices.value(extRef->GetAttribute(Attribute::ldInst));
    if (!found.lDevice)
        return found;
    const auto it = sender.members.find(extRef);
    if (it == sender.members.end())
        return found;
    const Member& member = it->second;
    found.fcda = member.fcda;
    found.dataSet = member.dataSet;
    found.controlBlock = member.control.block;
    return found;
}

const PublishedData::Sender& PublishedData::SenderOf(const QString& iedName)
{
    const auto [it, isNew] = m_senders.try_emplace(iedName, SameData{m_names});
    Sender& sender = it->second;
    if (isNew) {
        sender.ied = m_children.Find(m_pRoot, Tag::IED, Attribute::name, iedName);
        Fill(sender);
    }
    return sender;
}

void PublishedData::Fill(Sender& sender)
{
    const QList<SCLElement*> lDevices = LDevicesOfIED(sender.ied);
    for (SCLElement* lDevice : lDevices) {
        const QString inst = lDevice->GetAttribute(Attribute::inst);
        if (!inst.isEmpty() && !sender.lDevices.contains(inst))
            sender.lDevices.insert(inst, lDevice);
    }
    const QList<SCLElement*> dataSets = DataSetsOfIED(sender.ied);
    for (SCLElement* dataSet : dataSets)
        AddMembers(sender, dataSet);
}

void PublishedData::AddMembers(Sender& sender, SCLElement* dataSet)
{
    const Control control = ControlOf(dataSet);
    if (m_kind && !control.block)
        return;
    const QList<SCLElement*> fcdas = dataSet->FindChildByType(Tag::FCDA, false);
    for (SCLElement* fcda : fcdas) {
        const Member member{fcda, dataSet, control};
        const auto [it, isNew] = sender.members.try_emplace(fcda, member);
        if (!isNew && it->second.control.rank < control.rank)
            it->second = member;
    }
}

// As SCLHelp finds it, with large groups of control blocks looked through once.
PublishedData::Control PublishedData::ControlOf(SCLElement* dataSet)
{
    const QString name = dataSet->GetAttribute(Attribute::name);
    const auto find = [&](SCLElement* node, const QString& tag) {
        return node ? m_children.Find(node, tag, Attribute::datSet, name) : nullptr;
    };
    SCLElement* ln0 = dataSet->GetParent(Tag::LDevice)->GetFirstChild(Tag::LN0);
    if (m_kind)
        return {find(ln0, m_kind->controlTag), 0};
    if (SCLElement* block = find(ln0, Tag::GSEControl))
        return {block, 3};
    if (SCLElement* block = find(ln0, Tag::SampledValueControl))
        return {block, 2};
    SCLElement* report = find(dataSet->GetParent(QString()), Tag::ReportControl);
    return {report, report ? 1 : 0};
}

} // namespace Corvane::Internal
