// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

const QString g_untouched = QStringLiteral("(as passed)");

// What a parse says and leaves in its out-arguments, which hold "(as passed)" before it.
QString Parsed(const QString& intAddr)
{
    QString port = g_untouched;
    QString ldInst = g_untouched;
    QString lnName = g_untouched;
    QString doName = g_untouched;
    QString daName = g_untouched;
    const bool ok = SCLHelp::ParseExtRefIntAddr(intAddr, port, ldInst, lnName, doName, daName);
    return QStringLiteral("%1 [%2] [%3] [%4] [%5] [%6]")
        .arg(ok ? QStringLiteral("yes") : QStringLiteral("no"), port, ldInst, lnName, doName,
             daName);
}

// A station whose IED "P" holds that, with one ExtRef.
QByteArray Station(const QByteArray& publisher, const QByteArray& extRef)
{
    return "<SCL><IED name='S'><Inputs><ExtRef mark='e' " + extRef +
           "/></Inputs></IED><IED name='P'>" + publisher + "</IED></SCL>";
}

QByteArray InDataSet(const QByteArray& fcdas)
{
    return "<AccessPoint><Server><LDevice inst='L'><LN0><DataSet>" + fcdas +
           "</DataSet></LN0></LDevice></Server></AccessPoint>";
}

} // namespace

class SCLHelp_ExtRefsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAddressIsTakenApart_data();
    void anAddressIsTakenApart();
    void anAddressOfAnotherShapeIsRefused_data();
    void anAddressOfAnotherShapeIsRefused();
    void thePartsOfAnAddressWithoutPortAreNotNull();
    void anAddressMayAliasAnOutArgument();
    void anAddressOfAMegabyteIsTakenApart();

    void anFcdaEqualsInSixAttributes_data();
    void anFcdaEqualsInSixAttributes();
    void membersOfTheWholeSenderAreGathered();
    void aSenderWithoutANameIsFoundByAnEmptyName_data();
    void aSenderWithoutANameIsFoundByAnEmptyName();
    void onlyTheFirstIedOfANameIsSearched();
    void theLDeviceInWhichADataSetStandsIsNotCompared();
    void anUnknownSenderGivesNothing();
    void anyElementWithTheAttributesWillDo();
    void anExtRefWithoutADocumentOrRootGivesNothing();
    void namesOfAMegabyteMatch();
    void theTreeIsNotChanged();
};

