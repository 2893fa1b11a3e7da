// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcGenerator.h>

#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/ElementText.h"
#include "tests/support/PlainCrc.h"
#include "tests/support/TestControl.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// The CRCs of the publisher and the subscriber.
struct Crcs {
    unsigned int publisher;
    unsigned int subscriber;
};

Crcs CrcsOf(const QByteArray& station)
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control.Open(station);
    return {CrcRun(document, "P").crc, CrcRun(document, "S").crc};
}

} // namespace

class CrcGeneratorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAnIedNothingIsGenerated();
    void sectionsStandInTheirOrder();
    void absentSectionsAreLeftOut();
    void theCanonicalFormBeginsWithTheName();
    void theReadableFormShowsTheIed();
    void missingAttributesOfTheIedAreShownEmpty();
    void theTagIsThatOfTheElement();
    void anIedWithoutConnectionLeavesTheOutputs();
    void anIncompleteIedHasOutputs();
    void theCrcIsThatOfTheCanonicalForm();
    void contentsMayBeLeftOut();
    void aGeneratorSeesEdits();
    void theDocumentStaysAsItIs();
    void textsAreJoined_data();
    void textsAreJoined();
    void theOrderOfAttributesIsOfNoEffect();
    void theOrderAmongTagsIsOfNoEffect();
    void theOrderOfOneTagCounts();
    void anEditCountsOrDoesNot_data();
    void anEditCountsOrDoesNot();
    void otherDocumentsAreOfNoEffect();
    void anIedOutsideAnyDocumentHasItsControlBlocks();
};

void CrcGeneratorTest::withoutAnIedNothingIsGenerated()
{
    const CrcRun run(nullptr);

    QCOMPARE(run.result, CrcGenerator::CrcFailed);
    QVERIFY(run.IsUntouched());
}

void CrcGeneratorTest::sectionsStandInTheirOrder()
{
    const QByteArray both = CrcStationText(
        "<SampledValueControl ",
        "<Inputs><ExtRef iedName='P' ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' doName='Pos' "
        "daName='stVal'/><ExtRef iedName='P' ldInst='L' lnClass='TCTR' lnInst='1' doName='Amp'/>"
        "</Inputs><SampledValueControl ");
    TestControl control;

    const QString canonical = QString::fromUtf8(CrcRun(control.Open(both), "P").canonical);

    QStringList tags;
    for (const QString& piece : canonical.split('<')) {
        for (const char* tag : {"GOOSEPUB>", "GOOSESUB>", "SVPUB>", "SVSUB>"}) {
            if (piece.startsWith(QLatin1String(tag)))
                tags.append(piece);
        }
    }
    QCOMPARE(tags.join(' '), QString("GOOSEPUB> GOOSESUB> SVPUB> SVSUB>"));
}

void CrcGeneratorTest::absentSectionsAreLeftOut()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const CrcRun publisher(document, "P");
    const CrcRun subscriber(document, "S");

    QVERIFY(!publisher.canonical.contains("SUB>"));
    QVERIFY(!subscriber.canonical.contains("PUB>"));
    QCOMPARE(publisher.result, CrcGenerator::CrcSuccess);
    QCOMPARE(subscriber.result, CrcGenerator::CrcSuccess);
}

void CrcGeneratorTest::theCanonicalFormBeginsWithTheName()
{
    TestControl control;

    const CrcRun run(control.Open(CrcStationText()), "P");

    QVERIFY(run.canonical.startsWith(
        R"(<?xmlversion="1.0"encoding="UTF-8"?><IEDname="P"><GOOSEPUB><GOCBrefname=)"));
    QVERIFY(run.canonical.endsWith("</SVPUB></IED>"));
}

