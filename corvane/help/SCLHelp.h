// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace Corvane
{

class SCLElement;

/// What the references of the SCL data model (IEC 61850-6, names of IEC 61850-7-2) mean: from an
/// instance to its type, from a data set member to its data, from a control block to its network
/// parameters, from an input to the control block that feeds it.
///
/// All functions are static. They only read the tree, on the caller's thread, and the caller keeps
/// it unchanged during a call; only those that rename and delete, update and synchronize change it,
/// with signals. Elements that they return stay owned by their document. They report nothing: a
/// reference that leads nowhere gives null, an empty text or list, or is passed over. Comparison of
/// names is exact and case-sensitive, a missing attribute is the same as an empty one, and of
/// several equal names the first in child order wins.
///
/// The `Server` of an `AccessPoint` is its first one.
///
/// Other classes look further: SCLExtRefVerdict tells why an input is not fed, SCLSubscriptions
/// takes the inputs of all logical nodes, SCLIedReferences finds all that names an IED, and
/// SCLAddressAudit judges addresses.
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

    /// \name Renaming and deleting an IED
    /// What the host calls beside its own edit of the `IED`. SCLIedReferences makes the whole edit
    /// at once and follows every place that names an IED.
    /// \{

    /// Carries the new name of an `IED`, which is in its `name` already, to what refers to it by
    /// \a oldName: sets `iedName` of
    /// - each `ConnectedAP` of the first `Communication`,
    /// - each `ExtRef` in the first `Inputs`, and each `ClientLN` in the first `RptEnabled` of each
    ///   `ReportControl`, of the first `LN0` and of all `LN`s of each `LDevice` that has an `LN0`, in
    ///   all IEDs, this one included.
    ///
    /// Then the identifiers of the `LN0`'s own control blocks are made anew, whatever they were:
    /// `appID` of each `GSEControl` and `smvID` of each `SampledValueControl` become
    /// "<name><inst>/LLN0.<control block>", in every IED that bears the new name.
    ///
    /// Each `iedName` that changes is announced by `sigEditAttribute`, `ConnectedAP`s first, then
    /// IED by IED and node by node: `ExtRef`s, `ClientLN`s. The identifiers change without a signal,
    /// between the two kinds of the `LN0`. A slot may change attributes, but may not remove elements.
    /// All else keeps the old name: `IEDName` texts, the `Substation` section, `Private` elements.
    ///
    /// \param oldName the name before the edit; empty matches elements without `iedName` as well.
    /// \param ied     an `IED` in a document; nothing happens for null, or without a root.
    static void HandleUpdateForIEDName(const QString& oldName, SCLElement* ied);
    /// Removes what an `IED` would leave pointing at nothing, before the host deletes it: each
    /// `ConnectedAP` of the first `Communication` with its name as `iedName`, and in all IEDs of
    /// another name each such `ExtRef` in the first `Inputs` and each such `ClientLN` in the first
    /// `RptEnabled` of each `ReportControl`, of the first `LN0` and of all `LN`s of each `LDevice`.
    ///
    /// Each is announced by `sigDeleteElement` while it is still in its place, in that order: then
    /// IED by IED and node by node `ExtRef`s, `ClientLN`s. A slot may change attributes, but may not
    /// remove elements. What held them stays, also when it is empty now, and so does all else that
    /// names the IED, as HandleUpdateForIEDName() has it.
    ///
    /// \param ied an `IED` in a document, which stays itself; nothing happens for null, or without a
    ///            root. With an empty name, whatever has no `iedName` is removed: unbound inputs too.
    static void HandleDeleteForIED(SCLElement* ied);
    /// \}

    /// \name Communication addresses
    /// The `GSE` and `SMV` entries of a `ConnectedAP`, with the multicast MAC address and the APPID
    /// of each (IEC 61850-6, IEC 61850-8-1, IEC 61850-9-2). SCLAddressAudit looks for addresses
    /// that clash or are no good.
    /// \{

    /// Appends the addresses of all `GSE`s: of each the values of type "MAC-Address" and "APPID" in
    /// its first `Address`, trimmed and in upper case, otherwise as they stand. Sub-networks,
    /// `ConnectedAP`s, entries and values in child order, duplicates included.
    ///
    /// \param macAddresses, appIds keep what they hold already.
    /// \param communication  a `Communication`; null appends nothing.
    static void GetAllGoAddress(QStringList& macAddresses, QStringList& appIds,
                                SCLElement* communication);
    /// The same for all `SMV`s.
    static void GetAllSvAddress(QStringList& macAddresses, QStringList& appIds,
                                SCLElement* communication);
    /// The `P` children of an `Address` by their `type`, as it stands there; of two with the same
    /// `type` the later one. Empty for null.
    static QMap<QString, SCLElement*> GetAddressP(SCLElement* address);
    /// Brings the entries of a `ConnectedAP` in step with the control blocks that its access point
    /// has in the first `LN0` of each `LDevice`: removes `GSE`s, then `SMV`s, whose control block
    /// is gone, and appends those that are missing. Entries that are there stay exactly as they are.
    ///
    /// A new entry gets the lowest APPID that no entry of its kind has below the nearest
    /// `Communication`, from 0001 to 3FFE for GOOSE and from 4000 to 7FFE for sampled values, and
    /// the MAC address 01-0C-CD-01-xx-xx whose end is the APPID. If that is in use, it is the lowest
    /// free one from 01-0C-CD-01-00-00 on for GOOSE, with lower-case digits that are taken for
    /// different from upper-case ones, and from 01-0C-CD-04-00-00 on for sampled values. When a
    /// range is used up, the last APPID is given out again, and the MAC address is left empty. The
    /// VLAN-ID is 000, the VLAN-PRIORITY 4, for GOOSE `MinTime` and `MaxTime` are 2 and 5000 ms.
    /// What was in use when the call began counts as in use, also in entries that it removes. Without
    /// a `Communication` above, nothing does.
    ///
    /// Each element is announced by `sigAddElement` before its children are made, then by
    /// `sigEditValue` if it has a value; a removed entry by `sigDeleteElement`. A slot may change the
    /// tree. What it takes out, among the control blocks, entries and elements just made, is left
    /// alone from then on; addresses that it sets count from the next call on.
    ///
    /// Calls for all `ConnectedAP`s of a station, one after the other, take time in proportion to
    /// its size, as long as nothing else changes a tree between them.
    ///
    /// \param connectedAP null, or an element of a document.
    /// \param withAddress whether it gets an `Address` with IP 0.0.0.0 and IP-SUBNET 255.255.0.0
    ///        if it has none.
    /// \return true, whether or not there was anything to change. False for null, if it leads to no
    ///         access point (then nothing changes), if that has no `Server` (then only the
    ///         `Address` was made and entries were removed), and if the name pool is full (then the rest is missing).
    static bool UpdateChildForConnectedAP(SCLElement* connectedAP, bool withAddress);
    /// \}

    /// \name Ports and cables
    /// The physical wiring: each `PhysConn` of a `ConnectedAP` holds `P` elements of type "Port" and
    /// "Cable", and ports are wired together whose `PhysConn`s name the same cable. Names are
    /// compared as whole texts. Elements are found in the first `Communication`, in child order.
    ///
    /// A `ConnectedAP` belongs to an IED if it has the `name` of the IED, which is not empty, and of
    /// one of its access points. Nothing is found for null, without a document and without a root.
    /// \{

    /// All `P`s of type "Port" with that value, of the `ConnectedAP`s of an IED. None for an empty
    /// \a port.
    static QList<SCLElement*> GetPortElementFromPort(SCLElement* ied, const QString& port);
    /// All `P`s of type "Cable" with that value, whatever the IED. None for an empty \a cable.
    ///
    /// \param root the `SCL` element, which has the `Communication`.
    static QList<SCLElement*> GetCableElementFromCable(SCLElement* root, const QString& cable);
    /// The ports at the ends of a cable: each `P` of type "Port" that has such a cable beside it,
    /// once. A cable may have any number of ends.
    ///
    /// \param root the `SCL` element.
    static QList<SCLElement*> GetPortElementFromCable(SCLElement* root, const QString& cable);
    /// The ports that a port is wired to, each once: those beside all `P`s of the cable that stands
    /// first in the port's own `PhysConn`, but for the port itself. Another port in the same
    /// `PhysConn` counts; the cables of the ports found are not followed.
    static QList<SCLElement*> GetConnectedPortElementFromPort(SCLElement* ied, const QString& port);
    /// The names of an IED's ports, each once, in the order of their character codes.
    ///
    /// \param withInputs adds the ports that stand before the one colon of the `intAddr` of
    ///        `ExtRef`s, divided by "/", an empty name included: in the first `Inputs` of each `LN0`
    ///        and of the first `LN` of each `LDevice`. SCLSubscriptions looks at all `LN`s.
    static QStringList GetAllPortFromIED(SCLElement* ied, bool withInputs);
    /// The same for one `AccessPoint` of an IED. None if its `name` is empty.
    static QStringList GetAllPortFromAccessPoint(SCLElement* accessPoint, bool withInputs);
    /// \}

    /// \name Signals passed on
    /// An IED that takes in data of another one and offers it again has a `Private` of type
    /// "TALVEN_VARMAP" for each such signal, "in:2310;out:1205", which joins the short addresses of
    /// its input and of its output, in either order. A short address is what stands behind the first
    /// colon of an `sAddr`, or the whole. So two data objects stand for one signal: the Pro side in
    /// the publisher, the Sta side in the IED itself.
    ///
    /// The Sync functions carry descriptions from one side to the other, pair by pair.
    /// \{

    /// The `sAddr` of a `DAI`, as GetDAIShortAddress(SCLElement*, const QString&) has it, but for an
    /// empty \a daName of the first attribute with an `sAddr` that is usual for \a fc: "setVal",
    /// "setMag.f" for "SG" and "SP"; "stVal", "setVal", "t", "general", "phsA", "phsB", "phsC",
    /// "neut", "dirGeneral", "dirPhsA", "dirPhsB", "dirPhsC", "dirNeut" for "ST"; "instMag.i",
    /// "mag.f" for "MX"; none for others.
    ///
    /// \param fc     a functional constraint; may be empty if \a daName is not.
    /// \param daName receives the attribute that was chosen; otherwise it stays.
    static QString GetDAIShortAddress(SCLElement* doi, const QString& fc, QString& daName);
    /// The pairs of data objects that stand for one signal, in the order of the `ExtRef`s in the
    /// first `Inputs` of each node of the IED, the first `LN0` of an `LDevice` in front. A pair
    /// stands once for each `ExtRef` that leads to it; an `ExtRef` without all steps is left out.
    ///
    /// The entries with another form than the two are no signals. Of several entries with one
    /// input, and of several direct `DAI`s with one short address, the last counts; of several
    /// `FCDA`s for an `ExtRef` the first. An output's `sAddr` is trimmed, an input's is not.
    ///
    /// \param ied     an `IED`. For null or another tag the lists stay as they are.
    /// \param proDOIs the publisher's side: `DOI`s, or `SDI`s for a dotted `doName`.
    /// \param staDOIs the IED's own `DOI`s, as many.
    static void GetProAndStaDOIMap(SCLElement* ied, QList<SCLElement*>& proDOIs,
                                   QList<SCLElement*>& staDOIs);
    /// Sets `desc` of each Sta side to that of its Pro side, also to an empty one, with
    /// `sigEditAttribute`. Nothing happens for null or another tag than `IED`.
    static void SyncDescFromProToSta(SCLElement* ied);
    /// The same the other way: changes the publishers.
    static void SyncDescFromStaToPro(SCLElement* ied);
    /// Sets the text of the first `Val` of the `DAI` "dU" of each Sta side to that of its Pro side,
    /// with `sigEditValue`. A `DAI` and a `Val` that are missing are created, with `sigAddElement`.
    ///
    /// An empty text does not empty the other side: its `Val`, if there is one, keeps its text and
    /// gets one more attribute without name and value, with `sigEditAttribute`. Such an attribute
    /// is not saved.
    static void SyncUDescFromProToSta(SCLElement* ied);
    /// The same the other way: changes the publishers.
    static void SyncUDescFromStaToPro(SCLElement* ied);
    /// \}
};

} // namespace Corvane
