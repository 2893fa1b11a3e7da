// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// The functions of one kind, so that each rule is shown for both.
struct Kind {
    QByteArray entryTag;
    QByteArray controlTag;
    SCLElement* (*controlOfEntry)(SCLElement*);
    SCLElement* (*entryBelow)(SCLElement*, SCLElement*);
    SCLElement* (*entryOf)(SCLElement*);
    SCLElement* (*controlOfDataSet)(SCLElement*);
};

const Kind& KindOf(bool goose)
{
    static const Kind kinds[] = {
        {"SMV", "SampledValueControl", SCLHelp::GetSMVControlFromSMV, SCLHelp::GetSMVFromSMVControl,
         SCLHelp::GetSMVFromSMVControl, SCLHelp::GetSampledValueControlFromDataSet},
        {"GSE", "GSEControl", SCLHelp::GetGSEControlFromGSE, SCLHelp::GetGSEFromGSEControl,
         SCLHelp::GetGSEFromGSEControl, SCLHelp::GetGSEControlFromDataSet}};
    return kinds[goose ? 1 : 0];
}

void AddKinds()
{
    QTest::addColumn<bool>("goose");
    QTest::newRow("GOOSE") << true;
    QTest::newRow("sampled values") << false;
}

// A text that says CB, NET, OTHERCB and OTHERNET where the tags of the kind and of the other kind
// are meant.
QByteArray For(bool goose, QByteArray text)
{
    text.replace("OTHERCB", KindOf(!goose).controlTag).replace("OTHERNET", KindOf(!goose).entryTag);
    return text.replace("CB", KindOf(goose).controlTag).replace("NET", KindOf(goose).entryTag);
}

QByteArray Devices(const QByteArray& lDevices)
{
    return "<IED name='I'><AccessPoint name='A'><Server>" + lDevices +
           "</Server></AccessPoint></IED>";
}

QByteArray Network(const QByteArray& entries)
{
    return "<Communication><SubNetwork><ConnectedAP mark='cap' iedName='I' apName='A'>" + entries +
           "</ConnectedAP></SubNetwork></Communication>";
}

} // namespace

class SCLHelp_ControlBlocksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anLDeviceIsFoundByItsInst_data();
    void anLDeviceIsFoundByItsInst();
    void noIedHasNoLDevice();

    void anAccessPointIsFoundByIedAndName_data();
    void anAccessPointIsFoundByIedAndName();
    void laterIedsOfTheNameAreTriedForTheAccessPoint();

    void aControlBlockIsFoundFromItsEntry_data() { AddKinds(); }
    void aControlBlockIsFoundFromItsEntry();
    void anEntryMayStandDeeperBelowItsConnectedAP_data() { AddKinds(); }
    void anEntryMayStandDeeperBelowItsConnectedAP();
    void anEntryThatLeadsNowhereHasNoControlBlock_data();
    void anEntryThatLeadsNowhereHasNoControlBlock();
    void laterLDevicesOfTheInstAreTriedForTheControlBlock_data() { AddKinds(); }
    void laterLDevicesOfTheInstAreTriedForTheControlBlock();
    void onlyTheFirstServerAndTheFirstLN0HoldControlBlocks_data() { AddKinds(); }
    void onlyTheFirstServerAndTheFirstLN0HoldControlBlocks();
    void anEntryWithoutANameMatchesAControlBlockWithoutAName_data() { AddKinds(); }
    void anEntryWithoutANameMatchesAControlBlockWithoutAName();

    void theEntryBelowAConnectedAPIsFoundByTwoAttributes_data() { AddKinds(); }
    void theEntryBelowAConnectedAPIsFoundByTwoAttributes();
    void theConnectedAPMayBelongToAnyone_data() { AddKinds(); }
    void theConnectedAPMayBelongToAnyone();
    void theTagOfTheControlBlockIsNotLookedAt_data() { AddKinds(); }
    void theTagOfTheControlBlockIsNotLookedAt();

    void theEntryIsFoundAnywhereInTheCommunication_data() { AddKinds(); }
    void theEntryIsFoundAnywhereInTheCommunication();
    void theFirstOfTwoSubNetworksWins_data() { AddKinds(); }
    void theFirstOfTwoSubNetworksWins();
    void onlyTheFirstCommunicationIsSearched_data() { AddKinds(); }
    void onlyTheFirstCommunicationIsSearched();
    void aControlBlockOutsideAServerHasNoEntry_data() { AddKinds(); }
    void aControlBlockOutsideAServerHasNoEntry();

    void theControlBlockOfADataSetIsFoundByName_data();
    void theControlBlockOfADataSetIsFoundByName();
    void aDataSetOfAnLNIsServedByTheLN0_data() { AddKinds(); }
    void aDataSetOfAnLNIsServedByTheLN0();
    void aDataSetWithoutLN0HasNoControlBlock_data() { AddKinds(); }
    void aDataSetWithoutLN0HasNoControlBlock();

    void nullAndDetachedElementsGiveNull_data() { AddKinds(); }
    void nullAndDetachedElementsGiveNull();
    void aDocumentWithoutRootGivesNull_data() { AddKinds(); }
    void aDocumentWithoutRootGivesNull();
    void namesOfAMegabyteMatch_data() { AddKinds(); }
    void namesOfAMegabyteMatch();
};

