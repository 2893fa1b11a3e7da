// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

// P sends GOOSE g (Ind1.stVal, Ind1.q) and sampled values s (Amp). S and T take them in.
const char* const station = R"(<SCL>
  <IED name="P"><AccessPoint><Server><LDevice inst="L"><LN0 lnClass="LLN0">
    <DataSet name="dg">
      <FCDA ldInst="L" prefix="X" lnClass="GGIO" lnInst="1" doName="Ind1" daName="stVal" fc="ST"/>
      <FCDA ldInst="L" lnClass="GGIO" lnInst="2" doName="Ind2" fc="ST"/>
    </DataSet>
    <DataSet name="d&#9;s"><FCDA ldInst="L" lnClass="TCTR" lnInst="1" doName="Amp" fc="MX"/></DataSet>
    <GSEControl name="g" datSet="dg"/>
    <SampledValueControl name="s" datSet="d&#9;s"/>
  </LN0></LDevice></Server></AccessPoint></IED>
  <IED name="S"><AccessPoint><Server><LDevice inst="K"><LN0><Inputs>
    <ExtRef iedName="P" ldInst="L" lnClass="TCTR" lnInst="1" doName="Amp" intAddr="a&#9;b"/>
    <ExtRef iedName="P" ldInst="L" prefix="X" lnClass="GGIO" lnInst="1" doName="Ind1" daName="stVal" intAddr="1/2:K/GGIO1.In1.stVal"/>
    <ExtRef iedName="None" ldInst="L" lnClass="GGIO" lnInst="2" doName="Ind2"/>
    <ExtRef iedName="P" ldInst="L" lnClass="GGIO" lnInst="2" doName="Ind2"/>
  </Inputs></LN0></LDevice></Server></AccessPoint></IED>
  <IED name="T"><AccessPoint><Server><LDevice inst="K"><LN0><Inputs>
    <ExtRef iedName="P" ldInst="L" lnClass="GGIO" lnInst="2" doName="Ind2" intAddr="x"/>
  </Inputs></LN0><LN><Inputs>
    <ExtRef iedName="P" ldInst="L" lnClass="TCTR" lnInst="1" doName="Amp" intAddr="y"/>
  </Inputs></LN></LDevice></Server></AccessPoint></IED></SCL>)";

const QString inputs2 = QStringLiteral("SCL/IED[2]/AccessPoint/Server/LDevice/LN0/Inputs/");
const QString dataSet = QStringLiteral("SCL/IED/AccessPoint/Server/LDevice/LN0/DataSet/");

// The subscriptions as "IED kind control-block" and so on, one a line.
QStringList Short(const CommandResult& result)
{
    QStringList lines;
    const QJsonArray subscriptions = JsonOf(result)["subscriptions"].toArray();
    for (const auto& value : subscriptions) {
        const QJsonObject subscription = value.toObject();
        QStringList ports;
        const QJsonArray list = subscription["ports"].toArray();
        for (const auto& port : list)
            ports.append(port.toString());
        lines.append(QStringLiteral("%1 %2 %3: %4 by %5")
                         .arg(subscription["ied"].toString(), subscription["kind"].toString(),
                              subscription["controlBlock"].toString(),
                              QString::number(subscription["extRefs"].toArray().size()),
                              ports.isEmpty() ? "none" : ports.join(QLatin1Char('/'))));
    }
    return lines;
}

} // namespace

class SubscriptionsCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextGroupsByIedAndControlBlock();
    void theJsonTellsEachSubscription();
    void theOptionsChoose_data();
    void theOptionsChoose();
    void withoutSubscriptionsNothingIsShown();
    void anIedThatIsNotThereIsAWrongUse();
    void theSampleSubscribesAsDescribed();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void SubscriptionsCommandTest::theTextGroupsByIedAndControlBlock()
{
    const CommandResult result = RunOn(station, {QStringLiteral("subscriptions")});

    QCOMPARE(result.output, "S\n"
                            "  GOOSE PL/LLN0.g, data set dg, ports 1, 2\n"
                            "    " +
                                inputs2 +
                                "ExtRef[2]: \"1/2:K/GGIO1.In1.stVal\" <- L/XGGIO1.Ind1.stVal\n"
                                "    " +
                                inputs2 +
                                "ExtRef[4]: \"\" <- L/GGIO2.Ind2\n"
                                "  SV PL/LLN0.s, data set d\\ts\n"
                                "    " +
                                inputs2 +
                                "ExtRef: \"a\\tb\" <- L/TCTR1.Amp\n"
                                "T\n"
                                "  GOOSE PL/LLN0.g, data set dg\n"
                                "    SCL/IED[3]/AccessPoint/Server/LDevice/LN0/Inputs/ExtRef: "
                                "\"x\" <- L/GGIO2.Ind2\n"
                                "  SV PL/LLN0.s, data set d\\ts\n"
                                "    SCL/IED[3]/AccessPoint/Server/LDevice/LN/Inputs/ExtRef: "
                                "\"y\" <- L/TCTR1.Amp\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void SubscriptionsCommandTest::theJsonTellsEachSubscription()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("subscriptions"), QStringLiteral("--ied=S"),
                        QStringLiteral("--json")});

    const QJsonArray gooseExtRefs{QJsonObject{{"path", inputs2 + "ExtRef[2]"},
                                              {"intAddr", "1/2:K/GGIO1.In1.stVal"},
                                              {"fcda", "L/XGGIO1.Ind1.stVal"},
                                              {"fcdaPath", dataSet + "FCDA"}},
                                  QJsonObject{{"path", inputs2 + "ExtRef[4]"},
                                              {"intAddr", ""},
                                              {"fcda", "L/GGIO2.Ind2"},
                                              {"fcdaPath", dataSet + "FCDA[2]"}}};
    const QJsonArray svExtRefs{
        QJsonObject{{"path", inputs2 + "ExtRef"},
                    {"intAddr", "a\tb"},
                    {"fcda", "L/TCTR1.Amp"},
                    {"fcdaPath", "SCL/IED/AccessPoint/Server/LDevice/LN0/DataSet[2]/FCDA"}}};
    const QJsonArray expected{QJsonObject{{"ied", "S"},
                                          {"kind", "GOOSE"},
                                          {"controlBlock", "PL/LLN0.g"},
                                          {"publisher", "P"},
                                          {"dataSet", "dg"},
                                          {"ports", QJsonArray{"1", "2"}},
                                          {"extRefs", gooseExtRefs}},
                              QJsonObject{{"ied", "S"},
                                          {"kind", "SV"},
                                          {"controlBlock", "PL/LLN0.s"},
                                          {"publisher", "P"},
                                          {"dataSet", "d\ts"},
                                          {"ports", QJsonArray()},
                                          {"extRefs", svExtRefs}}};
    QCOMPARE(JsonOf(result), (QJsonObject{{"subscriptions", expected}}));
    QCOMPARE(result.status, 0);
}

void SubscriptionsCommandTest::theOptionsChoose_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("expected");

    const QString sGoose = QStringLiteral("S GOOSE PL/LLN0.g: 2 by 1/2");
    const QString sSv = QStringLiteral("S SV PL/LLN0.s: 1 by none");
    const QString tGoose = QStringLiteral("T GOOSE PL/LLN0.g: 1 by none");
    const QString tSv = QStringLiteral("T SV PL/LLN0.s: 1 by none");
    QTest::newRow("all") << QStringList() << QStringList{sGoose, sSv, tGoose, tSv};
    QTest::newRow("GOOSE") << QStringList{"--goose"} << QStringList{sGoose, tGoose};
    QTest::newRow("sampled values") << QStringList{"--sv"} << QStringList{sSv, tSv};
    QTest::newRow("one IED") << QStringList{"--ied=T"} << QStringList{tGoose, tSv};
    QTest::newRow("two IEDs, in the order of the file")
        << QStringList{"--ied=T", "--ied=S"} << QStringList{sGoose, sSv, tGoose, tSv};
    QTest::newRow("one IED and one kind") << QStringList{"--ied=T", "--sv"} << QStringList{tSv};
    QTest::newRow("a publisher") << QStringList{"--ied=P"} << QStringList();
}

