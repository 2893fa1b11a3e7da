// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/TemplateTree.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

#include <QObject>
#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

constexpr int g_depth = 100000;

QString Info(SCLElement* element)
{
    return SCLHelp::GetElementFullInfo(element, false);
}

QString Ref(SCLElement* element)
{
    return SCLHelp::GetElementRefName(element, false);
}

QString Mms(SCLElement* element)
{
    return SCLHelp::GetElementRefName(element, true);
}

QString Label(SCLElement* element)
{
    return SCLHelp::GetElementDisplayName(element);
}

// An element with every attribute that a name could be made of, so that a wrong one shows.
const char* const g_attributes =
    R"( name="n" desc="" inst="i" prefix="p" lnClass="c" lnInst="li" ldInst="ld" doName="do")"
    R"( daName="" iedName="ied" apName="ap" cbName="cb" intAddr="ia" id="ID" type="t")"
    R"( version="ver" revision="rev" multicast="m" lnType="lt" bType="bt" datSet="ds")";

// The element of that tag below a parent of another, all with these attributes.
SCLElement* Below(TestControl& control, const QString& parent, const QString& tag)
{
    const QString text =
        QStringLiteral("<SCL><%1 %3><%2 %4/></%1></SCL>")
            .arg(parent, tag, QStringLiteral("name='P'"), QString::fromLatin1(g_attributes));
    return At(control.OpenRoot(text.toUtf8()), parent + '/' + tag);
}

const QStringList& UnlistedTags()
{
    static const QStringList tags{"SCL",      "Private",           "Header",  "History",
                                  "Text",     "Services",          "Server",  "Communication",
                                  "PhysConn", "DataTypeTemplates", "EnumVal", "Val",
                                  "Function", "SubFunction",       "LNode",   "ied",
                                  "Line",     "ClientLN",          "LN1",     "%1"};
    return tags;
}

const QByteArray g_station =
    R"(<SCL><Header><History><Hitem version="1" revision="A"/></History></Header>)"
    R"(<Substation name="S" desc="main"><PowerTransformer name="T1">)"
    R"(<TransformerWinding name="W1"><Terminal name="t"/></TransformerWinding></PowerTransformer>)"
    R"(<VoltageLevel name="E1"><Bay name="Q1"><ConductingEquipment name="QA1"/>)"
    R"(<ConnectivityNode name="L1"/></Bay></VoltageLevel></Substation>)"
    R"(<Communication><SubNetwork name="N1"><ConnectedAP iedName="I1" apName="S1">)"
    R"(<Address><P type="IP">x</P></Address><GSE ldInst="L1" cbName="cb1"><Address>)"
    R"(<P type="APPID"/></Address></GSE><SMV ldInst="L1" cbName="sv"/></ConnectedAP></SubNetwork>)"
    R"(</Communication>)"
    R"(<IED name="I1"><AccessPoint name="S1"><Server><LDevice inst="L1">)"
    R"(<LN0 lnClass="LLN0" inst=""><DataSet name="D1">)"
    R"(<FCDA ldInst="L1" lnClass="PTOC" lnInst="1" doName="Op" daName="general"/>)"
    R"(<FCDA ldInst="L1" prefix="x" lnClass="PTOC" lnInst="1" doName="Op"/></DataSet>)"
    R"(<GSEControl name="cb1" type="GOOSE"/><SampledValueControl name="sv"/>)"
    R"(<ReportControl name="rp"/><LogControl name="lg"/><SettingControl/>)"
    R"(<Inputs><ExtRef iedName="I2" ldInst="M1" prefix="a" lnClass="MMXU" lnInst="2" doName="A")"
    R"( daName="mag.f" intAddr="P1:x"/></Inputs></LN0>)"
    R"(<LN prefix="q" lnClass="XCBR" inst="3" desc="breaker"><DOI name="Pos"><SDI name="s">)"
    R"(<DAI name="v"/></SDI></DOI></LN></LDevice></Server></AccessPoint></IED></SCL>)";

} // namespace

