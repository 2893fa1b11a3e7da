// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLAddressAudit.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

using Parameter = SCLAddressAudit::Parameter;
using Problem = SCLAddressAudit::Problem;
using Severity = SCLAddressAudit::Severity;

namespace
{

QByteArray P(const QByteArray& type, const QByteArray& value)
{
    return "<P type='" + type + "'>" + value + "</P>";
}

// An entry "GSE a" or "SMV a" and so on, its name being its mark as well.
QByteArray Entry(const QByteArray& tagAndName, const QByteArray& parameters)
{
    const QByteArray tag = tagAndName.left(3);
    const QByteArray name = tagAndName.mid(4);
    return "<" + tag + " ldInst='L' cbName='" + name + "' mark='" + name + "'><Address>" +
           parameters + "</Address></" + tag + ">";
}

QByteArray Entry(const QByteArray& tagAndName, const QByteArray& mac, const QByteArray& appId)
{
    return Entry(tagAndName, P("MAC-Address", mac) + P("APPID", appId));
}

QByteArray ConnectedAP(const QByteArray& entries, const QByteArray& ied = "I")
{
    return "<ConnectedAP iedName='" + ied + "' apName='A'>" + entries + "</ConnectedAP>";
}

QByteArray Ied(const QByteArray& controls, const QByteArray& name = "I")
{
    return "<IED name='" + name + "'><AccessPoint name='A'><Server><LDevice inst='L'><LN0>" +
           controls + "</LN0></LDevice></Server></AccessPoint></IED>";
}

QByteArray Station(const QByteArray& connectedAPs, const QByteArray& ieds)
{
    return "<SCL><Communication><SubNetwork name='N'>" + connectedAPs +
           "</SubNetwork></Communication>" + ieds + "</SCL>";
}

// One GOOSE entry whose control block is there.
QByteArray StationOfOne(const QByteArray& parameters)
{
    return Station(ConnectedAP(Entry("GSE a", parameters)), Ied("<GSEControl name='a'/>"));
}

QString WordOf(Problem problem)
{
    switch (problem) {
    case Problem::Duplicate:
        return "duplicate";
    case Problem::OutOfRange:
        return "range";
    case Problem::NotMulticast:
        return "no multicast";
    case Problem::Unreadable:
        return "unreadable";
    case Problem::Missing:
        return "missing";
    case Problem::StatedTwice:
        return "twice";
    case Problem::UnusualForm:
        return "form";
    case Problem::EntryWithoutControlBlock:
        return "no control";
    case Problem::RepeatedEntry:
        return "repeated";
    case Problem::ControlBlockWithoutEntry:
        return "no entry";
    }
    return "?";
}

QString WordOf(Parameter parameter)
{
    const QStringList words{"", " MAC", " APPID", " VLAN-ID", " PRIORITY"};
    return words.value(static_cast<int>(parameter));
}

// "error duplicate MAC of b with a", one text for each finding.
QStringList Findings(const SCLAddressAudit& audit)
{
    QStringList texts;
    const QList<SCLAddressAudit::Finding> allFindings = audit.Findings();
    for (const SCLAddressAudit::Finding& finding : allFindings)
        texts.append((finding.severity == Severity::Error ? "error " : "warning ") +
                     WordOf(finding.problem) + WordOf(finding.parameter) + " of " +
                     MarkOf(finding.element) +
                     (finding.other ? " with " + MarkOf(finding.other) : QString()));
    return texts;
}

QStringList FindingsOf(const QByteArray& station)
{
    TestControl control;
    return Findings(SCLAddressAudit(control.OpenRoot(station)));
}

const QByteArray goodMac = P("MAC-Address", "01-0C-CD-01-00-01");
const QByteArray goodAppId = P("APPID", "0001");

} // namespace

class SCLAddressAuditTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aGoodStationHasNoFindings();
    void entriesStandInDocumentOrder();
    void anEntryHoldsItsValuesAndItsPlace();

    void aMacAddressIsReadInAnyForm_data();
    void aMacAddressIsReadInAnyForm();
    void otherParametersAreReadAsNumbers_data();
    void otherParametersAreReadAsNumbers();
    void numbersHaveOneText();

    void valuesAreJudged_data();
    void valuesAreJudged();
    void sampledValuesHaveRangesOfTheirOwn_data();
    void sampledValuesHaveRangesOfTheirOwn();

    void equalNumbersAreDuplicatesAcrossKinds();
    void eachDuplicateIsComparedWithTheFirst();
    void entriesOfOneControlBlockMayShareAddresses();
    void anEntryWithoutControlBlockIsFound_data();
    void anEntryWithoutControlBlockIsFound();
    void aControlBlockWithoutEntryIsFound();
    void aSecondEntryInOneConnectedAPIsFound();
    void findingsStandInDocumentOrder();

    void sentencesNameWhatIsWrong();
    void sentencesHideWhatHasNoShape();

    void theRangesTellHowFullTheyAre();
    void aFullRangeHasNoFreeNumber();
    void onlyErrorsCountAsErrors();
    void noRootGivesAnEmptyAudit();
    void anUpdateLeavesNoErrors();
    void manyEntriesAreAuditedInLinearTime();
};

void SCLAddressAuditTest::aGoodStationHasNoFindings()
{
    TestControl control;
    const SCLAddressAudit audit(control.OpenRoot(Station(
        ConnectedAP(Entry("GSE a", goodMac + goodAppId + P("VLAN-ID", "00A") +
                                       P("VLAN-PRIORITY", "4") + P("IP", "x")) +
                    Entry("SMV b", "01-0C-CD-04-00-01", "4001")),
        Ied("<GSEControl name='a'/><SampledValueControl name='b'/><ReportControl name='r'/>"))));
    QCOMPARE(Findings(audit), QStringList());
    QVERIFY(!audit.HasErrors());
    QCOMPARE(audit.Entries().size(), 2);
}

void SCLAddressAuditTest::entriesStandInDocumentOrder()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><Communication><SubNetwork><ConnectedAP><SMV mark='3'/><GSE mark='1'/>"
        "<GSE mark='2'/><Private><GSE mark='no'/></Private></ConnectedAP><GSE mark='no'/>"
        "</SubNetwork><SubNetwork><ConnectedAP/><ConnectedAP><SMV mark='4'/></ConnectedAP>"
        "</SubNetwork></Communication><Communication><SubNetwork><ConnectedAP><GSE mark='no'/>"
        "</ConnectedAP></SubNetwork></Communication></SCL>");
    QStringList marks;
    const QList<SCLAddressAudit::Entry> allEntrys = SCLAddressAudit(root).Entries();
    for (const SCLAddressAudit::Entry& entry : allEntrys)
        marks.append(MarkOf(entry.element));
    QCOMPARE(marks, QStringList({"1", "2", "3", "4"}));
}

void SCLAddressAuditTest::anEntryHoldsItsValuesAndItsPlace()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot(Station(ConnectedAP(Entry("SMV b", " 01-0c-cd-04-00-01 ", "zz")),
                                 Ied("<SampledValueControl name='b' mark='control'/>")));
    const SCLAddressAudit::Entry entry = SCLAddressAudit(root).Entries().constFirst();
    QVERIFY(entry.kind == SCLAddressAudit::Kind::SampledValues);
    QCOMPARE(entry.element, Marked(root, "b"));
    QCOMPARE(entry.subNetwork, At(root, "Communication/SubNetwork"));
    QCOMPARE(entry.connectedAP, At(root, "Communication/SubNetwork/ConnectedAP"));
    QCOMPARE(entry.controlBlock, Marked(root, "control"));
    QCOMPARE(entry.macAddress.text, QString("01-0c-cd-04-00-01"));
    QCOMPARE(entry.macAddress.number, qint64(0x010CCD040001));
    QCOMPARE(entry.appId.text, QString("zz"));
    QVERIFY(!entry.appId.IsReadable());
    QCOMPARE(entry.vlanId.text, QString());
    QVERIFY(!entry.vlanPriority.IsReadable());
}

