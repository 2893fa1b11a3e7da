// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TextPattern.h>

#include <QHash>

#include <utility>
#include <vector>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::FillPattern;
using Internal::PatternText;

namespace
{

// Continues the text of another element to that of an element.
using InfoRule = void (*)(SCLElement* element, PatternText& text);

QString Get(SCLElement* element, const QString& attribute)
{
    return element->GetAttribute(attribute);
}

void OwnName(SCLElement* element, PatternText& text)
{
    text = PatternText(
        FillPattern("%1 name = %2", {element->GetTag(), Get(element, Attribute::name)}));
}

void OwnId(SCLElement* element, PatternText& text)
{
    text = PatternText(FillPattern("%1 id = %2", {element->GetTag(), Get(element, Attribute::id)}));
}

void HitemInfo(SCLElement* element, PatternText& text)
{
    text = PatternText(
        FillPattern("Hitem version = %1, Hitem revision = %2",
                    {Get(element, Attribute::version), Get(element, Attribute::revision)}));
}

void BaseAlone(SCLElement*, PatternText&) {}

void TagAndName(SCLElement* element, PatternText& text)
{
    text.Append(", %2 name = %3", {element->GetTag(), Get(element, Attribute::name)});
}

void ConnectedAPInfo(SCLElement* element, PatternText& text)
{
    text.Append(", ConnectedAP iedName = %2, ConnectedAP apName = %3",
                {Get(element, Attribute::iedName), Get(element, Attribute::apName)});
}

void AccessPointInfo(SCLElement* element, PatternText& text)
{
    text.Append(", AccessPoint name = %2", {Get(element, Attribute::name)});
}

void LDeviceInfo(SCLElement* element, PatternText& text)
{
    text.Append(", LDevice inst = %2", {Get(element, Attribute::inst)});
}

void NodeInfo(SCLElement* element, PatternText& text)
{
    text.Append(", LN = %2%3%4", {Get(element, Attribute::prefix), Get(element, Attribute::lnClass),
                                  Get(element, Attribute::inst)});
}

void DataSetInfo(SCLElement* element, PatternText& text)
{
    text.Append(", DataSet name = %2", {Get(element, Attribute::name)});
}

void AppendDaName(SCLElement* element, PatternText& text)
{
    const QString daName = Get(element, Attribute::daName);
    if (!daName.isEmpty())
        text.Append(".%2", {daName});
}

void FcdaInfo(SCLElement* element, PatternText& text)
{
    text.Append(", FCDA = %2/%3%4%5.%6",
                {Get(element, Attribute::ldInst), Get(element, Attribute::prefix),
                 Get(element, Attribute::lnClass), Get(element, Attribute::lnInst),
                 Get(element, Attribute::doName)});
    AppendDaName(element, text);
}

void ExtRefInfo(SCLElement* element, PatternText& text)
{
    PatternText external(FillPattern(
        "%1%2/%3%4%5.%6", {Get(element, Attribute::iedName), Get(element, Attribute::ldInst),
                           Get(element, Attribute::prefix), Get(element, Attribute::lnClass),
                           Get(element, Attribute::lnInst), Get(element, Attribute::doName)}));
    AppendDaName(element, external);
    text.Append(", ExtRef external = %2, ExtRef intAddr = %3",
                {external.Text(), Get(element, Attribute::intAddr)});
}

void NetworkEntryInfo(SCLElement* element, PatternText& text)
{
    text.Append(", %2 ldInst = %3, %4 cbName = %5",
                {element->GetTag(), Get(element, Attribute::ldInst), element->GetTag(),
                 Get(element, Attribute::cbName)});
}

void AddressPartInfo(SCLElement* element, PatternText& text)
{
    text.Append(", P type = %2", {Get(element, Attribute::type)});
}

// Whose text an element's own begins with.
enum class Base { None, Parent, AccessPoint };

struct InfoRow {
    Base base = Base::None;
    InfoRule rule = nullptr;
};

InfoRow InfoRowOf(SCLElement* element)
{
    static const QHash<QString, InfoRow> rows = {
        {Tag::IED, {Base::None, OwnName}},
        {Tag::SubNetwork, {Base::None, OwnName}},
        {Tag::Substation, {Base::None, OwnName}},
        {Tag::ConnectedAP, {Base::Parent, ConnectedAPInfo}},
        {Tag::Hitem, {Base::None, HitemInfo}},
        {Tag::AccessPoint, {Base::Parent, AccessPointInfo}},
        {Tag::LDevice, {Base::AccessPoint, LDeviceInfo}},
        {Tag::LN0, {Base::Parent, NodeInfo}},
        {Tag::LN, {Base::Parent, NodeInfo}},
        {Tag::DOI, {Base::Parent, TagAndName}},
        {Tag::SDI, {Base::Parent, TagAndName}},
        {Tag::DAI, {Base::Parent, TagAndName}},
        {Tag::DataSet, {Base::Parent, DataSetInfo}},
        {Tag::FCDA, {Base::Parent, FcdaInfo}},
        {Tag::Inputs, {Base::Parent, BaseAlone}},
        {Tag::ExtRef, {Base::Parent, ExtRefInfo}},
        {Tag::GSEControl, {Base::Parent, TagAndName}},
        {Tag::SampledValueControl, {Base::Parent, TagAndName}},
        {Tag::ReportControl, {Base::Parent, TagAndName}},
        {Tag::LogControl, {Base::Parent, TagAndName}},
        {Tag::SettingControl, {Base::Parent, BaseAlone}},
        {Tag::Address, {Base::Parent, BaseAlone}},
        {Tag::GSE, {Base::Parent, NetworkEntryInfo}},
        {Tag::SMV, {Base::Parent, NetworkEntryInfo}},
        {Tag::P, {Base::Parent, AddressPartInfo}},
        {Tag::LNodeType, {Base::None, OwnId}},
        {Tag::DOType, {Base::None, OwnId}},
        {Tag::DAType, {Base::None, OwnId}},
        {Tag::EnumType, {Base::None, OwnId}},
    };
    return rows.value(element->GetTag());
}

SCLElement* BaseOf(SCLElement* element, Base base)
{
    switch (base) {
    case Base::Parent:
        return element->GetParent(QString());
    case Base::AccessPoint:
        return element->GetParent(Tag::AccessPoint);
    case Base::None:
        break;
    }
    return nullptr;
}

// Substation items name themselves below their parent.
const char* ItemSeparator(const QString& tag)
{
    static const QHash<QString, const char*> separators = {
        {Tag::PowerTransformer, "///%2"},
        {Tag::VoltageLevel, "/%2"},
        {Tag::Bay, "/%2"},
        {Tag::TransformerWinding, "/%2"},
        {Tag::ConductingEquipment, "/%2"},
        {Tag::ConnectivityNode, "/%2"},
        {Tag::Terminal, "/%2"},
    };
    return separators.value(tag);
}

QString NodeRefName(SCLElement* node)
{
    SCLElement* lDevice = node ? node->GetParent(QString()) : nullptr;
    SCLElement* ied = lDevice ? lDevice->GetParent(Tag::IED) : nullptr;
    if (!ied)
        return QString();
    return FillPattern("%1%2/%3%4%5", {Get(ied, Attribute::name), Get(lDevice, Attribute::inst),
                                       Get(node, Attribute::prefix), Get(node, Attribute::lnClass),
                                       Get(node, Attribute::lnInst)});
}

bool IsNode(const QString& tag)
{
    return tag == Tag::LN0 || tag == Tag::LN;
}

// The kind of a control block in the MMS form; null for other elements.
const char* MmsKind(SCLElement* element, const QString& tag)
{
    if (tag == Tag::GSEControl)
        return Get(element, Attribute::type) == QLatin1String("GSSE") ? "GS" : "GO";
    if (tag == Tag::SampledValueControl)
        return Get(element, Attribute::multicast) == QLatin1String("false") ? "US" : "MS";
    return nullptr;
}

// Continues the name of its parent to that of an element.
void AppendRefName(SCLElement* element, PatternText& text)
{
    const QString tag = element->GetTag();
    text.Append(MmsKind(element, tag) ? ".%2" : ItemSeparator(tag),
                {Get(element, Attribute::name)});
}

PatternText PlainRefName(SCLElement* element)
{
    // Up to the element whose name does not need its parent's, then down again.
    std::vector<SCLElement*> chain;
    QString tag;
    for (; element; element = element->GetParent(QString())) {
        tag = element->GetTag();
        if (!ItemSeparator(tag) && !MmsKind(element, tag))
            break;
        chain.push_back(element);
    }
    PatternText name;
    if (element && IsNode(tag))
        name = PatternText(NodeRefName(element));
    else if (element && tag == Tag::Substation)
        name = PatternText(Get(element, Attribute::name));
    for (; !chain.empty(); chain.pop_back())
        AppendRefName(chain.back(), name);
    return name;
}

QString Label(SCLElement* element)
{
    static const QHash<QString, QString> labelAttributes = {
        {Tag::Substation, Attribute::name}, {Tag::SubNetwork, Attribute::name},
        {Tag::IED, Attribute::name},        {Tag::AccessPoint, Attribute::name},
        {Tag::DOI, Attribute::name},        {Tag::SDI, Attribute::name},
        {Tag::DAI, Attribute::name},        {Tag::DO, Attribute::name},
        {Tag::SDO, Attribute::name},        {Tag::DA, Attribute::name},
        {Tag::BDA, Attribute::name},        {Tag::LDevice, Attribute::inst},
        {Tag::LNodeType, Attribute::id},    {Tag::DOType, Attribute::id},
        {Tag::DAType, Attribute::id},       {Tag::EnumType, Attribute::id},
    };
    const QString tag = element->GetTag();
    if (IsNode(tag))
        return FillPattern("%1%2%3",
                           {Get(element, Attribute::prefix), Get(element, Attribute::lnClass),
                            Get(element, Attribute::inst)});
    const QString attribute = labelAttributes.value(tag);
    return attribute.isEmpty() ? QString() : Get(element, attribute);
}

} // namespace

