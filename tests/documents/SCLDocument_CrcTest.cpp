// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <QApplication>
#include <QCursor>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

const QString g_iedType = "IED virtual terminal conection CRC";
const QString g_substationType = "Substation virtual terminal conection CRC";

QString Printed(unsigned int crc)
{
    return QString("%1").arg(crc, 8, 16, QChar('0')).toUpper();
}

SCLElement* IedOf(SCLDocument* document, const QString& name)
{
    return document->Root()->FindChild("IED", "name", name, false);
}

SCLElement* StoreOf(SCLElement* owner, const QString& type)
{
    return owner->FindChild("Private", "type", type, false);
}

// The text that is stored for an IED; null if there is none.
QString StoredFor(SCLElement* ied)
{
    SCLElement* store = ied ? StoreOf(ied, g_iedType) : nullptr;
    return store ? store->GetValue() + QString("") : QString();
}

QString StoredFor(SCLDocument* document, const QString& iedName)
{
    return StoredFor(IedOf(document, iedName));
}

QString StoredForSubstation(SCLDocument* document)
{
    return StoreOf(document->Root(), g_substationType)->GetValue();
}

// What an IED's text must be now.
QString TextOf(SCLDocument* document, const QString& iedName)
{
    const CrcRun run(document, iedName);
    return run.result == CrcGenerator::CrcNoConnection ? QString() : Printed(run.crc);
}

QByteArray Publisher(const QByteArray& name)
{
    return "<IED name='" + name +
           "'><AccessPoint><Server><LDevice><LN0><GSEControl name='g'/>"
           "</LN0></LDevice></Server></AccessPoint></IED>";
}

QStringList Lines(const char* text)
{
    return QString::fromUtf8(text).split('\n');
}

// Runs what is given once, when the update processes events behind its first IED.
class BehindTheFirst
{
public:
    BehindTheFirst(SCLDocument* document, std::function<void()> edit)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(edit));
        m_timer.setSingleShot(true);
        QObject::connect(document, &SCLDocument::sigFutaskTaskPrepared, &m_timer,
                         [this] { m_timer.start(0); });
    }

private:
    QTimer m_timer;
};

} // namespace

class SCLDocument_CrcTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDocumentWithoutRootStaysAsItIs();
    void withoutIedsTheSubstationTextIsEmpty();
    void eachIedAndTheRootGetTheirText();
    void theChangesAreSignalledInOrder();
    void aSecondRunIsSilent();
    void aTextThatChangesIsSetInPlace();
    void aNewPrivateStandsBehindTheOthers();
    void anIedWithoutConnectionHasAnEmptyText();
    void anIncompleteIedHasATextToo();
    void theSubstationTextFollowsTheNames();
    void ofIedsOfOneNameTheLastCounts();
    void emptyTextsAreNoneInTheSubstation();
    void anEmptyAndAMissingNameAreOne();
    void onlyIedsBelowTheRootCount();
    void progressRisesByOneForEachIed();
    void theTaskIsFinishedWithoutResult();
    void theWaitCursorIsShownMeanwhile();
    void whatATimerEditsCountsForTheNext_data();
    void whatATimerEditsCountsForTheNext();
    void whatASlotEditsCountsForTheNext_data();
    void whatASlotEditsCountsForTheNext();
    void anIedThatATimerTakesOutIsPassedOver();
    void anIedThatASlotTakesOutIsPassedOver();
    void anIedThatGoesWithTheAnnouncementIsPassedOver();
    void anIedThatATimerAddsIsNotLookedAt();
    void anIedThatIsDoneMayBeTakenOut();
    void aTimerMayReplaceTheTree();
    void aTimerMayDeleteTheDocument();
    void aSavedStationKeepsItsTexts();
};

void SCLDocument_CrcTest::aDocumentWithoutRootStaysAsItIs()
{
    const TestControl control;
    SCLDocument document;
    SignalLog log(&document);

    document.UpdateCrcCode();

    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(document.Root(), nullptr);
    QVERIFY(!document.GetModified());
    QCOMPARE(QApplication::overrideCursor(), nullptr);
}

