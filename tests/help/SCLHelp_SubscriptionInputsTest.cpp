// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SubscriptionText.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Records = QList<SCLHelp::Input_CB>;

Records OfInputs(bool goose, SCLElement* inputs)
{
    return goose ? SCLHelp::GetGSEControlFromInputs(inputs)
                 : SCLHelp::GetSMVControlFromInputs(inputs);
}

Records OfAccessPoint(bool goose, SCLElement* accessPoint)
{
    return goose ? SCLHelp::GetGSEControlFromAPInputs(accessPoint)
                 : SCLHelp::GetSMVControlFromAPInputs(accessPoint);
}

Records OfIed(bool goose, SCLElement* ied)
{
    return goose ? SCLHelp::GetGSEControlFromIEDInputs(ied)
                 : SCLHelp::GetSMVControlFromIEDInputs(ied);
}

void AddKinds()
{
    QTest::addColumn<bool>("goose");
    QTest::newRow("GOOSE") << true;
    QTest::newRow("sampled values") << false;
}

// An LDevice of a publisher, whose LN0 holds that.
QByteArray Publisher(const QByteArray& ln0)
{
    return "<IED name='P' mark='P'><AccessPoint><Server><LDevice inst='L' mark='L'><LN0>" + ln0 +
           "</LN0></LDevice></Server></AccessPoint></IED>";
}

// Data objects D and E in a data set with a control block, F in one without.
QByteArray UsualPublisher()
{
    return Publisher("<DataSet name='s' mark='s'><FCDA ldInst='L' doName='D' mark='D'/>"
                     "<FCDA ldInst='L' doName='E' mark='E'/><FCDA ldInst='L' doName='D' daName='q' "
                     "mark='Dq'/></DataSet><DataSet name='t' mark='t'>"
                     "<FCDA ldInst='L' doName='F' mark='F'/></DataSet><CB datSet='s' mark='c'/>");
}

QByteArray To(const QByteArray& mark, const QByteArray& doName, const QByteArray& more = "")
{
    return "<ExtRef mark='" + mark + "' iedName='P' ldInst='L' doName='" + doName + "' " + more +
           "/>";
}

// The subscriptions of an Inputs with those ExtRefs. CB in the publisher is the tag of the kind.
QStringList Subscribe(bool goose, QByteArray publishers, const QByteArray& extRefs)
{
    publishers.replace("OTHERCB", goose ? "SampledValueControl" : "GSEControl");
    publishers.replace("CB", goose ? "GSEControl" : "SampledValueControl");
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><Inputs>" + extRefs + "</Inputs>" + publishers + "</SCL>");
    return RecordTexts(OfInputs(goose, root->GetFirstChild("Inputs")));
}

} // namespace

class SCLHelp_SubscriptionInputsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noExtRefsGiveNoRecords_data() { AddKinds(); }
    void noExtRefsGiveNoRecords();
    void aRecordHoldsWhatWasMatched_data() { AddKinds(); }
    void aRecordHoldsWhatWasMatched();
    void anExtRefThatLeadsNowhereIsLeftOut_data();
    void anExtRefThatLeadsNowhereIsLeftOut();
    void portsAreTakenFromTheAddress_data();
    void portsAreTakenFromTheAddress();
    void portsOfARecordAreHeldOnceInTheOrderOfAppearance_data() { AddKinds(); }
    void portsOfARecordAreHeldOnceInTheOrderOfAppearance();
    void portsOfAnExtRefThatIsLeftOutDoNotCount_data() { AddKinds(); }
    void portsOfAnExtRefThatIsLeftOutDoNotCount();
    void repeatedExtRefsAreKept_data() { AddKinds(); }
    void repeatedExtRefsAreKept();
    void recordsStandInTheOrderOfTheirFirstExtRef_data() { AddKinds(); }
    void recordsStandInTheOrderOfTheirFirstExtRef();
    void theFirstDataSetWithAControlBlockCounts_data() { AddKinds(); }
    void theFirstDataSetWithAControlBlockCounts();
    void theDataSetIsThatOfTheFirstExtRef_data() { AddKinds(); }
    void theDataSetIsThatOfTheFirstExtRef();
    void onlyTheFirstOfTwoControlBlocksOfADataSetIsReported_data() { AddKinds(); }
    void onlyTheFirstOfTwoControlBlocksOfADataSetIsReported();
    void eachKindKeepsItsOwn_data() { AddKinds(); }
    void eachKindKeepsItsOwn();
    void aDataSetOfBothKindsIsReportedByBoth();
    void theRecordNamesTheLDeviceOfTheControlBlock_data() { AddKinds(); }
    void theRecordNamesTheLDeviceOfTheControlBlock();
    void anExtRefGoesToTheFirstIedOfItsName_data() { AddKinds(); }
    void anExtRefGoesToTheFirstIedOfItsName();

    void theQualityOfASampledValueIsLeftOut_data();
    void theQualityOfASampledValueIsLeftOut();
    void gooseKeepsQuality();

    void widerScopesLookAtTheFirstInputsOfTheFirstLN0_data() { AddKinds(); }
    void widerScopesLookAtTheFirstInputsOfTheFirstLN0();
    void recordsAreSharedAcrossLDevicesAndAccessPoints_data() { AddKinds(); }
    void recordsAreSharedAcrossLDevicesAndAccessPoints();
    void anyElementWithExtRefsServesAsInputs_data() { AddKinds(); }
    void anyElementWithExtRefsServesAsInputs();
    void nullDetachedAndRootlessArgumentsGiveNothing_data() { AddKinds(); }
    void nullDetachedAndRootlessArgumentsGiveNothing();
    void theTreeIsNotChanged_data() { AddKinds(); }
    void theTreeIsNotChanged();
    void textsOfAMegabyteAreServed_data() { AddKinds(); }
    void textsOfAMegabyteAreServed();
    void manyOfEverythingEnds_data() { AddKinds(); }
    void manyOfEverythingEnds();
};

