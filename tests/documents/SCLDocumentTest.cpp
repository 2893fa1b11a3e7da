// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QApplication>
#include <QDialog>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

namespace
{

const char* const g_newRoot = "<SCL xmlns=\"http://www.iec.ch/61850/2003/SCL\""
                              " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
                              " xsi:schemaLocation=\"http://www.iec.ch/61850/2003/SCL SCL.xsd\"/>";

// What the save dialog proposes for a document without a history: the only place where a document
// shows whether its IEDs have changed, as 1.1, or not, as 1.0.
QString ProposedVersion(TestControl& control, SCLDocument* document)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->accept();
    });
    timer.start(1);
    document->SaveAs(control.Folder().Path("proposal.scd"), false, true);
    SCLElement* header = document->Root()->GetFirstChild("Header");
    SCLElement* record = At(header, "History/Hitem");
    const QString version = record == nullptr ? QString("none") : record->GetAttribute("version");
    header->ClearChild();
    return version;
}

} // namespace

class SCLDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewDocumentIsEmpty();
    void aDocumentNeedsNoControl();
    void theSignalsStandInTheirOrder();

    void setModifiedSendsOnlyWhatIsNew_data();
    void setModifiedSendsOnlyWhatIsNew();
    void theStateIsNewWhenTheSignalGoesOut();
    void twiceModifiedIsSentOnce();

    void createRootMakesAnSclRoot();
    void createRootMarksAndSendsOnce();
    void createRootOfAModifiedDocumentSendsNothing();
    void createRootKeepsAnExistingRoot();
    void createRootOfATagHasNoAttributes();
    void createRootOfATagKeepsAnExistingRoot();

    void theRootKnowsItsDocument();
    void theUpdateFlagIsKeptAlone();
    void destructionDeletesTheTreeWithoutASignal();
    void aChangeFollowsTheDocumentOfItsElement();
    void changesAreReportedAsOneOrderedLog();

    void iedChangesSteerTheProposedVersion_data();
    void iedChangesSteerTheProposedVersion();
    void savingAndLoadingEndTheIedChange();
};

void SCLDocumentTest::aNewDocumentIsEmpty()
{
    const SCLDocControl control;
    QObject parent;
    auto* document = new SCLDocument(&parent);
    QCOMPARE(document->parent(), &parent);
    QVERIFY(document->GetFileName().isEmpty());
    QVERIFY(document->Root() == nullptr);
    QVERIFY(!document->GetModified());
    QVERIFY(!document->GetUpdateIEDFlag());
    QVERIFY(control.GetDocumentList().isEmpty());
}

void SCLDocumentTest::aDocumentNeedsNoControl()
{
    QVERIFY(SCLDocControl::Instance() == nullptr);
    const SCLNamePool pool;
    SCLDocument document;
    const SignalLog log(&document);
    document.CreateRoot("SCL")->CreateChild("IED", -1, true);
    QCOMPARE(ElementText(document.Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true", "addElement <IED/>"}));
}

void SCLDocumentTest::theSignalsStandInTheirOrder()
{
    QStringList names;
    const QMetaObject& meta = SCLDocument::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Signal)
            names.append(method.name() + '(' + method.parameterNames().join(',') + ')');
    }
    QCOMPARE(names,
             QStringList({"sigFutaskTaskPrepared(future,strTitle)", "sigModifiedStateChanged()",
                          "sigAddElement(pSCLElement)", "sigDeleteElement(pSCLElement)",
                          "sigMoveElement(pSCLElementFrom,nRowFrom,nRowTo)",
                          "sigEditAttribute(pSCLElement,pSCLAttribute,strOldAttVal)",
                          "sigRemoveAttribute(pSCLElement,pSCLAttribute)",
                          "sigEditValue(pSCLElement)"}));
}

void SCLDocumentTest::setModifiedSendsOnlyWhatIsNew_data()
{
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("modified");
    QTest::addColumn<bool>("force");
    QTest::addColumn<int>("signalCount");
    QTest::newRow("set") << false << true << false << 1;
    QTest::newRow("set again") << true << true << false << 0;
    QTest::newRow("clear") << true << false << false << 1;
    QTest::newRow("clear again") << false << false << false << 0;
    QTest::newRow("force a change") << false << true << true << 1;
    QTest::newRow("force without a change") << true << true << true << 1;
    QTest::newRow("force a cleared state") << false << false << true << 1;
}

