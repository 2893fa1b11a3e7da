// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"
#include "tests/support/ConnectedStation.h"

using namespace Corvane::Test;

namespace
{

const QString schemaFile = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");

CommandResult Diff(const QByteArray& first, const QByteArray& second,
                   const QStringList& options = {})
{
    const TempFile firstFile(first);
    const TempFile secondFile(second);
    return RunCommand(
        QStringList{"crc-diff", "--schema", schemaFile, firstFile.Path(), secondFile.Path()} +
        options);
}

// The codes of the IEDs of a station, by name.
QMap<QString, QString> CodesOf(const QByteArray& station)
{
    const TempFile file(station);
    const QJsonArray ieds =
        JsonOf(RunCommand({"crc", "--schema", schemaFile, "--json", file.Path()}))
            .value("ieds")
            .toArray();
    QMap<QString, QString> codes;
    for (const auto& ied : ieds)
        codes[ied.toObject()["ied"].toString()] = ied.toObject()["crc"].toString();
    return codes;
}

QByteArray OtherStation()
{
    return Edited(Edited(ConnectedStation(), "01-01", "01-02"), "b1", "b2");
}

// Each IED as "name verdict differences".
QStringList Short(const CommandResult& result)
{
    QStringList lines;
    const QJsonArray ieds = JsonOf(result)["ieds"].toArray();
    for (const auto& value : ieds) {
        const QJsonObject ied = value.toObject();
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(ied["ied"].toString(), ied["verdict"].toString())
                         .arg(ied["differences"].toArray().size()));
    }
    return lines;
}

} // namespace

class CrcDiffCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalStationsAreGood();
    void aStationIsEqualToItself();
    void theTextTellsEachDifference();
    void theJsonTellsEachDifference();
    void anIedInOneFileOnlyIsTold();
    void iedsMayBeChosen();
    void iedsOfOneNameAreTakenInOrder();
    void namesAndValuesAreEscaped();
    void theFilesStayAsTheyAre();
    void withoutASchemaNothingIsCompared_data();
    void withoutASchemaNothingIsCompared();
    void aFileThatCannotBeReadHasStatus2();
    void anIedInNeitherFileIsAWrongUse();
    void anEditOfTheSampleIsFound();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void CrcDiffCommandTest::equalStationsAreGood()
{
    const QMap<QString, QString> codes = CodesOf(ConnectedStation());

    const CommandResult result =
        Diff(ConnectedStation(), Edited(ConnectedStation(), "desc=\"Trip\"", "desc=\"Alarm\""));

    QCOMPARE(result.output, "P: equal, " + codes["P"] + "\nS: equal, " + codes["S"] +
                                "\nN: equal, no CRC\nIEDs: 3 equal, 0 different\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void CrcDiffCommandTest::aStationIsEqualToItself()
{
    const TempFile file(ConnectedStation());

    const CommandResult result =
        RunCommand({"crc-diff", "--schema", schemaFile, file.Path(), file.Path()});

    QVERIFY(result.output.endsWith("\nIEDs: 3 equal, 0 different\n"));
    QCOMPARE(result.status, 0);
}

void CrcDiffCommandTest::theTextTellsEachDifference()
{
    const QMap<QString, QString> first = CodesOf(ConnectedStation());
    const QMap<QString, QString> second = CodesOf(OtherStation());

    const CommandResult result = Diff(ConnectedStation(), OtherStation());

    QCOMPARE(result.output,
             "P: differs, " + first["P"] + " in the first, " + second["P"] +
                 " in the second\n"
                 "  First difference: MAC address of sent GOOSE PL/LLN0.g is 01-01 in the first, "
                 "01-02 in the second.\n"
                 "  Then: The value of GSE L/g > Address > P MAC-Address at the access point of "
                 "sent SV PL/LLN0.v is 01-01 in the first, 01-02 in the second.\n"
                 "S: differs, " +
                 first["S"] + " in the first, " + second["S"] +
                 " in the second\n"
                 "  First difference: MAC address of received GOOSE PL/LLN0.g is 01-01 in the "
                 "first, 01-02 in the second.\n"
                 "  Then: Short address (sAddr) of stVal at input 1-A:K/GGIO1.In1.stVal, which "
                 "takes data set member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g, is b1 in "
                 "the first, b2 in the second.\n"
                 "N: equal, no CRC\n"
                 "IEDs: 1 equal, 2 different\n");
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 1);
}

void CrcDiffCommandTest::theJsonTellsEachDifference()
{
    const QByteArray other = Edited(ConnectedStation(), "01-01", "01-02");
    const QMap<QString, QString> first = CodesOf(ConnectedStation());
    const QMap<QString, QString> second = CodesOf(other);

    const CommandResult result = Diff(ConnectedStation(), other, {"--json", "--ied=S", "--ied=N"});

    const QJsonArray differences{
        QJsonObject{{"section", "goose-subscription"},
                    {"meaning", "communication"},
                    {"change", "value"},
                    {"controlBlock", "PL/LLN0.g"},
                    {"path", "GOOSE subscription PL/LLN0.g > address > MAC-Address"},
                    {"attribute", ""},
                    {"first", "01-01"},
                    {"second", "01-02"},
                    {"text", "MAC address of received GOOSE PL/LLN0.g is 01-01 in the first, 01-02 "
                             "in the second."}}};
    const QJsonArray ieds{QJsonObject{{"ied", "S"},
                                      {"verdict", "differs"},
                                      {"first", first["S"]},
                                      {"second", second["S"]},
                                      {"differences", differences}},
                          QJsonObject{{"ied", "N"},
                                      {"verdict", "equal"},
                                      {"first", ""},
                                      {"second", ""},
                                      {"differences", QJsonArray()}}};
    QCOMPARE(JsonOf(result), (QJsonObject{{"ieds", ieds},
                                          {"counts", QJsonObject{{"equal", 1},
                                                                 {"differs", 1},
                                                                 {"only-in-first", 0},
                                                                 {"only-in-second", 0}}}}));
    QCOMPARE(result.status, 1);
}

void CrcDiffCommandTest::anIedInOneFileOnlyIsTold()
{
    const QByteArray other = Edited(ConnectedStation(), "<IED name=\"N\"/>", "<IED name=\"M\"/>");
    const QMap<QString, QString> codes = CodesOf(other);

    const CommandResult result = Diff(ConnectedStation(), other);

    QCOMPARE(result.output, "P: equal, " + codes["P"] + "\nS: equal, " + codes["S"] +
                                "\nN: only in the first file, no CRC"
                                "\nM: only in the second file, no CRC"
                                "\nIEDs: 2 equal, 0 different, 1 only in the first file, 1 only in "
                                "the second file\n");
    QCOMPARE(result.status, 1);
    QCOMPARE(Short(Diff(ConnectedStation(), other, {"--json"})),
             (QStringList{"P equal 0", "S equal 0", "N only-in-first 0", "M only-in-second 0"}));
}

void CrcDiffCommandTest::iedsMayBeChosen()
{
    const QByteArray other = Edited(ConnectedStation(), "<IED name=\"N\"/>", "<IED name=\"M\"/>");

    QCOMPARE(Short(Diff(ConnectedStation(), OtherStation(), {"--json", "--ied=N"})),
             QStringList{"N equal 0"});
    QCOMPARE(Short(Diff(ConnectedStation(), other, {"--json", "--ied=M", "--ied=S"})),
             (QStringList{"S equal 0", "M only-in-second 0"}));
}

void CrcDiffCommandTest::iedsOfOneNameAreTakenInOrder()
{
    const QByteArray twice = Edited(ConnectedStation(), "<IED name=\"N\"/>", "<IED name=\"P\"/>");

    QCOMPARE(Short(Diff(twice, ConnectedStation(), {"--json"})),
             (QStringList{"P equal 0", "S equal 0", "P only-in-first 0", "N only-in-second 0"}));
    QCOMPARE(Short(Diff(ConnectedStation(), twice, {"--json"})),
             (QStringList{"P equal 0", "S equal 0", "N only-in-first 0", "P only-in-second 0"}));
    QCOMPARE(Short(Diff(twice, twice, {"--json"})),
             (QStringList{"P equal 0", "S equal 0", "P equal 0"}));
}

void CrcDiffCommandTest::namesAndValuesAreEscaped()
{
    const QByteArray first = Edited(ConnectedStation(), "\"S\"", "\"S\\&#9;\"");

    const CommandResult result = Diff(first, Edited(first, "b1", "b\\"));

    QVERIFY(result.output.contains("\nS\\\\\\t: differs, "));
    QVERIFY2(result.output.contains(" is b1 in the first, b\\\\ in the second."),
             qPrintable(result.output));
}

void CrcDiffCommandTest::theFilesStayAsTheyAre()
{
    const TempFile first(ConnectedStation());
    const TempFile second(OtherStation());

    QCOMPARE(RunCommand({"crc-diff", "--schema", schemaFile, first.Path(), second.Path()}).status,
             1);

    QCOMPARE(ReadFile(first.Path()), ConnectedStation());
    QCOMPARE(ReadFile(second.Path()), OtherStation());
}

void CrcDiffCommandTest::withoutASchemaNothingIsCompared_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::newRow("a station") << ConnectedStation();
    QTest::newRow("other namespace") << SmallSchema().replace("61850", "61851");
}

