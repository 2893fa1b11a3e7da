// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/help/ControlKind.h>

#include <QString>

namespace Corvane::Internal
{

/// What sets GOOSE and sampled values apart in the content of a CRC.
struct CrcKind {
    const ControlKind& control;
    /// Tags of the sections, and of what they hold for each control block.
    QString publications;
    QString subscriptions;
    QString reference;
};

inline const CrcKind& CrcKindOf(bool isGoose)
{
    static const CrcKind goose{Goose(), QStringLiteral("GOOSEPUB"), QStringLiteral("GOOSESUB"),
                               QStringLiteral("GOCBref")};
    static const CrcKind sampledValues{SampledValues(), QStringLiteral("SVPUB"),
                                       QStringLiteral("SVSUB"), QStringLiteral("SMVCBref")};
    return isGoose ? goose : sampledValues;
}

} // namespace Corvane::Internal
