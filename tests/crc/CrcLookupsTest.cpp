// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcLookups.h>

#include "tests/support/CrcStation.h"
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::CrcLookups;
using Corvane::Internal::Goose;
using Corvane::Internal::SampledValues;

namespace
{

QByteArray Ied(const QByteArray& lDevice)
{
    return "<SCL><IED name='P'><AccessPoint name='A'><Server><LDevice inst='L'>" + lDevice +
           "</LDevice></Server></AccessPoint></IED></SCL>";
}

QString PlainBType(SCLElement* doi, const QString& daName)
{
    SCLElement* dataObject = SCLHelp::GetDOFromDOI(doi);
    SCLElement* doType = dataObject ? SCLHelp::GetDOTypeFromDO(dataObject) : nullptr;
    SCLElement* da = doType ? SCLHelp::GetDAFromDOTypeAndName(doType, daName) : nullptr;
    return da ? da->GetAttribute("bType") : QString();
}

} // namespace

class CrcLookupsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAnswersAreThoseOfThePlainWalks();
    void anLN0IsFoundBeforeAnLN();
    void theComposedNameOfAnLN0HasNoPrefix();
    void ofEqualNodesTheFirstIsFound();
    void aMissingAttributeIsAnEmptyOne();
    void theFirstEntryOfItsKindIsFound();
    void entriesNeedTheirIedAndAccessPoint();
    void theFirstChildOfATypeIsFoundWhateverItsTag();
    void neighboursStandBeforeAndAfter_data();
    void neighboursStandBeforeAndAfter();
    void manyQuestionsHaveTheSameAnswers();
};

// Of every FCDA, control block and IED of the sample, twice.
void CrcLookupsTest::theAnswersAreThoseOfThePlainWalks()
{
    TestControl control;
    SCLElement* root = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false)->Root();
    CrcLookups lookups;
    int found = 0;
    const QList<SCLElement*> fcdas = root->FindChildByType("FCDA", true);
    for (SCLElement* fcda : fcdas + fcdas) {
        SCLElement* doi = SCLHelp::GetDOIFromFCDA(fcda);
        QCOMPARE(lookups.DoiOfFcda(fcda), doi);
        const QString daName = fcda->GetAttribute("daName");
        if (!doi || daName.isEmpty())
            continue;
        QCOMPARE(lookups.DaiOf(doi, daName), SCLHelp::GetDAIFromDOIAndName(doi, daName));
        QCOMPARE(lookups.BTypeOf(doi, daName), PlainBType(doi, daName));
        ++found;
    }
    for (SCLElement* block : root->FindChildByType("GSEControl", true))
        QCOMPARE(lookups.EntryOf(Goose(), block), SCLHelp::GetGSEFromGSEControl(block));
    for (SCLElement* block : root->FindChildByType("SampledValueControl", true))
        QCOMPARE(lookups.EntryOf(SampledValues(), block), SCLHelp::GetSMVFromSMVControl(block));
    for (SCLElement* ied : root->FindChildByType("IED", false)) {
        const QList<SCLHelp::Input_CB> plain = SCLHelp::GetGSEControlFromIEDInputs(ied);
        const QList<SCLHelp::Input_CB> records = lookups.SubscriptionsOf(Goose(), ied);
        QCOMPARE(records.size(), plain.size());
        for (int i = 0; i < plain.size(); ++i) {
            QCOMPARE(records.at(i).controlBlock, plain.at(i).controlBlock);
            QCOMPARE(records.at(i).extRefs, plain.at(i).extRefs);
            QCOMPARE(records.at(i).fcdas, plain.at(i).fcdas);
        }
    }
    QVERIFY(found > 100);
}

void CrcLookupsTest::anLN0IsFoundBeforeAnLN()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Ied("<LN lnClass='C' inst='1'><DOI name='D' mark='LN'/></LN>"
            "<LN0 lnClass='C' inst='1'><DOI name='D' mark='LN0'/><DataSet><FCDA ldInst='L' "
            "lnClass='C' lnInst='1' doName='D' mark='fcda'/></DataSet></LN0>"));

    QCOMPARE(MarkOf(CrcLookups().DoiOfFcda(Marked(root, "fcda"))), QString("LN0"));
}

void CrcLookupsTest::theComposedNameOfAnLN0HasNoPrefix()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Ied("<LN0 prefix='x' lnClass='C' inst='1'><DOI name='D' mark='LN0'/><Inputs>"
            "<ExtRef intAddr='L/C1.D' mark='plain'/><ExtRef intAddr='L/xC1.D' mark='prefixed'/>"
            "</Inputs></LN0><LN prefix='x' lnClass='C' inst='1'><DOI name='D' mark='LN'/></LN>"));
    CrcLookups lookups;

    QCOMPARE(MarkOf(lookups.TerminalOf(Marked(root, "plain")).doi), QString("LN0"));
    QCOMPARE(MarkOf(lookups.TerminalOf(Marked(root, "prefixed")).source), QString("LN"));
}

void CrcLookupsTest::ofEqualNodesTheFirstIsFound()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Ied("<LN0><Inputs><ExtRef intAddr='L/AB1.D' mark='input'/></Inputs></LN0>"
            "<LN prefix='A' lnClass='B' inst='1'><DOI name='D' mark='first'/></LN>"
            "<LN prefix='' lnClass='AB' inst='1'><DOI name='D' mark='second'/></LN>"));

    QCOMPARE(MarkOf(CrcLookups().TerminalOf(Marked(root, "input")).doi), QString("first"));
}

