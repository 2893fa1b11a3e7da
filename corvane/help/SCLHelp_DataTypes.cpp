// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TemplateIndex.h>
#include <corvane/help/Walks.h>

#include <QSet>

#include <utility>
#include <vector>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::TemplateIndex;

namespace
{

// A dotted path of names: all but the last go on in the type of the child found.
SCLElement* FollowPath(SCLElement* current, QString rest, SCLElement* (*typeOf)(SCLElement*))
{
    for (auto dot = rest.indexOf(QLatin1Char('.')); dot >= 0;
         dot = rest.indexOf(QLatin1Char('.'))) {
        SCLElement* child = current->FindChild(Attribute::name, rest.left(dot));
        current = child ? typeOf(child) : nullptr;
        if (!current)
            return nullptr;
        rest.remove(0, dot + 1);
    }
    return rest.isEmpty() ? nullptr : current->FindChild(Attribute::name, rest);
}

// A list of elements, each held once, in the order in which they came.
class UniqueList
{
public:
    explicit UniqueList(QList<SCLElement*>& list)
        : m_list(list), m_known(list.constBegin(), list.constEnd())
    {
    }

    bool Add(SCLElement* element)
    {
        if (!element || m_known.contains(element))
            return false;
        m_known.insert(element);
        m_list.append(element);
        return true;
    }

private:
    QList<SCLElement*>& m_list;
    QSet<SCLElement*> m_known;
};

// Expands types level by level: all that one reaches anew, then what is below each of those. Keeps
// its own stack of levels, since types may be chained as long as a file likes.
template <typename Expand>
void ExpandDepthFirst(const QList<SCLElement*>& types, Expand expand)
{
    std::vector<std::pair<QList<SCLElement*>, int>> levels;
    levels.emplace_back(types, 0);
    while (!levels.empty()) {
        auto& [level, next] = levels.back();
        if (next == level.size()) {
            levels.pop_back();
            continue;
        }
        SCLElement* type = level.at(next++);
        QList<SCLElement*> fresh = expand(type);
        if (!fresh.isEmpty())
            levels.emplace_back(std::move(fresh), 0);
    }
}

// Adds the type of a DA or BDA by its bType.
void AddAttributeType(SCLElement* da, TemplateIndex& templates, UniqueList& daTypes,
                      UniqueList& enumTypes, QList<SCLElement*>& fresh)
{
    const QString bType = da->GetAttribute(Attribute::bType);
    if (bType == QLatin1String("Struct")) {
        SCLElement* daType = templates.Follow(da, Attribute::type, Tag::DAType);
        if (daTypes.Add(daType))
            fresh.append(daType);
    } else if (bType == QLatin1String("Enum")) {
        enumTypes.Add(templates.Follow(da, Attribute::type, Tag::EnumType));
    }
}

} // namespace

SCLElement* SCLHelp::GetLNTypeFromLN(SCLElement* ln)
{
    return Internal::FollowReference(ln, Attribute::lnType, Tag::LNodeType);
}

SCLElement* SCLHelp::GetDOTypeFromDO(SCLElement* dataObject)
{
    return Internal::FollowReference(dataObject, Attribute::type, Tag::DOType);
}

SCLElement* SCLHelp::GetDATypeFromDA(SCLElement* da)
{
    return Internal::FollowReference(da, Attribute::type, Tag::DAType);
}

SCLElement* SCLHelp::GetEnumTypeFromDA(SCLElement* da)
{
    return Internal::FollowReference(da, Attribute::type, Tag::EnumType);
}

SCLElement* SCLHelp::GetDOFromDOI(SCLElement* doi)
{
    SCLElement* parent = doi ? doi->GetParent(QString()) : nullptr;
    SCLElement* lnType = GetLNTypeFromLN(parent);
    return lnType ? lnType->FindChild(Tag::DO, Attribute::name, doi->GetAttribute(Attribute::name),
                                      false)
                  : nullptr;
}