void SCLHelp_ControlBlocksTest::anLDeviceIsFoundByItsInst_data()
{
    QTest::addColumn<QString>("inst");
    QTest::addColumn<QString>("found");
    QTest::newRow("first access point") << "L"
                                        << "L of A";
    QTest::newRow("second access point") << "M"
                                         << "M of B";
    QTest::newRow("of two the one of the first access point") << "both"
                                                              << "both of A";
    QTest::newRow("second Server") << "hidden"
                                   << "null";
    QTest::newRow("unknown") << "X"
                             << "null";
    QTest::newRow("other case") << "l"
                                << "null";
    QTest::newRow("empty, though an LDevice has none") << ""
                                                       << "null";
}

void SCLHelp_ControlBlocksTest::anLDeviceIsFoundByItsInst()
{
    TestControl control;
    QFETCH(const QString, inst);
    SCLElement* root = control.OpenRoot(
        "<SCL><IED><AccessPoint/><AccessPoint><Server><LDevice mark='without inst'/>"
        "<LDevice inst='L' mark='L of A'/><LDevice inst='L' mark='second L of A'/>"
        "<LDevice inst='both' mark='both of A'/></Server>"
        "<Server><LDevice inst='hidden' mark='hidden'/></Server></AccessPoint>"
        "<AccessPoint><Server><LDevice inst='both' mark='both of B'/>"
        "<LDevice inst='M' mark='M of B'/></Server></AccessPoint></IED></SCL>");
    QTEST(MarkOf(SCLHelp::GetLDeviceFromIEDAndInst(At(root, "IED"), inst)), "found");
}

void SCLHelp_ControlBlocksTest::noIedHasNoLDevice()
{
    const TestControl control;
    QVERIFY(SCLHelp::GetLDeviceFromIEDAndInst(nullptr, "L") == nullptr);
}

void SCLHelp_ControlBlocksTest::anAccessPointIsFoundByIedAndName_data()
{
    QTest::addColumn<QByteArray>("connectedAP");
    QTest::addColumn<QString>("found");
    QTest::newRow("found") << QByteArray("iedName='I' apName='A'") << "A of I";
    QTest::newRow("second IED") << QByteArray("iedName='J' apName='A'") << "A of J";
    QTest::newRow("first of equal names") << QByteArray("iedName='I' apName='B'") << "B of I";
    QTest::newRow("unknown IED") << QByteArray("iedName='K' apName='A'") << "null";
    QTest::newRow("unknown access point") << QByteArray("iedName='I' apName='Z'") << "null";
    QTest::newRow("other case") << QByteArray("iedName='i' apName='A'") << "null";
    QTest::newRow("no names") << QByteArray() << "nameless";
    QTest::newRow("empty names") << QByteArray("iedName='' apName=''") << "nameless";
}

void SCLHelp_ControlBlocksTest::anAccessPointIsFoundByIedAndName()
{
    TestControl control;
    QFETCH(const QByteArray, connectedAP);
    SCLElement* root = control.OpenRoot(
        "<SCL><Communication><SubNetwork><ConnectedAP " + connectedAP +
        "/></SubNetwork></Communication><IED name='I'><AccessPoint name='A' mark='A of I'/>"
        "<AccessPoint name='B' mark='B of I'/><AccessPoint name='B' mark='second B of I'/></IED>"
        "<IED name='J'><AccessPoint name='A' mark='A of J'/></IED>"
        "<IED><AccessPoint mark='nameless'/></IED></SCL>");
    QTEST(MarkOf(SCLHelp::GetAPFromConnectedAP(At(root, "Communication/SubNetwork/ConnectedAP"))),
          "found");
}