void CrcDiffCommandTest::withoutASchemaNothingIsCompared()
{
    QFETCH(const QByteArray, schema);
    const TempFile schemaPath(schema, "x.xsd");
    const TempFile file(ConnectedStation());

    const CommandResult result =
        RunCommand({"crc-diff", "--schema", schemaPath.Path(), file.Path(), file.Path()});

    QVERIFY(result.errors.startsWith("corvane: " + schemaPath.Path() + ": "));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void CrcDiffCommandTest::aFileThatCannotBeReadHasStatus2()
{
    const TempFile good(ConnectedStation());
    const TempFile bad("<SCL>\n<IED>");

    for (const QStringList& files :
         {QStringList{good.Path(), bad.Path()}, QStringList{bad.Path(), good.Path()}}) {
        const CommandResult result =
            RunCommand(QStringList{"crc-diff", "--schema", schemaFile} + files);
        QVERIFY(result.errors.startsWith("corvane: " + bad.Path() + ": Row 2, Col "));
        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 2);
    }
}

void CrcDiffCommandTest::anIedInNeitherFileIsAWrongUse()
{
    const CommandResult result = Diff(ConnectedStation(), ConnectedStation(), {"--ied=X"});

    QVERIFY(result.errors.startsWith("corvane: crc-diff: neither file has an IED 'X'\n"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void CrcDiffCommandTest::anEditOfTheSampleIsFound()
{
    const QByteArray sample = ReadFile(SampleStation());
    const QByteArray edited =
        Edited(sample, "<P type=\"APPID\">0101</P>", "<P type=\"APPID\">0109</P>");

    const CommandResult result = Diff(sample, edited, {"--json"});

    QCOMPARE(Short(result), (QStringList{"E01F1 differs 1", "E02F1 differs 1", "E01U1 differs 1",
                                         "E02U1 differs 1", "AA1G1 equal 0"}));
    QCOMPARE(result.status, 1);
}

void CrcDiffCommandTest::theHelpTellsTheOptions()
{
    CompareHelp("crc-diff", {"--schema <XSD>", "--ied <NAME>", "--json", "FILE ", "FILE2 "});
}

void CrcDiffCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(reason);
    };
    row("no schema", "crc-diff a b", "the option --schema is missing");
    row("no file", "crc-diff --schema x", "no file is given");
    row("one file", "crc-diff --schema x a", "the argument FILE2 is missing");
    row("three files", "crc-diff --schema x a b c", "more than one FILE2 is given");
    row("empty IED", "crc-diff --schema x a b --ied @", "the option --ied has an empty value");
}

void CrcDiffCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(CrcDiffCommandTest)
#include "CrcDiffCommandTest.moc"
