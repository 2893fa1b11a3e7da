// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLNamePool.h>

#include <QCursor>
#include <QFile>
#include <QFuture>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const QByteArray stampedHeader =
    "  <Header toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"out\"/>\n";

/// A document of that text, saved as out.scd. Null if the save fails.
QByteArray Saved(TestControl& control, const QByteArray& xml)
{
    const QString path = control.Folder().Path("out.scd");
    return control.Open(xml)->SaveAs(path, false, false) ? ReadFile(path) : QByteArray();
}

/// Registers a schema in which SCL holds Header, IED and Text, and IED holds LN0 before LN.
void RegisterOrder(TestControl& control)
{
    const QString path = control.Folder().Write(
        "order.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                     "targetNamespace='http://www.iec.ch/61850/2003/SCL' "
                     "elementFormDefault='qualified'>"
                     "<xs:element name='SCL'><xs:complexType><xs:sequence>"
                     "<xs:element name='Header'/>"
                     "<xs:element name='IED'><xs:complexType><xs:sequence>"
                     "<xs:element name='LN0'/><xs:element name='LN'/>"
                     "</xs:sequence></xs:complexType></xs:element>"
                     "<xs:element name='Text'/>"
                     "</xs:sequence></xs:complexType></xs:element>"
                     "</xs:schema>");
    if (!control->RegisterSchema(path) || !control->HasSclSchema())
        qFatal("the schema of the test does not load");
}

/// A save has one step more than its range, as the root is written too but is no descendant of its
/// own. Qt 6 takes no value beyond the range, Qt 5 does.
constexpr int stepsBeyondRange = QT_VERSION < QT_VERSION_CHECK(6, 0, 0) ? 1 : 0;

} // namespace

class SCLDocument_SaveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewDocumentWithAFileNameIsSavedAtOnce();
    void aNewDocumentThatCannotBeSavedStaysOpenWithoutName();
    void aNewDocumentHasThreeNamespaceAttributesAndOneStampedHeader();

    void theFileHoldsWhatTheTreeHolds_data();
    void theFileHoldsWhatTheTreeHolds();
    void whatAFileHoldsBesideItsTreeIsGone();
    void childrenStandInSchemaOrderAndUnknownOnesBehind();
    void withoutASchemaGroupsStandInTheOrderOfTheirTagIds();
    void reservedCharactersReadBackEqual_data();
    void reservedCharactersReadBackEqual();
    void anotherEncodingBecomesUtf8();
    void savingTwiceGivesTheSameText();
    void aSavedFileReadsBackAsTheSameTree();
    void writingWithoutChildrenWritesNeitherTextNorChildren();

    void theHeaderIsStampedInPlace();
    void theToolIdGoesIntoTheHeader();
    void theIdIsTheFileNameUpToItsFirstDot_data();
    void theIdIsTheFileNameUpToItsFirstDot();
    void theFirstOfTwoHeadersIsStamped();

    void aFileThatCannotBeOpenedLeavesEverythingAsItWas_data();
    void aFileThatCannotBeOpenedLeavesEverythingAsItWas();
    void aDocumentWithoutRootIsNotSavedAndTouchesNoFile();
    void aHeaderThatCannotBeCreatedLeavesTheFileEmpty();
    void anErrorOfTheDeviceIsNotNoticed();
    void savingLeavesTheLastErrorAlone();

    void savingEndsTheModifiedStateAndSetsTheName_data();
    void savingEndsTheModifiedStateAndSetsTheName();
    void signalsOfASaveComeInOrder();
    void anUnchangedDocumentIsSavedWithoutModifiedSignal();
    void theFileIsWrittenInPlace();

    void theProgressTaskIsAnnouncedBeforeItStarts();
    void everyElementWrittenIsOneStepOfProgress();
    void aSlotDuringTheSaveSeesTheModifiedState();
    void theWaitCursorIsShownWhileAFileIsWritten();

    void threeThousandLevelsAreSaved();
};

void SCLDocument_SaveTest::aNewDocumentWithAFileNameIsSavedAtOnce()
{
    TestControl control;
    const QString path = control.Folder().Path("new.scd");
    SignalLog log(control.Get());

    SCLDocument* document = control->CreateDocument(path, true);

    QVERIFY(!document->GetModified());
    QCOMPARE(document->GetFileName(), path);
    QCOMPARE(ElementText(document->Root()->GetFirstChild("Header")),
             QString("<Header toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"new\"/>"));
    QVERIFY(ReadFile(path).startsWith(declaration + "<SCL xmlns="));
    QCOMPARE(log.Lines(),
             QStringList({"control taskPrepared \"Saving\"", "documentOpened \"new.scd\""}));
}

