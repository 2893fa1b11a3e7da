// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/NameIndex.h>

#include <QObject>
#include <QTest>

#include <deque>

using Corvane::Internal::NameIndex;

class NameIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyIndexKnowsNothing();
    void idsComeInTheOrderOfAddition();
    void theIndexHoldsTheVeryName();
    void namesCompareExactly();
    void theEmptyNameIsAName();
    void allIdsAreFoundWhenTheIndexIsFull();
};

void NameIndexTest::anEmptyIndexKnowsNothing()
{
    const NameIndex index;
    QCOMPARE(int(index.Find(QStringLiteral("IED"))), 0);
    QCOMPARE(int(index.Find(QStringView())), 0);
    QVERIFY(index.Name(0) == nullptr);
    QVERIFY(index.Name(1) == nullptr);
    QVERIFY(index.Name(65535) == nullptr);
}

void NameIndexTest::idsComeInTheOrderOfAddition()
{
    const QString ied = QStringLiteral("IED");
    const QString ln = QStringLiteral("LN");
    NameIndex index;
    index.Add(&ied);
    index.Add(&ln);
    QCOMPARE(int(index.Find(ied)), 1);
    QCOMPARE(int(index.Find(ln)), 2);
    QCOMPARE(int(index.Find(QStringLiteral("DOI"))), 0);
}

void NameIndexTest::theIndexHoldsTheVeryName()
{
    const QString ied = QStringLiteral("IED");
    NameIndex index;
    index.Add(&ied);
    QCOMPARE(index.Name(1), &ied);
    QVERIFY(index.Name(0) == nullptr);
    QVERIFY(index.Name(2) == nullptr);
}

void NameIndexTest::namesCompareExactly()
{
    const QString name = QStringLiteral("name");
    NameIndex index;
    index.Add(&name);
    for (const char* other : {"Name", "nam", "names", "name ", ""})
        QCOMPARE(int(index.Find(QString(other))), 0);
    QCOMPARE(int(index.Find(QStringView(QStringLiteral("<name>")).mid(1, 4))), 1);
}

void NameIndexTest::theEmptyNameIsAName()
{
    const QString empty;
    NameIndex index;
    index.Add(&empty);
    QCOMPARE(int(index.Find(QStringView())), 1);
    QCOMPARE(int(index.Find(QString(""))), 1);
}

void NameIndexTest::allIdsAreFoundWhenTheIndexIsFull()
{
    constexpr int full = 65535;
    std::deque<QString> names;
    NameIndex index;
    for (int i = 1; i <= full; ++i) {
        names.push_back(QString::number(i));
        index.Add(&names.back());
    }
    for (int i = 1; i <= full; ++i) {
        QCOMPARE(int(index.Find(QString::number(i))), i);
        QCOMPARE(*index.Name(static_cast<unsigned short>(i)), QString::number(i));
    }
    QCOMPARE(int(index.Find(QStringLiteral("0"))), 0);
    QCOMPARE(int(index.Find(QStringLiteral("65536"))), 0);
}

QTEST_APPLESS_MAIN(NameIndexTest)
#include "NameIndexTest.moc"