void SCLDocument_CrcTest::withoutIedsTheSubstationTextIsEmpty()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/></SCL>");
    QFuture<QString> task;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&](const QFuture<QString>& future, const QString&) { task = future; });

    document->UpdateCrcCode();

    QCOMPARE(ElementText(document->Root()),
             "<SCL><Header/><Private type=\"" + g_substationType + "\"/></SCL>");
    QCOMPARE(task.progressMinimum(), 0);
    QCOMPARE(task.progressMaximum(), 1);
    QCOMPARE(task.progressValue(), 1);
}

void SCLDocument_CrcTest::eachIedAndTheRootGetTheirText()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control.Open(CrcStationText());
    const QString publisher = TextOf(document, "P");
    const QString subscriber = TextOf(document, "S");

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "P"), publisher);
    QCOMPARE(StoredFor(document, "S"), subscriber);
    QCOMPARE(StoredFor(document, "N"), QString(""));
    QCOMPARE(StoredForSubstation(document),
             Printed(CrcGenerator::Generate({QString(), publisher, subscriber})));
    QVERIFY(document->GetModified());
}

void SCLDocument_CrcTest::theChangesAreSignalledInOrder()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL>" + Publisher("B") + "<IED name='A'/></SCL>");
    const QString crc = TextOf(document, "B");
    const QString substation = Printed(CrcGenerator::Generate({QString(), crc}));
    SignalLog log;
    log.Watch(control.Get());
    log.Watch(document);
    QFuture<QString> task;
    QTimer timer;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&](const QFuture<QString>& future, const QString&) {
                log.Mark(QString("started %1").arg(future.isStarted()));
                task = future;
            });
    connect(&timer, &QTimer::timeout, this,
            [&] { log.Mark(QString("progress %1").arg(task.progressValue())); });
    timer.start(0);

    document->UpdateCrcCode();

    QStringList expected = Lines(R"(control taskPrepared "Updating CRC"
taskPrepared "Updating CRC"
started 0
addElement <Private/>
modifiedStateChanged true
editAttribute Private type null -> "IED virtual terminal conection CRC"
editValue Private "CRC"
progress 1
addElement <Private/>
editAttribute Private type null -> "IED virtual terminal conection CRC"
progress 2
addElement <Private/>
editAttribute Private type null -> "Substation virtual terminal conection CRC"
editValue Private "SUBSTATION")");
    expected.replaceInStrings("\"CRC\"", '"' + crc + '"');
    expected.replaceInStrings("\"SUBSTATION\"", '"' + substation + '"');
    QCOMPARE(log.Lines().join('\n'), expected.join('\n'));
}

void SCLDocument_CrcTest::aSecondRunIsSilent()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    document->UpdateCrcCode();
    document->SetModified(false, false);
    const QString text = ElementText(document->Root());
    SignalLog log(document);

    document->UpdateCrcCode();

    QCOMPARE(log.Lines(), QStringList("taskPrepared \"Updating CRC\""));
    QCOMPARE(ElementText(document->Root()), text);
    QVERIFY(!document->GetModified());
}

void SCLDocument_CrcTest::aTextThatChangesIsSetInPlace()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText(
        "<AccessPoint name='A'><Server><LDevice inst='L'>",
        "<Private type='first'/><Private type='IED virtual terminal conection CRC' more='x'>0000"
        "</Private><Private type='last'/><AccessPoint name='A'><Server><LDevice inst='L'>"));
    SCLElement* ied = IedOf(document, "P");
    SCLElement* store = StoreOf(ied, g_iedType);

    document->UpdateCrcCode();

    QCOMPARE(StoreOf(ied, g_iedType), store);
    QCOMPARE(ied->GetChildPos(store), 1);
    QCOMPARE(store->GetValue(), TextOf(document, "P"));
    QCOMPARE(store->GetAttribute("more"), QString("x"));
    QCOMPARE(ied->FindChildByType("Private", false).size(), decltype(QStringList().size())(3));
}

