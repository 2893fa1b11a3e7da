// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

namespace
{

const char* const g_newRoot = "<SCL xmlns=\"http://www.iec.ch/61850/2003/SCL\""
                              " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
                              " xsi:schemaLocation=\"http://www.iec.ch/61850/2003/SCL SCL.xsd\"/>";

const char* const g_schema = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'"
                             " targetNamespace='http://www.iec.ch/61850/2003/SCL'>"
                             "<xs:element name='SCL'/></xs:schema>";

// Whether the pointer of the application shows that it waits.
bool IsWaiting()
{
    const QCursor* cursor = QApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
}

} // namespace

class SCLDocControlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Must stand first: no later function can see a process without a control.
    void thereIsNoInstanceBeforeAControlIsConstructed();
    void theControlIsTheInstanceWhileItLives();
    void theControlMakesAndOwnsTheNamePool();
    void aNewControlHasItsDefaults();
    void theToolIdIsKept();
    void theLastErrorIsKept();

    void createDocumentMakesAnSclRoot();
    void createDocumentAppendsBeforeItSends();
    void createDocumentWithoutNotifySendsNothing();
    void createDocumentWithANameSavesBeforeItSends();
    void createDocumentThatCannotBeSavedStaysOpenWithoutAName();

    void openDocumentAppendsAndSends();
    void openDocumentWithoutNotifySendsNothingOfItself();
    void openingAnOpenFileGivesItsDocument();
    void openingAFileThatCannotBeReadGivesNull_data();
    void openingAFileThatCannotBeReadGivesNull();
    void theLastErrorOutlivesLaterFailuresToOpen();

    void closeDocumentSendsAndDeletes();
    void closeDocumentWithoutNotifyDeletes();
    void aClosingDocumentIsCompleteButNoLongerListed();
    void closingNothingIsDone();
    void closingAForeignDocumentFails();
    void closingAModifiedDocumentAsksNothing();
    void theCursorWaitsWhileADocumentIsDeleted();
    void aSlotMayCloseTheDocumentThatIsBeingClosed();
    void aSlotMayCloseAnotherDocument();
    void aClosedFileCanBeOpenedAgain();

    void documentsAreListedInTheirOrder();
    void theDocumentListIsACopy();

    void lookForDocumentFindsHoweverThePathIsWritten();
    void lookForDocumentFollowsLinks();
    void lookForDocumentOfAMissingFileGoesByItsPath();
    void anEmptyNameMatchesNoDocument();
    void lookForDocumentGivesTheFirstInTheList();
    void lookForDocumentOfAnUnknownFileIsNull();

    void progressOfADocumentIsForwarded();
    void progressReachesTheControlBeforeLaterListeners();

    void destructionDeletesDocumentsWithoutASignal();
    void aControlMayBeConstructedAgain();
    void aSchemaEndsWithItsControl();
    void aSecondControlReplacesTheInstance();
};

void SCLDocControlTest::thereIsNoInstanceBeforeAControlIsConstructed()
{
    QVERIFY(SCLDocControl::Instance() == nullptr);
    QVERIFY(SCLNamePool::Instance() == nullptr);
    const SCLDocument document;
    QVERIFY(SCLDocControl::Instance() == nullptr);
}

void SCLDocControlTest::theControlIsTheInstanceWhileItLives()
{
    {
        const SCLDocControl control;
        QCOMPARE(SCLDocControl::Instance(), &control);
    }
    QVERIFY(SCLDocControl::Instance() == nullptr);
}

void SCLDocControlTest::theControlMakesAndOwnsTheNamePool()
{
    QPointer<SCLNamePool> pool;
    {
        const SCLDocControl control;
        pool = SCLNamePool::Instance();
        QVERIFY(!pool.isNull());
        QCOMPARE(pool->parent(), &control);
        QCOMPARE(int(pool->GetLastTagId()), 0);
    }
    QVERIFY(pool.isNull());
}

void SCLDocControlTest::aNewControlHasItsDefaults()
{
    QObject parent;
    auto* control = new SCLDocControl(&parent);
    QCOMPARE(control->parent(), &parent);
    QCOMPARE(control->GetToolId(), QString("TALVEN-CFG"));
    QVERIFY(control->GetLastError().isEmpty());
    QVERIFY(control->GetDocumentList().isEmpty());
    QVERIFY(!control->HasSclSchema());
}

