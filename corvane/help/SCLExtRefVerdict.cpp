// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLExtRefVerdict.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/AddressTargets.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SCLHelp.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/ShownText.h>
#include <corvane/help/Walks.h>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::AddressPath;
using Internal::AddressTarget;
using Internal::AddressTargets;
using Internal::PublishedData;
using Result = SCLExtRefVerdict::Result;

namespace
{

QString Shown(const QString& name)
{
    return QLatin1Char('"') + Internal::ShownText(name) + QLatin1Char('"');
}

QString ShownAttribute(SCLElement* element, const QString& name)
{
    return Shown(element->GetAttribute(name));
}

// The data that an ExtRef names, as in "LD/prefLLNN1.Do.da".
QString ShownData(SCLElement* extRef)
{
    const QString daName = extRef->GetAttribute(Attribute::daName);
    return Shown(extRef->GetAttribute(Attribute::ldInst) + QLatin1Char('/') +
                 extRef->GetAttribute(Attribute::prefix) +
                 extRef->GetAttribute(Attribute::lnClass) +
                 extRef->GetAttribute(Attribute::lnInst) + QLatin1Char('.') +
                 extRef->GetAttribute(Attribute::doName) +
                 (daName.isEmpty() ? daName : QLatin1Char('.') + daName));
}

// The names are filled in all at once, so that a "%1" in a name stays what it is.
template <typename... Names>
QString Sentence(const char* pattern, const Names&... names)
{
    return QString::fromLatin1(pattern).arg(names...);
}

// Judges ExtRefs of one document.
class Judge
{
public:
    explicit Judge(SCLElement* root) : m_published(root) {}

    SCLExtRefVerdict On(SCLElement* extRef);

private:
    void JudgePublication(SCLExtRefVerdict& verdict);
    void JudgeAddress(SCLExtRefVerdict& verdict);
    void JudgeTarget(SCLExtRefVerdict& verdict, const QString& intAddr, const AddressPath& path);

    PublishedData m_published;
    AddressTargets m_targets;
};

void Decide(SCLExtRefVerdict& verdict, Result result, const QString& text)
{
    verdict.result = result;
    verdict.text = text;
}

SCLExtRefVerdict Judge::On(SCLElement* extRef)
{
    SCLExtRefVerdict verdict;
    verdict.extRef = extRef;
    JudgePublication(verdict);
    if (verdict.controlBlock)
        JudgeAddress(verdict);
    return verdict;
}

void Judge::JudgePublication(SCLExtRefVerdict& verdict)
{
    SCLElement* extRef = verdict.extRef;
    const PublishedData::Publication found = m_published.Of(extRef);
    verdict.ied = found.ied;
    verdict.lDevice = found.lDevice;
    verdict.fcda = found.fcda;
    verdict.dataSet = found.dataSet;
    verdict.controlBlock = found.controlBlock;
    const QString ied = ShownAttribute(extRef, Attribute::iedName);
    const QString ldInst = extRef->GetAttribute(Attribute::ldInst);
    if (!found.ied)
        Decide(verdict, Result::NoSuchIED,
               extRef->GetAttribute(Attribute::iedName).isEmpty()
                   ? QStringLiteral("The input names no IED.")
                   : Sentence("There is no IED %1.", ied));
    else if (!found.lDevice)
        Decide(verdict, Result::NoSuchLDevice,
               ldInst.isEmpty() ? Sentence("The input names no logical device of IED %1.", ied)
                                : Sentence("IED %1 has no logical device %2.", ied, Shown(ldInst)));
    else if (!found.fcda)
        Decide(verdict, Result::NoSuchMember,
               Sentence("No data set of IED %1 has a member %2.", ied, ShownData(extRef)));
    else if (!found.controlBlock)
        Decide(verdict, Result::NoControlBlock,
               Sentence("Data set %1 of IED %2 has the member %3, but no control block sends it.",
                        ShownAttribute(found.dataSet, Attribute::name), ied, ShownData(extRef)));
}

void Judge::JudgeAddress(SCLExtRefVerdict& verdict)
{
    const QString intAddr = verdict.extRef->GetAttribute(Attribute::intAddr);
    QString port;
    AddressPath path;
    if (SCLHelp::ParseExtRefIntAddr(intAddr, port, path.ldInst, path.lnName, path.doName,
                                    path.daName))
        JudgeTarget(verdict, intAddr, path);
    else if (intAddr.isEmpty())
        Decide(verdict, Result::AddressNotUnderstood,
               QStringLiteral("The input has no internal address."));
    else
        Decide(verdict, Result::AddressNotUnderstood,
               Sentence("The internal address %1 is not understood.", Shown(intAddr)));
}

void Judge::JudgeTarget(SCLExtRefVerdict& verdict, const QString& intAddr, const AddressPath& path)
{
    const AddressTarget target = m_targets.Follow(verdict.extRef, path);
    verdict.targetLDevice = target.lDevice;
    verdict.targetNode = target.node;
    verdict.targetDataObject = target.dataObject;
    verdict.targetAttribute = target.attribute;
    const auto nowhere = [&](const QString& missing) {
        Decide(verdict, Result::AddressLeadsNowhere,
               Sentence("The internal address %1 leads nowhere: %2.", Shown(intAddr), missing));
    };
    if (!target.ied)
        nowhere(QStringLiteral("the input stands in no IED"));
    else if (!target.lDevice)
        nowhere(Sentence("IED %1 has no logical device %2",
                         ShownAttribute(target.ied, Attribute::name), Shown(path.ldInst)));
    else if (!target.node)
        nowhere(Sentence("logical device %1 has no logical node %2", Shown(path.ldInst),
                         Shown(path.lnName)));
    else if (!target.dataObject)
        nowhere(Sentence("logical node %1 has no data object %2", Shown(path.lnName),
                         Shown(path.doName)));
    else if (!target.attribute && !path.daName.isEmpty())
        nowhere(
            Sentence("data object %1 has no attribute %2", Shown(path.doName), Shown(path.daName)));
    else
        Decide(verdict, Result::Resolved,
               Sentence("%1 of IED %2 comes in by control block %3 and goes to %4.",
                        ShownData(verdict.extRef),
                        ShownAttribute(verdict.extRef, Attribute::iedName),
                        ShownAttribute(verdict.controlBlock, Attribute::name), Shown(intAddr)));
}

} // namespace

SCLExtRefVerdict SCLExtRefVerdict::Of(SCLElement* extRef)
{
    if (SCLElement* root = Internal::RootOf(extRef))
        return Judge(root).On(extRef);
    SCLExtRefVerdict verdict;
    verdict.extRef = extRef;
    verdict.text = QStringLiteral("The input is not part of a document.");
    return verdict;
}

QList<SCLExtRefVerdict> SCLExtRefVerdict::OfAll(SCLElement* scope)
{
    QList<SCLExtRefVerdict> verdicts;
    SCLElement* root = Internal::RootOf(scope);
    if (!root)
        return verdicts;
    Judge judge(root);
    const QList<SCLElement*> extRefs = scope->FindChildByType(Tag::ExtRef, true);
    verdicts.reserve(extRefs.size());
    for (SCLElement* extRef : extRefs)
        verdicts.append(judge.On(extRef));
    return verdicts;
}

} // namespace Corvane
