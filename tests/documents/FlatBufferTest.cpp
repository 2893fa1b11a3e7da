// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/FlatBuffer.h>

#include <QBuffer>
#include <QTest>

using Corvane::Internal::FlatBuffer;

namespace
{

// What reaches the device of pieces of these sizes, each filled with a letter of its own.
QByteArray Passed(const QList<int>& sizes, QByteArray& expected)
{
    QBuffer target;
    target.open(QIODevice::WriteOnly);
    {
        FlatBuffer buffer(&target);
        char letter = 'a';
        for (int size : sizes) {
            const QByteArray piece(size, letter++);
            expected += piece;
            if (buffer.write(piece) != size)
                return "refused";
        }
    }
    return target.data();
}

} // namespace

class FlatBufferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allPiecesArriveInTheirOrder_data()
    {
        const int full = 64 * 1024;
        QTest::addColumn<QList<int>>("sizes");
        QTest::newRow("none") << QList<int>{};
        QTest::newRow("one") << QList<int>{1};
        QTest::newRow("an empty one between") << QList<int>{3, 0, 4};
        QTest::newRow("exactly full") << QList<int>{full - 1, 1};
        QTest::newRow("full, then one more") << QList<int>{full, 1};
        QTest::newRow("one that does not fit any more") << QList<int>{full - 1, 2, 3};
        QTest::newRow("one larger than the buffer") << QList<int>{5, full + 1, 7};
        QTest::newRow("several larger ones") << QList<int>{3 * full, 2 * full, 1};
    }
    void allPiecesArriveInTheirOrder()
    {
        QFETCH(QList<int>, sizes);
        QByteArray expected;
        const QByteArray passed = Passed(sizes, expected);
        QVERIFY(passed == expected);
    }

    void smallPiecesWaitForTheEnd()
    {
        QBuffer target;
        target.open(QIODevice::WriteOnly);
        FlatBuffer buffer(&target);
        buffer.write("piece");
        QVERIFY(target.data().isEmpty());
    }

    void nothingCanBeRead()
    {
        QBuffer target;
        target.open(QIODevice::ReadWrite);
        FlatBuffer buffer(&target);
        QVERIFY(!buffer.isReadable());
    }
};

QTEST_APPLESS_MAIN(FlatBufferTest)
#include "FlatBufferTest.moc"