void SCLDocControlTest::theToolIdIsKept()
{
    SCLDocControl control;
    control.SetToolId("  Tool 2.0 ");
    QCOMPARE(control.GetToolId(), QString("  Tool 2.0 "));
    control.SetToolId("");
    QCOMPARE(control.GetToolId(), QString(""));
}

void SCLDocControlTest::theLastErrorIsKept()
{
    SCLDocControl control;
    control.SetLastError("Row 1, Col 2: x");
    QCOMPARE(control.GetLastError(), QString("Row 1, Col 2: x"));
    control.SetLastError("");
    QCOMPARE(control.GetLastError(), QString(""));
}

void SCLDocControlTest::createDocumentMakesAnSclRoot()
{
    TestControl control;
    const SignalLog log(control.Get());
    SCLDocument* document = control->CreateDocument("", true);
    QCOMPARE(ElementText(document->Root()), QString(g_newRoot));
    QCOMPARE(document->Root()->GetDocument(), document);
    QVERIFY(document->GetModified());
    QVERIFY(document->GetFileName().isEmpty());
    QVERIFY(document->parent() == nullptr);
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(log.Lines(), QStringList({"documentOpened \"\""}));
}

void SCLDocControlTest::createDocumentAppendsBeforeItSends()
{
    TestControl control;
    QList<SCLDocument*> listed;
    SCLDocument* opened = nullptr;
    connect(control.Get(), &SCLDocControl::sigDocumentOpened, this, [&](SCLDocument* document) {
        opened = document;
        listed = control->GetDocumentList();
    });
    SCLDocument* document = control->CreateDocument("", true);
    QCOMPARE(opened, document);
    QCOMPARE(listed, QList<SCLDocument*>({document}));
}

void SCLDocControlTest::createDocumentWithoutNotifySendsNothing()
{
    TestControl control;
    const SignalLog log(control.Get());
    SCLDocument* document = control->CreateDocument("", false);
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocControlTest::createDocumentWithANameSavesBeforeItSends()
{
    TestControl control;
    const QString path = control.Folder().Path("new.scd");
    SignalLog log(control.Get());
    connect(control.Get(), &SCLDocControl::sigFutaskTaskPrepared, this,
            [&] { log.Mark(QStringLiteral("listed %1").arg(control->GetDocumentList().size())); });
    connect(control.Get(), &SCLDocControl::sigDocumentOpened, this, [&](SCLDocument* document) {
        log.Mark(document->GetModified() ? "modified" : "not modified");
        log.Mark(QFile::exists(path) ? "written" : "not written");
    });
    SCLDocument* document = control->CreateDocument(path, true);
    QCOMPARE(document->GetFileName(), path);
    QVERIFY(document->Root()->GetFirstChild("Header") != nullptr);
    QCOMPARE(log.Lines(), QStringList({"control taskPrepared \"Saving\"", "listed 1",
                                       "documentOpened \"new.scd\"", "not modified", "written"}));
}

void SCLDocControlTest::createDocumentThatCannotBeSavedStaysOpenWithoutAName()
{
    TestControl control;
    const SignalLog log(control.Get());
    SCLDocument* document = control->CreateDocument(control.Folder().Path("missing/new.scd"), true);
    QVERIFY(document != nullptr);
    QVERIFY(document->GetFileName().isEmpty());
    QVERIFY(document->GetModified());
    QCOMPARE(ElementText(document->Root()), QString(g_newRoot));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(log.Lines(), QStringList({"documentOpened \"\""}));
}

void SCLDocControlTest::openDocumentAppendsAndSends()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL><IED/></SCL>");
    SignalLog log(control.Get());
    connect(control.Get(), &SCLDocControl::sigDocumentOpened, this, [&](SCLDocument* document) {
        log.Mark(ElementText(document->Root()));
        log.Mark(control->GetDocumentList().contains(document) ? "listed" : "not listed");
    });
    SCLDocument* document = control->OpenDocument(path, true);
    QCOMPARE(document->GetFileName(), path);
    QVERIFY(!document->GetModified());
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(log.Lines(), QStringList({"control taskPrepared \"Parsing\"",
                                       "documentOpened \"a.scd\"", "<SCL><IED/></SCL>", "listed"}));
}

