// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <QHash>
#include <QSet>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::ControlKind;
using Internal::PublishedData;

namespace
{

bool EndsWithQ(const QString& text)
{
    return text.endsWith(QLatin1Char('q'));
}

// Groups ExtRefs by the control block that publishes what they name.
class Grouping
{
public:
    Grouping(const ControlKind& kind, SCLElement* root) : m_kind(kind), m_published(kind, root) {}

    void Add(const QList<SCLElement*>& extRefs);
    QList<SCLHelp::Input_CB> Result() const { return m_records; }

private:
    void Add(SCLElement* extRef);
    int RecordOf(const PublishedData::Publication& publication);
    void AddPorts(int record, const QString& intAddr);

    const ControlKind& m_kind;
    PublishedData m_published;
    QList<SCLHelp::Input_CB> m_records;
    QHash<SCLElement*, int> m_recordOfControl;
    QList<QSet<QString>> m_knownPorts;
};

void Grouping::Add(const QList<SCLElement*>& extRefs)
{
    for (SCLElement* extRef : extRefs)
        Add(extRef);
}

void Grouping::Add(SCLElement* extRef)
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

int Grouping::RecordOf(const PublishedData::Publication& publication)
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

void Grouping::AddPorts(int record, const QString& intAddr)
{
    const QStringList ports = Internal::PortNamesOfIntAddr(intAddr);
    for (const QString& port : ports) {
        if (m_knownPorts[record].contains(port))
            continue;
        m_knownPorts[record].insert(port);
        m_records[record].ports.append(port);
    }
}

QList<SCLHelp::Input_CB> SubscriptionsOfInputs(const ControlKind& kind, SCLElement* inputs)
{
    SCLElement* root = Internal::RootOf(inputs);
    if (!root)
        return {};
    Grouping grouping(kind, root);
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
    Grouping grouping(kind, root);
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