class SCLHelp_NamingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nullHasNoName();
    void fullInfoGoesByTheTag_data();
    void fullInfoGoesByTheTag();
    void fullInfoWithoutParentKeepsTheComma_data();
    void fullInfoWithoutParentKeepsTheComma();
    void fullInfoOfAWholeStation_data();
    void fullInfoOfAWholeStation();
    void fullInfoOfATagWithoutRowIsEmpty();
    void fullInfoOfAnLDeviceBeginsAtItsNearestAccessPoint();
    void fullInfoAddsDaNameOnlyIfThereIsOne();
    void theTagStandsOnceAndInFront();
    void missingAttributesReadAsEmptyInFullInfo();

    void refNameGoesByTheTag_data();
    void refNameGoesByTheTag();
    void refNameOfAWholeStation_data();
    void refNameOfAWholeStation();
    void refNameOfANodeNeedsAnIEDAboveItsParent();
    void refNameOfANodeTakesLnInst();
    void theKindOfAControlBlockGoesByItsAttribute_data();
    void theKindOfAControlBlockGoesByItsAttribute();
    void mmsFormReachesNoFurtherThanTheControlBlock();
    void refNameOfATagWithoutRowIsEmpty();

    void displayNameGoesByTheTag_data();
    void displayNameGoesByTheTag();
    void displayNameOfATagWithoutRowIsEmpty();
    void displayNameGoesOnWithDesc();
    void displayNameReadsInstAndRefNameLnInst();

    void aMarkerInAValueTakesPartInTheReplacements();
    void markersOfAllAttributesAreReplacedAsByChainsOfArg();
    void valuesMayHoldAnyCharacters();
    void deepNestingIsNamed_data();
    void deepNestingIsNamed();
    void deepNestingOfMarkersEndsSoon_data();
    void deepNestingOfMarkersEndsSoon();
    void nothingIsChanged();
};

void SCLHelp_NamingTest::nullHasNoName()
{
    for (bool flag : {false, true}) {
        QVERIFY(SCLHelp::GetElementFullInfo(nullptr, flag).isEmpty());
        QVERIFY(SCLHelp::GetElementRefName(nullptr, flag).isEmpty());
    }
    QVERIFY(Label(nullptr).isEmpty());
}

void SCLHelp_NamingTest::fullInfoGoesByTheTag_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char* tag, const char* text) {
        QTest::newRow(tag) << QString::fromLatin1(text);
    };
    // All stand below an IED named P.
    row("IED", "IED name = n");
    row("SubNetwork", "SubNetwork name = n");
    row("Substation", "Substation name = n");
    row("ConnectedAP", "IED name = P, ConnectedAP iedName = ied, ConnectedAP apName = ap");
    row("Hitem", "Hitem version = ver, Hitem revision = rev");
    row("AccessPoint", "IED name = P, AccessPoint name = n");
    row("LDevice", ", LDevice inst = i");
    row("LN0", "IED name = P, LN = pci");
    row("LN", "IED name = P, LN = pci");
    row("DOI", "IED name = P, DOI name = n");
    row("SDI", "IED name = P, SDI name = n");
    row("DAI", "IED name = P, DAI name = n");
    row("DataSet", "IED name = P, DataSet name = n");
    row("FCDA", "IED name = P, FCDA = ld/pcli.do");
    row("Inputs", "IED name = P");
    row("ExtRef", "IED name = P, ExtRef external = iedld/pcli.do, ExtRef intAddr = ia");
    row("GSEControl", "IED name = P, GSEControl name = n");
    row("SampledValueControl", "IED name = P, SampledValueControl name = n");
    row("ReportControl", "IED name = P, ReportControl name = n");
    row("LogControl", "IED name = P, LogControl name = n");
    row("SettingControl", "IED name = P");
    row("Address", "IED name = P");
    row("GSE", "IED name = P, GSE ldInst = ld, GSE cbName = cb");
    row("SMV", "IED name = P, SMV ldInst = ld, SMV cbName = cb");
    row("P", "IED name = P, P type = t");
    row("LNodeType", "LNodeType id = ID");
    row("DOType", "DOType id = ID");
    row("DAType", "DAType id = ID");
    row("EnumType", "EnumType id = ID");
    for (const char* tag : {"DO", "SDO", "DA", "BDA", "VoltageLevel", "Bay", "Terminal",
                            "PowerTransformer", "TransformerWinding", "ConductingEquipment"})
        row(tag, "");
}

void SCLHelp_NamingTest::fullInfoGoesByTheTag()
{
    QFETCH(QString, text);
    const QString tag = QTest::currentDataTag();
    TestControl control;
    SCLElement* element = Below(control, "IED", tag);

    QCOMPARE(Info(element), text);
    QCOMPARE(SCLHelp::GetElementFullInfo(element, true),
             text.isEmpty() ? text : tag + " (" + text + ')');
}

void SCLHelp_NamingTest::fullInfoWithoutParentKeepsTheComma_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char* tag, const char* text) {
        QTest::newRow(tag) << QString::fromLatin1(text);
    };
    row("IED", "IED name = n");
    row("ConnectedAP", ", ConnectedAP iedName = , ConnectedAP apName = ");
    row("Hitem", "Hitem version = , Hitem revision = ");
    row("AccessPoint", ", AccessPoint name = n");
    row("LDevice", ", LDevice inst = ");
    row("LN0", ", LN = ");
    row("LN", ", LN = ");
    row("DOI", ", DOI name = n");
    row("DataSet", ", DataSet name = n");
    row("FCDA", ", FCDA = /.");
    row("Inputs", "");
    row("ExtRef", ", ExtRef external = /., ExtRef intAddr = ");
    row("GSEControl", ", GSEControl name = n");
    row("SettingControl", "");
    row("Address", "");
    row("GSE", ", GSE ldInst = , GSE cbName = ");
    row("P", ", P type = ");
    row("DOType", "DOType id = ");
}

