// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/ImageInput.h>

#include <QBuffer>
#include <QDataStream>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Corvane::Internal
{

namespace
{

constexpr quint32 nullText = 0xFFFFFFFF;

// A buffer whose bytes may be looked at directly: what is read from it is what stands in it.
QBuffer* PlainBuffer(QDataStream& stream)
{
    auto* buffer = qobject_cast<QBuffer*>(stream.device());
    const bool isPlain = buffer && buffer->isReadable() && !buffer->isTextModeEnabled() &&
                         !buffer->isTransactionStarted();
    return isPlain ? buffer : nullptr;
}

} // namespace

ImageInput::ImageInput(QDataStream& stream)
    : m_stream(stream),
      m_bSwapped((stream.byteOrder() == QDataStream::BigEndian) != (Q_BYTE_ORDER == Q_BIG_ENDIAN)),
      m_pBuffer(PlainBuffer(stream))
{
    if (!m_pBuffer)
        return;
    m_bytes = m_pBuffer->data();
    m_nStart = std::min<qint64>(m_pBuffer->pos(), m_bytes.size());
    m_pBegin = m_pNext = m_bytes.constData() + m_nStart;
    m_pEnd = m_bytes.constData() + m_bytes.size();
}

ImageInput::~ImageInput()
{
    if (m_pBuffer)
        m_pBuffer->seek(m_nStart + TakenBytes());
}

bool ImageInput::IsDeviceAtEnd() const
{
    return m_stream.atEnd();
}

QStringView ImageInput::TakeText()
{
    const quint32 size = TakeWord(nullText);
    if (size == nullText)
        return {};
    if (size == 0)
        return QStringView(u"");
    if (size % 2 != 0) {
        m_stream.setStatus(QDataStream::ReadCorruptData);
        return {};
    }
    const char* bytes = Take(size);
    if (!bytes)
        return {};
    const std::size_t length = size / 2;
    if (m_text.size() < length)
        m_text.resize(length);
    if (m_bSwapped)
        qbswap<sizeof(char16_t)>(bytes, static_cast<qsizetype>(length), m_text.data());
    else
        std::memcpy(m_text.data(), bytes, size);
    return {m_text.data(), static_cast<qsizetype>(length)};
}

qint32 ImageInput::TakeCount()
{
    return static_cast<qint32>(TakeWord(0));
}

quint32 ImageInput::TakeWord(quint32 pastEnd)
{
    const char* bytes = Take(sizeof(quint32));
    if (!bytes)
        return pastEnd;
    const auto word = qFromUnaligned<quint32>(bytes);
    return m_bSwapped ? qbswap(word) : word;
}

const char* ImageInput::Take(quint32 size)
{
    const char* bytes = m_pBuffer ? TakeFromBuffer(size) : TakeFromDevice(size);
    if (!bytes) {
        m_bEnded = true;
        m_stream.setStatus(QDataStream::ReadPastEnd);
    }
    return bytes;
}

const char* ImageInput::TakeFromBuffer(quint32 size)
{
    const char* bytes = m_pNext;
    const bool isThere = m_pEnd - m_pNext >= static_cast<qint64>(size);
    m_pNext = isThere ? m_pNext + size : m_pEnd;
    return isThere ? bytes : nullptr;
}

// In steps, as a length that lies must not allocate what it says.
const char* ImageInput::TakeFromDevice(quint32 size)
{
    constexpr std::size_t step = std::size_t{1024} * 1024;
    m_block.clear();
    while (m_block.size() < size) {
        const std::size_t begin = m_block.size();
        m_block.resize(begin + std::min<std::size_t>(step, size - begin));
        const auto wanted = static_cast<int>(m_block.size() - begin);
        const auto got = m_stream.readRawData(m_block.data() + begin, wanted);
        m_nFromDevice += std::max<qint64>(got, 0);
        if (got != wanted)
            return nullptr;
    }
    return m_block.data();
}

} // namespace Corvane::Internal
