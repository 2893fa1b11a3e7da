// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <QHash>

namespace Corvane
{

namespace Attribute = Internal::Attribute;
namespace Tag = Internal::Tag;

namespace
{

const QString variableMapType = QStringLiteral("TALVEN_VARMAP");
const QString userDescription = QStringLiteral("dU");

QStringList UsualAttributes(const QString& fc)
{
    if (fc == QLatin1String("SG") || fc == QLatin1String("SP"))
        return {QStringLiteral("setVal"), QStringLiteral("setMag.f")};
    if (fc == QLatin1String("ST"))
        return QString::fromLatin1(g_szStatusDANames).split(QLatin1Char(','));
    if (fc == QLatin1String("MX"))
        return QString::fromLatin1(g_szMeasureDANames).split(QLatin1Char(','));
    return {};
}

QString ShortKey(const QString& address)
{
    return address.mid(address.indexOf(QLatin1Char(':')) + 1);
}

/// Which output an input is passed on to, by their short keys.
class VariableMap
{
public:
    explicit VariableMap(SCLElement* ied)
    {
        const QList<SCLElement*> privates = ied->FindChildByType(Tag::Private, false);
        for (SCLElement* entry : privates) {
            if (entry->GetAttribute(Attribute::type) == variableMapType)
                Add(entry->GetValue());
        }
    }

    bool IsEmpty() const { return m_outputs.isEmpty(); }
    QString OutputOf(const QString& input) const { return m_outputs.value(input); }

private:
    void Add(const QString& text)
    {
        const QStringList fields = text.split(QLatin1Char(';'), Qt::KeepEmptyParts);
        if (fields.size() != 2)
            return;
        const QStringList first = fields[0].split(QLatin1Char(':'), Qt::KeepEmptyParts);
        const QStringList second = fields[1].split(QLatin1Char(':'), Qt::KeepEmptyParts);
        if (first.size() != 2 || second.size() != 2)
            return;
        const QLatin1String in("in");
        const QLatin1String out("out");
        if (first[0] == out && second[0] == in)
            Enter(second[1], first[1]);
        else if (first[0] == in && second[0] == out)
            Enter(first[1], second[1]);
    }

    void Enter(const QString& input, const QString& output)
    {
        if (!input.isEmpty() && !output.isEmpty())
            m_outputs.insert(input, output);
    }

    QHash<QString, QString> m_outputs;
};

/// The data objects of an IED by the short keys of their direct attributes.
class AddressIndex
{
public:
    explicit AddressIndex(const QList<SCLElement*>& lDevices)
    {
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = Internal::NodesFirstLN0InFront(lDevice);
            for (SCLElement* node : nodes) {
                const QList<SCLElement*> dois = node->FindChildByType(Tag::DOI, false);
                for (SCLElement* doi : dois)
                    Add(doi);
            }
        }
    }

    bool IsEmpty() const { return m_dois.isEmpty(); }
    SCLElement* At(const QString& key) const { return m_dois.value(key); }

private:
    void Add(SCLElement* doi)
    {
        const QList<SCLElement*> dais = doi->FindChildByType(Tag::DAI, false);
        for (SCLElement* dai : dais) {
            const QString address = dai->GetAttribute(Attribute::sAddr).trimmed();
            if (!address.isEmpty())
                m_dois.insert(ShortKey(address), doi);
        }
    }

    QHash<QString, SCLElement*> m_dois;
};

struct Signal {
    SCLElement* pro;
    SCLElement* sta;
};

/// The signals that an IED passes on.
class PassedOn
{
public:
    explicit PassedOn(SCLElement* ied) : m_variables(ied)
    {
        if (m_variables.IsEmpty())
            return;
        const QList<SCLElement*> lDevices = Internal::LDevicesOfIED(ied);
        const AddressIndex outputs(lDevices);
        if (outputs.IsEmpty())
            return;
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = Internal::NodesFirstLN0InFront(lDevice);
            for (SCLElement* node : nodes)
                AddInputs(node, outputs);
        }
    }

    const QList<Signal>& Signals() const { return m_signals; }

private:
    void AddInputs(SCLElement* node, const AddressIndex& outputs)
    {
        const QList<SCLElement*> extRefs = Internal::ExtRefsOfFirstInputs(node);
        for (SCLElement* extRef : extRefs) {
            SCLElement* fcda = SCLHelp::GetFCDAFromExtRef(extRef).value(0);
            SCLElement* pro = fcda ? SCLHelp::GetDOIFromFCDA(fcda) : nullptr;
            if (!pro)
                continue;
            const QString input = InputAddress(extRef, fcda->GetAttribute(Attribute::fc));
            const QString output = m_variables.OutputOf(ShortKey(input));
            SCLElement* sta = outputs.At(output);
            if (!input.isEmpty() && !output.isEmpty() && sta)
                m_signals.append(Signal{pro, sta});
        }
    }

