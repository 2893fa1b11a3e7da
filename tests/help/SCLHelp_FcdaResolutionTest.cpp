// SPDX-License-Identifier: Apache-2.0
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// An IED whose LDevice "L" holds that, in a document with a few types.
QByteArray Station(const QByteArray& lDevice)
{
    return "<SCL><IED name='I'><AccessPoint name='S'><Server><LDevice inst='L'>" + lDevice +
           "</LDevice></Server></AccessPoint></IED><DataTypeTemplates>"
           "<LNodeType id='T'><DO name='D' type='DT' mark='DO D'/></LNodeType>"
           "<DOType id='DT'><SDO name='S' type='ST' mark='SDO S'/><DA name='a' mark='DA a'/>"
           "</DOType><DOType id='ST'><DA name='b' mark='DA b'/></DOType>"
           "</DataTypeTemplates></SCL>";
}

// A node with instances three levels deep.
QByteArray Instances()
{
    return Station("<LN lnClass='GGIO' inst='1' mark='ln'>"
                   "<DOI name='D' mark='D'><DAI name='a' sAddr='1' mark='D.a'/>"
                   "<DAI name='bare' mark='D.bare'/>"
                   "<SDI name='S' mark='D.S'><DAI name='a' sAddr='2' mark='D.S.a'/>"
                   "<SDI name='S' mark='D.S.S'><DAI name='a' sAddr='3' mark='D.S.S.a'/></SDI></SDI>"
                   "<SDI mark='D.nameless'><DAI name='a' mark='D..a'/><DAI mark='D..'/></SDI>"
                   "<DAI mark='D.'/></DOI>"
                   "<DOI name='D' mark='second D'><SDI name='only' mark='second D.only'/></DOI>"
                   "<DOI mark='nameless'/></LN>");
}

void AddFunctions()
{
    QTest::addColumn<bool>("declaration");
    QTest::newRow("declaration") << true;
    QTest::newRow("instance") << false;
}

SCLElement* Resolve(bool declaration, SCLElement* fcda)
{
    return declaration ? SCLHelp::GetDOFromFCDA(fcda) : SCLHelp::GetDOIFromFCDA(fcda);
}

} // namespace

class SCLHelp_FcdaResolutionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noFcdaGivesNull_data() { AddFunctions(); }
    void noFcdaGivesNull();
    void aDetachedFcdaGivesNull_data() { AddFunctions(); }
    void aDetachedFcdaGivesNull();
    void anFcdaThatLeadsNowhereGivesNull_data();
    void anFcdaThatLeadsNowhereGivesNull();
    void anFcdaOutsideAnyIedGivesNull_data() { AddFunctions(); }
    void anFcdaOutsideAnyIedGivesNull();
    void theLDeviceIsLookedForInTheOwnIed_data() { AddFunctions(); }
    void theLDeviceIsLookedForInTheOwnIed();
    void theDataSetMayStandInAnotherLDevice_data() { AddFunctions(); }
    void theDataSetMayStandInAnotherLDevice();

    void theDeclarationIsWhatStandsAtTheEndOfThePath_data();
    void theDeclarationIsWhatStandsAtTheEndOfThePath();
    void aNodeWithoutATypeHasNoDeclarations();
    void theDeclarationTakesANodeByItsComposedName_data();
    void theDeclarationTakesANodeByItsComposedName();
    void theInstanceTakesANodeAttributeByAttribute_data();
    void theInstanceTakesANodeAttributeByAttribute();
    void markersInTheNameOfANodeAreReplacedOneByOne();
    void theInstanceFallsFromLN0ToLN();
    void theFirstOfEqualNodesWins();
    void theInstanceOfADottedNameIsAnSdi();

    void instancesAreFoundByTheirNames_data();
    void instancesAreFoundByTheirNames();
    void attributesAreFoundByTheirNames_data();
    void attributesAreFoundByTheirNames();
    void attributesAreFoundFromAnSdiToo();
    void noParentGivesNoInstance();
    void theShortAddressOfAnAttribute_data();
    void theShortAddressOfAnAttribute();
    void aMissingShortAddressIsEmptyAndNotNull();
    void namesOfAMegabyteAreFoundAndMissed();
    void aPathOfAMillionSegmentsEnds();
    void aPathThroughATypeThatHoldsItselfEnds();
};

