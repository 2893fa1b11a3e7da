// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QChar>
#include <QString>

namespace Corvane::Internal
{

inline bool HasNoShape(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

/// A text from a file, which may hold anything, for a sentence that is shown to people: a long one
/// is shortened, and characters without shape are replaced.
inline QString ShownText(const QString& text)
{
    constexpr int longest = 80;
    QString shown = text.left(longest);
    if (text.size() > longest && shown.at(longest - 1).isHighSurrogate())
        shown.chop(1);
    for (QChar& character : shown) {
        if (HasNoShape(character))
            character = QChar::ReplacementCharacter;
    }
    return text.size() > longest ? shown + QChar(0x2026) : shown;
}

} // namespace Corvane::Internal
