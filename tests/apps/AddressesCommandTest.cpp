// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

QByteArray Address(const QByteArray& mac, const QByteArray& appId)
{
    return "<Address><P type=\"MAC-Address\">" + mac + "</P><P type=\"VLAN-ID\">00A</P>" +
           "<P type=\"VLAN-PRIORITY\">4</P><P type=\"APPID\">" + appId + "</P></Address>";
}

// I sends GOOSE g and sampled values s on N. \a entries stand beside the entry of g.
QByteArray Station(const QByteArray& entries, const QByteArray& connectedAPs = {})
{
    return R"(<SCL xmlns="http://www.iec.ch/61850/2003/SCL"><Header id="x"/><Communication>
  <SubNetwork name="N"><ConnectedAP iedName="I" apName="A">
    <GSE ldInst="L" cbName="g">)" +
           Address("01-0C-CD-01-00-01", "0001") + "</GSE>" + entries + "</ConnectedAP>" +
           connectedAPs + R"(</SubNetwork></Communication>
  <IED name="I"><AccessPoint name="A"><Server><Authentication/><LDevice inst="L">
    <LN0 lnClass="LLN0" inst="" lnType="t">
      <GSEControl name="g" datSet="d"/><SampledValueControl name="s" datSet="d"/>
    </LN0></LDevice></Server></AccessPoint></IED></SCL>)";
}

QByteArray GoodStation()
{
    return Station("<SMV ldInst=\"L\" cbName=\"s\">" + Address("01-0C-CD-04-00-01", "4001") +
                   "</SMV>");
}

const QString entryPath = QStringLiteral("SCL/Communication/SubNetwork/ConnectedAP/");
const QString schema = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");
const QString ranges = QStringLiteral(
    "Ranges:\n"
    "  GOOSE MAC-Address     01-0C-CD-01-00-00 - 01-0C-CD-01-01-FF      1 of   512 used (  1 %), "
    "next free 01-0C-CD-01-00-00\n"
    "  SV MAC-Address        01-0C-CD-04-00-00 - 01-0C-CD-04-01-FF      1 of   512 used (  1 %), "
    "next free 01-0C-CD-04-00-00\n"
    "  GOOSE APPID           0000 - 3FFF                                1 of 16384 used (  1 %), "
    "next free 0002\n"
    "  GOOSE APPID, type 1A  8000 - BFFF                                0 of 16384 used (  0 %), "
    "next free 8000\n"
    "  SV APPID              4000 - 7FFF                                1 of 16384 used (  1 %), "
    "next free 4000\n");

QStringList UpdateArguments(const QString& input, const QString& output)
{
    return {QStringLiteral("addresses"),
            input,
            QStringLiteral("--update"),
            QStringLiteral("--schema"),
            schema,
            QStringLiteral("-o"),
            output};
}

} // namespace

class AddressesCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTableShowsEachEntryBySubNetwork();
    void findingsFollowTheTable();
    void errorsHaveStatus1AndWarningsDoNot_data();
    void errorsHaveStatus1AndWarningsDoNot();
    void theJsonTellsEntriesFindingsAndRanges();
    void longAndStrangeTextsAreTamed();
    void aFileWithoutEntriesHasOnlyRanges();
    void theSampleIsGood();

    void theUpdateIsShownAndSaved();
    void aDryRunWritesNothing();
    void ipAddressesComeOnlyOnRequest();
    void theJsonTellsTheChanges();
    void aConnectedAPThatLeadsNowhereHasStatus1();
    void anAccessPointWithoutServerHasNothingToSend();
    void anUpdateOfTheSampleChangesNothing();
    void whatAnUpdateWritesIsValid();
    void withoutASchemaNothingIsWritten();

    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();

private:
    TempFolder m_folder;
};

