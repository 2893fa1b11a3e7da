// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ImageBytes.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLBinaryCheck.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Fault = SCLBinaryCheck::Fault;

/// Null, empty and set values, attributes, two levels and several children of one tag.
QByteArray VariedImage()
{
    TestControl control;
    return control
        .Open("<SCL a='1' b=''><Header id='h'/><IED name='A'><LN0/>text</IED><IED name='B'/></SCL>")
        ->WriteBinary();
}

/// How many elements the bytes can account for, damaged as they may be: those that are there, and
/// as many that are promised but not there.
int MostElements(const QByteArray& image)
{
    return static_cast<int>(1 + 2 * (image.size() / 4));
}

/// Reads whatever the bytes are, into a document that is then destroyed.
int ElementsRead(const QByteArray& image)
{
    SCLDocument document;
    document.ReadBinary(image);
    return document.Root()->GetChildCount(true) + 1;
}

} // namespace

class SCLBinaryCheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWrittenImageIsWhole();
    void namesAndTextsOfAnyKindAreWhole();
    void eachFaultHasItsOffset_data();
    void eachFaultHasItsOffset();
    void everyPrefixIsRefusedAndReadsWithoutHarm();
    void everyReplacedWordIsRefusedAndReadsWithoutHarm();
    void swappingNullAndEmptyStaysWhole();
    void promisesOfAllLevelsTogetherMustFit();
    void anyDepthIsChecked();
};

void SCLBinaryCheckTest::aWrittenImageIsWhole()
{
    const QByteArray image = VariedImage();

    const SCLBinaryCheck check = SCLBinaryCheck::Of(image);

    QVERIFY(check.IsWhole());
    QCOMPARE(check.offset, static_cast<qint64>(image.size()));
    QCOMPARE(check.text, QString());
}

void SCLBinaryCheckTest::namesAndTextsOfAnyKindAreWhole()
{
    const QByteArray loneSurrogate = Word(2) + QByteArray("\xD8\x00", 2);

    QVERIFY(SCLBinaryCheck::Of(Head(QString(), 0)).IsWhole());
    QVERIFY(SCLBinaryCheck::Of(loneSurrogate + loneSurrogate + Word(0) + Word(0)).IsWhole());
}

void SCLBinaryCheckTest::eachFaultHasItsOffset_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<int>("fault");
    QTest::addColumn<int>("offset");
    const auto row = [](const char* name, const QByteArray& image, Fault fault, int offset) {
        QTest::newRow(name) << image << static_cast<int>(fault) << offset;
    };
    const QByteArray start = Text("T") + Text(QString()); // 10 bytes
    row("nothing", {}, Fault::EndsEarly, 0);
    row("inside a length", Text("T") + Word(0).chopped(1), Fault::EndsEarly, 6);
    row("no attribute count", start, Fault::EndsEarly, 10);
    row("no child count", start + Word(0), Fault::EndsEarly, 14);
    row("inside a text", Text("T").chopped(1), Fault::TextTooLong, 0);
    row("largest length", Text("T") + Word(0xFFFFFFFE) + Word(0), Fault::TextTooLong, 6);
    row("odd length", Text("T") + Word(3) + Word(0) + Word(0), Fault::OddText, 6);
    row("negative attributes", start + Word(0xFFFFFFFF) + Word(0), Fault::NegativeCount, 10);
    row("negative children", start + Word(0) + Word(0x80000000), Fault::NegativeCount, 14);
    row("attributes that do not fit", start + Word(2) + Text("a") + Text("") + Word(0),
        Fault::CountTooLarge, 10);
    row("most attributes", start + Word(0x7FFFFFFF) + Word(0), Fault::CountTooLarge, 10);
    row("children that do not fit", Head("T", 2) + Head("A", 0), Fault::CountTooLarge, 14);
    row("most children", Head("T", 0x7FFFFFFF) + Head("A", 0), Fault::CountTooLarge, 14);
    row("a byte behind", Head("T", 0) + "x", Fault::BytesBehind, 18);
    row("a record behind", Head("T", 1) + Head("A", 0) + Head("B", 0), Fault::BytesBehind, 36);
}