void SCLHelp_ExtRefsTest::anAddressIsTakenApart_data()
{
    QTest::addColumn<QString>("intAddr");
    QTest::addColumn<QString>("parsed");
    const auto row = [](const char* name, const QString& intAddr, const char* parsed) {
        QTest::newRow(name) << intAddr << QString::fromUtf8(parsed);
    };
    row("three fields", "L/N.D", "yes [] [L] [N] [D] [(as passed)]");
    row("four fields", "L/N.D.stVal", "yes [] [L] [N] [D] [stVal]");
    row("dots only", "L.N.D.stVal", "yes [] [L] [N] [D] [stVal]");
    row("slashes only", "L/N/D/stVal", "yes [] [L] [N] [D] [stVal]");
    row("three fields with dots only", "L.N.D", "yes [] [L] [N] [D] [(as passed)]");
    row("one port", "P1:L/N.D.q", "yes [P1] [L] [N] [D] [q]");
    row("two ports stay whole", "P1/P2:L/N.D.stVal", "yes [P1/P2] [L] [N] [D] [stVal]");
    row("dots in a port stay", "1.A/2.B:L/N.D", "yes [1.A/2.B] [L] [N] [D] [(as passed)]");
    row("leading colon", ":L/N.D", "yes [] [L] [N] [D] [(as passed)]");
    row("blanks are kept", " P :L /N. D", "yes [ P ] [L ] [N] [ D] [(as passed)]");
    row("empty fields count", "..", "yes [] [] [] [] [(as passed)]");
    row("two dots make an empty field", "L/N..q", "yes [] [L] [N] [] [q]");
    row("trailing dot makes an empty attribute", "L/N.D.", "yes [] [L] [N] [D] []");
    row("four empty fields", "...", "yes [] [] [] [] []");
    row("cut at cVal", "L/N.D.S.cVal.mag.f", "yes [] [L] [N] [D.S] [cVal.mag.f]");
    row("cut at mag", "L/N.D.S.mag.f", "yes [] [L] [N] [D.S] [mag.f]");
    row("cut at instMag", "L/N.D.S.instMag.i", "yes [] [L] [N] [D.S] [instMag.i]");
    row("cut at valWTr", "L/N.D.valWTr.posVal", "yes [] [L] [N] [D] [valWTr.posVal]");
    row("cut with ports", "P1/P2:L/N.D.S.mag.f", "yes [P1/P2] [L] [N] [D.S] [mag.f]");
    row("cut with slashes", "L/N/D/S/mag/f", "yes [] [L] [N] [D.S] [mag.f]");
    row("a key right behind the node", "L/N.mag.f.x", "yes [] [L] [N] [mag.f.x] [mag.f.x]");
    row("cVal goes before mag wherever it stands", "L/N.D.mag.cVal.f",
        "yes [] [L] [N] [D.mag] [cVal.f]");
    row("mag goes before instMag", "L/N.D.instMag.mag.f", "yes [] [L] [N] [D.instMag] [mag.f]");
    row("instMag goes before valWTr", "L/N.D.valWTr.instMag",
        "yes [] [L] [N] [D.valWTr] [instMag]");
    row("instCVal holds no cVal", "L/N.A.phsA.instCVal.mag.f",
        "yes [] [L] [N] [A.phsA.instCVal] [mag.f]");
    row("a key inside a word cuts the word", "L/N.D.xmag.f", "yes [] [L] [N] [D.] [mag.f]");
    row("the first of two equal keys cuts", "L/N.D.mag.S.mag", "yes [] [L] [N] [D] [mag.S.mag]");
    row("two dots before a key", "L/N.D..mag.f", "yes [] [L] [N] [D.] [mag.f]");
    // A key before the data object: a negative count takes all that follows the node.
    row("key in ldInst", "magL/N.D.S.x", "yes [] [magL] [N] [D.S.x] [magL.N.D.S.x]");
    row("key in ldInst and attribute", "magL/N.D.S.mag.f",
        "yes [] [magL] [N] [D.S.mag.f] [magL.N.D.S.mag.f]");
    row("key inside ldInst", "LmagL/N.D.S.x", "yes [] [LmagL] [N] [D.S.x] [magL.N.D.S.x]");
    row("key in lnName", "L/magN.D.S.x", "yes [] [L] [magN] [D.S.x] [magN.D.S.x]");
    row("key at the end of lnName", "L/Nmag.D.S.x", "yes [] [L] [Nmag] [D.S.x] [mag.D.S.x]");
    // The text of the node occurs earlier: the data object begins behind that.
    row("lnName inside ldInst", "PIGO/GO.D.S.mag.f", "yes [] [PIGO] [GO] [GO.D.S] [mag.f]");
    row("lnName at the start of ldInst", "N1/N.D.S.mag.f", "yes [] [N1] [N] [.N.D.S] [mag.f]");
    row("lnName equals ldInst", "N/N.D.S.mag.f", "yes [] [N] [N] [N.D.S] [mag.f]");
    row("empty lnName", "L/.D.S.mag.f", "yes [] [L] [] [..D.S] [mag.f]");
    row("empty lnName and ldInst", "/.D.S.mag.f", "yes [] [] [] [.D.S] [mag.f]");
    row("letters beyond ASCII", QString::fromUtf8("P\xc3\xa4:L\xc3\xb6/\xe6\x96\xad.D.q"),
        "yes [P\xc3\xa4] [L\xc3\xb6] [\xe6\x96\xad] [D] [q]");
    row("control characters", "P\x01:L\x02/N\n.D\t.q", "yes [P\x01] [L\x02] [N\n] [D\t] [q]");
}