void SCLHelp_SubscriptionInputsTest::noExtRefsGiveNoRecords()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, UsualPublisher(), ""), QStringList());
    QCOMPARE(Subscribe(goose, UsualPublisher(), "<Private iedName='P' ldInst='L' doName='D'/>"),
             QStringList());
}

void SCLHelp_SubscriptionInputsTest::aRecordHoldsWhatWasMatched()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, UsualPublisher(), To("1", "E", "intAddr='A:x'") + To("2", "D")),
             QStringList("P L s c: 1=E 2=D | A"));
}

void SCLHelp_SubscriptionInputsTest::anExtRefThatLeadsNowhereIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("extRef");
    QTest::newRow("unknown IED") << QByteArray("iedName='Q' ldInst='L' doName='D'");
    QTest::newRow("no iedName") << QByteArray("ldInst='L' doName='D'");
    QTest::newRow("unknown LDevice") << QByteArray("iedName='P' ldInst='M' doName='ofM'");
    QTest::newRow("no ldInst, though an FCDA has none") << QByteArray("iedName='P' doName='bare'");
    QTest::newRow("empty ldInst") << QByteArray("iedName='P' ldInst='' doName='bare'");
    QTest::newRow("member of another LDevice") << QByteArray("iedName='P' ldInst='L' doName='ofM'");
    QTest::newRow("no such member") << QByteArray("iedName='P' ldInst='L' doName='Z'");
    QTest::newRow("attribute of a whole data object")
        << QByteArray("iedName='P' ldInst='L' doName='E' daName='q'");
    QTest::newRow("no control block") << QByteArray("iedName='P' ldInst='L' doName='F'");
}

void SCLHelp_SubscriptionInputsTest::anExtRefThatLeadsNowhereIsLeftOut()
{
    QFETCH(const QByteArray, extRef);
    QByteArray publisher = UsualPublisher();
    publisher.replace("<CB ", "<DataSet name='s'><FCDA doName='bare'/><FCDA ldInst='M' "
                              "doName='ofM'/></DataSet><CB ");
    publisher.replace("</Server>", "<LDevice/></Server>");
    for (const bool goose : {true, false})
        QCOMPARE(Subscribe(goose, publisher,
                           To("1", "D") + "<ExtRef mark='bad' " + extRef + "/>" + To("2", "E")),
                 QStringList("P L s c: 1=D 2=E | "));
}

