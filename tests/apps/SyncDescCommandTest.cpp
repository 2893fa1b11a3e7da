// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

#include <QFile>

using namespace Corvane::Test;

namespace
{

// E takes in Pos of P and offers it at Out.
const char* const station = R"(<SCL><IED name="P"><AccessPoint><Server><LDevice inst="L"><LN0>
  <DataSet name="d"><FCDA ldInst="L" lnClass="XCBR" lnInst="1" doName="Pos" daName="stVal" fc="ST"/>
  </DataSet></LN0><LN lnClass="XCBR" inst="1"><DOI name="Pos" desc="pro">
  <DAI name="dU"><Val>pro&#9;u</Val></DAI></DOI></LN></LDevice></Server></AccessPoint></IED>
  <IED name="E"><Private type="TALVEN_VARMAP">in:1;out:2</Private><AccessPoint><Server>
  <LDevice inst="L"><LN0><Inputs><ExtRef iedName="P" ldInst="L" lnClass="XCBR" lnInst="1"
  doName="Pos" daName="stVal" intAddr="L/GGIO1.In.stVal"/></Inputs></LN0><LN lnClass="GGIO" inst="1">
  <DOI name="In"><DAI name="stVal" sAddr="x:1"/></DOI>
  <DOI name="Out" desc="sta"><DAI name="stVal" sAddr="x:2"/><DAI name="dU"><Val>sta u</Val></DAI>
  </DOI></LN></LDevice></Server></AccessPoint></IED></SCL>)";

const QString proPath = "SCL/IED/AccessPoint/Server/LDevice/LN/DOI";
const QString staPath = "SCL/IED[2]/AccessPoint/Server/LDevice/LN/DOI[2]";

} // namespace

class SyncDescCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void descriptionsAreCarriedToTheOtherSide_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("line");
        QTest::newRow("to sta") << QStringList({"--to", "sta"}) << staPath + ": \"sta\" -> \"pro\"";
        QTest::newRow("to pro") << QStringList({"--to", "pro"}) << proPath + ": \"pro\" -> \"sta\"";
        QTest::newRow("dU to sta")
            << QStringList({"--to", "sta", "--du"}) << staPath + ": \"sta u\" -> \"pro\\tu\"";
        QTest::newRow("dU to pro")
            << QStringList({"--to", "pro", "--du"}) << proPath + ": \"pro\\tu\" -> \"sta u\"";
    }
    void descriptionsAreCarriedToTheOtherSide()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, line);
        const CommandResult result =
            RunOn(station, QStringList({"sync-desc", "--ied", "E", "--dry-run"}) + options);

        QCOMPARE(result.output, line + "\nChanges: 1 (dry run, nothing is written)\n");
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, 0);
    }

    void theFileIsWritten()
    {
        const QString input = m_folder.Write("in.scd", station);
        const QString output = m_folder.Path("out.scd");
        const CommandResult result = RunCommand({"sync-desc", input, "--ied", "E", "--to", "sta",
                                                 "--schema", m_folder.Schema(), "-o", output});

        QCOMPARE(result.output, staPath + ": \"sta\" -> \"pro\"\nChanges: 1\n");
        QCOMPARE(result.status, 0);
        QFile file(output);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains("<DOI name=\"Out\" desc=\"pro\">"));
        QVERIFY(text.contains("<DOI name=\"Pos\" desc=\"pro\">"));
        const CommandResult again =
            RunCommand({"sync-desc", output, "--ied", "E", "--to", "sta", "--dry-run"});
        QCOMPARE(again.output, QString("Changes: 0 (dry run, nothing is written)\n"));
    }

    void anEmptyUserTextReplacesNothing()
    {
        QByteArray text = station;
        text.replace("pro&#9;u", "");
        const CommandResult result =
            RunOn(text, {"sync-desc", "--ied", "E", "--to", "sta", "--du", "--dry-run"});

        QCOMPARE(result.output, QString("Changes: 0 (dry run, nothing is written)\n"));
        QCOMPARE(result.status, 0);
    }

    void theJsonTellsEachChange()
    {
        const CommandResult result =
            RunOn(station, {"sync-desc", "--ied", "E", "--to", "sta", "--dry-run", "--json"});

        const QJsonArray changes = JsonOf(result)["changes"].toArray();
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes[0].toObject()["path"].toString(), staPath);
        QCOMPARE(changes[0].toObject()["old"].toString(), QString("sta"));
        QCOMPARE(changes[0].toObject()["new"].toString(), QString("pro"));
        QCOMPARE(JsonOf(result)["dryRun"].toBool(), true);
        QCOMPARE(result.status, 0);
    }

    void anIedThatIsNotThereIsAWrongUse()
    {
        const CommandResult result =
            RunOn(station, {"sync-desc", "--ied", "Z", "--to", "sta", "--dry-run"});

        QVERIFY(result.errors.contains("there is no IED 'Z'"));
        QCOMPARE(result.status, 2);
    }

    void theSampleStaysValid()
    {
        const QString output = m_folder.Path("sample.scd");
        const QString schema = CORVANE_SAMPLES_DIR "/SCL.xsd";
        const CommandResult result = RunCommand({"sync-desc", SampleStation(), "--ied", "AA1G1",
                                                 "--to", "sta", "--schema", schema, "-o", output});

        QCOMPARE(result.errors, QString());
        QVERIFY(result.output.endsWith("Changes: 2\n"));
        QCOMPARE(RunCommand({"validate", "--schema", schema, output}).status, 0);
    }

    void theHelpTellsTheOptions()
    {
        CompareHelp("sync-desc", {"--ied", "--to", "--du", "--dry-run", "--schema", "--output"});
    }

    void wrongUseHasStatus2_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no side") << "sync-desc f --ied E --dry-run"
                                 << "the option --to is missing";
        QTest::newRow("no IED") << "sync-desc f --to sta --dry-run"
                                << "the option --ied is missing";
        QTest::newRow("unknown side") << "sync-desc f --ied E --to x --dry-run"
                                      << "--to is pro or sta";
        QTest::newRow("no schema") << "sync-desc f --ied E --to sta -o o"
                                   << "the option --schema is missing";
        QTest::newRow("no output") << "sync-desc f --ied E --to sta --schema s"
                                   << "the option -o is missing";
    }
    void wrongUseHasStatus2()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, reason);
        CompareWrongUse(arguments, reason);
    }

private:
    CommandFolder m_folder;
};

QTEST_GUILESS_MAIN(SyncDescCommandTest)
#include "SyncDescCommandTest.moc"
