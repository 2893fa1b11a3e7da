// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLBinaryCheck.h>

#include <QtEndian>

namespace Corvane
{

namespace
{

using Fault = SCLBinaryCheck::Fault;

constexpr quint32 nullText = 0xFFFFFFFF;
// The bytes that a record takes at least.
constexpr qint64 leastAttribute = 8;
constexpr qint64 leastElement = 16;

class ImageWalk
{
public:
    explicit ImageWalk(const QByteArray& bytes) : m_bytes(bytes) {}

    // Elements follow one another in preorder, so a single number tells how many are to come.
    void Run()
    {
        for (m_nElements = 1; m_nElements > 0 && IsGood(); --m_nElements)
            WalkElement();
        if (IsGood() && Left() > 0)
            Fail(Fault::BytesBehind, m_nNext);
    }

    Fault FaultFound() const { return m_fault; }
    qint64 Offset() const { return IsGood() ? m_nNext : m_nFault; }

private:
    bool IsGood() const { return m_fault == Fault::None; }
    qint64 Left() const { return m_bytes.size() - m_nNext; }

    void Fail(Fault fault, qint64 offset)
    {
        if (!IsGood())
            return;
        m_fault = fault;
        m_nFault = offset;
    }

    void WalkElement()
    {
        WalkText();
        WalkText();
        for (qint32 count = WalkCount(leastAttribute, m_nElements - 1); count > 0 && IsGood();
             --count) {
            WalkText();
            WalkText();
        }
        m_nElements += WalkCount(leastElement, m_nElements - 1);
    }

    void WalkText()
    {
        const qint64 begin = m_nNext;
        const quint32 size = WalkWord();
        if (!IsGood() || size == nullText)
            return;
        if (size % 2 != 0)
            Fail(Fault::OddText, begin);
        else if (size > Left())
            Fail(Fault::TextTooLong, begin);
        else
            m_nNext += size;
    }

    // The records of a count, and the elements that are to come behind them.
    qint32 WalkCount(qint64 leastBytes, qint64 elementsBehind)
    {
        const qint64 begin = m_nNext;
        const auto count = static_cast<qint32>(WalkWord());
        if (count < 0)
            Fail(Fault::NegativeCount, begin);
        else if (count * leastBytes + elementsBehind * leastElement > Left())
            Fail(Fault::CountTooLarge, begin);
        return IsGood() ? count : 0;
    }

    quint32 WalkWord()
    {
        if (Left() < static_cast<qint64>(sizeof(quint32))) {
            Fail(Fault::EndsEarly, m_nNext);
            return 0;
        }
        const auto word = qFromBigEndian<quint32>(m_bytes.constData() + m_nNext);
        m_nNext += static_cast<qint64>(sizeof(quint32));
        return word;
    }

    const QByteArray& m_bytes;
    qint64 m_nNext = 0;
    qint64 m_nElements = 0;
    Fault m_fault = Fault::None;
    qint64 m_nFault = 0;
};

QString TextOf(Fault fault)
{
    switch (fault) {
    case Fault::EndsEarly:
        return QStringLiteral("The image ends before its record does.");
    case Fault::TextTooLong:
        return QStringLiteral("A text is longer than the rest of the image.");
    case Fault::OddText:
        return QStringLiteral("A text has an odd number of bytes.");
    case Fault::NegativeCount:
        return QStringLiteral("A count is negative.");
    case Fault::CountTooLarge:
        return QStringLiteral("A count promises more than the rest of the image can hold.");
    case Fault::BytesBehind:
        return QStringLiteral("Bytes follow behind the record.");
    case Fault::None:
        break;
    }
    return {};
}

} // namespace

SCLBinaryCheck SCLBinaryCheck::Of(const QByteArray& bytes)
{
    ImageWalk walk(bytes);
    walk.Run();
    return {walk.FaultFound(), walk.Offset(), TextOf(walk.FaultFound())};
}

} // namespace Corvane
