// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/Crc32.h>

#include <QByteArray>
#include <QTest>

#include <random>

using Corvane::Internal::UpdateCrc32;

namespace
{

unsigned int CrcOf(const QByteArray& bytes)
{
    return UpdateCrc32(0, bytes.constData(), static_cast<int>(bytes.size()));
}

// Bit by bit, as the polynomial says.
unsigned int PlainCrc(unsigned int previous, const QByteArray& bytes)
{
    unsigned int c = ~previous;
    for (const char byte : bytes) {
        c ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            c = (c & 1U) != 0 ? (c >> 1) ^ 0xEDB88320U : c >> 1;
    }
    return ~c;
}

QByteArray RandomBytes(int size)
{
    std::mt19937 random(static_cast<unsigned int>(size));
    QByteArray bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

} // namespace

class Crc32Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePublishedVectorsComeOut_data();
    void thePublishedVectorsComeOut();
    void noBytesGiveThePreviousCrc_data();
    void noBytesGiveThePreviousCrc();
    void eachLengthIsAsBitByBit();
    void anyStartAddressWillDo();
    void piecesContinueOneAnother();
};

void Crc32Test::thePublishedVectorsComeOut_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<unsigned int>("crc");

    QTest::newRow("nothing") << QByteArray() << 0U;
    QTest::newRow("check value") << QByteArray("123456789") << 0xCBF43926U;
    QTest::newRow("a") << QByteArray("a") << 0xE8B7BE43U;
    QTest::newRow("abc") << QByteArray("abc") << 0x352441C2U;
    QTest::newRow("message digest") << QByteArray("message digest") << 0x20159D7FU;
    QTest::newRow("letters") << QByteArray("abcdefghijklmnopqrstuvwxyz") << 0x4C2750BDU;
    QTest::newRow("quick brown fox")
        << QByteArray("The quick brown fox jumps over the lazy dog") << 0x414FA339U;
    QTest::newRow("32 zeros") << QByteArray(32, '\0') << 0x190A55ADU;
    QTest::newRow("32 ones") << QByteArray(32, '\xFF') << 0xFF6CAB0BU;
}

void Crc32Test::thePublishedVectorsComeOut()
{
    QFETCH(QByteArray, bytes);
    QFETCH(unsigned int, crc);

    QCOMPARE(CrcOf(bytes), crc);
}

void Crc32Test::noBytesGiveThePreviousCrc_data()
{
    QTest::addColumn<int>("size");

    QTest::newRow("none") << 0;
    QTest::newRow("less than none") << -1;
}

void Crc32Test::noBytesGiveThePreviousCrc()
{
    QFETCH(int, size);

    QCOMPARE(UpdateCrc32(0x12345678, "abc", size), 0x12345678U);
    QCOMPARE(UpdateCrc32(0, "abc", size), 0U);
}

void Crc32Test::eachLengthIsAsBitByBit()
{
    for (int size = 0; size < 100; ++size) {
        const QByteArray bytes = RandomBytes(size);
        QCOMPARE(CrcOf(bytes), PlainCrc(0, bytes));
    }
}

void Crc32Test::anyStartAddressWillDo()
{
    const QByteArray bytes = RandomBytes(64);
    for (int start = 0; start < 16; ++start)
        QCOMPARE(UpdateCrc32(0, bytes.constData() + start, 40), PlainCrc(0, bytes.mid(start, 40)));
}

void Crc32Test::piecesContinueOneAnother()
{
    const QByteArray bytes = RandomBytes(200);
    for (int cut = 0; cut <= bytes.size(); ++cut) {
        const unsigned int first = CrcOf(bytes.left(cut));
        const QByteArray rest = bytes.mid(cut);
        QCOMPARE(UpdateCrc32(first, rest.constData(), static_cast<int>(rest.size())), CrcOf(bytes));
    }
}

QTEST_APPLESS_MAIN(Crc32Test)
#include "Crc32Test.moc"