void SCLDocumentTest::setModifiedSendsOnlyWhatIsNew()
{
    QFETCH(bool, before);
    QFETCH(bool, modified);
    QFETCH(bool, force);
    QFETCH(int, signalCount);
    SCLDocument document;
    document.SetModified(before, false);
    int count = 0;
    connect(&document, &SCLDocument::sigModifiedStateChanged, this, [&] { ++count; });
    document.SetModified(modified, force);
    QCOMPARE(count, signalCount);
    QCOMPARE(document.GetModified(), modified);
}

void SCLDocumentTest::theStateIsNewWhenTheSignalGoesOut()
{
    SCLDocument document;
    const SignalLog log(&document);
    document.SetModified(true, false);
    document.SetModified(false, false);
    document.SetModified(false, true);
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true", "modifiedStateChanged false",
                                       "modifiedStateChanged false"}));
}

void SCLDocumentTest::twiceModifiedIsSentOnce()
{
    SCLDocument document;
    SignalLog log(&document);
    document.SetModified(true, false);
    document.SetModified(true, false);
    QCOMPARE(log.Take(), QStringList({"modifiedStateChanged true"}));
    document.SetModified(true, true);
    QCOMPARE(log.Take(), QStringList({"modifiedStateChanged true"}));
}

void SCLDocumentTest::createRootMakesAnSclRoot()
{
    const SCLDocControl control;
    SCLDocument document;
    SCLElement* root = document.CreateRoot();
    QCOMPARE(root, document.Root());
    QCOMPARE(ElementText(root), QString(g_newRoot));
    QVERIFY(root->GetParent("") == nullptr);
}

void SCLDocumentTest::createRootMarksAndSendsOnce()
{
    const SCLDocControl control;
    SCLDocument document;
    const SignalLog log(&document);
    document.CreateRoot();
    QVERIFY(document.GetModified());
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLDocumentTest::createRootOfAModifiedDocumentSendsNothing()
{
    const SCLDocControl control;
    SCLDocument document;
    document.SetModified(true, false);
    const SignalLog log(&document);
    document.CreateRoot();
    QVERIFY(document.GetModified());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocumentTest::createRootKeepsAnExistingRoot()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL a='1'><IED/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    QCOMPARE(document->CreateRoot(), root);
    QCOMPARE(ElementText(root), QString("<SCL a=\"1\"><IED/></SCL>"));
    QVERIFY(!document->GetModified());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocumentTest::createRootOfATagHasNoAttributes()
{
    const SCLDocControl control;
    SCLDocument document;
    const SignalLog log(&document);
    SCLElement* root = document.CreateRoot("Private");
    QCOMPARE(root, document.Root());
    QCOMPARE(ElementText(root), QString("<Private/>"));
    QCOMPARE(root->GetDocument(), &document);
    QVERIFY(root->GetParent("") == nullptr);
    QVERIFY(document.GetModified());
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLDocumentTest::createRootOfATagKeepsAnExistingRoot()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    QCOMPARE(document->CreateRoot("Private"), root);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(!document->GetModified());
    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("Private")), 0);
}

void SCLDocumentTest::theRootKnowsItsDocument()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL><IED/></SCL>");
    SCLDocument* second = control.Open("<SCL><IED/></SCL>");
    QCOMPARE(first->Root()->GetDocument(), first);
    QCOMPARE(At(second->Root(), "IED")->GetDocument(), second);
}

void SCLDocumentTest::theUpdateFlagIsKeptAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const SignalLog log(document);
    document->SetUpdateIEDFlag(true);
    QVERIFY(document->GetUpdateIEDFlag());
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    document->Root()->CreateChild("IED", -1, true);
    QVERIFY(document->SaveAs(control.Folder().Path("a.scd"), true, false));
    QVERIFY(document->GetUpdateIEDFlag());
    document->SetUpdateIEDFlag(false);
    QVERIFY(!document->GetUpdateIEDFlag());
}

void SCLDocumentTest::destructionDeletesTheTreeWithoutASignal()
{
    const SCLDocControl control;
    auto document = std::make_unique<SCLDocument>();
    document->CreateRoot()->CreateChild("IED", -1, false)->CreateChild("LN", -1, false);
    document->SetModified(false, false);
    const SignalLog log(document.get());
    document.reset();
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocumentTest::aChangeFollowsTheDocumentOfItsElement()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL><IED name='A'/></SCL>");
    SCLDocument* second = control.Open("<SCL/>");
    SignalLog log;
    log.Watch(first, "first");
    log.Watch(second, "second");
    SCLElement* ied = At(first->Root(), "IED");
    QVERIFY(first->Root()->DetachChild(ied, true));
    ied->SetAttribute("name", "B", true);
    QVERIFY(second->Root()->AttachChild(ied, -1, true));
    ied->SetAttribute("name", "C", true);
    QCOMPARE(
        log.Lines(),
        QStringList({"first: deleteElement <IED name=\"A\"/>", "first: modifiedStateChanged true",
                     "second: addElement <IED name=\"B\"/>", "second: modifiedStateChanged true",
                     "second: editAttribute IED name \"B\" -> \"C\""}));
}

