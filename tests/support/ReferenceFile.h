// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TempFile.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace Corvane::Test
{

inline QString ReferencePath(const QString& name)
{
    return QStringLiteral(CORVANE_TEST_DIR "/reference/") + name;
}

/// The first line in which a text differs from the one expected, in words; empty if none does.
inline QString FirstDifference(const QString& text, const QString& expected)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    const QStringList expectedLines = expected.split(QLatin1Char('\n'));
    const int count = static_cast<int>(qMax(lines.size(), expectedLines.size()));
    const auto line = [](const QStringList& all, int index) {
        return index < all.size() ? QLatin1Char('"') + all.at(index) + QLatin1Char('"')
                                  : QStringLiteral("the end");
    };
    for (int i = 0; i < count; ++i) {
        const QString actual = line(lines, i);
        const QString wanted = line(expectedLines, i);
        if (actual != wanted)
            return QStringLiteral("line %1: expected %2, but it is %3")
                .arg(QString::number(i + 1), wanted, actual);
    }
    return QString();
}

/// What differs between a text and the reference file of that name below `tests/reference`, in
/// words; empty if they are equal.
///
/// With `CORVANE_UPDATE_REFERENCE=1` in the environment the file is first written anew, which the
/// target `update-reference` does. Look at what changed before you commit it.
inline QString DifferenceFromReference(const QString& text, const QString& name)
{
    const QString path = ReferencePath(name);
    if (qgetenv("CORVANE_UPDATE_REFERENCE") == "1")
        WriteFile(path, text.toUtf8());
    const QByteArray expected = ReadFile(path);
    if (expected.isNull())
        return QStringLiteral("there is no reference file %1").arg(name);
    const QString difference = FirstDifference(text, QString::fromUtf8(expected));
    return difference.isEmpty() ? difference : name + QStringLiteral(", ") + difference;
}

} // namespace Corvane::Test