void SCLHelp_NamingTest::fullInfoWithoutParentKeepsTheComma()
{
    QFETCH(QString, text);
    const QString tag = QTest::currentDataTag();
    TestControl control;
    SCLElement orphan(tag, nullptr, nullptr);
    orphan.SetAttribute("name", "n", false);
    QCOMPARE(Info(&orphan), text);
    QCOMPARE(SCLHelp::GetElementFullInfo(&orphan, true),
             text.isEmpty() ? text : tag + " (" + text + ')');

    // The same below an element without a row.
    SCLElement unlisted("Server", nullptr, nullptr);
    QCOMPARE(Info(AddChild(&unlisted, tag, {"name", "n"})), text);
}

void SCLHelp_NamingTest::fullInfoOfAWholeStation_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char* path, const char* text) {
        QTest::newRow(path) << QString::fromLatin1(text);
    };
    row("Header/History/Hitem", "Hitem version = 1, Hitem revision = A");
    row("Communication/SubNetwork/ConnectedAP",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1");
    row("Communication/SubNetwork/ConnectedAP/GSE",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1, "
        "GSE ldInst = L1, GSE cbName = cb1");
    row("Communication/SubNetwork/ConnectedAP/SMV",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1, "
        "SMV ldInst = L1, SMV cbName = sv");
    row("Communication/SubNetwork/ConnectedAP/Address",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1");
    row("Communication/SubNetwork/ConnectedAP/Address/P",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1, P type = IP");
    row("Communication/SubNetwork/ConnectedAP/GSE/Address/P",
        "SubNetwork name = N1, ConnectedAP iedName = I1, ConnectedAP apName = S1, "
        "GSE ldInst = L1, GSE cbName = cb1, P type = APPID");
    row("IED/AccessPoint/Server", "");
    row("IED/AccessPoint/Server/LDevice",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1");
    row("IED/AccessPoint/Server/LDevice/LN0",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0");
    row("IED/AccessPoint/Server/LDevice/LN0/DataSet/FCDA",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0, DataSet name = D1, "
        "FCDA = L1/PTOC1.Op.general");
    row("IED/AccessPoint/Server/LDevice/LN0/DataSet/FCDA[1]",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0, DataSet name = D1, "
        "FCDA = L1/xPTOC1.Op");
    row("IED/AccessPoint/Server/LDevice/LN0/GSEControl",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0, "
        "GSEControl name = cb1");
    row("IED/AccessPoint/Server/LDevice/LN0/SettingControl",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0");
    row("IED/AccessPoint/Server/LDevice/LN0/Inputs",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0");
    row("IED/AccessPoint/Server/LDevice/LN0/Inputs/ExtRef",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = LLN0, "
        "ExtRef external = I2M1/aMMXU2.A.mag.f, ExtRef intAddr = P1:x");
    row("IED/AccessPoint/Server/LDevice/LN/DOI/SDI/DAI",
        "IED name = I1, AccessPoint name = S1, LDevice inst = L1, LN = qXCBR3, DOI name = Pos, "
        "SDI name = s, DAI name = v");
}

void SCLHelp_NamingTest::fullInfoOfAWholeStation()
{
    QFETCH(QString, text);
    TestControl control;
    SCLElement* root = control.OpenRoot(g_station);
    SCLElement* element = At(root, QTest::currentDataTag());
    QVERIFY(element != nullptr);
    QCOMPARE(Info(element), text);
}

void SCLHelp_NamingTest::fullInfoOfATagWithoutRowIsEmpty()
{
    TestControl control;
    SCLElement ied("IED", nullptr, nullptr);
    for (const QString& tag : UnlistedTags()) {
        SCLElement* element = AddChild(&ied, tag, {"name", "n", "id", "x", "desc", "d"});
        QVERIFY(Info(element).isEmpty());
        QVERIFY(SCLHelp::GetElementFullInfo(element, true).isEmpty());
    }
}

void SCLHelp_NamingTest::fullInfoOfAnLDeviceBeginsAtItsNearestAccessPoint()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><IED name="I"><AccessPoint name="far"><AccessPoint name="near"><Server><Any>)"
        R"(<LDevice inst="L"/></Any></Server></AccessPoint></AccessPoint><LDevice inst="M"/></IED>)"
        R"(</SCL>)");

    QCOMPARE(Info(At(root, "IED/AccessPoint/AccessPoint/Server/Any/LDevice")),
             QString("IED name = I, AccessPoint name = far, AccessPoint name = near, "
                     "LDevice inst = L"));
    QCOMPARE(Info(At(root, "IED/LDevice")), QString(", LDevice inst = M"));
}

void SCLHelp_NamingTest::fullInfoAddsDaNameOnlyIfThereIsOne()
{
    TestControl control;
    SCLElement fcda("FCDA", nullptr, nullptr);
    SCLElement extRef("ExtRef", nullptr, nullptr);
    for (SCLElement* element : {&fcda, &extRef})
        element->SetAttribute("daName", "", false);
    QCOMPARE(Info(&fcda), QString(", FCDA = /."));
    QCOMPARE(Info(&extRef), QString(", ExtRef external = /., ExtRef intAddr = "));
    for (SCLElement* element : {&fcda, &extRef})
        element->SetAttribute("daName", "q", false);
    QCOMPARE(Info(&fcda), QString(", FCDA = /..q"));
    QCOMPARE(Info(&extRef), QString(", ExtRef external = /..q, ExtRef intAddr = "));
}

void SCLHelp_NamingTest::theTagStandsOnceAndInFront()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(g_station);

    QCOMPARE(SCLHelp::GetElementFullInfo(At(root, "Header/History/Hitem"), true),
             QString("Hitem (Hitem version = 1, Hitem revision = A)"));
    QCOMPARE(SCLHelp::GetElementFullInfo(At(root, "IED/AccessPoint/Server/LDevice/LN/DOI"), true),
             QString("DOI (IED name = I1, AccessPoint name = S1, LDevice inst = L1, "
                     "LN = qXCBR3, DOI name = Pos)"));
    QCOMPARE(
        SCLHelp::GetElementFullInfo(At(root, "IED/AccessPoint/Server/LDevice/LN0/Inputs"), true),
        QString("Inputs (IED name = I1, AccessPoint name = S1, LDevice inst = L1, "
                "LN = LLN0)"));
}

void SCLHelp_NamingTest::missingAttributesReadAsEmptyInFullInfo()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><AccessPoint><Server><LDevice><LN/></LDevice>"
                                        "</Server></AccessPoint></IED></SCL>");
    QCOMPARE(Info(At(root, "IED/AccessPoint/Server/LDevice/LN")),
             QString("IED name = , AccessPoint name = , LDevice inst = , LN = "));
}

