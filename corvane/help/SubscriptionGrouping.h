// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/ControlKind.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SCLHelp.h>

#include <QHash>
#include <QList>
#include <QSet>

namespace Corvane::Internal
{

/// Groups `ExtRef`s by the control block that publishes what they name, in the order in which
/// control blocks are first met.
class SubscriptionGrouping
{
public:
    /// Both must outlive the grouping.
    SubscriptionGrouping(const ControlKind& kind, PublishedData& published)
        : m_kind(kind), m_published(published)
    {
    }

    void Add(const QList<SCLElement*>& extRefs);
    QList<SCLHelp::Input_CB> Result() const { return m_records; }

private:
    void Add(SCLElement* extRef);
    int RecordOf(const PublishedData::Publication& publication);
    void AddPorts(int record, const QString& intAddr);

    const ControlKind& m_kind;
    PublishedData& m_published;
    QList<SCLHelp::Input_CB> m_records;
    QHash<SCLElement*, int> m_recordOfControl;
    QList<QSet<QString>> m_knownPorts;
};

} // namespace Corvane::Internal