    static QString InputAddress(SCLElement* extRef, const QString& fc)
    {
        QString port;
        QString ldInst;
        QString lnName;
        QString doName;
        QString daName;
        if (!SCLHelp::ParseExtRefIntAddr(extRef->GetAttribute(Attribute::intAddr), port, ldInst,
                                         lnName, doName, daName))
            return {};
        SCLElement* server = extRef->GetParent(Tag::Server);
        SCLElement* lDevice = server->FindChild(Tag::LDevice, Attribute::inst, ldInst, false);
        SCLElement* node = lDevice ? lDevice->FindChild(lnName) : nullptr;
        SCLElement* doi = node ? SCLHelp::GetDOIFromLNAndName(node, doName) : nullptr;
        return SCLHelp::GetDAIShortAddress(doi, fc, daName);
    }

    VariableMap m_variables;
    QList<Signal> m_signals;
};

QList<Signal> SignalsOf(SCLElement* ied)
{
    const bool isIed = ied && ied->GetTag() == Tag::IED;
    return isIed ? PassedOn(ied).Signals() : QList<Signal>();
}

using Copy = void (*)(SCLElement* source, SCLElement* target);

void ProToSta(SCLElement* ied, Copy copy)
{
    const QList<Signal> passedOn = SignalsOf(ied);
    for (const Signal& signal : passedOn)
        copy(signal.pro, signal.sta);
}

void StaToPro(SCLElement* ied, Copy copy)
{
    const QList<Signal> passedOn = SignalsOf(ied);
    for (const Signal& signal : passedOn)
        copy(signal.sta, signal.pro);
}

void CopyDesc(SCLElement* source, SCLElement* target)
{
    target->SetAttribute(Attribute::desc, source->GetAttribute(Attribute::desc), true);
}

SCLElement* UserDescription(SCLElement* doi)
{
    return doi->FindChild(Tag::DAI, Attribute::name, userDescription, false);
}

SCLElement* FirstVal(SCLElement* dai)
{
    return dai ? dai->GetFirstChild(Tag::Val) : nullptr;
}

// The text stays, and an attribute without a name is appended.
void CopyEmptyUDesc(SCLElement* target)
{
    if (SCLElement* val = FirstVal(UserDescription(target)))
        val->SetAttribute(QString(), QString::fromLatin1(""), true);
}

void CopyUDesc(SCLElement* source, SCLElement* target)
{
    SCLElement* sourceVal = FirstVal(UserDescription(source));
    const QString text = sourceVal ? sourceVal->GetValue() : QString();
    if (text.isEmpty()) {
        CopyEmptyUDesc(target);
        return;
    }
    SCLElement* dai = UserDescription(target);
    if (!dai)
        dai = target->CreateChild(Tag::DAI, {{Attribute::name, userDescription}}, -1, true);
    SCLElement* val = FirstVal(dai);
    if (dai && !val)
        val = dai->CreateChild(Tag::Val, -1, true);
    if (val)
        val->SetValue(text, true);
}

} // namespace

QString SCLHelp::GetDAIShortAddress(SCLElement* doi, const QString& fc, QString& daName)
{
    if (!daName.isEmpty())
        return GetDAIShortAddress(doi, daName);
    const QStringList candidates = doi ? UsualAttributes(fc) : QStringList();
    for (const QString& candidate : candidates) {
        QString address = GetDAIShortAddress(doi, candidate);
        if (!address.isEmpty()) {
            daName = candidate;
            return address;
        }
    }
    return {};
}

void SCLHelp::GetProAndStaDOIMap(SCLElement* ied, QList<SCLElement*>& proDOIs,
                                 QList<SCLElement*>& staDOIs)
{
    if (!ied || ied->GetTag() != Tag::IED)
        return;
    proDOIs.clear();
    staDOIs.clear();
    const QList<Signal> passedOn = SignalsOf(ied);
    for (const Signal& signal : passedOn) {
        proDOIs.append(signal.pro);
        staDOIs.append(signal.sta);
    }
}

void SCLHelp::SyncDescFromProToSta(SCLElement* ied)
{
    ProToSta(ied, CopyDesc);
}

void SCLHelp::SyncDescFromStaToPro(SCLElement* ied)
{
    StaToPro(ied, CopyDesc);
}

void SCLHelp::SyncUDescFromProToSta(SCLElement* ied)
{
    ProToSta(ied, CopyUDesc);
}

void SCLHelp::SyncUDescFromStaToPro(SCLElement* ied)
{
    StaToPro(ied, CopyUDesc);
}

} // namespace Corvane
