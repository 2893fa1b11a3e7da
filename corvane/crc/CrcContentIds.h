// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SeededHash.h>

#include <QHash>
#include <QList>
#include <QString>

#include <unordered_map>

namespace Corvane::Internal
{

class CrcAttribute;
class CrcElement;

/// \name What the canonical form shows
/// \{

/// The text of an element, which only one without children shows.
QString CanonicalTextOf(const CrcElement* element);
QList<const CrcAttribute*> CanonicalAttributesOf(const CrcElement* element);
QList<const CrcElement*> CanonicalChildrenOf(const CrcElement* element);
/// \}

/// Numbers for trees: two elements have the same one exactly if the canonical form shows both, with
/// all that is below them, as the same bytes.
class CrcContentIds
{
public:
    /// Numbers an element and all below it, at any depth, in linear time.
    void Add(const CrcElement* root);
    /// The number of an element below one that was added.
    int Of(const CrcElement* element) const { return m_ids.value(element); }

private:
    int IdOf(const CrcElement* element);

    QHash<const CrcElement*, int> m_ids;
    std::unordered_map<QString, int, SeededTextHash> m_known;
};

} // namespace Corvane::Internal