void SCLHelp_ControlBlocksTest::laterIedsOfTheNameAreTriedForTheAccessPoint()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL>" + Network("") + "<IED name='I'><AccessPoint name='B'/></IED>" +
        "<IED name='I'><AccessPoint name='A' mark='A of the second'/></IED></SCL>");
    QCOMPARE(MarkOf(SCLHelp::GetAPFromConnectedAP(Marked(root, "cap"))),
             QString("A of the second"));
}

void SCLHelp_ControlBlocksTest::aControlBlockIsFoundFromItsEntry()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("<NET mark='entry' ldInst='M' cbName='c'/>") +
                       Devices("<LDevice inst='L'><LN0><CB name='c' mark='of L'/></LN0></LDevice>"
                               "<LDevice inst='M'><LN0><OTHERCB name='c' mark='other kind'/>"
                               "<CB name='b' mark='other name'/><CB name='c' mark='found'/>"
                               "<CB name='c' mark='second'/></LN0></LDevice>") +
                       "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).controlOfEntry(Marked(root, "entry"))), QString("found"));
}

void SCLHelp_ControlBlocksTest::anEntryMayStandDeeperBelowItsConnectedAP()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL>" +
                   Network("<Private><x><NET mark='entry' ldInst='L' cbName='c'/></x></Private>") +
                   Devices("<LDevice inst='L'><LN0><CB name='c' mark='found'/></LN0></LDevice>") +
                   "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).controlOfEntry(Marked(root, "entry"))), QString("found"));
}

void SCLHelp_ControlBlocksTest::anEntryThatLeadsNowhereHasNoControlBlock_data()
{
    QTest::addColumn<bool>("goose");
    QTest::addColumn<QByteArray>("text");
    const QByteArray devices =
        Devices("<LDevice inst='L'><LN0><CB name='c'/></LN0></LDevice><LDevice inst='bare'/>");
    const QByteArray entry = "<NET mark='entry' ldInst='L' cbName='c'/>";
    for (const bool goose : {true, false}) {
        const auto row = [goose](const char* name, const QByteArray& text) {
            QTest::newRow(qPrintable(KindOf(goose).entryTag + ", " + name)) << goose << text;
        };
        row("outside any ConnectedAP",
            "<Communication><SubNetwork>" + entry + "</SubNetwork></Communication>" + devices);
        row("ConnectedAP of no IED", Network(entry));
        row("unknown LDevice", Network("<NET mark='entry' ldInst='M' cbName='c'/>") + devices);
        row("LDevice without LN0",
            Network("<NET mark='entry' ldInst='bare' cbName='c'/>") + devices);
        row("unknown name", Network("<NET mark='entry' ldInst='L' cbName='d'/>") + devices);
        row("access point without Server",
            Network(entry) + "<IED name='I'><AccessPoint name='A'/></IED>");
        row("control block in an LN",
            Network(entry) + Devices("<LDevice inst='L'><LN0/><LN><CB name='c'/></LN></LDevice>"));
    }
}

void SCLHelp_ControlBlocksTest::anEntryThatLeadsNowhereHasNoControlBlock()
{
    TestControl control;
    QFETCH(const bool, goose);
    QFETCH(const QByteArray, text);
    SCLElement* root = control.OpenRoot(For(goose, "<SCL>" + text + "</SCL>"));
    QVERIFY(KindOf(goose).controlOfEntry(Marked(root, "entry")) == nullptr);
}

void SCLHelp_ControlBlocksTest::laterLDevicesOfTheInstAreTriedForTheControlBlock()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL>" + Network("<NET mark='entry' ldInst='L' cbName='c'/>") +
                   Devices("<LDevice inst='L' mark='first'><LN0><CB name='b'/></LN0></LDevice>"
                           "<LDevice inst='L'/>"
                           "<LDevice inst='L'><LN0><CB name='c' mark='found'/></LN0></LDevice>") +
                   "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).controlOfEntry(Marked(root, "entry"))), QString("found"));
    QCOMPARE(MarkOf(SCLHelp::GetLDeviceFromIEDAndInst(At(root, "IED"), "L")), QString("first"));
}

