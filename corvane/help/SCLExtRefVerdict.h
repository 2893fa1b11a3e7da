// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>

namespace Corvane
{

class SCLElement;

/// Why an `ExtRef` does or does not bring its data in: the first step at which it fails, with the
/// elements found up to there and a sentence that names what is missing.
///
/// SCLHelp passes over an `ExtRef` that leads nowhere and does not tell which step failed. A
/// verdict tells, for the same steps: an `ExtRef` that a member for GOOSE or sampled values of
/// SCLHelp lists never fails before its internal address. Those members look at less than a
/// verdict: not at reports, not at the internal address, not at the inputs of an `LN`, and for
/// sampled values not at the quality that goes with a value.
///
/// The tree is only read and stays unchanged by the caller during a call. The elements belong to
/// their document; the sentence stays valid without them.
struct CORVANE_EXPORT SCLExtRefVerdict {
    /// The first step that fails, in the order of the steps.
    enum class Result {
        /// It is null, or its document has no root, or it has no document.
        NotInDocument,
        /// No `IED` has the name that `iedName` gives.
        NoSuchIED,
        /// The first `IED` of that name has no `LDevice` of that `ldInst`, or `ldInst` is empty.
        NoSuchLDevice,
        /// No `FCDA` of that IED equals the `ExtRef`; see SCLHelp::GetFCDAFromExtRef().
        NoSuchMember,
        /// No data set of those `FCDA`s has a control block: neither a `GSEControl` or
        /// `SampledValueControl` in the first `LN0` of its `LDevice`, nor a `ReportControl` in its
        /// own logical node.
        NoControlBlock,
        /// SCLHelp::ParseExtRefIntAddr() refuses the `intAddr`, as it does an empty one.
        AddressNotUnderstood,
        /// The path of the `intAddr` leads to nothing in the subscribing IED.
        AddressLeadsNowhere,
        /// All steps succeed.
        Resolved
    };

    Result result = Result::NotInDocument;
    /// The element that was asked about.
    SCLElement* extRef = nullptr;

    /// \name The publishing side
    /// Null from the step on that fails.
    /// \{

    SCLElement* ied = nullptr;
    /// The first one of that `ldInst`. The data set may stand in another one of the IED.
    SCLElement* lDevice = nullptr;
    /// Of several that equal the `ExtRef`, the first whose data set has a `GSEControl`; otherwise
    /// the first with a `SampledValueControl`, then with a `ReportControl`, then without any.
    SCLElement* fcda = nullptr;
    /// The data set of #fcda.
    SCLElement* dataSet = nullptr;
    /// The first one that refers to #dataSet.
    SCLElement* controlBlock = nullptr;
    /// \}

    /// \name The subscribing side
    /// Where the internal address leads, null from the step on that fails. It is not followed if
    /// the publishing side fails.
    /// \{

    /// The `LDevice` of the address in the `ExtRef`'s own `Server`, otherwise the first one in its
    /// IED.
    SCLElement* targetLDevice = nullptr;
    /// The logical node as SCLElement::FindChild(const QString&) finds it.
    SCLElement* targetNode = nullptr;
    /// The `DOI` or `SDI` of the instance; if it has none, the declaration in the templates: `DO`
    /// or `SDO`, or a structured `DA` or `BDA` whose name the cut of the address has left here.
    SCLElement* targetDataObject = nullptr;
    /// The `DAI` of the instance; if it has none, the `DA` or `BDA` of the templates. Null also for
    /// an address without an attribute.
    SCLElement* targetAttribute = nullptr;
    /// \}

    /// An English sentence with the names concerned, for people: long names are shortened, and
    /// characters that have no shape are replaced.
    QString text;

    bool IsResolved() const { return result == Result::Resolved; }

    /// The verdict on one `ExtRef`; its tag is not looked at. Each call walks the publisher: use
    /// OfAll() for many.
    static SCLExtRefVerdict Of(SCLElement* extRef);
    /// The verdicts on all `ExtRef`s below an element, such as an `Inputs`, an `IED` or the root of
    /// a document, in the order of SCLElement::FindChildByType(). They are those of Of(), but each
    /// publisher is walked once. Nothing for null and for an element whose document has no root.
    static QList<SCLExtRefVerdict> OfAll(SCLElement* scope);
};

} // namespace Corvane
