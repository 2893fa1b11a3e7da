// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/SCLCrcComparison.h>

#include <QString>

#include <cstddef>
#include <vector>

namespace Corvane::Internal
{

class CrcElement;

/// What an element is in the description of an IED.
enum class CrcRole {
    Ied,
    Section,
    /// A control block with all that belongs to it.
    Reference,
    ControlBlock,
    AccessPoint,
    /// The `GSE` or `SMV` of the control block itself.
    Communication,
    Address,
    AddressEntry,
    DataSet,
    Member,
    /// An input that a member is wired to.
    Wiring,
    InstanceData,
    /// Any other one.
    Part
};

/// The way from the IED down to an element, with what each step means, in words for people.
///
/// Names from the file are cleaned: long ones are shortened, and characters without shape replaced.
class CrcPath
{
public:
    using Section = SCLCrcComparison::Section;
    using Meaning = SCLCrcComparison::Meaning;

    bool IsEmpty() const { return m_steps.empty(); }
    void Push(const CrcElement* element);
    void Pop() { m_steps.pop_back(); }

    /// \name The last element
    /// \{

    const CrcElement* Element() const { return m_steps.back().element; }
    CrcRole Role() const { return m_steps.back().role; }
    /// A part is of the meaning of what it stands in.
    Meaning MeaningOfLast() const { return m_steps.back().meaning; }
    /// In a few words, as the path shows it.
    QString LastWords() const { return WordsOf(m_steps.back()); }
    /// \}

    Section SectionOfPath() const;
    bool IsGoose() const;
    bool IsSent() const;
    /// The reference of the control block as it stands in the file; empty above it.
    QString ControlBlock() const;
    /// The member of a data set; only at or below one.
    QString MemberWords() const;
    /// Whether the data is that behind an input, and that input.
    bool IsBehindWiring() const;
    QString WiringWords() const;

    /// The whole path.
    QString Words() const;
    /// "GOOSE publication".
    QString SectionWords() const;
    /// The part of the path below the control block itself, its access point or its data set, and
    /// the one of these that it is.
    QString WordsOfPart() const;
    CrcRole RoleAbovePart() const;
    /// The part of the path below the member or the input that it is wired to.
    QString WordsOfData() const;

private:
    struct Step {
        const CrcElement* element;
        CrcRole role;
        Meaning meaning;
    };

    CrcRole RoleBelowLast(const CrcElement* child) const;
    QString OwnTag() const;
    bool IsSilent(std::size_t index) const;
    QString WordsFrom(std::size_t first) const;
    static QString WordsOf(const Step& step);

    std::vector<Step> m_steps;
};

/// The `intAddr` of a wiring element; null if it stands for no input.
QString WiredTo(const CrcElement* wiring);

} // namespace Corvane::Internal