void SCLHelp_SubscriptionInputsTest::portsAreTakenFromTheAddress_data()
{
    QTest::addColumn<QByteArray>("intAddr");
    QTest::addColumn<QString>("ports");
    QTest::newRow("no address") << QByteArray() << "";
    QTest::newRow("no colon") << QByteArray("intAddr='L/N.D'") << "";
    QTest::newRow("one port") << QByteArray("intAddr='P1:L/N.D'") << "P1";
    QTest::newRow("two ports") << QByteArray("intAddr='P1/P2:L/N.D'") << "P1,P2";
    QTest::newRow("equal ports") << QByteArray("intAddr='P1/P1/P2/P1:L/N.D'") << "P1,P2";
    QTest::newRow("other case is another port") << QByteArray("intAddr='p/P:x'") << "p,P";
    QTest::newRow("two colons") << QByteArray("intAddr='P1:L/N.D:x'") << "";
    QTest::newRow("leading colon gives one empty port")
        << QByteArray("intAddr=':L/N.D'") << "(one empty)";
    QTest::newRow("empty ports between") << QByteArray("intAddr='/P1//P2/:x'") << ",P1,P2";
    QTest::newRow("nothing behind the colon") << QByteArray("intAddr='P1:'") << "P1";
    QTest::newRow("a path that no parse accepts") << QByteArray("intAddr='P1:?'") << "P1";
    QTest::newRow("blanks are kept") << QByteArray("intAddr=' P1 / P2:x'") << " P1 , P2";
}

void SCLHelp_SubscriptionInputsTest::portsAreTakenFromTheAddress()
{
    QFETCH(const QByteArray, intAddr);
    QFETCH(const QString, ports);
    for (const bool goose : {true, false}) {
        TestControl control;
        QByteArray publisher = UsualPublisher();
        publisher.replace("CB", goose ? "GSEControl" : "SampledValueControl");
        SCLElement* root = control.OpenRoot("<SCL><Inputs>" + To("1", "D", intAddr) + "</Inputs>" +
                                            publisher + "</SCL>");
        const Records records = OfInputs(goose, root->GetFirstChild("Inputs"));
        QCOMPARE(records.size(), 1);
        if (ports == "(one empty)")
            QCOMPARE(records.first().ports, QStringList(QString("")));
        else
            QCOMPARE(records.first().ports, ports.isEmpty() ? QStringList() : ports.split(','));
    }
}

void SCLHelp_SubscriptionInputsTest::portsOfARecordAreHeldOnceInTheOrderOfAppearance()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, UsualPublisher(),
                       To("1", "D", "intAddr='P1/P2:x'") + To("2", "E", "intAddr='P2/P3:x'")),
             QStringList("P L s c: 1=D 2=E | P1,P2,P3"));
}

void SCLHelp_SubscriptionInputsTest::portsOfAnExtRefThatIsLeftOutDoNotCount()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, UsualPublisher(),
                       To("1", "F", "intAddr='P1:x'") + To("2", "E", "intAddr='P2:x'")),
             QStringList("P L s c: 2=E | P2"));
}

void SCLHelp_SubscriptionInputsTest::repeatedExtRefsAreKept()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, UsualPublisher(), To("1", "D") + To("2", "D")),
             QStringList("P L s c: 1=D 2=D | "));
}

void SCLHelp_SubscriptionInputsTest::recordsStandInTheOrderOfTheirFirstExtRef()
{
    QFETCH(const bool, goose);
    const QByteArray publisher =
        Publisher("<CB datSet='s' mark='c'/><CB datSet='t' mark='d'/><DataSet name='s' mark='s'>"
                  "<FCDA ldInst='L' doName='D' mark='D'/></DataSet><DataSet name='t' mark='t'>"
                  "<FCDA ldInst='L' doName='E' mark='E'/></DataSet>");
    QCOMPARE(Subscribe(goose, publisher, To("1", "E") + To("2", "D") + To("3", "E")),
             QStringList({"P L t d: 1=E 3=E | ", "P L s c: 2=D | "}));
}

void SCLHelp_SubscriptionInputsTest::theFirstDataSetWithAControlBlockCounts()
{
    QFETCH(const bool, goose);
    const QByteArray publisher =
        Publisher("<DataSet name='r' mark='r'><FCDA ldInst='L' doName='D' mark='D in r'/></DataSet>"
                  "<DataSet name='s' mark='s'><FCDA ldInst='L' doName='D' mark='D in s'/></DataSet>"
                  "<DataSet name='t' mark='t'><FCDA ldInst='L' doName='D' mark='D in t'/></DataSet>"
                  "<CB datSet='t' mark='of t'/><CB datSet='s' mark='of s'/><OTHERCB datSet='r'/>");
    QCOMPARE(Subscribe(goose, publisher, To("1", "D")), QStringList("P L s of s: 1=D in s | "));
}

