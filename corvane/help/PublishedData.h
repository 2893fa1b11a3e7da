// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/AttributeReader.h>
#include <corvane/elements/SeededHash.h>
#include <corvane/help/ChildIndex.h>
#include <corvane/help/ControlKind.h>

#include <QHash>
#include <QString>

#include <cstddef>
#include <unordered_map>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// What `ExtRef`s find at their senders, for many of them inside one call, during which the tree
/// does not change. Each answer is that of the plain walks: the first IED of a name, and of its
/// `FCDA`s that equal the `ExtRef` the first whose data set has a control block.
class PublishedData
{
public:
    /// Control blocks of one kind; data sets without one count as absent.
    PublishedData(const ControlKind& kind, SCLElement* root) : PublishedData(&kind, root) {}
    /// Control blocks of all kinds: GOOSE before sampled values before the reports of the data
    /// set's own node, and where there is none, the first `FCDA` that equals the `ExtRef`.
    explicit PublishedData(SCLElement* root) : PublishedData(nullptr, root) {}
    PublishedData(const PublishedData&) = delete;
    PublishedData& operator=(const PublishedData&) = delete;

    /// As far as the `ExtRef` leads, in this order.
    struct Publication {
        SCLElement* ied = nullptr;
        /// The one that the `ExtRef` names; its data set may stand in another.
        SCLElement* lDevice = nullptr;
        SCLElement* fcda = nullptr;
        SCLElement* dataSet = nullptr;
        SCLElement* controlBlock = nullptr;
    };

    Publication Of(SCLElement* extRef);

private:
    PublishedData(const ControlKind* kind, SCLElement* root);

    struct Control {
        SCLElement* block = nullptr;
        /// That of the highest rank counts, of several the first.
        int rank = 0;
    };

    struct Member {
        SCLElement* fcda;
        SCLElement* dataSet;
        Control control;
    };

    // An FCDA and an ExtRef are the same here if they equal in what names the data.
    struct SameData {
        const AttributeReader& names;
        std::size_t operator()(const SCLElement* element) const;
        bool operator()(const SCLElement* left, const SCLElement* right) const;
    };
    using Members = std::unordered_map<const SCLElement*, Member, SameData, SameData>;

    struct Sender {
        explicit Sender(const SameData& same) : members(0, same, same) {}

        SCLElement* ied = nullptr;
        QHash<QString, SCLElement*> lDevices;
        Members members;
    };

    const Sender& SenderOf(const QString& iedName);
    void Fill(Sender& sender);
    void AddMembers(Sender& sender, SCLElement* dataSet);
    Control ControlOf(SCLElement* dataSet);

    const ControlKind* m_kind;
    SCLElement* m_pRoot;
    AttributeReader m_names;
    ChildIndex m_children;
    std::unordered_map<QString, Sender, SeededTextHash> m_senders;
};

} // namespace Internal
} // namespace Corvane
