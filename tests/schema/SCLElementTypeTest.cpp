// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLElementType.h>

#include <corvane/elements/SCLNamePool.h>
#include <corvane/schema/SCLGrammarPool.h>

#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QTest>

#include <memory>

using namespace Corvane::Internal;
using namespace Corvane::Test;

class SCLElementTypeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_control = std::make_unique<TestControl>(); }
    void cleanup() { m_control.reset(); }

    void aGlobalElementHasMinOccurs1();
    void childTypesStayTheSameNodes();
    void contentModelsAreFlattenedInSchemaOrder_data();
    void contentModelsAreFlattenedInSchemaOrder();
    void whatHasNoElementContentHasNoChildTypes_data();
    void whatHasNoElementContentHasNoChildTypes();
    void aNameIsFoundExactly();
    void theFirstOfSeveralChildrenOfOneNameIsFound();
    void childTypesAreFoundByTagId();
    void oneElementUnderTwoParentsHasTwoNodes();
    void typesThatContainThemselvesGoAsDeepAsAsked();
    void chainsOfAnyLengthAreDeleted();
    void aNodeWithoutDeclarationHasNothing();
    void elementsOfDerivedTypesFollowThoseOfTheBase();

private:
    SCLElementType* Load(const QByteArray& schema);
    /// The type of `SCL`, whose complex type has this content.
    SCLElementType* LoadContent(const QByteArray& content);

    std::unique_ptr<TestControl> m_control;
};

namespace
{

QString Text(SCLElementType* type)
{
    return QStringLiteral("%1:%2").arg(type->GetName()).arg(type->m_nMinOccurs);
}

QString ChildrenText(SCLElementType* type)
{
    QStringList texts;
    for (SCLElementType* child : type->GetChildTypes())
        texts.append(Text(child));
    return texts.join(QLatin1Char(' '));
}

} // namespace

SCLElementType* SCLElementTypeTest::Load(const QByteArray& schema)
{
    const QString path = m_control->Folder().Write(QStringLiteral("s.xsd"), schema);
    if (!(*m_control)->RegisterSchema(path))
        return nullptr;
    return SCLGrammarPool::Instance()->FindRootType(QStringLiteral("SCL"));
}

SCLElementType* SCLElementTypeTest::LoadContent(const QByteArray& content)
{
    return Load(SclSchema(GlobalElement("SCL", content) +
                          "<xs:group name='g'><xs:sequence><xs:element name='g1'/>"
                          "<xs:element name='g2' minOccurs='0'/></xs:sequence></xs:group>"
                          "<xs:element name='r' type='xs:string'/>"));
}

void SCLElementTypeTest::aGlobalElementHasMinOccurs1()
{
    QCOMPARE(Text(Load(SmallSclSchema())), QStringLiteral("SCL:1"));
}

void SCLElementTypeTest::childTypesStayTheSameNodes()
{
    SCLElementType* type = Load(SmallSclSchema());
    const QList<SCLElementType*> children = type->GetChildTypes();

    QCOMPARE(ChildrenText(type), QStringLiteral("Private:0 Header:1 IED:0"));
    QCOMPARE(type->GetChildTypes(), children);
}

