// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringView>

#include <cstddef>
#include <vector>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace Corvane::Internal
{

/// Puts the fields of a binary image into a stream, as `QDataStream` itself does but in large
/// pieces. All is in the stream when this object goes.
class ImageOutput
{
public:
    explicit ImageOutput(QDataStream& stream);
    ~ImageOutput();
    ImageOutput(const ImageOutput&) = delete;
    ImageOutput& operator=(const ImageOutput&) = delete;

    /// A null view is a null text.
    void PutText(QStringView text);
    void PutCount(qint64 count) { PutWord(static_cast<quint32>(count)); }

private:
    void PutWord(quint32 word);
    void PutUnits(const char16_t* units, std::size_t count);
    void PassOn();

    QDataStream& m_stream;
    const bool m_bSwapped;
    std::vector<char> m_bytes;
    std::size_t m_uUsed = 0;
};

} // namespace Corvane::Internal