void SCLHelp_FcdaResolutionTest::noFcdaGivesNull()
{
    const TestControl control;
    QFETCH(const bool, declaration);
    QVERIFY(Resolve(declaration, nullptr) == nullptr);
}

void SCLHelp_FcdaResolutionTest::aDetachedFcdaGivesNull()
{
    const TestControl control;
    SCLElement fcda(QStringLiteral("FCDA"), nullptr, nullptr);
    fcda.SetAttribute("ldInst", "L", false);
    QFETCH(const bool, declaration);
    QVERIFY(Resolve(declaration, &fcda) == nullptr);
}

void SCLHelp_FcdaResolutionTest::anFcdaThatLeadsNowhereGivesNull_data()
{
    QTest::addColumn<QByteArray>("fcda");
    QTest::addColumn<QString>("declaration");
    QTest::addColumn<QString>("instance");
    QTest::newRow("found") << QByteArray("ldInst='L' lnClass='GGIO' lnInst='1' doName='D'")
                           << "DO D"
                           << "doi";
    QTest::newRow("without ldInst") << QByteArray("lnClass='GGIO' lnInst='1' doName='D'") << "null"
                                    << "null";
    QTest::newRow("without doName") << QByteArray("ldInst='L' lnClass='GGIO' lnInst='1'") << "null"
                                    << "null";
    QTest::newRow("other case of ldInst")
        << QByteArray("ldInst='l' lnClass='GGIO' lnInst='1' doName='D'") << "null"
        << "null";
    QTest::newRow("unknown LDevice")
        << QByteArray("ldInst='M' lnClass='GGIO' lnInst='1' doName='D'") << "null"
        << "null";
    QTest::newRow("unknown node") << QByteArray("ldInst='L' lnClass='GGIO' lnInst='2' doName='D'")
                                  << "null"
                                  << "null";
    QTest::newRow("unknown data object")
        << QByteArray("ldInst='L' lnClass='GGIO' lnInst='1' doName='E'") << "null"
        << "null";
}

void SCLHelp_FcdaResolutionTest::anFcdaThatLeadsNowhereGivesNull()
{
    TestControl control;
    QFETCH(const QByteArray, fcda);
    // The second LDevice shows that an empty ldInst does not stand for a missing inst.
    SCLElement* root = control.OpenRoot(Station(
        "<LN0><DataSet><FCDA mark='fcda' " + fcda +
        "/></DataSet></LN0><LN lnClass='GGIO' inst='1' lnType='T'><DOI name='D' mark='doi'/>"
        "<DOI mark='nameless'/></LN></LDevice><LDevice><LN lnClass='GGIO' inst='1' "
        "lnType='T'><DOI name='D' mark='other'/></LN>"));
    QTEST(MarkOf(SCLHelp::GetDOFromFCDA(Marked(root, "fcda"))), "declaration");
    QTEST(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "fcda"))), "instance");
}

void SCLHelp_FcdaResolutionTest::anFcdaOutsideAnyIedGivesNull()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><LDevice inst='L'><LN lnClass='GGIO' inst='1'><DOI name='D'/><DataSet>"
        "<FCDA mark='fcda' ldInst='L' lnClass='GGIO' lnInst='1' doName='D'/></DataSet></LN>"
        "</LDevice></SCL>");
    QFETCH(const bool, declaration);
    QVERIFY(Resolve(declaration, Marked(root, "fcda")) == nullptr);
}

