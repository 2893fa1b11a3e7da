// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/AttributeReader.h>
#include <corvane/elements/SeededHash.h>
#include <corvane/help/ControlKind.h>

#include <QHash>
#include <QSet>
#include <QString>

#include <array>
#include <cstddef>
#include <unordered_map>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// What `ExtRef`s find at their senders, for many of them inside one call, during which the tree
/// does not change. Each answer is that of the plain walks: the first IED of a name, and of its
/// `FCDA`s that equal the `ExtRef` the first whose data set has a control block of the kind.
class PublishedData
{
public:
    PublishedData(const ControlKind& kind, SCLElement* root);

    struct Publication {
        SCLElement* fcda = nullptr;
        SCLElement* dataSet = nullptr;
        SCLElement* controlBlock = nullptr;
    };

    /// No control block if the `ExtRef` leads to none, or names no `LDevice` of its sender.
    Publication Of(SCLElement* extRef);

private:
    static constexpr int AttributeCount = 6;
    /// The attributes in which an `FCDA` equals an `ExtRef`.
    using Key = std::array<QString, AttributeCount>;

    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    struct Sender {
        QSet<QString> lDeviceInsts;
        std::unordered_map<Key, Publication, KeyHash> publications;
    };

    const Sender& SenderOf(const QString& iedName);
    void Fill(Sender& sender, SCLElement* ied) const;
    Key KeyOf(const SCLElement* element) const;

    const ControlKind& m_kind;
    SCLElement* m_pRoot;
    AttributeReader m_keyAttributes;
    std::unordered_map<QString, Sender, SeededTextHash> m_senders;
};

} // namespace Internal
} // namespace Corvane