void SCLDocument_CrcTest::aNewPrivateStandsBehindTheOthers()
{
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL><Private type='x'/><IED name='A'><Private type='y'/></IED></SCL>");

    document->UpdateCrcCode();

    SCLElement* ied = IedOf(document, "A");
    QCOMPARE(ied->GetChildPos(StoreOf(ied, g_iedType)), 1);
    QCOMPARE(document->Root()->GetChildPos(StoreOf(document->Root(), g_substationType)), 1);
}

void SCLDocument_CrcTest::anIedWithoutConnectionHasAnEmptyText()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'><Private type='" + g_iedType.toUtf8() +
                                         "'>12345678</Private></IED></SCL>");

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "A"), QString(""));
}

void SCLDocument_CrcTest::anIncompleteIedHasATextToo()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL>" + Publisher("A") + "</SCL>");
    QCOMPARE(CrcRun(document, "A").result, CrcGenerator::CrcFailed);

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "A"), Printed(CrcRun(document, "A").crc));
}

void SCLDocument_CrcTest::theSubstationTextFollowsTheNames()
{
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL>" + Publisher("B") + Publisher("a") + Publisher("A") + "</SCL>");

    document->UpdateCrcCode();

    QCOMPARE(StoredForSubstation(document),
             Printed(CrcGenerator::Generate(
                 {TextOf(document, "A"), TextOf(document, "B"), TextOf(document, "a")})));
}

void SCLDocument_CrcTest::ofIedsOfOneNameTheLastCounts()
{
    TestControl control;
    SCLDocument* document = control.Open(
        "<SCL>" + Publisher("A") + Replaced(Publisher("A"), "name='g'", "name='h'") + "</SCL>");

    document->UpdateCrcCode();

    const QString first = StoredFor(document->Root()->FindChild("IED", 0));
    const QString second = StoredFor(document->Root()->FindChild("IED", 1));
    QVERIFY(first != second);
    QCOMPARE(StoredForSubstation(document), Printed(CrcGenerator::Generate({second})));
}

void SCLDocument_CrcTest::emptyTextsAreNoneInTheSubstation()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/><IED name='B'/></SCL>");

    document->UpdateCrcCode();

    QCOMPARE(StoredForSubstation(document), QString("00000000"));
}

void SCLDocument_CrcTest::anEmptyAndAMissingNameAreOne()
{
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL>" + Replaced(Publisher(""), "name=''", "") + "<IED name=''/></SCL>");

    document->UpdateCrcCode();

    QCOMPARE(StoredForSubstation(document), QString("00000000"));
}

void SCLDocument_CrcTest::onlyIedsBelowTheRootCount()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Bay><IED name='A'/></Bay></SCL>");

    document->UpdateCrcCode();

    QCOMPARE(At(document->Root(), "Bay/IED")->GetChildCount(false), 0);
    QCOMPARE(StoredForSubstation(document), QString());
}

void SCLDocument_CrcTest::progressRisesByOneForEachIed()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/><IED/><IED/></SCL>");
    QFuture<QString> task;
    QList<int> values;
    QTimer timer;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&](const QFuture<QString>& future, const QString&) { task = future; });
    connect(document, &SCLDocument::sigAddElement, this,
            [&] { values.append(task.progressValue()); });
    connect(&timer, &QTimer::timeout, this, [&] {
        values.append(task.progressValue());
        QCOMPARE(task.progressMaximum(), 4);
        QVERIFY(task.isStarted() && !task.isFinished());
    });
    timer.start(0);

    document->UpdateCrcCode();

    QCOMPARE(values, QList<int>({0, 1, 1, 2, 2, 3, 3}));
    QCOMPARE(task.progressValue(), 4);
}