void SCLDocControlTest::openDocumentWithoutNotifySendsNothingOfItself()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL/>");
    const SignalLog log(control.Get());
    QVERIFY(control->OpenDocument(path, false) != nullptr);
    QCOMPARE(log.Lines(), QStringList({"control taskPrepared \"Parsing\""}));
}

void SCLDocControlTest::openingAnOpenFileGivesItsDocument()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL/>");
    SCLDocument* document = control->OpenDocument(path, false);
    document->Root()->CreateChild("IED", -1, false);
    const SignalLog log(control.Get());
    QCOMPARE(control->OpenDocument(path, true), document);
    QCOMPARE(control->OpenDocument(control.Folder().Path("./x/../a.scd"), true), document);
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocControlTest::openingAFileThatCannotBeReadGivesNull_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("parsed");
    QTest::newRow("no name") << "" << false;
    QTest::newRow("a missing file") << "missing.scd" << false;
    QTest::newRow("a folder") << "." << false;
    QTest::newRow("an empty file") << "empty.scd" << true;
    QTest::newRow("no SCL") << "other.scd" << true;
    QTest::newRow("cut off") << "cut.scd" << true;
}

void SCLDocControlTest::openingAFileThatCannotBeReadGivesNull()
{
    QFETCH(QString, name);
    QFETCH(bool, parsed);
    TestControl control;
    control.Folder().Write("empty.scd", "");
    control.Folder().Write("other.scd", "<other/>");
    control.Folder().Write("cut.scd", "<SCL><IED>");
    control->SetLastError("earlier");
    const SignalLog log(control.Get());
    const QString path = name.isEmpty() ? name : control.Folder().Path(name);
    QVERIFY(control->OpenDocument(path, true) == nullptr);
    QVERIFY(control->GetDocumentList().isEmpty());
    QCOMPARE(control->GetLastError().startsWith("Row "), parsed);
    QCOMPARE(control->GetLastError() == "earlier", !parsed);
    QCOMPARE(log.Lines(),
             parsed ? QStringList({"control taskPrepared \"Parsing\""}) : QStringList());
}

void SCLDocControlTest::theLastErrorOutlivesLaterFailuresToOpen()
{
    TestControl control;
    QVERIFY(control->OpenDocument(control.Folder().Write("bad.scd", "<SCL>"), true) == nullptr);
    const QString error = control->GetLastError();
    QVERIFY(error.startsWith("Row "));
    QVERIFY(control->OpenDocument(control.Folder().Path("missing.scd"), true) == nullptr);
    QCOMPARE(control->GetLastError(), error);
    QVERIFY(control->OpenDocument(control.Folder().Write("good.scd", "<SCL/>"), true) != nullptr);
    QCOMPARE(control->GetLastError(), error);
}

void SCLDocControlTest::closeDocumentSendsAndDeletes()
{
    TestControl control;
    const QPointer<SCLDocument> document(control.Open("<SCL/>"));
    SignalLog log(control.Get());
    connect(document.data(), &QObject::destroyed, this, [&] { log.Mark("destroyed"); });
    QVERIFY(control->CloseDocument(document, true));
    QVERIFY(document.isNull());
    QVERIFY(control->GetDocumentList().isEmpty());
    QCOMPARE(log.Lines(), QStringList({"documentAboutToBeClosed \"1.scd\"", "destroyed"}));
}

