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

// A dotted path of names: all but the last go on in the type of the child found. Takes linear time
// for a path that goes round in a circle.
SCLElement* FollowPath(SCLElement* current, QString&& path, const QString& typeTag)
{
    TemplateIndex templates;
    decltype(path.size()) begin = 0;
    for (auto dot = path.indexOf(QLatin1Char('.')); dot >= 0;
         dot = path.indexOf(QLatin1Char('.'), begin)) {
        SCLElement* child = current->FindChild(Attribute::name, path.mid(begin, dot - begin));
        current = templates.Follow(child, Attribute::type, typeTag);
        if (!current)
            return nullptr;
        begin = dot + 1;
    }
    const QString last = path.mid(begin);
    return last.isEmpty() ? nullptr : current->FindChild(Attribute::name, last);
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

template <typename Visit>
void ForEachChild(const QList<SCLElement*>& parents, const QString& tag, Visit visit)
{
    for (SCLElement* parent : parents) {
        if (!parent)
            continue;
        const QList<SCLElement*> children = parent->FindChildByType(tag, false);
        for (SCLElement* child : children)
            visit(child);
    }
}

// Expands types level by level: all that one reaches anew, then what is below each of those. Keeps
// its own stack of levels, since types may be chained as long as a file likes, and its own copy of
// the types, since theirs may be the list that grows.
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

// Adds the type of a DA or BDA by its bType. The DAType if it is new, otherwise null.
SCLElement* AddAttributeType(SCLElement* da, TemplateIndex& templates, UniqueList& daTypes,
                             UniqueList& enumTypes)
{
    const QString bType = da->GetAttribute(Attribute::bType);
    if (bType == QLatin1String("Struct")) {
        SCLElement* daType = templates.Follow(da, Attribute::type, Tag::DAType);
        return daTypes.Add(daType) ? daType : nullptr;
    }
    if (bType == QLatin1String("Enum"))
        enumTypes.Add(templates.Follow(da, Attribute::type, Tag::EnumType));
    return nullptr;
}

// The stages of the closure over IEDs.

void AddNodeTypes(const QList<SCLElement*>& ieds, TemplateIndex& templates,
                  QList<SCLElement*>& lnTypes)
{
    UniqueList known(lnTypes);
    for (SCLElement* ied : ieds) {
        const QList<SCLElement*> lDevices = Internal::LDevicesOfIED(ied);
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = Internal::NodesFirstLN0InFront(lDevice);
            for (SCLElement* node : nodes)
                known.Add(templates.Follow(node, Attribute::lnType, Tag::LNodeType));
        }
    }
}

void AddDataObjectTypes(const QList<SCLElement*>& lnTypes, TemplateIndex& templates,
                        QList<SCLElement*>& doTypes)
{
    UniqueList known(doTypes);
    ForEachChild(lnTypes, Tag::DO, [&](SCLElement* dataObject) {
        known.Add(templates.Follow(dataObject, Attribute::type, Tag::DOType));
    });
}

void AddAttributeTypes(const QList<SCLElement*>& doTypes, TemplateIndex& templates,
                       QList<SCLElement*>& daTypes, QList<SCLElement*>& enumTypes)
{
    UniqueList knownDATypes(daTypes);
    UniqueList knownEnumTypes(enumTypes);
    ForEachChild(doTypes, Tag::DA, [&](SCLElement* da) {
        AddAttributeType(da, templates, knownDATypes, knownEnumTypes);
    });
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
    if (!doi)
        return nullptr;
    SCLElement* lnType = GetLNTypeFromLN(doi->GetParent(QString()));
    return lnType ? lnType->FindChild(Tag::DO, Attribute::name, doi->GetAttribute(Attribute::name),
                                      false)
                  : nullptr;
}

SCLElement* SCLHelp::GetDOFromLNTypeAndName(SCLElement* lnType, QString name)
{
    return FollowPath(lnType, std::move(name), Tag::DOType);
}

SCLElement* SCLHelp::GetDAFromDOTypeAndName(SCLElement* doType, QString name)
{
    return FollowPath(doType, std::move(name), Tag::DAType);
}

SCLElement* SCLHelp::GetDataTypeFromID(SCLElement* root, const QString& tag, const QString& id)
{
    SCLElement* templates = Internal::FirstTemplatesOf(root);
    return templates ? templates->FindChild(tag, Attribute::id, id, false) : nullptr;
}

void SCLHelp::GetReferedDOTypeFromDOType(const QList<SCLElement*>& doTypes,
                                         QList<SCLElement*>& referredDOTypes)
{
    UniqueList known(referredDOTypes);
    TemplateIndex templates;
    ExpandDepthFirst(doTypes, [&](SCLElement* doType) {
        QList<SCLElement*> fresh;
        ForEachChild({doType}, Tag::SDO, [&](SCLElement* sdo) {
            SCLElement* referred = templates.Follow(sdo, Attribute::type, Tag::DOType);
            if (known.Add(referred))
                fresh.append(referred);
        });
        return fresh;
    });
}

void SCLHelp::GetReferedDAAndEnumTypeFromDAType(const QList<SCLElement*>& daTypes,
                                                QList<SCLElement*>& referredDATypes,
                                                QList<SCLElement*>& referredEnumTypes)
{
    UniqueList knownDATypes(referredDATypes);
    UniqueList knownEnumTypes(referredEnumTypes);
    TemplateIndex templates;
    ExpandDepthFirst(daTypes, [&](SCLElement* daType) {
        QList<SCLElement*> fresh;
        ForEachChild({daType}, Tag::BDA, [&](SCLElement* bda) {
            if (SCLElement* added = AddAttributeType(bda, templates, knownDATypes, knownEnumTypes))
                fresh.append(added);
        });
        return fresh;
    });
}

void SCLHelp::GetReferedDataTypeTeplates(const QList<SCLElement*>& ieds,
                                         QList<SCLElement*>& lnTypes, QList<SCLElement*>& doTypes,
                                         QList<SCLElement*>& daTypes, QList<SCLElement*>& enumTypes)
{
    if (ieds.isEmpty() || !Internal::FirstTemplatesOf(Internal::RootOf(ieds.first())))
        return;
    // What is walked is copied, since a caller may pass one list for several arguments.
    using Elements = QList<SCLElement*>;
    TemplateIndex templates;
    AddNodeTypes(Elements(ieds), templates, lnTypes);
    AddDataObjectTypes(Elements(lnTypes), templates, doTypes);
    GetReferedDOTypeFromDOType(doTypes, doTypes);
    AddAttributeTypes(Elements(doTypes), templates, daTypes, enumTypes);
    GetReferedDAAndEnumTypeFromDAType(daTypes, daTypes, enumTypes);
}

} // namespace Corvane