void SCLHelp_FcdaResolutionTest::theLDeviceIsLookedForInTheOwnIed()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><IED name='I'><AccessPoint><Server><LDevice inst='L'><LN0><DataSet>"
        "<FCDA mark='fcda' ldInst='M' lnClass='GGIO' lnInst='1' doName='D'/></DataSet></LN0>"
        "</LDevice></Server></AccessPoint></IED>"
        "<IED name='I'><AccessPoint><Server><LDevice inst='M'>"
        "<LN lnClass='GGIO' inst='1' lnType='T'><DOI name='D'/></LN>"
        "</LDevice></Server></AccessPoint></IED>"
        "<DataTypeTemplates><LNodeType id='T'><DO "
        "name='D'/></LNodeType></DataTypeTemplates></SCL>");
    QFETCH(const bool, declaration);
    QVERIFY(Resolve(declaration, Marked(root, "fcda")) == nullptr);
}

void SCLHelp_FcdaResolutionTest::theDataSetMayStandInAnotherLDevice()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><IED name='I'><AccessPoint><Server><LDevice inst='L'><LN0><DataSet>"
        "<FCDA mark='fcda' ldInst='M' lnClass='GGIO' lnInst='1' doName='D'/></DataSet></LN0>"
        "</LDevice></Server></AccessPoint><AccessPoint><Server><LDevice inst='M'>"
        "<LN lnClass='GGIO' inst='1' lnType='T'><DOI name='D' mark='D'/></LN>"
        "</LDevice></Server></AccessPoint></IED><DataTypeTemplates>"
        "<LNodeType id='T'><DO name='D' mark='D'/></LNodeType></DataTypeTemplates></SCL>");
    QFETCH(const bool, declaration);
    QCOMPARE(MarkOf(Resolve(declaration, Marked(root, "fcda"))), QString("D"));
}

void SCLHelp_FcdaResolutionTest::theDeclarationIsWhatStandsAtTheEndOfThePath_data()
{
    QTest::addColumn<QString>("doName");
    QTest::addColumn<QString>("found");
    QTest::newRow("DO") << "D"
                        << "DO D";
    QTest::newRow("SDO") << "D.S"
                         << "SDO S";
    QTest::newRow("DA of the DO") << "D.a"
                                  << "DA a";
    QTest::newRow("DA of the SDO") << "D.S.b"
                                   << "DA b";
    QTest::newRow("trailing dot") << "D."
                                  << "null";
    QTest::newRow("leading dot") << ".D"
                                 << "null";
    QTest::newRow("below a DA") << "D.a.b"
                                << "null";
}

void SCLHelp_FcdaResolutionTest::theDeclarationIsWhatStandsAtTheEndOfThePath()
{
    TestControl control;
    QFETCH(const QString, doName);
    SCLElement* root = control.OpenRoot(
        Station("<LN lnClass='GGIO' inst='1' lnType='T'><DataSet><FCDA mark='fcda' ldInst='L' "
                "lnClass='GGIO' lnInst='1' doName='" +
                doName.toUtf8() + "'/></DataSet></LN>"));
    QTEST(MarkOf(SCLHelp::GetDOFromFCDA(Marked(root, "fcda"))), "found");
}

void SCLHelp_FcdaResolutionTest::aNodeWithoutATypeHasNoDeclarations()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Station("<LN lnClass='GGIO' inst='1' lnType='unknown'><DOI name='D' mark='doi'/><DataSet>"
                "<FCDA mark='fcda' ldInst='L' lnClass='GGIO' lnInst='1' doName='D'/></DataSet>"
                "</LN>"));
    QVERIFY(SCLHelp::GetDOFromFCDA(Marked(root, "fcda")) == nullptr);
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "fcda"))), QString("doi"));
}