void SCLAddressAuditTest::aMacAddressIsReadInAnyForm_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("number");
    const qint64 number = 0x010CCD01000A;
    QTest::newRow("as it should be") << QByteArray("01-0C-CD-01-00-0A") << number;
    QTest::newRow("lower case") << QByteArray("01-0c-cd-01-00-0a") << number;
    QTest::newRow("colons") << QByteArray("01:0C:CD:01:00:0A") << number;
    QTest::newRow("no separators") << QByteArray("010CCD01000A") << number;
    QTest::newRow("single digits") << QByteArray("1-C-CD-1-0-A") << number;
    QTest::newRow("white space around") << QByteArray("\n\t01-0C-CD-01-00-0A ") << number;
    QTest::newRow("all ones") << QByteArray("FF-FF-FF-FF-FF-FF") << qint64(0xFFFFFFFFFFFF);
    QTest::newRow("mixed separators") << QByteArray("01-0C-CD-01:00:0A") << qint64(-1);
    QTest::newRow("five groups") << QByteArray("01-0C-CD-01-00") << qint64(-1);
    QTest::newRow("seven groups") << QByteArray("01-0C-CD-01-00-0A-") << qint64(-1);
    QTest::newRow("an empty group") << QByteArray("01-0C-CD--00-0A") << qint64(-1);
    QTest::newRow("three digits in a group") << QByteArray("01-0C-CD-001-0-A") << qint64(-1);
    QTest::newRow("eleven digits") << QByteArray("010CCD01000") << qint64(-1);
    QTest::newRow("thirteen digits") << QByteArray("010CCD01000AA") << qint64(-1);
    QTest::newRow("no digit") << QByteArray("01-0C-CD-01-00-0G") << qint64(-1);
    QTest::newRow("a sign") << QByteArray("01-0C-CD-01-00-+A") << qint64(-1);
    QTest::newRow("digits of another script") << QByteArray("01-0C-CD-01-00-0\u0661") << qint64(-1);
    QTest::newRow("blanks inside") << QByteArray("01 0C CD 01 00 0A") << qint64(-1);
    QTest::newRow("a megabyte") << QByteArray(1 << 20, '-') << qint64(-1);
}

void SCLAddressAuditTest::aMacAddressIsReadInAnyForm()
{
    TestControl control;
    QFETCH(const QByteArray, text);
    const SCLAddressAudit audit(control.OpenRoot(StationOfOne(P("MAC-Address", text))));
    QTEST(audit.Entries().constFirst().macAddress.number, "number");
}

void SCLAddressAuditTest::otherParametersAreReadAsNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("appId");
    QTest::addColumn<qint64>("vlanId");
    QTest::addColumn<qint64>("priority");
    const auto row = [](const char* text, int appId, int vlanId, int priority) {
        QTest::newRow(text) << QByteArray(text) << qint64(appId) << qint64(vlanId)
                            << qint64(priority);
    };
    row("0004", 4, 4, 4);
    row("4", 4, 4, 4);
    row("00A", 10, 10, -1);
    row("0a", 10, 10, -1);
    row("10", 16, 16, 10);
    row("12345", 0x12345, 0x12345, 12345);
    row("-1", -1, -1, -1);
    row("0x1", -1, -1, -1);
    row("1.0", -1, -1, -1);
    row("1234567890123", -1, -1, -1);
    row("", -1, -1, -1);
}

void SCLAddressAuditTest::otherParametersAreReadAsNumbers()
{
    TestControl control;
    QFETCH(const QByteArray, text);
    const SCLAddressAudit audit(control.OpenRoot(
        StationOfOne(P("APPID", text) + P("VLAN-ID", text) + P("VLAN-PRIORITY", text))));
    const SCLAddressAudit::Entry entry = audit.Entries().constFirst();
    QTEST(entry.appId.number, "appId");
    QTEST(entry.vlanId.number, "vlanId");
    QTEST(entry.vlanPriority.number, "priority");
}

void SCLAddressAuditTest::numbersHaveOneText()
{
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::MacAddress, 0x010CCD01000A),
             QString("01-0C-CD-01-00-0A"));
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::AppId, 10), QString("000A"));
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::VlanId, 10), QString("00A"));
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::VlanPriority, 4), QString("4"));
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::None, 4), QString());
    QCOMPARE(SCLAddressAudit::TextOf(Parameter::AppId, -1), QString());
}