void SCLHelp_ControlBlocksTest::onlyTheFirstServerAndTheFirstLN0HoldControlBlocks()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QByteArray held = "<LN0><CB name='c'/></LN0>";
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL>" + Network("<NET mark='entry' ldInst='L' cbName='c'/>") +
                   Devices("<LDevice inst='L'><LN0/>" + held +
                           "</LDevice></Server><Server><LDevice inst='L'>" + held + "</LDevice>") +
                   "</SCL>"));
    QVERIFY(KindOf(goose).controlOfEntry(Marked(root, "entry")) == nullptr);
}

void SCLHelp_ControlBlocksTest::anEntryWithoutANameMatchesAControlBlockWithoutAName()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("<NET mark='entry' cbName=''/>") +
                       Devices("<LDevice><LN0><CB name='c'/><CB mark='found'/></LN0></LDevice>") +
                       "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).controlOfEntry(Marked(root, "entry"))), QString("found"));
    QCOMPARE(MarkOf(KindOf(goose).entryOf(Marked(root, "found"))), QString("entry"));
}

void SCLHelp_ControlBlocksTest::theEntryBelowAConnectedAPIsFoundByTwoAttributes()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" +
                       Network("<OTHERNET ldInst='L' cbName='c'/><NET ldInst='M' cbName='c'/>"
                               "<NET ldInst='L' cbName='d'/><x><NET ldInst='L' cbName='c'/></x>"
                               "<NET ldInst='L' cbName='c' mark='found'/>"
                               "<NET ldInst='L' cbName='c' mark='second'/>") +
                       Devices("<LDevice inst='L'><LN0><CB name='c' mark='control'/>"
                               "<CB name='C' mark='other case'/></LN0></LDevice>") +
                       "</SCL>"));
    const Kind& kind = KindOf(goose);
    SCLElement* connectedAP = Marked(root, "cap");
    QCOMPARE(MarkOf(kind.entryBelow(Marked(root, "control"), connectedAP)), QString("found"));
    QVERIFY(kind.entryBelow(Marked(root, "other case"), connectedAP) == nullptr);
}

void SCLHelp_ControlBlocksTest::theConnectedAPMayBelongToAnyone()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL><ConnectedAP iedName='X' apName='Y' mark='cap'>"
                   "<NET ldInst='L' cbName='c' mark='found'/></ConnectedAP>"
                   "<LDevice inst='L'><x><CB name='c' mark='control'/></x></LDevice></SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).entryBelow(Marked(root, "control"), Marked(root, "cap"))),
             QString("found"));
}

void SCLHelp_ControlBlocksTest::theTagOfTheControlBlockIsNotLookedAt()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("<NET ldInst='L' cbName='c' mark='found'/>") +
                       Devices("<LDevice inst='L'><LN0><OTHERCB name='c' mark='control'/></LN0>"
                               "</LDevice>") +
                       "</SCL>"));
    SCLElement* block = Marked(root, "control");
    QCOMPARE(MarkOf(KindOf(goose).entryBelow(block, Marked(root, "cap"))), QString("found"));
    QCOMPARE(MarkOf(KindOf(goose).entryOf(block)), QString("found"));
    QVERIFY(KindOf(!goose).entryOf(block) == nullptr);
}

void SCLHelp_ControlBlocksTest::theEntryIsFoundAnywhereInTheCommunication()
{
    const QByteArray entry = "<NET ldInst='L' cbName='c'/>";
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL><Communication><ConnectedAP iedName='I' apName='A'>" + entry +
                   "</ConnectedAP><SubNetwork><ConnectedAP iedName='J' apName='A'>" + entry +
                   "</ConnectedAP><ConnectedAP iedName='I' apName='B'>" + entry + "</ConnectedAP>" +
                   "<ConnectedAP iedName='I' apName='A'><NET ldInst='M' cbName='c'/></ConnectedAP>"
                   "</SubNetwork><SubNetwork><ConnectedAP iedName='I' apName='A'/>"
                   "<ConnectedAP iedName='I' apName='A'><NET ldInst='L' cbName='c' mark='found'/>"
                   "</ConnectedAP></SubNetwork></Communication>" +
                   Devices("<LDevice inst='L'><LN0><CB name='c' mark='control'/></LN0></LDevice>") +
                   "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).entryOf(Marked(root, "control"))), QString("found"));
}

