// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/SclNames.h>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// What sets GOOSE and sampled values apart in the SCL model; all else is one body for both.
struct ControlKind {
    /// Tag of the control block.
    const QString& controlTag;
    /// Tag of the entry below a `ConnectedAP`.
    const QString& networkTag;
    /// Whether subscriptions to quality alone are left out.
    bool skipsQuality;
};

inline const ControlKind& Goose()
{
    static const ControlKind kind{Tag::GSEControl, Tag::GSE, false};
    return kind;
}

inline const ControlKind& SampledValues()
{
    static const ControlKind kind{Tag::SampledValueControl, Tag::SMV, true};
    return kind;
}

/// The first control block of the kind in the first `LN0` of the `LDevice` above a `DataSet` that
/// refers to it by name, or null.
SCLElement* ControlOfDataSet(const ControlKind& kind, SCLElement* dataSet);

} // namespace Internal
} // namespace Corvane