void SCLAddressAuditTest::valuesAreJudged_data()
{
    QTest::addColumn<QByteArray>("parameters");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& parameters,
                        const QStringList& findings) {
        QTest::newRow(name) << parameters << findings;
    };
    const auto mac = [](const char* text) { return P("MAC-Address", text) + goodAppId; };
    const auto appId = [](const char* text) { return goodMac + P("APPID", text); };
    const auto vlan = [](const char* text) { return goodMac + goodAppId + P("VLAN-ID", text); };
    const auto priority = [](const char* text) {
        return goodMac + goodAppId + P("VLAN-PRIORITY", text);
    };
    row("no address", "", {"error missing MAC of a", "error missing APPID of a"});
    row("empty values", P("MAC-Address", "") + P("APPID", " "),
        {"error missing MAC of a", "error missing APPID of a"});
    row("first MAC", mac("01-0C-CD-01-00-00"), {});
    row("last MAC", mac("01-0C-CD-01-01-FF"), {});
    row("MAC behind the last", mac("01-0C-CD-01-02-00"), {"warning range MAC of a"});
    row("MAC of sampled values", mac("01-0C-CD-04-00-00"), {"warning range MAC of a"});
    row("MAC of a device", mac("00-0C-CD-01-00-01"), {"error no multicast MAC of a"});
    row("MAC in another form", mac("01:0C:CD:01:00:00"), {"warning form MAC of a"});
    row("MAC outside in another form", mac("01-0c-cd-02-00-00"),
        {"warning range MAC of a", "warning form MAC of a"});
    row("unreadable MAC", mac("?"), {"error unreadable MAC of a"});
    row("first APPID", appId("0000"), {});
    row("last APPID", appId("3FFF"), {});
    row("APPID behind the last", appId("4000"), {"error range APPID of a"});
    row("first of type 1A", appId("8000"), {});
    row("last of type 1A", appId("BFFF"), {});
    row("APPID behind type 1A", appId("C000"), {"error range APPID of a"});
    row("APPID with five digits", appId("10001"), {"error range APPID of a"});
    row("short APPID", appId("1"), {"warning form APPID of a"});
    row("APPID in lower case", appId("000a"), {"warning form APPID of a"});
    row("unreadable APPID", appId("none"), {"error unreadable APPID of a"});
    row("first VLAN", vlan("000"), {});
    row("last VLAN", vlan("FFF"), {});
    row("VLAN behind the last", vlan("1000"), {"error range VLAN-ID of a"});
    row("VLAN with two digits", vlan("0A"), {"warning form VLAN-ID of a"});
    row("VLAN in lower case", vlan("00a"), {"warning form VLAN-ID of a"});
    row("unreadable VLAN", vlan("x"), {"error unreadable VLAN-ID of a"});
    row("empty VLAN", vlan(""), {});
    row("first priority", priority("0"), {});
    row("last priority", priority("7"), {});
    row("priority behind the last", priority("8"), {"error range PRIORITY of a"});
    row("priority with two digits", priority("04"), {"warning form PRIORITY of a"});
    row("unreadable priority", priority("A"), {"error unreadable PRIORITY of a"});
    row("stated twice, the last counts", P("APPID", "x") + goodMac + goodAppId,
        {"warning twice APPID of a"});
}

void SCLAddressAuditTest::valuesAreJudged()
{
    QFETCH(const QByteArray, parameters);
    QTEST(FindingsOf(StationOfOne(parameters)), "findings");
}

void SCLAddressAuditTest::sampledValuesHaveRangesOfTheirOwn_data()
{
    QTest::addColumn<QByteArray>("mac");
    QTest::addColumn<QByteArray>("appId");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* mac, const char* appId, const QStringList& findings) {
        QTest::newRow(qPrintable(QString("%1 %2").arg(mac, appId)))
            << QByteArray(mac) << QByteArray(appId) << findings;
    };
    row("01-0C-CD-04-00-00", "4000", {});
    row("01-0C-CD-04-01-FF", "7FFF", {});
    row("01-0C-CD-04-02-00", "8000", {"warning range MAC of a", "error range APPID of a"});
    row("01-0C-CD-01-00-00", "3FFF", {"warning range MAC of a", "error range APPID of a"});
}

void SCLAddressAuditTest::sampledValuesHaveRangesOfTheirOwn()
{
    QFETCH(const QByteArray, mac);
    QFETCH(const QByteArray, appId);
    QTEST(FindingsOf(Station(ConnectedAP(Entry("SMV a", mac, appId)),
                             Ied("<SampledValueControl name='a'/>"))),
          "findings");
}

