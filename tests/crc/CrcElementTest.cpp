// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcElement.h>

#include <QStringList>
#include <QTest>

#include <memory>

using namespace Corvane;
using Corvane::Internal::CrcAttribute;
using Corvane::Internal::CrcElement;

class CrcElementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypesHaveTheirNumbers();
    void aNewNodeHasNothingBelowIt();
    void attributesAreSortedByName();
    void equalNamesKeepTheirOrder();
    void aDeepTreeIsDestroyed();
};

void CrcElementTest::theTypesHaveTheirNumbers()
{
    QCOMPARE(int(CrcGenerator::GeneratorCanonical), 0);
    QCOMPARE(int(CrcGenerator::GeneratorReadable), 1);
    QCOMPARE(int(CrcGenerator::GeneratorBoth), 2);
    QCOMPARE(int(CrcGenerator::CrcSuccess), 0);
    QCOMPARE(int(CrcGenerator::CrcFailed), 1);
    QCOMPARE(int(CrcGenerator::CrcNoConnection), 2);
}

void CrcElementTest::aNewNodeHasNothingBelowIt()
{
    const CrcElement element(CrcGenerator::GeneratorReadable, "FCDA", "text");
    const CrcAttribute attribute(CrcGenerator::GeneratorBoth, "name", " value ");

    QCOMPARE(element.generatorType, CrcGenerator::GeneratorReadable);
    QCOMPARE(element.name, QString("FCDA"));
    QCOMPARE(element.text, QString("text"));
    QVERIFY(element.children.isEmpty());
    QVERIFY(element.attributes.isEmpty());
    QCOMPARE(attribute.generatorType, CrcGenerator::GeneratorBoth);
    QCOMPARE(attribute.name, QString("name"));
    QCOMPARE(attribute.value, QString(" value "));
}

void CrcElementTest::attributesAreSortedByName()
{
    CrcElement element(CrcGenerator::GeneratorBoth, "E", QString());
    for (const char* name : {"b", "B", "aa", "a", "_", "\xC3\xA4"})
        element.AddAttribute(CrcGenerator::GeneratorBoth, QString::fromUtf8(name), QString());

    element.SortAttributes();

    QStringList names;
    for (const CrcAttribute* attribute : element.attributes)
        names.append(attribute->name);
    QCOMPARE(names.join(' '), QString::fromUtf8("B _ a aa b \xC3\xA4"));
}

void CrcElementTest::equalNamesKeepTheirOrder()
{
    CrcElement element(CrcGenerator::GeneratorBoth, "E", QString());
    for (int i = 0; i < 50; ++i)
        element.AddAttribute(CrcGenerator::GeneratorBoth, i % 2 == 0 ? "b" : "a",
                             QString::number(i));

    element.SortAttributes();

    for (int i = 0; i < 25; ++i) {
        QCOMPARE(element.attributes.at(i)->value, QString::number(2 * i + 1));
        QCOMPARE(element.attributes.at(25 + i)->value, QString::number(2 * i));
    }
}

void CrcElementTest::aDeepTreeIsDestroyed()
{
    auto root = std::make_unique<CrcElement>(CrcGenerator::GeneratorBoth, "E", QString());
    CrcElement* last = root.get();
    for (int depth = 0; depth < 1000000; ++depth) {
        last->children.append(new CrcElement(CrcGenerator::GeneratorBoth, "E", QString()));
        last = last->children.first();
    }
    last->AddAttribute(CrcGenerator::GeneratorBoth, "name", "deepest");
    QCOMPARE(last->attributes.size(), decltype(last->attributes.size())(1));

    root.reset();

    QVERIFY(!root);
}

QTEST_APPLESS_MAIN(CrcElementTest)
#include "CrcElementTest.moc"