void SCLDocumentTest::changesAreReportedAsOneOrderedLog()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    SignalLog log(document);
    SCLElement* first = root->CreateChild("IED", -1, true);
    first->SetAttribute("name", "A", true);
    first->SetAttribute("name", "B", true);
    root->CreateChild("IED", {{"name", "C"}}, -1, true);
    root->MoveChild("IED", 0, 1, true);
    first->SetValue("x", true);
    log.Mark("saved");
    document->SetModified(false, false);
    first->RemoveAttribute("name", true);
    root->RemoveChild(first, true);
    QCOMPARE(log.Lines(),
             QStringList({"addElement <IED/>", "modifiedStateChanged true",
                          "editAttribute IED name null -> \"A\"",
                          "editAttribute IED name \"A\" -> \"B\"", "addElement <IED name=\"C\"/>",
                          "moveElement IED 0 -> 1", "editValue IED \"x\"", "saved",
                          "modifiedStateChanged false", "removeAttribute IED name \"B\"",
                          "modifiedStateChanged true", "deleteElement <IED>x</IED>"}));
}

void SCLDocumentTest::iedChangesSteerTheProposedVersion_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("version");
    QTest::newRow("none") << ""
                          << "1.0";
    QTest::newRow("created") << "create"
                             << "1.1";
    QTest::newRow("created without notify") << "create silently"
                                            << "1.0";
    QTest::newRow("removed") << "remove"
                             << "1.1";
    QTest::newRow("removed without notify") << "remove silently"
                                            << "1.0";
    QTest::newRow("detached") << "detach"
                              << "1.1";
    QTest::newRow("attached") << "attach"
                              << "1.1";
    QTest::newRow("inside an added element") << "attach inside"
                                             << "1.0";
    QTest::newRow("another tag") << "create other"
                                 << "1.0";
    QTest::newRow("another case") << "create ied"
                                  << "1.0";
    QTest::newRow("renamed") << "rename"
                             << "1.0";
    QTest::newRow("moved") << "move"
                           << "1.0";
}

void SCLDocumentTest::iedChangesSteerTheProposedVersion()
{
    QFETCH(QString, change);
    QFETCH(QString, version);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/><IED name='B'/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* ied = At(root, "IED");
    std::unique_ptr<SCLElement> owner;
    if (change == "create") {
        root->CreateChild("IED", -1, true);
    } else if (change == "create silently") {
        root->CreateChild("IED", -1, false);
    } else if (change == "remove") {
        root->RemoveChild(ied, true);
    } else if (change == "remove silently") {
        root->RemoveChild(ied, false);
    } else if (change == "detach") {
        root->DetachChild(ied, true);
        owner.reset(ied);
    } else if (change == "attach") {
        root->AttachChild(new SCLElement("IED", nullptr, nullptr), -1, true);
    } else if (change == "attach inside") {
        auto* outer = new SCLElement("Private", nullptr, nullptr);
        outer->CreateChild("IED", -1, true);
        root->AttachChild(outer, -1, true);
        root->RemoveChild(outer, true);
    } else if (change == "create other") {
        root->CreateChild("Substation", -1, true);
    } else if (change == "create ied") {
        root->CreateChild("ied", -1, true);
    } else if (change == "rename") {
        ied->SetAttribute("name", "C", true);
    } else if (change == "move") {
        root->MoveChild("IED", 0, 1, true);
    }
    QCOMPARE(ProposedVersion(control, document), version);
}

void SCLDocumentTest::savingAndLoadingEndTheIedChange()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    document->Root()->CreateChild("IED", -1, true);
    QVERIFY(!document->SaveAs(control.Folder().Path("missing/a.scd"), true, false));
    QCOMPARE(ProposedVersion(control, document), QString("1.1"));
    QCOMPARE(ProposedVersion(control, document), QString("1.0"));

    document->Root()->CreateChild("IED", -1, true);
    const std::unique_ptr<SCLElement> lost(document->Root());
    QVERIFY(document->Open(control.Folder().Write("b.scd", "<SCL/>")));
    QCOMPARE(ProposedVersion(control, document), QString("1.0"));
}

QTEST_MAIN(SCLDocumentTest)
#include "SCLDocumentTest.moc"
