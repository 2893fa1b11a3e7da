// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Command
{

/// What the command tells its caller when it ends.
enum class ExitStatus {
    /// All is as it should be.
    Good = 0,
    /// The work was done, and the files fall short: not valid, or without what was asked for.
    FallsShort = 1,
    /// Wrong use, a file that cannot be read or written, or an interrupt.
    Failed = 2,
};

} // namespace Corvane::Command
