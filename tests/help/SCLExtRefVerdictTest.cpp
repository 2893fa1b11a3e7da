// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLExtRefVerdict.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;
using Result = SCLExtRefVerdict::Result;

Q_DECLARE_METATYPE(Corvane::SCLExtRefVerdict::Result)

namespace
{

// A publisher P of the data L/GGIO1.D, .E (reported only) and .F (in a data set that nothing
// sends), and a subscriber S of it. Its node CSWI1 has instances, and a type with more.
QByteArray Station(const QByteArray& extRefs)
{
    const auto set = [](const QByteArray& name, const QByteArray& doName) {
        return "<DataSet name='" + name + "' mark='" + name +
               "'><FCDA ldInst='L' lnClass='GGIO' lnInst='1' doName='" + doName + "' mark='" +
               doName + "'/></DataSet>";
    };
    return "<SCL><IED name='P' mark='P'><AccessPoint><Server><LDevice inst='L' mark='L'><LN0>" +
           set("sent", "D") + set("unsent", "F") +
           "<GSEControl name='gcb' datSet='sent' mark='gcb'/></LN0>"
           "<LN lnClass='GGIO' inst='1'>" +
           set("reported", "E") +
           "<ReportControl name='rcb' datSet='reported' mark='rcb'/></LN></LDevice>"
           "<LDevice inst='bare'/></Server></AccessPoint></IED>"
           "<IED name='S' mark='S'><AccessPoint><Server><LDevice inst='C' mark='C'>"
           "<LN0 lnClass='LLN0'><Inputs mark='inputs'>" +
           extRefs +
           "</Inputs></LN0>"
           "<LN prefix='x' lnClass='CSWI' inst='1' lnType='T' mark='xCSWI1'>"
           "<DOI name='Pos' mark='DOI Pos'><DAI name='stVal' mark='DAI stVal'/>"
           "<SDI name='mag'><DAI name='f' mark='DAI f'/></SDI></DOI>"
           "<DOI name='Own' mark='DOI Own'><SDI name='Sub' mark='SDI Sub'><SDI name='mag'>"
           "<DAI name='f' mark='DAI Sub f'/></SDI></SDI></DOI></LN></LDevice></Server>"
           "</AccessPoint><AccessPoint><Server><LDevice inst='C2' mark='C2'>"
           "<LN0 lnClass='LLN0' lnType='T' mark='LLN0 of C2'/></LDevice></Server></AccessPoint>"
           "</IED><DataTypeTemplates><LNodeType id='T'><DO name='Pos' type='PosType' mark='DO "
           "Pos'/>"
           "<DO name='A' type='AType' mark='DO A'/></LNodeType>"
           "<DOType id='PosType'><DA name='q' mark='DA q'/></DOType>"
           "<DOType id='AType'><SDO name='phsA' type='PhaseType' mark='SDO phsA'/></DOType>"
           "<DOType id='PhaseType'><DA name='cVal' type='Vector'/>"
           "<DA name='instCVal' type='Vector' mark='DA instCVal'/></DOType>"
           "<DAType id='Vector'><BDA name='mag' type='Value'/></DAType>"
           "<DAType id='Value'><BDA name='f' mark='BDA f'/></DAType></DataTypeTemplates></SCL>";
}

QByteArray ExtRef(const QByteArray& doName, const QByteArray& intAddr)
{
    return "<ExtRef mark='e' iedName='P' ldInst='L' lnClass='GGIO' lnInst='1' doName='" + doName +
           "' intAddr='" + intAddr + "'/>";
}

SCLExtRefVerdict Judged(TestControl& control, const QByteArray& extRef)
{
    return SCLExtRefVerdict::Of(Marked(control.OpenRoot(Station(extRef)), "e"));
}

QString PublishingSide(const SCLExtRefVerdict& verdict)
{
    return MarksOf(
        {verdict.ied, verdict.lDevice, verdict.fcda, verdict.dataSet, verdict.controlBlock});
}

QStringList SubscribingSide(const SCLExtRefVerdict& verdict)
{
    return {MarkOf(verdict.targetLDevice), MarkOf(verdict.targetNode),
            MarkOf(verdict.targetDataObject), MarkOf(verdict.targetAttribute)};
}

bool Same(const SCLExtRefVerdict& left, const SCLExtRefVerdict& right)
{
    return left.result == right.result && left.extRef == right.extRef && left.ied == right.ied &&
           left.lDevice == right.lDevice && left.fcda == right.fcda &&
           left.dataSet == right.dataSet && left.controlBlock == right.controlBlock &&
           left.targetLDevice == right.targetLDevice && left.targetNode == right.targetNode &&
           left.targetDataObject == right.targetDataObject &&
           left.targetAttribute == right.targetAttribute && left.text == right.text;
}

} // namespace

class SCLExtRefVerdictTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePublishingSideIsJudgedStepByStep_data();
    void thePublishingSideIsJudgedStepByStep();
    void aMemberGoesThroughTheBestControlBlock();
    void theAddressIsJudgedLast_data();
    void theAddressIsJudgedLast();
    void theAddressLeadsToElements_data();
    void theAddressLeadsToElements();
    void theOwnServerComesBeforeOthers();
    void anInputOutsideAnyIedLeadsNowhere();
    void nullDetachedAndRootlessElementsAreNotInADocument();
    void textsAreSafeToShow_data();
    void textsAreSafeToShow();
    void allVerdictsOfAScopeAreThoseOfEach();
    void anEmptyScopeHasNoVerdicts();
    void verdictsAgreeWithTheSubscriptionsOfTheSample();
    void allInputsOfTheSampleAreResolved();
    void theTreeIsNotChanged();
    void manyAndDeepInputsEnd();
};

void SCLExtRefVerdictTest::thePublishingSideIsJudgedStepByStep_data()
{
    QTest::addColumn<QByteArray>("names");
    QTest::addColumn<Result>("result");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* names, Result result, const char* found,
                        const char* text) {
        QTest::newRow(name) << QByteArray(names) << result << QString(found) << QString(text);
    };
    row("unknown IED", "iedName='Q' ldInst='L' lnClass='GGIO' lnInst='1' doName='D'",
        Result::NoSuchIED, "null null null null null", "There is no IED \"Q\".");
    row("no iedName", "ldInst='L' doName='D'", Result::NoSuchIED, "null null null null null",
        "The input names no IED.");
    row("unknown LDevice", "iedName='P' ldInst='M' doName='D'", Result::NoSuchLDevice,
        "P null null null null", "IED \"P\" has no logical device \"M\".");
    row("no ldInst", "iedName='P' doName='D'", Result::NoSuchLDevice, "P null null null null",
        "The input names no logical device of IED \"P\".");
    row("unknown member", "iedName='P' ldInst='L' lnClass='GGIO' lnInst='2' doName='D'",
        Result::NoSuchMember, "P L null null null",
        "No data set of IED \"P\" has a member \"L/GGIO2.D\".");
    row("attribute of a whole data object",
        "iedName='P' ldInst='L' prefix='a' lnClass='GGIO' lnInst='1' doName='D' daName='q'",
        Result::NoSuchMember, "P L null null null",
        "No data set of IED \"P\" has a member \"L/aGGIO1.D.q\".");
    row("nothing sends it", "iedName='P' ldInst='L' lnClass='GGIO' lnInst='1' doName='F'",
        Result::NoControlBlock, "P L F unsent null",
        "Data set \"unsent\" of IED \"P\" has the member \"L/GGIO1.F\", but no control block "
        "sends it.");
    row("GOOSE",
        "iedName='P' ldInst='L' lnClass='GGIO' lnInst='1' doName='D' intAddr='C/xCSWI1.Pos'",
        Result::Resolved, "P L D sent gcb",
        "\"L/GGIO1.D\" of IED \"P\" comes in by control block \"gcb\" and goes to "
        "\"C/xCSWI1.Pos\".");
    row("report",
        "iedName='P' ldInst='L' lnClass='GGIO' lnInst='1' doName='E' intAddr='C/xCSWI1.Pos'",
        Result::Resolved, "P L E reported rcb",
        "\"L/GGIO1.E\" of IED \"P\" comes in by control block \"rcb\" and goes to "
        "\"C/xCSWI1.Pos\".");
}

