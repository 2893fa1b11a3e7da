// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

#include <QRegularExpression>

using namespace Corvane::Test;

namespace
{

// The narrow form follows the network, the input and the client, the wide one also the plant, the
// receiver and the supervision.
const char* const station = R"(<SCL>
  <Substation><LNode iedName="E1" ldInst="L"/></Substation>
  <Communication><SubNetwork><ConnectedAP iedName="E2"/><ConnectedAP iedName="E1"/>
    <ConnectedAP iedName="E1"/></SubNetwork></Communication>
  <IED name="E1"><AccessPoint><Server><LDevice inst="L"><LN0>
    <GSEControl name="g" appID="by hand"/></LN0></LDevice></Server></AccessPoint></IED>
  <IED name="E2"><AccessPoint><Server><LDevice inst="L"><LN0>
    <GSEControl name="h" appID="E2L/LLN0.h"><IEDName>E1</IEDName></GSEControl>
    <Inputs><ExtRef iedName="E1"/></Inputs></LN0>
    <LN><ReportControl><RptEnabled><ClientLN iedName="E1"/></RptEnabled></ReportControl>
    <DOI><DAI name="setSrcRef"><Val>E1L/LLN0.g</Val></DAI></DOI>
    </LN></LDevice></Server></AccessPoint></IED></SCL>)";

const QString ldevice = QStringLiteral("SCL/IED[2]/AccessPoint/Server/LDevice/");

// One blank for each gap between columns.
QString Squeezed(QString text)
{
    return text.replace(QRegularExpression(" +"), " ");
}

} // namespace

class DeleteIedCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNarrowFormShowsWhatItChangesAndWhatItLeaves();
    void theWideFormShowsEachChange();
    void theJsonTellsEachChange();
    void theFileIsWritten_data();
    void theFileIsWritten();
    void aDryRunWritesNothingAndNeedsNoSchema();
    void anIedThatIsNotThereIsAWrongUse();
    void severalIedsOfTheNameFallShort();
    void theSampleStaysValidAfterAWideDeletion_data();
    void theSampleStaysValidAfterAWideDeletion();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();

private:
    CommandResult Delete(const QStringList& options, const QByteArray& text = station)
    {
        const QString file = m_folder.Write(QStringLiteral("in.scd"), text);
        return RunCommand(QStringList{QStringLiteral("delete-ied"), file, QStringLiteral("E1")} +
                          options);
    }
    QStringList Writing() const
    {
        return {QStringLiteral("--schema"), m_folder.Schema(), QStringLiteral("-o"), Output()};
    }
    QString Output() const { return m_folder.Path(QStringLiteral("out.scd")); }
    QString Further(int count) const
    {
        return QStringLiteral("corvane: %1: --wide would change %2 further places\n")
            .arg(m_folder.Path(QStringLiteral("in.scd")))
            .arg(count);
    }

    CommandFolder m_folder;
};

// The paths are those of the file as it was.
void DeleteIedCommandTest::theNarrowFormShowsWhatItChangesAndWhatItLeaves()
{
    const CommandResult result = Delete({QStringLiteral("--dry-run")});

    QCOMPARE(Squeezed(result.output),
             "SCL/Communication/SubNetwork/ConnectedAP[2] element \"E1\" -> none\n"
             "SCL/Communication/SubNetwork/ConnectedAP[3] element \"E1\" -> none\n" +
                 ldevice + "LN0/Inputs/ExtRef element \"E1\" -> none\n" + ldevice +
                 "LN/ReportControl/RptEnabled/ClientLN element \"E1\" -> none\n"
                 "SCL/IED element \"E1\" -> none\n"
                 "Changes: 5 (dry run, nothing is written)\n");
    QCOMPARE(result.errors, Further(4));
    QCOMPARE(result.status, 0);
}