void SCLHelp_NamingTest::refNameGoesByTheTag_data()
{
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("mms");
    const auto row = [](const char* tag, const char* plain, const char* mms) {
        QTest::newRow(tag) << QString::fromLatin1(plain) << QString::fromLatin1(mms);
    };
    // All stand below a Substation named P.
    row("GSEControl", "P.n", "P$GO$n");
    row("SampledValueControl", "P.n", "P$MS$n");
    row("Substation", "n", "n");
    row("PowerTransformer", "P///n", "P///n");
    for (const char* tag : {"VoltageLevel", "Bay", "TransformerWinding", "ConductingEquipment",
                            "ConnectivityNode", "Terminal"})
        row(tag, "P/n", "P/n");
    for (const char* tag :
         {"LN0", "LN", "IED", "ReportControl", "LogControl", "SettingControl", "DataSet", "GSE",
          "LDevice", "DOI", "DOType", "SubNetwork", "AccessPoint", "FCDA", "ExtRef"})
        row(tag, "", "");
}

void SCLHelp_NamingTest::refNameGoesByTheTag()
{
    QFETCH(QString, plain);
    QFETCH(QString, mms);
    TestControl control;
    SCLElement* element = Below(control, "Substation", QTest::currentDataTag());
    QCOMPARE(Ref(element), plain);
    QCOMPARE(Mms(element), mms);

    SCLElement orphan(element->GetTag(), nullptr, nullptr);
    orphan.SetAttribute("name", "n", false);
    const QString withoutParent = plain.startsWith('P') ? plain.mid(1) : plain;
    QCOMPARE(Ref(&orphan), withoutParent);
    QCOMPARE(Mms(&orphan), mms.startsWith('P') ? mms.mid(1) : mms);
    SCLElement unlisted("Private", nullptr, nullptr);
    unlisted.SetAttribute("name", "u", false);
    QCOMPARE(Ref(AddChild(&unlisted, element->GetTag(), {"name", "n"})), withoutParent);
}