void SCLDocument_CrcTest::theTaskIsFinishedWithoutResult()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    QFuture<QString> task;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&](const QFuture<QString>& future, const QString&) { task = future; });

    document->UpdateCrcCode();

    QVERIFY(task.isFinished());
    QVERIFY(!task.isCanceled());
    QCOMPARE(task.resultCount(), 0);
}

void SCLDocument_CrcTest::theWaitCursorIsShownMeanwhile()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    QList<Qt::CursorShape> shapes;
    const auto look = [&] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        shapes.append(cursor ? cursor->shape() : Qt::ArrowCursor);
    };
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this, look);
    connect(document, &SCLDocument::sigAddElement, this, look);

    document->UpdateCrcCode();

    QCOMPARE(shapes, QList<Qt::CursorShape>({Qt::WaitCursor, Qt::WaitCursor, Qt::WaitCursor}));
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void SCLDocument_CrcTest::whatATimerEditsCountsForTheNext_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("attribute");

    // All that P has looked up is edited before S looks it up.
    QTest::newRow("the type of a member") << "DataTypeTemplates/DOType/DA"
                                          << "name";
    QTest::newRow("the id of a type") << "DataTypeTemplates/DOType"
                                      << "id";
    QTest::newRow("the member") << "IED/AccessPoint/Server/LDevice/LN0/DataSet/FCDA"
                                << "doName";
    QTest::newRow("the data set") << "IED/AccessPoint/Server/LDevice/LN0/DataSet"
                                  << "name";
    QTest::newRow("the control block") << "IED/AccessPoint/Server/LDevice/LN0/GSEControl"
                                       << "name";
    QTest::newRow("the entry") << "Communication/SubNetwork/ConnectedAP/GSE"
                               << "cbName";
    QTest::newRow("the access point") << "Communication/SubNetwork/ConnectedAP"
                                      << "apName";
    QTest::newRow("the node") << "IED/AccessPoint/Server/LDevice/LN"
                              << "inst";
    QTest::newRow("the data object") << "IED/AccessPoint/Server/LDevice/LN/DOI"
                                     << "name";
    QTest::newRow("the device") << "IED/AccessPoint/Server/LDevice"
                                << "inst";
    QTest::newRow("the publisher") << "IED"
                                   << "name";
    QTest::newRow("the input") << "IED[1]/AccessPoint/Server/LDevice/LN0/Inputs/ExtRef"
                               << "doName";
    QTest::newRow("the terminal") << "IED[1]/AccessPoint/Server/LDevice/LN/DOI"
                                  << "name";
}

void SCLDocument_CrcTest::whatATimerEditsCountsForTheNext()
{
    QFETCH(QString, path);
    QFETCH(QString, attribute);
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const QString before = TextOf(document, "S");
    int edits = 0;
    const BehindTheFirst timer(document, [&] {
        ++edits;
        At(document->Root(), path)->SetAttribute(attribute, "edited", false);
    });

    document->UpdateCrcCode();

    QCOMPARE(edits, 1);
    QCOMPARE(StoredFor(document, "S"), TextOf(document, "S"));
    QVERIFY(TextOf(document, "S") != before);
}

void SCLDocument_CrcTest::whatASlotEditsCountsForTheNext_data()
{
    whatATimerEditsCountsForTheNext_data();
}

void SCLDocument_CrcTest::whatASlotEditsCountsForTheNext()
{
    QFETCH(QString, path);
    QFETCH(QString, attribute);
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const QString before = TextOf(document, "S");
    int edits = 0;
    connect(document, &SCLDocument::sigEditValue, this, [&] {
        if (++edits == 1)
            At(document->Root(), path)->SetAttribute(attribute, "edited", false);
    });

    document->UpdateCrcCode();

    QVERIFY(edits > 1);
    QCOMPARE(StoredFor(document, "S"), TextOf(document, "S"));
    QVERIFY(TextOf(document, "S") != before);
}

