// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/AttributeReader.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

using Corvane::SCLElement;
using namespace Corvane::Internal;

class AttributeReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesGoByThePlaceOfTheirNames();
    void aMissingAttributeIsEmpty();
    void theFirstOfDuplicatesIsRead();
    void unknownNamesAreNotPooled();
    void moreNamesThanUsual();
};

void AttributeReaderTest::valuesGoByThePlaceOfTheirNames()
{
    const SCLNamePool pool;
    SCLElement first("LN", nullptr, nullptr);
    first.SetAttributeList({"inst", "lnClass"}, {"1", "XCBR"});
    SCLElement second("LN", nullptr, nullptr);
    second.SetAttributeList({"lnClass", "inst"}, {"CSWI", "2"});
    const AttributeReader reader{"lnClass", "inst"};
    QCOMPARE(reader.Value(&first, 0), QString("XCBR"));
    QCOMPARE(reader.Value(&first, 1), QString("1"));
    QCOMPARE(reader.Value(&second, 0), QString("CSWI"));
    QCOMPARE(reader.Value(&second, 1), QString("2"));
}

void AttributeReaderTest::aMissingAttributeIsEmpty()
{
    SCLNamePool pool;
    pool.AddAttToNamePool("prefix");
    const SCLElement ln("LN", nullptr, nullptr);
    const AttributeReader reader{"prefix", "unknown"};
    QVERIFY(reader.Value(&ln, 0).isEmpty());
    QVERIFY(reader.Value(&ln, 1).isEmpty());
}

void AttributeReaderTest::theFirstOfDuplicatesIsRead()
{
    const SCLNamePool pool;
    SCLElement ln("LN", nullptr, nullptr);
    ln.SetAttributeList({"desc", "inst", "inst"}, {"d", "1", "2"});
    const AttributeReader reader{"inst"};
    QCOMPARE(reader.Value(&ln, 0), QString("1"));
}

void AttributeReaderTest::unknownNamesAreNotPooled()
{
    const SCLNamePool pool;
    SCLElement ln("LN", nullptr, nullptr);
    const AttributeReader reader{"inst"};
    QCOMPARE(int(pool.GetIdFromAtt("inst")), 0);
    ln.SetAttribute("inst", "1", false);
    QVERIFY(reader.Value(&ln, 0).isEmpty());
    const AttributeReader later{"inst"};
    QCOMPARE(later.Value(&ln, 0), QString("1"));
}

void AttributeReaderTest::moreNamesThanUsual()
{
    const SCLNamePool pool;
    SCLElement ln("LN", nullptr, nullptr);
    const AttributeReader none{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
    QVERIFY(none.Value(&ln, 9).isEmpty());
    ln.SetAttribute("j", "10", false);
    const AttributeReader reader{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
    QCOMPARE(reader.Value(&ln, 9), QString("10"));
    QVERIFY(reader.Value(&ln, 8).isEmpty());
}

QTEST_APPLESS_MAIN(AttributeReaderTest)
#include "AttributeReaderTest.moc"
