// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/TextPattern.h>

#include <algorithm>
#include <utility>

namespace Corvane::Internal
{

namespace
{

constexpr QLatin1Char MarkerSign('%');
constexpr QLatin1Char LocaleSign('L'); // %L1 is a marker too

bool AnyHoldsMarker(std::initializer_list<QString> values)
{
    return std::any_of(values.begin(), values.end(), HoldsMarker);
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

bool HoldsMarker(const QString& text)
{
    for (auto at = text.indexOf(MarkerSign); at >= 0; at = text.indexOf(MarkerSign, at)) {
        ++at;
        if (at < text.size() && text.at(at) == LocaleSign)
            ++at;
        // At the end, what follows may make it one.
        if (at == text.size() || text.at(at).digitValue() >= 0)
            return true;
    }
    return false;
}

PatternText::PatternText(const QString& text) : m_strText(text), m_bHoldsMarker(HoldsMarker(text))
{
}

void PatternText::Append(const char* pattern, std::initializer_list<QString> values)
{
    const bool holdsMarker = m_bHoldsMarker || AnyHoldsMarker(values);
    if (!m_bGivenUp && holdsMarker && AppendByChain(pattern, values))
        return;
    m_bGivenUp = m_bGivenUp || holdsMarker;
    AppendFilled(m_strText, pattern, values, '2');
}

bool PatternText::AppendByChain(const char* pattern, std::initializer_list<QString> values)
{
    constexpr qint64 mostCopied = 256LL * 1024 * 1024;
    QString chained = m_strText + QLatin1String(pattern);
    m_nCopied += static_cast<qint64>(chained.size()) * static_cast<qint64>(values.size() + 1);
    if (m_nCopied > mostCopied || !ChainFilled(chained, values))
        return false;
    m_strText = chained;
    m_bHoldsMarker = HoldsMarker(m_strText);
    return true;
}

QString FillPattern(const char* pattern, std::initializer_list<QString> values)
{
    if (AnyHoldsMarker(values)) {
        QString chained = QLatin1String(pattern);
        if (ChainFilled(chained, values))
            return chained;
    }
    QString text;
    AppendFilled(text, pattern, values, '1');
    return text;
}

} // namespace Corvane::Internal
