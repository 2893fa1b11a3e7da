// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <memory>
#include <vector>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

class SCLAttributeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewAttributeHasNoNameAndAnEmptyValue();
    void theConstructorPoolsTheName();
    void theNameOfATagIsNoNameOfAnAttribute();
    void setNamePoolsAndTakesTheName();
    void setNameKeepsTheValue();
    void theEmptyNameIsAName();
    void valuesAreKeptAsTheyAre_data();
    void valuesAreKeptAsTheyAre();
    void aNullValueStaysNull();
    void aCopyHasTheSameNameAndValueAndIsApart();
    void changingAnAttributeOfAnElementReportsNothing();
    void aNameOfAFullPoolReadsAsNone();
    void manyAttributesComeAndGoInAnyOrder();
};

void SCLAttributeTest::aNewAttributeHasNoNameAndAnEmptyValue()
{
    const SCLNamePool pool;
    const SCLAttribute attribute;
    QVERIFY(attribute.GetName().isNull());
    QVERIFY(attribute.GetValue().isEmpty());
}

void SCLAttributeTest::theConstructorPoolsTheName()
{
    const SCLNamePool pool;
    const SCLAttribute attribute("name", "IED1");
    QCOMPARE(attribute.GetName(), QString("name"));
    QCOMPARE(attribute.GetValue(), QString("IED1"));
    QCOMPARE(int(pool.GetIdFromAtt("name")), 1);
}

void SCLAttributeTest::theNameOfATagIsNoNameOfAnAttribute()
{
    SCLNamePool pool;
    pool.AddTagToNamePool("IED");
    const SCLAttribute attribute("name", QString());
    QCOMPARE(attribute.GetName(), QString("name"));
    QCOMPARE(int(pool.GetIdFromTag("name")), 0);
}

void SCLAttributeTest::setNamePoolsAndTakesTheName()
{
    const SCLNamePool pool;
    SCLAttribute attribute("name", "x");
    attribute.SetName("desc");
    QCOMPARE(attribute.GetName(), QString("desc"));
    QCOMPARE(int(pool.GetIdFromAtt("desc")), 2);
    attribute.SetName("name");
    QCOMPARE(attribute.GetName(), QString("name"));
    QCOMPARE(int(pool.GetIdFromAtt("name")), 1);
}

void SCLAttributeTest::setNameKeepsTheValue()
{
    const SCLNamePool pool;
    SCLAttribute attribute;
    attribute.SetValue("x");
    attribute.SetName("name");
    QCOMPARE(attribute.GetValue(), QString("x"));
}

void SCLAttributeTest::theEmptyNameIsAName()
{
    const SCLNamePool pool;
    const SCLAttribute attribute("", "x");
    QVERIFY(attribute.GetName().isEmpty());
    QCOMPARE(int(pool.GetIdFromAtt("")), 1);
    QCOMPARE(attribute.GetValue(), QString("x"));
}

void SCLAttributeTest::valuesAreKeptAsTheyAre_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString("");
    QTest::newRow("blanks around") << QString("  a  ");
    QTest::newRow("blanks and line breaks") << QString(" \t\r\n ");
    QTest::newRow("reserved by XML") << QString("<a b='c' & \"d\">");
    QTest::newRow("foreign letters") << QString::fromUtf8("\xE6\x96\xAD\xE8\xB7\xAF\xE5\x99\xA8");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("\xF0\x9D\x84\x9E");
    QTest::newRow("half a character") << QString(QChar(0xD834));
    QTest::newRow("a null character") << QString(QChar(0));
    QTest::newRow("long") << QString(1000000, QLatin1Char('v'));
}

void SCLAttributeTest::valuesAreKeptAsTheyAre()
{
    QFETCH(QString, value);
    const SCLNamePool pool;
    const SCLAttribute constructed("name", value);
    QCOMPARE(constructed.GetValue(), value);
    SCLAttribute changed("name", "x");
    changed.SetValue(value);
    QCOMPARE(changed.GetValue(), value);
}

void SCLAttributeTest::aNullValueStaysNull()
{
    const SCLNamePool pool;
    SCLAttribute attribute("name", QString());
    QVERIFY(attribute.GetValue().isNull());
    attribute.SetValue("");
    QVERIFY(!attribute.GetValue().isNull());
    attribute.SetValue(QString());
    QVERIFY(attribute.GetValue().isNull());
}

void SCLAttributeTest::aCopyHasTheSameNameAndValueAndIsApart()
{
    const SCLNamePool pool;
    const SCLAttribute source("name", "x");
    SCLAttribute copy(source);
    QCOMPARE(copy.GetName(), QString("name"));
    QCOMPARE(copy.GetValue(), QString("x"));
    copy.SetName("desc");
    copy.SetValue("y");
    QCOMPARE(source.GetName(), QString("name"));
    QCOMPARE(source.GetValue(), QString("x"));
    copy = source;
    QCOMPARE(copy.GetName(), QString("name"));
    QCOMPARE(copy.GetValue(), QString("x"));
}

void SCLAttributeTest::changingAnAttributeOfAnElementReportsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);

    ied->FindAttribute("name")->SetValue("B");
    QCOMPARE(ElementText(ied), QString("<IED name=\"B\"/>"));
    ied->FindAttribute("name")->SetName("desc");
    QCOMPARE(ElementText(ied), QString("<IED desc=\"B\"/>"));

    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLAttributeTest::aNameOfAFullPoolReadsAsNone()
{
    SCLNamePool pool;
    for (int i = 0; i < 65535; ++i)
        pool.AddAttToNamePool(QString::number(i));
    const SCLAttribute refused("name", "x");
    QVERIFY(refused.GetName().isNull());
    QCOMPARE(refused.GetValue(), QString("x"));
    const SCLAttribute known("65534", "x");
    QCOMPARE(known.GetName(), QString("65534"));
}

void SCLAttributeTest::manyAttributesComeAndGoInAnyOrder()
{
    const SCLNamePool pool;
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<SCLAttribute>> attributes;
        attributes.reserve(20000);
        for (int i = 0; i < 20000; ++i)
            attributes.push_back(std::make_unique<SCLAttribute>("a", QString::number(i)));
        for (std::size_t i = 0; i < attributes.size(); i += 2)
            attributes[i].reset();
        for (std::size_t i = 0; i < attributes.size(); i += 4)
            attributes[i] = std::make_unique<SCLAttribute>("b", QString::number(i));
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            if (attributes[i] == nullptr)
                continue;
            QCOMPARE(attributes[i]->GetValue(), QString::number(i));
            QCOMPARE(attributes[i]->GetName(), QString(i % 2 == 0 ? "b" : "a"));
        }
    }
}

QTEST_MAIN(SCLAttributeTest)
#include "SCLAttributeTest.moc"
