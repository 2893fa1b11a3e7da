// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

#include <QRegularExpression>

using namespace Corvane::Test;

namespace
{

// The narrow form follows the network, the input and the client, the wide one also the plant and the
// receiver. The report's identifier begins with a device of E1.
const char* const station = R"(<SCL>
  <Substation><LNode iedName="E1" ldInst="L"/></Substation>
  <Communication><SubNetwork><ConnectedAP iedName="E1"/></SubNetwork></Communication>
  <IED name="E1"><AccessPoint><Server><LDevice inst="L"><LN0>
    <GSEControl name="g" appID="by&#9;hand"/><SampledValueControl name="s"/>
    <ReportControl rptID="E1L/LLN0.r"/></LN0></LDevice></Server></AccessPoint></IED>
  <IED name="E2"><AccessPoint><Server><LDevice inst="L"><LN0>
    <GSEControl name="h" appID="E2L/LLN0.h"><IEDName>E1</IEDName></GSEControl>
    <ReportControl><RptEnabled><ClientLN iedName="E1"/></RptEnabled></ReportControl>
    <Inputs><ExtRef iedName="E1"/></Inputs></LN0></LDevice></Server></AccessPoint></IED></SCL>)";

const QString ln0 = QStringLiteral("SCL/IED/AccessPoint/Server/LDevice/LN0/");
const QString ln0Of2 = QStringLiteral("SCL/IED[2]/AccessPoint/Server/LDevice/LN0/");

// A change as `path part old new`, as the JSON tells it.
QStringList Short(const CommandResult& result)
{
    QStringList lines;
    const auto text = [](const QJsonValue& value) {
        return value.isNull() ? QStringLiteral("none") : value.toString();
    };
    const QJsonArray changes = JsonOf(result)["changes"].toArray();
    for (const auto& value : changes) {
        const QJsonObject change = value.toObject();
        lines.append(QStringList{change["path"].toString(), change["action"].toString(),
                                 change["attribute"].toString(), text(change["old"]),
                                 text(change["new"])}
                         .join(QLatin1Char(' ')));
    }
    return lines;
}

} // namespace

class RenameIedCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNarrowFormShowsWhatItChangesAndWhatItLeaves();
    void theColumnsStandBelowOneAnother();
    void theWideFormShowsEachChange();
    void theJsonTellsEachChange();
    void theFileIsWritten_data();
    void theFileIsWritten();
    void aDryRunWritesNothingAndNeedsNoSchema();
    void inputAndOutputMayBeOneFile();
    void withoutASchemaNothingIsWritten();
    void anIedThatIsNotThereIsAWrongUse();
    void aNameThatCannotBeGivenIsAWrongUse_data();
    void aNameThatCannotBeGivenIsAWrongUse();
    void severalIedsOfTheNameFallShort();
    void theSampleStaysValidAndResolves_data();
    void theSampleStaysValidAndResolves();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();

private:
    CommandResult Rename(const QStringList& options, const QByteArray& text = station)
    {
        const QString file = m_folder.Write(QStringLiteral("in.scd"), text);
        return RunCommand(QStringList{QStringLiteral("rename-ied"), file, QStringLiteral("E1"),
                                      QStringLiteral("New")} +
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

void RenameIedCommandTest::theNarrowFormShowsWhatItChangesAndWhatItLeaves()
{
    const CommandResult result = Rename({QStringLiteral("--dry-run")});

    QString output = result.output;
    output.replace(QRegularExpression(" +"), " ");
    QCOMPARE(output, "SCL/IED name \"E1\" -> \"New\"\n"
                     "SCL/Communication/SubNetwork/ConnectedAP iedName \"E1\" -> \"New\"\n" +
                         ln0Of2 + "Inputs/ExtRef iedName \"E1\" -> \"New\"\n" + ln0Of2 +
                         "ReportControl/RptEnabled/ClientLN iedName \"E1\" -> \"New\"\n" + ln0 +
                         "GSEControl appID \"by\\thand\" -> \"NewL/LLN0.g\"\n" + ln0 +
                         "SampledValueControl smvID none -> \"NewL/LLN0.s\"\n"
                         "Changes: 6 (dry run, nothing is written)\n");
    QCOMPARE(result.errors, Further(3));
    QCOMPARE(result.status, 0);
}

void RenameIedCommandTest::theColumnsStandBelowOneAnother()
{
    const CommandResult result = Rename({QStringLiteral("--dry-run"), QStringLiteral("--wide")});

    const QRegularExpression columns("^\\S+ +(\\S+) +(\\S+) -> \\S+$");
    const QStringList lines = result.output.trimmed().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 10);
    const QRegularExpressionMatch first = columns.match(lines.first());
    for (const QString& line : lines.mid(0, 9)) {
        const QRegularExpressionMatch match = columns.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.capturedStart(1), first.capturedStart(1));
        QCOMPARE(match.capturedStart(2), first.capturedStart(2));
    }
}