void SCLHelp_ExtRefsTest::anAddressIsTakenApart()
{
    QFETCH(const QString, intAddr);
    QTEST(Parsed(intAddr), "parsed");
}

void SCLHelp_ExtRefsTest::anAddressOfAnotherShapeIsRefused_data()
{
    QTest::addColumn<QString>("intAddr");
    QTest::addColumn<QString>("parsed");
    const auto row = [](const char* name, const char* intAddr, const char* parsed) {
        QTest::newRow(name) << QString(intAddr) << QString(parsed);
    };
    const char* const untouched =
        "no [(as passed)] [(as passed)] [(as passed)] [(as passed)] [(as passed)]";
    row("empty", "", untouched);
    row("two colons", "P:L/N.D:x", untouched);
    row("two colons alone", "::", untouched);
    row("many colons", "a:b:c:d:L/N.D.q", untouched);
    // The port is known before the path fails.
    row("one field", "L", "no [] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    row("two fields", "L/N", "no [] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    row("one field with port", "P1/P2:L",
        "no [P1/P2] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    row("two fields with port", "P:L.N",
        "no [P] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    row("nothing behind the port",
        "P:", "no [P] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    row("colon alone", ":", "no [] [(as passed)] [(as passed)] [(as passed)] [(as passed)]");
    // So are device and node before the attribute is not found.
    row("five fields without key", "L/N.D.S.x", "no [] [L] [N] [(as passed)] [(as passed)]");
    row("five fields with port without key", "P:L/N.D.S.stVal",
        "no [P] [L] [N] [(as passed)] [(as passed)]");
    row("five empty fields", "....", "no [] [] [] [(as passed)] [(as passed)]");
    row("keys of another case", "L/N.D.CVAL.Mag.f", "no [] [L] [N] [(as passed)] [(as passed)]");
    row("instMag of another case", "L/N.D.S.instmAg", "no [] [L] [N] [(as passed)] [(as passed)]");
    row("a key in the port does not count", "mag:L/N.D.S.x",
        "no [mag] [L] [N] [(as passed)] [(as passed)]");
    row("a key across a dot is none", "L/N.D.ma.g", "no [] [L] [N] [(as passed)] [(as passed)]");
}

void SCLHelp_ExtRefsTest::anAddressOfAnotherShapeIsRefused()
{
    QFETCH(const QString, intAddr);
    QTEST(Parsed(intAddr), "parsed");
}

void SCLHelp_ExtRefsTest::thePartsOfAnAddressWithoutPortAreNotNull()
{
    QString port;
    QString ldInst;
    QString lnName;
    QString doName;
    QString daName;
    QVERIFY(SCLHelp::ParseExtRefIntAddr("L/N.D", port, ldInst, lnName, doName, daName));
    QVERIFY(!port.isNull());
    QVERIFY(daName.isNull());
}

void SCLHelp_ExtRefsTest::anAddressMayAliasAnOutArgument()
{
    QString text = "P:L/N.D.S.mag.f";
    QString ldInst;
    QString lnName;
    QString doName;
    QString daName;
    QVERIFY(SCLHelp::ParseExtRefIntAddr(text, text, ldInst, lnName, doName, daName));
    QCOMPARE(QStringList({text, ldInst, lnName, doName, daName}),
             QStringList({"P", "L", "N", "D.S", "mag.f"}));
}

void SCLHelp_ExtRefsTest::anAddressOfAMegabyteIsTakenApart()
{
    const QString name(1 << 20, 'n');
    const QString dots(1 << 20, '.');
    QCOMPARE(Parsed(name + ":L/" + name + ".D"),
             "yes [" + name + "] [L] [" + name + "] [D] [(as passed)]");
    QCOMPARE(Parsed(dots), QString("no [] [] [] [(as passed)] [(as passed)]"));
    QCOMPARE(Parsed("L/N" + dots + "mag"),
             "yes [] [L] [N] [" + QString((1 << 20) - 2, '.') + "] [mag]");
    QCOMPARE(Parsed(QString(1 << 20, ':')),
             QString("no [(as passed)] [(as passed)] [(as passed)] [(as passed)] [(as passed)]"));
}

void SCLHelp_ExtRefsTest::anFcdaEqualsInSixAttributes_data()
{
    QTest::addColumn<QByteArray>("extRef");
    QTest::addColumn<QByteArray>("fcda");
    QTest::addColumn<bool>("equal");
    const QByteArray whole =
        "ldInst='L' prefix='p' lnClass='C' lnInst='1' doName='D' daName='stVal' ";
    const auto row = [](const char* name, const QByteArray& extRef, const QByteArray& fcda,
                        bool equal) { QTest::newRow(name) << extRef << fcda << equal; };
    row("all equal", whole, whole, true);
    row("other case", whole,
        whole.toUpper().replace("LDINST", "ldInst").replace("PREFIX", "prefix"), false);
    row("none at all", "", "", true);
    row("missing and empty", "ldInst='L'",
        "ldInst='L' prefix='' lnClass='' lnInst='' doName='' daName=''", true);
    row("empty and missing", "ldInst='L' prefix='' lnClass='' lnInst='' doName='' daName=''",
        "ldInst='L'", true);
    for (const char* name : {"ldInst", "prefix", "lnClass", "lnInst", "doName", "daName"}) {
        const int at = static_cast<int>(whole.indexOf(name));
        const int behind = static_cast<int>(whole.indexOf("' ", at));
        const QByteArray without = whole.left(at) + whole.mid(behind + 2);
        const QByteArray other = whole.left(behind) + "x" + whole.mid(behind);
        row(qPrintable(QString("%1 differs").arg(name)), whole, other, false);
        row(qPrintable(QString("%1 only in the ExtRef").arg(name)), whole, without, false);
        row(qPrintable(QString("%1 only in the FCDA").arg(name)), without, whole, false);
        row(qPrintable(QString("%1 in neither").arg(name)), without, without, true);
    }
    row("a whole data object does not stand for its attribute", whole,
        "ldInst='L' prefix='p' lnClass='C' lnInst='1' doName='D'", false);
    row("fc and ix are not compared", whole, whole + "fc='ST' ix='3'", true);
    row("intAddr and sources are not compared",
        whole + "intAddr='x' srcCBName='y' fc='MX' serviceType='SMV'", whole + "fc='ST'", true);
}

void SCLHelp_ExtRefsTest::anFcdaEqualsInSixAttributes()
{
    TestControl control;
    QFETCH(const QByteArray, extRef);
    QFETCH(const QByteArray, fcda);
    QFETCH(const bool, equal);
    SCLElement* root = control.OpenRoot(
        Station(InDataSet("<FCDA mark='f' " + fcda + "/>"), "iedName='P' " + extRef));
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))),
             equal ? QString("f") : QString());
}

