// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>
#include <corvane/help/SCLHelp.h>

#include <QList>

#include <memory>

namespace Corvane
{

class SCLElement;

namespace Internal
{
class PublishedData;
}

/// What IEDs receive, by all their inputs.
///
/// SCLHelp::GetGSEControlFromIEDInputs() and its sampled-value twin look at the first `Inputs` of
/// each `LN0`, and begin anew at each call. This class takes every `Inputs` of every logical node,
/// also of nodes that stand directly under an access point (IEC 61850-6), and keeps what it has
/// learnt of the publishers, so that all IEDs of a large station cost little more than one.
///
/// The tree may not change while an object of this class lives.
class CORVANE_EXPORT SCLSubscriptions
{
public:
    enum class Kind { Goose, SampledValues };

    /// \param root the root of a document, which must outlive this object; null gives an object
    ///        that finds nothing.
    SCLSubscriptions(SCLElement* root, Kind kind);
    ~SCLSubscriptions();

    /// The subscriptions of an `IED` of that document, grouped by control block as SCLHelp does it:
    /// access points in child order, in each its own nodes, then those of its first `Server`, the
    /// `LN0`s of an `LDevice` in front. Null gives an empty list.
    QList<SCLHelp::Input_CB> Of(SCLElement* ied);

private:
    SCLSubscriptions(const SCLSubscriptions&) = delete;
    SCLSubscriptions& operator=(const SCLSubscriptions&) = delete;

    Kind m_kind;
    std::unique_ptr<Internal::PublishedData> m_pPublished;
};

} // namespace Corvane