void SCLDocument_SaveTest::aNewDocumentThatCannotBeSavedStaysOpenWithoutName()
{
    TestControl control;
    SignalLog log(control.Get());

    SCLDocument* document = control->CreateDocument(control.Folder().Path("missing/a.scd"), true);

    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>{document});
    QCOMPARE(document->GetFileName(), QString());
    QVERIFY(document->GetModified());
    QCOMPARE(document->Root()->GetChildCount(true), 0);
    QCOMPARE(log.Lines(), QStringList("documentOpened \"\""));
}

void SCLDocument_SaveTest::aNewDocumentHasThreeNamespaceAttributesAndOneStampedHeader()
{
    TestControl control;
    const QString path = control.Folder().Path("a.b.scd");
    SCLDocument document;
    document.CreateRoot();

    QVERIFY(document.SaveAs(path, true, false));

    QCOMPARE(ReadFile(path),
             declaration + "<SCL xmlns=\"http://www.iec.ch/61850/2003/SCL\" "
                           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                           "xsi:schemaLocation=\"http://www.iec.ch/61850/2003/SCL SCL.xsd\">\n"
                           "  <Header toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"a\"/>\n"
                           "</SCL>\n");
}

void SCLDocument_SaveTest::theFileHoldsWhatTheTreeHolds_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("an element with attributes only has the empty form")
        << QByteArray("<SCL><Header/><IED name=\"A\" desc=\"\"></IED></SCL>")
        << QByteArray("  <IED name=\"A\" desc=\"\"/>\n");
    QTest::newRow("text stands on the line of its element, without added blanks")
        << QByteArray("<SCL><Header/><Val>x</Val></SCL>") << QByteArray("  <Val>x</Val>\n");
    QTest::newRow("blanks around text stay") << QByteArray("<SCL><Header/><Val> x\ny </Val></SCL>")
                                             << QByteArray("  <Val> x\ny </Val>\n");
    QTest::newRow("two blanks a level")
        << QByteArray("<SCL><Header/><IED><AccessPoint><Server/></AccessPoint></IED></SCL>")
        << QByteArray(
               "  <IED>\n    <AccessPoint>\n      <Server/>\n    </AccessPoint>\n  </IED>\n");
    QTest::newRow("text of an element with children is left out")
        << QByteArray("<SCL><Header/><Text>x<P>y</P>z</Text></SCL>")
        << QByteArray("  <Text>\n    <P>y</P>\n  </Text>\n");
    QTest::newRow("prefixes are part of the name")
        << QByteArray("<SCL><Header/><x:P x:a=\"1\" xmlns:x=\"http://a\"/></SCL>")
        << QByteArray("  <x:P x:a=\"1\" xmlns:x=\"http://a\"/>\n");
    QTest::newRow("characters of any script")
        << QByteArray("<SCL><Header/><IED name=\"\xE7\xAB\x99\">\xF0\xA0\x80\x8B</IED></SCL>")
        << QByteArray("  <IED name=\"\xE7\xAB\x99\">\xF0\xA0\x80\x8B</IED>\n");
}

void SCLDocument_SaveTest::theFileHoldsWhatTheTreeHolds()
{
    QFETCH(QByteArray, xml);
    QFETCH(QByteArray, body);
    TestControl control;
    QCOMPARE(Saved(control, xml), declaration + "<SCL>\n" + stampedHeader + body + "</SCL>\n");
}

void SCLDocument_SaveTest::whatAFileHoldsBesideItsTreeIsGone()
{
    TestControl control;
    QCOMPARE(Saved(control, "<?xml version=\"1.0\" standalone=\"yes\"?>\n"
                            "<!DOCTYPE SCL [<!ENTITY e \"v\">]><!-- a --><?b c?>\r\n"
                            "<SCL><!-- d -->\r\n\t<Header/><?e f?>\r\n</SCL><!-- g -->"),
             declaration + "<SCL>\n" + stampedHeader + "</SCL>\n");
}

void SCLDocument_SaveTest::childrenStandInSchemaOrderAndUnknownOnesBehind()
{
    TestControl control;
    RegisterOrder(control);
    QCOMPARE(Saved(control, "<SCL><Private/><Text>t</Text><IED><Foreign/><LN i=\"1\"/><LN0/>"
                            "<LN i=\"2\"/></IED><Header/></SCL>"),
             declaration + "<SCL>\n" + stampedHeader +
                 "  <IED>\n    <LN0/>\n    <LN i=\"1\"/>\n    <LN i=\"2\"/>\n    <Foreign/>\n"
                 "  </IED>\n  <Text>t</Text>\n  <Private/>\n</SCL>\n");
}

