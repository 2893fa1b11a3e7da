// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcGenerator.h>

#include <memory>

namespace Corvane::Internal
{

class CrcWork;

/// The description of an IED that its CRC covers, before it is rendered: CrcContent.h renders it.
/// Once built, it holds nothing of the document.
class CrcTree
{
public:
    /// \param ied as CrcGenerator takes it; the tree does not change meanwhile.
    explicit CrcTree(SCLElement* ied);
    /// With look-ups that trees of other IEDs share.
    CrcTree(SCLElement* ied, CrcWork& work);
    CrcTree(CrcGenerator& generator, CrcWork& work);

    CrcGenerator::CrcResult Result() const { return m_result; }
    /// The node of the IED, with the sections below it. Null for CrcNoConnection and if there is no
    /// IED.
    CrcElement* Root() const { return m_pRoot.get(); }

private:
    void Build(CrcGenerator& generator, CrcWork& work);

    CrcGenerator::CrcResult m_result = CrcGenerator::CrcFailed;
    std::unique_ptr<CrcElement> m_pRoot;
};

} // namespace Corvane::Internal
