// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SubscriptionGrouping.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane::Internal
{

namespace
{

bool EndsWithQ(const QString& text)
{
    return text.endsWith(QLatin1Char('q'));
}

} // namespace

void SubscriptionGrouping::Add(const QList<SCLElement*>& extRefs)
{
    for (SCLElement* extRef : extRefs)
        Add(extRef);
}

void SubscriptionGrouping::Add(SCLElement* extRef)
{
    const QString intAddr = extRef->GetAttribute(Attribute::intAddr);
    if (m_kind.skipsQuality && EndsWithQ(extRef->GetAttribute(Attribute::daName)) &&
        EndsWithQ(intAddr))
        return;
    const PublishedData::Publication publication = m_published.Of(extRef);
    if (!publication.controlBlock)
        return;
    const int record = RecordOf(publication);
    m_records[record].extRefs.append(extRef);
    m_records[record].fcdas.append(publication.fcda);
    AddPorts(record, intAddr);
}

int SubscriptionGrouping::RecordOf(const PublishedData::Publication& publication)
{
    SCLElement* controlBlock = publication.controlBlock;
    const auto known = m_recordOfControl.constFind(controlBlock);
    if (known != m_recordOfControl.constEnd())
        return known.value();
    const int record = static_cast<int>(m_records.size());
    m_recordOfControl.insert(controlBlock, record);
    m_records.append({controlBlock->GetParent(Tag::IED),
                      controlBlock->GetParent(Tag::LDevice),
                      publication.dataSet,
                      controlBlock,
                      {},
                      {},
                      {}});
    m_knownPorts.append(QSet<QString>());
    return record;
}

void SubscriptionGrouping::AddPorts(int record, const QString& intAddr)
{
    const QStringList ports = PortNamesOfIntAddr(intAddr);
    for (const QString& port : ports) {
        if (m_knownPorts[record].contains(port))
            continue;
        m_knownPorts[record].insert(port);
        m_records[record].ports.append(port);
    }
}

} // namespace Corvane::Internal