void CrcLookupsTest::aMissingAttributeIsAnEmptyOne()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Ied("<LN0 prefix=''><DOI name='D' mark='doi'><DAI mark='dai'/></DOI><DataSet>"
            "<FCDA ldInst='L' lnInst='' doName='D' mark='fcda'/></DataSet></LN0>"));
    CrcLookups lookups;

    QCOMPARE(MarkOf(lookups.DoiOfFcda(Marked(root, "fcda"))), QString("doi"));
    QVERIFY(lookups.DaiOf(Marked(root, "doi"), QString()) == nullptr);
    QVERIFY(lookups.DaiOf(nullptr, "q") == nullptr);
}

void CrcLookupsTest::theFirstEntryOfItsKindIsFound()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Replaced(CrcStationText(), "<Communication>",
                 "<Communication><SubNetwork><ConnectedAP iedName='P' apName='A'>"
                 "<SMV ldInst='L' cbName='g' mark='SMV'/><GSE ldInst='L' cbName='g' mark='first'/>"
                 "<GSE ldInst='L' cbName='g'/></ConnectedAP></SubNetwork>"));
    SCLElement* block = root->FindChildByType("GSEControl", true).first();
    CrcLookups lookups;

    QCOMPARE(MarkOf(lookups.EntryOf(Goose(), block)), QString("first"));
    QCOMPARE(MarkOf(lookups.EntryOf(SampledValues(), block)), QString("SMV"));
}

void CrcLookupsTest::entriesNeedTheirIedAndAccessPoint()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(CrcStationText("apName='A'", "apName='B'"));
    SCLElement* block = root->FindChildByType("GSEControl", true).first();
    const SCLElement loose("GSEControl", root->GetDocument(), nullptr);

    QVERIFY(CrcLookups().EntryOf(Goose(), block) == nullptr);
    QVERIFY(CrcLookups().EntryOf(Goose(), const_cast<SCLElement*>(&loose)) == nullptr);
    QVERIFY(CrcLookups().DataSetOf(const_cast<SCLElement*>(&loose)) == nullptr);
}

void CrcLookupsTest::theFirstChildOfATypeIsFoundWhateverItsTag()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(CrcStationText("<DA name='stVal' bType='Dbpos' fc='ST'/>",
                                                       "<SDO name='stVal' bType='of the SDO'/>"
                                                       "<DA name='stVal' bType='Dbpos' fc='ST'/>"));
    SCLElement* doi = root->FindChildByType("DOI", true).first();

    const QString bType = CrcLookups().BTypeOf(doi, "stVal");

    QVERIFY(!bType.isEmpty());
    QCOMPARE(bType, PlainBType(doi, "stVal"));
}

void CrcLookupsTest::neighboursStandBeforeAndAfter_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("GSE") << "GSE"
                         << ""
                         << "v p";
    QTest::newRow("SMV") << "SMV"
                         << "g h"
                         << "p";
    QTest::newRow("none there") << "Text"
                                << "g h v p"
                                << "";
}

void CrcLookupsTest::neighboursStandBeforeAndAfter()
{
    QFETCH(QString, tag);
    QFETCH(QString, before);
    QFETCH(QString, after);
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLElement* root = control.OpenRoot(
        "<SCL><Communication><SubNetwork><ConnectedAP><PhysConn mark='p'/><SMV mark='v'/>"
        "<GSE mark='g'/><Address mark='a'/><GSE mark='h'/></ConnectedAP></SubNetwork>"
        "</Communication></SCL>");
    SCLElement* connectedAP = At(root, "Communication/SubNetwork/ConnectedAP");
    CrcLookups lookups;

    for (int i = 0; i < 2; ++i) {
        const CrcLookups::Neighbours neighbours = lookups.NeighboursOf(connectedAP, tag);
        QCOMPARE(MarksOf(neighbours.before), before);
        QCOMPARE(MarksOf(neighbours.after), after);
    }
}

// So many of each that they are found by index.
void CrcLookupsTest::manyQuestionsHaveTheSameAnswers()
{
    QByteArray instances;
    QByteArray members;
    for (int i = 0; i < 60; ++i) {
        const QByteArray name = QByteArray::number(i % 40);
        instances += "<DOI name='D" + name + "'><SDI name='s'><DAI name='a'/></SDI></DOI>";
        members += "<FCDA ldInst='L' lnClass='C' doName='D" + name + ".s' daName='a'/>";
    }
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Ied("<LN0 lnClass='C'>" + instances + "<DataSet>" + members + "</DataSet></LN0>"));
    CrcLookups lookups;

    for (SCLElement* fcda : root->FindChildByType("FCDA", true)) {
        SCLElement* doi = SCLHelp::GetDOIFromFCDA(fcda);
        QVERIFY(doi != nullptr);
        QCOMPARE(lookups.DoiOfFcda(fcda), doi);
        QCOMPARE(lookups.DaiOf(doi, "a"), SCLHelp::GetDAIFromDOIAndName(doi, "a"));
    }
}

QTEST_MAIN(CrcLookupsTest)
#include "CrcLookupsTest.moc"