void SCLAddressAuditTest::equalNumbersAreDuplicatesAcrossKinds()
{
    QCOMPARE(FindingsOf(Station(ConnectedAP(Entry("GSE a", "01-0C-CD-04-00-0A", "4001")) +
                                    ConnectedAP(Entry("SMV b", "01:0c:cd:04:00:0a", "04001"), "J"),
                                Ied("<GSEControl name='a'/>") +
                                    Ied("<SampledValueControl name='b'/>", "J"))),
             QStringList({"warning range MAC of a", "error range APPID of a",
                          "warning form MAC of b", "error duplicate MAC of b with a",
                          "warning form APPID of b", "error duplicate APPID of b with a"}));
}

void SCLAddressAuditTest::eachDuplicateIsComparedWithTheFirst()
{
    const QByteArray same = goodMac + goodAppId;
    QCOMPARE(FindingsOf(Station(
                 ConnectedAP(Entry("GSE a", same) + Entry("GSE b", same) + Entry("GSE c", same)),
                 Ied("<GSEControl name='a'/><GSEControl name='b'/>"
                     "<GSEControl name='c'/>"))),
             QStringList({"error duplicate MAC of b with a", "error duplicate APPID of b with a",
                          "error duplicate MAC of c with a", "error duplicate APPID of c with a"}));
}

void SCLAddressAuditTest::entriesOfOneControlBlockMayShareAddresses()
{
    const QByteArray connectedAP = ConnectedAP(Entry("GSE a", goodMac + goodAppId));
    QCOMPARE(FindingsOf(Station(connectedAP + "</SubNetwork><SubNetwork>" + connectedAP,
                                Ied("<GSEControl name='a'/>"))),
             QStringList());
    // Without a control block nobody knows that they are the same.
    QCOMPARE(FindingsOf(Station(connectedAP + connectedAP, "")),
             QStringList({"error no control of a", "error duplicate MAC of a with a",
                          "error duplicate APPID of a with a", "error no control of a"}));
}

void SCLAddressAuditTest::anEntryWithoutControlBlockIsFound_data()
{
    QTest::addColumn<QByteArray>("ied");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("there is one") << Ied("<GSEControl name='a'/>") << false;
    QTest::newRow("no IED") << QByteArray() << true;
    QTest::newRow("another name") << Ied("<GSEControl name='A'/>") << true;
    QTest::newRow("another kind") << Ied("<SampledValueControl name='a'/>") << true;
    QTest::newRow("another IED") << Ied("<GSEControl name='a'/>", "J") << true;
    QTest::newRow("second IED of the name, which alone has the access point")
        << "<IED name='I'/>" + Ied("<GSEControl name='a'/>") << false;
    QTest::newRow("second access point of the name")
        << Ied("") + Ied("<GSEControl name='a'/>") << true;
    QTest::newRow("in a second LN0") << Ied("</LN0><LN0><GSEControl name='a'/>") << true;
    QTest::newRow("in an LN") << Ied("</LN0><LN><GSEControl name='a'/></LN><LN0>") << true;
    QTest::newRow("in a second LDevice of the inst")
        << Ied("</LN0></LDevice><LDevice inst='L'><LN0><GSEControl name='a'/>") << false;
}

void SCLAddressAuditTest::anEntryWithoutControlBlockIsFound()
{
    TestControl control;
    QFETCH(const QByteArray, ied);
    QFETCH(const bool, isFound);
    SCLElement* root =
        control.OpenRoot(Station(ConnectedAP(Entry("GSE a", goodMac + goodAppId)), ied));
    QCOMPARE(Findings(SCLAddressAudit(root)).contains("error no control of a"), isFound);
    QCOMPARE(SCLHelp::GetGSEControlFromGSE(Marked(root, "a")) == nullptr, isFound);
}

void SCLAddressAuditTest::aControlBlockWithoutEntryIsFound()
{
    QCOMPARE(FindingsOf(Station(ConnectedAP("<GSE cbName='a' ldInst='L'/>"),
                                Ied("<GSEControl name='b' datSet='d' mark='b'/>"
                                    "<SampledValueControl name='a' datSet='d' mark='s'/>"
                                    "<GSEControl name='c' mark='c'/><GSEControl name='a'/>")))
                 .mid(2),
             QStringList({"error no entry of b", "warning no entry of c", "error no entry of s"}));
}

