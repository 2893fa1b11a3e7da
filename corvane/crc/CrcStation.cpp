// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcStation.h>

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcTree.h>

namespace Corvane::Internal
{

CrcGenerator::CrcResult CrcStation::Generate(SCLElement* ied, unsigned int& crc)
{
    if (!m_pWork || !IsUntouched()) {
        m_pWork = std::make_unique<CrcWork>();
        m_uStamp = ChangeStamp::Now();
    }
    const CrcTree tree(ied, *m_pWork);
    if (tree.Root())
        crc = CanonicalCrc(tree.Root(), nullptr);
    return tree.Result();
}

} // namespace Corvane::Internal
