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

// The generation of an IED in the station with a piece of it replaced.
CrcRun RunOf(const QByteArray& station, const QString& ied = "P")
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    return CrcRun(control.Open(station), ied);
}

CrcRun RunWith(const QByteArray& from, const QByteArray& to, const QString& ied = "P")
{
    return RunOf(CrcStationText(from, to), ied);
}

QString GooseOf(const CrcRun& run)
{
    return SectionOf(run.canonical, "GOOSEPUB");
}

QString SampledValuesOf(const CrcRun& run)
{
    return SectionOf(run.canonical, "SVPUB");
}

// The copied control block, access point and data set of GOOSE in the usual station.
const QString g_control =
    R"(<GSEControlappID="P g"confRev="1"datSet="dsG"name="g"><Privatetype="own">p</Private>)"
    "</GSEControl>";
const QString g_connection =
    R"(<ConnectedAPapName="A"iedName="P"><GSEcbName="g"ldInst="L"><Address><Ptype="APPID">0001</P>)"
    R"(</Address></GSE><SMVcbName="v"ldInst="L"><Address><Ptype="APPID">4001</P></Address></SMV>)"
    R"(<PhysConntype="Connection"><Ptype="Port">1-A</P></PhysConn></ConnectedAP>)";
const QString g_dataSet =
    R"(<DataSetname="dsG"><FCDAbType="Dbpos"daName="stVal"doName="Pos"fc="ST"ldInst="L")"
    R"(lnClass="XCBR"lnInst="1"prefix="Q"><DAIname="stVal"sAddr="1.2"><Val>off</Val></DAI></FCDA>)"
    R"(<FCDAbType="Quality"daName="q"doName="Pos"fc="ST"ldInst="L"lnClass="XCBR"lnInst="1")"
    R"(prefix="Q"/></DataSet>)";

QString Reference(const QString& content)
{
    return R"(<GOOSEPUB><GOCBrefname="PL/LLN0$GO$g">)" + content + "</GOCBref></GOOSEPUB>";
}

} // namespace

class CrcGenerator_PublicationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSectionShowsControlBlockConnectionAndDataSet();
    void theSectionOfSampledValuesIsItsCounterpart();
    void theReadableFormShowsDescriptionsOfMembers();
    void anIedWithoutControlBlocksHasNoSection_data();
    void anIedWithoutControlBlocksHasNoSection();
    void anAccessPointWithoutServerAddsNothing();
    void onlyTheFirstServerAndTheFirstLN0AreLookedAt();
    void controlBlocksComeInDocumentOrder();
    void aControlBlockWithoutEntryStandsAlone();
    void theNextControlBlockIsStillShown();
    void aMissingDataSetLeavesTheConnection_data();
    void aMissingDataSetLeavesTheConnection();
    void eachControlBlockShowsOnlyItsOwnEntry();
    void theAddressOfTheAccessPointIsNotShown();
    void entriesOfTheOtherKindStay();
    void aTypeWithoutInstanceShowsItsTypeAlone();
    void aMemberWithoutDataObjectHasItsAttributesAlone();
    void aWholeDataObjectIsShownWithoutItsUnits();
    void aMemberThatIsADataObjectHasNoType();
    void membersInSchemaOrderStandBehindOtherChildren();
    void allAttributesOfAMemberAreKept();
};

void CrcGenerator_PublicationsTest::aSectionShowsControlBlockConnectionAndDataSet()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection + g_dataSet));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::theSectionOfSampledValuesIsItsCounterpart()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(SampledValuesOf(run),
             QString(R"(<SVPUB><SMVCBrefname="PL/LLN0$MS$v"><SampledValueControlconfRev="1")"
                     R"(datSet="dsV"name="v"smvID="P v"/>)") +
                 g_connection +
                 R"(<DataSetname="dsV"><FCDAdoName="Amp"fc="MX"ldInst="L"lnClass="TCTR")"
                 R"(lnInst="1"><DOIname="Amp"><SDIname="instMag"><DAIname="i"/></SDI>)"
                 R"(<DAIname="q"/></DOI></FCDA></DataSet></SMVCBref></SVPUB>)");
}

