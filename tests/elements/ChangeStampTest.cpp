// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/ChangeStamp.h>

#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/TreeBuilder.h>

#include <QtTest>

#include <functional>
#include <memory>

using namespace Corvane;
using Corvane::Internal::ChangeStamp;
using Corvane::Internal::TreeBuilder;
using Corvane::Test::At;
using Corvane::Test::TestControl;

namespace
{

using Edit = std::function<void(SCLElement*)>;

const QString iedTag = QStringLiteral("IED");
const QString nameAttribute = QStringLiteral("name");

SCLAttribute* NameOf(SCLElement* root)
{
    return At(root, QStringLiteral("IED"))->FindAttribute(nameAttribute);
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class ChangeStampTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyChangeMovesIt_data();
    void everyChangeMovesIt();
    void anElementThatComesOrGoesMovesIt();
    void eachPieceOfALoadedTreeMovesIt();
    void aSlotSeesItMoved_data();
    void aSlotSeesItMoved();
    void readingLeavesIt_data();
    void readingLeavesIt();
};

void ChangeStampTest::everyChangeMovesIt_data()
{
    QTest::addColumn<Edit>("edit");

    const auto row = [](const char* name, const Edit& edit) { QTest::newRow(name) << edit; };
    row("SetValue", [](SCLElement* root) { root->SetValue(QStringLiteral("x"), false); });
    row("SetDocument", [](SCLElement* root) { root->SetDocument(root->GetDocument()); });
    row("SetParent", [](SCLElement* root) { root->SetParent(nullptr); });
    row("SetAttribute, known", [](SCLElement* root) {
        root->SetAttribute(QStringLiteral("a"), QStringLiteral("2"), false);
    });
    row("SetAttribute, new",
        [](SCLElement* root) { root->SetAttribute(QStringLiteral("b"), QString(), false); });
    row("RemoveAttribute",
        [](SCLElement* root) { root->RemoveAttribute(QStringLiteral("a"), false); });
    row("SetAttributeList", [](SCLElement* root) {
        root->SetAttributeList({QStringLiteral("a")}, {QStringLiteral("1")});
    });
    row("CreateChild", [](SCLElement* root) { root->CreateChild(iedTag, 0, false); });
    row("CreateChild with attributes", [](SCLElement* root) {
        root->CreateChild(iedTag, {{nameAttribute, QStringLiteral("C")}}, -1, false);
    });
    row("AttachChild", [](SCLElement* root) {
        SCLElement* child = At(root, QStringLiteral("IED"));
        root->DetachChild(child, false);
        const quint64 before = ChangeStamp::Now();
        root->AttachChild(child, -1, false);
        QVERIFY(ChangeStamp::Now() != before);
    });
    row("DetachChild", [](SCLElement* root) {
        SCLElement* child = At(root, QStringLiteral("IED"));
        root->DetachChild(child, false);
        delete child;
    });
    row("RemoveChild",
        [](SCLElement* root) { root->RemoveChild(At(root, QStringLiteral("IED")), false); });
    row("MoveChild", [](SCLElement* root) { root->MoveChild(iedTag, 0, 1, false); });
    row("ClearChild", [](SCLElement* root) { root->ClearChild(); });
    row("assignment", [](SCLElement*) {
        SCLElement element(iedTag, nullptr, nullptr);
        const SCLElement other(nameAttribute, nullptr, nullptr);
        const quint64 before = ChangeStamp::Now();
        element = other;
        QVERIFY(ChangeStamp::Now() > before);
        QCOMPARE(element.GetTag(), nameAttribute);
    });
    row("ReadFromBinary", [](SCLElement* root) {
        root->ReadFromBinary(At(root, QStringLiteral("Communication"))->WriteToBinary());
    });
    row("SCLAttribute::SetName", [](SCLElement* root) { NameOf(root)->SetName(iedTag); });
    row("SCLAttribute::SetValue", [](SCLElement* root) { NameOf(root)->SetValue(iedTag); });
    row("SCLAttribute, assignment",
        [](SCLElement* root) { *NameOf(root) = SCLAttribute(iedTag, iedTag); });
    row("SCLDocument::ReadBinary", [](SCLElement* root) {
        const QByteArray image = root->WriteToBinary();
        root->GetDocument()->ReadBinary(image);
    });
}

void ChangeStampTest::everyChangeMovesIt()
{
    QFETCH(Edit, edit);
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL a=\"1\"><IED name=\"A\"/><IED name=\"B\"/><Communication/></SCL>");
    const quint64 before = ChangeStamp::Now();

