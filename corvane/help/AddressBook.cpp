// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/AddressBook.h>

#include <corvane/elements/AttributeCriterion.h>
#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/Walks.h>

#include <utility>

namespace Corvane::Internal
{

namespace
{

std::unique_ptr<AddressBook>& Kept()
{
    static std::unique_ptr<AddressBook> book;
    return book;
}

} // namespace

void CollectAddresses(SCLElement* entry, const AddressSink& sink)
{
    SCLElement* address = entry->GetFirstChild(Tag::Address);
    if (!address)
        return;
    const QList<SCLElement*> parameters = address->FindChildByType(Tag::P, false);
    for (SCLElement* parameter : parameters) {
        const QString type = parameter->GetAttribute(Attribute::type);
        if (type == ParameterType::MacAddress || type == ParameterType::AppId)
            sink(type, parameter->GetValue().trimmed().toUpper());
    }
}

void CollectAddresses(const AddressKind& kind, SCLElement* communication, const AddressSink& sink)
{
    const QList<SCLElement*> connectedAPs = ConnectedAPsBySubNetwork(communication);
    for (SCLElement* connectedAP : connectedAPs) {
        const QList<SCLElement*> entries =
            connectedAP->FindChildByType(kind.control.networkTag, false);
        for (SCLElement* entry : entries)
            CollectAddresses(entry, sink);
    }
}

std::unique_ptr<AddressBook> AddressBook::Take()
{
    std::unique_ptr<AddressBook> book = std::move(Kept());
    if (book && book->m_uStamp == ChangeStamp::Now())
        return book;
    return std::make_unique<AddressBook>();
}

void AddressBook::Keep(std::unique_ptr<AddressBook> book)
{
    book->m_uStamp = ChangeStamp::Now();
    Kept() = std::move(book);
}

SCLElement* AddressBook::AccessPointOf(SCLElement* connectedAP)
{
    SCLElement* root = RootOf(connectedAP);
    if (!root)
        return nullptr;
    if (root != m_pRoot)
        ReadIeds(root);
    const AttributeCriterion point(Attribute::name, connectedAP->GetAttribute(Attribute::apName));
    const QList<SCLElement*> ieds = m_ieds.value(connectedAP->GetAttribute(Attribute::iedName));
    for (SCLElement* ied : ieds) {
        const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
        for (SCLElement* accessPoint : accessPoints) {
            if (point.Matches(accessPoint))
                return accessPoint;
        }
    }
    return nullptr;
}

void AddressBook::ReadIeds(SCLElement* root)
{
    m_pRoot = root;
    m_ieds.clear();
    const QList<SCLElement*> ieds = root->FindChildByType(Tag::IED, false);
    for (SCLElement* ied : ieds)
        m_ieds[ied->GetAttribute(Attribute::name)].append(ied);
}

void AddressBook::ReadAddresses(SCLElement* communication)
{
    if (communication && communication == m_pCommunication)
        return;
    ForgetAddresses();
    m_pCommunication = communication;
    for (AddressPool* pool : {m_pGoose.get(), m_pSampledValues.get()}) {
        CollectAddresses(
            pool->Kind(), communication,
            [pool](const QString& type, const QString& value) { pool->Add(type, value); });
    }
    const QList<SCLElement*> connectedAPs = ConnectedAPsBySubNetwork(communication);
    m_connectedAPs = QSet<SCLElement*>(connectedAPs.constBegin(), connectedAPs.constEnd());
}

void AddressBook::ForgetAddresses()
{
    m_pCommunication = nullptr;
    m_connectedAPs.clear();
    m_pGoose = std::make_unique<AddressPool>(GooseAddresses());
    m_pSampledValues = std::make_unique<AddressPool>(SampledValuesAddresses());
}

} // namespace Corvane::Internal