void AddressesCommandTest::theTableShowsEachEntryBySubNetwork()
{
    const CommandResult result = RunOn(GoodStation(), {QStringLiteral("addresses")});

    QCOMPARE(result.output,
             "  Access point  Kind   Control block  MAC-Address        APPID  VLAN-ID  "
             "VLAN-PRIORITY\n"
             "N\n"
             "  I.A           GOOSE  L/g            01-0C-CD-01-00-01  0001   00A      4\n"
             "  I.A           SV     L/s            01-0C-CD-04-00-01  4001   00A      4\n" +
                 ranges + "Entries: 2, errors: 0, warnings: 0\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void AddressesCommandTest::findingsFollowTheTable()
{
    const CommandResult result =
        RunOn(Station("<SMV ldInst='L' cbName='t'>" + Address("01:0C:CD:04:00:01", "1") + "</SMV>"),
              {QStringLiteral("addresses")});

    QCOMPARE(result.output.section(QLatin1Char('\n'), 10),
             "warning: unusual-form: I.A L/t: MAC-Address \"01:0C:CD:04:00:01\" should be written "
             "01-0C-CD-04-00-01.\n"
             "error: out-of-range: I.A L/t: APPID 0001 is outside the range of sampled values, "
             "4000 to 7FFF.\n"
             "warning: unusual-form: I.A L/t: APPID \"1\" should be written 0001.\n"
             "error: duplicate: I.A L/t: APPID 0001 is that of I.A L/g, too.\n"
             "error: no-control-block: I.A L/t has no SampledValueControl.\n"
             "error: no-entry: I.A L/s has no SMV, and so no address.\n"
             "Entries: 2, errors: 4, warnings: 2\n");
    QCOMPARE(result.status, 1);
}

void AddressesCommandTest::errorsHaveStatus1AndWarningsDoNot_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("finding");
    QTest::addColumn<int>("status");
    const auto row = [](const char* finding, const char* from, const char* to, int status) {
        QTest::newRow(finding) << QByteArray(from) << QByteArray(to) << QString(finding) << status;
    };
    row("duplicate", ">4001<", ">0001<", 1);
    row("out-of-range", ">4001<", ">8000<", 1);
    row("out-of-range", "01-0C-CD-04-00-01", "01-0C-CD-04-02-00", 0);
    row("not-multicast", "01-0C-CD-04-00-01", "00-0C-CD-04-00-01", 1);
    row("unreadable", ">4001<", ">x<", 1);
    row("missing", ">4001<", "><", 1);
    row("stated-twice", "<P type=\"APPID\">4001", "<P type=\"APPID\"/><P type=\"APPID\">4001", 0);
    row("unusual-form", "01-0C-CD-04-00-01", "01-0c-cd-04-00-01", 0);
    row("no-control-block", "SampledValueControl name=\"s\"", "SampledValueControl name=\"t\"", 1);
    row("repeated-entry", "<SMV ", "<SMV ldInst=\"L\" cbName=\"s\"/><SMV ", 1);
    row("no-entry", "</LN0>", "<GSEControl name=\"u\" datSet=\"d\"/></LN0>", 1);
    row("no-entry", "</LN0>", "<GSEControl name=\"u\"/></LN0>", 0);
}

void AddressesCommandTest::errorsHaveStatus1AndWarningsDoNot()
{
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QString, finding);
    const CommandResult result =
        RunOn(GoodStation().replace(from, to), {QStringLiteral("addresses")});

    QVERIFY2(result.output.contains(": " + finding + ": "), qPrintable(result.output));
    QTEST(result.status, "status");
}

void AddressesCommandTest::theJsonTellsEntriesFindingsAndRanges()
{
    const QJsonObject answer =
        JsonOf(RunOn(GoodStation().replace("4001", " 1"),
                     {QStringLiteral("addresses"), QStringLiteral("--json")}));

    const auto value = [](const char* text, const char* number) {
        return QJsonObject{{"text", text}, {"value", number}};
    };
    QCOMPARE(answer["entries"].toArray().at(1).toObject(),
             (QJsonObject{{"path", entryPath + "SMV"},
                          {"kind", "SV"},
                          {"subNetwork", "N"},
                          {"ied", "I"},
                          {"accessPoint", "A"},
                          {"ldInst", "L"},
                          {"cbName", "s"},
                          {"controlBlock", "SCL/IED/AccessPoint/Server/LDevice/LN0/"
                                           "SampledValueControl"},
                          {"mac", value("01-0C-CD-04-00-01", "01-0C-CD-04-00-01")},
                          {"appId", value("1", "0001")},
                          {"vlanId", value("00A", "00A")},
                          {"vlanPriority", value("4", "4")}}));
    QCOMPARE(answer["findings"].toArray().last().toObject(),
             (QJsonObject{{"path", entryPath + "SMV"},
                          {"severity", "error"},
                          {"problem", "duplicate"},
                          {"parameter", "APPID"},
                          {"other", entryPath + "GSE"},
                          {"text", "I.A L/s: APPID 0001 is that of I.A L/g, too."}}));
    QCOMPARE(answer["ranges"].toArray().at(2).toObject(), (QJsonObject{{"name", "GOOSE APPID"},
                                                                       {"first", "0000"},
                                                                       {"last", "3FFF"},
                                                                       {"size", 16384},
                                                                       {"used", 1},
                                                                       {"nextFree", "0002"}}));
    QCOMPARE(answer["entries"].toArray().size(), 2);
    QCOMPARE(answer["ranges"].toArray().size(), 5);
    QCOMPARE(answer["errors"].toInt(), 2);
    QCOMPARE(answer["warnings"].toInt(), 1);
}