void DeleteIedCommandTest::theWideFormShowsEachChange()
{
    const CommandResult result = Delete({QStringLiteral("--dry-run"), QStringLiteral("--wide")});

    QCOMPARE(Squeezed(result.output),
             "SCL/Substation/LNode iedName \"E1\" -> \"None\"\n"
             "SCL/Substation/LNode ldInst \"L\" -> none\n"
             "SCL/Communication/SubNetwork/ConnectedAP[2] element \"E1\" -> none\n"
             "SCL/Communication/SubNetwork/ConnectedAP[3] element \"E1\" -> none\n" +
                 ldevice + "LN0/GSEControl/IEDName element \"E1\" -> none\n" + ldevice +
                 "LN0/Inputs/ExtRef element \"E1\" -> none\n" + ldevice +
                 "LN0/Inputs element \"E1\" -> none\n" + ldevice +
                 "LN/ReportControl/RptEnabled/ClientLN element \"E1\" -> none\n" + ldevice +
                 "LN/DOI/DAI/Val text \"E1L/LLN0.g\" -> \"\"\n"
                 "SCL/IED element \"E1\" -> none\n"
                 "Changes: 10 (dry run, nothing is written)\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void DeleteIedCommandTest::theJsonTellsEachChange()
{
    const QByteArray small = "<SCL><LNode iedName='E1' ldInst='L'/><IED name='E1'/></SCL>";

    const CommandResult result = Delete(
        {QStringLiteral("--json"), QStringLiteral("--dry-run"), QStringLiteral("--wide")}, small);

    const auto change = [](const char* path, const char* action, const char* attribute,
                           const char* oldValue, const QJsonValue& newValue) {
        return QJsonObject{{"path", path},
                           {"action", action},
                           {"attribute", attribute},
                           {"old", oldValue},
                           {"new", newValue}};
    };
    const QJsonArray changes{
        change("SCL/LNode", "set-attribute", "iedName", "E1", "None"),
        change("SCL/LNode", "remove-attribute", "ldInst", "L", QJsonValue::Null),
        change("SCL/IED", "remove-element", "", "E1", QJsonValue::Null)};
    QCOMPARE(JsonOf(result),
             (QJsonObject{{"changes", changes}, {"dryRun", true}, {"further", 0}, {"ied", "E1"}}));
    QCOMPARE(result.status, 0);
}

void DeleteIedCommandTest::theFileIsWritten_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("names");

    // The plant, the receiver and the supervision keep the name.
    QTest::newRow("narrow") << QStringList() << 3;
    QTest::newRow("wide") << QStringList{"--wide"} << 0;
}

void DeleteIedCommandTest::theFileIsWritten()
{
    QFETCH(const QStringList, options);
    QFETCH(const int, names);

    const CommandResult result = Delete(options + Writing());

    const QByteArray written = ReadFile(Output());
    QCOMPARE(written.count("E1"), names);
    QCOMPARE(written.count("<IED "), 1);
    QCOMPARE(result.status, 0);
}

void DeleteIedCommandTest::aDryRunWritesNothingAndNeedsNoSchema()
{
    const QString output = m_folder.Path("dry.scd");

    const CommandResult result = Delete(
        {QStringLiteral("--dry-run"), QStringLiteral("--wide"), QStringLiteral("-o"), output});

    QCOMPARE(result.status, 0);
    QVERIFY(!QFile::exists(output));
    QCOMPARE(ReadFile(m_folder.Path("in.scd")), QByteArray(station));
}

void DeleteIedCommandTest::anIedThatIsNotThereIsAWrongUse()
{
    const CommandResult result = RunOn(
        station, {QStringLiteral("delete-ied"), QStringLiteral("E9"), QStringLiteral("--dry-run")});

    QCOMPARE(result.errors, QStringLiteral("corvane: delete-ied: there is no IED 'E9'\n"
                                           "corvane: try 'corvane delete-ied --help'\n"));
    QCOMPARE(result.status, 2);
}

void DeleteIedCommandTest::severalIedsOfTheNameFallShort()
{
    const CommandResult result = Delete(Writing(), "<SCL><IED name='E1'/><IED name='E1'/></SCL>");

    QCOMPARE(ReasonOf(result), QStringLiteral("several IEDs have the name 'E1'"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void DeleteIedCommandTest::theSampleStaysValidAfterAWideDeletion_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"E01F1", "E02F1", "E01U1", "E02U1", "AA1G1"})
        QTest::newRow(name) << QString(name);
}

void DeleteIedCommandTest::theSampleStaysValidAfterAWideDeletion()
{
    QFETCH(const QString, name);
    const QString schema = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");

    const CommandResult result = RunCommand(
        {"delete-ied", SampleStation(), name, "--wide", "--schema", schema, "-o", Output()});

    QCOMPARE(result.status, 0);
    QCOMPARE(RunCommand({"validate", "--schema", schema, Output()}).output, QString());
    QCOMPARE(RunCommand({"resolve", Output()}).status, 0);
}

void DeleteIedCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("delete-ied"),
                {"--wide", "--dry-run", "--schema <XSD>", "--output <OUT>", "--json", "FILE NAME"});
}

void DeleteIedCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString(arguments) << QString(reason);
    };
    row("no file", "delete-ied", "no file is given");
    row("no name", "delete-ied a", "the argument NAME is missing");
    row("empty name", "delete-ied a @", "the argument NAME is empty");
    row("two names", "delete-ied a b c", "more than one NAME is given");
    row("no schema", "delete-ied a b -o d", "the option --schema is missing");
    row("no output", "delete-ied a b --schema d", "the option -o is missing");
    row("unknown option", "delete-ied a b --all", "Unknown option 'all'.");
}

void DeleteIedCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(DeleteIedCommandTest)
#include "DeleteIedCommandTest.moc"