void SCLExtRefVerdictTest::thePublishingSideIsJudgedStepByStep()
{
    TestControl control;
    QFETCH(const QByteArray, names);
    const SCLExtRefVerdict verdict = Judged(control, "<ExtRef mark='e' " + names + "/>");
    QTEST(verdict.result, "result");
    QTEST(PublishingSide(verdict), "found");
    QTEST(verdict.text, "text");
    QCOMPARE(MarkOf(verdict.extRef), QString("e"));
    QCOMPARE(verdict.IsResolved(), verdict.result == Result::Resolved);
}

void SCLExtRefVerdictTest::aMemberGoesThroughTheBestControlBlock()
{
    const QByteArray fcda = "<FCDA ldInst='L' doName='D'/></DataSet>";
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><ExtRef iedName='P' ldInst='L' doName='D'/><IED name='P'><AccessPoint><Server>"
        "<LDevice inst='L'><LN0><DataSet name='a'>" +
        fcda + "<DataSet name='b'>" + fcda + "<DataSet name='c'>" + fcda + "<DataSet name='d'>" +
        fcda +
        "<ReportControl datSet='b' mark='report'/><SampledValueControl datSet='c' mark='sv'/>"
        "<GSEControl datSet='d' mark='goose'/></LN0><LN><ReportControl datSet='a'/></LN>"
        "</LDevice></Server></AccessPoint></IED></SCL>");
    SCLElement* extRef = root->GetFirstChild("ExtRef");
    SCLElement* ln0 = At(root, "IED/AccessPoint/Server/LDevice/LN0");
    QCOMPARE(MarkOf(SCLExtRefVerdict::Of(extRef).controlBlock), QString("goose"));
    ln0->RemoveChild(Marked(root, "goose"), false);
    QCOMPARE(MarkOf(SCLExtRefVerdict::Of(extRef).controlBlock), QString("sv"));
    ln0->RemoveChild(Marked(root, "sv"), false);
    QCOMPARE(MarkOf(SCLExtRefVerdict::Of(extRef).controlBlock), QString("report"));
    // A report of another node does not send the data set.
    ln0->RemoveChild(Marked(root, "report"), false);
    QCOMPARE(SCLExtRefVerdict::Of(extRef).result, Result::NoControlBlock);
    QCOMPARE(SCLExtRefVerdict::Of(extRef).dataSet->GetAttribute("name"), QString("a"));
}

void SCLExtRefVerdictTest::theAddressIsJudgedLast_data()
{
    QTest::addColumn<QByteArray>("intAddr");
    QTest::addColumn<Result>("result");
    QTest::addColumn<QString>("text");
    const auto refused = [](const char* name, const char* intAddr, const char* text) {
        QTest::newRow(name) << QByteArray(intAddr) << Result::AddressNotUnderstood << QString(text);
    };
    const auto nowhere = [](const char* name, const char* intAddr, const char* missing) {
        QTest::newRow(name) << QByteArray(intAddr) << Result::AddressLeadsNowhere
                            << QString("The internal address \"") + intAddr +
                                   "\" leads nowhere: " + missing + ".";
    };
    refused("empty", "", "The input has no internal address.");
    refused("two fields", "C/xCSWI1", "The internal address \"C/xCSWI1\" is not understood.");
    refused("two colons", "A:B:C/x.D", "The internal address \"A:B:C/x.D\" is not understood.");
    refused("no cut", "C/x.D.e.f", "The internal address \"C/x.D.e.f\" is not understood.");
    nowhere("unknown LDevice", "X/xCSWI1.Pos", "IED \"S\" has no logical device \"X\"");
    nowhere("LDevice of the publisher", "L/xCSWI1.Pos", "IED \"S\" has no logical device \"L\"");
    nowhere("empty LDevice", "/xCSWI1.Pos", "IED \"S\" has no logical device \"\"");
    nowhere("unknown node", "C/CSWI1.Pos", "logical device \"C\" has no logical node \"CSWI1\"");
    nowhere("unknown data object", "C/xCSWI1.Neg",
            "logical node \"xCSWI1\" has no data object \"Neg\"");
    nowhere("empty data object", "C/xCSWI1.", "logical node \"xCSWI1\" has no data object \"\"");
    nowhere("unknown attribute", "P1:C/xCSWI1.Pos.t", "data object \"Pos\" has no attribute \"t\"");
    nowhere("attribute of an LN without it", "C2/LLN0.Pos.stVal",
            "data object \"Pos\" has no attribute \"stVal\"");
    nowhere("sub data object as attribute", "C/xCSWI1.A.phsA",
            "data object \"A\" has no attribute \"phsA\"");
    nowhere("structure as instance attribute", "C/xCSWI1.Pos.mag",
            "data object \"Pos\" has no attribute \"mag\"");
    nowhere("unknown step behind the cut", "C/xCSWI1.A.phsA.cVal.ang.f",
            "data object \"A.phsA\" has no attribute \"cVal.ang.f\"");
}

