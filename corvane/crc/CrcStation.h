// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>
#include <corvane/crc/CrcWork.h>
#include <corvane/elements/ChangeStamp.h>

#include <memory>

namespace Corvane::Internal
{

/// Generates the CRCs of many IEDs, one after the other. What one has looked up serves the next, as
/// long as nobody but the owner of this object has changed a tree in between.
class CrcStation
{
public:
    /// Whether nobody else has changed a tree since the first generation, or since the last one
    /// that found a change.
    bool IsUntouched() const { return m_uStamp == ChangeStamp::Now(); }

    /// As CrcGenerator::Gererate() without contents.
    CrcGenerator::CrcResult Generate(SCLElement* ied, unsigned int& crc);

    /// Makes a change of the owner's own, of which no generation depends. What slots do to its
    /// signals is a change of others.
    template <typename Change>
    void Make(Change change)
    {
        const bool wasUntouched = IsUntouched();
        const quint64 bySlots = ChangeStamp::BySlots();
        change();
        if (wasUntouched && bySlots == ChangeStamp::BySlots())
            m_uStamp = ChangeStamp::Now();
    }

private:
    quint64 m_uStamp = ChangeStamp::Now();
    std::unique_ptr<CrcWork> m_pWork;
};

} // namespace Corvane::Internal