void SCLHelp_NamingTest::refNameOfAWholeStation_data()
{
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("mms");
    const auto row = [](const char* path, const char* plain, const char* mms) {
        QTest::newRow(path) << QString::fromLatin1(plain) << QString::fromLatin1(mms);
    };
    row("Substation", "S", "S");
    row("Substation/PowerTransformer", "S///T1", "S///T1");
    row("Substation/PowerTransformer/TransformerWinding", "S///T1/W1", "S///T1/W1");
    row("Substation/PowerTransformer/TransformerWinding/Terminal", "S///T1/W1/t", "S///T1/W1/t");
    row("Substation/VoltageLevel/Bay/ConductingEquipment", "S/E1/Q1/QA1", "S/E1/Q1/QA1");
    row("Substation/VoltageLevel/Bay/ConnectivityNode", "S/E1/Q1/L1", "S/E1/Q1/L1");
    row("IED/AccessPoint/Server/LDevice/LN0", "I1L1/LLN0", "I1L1/LLN0");
    row("IED/AccessPoint/Server/LDevice/LN", "I1L1/qXCBR", "I1L1/qXCBR");
    row("IED/AccessPoint/Server/LDevice/LN0/GSEControl", "I1L1/LLN0.cb1", "I1L1/LLN0$GO$cb1");
    row("IED/AccessPoint/Server/LDevice/LN0/SampledValueControl", "I1L1/LLN0.sv",
        "I1L1/LLN0$MS$sv");
    row("IED/AccessPoint/Server/LDevice/LN0/ReportControl", "", "");
    row("IED/AccessPoint/Server/LDevice", "", "");
}

void SCLHelp_NamingTest::refNameOfAWholeStation()
{
    QFETCH(QString, plain);
    QFETCH(QString, mms);
    TestControl control;
    SCLElement* element = At(control.OpenRoot(g_station), QTest::currentDataTag());
    QVERIFY(element != nullptr);
    QCOMPARE(Ref(element), plain);
    QCOMPARE(Mms(element), mms);
}

void SCLHelp_NamingTest::refNameOfANodeNeedsAnIEDAboveItsParent()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><IED name="far"><IED name="near" inst="x"><LN lnClass="A"/><Any inst="D">)"
        R"(<LN lnClass="B"/></Any></IED></IED><LDevice><LN0 lnClass="C"><GSEControl name="g"/>)"
        R"(</LN0></LDevice></SCL>)");

    // The parent may be any element, and is not itself looked at as the IED.
    QCOMPARE(Ref(At(root, "IED/IED/LN")), QString("farx/A"));
    QCOMPARE(Ref(At(root, "IED/IED/Any/LN")), QString("nearD/B"));
    QCOMPARE(Ref(At(root, "LDevice/LN0")), QString());
    QCOMPARE(Ref(At(root, "LDevice/LN0/GSEControl")), QString(".g"));
    QCOMPARE(Mms(At(root, "LDevice/LN0/GSEControl")), QString("$GO$g"));
    SCLElement orphan("LN0", nullptr, nullptr);
    QCOMPARE(Ref(&orphan), QString());
}

void SCLHelp_NamingTest::refNameOfANodeTakesLnInst()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><IED name="I"><LDevice inst="D"><LN prefix="p" lnClass="c" inst="1" lnInst="2"/>)"
        R"(<LN0 prefix="p" lnClass="c" inst="1"/></LDevice></IED></SCL>)");

    for (const auto& name : {&Ref, &Mms}) {
        QCOMPARE(name(At(root, "IED/LDevice/LN")), QString("ID/pc2"));
        QCOMPARE(name(At(root, "IED/LDevice/LN0")), QString("ID/pc"));
    }
}

void SCLHelp_NamingTest::theKindOfAControlBlockGoesByItsAttribute_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("kind");
    for (const char* value : {"GOOSE", "", "gsse", "GSSE ", "GS", "false"})
        QTest::newRow(QByteArray("type '") + value + "'") << "GSEControl"
                                                          << "type" << value << "GO";
    QTest::newRow("type GSSE") << "GSEControl"
                               << "type"
                               << "GSSE"
                               << "GS";
    QTest::newRow("multicast of GSEControl") << "GSEControl"
                                             << "multicast"
                                             << "false"
                                             << "GO";
    for (const char* value : {"true", "", "False", "0", "FALSE", " false", "GSSE"})
        QTest::newRow(QByteArray("multicast '") + value + "'") << "SampledValueControl"
                                                               << "multicast" << value << "MS";
    QTest::newRow("multicast false") << "SampledValueControl"
                                     << "multicast"
                                     << "false"
                                     << "US";
    QTest::newRow("type of SampledValueControl") << "SampledValueControl"
                                                 << "type"
                                                 << "GSSE"
                                                 << "MS";
}

void SCLHelp_NamingTest::theKindOfAControlBlockGoesByItsAttribute()
{
    QFETCH(QString, tag);
    QFETCH(QString, attribute);
    QFETCH(QString, value);
    QFETCH(QString, kind);
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><IED name="I"><LDevice inst="D"><LN0 lnClass="L"/></LDevice></IED></SCL>)");
    SCLElement* block =
        AddChild(At(root, "IED/LDevice/LN0"), tag, {"name", "cb", attribute, value});

    QCOMPARE(Ref(block), QString("ID/L.cb"));
    QCOMPARE(Mms(block), "ID/L$" + kind + "$cb");
}