void SCLHelp_SubscriptionInputsTest::theDataSetIsThatOfTheFirstExtRef()
{
    // The data sets of LN0 and LN have one name, and one control block publishes both.
    QFETCH(const bool, goose);
    QByteArray publisher =
        Publisher("<DataSet name='s' mark='of LN0'><FCDA ldInst='L' doName='D' mark='D'/></DataSet>"
                  "<CB datSet='s' mark='c'/>");
    publisher.replace("</LN0>", "</LN0><LN><DataSet name='s' mark='of LN'>"
                                "<FCDA ldInst='L' doName='E' mark='E'/></DataSet></LN>");
    QCOMPARE(Subscribe(goose, publisher, To("1", "E") + To("2", "D")),
             QStringList("P L of LN c: 1=E 2=D | "));
    QCOMPARE(Subscribe(goose, publisher, To("1", "D") + To("2", "E")),
             QStringList("P L of LN0 c: 1=D 2=E | "));
}

void SCLHelp_SubscriptionInputsTest::onlyTheFirstOfTwoControlBlocksOfADataSetIsReported()
{
    QFETCH(const bool, goose);
    QByteArray publisher = UsualPublisher();
    publisher.replace("<CB datSet='s' mark='c'/>",
                      "<CB datSet='s' mark='1st'/><CB datSet='s' mark='2nd'/>");
    QCOMPARE(Subscribe(goose, publisher, To("1", "D") + To("2", "E")),
             QStringList("P L s 1st: 1=D 2=E | "));
}

void SCLHelp_SubscriptionInputsTest::eachKindKeepsItsOwn()
{
    QFETCH(const bool, goose);
    const QByteArray publisher = Publisher(
        "<CB datSet='s' mark='own'/><OTHERCB datSet='t' mark='other'/><DataSet name='s' mark='s'>"
        "<FCDA ldInst='L' doName='D' mark='D'/></DataSet><DataSet name='t' mark='t'>"
        "<FCDA ldInst='L' doName='E' mark='E'/></DataSet>");
    QCOMPARE(Subscribe(goose, publisher, To("1", "E") + To("2", "D")),
             QStringList("P L s own: 2=D | "));
}

void SCLHelp_SubscriptionInputsTest::aDataSetOfBothKindsIsReportedByBoth()
{
    const QByteArray publisher =
        Publisher("<GSEControl datSet='s' mark='g'/><SampledValueControl datSet='s' mark='v'/>"
                  "<DataSet name='s' mark='s'><FCDA ldInst='L' doName='D' mark='D'/></DataSet>");
    QCOMPARE(Subscribe(true, publisher, To("1", "D")), QStringList("P L s g: 1=D | "));
    QCOMPARE(Subscribe(false, publisher, To("1", "D")), QStringList("P L s v: 1=D | "));
}

void SCLHelp_SubscriptionInputsTest::theRecordNamesTheLDeviceOfTheControlBlock()
{
    QFETCH(const bool, goose);
    QByteArray publisher =
        Publisher("<DataSet name='s' mark='s'><FCDA ldInst='M' doName='D' mark='D'/></DataSet>"
                  "<CB datSet='s' mark='c'/>");
    publisher.replace("</Server>", "<LDevice inst='M' mark='M'/></Server>");
    QCOMPARE(Subscribe(goose, publisher, "<ExtRef mark='1' iedName='P' ldInst='M' doName='D'/>"),
             QStringList("P L s c: 1=D | "));
}

void SCLHelp_SubscriptionInputsTest::anExtRefGoesToTheFirstIedOfItsName()
{
    QFETCH(const bool, goose);
    QCOMPARE(Subscribe(goose, "<IED name='P'/>" + UsualPublisher(), To("1", "D")), QStringList());
    QCOMPARE(Subscribe(goose, UsualPublisher() + "<IED name='P' mark='second'/>", To("1", "D")),
             QStringList("P L s c: 1=D | "));
}