void SCLDocument_CrcTest::anIedThatATimerTakesOutIsPassedOver()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const BehindTheFirst timer(document,
                               [&] { document->Root()->RemoveChild(IedOf(document, "S"), false); });

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "N"), QString(""));
    QCOMPARE(StoredForSubstation(document),
             Printed(CrcGenerator::Generate({StoredFor(document, "P")})));
}

void SCLDocument_CrcTest::anIedThatASlotTakesOutIsPassedOver()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    connect(document, &SCLDocument::sigAddElement, this, [&] {
        if (SCLElement* next = IedOf(document, "S"))
            document->Root()->RemoveChild(next, false);
    });

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "N"), QString(""));
    QCOMPARE(StoredForSubstation(document),
             Printed(CrcGenerator::Generate({StoredFor(document, "P")})));
}

void SCLDocument_CrcTest::anIedThatGoesWithTheAnnouncementIsPassedOver()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&] { document->Root()->RemoveChild(IedOf(document, "P"), false); });

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "S"), QString(""));
    QCOMPARE(StoredForSubstation(document), QString("00000000"));
}

void SCLDocument_CrcTest::anIedThatATimerAddsIsNotLookedAt()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const BehindTheFirst timer(document, [&] {
        document->Root()->CreateChild("IED", {{"name", "new"}}, 0, false);
    });

    document->UpdateCrcCode();

    QVERIFY(StoredFor(document, "new").isNull());
    QCOMPARE(StoredFor(document, "S"), TextOf(document, "S"));
}

void SCLDocument_CrcTest::anIedThatIsDoneMayBeTakenOut()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const BehindTheFirst timer(document,
                               [&] { document->Root()->RemoveChild(IedOf(document, "P"), false); });

    document->UpdateCrcCode();

    QCOMPARE(StoredFor(document, "S"), QString(""));
    QCOMPARE(StoredFor(document, "N"), QString(""));
}

void SCLDocument_CrcTest::aTimerMayReplaceTheTree()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const QByteArray image = document->WriteBinary();
    bool isReplaced = false;
    const BehindTheFirst timer(document, [&] {
        if (!isReplaced) {
            isReplaced = true;
            document->ReadBinary(image);
        }
    });

    document->UpdateCrcCode();

    // New IEDs may stand where old ones stood in memory.
    QVERIFY(isReplaced);
    for (const char* name : {"P", "S", "N"}) {
        const QString text = StoredFor(document, name);
        QVERIFY(text.isNull() || text == TextOf(document, name));
    }
    QCOMPARE(StoredForSubstation(document).size(), decltype(QString().size())(8));
}

void SCLDocument_CrcTest::aTimerMayDeleteTheDocument()
{
    TestControl control;
    auto* document = new SCLDocument;
    QVERIFY(document->Open(control.Folder().Write("own.scd", CrcStationText())));
    QFuture<QString> task;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&](const QFuture<QString>& future, const QString&) { task = future; });
    bool isDeleted = false;
    connect(document, &QObject::destroyed, this, [&] { isDeleted = true; });
    const BehindTheFirst timer(document, [&] { delete document; });

    document->UpdateCrcCode();

    QVERIFY(isDeleted);
    QVERIFY(task.isFinished());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void SCLDocument_CrcTest::aSavedStationKeepsItsTexts()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document =
        control.Open(CrcStationText("sAddr='1.2'", "sAddr=' &#9;&lt;x  y&gt;&#10;@wspace@'"));
    document->UpdateCrcCode();
    const QString path = control.Folder().Path("saved.scd");
    QVERIFY(document->SaveAs(path, false, false));
    SCLDocument* saved = control->OpenDocument(path, false);

    saved->UpdateCrcCode();

    QVERIFY(!saved->GetModified());
    QCOMPARE(StoredFor(saved, "P"), StoredFor(document, "P"));
    QCOMPARE(StoredForSubstation(saved), StoredForSubstation(document));
}

QTEST_MAIN(SCLDocument_CrcTest)
#include "SCLDocument_CrcTest.moc"