void AddressesCommandTest::longAndStrangeTextsAreTamed()
{
    const QByteArray name(100000, 'n');
    const CommandResult result =
        RunOn(GoodStation().replace("\"s\"", "\"" + name + "\"").replace("4001", "4&#x202e;1"),
              {QStringLiteral("addresses")});

    QVERIFY(result.output.size() < 4000);
    QVERIFY(!result.output.contains(QChar(0x202e)));
    QVERIFY(result.output.contains("4\\u202E1", Qt::CaseInsensitive));
    QCOMPARE(result.status, 1);
}

void AddressesCommandTest::aFileWithoutEntriesHasOnlyRanges()
{
    const CommandResult result = RunOn("<SCL/>", {QStringLiteral("addresses")});

    QVERIFY(result.output.startsWith("Ranges:\n"));
    QVERIFY(result.output.endsWith("\nEntries: 0, errors: 0, warnings: 0\n"));
    QCOMPARE(result.status, 0);
}

void AddressesCommandTest::theSampleIsGood()
{
    const CommandResult result = RunCommand({QStringLiteral("addresses"), SampleStation()});

    QVERIFY(result.output.contains("  E01U1.G1      GOOSE  RPIT/gocb1     01-0C-CD-01-01-12  0112  "
                                   " 015      3\n"));
    QVERIFY(result.output.endsWith("\nEntries: 11, errors: 0, warnings: 0\n"));
    QCOMPARE(result.status, 0);
}

void AddressesCommandTest::theUpdateIsShownAndSaved()
{
    const QByteArray station =
        Station("<GSE ldInst='L' cbName='old'>" + Address("01-0C-CD-01-00-02", "0002") + "</GSE>");
    const QString input = m_folder.Write("in.scd", station);
    const QString output = m_folder.Path("out.scd");

    const CommandResult result = RunCommand(UpdateArguments(input, output));

    QCOMPARE(result.output,
             "N\n"
             "  removed     I.A GSE L/old: APPID 0002, MAC-Address 01-0C-CD-01-00-02, VLAN-ID 00A, "
             "VLAN-PRIORITY 4\n"
             "  added       I.A SMV L/s: APPID 4000, MAC-Address 01-0C-CD-01-40-00, VLAN-ID 000, "
             "VLAN-PRIORITY 4\n"
             "Added: 1, removed: 1\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(input), station);
    const QByteArray written = ReadFile(output);
    QVERIFY(!written.contains("old"));
    QVERIFY(written.contains("<SMV cbName=\"s\" ldInst=\"L\">"));
    QCOMPARE(RunCommand(UpdateArguments(output, output)).output, "Added: 0, removed: 0\n");
}

void AddressesCommandTest::aDryRunWritesNothing()
{
    const QString file = m_folder.Write("dry.scd", Station(""));

    const CommandResult result =
        RunCommand({QStringLiteral("addresses"), file, QStringLiteral("--update"),
                    QStringLiteral("--dry-run"), QStringLiteral("-o"), file});

    QVERIFY(result.output.endsWith("\nAdded: 1, removed: 0 (dry run, nothing is written)\n"));
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(file), Station(""));
}

void AddressesCommandTest::ipAddressesComeOnlyOnRequest()
{
    const auto linesOf = [](const QStringList& options) {
        return RunOn(GoodStation(), QStringList{"addresses", "--update", "--dry-run"} + options)
            .output;
    };
    QCOMPARE(linesOf({}), QString("Added: 0, removed: 0 (dry run, nothing is written)\n"));
    QCOMPARE(linesOf({"--with-ip"}),
             QString("N\n  added       I.A Address: IP 0.0.0.0, IP-SUBNET 255.255.0.0\n"
                     "Added: 1, removed: 0 (dry run, nothing is written)\n"));
}

void AddressesCommandTest::theJsonTellsTheChanges()
{
    const CommandResult result = RunOn(Station("", "<ConnectedAP iedName='X' apName='Y'/>"),
                                       {QStringLiteral("addresses"), QStringLiteral("--update"),
                                        QStringLiteral("--dry-run"), QStringLiteral("--json")});

    const QJsonObject added{{"action", "added"},
                            {"subNetwork", "N"},
                            {"ied", "I"},
                            {"accessPoint", "A"},
                            {"tag", "SMV"},
                            {"ldInst", "L"},
                            {"cbName", "s"},
                            {"details", QJsonArray{"APPID 4000", "MAC-Address 01-0C-CD-01-40-00",
                                                   "VLAN-ID 000", "VLAN-PRIORITY 4"}}};
    const QJsonObject notUpdated{{"action", "not-updated"},
                                 {"subNetwork", "N"},
                                 {"ied", "X"},
                                 {"accessPoint", "Y"},
                                 {"tag", ""},
                                 {"ldInst", ""},
                                 {"cbName", ""},
                                 {"details", QJsonArray{"there is no such access point"}}};
    QCOMPARE(JsonOf(result), (QJsonObject{{"changes", QJsonArray{added, notUpdated}},
                                          {"dryRun", true},
                                          {"added", 1},
                                          {"removed", 0},
                                          {"notUpdated", 1}}));
    QCOMPARE(result.status, 1);
}

