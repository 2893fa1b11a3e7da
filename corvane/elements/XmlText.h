// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane::Internal
{

/// \a text without the characters that XML 1.0 cannot hold: lone surrogates, U+FFFE, U+FFFF and
/// control characters other than tab, LF and CR. Everything that goes into any XML passes here,
/// because one such character silences all later text of a `QXmlStreamWriter`.
///
/// \return \a text itself, not copied, if there is no such character.
QString XmlText(const QString& text);

/// Whether XmlText() would give \a text back, and in a loop so plain that it costs next to nothing;
/// false for a text that needs a closer look.
bool IsPlainXmlText(const QString& text);

/// \a name as a Name of XML 1.0 (fifth edition): each character that none can hold becomes "_", and
/// so does an empty name. A first character that may only stand later gets a "_" in front.
QString XmlName(const QString& name);

} // namespace Corvane::Internal