void SCLDocControlTest::closeDocumentWithoutNotifyDeletes()
{
    TestControl control;
    const QPointer<SCLDocument> document(control.Open("<SCL/>"));
    const SignalLog log(control.Get());
    QVERIFY(control->CloseDocument(document, false));
    QVERIFY(document.isNull());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocControlTest::aClosingDocumentIsCompleteButNoLongerListed()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLDocument* other = control.Open("<SCL/>");
    QStringList seen;
    connect(
        control.Get(), &SCLDocControl::sigDocumentAboutToBeClosed, this, [&](SCLDocument* closing) {
            seen.append(closing == document ? "the document" : "another");
            seen.append(ElementText(closing->Root()));
            seen.append(control->LookForDocument(closing->GetFileName()) == nullptr ? "not found"
                                                                                    : "found");
            seen.append(control->GetDocumentList() == QList<SCLDocument*>({other}) ? "not listed"
                                                                                   : "listed");
        });
    QVERIFY(control->CloseDocument(document, true));
    QCOMPARE(seen, QStringList({"the document", "<SCL><IED name=\"A\"/></SCL>", "not found",
                                "not listed"}));
}

void SCLDocControlTest::closingNothingIsDone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(control.Get());
    QVERIFY(control->CloseDocument(nullptr, true));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocControlTest::closingAForeignDocumentFails()
{
    TestControl control;
    const QPointer<SCLDocument> foreign(new SCLDocument);
    foreign->CreateRoot();
    const SignalLog log(control.Get());
    QVERIFY(!control->CloseDocument(foreign, true));
    QVERIFY(!foreign.isNull());
    QCOMPARE(ElementText(foreign->Root()), QString(g_newRoot));
    QCOMPARE(log.Lines(), QStringList());
    delete foreign;
}

void SCLDocControlTest::closingAModifiedDocumentAsksNothing()
{
    TestControl control;
    const QPointer<SCLDocument> document(control->CreateDocument("", false));
    QVERIFY(document->GetModified());
    const SignalLog documentLog(document.data());
    QVERIFY(control->CloseDocument(document, true));
    QVERIFY(document.isNull());
    QCOMPARE(documentLog.Lines(), QStringList());
}

void SCLDocControlTest::theCursorWaitsWhileADocumentIsDeleted()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    QVERIFY(!IsWaiting());
    QStringList seen;
    const auto look = [&](const QString& when) {
        seen.append(when + (IsWaiting() ? " waiting" : " not waiting"));
    };
    connect(control.Get(), &SCLDocControl::sigDocumentAboutToBeClosed, this,
            [&] { look("closing"); });
    connect(document, &QObject::destroyed, this, [&] { look("destroyed"); });
    QVERIFY(control->CloseDocument(document, true));
    look("closed");
    QCOMPARE(seen, QStringList({"closing not waiting", "destroyed waiting", "closed not waiting"}));
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void SCLDocControlTest::aSlotMayCloseTheDocumentThatIsBeingClosed()
{
    TestControl control;
    const QPointer<SCLDocument> document(control.Open("<SCL/>"));
    bool closedAgain = true;
    connect(control.Get(), &SCLDocControl::sigDocumentAboutToBeClosed, this,
            [&](SCLDocument* closing) { closedAgain = control->CloseDocument(closing, true); });
    QVERIFY(control->CloseDocument(document, true));
    QVERIFY(!closedAgain);
    QVERIFY(document.isNull());
}

void SCLDocControlTest::aSlotMayCloseAnotherDocument()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL/>");
    SCLDocument* second = control.Open("<SCL/>");
    SCLDocument* third = control.Open("<SCL/>");
    const SignalLog log(control.Get());
    connect(control.Get(), &SCLDocControl::sigDocumentAboutToBeClosed, this,
            [&](SCLDocument* closing) {
                if (closing == second)
                    control->CloseDocument(first, true);
            });
    QVERIFY(control->CloseDocument(second, true));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({third}));
    QCOMPARE(log.Lines(), QStringList({"documentAboutToBeClosed \"2.scd\"",
                                       "documentAboutToBeClosed \"1.scd\""}));
}

void SCLDocControlTest::aClosedFileCanBeOpenedAgain()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL/>");
    SCLDocument* document = control->OpenDocument(path, false);
    document->Root()->CreateChild("IED", -1, false);
    QVERIFY(control->CloseDocument(document, false));
    QVERIFY(control->LookForDocument(path) == nullptr);
    QCOMPARE(ElementText(control->OpenDocument(path, false)->Root()), QString("<SCL/>"));
}

