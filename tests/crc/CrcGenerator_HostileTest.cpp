// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/TestControl.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// A publisher of GOOSE. Its control blocks are \a controls, its data set s is \a members, its
// ConnectedAP holds \a entries and its LN0 besides \a more.
QByteArray Publisher(const QByteArray& controls, const QByteArray& members,
                     const QByteArray& entries, const QByteArray& more = {})
{
    return "<SCL><Communication><SubNetwork><ConnectedAP iedName='P' apName='A'>" + entries +
           "</ConnectedAP></SubNetwork></Communication><IED name='P'><AccessPoint name='A'><Server>"
           "<LDevice inst='L'><LN0 lnClass='LLN0' inst='' lnType='t'><DataSet name='s'>" +
           members + "</DataSet>" + controls + more +
           "</LN0></LDevice></Server></AccessPoint></IED></SCL>";
}

// Two runs, which must agree.
CrcRun RunTwice(SCLElement* ied)
{
    const CrcRun first(ied);
    CrcRun second(ied);
    if (first.result != second.result || first.crc != second.crc ||
        first.canonical != second.canonical ||
        WithoutTime(first.readable) != WithoutTime(second.readable))
        qFatal("two runs differ");
    return second;
}

CrcRun RunOf(const QByteArray& station)
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    return RunTwice(control.OpenRoot(station)->GetFirstChild("IED"));
}

QByteArray Numbered(int count, const QByteArray& pattern)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += QByteArray(pattern).replace('#', QByteArray::number(i));
    return text;
}

const QByteArray g_control = "<GSEControl name='g' datSet='s'/>";
const QByteArray g_entry = "<GSE ldInst='L' cbName='g'/>";

} // namespace

class CrcGenerator_HostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStationOfNothingButReferencesThatDangle();
    void aPrivateMayBeNestedDeeply();
    void dataMayBeNestedDeeply();
    void typesMayGoRoundInACircle();
    void iedsMayBeNested();
    void anElementMayBeItsOwnPublisher();
    void valuesOfSignsAreTold_data();
    void valuesOfSignsAreTold();
    void namesThatNoFileHoldsAreTold();
    void contentBeyondAnyUseIsGivenUp_data();
    void contentBeyondAnyUseIsGivenUp();
    void aLargeStationDoesNotHang_data();
    void aLargeStationDoesNotHang();
};

void CrcGenerator_HostileTest::aStationOfNothingButReferencesThatDangle()
{
    const CrcRun run = RunOf(
        "<SCL><Communication><SubNetwork><ConnectedAP><GSE/><SMV/></ConnectedAP></SubNetwork>"
        "</Communication><IED><AccessPoint><Server><LDevice><LN0><GSEControl/><DataSet><FCDA/>"
        "<FCDA ldInst='x' doName='.' daName='.'/></DataSet><SampledValueControl datSet='x'/>"
        "<Inputs><ExtRef/><ExtRef iedName='x'/><ExtRef ldInst='x' doName='.' daName='.'"
        " intAddr='/./.'/></Inputs><DOI><DAI/></DOI></LN0></LDevice></Server></AccessPoint></IED>"
        "<DataTypeTemplates/></SCL>");

    QCOMPARE(run.result, CrcGenerator::CrcFailed);
    QCOMPARE(SectionOf(run.canonical, "GOOSEPUB"),
             QString(R"(<GOOSEPUB><GOCBrefname="/LLN0$GO$"><GSEControl/><ConnectedAP><GSE/>)"
                     R"(<SMV/></ConnectedAP><DataSet><FCDA/><FCDAdaName="."doName="."ldInst="x"/>)"
                     R"(</DataSet></GOCBref></GOOSEPUB>)")
                 .replace("/LLN0$GO$", PieceOf(run.canonical, "/", "\"").chopped(1)));
}

void CrcGenerator_HostileTest::aPrivateMayBeNestedDeeply()
{
    constexpr int depth = 100000;
    const CrcRun run = RunOf(
        Publisher("<GSEControl name='g' datSet='s'>" + QByteArray("<Private>").repeated(depth) +
                      "x" + QByteArray("</Private>").repeated(depth) + "</GSEControl>",
                  "", g_entry));

    QCOMPARE(run.result, CrcGenerator::CrcSuccess);
    QCOMPARE(run.canonical.count("<Private>"), decltype(run.canonical.size())(depth));
    QCOMPARE(run.readable.count("<Private>"), decltype(run.canonical.size())(depth));
}