void SCLHelp_SubscriptionInputsTest::theQualityOfASampledValueIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("daName");
    QTest::addColumn<QByteArray>("intAddr");
    QTest::addColumn<bool>("kept");
    const auto row = [](const char* name, const char* daName, const char* intAddr, bool kept) {
        QTest::newRow(name) << QByteArray(daName) << QByteArray(intAddr) << kept;
    };
    row("both end with q", "daName='q'", "intAddr='L/N.D.q'", false);
    row("both end with q somehow", "daName='freq'", "intAddr='faq'", false);
    row("address alone q", "daName='q'", "intAddr='q'", false);
    row("only daName", "daName='q'", "intAddr='L/N.D.stVal'", true);
    row("only intAddr", "daName='stVal'", "intAddr='L/N.D.q'", true);
    row("capital Q", "daName='q'", "intAddr='L/N.D.Q'", true);
    row("blank behind", "daName='q'", "intAddr='L/N.D.q '", true);
    row("no intAddr", "daName='q'", "", true);
    row("no daName", "", "intAddr='L/N.D.q'", true);
    row("empty texts", "daName=''", "intAddr=''", true);
}

void SCLHelp_SubscriptionInputsTest::theQualityOfASampledValueIsLeftOut()
{
    QFETCH(const QByteArray, daName);
    QFETCH(const QByteArray, intAddr);
    QFETCH(const bool, kept);
    const QByteArray publisher =
        Publisher("<DataSet name='s' mark='s'><FCDA ldInst='L' doName='D' mark='D' " + daName +
                  "/></DataSet><CB datSet='s' mark='c'/>");
    QCOMPARE(Subscribe(false, publisher, To("1", "D", daName + " " + intAddr)),
             kept ? QStringList("P L s c: 1=D | ") : QStringList());
}

void SCLHelp_SubscriptionInputsTest::gooseKeepsQuality()
{
    QCOMPARE(Subscribe(true, UsualPublisher(), To("1", "D", "daName='q' intAddr='A:L/N.D.q'")),
             QStringList("P L s c: 1=Dq | A"));
}

void SCLHelp_SubscriptionInputsTest::widerScopesLookAtTheFirstInputsOfTheFirstLN0()
{
    QFETCH(const bool, goose);
    const auto inputs = [](const QByteArray& mark) {
        return "<Inputs mark='in " + mark + "'>" + To(mark, "D") + "</Inputs>";
    };
    QByteArray text =
        "<SCL><IED mark='S'><AccessPoint mark='no Server'/><AccessPoint mark='A'><Server><LDevice>"
        "<LN>" +
        inputs("in LN") + "</LN><LN0>" + inputs("1") + inputs("second Inputs") + "</LN0><LN0>" +
        inputs("second LN0") +
        "</LN0></LDevice><LDevice/><LDevice><LN0/></LDevice>"
        "<LDevice><LN0>" +
        inputs("2") + "</LN0></LDevice></Server><Server><LDevice><LN0>" + inputs("second Server") +
        "</LN0></LDevice></Server></AccessPoint><AccessPoint><Server>"
        "<LDevice><LN0>" +
        inputs("3") + "</LN0></LDevice></Server></AccessPoint></IED>" + UsualPublisher() + "</SCL>";
    text.replace("CB", goose ? "GSEControl" : "SampledValueControl");
    TestControl control;
    SCLElement* root = control.OpenRoot(text);
    QCOMPARE(RecordTexts(OfIed(goose, Marked(root, "S"))), QStringList("P L s c: 1=D 2=D 3=D | "));
    QCOMPARE(RecordTexts(OfAccessPoint(goose, Marked(root, "A"))),
             QStringList("P L s c: 1=D 2=D | "));
    QCOMPARE(RecordTexts(OfAccessPoint(goose, Marked(root, "no Server"))), QStringList());
    QCOMPARE(RecordTexts(OfInputs(goose, Marked(root, "in in LN"))),
             QStringList("P L s c: in LN=D | "));
    QCOMPARE(RecordTexts(OfInputs(goose, Marked(root, "in second Server"))),
             QStringList("P L s c: second Server=D | "));
}