void SCLHelp_NamingTest::mmsFormReachesNoFurtherThanTheControlBlock()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><Substation name="S"><GSEControl name="a"><GSEControl name="b"><Bay name="c"/>)"
        R"(</GSEControl></GSEControl></Substation></SCL>)");

    QCOMPARE(Mms(At(root, "Substation/GSEControl/GSEControl")), QString("S.a$GO$b"));
    QCOMPARE(Mms(At(root, "Substation/GSEControl/GSEControl/Bay")), QString("S.a.b/c"));
}

void SCLHelp_NamingTest::refNameOfATagWithoutRowIsEmpty()
{
    TestControl control;
    SCLElement substation("Substation", nullptr, nullptr);
    for (const QString& tag : UnlistedTags()) {
        SCLElement* element = AddChild(&substation, tag, {"name", "n"});
        QVERIFY(Ref(element).isEmpty());
        QVERIFY(Mms(element).isEmpty());
        // The chain breaks there and keeps its separator.
        QCOMPARE(Ref(AddChild(element, "Bay", {"name", "b"})), QString("/b"));
    }
}

void SCLHelp_NamingTest::displayNameGoesByTheTag_data()
{
    QTest::addColumn<QString>("label");
    for (const char* tag : {"Substation", "SubNetwork", "IED", "AccessPoint", "DOI", "SDI", "DAI",
                            "DO", "SDO", "DA", "BDA"})
        QTest::newRow(tag) << "n";
    QTest::newRow("LDevice") << "i";
    QTest::newRow("LN0") << "pci";
    QTest::newRow("LN") << "pci";
    for (const char* tag : {"LNodeType", "DOType", "DAType", "EnumType"})
        QTest::newRow(tag) << "ID";
    for (const char* tag : {"DataSet",
                            "FCDA",
                            "GSEControl",
                            "SampledValueControl",
                            "ReportControl",
                            "LogControl",
                            "SettingControl",
                            "Inputs",
                            "ExtRef",
                            "ConnectedAP",
                            "GSE",
                            "SMV",
                            "Address",
                            "P",
                            "Hitem",
                            "VoltageLevel",
                            "Bay",
                            "PowerTransformer",
                            "TransformerWinding",
                            "ConductingEquipment",
                            "ConnectivityNode",
                            "Terminal"})
        QTest::newRow(tag) << "";
}

void SCLHelp_NamingTest::displayNameGoesByTheTag()
{
    QFETCH(QString, label);
    TestControl control;
    SCLElement* element = Below(control, "IED", QTest::currentDataTag());

    QCOMPARE(Label(element), label);
    element->SetAttribute("desc", "about", false);
    QCOMPARE(Label(element), label.isEmpty() ? label : label + ":about");
    for (const char* attribute : {"name", "inst", "prefix", "lnClass", "id"})
        element->RemoveAttribute(attribute, false);
    QCOMPARE(Label(element), QString());
}

void SCLHelp_NamingTest::displayNameOfATagWithoutRowIsEmpty()
{
    TestControl control;
    for (const QString& tag : UnlistedTags()) {
        SCLElement element(tag, nullptr, nullptr);
        for (const char* attribute : {"name", "inst", "lnClass", "id", "desc"})
            element.SetAttribute(attribute, "x", false);
        QVERIFY(Label(&element).isEmpty());
    }
}

void SCLHelp_NamingTest::displayNameGoesOnWithDesc()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(g_station);
    QCOMPARE(Label(At(root, "Substation")), QString("S:main"));
    QCOMPARE(Label(At(root, "IED/AccessPoint/Server/LDevice/LN")), QString("qXCBR3:breaker"));
    QCOMPARE(Label(At(root, "IED/AccessPoint/Server/LDevice/LN0")), QString("LLN0"));
}

void SCLHelp_NamingTest::displayNameReadsInstAndRefNameLnInst()
{
    TestControl control;
    SCLElement* ln = At(control.OpenRoot(g_station), "IED/AccessPoint/Server/LDevice/LN");
    ln->RemoveAttribute("desc", false);
    QCOMPARE(Label(ln), QString("qXCBR3"));
    QCOMPARE(Ref(ln), QString("I1L1/qXCBR"));
}

