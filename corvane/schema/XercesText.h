// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <xercesc/util/XercesDefs.hpp>

#include <vector>

namespace Corvane::Internal
{

/// The texts of Xerces-C and of Qt are both UTF-16, so each becomes the other unit by unit: nothing
/// is lost, be it unpaired surrogates or characters that no local code page has.

/// A text that ends with a zero. Null gives a null `QString`.
QString FromXerces(const XMLCh* text);
/// A text of that \a length, which may hold zeros.
QString FromXerces(const XMLCh* text, XMLSize_t length);
/// The text with a zero behind it.
std::vector<XMLCh> ToXerces(const QString& text);

} // namespace Corvane::Internal
