// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;

class SCLElement_SchemaOrderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_control = std::make_unique<TestControl>(); }
    void cleanup() { m_control.reset(); }

    void sortedChildrenStandInSchemaOrder();
    void unlistedTagsStandBehindTheOthersInPoolOrder();
    void anElementUnknownToTheSchemaKeepsItsChildOrder();
    void withoutASchemaTheOrderIsThatOfThePool();
    void aTypeResolvesOnceASchemaIsRegistered();
    void canIgnoreFollowsThePlaceInTheContentModel();
    void canIgnoreIsFalseForUnknownElements();
    void aDetachedElementResolvesOnlyAsAGlobalElement();
    void aCloneBringsItsTypeAlong();
    void aMovedElementKeepsItsType();
    void aNameListedTwiceCountsAtItsFirstPlace();
    void deepTreesResolve();

private:
    void Register(const QByteArray& schema);
    SCLElement* SmallTree();

    std::unique_ptr<TestControl> m_control;
};

namespace
{

QString Tags(const QList<SCLElement*>& elements)
{
    QStringList tags;
    for (SCLElement* element : elements)
        tags.append(element->GetTag());
    return tags.join(QLatin1Char(' '));
}

} // namespace

void SCLElement_SchemaOrderTest::Register(const QByteArray& schema)
{
    const QString path = m_control->Folder().Write(QStringLiteral("s.xsd"), schema);
    QVERIFY((*m_control)->RegisterSchema(path));
}

/// A file whose LDevice has its children in another order than SmallSclSchema().
SCLElement* SCLElement_SchemaOrderTest::SmallTree()
{
    return m_control->OpenRoot(
        SclFile("<Header id='h'/><IED name='A'><LDevice><LN n='1'/><Text/><LN0/><LN n='2'/>"
                "<Private/></LDevice></IED><Private/>"));
}

void SCLElement_SchemaOrderTest::sortedChildrenStandInSchemaOrder()
{
    Register(SmallSclSchema());
    SCLElement* device = At(SmallTree(), QStringLiteral("IED/LDevice"));

    QCOMPARE(ElementTexts(device->GetSortedChildList()),
             QStringList({"<Private/>", "<LN0/>", "<LN n=\"1\"/>", "<LN n=\"2\"/>", "<Text/>"}));
    QCOMPARE(Tags(device->GetChildList()), QStringLiteral("LN LN Text LN0 Private"));
}

void SCLElement_SchemaOrderTest::unlistedTagsStandBehindTheOthersInPoolOrder()
{
    Register(SmallSclSchema());
    SCLElement* root =
        m_control->OpenRoot(SclFile("<Zz/><Header id='h'/><x:Aa xmlns:x='u'/><Private/><Zz/>"));

    QCOMPARE(Tags(root->GetSortedChildList()), QStringLiteral("Private Header Zz Zz x:Aa"));
}

void SCLElement_SchemaOrderTest::anElementUnknownToTheSchemaKeepsItsChildOrder()
{
    Register(SmallSclSchema());
    SCLElement* unknown =
        At(m_control->OpenRoot(SclFile("<Other><IED/><Header/><Private/></Other>")), "Other");

    QCOMPARE(Tags(unknown->GetSortedChildList()), QStringLiteral("IED Header Private"));
    QCOMPARE(unknown->GetSortedChildList(), unknown->GetChildList());
}

void SCLElement_SchemaOrderTest::withoutASchemaTheOrderIsThatOfThePool()
{
    SCLElement* device = At(SmallTree(), QStringLiteral("IED/LDevice"));

    QCOMPARE(device->GetSortedChildList(), device->GetChildList());
    QVERIFY(!device->CanIgnore());
}

void SCLElement_SchemaOrderTest::aTypeResolvesOnceASchemaIsRegistered()
{
    SCLElement* root = SmallTree();
    QCOMPARE(Tags(root->GetSortedChildList()), QStringLiteral("Header IED Private"));

    Register(SmallSclSchema());

    QCOMPARE(Tags(root->GetSortedChildList()), QStringLiteral("Private Header IED"));
}

