// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

/// The paths of many elements of one tree, which may not change meanwhile. Each group of children
/// is counted once, and each path measured once.
class ElementPaths
{
public:
    /// The path as ElementPath::Of() gives it; empty if it has more than #longest characters, for
    /// the paths of a long chain of elements would grow with the square of its length.
    QString Of(SCLElement* element);

    static constexpr int longest = 1000;

private:
    using Length = decltype(QString().size());

    Length LengthOf(SCLElement* element);
    int PositionOf(SCLElement* element);
    QString StepOf(SCLElement* element);

    QHash<SCLElement*, Length> m_lengths;
    QHash<SCLElement*, int> m_positions;
};

} // namespace Corvane::Command
