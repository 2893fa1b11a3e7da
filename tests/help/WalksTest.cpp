// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SubscriptionText.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/help/SCLHelp.h>
#include <corvane/help/Walks.h>

#include <QTest>

#include <vector>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// A logical node with two Inputs, a data set, a control block that refers to it, an instance and a
// type of its own. All data sets have one name, and all members are the same data.
QByteArray Node(const QByteArray& tag, const QByteArray& mark)
{
    QByteArray text =
        "<TAG mark='X' lnClass='TAG' lnType='type of X'>"
        "<Inputs mark='inputs of X'><ExtRef mark='in X' iedName='I' ldInst='L' lnClass='LN' "
        "doName='D'/></Inputs><Inputs><ExtRef mark='in the second Inputs of X' iedName='I' "
        "ldInst='L' lnClass='LN' doName='D'/></Inputs>"
        "<DataSet mark='set of X' name='s'><FCDA mark='member in X' ldInst='L' lnClass='LN' "
        "doName='D'/></DataSet><GSEControl mark='block of X' name='X' datSet='s'/>"
        "<DOI name='D' mark='instance in X'/></TAG>";
    return text.replace("TAG", tag).replace("X", mark);
}

QByteArray LDevice(const QByteArray& mark, const QByteArray& inst, const QByteArray& nodes)
{
    return "<LDevice mark='" + mark + "' inst='" + inst + "'>" + nodes + "</LDevice>";
}

// Nodes that have names of their own as well: the letter of the LDevice, 0 for an LN0.
const QList<QByteArray>& Nodes()
{
    static const QList<QByteArray> nodes = {"a1", "a2",  "a0", "a00", "b0", "b00",
                                            "c1", "zz0", "d0", "d1",  "e0"};
    return nodes;
}

// One of each that functions differ about. In an LDevice the LN0s stand behind the LNs.
QByteArray AwkwardStation()
{
    QByteArray entries;
    QByteArray types;
    for (const QByteArray& node : Nodes()) {
        entries += "<GSE mark='entry of " + node + "' ldInst='L' cbName='" + node + "'/>";
        types += "<LNodeType mark='type of " + node + "' id='type of " + node +
                 "'><DO name='D' mark='declaration in " + node + "'/></LNodeType>";
    }
    return "<SCL><Communication><SubNetwork><ConnectedAP mark='1st AP' iedName='I' apName='A'>" +
           entries +
           "</ConnectedAP><ConnectedAP mark='2nd AP' iedName='I' apName='C'/></SubNetwork>"
           "<SubNetwork><ConnectedAP mark='3rd AP' iedName='I' apName='A'>" +
           QByteArray(entries).replace("entry", "second entry") +
           "</ConnectedAP></SubNetwork></Communication>"
           "<Communication><SubNetwork><ConnectedAP mark='4th AP'/></SubNetwork></Communication>"
           "<IED mark='1st I' name='I'><AccessPoint name='bare'/>"
           "<AccessPoint mark='A' name='A'><Server>" +
           LDevice("a", "L",
                   Node("LN", "a1") + Node("LN", "a2") + Node("LN0", "a0") + Node("LN0", "a00")) +
           LDevice("b", "L", Node("LN0", "b0") + Node("LN0", "b00")) +
           LDevice("c", "L", Node("LN", "c1")) + "</Server><Server>" +
           LDevice("zz", "L", Node("LN0", "zz0")) +
           "</Server></AccessPoint><AccessPoint name='B'><Server>" +
           LDevice("d", "L", Node("LN0", "d0") + Node("LN", "d1")) +
           "</Server></AccessPoint></IED><IED mark='2nd I' name='I'><AccessPoint mark='C' name='C'>"
           "<Server>" +
           LDevice("e", "L", Node("LN0", "e0")) +
           "</Server></AccessPoint></IED><DataTypeTemplates mark='1st templates'>" + types +
           "</DataTypeTemplates><DataTypeTemplates mark='2nd templates'/></SCL>";
}

