// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/ControlKind.h>
#include <corvane/help/NumberSet.h>

#include <QSet>
#include <QString>
#include <QVector>

namespace Corvane::Internal
{

/// The `type` of a `P`.
namespace ParameterType
{
inline const QString MacAddress = QStringLiteral("MAC-Address");
inline const QString AppId = QStringLiteral("APPID");
inline const QString VlanId = QStringLiteral("VLAN-ID");
inline const QString VlanPriority = QStringLiteral("VLAN-PRIORITY");
inline const QString Ip = QStringLiteral("IP");
inline const QString IpSubnet = QStringLiteral("IP-SUBNET");
} // namespace ParameterType

/// What sets the addresses of GOOSE and of sampled values apart.
struct AddressKind {
    const ControlKind& control;
    /// APPIDs are given out from the first on and below the end.
    int firstAppId;
    int appIdEnd;
    /// The fourth byte of a MAC address made when the one that follows from the APPID is taken.
    int fallbackGroup;
    /// Whether such an address keeps lower-case digits. It is then compared as it is, and so not
    /// with what the document holds, which is compared in upper case.
    bool lowerCaseFallback;
    /// Whether an entry has `MinTime` and `MaxTime`.
    bool hasTimes;
};

const AddressKind& GooseAddresses();
const AddressKind& SampledValuesAddresses();

/// The addresses that the entries of one kind have, and those that are free, without a search of
/// texts: only texts that could be given out count, and these are numbers.
///
/// Lives through one update or several. What is given out in lower case, or released, counts as such
/// only from EndUpdate() on.
class AddressPool
{
public:
    explicit AddressPool(const AddressKind& kind) : m_kind(kind) {}

    const AddressKind& Kind() const { return m_kind; }

    /// Enters the value of a `P`, trimmed and in upper case, by its type. Other types and texts are
    /// void.
    void Add(const QString& type, const QString& value);
    /// The entry of that value goes.
    void Release(const QString& type, const QString& value);

    /// The lowest free APPID. The last of the range if all are taken.
    QString TakeAppId();
    /// The MAC address that goes with an APPID of this pool, or the lowest free one of the fallback
    /// group. Empty if all are taken.
    QString TakeMacAddress(const QString& appId);

    /// The tree is now as if all that was taken had been added.
    void EndUpdate();

private:
    NumberSet* SetOf(const QString& type, const QString& value, int* number);
    NumberSet& MacAddresses(int group);
    bool IsTaken(int fallback);
    void TakeFallback(int fallback);
    QString FallbackText(int fallback) const;

    const AddressKind& m_kind;
    NumberSet m_appIds;
    /// By the fourth byte: 01 and 04.
    NumberSet m_macAddresses01;
    NumberSet m_macAddresses04;
    /// What this update has given out that compares as different from the document's.
    QSet<int> m_lowerCase;
    /// In one update no fallback below it becomes free.
    int m_nNextFallback = 0;
    QVector<QPair<NumberSet*, int>> m_released;
};

} // namespace Corvane::Internal
