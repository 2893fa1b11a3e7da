// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/TestControl.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

constexpr auto g_success = CrcGenerator::CrcSuccess;
constexpr auto g_failed = CrcGenerator::CrcFailed;

CrcRun RunOf(const QByteArray& station, const QString& ied = "S")
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    return CrcRun(control.Open(station), ied);
}

CrcRun RunWith(const QByteArray& from, const QByteArray& to)
{
    return RunOf(CrcStationText(from, to));
}

QString GooseOf(const CrcRun& run)
{
    return SectionOf(run.canonical, "GOOSESUB");
}

const QString g_control = R"(<GSEControlappID="P g"confRev="1"datSet="dsG"name="g"/>)";
const QString g_connection =
    R"(<ConnectedAPapName="A"iedName="P"><GSEcbName="g"ldInst="L"><Address><Ptype="APPID">0001</P>)"
    "</Address></GSE></ConnectedAP>";
const QString g_wired =
    R"(<FCDAbType="Dbpos"><intAddrname="1-A:R/INGGIO1.Ind1.stVal"><DAIname="stVal"sAddr="9.1"/>)"
    "</intAddr></FCDA>";
const QString g_unwired = R"(<FCDAbType="Quality"><intAddrname="NULL"/></FCDA>)";

QString Reference(const QString& content)
{
    return R"(<GOOSESUB><GOCBrefname="PL/LLN0$GO$g">)" + content + "</GOCBref></GOOSESUB>";
}

QString DataSet(const QString& members)
{
    return R"(<DataSetname="dsG">)" + members + "</DataSet>";
}

const QByteArray g_intAddr = "1-A:R/INGGIO1.Ind1.stVal";

} // namespace

class CrcGenerator_SubscriptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSectionShowsWhatIsReceivedAndWhereItEnds();
    void theSectionOfSampledValuesIsItsCounterpart();
    void theReadableFormShowsTheMembersAndTheDescriptions();
    void anIedWithoutInputsOfTheKindHasNoSection();
    void aControlBlockWithoutEntryStandsAlone();
    void theNextRecordIsStillShown();
    void aMemberThatNoInputUsesIsShownUnwired();
    void aMemberMayBeWiredTwice();
    void anInputThatLeadsNowhereIsShownAlone_data();
    void anInputThatLeadsNowhereIsShownAlone();
    void aDataObjectThatIsFoundDescribesAnInputWithoutSource();
    void twoSubscribersDifferInTheirInputsAlone();
    void whatIsPrivateToThePublisherIsNotShown();
    void onlyItsEntryStandsInTheConnection();
    void membersComeInDocumentOrder();
    void otherChildrenOfTheDataSetAreNotShown();
    void theAttributesOfAMemberAreOfTheReadableFormAlone();
    void theTypeOfAMemberIsOfBothForms();
    void theUnitsOfTheTerminalAreNotShown();
    void theServerOfTheInputIsSearched();
};

void CrcGenerator_SubscriptionsTest::aSectionShowsWhatIsReceivedAndWhereItEnds()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection + DataSet(g_wired + g_unwired)));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_SubscriptionsTest::theSectionOfSampledValuesIsItsCounterpart()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(SectionOf(run.canonical, "SVSUB"),
             QString(R"(<SVSUB><SMVCBrefname="PL/LLN0$MS$v"><SampledValueControlconfRev="1")"
                     R"(datSet="dsV"name="v"smvID="P v"/><ConnectedAPapName="A"iedName="P">)"
                     R"(<SMVcbName="v"ldInst="L"><Address><Ptype="APPID">4001</P></Address></SMV>)"
                     R"(</ConnectedAP><DataSetname="dsV"><FCDA>)"
                     R"(<intAddrname="2-A:R/INGGIO1.AnIn1"><DOIname="AnIn1"><DAIname="mag")"
                     R"(sAddr="9.2"/></DOI></intAddr></FCDA></DataSet></SMVCBref></SVSUB>)"));
}