void AddressesCommandTest::aConnectedAPThatLeadsNowhereHasStatus1()
{
    const QString output = m_folder.Path("nowhere.scd");
    const QString input =
        m_folder.Write("nowhere.in.scd",
                       Station("", "<ConnectedAP iedName=\"X\" apName=\"Y\"><GSE/></ConnectedAP>"));

    const CommandResult result = RunCommand(UpdateArguments(input, output));

    QVERIFY(result.output.contains("  not-updated X.Y: there is no such access point\n"));
    QVERIFY(result.output.endsWith("\nAdded: 1, removed: 0, ConnectedAPs not updated: 1\n"));
    QCOMPARE(result.status, 1);
    QVERIFY(ReadFile(output).contains("<GSE/>"));
}

void AddressesCommandTest::anAccessPointWithoutServerHasNothingToSend()
{
    QByteArray station = GoodStation();
    station.replace("</SubNetwork>", "<ConnectedAP iedName='C' apName='A'/></SubNetwork>");
    station.replace("</SCL>", "<IED name='C'><AccessPoint name='A'/></IED></SCL>");

    const CommandResult result =
        RunOn(station, {QStringLiteral("addresses"), QStringLiteral("--update"),
                        QStringLiteral("--dry-run")});

    QCOMPARE(result.output, QString("Added: 0, removed: 0 (dry run, nothing is written)\n"));
    QCOMPARE(result.status, 0);
}

void AddressesCommandTest::anUpdateOfTheSampleChangesNothing()
{
    const CommandResult result =
        RunCommand({QStringLiteral("addresses"), SampleStation(), QStringLiteral("--update"),
                    QStringLiteral("--dry-run")});

    QCOMPARE(result.output, QString("Added: 0, removed: 0 (dry run, nothing is written)\n"));
    QCOMPARE(result.status, 0);
}

void AddressesCommandTest::whatAnUpdateWritesIsValid()
{
    QByteArray station = ReadFile(SampleStation());
    station.replace("<GSE ldInst=\"RPIT\" cbName=\"gocb1\">",
                    "<GSE ldInst=\"RPIT\" cbName=\"gone\">");
    const QString input = m_folder.Write("sample.scd", station);
    const QString output = m_folder.Path("updated.scd");

    QCOMPARE(RunCommand(UpdateArguments(input, output) + QStringList("--with-ip")).status, 0);

    QCOMPARE(RunCommand({"validate", "--schema", schema, output}).output, QString());
    const CommandResult audit = RunCommand({QStringLiteral("addresses"), output});
    QVERIFY(audit.output.endsWith("\nEntries: 11, errors: 0, warnings: 0\n"));
}

void AddressesCommandTest::withoutASchemaNothingIsWritten()
{
    const QString file = m_folder.Write("file.scd", Station(""));

    const CommandResult result =
        RunCommand({QStringLiteral("addresses"), file, QStringLiteral("--update"),
                    QStringLiteral("--schema"), file, QStringLiteral("-o"), file});

    QVERIFY(result.errors.startsWith("corvane: " + file + ": "));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(file), Station(""));
}

void AddressesCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("addresses"),
                {QStringLiteral("--update"), QStringLiteral("--with-ip"),
                 QStringLiteral("--dry-run"), QStringLiteral("--schema"),
                 QStringLiteral("--output"), QStringLiteral("--json")});
}

void AddressesCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* arguments, const char* reason) {
        QTest::newRow(arguments) << QString(arguments) << QString(reason);
    };
    row("addresses", "no file is given");
    row("addresses a b", "more than one file is given");
    row("addresses --with-ip a", "the option --with-ip needs --update");
    row("addresses --dry-run a", "the option --dry-run needs --update");
    row("addresses --schema x a", "the option --schema needs --update");
    row("addresses -o x a", "the option --output needs --update");
    row("addresses --update a", "the option --schema is missing");
    row("addresses --update --schema x a", "the option -o is missing");
    row("addresses --update --schema @ a", "the option --schema has an empty value");
}

void AddressesCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(AddressesCommandTest)
#include "AddressesCommandTest.moc"