void SCLHelp_ExtRefsTest::membersOfTheWholeSenderAreGathered()
{
    const auto set = [](const QByteArray& mark) {
        return "<DataSet><FCDA mark='" + mark + "' doName='D'/><FCDA doName='E'/><FCDA mark='" +
               mark + "b' doName='D'/></DataSet>";
    };
    TestControl control;
    // In the file the LNs stand before the LN0.
    SCLElement* root = control.OpenRoot(
        Station("<AccessPoint/><AccessPoint><Server><LDevice><LN>" + set("3") + set("4") +
                    "</LN><LN>" + set("5") + "</LN><LN0>" + set("1") + set("2") + "</LN0><LN0>" +
                    set("not") + "</LN0></LDevice><LDevice><LN>" + set("6") +
                    "</LN></LDevice></Server><Server><LDevice>" + "<LN0>" + set("never") +
                    "</LN0></LDevice></Server></AccessPoint><AccessPoint>" +
                    "<Server><LDevice><LN0>" + set("7") + "</LN0></LDevice></Server></AccessPoint>",
                "iedName='P' doName='D'"));
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))),
             QString("1 1b 2 2b 3 3b 4 4b 5 5b 6 6b 7 7b"));
}

void SCLHelp_ExtRefsTest::aSenderWithoutANameIsFoundByAnEmptyName_data()
{
    QTest::addColumn<QByteArray>("iedName");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("found");
    QTest::newRow("both missing") << QByteArray() << QByteArray() << true;
    QTest::newRow("both empty") << QByteArray("iedName=''") << QByteArray("name=''") << true;
    QTest::newRow("missing and empty") << QByteArray() << QByteArray("name=''") << true;
    QTest::newRow("empty and missing") << QByteArray("iedName=''") << QByteArray() << true;
    QTest::newRow("empty and named") << QByteArray("iedName=''") << QByteArray("name='P'") << false;
    QTest::newRow("other case") << QByteArray("iedName='p'") << QByteArray("name='P'") << false;
}

