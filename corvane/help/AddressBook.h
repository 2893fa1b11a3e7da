// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/AddressPool.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

namespace Corvane
{

class SCLElement;

namespace Internal
{

using AddressSink = std::function<void(const QString& type, const QString& value)>;

/// Gives \a sink what the first `Address` of a `GSE` or `SMV` has of the two types that must not
/// clash, "MAC-Address" and "APPID", in child order. Values are trimmed and in upper case.
void CollectAddresses(SCLElement* entry, const AddressSink& sink);
/// The same for all entries of a kind, sub-network by sub-network. Nothing for a null \a
/// communication.
void CollectAddresses(const AddressKind& kind, SCLElement* communication, const AddressSink& sink);

/// What updates of `ConnectedAP`s look up in a whole station: the access points by name and the
/// addresses in use. Kept from one update to the next as long as nothing else changes any tree, so
/// that updating a station costs what reading it once costs.
class AddressBook
{
public:
    AddressBook() { ForgetAddresses(); }

    /// The book that was kept, if it still holds, or an empty one.
    static std::unique_ptr<AddressBook> Take();
    /// Keeps a book that is true to the trees at this moment.
    static void Keep(std::unique_ptr<AddressBook> book);

    /// As SCLHelp::GetAPFromConnectedAP().
    SCLElement* AccessPointOf(SCLElement* connectedAP);

    /// Reads the addresses below a `Communication`, unless it was the last one read. Null gives
    /// empty pools.
    void ReadAddresses(SCLElement* communication);
    /// Forgets the addresses, which are not true to the tree any more.
    void ForgetAddresses();
    /// Whether the addresses of that `ConnectedAP` are among those that were read.
    bool Holds(SCLElement* connectedAP) const { return m_connectedAPs.contains(connectedAP); }
    AddressPool& Goose() { return *m_pGoose; }
    AddressPool& SampledValues() { return *m_pSampledValues; }

private:
    void ReadIeds(SCLElement* root);

    quint64 m_uStamp = 0;

    SCLElement* m_pRoot = nullptr;
    QHash<QString, QList<SCLElement*>> m_ieds;

    SCLElement* m_pCommunication = nullptr;
    QSet<SCLElement*> m_connectedAPs;
    std::unique_ptr<AddressPool> m_pGoose;
    std::unique_ptr<AddressPool> m_pSampledValues;
};

} // namespace Internal
} // namespace Corvane