void SCLExtRefVerdictTest::theAddressIsJudgedLast()
{
    TestControl control;
    QFETCH(const QByteArray, intAddr);
    const SCLExtRefVerdict verdict = Judged(control, ExtRef("D", intAddr));
    QTEST(verdict.result, "result");
    QTEST(verdict.text, "text");
    QCOMPARE(PublishingSide(verdict), QString("P L D sent gcb"));
    // The publishing side is judged first.
    const SCLExtRefVerdict unsent = Judged(control, ExtRef("F", intAddr));
    QCOMPARE(unsent.result, Result::NoControlBlock);
    QCOMPARE(SubscribingSide(unsent), QStringList({"null", "null", "null", "null"}));
}

void SCLExtRefVerdictTest::theAddressLeadsToElements_data()
{
    QTest::addColumn<QByteArray>("intAddr");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char* name, const char* intAddr, const QStringList& found) {
        QTest::newRow(name) << QByteArray(intAddr) << found;
    };
    row("instance", "C/xCSWI1.Pos", {"C", "xCSWI1", "DOI Pos", "null"});
    row("instance attribute", "C/xCSWI1.Pos.stVal", {"C", "xCSWI1", "DOI Pos", "DAI stVal"});
    row("attribute of the type alone", "C/xCSWI1.Pos.q", {"C", "xCSWI1", "DOI Pos", "DA q"});
    row("type alone", "C/xCSWI1.A", {"C", "xCSWI1", "DO A", "null"});
    row("instance without a type", "C/xCSWI1.Own.Sub.mag.f",
        {"C", "xCSWI1", "SDI Sub", "DAI Sub f"});
    row("deep attribute of the type", "C/xCSWI1.A.phsA.cVal.mag.f",
        {"C", "xCSWI1", "SDO phsA", "BDA f"});
    row("cut inside an attribute", "C/xCSWI1.A.phsA.instCVal.mag.f",
        {"C", "xCSWI1", "DA instCVal", "BDA f"});
    row("other access point", "1-A/1-B:C2/LLN0.Pos.q", {"C2", "LLN0 of C2", "DO Pos", "DA q"});
    row("unknown attribute", "C/xCSWI1.Pos.t", {"C", "xCSWI1", "DOI Pos", "null"});
    row("unknown data object", "C/xCSWI1.Neg", {"C", "xCSWI1", "null", "null"});
    row("unknown node", "C/CSWI1.Pos", {"C", "null", "null", "null"});
    row("unknown LDevice", "X/CSWI1.Pos", {"null", "null", "null", "null"});
    row("trailing dot", "C/xCSWI1.Pos.", {"C", "xCSWI1", "DOI Pos", "null"});
}

void SCLExtRefVerdictTest::theAddressLeadsToElements()
{
    TestControl control;
    QFETCH(const QByteArray, intAddr);
    QTEST(SubscribingSide(Judged(control, ExtRef("D", intAddr))), "found");
}

void SCLExtRefVerdictTest::theOwnServerComesBeforeOthers()
{
    TestControl control;
    QByteArray station = Station(ExtRef("D", "C/xCSWI1.Pos"));
    station.replace("<IED name='S' mark='S'>",
                    "<IED name='S' mark='S'><AccessPoint><Server><LDevice inst='C' mark='other C'/>"
                    "<LDevice inst='C2' mark='first C2'/></Server></AccessPoint>");
    SCLElement* root = control.OpenRoot(station);
    SCLElement* extRef = Marked(root, "e");
    QCOMPARE(MarkOf(SCLExtRefVerdict::Of(extRef).targetLDevice), QString("C"));
    extRef->SetAttribute("intAddr", "C2/LLN0.Pos", false);
    QCOMPARE(MarkOf(SCLExtRefVerdict::Of(extRef).targetLDevice), QString("first C2"));
}

