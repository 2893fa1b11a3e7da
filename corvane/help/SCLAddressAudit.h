// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>

namespace Corvane
{

class SCLElement;

/// Looks through the multicast addresses of a station: the MAC address, APPID and VLAN of every
/// `GSE` and `SMV` below a `ConnectedAP` (IEC 61850-6), and tells what keeps the streams from being
/// received, or will sooner or later.
///
/// **Values are compared as numbers.** "01-0C-CD-01-00-0a", "01:0c:cd:01:00:0A" and "010CCD01000A"
/// are one MAC address, "1" and "0001" one APPID, "A" and "00A" one VLAN-ID. A MAC address is
/// readable as six groups of one or two hexadecimal digits with "-" or ":" between them, or as
/// twelve digits; APPID and VLAN-ID as a hexadecimal number, VLAN-PRIORITY as a decimal one. White
/// space around a value does not count. So an audit finds what SCLHelp::UpdateChildForConnectedAP(),
/// which compares texts, lets pass.
///
/// Everything is read once, in the constructor, in linear time; the tree may change afterwards, but
/// elements that are gone may not be used any more. Entries come in document order: sub-network by
/// sub-network, in each `ConnectedAP` the `GSE`s, then the `SMV`s. Findings come entry by entry,
/// then those about control blocks, IED by IED. The same file gives the same audit.
///
/// What stands below the first `Communication` of the root counts, and control blocks in the first
/// `LN0` of each `LDevice` of the first `Server` of an access point.
class CORVANE_EXPORT SCLAddressAudit
{
public:
    enum class Kind { Goose, SampledValues };

    /// The parameters of an `Address` that an audit reads. The `type` of the `P` is in parentheses.
    enum class Parameter {
        None,
        MacAddress,   ///< Destination MAC address ("MAC-Address").
        AppId,        ///< Application identifier ("APPID").
        VlanId,       ///< VLAN identifier ("VLAN-ID").
        VlanPriority, ///< User priority ("VLAN-PRIORITY").
    };

    enum class Severity {
        /// Streams collide or are not sent. To be mended before the file is used.
        Error,
        /// It can work, but is against a recommendation or left over.
        Warning,
    };

    /// What is wrong, and what to do.
    enum class Problem {
        /// Another entry, of GOOSE or of sampled values, has the same MAC address or APPID (#other
        /// is the first that has it). Subscribers take the one stream for the other, or filter in
        /// vain: give one of them a free address. Two entries of one control block, as in redundant
        /// networks, may share addresses. An error.
        Duplicate,
        /// The number is not one that the standard has for this use. APPID: 0000 to 3FFF (GOOSE) or
        /// 8000 to BFFF (GOOSE type 1A, trip) after IEC 61850-8-1, 4000 to 7FFF (sampled values)
        /// after IEC 61850-9-2; VLAN-ID: 000 to FFF; VLAN-PRIORITY: 0 to 7. An error: devices reject
        /// such settings. MAC address: 01-0C-CD-01-00-00 to 01-0C-CD-01-01-FF for GOOSE,
        /// 01-0C-CD-04-00-00 to 01-0C-CD-04-01-FF for sampled values. A warning, as these ranges are
        /// recommendations: check that switches and subscribers filter for the address.
        OutOfRange,
        /// The MAC address is that of one device, and no multicast address. Nobody else gets the
        /// stream. An error.
        NotMulticast,
        /// The value cannot be read as a number at all. Type it anew. An error.
        Unreadable,
        /// The entry has no MAC address or APPID, or an empty one: its stream cannot be sent. Give
        /// it a free address. An error. Without VLAN-ID and VLAN-PRIORITY defaults apply, and
        /// nothing is found.
        Missing,
        /// The `Address` states the parameter more than once, so that tools may read different
        /// values; the audit takes the last one. Delete the others. A warning.
        StatedTwice,
        /// The number is good, but written otherwise than IEC 61850-6 has it: MAC addresses as six
        /// pairs of upper-case digits with "-" between them, APPIDs with four and VLAN-IDs with
        /// three upper-case digits, VLAN-PRIORITY with one digit. Some tools refuse the file or read
        /// another number. A warning.
        UnusualForm,
        /// The entry leads to no control block: it is left from one that was deleted or renamed, and
        /// keeps its address from being used. Delete it, or correct its `ldInst` or `cbName`, or the
        /// names of its `ConnectedAP`. An error.
        EntryWithoutControlBlock,
        /// The `ConnectedAP` has an entry for this control block already (#other). Delete one of
        /// them. A warning.
        RepeatedEntry,
        /// The control block has no entry in any `ConnectedAP` of its access point, so it has no
        /// address to send to. SCLHelp::UpdateChildForConnectedAP() makes one, if there is a
        /// `ConnectedAP`. An error; a warning if it has no data set to send either.
        ControlBlockWithoutEntry,
    };

    /// A value as it stands, and as a number.
    struct Value {
        /// Trimmed; empty for a missing parameter.
        QString text;
        /// -1 if it is missing or cannot be read.
        qint64 number = -1;

        bool IsReadable() const { return number >= 0; }
    };

    /// One `GSE` or `SMV`.
    struct Entry {
        Kind kind = Kind::Goose;
        SCLElement* element = nullptr;
        SCLElement* subNetwork = nullptr;
        SCLElement* connectedAP = nullptr;
        /// As SCLHelp::GetGSEControlFromGSE() and its twin find it; may be null.
        SCLElement* controlBlock = nullptr;
        Value macAddress;
        Value appId;
        Value vlanId;
        Value vlanPriority;
    };

    struct Finding {
        Problem problem;
        Severity severity;
        /// What it is about; None for a whole entry or control block.
        Parameter parameter;
        /// The `GSE`, `SMV`, `GSEControl` or `SampledValueControl`; never null.
        SCLElement* element;
        /// The other entry of a Duplicate or RepeatedEntry; otherwise null.
        SCLElement* other;
        /// An English sentence with the names and values concerned, for people: long names are
        /// shortened, and characters that have no shape are replaced.
        QString text;
    };

    /// A range of the standards, and how full it is.
    struct Range {
        /// Such as "GOOSE APPID, type 1A".
        QString name;
        Parameter parameter;
        /// Both inclusive.
        qint64 first;
        qint64 last;
        /// How many of its numbers entries of either kind have.
        int used;
        /// The lowest number that none has; -1 if the range is full. Never APPID 0000, which stands
        /// for one that is not configured.
        qint64 firstFree;

        int Size() const { return static_cast<int>(last - first + 1); }
    };

    /// \param root the `SCL` element; null, and one without `Communication` and `IED`s, gives an
    ///        audit without entries and findings.
    explicit SCLAddressAudit(SCLElement* root);

    QList<Entry> Entries() const { return m_entries; }
    QList<Finding> Findings() const { return m_findings; }
    /// MAC addresses of GOOSE and of sampled values, APPIDs of GOOSE, of GOOSE type 1A and of
    /// sampled values.
    QList<Range> Ranges() const { return m_ranges; }
    /// Whether any finding is an error.
    bool HasErrors() const;

    /// A number in the form that IEC 61850-6 has for the parameter, such as "01-0C-CD-01-00-0A" and
    /// "000A". Empty for a negative number and for Parameter::None.
    static QString TextOf(Parameter parameter, qint64 number);

private:
    class CORVANE_NO_EXPORT Reader;

    QList<Entry> m_entries;
    QList<Finding> m_findings;
    QList<Range> m_ranges;
};

} // namespace Corvane