void SCLHelp_NamingTest::aMarkerInAValueTakesPartInTheReplacements()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        R"(<SCL><IED name="%2"><AccessPoint name="S"/></IED><Substation name="%1" desc="d"/>)"
        R"(<LN prefix="%2" lnClass="C" inst="1"/><LN prefix="%" lnClass="3" inst="x"/>)"
        R"(<Hitem version="%2" revision="r"/></SCL>)");

    QCOMPARE(Info(At(root, "IED/AccessPoint")), QString("IED name = S, AccessPoint name = S"));
    QCOMPARE(Info(At(root, "Hitem")), QString("Hitem version = r, Hitem revision = r"));
    QCOMPARE(Label(At(root, "Substation")), QString("d:%2"));
    QCOMPARE(Label(At(root, "LN[0]")), QString("CC1"));
    // The sign and the digit make a marker together.
    QCOMPARE(Label(At(root, "LN[1]")), QString("xx"));
    // Without a value behind it a marker stands.
    QCOMPARE(Info(At(root, "IED")), QString("IED name = %2"));
    QCOMPARE(SCLHelp::GetElementFullInfo(At(root, "IED"), true), QString("IED (IED name = %2)"));
}

void SCLHelp_NamingTest::markersOfAllAttributesAreReplacedAsByChainsOfArg()
{
    const QStringList values{"%1", "%2", "%3", "%4", "%6", "%", "3", "%L2", "%%2", "x", ""};
    std::mt19937 engine(5);
    const auto value = [&] { return values.at(static_cast<int>(engine() % 11U)); };
    TestControl control;
    SCLElement root("SCL", nullptr, nullptr);
    for (int round = 0; round < 2000; ++round) {
        const QString ied = value();
        const QString ldInst = value();
        const QString prefix = value();
        const QString lnClass = value();
        const QString lnInst = value();
        const QString doName = value();
        const QString daName = value();
        const QString intAddr = value();
        const QStringList attributes{"iedName", ied,     "ldInst",  ldInst,  "prefix", prefix,
                                     "lnClass", lnClass, "lnInst",  lnInst,  "doName", doName,
                                     "daName",  daName,  "intAddr", intAddr, "name",   ied,
                                     "inst",    ldInst,  "cbName",  doName,  "desc",   intAddr};
        SCLElement* iedElement = AddChild(&root, "IED", attributes);
        const QString base = QString("%1 name = %2").arg("IED").arg(ied);

        QString fcda = QString("%1, FCDA = %2/%3%4%5.%6")
                           .arg(base)
                           .arg(ldInst)
                           .arg(prefix)
                           .arg(lnClass)
                           .arg(lnInst)
                           .arg(doName);
        QString external = QString("%1%2/%3%4%5.%6")
                               .arg(ied)
                               .arg(ldInst)
                               .arg(prefix)
                               .arg(lnClass)
                               .arg(lnInst)
                               .arg(doName);
        if (!daName.isEmpty()) {
            fcda = QString("%1.%2").arg(fcda).arg(daName);
            external = QString("%1.%2").arg(external).arg(daName);
        }
        QCOMPARE(Info(AddChild(iedElement, "FCDA", attributes)), fcda);
        QCOMPARE(SCLHelp::GetElementFullInfo(AddChild(iedElement, "FCDA", attributes), true),
                 QString("%1 (%2)").arg("FCDA").arg(fcda));
        QCOMPARE(Info(AddChild(iedElement, "ExtRef", attributes)),
                 QString("%1, ExtRef external = %2, ExtRef intAddr = %3")
                     .arg(base)
                     .arg(external)
                     .arg(intAddr));
        QCOMPARE(Info(AddChild(iedElement, "GSE", attributes)),
                 QString("%1, %2 ldInst = %3, %4 cbName = %5")
                     .arg(base)
                     .arg("GSE")
                     .arg(ldInst)
                     .arg("GSE")
                     .arg(doName));

        SCLElement* ln = AddChild(AddChild(iedElement, "LDevice", attributes), "LN", attributes);
        const QString node =
            QString("%1%2/%3%4%5").arg(ied).arg(ldInst).arg(prefix).arg(lnClass).arg(lnInst);
        QCOMPARE(Ref(ln), node);
        SCLElement* block = AddChild(ln, "GSEControl", attributes);
        QCOMPARE(Ref(block), QString("%1.%2").arg(node).arg(ied));
        QCOMPARE(Mms(block), QString("%1$%2$%3").arg(node).arg("GO").arg(ied));
        QString label = QString("%1%2%3").arg(prefix).arg(lnClass).arg(ldInst);
        if (!label.isEmpty() && !intAddr.isEmpty())
            label = QString("%1:%2").arg(label).arg(intAddr);
        QCOMPARE(Label(ln), label);
        root.RemoveChild(iedElement, false);
    }
}