void SCLExtRefVerdictTest::anInputOutsideAnyIedLeadsNowhere()
{
    TestControl control;
    QByteArray station = Station("");
    station.replace("<SCL>", "<SCL>" + ExtRef("D", "C/xCSWI1.Pos"));
    const SCLExtRefVerdict verdict =
        SCLExtRefVerdict::Of(control.OpenRoot(station)->GetFirstChild("ExtRef"));
    QCOMPARE(verdict.result, Result::AddressLeadsNowhere);
    QCOMPARE(verdict.text, QString("The internal address \"C/xCSWI1.Pos\" leads nowhere: the input "
                                   "stands in no IED."));
}

void SCLExtRefVerdictTest::nullDetachedAndRootlessElementsAreNotInADocument()
{
    const TestControl control;
    SCLDocument rootless;
    SCLElement detached("ExtRef", nullptr, nullptr);
    SCLElement inRootless("ExtRef", &rootless, nullptr);
    SCLElement* const elements[] = {nullptr, &detached, &inRootless};
    for (SCLElement* element : elements) {
        const SCLExtRefVerdict verdict = SCLExtRefVerdict::Of(element);
        QCOMPARE(verdict.result, Result::NotInDocument);
        QVERIFY(verdict.extRef == element);
        QCOMPARE(verdict.text, QString("The input is not part of a document."));
        if (element)
            element->CreateChild("ExtRef", -1, false);
        QVERIFY(SCLExtRefVerdict::OfAll(element).isEmpty());
    }
}

void SCLExtRefVerdictTest::textsAreSafeToShow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString longest(80, 'n');
    const QString smile = QString::fromUtf8("\xf0\x9f\x98\x80");
    const QString dots = QChar(0x2026);
    const QString box = QChar(QChar::ReplacementCharacter);
    QTest::newRow("80 characters") << longest << longest;
    QTest::newRow("81 characters") << longest + "x" << longest + dots;
    QTest::newRow("a megabyte") << QString(1 << 20, 'n') << longest + dots;
    QTest::newRow("a pair of surrogates is not cut")
        << longest.chopped(1) + smile << longest.chopped(1) + dots;
    QTest::newRow("surrogates stay") << "a" + smile << "a" + smile;
    QTest::newRow("escape sequence") << "\x1b[31mred" << box + "[31mred";
    QTest::newRow("line breaks") << "a\nb\r\tc"
                                 << "a" + box + "b" + box + box + "c";
    QTest::newRow("direction of writing") << QString("a") + QChar(0x202e) + "b"
                                          << "a" + box + "b";
    QTest::newRow("line separator") << QString("a") + QChar(0x2028) + "b"
                                    << "a" + box + "b";
    QTest::newRow("markers stay") << "%1%2%3"
                                  << "%1%2%3";
    QTest::newRow("letters of any language")
        << QString::fromUtf8("断路器 ä") << QString::fromUtf8("断路器 ä");
}

void SCLExtRefVerdictTest::textsAreSafeToShow()
{
    TestControl control;
    QFETCH(const QString, name);
    QFETCH(const QString, shown);
    SCLElement* extRef = Marked(control.OpenRoot(Station(ExtRef("D", "C/xCSWI1.Pos"))), "e");
    extRef->SetAttribute("ldInst", name, false);
    QCOMPARE(SCLExtRefVerdict::Of(extRef).text,
             "IED \"P\" has no logical device \"" + shown + "\".");
    extRef->SetAttribute("iedName", name, false);
    QCOMPARE(SCLExtRefVerdict::Of(extRef).text, "There is no IED \"" + shown + "\".");
}