void CrcGenerator_SubscriptionsTest::theReadableFormShowsTheMembersAndTheDescriptions()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(PieceOf(run.readable, "<DataSet name=\"dsG\"", "</DataSet>"),
             QString(
                 R"(<DataSet name="dsG">
        <FCDA bType="Dbpos" daName="stVal" desc="breaker position" doName="Pos" fc="ST" ldInst="L" lnClass="XCBR" lnInst="1" prefix="Q">
          <intAddr desc="input 1" name="1-A:R/INGGIO1.Ind1.stVal">
            <DAI name="stVal" sAddr="9.1"/>
          </intAddr>
        </FCDA>
        <FCDA bType="Quality" daName="q" desc="breaker position" doName="Pos" fc="ST" ldInst="L" lnClass="XCBR" lnInst="1" prefix="Q">
          <intAddr desc="" name="NULL"/>
        </FCDA>
      </DataSet>)"));
}

void CrcGenerator_SubscriptionsTest::anIedWithoutInputsOfTheKindHasNoSection()
{
    const CrcRun run = RunWith("<ExtRef iedName='P' ldInst='L' prefix='Q'",
                               "<ExtRef iedName='none' ldInst='L' prefix='Q'");

    QCOMPARE(GooseOf(run), QString());
    QVERIFY(!SectionOf(run.canonical, "SVSUB").isEmpty());
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_SubscriptionsTest::aControlBlockWithoutEntryStandsAlone()
{
    const CrcRun run = RunWith("cbName='g'", "cbName='other'");

    QCOMPARE(GooseOf(run), Reference(g_control));
    QVERIFY(!SectionOf(run.canonical, "SVSUB").isEmpty());
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_SubscriptionsTest::theNextRecordIsStillShown()
{
    const QByteArray otherSet = "<DataSet name='dsF'><FCDA ldInst='L' doName='F'/></DataSet>"
                                "<GSEControl name='f' datSet='dsF'/><GSEControl name='g'";

    const CrcRun run = RunOf(Replaced(CrcStationText("<GSEControl name='g'", otherSet), "<Inputs>",
                                      "<Inputs><ExtRef iedName='P' ldInst='L' doName='F'/>"));

    QCOMPARE(GooseOf(run),
             R"(<GOOSESUB><GOCBrefname="PL/LLN0$GO$f"><GSEControldatSet="dsF"name="f"/></GOCBref>)"
             R"(<GOCBrefname="PL/LLN0$GO$g">)" +
                 g_control + g_connection + DataSet(g_wired + g_unwired) + "</GOCBref></GOOSESUB>");
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_SubscriptionsTest::aMemberThatNoInputUsesIsShownUnwired()
{
    const CrcRun run = RunOf(CrcStationText());

    QVERIFY(GooseOf(run).contains(g_unwired));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_SubscriptionsTest::aMemberMayBeWiredTwice()
{
    const CrcRun run = RunWith(
        "<Inputs>", "<Inputs><ExtRef iedName='P' ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' "
                    "doName='Pos' daName='stVal' intAddr='R/INGGIO1.AnIn1'/>");

    QVERIFY(GooseOf(run).contains(
        R"(<FCDAbType="Dbpos"><intAddrname="R/INGGIO1.AnIn1"><DOIname="AnIn1"><DAIname="mag")"
        R"(sAddr="9.2"/></DOI></intAddr><intAddrname="1-A:R/INGGIO1.Ind1.stVal"><DAIname="stVal")"
        R"(sAddr="9.1"/></intAddr></FCDA>)"));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_SubscriptionsTest::anInputThatLeadsNowhereIsShownAlone_data()
{
    QTest::addColumn<QByteArray>("intAddr");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not to be parsed") << QByteArray("a:b:c");
    QTest::newRow("no such LDevice") << QByteArray("X/INGGIO1.Ind1.stVal");
    QTest::newRow("no such LN") << QByteArray("R/INGGIO2.Ind1.stVal");
    QTest::newRow("no such DOI") << QByteArray("R/INGGIO1.Ind2.stVal");
}

void CrcGenerator_SubscriptionsTest::anInputThatLeadsNowhereIsShownAlone()
{
    QFETCH(QByteArray, intAddr);

    const CrcRun run = RunWith(g_intAddr, intAddr);

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection +
                                     DataSet(R"(<FCDAbType="Dbpos"><intAddrname=")" +
                                             QString(intAddr) + R"("/></FCDA>)" + g_unwired)));
    QVERIFY(run.readable.contains("<intAddr desc=\"\" name=\"" + intAddr + "\"/>"));
    QCOMPARE(run.result, g_failed);
    QVERIFY(run.crc != g_untouchedCrc);
}

void CrcGenerator_SubscriptionsTest::aDataObjectThatIsFoundDescribesAnInputWithoutSource()
{
    const CrcRun run = RunWith(g_intAddr, "R/INGGIO1.Ind1.none");

    QVERIFY(run.readable.contains(R"(<intAddr desc="input 1" name="R/INGGIO1.Ind1.none"/>)"));
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_SubscriptionsTest::twoSubscribersDifferInTheirInputsAlone()
{
    const CrcRun other = RunOf(CrcStationText(g_intAddr, "R/INGGIO1.AnIn1"));

    QString text = GooseOf(RunOf(CrcStationText()));
    text.replace(
        R"(<intAddrname="1-A:R/INGGIO1.Ind1.stVal"><DAIname="stVal"sAddr="9.1"/>)",
        R"(<intAddrname="R/INGGIO1.AnIn1"><DOIname="AnIn1"><DAIname="mag"sAddr="9.2"/></DOI>)");
    QCOMPARE(GooseOf(other), text);
}

void CrcGenerator_SubscriptionsTest::whatIsPrivateToThePublisherIsNotShown()
{
    const CrcRun run = RunWith("<Private type='own'>p</Private>",
                               "<Private type='own'>p</Private><IEDName apRef='A'>S"
                               "<Private type='deep'/></IEDName>");

    QVERIFY(GooseOf(run).contains(R"(name="g"><IEDNameapRef="A">S</IEDName></GSEControl>)"));
    QVERIFY(!GooseOf(run).contains("Private"));
}

void CrcGenerator_SubscriptionsTest::onlyItsEntryStandsInTheConnection()
{
    const CrcRun run = RunWith("<SMV ", "<GSE ldInst='X' cbName='foreign'/><SMV ");

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection + DataSet(g_wired + g_unwired)));
}

void CrcGenerator_SubscriptionsTest::membersComeInDocumentOrder()
{
    const CrcRun run = RunWith("<DataSet name='dsG' desc='positions'>",
                               "<DataSet name='dsG' desc='positions'><FCDA doName='first'/>");

    QVERIFY(GooseOf(run).contains(
        R"(<DataSetname="dsG"><FCDA><intAddrname="NULL"/></FCDA><FCDAbType="Dbpos">)"));
}

void CrcGenerator_SubscriptionsTest::otherChildrenOfTheDataSetAreNotShown()
{
    const CrcRun run = RunWith("<DataSet name='dsG' desc='positions'>",
                               "<DataSet name='dsG' desc='positions'><Text>t</Text>");

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection + DataSet(g_wired + g_unwired)));
}

void CrcGenerator_SubscriptionsTest::theAttributesOfAMemberAreOfTheReadableFormAlone()
{
    const CrcRun usual = RunOf(CrcStationText());

    const CrcRun run = RunWith("daName='q' fc='ST'", "daName='q' fc='MX' new='1'");

    QCOMPARE(run.crc, usual.crc);
    QVERIFY(run.readable != usual.readable);
}

void CrcGenerator_SubscriptionsTest::theTypeOfAMemberIsOfBothForms()
{
    const CrcRun usual = RunOf(CrcStationText());

    const CrcRun run = RunWith("bType='Quality'", "bType='INT32'");

    QVERIFY(run.crc != usual.crc);
    QVERIFY(run.readable.contains("<FCDA bType=\"INT32\""));
}

void CrcGenerator_SubscriptionsTest::theUnitsOfTheTerminalAreNotShown()
{
    const CrcRun run = RunOf(CrcStationText());

    QVERIFY(!run.canonical.contains("dU"));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_SubscriptionsTest::theServerOfTheInputIsSearched()
{
    // A device of that name below another access point is of no use.
    const CrcRun run = RunOf(Replaced(
        CrcStationText(g_intAddr, "Z/INGGIO1.Ind1.stVal"), "</AccessPoint></IED>\n<IED name='N'>",
        "</AccessPoint><AccessPoint name='B'><Server><LDevice inst='Z'>"
        "<LN prefix='IN' lnClass='GGIO' inst='1'><DOI name='Ind1'><DAI name='stVal'/></DOI></LN>"
        "</LDevice></Server></AccessPoint></IED>\n<IED name='N'>"));

    QVERIFY(GooseOf(run).contains(R"(<intAddrname="Z/INGGIO1.Ind1.stVal"/>)"));
    QCOMPARE(run.result, g_failed);
}

QTEST_MAIN(CrcGenerator_SubscriptionsTest)
#include "CrcGenerator_SubscriptionsTest.moc"