void CrcGenerator_HostileTest::dataMayBeNestedDeeply()
{
    constexpr int depth = 100000;
    const CrcRun run =
        RunOf(Publisher(g_control, "<FCDA ldInst='L' lnClass='LLN0' doName='D'/>", g_entry,
                        "<DOI name='D'>" + QByteArray("<SDI>").repeated(depth) + "<DAI name='a'/>" +
                            QByteArray("</SDI>").repeated(depth) + "</DOI>"));

    QCOMPARE(run.result, CrcGenerator::CrcSuccess);
    QCOMPARE(run.canonical.count("<SDI>"), decltype(run.canonical.size())(depth));
}

void CrcGenerator_HostileTest::typesMayGoRoundInACircle()
{
    QByteArray station = Publisher(g_control,
                                   "<FCDA ldInst='L' lnClass='LLN0' doName='D' daName='" +
                                       QByteArray("a.").repeated(100000) + "a'/>",
                                   g_entry, "<DOI name='D'/>");
    station.replace("</SCL>", "<DataTypeTemplates><LNodeType id='t'><DO name='D' type='t'/>"
                              "</LNodeType><DOType id='t'><DA name='a' bType='Struct' type='t'/>"
                              "</DOType><DAType id='t'><BDA name='a' bType='Struct' type='t'/>"
                              "</DAType></DataTypeTemplates></SCL>");

    const CrcRun run = RunOf(station);

    QCOMPARE(run.result, CrcGenerator::CrcSuccess);
    QVERIFY(run.canonical.contains("<FCDAbType=\"Struct\""));
}

void CrcGenerator_HostileTest::iedsMayBeNested()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><IED name='A'><AccessPoint><Server><LDevice><LN0><GSEControl name='g'/></LN0>"
        "</LDevice></Server></AccessPoint><IED name='B'><AccessPoint><Server><LDevice><LN0>"
        "<GSEControl name='h'/></LN0></LDevice></Server></AccessPoint></IED></IED></SCL>");

    const CrcRun outer = RunTwice(root->GetFirstChild("IED"));
    const CrcRun inner = RunTwice(root->GetFirstChild("IED")->GetFirstChild("IED"));

    QVERIFY(!outer.canonical.contains("\"h\""));
    QVERIFY(inner.canonical.contains("\"h\""));
}

void CrcGenerator_HostileTest::anElementMayBeItsOwnPublisher()
{
    const CrcRun run = RunOf(
        Publisher(g_control, "<FCDA ldInst='L' lnClass='LLN0' doName='D'/>", g_entry,
                  "<DOI name='D'/><Inputs><ExtRef iedName='P' ldInst='L' lnClass='LLN0' doName='D' "
                  "intAddr='L/LLN0.D'/></Inputs>"));

    QCOMPARE(run.result, CrcGenerator::CrcSuccess);
    QVERIFY(!SectionOf(run.canonical, "GOOSESUB").isEmpty());
}

void CrcGenerator_HostileTest::valuesOfSignsAreTold_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");

    QTest::newRow("blanks") << "   "
                            << "   ";
    QTest::newRow("tabs and line ends") << "\t\n\r"
                                        << "&#9;&#10;&#13;";
    QTest::newRow("the mark of a blank") << "@wspace@"
                                         << " ";
    QTest::newRow("markup") << "<a b=\"c\">&amp;"
                            << "&lt;a b=&quot;c&quot;&gt;&amp;amp;";
    QTest::newRow("control characters") << QString(QChar(1)) + QChar(0) + "x"
                                        << "x";
    QTest::newRow("a lone surrogate") << QString(QChar(0xDC00)) + "x"
                                      << "x";
    QTest::newRow("no character") << QString(QChar(0xFFFE)) + "x"
                                  << "x";
}

void CrcGenerator_HostileTest::valuesOfSignsAreTold()
{
    QFETCH(QString, value);
    QFETCH(QString, written);
    TestControl control;
    SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");
    ied->SetAttribute("name", value, false);

    const CrcRun run = RunTwice(ied);

    QCOMPARE(PieceOf(run.canonical, "<IEDname=\"", "\">"), "<IEDname=\"" + written + "\">");
    QVERIFY(run.readable.endsWith("</IED>\n"));
}

