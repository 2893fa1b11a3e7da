// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <initializer_list>

namespace Corvane::Internal
{

/// Whether `QString::arg` could find a marker in a text, or in what the text is continued to.
bool HoldsMarker(const QString& text);

/// A text made by filling patterns as chains of `QString::arg` calls do, value by value: a marker
/// inside a value takes part in the replacements that follow it. Where that would blow the text up
/// beyond any use, or has been going on for too long, values are filled in as they are from then
/// on.
///
/// Where no marker can be hit it grows in place, so that long texts cost linear time.
class PatternText
{
public:
    PatternText() = default;
    explicit PatternText(const QString& text);

    /// Continues the text, which stands for %1, by a pattern whose markers begin with %2, each once
    /// and in order.
    void Append(const char* pattern, std::initializer_list<QString> values);

    const QString& Text() const { return m_strText; }

private:
    bool AppendByChain(const char* pattern, std::initializer_list<QString> values);

    QString m_strText;
    bool m_bHoldsMarker = false;
    bool m_bGivenUp = false;
    qint64 m_nCopied = 0;
};

/// Fills a pattern whose markers begin with %1, each once and in order, in the same way.
QString FillPattern(const char* pattern, std::initializer_list<QString> values);

} // namespace Corvane::Internal
