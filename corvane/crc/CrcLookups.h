// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SeededHash.h>
#include <corvane/help/ChildIndex.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/PublishedData.h>
#include <corvane/help/SCLHelp.h>
#include <corvane/help/TemplateIndex.h>

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

#include <array>
#include <cstddef>
#include <memory>
#include <unordered_map>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// What the content of CRCs asks of a station, for many questions while the tree does not change.
/// Each answer is that of the plain walks of SCLHelp: of several the first in child order.
///
/// All elements belong to one document.
class CrcLookups
{
public:
    CrcLookups() = default;
    CrcLookups(const CrcLookups&) = delete;
    CrcLookups& operator=(const CrcLookups&) = delete;

    /// The data instance that an `FCDA` names: a `DOI` or `SDI`, or null.
    SCLElement* DoiOfFcda(SCLElement* fcda);
    /// The `bType` of an attribute of that data; empty if the types do not have it.
    QString BTypeOf(SCLElement* doi, const QString& daName);
    /// The `DAI` of an attribute of that data, which may be null, or null.
    SCLElement* DaiOf(SCLElement* doi, const QString& daName);

    /// The `GSE` or `SMV` of a control block in the `Communication` section, or null.
    SCLElement* EntryOf(const ControlKind& kind, SCLElement* control);
    /// The `DataSet` that a control block sends, or null.
    SCLElement* DataSetOf(SCLElement* control);
    /// The children of a `ConnectedAP` that stand before and after those of one tag, in schema
    /// order and without its `Address`.
    struct Neighbours {
        QList<SCLElement*> before;
        QList<SCLElement*> after;
    };
    Neighbours NeighboursOf(SCLElement* connectedAP, const QString& tag);

    /// What the inputs of an IED take in.
    QList<SCLHelp::Input_CB> SubscriptionsOf(const ControlKind& kind, SCLElement* ied);
    /// Where an input of a subscriber ends: the data object, and that or its attribute.
    struct Terminal {
        SCLElement* doi = nullptr;
        SCLElement* source = nullptr;
    };
    Terminal TerminalOf(SCLElement* extRef);

private:
    template <std::size_t N>
    using Key = std::array<QString, N>;
    struct KeyHash {
        template <std::size_t N>
        std::size_t operator()(const Key<N>& key) const
        {
            std::size_t hash = 0;
            for (const QString& text : key)
                hash = hash * 31 + SeededHash(text);
            return hash;
        }
    };
    template <std::size_t N>
    using Table = std::unordered_map<Key<N>, SCLElement*, KeyHash>;

    /// The nodes of an `LDevice` by prefix, class and instance, and by their composed names.
    struct Nodes {
        Table<3> byAttributes;
        Table<1> byName;
    };
    /// The subscriptions and the entries of one kind of control block.
    struct Kind {
        std::unique_ptr<PublishedData> published;
        SCLElement* communication = nullptr;
        Table<4> entries;
    };

    Kind& KindOf(const ControlKind& kind);
    void FillEntries(const ControlKind& kind, Table<4>& entries, SCLElement* communication);
    SCLElement* LDeviceOf(SCLElement* ied, const QString& inst);
    const Nodes& NodesOf(SCLElement* lDevice);
    SCLElement* DoiOf(SCLElement* ln, const QString& name);
    SCLElement* Descend(SCLElement* current, const QStringList& names);
    SCLElement* ChildOfName(SCLElement* parent, const QString& name);
    SCLElement* DeclarationOf(SCLElement* doType, const QString& daName);

    ChildIndex m_children;
    TemplateIndex m_templates;
    Kind m_goose;
    Kind m_sampledValues;
    QHash<SCLElement*, QHash<QString, SCLElement*>> m_lDevices;
    std::unordered_map<SCLElement*, Nodes> m_nodes;
    QHash<SCLElement*, QHash<QString, SCLElement*>> m_childrenByName;
    QHash<QPair<SCLElement*, QString>, QString> m_bTypes;
    QHash<QPair<SCLElement*, QString>, Neighbours> m_neighbours;
};

} // namespace Internal
} // namespace Corvane
