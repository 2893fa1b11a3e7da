// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/XmlText.h>

#include <algorithm>

namespace Corvane::Internal
{

namespace
{

using Index = decltype(QString().size());

struct CodePoint {
    char32_t value;
    Index length;
};

CodePoint CodePointAt(const QString& text, Index at)
{
    const QChar first = text[at];
    if (first.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
        return {QChar::surrogateToUcs4(first, text[at + 1]), 2};
    return {first.unicode(), 1};
}

// Char of XML 1.0.
bool IsXmlChar(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

// NameStartChar of XML 1.0, fifth edition.
bool IsNameStartChar(char32_t c)
{
    static constexpr char32_t ranges[][2] = {
        {':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
        {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
        {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
        {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
    };
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [c](const auto& range) { return c >= range[0] && c <= range[1]; });
}

// NameChar of XML 1.0, fifth edition.
bool IsNameChar(char32_t c)
{
    return IsNameStartChar(c) || c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0xB7 ||
           (c >= 0x300 && c <= 0x36F) || (c >= 0x203F && c <= 0x2040);
}

} // namespace

bool IsPlainXmlText(const QString& text)
{
    constexpr ushort first = 0x20;
    constexpr ushort count = 0xD800 - first;
    const QChar* chars = text.constData();
    unsigned special = 0;
    for (Index i = 0; i < text.size(); ++i)
        special |= static_cast<ushort>(chars[i].unicode() - first) >= count;
    return special == 0;
}

QString XmlText(const QString& text)
{
    if (IsPlainXmlText(text))
        return text;
    QString legal;
    legal.reserve(text.size());
    for (Index at = 0; at < text.size();) {
        const CodePoint point = CodePointAt(text, at);
        if (IsXmlChar(point.value))
            legal.append(text.constData() + at, point.length);
        at += point.length;
    }
    return legal.size() == text.size() ? text : legal;
}

QString XmlName(const QString& name)
{
    QString legal;
    legal.reserve(name.size() + 1);
    for (Index at = 0; at < name.size();) {
        const CodePoint point = CodePointAt(name, at);
        if (legal.isEmpty() && IsNameChar(point.value) && !IsNameStartChar(point.value))
            legal += QLatin1Char('_');
        if (IsNameChar(point.value))
            legal.append(name.constData() + at, point.length);
        else
            legal += QLatin1Char('_');
        at += point.length;
    }
    return legal.isEmpty() ? QStringLiteral("_") : legal;
}

} // namespace Corvane::Internal