QString SCLHelp::GetElementFullInfo(SCLElement* element, bool withTag)
{
    if (!element)
        return QString();
    // Up to the element whose text needs no other, then down again.
    std::vector<std::pair<SCLElement*, InfoRule>> chain;
    for (SCLElement* at = element; at;) {
        const InfoRow row = InfoRowOf(at);
        if (!row.rule)
            break;
        chain.emplace_back(at, row.rule);
        at = BaseOf(at, row.base);
    }
    PatternText text;
    for (; !chain.empty(); chain.pop_back())
        chain.back().second(chain.back().first, text);
    if (text.Text().isEmpty() || !withTag)
        return text.Text();
    return FillPattern("%1 (%2)", {element->GetTag(), text.Text()});
}

QString SCLHelp::GetElementRefName(SCLElement* element, bool mmsForm)
{
    if (!element)
        return QString();
    const char* kind = mmsForm ? MmsKind(element, element->GetTag()) : nullptr;
    if (!kind)
        return PlainRefName(element).Text();
    PatternText name = PlainRefName(element->GetParent(QString()));
    name.Append("$%2$%3", {QLatin1String(kind), Get(element, Attribute::name)});
    return name.Text();
}

QString SCLHelp::GetElementDisplayName(SCLElement* element)
{
    if (!element)
        return QString();
    const QString label = Label(element);
    const QString desc = label.isEmpty() ? QString() : Get(element, Attribute::desc);
    return desc.isEmpty() ? label : FillPattern("%1:%2", {label, desc});
}

} // namespace Corvane
