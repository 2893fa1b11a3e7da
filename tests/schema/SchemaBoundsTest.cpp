// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SchemaBounds.h>

#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;
using Internal::IsWithinSchemaBounds;

class SchemaBoundsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void schemasOfPracticeAreWithin_data();
    void schemasOfPracticeAreWithin();
    void schemasThatBlowUpAreNot_data();
    void schemasThatBlowUpAreNot();

private:
    TestControl m_control;
};

namespace
{

QByteArray Nested(int depth)
{
    return SclSchema(GlobalElement("SCL", QByteArray("<xs:sequence>").repeated(depth) +
                                              QByteArray("</xs:sequence>").repeated(depth)));
}

QByteArray Children(int count)
{
    return SclSchema(GlobalElement("SCL", "<xs:choice>" + QByteArray("<xs:any/>").repeated(count) +
                                              "</xs:choice>"));
}

QByteArray Sequence(const QByteArray& attributes, const QByteArray& inner = "<xs:any/>")
{
    return "<xs:sequence " + attributes + ">" + inner + "</xs:sequence>";
}

QByteArray Occurring(const QByteArray& attributes)
{
    return SclSchema(GlobalElement("SCL", Sequence(attributes)));
}

QByteArray WithSubset(const QByteArray& declarations)
{
    return "<!DOCTYPE xs:schema [" + declarations + "]>" +
           "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"/>";
}

} // namespace

void SchemaBoundsTest::schemasOfPracticeAreWithin_data()
{
    QTest::addColumn<QByteArray>("xsd");
    QTest::newRow("small schema") << SmallSclSchema();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("garbage");
    QTest::newRow("not closed") << QByteArray("<xs:schema><a>");
    QTest::newRow("nested 250 deep") << Nested(250);
    QTest::newRow("2,000 particles") << Children(2000);
    QTest::newRow("3,000 global components")
        << SclSchema(QByteArray("<xs:annotation/>").repeated(3000));
    QTest::newRow("unbounded") << Occurring("minOccurs='0' maxOccurs='unbounded'");
    QTest::newRow("1,000 times") << Occurring("maxOccurs='1000'");
    QTest::newRow("a number that is none") << Occurring("maxOccurs='many'");
    QTest::newRow("an element 1,000,000 times") << SclSchema(GlobalElement(
        "SCL", "<xs:sequence><xs:element name='a' maxOccurs='1000000'/></xs:sequence>"));
    QTest::newRow("document type without declarations") << WithSubset("");
    QTest::newRow("attribute without default") << WithSubset("<!ATTLIST xs:schema id ID #IMPLIED>");
    QTest::newRow("long documentation")
        << SclSchema("<xs:annotation><xs:documentation>" + QByteArray(100000, 'x') +
                     "</xs:documentation></xs:annotation>");
}

void SchemaBoundsTest::schemasOfPracticeAreWithin()
{
    QFETCH(QByteArray, xsd);

    QVERIFY(IsWithinSchemaBounds(xsd));
}

void SchemaBoundsTest::schemasThatBlowUpAreNot_data()
{
    QTest::addColumn<QByteArray>("xsd");
    QTest::newRow("nested 300 deep") << Nested(300);
    QTest::newRow("nested 100,000 deep") << Nested(100000);
    QTest::newRow("2,001 particles") << Children(2001);
    QTest::newRow("maxOccurs 1,001") << Occurring("maxOccurs='1001'");
    QTest::newRow("minOccurs 1,001") << Occurring("minOccurs='1001' maxOccurs='unbounded'");
    QTest::newRow("a number beyond all types")
        << Occurring("maxOccurs='99999999999999999999999999999999'");
    QTest::newRow("repetitions that multiply")
        << SclSchema(GlobalElement("SCL", Sequence("maxOccurs='100'", Sequence("maxOccurs='11'"))));
    QTest::newRow("pattern nested 5,000 deep")
        << SclSchema("<xs:simpleType name='t'><xs:restriction base='xs:string'>"
                     "<xs:pattern value='" +
                     QByteArray(5000, '(') + 'a' + QByteArray(5000, ')') +
                     "'/></xs:restriction></xs:simpleType>");
    QTest::newRow("entity") << WithSubset("<!ENTITY a 'aaaaaaaaaa'>");
    QTest::newRow("external entity") << WithSubset("<!ENTITY a SYSTEM 'a.ent'>");
    QTest::newRow("parameter entity") << WithSubset("<!ENTITY % a 'aaaaaaaaaa'>");
    QTest::newRow("external document type") << QByteArray("<!DOCTYPE a SYSTEM 'a.dtd'><a/>");
    QTest::newRow("public document type") << QByteArray("<!DOCTYPE a PUBLIC 'p' 'a.dtd'><a/>");
    QTest::newRow("attribute default") << WithSubset("<!ATTLIST xs:schema id CDATA 'x'>");
}

void SchemaBoundsTest::schemasThatBlowUpAreNot()
{
    QFETCH(QByteArray, xsd);

    QVERIFY(!IsWithinSchemaBounds(xsd));
}

QTEST_GUILESS_MAIN(SchemaBoundsTest)
#include "SchemaBoundsTest.moc"
