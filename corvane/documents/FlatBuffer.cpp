// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/FlatBuffer.h>

#include <cstring>

namespace Corvane::Internal
{

namespace
{

constexpr std::size_t Capacity = std::size_t{64} * 1024;

} // namespace

FlatBuffer::FlatBuffer(QIODevice* target) : m_pTarget(target), m_pieces(Capacity)
{
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

FlatBuffer::~FlatBuffer()
{
    PassOn();
}

qint64 FlatBuffer::readData(char*, qint64)
{
    return -1;
}

qint64 FlatBuffer::writeData(const char* data, qint64 size)
{
    const auto count = static_cast<std::size_t>(size);
    if (m_uUsed + count > Capacity)
        PassOn();
    if (count > Capacity)
        return m_pTarget->write(data, size);
    std::memcpy(m_pieces.data() + m_uUsed, data, count);
    m_uUsed += count;
    return size;
}

void FlatBuffer::PassOn()
{
    m_pTarget->write(m_pieces.data(), static_cast<qint64>(m_uUsed));
    m_uUsed = 0;
}

} // namespace Corvane::Internal
