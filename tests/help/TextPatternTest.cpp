// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/TextPattern.h>

#include <QObject>
#include <QTest>

#include <random>

using namespace Corvane::Internal;

namespace
{

// What the chain of a pattern of three values makes of a text that stands for %1.
QString Chained(const QString& text, const QString& second, const QString& third)
{
    return QStringLiteral("%1(%2)%3,").arg(text).arg(second).arg(third);
}

QString Filled(const QString& text, const QString& second, const QString& third)
{
    PatternText filled(text);
    filled.Append("(%2)%3,", {second, third});
    return filled.Text();
}

void ValueRows()
{
    QTest::addColumn<QString>("value");
    for (const char* value :
         {"",     "a",    "%",    "%%",   "%1",     "%2",  "%3",  "%4",  "%9", "%10",     "%99",
          "%100", "%0",   "%00",  "%L1",  "%L2",    "%L",  "L2",  "%l2", "1",  "12",      "%%2",
          "%2%3", "%3%2", "%3%3", "a%2b", "50% of", "50%", "% 2", "%-2", "%n", "(%2)%3,", "\n%2\t"})
        QTest::newRow(QByteArray("'") + value + "'") << QString::fromLatin1(value);
}

// Texts of pieces that markers are made of, so that they also arise from neighbours.
class MarkerTexts
{
public:
    QString Next()
    {
        static const QStringList pieces{"%", "%", "1", "2", "3", "L", "a", "%2", "%3", "%L3", ""};
        QString text;
        for (int i = Number(4); i > 0; --i)
            text += pieces.at(Number(static_cast<int>(pieces.size())));
        return text;
    }

private:
    int Number(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }

    std::mt19937 m_engine{1};
};

} // namespace

class TextPatternTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesTakeTheirPlacesInOrder();
    void aTextBeginsEmpty();
    void emptyValuesLeaveThePatternStanding();
    void aMarkerInAValueTakesPartInTheReplacements_data() { ValueRows(); }
    void aMarkerInAValueTakesPartInTheReplacements();
    void aTextHoldsAMarkerThatArgCouldFind_data();
    void aTextHoldsAMarkerThatArgCouldFind();
    void neighboursMayFormMarkers();
    void chainsAgreeWithArgStepByStep();
    void markersThatDoubleTheTextAreGivenUp();
    void afterGivingUpValuesStandAsTheyAre();
    void aLongTextGrowsInPlace();
    void aLongTextWithAMarkerEndsSoon_data();
    void aLongTextWithAMarkerEndsSoon();
    void largeValuesAreFilledLikeSmallOnes();
};

void TextPatternTest::valuesTakeTheirPlacesInOrder()
{
    QCOMPARE(FillPattern("%1%2/%3%4%5.%6", {"a", "b", "c", "d", "e", "f"}), QString("ab/cde.f"));
    PatternText text("IED");
    text.Append(", %2 ldInst = %3, %4 cbName = %5", {"w", "x", "y", "z"});
    QCOMPARE(text.Text(), QString("IED, w ldInst = x, y cbName = z"));
    text.Append("///%2", {"end"});
    QCOMPARE(text.Text(), QString("IED, w ldInst = x, y cbName = z///end"));
}

void TextPatternTest::aTextBeginsEmpty()
{
    PatternText text;
    QVERIFY(text.Text().isEmpty());
    text.Append("/%2", {"a"});
    QCOMPARE(text.Text(), QString("/a"));
}

void TextPatternTest::emptyValuesLeaveThePatternStanding()
{
    QCOMPARE(FillPattern("%1 (%2)", {"", QString()}), QString(" ()"));
    QCOMPARE(Filled("", "", ""), QString("(),"));
}

void TextPatternTest::aMarkerInAValueTakesPartInTheReplacements()
{
    QFETCH(QString, value);
    QCOMPARE(Filled(value, "b", "c"), Chained(value, "b", "c"));
    QCOMPARE(Filled("a", value, "c"), Chained("a", value, "c"));
    QCOMPARE(Filled("a", "b", value), Chained("a", "b", value));
    QCOMPARE(Filled(value, value, value), Chained(value, value, value));
    QCOMPARE(
        FillPattern("%1%2%3", {value, "2b", "L3c"}),
        QStringLiteral("%1%2%3").arg(value).arg(QStringLiteral("2b")).arg(QStringLiteral("L3c")));
}

