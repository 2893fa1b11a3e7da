// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcGenerator.h>

#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcGeneratorPrivate.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>

#include <QHash>

#include <utility>

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

using Wiring = QHash<SCLElement*, QList<SCLElement*>>;

// The inputs of each FCDA, in the order of the record.
Wiring WiringOf(const SCLHelp::Input_CB& input)
{
    Wiring wiring;
    for (int i = 0; i < input.fcdas.size(); ++i)
        wiring[input.fcdas.at(i)].append(input.extRefs.at(i));
    return wiring;
}

const QString& IntAddr()
{
    static const QString tag = QStringLiteral("intAddr");
    return tag;
}

} // namespace

CrcElement* CrcGenerator::BuildSub(bool isGoose, bool& ok)
{
    ok = true;
    const CrcKind& kind = Internal::CrcKindOf(isGoose);
    const QList<SCLHelp::Input_CB> inputs =
        m_pPrivate->work->Lookups().SubscriptionsOf(kind.control, m_pPrivate->ied);
    if (inputs.isEmpty())
        return nullptr;
    CrcElement* section = CrcCopy::NewNode(kind.subscriptions);
    for (const SCLHelp::Input_CB& input : inputs) {
        CrcElement* reference = m_pPrivate->AddReference(kind, input.controlBlock, section);
        if (!reference || !m_pPrivate->AddSubscription(this, kind, input, reference))
            ok = false;
        if (!reference)
            break;
    }
    return section;
}

bool CrcGenerator::Private::AddSubscription(CrcGenerator* generator, const CrcKind& kind,
                                            const SCLHelp::Input_CB& input, CrcElement* reference)
{
    if (!CrcCopy::Append(reference, CopyPublic(input.controlBlock)))
        return false;
    SCLElement* entry = work->Lookups().EntryOf(kind.control, input.controlBlock);
    CrcElement* connection = CopyAlone(entry ? entry->GetParent(QString()) : nullptr);
    if (!CrcCopy::Append(reference, connection))
        return false;
    bool ok = CrcCopy::Append(connection, CopyWhole(entry));
    CrcElement* members = CopyAlone(input.dataSet);
    if (!CrcCopy::Append(reference, members))
        return false;
    return AddSubscribedMembers(generator, input, members) && ok;
}

bool CrcGenerator::Private::AddSubscribedMembers(CrcGenerator* generator,
                                                 const SCLHelp::Input_CB& input,
                                                 CrcElement* members)
{
    bool ok = true;
    const Wiring wiring = WiringOf(input);
    const QList<SCLElement*> fcdas = input.dataSet->FindChildByType(Tag::FCDA, false);
    for (SCLElement* fcda : fcdas) {
        bool isComplete = true;
        CrcCopy::Append(members, generator->SubFcdaCrcElementFromSclElement(
                                     fcda, wiring.value(fcda), isComplete));
        ok = ok && isComplete;
        if (work->Copy().IsExhausted())
            return false;
    }
    return ok;
}

CrcElement* CrcGenerator::SubFcdaCrcElementFromSclElement(SCLElement* fcda,
                                                          QList<SCLElement*> extRefs, bool& ok)
{
    ok = true;
    CrcCopy& copy = m_pPrivate->work->Copy();
    CrcElement* node = fcda ? copy.CopyWithAttributes(fcda, GeneratorReadable) : nullptr;
    if (!node) {
        ok = false;
        return nullptr;
    }
    ok = m_pPrivate->AddDataOfFcda(m_pPrivate->work->Lookups().DoiOfFcda(fcda),
                                   fcda->GetAttribute(Attribute::daName), node);
    if (extRefs.isEmpty() &&
        !m_pPrivate->AddTerminal(QString(), QStringLiteral("NULL"), nullptr, node))
        ok = false;
    for (SCLElement* extRef : std::as_const(extRefs)) {
        ok = m_pPrivate->AddTerminal(extRef, node) && ok;
        if (copy.IsExhausted())
            break;
    }
    return node;
}

bool CrcGenerator::Private::AddTerminal(SCLElement* extRef, CrcElement* fcda)
{
    const CrcLookups::Terminal found = work->Lookups().TerminalOf(extRef);
    const QString desc = found.doi ? found.doi->GetAttribute(Attribute::desc) : QString();
    return AddTerminal(desc, extRef->GetAttribute(Attribute::intAddr), found.source, fcda) &&
           found.source;
}

bool CrcGenerator::Private::AddTerminal(const QString& desc, const QString& name,
                                        SCLElement* source, CrcElement* fcda)
{
    CrcElement* terminal = CrcCopy::NewNode(IntAddr());
    fcda->children.append(terminal);
    return work->Copy().AddAttribute(terminal, GeneratorReadable, Attribute::desc, desc) &&
           work->Copy().AddAttribute(terminal, GeneratorBoth, Attribute::name, name) &&
           (!source || CrcCopy::Append(terminal, CopyData(source)));
}

} // namespace Corvane