void SCLExtRefVerdictTest::allVerdictsOfAScopeAreThoseOfEach()
{
    TestControl control;
    QByteArray extRefs;
    for (const char* doName : {"D", "E", "F", "G"}) {
        for (const char* intAddr : {"", "x", "C/xCSWI1.Pos", "C/xCSWI1.Pos.stVal", "C/xCSWI1.Pos.q",
                                    "C2/LLN0.A.phsA.cVal.mag.f", "C2/LLN1.A", "C3/LLN0.A"})
            extRefs += ExtRef(doName, intAddr);
    }
    SCLElement* root = control.OpenRoot(Station(extRefs + "<x><ExtRef mark='deep'/></x>"));
    for (SCLElement* scope : {root, Marked(root, "S"), Marked(root, "inputs")}) {
        const QList<SCLExtRefVerdict> all = SCLExtRefVerdict::OfAll(scope);
        const QList<SCLElement*> each = scope->FindChildByType("ExtRef", true);
        QCOMPARE(all.size(), each.size());
        QCOMPARE(all.size(), 33);
        for (int i = 0; i < each.size(); ++i)
            QVERIFY2(Same(all.at(i), SCLExtRefVerdict::Of(each.at(i))), qPrintable(all.at(i).text));
    }
}

void SCLExtRefVerdictTest::anEmptyScopeHasNoVerdicts()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(""));
    QVERIFY(SCLExtRefVerdict::OfAll(root).isEmpty());
    QVERIFY(SCLExtRefVerdict::OfAll(nullptr).isEmpty());
}

void SCLExtRefVerdictTest::verdictsAgreeWithTheSubscriptionsOfTheSample()
{
    TestControl control;
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);
    QVERIFY(document);
    int compared = 0;
    const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
    for (SCLElement* ied : ieds) {
        const QList<SCLHelp::Input_CB> records =
            SCLHelp::GetGSEControlFromIEDInputs(ied) + SCLHelp::GetSMVControlFromIEDInputs(ied);
        for (const SCLHelp::Input_CB& record : records) {
            for (int i = 0; i < record.extRefs.size(); ++i) {
                const SCLExtRefVerdict verdict = SCLExtRefVerdict::Of(record.extRefs.at(i));
                QVERIFY(verdict.controlBlock == record.controlBlock);
                QVERIFY(verdict.fcda == record.fcdas.at(i));
                ++compared;
            }
        }
    }
    QVERIFY(compared > 50);
}

void SCLExtRefVerdictTest::allInputsOfTheSampleAreResolved()
{
    TestControl control;
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);
    QVERIFY(document);
    const QList<SCLExtRefVerdict> verdicts = SCLExtRefVerdict::OfAll(document->Root());
    QCOMPARE(verdicts.size(), document->Root()->FindChildByType("ExtRef", true).size());
    QVERIFY(verdicts.size() > 70);
    for (const SCLExtRefVerdict& verdict : verdicts)
        QVERIFY2(verdict.IsResolved(), qPrintable(verdict.text));
}

void SCLExtRefVerdictTest::theTreeIsNotChanged()
{
    TestControl control;
    SCLDocument* document = control.Open(Station(ExtRef("D", "C/xCSWI1.Pos")));
    const QString before = ElementText(document->Root());
    QCOMPARE(SCLExtRefVerdict::OfAll(document->Root()).size(), 1);
    QCOMPARE(ElementText(document->Root()), before);
    QVERIFY(!document->GetModified());
}

void SCLExtRefVerdictTest::manyAndDeepInputsEnd()
{
    constexpr int many = 50000;
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(""));
    SCLElement* element = Marked(root, "inputs");
    SCLElement* node = Marked(root, "xCSWI1");
    for (int i = 0; i < many; ++i) {
        element = element->CreateChild("x", -1, false);
        SCLElement* extRef = element->CreateChild("ExtRef", -1, false);
        extRef->SetAttributeList(
            {"iedName", "ldInst", "lnClass", "lnInst", "doName", "intAddr"},
            {"P", "L", "GGIO", "1", "D", QString("C/xCSWI1.D%1.a").arg(many - i)});
        SCLElement* doi = node->CreateChild("DOI", -1, false);
        doi->SetAttribute("name", QString("D%1").arg(i), false);
    }
    const QList<SCLExtRefVerdict> verdicts = SCLExtRefVerdict::OfAll(root);
    QCOMPARE(verdicts.size(), many);
    QCOMPARE(verdicts.last().text, QString("The internal address \"C/xCSWI1.D1.a\" leads nowhere: "
                                           "data object \"D1\" has no attribute \"a\"."));
}

QTEST_MAIN(SCLExtRefVerdictTest)
#include "SCLExtRefVerdictTest.moc"