void SCLDocument_SaveTest::withoutASchemaGroupsStandInTheOrderOfTheirTagIds()
{
    TestControl control;
    QCOMPARE(Saved(control, "<SCL><LN i=\"1\"/><Header/><LN0/><LN i=\"2\"/></SCL>"),
             declaration + "<SCL>\n  <LN i=\"1\"/>\n  <LN i=\"2\"/>\n" + stampedHeader +
                 "  <LN0/>\n</SCL>\n");
}

void SCLDocument_SaveTest::reservedCharactersReadBackEqual_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("markup") << "<a b=\"c\">&amp;'</a>";
    QTest::newRow("end of CDATA") << "]]>";
    QTest::newRow("comment") << "<!-- -- -->";
    QTest::newRow("no-break space and others")
        << QString::fromUtf8("\xC2\xA0\xE2\x80\xA8\xEF\xBB\xBF");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("line break and tab") << "a\nb\tc";
}

void SCLDocument_SaveTest::reservedCharactersReadBackEqual()
{
    QFETCH(QString, text);
    TestControl control;
    SCLDocument* document = control.Create();
    SCLElement* ied = document->Root()->CreateChild("IED", -1, false);
    ied->SetAttribute("desc", text, false);
    ied->SetValue(text, false);
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(document->SaveAs(path, false, false));

    SCLDocument* again = control->OpenDocument(path, false);

    QVERIFY2(again, qPrintable(control->GetLastError()));
    QCOMPARE(At(again->Root(), "IED")->GetAttribute("desc"), text);
    QCOMPARE(At(again->Root(), "IED")->GetValue(), text);
}

void SCLDocument_SaveTest::anotherEncodingBecomesUtf8()
{
    TestControl control;
    QCOMPARE(Saved(control, "<?xml version=\"1.0\" encoding=\"GB2312\"?>"
                            "<SCL><Header/><IED name=\"\xD5\xBE\"/></SCL>"),
             declaration + "<SCL>\n" + stampedHeader + "  <IED name=\"\xE7\xAB\x99\"/>\n</SCL>\n");
}

void SCLDocument_SaveTest::savingTwiceGivesTheSameText()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name=\"A\"><LN>x</LN></IED></SCL>");
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(document->SaveAs(path, true, false));
    const QByteArray first = ReadFile(path);
    QVERIFY(document->SaveAs(path, true, false));
    QCOMPARE(ReadFile(path), first);
    QVERIFY(!first.isEmpty());
}

void SCLDocument_SaveTest::aSavedFileReadsBackAsTheSameTree()
{
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL xmlns=\"http://a\"><Header id=\"old\"/><IED name=\"A\"><LN>x</LN><LN/>"
                     "</IED><IED name=\"B\"/></SCL>");
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(document->SaveAs(path, false, false));
    SCLDocument* again = control->OpenDocument(path, false);
    QVERIFY(again);
    QCOMPARE(ElementText(again->Root()), ElementText(document->Root()));
}

void SCLDocument_SaveTest::writingWithoutChildrenWritesNeitherTextNorChildren()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL a=\"1\">x<IED/></SCL>");
    QCOMPARE(WrittenText(root, false), QString("<SCL a=\"1\"/>"));
    QCOMPARE(WrittenText(control.OpenRoot("<SCL>x</SCL>"), false), QString("<SCL/>"));
}

void SCLDocument_SaveTest::theHeaderIsStampedInPlace()
{
    TestControl control;
    QCOMPARE(Saved(control, "<SCL><Header desc=\"d\" id=\"old\" x=\"1\" toolID=\"other\"/></SCL>"),
             declaration + "<SCL>\n  <Header desc=\"d\" id=\"out\" x=\"1\" toolID=\"TALVEN-CFG\" "
                           "nameStructure=\"IEDName\"/>\n</SCL>\n");
}

void SCLDocument_SaveTest::theToolIdGoesIntoTheHeader()
{
    TestControl control;
    control->SetToolId("tool <1>");
    SCLDocument* document = control.Open("<SCL/>");
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), false, false));
    QCOMPARE(At(document->Root(), "Header")->GetAttribute("toolID"), QString("tool <1>"));
}

