// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <sys/stat.h>

namespace Corvane::Command
{

/// Why a file of that state is none to read or to replace, such as "is a directory"; empty for a
/// regular file.
QString WhyNotRegular(const struct stat& state);

/// Why \a file cannot be read; empty if it can. Never waits, whatever the name stands for: opening
/// a FIFO would.
QString WhyUnreadable(const QString& file);

} // namespace Corvane::Command