void SCLHelp_NamingTest::valuesMayHoldAnyCharacters()
{
    TestControl control;
    for (const QString& value :
         {QString(QChar(1)), QString(QChar(0)), QString("a\nb"), QString(1000000, 'x'),
          QString::fromUtf8("\xc3\xa9\xf0\x9d\x84\x9e"), QString(1000000, '%'),
          QString("100 % sure")}) {
        SCLElement ied("IED", nullptr, nullptr);
        ied.SetAttribute("name", value, false);
        SCLElement* accessPoint = AddChild(&ied, "AccessPoint", {"name", value, "desc", value});
        QCOMPARE(Info(accessPoint), "IED name = " + value + ", AccessPoint name = " + value);
        QCOMPARE(Label(accessPoint), value + ':' + value);
        SCLElement substation("Substation", nullptr, nullptr);
        substation.SetAttribute("name", value, false);
        QCOMPARE(Ref(AddChild(&substation, "Bay", {"name", value})), value + '/' + value);
    }
}

void SCLHelp_NamingTest::deepNestingIsNamed_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("info");
    QTest::addColumn<QString>("ref");
    QTest::newRow("SDI") << "SDI"
                         << ", SDI name = n"
                         << "";
    QTest::newRow("LN") << "LN"
                        << ", LN = "
                        << "";
    QTest::newRow("AccessPoint") << "AccessPoint"
                                 << ", AccessPoint name = n"
                                 << "";
    QTest::newRow("LDevice") << "LDevice"
                             << ""
                             << "";
    QTest::newRow("Inputs") << "Inputs"
                            << ""
                            << "";
    QTest::newRow("Bay") << "Bay"
                         << ""
                         << "/n";
    QTest::newRow("GSEControl") << "GSEControl"
                                << ", GSEControl name = n"
                                << ".n";
    QTest::newRow("Private") << "Private"
                             << ""
                             << "";
}

void SCLHelp_NamingTest::deepNestingIsNamed()
{
    QFETCH(QString, tag);
    QFETCH(QString, info);
    QFETCH(QString, ref);
    TestControl control;
    SCLElement root("SCL", nullptr, nullptr);
    SCLElement* lowest = &root;
    for (int i = 0; i < g_depth; ++i)
        lowest = AddChild(lowest, tag, {"name", "n"});

    const QString expected =
        tag == "LDevice" ? QString(", LDevice inst = ") : info.repeated(g_depth);
    QVERIFY(Info(lowest) == expected);
    QVERIFY(Ref(lowest) == ref.repeated(g_depth));
    const QString mms =
        tag == "GSEControl" ? ref.repeated(g_depth - 1) + "$GO$n" : ref.repeated(g_depth);
    QVERIFY(Mms(lowest) == mms);
}

void SCLHelp_NamingTest::deepNestingOfMarkersEndsSoon_data()
{
    QTest::addColumn<QString>("top");
    QTest::addColumn<QString>("each");
    QTest::newRow("above all, never reached") << "%9"
                                              << "n";
    QTest::newRow("above all, left over each time") << "%1"
                                                    << "n";
    QTest::newRow("at each level, one") << "n"
                                        << "%2";
    QTest::newRow("at each level, several") << "%1%2%3"
                                            << "%1%2%3";
    QTest::newRow("at each level, doubling") << "%2"
                                             << "%2%2";
    QTest::newRow("at each level, many") << "%2" << QString("%2%3").repeated(100);
    QTest::newRow("only signs") << "%"
                                << "%";
}

void SCLHelp_NamingTest::deepNestingOfMarkersEndsSoon()
{
    QFETCH(QString, top);
    QFETCH(QString, each);
    TestControl control;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("name", top, false);
    SCLElement substation("Substation", nullptr, nullptr);
    substation.SetAttribute("name", top, false);
    SCLElement* sdi = &ied;
    SCLElement* bay = &substation;
    for (int i = 0; i < g_depth; ++i) {
        sdi = AddChild(sdi, "SDI", {"name", each});
        bay = AddChild(bay, "Bay", {"name", each});
    }

    for (const QString& text : {SCLHelp::GetElementFullInfo(sdi, true), Ref(bay)}) {
        QVERIFY(text.size() >= g_depth);
        QVERIFY(text.size() < 64LL * 1024 * 1024);
    }
}

void SCLHelp_NamingTest::nothingIsChanged()
{
    TestControl control;
    SCLDocument* document = control.Open(g_station);
    const QString before = ElementText(document->Root());
    QList<SCLElement*> all{document->Root()};
    for (int i = 0; i < all.size(); ++i) {
        SCLHelp::GetElementFullInfo(all.at(i), true);
        Ref(all.at(i));
        Mms(all.at(i));
        Label(all.at(i));
        all += all.at(i)->GetChildList();
    }
    QVERIFY(all.size() > 30);
    QVERIFY(!document->GetModified());
    QCOMPARE(ElementText(document->Root()), before);
}

QTEST_MAIN(SCLHelp_NamingTest)
#include "SCLHelp_NamingTest.moc"