SCLElement* SCLHelp::GetDOFromLNTypeAndName(SCLElement* lnType, QString name)
{
    return FollowPath(lnType, std::move(name), &GetDOTypeFromDO);
}

SCLElement* SCLHelp::GetDAFromDOTypeAndName(SCLElement* doType, QString name)
{
    return FollowPath(doType, std::move(name), &GetDATypeFromDA);
}

SCLElement* SCLHelp::GetDataTypeFromID(SCLElement* root, const QString& tag, const QString& id)
{
    SCLElement* templates = Internal::FirstTemplatesOf(root);
    return templates ? templates->FindChild(tag, Attribute::id, id, false) : nullptr;
}

void SCLHelp::GetReferedDOTypeFromDOType(const QList<SCLElement*>& doTypes,
                                         QList<SCLElement*>& referredDOTypes)
{
    const QList<SCLElement*> start = doTypes; // may be the very list that grows
    UniqueList known(referredDOTypes);
    TemplateIndex templates;
    ExpandDepthFirst(start, [&](SCLElement* doType) {
        QList<SCLElement*> fresh;
        const QList<SCLElement*> sdos = doType->FindChildByType(Tag::SDO, false);
        for (SCLElement* sdo : sdos) {
            SCLElement* referred = templates.Follow(sdo, Attribute::type, Tag::DOType);
            if (known.Add(referred))
                fresh.append(referred);
        }
        return fresh;
    });
}

void SCLHelp::GetReferedDAAndEnumTypeFromDAType(const QList<SCLElement*>& daTypes,
                                                QList<SCLElement*>& referredDATypes,
                                                QList<SCLElement*>& referredEnumTypes)
{
    const QList<SCLElement*> start = daTypes; // may be the very list that grows
    UniqueList knownDATypes(referredDATypes);
    UniqueList knownEnumTypes(referredEnumTypes);
    TemplateIndex templates;
    ExpandDepthFirst(start, [&](SCLElement* daType) {
        QList<SCLElement*> fresh;
        const QList<SCLElement*> bdas = daType->FindChildByType(Tag::BDA, false);
        for (SCLElement* bda : bdas)
            AddAttributeType(bda, templates, knownDATypes, knownEnumTypes, fresh);
        return fresh;
    });
}

void SCLHelp::GetReferedDataTypeTeplates(const QList<SCLElement*>& ieds,
                                         QList<SCLElement*>& lnTypes, QList<SCLElement*>& doTypes,
                                         QList<SCLElement*>& daTypes, QList<SCLElement*>& enumTypes)
{
    if (ieds.isEmpty() || !Internal::FirstTemplatesOf(Internal::RootOf(ieds.first())))
        return;

    TemplateIndex templates;
    UniqueList knownLNTypes(lnTypes);
    for (SCLElement* ied : ieds) {
        const QList<SCLElement*> lDevices = Internal::LDevicesOfIED(ied);
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = Internal::NodesFirstLN0InFront(lDevice);
            for (SCLElement* node : nodes)
                knownLNTypes.Add(templates.Follow(node, Attribute::lnType, Tag::LNodeType));
        }
    }

    {
        UniqueList known(doTypes);
        for (SCLElement* lnType : std::as_const(lnTypes)) {
            const QList<SCLElement*> dos = lnType->FindChildByType(Tag::DO, false);
            for (SCLElement* dataObject : dos)
                known.Add(templates.Follow(dataObject, Attribute::type, Tag::DOType));
        }
    }
    GetReferedDOTypeFromDOType(doTypes, doTypes);

    {
        UniqueList knownDATypes(daTypes);
        UniqueList knownEnumTypes(enumTypes);
        QList<SCLElement*> fresh;
        for (SCLElement* doType : std::as_const(doTypes)) {
            const QList<SCLElement*> das = doType->FindChildByType(Tag::DA, false);
            for (SCLElement* da : das)
                AddAttributeType(da, templates, knownDATypes, knownEnumTypes, fresh);
        }
    }
    GetReferedDAAndEnumTypeFromDAType(daTypes, daTypes, enumTypes);
}

} // namespace Corvane
