// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/TreeBuilder.h>

#include <QObject>
#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Internal;
using namespace Corvane::Test;

namespace
{

using Owned = std::unique_ptr<SCLElement>;

// As a reader hands names out: a view whose text ends with the token.
SCLElement* Start(TreeBuilder& builder, const QString& tag)
{
    return builder.StartElement(tag);
}

} // namespace

class TreeBuilderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void elementsOpenAndClose();
    void attributesStandInTheirOrder();
    void piecesOfTextAreJoined();
    void textAndEndOutsideAreIgnored();
    void emptyTextsAreEmpty();
    void textsOutliveTheirViews();
    void equalTextsStayApartWhenChanged();
    void theDocumentHearsNothing();
    void aFullPoolRefusesNewNames();
    void aHundredThousandLevels();
};

void TreeBuilderTest::elementsOpenAndClose()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    QVERIFY(builder.IsOutside());
    const Owned root(Start(builder, "SCL"));
    QVERIFY(!builder.IsOutside());
    SCLElement* ied = Start(builder, "IED");
    SCLElement* ln = Start(builder, "LN");
    builder.EndElement();
    Start(builder, "LN");
    builder.EndElement();
    builder.EndElement();
    Start(builder, "IED");
    builder.EndElement();
    QVERIFY(!builder.IsOutside());
    builder.EndElement();
    QVERIFY(builder.IsOutside());
    QCOMPARE(ElementText(root.get()), QString("<SCL><IED><LN/><LN/></IED><IED/></SCL>"));
    QVERIFY(root->GetParent("") == nullptr);
    QCOMPARE(ied->GetParent(""), root.get());
    QCOMPARE(ln->GetParent(""), ied);
}

void TreeBuilderTest::attributesStandInTheirOrder()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    builder.ReserveAttributes(3);
    QVERIFY(builder.AddAttribute(QString("z"), QString("1")));
    QVERIFY(builder.AddAttribute(QString("a"), QString("")));
    QVERIFY(builder.AddAttribute(QString("xmlns:m"), QString(" 3 ")));
    builder.ReserveAttributes(0);
    Start(builder, "IED");
    QVERIFY(builder.AddAttribute(QString("z"), QString("1")));
    QCOMPARE(ElementText(root.get()),
             QString("<SCL z=\"1\" a=\"\" xmlns:m=\" 3 \"><IED z=\"1\"/></SCL>"));
}

void TreeBuilderTest::piecesOfTextAreJoined()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    builder.AppendText(QString(" x"));
    Start(builder, "Val");
    builder.AppendText(QString("1"));
    builder.AppendText(QString(60, QLatin1Char('2')));
    builder.EndElement();
    builder.AppendText(QString("y "));
    QCOMPARE(root->GetValue(), QString(" xy "));
    QCOMPARE(At(root.get(), "Val")->GetValue(), "1" + QString(60, QLatin1Char('2')));
}

void TreeBuilderTest::textAndEndOutsideAreIgnored()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    builder.AppendText(QString("x"));
    builder.EndElement();
    const Owned root(Start(builder, "SCL"));
    builder.EndElement();
    builder.EndElement();
    builder.AppendText(QString("y"));
    QVERIFY(builder.IsOutside());
    QCOMPARE(ElementText(root.get()), QString("<SCL/>"));
}

void TreeBuilderTest::emptyTextsAreEmpty()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    QVERIFY(builder.AddAttribute(QString("a"), QStringView()));
    builder.AppendText(QStringView());
    QVERIFY(root->GetAttribute("a").isEmpty());
    QVERIFY(!root->GetAttribute("a").isNull());
    QVERIFY(root->GetValue().isEmpty());
}

void TreeBuilderTest::textsOutliveTheirViews()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    for (int length : {1, 39, 40, 41, 1000}) {
        const QString expected(length, QLatin1Char('v'));
        QString value(length, QLatin1Char('v'));
        QString name = QStringLiteral("a%1").arg(length);
        QVERIFY(builder.AddAttribute(name, value));
        value.fill(QLatin1Char('x'));
        name.fill(QLatin1Char('x'));
        QCOMPARE(root->GetAttribute(QStringLiteral("a%1").arg(length)), expected);
    }
}

void TreeBuilderTest::equalTextsStayApartWhenChanged()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    Start(builder, "Val");
    builder.AppendText(QString("true"));
    builder.EndElement();
    Start(builder, "Val");
    builder.AppendText(QString("true"));
    builder.AppendText(QString("!"));
    builder.EndElement();
    At(root.get(), "Val[0]")->SetValue("false", false);
    QCOMPARE(ElementText(root.get()), QString("<SCL><Val>false</Val><Val>true!</Val></SCL>"));
    // Thousands of values meet in few places of the table, and each reads back as itself.
    for (int i = 0; i < 50000; ++i)
        builder.AddAttribute(QString("a%1").arg(i % 50), QString::number(i));
    const QList<SCLAttribute*> attributes = root->GetAttributeList();
    for (int i = 0; i < 50000; ++i)
        QCOMPARE(attributes.at(i)->GetValue(), QString::number(i));
}

void TreeBuilderTest::theDocumentHearsNothing()
{
    const SCLNamePool pool;
    SCLDocument document;
    const SignalLog log(&document);
    TreeBuilder builder(&document);
    const Owned root(Start(builder, "SCL"));
    Start(builder, "IED");
    builder.AddAttribute(QString("name"), QString("A"));
    builder.AppendText(QString("x"));
    builder.EndElement();
    builder.EndElement();
    QCOMPARE(At(root.get(), "IED")->GetDocument(), &document);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document.GetModified());
}

void TreeBuilderTest::aFullPoolRefusesNewNames()
{
    SCLNamePool pool;
    TreeBuilder builder(nullptr);
    const Owned root(Start(builder, "SCL"));
    for (int i = 0; i < 65535; ++i) {
        pool.AddTagToNamePool(QString::number(i));
        pool.AddAttToNamePool(QString::number(i));
    }
    QVERIFY(Start(builder, "refused") == nullptr);
    QVERIFY(!builder.AddAttribute(QString("refused"), QString("x")));
    QVERIFY(Start(builder, "17") != nullptr);
    QVERIFY(builder.AddAttribute(QString("17"), QString("x")));
    QCOMPARE(ElementText(root.get()), QString("<SCL><17 17=\"x\"/></SCL>"));
}

void TreeBuilderTest::aHundredThousandLevels()
{
    const SCLNamePool pool;
    TreeBuilder builder(nullptr);
    constexpr int depth = 100000;
    const Owned root(Start(builder, "SCL"));
    const QString tag = QStringLiteral("N");
    for (int i = 0; i < depth; ++i)
        QVERIFY(Start(builder, tag) != nullptr);
    QCOMPARE(root->GetChildCount(true), depth);
    for (int i = 0; i <= depth; ++i)
        builder.EndElement();
    QVERIFY(builder.IsOutside());
}

QTEST_APPLESS_MAIN(TreeBuilderTest)
#include "TreeBuilderTest.moc"
