// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace Corvane
{

class SCLElement;

/// What the references of the SCL data model (IEC 61850-6, names of IEC 61850-7-2) mean: from an
/// instance to its type, from a data set member to its data, from a control block to its network
/// parameters, from an input to the control block that feeds it.
///
/// All functions are static, keep no state and nothing between calls. Those here only read the
/// tree, on the caller's thread; the caller keeps the tree unchanged during a call. Elements that
/// they return stay owned by their document. They report nothing: a reference that leads nowhere
/// gives null, an empty text or list, or is passed over. Comparison of names is exact and
/// case-sensitive, a missing attribute is the same as an empty one, and of several equal names the
/// first in child order wins.
///
/// The `Server` of an `AccessPoint` is its first one.
///
/// Two classes look further: SCLExtRefVerdict tells why an input is not fed, SCLSubscriptions takes the
/// inputs of all logical nodes.
class CORVANE_EXPORT SCLHelp
{
public:
    SCLHelp() = delete;

    /// \name Data types
    /// From instances and declarations to the templates under the root's first `DataTypeTemplates`.
    /// The tag of the argument is not looked at: any element with the reference attribute will do.
    /// \{

    /// The `LNodeType` whose `id` is the `lnType` of an `LN` or `LN0`. Null if \a ln is null, has
    /// no document with a root, or nothing matches.
    static SCLElement* GetLNTypeFromLN(SCLElement* ln);
    /// The `DOType` whose `id` is the `type` of a `DO` or `SDO`. Null as GetLNTypeFromLN().
    static SCLElement* GetDOTypeFromDO(SCLElement* dataObject);
    /// The `DAType` whose `id` is the `type` of a `DA` or `BDA`, whatever its `bType`. Null as
    /// GetLNTypeFromLN().
    static SCLElement* GetDATypeFromDA(SCLElement* da);
    /// The `EnumType` whose `id` is the `type` of a `DA` or `BDA`, whatever its `bType`. Null as
    /// GetLNTypeFromLN().
    static SCLElement* GetEnumTypeFromDA(SCLElement* da);
    /// The `DO` that declares a `DOI`: of that whole `name` in the `LNodeType` of the `DOI`'s
    /// parent. Null if \a doi is null or a step fails.
    static SCLElement* GetDOFromDOI(SCLElement* doi);
    /// The element at a dotted path of names below an `LNodeType`: each step but the last goes on
    /// in the `DOType` of the child found. So "A.b" gives the `SDO` or `DA` named b.
    ///
    /// \param lnType not null, unless \a name is empty.
    /// \return null if \a name is empty or ends with a dot, or a step fails.
    static SCLElement* GetDOFromLNTypeAndName(SCLElement* lnType, QString name);
    /// The same below a `DOType`, each step but the last going on in the `DAType` of the child
    /// found.
    static SCLElement* GetDAFromDOTypeAndName(SCLElement* doType, QString name);
    /// The first child of `DataTypeTemplates` with that \a tag and \a id.
    ///
    /// \param root the `SCL` element; not null.
    static SCLElement* GetDataTypeFromID(SCLElement* root, const QString& tag, const QString& id);
    /// Appends the `DOType`s that `SDO`s of \a doTypes reach, at any depth and each once: for each
    /// type all new ones in child order, then what is below them. Reference cycles end by
    /// themselves. The same list may be passed twice.
    static void GetReferedDOTypeFromDOType(const QList<SCLElement*>& doTypes,
                                           QList<SCLElement*>& referredDOTypes);
    /// The same for the `DAType`s ("Struct") and `EnumType`s ("Enum") that `BDA`s of \a daTypes
    /// reach.
    static void GetReferedDAAndEnumTypeFromDAType(const QList<SCLElement*>& daTypes,
                                                  QList<SCLElement*>& referredDATypes,
                                                  QList<SCLElement*>& referredEnumTypes);
    /// Appends all templates that the logical nodes of \a ieds use, each once. What the lists hold
    /// already counts as known and stays in front. Nothing is appended if \a ieds is empty or the
    /// first one's document has no `DataTypeTemplates`.
    static void GetReferedDataTypeTeplates(const QList<SCLElement*>& ieds,
                                           QList<SCLElement*>& lnTypes, QList<SCLElement*>& doTypes,
                                           QList<SCLElement*>& daTypes,
                                           QList<SCLElement*>& enumTypes);
    /// \}

    /// \name TDL types
    /// A TDL type is a word for a basic type, or "{(name)type,(name)type}" for a structure, nested
    /// to any depth, without blanks.
    /// \{

    /// The TDL word of a `bType`, or the empty text if it has none. Exact and case-sensitive.
    static QString GetTDLTypeFromBType(const QString& bType);
    /// The TDL type of a `DA` or `BDA`. Members of a structure that have no type are left out, as
    /// are members whose type is already open around them.
    ///
    /// \param da      not null.
    /// \param tdlType the type. On false unchanged, but empty after a `bType` without a word.
    /// \return false without `bType`, without a word for it, for a "Struct" whose `DAType` is missing
    ///         or has no `BDA`, and for a text that would grow beyond any use.
    static bool GetTDLTypeFromDA(SCLElement* da, QString& tdlType);
    /// The TDL type of a whole data object: all `SDO`s, then all `DA`s, of any functional
    /// constraint. A type that is already open around itself counts as one without members there.
    ///
    /// \param doType  not null.
    /// \param tdlType the type. On false unchanged for a type without children, otherwise the
    ///                unfinished text.
    /// \return false if there is neither `SDO` nor `DA`, if the type of an `SDO` is missing, and, with
    ///         \a tdlType unchanged, for a text that would grow beyond any use.
    static bool GetTDLTypeFromDOType(SCLElement* doType, QString& tdlType);
    /// The TDL word of one attribute of a data object that has a `DOI`, and whether that data
    /// object is of common data class ACT.
    ///
    /// \param ln      the `LN` or `LN0` that holds the `DOI`.
    /// \param doName  name of the `DOI`, optionally followed by dotted `SDO` names. In a path of more
    ///                than two names those between the first and the last have one character.
    /// \param daName  path of the attribute as GetDAFromDOTypeAndName() takes it.
    /// \param tdlType the word; structures have none.
    /// \param act     "1" for `cdc` "ACT", otherwise "0".
    /// \return true if all steps succeeded. On false the out-arguments hold what was reached.
    static bool GetTDLTypeAndACT(SCLElement* ln, const QString& doName, const QString& daName,
                                 QString& tdlType, QString& act);
    /// \}

    /// \name Names
    /// Texts for elements, by tag; not translated. A null element and a tag without a rule give the
    /// empty text.
    /// \{

    /// The long, self-explaining path, such as "IED name = I1, AccessPoint name = S1".
    ///
    /// \param withTag puts the tag in front and the text in parentheses.
    static QString GetElementFullInfo(SCLElement* element, bool withTag);
    /// The object reference of a logical node, control block or substation item, such as
    /// "I1L1/LLN0.cb1". A logical node's instance comes from the attribute `lnInst`.
    ///
    /// \param mmsForm for control blocks the form of IEC 61850-8-1, "I1L1/LLN0$GO$cb1".
    static QString GetElementRefName(SCLElement* element, bool mmsForm);
    /// The label of a tree row: the name, and ":" with `desc` if there is one.
    static QString GetElementDisplayName(SCLElement* element);
    /// \}

    /// \name Data set members and instance data
    /// Dotted names run down the instance tree, one `DOI`, `SDI` or `DAI` a segment; empty segments
    /// are kept and look for an empty `name`.
    /// \{

    /// The declaration of the data that an `FCDA` names: what stands at its `doName` below the type
    /// of the logical node, in the `FCDA`'s own IED. The node is found by its composed name.
    static SCLElement* GetDOFromFCDA(SCLElement* fcda);
    /// The `DOI` or `SDI` that an `FCDA` names, in the `FCDA`'s own IED. The node is found
    /// attribute by attribute, the prefix of an `LN0` included; `LN0`s come first.
    static SCLElement* GetDOIFromFCDA(SCLElement* fcda);
    /// The `DOI` (plain name) or `SDI` (dotted name) below a logical node. Null for a null \a ln,
    /// an empty \a name and a segment that is not found.
    static SCLElement* GetDOIFromLNAndName(SCLElement* ln, const QString& name);
    /// The `DAI` at a dotted name below a `DOI` or `SDI`. Null as GetDOIFromLNAndName().
    static SCLElement* GetDAIFromDOIAndName(SCLElement* doi, const QString& name);
    /// The `sAddr` of that `DAI`; empty if there is none.
    static QString GetDAIShortAddress(SCLElement* doi, const QString& name);
    /// \}

    /// \name Inputs
    /// \{

    /// Takes the `intAddr` of an `ExtRef` apart: "P1/P2:LD/LN.DO.DA", ports and attribute optional.
    /// In the path "/" and "." have the same force. A path of more than four parts is cut at the
    /// first of "cVal", "mag", "instMag", "valWTr" that it holds.
    ///
    /// \param port   the text before the colon; empty without one.
    /// \param ldInst `inst` of the `LDevice` of the subscriber.
    /// \param lnName name of the logical node as SCLElement::FindChild(const QString&) takes it.
    /// \param doName data object, possibly dotted.
    /// \param daName attribute, possibly dotted. Left as it is for a path without one: pass it
    ///               empty.
    /// \return false if the text has none of these shapes; then the out-arguments are not to be used.
    static bool ParseExtRefIntAddr(const QString& intAddr, QString& port, QString& ldInst,
                                   QString& lnName, QString& doName, QString& daName);
    /// All `FCDA`s that an `ExtRef` refers to: in the first IED named by `iedName`, those that
    /// equal it in `daName`, `doName`, `lnClass`, `lnInst`, `prefix` and `ldInst`. Access points,
    /// logical devices, nodes (the first `LN0` in front), data sets and members in child order.
    ///
    /// \param extRef an element in a document with a root; not null.
    static QList<SCLElement*> GetFCDAFromExtRef(SCLElement* extRef);
    /// \}

    /// \name Control blocks
    /// Between a control block in an `LN0`, its `GSE` or `SMV` entry in the `Communication` section
    /// and its `DataSet`. Null arguments give null where nothing else is said.
    /// \{

    /// The first `LDevice` of that \a inst in the access points of an `IED`. Null for an empty \a
    /// inst.
    static SCLElement* GetLDeviceFromIEDAndInst(SCLElement* ied, const QString& inst);
    /// The `AccessPoint` that a `ConnectedAP` stands for; every `IED` of its `iedName` is tried.
    ///
    /// \param connectedAP null or an element of a document.
    static SCLElement* GetAPFromConnectedAP(SCLElement* connectedAP);
    /// The `GSEControl` of a `GSE`: in the first `LN0` of each `LDevice` of its `ldInst`.
    static SCLElement* GetGSEControlFromGSE(SCLElement* gse);
    /// The `SampledValueControl` of an `SMV`, found the same way.
    static SCLElement* GetSMVControlFromSMV(SCLElement* smv);
    /// The `GSE` of a control block below a given `ConnectedAP`, by the `inst` of its `LDevice` and
    /// its `name`. Whose access point that is, is not checked.
    static SCLElement* GetGSEFromGSEControl(SCLElement* control, SCLElement* connectedAP);
    /// The `SMV` of a control block, found the same way.
    static SCLElement* GetSMVFromSMVControl(SCLElement* control, SCLElement* connectedAP);
    /// The `GSE` of a control block in the `Communication` section, below any `ConnectedAP` of its
    /// IED and access point.
    ///
    /// \param control null or an element of a document.
    static SCLElement* GetGSEFromGSEControl(SCLElement* control);
    /// The `SMV` of a control block, found the same way.
    static SCLElement* GetSMVFromSMVControl(SCLElement* control);
    /// The first `GSEControl` in the first `LN0` of the `DataSet`'s `LDevice` whose `datSet` is the
    /// name of \a dataSet, which may stand in any node of that `LDevice`.
    ///
    /// \param dataSet below an `LDevice`; not null.
    static SCLElement* GetGSEControlFromDataSet(SCLElement* dataSet);
    /// The same for `SampledValueControl`.
    static SCLElement* GetSampledValueControlFromDataSet(SCLElement* dataSet);
    /// \}

    /// What a subscriber receives from one control block. All elements belong to the document; none
    /// of the four pointers is null.
    struct Input_CB {
        /// The publishing `IED`.
        SCLElement* ied;
        /// The publishing `LDevice`.
        SCLElement* lDevice;
        /// The `DataSet` through which the first `ExtRef` was matched.
        SCLElement* dataSet;
        /// The `GSEControl` or `SampledValueControl`. A result holds one record for each.
        SCLElement* controlBlock;
        /// The subscribing `ExtRef`s in the order of the walk; never empty.
        QList<SCLElement*> extRefs;
        /// For each of #extRefs, at the same index, the `FCDA` that it was matched with.
        QList<SCLElement*> fcdas;
        /// The port names in the `intAddr`s of #extRefs, each once, in the order of first
        /// appearance.
        QStringList ports;
    };

    /// \name Subscriptions
    /// The `ExtRef`s of a subscriber grouped by the control block that publishes what they name, in
    /// the order in which control blocks are first met. An `ExtRef` that leads to no `IED`,
    /// `LDevice`, `FCDA` or control block of the kind is left out; of several `FCDA`s the first
    /// whose data set has a control block counts. Members for sampled values also leave out an
    /// `ExtRef` whose `daName` and `intAddr` both end with "q", the quality that goes with a value.
    ///
    /// A null argument and an element whose document has no root give the empty list. An argument
    /// that is not null belongs to a document.
    /// \{

    /// The GOOSE subscriptions of one `Inputs`, or any element with `ExtRef` children.
    static QList<Input_CB> GetGSEControlFromInputs(SCLElement* inputs);
    /// The same for sampled values.
    static QList<Input_CB> GetSMVControlFromInputs(SCLElement* inputs);
    /// The GOOSE subscriptions of one `AccessPoint`: for each `LDevice` those in the first `Inputs`
    /// of its first `LN0`.
    static QList<Input_CB> GetGSEControlFromAPInputs(SCLElement* accessPoint);
    /// The same for sampled values.
    static QList<Input_CB> GetSMVControlFromAPInputs(SCLElement* accessPoint);
    /// The GOOSE subscriptions of all access points of an `IED`.
    static QList<Input_CB> GetGSEControlFromIEDInputs(SCLElement* ied);
    /// The same for sampled values.
    static QList<Input_CB> GetSMVControlFromIEDInputs(SCLElement* ied);
    /// \}
};

} // namespace Corvane