    edit(root);

    QVERIFY(ChangeStamp::Now() > before);
}

void ChangeStampTest::anElementThatComesOrGoesMovesIt()
{
    const TestControl control;
    const quint64 before = ChangeStamp::Now();

    auto element = std::make_unique<SCLElement>(iedTag, nullptr, nullptr);
    const quint64 between = ChangeStamp::Now();
    element.reset();

    QVERIFY(between > before);
    QVERIFY(ChangeStamp::Now() > between);
}

void ChangeStampTest::eachPieceOfALoadedTreeMovesIt()
{
    const TestControl control;
    TreeBuilder builder(nullptr);
    const quint64 before = ChangeStamp::Now();

    const std::unique_ptr<SCLElement> root(builder.StartElement(iedTag));
    const quint64 started = ChangeStamp::Now();
    builder.AddAttribute(nameAttribute, nameAttribute);
    const quint64 named = ChangeStamp::Now();
    builder.AppendText(nameAttribute);

    QVERIFY(started > before);
    QVERIFY(named > started);
    QVERIFY(ChangeStamp::Now() > named);
}

void ChangeStampTest::aSlotSeesItMoved_data()
{
    everyChangeMovesIt_data();
}

// Signals of a document go out with the change: what a slot looks up must not come from before.
void ChangeStampTest::aSlotSeesItMoved()
{
    QFETCH(Edit, edit);
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL a=\"1\"><IED name=\"A\"/><IED name=\"B\"/><Communication/></SCL>");
    quint64 textStamp = ChangeStamp::Now();
    QString text = Test::ElementText(document->Root());
    bool isStale = false;
    connect(document, &SCLDocument::sigModifiedStateChanged, this, [&] {
        const QString now = document->Root() ? Test::ElementText(document->Root()) : QString();
        isStale = isStale || (now != text && ChangeStamp::Now() == textStamp);
        text = now;
        textStamp = ChangeStamp::Now();
        if (document->GetModified())
            document->SetModified(false, false);
    });

    edit(document->Root());

    QVERIFY(!isStale);
}

void ChangeStampTest::readingLeavesIt_data()
{
    QTest::addColumn<Edit>("read");

    const auto row = [](const char* name, const Edit& read) { QTest::newRow(name) << read; };
    row("searches", [](SCLElement* root) {
        root->FindChild(iedTag, nameAttribute, QStringLiteral("B"), true);
        root->FindChildByType(iedTag, true);
        root->GetSortedChildList();
    });
    row("an unchanged attribute", [](SCLElement* root) {
        root->SetAttribute(QStringLiteral("a"), QStringLiteral("1"), false);
    });
    row("an unchanged value", [](SCLElement* root) { root->SetValue(QString(), false); });
    row("a refused removal", [](SCLElement* root) { root->RemoveChild(root, false); });
    row("a written image", [](SCLElement* root) { root->WriteToBinary(); });
}

void ChangeStampTest::readingLeavesIt()
{
    QFETCH(Edit, read);
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL a=\"1\"><IED name=\"A\"/><IED name=\"B\"/></SCL>");
    const quint64 before = ChangeStamp::Now();

    read(root);

    QCOMPARE(ChangeStamp::Now(), before);
}

QTEST_MAIN(ChangeStampTest)
#include "ChangeStampTest.moc"
