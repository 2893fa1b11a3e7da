// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/TextPattern.h>

#include <algorithm>
#include <utility>

namespace Corvane::Internal
{

namespace
{

constexpr QLatin1Char MarkerSign('%');

bool HoldsMarker(const QString& text)
{
    return text.contains(MarkerSign);
}

bool HoldsMarker(std::initializer_list<QString> values)
{
    return std::any_of(values.begin(), values.end(),
                       [](const QString& value) { return HoldsMarker(value); });
}

// All markers at once, no value looked into.
void AppendFilled(QString& text, const char* pattern, std::initializer_list<QString> values,
                  char firstMarker)
{
    for (const char* at = pattern; *at; ++at) {
        if (*at == '%')
            text += values.begin()[*++at - firstMarker];
        else
            text += QLatin1Char(*at);
    }
}

// Each marker of the text could be replaced by the value.
bool WouldExplode(const QString& text, const QString& value)
{
    constexpr double longest = 16.0 * 1024 * 1024;
    return static_cast<double>(text.count(MarkerSign)) * static_cast<double>(value.size()) +
               static_cast<double>(text.size()) >
           longest;
}

bool ChainFilled(QString& text, std::initializer_list<QString> values)
{
    for (const QString& value : values) {
        if (WouldExplode(text, value))
            return false;
        text = text.arg(value);
    }
    return true;
}

} // namespace

PatternText::PatternText(const QString& text) : m_strText(text), m_bHoldsMarker(HoldsMarker(text))
{
}

void PatternText::Append(const char* pattern, std::initializer_list<QString> values)
{
    if (m_bHoldsMarker || HoldsMarker(values)) {
        QString chained = m_strText + QLatin1String(pattern);
        m_bHoldsMarker = true;
        if (ChainFilled(chained, values)) {
            m_strText = chained;
            return;
        }
    }
    AppendFilled(m_strText, pattern, values, '2');
}

QString FillPattern(const char* pattern, std::initializer_list<QString> values)
{
    if (HoldsMarker(values)) {
        QString chained = QLatin1String(pattern);
        if (ChainFilled(chained, values))
            return chained;
    }
    QString text;
    AppendFilled(text, pattern, values, '1');
    return text;
}

} // namespace Corvane::Internal