void SCLElement_SchemaOrderTest::canIgnoreFollowsThePlaceInTheContentModel()
{
    Register(SmallSclSchema());
    SCLElement* root = SmallTree();

    QVERIFY(!root->CanIgnore());
    QVERIFY(!At(root, QStringLiteral("Header"))->CanIgnore());
    QVERIFY(At(root, QStringLiteral("Private"))->CanIgnore());
    QVERIFY(!At(root, QStringLiteral("IED/LDevice/Private"))->CanIgnore());
    QVERIFY(At(root, QStringLiteral("IED/LDevice/LN[1]"))->CanIgnore());
}

void SCLElement_SchemaOrderTest::canIgnoreIsFalseForUnknownElements()
{
    Register(SmallSclSchema());
    SCLElement* root = m_control->OpenRoot(SclFile("<Other><LN/></Other>"));

    QVERIFY(!At(root, QStringLiteral("Other"))->CanIgnore());
    QVERIFY(!At(root, QStringLiteral("Other/LN"))->CanIgnore());
}

void SCLElement_SchemaOrderTest::aDetachedElementResolvesOnlyAsAGlobalElement()
{
    Register(SmallSclSchema());
    SCLElement global(QStringLiteral("SCL"), nullptr, nullptr);
    SCLElement local(QStringLiteral("LDevice"), nullptr, nullptr);
    for (SCLElement* parent : {&global, &local}) {
        parent->CreateChild(QStringLiteral("IED"), -1, false);
        parent->CreateChild(QStringLiteral("LN"), -1, false);
        parent->CreateChild(QStringLiteral("Header"), -1, false);
        parent->CreateChild(QStringLiteral("LN0"), -1, false);
    }

    QCOMPARE(Tags(global.GetSortedChildList()), QStringLiteral("Header IED LN LN0"));
    QCOMPARE(Tags(local.GetSortedChildList()), QStringLiteral("IED LN Header LN0"));
}

void SCLElement_SchemaOrderTest::aCloneBringsItsTypeAlong()
{
    Register(SmallSclSchema());
    SCLElement* device = At(SmallTree(), QStringLiteral("IED/LDevice"));
    const QStringList sorted = ElementTexts(device->GetSortedChildList());

    const std::unique_ptr<SCLElement> clone(device->Clone(true));

    QCOMPARE(ElementTexts(clone->GetSortedChildList()), sorted);
    QVERIFY(clone->CanIgnore());
}

void SCLElement_SchemaOrderTest::aMovedElementKeepsItsType()
{
    Register(SmallSclSchema());
    SCLElement* root = SmallTree();
    SCLElement* optional = At(root, QStringLiteral("Private"));
    SCLElement* device = At(root, QStringLiteral("IED/LDevice"));
    QVERIFY(optional->CanIgnore());

    QVERIFY(root->DetachChild(optional, false));
    QVERIFY(device->AttachChild(optional, -1, false));

    QVERIFY(optional->CanIgnore());
    QVERIFY(!At(device, QStringLiteral("Private"))->CanIgnore());
}

void SCLElement_SchemaOrderTest::aNameListedTwiceCountsAtItsFirstPlace()
{
    Register(
        SclSchema(GlobalElement("SCL", "<xs:sequence><xs:element name='a'/><xs:element name='b'/>"
                                       "<xs:element name='a' minOccurs='0'/></xs:sequence>")));
    SCLElement* root = m_control->OpenRoot(SclFile("<b/><a n='1'/><a n='2'/>"));

    QCOMPARE(ElementTexts(root->GetSortedChildList()),
             QStringList({"<a n=\"1\"/>", "<a n=\"2\"/>", "<b/>"}));
    QVERIFY(!At(root, QStringLiteral("a[1]"))->CanIgnore());
}

void SCLElement_SchemaOrderTest::deepTreesResolve()
{
    Register(SmallSclSchema());
    SCLElement* element = At(SmallTree(), QStringLiteral("IED/LDevice/LN0"));
    for (int i = 0; i < 300000; ++i)
        element = element->CreateChild(QStringLiteral("SDI"), -1, false);

    QVERIFY(element->CanIgnore());
}

QTEST_GUILESS_MAIN(SCLElement_SchemaOrderTest)
#include "SCLElement_SchemaOrderTest.moc"