void SCLHelp_ExtRefsTest::aSenderWithoutANameIsFoundByAnEmptyName()
{
    TestControl control;
    QFETCH(const QByteArray, iedName);
    QFETCH(const QByteArray, name);
    QFETCH(const bool, found);
    SCLElement* root =
        control.OpenRoot("<SCL><IED name='S'><ExtRef mark='e' " + iedName + "/></IED><IED " + name +
                         ">" + InDataSet("<FCDA mark='f'/>") + "</IED></SCL>");
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))),
             found ? QString("f") : QString());
}

void SCLHelp_ExtRefsTest::onlyTheFirstIedOfANameIsSearched()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><ExtRef mark='e' iedName='P' doName='D'/><IED name='P'/><IED name='P'>" +
        InDataSet("<FCDA mark='f' doName='D'/>") + "</IED></SCL>");
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))), QString());
}

void SCLHelp_ExtRefsTest::theLDeviceInWhichADataSetStandsIsNotCompared()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Station(InDataSet("<FCDA mark='of M' ldInst='M'/><FCDA mark='of L' ldInst='L'/>"),
                "iedName='P' ldInst='M'"));
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))), QString("of M"));
}

void SCLHelp_ExtRefsTest::anUnknownSenderGivesNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(InDataSet("<FCDA/>"), "iedName='Q'"));
    QVERIFY(SCLHelp::GetFCDAFromExtRef(Marked(root, "e")).isEmpty());
}

void SCLHelp_ExtRefsTest::anyElementWithTheAttributesWillDo()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><Private mark='e' iedName='P' doName='D'/><IED name='P'>" +
                         InDataSet("<FCDA mark='f' doName='D'/>") + "</IED></SCL>");
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))), QString("f"));
}

void SCLHelp_ExtRefsTest::anExtRefWithoutADocumentOrRootGivesNothing()
{
    const TestControl control;
    SCLDocument rootless;
    SCLElement detached("ExtRef", nullptr, nullptr);
    SCLElement inRootless("ExtRef", &rootless, nullptr);
    QVERIFY(SCLHelp::GetFCDAFromExtRef(nullptr).isEmpty());
    QVERIFY(SCLHelp::GetFCDAFromExtRef(&detached).isEmpty());
    QVERIFY(SCLHelp::GetFCDAFromExtRef(&inRootless).isEmpty());
}

void SCLHelp_ExtRefsTest::namesOfAMegabyteMatch()
{
    const QByteArray name(1 << 20, 'n');
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Station(InDataSet("<FCDA doName='" + name + "n'/><FCDA mark='f' doName='" + name + "'/>"),
                "iedName='P' doName='" + name + "'"));
    QCOMPARE(MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "e"))), QString("f"));
}

void SCLHelp_ExtRefsTest::theTreeIsNotChanged()
{
    TestControl control;
    SCLDocument* document = control.Open(Station(InDataSet("<FCDA/>"), "iedName='P'"));
    const QString before = ElementText(document->Root());
    SCLHelp::GetFCDAFromExtRef(Marked(document->Root(), "e"));
    QCOMPARE(ElementText(document->Root()), before);
    QVERIFY(!document->GetModified());
}

QTEST_MAIN(SCLHelp_ExtRefsTest)
#include "SCLHelp_ExtRefsTest.moc"