void SCLElementTypeTest::contentModelsAreFlattenedInSchemaOrder_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("children");
    QTest::newRow("sequence") << QByteArray("<xs:sequence><xs:element name='b'/>"
                                            "<xs:element name='a' minOccurs='2' maxOccurs='3'/>"
                                            "</xs:sequence>")
                              << "b:1 a:2";
    QTest::newRow("all") << QByteArray("<xs:all><xs:element name='b' minOccurs='0'/>"
                                       "<xs:element name='a'/></xs:all>")
                         << "b:0 a:1";
    QTest::newRow("one name in two branches of a choice")
        << QByteArray("<xs:choice><xs:sequence><xs:element name='a'/><xs:element name='b'/>"
                      "</xs:sequence><xs:sequence><xs:element name='c'/><xs:element name='a' "
                      "minOccurs='0'/></xs:sequence></xs:choice>")
        << "a:1 b:1 c:1 a:0";
    QTest::newRow("an optional group does not make its elements optional")
        << QByteArray("<xs:sequence><xs:sequence minOccurs='0'><xs:element name='a'/>"
                      "<xs:choice maxOccurs='unbounded'><xs:element name='b'/></xs:choice>"
                      "</xs:sequence><xs:element name='c'/></xs:sequence>")
        << "a:1 b:1 c:1";
    QTest::newRow("wildcards are left out")
        << QByteArray("<xs:sequence><xs:element name='a'/><xs:any namespace='##other'/>"
                      "<xs:element name='b'/><xs:any namespace='##other'/></xs:sequence>")
        << "a:1 b:1";
    QTest::newRow("named group") << QByteArray(
                                        "<xs:sequence><xs:element name='a'/><xs:group ref='t:g'/>"
                                        "<xs:element name='b'/></xs:sequence>")
                                 << "a:1 g1:1 g2:0 b:1";
    QTest::newRow("reference to a global element")
        << QByteArray("<xs:sequence><xs:element ref='t:r' minOccurs='0'/></xs:sequence>") << "r:0";
    QTest::newRow("deep groups") << QByteArray("<xs:sequence>").repeated(100) +
                                        "<xs:element name='a'/>" +
                                        QByteArray("</xs:sequence>").repeated(100)
                                 << "a:1";
    QTest::newRow("mixed content")
        << QByteArray("<xs:complexContent mixed='true'><xs:restriction base='xs:anyType'>"
                      "<xs:sequence><xs:element name='a'/></xs:sequence></xs:restriction>"
                      "</xs:complexContent>")
        << "a:1";
}

void SCLElementTypeTest::contentModelsAreFlattenedInSchemaOrder()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, children);

    SCLElementType* type = LoadContent(content);

    QVERIFY(type);
    QCOMPARE(ChildrenText(type), children);
}

void SCLElementTypeTest::whatHasNoElementContentHasNoChildTypes_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("simple type") << QByteArray("<xs:element name='SCL' type='xs:string'/>");
    QTest::newRow("attributes only") << GlobalElement("SCL", "<xs:attribute name='a'/>");
    QTest::newRow("empty") << GlobalElement("SCL", "");
    QTest::newRow("simple content")
        << GlobalElement("SCL", "<xs:simpleContent><xs:extension base='xs:string'>"
                                "<xs:attribute name='a'/></xs:extension></xs:simpleContent>");
    QTest::newRow("wildcards only") << GlobalElement("SCL", "<xs:sequence><xs:any/></xs:sequence>");
    QTest::newRow("no type") << QByteArray("<xs:element name='SCL'/>");
}

void SCLElementTypeTest::whatHasNoElementContentHasNoChildTypes()
{
    QFETCH(QByteArray, element);
    SCLElementType* type = Load(SclSchema(element));
    const unsigned short id = SCLNamePool::Instance()->AddTagToNamePool(QStringLiteral("a"));

    QVERIFY(type);
    QVERIFY(type->GetChildTypes().isEmpty());
    QVERIFY(type->GetChildTypes().isEmpty());
    QCOMPARE(type->FindChildType(QStringLiteral("a")), nullptr);
    QCOMPARE(type->FindChildTypeById(id), nullptr);
    QCOMPARE(type->GetChildRank(id), -1);
}

void SCLElementTypeTest::aNameIsFoundExactly()
{
    SCLElementType* type = Load(SmallSclSchema());

    QCOMPARE(type->FindChildType(QStringLiteral("IED")), type->GetChildTypes().at(2));
    QCOMPARE(type->FindChildType(QStringLiteral("ied")), nullptr);
    QCOMPARE(type->FindChildType(QStringLiteral("LDevice")), nullptr);
    QCOMPARE(type->FindChildType(QString()), nullptr);
}

