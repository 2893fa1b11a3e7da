// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Internal
{

/// Continues the CRC-32 of IEEE 802.3, the one that zip files and Ethernet have: reflected
/// polynomial 0xEDB88320, register and result complemented.
///
/// \param previous the CRC of the bytes before; 0 at the begin.
/// \param size     less than 1 gives \a previous back.
unsigned int UpdateCrc32(unsigned int previous, const char* data, int size);

} // namespace Corvane::Internal
