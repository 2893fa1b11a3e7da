// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

// A is wired to B and C by one cable; its other port has no cable, its inputs name "x" besides.
const char* const station = R"(<SCL><Communication><SubNetwork>
  <ConnectedAP iedName="A" apName="S1">
    <PhysConn><P type="Port">q&#9;1</P></PhysConn>
    <PhysConn><P type="Port">p1</P><P type="Cable">c</P></PhysConn></ConnectedAP>
  <ConnectedAP iedName="B" apName="S1">
    <PhysConn><P type="Port">p2</P><P type="Cable">c</P></PhysConn>
    <PhysConn><P type="Port">p3</P><P type="Cable">end</P></PhysConn></ConnectedAP>
  <ConnectedAP iedName="C" apName="S9"><PhysConn><P type="Cable">c</P></PhysConn></ConnectedAP>
  </SubNetwork></Communication>
  <IED name="A"><AccessPoint name="S1"><Server><LDevice inst="L"><LN0><Inputs>
    <ExtRef iedName="B" ldInst="M" prefix="X" lnClass="GGIO" lnInst="1" doName="Ind" daName="stVal"
      intAddr="p1/x:L/N.D"/>
    <ExtRef iedName="B" ldInst="M" lnClass="TCTR" lnInst="1" doName="Amp" intAddr="p1:L/N.E"/>
    <ExtRef iedName="B" doName="No" intAddr="L/N.F"/>
  </Inputs></LN0></LDevice></Server></AccessPoint></IED>
  <IED name="B"><AccessPoint name="S1"/></IED><IED name="C"/></SCL>)";

} // namespace

class PortsCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextShowsEachPortWithItsCableAndFarEnds()
    {
        const CommandResult result = RunOn(station, {"ports"});

        QCOMPARE(result.output, QString("A\n"
                                        "  p1    S1  c -> B S1 p2, C S9 (no port)\n"
                                        "  q\\t1  S1  no cable\n"
                                        "B\n"
                                        "  p2  S1  c -> A S1 p1, C S9 (no port)\n"
                                        "  p3  S1  end -> nothing\n"));
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, 0);
    }

    void theInputsStandBelowTheirPorts()
    {
        const CommandResult result = RunOn(station, {"ports", "--inputs", "--ied", "A"});

        QCOMPARE(result.output, QString("A\n"
                                        "  p1    S1  c -> B S1 p2, C S9 (no port)\n"
                                        "      \"p1/x:L/N.D\" <- B M/XGGIO1.Ind.stVal\n"
                                        "      \"p1:L/N.E\" <- B M/TCTR1.Amp\n"
                                        "  q\\t1  S1  no cable\n"
                                        "  x     named by inputs, not in the network\n"
                                        "      \"p1/x:L/N.D\" <- B M/XGGIO1.Ind.stVal\n"));
        QCOMPARE(result.status, 0);
    }

    void theJsonTellsEachPort()
    {
        const CommandResult result = RunOn(station, {"ports", "--json", "--inputs", "--ied", "A"});

        const QJsonArray ports = JsonOf(result)["ports"].toArray();
        QCOMPARE(ports.size(), 3);
        const QJsonObject first = ports[0].toObject();
        QCOMPARE(first["ied"].toString(), QString("A"));
        QCOMPARE(first["port"].toString(), QString("p1"));
        const QJsonObject plug = first["plugs"].toArray()[0].toObject();
        QCOMPARE(plug["accessPoint"].toString(), QString("S1"));
        QCOMPARE(plug["isKnown"].toBool(), true);
        QCOMPARE(plug["cables"].toArray(), QJsonArray({"c"}));
        QCOMPARE(plug["wiredTo"].toArray(), QJsonArray({"B S1 p2", "C S9 (no port)"}));
        QCOMPARE(first["inputs"].toArray().size(), 2);
        QCOMPARE(ports[1].toObject()["port"].toString(), QString("q\t1"));
        QVERIFY(ports[2].toObject()["plugs"].toArray().isEmpty());
        QCOMPARE(result.status, 0);
    }

    void aPortOnTwoAccessPointsShowsBothPlaces()
    {
        const CommandResult result = RunOn(
            "<SCL><Communication><SubNetwork><ConnectedAP iedName='A' apName='1'><PhysConn>"
            "<P type='Port'>p</P></PhysConn></ConnectedAP><ConnectedAP iedName='A' apName='2'>"
            "<PhysConn><P type='Port'>p</P><P type='Cable'>c</P></PhysConn></ConnectedAP>"
            "</SubNetwork></Communication><IED name='A'><AccessPoint name='1'/></IED></SCL>",
            {"ports"});

        QCOMPARE(result.output, QString("A\n"
                                        "  p  1  no cable\n"
                                        "     2 (no such access point)  c -> nothing\n"));
    }

    void withoutPortsNothingIsShown()
    {
        const CommandResult result = RunOn("<SCL><IED name='A'/></SCL>", {"ports", "--inputs"});

        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 0);
    }

    void theSampleIsWiredThroughout()
    {
        const CommandResult result = RunCommand({"ports", "--json", SampleStation()});

        const QJsonArray ports = JsonOf(result)["ports"].toArray();
        QCOMPARE(ports.size(), 22);
        for (const auto& port : ports) {
            const QJsonArray plugs = port.toObject()["plugs"].toArray();
            QCOMPARE(plugs.size(), 1);
            QCOMPARE(plugs[0].toObject()["wiredTo"].toArray().size(), 1);
        }
        QCOMPARE(result.status, 0);
    }

    void anIedThatIsNotThereIsAWrongUse()
    {
        const CommandResult result = RunOn(station, {"ports", "--ied", "Z"});

        QCOMPARE(result.output, QString());
        QVERIFY(result.errors.contains("'Z'"));
        QCOMPARE(result.status, 2);
    }

    void theHelpTellsTheOptions() { CompareHelp("ports", {"--ied", "--inputs", "--json"}); }
};

QTEST_GUILESS_MAIN(PortsCommandTest)
#include "PortsCommandTest.moc"
