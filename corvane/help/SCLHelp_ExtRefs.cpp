// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/AttributeCriterion.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/Walks.h>

#include <QStringList>

#include <array>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::AttributeCriterion;

namespace
{

// The first structured attribute name that a path holds, by the order of the list.
QString AttributeKeyIn(const QString& path)
{
    static const std::array<QString, 4> keys = {QStringLiteral("cVal"), QStringLiteral("mag"),
                                                QStringLiteral("instMag"),
                                                QStringLiteral("valWTr")};
    for (const QString& key : keys) {
        if (path.contains(key))
            return key;
    }
    return QString();
}

AttributeCriterion FcdaCriterion(SCLElement* extRef)
{
    const auto same = [extRef](const QString& name) {
        return std::make_pair(name, extRef->GetAttribute(name));
    };
    return {same(Attribute::daName), same(Attribute::doName), same(Attribute::lnClass),
            same(Attribute::lnInst), same(Attribute::prefix), same(Attribute::ldInst)};
}

} // namespace

bool SCLHelp::ParseExtRefIntAddr(const QString& intAddr, QString& port, QString& ldInst,
                                 QString& lnName, QString& doName, QString& daName)
{
    if (intAddr.isEmpty())
        return false;
    const QStringList parts = intAddr.split(QLatin1Char(':'), Qt::KeepEmptyParts);
    if (parts.size() > 2)
        return false;
    port = parts.size() == 2 ? parts.first() : QString::fromLatin1("");
    QString path = parts.last();
    path.replace(QLatin1Char('/'), QLatin1Char('.'));
    const QStringList fields = path.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    if (fields.size() < 3)
        return false;
    ldInst = fields[0];
    lnName = fields[1];
    if (fields.size() <= 4) {
        doName = fields[2];
        if (fields.size() == 4)
            daName = fields[3];
        return true;
    }
    const QString key = AttributeKeyIn(path);
    if (key.isEmpty())
        return false;
    // By first occurrence, wherever in the path it falls; a negative count means all that follows.
    const auto keyPos = path.indexOf(key);
    const auto doStart = path.indexOf(lnName) + lnName.size() + 1;
    daName = path.mid(keyPos);
    doName = path.mid(doStart, keyPos - doStart - 1);
    return true;
}

QList<SCLElement*> SCLHelp::GetFCDAFromExtRef(SCLElement* extRef)
{
    QList<SCLElement*> matches;
    SCLElement* root = Internal::RootOf(extRef);
    if (!root)
        return matches;
    SCLElement* sender =
        root->FindChild(Tag::IED, Attribute::name, extRef->GetAttribute(Attribute::iedName), false);
    const AttributeCriterion criterion = FcdaCriterion(extRef);
    const QList<SCLElement*> dataSets = Internal::DataSetsOfIED(sender);
    for (SCLElement* dataSet : dataSets) {
        const QList<SCLElement*> fcdas = dataSet->FindChildByType(Tag::FCDA, false);
        for (SCLElement* fcda : fcdas) {
            if (criterion.Matches(fcda))
                matches.append(fcda);
        }
    }
    return matches;
}

} // namespace Corvane
