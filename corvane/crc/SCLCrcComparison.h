// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>

namespace Corvane
{

class SCLElement;

/// Why the virtual-terminal CRC of an IED is not the same in two documents: everything in which the
/// contents differ that CrcGenerator covers, with a sentence for each.
///
/// What counts is the canonical form and nothing else. There is no difference exactly when both
/// contents are equal byte by byte, so a description that was edited is none. Two unequal contents
/// can have one CRC by chance; they are told apart here.
///
/// Elements of the two contents are taken for each other by what names them in SCL (IEC 61850-6):
/// control blocks by their reference, an `FCDA` by `ldInst`, `prefix`, `lnClass`, `lnInst`,
/// `doName` and `daName`, an input by its `intAddr`, an address entry by its `type`, a `GSE` or
/// `SMV` by `ldInst` and `cbName`, others by their first of `name`, `inst` and `type`, and what has
/// nothing of the kind by its place. Of several with one name, equal ones belong together, then the
/// rest in order between them. What belongs to nothing stands on one side only, and what is below it
/// is not told.
///
/// The two IEDs may stand in one document or in two, as long as one SCLDocControl has both open;
/// that they have the same name is not asked for. The schema that is registered is the one for
/// both. The trees are only read, and nothing here refers to them afterwards.
struct CORVANE_EXPORT SCLCrcComparison {
    /// The section of the content.
    enum class Section {
        /// The IED itself: its name.
        Ied,
        GoosePublication,
        GooseSubscription,
        SampledValuePublication,
        SampledValueSubscription
    };

    /// What it is that differs.
    enum class Meaning {
        /// The name of the IED.
        Ied,
        /// A control block: whether there is one, its attributes and what is in it.
        ControlBlock,
        /// The `ConnectedAP` with the network address. In a publication also the entries of the
        /// other kind at this access point, and its cables.
        Communication,
        /// The data set as such.
        DataSet,
        /// An `FCDA` or its basic type.
        Member,
        /// `DOI`, `SDI`, `DAI` and their values: behind an `FCDA` in a publication, behind the
        /// `intAddr` of an input in a subscription.
        InstanceData,
        /// Which inputs of the subscriber are wired to an `FCDA`.
        Wiring
    };

    /// In which way it differs.
    enum class Change {
        /// An attribute or a text.
        Value,
        /// An element is in the content of the left IED only.
        OnlyLeft,
        /// An element is in the content of the right IED only.
        OnlyRight,
        /// The same siblings stand in another order.
        Order
    };

    struct Difference {
        Section section = Section::Ied;
        Meaning meaning = Meaning::Ied;
        Change change = Change::Value;
        /// The reference of the control block, "E01F1PIGO/LLN0.gocb0"; empty for Section::Ied.
        QString controlBlock;
        /// The path to the element in words, "GOOSE publication E01F1PIGO/LLN0.gocb0 > address >
        /// MAC-Address". Long names are shortened, and so is the middle of a long path.
        QString path;
        /// The name of the attribute; empty for a text, for wiring and for a whole element.
        QString attribute;
        /// For Change::Value the value on each side, as it stands in the file: a null `QString` if
        /// there is none, which an empty one is not. For wiring the `intAddr`, null if nothing is
        /// wired. For the other changes the element in words, null on the side that has none; for
        /// Change::Order the first two that differ.
        QString left;
        QString right;
        /// An English sentence for people. It calls the left IED "the first" and the right one "the
        /// second".
        QString text;
    };

    /// The CRC of each side as SCLDocument::UpdateCrcCode() stores it: eight digits, or empty for
    /// an IED without connection and for null.
    QString leftCode;
    QString rightCode;
    /// In the order of the canonical form: the first is where the two contents part.
    QList<Difference> differences;

    bool IsEqual() const { return differences.isEmpty(); }

    /// Compares two IEDs. Null, and an IED that neither sends nor receives anything, has no
    /// content: two of these are equal, and beside another one all its control blocks stand on one
    /// side only.
    static SCLCrcComparison Of(SCLElement* left, SCLElement* right);
};

} // namespace Corvane
