// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Elements = QList<SCLElement*>;

QByteArray Port(const QByteArray& name, const QByteArray& mark = "")
{
    return "<P type='Port' mark='" + mark + "'>" + name + "</P>";
}

QByteArray Cable(const QByteArray& name, const QByteArray& mark = "")
{
    return "<P type='Cable' mark='" + mark + "'>" + name + "</P>";
}

QByteArray PhysConn(const QByteArray& settings)
{
    return "<PhysConn>" + settings + "</PhysConn>";
}

QByteArray ConnectedAP(const QByteArray& ied, const QByteArray& accessPoint,
                       const QByteArray& physConns)
{
    return "<ConnectedAP iedName='" + ied + "' apName='" + accessPoint + "'>" + physConns +
           "</ConnectedAP>";
}

QByteArray Network(const QByteArray& connectedAPs)
{
    return "<Communication><SubNetwork>" + connectedAPs + "</SubNetwork></Communication>";
}

QByteArray Ied(const QByteArray& name, const QByteArray& accessPoint = "S1",
               const QByteArray& content = "")
{
    return "<IED name='" + name + "'><AccessPoint name='" + accessPoint + "'>" + content +
           "</AccessPoint></IED>";
}

QStringList Marks(const Elements& elements)
{
    QStringList marks;
    for (SCLElement* element : elements)
        marks += element->GetAttribute("mark");
    return marks;
}

QStringList Values(const Elements& elements)
{
    QStringList values;
    for (SCLElement* element : elements)
        values += element->GetValue();
    return values;
}

SCLElement* IedOf(SCLElement* root, const QString& name)
{
    return root->FindChild("IED", "name", name, false);
}

// An IED with that in its Server, and with a port "w" on its access point.
QByteArray WithServer(const QByteArray& lDevices)
{
    return "<SCL>" + Network(ConnectedAP("A", "S1", PhysConn(Port("w")))) +
           Ied("A", "S1", "<Server>" + lDevices + "</Server>") + "</SCL>";
}

QByteArray Inputs(const QByteArray& intAddr)
{
    return "<Inputs><ExtRef intAddr='" + intAddr + "'/></Inputs>";
}

// The ports of the same inputs through both functions, which have to agree.
QStringList PortsWithInputs(const QByteArray& lDevices)
{
    TestControl control;
    SCLElement* ied = IedOf(control.OpenRoot(WithServer(lDevices)), "A");
    const QStringList ports = SCLHelp::GetAllPortFromIED(ied, true);
    const QStringList same =
        SCLHelp::GetAllPortFromAccessPoint(ied->GetFirstChild("AccessPoint"), true);
    return ports == same ? ports : QStringList("they differ");
}

// Random wiring of three IEDs with few names for ports and cables.
QByteArray RandomWiring(unsigned seed)
{
    std::mt19937 engine(seed);
    const auto below = [&engine](int end) {
        return std::uniform_int_distribution<int>(0, end - 1)(engine);
    };
    static const char* const names[] = {"A", "B", "", "a"};
    QByteArray connectedAPs;
    for (int i = below(8); i >= 0; --i) {
        QByteArray physConns;
        for (int k = below(4); k > 0; --k) {
            QByteArray settings;
            for (int p = below(4); p > 0; --p) {
                const char* name = names[below(4)];
                settings += below(2) == 0 ? Port(name) : Cable(name);
            }
            physConns += PhysConn(settings);
        }
        connectedAPs += ConnectedAP(names[below(4)], below(3) == 0 ? "S2" : "S1", physConns);
    }
    return "<SCL>" + Network(connectedAPs) + Ied("A") + Ied("B") + Ied("") + "</SCL>";
}