void SCLDocControlTest::documentsAreListedInTheirOrder()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL/>");
    SCLDocument* second = control->CreateDocument("", false);
    SCLDocument* third = control.Open("<SCL/>");
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({first, second, third}));
    QVERIFY(control->CloseDocument(second, false));
    SCLDocument* fourth = control.Open("<SCL/>");
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({first, third, fourth}));
}

void SCLDocControlTest::theDocumentListIsACopy()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    QList<SCLDocument*> documents = control->GetDocumentList();
    documents.clear();
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({document}));
    const QList<SCLDocument*> walked = control->GetDocumentList();
    for (SCLDocument* each : walked)
        QVERIFY(control->CloseDocument(each, true));
    QVERIFY(control->GetDocumentList().isEmpty());
}

void SCLDocControlTest::lookForDocumentFindsHoweverThePathIsWritten()
{
    TestControl control;
    const TempFolder& folder = control.Folder();
    QVERIFY(QDir(folder.Path()).mkdir("sub"));
    SCLDocument* document = control->OpenDocument(folder.Write("a.scd", "<SCL/>"), false);
    QCOMPARE(control->LookForDocument(folder.Path("a.scd")), document);
    QCOMPARE(control->LookForDocument(folder.Path("./a.scd")), document);
    QCOMPARE(control->LookForDocument(folder.Path() + "//a.scd"), document);
    QCOMPARE(control->LookForDocument(folder.Path("sub/../a.scd")), document);
    QCOMPARE(control->LookForDocument(QDir::current().relativeFilePath(folder.Path("a.scd"))),
             document);
}

void SCLDocControlTest::lookForDocumentFollowsLinks()
{
    TestControl control;
    const TempFolder& folder = control.Folder();
    SCLDocument* document = control->OpenDocument(folder.Write("a.scd", "<SCL/>"), false);
    QVERIFY(QFile::link(folder.Path("a.scd"), folder.Path("link.scd")));
    QCOMPARE(control->LookForDocument(folder.Path("link.scd")), document);
    QCOMPARE(control->OpenDocument(folder.Path("link.scd"), true), document);
    // A copy is another file.
    QVERIFY(QFile::copy(folder.Path("a.scd"), folder.Path("copy.scd")));
    QVERIFY(control->LookForDocument(folder.Path("copy.scd")) == nullptr);
}

void SCLDocControlTest::lookForDocumentOfAMissingFileGoesByItsPath()
{
    TestControl control;
    const TempFolder& folder = control.Folder();
    SCLDocument* document = control->OpenDocument(folder.Write("gone.scd", "<SCL/>"), false);
    QVERIFY(QFile::remove(folder.Path("gone.scd")));
    QCOMPARE(control->LookForDocument(folder.Path("gone.scd")), document);
    QCOMPARE(control->LookForDocument(folder.Path("./x/../gone.scd")), document);
    QVERIFY(control->LookForDocument(folder.Path("missing.scd")) == nullptr);
    QVERIFY(control->LookForDocument(folder.Write("other.scd", "<SCL/>")) == nullptr);
    QVERIFY(control->OpenDocument(folder.Path("missing.scd"), true) == nullptr);
}

void SCLDocControlTest::anEmptyNameMatchesNoDocument()
{
    TestControl control;
    control->CreateDocument("", false);
    control.Open("<SCL/>");
    QVERIFY(control->LookForDocument("") == nullptr);
    QVERIFY(control->LookForDocument(QString()) == nullptr);
    QVERIFY(control->LookForDocument(control.Folder().Path("missing.scd")) == nullptr);
    QVERIFY(control->LookForDocument(".") == nullptr);
    QVERIFY(control->OpenDocument("", true) == nullptr);
}

void SCLDocControlTest::lookForDocumentGivesTheFirstInTheList()
{
    TestControl control;
    const QString path = control.Folder().Path("a.scd");
    SCLDocument* first = control->CreateDocument("", false);
    SCLDocument* second = control->CreateDocument("", false);
    QVERIFY(second->SaveAs(path, true, false));
    QCOMPARE(control->LookForDocument(path), second);
    QVERIFY(first->SaveAs(path, true, false));
    QCOMPARE(control->LookForDocument(path), first);
}

