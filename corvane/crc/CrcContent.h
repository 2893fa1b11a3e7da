// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>

#include <QByteArray>
#include <QString>

namespace Corvane::Internal
{

class CrcElement;

/// Whether a rendering shows a node.
inline bool IsShown(CrcGenerator::GeneratorType node, CrcGenerator::GeneratorType rendering)
{
    return node == rendering || rendering == CrcGenerator::GeneratorBoth ||
           node == CrcGenerator::GeneratorBoth;
}

/// A CRC as it is shown everywhere: eight upper-case hexadecimal digits.
QString PrintedCrc(unsigned int crc);

/// A value as the canonical form has it before it is escaped and encoded.
QString CanonicalValue(const QString& value);

/// The CRC of the canonical form of a tree.
///
/// The bytes are those of a `QXmlStreamWriter` without formatting, less all blanks outside of
/// values; a literal "@wspace@" in a value becomes a blank. What XML cannot hold is left out of
/// values, or is "_" in names.
///
/// \param content receives the bytes; may be null.
unsigned int CanonicalCrc(const CrcElement* root, QByteArray* content);

/// The readable form of a tree, indented by two blanks a level; what is nested beyond any use
/// stands on one line.
///
/// \param type GeneratorReadable, or GeneratorBoth to show every node.
QByteArray ReadableContent(const CrcElement* root, CrcGenerator::GeneratorType type,
                           unsigned int crc);

} // namespace Corvane::Internal