void SCLDocument_SaveTest::theIdIsTheFileNameUpToItsFirstDot_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id");
    QTest::newRow("one dot") << "station.scd"
                             << "station";
    QTest::newRow("two dots") << "a.b.scd"
                              << "a";
    QTest::newRow("no dot") << "station"
                            << "station";
    QTest::newRow("a dot first") << ".scd"
                                 << "";
    QTest::newRow("any script") << QString::fromUtf8("\xE7\xAB\x99 1.scd")
                                << QString::fromUtf8("\xE7\xAB\x99 1");
}

void SCLDocument_SaveTest::theIdIsTheFileNameUpToItsFirstDot()
{
    QFETCH(QString, name);
    QFETCH(QString, id);
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    QVERIFY(document->SaveAs(control.Folder().Path(name), false, false));
    SCLAttribute* attribute = At(document->Root(), "Header")->FindAttribute("id");
    QVERIFY(attribute);
    QCOMPARE(attribute->GetValue(), id);
}

void SCLDocument_SaveTest::theFirstOfTwoHeadersIsStamped()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/><Header/></SCL>");
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), false, false));
    QCOMPARE(ElementText(document->Root()),
             QString("<SCL><Header toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"out\"/>"
                     "<Header/></SCL>"));
}

void SCLDocument_SaveTest::aFileThatCannotBeOpenedLeavesEverythingAsItWas_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("modified");
    QTest::newRow("missing folder, modified") << "missing/a.scd" << true;
    QTest::newRow("missing folder, not modified") << "missing/a.scd" << false;
    QTest::newRow("a folder") << "." << true;
    QTest::newRow("no name") << QString() << true;
}

void SCLDocument_SaveTest::aFileThatCannotBeOpenedLeavesEverythingAsItWas()
{
    QFETCH(QString, name);
    QFETCH(bool, modified);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const QString before = document->GetFileName();
    document->SetModified(modified, false);
    SignalLog log(document);

    QVERIFY(!document->SaveAs(name.isEmpty() ? name : control.Folder().Path(name), true, true));

    QCOMPARE(document->GetFileName(), before);
    QCOMPARE(document->GetModified(), modified);
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocument_SaveTest::aDocumentWithoutRootIsNotSavedAndTouchesNoFile()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "kept");
    SCLDocument document;
    SignalLog log(&document);
    QVERIFY(!document.SaveAs(path, true, true));
    QCOMPARE(ReadFile(path), QByteArray("kept"));
    QCOMPARE(document.GetFileName(), QString());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocument_SaveTest::aHeaderThatCannotBeCreatedLeavesTheFileEmpty()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    document->SetModified(true, false);
    const QString path = control.Folder().Write("a.scd", "lost");
    Internal::SCLNamePool* pool = Internal::SCLNamePool::Instance();
    for (int i = 0; pool->AddTagToNamePool("t" + QString::number(i)) != 0; ++i)
        ;

    QVERIFY(!document->SaveAs(path, true, false));

    QCOMPARE(ReadFile(path), QByteArray(""));
    QVERIFY(document->GetModified());
    QVERIFY(document->GetFileName() != path);
}

void SCLDocument_SaveTest::anErrorOfTheDeviceIsNotNoticed()
{
    const QString fullDevice = "/dev/full";
    if (!QFile::exists(fullDevice))
        return;
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    document->SetModified(true, false);
    QVERIFY(document->SaveAs(fullDevice, false, false));
    QVERIFY(!document->GetModified());
}

void SCLDocument_SaveTest::savingLeavesTheLastErrorAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    control->SetLastError("an older error");
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), false, false));
    QVERIFY(!document->SaveAs(control.Folder().Path("missing/a.scd"), false, false));
    QCOMPARE(control->GetLastError(), QString("an older error"));
}

void SCLDocument_SaveTest::savingEndsTheModifiedStateAndSetsTheName_data()
{
    QTest::addColumn<bool>("rememberName");
    QTest::newRow("remembered") << true;
    QTest::newRow("a copy under another name counts as saved") << false;
}

void SCLDocument_SaveTest::savingEndsTheModifiedStateAndSetsTheName()
{
    QFETCH(bool, rememberName);
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const QString before = document->GetFileName();
    const QString path = control.Folder().Path("out.scd");
    document->Root()->SetAttribute("version", "2007", true);
    QVERIFY(document->GetModified());

    QVERIFY(document->SaveAs(path, rememberName, false));

    QVERIFY(!document->GetModified());
    QCOMPARE(document->GetFileName(), rememberName ? path : before);
    QCOMPARE(At(document->Root(), "Header")->GetAttribute("id"), QString("out"));
}

