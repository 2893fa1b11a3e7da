// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <utility>
#include <vector>

namespace Corvane
{

class SCLElement;

namespace Internal
{

class CrcElement;

/// What a copy leaves out, at every level, with the names looked up once.
class CrcExclusions
{
public:
    using Children = QMap<QString, QMap<QString, QString>>;

    /// \param attributes names of attributes.
    /// \param children   by tag: all children of the tag for an empty map, otherwise those that
    ///                   have at least one of the attributes.
    CrcExclusions(const QStringList& attributes, const Children& children);

    /// Whether it was made of these.
    bool IsOf(const QStringList& attributes, const Children& children) const
    {
        return attributes == m_attributeNames && children == m_childNames;
    }
    bool HasAttribute(unsigned short nameId) const { return m_attributes.contains(nameId); }
    bool HasChild(unsigned short tagId, SCLElement* child) const;

private:
    QStringList m_attributeNames;
    Children m_childNames;
    QVarLengthArray<unsigned short, 4> m_attributes;
    QVarLengthArray<std::pair<unsigned short, QMap<QString, QString>>, 2> m_children;
};

/// Copies SCL elements to CRC nodes: attributes sorted by name, children in schema order.
///
/// All copies together stay within bounds that no real station comes near: a file can name one
/// large element so often that its copies would fill any memory.
class CrcCopy
{
public:
    /// A copy, which the caller owns. Null if \a element is null or beyond the bounds.
    CrcElement* Copy(SCLElement* element, bool recursive, const CrcExclusions& excluded);
    /// The attributes of \a element as of that \a type, and its tag and value; nothing is left out.
    /// Null if it is beyond the bounds.
    CrcElement* CopyWithAttributes(const SCLElement* element, CrcGenerator::GeneratorType type);

    /// A node of that \a tag with nothing in it.
    static CrcElement* NewNode(const QString& tag);
    /// Adds an attribute, unless it is beyond the bounds.
    /// \return whether it was added.
    bool AddAttribute(CrcElement* node, CrcGenerator::GeneratorType type, const QString& name,
                      const QString& value);
    /// Begins to count anew.
    void Restart() { m_nSpent = 0; }
    /// Whether the bounds are reached, so that no more copies come.
    bool IsExhausted() const { return m_nSpent > Most; }
    /// Appends \a child, which may be null, to \a parent.
    /// \return whether there was one.
    static bool Append(CrcElement* parent, CrcElement* child);

private:
    /// In characters of content, with what stands around each value.
    static constexpr qint64 Most = 128LL * 1024 * 1024;
    static constexpr qint64 AroundElement = 64;
    static constexpr qint64 AroundAttribute = 32;

    CrcElement* CopyNode(const SCLElement* element, const CrcExclusions& excluded);
    CrcElement* CopyHead(const SCLElement* element);
    bool CopyChildren(SCLElement* element, CrcElement* node, const CrcExclusions& excluded);
    const QString& Tag(unsigned short id);
    const QString& Attribute(unsigned short id);

    std::vector<QString> m_tags;
    std::vector<QString> m_attributes;
    qint64 m_nSpent = 0;
};

} // namespace Internal
} // namespace Corvane