void RenameIedCommandTest::theWideFormShowsEachChange()
{
    const CommandResult result =
        Rename({QStringLiteral("--dry-run"), QStringLiteral("--wide"), QStringLiteral("--json")});

    QCOMPARE(Short(result),
             (QStringList{"SCL/IED set-attribute name E1 New",
                          "SCL/Substation/LNode set-attribute iedName E1 New",
                          "SCL/Communication/SubNetwork/ConnectedAP set-attribute iedName E1 New",
                          ln0 + "GSEControl set-attribute appID by\thand NewL/LLN0.g",
                          ln0 + "SampledValueControl set-attribute smvID none NewL/LLN0.s",
                          ln0 + "ReportControl set-attribute rptID E1L/LLN0.r NewL/LLN0.r",
                          ln0Of2 + "GSEControl/IEDName set-text  E1 New",
                          ln0Of2 + "ReportControl/RptEnabled/ClientLN set-attribute iedName E1 New",
                          ln0Of2 + "Inputs/ExtRef set-attribute iedName E1 New"}));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void RenameIedCommandTest::theJsonTellsEachChange()
{
    const QByteArray small = "<SCL><LNode iedName='E1'/><IED name='E1'/></SCL>";

    const CommandResult result = Rename(QStringList{QStringLiteral("--json")} + Writing(), small);

    const QJsonArray changes{QJsonObject{{"path", "SCL/IED"},
                                         {"action", "set-attribute"},
                                         {"attribute", "name"},
                                         {"old", "E1"},
                                         {"new", "New"}}};
    QCOMPARE(JsonOf(result),
             (QJsonObject{{"changes", changes}, {"dryRun", false}, {"further", 1}, {"ied", "E1"}}));
    QCOMPARE(result.errors, Further(1));
    QCOMPARE(result.status, 0);
}

void RenameIedCommandTest::theFileIsWritten_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("oldNames");

    // The plant, the receiver and the report's identifier keep the old name.
    QTest::newRow("narrow") << QStringList() << 3;
    QTest::newRow("wide") << QStringList{"--wide"} << 0;
}

void RenameIedCommandTest::theFileIsWritten()
{
    QFETCH(const QStringList, options);
    QFETCH(const int, oldNames);

    const CommandResult result = Rename(options + Writing());

    const QByteArray written = ReadFile(Output());
    QCOMPARE(written.count("E1"), oldNames);
    QCOMPARE(written.count("New"), 9 - oldNames);
    QVERIFY(result.output.endsWith(QStringLiteral("Changes: %1\n").arg(9 - oldNames)));
    QCOMPARE(result.errors, oldNames > 0 ? Further(oldNames) : QString());
    QCOMPARE(result.status, 0);
}

void RenameIedCommandTest::aDryRunWritesNothingAndNeedsNoSchema()
{
    const QString output = m_folder.Path("dry.scd");

    const CommandResult result =
        Rename({QStringLiteral("--dry-run"), QStringLiteral("-o"), output});

    QCOMPARE(result.status, 0);
    QVERIFY(!QFile::exists(output));
    QCOMPARE(ReadFile(m_folder.Path("in.scd")), QByteArray(station));
}

void RenameIedCommandTest::inputAndOutputMayBeOneFile()
{
    const QString file = m_folder.Write("same.scd", station);

    const CommandResult result = RunCommand(
        {"rename-ied", file, "E1", "New", "--wide", "--schema", m_folder.Schema(), "-o", file});

    QCOMPARE(result.status, 0);
    QVERIFY(ReadFile(file).contains("<IED name=\"New\">"));
}