void SCLHelp_ControlBlocksTest::theFirstOfTwoSubNetworksWins()
{
    const auto net = [](const QByteArray& mark) {
        return "<SubNetwork><ConnectedAP iedName='I' apName='A'><NET ldInst='L' cbName='c' mark='" +
               mark + "'/></ConnectedAP></SubNetwork>";
    };
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL><Communication>" + net("first") + net("second") + "</Communication>" +
                   Devices("<LDevice inst='L'><LN0><CB name='c' mark='control'/></LN0></LDevice>") +
                   "</SCL>"));
    QCOMPARE(MarkOf(KindOf(goose).entryOf(Marked(root, "control"))), QString("first"));
}

void SCLHelp_ControlBlocksTest::onlyTheFirstCommunicationIsSearched()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL><Communication/>" + Network("<NET ldInst='L' cbName='c'/>") +
                   Devices("<LDevice inst='L'><LN0><CB name='c' mark='control'/></LN0></LDevice>") +
                   "</SCL>"));
    QVERIFY(KindOf(goose).entryOf(Marked(root, "control")) == nullptr);
}

void SCLHelp_ControlBlocksTest::aControlBlockOutsideAServerHasNoEntry()
{
    // Without names anywhere only the missing ancestor can be the reason.
    const QByteArray network =
        "<Communication><SubNetwork><ConnectedAP><NET/></ConnectedAP></SubNetwork></Communication>";
    TestControl control;
    QFETCH(const bool, goose);
    const auto entryOf = [&](const QByteArray& devices) {
        SCLElement* root = control.OpenRoot(For(goose, "<SCL>" + network + devices + "</SCL>"));
        return KindOf(goose).entryOf(Marked(root, "c"));
    };
    QVERIFY(entryOf("<IED><AccessPoint><LDevice><CB mark='c'/></LDevice></AccessPoint></IED>"));
    QVERIFY(!entryOf("<IED><AccessPoint><CB mark='c'/></AccessPoint></IED>"));
    QVERIFY(!entryOf("<IED><LDevice><CB mark='c'/></LDevice></IED>"));
    QVERIFY(!entryOf("<AccessPoint><LDevice><CB mark='c'/></LDevice></AccessPoint>"));
    QVERIFY(!entryOf("<AccessPoint><IED><LDevice><CB mark='c'/></LDevice></IED></AccessPoint>"));
}

void SCLHelp_ControlBlocksTest::theControlBlockOfADataSetIsFoundByName_data()
{
    QTest::addColumn<bool>("goose");
    QTest::addColumn<QByteArray>("dataSet");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<QString>("found");
    for (const bool goose : {true, false}) {
        const auto row = [goose](const char* name, const QByteArray& dataSet,
                                 const QByteArray& control, const char* found) {
            QTest::newRow(qPrintable(KindOf(goose).entryTag + ", " + name))
                << goose << dataSet << control << QString(found);
        };
        row("found", "name='d'", "<CB mark='c' datSet='d'/>", "c");
        row("first of two", "name='d'", "<CB mark='1' datSet='d'/><CB mark='2' datSet='d'/>", "1");
        row("behind others", "name='d'", "<CB datSet='e'/><CB mark='c' datSet='d'/>", "c");
        row("other name", "name='d'", "<CB datSet='e'/>", "null");
        row("other case", "name='d'", "<CB datSet='D'/>", "null");
        row("other kind", "name='d'", "<OTHERCB datSet='d'/><ReportControl datSet='d'/>", "null");
        row("no control block", "name='d'", "", "null");
        row("neither names", "", "<CB mark='c'/>", "c");
        row("empty and missing", "name=''", "<CB mark='c'/>", "c");
        row("missing and empty", "", "<CB mark='c' datSet=''/>", "c");
        row("name against nothing", "name='d'", "<CB/>", "null");
    }
}

void SCLHelp_ControlBlocksTest::theControlBlockOfADataSetIsFoundByName()
{
    TestControl testControl;
    QFETCH(const bool, goose);
    QFETCH(const QByteArray, dataSet);
    QFETCH(const QByteArray, control);
    SCLElement* root =
        testControl.OpenRoot(For(goose, "<SCL><LDevice><LN0><DataSet mark='set' " + dataSet + "/>" +
                                            control + "</LN0></LDevice></SCL>"));
    QTEST(MarkOf(KindOf(goose).controlOfDataSet(Marked(root, "set"))), "found");
}