void SCLAddressAuditTest::aSecondEntryInOneConnectedAPIsFound()
{
    const QByteArray first = Entry("GSE a", goodMac + goodAppId);
    QByteArray second = Entry("GSE a", "01-0C-CD-01-00-02", "0002");
    second.replace("mark='a'", "mark='again'");
    QCOMPARE(FindingsOf(Station(ConnectedAP(first + second), Ied("<GSEControl name='a'/>"))),
             QStringList("warning repeated of again with a"));
}

void SCLAddressAuditTest::findingsStandInDocumentOrder()
{
    QCOMPARE(FindingsOf(Station(ConnectedAP(Entry("SMV s", "01-0C-CD-04-00-01", "x") +
                                            Entry("GSE g", "x", "0001")) +
                                    "</SubNetwork><SubNetwork>" +
                                    ConnectedAP(Entry("GSE h", "01-0C-CD-01-00-01", "y"), "J"),
                                Ied("<SampledValueControl name='s'/><GSEControl name='g'/>"
                                    "<GSEControl name='z' mark='z'/>") +
                                    Ied("<GSEControl name='h'/><GSEControl mark='last'/>", "J"))),
             QStringList({"error unreadable MAC of g", "error unreadable APPID of s",
                          "error unreadable APPID of h", "warning no entry of z",
                          "warning no entry of last"}));
}

void SCLAddressAuditTest::sentencesNameWhatIsWrong()
{
    TestControl control;
    const SCLAddressAudit audit(control.OpenRoot(
        Station(ConnectedAP(Entry("GSE a", goodMac + goodAppId) +
                            Entry("GSE b", P("MAC-Address", "1-0c-CD-1-0-1") + P("APPID", "C000") +
                                               P("VLAN-ID", "%1"))),
                Ied("<GSEControl name='a'/><GSEControl name='c' datSet='d'/>"))));
    QStringList texts;
    const QList<SCLAddressAudit::Finding> allFindings = audit.Findings();
    for (const SCLAddressAudit::Finding& finding : allFindings)
        texts.append(finding.text);
    QCOMPARE(texts,
             QStringList({QString("I.A L/b: MAC-Address \"1-0c-CD-1-0-1\" should be written "
                                  "01-0C-CD-01-00-01."),
                          "I.A L/b: MAC-Address 01-0C-CD-01-00-01 is that of I.A L/a, too.",
                          QString("I.A L/b: APPID C000 is outside the range of GOOSE, 0000 to 3FFF "
                                  "and 8000 to BFFF."),
                          "I.A L/b: \"%1\" is no VLAN-ID.", "I.A L/b has no GSEControl.",
                          "I.A L/c has no GSE, and so no address."}));
}

void SCLAddressAuditTest::sentencesHideWhatHasNoShape()
{
    TestControl control;
    const SCLAddressAudit audit(control.OpenRoot(
        Station("<ConnectedAP iedName='" + QByteArray(1 << 20, 'n') +
                    "' apName='&#x202E;'><GSE ldInst='%2' cbName='%1'/></ConnectedAP>",
                "")));
    QCOMPARE(audit.Findings().constFirst().text,
             QString(80, 'n') + QString::fromUtf8("\u2026.\uFFFD %2/%1 has no MAC-Address."));
}

void SCLAddressAuditTest::theRangesTellHowFullTheyAre()
{
    TestControl control;
    const SCLAddressAudit audit(control.OpenRoot(Station(
        ConnectedAP(Entry("GSE a", "01-0C-CD-01-00-00", "0000") +
                    Entry("GSE b", "01-0C-CD-01-01-FF", "BFFF") +
                    Entry("GSE c", "01-0C-CD-01-01-FF", "BFFF") +
                    Entry("SMV d", "01-0C-CD-01-00-01", "4000") + Entry("SMV e", "?", "7FFF") +
                    Entry("SMV f", "01-0C-CD-04-00-01", "C000")),
        "")));
    QStringList texts;
    const QList<SCLAddressAudit::Range> allRanges = audit.Ranges();
    for (const SCLAddressAudit::Range& range : allRanges)
        texts.append(QString("%1: %2 of %3 from %4 to %5, next %6")
                         .arg(range.name)
                         .arg(range.used)
                         .arg(range.Size())
                         .arg(SCLAddressAudit::TextOf(range.parameter, range.first),
                              SCLAddressAudit::TextOf(range.parameter, range.last),
                              SCLAddressAudit::TextOf(range.parameter, range.firstFree)));
    QCOMPARE(texts, QStringList({QString("GOOSE MAC-Address: 3 of 512 from 01-0C-CD-01-00-00 to "
                                         "01-0C-CD-01-01-FF, next 01-0C-CD-01-00-02"),
                                 QString("SV MAC-Address: 1 of 512 from 01-0C-CD-04-00-00 to "
                                         "01-0C-CD-04-01-FF, next 01-0C-CD-04-00-00"),
                                 "GOOSE APPID: 1 of 16384 from 0000 to 3FFF, next 0001",
                                 "GOOSE APPID, type 1A: 1 of 16384 from 8000 to BFFF, next 8000",
                                 "SV APPID: 2 of 16384 from 4000 to 7FFF, next 4001"}));
}

