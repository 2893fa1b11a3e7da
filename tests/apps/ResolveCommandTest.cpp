// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

const char* const goodInput = R"(iedName="P" ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind1" )"
                              R"(intAddr="K/GGIO7.In1")";

// P sends Ind1 by g and has Ind2 in a data set that nothing sends. S has the inputs.
QByteArray Station(const QByteArray& inputs)
{
    return R"(<SCL><IED name="P"><AccessPoint><Server><LDevice inst="L"><LN0 lnClass="LLN0">
    <DataSet name="d"><FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind1"/></DataSet>
    <DataSet name="e"><FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind2"/></DataSet>
    <GSEControl name="g" datSet="d"/>
  </LN0></LDevice></Server></AccessPoint></IED>
  <IED name="S"><AccessPoint><Server><LDevice inst="K">
    <LN0 lnClass="LLN0"><Inputs>)" +
           inputs + R"(</Inputs></LN0>
    <LN lnClass="GGIO" inst="7"><DOI name="In1"><DAI name="stVal"/></DOI></LN>
  </LDevice></Server></AccessPoint></IED></SCL>)";
}

QByteArray ExtRef(const QByteArray& attributes)
{
    return "<ExtRef " + attributes + "/>";
}

const QString extRefPath =
    QStringLiteral("SCL/IED[2]/AccessPoint/Server/LDevice/LN0/Inputs/ExtRef");

QJsonObject Counts(const QString& verdict, int count)
{
    QJsonObject counts{{"resolved", 0},
                       {"no-ied", 0},
                       {"no-logical-device", 0},
                       {"no-member", 0},
                       {"no-control-block", 0},
                       {"address-not-understood", 0},
                       {"address-leads-nowhere", 0}};
    counts[verdict] = count;
    return counts;
}

} // namespace

class ResolveCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFaultHasItsVerdictAndStatus1_data();
    void aFaultHasItsVerdictAndStatus1();
    void anInputThatResolvesHasStatus0();
    void theSummaryCountsEachVerdict();
    void theJsonTellsWhereAnInputLeads();
    void theJsonTellsHowFarAFaultGot();
    void controlCharactersOfTheSentenceDoNotReachTheTerminal();
    void inputsInPrivateElementsDoNotCount();
    void aFileWithoutInputsHasStatus0();
    void aVeryDeepFileIsJudged();
    void allInputsOfTheSampleResolve();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void ResolveCommandTest::aFaultHasItsVerdictAndStatus1_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("verdict");

    const auto row = [](const char* name, const char* from, const char* to, const char* verdict) {
        QTest::newRow(name) << QByteArray(from) << QByteArray(to) << QString::fromLatin1(verdict);
    };
    row("unknown IED", "iedName=\"P\"", "iedName=\"X\"", "no-ied");
    row("no IED named", "iedName=\"P\"", "", "no-ied");
    row("unknown logical device", "ldInst=\"L\"", "ldInst=\"X\"", "no-logical-device");
    row("no logical device named", "ldInst=\"L\"", "", "no-logical-device");
    row("data in no data set", "Ind1", "Ind3", "no-member");
    row("data set that nothing sends", "Ind1", "Ind2", "no-control-block");
    row("address of another shape", "K/GGIO7.In1", "In1", "address-not-understood");
    row("no address", "intAddr=\"K/GGIO7.In1\"", "", "address-not-understood");
    row("address of another device", "K/GGIO7", "X/GGIO7", "address-leads-nowhere");
    row("address of another node", "K/GGIO7", "K/GGIO8", "address-leads-nowhere");
    row("address of another data object", "In1\"", "In2\"", "address-leads-nowhere");
    row("address of another attribute", "In1\"", "In1.q\"", "address-leads-nowhere");
}

