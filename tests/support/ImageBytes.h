// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QString>
#include <QtEndian>

#include <vector>

namespace Corvane::Test
{

/// A word of a binary image.
inline QByteArray Word(quint32 word)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << word;
    return bytes;
}

/// A text of a binary image, null or not.
inline QByteArray Text(const QString& text)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << text;
    return bytes;
}

/// The record of an element without value and attributes, up to its children.
inline QByteArray Head(const QString& tag, quint32 children)
{
    return Text(tag) + Word(0xFFFFFFFF) + Word(0) + Word(children);
}

inline quint32 WordAt(const QByteArray& image, int offset)
{
    return qFromBigEndian<quint32>(image.constData() + offset);
}

/// An image with another word in one place.
inline QByteArray WithWord(QByteArray image, int offset, quint32 word)
{
    return image.replace(offset, 4, Word(word));
}

/// Where the lengths and the counts of a whole image stand, in their order.
inline std::vector<int> WordOffsets(const QByteArray& image)
{
    std::vector<int> offsets;
    int next = 0;
    const auto word = [&] {
        offsets.push_back(next);
        next += 4;
        return WordAt(image, next - 4);
    };
    const auto text = [&] {
        const quint32 size = word();
        next += size == 0xFFFFFFFF ? 0 : static_cast<int>(size);
    };
    for (quint32 elements = 1; elements > 0; --elements) {
        text();
        text();
        for (quint32 texts = 2 * word(); texts > 0; --texts)
            text();
        elements += word();
    }
    return offsets;
}

} // namespace Corvane::Test
