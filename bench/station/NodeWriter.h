// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Dice.h"
#include "TypeCatalog.h"

#include <QByteArray>

namespace Corvane::Bench
{

class XmlOutput;

/// Writes the instance data of logical nodes (`DOI`, `SDI`, `DAI`, `Val`) as their types ask for.
class NodeWriter
{
public:
    /// \param dice where the values come from.
    NodeWriter(XmlOutput& out, Dice& dice, int series);

    /// A whole `LN` without data sets or control blocks.
    void WriteNode(const NodeEntry& node, const char* prefix, int inst);
    /// The `DOI`s of a logical node.
    void WriteObjects(const NodeEntry& node);

private:
    void WriteObject(const DataObjectEntry& object, int number);
    void WriteMembers(const StructureEntry& structure, const QByteArray& description);
    void WriteMember(const MemberEntry& member, const QByteArray& description);
    QByteArray Description(const DataObjectEntry& object, int number);
    QByteArray Value(const MemberEntry& member, const QByteArray& description);
    QByteArray ShortAddress();

    XmlOutput& m_out;
    Dice& m_dice;
    int m_nSeries;
};

} // namespace Corvane::Bench
