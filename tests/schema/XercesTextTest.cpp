// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/XercesText.h>

#include <QTest>

using namespace Corvane::Internal;

class XercesTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsComeBackAsTheyWere_data();
    void textsComeBackAsTheyWere();
    void zerosSurviveWhenTheLengthIsGiven();
    void nullGivesANullText();
    void anEmptyTextIsNotNull();
};

void XercesTextTest::textsComeBackAsTheyWere_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString(QLatin1String(""));
    QTest::newRow("ASCII") << QStringLiteral("Ln 1, Col 2");
    QTest::newRow("German") << QString::fromUtf8("Schutzger\xC3\xA4t");
    QTest::newRow("Chinese") << QString::fromUtf8("\xE5\x8F\x98\xE7\x94\xB5\xE7\xAB\x99");
    QTest::newRow("beyond the BMP") << QString::fromUtf8("\xF0\x9D\x84\x9E");
    QTest::newRow("unpaired surrogate") << QString(QChar(0xD834));
    QTest::newRow("byte order mark") << QString(QChar(0xFEFF)) + QLatin1Char('a');
    QTest::newRow("swapped byte order mark") << QString(QChar(0xFFFE)) + QLatin1Char('a');
    QTest::newRow("long") << QString(100000, QLatin1Char('x'));
}

void XercesTextTest::textsComeBackAsTheyWere()
{
    QFETCH(QString, text);

    QCOMPARE(FromXerces(ToXerces(text).data()), text);
}

void XercesTextTest::zerosSurviveWhenTheLengthIsGiven()
{
    const QString text = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    const std::vector<XMLCh> units = ToXerces(text);

    QCOMPARE(units.size(), std::size_t(4));
    QCOMPARE(FromXerces(units.data(), 3), text);
}

void XercesTextTest::nullGivesANullText()
{
    QVERIFY(FromXerces(nullptr).isNull());
}

void XercesTextTest::anEmptyTextIsNotNull()
{
    const XMLCh end = 0;

    QVERIFY(!FromXerces(&end).isNull());
    QVERIFY(FromXerces(&end).isEmpty());
}

QTEST_APPLESS_MAIN(XercesTextTest)
#include "XercesTextTest.moc"