void SCLDocControlTest::lookForDocumentOfAnUnknownFileIsNull()
{
    TestControl control;
    QVERIFY(control->LookForDocument(control.Folder().Write("a.scd", "<SCL/>")) == nullptr);
    control.Open("<SCL/>");
    QVERIFY(control->LookForDocument(control.Folder().Path("a.scd")) == nullptr);
    QVERIFY(control->LookForDocument(control.Folder().Path("A.SCD")) == nullptr);
}

void SCLDocControlTest::progressOfADocumentIsForwarded()
{
    TestControl control;
    const SignalLog log(control.Get());
    SCLDocument foreign;
    QVERIFY(foreign.Open(control.Folder().Write("a.scd", "<SCL/>")));
    QVERIFY(foreign.SaveAs(control.Folder().Path("b.scd"), false, false));
    QCOMPARE(log.Lines(),
             QStringList({"control taskPrepared \"Parsing\"", "control taskPrepared \"Saving\""}));
}

void SCLDocControlTest::progressReachesTheControlBeforeLaterListeners()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SignalLog log;
    log.Watch(document, "document");
    log.Watch(control.Get());
    QVERIFY(document->SaveAs(control.Folder().Path("a.scd"), false, false));
    QCOMPARE(
        log.Lines(),
        QStringList({"document: modifiedStateChanged true", "control taskPrepared \"Saving\"",
                     "document: taskPrepared \"Saving\"", "document: modifiedStateChanged false"}));
}

void SCLDocControlTest::destructionDeletesDocumentsWithoutASignal()
{
    auto control = std::make_unique<SCLDocControl>();
    const QPointer<SCLDocument> first(control->CreateDocument("", false));
    const QPointer<SCLDocument> second(control->CreateDocument("", false));
    first->Root()->CreateChild("IED", -1, false)->CreateChild("LN", -1, false);
    SignalLog log(control.get());
    log.Watch(first.data(), "first");
    log.Watch(second.data(), "second");
    control.reset();
    QVERIFY(first.isNull());
    QVERIFY(second.isNull());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocControlTest::aControlMayBeConstructedAgain()
{
    for (int life = 0; life < 3; ++life) {
        TestControl control;
        QCOMPARE(SCLDocControl::Instance(), control.Get());
        QCOMPARE(control->GetToolId(), QString("TALVEN-CFG"));
        QVERIFY(control->GetLastError().isEmpty());
        QVERIFY(control->GetDocumentList().isEmpty());
        QCOMPARE(int(SCLNamePool::Instance()->GetLastTagId()), 0);
        const SignalLog log(control.Get());
        SCLDocument* document =
            control->OpenDocument(control.Folder().Write("a.scd", "<SCL><IED/></SCL>"), true);
        QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
        QVERIFY(document->SaveAs(control.Folder().Path("b.scd"), true, false));
        QCOMPARE(log.Lines(),
                 QStringList({"control taskPrepared \"Parsing\"", "documentOpened \"a.scd\"",
                              "control taskPrepared \"Saving\""}));
        control->SetToolId("other");
        control->SetLastError("error");
    }
    QVERIFY(SCLDocControl::Instance() == nullptr);
}

void SCLDocControlTest::aSchemaEndsWithItsControl()
{
    const TempFile schema(g_schema, "SCL.xsd");
    for (int life = 0; life < 2; ++life) {
        SCLDocControl control;
        QVERIFY(!control.HasSclSchema());
        QVERIFY(!control.RegisterSchema(""));
        QVERIFY(!control.RegisterSchema(schema.Path() + ".missing"));
        QVERIFY(!control.HasSclSchema());
        QVERIFY(control.RegisterSchema(schema.Path()));
        QVERIFY(control.HasSclSchema());
    }
}

void SCLDocControlTest::aSecondControlReplacesTheInstance()
{
    auto first = std::make_unique<SCLDocControl>();
    const SCLDocControl second;
    QCOMPARE(SCLDocControl::Instance(), &second);
    first.reset();
    QCOMPARE(SCLDocControl::Instance(), &second);
    QCOMPARE(SCLNamePool::Instance()->parent(), &second);
}

QTEST_MAIN(SCLDocControlTest)
#include "SCLDocControlTest.moc"