void CrcGenerator_HostileTest::namesThatNoFileHoldsAreTold()
{
    TestControl control;
    SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");
    SCLElement* block = ied->FindChildByType("GSEControl", true).first();
    block->SetAttribute("a b", "1", false);
    block->SetAttribute(QString(), "2", false);
    block->CreateChild("<>", -1, false);
    block->CreateChild(QString(QChar(0xD800)), -1, false);

    const CrcRun run = RunTwice(ied);

    QVERIFY(run.canonical.contains("_=\"2\"a_b=\"1\"appID"));
    QVERIFY(run.canonical.endsWith("</IED>"));
    QVERIFY(run.readable.endsWith("</IED>\n"));
}

void CrcGenerator_HostileTest::contentBeyondAnyUseIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("station");

    constexpr int many = 6000;
    QTest::newRow("an access point with much, many control blocks")
        << Publisher(Numbered(many, "<GSEControl name='#' datSet='s'/>"), "",
                     Numbered(many, "<GSE ldInst='L' cbName='#'/><PhysConn a='#'/>"));
    QTest::newRow("much data, in many members") << Publisher(
        g_control, QByteArray("<FCDA ldInst='L' lnClass='LLN0' doName='D'/>").repeated(many),
        g_entry, "<DOI name='D'>" + QByteArray("<DAI/>").repeated(many) + "</DOI>");
    QTest::newRow("a long name, in many control blocks")
        << Publisher(QByteArray("<GSEControl/>").repeated(many), "", g_entry)
               .replace("inst='L'", "inst='" + QByteArray(100000, 'x') + "'");
    QTest::newRow("a long description, in many members") << Publisher(
        g_control, QByteArray("<FCDA ldInst='L' lnClass='LLN0' doName='D'/>").repeated(many),
        g_entry, "<DOI name='D' desc='" + QByteArray(100000, 'x') + "'/>");
}

void CrcGenerator_HostileTest::contentBeyondAnyUseIsGivenUp()
{
    QFETCH(QByteArray, station);
    TestControl control;
    SCLElement* ied = control.OpenRoot(station)->GetFirstChild("IED");
    unsigned int first = 0;
    unsigned int second = 1;

    QCOMPARE(CrcGenerator(ied).Gererate(first, nullptr, nullptr), CrcGenerator::CrcFailed);
    QCOMPARE(CrcGenerator(ied).Gererate(second, nullptr, nullptr), CrcGenerator::CrcFailed);

    QCOMPARE(first, second);
}

void CrcGenerator_HostileTest::aLargeStationDoesNotHang_data()
{
    QTest::addColumn<QByteArray>("station");

    // Each takes minutes if its look-ups search.
    constexpr int many = 30000;
    QTest::newRow("control blocks with entries and data sets") << Publisher(
        Numbered(many, "<GSEControl name='#' datSet='#'/>"), "",
        Numbered(many, "<GSE ldInst='L' cbName='#'/>"), Numbered(many, "<DataSet name='#'/>"));
    QTest::newRow("members in as many data objects")
        << Publisher(g_control, Numbered(many, "<FCDA ldInst='L' lnClass='LLN0' doName='#'/>"),
                     g_entry, Numbered(many, "<DOI name='#'/>"));
    QTest::newRow("inputs in as many members") << Publisher(
        g_control, Numbered(many, "<FCDA ldInst='L' lnClass='LLN0' doName='#'/>"), g_entry,
        Numbered(many, "<DOI name='#'/>") + "<Inputs>" +
            Numbered(many, "<ExtRef iedName='P' ldInst='L' lnClass='LLN0' "
                           "doName='#' intAddr='L/LLN0.#'/>") +
            "</Inputs>");
    QTest::newRow("members of as many types")
        << Publisher(g_control,
                     Numbered(many, "<FCDA ldInst='L' lnClass='LLN0' doName='#' daName='a'/>"),
                     g_entry, Numbered(many, "<DOI name='#'/>"))
               .replace("</SCL>", "<DataTypeTemplates><LNodeType id='t'>" +
                                      Numbered(many, "<DO name='#' type='#'/>") + "</LNodeType>" +
                                      Numbered(many, "<DOType id='#'><DA name='a' bType='b'/>"
                                                     "</DOType>") +
                                      "</DataTypeTemplates></SCL>");
}

void CrcGenerator_HostileTest::aLargeStationDoesNotHang()
{
    QFETCH(QByteArray, station);
    TestControl control;
    SCLElement* ied = control.OpenRoot(station)->GetFirstChild("IED");
    unsigned int crc = 0;

    QCOMPARE(CrcGenerator(ied).Gererate(crc, nullptr, nullptr), CrcGenerator::CrcSuccess);
}

QTEST_MAIN(CrcGenerator_HostileTest)
#include "CrcGenerator_HostileTest.moc"
