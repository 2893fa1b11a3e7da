// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/ImageOutput.h>

#include <QDataStream>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Corvane::Internal
{

namespace
{

constexpr quint32 nullText = 0xFFFFFFFF;
// The length of a text is told in bytes, and the largest word stands for the null text.
constexpr quint32 longestText = 0x7FFFFFFE;
constexpr std::size_t room = std::size_t{64} * 1024;

} // namespace

ImageOutput::ImageOutput(QDataStream& stream)
    : m_stream(stream),
      m_bSwapped((stream.byteOrder() == QDataStream::BigEndian) != (Q_BYTE_ORDER == Q_BIG_ENDIAN)),
      m_bytes(room)
{
}

ImageOutput::~ImageOutput()
{
    PassOn();
}

void ImageOutput::PutText(QStringView text)
{
    if (text.isNull()) {
        PutWord(nullText);
        return;
    }
    const auto length =
        static_cast<quint32>(std::min<qint64>(text.size(), static_cast<qint64>(longestText)));
    PutWord(length * 2);
    PutUnits(text.utf16(), length);
}

void ImageOutput::PutWord(quint32 word)
{
    if (room - m_uUsed < sizeof(word))
        PassOn();
    qToUnaligned(m_bSwapped ? qbswap(word) : word, m_bytes.data() + m_uUsed);
    m_uUsed += sizeof(word);
}

void ImageOutput::PutUnits(const char16_t* units, std::size_t count)
{
    while (count > 0) {
        const std::size_t piece = std::min(count, (room - m_uUsed) / 2);
        if (m_bSwapped)
            qbswap<sizeof(char16_t)>(units, static_cast<qsizetype>(piece),
                                     m_bytes.data() + m_uUsed);
        else
            std::memcpy(m_bytes.data() + m_uUsed, units, piece * 2);
        m_uUsed += piece * 2;
        units += piece;
        count -= piece;
        if (count > 0)
            PassOn();
    }
}

void ImageOutput::PassOn()
{
    m_stream.writeRawData(m_bytes.data(), static_cast<int>(m_uUsed));
    m_uUsed = 0;
}

} // namespace Corvane::Internal
