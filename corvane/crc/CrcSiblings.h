// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace Corvane::Internal
{

class CrcContentIds;
class CrcElement;

/// The value of an attribute, whichever form shows it; empty if there is none.
QString ValueOf(const CrcElement* element, const QString& attribute);

/// What names an element among its siblings of the same tag: the values of the attributes that do so
/// in SCL. Empty if it goes by its place.
QStringList NamesOf(const CrcElement* element);

/// One thing in which the children of two elements differ.
struct CrcSiblingStep {
    enum class Kind {
        /// Two that belong together, with different contents.
        Pair,
        /// One of #left and #right is null.
        OneSide,
        /// Those that belong together stand in another order. #left and #right are the first that
        /// show it.
        Order
    };

    Kind kind;
    const CrcElement* left;
    const CrcElement* right;
    /// For Kind::Order the place of the two, from 1.
    int place;
};

/// What differs among the children of two elements, in canonical order. Nothing if the canonical
/// form shows the same children for both, and at least one step otherwise. Takes linear time.
///
/// \param ids knows all of the children.
std::vector<CrcSiblingStep> CompareSiblings(const CrcElement* left, const CrcElement* right,
                                            const CrcContentIds& ids);

} // namespace Corvane::Internal