void SCLDocument_SaveTest::signalsOfASaveComeInOrder()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SignalLog log;
    log.Watch(control.Get());
    log.Watch(document);

    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), true, false));

    QCOMPARE(log.Lines(),
             QStringList({"modifiedStateChanged true", "control taskPrepared \"Saving\"",
                          "taskPrepared \"Saving\"", "modifiedStateChanged false"}));
}

void SCLDocument_SaveTest::anUnchangedDocumentIsSavedWithoutModifiedSignal()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(document->SaveAs(path, true, false));
    SignalLog log(document);
    QVERIFY(document->SaveAs(path, true, false));
    QCOMPARE(log.Lines(), QStringList("taskPrepared \"Saving\""));
}

void SCLDocument_SaveTest::theFileIsWrittenInPlace()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", QByteArray(100000, 'x'));
    const QString link = control.Folder().Path("link.scd");
    QVERIFY(QFile::link(path, link));
    SCLDocument* document = control.Open("<SCL><Header/></SCL>");

    QVERIFY(document->SaveAs(link, false, false));

    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(ReadFile(path).left(declaration.size()), declaration);
    QVERIFY(ReadFile(path).endsWith("</SCL>\n"));
}

void SCLDocument_SaveTest::theProgressTaskIsAnnouncedBeforeItStarts()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/><IED><LN/></IED></SCL>");
    QStringList log;
    QFuture<QString> task;
    QObject context;
    QObject::connect(document, &SCLDocument::sigFutaskTaskPrepared, &context,
                     [&](const QFuture<QString>& future, const QString& title) {
                         log += QStringLiteral("%1, started %2, range %3..%4")
                                    .arg(title)
                                    .arg(future.isStarted())
                                    .arg(future.progressMinimum())
                                    .arg(future.progressMaximum());
                         task = future;
                     });

    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), false, false));

    QCOMPARE(log, QStringList("Saving, started 0, range 0..0"));
    QVERIFY(task.isFinished());
    QVERIFY(!task.isCanceled());
    QCOMPARE(task.progressMinimum(), 0);
    QCOMPARE(task.progressMaximum(), 3);
    QCOMPARE(task.progressValue(), 3 + stepsBeyondRange);
    QCOMPARE(task.resultCount(), 0);
}

void SCLDocument_SaveTest::everyElementWrittenIsOneStepOfProgress()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/><IED><LN/><LN/></IED><IED/></SCL>");
    QFuture<QString> task;
    QList<int> values;
    QObject context;
    QObject::connect(document, &SCLDocument::sigFutaskTaskPrepared, &context,
                     [&](const QFuture<QString>& future, const QString&) { task = future; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &context, [&] { values += task.progressValue(); });
    timer.start(0);

    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), false, false));

    QCOMPARE(task.progressMaximum(), 5);
    QCOMPARE(values, QList<int>({1, 2, 3, 4, 5, 5 + stepsBeyondRange}));
}

void SCLDocument_SaveTest::aSlotDuringTheSaveSeesTheModifiedState()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    QList<bool> modified;
    QStringList names;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        modified += document->GetModified();
        names += document->GetFileName();
    });
    timer.start(0);
    const QString before = document->GetFileName();
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), true, false));
    QCOMPARE(modified, QList<bool>({true, true, true}));
    QCOMPARE(names, QStringList({before, before, before}));
}

void SCLDocument_SaveTest::theWaitCursorIsShownWhileAFileIsWritten()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    QList<Qt::CursorShape> shapes;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        shapes += cursor ? cursor->shape() : Qt::ArrowCursor;
    });
    timer.start(0);
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), true, false));
    QCOMPARE(shapes, QList<Qt::CursorShape>({Qt::WaitCursor, Qt::WaitCursor, Qt::WaitCursor}));
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void SCLDocument_SaveTest::threeThousandLevelsAreSaved()
{
    constexpr int depth = 3000;
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/>" + QByteArray("<P>").repeated(depth) +
                                         QByteArray("</P>").repeated(depth) + "</SCL>");
    const QString path = control.Folder().Path("deep.scd");
    QVERIFY(document->SaveAs(path, false, false));

    SCLDocument* again = control->OpenDocument(path, false);

    QVERIFY2(again, qPrintable(control->GetLastError()));
    QCOMPARE(again->Root()->GetChildCount(true), depth + 1);
    QCOMPARE(ElementText(again->Root()), ElementText(document->Root()));
}

QTEST_MAIN(SCLDocument_SaveTest)
#include "SCLDocument_SaveTest.moc"
