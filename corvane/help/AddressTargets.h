// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/ChildIndex.h>
#include <corvane/help/TemplateIndex.h>

#include <QHash>
#include <QString>
#include <QStringList>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// The path of an `intAddr` as SCLHelp::ParseExtRefIntAddr() gives it.
struct AddressPath {
    QString ldInst;
    QString lnName;
    QString doName;
    QString daName;
};

/// What a path leads to, as far as it leads. Elements of the instance come before those of the
/// templates.
struct AddressTarget {
    SCLElement* ied = nullptr;
    SCLElement* lDevice = nullptr;
    SCLElement* node = nullptr;
    SCLElement* dataObject = nullptr;
    SCLElement* attribute = nullptr;
};

/// Follows the internal addresses of many `ExtRef`s inside one call, during which the tree does not
/// change.
class AddressTargets
{
public:
    /// The path inside the IED that holds the `ExtRef`. The `LDevice` is looked for in the
    /// `ExtRef`'s own `Server` first.
    AddressTarget Follow(SCLElement* extRef, const AddressPath& path);

private:
    using Names = QHash<QString, SCLElement*>;

    /// The nearest `IED` of an element and the nearest `Server` inside it, or null.
    struct Place {
        SCLElement* ied = nullptr;
        SCLElement* server = nullptr;
    };

    Place PlaceOf(SCLElement* extRef);
    SCLElement* LDeviceAt(const Place& place, const QString& inst);
    SCLElement* NodeAt(SCLElement* lDevice, const QString& lnName);
    void FollowInstance(AddressTarget& target, const QStringList& doNames,
                        const QStringList& daNames);
    void FollowTemplates(AddressTarget& target, const QStringList& doNames,
                         const QStringList& daNames);
    SCLElement* NamedChild(SCLElement* parent, const QString& tag, const QString& name);
    SCLElement* DescendTemplates(SCLElement* current, const QStringList& names);
    SCLElement* TemplateStep(SCLElement* current, const QString& name);

    ChildIndex m_children;
    TemplateIndex m_templates;
    QHash<SCLElement*, Place> m_places;
    QHash<SCLElement*, Names> m_lDevicesOfIed;
    QHash<SCLElement*, Names> m_nodesOfLDevice;
};

} // namespace Internal
} // namespace Corvane