// What the wiring is by the rule alone, entry by entry, without any index.
Elements PlainConnectedPorts(SCLElement* ied, const QString& port)
{
    Elements connected;
    const Elements own = SCLHelp::GetPortElementFromPort(ied, port);
    for (SCLElement* element : own) {
        SCLElement* cable = element->GetParent("PhysConn")->FindChild("P", "type", "Cable", false);
        if (!cable)
            continue;
        SCLElement* root = ied->GetParent("SCL");
        const Elements ends = SCLHelp::GetCableElementFromCable(root, cable->GetValue());
        for (SCLElement* end : ends) {
            const Elements beside = end->GetParent("PhysConn")->FindChildByType("P", false);
            for (SCLElement* other : beside) {
                if (other->GetAttribute("type") == "Port" && !own.contains(other) &&
                    !connected.contains(other))
                    connected += other;
            }
        }
    }
    return connected;
}

} // namespace

class SCLHelp_PortsAndCablesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPortOnTwoAccessPointsIsTwoElementsAndOneName()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL><Communication><SubNetwork>" +
            ConnectedAP("A", "S1", PhysConn(Port("p", "1") + Port("q", "no"))) +
            "</SubNetwork><SubNetwork>" + ConnectedAP("A", "S2", PhysConn(Port("p", "2"))) +
            ConnectedAP("B", "S1", PhysConn(Port("p", "no"))) +
            "</SubNetwork></Communication><IED name='A'><AccessPoint name='S1'/>"
            "<AccessPoint name='S2'/></IED></SCL>");
        SCLElement* ied = IedOf(root, "A");
        QCOMPARE(Marks(SCLHelp::GetPortElementFromPort(ied, "p")), QStringList({"1", "2"}));
        QCOMPARE(SCLHelp::GetAllPortFromIED(ied, false), QStringList({"p", "q"}));
        QCOMPARE(SCLHelp::GetAllPortFromAccessPoint(ied->FindChild("AccessPoint", 1), false),
                 QStringList("p"));
    }

    void aConnectedAPOfAnUnknownAccessPointContributesNothing()
    {
        TestControl control;
        SCLElement* ied =
            IedOf(control.OpenRoot("<SCL>" + Network(ConnectedAP("A", "S9", PhysConn(Port("p")))) +
                                   Ied("A") + "</SCL>"),
                  "A");
        QVERIFY(SCLHelp::GetPortElementFromPort(ied, "p").isEmpty());
        QVERIFY(SCLHelp::GetAllPortFromIED(ied, false).isEmpty());
        QVERIFY(
            SCLHelp::GetAllPortFromAccessPoint(ied->GetFirstChild("AccessPoint"), false).isEmpty());
    }

    void aPortWithoutCableIsConnectedToNothing()
    {
        TestControl control;
        SCLElement* ied =
            IedOf(control.OpenRoot(
                      "<SCL>" +
                      Network(ConnectedAP("A", "S1", PhysConn(Port("p")) + PhysConn(Cable("c")))) +
                      Ied("A") + "</SCL>"),
                  "A");
        QCOMPARE(SCLHelp::GetPortElementFromPort(ied, "p").size(), 1);
        QVERIFY(SCLHelp::GetConnectedPortElementFromPort(ied, "p").isEmpty());
    }

    void aCableMayHaveMoreThanTwoEnds()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1", PhysConn(Port("p", "A") + Cable("c"))) +
                    ConnectedAP("B", "S1", PhysConn(Port("p", "B") + Cable("c", "cB"))) +
                    ConnectedAP("C", "S1", PhysConn(Cable("c") + Port("p", "C")))) +
            Ied("A") + Ied("B") + Ied("C") + "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetConnectedPortElementFromPort(IedOf(root, "A"), "p")),
                 QStringList({"B", "C"}));
        QCOMPARE(Marks(SCLHelp::GetPortElementFromCable(root, "c")), QStringList({"A", "B", "C"}));
        QCOMPARE(Marks(SCLHelp::GetCableElementFromCable(root, "c")), QStringList({"", "cB", ""}));
    }

    void theTypeTellsPortsFromCables()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1",
                                PhysConn(Port("x", "port") + Cable("x", "cable") +
                                         "<P type='port'>x</P><P>x</P><P type='Type'>x</P>"))) +
            Ied("A") + "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetPortElementFromPort(IedOf(root, "A"), "x")),
                 QStringList("port"));
        QCOMPARE(Marks(SCLHelp::GetCableElementFromCable(root, "x")), QStringList("cable"));
    }

    void onlyTheFirstCableOfAPortIsFollowed()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1", PhysConn(Port("p") + Cable("1") + Cable("2"))) +
                    ConnectedAP("B", "S1",
                                PhysConn(Port("one", "1") + Cable("1")) +
                                    PhysConn(Port("two", "2") + Cable("2")))) +
            Ied("A") + "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetConnectedPortElementFromPort(IedOf(root, "A"), "p")),
                 QStringList("1"));
    }

    void anotherPortInTheSamePlaceCountsAsConnected()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1",
                                PhysConn(Port("p", "own") + Port("q", "beside") + Cable("c")))) +
            Ied("A") + "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetConnectedPortElementFromPort(IedOf(root, "A"), "p")),
                 QStringList("beside"));
    }

    void theSearchIsOneHop()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1", PhysConn(Port("p", "A") + Cable("1"))) +
                    ConnectedAP("B", "S1", PhysConn(Port("p", "B") + Cable("1") + Cable("2"))) +
                    ConnectedAP("C", "S1", PhysConn(Port("p", "C") + Cable("2")))) +
            Ied("A") + Ied("B") + Ied("C") + "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetConnectedPortElementFromPort(IedOf(root, "A"), "p")),
                 QStringList("B"));
    }

    void portsOfOneNameOnTwoDevicesAreBothKeptButEachOnce()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" +
            Network(ConnectedAP("A", "S1", PhysConn(Port("p", "A") + Cable("c") + Cable("c"))) +
                    ConnectedAP("B", "S1", PhysConn(Port("p", "B") + Cable("c")))) +
            "</SCL>");
        QCOMPARE(Marks(SCLHelp::GetPortElementFromCable(root, "c")), QStringList({"A", "B"}));
    }

    void inputsAreOnlyAskedIfWanted()
    {
        TestControl control;
        SCLElement* ied = IedOf(control.OpenRoot(WithServer("<LDevice><LN0>" + Inputs("x:L/N.D") +
                                                            "</LN0><LN/></LDevice>")),
                                "A");
        QCOMPARE(SCLHelp::GetAllPortFromIED(ied, false), QStringList("w"));
        QCOMPARE(SCLHelp::GetAllPortFromAccessPoint(ied->GetFirstChild("AccessPoint"), false),
                 QStringList("w"));
    }

    void portsOfInputsStandBeforeTheOneColon_data()
    {
        QTest::addColumn<QByteArray>("intAddr");
        QTest::addColumn<QStringList>("ports");
        QTest::newRow("two ports") << QByteArray("A/B:LD/LN.DO") << QStringList({"A", "B", "w"});
        QTest::newRow("no colon") << QByteArray("A/B") << QStringList("w");
        QTest::newRow("two colons") << QByteArray("A:B:C") << QStringList("w");
        QTest::newRow("colon first") << QByteArray(":LD/LN.DO") << QStringList({"", "w"});
        QTest::newRow("an empty piece") << QByteArray("A/:x") << QStringList({"", "A", "w"});
        QTest::newRow("no path that leads anywhere")
            << QByteArray("A:?") << QStringList({"A", "w"});
        QTest::newRow("the same port") << QByteArray("w/w:x") << QStringList("w");
        QTest::newRow("blanks are kept") << QByteArray("w :x") << QStringList({"w", "w "});
    }
    void portsOfInputsStandBeforeTheOneColon()
    {
        QFETCH(QByteArray, intAddr);
        QFETCH(QStringList, ports);
        QCOMPARE(PortsWithInputs("<LDevice><LN0>" + Inputs(intAddr) + "</LN0><LN/></LDevice>"),
                 ports);
    }

    void inputsOfAllLN0sAndTheFirstLNCount()
    {
        QCOMPARE(PortsWithInputs("<LDevice><LN0>" + Inputs("a:x") + Inputs("no:x") + "</LN0><LN0>" +
                                 Inputs("b:x") + "</LN0><LN>" + Inputs("c:x") + "</LN><LN>" +
                                 Inputs("no:x") + "</LN></LDevice><LDevice><LN>" + Inputs("d:x") +
                                 "</LN></LDevice>"),
                 QStringList({"a", "b", "c", "d", "w"}));
    }

    void anLDeviceWithoutLNAddsNoNode()
    {
        QCOMPARE(PortsWithInputs("<LDevice/><LDevice><LN0>" + Inputs("a:x") +
                                 "</LN0></LDevice><LDevice><LN0/></LDevice>"),
                 QStringList({"a", "w"}));
    }

    void anAccessPointHasTheInputsOfItsFirstServerOnly()
    {
        TestControl control;
        const QByteArray lDevice = "<LDevice><LN>" + Inputs("x:x") + "</LN></LDevice>";
        SCLElement* root = control.OpenRoot(
            "<SCL><Communication/><IED name='A'><AccessPoint name='S1'/><AccessPoint name='S2'>"
            "<Server/><Server>" +
            lDevice + "</Server></AccessPoint><AccessPoint name='S3'><Server>" + lDevice +
            "</Server></AccessPoint></IED></SCL>");
        const Elements accessPoints = IedOf(root, "A")->FindChildByType("AccessPoint", false);
        QCOMPARE(SCLHelp::GetAllPortFromAccessPoint(accessPoints[0], true), QStringList());
        QCOMPARE(SCLHelp::GetAllPortFromAccessPoint(accessPoints[1], true), QStringList());
        QCOMPARE(SCLHelp::GetAllPortFromAccessPoint(accessPoints[2], true), QStringList("x"));
        QCOMPARE(SCLHelp::GetAllPortFromIED(IedOf(root, "A"), true), QStringList("x"));
    }

    void namesAreSortedByCharacterCode()
    {
        TestControl control;
        SCLElement* ied =
            IedOf(control.OpenRoot("<SCL>" +
                                   Network(ConnectedAP("A", "S1",
                                                       PhysConn(Port("a") + Port("B")) +
                                                           PhysConn(Port("10") + Port("2")))) +
                                   Ied("A") + "</SCL>"),
                  "A");
        QCOMPARE(SCLHelp::GetAllPortFromIED(ied, false), QStringList({"10", "2", "B", "a"}));
    }

    void cablesAreFoundFromTheRootOnly()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" + Network(ConnectedAP("A", "S1", PhysConn(Port("p") + Cable("c")))) + Ied("A") +
            "</SCL>");
        QCOMPARE(Values(SCLHelp::GetCableElementFromCable(root, "c")), QStringList("c"));
        QVERIFY(SCLHelp::GetCableElementFromCable(IedOf(root, "A"), "c").isEmpty());
        QVERIFY(SCLHelp::GetPortElementFromCable(IedOf(root, "A"), "c").isEmpty());
    }

    void whatIsMissingGivesNothing_data()
    {
        QTest::addColumn<QByteArray>("station");
        const QByteArray wired = Network(ConnectedAP("A", "S1", PhysConn(Port("p") + Cable("c"))));
        const QByteArray nodes =
            "<Server><LDevice><LN>" + Inputs("x:x") + "</LN></LDevice></Server>";
        QTest::newRow("no Communication") << QByteArray("<SCL>" + Ied("A", "S1", nodes) + "</SCL>");
        QTest::newRow("no name") << QByteArray("<SCL>" + QByteArray(wired).replace("'A'", "''") +
                                               Ied("", "S1", nodes) + "</SCL>");
        QTest::newRow("no AccessPoint") << QByteArray("<SCL>" + wired + "<IED name='A'/></SCL>");
    }
    void whatIsMissingGivesNothing()
    {
        QFETCH(QByteArray, station);
        TestControl control;
        SCLElement* root = control.OpenRoot(station);
        SCLElement* ied = root->GetFirstChild("IED");
        QVERIFY(SCLHelp::GetPortElementFromPort(ied, "p").isEmpty());
        QVERIFY(SCLHelp::GetConnectedPortElementFromPort(ied, "p").isEmpty());
        QVERIFY(SCLHelp::GetAllPortFromIED(ied, true).isEmpty());
        QVERIFY(
            SCLHelp::GetAllPortFromAccessPoint(ied->GetFirstChild("AccessPoint"), true).isEmpty());
    }

    void anAccessPointNeedsANameOfItsOwn()
    {
        TestControl control;
        SCLElement* ied =
            IedOf(control.OpenRoot("<SCL>" + Network(ConnectedAP("A", "", PhysConn(Port("p")))) +
                                   Ied("A", "") + "</SCL>"),
                  "A");
        QVERIFY(
            SCLHelp::GetAllPortFromAccessPoint(ied->GetFirstChild("AccessPoint"), false).isEmpty());
        QCOMPARE(SCLHelp::GetAllPortFromIED(ied, false), QStringList("p"));
    }

    void nullAndEmptyArgumentsGiveNothing()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL>" + Network(ConnectedAP("A", "S1", PhysConn(Port("") + Cable("")))) + Ied("A") +
            "</SCL>");
        QVERIFY(SCLHelp::GetPortElementFromPort(nullptr, "p").isEmpty());
        QVERIFY(SCLHelp::GetPortElementFromPort(IedOf(root, "A"), "").isEmpty());
        QVERIFY(SCLHelp::GetCableElementFromCable(nullptr, "c").isEmpty());
        QVERIFY(SCLHelp::GetCableElementFromCable(root, "").isEmpty());
        QVERIFY(SCLHelp::GetPortElementFromCable(nullptr, "c").isEmpty());
        QVERIFY(SCLHelp::GetPortElementFromCable(root, "").isEmpty());
        QVERIFY(SCLHelp::GetConnectedPortElementFromPort(nullptr, "p").isEmpty());
        QVERIFY(SCLHelp::GetConnectedPortElementFromPort(IedOf(root, "A"), "").isEmpty());
        QVERIFY(SCLHelp::GetAllPortFromIED(nullptr, true).isEmpty());
        QVERIFY(SCLHelp::GetAllPortFromAccessPoint(nullptr, true).isEmpty());
        SCLElement alone("IED", nullptr, nullptr);
        alone.SetAttribute("name", "A", false);
        alone.CreateChild("AccessPoint", {{"name", "S1"}}, -1, false);
        QVERIFY(SCLHelp::GetAllPortFromIED(&alone, true).isEmpty());
        QVERIFY(SCLHelp::GetConnectedPortElementFromPort(&alone, "p").isEmpty());
    }

    void randomWiringIsAsTheRuleAloneHasIt()
    {
        int found = 0;
        for (unsigned seed = 0; seed < 1000; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomWiring(seed));
            const Elements ieds = root->FindChildByType("IED", false);
            for (SCLElement* ied : ieds) {
                for (const char* port : {"A", "B", "a"}) {
                    const Elements expected = PlainConnectedPorts(ied, port);
                    QCOMPARE(SCLHelp::GetConnectedPortElementFromPort(ied, port), expected);
                    found += static_cast<int>(expected.size());
                }
            }
        }
        QVERIFY(found > 500);
    }
};

QTEST_MAIN(SCLHelp_PortsAndCablesTest)
#include "SCLHelp_PortsAndCablesTest.moc"