// What a function gives for the elements "<prefix><node>" of all nodes: "a1=... a2=...".
template <typename Function>
QString ForEachNode(SCLElement* root, const QString& prefix, Function function)
{
    QStringList results;
    for (const QByteArray& node : Nodes())
        results.append(node + "=" + MarkOf(function(Marked(root, prefix + node))));
    return results.join("; ");
}

QString ExtRefsIn(const QList<SCLHelp::Input_CB>& records)
{
    QStringList marks;
    for (const SCLHelp::Input_CB& record : records)
        marks.append(MarksOf(record.extRefs));
    return marks.join(" | ");
}

// The marks of the elements that a signal tells of while a function runs.
template <typename Signal, typename Function>
QString MarksSignalled(SCLElement* root, Signal signal, Function function)
{
    QStringList marks;
    SCLDocument* document = root->GetDocument();
    const auto connection = QObject::connect(
        document, signal, document, [&marks](SCLElement* element) { marks += MarkOf(element); });
    function();
    QObject::disconnect(connection);
    return marks.join(" ");
}

struct Row {
    const char* function;
    QString (*result)(SCLElement* root);
    const char* expected;
};

using Root = SCLElement*;

const std::vector<Row>& Rows()
{
    static const std::vector<Row> rows = {
        // The shared walks.
        {"ConnectedAPsBySubNetwork",
         [](Root root) {
             return MarksOf(
                 Internal::ConnectedAPsBySubNetwork(Internal::FirstCommunicationOf(root)));
         },
         "1st AP 2nd AP 3rd AP"},
        {"FirstTemplatesOf", [](Root root) { return MarkOf(Internal::FirstTemplatesOf(root)); },
         "1st templates"},
        {"LDevicesOfFirstServer",
         [](Root root) { return MarksOf(Internal::LDevicesOfFirstServer(Marked(root, "A"))); },
         "a b c"},
        {"LDevicesOfIED",
         [](Root root) { return MarksOf(Internal::LDevicesOfIED(Marked(root, "1st I"))); },
         "a b c d"},
        {"NodesFirstLN0InFront",
         [](Root root) { return MarksOf(Internal::NodesFirstLN0InFront(Marked(root, "a"))); },
         "a0 a1 a2"},
        {"NodesFirstLN0InFront without LN0",
         [](Root root) { return MarksOf(Internal::NodesFirstLN0InFront(Marked(root, "c"))); },
         "c1"},
        {"ControlBlocksOfFirstLN0",
         [](Root root) {
             return MarksOf(Internal::ControlBlocksOfFirstLN0(Marked(root, "a"), "GSEControl"));
         },
         "block of a0"},
        {"ControlBlocksOfFirstLN0 without LN0",
         [](Root root) {
             return MarksOf(Internal::ControlBlocksOfFirstLN0(Marked(root, "c"), "GSEControl"));
         },
         ""},
        {"ExtRefsOfFirstInputs",
         [](Root root) { return MarksOf(Internal::ExtRefsOfFirstInputs(Marked(root, "a1"))); },
         "in a1"},
        {"DataSetsOfIED",
         [](Root root) { return MarksOf(Internal::DataSetsOfIED(Marked(root, "1st I"))); },
         "set of a0 set of a1 set of a2 set of b0 set of c1 set of d0 set of d1"},

        // References from data.
        {"GetReferedDataTypeTeplates",
         [](Root root) {
             QList<SCLElement*> lnTypes;
             QList<SCLElement*> others;
             SCLHelp::GetReferedDataTypeTeplates({Marked(root, "1st I")}, lnTypes, others, others,
                                                 others);
             return MarksOf(lnTypes);
         },
         "type of a0 type of a1 type of a2 type of b0 type of c1 type of d0 type of d1"},
        {"GetDOFromFCDA",
         [](Root root) { return ForEachNode(root, "member in ", SCLHelp::GetDOFromFCDA); },
         "a1=declaration in a1; a2=declaration in a1; a0=declaration in a1; a00=declaration in a1; "
         "b0=declaration in a1; b00=declaration in a1; c1=declaration in a1; zz0=declaration in "
         "a1; d0=declaration in a1; d1=declaration in a1; e0=null"},
        {"GetDOIFromFCDA",
         [](Root root) { return ForEachNode(root, "member in ", SCLHelp::GetDOIFromFCDA); },
         "a1=instance in a1; a2=instance in a1; a0=instance in a1; a00=instance in a1; "
         "b0=instance in a1; b00=instance in a1; c1=instance in a1; zz0=instance in a1; "
         "d0=instance in a1; d1=instance in a1; e0=null"},
        {"GetFCDAFromExtRef",
         [](Root root) { return MarksOf(SCLHelp::GetFCDAFromExtRef(Marked(root, "in e0"))); },
         "member in a0 member in a1 member in a2 member in b0 member in c1 member in d0 member in "
         "d1"},

        // Control blocks.
        {"GetLDeviceFromIEDAndInst",
         [](Root root) {
             return MarkOf(SCLHelp::GetLDeviceFromIEDAndInst(Marked(root, "1st I"), "L"));
         },
         "a"},
        {"GetAPFromConnectedAP",
         [](Root root) {
             return MarksOf({SCLHelp::GetAPFromConnectedAP(Marked(root, "1st AP")),
                             SCLHelp::GetAPFromConnectedAP(Marked(root, "2nd AP"))});
         },
         "A C"},
        {"GetGSEControlFromGSE",
         [](Root root) { return ForEachNode(root, "entry of ", SCLHelp::GetGSEControlFromGSE); },
         "a1=null; a2=null; a0=block of a0; a00=null; b0=block of b0; b00=null; c1=null; "
         "zz0=null; d0=null; d1=null; e0=null"},
        {"GetGSEFromGSEControl with a ConnectedAP",
         [](Root root) {
             SCLElement* connectedAP = Marked(root, "3rd AP");
             return ForEachNode(root, "block of ", [connectedAP](SCLElement* block) {
                 return SCLHelp::GetGSEFromGSEControl(block, connectedAP);
             });
         },
         "a1=second entry of a1; a2=second entry of a2; a0=second entry of a0; a00=second entry of "
         "a00; b0=second entry of b0; b00=second entry of b00; c1=second entry of c1; zz0=second "
         "entry of zz0; d0=second entry of d0; d1=second entry of d1; e0=second entry of e0"},
        {"GetGSEFromGSEControl",
         [](Root root) {
             return ForEachNode(root, "block of ", [](SCLElement* block) {
                 return SCLHelp::GetGSEFromGSEControl(block);
             });
         },
         "a1=entry of a1; a2=entry of a2; a0=entry of a0; a00=entry of a00; b0=entry of b0; "
         "b00=entry of b00; c1=entry of c1; zz0=entry of zz0; d0=null; d1=null; e0=null"},
        {"GetGSEControlFromDataSet",
         [](Root root) { return ForEachNode(root, "set of ", SCLHelp::GetGSEControlFromDataSet); },
         "a1=block of a0; a2=block of a0; a0=block of a0; a00=block of a0; b0=block of b0; "
         "b00=block of b0; c1=null; zz0=block of zz0; d0=block of d0; d1=block of d0; e0=block of "
         "e0"},

        // Subscriptions.
        {"GetGSEControlFromInputs",
         [](Root root) {
             return ExtRefsIn(SCLHelp::GetGSEControlFromInputs(Marked(root, "inputs of a1")));
         },
         "in a1"},
        {"GetGSEControlFromAPInputs",
         [](Root root) { return ExtRefsIn(SCLHelp::GetGSEControlFromAPInputs(Marked(root, "A"))); },
         "in a0 in b0"},
        {"GetGSEControlFromIEDInputs",
         [](Root root) {
             return ExtRefsIn(SCLHelp::GetGSEControlFromIEDInputs(Marked(root, "1st I")));
         },
         "in a0 in b0 in d0"},
        {"the records of GetGSEControlFromIEDInputs",
         [](Root root) {
             return RecordTexts(SCLHelp::GetGSEControlFromIEDInputs(Marked(root, "2nd I")))
                 .join(" || ");
         },
         "1st I a set of a0 block of a0: in e0=member in a0 | "},

        // Renaming and deleting an IED. The LDevice without LN0 sets them apart.
        {"HandleUpdateForIEDName",
         [](Root root) {
             SCLElement* ied = Marked(root, "1st I");
             ied->SetAttribute("name", "renamed", false);
             return MarksSignalled(root, &SCLDocument::sigEditAttribute,
                                   [ied] { SCLHelp::HandleUpdateForIEDName("I", ied); });
         },
         "1st AP 2nd AP 3rd AP in a0 in a1 in a2 in b0 in d0 in d1 in e0"},
        {"HandleDeleteForIED",
         [](Root root) {
             Marked(root, "1st I")->SetAttribute("name", "subscriber", false);
             SCLElement* ied = Marked(root, "2nd I");
             return MarksSignalled(root, &SCLDocument::sigDeleteElement,
                                   [ied] { SCLHelp::HandleDeleteForIED(ied); });
         },
         "1st AP 2nd AP 3rd AP in a0 in a1 in a2 in b0 in c1 in d0 in d1"},
    };
    return rows;
}

} // namespace

class WalksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFunctionWalksWhatIsItsOwn_data();
    void eachFunctionWalksWhatIsItsOwn();
    void nullAndDetachedElementsGiveNothing();
    void portNamesStandBeforeTheOneColon_data();
    void portNamesStandBeforeTheOneColon();
};

void WalksTest::eachFunctionWalksWhatIsItsOwn_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < static_cast<int>(Rows().size()); ++row)
        QTest::newRow(Rows()[static_cast<std::size_t>(row)].function) << row;
}

void WalksTest::eachFunctionWalksWhatIsItsOwn()
{
    TestControl control;
    QFETCH(const int, row);
    const Row& function = Rows()[static_cast<std::size_t>(row)];
    QCOMPARE(function.result(control.OpenRoot(AwkwardStation())), QString(function.expected));
}

void WalksTest::nullAndDetachedElementsGiveNothing()
{
    const TestControl control;
    SCLElement detached("IED", nullptr, nullptr);
    SCLElement* const elements[] = {nullptr, &detached};
    for (SCLElement* element : elements) {
        QVERIFY(Internal::RootOf(element) == nullptr);
        QVERIFY(Internal::FirstCommunicationOf(element) == nullptr);
        QVERIFY(Internal::FirstTemplatesOf(element) == nullptr);
        QVERIFY(Internal::ConnectedAPsBySubNetwork(element).isEmpty());
        QVERIFY(Internal::LDevicesOfFirstServer(element).isEmpty());
        QVERIFY(Internal::LDevicesOfIED(element).isEmpty());
        QVERIFY(Internal::NodesFirstLN0InFront(element).isEmpty());
        QVERIFY(Internal::ControlBlocksOfFirstLN0(element, "GSEControl").isEmpty());
        QVERIFY(Internal::ExtRefsOfFirstInputs(element).isEmpty());
        QVERIFY(Internal::DataSetsOfIED(element).isEmpty());
    }
}

void WalksTest::portNamesStandBeforeTheOneColon_data()
{
    QTest::addColumn<QString>("intAddr");
    QTest::addColumn<QStringList>("ports");
    QTest::newRow("empty") << "" << QStringList();
    QTest::newRow("no colon") << "A/B" << QStringList();
    QTest::newRow("one port") << "A:x" << QStringList("A");
    QTest::newRow("several, repeats kept") << "B/A/B:x" << QStringList({"B", "A", "B"});
    QTest::newRow("leading colon") << ":x" << QStringList(QString(""));
    QTest::newRow("colon alone") << ":" << QStringList(QString(""));
    QTest::newRow("empty parts") << "/A//:x" << QStringList({"", "A", "", ""});
    QTest::newRow("two colons") << "A:B:x" << QStringList();
}

void WalksTest::portNamesStandBeforeTheOneColon()
{
    QFETCH(const QString, intAddr);
    QTEST(Internal::PortNamesOfIntAddr(intAddr), "ports");
}

QTEST_MAIN(WalksTest)
#include "WalksTest.moc"
