// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/FlatBuffer.h>

namespace Corvane::Internal
{

namespace
{

constexpr int Capacity = 64 * 1024;

} // namespace

FlatBuffer::FlatBuffer(QIODevice* target) : m_pTarget(target)
{
    m_pieces.reserve(Capacity);
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
    if (m_pieces.size() + size > Capacity)
        PassOn();
    if (size > Capacity)
        return m_pTarget->write(data, size);
    m_pieces.append(data, static_cast<int>(size));
    return size;
}

void FlatBuffer::PassOn()
{
    m_pTarget->write(m_pieces);
    m_pieces.resize(0); // unlike clear(), keeps the memory
}

} // namespace Corvane::Internal
