// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/SCLCrcComparison.h>

namespace Corvane::Internal
{

class CrcPath;

/// The sentence for a difference at the last element of a path. All but the sentence is filled in.
QString SentenceOf(const SCLCrcComparison::Difference& difference, const CrcPath& path);

} // namespace Corvane::Internal