void CrcGeneratorTest::theReadableFormShowsTheIed()
{
    TestControl control;

    const CrcRun run(control.Open(CrcStationText()), "P");

    const QString crc = QString("%1").arg(run.crc, 8, 16, QChar('0')).toUpper();
    const QString readable = WithoutTime(run.readable);
    QVERIFY(readable.startsWith(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        R"(<IED configVersion="V1" desc="the publisher" manufacturer="M1" name="P" type="T1">)"
        "\n  <GOOSEPUB>\n    <GOCBref name=\"PL/LLN0$GO$g\">\n"));
    QVERIFY(readable.endsWith("  </SVPUB>\n  <CRC id=\"" + crc + "\" timestamp=\"*\"/>\n</IED>\n"));
}

void CrcGeneratorTest::missingAttributesOfTheIedAreShownEmpty()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText(" desc='the publisher'", ""));

    const CrcRun run(document, "P");

    QVERIFY(run.readable.contains("<IED configVersion=\"V1\" desc=\"\" manufacturer="));
    QCOMPARE(run.canonical, CrcRun(control.Open(CrcStationText()), "P").canonical);
}

void CrcGeneratorTest::theTagIsThatOfTheElement()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><Device name='D'><AccessPoint><Server><LDevice><LN0>"
        "<GSEControl name='g'/></LN0></LDevice></Server></AccessPoint></Device></SCL>");

    const CrcRun run(root->GetFirstChild("Device"));

    QVERIFY(run.canonical.contains("<Devicename=\"D\">"));
    QVERIFY(run.canonical.endsWith("</Device>"));
}

void CrcGeneratorTest::anIedWithoutConnectionLeavesTheOutputs()
{
    TestControl control;

    const CrcRun run(control.Open(CrcStationText()), "N");

    QCOMPARE(run.result, CrcGenerator::CrcNoConnection);
    QVERIFY(run.IsUntouched());
}

void CrcGeneratorTest::anIncompleteIedHasOutputs()
{
    TestControl control;

    const CrcRun run(control.Open(CrcStationText("INGGIO1.Ind1", "INGGIO1.None")), "S");

    QCOMPARE(run.result, CrcGenerator::CrcFailed);
    QVERIFY(run.crc != g_untouchedCrc);
    QVERIFY(run.canonical.endsWith("</IED>"));
    QVERIFY(run.readable.endsWith("</IED>\n"));
}

void CrcGeneratorTest::theCrcIsThatOfTheCanonicalForm()
{
    TestControl control;
    const CrcRun run(control.Open(CrcStationText()), "P");

    QCOMPARE(run.crc, CrcGenerator::Generate({QString::fromUtf8(run.canonical)}));
}

void CrcGeneratorTest::contentsMayBeLeftOut()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const CrcRun run(document, "P");
    unsigned int crc = 0;
    QByteArray canonical;
    QByteArray readable;
    CrcGenerator generator(document->Root()->GetFirstChild("IED"));

    QCOMPARE(generator.Gererate(crc, nullptr, nullptr), CrcGenerator::CrcSuccess);
    generator.Gererate(crc, &canonical, nullptr);
    generator.Gererate(crc, nullptr, &readable);

    QCOMPARE(crc, run.crc);
    QCOMPARE(canonical, run.canonical);
    QCOMPARE(WithoutTime(readable), WithoutTime(run.readable));
}

void CrcGeneratorTest::aGeneratorSeesEdits()
{
    TestControl control;
    SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");
    CrcGenerator generator(ied);
    unsigned int before = 0;
    unsigned int after = 0;

    generator.Gererate(before, nullptr, nullptr);
    At(ied, "AccessPoint/Server/LDevice/LN/DOI/DAI/Val")->SetValue("on", false);
    generator.Gererate(after, nullptr, nullptr);

    QVERIFY(after != before);
    QCOMPARE(after, CrcRun(ied).crc);
}

void CrcGeneratorTest::theDocumentStaysAsItIs()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    const QString before = ElementText(document->Root());

    const CrcRun run(document, "P");

    QCOMPARE(run.result, CrcGenerator::CrcSuccess);
    QCOMPARE(ElementText(document->Root()), before);
    QVERIFY(!document->GetModified());
}