void SCLElementTypeTest::theFirstOfSeveralChildrenOfOneNameIsFound()
{
    SCLElementType* type = LoadContent("<xs:sequence><xs:element name='a'/><xs:element name='b'/>"
                                       "<xs:element name='a' minOccurs='0'/></xs:sequence>");
    const unsigned short id = SCLNamePool::Instance()->AddTagToNamePool(QStringLiteral("a"));

    QCOMPARE(type->FindChildType(QStringLiteral("a")), type->GetChildTypes().first());
    QCOMPARE(type->FindChildTypeById(id), type->GetChildTypes().first());
    QCOMPARE(type->GetChildRank(id), 0);
}

void SCLElementTypeTest::childTypesAreFoundByTagId()
{
    SCLElementType* type = Load(SmallSclSchema());
    SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short ied = pool->AddTagToNamePool(QStringLiteral("IED"));
    const unsigned short other = pool->AddTagToNamePool(QStringLiteral("Other"));

    QCOMPARE(type->FindChildTypeById(ied), type->FindChildType(QStringLiteral("IED")));
    QCOMPARE(type->GetChildRank(ied), 2);
    QCOMPARE(type->FindChildTypeById(other), nullptr);
    QCOMPARE(type->GetChildRank(other), -1);

    const unsigned short header = pool->AddTagToNamePool(QStringLiteral("Header"));
    QCOMPARE(type->GetChildRank(header), 1);
}

void SCLElementTypeTest::oneElementUnderTwoParentsHasTwoNodes()
{
    SCLElementType* scl = Load(SmallSclSchema());
    SCLElementType* device =
        scl->FindChildType(QStringLiteral("IED"))->FindChildType(QStringLiteral("LDevice"));
    SCLElementType* optional = scl->FindChildType(QStringLiteral("Private"));
    SCLElementType* required = device->FindChildType(QStringLiteral("Private"));

    QVERIFY(optional != required);
    QCOMPARE(optional->m_nMinOccurs, 0U);
    QCOMPARE(required->m_nMinOccurs, 1U);
}

void SCLElementTypeTest::typesThatContainThemselvesGoAsDeepAsAsked()
{
    SCLElementType* type = Load(SclSchema(GlobalElement(
        "SCL", "<xs:sequence><xs:element ref='t:SCL' minOccurs='0'/></xs:sequence>")));

    SCLElementType* inner = type->FindChildType(QStringLiteral("SCL"));

    QVERIFY(inner);
    QVERIFY(inner != type);
    QVERIFY(inner->FindChildType(QStringLiteral("SCL")) != inner);
}

void SCLElementTypeTest::chainsOfAnyLengthAreDeleted()
{
    SCLElementType* type = Load(SclSchema(GlobalElement(
        "SCL", "<xs:sequence><xs:element ref='t:SCL' minOccurs='0'/></xs:sequence>")));
    for (int i = 0; i < 1000000; ++i) {
        type = type->FindChildType(QStringLiteral("SCL"));
        QVERIFY(type);
    }

    m_control.reset();

    QCOMPARE(SCLGrammarPool::Instance(), nullptr);
}

void SCLElementTypeTest::aNodeWithoutDeclarationHasNothing()
{
    SCLElementType type(nullptr, 3);

    QCOMPARE(Text(&type), QStringLiteral(":3"));
    QVERIFY(type.GetChildTypes().isEmpty());
    QCOMPARE(type.FindChildType(QStringLiteral("a")), nullptr);
    QCOMPARE(type.GetChildRank(1), -1);
}

void SCLElementTypeTest::elementsOfDerivedTypesFollowThoseOfTheBase()
{
    SCLElementType* type = Load(
        SclSchema("<xs:element name='SCL' type='t:derived'/>"
                  "<xs:complexType name='base'><xs:sequence><xs:element name='b'/></xs:sequence>"
                  "</xs:complexType><xs:complexType name='derived'><xs:complexContent>"
                  "<xs:extension base='t:base'><xs:sequence><xs:element name='a'/></xs:sequence>"
                  "</xs:extension></xs:complexContent></xs:complexType>"));

    QCOMPARE(ChildrenText(type), QStringLiteral("b:1 a:1"));
}

QTEST_GUILESS_MAIN(SCLElementTypeTest)
#include "SCLElementTypeTest.moc"
