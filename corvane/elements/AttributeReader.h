// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVarLengthArray>

#include <initializer_list>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// Reads the same attributes of many elements, with their names looked up once. It lives inside one
/// call: names pooled later are not seen.
class AttributeReader
{
public:
    AttributeReader(std::initializer_list<QString> names);

    /// The value of the \a index-th of the names; null for a missing attribute.
    QString Value(const SCLElement* element, int index) const;

private:
    QVarLengthArray<unsigned short, 8> m_ids;
};

} // namespace Internal
} // namespace Corvane