void CrcGeneratorTest::textsAreJoined_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<unsigned int>("crc");

    QTest::newRow("none") << QStringList() << 0U;
    QTest::newRow("empty ones") << QStringList{"", QString()} << 0U;
    QTest::newRow("one") << QStringList{"123456789"} << 0xCBF43926U;
    QTest::newRow("several") << QStringList{"1234", "", "56789"} << 0xCBF43926U;
    QTest::newRow("in UTF-8") << QStringList{QString::fromUtf8("\xE7\xBA\xBF")} << 0x1618F718U;
}

void CrcGeneratorTest::textsAreJoined()
{
    QFETCH(QStringList, texts);
    QFETCH(unsigned int, crc);

    QCOMPARE(CrcGenerator::Generate(texts), crc);
}

void CrcGeneratorTest::theOrderOfAttributesIsOfNoEffect()
{
    const Crcs usual = CrcsOf(CrcStationText());

    const Crcs turned = CrcsOf(Replaced(CrcStationText("name='stVal' sAddr='1.2' desc='hidden'",
                                                       "desc='hidden' sAddr='1.2' name='stVal'"),
                                        "name='g' datSet='dsG' confRev='1' appID='P g'",
                                        "appID='P g' confRev='1' datSet='dsG' name='g'"));

    QCOMPARE(turned.publisher, usual.publisher);
    QCOMPARE(turned.subscriber, usual.subscriber);
}

void CrcGeneratorTest::theOrderAmongTagsIsOfNoEffect()
{
    const QByteArray text = CrcStationText("<Address><P type='APPID'>0001</P></Address>",
                                           "<Address><P type='APPID'>0001</P></Address>"
                                           "<MinTime>1</MinTime><MaxTime>2</MaxTime>");

    const Crcs turned =
        CrcsOf(Replaced(text,
                        "<Address><P type='APPID'>0001</P></Address><MinTime>1</MinTime>"
                        "<MaxTime>2</MaxTime>",
                        "<MaxTime>2</MaxTime><MinTime>1</MinTime><Address><P type='APPID'>0001</P>"
                        "</Address>"));

    QCOMPARE(turned.publisher, CrcsOf(text).publisher);
    QCOMPARE(turned.subscriber, CrcsOf(text).subscriber);
}

void CrcGeneratorTest::theOrderOfOneTagCounts()
{
    const QByteArray text = CrcStationText("<P type='APPID'>0001</P>",
                                           "<P type='APPID'>0001</P><P type='VLAN-ID'>1</P>");

    const Crcs turned = CrcsOf(Replaced(text, "<P type='APPID'>0001</P><P type='VLAN-ID'>1</P>",
                                        "<P type='VLAN-ID'>1</P><P type='APPID'>0001</P>"));

    QVERIFY(turned.publisher != CrcsOf(text).publisher);
    QVERIFY(turned.subscriber != CrcsOf(text).subscriber);
}

