// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QStringView>

#include <vector>

QT_BEGIN_NAMESPACE
class QBuffer;
class QDataStream;
QT_END_NAMESPACE

namespace Corvane::Internal
{

/// Takes the fields of a binary image from a stream, as `QDataStream` itself does but without a
/// call of the device for each field where the device is a plain buffer.
///
/// Past the end texts are null and counts are 0. Nothing is allocated for bytes that are not there.
/// The stream stands behind what was taken when this object goes.
class ImageInput
{
public:
    explicit ImageInput(QDataStream& stream);
    ~ImageInput();
    ImageInput(const ImageInput&) = delete;
    ImageInput& operator=(const ImageInput&) = delete;

    /// The next text: a null view for a null text. It holds until the next call.
    QStringView TakeText();
    qint32 TakeCount();

    bool IsAtEnd() const { return m_bEnded || (m_pBuffer ? m_pNext == m_pEnd : IsDeviceAtEnd()); }
    /// How many bytes were taken so far.
    qint64 TakenBytes() const { return m_pBuffer ? m_pNext - m_pBegin : m_nFromDevice; }

private:
    bool IsDeviceAtEnd() const;
    quint32 TakeWord(quint32 pastEnd);
    const char* Take(quint32 size);
    const char* TakeFromBuffer(quint32 size);
    const char* TakeFromDevice(quint32 size);

    QDataStream& m_stream;
    const bool m_bSwapped;
    bool m_bEnded = false;

    QBuffer* m_pBuffer = nullptr;
    QByteArray m_bytes;
    qint64 m_nStart = 0;
    const char* m_pBegin = nullptr;
    const char* m_pNext = nullptr;
    const char* m_pEnd = nullptr;

    qint64 m_nFromDevice = 0;
    std::vector<char> m_block;
    std::vector<char16_t> m_text;
};

} // namespace Corvane::Internal