void SCLHelp_FcdaResolutionTest::theDeclarationTakesANodeByItsComposedName_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QByteArray>("fcda");
    QTest::addColumn<bool>("found");
    QTest::newRow("same split") << QByteArray("LN prefix='P' lnClass='GGIO' inst='1'")
                                << QByteArray("prefix='P' lnClass='GGIO' lnInst='1'") << true;
    QTest::newRow("other split") << QByteArray("LN prefix='P' lnClass='GGIO' inst='11'")
                                 << QByteArray("lnClass='PGGIO1' lnInst='1'") << true;
    QTest::newRow("all in the prefix")
        << QByteArray("LN prefix='PGGIO1'") << QByteArray("prefix='P' lnClass='GGIO' lnInst='1'")
        << true;
    QTest::newRow("no prefix in the FCDA") << QByteArray("LN prefix='P' lnClass='GGIO' inst='1'")
                                           << QByteArray("lnClass='GGIO' lnInst='1'") << false;
    QTest::newRow("prefix of an LN0 is ignored")
        << QByteArray("LN0 prefix='P' lnClass='LLN0'") << QByteArray("lnClass='LLN0'") << true;
    QTest::newRow("an LN0 has no prefix") << QByteArray("LN0 prefix='P' lnClass='LLN0'")
                                          << QByteArray("prefix='P' lnClass='LLN0'") << false;
    QTest::newRow("other case") << QByteArray("LN lnClass='GGIO' inst='1'")
                                << QByteArray("lnClass='Ggio' lnInst='1'") << false;
}

void SCLHelp_FcdaResolutionTest::theDeclarationTakesANodeByItsComposedName()
{
    TestControl control;
    QFETCH(const QByteArray, node);
    QFETCH(const QByteArray, fcda);
    QFETCH(const bool, found);
    SCLElement* root = control.OpenRoot(Station("<" + node +
                                                " lnType='T'/><LN lnClass='ANY'><DataSet>"
                                                "<FCDA mark='fcda' ldInst='L' doName='D' " +
                                                fcda + "/></DataSet></LN>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOFromFCDA(Marked(root, "fcda"))),
             found ? QString("DO D") : QString("null"));
}

void SCLHelp_FcdaResolutionTest::theInstanceTakesANodeAttributeByAttribute_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QByteArray>("fcda");
    QTest::addColumn<bool>("found");
    QTest::newRow("same split") << QByteArray("LN prefix='P' lnClass='GGIO' inst='1'")
                                << QByteArray("prefix='P' lnClass='GGIO' lnInst='1'") << true;
    QTest::newRow("other split") << QByteArray("LN prefix='P' lnClass='GGIO' inst='11'")
                                 << QByteArray("lnClass='PGGIO1' lnInst='1'") << false;
    QTest::newRow("empty and missing") << QByteArray("LN prefix='' lnClass='GGIO' inst=''")
                                       << QByteArray("lnClass='GGIO'") << true;
    QTest::newRow("missing and empty") << QByteArray("LN lnClass='GGIO'")
                                       << QByteArray("prefix='' lnClass='GGIO' lnInst=''") << true;
    QTest::newRow("LN0") << QByteArray("LN0 lnClass='LLN0' inst=''") << QByteArray("lnClass='LLN0'")
                         << true;
    QTest::newRow("prefix of an LN0 that the FCDA lacks")
        << QByteArray("LN0 prefix='P' lnClass='LLN0'") << QByteArray("lnClass='LLN0'") << false;
    QTest::newRow("prefix of an LN0 that the FCDA repeats")
        << QByteArray("LN0 prefix='P' lnClass='LLN0'") << QByteArray("prefix='P' lnClass='LLN0'")
        << true;
    QTest::newRow("other case") << QByteArray("LN lnClass='GGIO' inst='1'")
                                << QByteArray("lnClass='Ggio' lnInst='1'") << false;
}