void ResolveCommandTest::aFaultHasItsVerdictAndStatus1()
{
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QString, verdict);
    const QByteArray attributes = QByteArray(goodInput).replace(from, to);
    QVERIFY(attributes != goodInput);
    const TempFile file(Station(ExtRef(attributes)));

    const CommandResult text = RunCommand({QStringLiteral("resolve"), file.Path()});
    const CommandResult json =
        RunCommand({QStringLiteral("resolve"), QStringLiteral("--json"), file.Path()});

    QVERIFY2(text.output.startsWith(verdict + ": " + extRefPath + ": "), qPrintable(text.output));
    QVERIFY2(text.output.endsWith(".\nExtRefs: 1 (1 " + verdict + ")\n"), qPrintable(text.output));
    QCOMPARE(text.errors, QString());
    QCOMPARE(text.status, 1);
    QCOMPARE(JsonOf(json)["extRefs"].toArray()[0].toObject()["verdict"].toString(), verdict);
    QCOMPARE(JsonOf(json)["counts"].toObject(), Counts(verdict, 1));
    QCOMPARE(json.status, 1);
}

void ResolveCommandTest::anInputThatResolvesHasStatus0()
{
    const CommandResult result = RunOn(Station(ExtRef(goodInput)), {QStringLiteral("resolve")});

    QCOMPARE(result.output,
             "resolved: " + extRefPath +
                 ": \"L/GGIO1.Ind1\" of IED \"P\" comes in by control block \"g\" and goes to "
                 "\"K/GGIO7.In1\".\n"
                 "ExtRefs: 1 (1 resolved)\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void ResolveCommandTest::theSummaryCountsEachVerdict()
{
    const QByteArray unknown = ExtRef("iedName=\"X\"");

    const CommandResult result =
        RunOn(Station(unknown + ExtRef(goodInput) + unknown), {QStringLiteral("resolve")});

    QCOMPARE(result.output.section(QLatin1Char('\n'), -2, -2),
             QStringLiteral("ExtRefs: 3 (1 resolved, 2 no-ied)"));
    QVERIFY(result.output.contains("no-ied: " + extRefPath + "[3]: There is no IED \"X\".\n"));
    QCOMPARE(result.status, 1);
}

void ResolveCommandTest::theJsonTellsWhereAnInputLeads()
{
    const CommandResult result =
        RunOn(Station(ExtRef(goodInput)), {QStringLiteral("resolve"), QStringLiteral("--json")});

    const QString publisher = QStringLiteral("SCL/IED/AccessPoint/Server/LDevice/LN0/");
    const QJsonObject extRef{{"path", extRefPath},
                             {"intAddr", "K/GGIO7.In1"},
                             {"verdict", "resolved"},
                             {"text", "\"L/GGIO1.Ind1\" of IED \"P\" comes in by control block "
                                      "\"g\" and goes to \"K/GGIO7.In1\"."},
                             {"fcda", publisher + "DataSet/FCDA"},
                             {"controlBlock", publisher + "GSEControl"},
                             {"target", "SCL/IED[2]/AccessPoint/Server/LDevice/LN/DOI"}};
    QCOMPARE(JsonOf(result),
             (QJsonObject{{"extRefs", QJsonArray{extRef}}, {"counts", Counts("resolved", 1)}}));
    QCOMPARE(result.status, 0);
}

void ResolveCommandTest::theJsonTellsHowFarAFaultGot()
{
    const QByteArray attributes = QByteArray(goodInput).replace("Ind1", "Ind2");

    const QJsonObject extRef =
        JsonOf(RunOn(Station(ExtRef(attributes)),
                     {QStringLiteral("resolve"), QStringLiteral("--json")}))["extRefs"]
            .toArray()[0]
            .toObject();

    QCOMPARE(extRef["fcda"].toString(),
             QStringLiteral("SCL/IED/AccessPoint/Server/LDevice/LN0/DataSet[2]/FCDA"));
    QCOMPARE(extRef["controlBlock"].toString(), QString());
    QCOMPARE(extRef["target"].toString(), QString());
}

void ResolveCommandTest::controlCharactersOfTheSentenceDoNotReachTheTerminal()
{
    const CommandResult result =
        RunOn(Station(ExtRef("iedName=\"a\\&#x9b;2J&#10;b\"")), {QStringLiteral("resolve")});

    QCOMPARE(result.output.section(QLatin1Char('\n'), 0, 0),
             "no-ied: " + extRefPath +
                 QString::fromUtf8(": There is no IED \"a\\\\\uFFFD2J\uFFFDb\"."));
}

void ResolveCommandTest::inputsInPrivateElementsDoNotCount()
{
    const CommandResult result =
        RunOn(Station("<Private>" + ExtRef("iedName=\"X\"") + "</Private>" + ExtRef(goodInput)),
              {QStringLiteral("resolve")});

    QCOMPARE(result.output.section(QLatin1Char('\n'), -2, -2),
             QStringLiteral("ExtRefs: 1 (1 resolved)"));
    QCOMPARE(result.status, 0);
}

void ResolveCommandTest::aFileWithoutInputsHasStatus0()
{
    const TempFile file("<SCL/>");

    const CommandResult text = RunCommand({QStringLiteral("resolve"), file.Path()});
    const CommandResult json =
        RunCommand({QStringLiteral("resolve"), QStringLiteral("--json"), file.Path()});

    QCOMPARE(text.output, QStringLiteral("ExtRefs: 0\n"));
    QCOMPARE(text.status, 0);
    QCOMPARE(JsonOf(json),
             (QJsonObject{{"extRefs", QJsonArray()}, {"counts", Counts("resolved", 0)}}));
    QCOMPARE(json.status, 0);
}

void ResolveCommandTest::aVeryDeepFileIsJudged()
{
    constexpr int depth = 100000;
    const QByteArray text = "<SCL>" + QByteArray("<a><ExtRef iedName=\"X\"/>").repeated(depth) +
                            QByteArray("</a>").repeated(depth) + "</SCL>";

    const CommandResult result = RunOn(text, {QStringLiteral("resolve")});

    QVERIFY(result.output.startsWith(
        QStringLiteral("no-ied: SCL/a/ExtRef: There is no IED \"X\".\nno-ied: SCL/a/a/ExtRef: ")));
    QCOMPARE(result.output.section(QLatin1Char('\n'), -3, -2),
             QStringLiteral("no-ied: (path too long): There is no IED \"X\".\n"
                            "ExtRefs: 100000 (100000 no-ied)"));
    QCOMPARE(result.status, 1);
}

void ResolveCommandTest::allInputsOfTheSampleResolve()
{
    const CommandResult text = RunCommand({QStringLiteral("resolve"), SampleStation()});
    const CommandResult json =
        RunCommand({QStringLiteral("resolve"), QStringLiteral("--json"), SampleStation()});

    QCOMPARE(text.output.section(QLatin1Char('\n'), -2, -2),
             QStringLiteral("ExtRefs: 74 (74 resolved)"));
    QCOMPARE(text.output.count(QStringLiteral("resolved: SCL/IED")), 74);
    QCOMPARE(text.status, 0);
    QCOMPARE(JsonOf(json)["extRefs"].toArray().size(), 74);
    QCOMPARE(JsonOf(json)["counts"].toObject(), Counts("resolved", 74));
    QCOMPARE(json.status, 0);
}

void ResolveCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("resolve"), {"--json", "FILE"});
}

void ResolveCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no file") << "resolve"
                             << "no file is given";
    QTest::newRow("two files") << "resolve a b"
                               << "more than one file is given";
    QTest::newRow("empty file") << "resolve @"
                                << "the name of a file is empty";
    QTest::newRow("unknown option") << "resolve --ied A a"
                                    << "Unknown option 'ied'.";
}

void ResolveCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(ResolveCommandTest)
#include "ResolveCommandTest.moc"