void SCLHelp_ControlBlocksTest::aDataSetOfAnLNIsServedByTheLN0()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL><LDevice><LN><DataSet name='d' mark='of LN'/><CB datSet='d'/></LN>"
                   "<LN0><DataSet name='d' mark='of LN0'/><CB datSet='d' mark='c'/></LN0>"
                   "<LN0><DataSet name='e' mark='of second LN0'/><CB datSet='e'/></LN0>"
                   "</LDevice></SCL>"));
    const Kind& kind = KindOf(goose);
    QCOMPARE(MarkOf(kind.controlOfDataSet(Marked(root, "of LN"))), QString("c"));
    QCOMPARE(MarkOf(kind.controlOfDataSet(Marked(root, "of LN0"))), QString("c"));
    QCOMPARE(MarkOf(kind.controlOfDataSet(Marked(root, "of second LN0"))), QString("null"));
}

void SCLHelp_ControlBlocksTest::aDataSetWithoutLN0HasNoControlBlock()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL><LDevice><LN><DataSet name='d' mark='set'/><CB datSet='d'/></LN>"
                   "</LDevice><LDevice><LN0><CB datSet='d'/></LN0></LDevice></SCL>"));
    QVERIFY(KindOf(goose).controlOfDataSet(Marked(root, "set")) == nullptr);
}

void SCLHelp_ControlBlocksTest::nullAndDetachedElementsGiveNull()
{
    const TestControl control;
    QFETCH(const bool, goose);
    const Kind& kind = KindOf(goose);
    SCLElement detached("CB", nullptr, nullptr);
    SCLElement* const elements[] = {nullptr, &detached};
    for (SCLElement* element : elements) {
        QVERIFY(SCLHelp::GetAPFromConnectedAP(element) == nullptr);
        QVERIFY(kind.controlOfEntry(element) == nullptr);
        QVERIFY(kind.entryOf(element) == nullptr);
        QVERIFY(kind.controlOfDataSet(element) == nullptr);
        QVERIFY(kind.entryBelow(element, nullptr) == nullptr);
        QVERIFY(kind.entryBelow(nullptr, element) == nullptr);
        QVERIFY(kind.entryBelow(element, element) == nullptr);
    }
}

void SCLHelp_ControlBlocksTest::aDocumentWithoutRootGivesNull()
{
    const TestControl control;
    QFETCH(const bool, goose);
    SCLDocument rootless;
    SCLElement connectedAP("ConnectedAP", &rootless, nullptr);
    SCLElement* entry = connectedAP.CreateChild("GSE", -1, false);
    SCLElement ied("IED", &rootless, nullptr);
    SCLElement* lDevice =
        ied.CreateChild("AccessPoint", -1, false)->CreateChild("LDevice", -1, false);
    QVERIFY(SCLHelp::GetAPFromConnectedAP(&connectedAP) == nullptr);
    QVERIFY(KindOf(goose).controlOfEntry(entry) == nullptr);
    QVERIFY(KindOf(goose).entryOf(lDevice->CreateChild("GSEControl", -1, false)) == nullptr);
}

void SCLHelp_ControlBlocksTest::namesOfAMegabyteMatch()
{
    const QByteArray name(1 << 20, 'n');
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" +
                       Network("<NET ldInst='" + name + "' cbName='" + name + "' mark='entry'/>") +
                       Devices("<LDevice inst='" + name + "'><LN0><DataSet name='" + name +
                               "' mark='set'/><CB name='" + name + "' datSet='" + name +
                               "' mark='c'/></LN0></LDevice>") +
                       "</SCL>"));
    const Kind& kind = KindOf(goose);
    QCOMPARE(MarkOf(kind.controlOfEntry(Marked(root, "entry"))), QString("c"));
    QCOMPARE(MarkOf(kind.entryOf(Marked(root, "c"))), QString("entry"));
    QCOMPARE(MarkOf(kind.controlOfDataSet(Marked(root, "set"))), QString("c"));
}

QTEST_MAIN(SCLHelp_ControlBlocksTest)
#include "SCLHelp_ControlBlocksTest.moc"
