// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>

namespace Corvane
{

class SCLElement;

/// Renames and deletes an `IED` with everything in the file that names it, as one step, and tells
/// beforehand what that would change.
///
/// SCLHelp::HandleUpdateForIEDName() and SCLHelp::HandleDeleteForIED() look at some of these places
/// only, and leave the `IED` itself to their caller. Each member here is a whole edit: the host
/// neither sets the name nor removes the `IED`. What they find, in any IED and at any depth:
///
/// | Place (IEC 61850-6)                           | What names the IED       | When it is deleted |
/// | --------------------------------------------- | ------------------------ | ------------------ |
/// | `LNode`, any level of the process (9.2)       | `iedName`                | made unassigned    |
/// | `KDC` of an `IED` (9.3)                       | `iedName`                | removed            |
/// | `Association` of a `Server` (9.3)             | `iedName`                | removed            |
/// | `ClientLN` of any `RptEnabled` (9.3)          | `iedName`                | removed            |
/// | `ExtRef` of any `Inputs`, any node (9.3)      | `iedName`                | removed            |
/// | `IEDName`, subscriber of a control block (9.3)| its text                 | removed            |
/// | `ConnectedAP` (9.4)                           | `iedName`                | removed            |
/// | `Val` of an object reference, see below       | begin of its text        | emptied            |
///
/// **Object references** are the texts of `DAI` (and `DA`) named `setSrcRef`, `setSrcCB`,
/// `setTstRef` and `setTstCB`, the references of common data class ORG (IEC 61850-7-3). Through
/// them an `LGOS` or `LSVS` names the control block that it supervises (`GoCBRef`, `SvCBRef`,
/// IEC 61850-7-4), and an `InRef` its source. Such a text counts if what stands before its first
/// "/" is the name of a logical device of the IED: name and `inst` written together, as in
/// "E1LD0/LLN0.gcb" or "E1LD0/LLN0$GO$gcb". So "E1" is not found in the references of "E10". A
/// logical device with an `ldName` goes by that instead (functional naming): renaming leaves such
/// texts alone, deleting empties them. A name that a logical device of another IED has as well is
/// left alone.
///
/// **Unassigned** is an `LNode` with `iedName` "None" and without `ldInst`: what it demands of the
/// plant stays, though no IED serves it any more. Where its parent has an `LNode` without IED of
/// the same `prefix`, `lnClass` and `lnInst` already, that would be there twice, which the schema
/// forbids; then it is removed.
///
/// **Sections** that deleting leaves empty stay, as a `SubNetwork` is more than its members; only an
/// `Inputs` goes with its last child, since the schema allows none without `ExtRef`.
///
/// **Of the IED itself** renaming also changes `name`, the `appID` of each `GSEControl` and the
/// `smvID` of each `SampledValueControl` in an `LN0` (always, to "<name><inst>/LLN0.<control
/// block>"), and each `rptID` that begins with a logical device of its own, as "E1LD0/LLN0.rcb".
/// Deleting does not look inside: what the IED says of itself goes with it.
///
/// **What stays**: `Private` elements with all in them; descriptions and other free text; `owner`,
/// which names a project; `ldName`; `logName` and the `ldInst` of control blocks, inputs and
/// networks, which are relative to an IED; the names of ports and cables; object references to a
/// logical device that the IED does not have. "None" and "@" stand for no IED and for the own one,
/// and an empty `iedName` for nothing yet: no reference is followed to an IED of such a name.
///
/// All members are static and cost one walk over the file, besides the time that removing takes.
/// The `IED` is a child of the root of a document. Comparison is exact and case-sensitive; around
/// texts of elements white space is passed over, and kept.
class CORVANE_EXPORT SCLIedReferences
{
public:
    SCLIedReferences() = delete;

    /// Why an edit is not made. Then nothing is changed.
    enum class Refusal {
        /// It is not refused.
        NotRefused,
        /// The element is null, or no `IED` directly under the root of a document.
        NotInDocument,
        /// The new name is none that the standard allows, see IsIEDName().
        NameNotAllowed,
        /// Another `IED` of the file has the new name.
        NameTaken,
        /// Another `IED` has the same name: it cannot be told which of them a reference means.
        NameAmbiguous,
        /// A logical device of another `IED` is named as one of this IED would be.
        LDeviceNameTaken
    };

    enum class Action {
        /// Sets the attribute Change::attribute, which may be new.
        SetAttribute,
        /// Removes the attribute Change::attribute.
        RemoveAttribute,
        /// Sets the text of the element.
        SetText,
        /// Removes the element with all that it holds.
        RemoveElement
    };

    struct Change {
        /// What changes. Owned by the document; null once it is removed.
        SCLElement* element;
        Action action;
        /// Name of the attribute; empty for the actions on texts and elements.
        QString attribute;
        /// What stands there before, as the document's signals tell it: a null `QString` for an
        /// attribute that is new. For an element that is removed, the name of the IED.
        QString oldValue;
        /// What stands there afterwards; a null `QString` if nothing does.
        QString newValue;
    };

    /// What an edit changes or has changed.
    struct Result {
        Refusal refusal = Refusal::NotRefused;
        /// In the order in which the changes are made: a rename begins with the `name` of the IED, a
        /// deletion ends with the `IED`, and between stand the references in child order, groups in
        /// ascending tag id, parents before children (but an emptied `Inputs` after its last child).
        /// Only what really changes is listed.
        QList<Change> changes;

        bool IsRefused() const { return refusal != Refusal::NotRefused; }
    };

    /// Whether the standard allows a name for an IED: a letter, then letters, digits and
    /// underscores, all ASCII, at most 64 in all, and not "None".
    static bool IsIEDName(const QString& name);

    /// What Rename() would change. The elements are valid as long as the tree is not changed.
    static Result PlanRename(SCLElement* ied, const QString& newName);
    /// Gives the IED a new name and carries it to all places that name it.
    ///
    /// It plans anew and then makes these changes one by one, each with its signal
    /// (`sigEditAttribute`, `sigEditValue`). A slot may change attributes and texts, but may not
    /// remove elements. For the present name, only the identifiers of the IED are brought to their
    /// form.
    ///
    /// \return what was changed.
    static Result Rename(SCLElement* ied, const QString& newName);

    /// What Delete() would change. The elements are valid as long as the tree is not changed.
    static Result PlanDelete(SCLElement* ied);
    /// Removes all that names the IED from the rest of the file, then deletes the IED.
    ///
    /// It plans anew and then makes these changes one by one, each with its signal
    /// (`sigEditAttribute`, `sigRemoveAttribute`, `sigEditValue`, `sigDeleteElement`). A slot may
    /// change attributes and texts, but may not remove elements.
    ///
    /// \return what was changed.
    static Result Delete(SCLElement* ied);
};

} // namespace Corvane