void SCLAddressAuditTest::aFullRangeHasNoFreeNumber()
{
    QByteArray entries;
    for (int i = 0; i < 512; ++i)
        entries += Entry(
            "GSE a", SCLAddressAudit::TextOf(Parameter::MacAddress, 0x010CCD010000 + i).toLatin1(),
            "");
    TestControl control;
    const SCLAddressAudit audit(control.OpenRoot(Station(ConnectedAP(entries), "")));
    QCOMPARE(audit.Ranges().constFirst().used, 512);
    QCOMPARE(audit.Ranges().constFirst().firstFree, qint64(-1));
}

void SCLAddressAuditTest::onlyErrorsCountAsErrors()
{
    TestControl control;
    const SCLAddressAudit warned(control.OpenRoot(StationOfOne(goodMac + P("APPID", "1"))));
    QCOMPARE(warned.Findings().size(), 1);
    QVERIFY(!warned.HasErrors());
    QVERIFY(SCLAddressAudit(control.OpenRoot(StationOfOne(goodMac))).HasErrors());
}

void SCLAddressAuditTest::noRootGivesAnEmptyAudit()
{
    TestControl control;
    for (SCLElement* root : {static_cast<SCLElement*>(nullptr), control.OpenRoot("<SCL/>")}) {
        const SCLAddressAudit audit(root);
        QVERIFY(audit.Entries().isEmpty());
        QVERIFY(audit.Findings().isEmpty());
        QCOMPARE(audit.Ranges().size(), 5);
        QCOMPARE(audit.Ranges().constLast().used, 0);
        QCOMPARE(audit.Ranges().at(2).firstFree, qint64(1));
    }
}

void SCLAddressAuditTest::anUpdateLeavesNoErrors()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(
        ConnectedAP(Entry("GSE stale", "x", "y")) + ConnectedAP("", "J"),
        Ied("<GSEControl name='a' datSet='d'/><SampledValueControl name='s' datSet='d'/>") +
            Ied("<GSEControl name='a' datSet='d'/><SampledValueControl name='s' datSet='d'/>",
                "J")));
    QVERIFY(SCLAddressAudit(root).HasErrors());
    const QList<SCLElement*> connectedAPs =
        At(root, "Communication/SubNetwork")->FindChildByType("ConnectedAP", false);
    for (SCLElement* connectedAP : connectedAPs)
        QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    const SCLAddressAudit audit(root);
    QCOMPARE(audit.Entries().size(), 4);
    QVERIFY(!audit.HasErrors());
}

void SCLAddressAuditTest::manyEntriesAreAuditedInLinearTime()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(ConnectedAP(""), Ied("")));
    SCLElement* connectedAP = At(root, "Communication/SubNetwork/ConnectedAP");
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i) {
        SCLElement* entry = connectedAP->CreateChild("GSE", -1, false);
        SCLElement* address = entry->CreateChild("Address", -1, false);
        address->CreateChild("P", {{"type", "APPID"}}, -1, false)->SetValue("0001", false);
    }
    const SCLAddressAudit audit(root);
    QCOMPARE(audit.Entries().size(), count);
    // Each lacks a MAC address and a control block, and all but the first repeat the APPID.
    QCOMPARE(audit.Findings().size(), 3 * count - 1);
}

QTEST_MAIN(SCLAddressAuditTest)
#include "SCLAddressAuditTest.moc"