void SubscriptionsCommandTest::theOptionsChoose()
{
    QFETCH(const QStringList, options);
    QFETCH(const QStringList, expected);

    const CommandResult result = RunOn(
        station, QStringList{QStringLiteral("subscriptions"), QStringLiteral("--json")} + options);

    QVERIFY(JsonOf(result).contains("subscriptions"));
    QCOMPARE(Short(result), expected);
    QCOMPARE(result.status, 0);
}

void SubscriptionsCommandTest::withoutSubscriptionsNothingIsShown()
{
    const CommandResult result = RunOn("<SCL/>", {QStringLiteral("subscriptions")});

    QCOMPARE(result.output, QString());
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void SubscriptionsCommandTest::anIedThatIsNotThereIsAWrongUse()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("subscriptions"), QStringLiteral("--ied=X")});

    QCOMPARE(result.errors, QStringLiteral("corvane: subscriptions: there is no IED 'X'\n"
                                           "corvane: try 'corvane subscriptions --help'\n"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

// Half of the inputs of sampled values are the quality that goes with a value.
void SubscriptionsCommandTest::theSampleSubscribesAsDescribed()
{
    const CommandResult result =
        RunCommand({QStringLiteral("subscriptions"), QStringLiteral("--json"), SampleStation()});

    QCOMPARE(Short(result), (QStringList{"E01F1 GOOSE E02F1CTRL/LLN0.gocbILK: 5 by none",
                                         "E01F1 GOOSE E01U1RPIT/LLN0.gocb0: 4 by 3-A",
                                         "E01F1 GOOSE E01U1RPIT/LLN0.gocb1: 3 by 3-A",
                                         "E01F1 GOOSE E02F1PIGO/LLN0.gocb0: 2 by 3-B/3-C",
                                         "E01F1 SV E01U1MU01/LLN0.smvcb0: 6 by 4-A/4-B",
                                         "E02F1 GOOSE E01F1CTRL/LLN0.gocbILK: 5 by none",
                                         "E02F1 GOOSE E01F1MEAS/LLN0.gocbMEAS: 3 by none",
                                         "E02F1 GOOSE E02U1RPIT/LLN0.gocb0: 4 by 3-A",
                                         "E02F1 GOOSE E02U1RPIT/LLN0.gocb1: 3 by 3-A",
                                         "E02F1 GOOSE E01F1PIGO/LLN0.gocb0: 2 by 3-B/3-C",
                                         "E02F1 SV E02U1MU01/LLN0.smvcb0: 6 by 4-A/4-B",
                                         "E01U1 GOOSE E01F1PIGO/LLN0.gocb0: 5 by 1-A",
                                         "E01U1 GOOSE E02F1PIGO/LLN0.gocb0: 1 by 1-A/1-B",
                                         "E02U1 GOOSE E02F1PIGO/LLN0.gocb0: 4 by 1-A",
                                         "E02U1 GOOSE E01F1PIGO/LLN0.gocb0: 1 by 1-A/1-B",
                                         "AA1G1 GOOSE E01F1CTRL/LLN0.gocbILK: 2 by none",
                                         "AA1G1 GOOSE E02F1CTRL/LLN0.gocbILK: 2 by none",
                                         "AA1G1 GOOSE E01F1MEAS/LLN0.gocbMEAS: 4 by none"}));
    QCOMPARE(result.status, 0);
}

void SubscriptionsCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("subscriptions"),
                {"--ied <NAME>", "--goose", "--sv", "--json", "FILE"});
}

void SubscriptionsCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no file") << "subscriptions"
                             << "no file is given";
    QTest::newRow("two files") << "subscriptions a b"
                               << "more than one file is given";
    QTest::newRow("both kinds") << "subscriptions --goose --sv a"
                                << "--goose and --sv exclude each other";
    QTest::newRow("empty name") << "subscriptions --ied @ a"
                                << "the option --ied has an empty value";
    QTest::newRow("unknown option") << "subscriptions --mms a"
                                    << "Unknown option 'mms'.";
}

void SubscriptionsCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(SubscriptionsCommandTest)
#include "SubscriptionsCommandTest.moc"
