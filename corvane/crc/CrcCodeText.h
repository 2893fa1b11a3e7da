// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcGenerator.h>

#include <QMap>
#include <QString>

namespace Corvane::Internal
{

/// The code of an IED as documents store it: its CRC, or nothing if it neither sends nor receives.
inline QString IedCode(CrcGenerator::CrcResult result, unsigned int crc)
{
    return result == CrcGenerator::CrcNoConnection ? QString() : PrintedCrc(crc);
}

/// The code of a substation as documents store it: the CRC over the codes of its IEDs in the order
/// of their names, or nothing without IEDs.
inline QString SubstationCode(const QMap<QString, QString>& codeOfName)
{
    return codeOfName.isEmpty() ? QString()
                                : PrintedCrc(CrcGenerator::Generate(codeOfName.values()));
}

} // namespace Corvane::Internal