void TextPatternTest::aTextHoldsAMarkerThatArgCouldFind_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("holds");
    for (const char* text : {"%1", "a%2b", "%99", "%0", "%L1", "%%1", "% %3", "50%", "50%L"})
        QTest::newRow(text) << QString::fromLatin1(text) << true;
    QTest::newRow("digit of another script") << QString("%") + QChar(0x0662) << true;
    for (const char* text : {"", "a", "50% of", "%a", "%%a", "%l1", "%La1", "1%n", "L1"})
        QTest::newRow(QByteArray("'") + text + "'") << QString::fromLatin1(text) << false;
}

void TextPatternTest::aTextHoldsAMarkerThatArgCouldFind()
{
    QFETCH(QString, text);
    QFETCH(bool, holds);
    QCOMPARE(HoldsMarker(text), holds);
}

void TextPatternTest::neighboursMayFormMarkers()
{
    // The first value and the digit of the second make a marker that takes the third.
    QCOMPARE(FillPattern("%1%2%3", {"%", "3", "x"}), QString("xx"));
    QCOMPARE(FillPattern("%1%2%3", {"%", "3", "x"}), QStringLiteral("%1%2%3")
                                                         .arg(QStringLiteral("%"))
                                                         .arg(QStringLiteral("3"))
                                                         .arg(QStringLiteral("x")));
}

void TextPatternTest::chainsAgreeWithArgStepByStep()
{
    MarkerTexts values;
    for (int chain = 0; chain < 20000; ++chain) {
        QString expected = values.Next();
        PatternText text(expected);
        for (int step = 0; step < 4; ++step) {
            const QString second = values.Next();
            const QString third = values.Next();
            expected = Chained(expected, second, third);
            text.Append("(%2)%3,", {second, third});
            QCOMPARE(text.Text(), expected);
        }
        const QString prefix = values.Next();
        const QString lnClass = values.Next();
        const QString inst = values.Next();
        QCOMPARE(FillPattern("%1%2%3", {prefix, lnClass, inst}),
                 QStringLiteral("%1%2%3").arg(prefix).arg(lnClass).arg(inst));
    }
}

void TextPatternTest::markersThatDoubleTheTextAreGivenUp()
{
    const QString name = QStringLiteral("%1%2%3%2%3%3");
    PatternText text(name);
    for (int i = 0; i < 100000; ++i)
        text.Append(", SDI name = %2", {name});
    QVERIFY(text.Text().endsWith(", SDI name = " + name));
    QVERIFY(text.Text().size() < 32LL * 1024 * 1024);
}

void TextPatternTest::afterGivingUpValuesStandAsTheyAre()
{
    const QString markers = QString("%2").repeated(10000);
    const QString large(10000, 'x');
    PatternText text(markers);
    text.Append("/%2", {large});
    QCOMPARE(text.Text(), markers + '/' + large);
    text.Append("(%2)%3,", {"%3", "y"});
    QCOMPARE(text.Text(), markers + '/' + large + "(%3)y,");
    text.Append("(%2)%3,", {"a", "b"});
    text.Append("(%2)%3,", {"%3", "y"});
    QCOMPARE(text.Text(), markers + '/' + large + "(%3)y,(a)b,(%3)y,");
}

void TextPatternTest::aLongTextGrowsInPlace()
{
    PatternText text;
    for (int i = 0; i < 1000000; ++i)
        text.Append(", %2 name = %3", {"SDI", "a"});
    QCOMPARE(text.Text(), QString(", SDI name = a").repeated(1000000));
}

void TextPatternTest::aLongTextWithAMarkerEndsSoon_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("each");
    QTest::newRow("in front") << "%9"
                              << "a";
    QTest::newRow("left over each time") << "%1"
                                         << "a";
    QTest::newRow("in each value") << ""
                                   << "%3";
    QTest::newRow("no marker") << "50% of"
                               << "100% or";
}

void TextPatternTest::aLongTextWithAMarkerEndsSoon()
{
    QFETCH(QString, first);
    QFETCH(QString, each);
    PatternText text(first);
    for (int i = 0; i < 300000; ++i)
        text.Append(", %2 name = %3", {"SDI", each});
    QVERIFY(text.Text().endsWith("SDI name = " + each));
}

void TextPatternTest::largeValuesAreFilledLikeSmallOnes()
{
    const QString large = QString(1000000, 'x') + "%3";
    QCOMPARE(Filled(large, large, "y"), Chained(large, large, "y"));
    QCOMPARE(FillPattern("%1:%2", {large, large}), QStringLiteral("%1:%2").arg(large).arg(large));
}

QTEST_MAIN(TextPatternTest)
#include "TextPatternTest.moc"