void SCLHelp_FcdaResolutionTest::theInstanceTakesANodeAttributeByAttribute()
{
    TestControl control;
    QFETCH(const QByteArray, node);
    QFETCH(const QByteArray, fcda);
    QFETCH(const bool, found);
    const QByteArray tag = node.left(node.indexOf(' '));
    SCLElement* root = control.OpenRoot(Station(
        "<" + node + "><DOI name='D' mark='doi'/></" + tag + "><LN lnClass='ANY'><DataSet>" +
        "<FCDA mark='fcda' ldInst='L' doName='D' " + fcda + "/></DataSet></LN>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "fcda"))),
             found ? QString("doi") : QString("null"));
}

void SCLHelp_FcdaResolutionTest::markersInTheNameOfANodeAreReplacedOneByOne()
{
    // "%1%2%3" with the prefix "%2x" is "%2x%2%3", in which the class goes to both places.
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Station("<LN prefix='CxC' inst='1' lnType='T'/><LN lnClass='ANY'><DataSet>"
                "<FCDA mark='fcda' ldInst='L' prefix='%2x' lnClass='C' lnInst='1' doName='D'/>"
                "</DataSet></LN>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOFromFCDA(Marked(root, "fcda"))), QString("DO D"));
}

void SCLHelp_FcdaResolutionTest::theInstanceFallsFromLN0ToLN()
{
    const QByteArray fcda =
        "<DataSet><FCDA mark='fcda' ldInst='L' lnClass='LLN0' doName='D'/></DataSet>";
    const QByteArray ln = "<LN lnClass='LLN0'>" + fcda + "<DOI name='D' mark='of LN'/></LN>";
    TestControl control;
    SCLElement* both =
        control.OpenRoot(Station(ln + "<LN0 lnClass='LLN0'><DOI name='D' mark='of LN0'/></LN0>"));
    SCLElement* other =
        control.OpenRoot(Station(ln + "<LN0 lnClass='LLN1'><DOI name='D' mark='of LN0'/></LN0>"));
    // An LN0 that matches is the node, whatever it holds.
    SCLElement* bare = control.OpenRoot(Station(ln + "<LN0 lnClass='LLN0'/>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(both, "fcda"))), QString("of LN0"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(other, "fcda"))), QString("of LN"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(bare, "fcda"))), QString("null"));
}

void SCLHelp_FcdaResolutionTest::theFirstOfEqualNodesWins()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        Station("<LN lnClass='A'><DataSet><FCDA mark='in LN' ldInst='L' lnClass='A' doName='D'/>"
                "<FCDA mark='in LN0' ldInst='L' lnClass='Z' doName='D'/></DataSet>"
                "<DOI name='D' mark='first LN'/></LN>"
                "<LN lnClass='A'><DOI name='D' mark='second LN'/></LN>"
                "<LN0 lnClass='Z' inst='x'><DOI name='D' mark='first LN0'/></LN0>"
                "<LN0 lnClass='Z'><DOI name='D' mark='second LN0'/></LN0>"
                "<LN0 lnClass='Z'><DOI name='D' mark='third LN0'/></LN0>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "in LN"))), QString("first LN"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "in LN0"))), QString("second LN0"));
}

void SCLHelp_FcdaResolutionTest::theInstanceOfADottedNameIsAnSdi()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(
        "<LN lnClass='A'><DataSet><FCDA mark='fcda' ldInst='L' lnClass='A' doName='D.S'/></DataSet>"
        "<DOI name='D'><SDI name='S' mark='sdi'/></DOI></LN>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "fcda"))), QString("sdi"));
}

void SCLHelp_FcdaResolutionTest::instancesAreFoundByTheirNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("empty") << ""
                           << "null";
    QTest::newRow("DOI") << "D"
                         << "D";
    QTest::newRow("SDI") << "D.S"
                         << "D.S";
    QTest::newRow("SDI in an SDI") << "D.S.S"
                                   << "D.S.S";
    QTest::newRow("below nothing") << "D.S.S.S"
                                   << "null";
    QTest::newRow("unknown DOI") << "E"
                                 << "null";
    QTest::newRow("other case") << "d"
                                << "null";
    QTest::newRow("never a DAI") << "D.a"
                                 << "null";
    QTest::newRow("an SDI is no first segment") << "S"
                                                << "null";
    QTest::newRow("only the first DOI is gone into") << "D.only"
                                                     << "null";
    QTest::newRow("trailing dot finds a nameless SDI") << "D."
                                                       << "D.nameless";
    QTest::newRow("trailing dot without a nameless SDI") << "D.S."
                                                         << "null";
    QTest::newRow("one dot finds a nameless DOI and goes on in it") << "."
                                                                    << "null";
    QTest::newRow("leading dot") << ".D"
                                 << "null";
    QTest::newRow("two dots") << "D..S"
                              << "null";
}

void SCLHelp_FcdaResolutionTest::instancesAreFoundByTheirNames()
{
    TestControl control;
    QFETCH(const QString, name);
    SCLElement* ln = Marked(control.OpenRoot(Instances()), "ln");
    QTEST(MarkOf(SCLHelp::GetDOIFromLNAndName(ln, name)), "found");
}

void SCLHelp_FcdaResolutionTest::attributesAreFoundByTheirNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("empty") << ""
                           << "null";
    QTest::newRow("DAI") << "a"
                         << "D.a";
    QTest::newRow("in an SDI") << "S.a"
                               << "D.S.a";
    QTest::newRow("in an SDI of an SDI") << "S.S.a"
                                         << "D.S.S.a";
    QTest::newRow("unknown DAI") << "b"
                                 << "null";
    QTest::newRow("unknown SDI") << "T.a"
                                 << "null";
    QTest::newRow("other case") << "A"
                                << "null";
    QTest::newRow("never an SDI") << "S"
                                  << "null";
    QTest::newRow("never an SDI in an SDI") << "S.S"
                                            << "null";
    QTest::newRow("a DAI is no step") << "a.a"
                                      << "null";
    QTest::newRow("leading dot goes into a nameless SDI") << ".a"
                                                          << "D..a";
    QTest::newRow("one dot") << "."
                             << "D..";
    QTest::newRow("trailing dot") << "S."
                                  << "null";
    QTest::newRow("two dots") << "S..a"
                              << "null";
}

void SCLHelp_FcdaResolutionTest::attributesAreFoundByTheirNames()
{
    TestControl control;
    QFETCH(const QString, name);
    SCLElement* doi = Marked(control.OpenRoot(Instances()), "D");
    QTEST(MarkOf(SCLHelp::GetDAIFromDOIAndName(doi, name)), "found");
}

void SCLHelp_FcdaResolutionTest::attributesAreFoundFromAnSdiToo()
{
    TestControl control;
    SCLElement* sdi = Marked(control.OpenRoot(Instances()), "D.S");
    QCOMPARE(MarkOf(SCLHelp::GetDAIFromDOIAndName(sdi, "a")), QString("D.S.a"));
    QCOMPARE(MarkOf(SCLHelp::GetDAIFromDOIAndName(sdi, "S.a")), QString("D.S.S.a"));
}

void SCLHelp_FcdaResolutionTest::noParentGivesNoInstance()
{
    const TestControl control;
    QVERIFY(SCLHelp::GetDOIFromLNAndName(nullptr, "D") == nullptr);
    QVERIFY(SCLHelp::GetDAIFromDOIAndName(nullptr, "a") == nullptr);
    QCOMPARE(SCLHelp::GetDAIShortAddress(nullptr, "a"), QString(""));
}

void SCLHelp_FcdaResolutionTest::theShortAddressOfAnAttribute_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("address");
    QTest::newRow("DAI") << "a"
                         << "1";
    QTest::newRow("deep DAI") << "S.S.a"
                              << "3";
    QTest::newRow("DAI without sAddr") << "bare"
                                       << "";
    QTest::newRow("missing DAI") << "b"
                                 << "";
    QTest::newRow("SDI") << "S"
                         << "";
    QTest::newRow("no name") << ""
                             << "";
}

void SCLHelp_FcdaResolutionTest::theShortAddressOfAnAttribute()
{
    TestControl control;
    QFETCH(const QString, name);
    SCLElement* doi = Marked(control.OpenRoot(Instances()), "D");
    QTEST(SCLHelp::GetDAIShortAddress(doi, name), "address");
}

void SCLHelp_FcdaResolutionTest::aMissingShortAddressIsEmptyAndNotNull()
{
    TestControl control;
    SCLElement* doi = Marked(control.OpenRoot(Instances()), "D");
    QVERIFY(!SCLHelp::GetDAIShortAddress(doi, "b").isNull());
    QVERIFY(!SCLHelp::GetDAIShortAddress(doi, "bare").isNull());
}

void SCLHelp_FcdaResolutionTest::namesOfAMegabyteAreFoundAndMissed()
{
    const QByteArray name(1 << 20, 'n');
    TestControl control;
    SCLElement* root = control.OpenRoot(Station(
        "<LN lnClass='A'><DataSet><FCDA mark='found' ldInst='L' lnClass='A' doName='" + name +
        "'/><FCDA mark='missed' ldInst='L' lnClass='" + name +
        "' prefix='%2%2%3%3' doName='D'/></DataSet><DOI name='" + name + "' mark='doi'/></LN>"));
    QCOMPARE(MarkOf(SCLHelp::GetDOIFromFCDA(Marked(root, "found"))), QString("doi"));
    QVERIFY(SCLHelp::GetDOFromFCDA(Marked(root, "found")) == nullptr);
    QVERIFY(SCLHelp::GetDOIFromFCDA(Marked(root, "missed")) == nullptr);
    QVERIFY(SCLHelp::GetDOFromFCDA(Marked(root, "missed")) == nullptr);
}

void SCLHelp_FcdaResolutionTest::aPathOfAMillionSegmentsEnds()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(Instances());
    SCLElement* doi = Marked(root, "D");
    for (int depth = 0; depth < 200000; ++depth) {
        doi = doi->CreateChild("SDI", -1, false);
        doi->SetAttribute("name", "x", false);
    }
    doi->CreateChild("DAI", -1, false)->SetAttribute("mark", "deep", false);
    const QString path = QString("x.").repeated(200000);
    QCOMPARE(MarkOf(SCLHelp::GetDAIFromDOIAndName(Marked(root, "D"), path)), QString("deep"));
    QVERIFY(SCLHelp::GetDOIFromLNAndName(Marked(root, "ln"),
                                         "D." + QString("x.").repeated(1000000)) == nullptr);
    QVERIFY(SCLHelp::GetDOIFromLNAndName(Marked(root, "ln"), QString(1000000, '.')) == nullptr);
}

void SCLHelp_FcdaResolutionTest::aPathThroughATypeThatHoldsItselfEnds()
{
    const QByteArray path = QByteArray("x.").repeated(200000) + "x";
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><IED><AccessPoint><Server><LDevice inst='L'><LN lnClass='A' lnType='T'><DataSet>"
        "<FCDA mark='fcda' ldInst='L' lnClass='A' doName='" +
        path +
        "'/></DataSet></LN></LDevice></Server></AccessPoint></IED><DataTypeTemplates>"
        "<LNodeType id='T'><DO name='x' type='D'/></LNodeType>"
        "<DOType id='D'><SDO name='x' type='D' mark='sdo'/></DOType></DataTypeTemplates></SCL>");
    QCOMPARE(MarkOf(SCLHelp::GetDOFromFCDA(Marked(root, "fcda"))), QString("sdo"));
}

QTEST_MAIN(SCLHelp_FcdaResolutionTest)
#include "SCLHelp_FcdaResolutionTest.moc"
