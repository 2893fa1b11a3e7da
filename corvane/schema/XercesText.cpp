// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/XercesText.h>

#include <xercesc/util/XMLString.hpp>

#include <algorithm>

namespace Corvane::Internal
{

static_assert(sizeof(XMLCh) == sizeof(QChar), "both sides hold UTF-16");

QString FromXerces(const XMLCh* text)
{
    return text ? FromXerces(text, xercesc::XMLString::stringLen(text)) : QString();
}

QString FromXerces(const XMLCh* text, XMLSize_t length)
{
    // A plain fromUtf16() may take a byte order mark for no part of the text.
    return QString(reinterpret_cast<const QChar*>(text), static_cast<int>(length));
}

std::vector<XMLCh> ToXerces(const QString& text)
{
    std::vector<XMLCh> units(static_cast<std::size_t>(text.size()) + 1, XMLCh(0));
    std::transform(text.begin(), text.end(), units.begin(),
                   [](QChar character) { return XMLCh(character.unicode()); });
    return units;
}

} // namespace Corvane::Internal