void CrcGenerator_PublicationsTest::theReadableFormShowsDescriptionsOfMembers()
{
    const CrcRun run = RunOf(CrcStationText());

    QCOMPARE(
        PieceOf(run.readable, "        <FCDA bType=\"Dbpos\"", "</FCDA>"),
        QString(
            R"(        <FCDA bType="Dbpos" daName="stVal" desc="breaker position" doName="Pos" fc="ST" ldInst="L" lnClass="XCBR" lnInst="1" prefix="Q">
          <DAI name="stVal" sAddr="1.2">
            <Val>off</Val>
          </DAI>
        </FCDA>)"));
    QVERIFY(!run.readable.contains("hidden"));
}

void CrcGenerator_PublicationsTest::anIedWithoutControlBlocksHasNoSection_data()
{
    QTest::addColumn<QByteArray>("ied");

    QTest::newRow("no AccessPoint") << QByteArray("<IED name='X'/>");
    QTest::newRow("no LDevice") << QByteArray(
        "<IED name='X'><AccessPoint><Server/></AccessPoint></IED>");
    QTest::newRow("no LN0") << QByteArray("<IED name='X'><AccessPoint><Server><LDevice inst='L'/>"
                                          "</Server></AccessPoint></IED>");
    QTest::newRow("in an LN") << QByteArray(
        "<IED name='X'><AccessPoint><Server><LDevice inst='L'><LN0/><LN><GSEControl name='g'/>"
        "<SampledValueControl name='v'/></LN></LDevice></Server></AccessPoint></IED>");
}

void CrcGenerator_PublicationsTest::anIedWithoutControlBlocksHasNoSection()
{
    QFETCH(QByteArray, ied);

    const CrcRun run = RunOf("<SCL>" + ied + "</SCL>", "X");

    QCOMPARE(run.result, CrcGenerator::CrcNoConnection);
    QVERIFY(run.IsUntouched());
}

void CrcGenerator_PublicationsTest::anAccessPointWithoutServerAddsNothing()
{
    const CrcRun usual = RunOf(CrcStationText());

    const CrcRun run = RunWith("<AccessPoint name='A'><Server><LDevice inst='L'>",
                               "<AccessPoint name='0'/><AccessPoint name='A'><Server>"
                               "<LDevice inst='L'>");

    QCOMPARE(run.canonical, usual.canonical);
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::onlyTheFirstServerAndTheFirstLN0AreLookedAt()
{
    const CrcRun usual = RunOf(CrcStationText());

    const CrcRun run = RunOf(Replaced(
        CrcStationText("<LN prefix='Q'",
                       "<LN0 lnClass='LLN0'><GSEControl name='late'/></LN0><LN prefix='Q'"),
        "</LDevice></Server></AccessPoint></IED>\n<IED name='S'",
        "</LDevice></Server><Server><LDevice inst='M'><LN0><GSEControl name='later'/></LN0>"
        "</LDevice></Server></AccessPoint></IED>\n<IED name='S'"));

    QCOMPARE(run.canonical, usual.canonical);
}

void CrcGenerator_PublicationsTest::controlBlocksComeInDocumentOrder()
{
    const CrcRun run =
        RunWith("<GSEControl name='g'", "<GSEControl name='z'/><GSEControl name='a'/>"
                                        "<GSEControl name='g'");

    const QString goose = GooseOf(run);
    QVERIFY(goose.indexOf("$z\"") > 0);
    QVERIFY(goose.indexOf("$z\"") < goose.indexOf("$a\""));
    QVERIFY(goose.indexOf("$a\"") < goose.indexOf("$g\""));
}

void CrcGenerator_PublicationsTest::aControlBlockWithoutEntryStandsAlone()
{
    const CrcRun run = RunWith("cbName='g'", "cbName='other'");

    QCOMPARE(GooseOf(run), Reference(g_control));
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_PublicationsTest::theNextControlBlockIsStillShown()
{
    const CrcRun run =
        RunWith("<GSEControl name='g'", "<GSEControl name='f'/><GSEControl name='g'");

    QCOMPARE(GooseOf(run),
             QString(R"(<GOOSEPUB><GOCBrefname="PL/LLN0$GO$f"><GSEControlname="f"/></GOCBref>)"
                     R"(<GOCBrefname="PL/LLN0$GO$g">)") +
                 g_control + g_connection + g_dataSet + "</GOCBref></GOOSEPUB>");
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_PublicationsTest::aMissingDataSetLeavesTheConnection_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");

    QTest::newRow("wrong name") << QByteArray("<DataSet name='dsG'")
                                << QByteArray("<DataSet name='dsH'");
    QTest::newRow("in an LN of the device")
        << QByteArray("<DataSet name='dsG'")
        << QByteArray("<Log><DataSet name='dsG'/></Log><DataSet name='dsH'");
}

void CrcGenerator_PublicationsTest::aMissingDataSetLeavesTheConnection()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);

    const CrcRun run = RunWith(from, to);

    QCOMPARE(GooseOf(run), Reference(g_control + g_connection));
    QCOMPARE(run.result, g_failed);
}

void CrcGenerator_PublicationsTest::eachControlBlockShowsOnlyItsOwnEntry()
{
    const CrcRun run = RunOf(Replaced(
        CrcStationText("<GSEControl name='g'",
                       "<GSEControl name='h' datSet='dsG'/><GSEControl name='g'"),
        "<SMV ",
        "<GSE ldInst='L' cbName='h'><Address><P type='APPID'>0002</P></Address></GSE><SMV "));

    const QString first = PieceOf(run.canonical, "$GO$h\">", "</GOCBref>");
    const QString second = PieceOf(run.canonical, "$GO$g\">", "</GOCBref>");
    QVERIFY(first.contains("0002") && !first.contains("0001"));
    QVERIFY(second.contains("0001") && !second.contains("0002"));
    for (const QString& reference : {first, second}) {
        QCOMPARE(reference.count("<GSEcbName"), decltype(reference.size())(1));
        QVERIFY(reference.contains("<SMV"));
        QVERIFY(reference.contains("<PhysConn"));
    }
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::theAddressOfTheAccessPointIsNotShown()
{
    const CrcRun run = RunOf(CrcStationText());

    QVERIFY(!run.canonical.contains("10.0.0.1"));
    QVERIFY(!run.readable.contains("10.0.0.1"));
}

void CrcGenerator_PublicationsTest::entriesOfTheOtherKindStay()
{
    const QByteArray two = "<SMV ldInst='X' cbName='foreign'/><GSE ldInst='X' cbName='foreign'/>"
                           "<PhysConn type='Connection'>";

    const CrcRun run = RunWith("<PhysConn type='Connection'>", two);

    QVERIFY(GooseOf(run).contains(R"(<SMVcbName="foreign"ldInst="X"/>)"));
    QVERIFY(!GooseOf(run).contains(R"(<GSEcbName="foreign")"));
    QVERIFY(SampledValuesOf(run).contains(R"(<GSEcbName="foreign"ldInst="X"/>)"));
    QVERIFY(!SampledValuesOf(run).contains(R"(<SMVcbName="foreign")"));
}

void CrcGenerator_PublicationsTest::aTypeWithoutInstanceShowsItsTypeAlone()
{
    const CrcRun run = RunOf(CrcStationText());

    QVERIFY(GooseOf(run).contains(R"(<FCDAbType="Quality"daName="q"doName="Pos"fc="ST"ldInst="L")"
                                  R"(lnClass="XCBR"lnInst="1"prefix="Q"/>)"));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::aMemberWithoutDataObjectHasItsAttributesAlone()
{
    const CrcRun run = RunWith("doName='Pos' daName='q'", "doName='None' daName='q'");

    QVERIFY(GooseOf(run).contains(R"(<FCDAdaName="q"doName="None"fc="ST"ldInst="L"lnClass="XCBR")"
                                  R"(lnInst="1"prefix="Q"/>)"));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::aWholeDataObjectIsShownWithoutItsUnits()
{
    const CrcRun run = RunWith("<DAI name='i'/>", "<DAI name='i' desc='x'/><DAI name='dU'/>");

    QCOMPARE(
        PieceOf(run.canonical, "<DOIname=\"Amp\"", "</DOI>"),
        QString(R"(<DOIname="Amp"><SDIname="instMag"><DAIname="i"/></SDI><DAIname="q"/></DOI>)"));
}

void CrcGenerator_PublicationsTest::aMemberThatIsADataObjectHasNoType()
{
    const CrcRun run = RunOf(CrcStationText());

    QVERIFY(!SampledValuesOf(run).contains("bType"));
}

void CrcGenerator_PublicationsTest::membersInSchemaOrderStandBehindOtherChildren()
{
    const CrcRun run = RunWith("</DataSet>\n    <DataSet name='dsV'>",
                               "<Private type='x' desc='y'>z</Private></DataSet>\n"
                               "    <DataSet name='dsV'>");

    QVERIFY(GooseOf(run).contains(
        R"(<DataSetname="dsG"><Privatetype="x">z</Private><FCDAbType="Dbpos")"));
    QCOMPARE(run.result, g_success);
}

void CrcGenerator_PublicationsTest::allAttributesOfAMemberAreKept()
{
    const CrcRun run = RunWith("daName='q' fc='ST'", "daName='q' fc='ST' desc='own' ix='' zz='1'");

    QVERIFY(GooseOf(run).contains(
        R"(<FCDAbType="Quality"daName="q"desc="own"doName="Pos"fc="ST"ix=""ldInst="L")"));
    QVERIFY(GooseOf(run).contains(R"(prefix="Q"zz="1"/>)"));
}

QTEST_MAIN(CrcGenerator_PublicationsTest)
#include "CrcGenerator_PublicationsTest.moc"
