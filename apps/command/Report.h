// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane::Command
{

/// \a text with everything escaped that would steer a terminal or hide what stands there: control
/// characters, line separators, characters that turn the direction of writing, lone surrogates.
/// They become `\n`, `\t`, `\r` or `\u` with four hexadecimal digits, and a backslash is doubled.
QString Escaped(const QString& text);
/// Escaped() in double quotes, with those inside escaped as well.
QString Quoted(const QString& text);

/// Writes "corvane: " and the escaped \a text as one line to standard error.
void Complain(const QString& text);
/// The same with the name of a file and ": " in front.
void Complain(const QString& file, const QString& text);

/// The system's text for a value of `errno`.
QString SystemText(int error);

} // namespace Corvane::Command
