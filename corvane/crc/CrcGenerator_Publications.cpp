// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcGenerator.h>

#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcGeneratorPrivate.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::CrcCopy;
using Internal::CrcElement;
using Internal::CrcKind;
using Internal::CrcLookups;

namespace
{

QList<SCLElement*> ControlsOfIED(const CrcKind& kind, SCLElement* ied)
{
    QList<SCLElement*> controls;
    const QList<SCLElement*> lDevices = Internal::LDevicesOfIED(ied);
    for (SCLElement* lDevice : lDevices)
        controls += Internal::ControlBlocksOfFirstLN0(lDevice, kind.control.controlTag);
    return controls;
}

} // namespace

CrcElement* CrcGenerator::BuildPub(bool isGoose, bool& ok)
{
    ok = true;
    const CrcKind& kind = Internal::CrcKindOf(isGoose);
    const QList<SCLElement*> controls = ControlsOfIED(kind, m_pPrivate->ied);
    if (controls.isEmpty())
        return nullptr;
    CrcElement* section = CrcCopy::NewNode(kind.publications);
    for (SCLElement* control : controls) {
        CrcElement* reference = m_pPrivate->AddReference(kind, control, section);
        if (!reference || !m_pPrivate->AddPublication(this, kind, control, reference))
            ok = false;
        if (!reference)
            break;
    }
    return section;
}

bool CrcGenerator::Private::AddPublication(CrcGenerator* generator, const CrcKind& kind,
                                           SCLElement* control, CrcElement* reference)
{
    if (!CrcCopy::Append(reference, CopyWhole(control)))
        return false;
    SCLElement* entry = work->Lookups().EntryOf(kind.control, control);
    if (!entry)
        return false;
    CrcElement* connection = CopyAlone(entry->GetParent(QString()));
    if (!CrcCopy::Append(reference, connection))
        return false;
    const bool isConnected = AddEntryAndNeighbours(kind, entry, connection);
    SCLElement* dataSet = work->Lookups().DataSetOf(control);
    if (!dataSet)
        return false;
    CrcElement* members = CopyAlone(dataSet);
    if (!CrcCopy::Append(reference, members))
        return false;
    return AddPublishedMembers(generator, dataSet, members) && isConnected;
}

// All that the access point has beside the entries of the other control blocks of the kind.
bool CrcGenerator::Private::AddEntryAndNeighbours(const CrcKind& kind, SCLElement* entry,
                                                  CrcElement* connection)
{
    const CrcLookups::Neighbours neighbours =
        work->Lookups().NeighboursOf(entry->GetParent(QString()), kind.control.networkTag);
    const QList<SCLElement*> children =
        neighbours.before + QList<SCLElement*>{entry} + neighbours.after;
    for (SCLElement* child : children) {
        if (!CrcCopy::Append(connection, CopyWhole(child)))
            return false;
    }
    return true;
}

bool CrcGenerator::Private::AddPublishedMembers(CrcGenerator* generator, SCLElement* dataSet,
                                                CrcElement* members)
{
    bool ok = true;
    const QList<SCLElement*> children = dataSet->GetSortedChildList();
    for (SCLElement* child : children) {
        bool isComplete = true;
        CrcElement* member = child->GetTag() == Tag::FCDA
                                 ? generator->PubFcdaCrcElementFromSclElement(child, isComplete)
                                 : CopyWhole(child);
        ok = CrcCopy::Append(members, member) && isComplete && ok;
        if (work->Copy().IsExhausted())
            return false;
    }
    return ok;
}

CrcElement* CrcGenerator::PubFcdaCrcElementFromSclElement(SCLElement* fcda, bool& ok)
{
    ok = true;
    CrcLookups& lookups = m_pPrivate->work->Lookups();
    CrcElement* node =
        fcda ? m_pPrivate->work->Copy().CopyWithAttributes(fcda, GeneratorBoth) : nullptr;
    if (!node) {
        ok = false;
        return nullptr;
    }
    SCLElement* doi = lookups.DoiOfFcda(fcda);
    const QString daName = fcda->GetAttribute(Attribute::daName);
    SCLElement* source = daName.isEmpty() ? doi : lookups.DaiOf(doi, daName);
    ok = m_pPrivate->AddDataOfFcda(doi, daName, node);
    if (source && !CrcCopy::Append(node, m_pPrivate->CopyData(source)))
        ok = false;
    return node;
}

} // namespace Corvane
