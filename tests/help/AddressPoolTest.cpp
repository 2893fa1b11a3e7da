// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/AddressPool.h>

#include <QTest>

using namespace Corvane::Internal;

namespace
{

QString Taken(AddressPool& pool)
{
    const QString appId = pool.TakeAppId();
    return appId + QLatin1Char(' ') + pool.TakeMacAddress(appId);
}

} // namespace

class AddressPoolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNumberSetFindsTheLowestGap_data();
    void aNumberSetFindsTheLowestGap();
    void aNumberStaysAsOftenAsItWasInserted();
    void onlyTextsThatCouldBeGivenOutCount_data();
    void onlyTextsThatCouldBeGivenOutCount();
    void whatIsReleasedIsFreeAfterTheUpdate();
    void ofTwoOfOneTextBothMustBeReleased();
    void lowerCaseCountsAsUpperCaseAfterTheUpdate();
    void theFallbackBeginsAnewAfterTheUpdate();
};

void AddressPoolTest::aNumberSetFindsTheLowestGap_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("gap");
    // In use are 0 to 63, 65 to 199 and 65535.
    QTest::newRow("first of a word") << 0 << 100 << 64;
    QTest::newRow("begin itself") << 64 << 100 << 64;
    QTest::newRow("inside a later word") << 65 << 1000 << 200;
    QTest::newRow("none before the end") << 65 << 200 << 200;
    QTest::newRow("none in one word") << 3 << 7 << 7;
    QTest::newRow("empty range") << 70 << 70 << 70;
    QTest::newRow("last number in use") << 65535 << 65536 << 65536;
    QTest::newRow("last but one") << 65534 << 65536 << 65534;
}

void AddressPoolTest::aNumberSetFindsTheLowestGap()
{
    NumberSet set;
    for (int number = 0; number < 200; ++number) {
        if (number != 64)
            set.Insert(number);
    }
    set.Insert(65535);
    QFETCH(const int, begin);
    QFETCH(const int, end);
    QTEST(set.FirstGap(begin, end), "gap");
}

void AddressPoolTest::aNumberStaysAsOftenAsItWasInserted()
{
    NumberSet set;
    for (int i = 0; i < 3; ++i)
        set.Insert(7);
    set.Remove(7);
    set.Remove(7);
    QVERIFY(set.Contains(7));
    set.Remove(7);
    QVERIFY(!set.Contains(7));
    set.Insert(7);
    QVERIFY(set.Contains(7));
}

void AddressPoolTest::onlyTextsThatCouldBeGivenOutCount_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("taken");
    const QString first = "0001 01-0C-CD-01-00-01";
    QTest::newRow("APPID") << "APPID"
                           << "0001"
                           << "0002 01-0C-CD-01-00-02";
    QTest::newRow("MAC") << "MAC-Address"
                         << "01-0C-CD-01-00-01"
                         << "0001 01-0C-CD-01-00-00";
    for (const char* text : {"", "1", "00001", "000G", "0x01", "01-0C-CD-01-00-01"})
        QTest::newRow(qPrintable(QString("APPID %1").arg(text))) << "APPID" << text << first;
    for (const char* text :
         {"", "0001", "01-0C-CD-01-00-0", "01-0C-CD-01-00-01-", "01-0C-CD-04-00-01",
          "01:0C:CD:01:00:01", "01-0C-CD-01-00:01", "01-0C-CD-01:00-01", "02-0C-CD-01-00-01"})
        QTest::newRow(qPrintable(QString("MAC %1").arg(text))) << "MAC-Address" << text << first;
    QTest::newRow("another type") << "VLAN-ID"
                                  << "0001" << first;
}

void AddressPoolTest::onlyTextsThatCouldBeGivenOutCount()
{
    QFETCH(const QString, type);
    QFETCH(const QString, value);
    AddressPool pool(GooseAddresses());
    pool.Add(type, value);
    QTEST(Taken(pool), "taken");
}

void AddressPoolTest::whatIsReleasedIsFreeAfterTheUpdate()
{
    AddressPool pool(SampledValuesAddresses());
    pool.Add("APPID", "4000");
    pool.Add("MAC-Address", "01-0C-CD-01-40-00");
    pool.Release("APPID", "4000");
    pool.Release("MAC-Address", "01-0C-CD-01-40-00");
    QCOMPARE(Taken(pool), QString("4001 01-0C-CD-01-40-01"));
    pool.EndUpdate();
    QCOMPARE(Taken(pool), QString("4000 01-0C-CD-01-40-00"));
}

void AddressPoolTest::ofTwoOfOneTextBothMustBeReleased()
{
    AddressPool pool(SampledValuesAddresses());
    pool.Add("APPID", "4000");
    pool.Add("APPID", "4000");
    pool.Release("APPID", "4000");
    pool.EndUpdate();
    QCOMPARE(pool.TakeAppId(), QString("4001"));
    pool.Release("APPID", "4000");
    pool.EndUpdate();
    QCOMPARE(pool.TakeAppId(), QString("4000"));
}

void AddressPoolTest::lowerCaseCountsAsUpperCaseAfterTheUpdate()
{
    AddressPool pool(GooseAddresses());
    for (int i = 0; i < 10; ++i) {
        pool.Add("MAC-Address", QString("01-0C-CD-01-00-0%1").arg(i));
        pool.Add("APPID", QString("000%1").arg(i));
    }
    pool.Release("APPID", "0009");
    pool.EndUpdate();
    QCOMPARE(Taken(pool), QString("0009 01-0C-CD-01-00-0a"));
    pool.EndUpdate();
    // 01-0C-CD-01-00-0A is in use now, and the lower-case text is another one again.
    QCOMPARE(Taken(pool), QString("000A 01-0C-CD-01-00-0a"));
}

void AddressPoolTest::theFallbackBeginsAnewAfterTheUpdate()
{
    AddressPool pool(SampledValuesAddresses());
    pool.Add("MAC-Address", "01-0C-CD-01-40-00");
    pool.Add("MAC-Address", "01-0C-CD-01-40-01");
    QCOMPARE(Taken(pool), QString("4000 01-0C-CD-04-00-00"));
    pool.Release("MAC-Address", "01-0C-CD-04-00-00");
    pool.EndUpdate();
    QCOMPARE(Taken(pool), QString("4001 01-0C-CD-04-00-00"));
}

QTEST_APPLESS_MAIN(AddressPoolTest)
#include "AddressPoolTest.moc"