void SCLBinaryCheckTest::eachFaultHasItsOffset()
{
    QFETCH(const QByteArray, image);
    QFETCH(const int, fault);
    QFETCH(const int, offset);

    const SCLBinaryCheck check = SCLBinaryCheck::Of(image);

    QCOMPARE(static_cast<int>(check.fault), fault);
    QCOMPARE(check.offset, static_cast<qint64>(offset));
    QVERIFY(!check.IsWhole());
    QVERIFY(!check.text.isEmpty());
}

void SCLBinaryCheckTest::everyPrefixIsRefusedAndReadsWithoutHarm()
{
    const QByteArray image = VariedImage();
    const TestControl control;

    for (int size = 0; size < image.size(); ++size) {
        const QByteArray prefix = image.left(size);
        const SCLBinaryCheck check = SCLBinaryCheck::Of(prefix);
        QVERIFY2(!check.IsWhole(), qPrintable(QString::number(size)));
        QVERIFY(check.offset <= size);
        QVERIFY(ElementsRead(prefix) <= MostElements(prefix));
    }
}

void SCLBinaryCheckTest::everyReplacedWordIsRefusedAndReadsWithoutHarm()
{
    const QByteArray image = VariedImage();
    const TestControl control;
    const auto offsets = WordOffsets(image);
    QCOMPARE(offsets.size(), static_cast<std::size_t>(5 * 4 + 5 * 2));

    for (const int offset : offsets) {
        const quint32 old = WordAt(image, offset);
        const bool mayBeNull = old == 0 || old == 0xFFFFFFFF;
        for (const quint32 word :
             {old + 1, old + 2, old + 16, old - 1, old - 2, 0U, 1U, 2U, 5U, 0x7FFFFFFEU,
              0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
            if (word == old || (mayBeNull && (word == 0 || word == 0xFFFFFFFF)))
                continue;
            const QByteArray damaged = WithWord(image, offset, word);
            const QString place = QStringLiteral("%1 at %2").arg(word).arg(offset);
            const SCLBinaryCheck check = SCLBinaryCheck::Of(damaged);
            QVERIFY2(!check.IsWhole(), qPrintable(place));
            QVERIFY2(check.offset >= offset && check.offset <= damaged.size(), qPrintable(place));
            QVERIFY2(ElementsRead(damaged) <= MostElements(damaged), qPrintable(place));
        }
    }
}

// Both are texts that a tree can have.
void SCLBinaryCheckTest::swappingNullAndEmptyStaysWhole()
{
    QVERIFY(SCLBinaryCheck::Of(WithWord(Head("T", 0), 6, 0)).IsWhole());
    QVERIFY(SCLBinaryCheck::Of(WithWord(Head("T", 0), 10, 0)).IsWhole());
}

// Each count alone would fit.
void SCLBinaryCheckTest::promisesOfAllLevelsTogetherMustFit()
{
    const QByteArray image = Head("T", 2) + Head("A", 2) + Head("B", 0) + Head("C", 0);

    const SCLBinaryCheck check = SCLBinaryCheck::Of(image);

    QCOMPARE(static_cast<int>(check.fault), static_cast<int>(Fault::CountTooLarge));
    QCOMPARE(check.offset, static_cast<qint64>(18 + 14));
}

void SCLBinaryCheckTest::anyDepthIsChecked()
{
    constexpr int levels = 1000000;
    const QByteArray level = Head("T", 1);
    const QByteArray image = level.repeated(levels) + Head("T", 0);

    QVERIFY(SCLBinaryCheck::Of(image).IsWhole());
    QCOMPARE(SCLBinaryCheck::Of(image.chopped(level.size())).offset,
             static_cast<qint64>(level.size()) * levels - 4);
}

QTEST_GUILESS_MAIN(SCLBinaryCheckTest)
#include "SCLBinaryCheckTest.moc"