void RenameIedCommandTest::withoutASchemaNothingIsWritten()
{
    const QString output = m_folder.Path("none.scd");

    const CommandResult result = Rename(
        {QStringLiteral("--schema"), m_folder.Path("none.xsd"), QStringLiteral("-o"), output});

    QVERIFY(result.errors.startsWith("corvane: " + m_folder.Path("none.xsd") + ": "));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
    QVERIFY(!QFile::exists(output));
}

void RenameIedCommandTest::anIedThatIsNotThereIsAWrongUse()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("rename-ied"), QStringLiteral("E9"), QStringLiteral("New"),
                        QStringLiteral("--dry-run")});

    QCOMPARE(result.errors, QStringLiteral("corvane: rename-ied: there is no IED 'E9'\n"
                                           "corvane: try 'corvane rename-ied --help'\n"));
    QCOMPARE(result.status, 2);
}

void RenameIedCommandTest::aNameThatCannotBeGivenIsAWrongUse_data()
{
    QTest::addColumn<QString>("newName");
    QTest::addColumn<QString>("reason");

    QTest::newRow("taken") << "E2"
                           << "another IED has the new name already";
    QTest::newRow("not allowed") << "1E"
                                 << "the new name is none that IEC 61850-6 allows";
    QTest::newRow("device taken")
        << "D"
        << "a logical device of another IED is named as one of this IED would be";
}

void RenameIedCommandTest::aNameThatCannotBeGivenIsAWrongUse()
{
    QFETCH(const QString, newName);
    QFETCH(const QString, reason);
    QByteArray text = station;
    text.replace("</SCL>", "<IED name='D0'><AccessPoint><Server><LDevice ldName='DL'/></Server>"
                           "</AccessPoint></IED></SCL>");

    const CommandResult result = RunOn(text, {QStringLiteral("rename-ied"), QStringLiteral("E1"),
                                              newName, QStringLiteral("--dry-run")});

    QCOMPARE(result.errors,
             QStringLiteral("corvane: rename-ied: %1\ncorvane: try 'corvane rename-ied --help'\n")
                 .arg(reason));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void RenameIedCommandTest::severalIedsOfTheNameFallShort()
{
    const CommandResult result =
        Rename({QStringLiteral("--dry-run")}, "<SCL><IED name='E1'/><IED name='E1'/></SCL>");

    QCOMPARE(ReasonOf(result), QStringLiteral("several IEDs have the name 'E1'"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void RenameIedCommandTest::theSampleStaysValidAndResolves_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("narrow") << QStringList();
    QTest::newRow("wide") << QStringList{"--wide"};
}

void RenameIedCommandTest::theSampleStaysValidAndResolves()
{
    QFETCH(const QStringList, options);
    const QString schema = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");

    const CommandResult result =
        RunCommand(QStringList{"rename-ied", SampleStation(), "E01F1", "E01F9", "--schema", schema,
                               "-o", Output()} +
                   options);

    QCOMPARE(result.status, 0);
    QCOMPARE(RunCommand({"validate", "--schema", schema, Output()}).status, 0);
    QCOMPARE(RunCommand({"resolve", Output()}).status, 0);
    QCOMPARE(RunCommand({"info", Output()}).output, RunCommand({"info", SampleStation()}).output);
}

void RenameIedCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("rename-ied"), {"--wide", "--dry-run", "--schema <XSD>",
                                               "--output <OUT>", "--json", "FILE OLD NEW"});
}

void RenameIedCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString(arguments) << QString(reason);
    };
    row("no file", "rename-ied", "no file is given");
    row("no old name", "rename-ied a", "the argument OLD is missing");
    row("no new name", "rename-ied a b", "the argument NEW is missing");
    row("empty old name", "rename-ied a @ c", "the argument OLD is empty");
    row("empty new name", "rename-ied a b @", "the argument NEW is empty");
    row("too many names", "rename-ied a b c d", "more than one NEW is given");
    row("no schema", "rename-ied a b c -o d", "the option --schema is missing");
    row("no output", "rename-ied a b c --schema d", "the option -o is missing");
    row("empty output", "rename-ied a b c --schema d -o @", "the option -o has an empty value");
    row("unknown option", "rename-ied a b c --all", "Unknown option 'all'.");
}

void RenameIedCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(RenameIedCommandTest)
#include "RenameIedCommandTest.moc"
