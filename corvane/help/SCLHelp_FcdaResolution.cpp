// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TextPattern.h>

#include <QMap>
#include <QStringList>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;

namespace
{

// The LDevice that an FCDA names, in the IED that holds the FCDA.
SCLElement* LDeviceOfFcda(SCLElement* fcda)
{
    SCLElement* ied = fcda ? fcda->GetParent(Tag::IED) : nullptr;
    return SCLHelp::GetLDeviceFromIEDAndInst(ied, fcda ? fcda->GetAttribute(Attribute::ldInst)
                                                       : QString());
}

// The nodes' attributes are compared one by one, the prefix of an LN0 included.
SCLElement* NodeByAttributes(SCLElement* lDevice, SCLElement* fcda)
{
    const QMap<QString, QString> node = {
        {Attribute::prefix, fcda->GetAttribute(Attribute::prefix)},
        {Attribute::lnClass, fcda->GetAttribute(Attribute::lnClass)},
        {Attribute::inst, fcda->GetAttribute(Attribute::lnInst)},
    };
    SCLElement* ln0 = lDevice->FindChild(Tag::LN0, node, false);
    return ln0 ? ln0 : lDevice->FindChild(Tag::LN, node, false);
}

// The nodes' composed names are compared, however their letters are split.
SCLElement* NodeByComposedName(SCLElement* lDevice, SCLElement* fcda)
{
    return lDevice->FindChild(Internal::FillPattern(
        "%1%2%3", {fcda->GetAttribute(Attribute::prefix), fcda->GetAttribute(Attribute::lnClass),
                   fcda->GetAttribute(Attribute::lnInst)}));
}

QStringList Segments(const QString& name)
{
    return name.split(QLatin1Char('.'), Qt::KeepEmptyParts);
}

// Down the instance tree, SDI by SDI.
SCLElement* DescendSdi(SCLElement* current, const QStringList& names)
{
    for (auto it = names.constBegin(); current && it != names.constEnd(); ++it)
        current = current->FindChild(Tag::SDI, Attribute::name, *it, false);
    return current;
}

} // namespace

SCLElement* SCLHelp::GetDOFromFCDA(SCLElement* fcda)
{
    SCLElement* lDevice = LDeviceOfFcda(fcda);
    SCLElement* ln = lDevice ? NodeByComposedName(lDevice, fcda) : nullptr;
    SCLElement* lnType = GetLNTypeFromLN(ln);
    return lnType ? GetDOFromLNTypeAndName(lnType, fcda->GetAttribute(Attribute::doName)) : nullptr;
}

SCLElement* SCLHelp::GetDOIFromFCDA(SCLElement* fcda)
{
    SCLElement* lDevice = LDeviceOfFcda(fcda);
    SCLElement* ln = lDevice ? NodeByAttributes(lDevice, fcda) : nullptr;
    return ln ? GetDOIFromLNAndName(ln, fcda->GetAttribute(Attribute::doName)) : nullptr;
}

SCLElement* SCLHelp::GetDOIFromLNAndName(SCLElement* ln, const QString& name)
{
    if (!ln || name.isEmpty())
        return nullptr;
    QStringList segments = Segments(name);
    SCLElement* doi = ln->FindChild(Tag::DOI, Attribute::name, segments.takeFirst(), false);
    return DescendSdi(doi, segments);
}

SCLElement* SCLHelp::GetDAIFromDOIAndName(SCLElement* doi, const QString& name)
{
    if (!doi || name.isEmpty())
        return nullptr;
    QStringList segments = Segments(name);
    const QString last = segments.takeLast();
    SCLElement* parent = DescendSdi(doi, segments);
    return parent ? parent->FindChild(Tag::DAI, Attribute::name, last, false) : nullptr;
}

QString SCLHelp::GetDAIShortAddress(SCLElement* doi, const QString& name)
{
    SCLElement* dai = GetDAIFromDOIAndName(doi, name);
    return dai ? dai->GetAttribute(Attribute::sAddr) : QString::fromLatin1("");
}

} // namespace Corvane