void SCLHelp_SubscriptionInputsTest::recordsAreSharedAcrossLDevicesAndAccessPoints()
{
    QFETCH(const bool, goose);
    const auto lDevice = [](const QByteArray& extRefs) {
        return "<LDevice><LN0><Inputs>" + extRefs + "</Inputs></LN0></LDevice>";
    };
    QByteArray text = "<SCL><IED mark='S'><AccessPoint><Server>" +
                      lDevice(To("1", "D", "intAddr='A:x'")) +
                      lDevice(To("2", "E", "intAddr='B:x'")) + "</Server></AccessPoint>" +
                      "<AccessPoint><Server>" + lDevice(To("3", "D", "intAddr='A/C:x'")) +
                      "</Server></AccessPoint></IED>" + UsualPublisher() + "</SCL>";
    text.replace("CB", goose ? "GSEControl" : "SampledValueControl");
    TestControl control;
    QCOMPARE(RecordTexts(OfIed(goose, Marked(control.OpenRoot(text), "S"))),
             QStringList("P L s c: 1=D 2=E 3=D | A,B,C"));
}

void SCLHelp_SubscriptionInputsTest::anyElementWithExtRefsServesAsInputs()
{
    QFETCH(const bool, goose);
    QByteArray text = "<SCL><Private mark='in'>" + To("1", "D") + "<x>" + To("deeper", "D") +
                      "</x></Private>" + UsualPublisher() + "</SCL>";
    text.replace("CB", goose ? "GSEControl" : "SampledValueControl");
    TestControl control;
    QCOMPARE(RecordTexts(OfInputs(goose, Marked(control.OpenRoot(text), "in"))),
             QStringList("P L s c: 1=D | "));
}

void SCLHelp_SubscriptionInputsTest::nullDetachedAndRootlessArgumentsGiveNothing()
{
    const TestControl control;
    QFETCH(const bool, goose);
    SCLDocument rootless;
    SCLElement detached("IED", nullptr, nullptr);
    SCLElement inRootless("IED", &rootless, nullptr);
    SCLElement* const elements[] = {nullptr, &detached, &inRootless};
    for (SCLElement* element : elements) {
        if (element)
            element->CreateChild("ExtRef", -1, false);
        QVERIFY(OfInputs(goose, element).isEmpty());
        QVERIFY(OfAccessPoint(goose, element).isEmpty());
        QVERIFY(OfIed(goose, element).isEmpty());
    }
}

void SCLHelp_SubscriptionInputsTest::theTreeIsNotChanged()
{
    QFETCH(const bool, goose);
    QByteArray text = "<SCL><IED mark='S'><AccessPoint><Server><LDevice><LN0><Inputs>" +
                      To("1", "D") + "</Inputs></LN0></LDevice></Server></AccessPoint></IED>" +
                      UsualPublisher() + "</SCL>";
    text.replace("CB", goose ? "GSEControl" : "SampledValueControl");
    TestControl control;
    SCLDocument* document = control.Open(text);
    const QString before = ElementText(document->Root());
    QCOMPARE(OfIed(goose, Marked(document->Root(), "S")).size(), 1);
    QCOMPARE(ElementText(document->Root()), before);
    QVERIFY(!document->GetModified());
}

void SCLHelp_SubscriptionInputsTest::textsOfAMegabyteAreServed()
{
    QFETCH(const bool, goose);
    const QByteArray name(1 << 20, 'n');
    const QByteArray slashes(1 << 20, '/');
    QByteArray publisher = UsualPublisher();
    publisher.replace("doName='E'", "doName='" + name + "'");
    QCOMPARE(Subscribe(goose, publisher,
                       To("1", name, "intAddr='" + name + "'") +
                           To("2", name, "intAddr='" + slashes + "P:x'")),
             QStringList("P L s c: 1=E 2=E | ,P"));
}

void SCLHelp_SubscriptionInputsTest::manyOfEverythingEnds()
{
    constexpr int many = 20000;
    QFETCH(const bool, goose);
    QByteArray ln0;
    QByteArray extRefs;
    QByteArray ieds;
    for (int i = 0; i < many; ++i) {
        const QByteArray number = QByteArray::number(i);
        ln0 += "<DataSet name='s" + number + "'><FCDA ldInst='L' doName='D" + number +
               "'/></DataSet><CB datSet='s" + QByteArray::number(many - 1 - i) + "'/>";
        extRefs += To("e", "D" + number, "intAddr='" + number + ":x'") + "<ExtRef iedName='I" +
                   number + "'/>";
        ieds += "<IED name='I" + number + "'/>";
    }
    QCOMPARE(Subscribe(goose, ieds + Publisher(ln0), extRefs).size(), many);
}

QTEST_MAIN(SCLHelp_SubscriptionInputsTest)
#include "SCLHelp_SubscriptionInputsTest.moc"