void CrcGeneratorTest::anEditCountsOrDoesNot_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<bool>("publisherChanges");
    QTest::addColumn<bool>("subscriberChanges");

    const auto row = [](const char* name, const QByteArray& from, const QByteArray& to, bool p,
                        bool s) { QTest::newRow(name) << from << to << p << s; };
    constexpr bool yes = true;
    constexpr bool no = false;

    row("name of the publisher's LDevice", "inst='L'>", "inst='K'>", yes, yes);
    row("desc of the IED", "desc='the publisher'", "desc='x'", no, no);
    row("configVersion of the IED", "configVersion='V1'", "configVersion='V2'", no, no);
    row("type of the IED", "type='T1'", "type='T2'", no, no);
    row("manufacturer of the IED", "manufacturer='M1'", "manufacturer='M2'", no, no);
    row("a control block's revision", "confRev='1' appID", "confRev='2' appID", yes, yes);
    row("a control block's identity", "appID='P g'", "appID='P h'", yes, yes);
    row("a control block's Private", ">p</Private>", ">q</Private>", yes, no);
    row("a control block's desc", "<GSEControl name='g'", "<GSEControl desc='x' name='g'", no, no);
    row("the address of an entry", ">0001<", ">0002<", yes, yes);
    row("the address of sampled values", ">4001<", ">4002<", yes, yes);
    row("the port of the publisher", ">1-A</P>", ">1-B</P>", yes, no);
    row("the address of the access point", "10.0.0.1", "10.0.0.2", no, no);
    row("desc of the access point", "desc='switch 1'", "desc='switch 2'", no, no);
    row("name of the data set", "'dsG'", "'dsH'", yes, yes);
    row("desc of the data set", "desc='positions'", "desc='x'", no, no);
    row("fc of a member", "daName='stVal' fc='ST'", "daName='stVal' fc='MX'", yes, no);
    row("a member more", "<DataSet name='dsV'>", "<DataSet name='dsV'><FCDA doName='x'/>", yes,
        yes);
    row("type of a member", "bType='Dbpos'", "bType='Enum'", yes, yes);
    row("type without a member", "bType='INT32'", "bType='INT64'", no, no);
    row("desc of the sent data", "desc='breaker position'", "desc='x'", no, no);
    row("desc of sent instances", "sAddr='1.2' desc='hidden'", "sAddr='1.2' desc='x'", no, no);
    row("short address of sent data", "sAddr='1.2'", "sAddr='1.3'", yes, no);
    row("value of sent data", ">off<", ">on<", yes, no);
    row("units of sent data", "<Val>A</Val>", "<Val>kA</Val>", no, no);
    row("intAddr of an input", "1-A:R/ING", "1-B:R/ING", no, yes);
    row("desc of an input's data", "desc='input 1'", "desc='x'", no, no);
    row("short address of an input's data", "sAddr='9.1'", "sAddr='9.3'", no, yes);
    row("desc of an input", "<ExtRef iedName='P' ldInst='L' prefix",
        "<ExtRef desc='x' iedName='P' "
        "ldInst='L' prefix",
        no, no);
    row("an IED more", "<IED name='N'>", "<IED name='M'/><IED name='N'>", no, no);
    row("the header", "<Header id='h'/>", "<Header id='i'/>", no, no);
    row("a Private of the IED", "<AccessPoint name='A'><Server><LDevice inst='L'>",
        "<Private type='x'>y</Private><AccessPoint name='A'><Server><LDevice inst='L'>", no, no);
    row("white space among elements", "<SubNetwork name='W'>", "<SubNetwork name='W'>\n\n   ", no,
        no);
}

void CrcGeneratorTest::anEditCountsOrDoesNot()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(bool, publisherChanges);
    QFETCH(bool, subscriberChanges);
    const Crcs usual = CrcsOf(CrcStationText());

    const Crcs edited = CrcsOf(CrcStationText(from, to));

    QCOMPARE(edited.publisher != usual.publisher, publisherChanges);
    QCOMPARE(edited.subscriber != usual.subscriber, subscriberChanges);
}

// Tags get their ids in the order in which documents bring them.
void CrcGeneratorTest::otherDocumentsAreOfNoEffect()
{
    const QByteArray more =
        CrcStationText("<PhysConn type='Connection'>", "<PhysConn type='RedConn'/>"
                                                       "<PhysConn type='Connection'>");
    const Crcs usual = CrcsOf(more);
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    control.Open("<SCL><P/><PhysConn/><Val/><DAI/><SDI/><FCDA/><SMV/><GSE/><Address/><MaxTime/>"
                 "<MinTime/><Private/><SampledValueControl/><GSEControl/><DataSet/></SCL>");
    SCLDocument* document = control.Open(more);

    QCOMPARE(CrcRun(document, "P").crc, usual.publisher);
    QCOMPARE(CrcRun(document, "S").crc, usual.subscriber);
}

void CrcGeneratorTest::anIedOutsideAnyDocumentHasItsControlBlocks()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(CrcStationText());
    SCLElement* ied = root->GetFirstChild("IED");
    root->DetachChild(ied, false);

    const CrcRun run(ied);

    QVERIFY(run.canonical.contains("<GSEControlappID="));
    QCOMPARE(run.result, CrcGenerator::CrcFailed);
    delete ied;
}

QTEST_MAIN(CrcGeneratorTest)
#include "CrcGeneratorTest.moc"
