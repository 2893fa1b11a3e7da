// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>
#include <corvane/crc/CrcGenerator.h>

#include <QList>
#include <QString>

namespace Corvane
{

class SCLElement;

/// The virtual-terminal CRCs of a station (see CrcGenerator) beside those that its file stores: what
/// SCLDocument::UpdateCrcCode() would write, without writing it.
///
/// The tree is only read, and a schema has to be registered as for CrcGenerator.
struct CORVANE_EXPORT SCLCrcCodes {
    struct Code {
        /// Eight upper-case hexadecimal digits; empty for an IED that neither sends nor receives
        /// anything and for a substation without IEDs.
        QString computed;
        /// The text of the first `Private` child of the type for it. A null `QString` if there is
        /// none.
        QString stored;

        /// Whether the stored code is the computed one.
        bool Holds() const { return !stored.isNull() && stored == computed; }
    };

    struct IedCode : Code {
        /// Belongs to the document.
        SCLElement* ied = nullptr;
        /// An incomplete content, CrcGenerator::CrcFailed, has a code too.
        CrcGenerator::CrcResult result = CrcGenerator::CrcFailed;
    };

    /// In the order of the document. Several IEDs of one name have a code each.
    QList<IedCode> ieds;
    /// The code over those of the IEDs, sorted by name; of several IEDs of one name the last counts.
    Code substation;

    /// Whether all stored codes are the computed ones: SCLDocument::UpdateCrcCode() would change
    /// nothing.
    bool Hold() const;

    /// The codes of all IEDs and of the substation. Null gives none of either.
    ///
    /// \param root the root of a document.
    static SCLCrcCodes Of(SCLElement* root);
    /// The code of one IED. Null gives one without code and element.
    static IedCode OfIed(SCLElement* ied);
};

} // namespace Corvane
