// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>
#include <corvane/crc/CrcKind.h>
#include <corvane/crc/CrcWork.h>
#include <corvane/help/SCLHelp.h>

namespace Corvane
{

struct CrcGenerator::Private {
    SCLElement* ied;
    /// While a generation runs.
    Internal::CrcWork* work = nullptr;

    /// Add what belongs to one control block to its node in a section. False if it is incomplete.
    bool AddPublication(CrcGenerator* generator, const Internal::CrcKind& kind, SCLElement* control,
                        Internal::CrcElement* reference);
    bool AddEntryAndNeighbours(const Internal::CrcKind& kind, SCLElement* entry,
                               Internal::CrcElement* connection);
    bool AddPublishedMembers(CrcGenerator* generator, SCLElement* dataSet,
                             Internal::CrcElement* members);
    bool AddSubscription(CrcGenerator* generator, const Internal::CrcKind& kind,
                         const SCLHelp::Input_CB& input, Internal::CrcElement* reference);
    bool AddSubscribedMembers(CrcGenerator* generator, const SCLHelp::Input_CB& input,
                              Internal::CrcElement* members);
    /// Appends where an input ends to an `FCDA`. False if it is incomplete.
    bool AddTerminal(SCLElement* extRef, Internal::CrcElement* fcda);
    bool AddTerminal(const QString& desc, const QString& name, SCLElement* source,
                     Internal::CrcElement* fcda);

    /// Appends the node of a control block to a section. Null beyond the bounds.
    Internal::CrcElement* AddReference(const Internal::CrcKind& kind, SCLElement* control,
                                       Internal::CrcElement* section);
    /// The description and the type of the data of an `FCDA`, for its node. False beyond the bounds.
    bool AddDataOfFcda(SCLElement* doi, const QString& daName, Internal::CrcElement* node);

    /// Copies without descriptions: an element with all below it, or alone.
    Internal::CrcElement* CopyWhole(SCLElement* element);
    Internal::CrcElement* CopyAlone(SCLElement* element);
    /// A control block as a subscriber sees it: without what is private to the publisher.
    Internal::CrcElement* CopyPublic(SCLElement* control);
    /// Data without the units that instances display.
    Internal::CrcElement* CopyData(SCLElement* source);
};

} // namespace Corvane
