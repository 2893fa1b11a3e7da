// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <vector>

namespace Corvane::Bench
{

class XmlOutput;

/// How an attribute of a data object shows up in the instance data of a logical node.
enum class Instance {
    None,        ///< Not at all.
    Description, ///< A `DAI` with the description of the data object as its value.
    Address,     ///< A `DAI` with a short address and no value.
    Integer,     ///< A `DAI` with a random whole number.
    Decimal,     ///< A `DAI` with a random decimal number.
    Boolean,     ///< A `DAI` with a random truth value.
    Word,        ///< A `DAI` with a random member of its enumeration.
    Text,        ///< A `DAI` with a short text.
    Nested,      ///< An `SDI` with what its own type asks for.
};

/// An `EnumType`; its values are separated by blanks, the first one has the ordinal \a first.
struct EnumEntry {
    const char* id;
    int first;
    const char* values;
};

/// A member of a `DOType` (`SDO`, if it has neither \a fc nor \a bType, or `DA`) or of a `DAType`
/// (`BDA`, with \a bType alone).
struct MemberEntry {
    const char* name;
    const char* fc;
    const char* bType;
    const char* type;
    Instance instance;
};

/// A `DOType` (with \a cdc) or a `DAType` (without).
struct StructureEntry {
    const char* id;
    const char* cdc;
    std::vector<MemberEntry> members;
};

/// A `DO` of a logical node type. \a count greater than 0 stands for that many, numbered from 1.
/// An optional one is missing in the second series of each type.
struct DataObjectEntry {
    const char* name;
    const char* type;
    const char* description;
    int count;
    bool optional;
};

/// An `LNodeType`; its id gets the series appended.
struct NodeEntry {
    const char* id;
    const char* lnClass;
    std::vector<DataObjectEntry> objects;
};

/// The data type templates that all generated stations share.
///
/// Each logical node type exists in two series, as devices of two makes would bring them along.
class TypeCatalog
{
public:
    static constexpr int g_nSeriesCount = 2;

    /// The id of an `LNodeType` in a series.
    static QByteArray NodeTypeId(const NodeEntry& node, int series);
    /// The logical node type of that \a id without its series. It must exist.
    static const NodeEntry& Node(const char* id);
    /// The `DOType` or `DAType` of that \a id. It must exist.
    static const StructureEntry& Structure(const char* id);
    /// The `EnumType` of that \a id. It must exist.
    static const EnumEntry& Enumeration(const char* id);
    /// The name of a data object, with its \a number if it is a counted one.
    static QByteArray ObjectName(const DataObjectEntry& object, int number);

    /// Writes the whole section `DataTypeTemplates`.
    static void Write(XmlOutput& out);
};

} // namespace Corvane::Bench
