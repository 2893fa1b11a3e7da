// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <initializer_list>

namespace Corvane::Internal
{

/// A text made by filling patterns as chains of `QString::arg` calls do, value by value: a marker
/// inside a value takes part in the replacements that follow it. Values whose markers would blow
/// the text up beyond any use are filled in as they are.
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
    QString m_strText;
    bool m_bHoldsMarker = false;
};

/// Fills a pattern whose markers begin with %1, each once and in order, in the same way.
QString FillPattern(const char* pattern, std::initializer_list<QString> values);

} // namespace Corvane::Internal
