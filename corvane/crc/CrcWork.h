// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcCopy.h>
#include <corvane/crc/CrcLookups.h>

#include <vector>

namespace Corvane::Internal
{

/// What a generation of a CRC works with. Generations of several IEDs may share one, one after the
/// other, as long as the tree does not change between them.
class CrcWork
{
public:
    CrcLookups& Lookups() { return m_lookups; }
    CrcCopy& Copy() { return m_copy; }
    /// As CrcCopy::Copy(), with exclusions that are prepared once.
    CrcElement* CopyOf(SCLElement* element, bool recursive, const QStringList& excludedAttributes,
                       const CrcExclusions::Children& excludedChildren)
    {
        return m_copy.Copy(element, recursive, Exclusions(excludedAttributes, excludedChildren));
    }

private:
    const CrcExclusions& Exclusions(const QStringList& attributes,
                                    const CrcExclusions::Children& children);

    CrcLookups m_lookups;
    CrcCopy m_copy;
    std::vector<CrcExclusions> m_exclusions;
};

inline const CrcExclusions& CrcWork::Exclusions(const QStringList& attributes,
                                                const CrcExclusions::Children& children)
{
    for (const CrcExclusions& known : m_exclusions) {
        if (known.IsOf(attributes, children))
            return known;
    }
    m_exclusions.emplace_back(attributes, children);
    return m_exclusions.back();
}

} // namespace Corvane::Internal
