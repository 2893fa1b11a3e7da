// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"
#include "tests/support/ConnectedStation.h"

#include <corvane/crc/CrcGenerator.h>

#include <QRegularExpression>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

const QString schemaFile = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");

CommandResult RunCrc(const QString& file, const QStringList& options)
{
    return RunCommand(QStringList{"crc", "--schema", schemaFile, file} + options);
}

// What the CRC of an IED covers, as the command shows it.
QByteArray CanonicalOf(const QString& file, const QString& ied)
{
    return RunCrc(file, {"--canonical", "--ied", ied}).output.toUtf8();
}

QString CodeOver(const QStringList& texts)
{
    return QString("%1").arg(CrcGenerator::Generate(texts), 8, 16, QChar('0')).toUpper();
}

QString CodeOf(const QString& file, const QString& ied)
{
    return CodeOver({QString::fromUtf8(CanonicalOf(file, ied))});
}

// The codes of the station: those of P and S, and the one over them.
struct Codes {
    explicit Codes(const QString& file)
        : p(CodeOf(file, "P")), s(CodeOf(file, "S")), substation(CodeOver({p, s}))
    {
    }

    // The table with these codes, of which @P, @S and @A are filled in.
    QString Fill(QString text) const
    {
        return text.replace("@P", p).replace("@S", s).replace("@A", substation);
    }

    QString p;
    QString s;
    QString substation;
};

QByteArray StoredCode(const QByteArray& saved, const QByteArray& begin)
{
    const auto at = saved.indexOf("<Private type=\"", saved.indexOf(begin));
    const auto end = saved.indexOf("</Private>", at);
    return saved.mid(at, end - at);
}

} // namespace

class CrcCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileWithoutCodesFallsShort();
    void codesThatHoldAreGood();
    void aCodeThatDiffersFallsShort();
    void theJsonTellsEachCode();
    void iedsMayBeChosen();
    void namesAreEscapedAndAligned();
    void anIncompleteContentHasACode();
    void theCanonicalContentIsWhatTheCodeCovers();
    void theReadableContentEndsWithTheCode();
    void withoutConnectionThereIsNoContent();
    void ofSeveralIedsWithOneNameNoContentIsShown();
    void showingLeavesTheFileAlone();
    void updateStoresTheCodes();
    void updateTellsWhatWasStored();
    void updateMayWriteItsInput();
    void updatingTwiceChangesNothing();
    void withoutASchemaNothingIsDone_data();
    void withoutASchemaNothingIsDone();
    void aFileThatCannotBeReadHasStatus2();
    void anIedThatIsNotThereIsAWrongUse();
    void theSampleCanBeUpdated();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();

private:
    TempFolder m_folder;
};

void CrcCommandTest::aFileWithoutCodesFallsShort()
{
    const TempFile file(ConnectedStation());

    const CommandResult result = RunCrc(file.Path(), {});

    QCOMPARE(result.output, Codes(file.Path())
                                .Fill("IED           CRC       Content        Stored\n"
                                      "P             @P  complete       missing\n"
                                      "S             @S  complete       missing\n"
                                      "N             -         no-connection  missing\n"
                                      "(substation)  @A                 missing\n"
                                      "Stored codes that do not hold: 4 of 4\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 1);
}

void CrcCommandTest::codesThatHoldAreGood()
{
    const TempFile file(ConnectedStation());
    QCOMPARE(RunCrc(file.Path(), {"--update", "-o", file.Path()}).status, 0);

    const CommandResult result = RunCrc(file.Path(), {});

    QCOMPARE(result.output, Codes(file.Path())
                                .Fill("IED           CRC       Content        Stored\n"
                                      "P             @P  complete       holds\n"
                                      "S             @S  complete       holds\n"
                                      "N             -         no-connection  holds\n"
                                      "(substation)  @A                 holds\n"
                                      "All stored codes hold.\n"));
    QCOMPARE(result.status, 0);
}

void CrcCommandTest::aCodeThatDiffersFallsShort()
{
    const TempFile file(ConnectedStation());
    QCOMPARE(RunCrc(file.Path(), {"--update", "-o", file.Path()}).status, 0);
    const Codes before(file.Path());
    WriteFile(file.Path(), Edited(ReadFile(file.Path()), "b1", "b2"));
    const Codes after(file.Path());

    const CommandResult result = RunCrc(file.Path(), {});

    QVERIFY(before.s != after.s);
    QCOMPARE(result.output, after.Fill("IED           CRC       Content        Stored\n"
                                       "P             @P  complete       holds\n"
                                       "S             @S  complete       differs: " +
                                       before.s +
                                       "\n"
                                       "N             -         no-connection  holds\n"
                                       "(substation)  @A                 differs: " +
                                       before.substation +
                                       "\n"
                                       "Stored codes that do not hold: 2 of 4\n"));
    QCOMPARE(result.status, 1);
}

void CrcCommandTest::theJsonTellsEachCode()
{
    const QByteArray privateCode =
        "<Private type=\"IED virtual terminal conection CRC\">x\"y</Private>";
    const TempFile file(
        Edited(Edited(ConnectedStation(), "<IED name=\"S\">", "<IED name=\"S\">" + privateCode),
               "<IED name=\"N\"/>",
               "<IED name=\"N\"><Private type=\"IED virtual terminal conection "
               "CRC\"/></IED>"));
    const Codes codes(file.Path());

    const CommandResult result = RunCrc(file.Path(), {"--json"});

    const QJsonArray ieds{QJsonObject{{"ied", "P"},
                                      {"content", "complete"},
                                      {"crc", codes.p},
                                      {"stored", QJsonValue()},
                                      {"holds", false}},
                          QJsonObject{{"ied", "S"},
                                      {"content", "complete"},
                                      {"crc", codes.s},
                                      {"stored", "x\"y"},
                                      {"holds", false}},
                          QJsonObject{{"ied", "N"},
                                      {"content", "no-connection"},
                                      {"crc", ""},
                                      {"stored", ""},
                                      {"holds", true}}};
    QCOMPARE(JsonOf(result), (QJsonObject{{"ieds", ieds},
                                          {"substation", QJsonObject{{"crc", codes.substation},
                                                                     {"stored", QJsonValue()},
                                                                     {"holds", false}}},
                                          {"hold", false}}));
    QCOMPARE(result.status, 1);
}

void CrcCommandTest::iedsMayBeChosen()
{
    const TempFile file(ConnectedStation());
    const Codes codes(file.Path());

    QCOMPARE(RunCrc(file.Path(), {"--ied", "S"}).output,
             codes.Fill("IED  CRC       Content        Stored\n"
                        "S    @S  complete       missing\n"
                        "Stored codes that do not hold: 1 of 1\n"));
    const QJsonObject json = JsonOf(RunCrc(file.Path(), {"--ied=N", "--ied=S", "--json"}));
    QCOMPARE(json["ieds"].toArray().size(), 2);
    QVERIFY(!json.contains("substation"));
}

void CrcCommandTest::namesAreEscapedAndAligned()
{
    const TempFile file("<SCL><IED name=\"A&#9;B\"/><IED name=\"" + QByteArray(50, 'x') +
                        "\"/></SCL>");

    QCOMPARE(RunCrc(file.Path(), {}).output.split('\n').mid(1, 2),
             (QStringList{"A\\tB" + QString(36, ' ') + "  -         no-connection  missing",
                          QString(50, 'x') + "  -         no-connection  missing"}));
}

void CrcCommandTest::anIncompleteContentHasACode()
{
    const TempFile file(Edited(ConnectedStation(), "intAddr=\"1-A:K/GGIO1.In1.stVal\"", ""));
    const Codes codes(file.Path());

    QCOMPARE(RunCrc(file.Path(), {"--ied=S"}).output.section('\n', 1, 1),
             codes.Fill("S    @S  incomplete     missing"));
}

void CrcCommandTest::theCanonicalContentIsWhatTheCodeCovers()
{
    const TempFile file(Edited(ConnectedStation(), "b1", "\xC3\xA4  b"));

    const CommandResult result = RunCrc(file.Path(), {"--canonical", "--ied", "S"});

    QVERIFY(result.output.startsWith(
        "<?xmlversion=\"1.0\"encoding=\"UTF-8\"?><IEDname=\"S\"><GOOSESUB>"));
    QVERIFY(result.output.contains(QString::fromUtf8("<DAIname=\"stVal\"sAddr=\"\xC3\xA4  b\"/>")));
    QVERIFY(result.output.endsWith("</SVSUB></IED>"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    const QJsonObject json = JsonOf(RunCrc(file.Path(), {"--json", "--ied=S"}));
    QCOMPARE(json["ieds"].toArray().at(0).toObject()["crc"].toString(), CodeOver({result.output}));
}

void CrcCommandTest::theReadableContentEndsWithTheCode()
{
    const TempFile file(ConnectedStation());

    const CommandResult result = RunCrc(file.Path(), {"--readable", "--ied", "P"});

    QVERIFY(result.output.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<IED configVersion=\"\" desc=\"\" manufacturer=\"\" "
                                     "name=\"P\" type=\"T\">\n  <GOOSEPUB>\n"));
    const QRegularExpression end("  <CRC id=\"" + CodeOf(file.Path(), "P") +
                                 "\" timestamp=\"[0-9: -]{19}\"/>\n</IED>\n$");
    QVERIFY2(end.match(result.output).hasMatch(), qPrintable(result.output.right(200)));
    QCOMPARE(result.status, 0);
}

void CrcCommandTest::withoutConnectionThereIsNoContent()
{
    for (const char* option : {"--canonical", "--readable"}) {
        const TempFile file(ConnectedStation());
        const CommandResult result = RunCrc(file.Path(), {option, "--ied", "N"});

        QCOMPARE(ReasonOf(result), QString("the IED 'N' neither sends nor receives anything"));
        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 1);
    }
}

void CrcCommandTest::ofSeveralIedsWithOneNameNoContentIsShown()
{
    const TempFile file(Edited(ConnectedStation(), "<IED name=\"N\"/>", "<IED name=\"P\"/>"));

    const CommandResult result = RunCrc(file.Path(), {"--canonical", "--ied", "P"});

    QCOMPARE(ReasonOf(result), QString("there is more than one IED 'P'"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void CrcCommandTest::showingLeavesTheFileAlone()
{
    const TempFile file(ConnectedStation());

    QCOMPARE(RunCrc(file.Path(), {"--json"}).status, 1);
    QCOMPARE(RunCrc(file.Path(), {"--readable", "--ied", "P"}).status, 0);

    QCOMPARE(ReadFile(file.Path()), ConnectedStation());
}

void CrcCommandTest::updateStoresTheCodes()
{
    const TempFile file(ConnectedStation());
    const QString output = m_folder.Path("stored.scd");
    const Codes codes(file.Path());

    const CommandResult result = RunCrc(file.Path(), {"--update", "-o", output});

    QCOMPARE(result.output, codes.Fill("IED           CRC       Content        Stored\n"
                                       "P             @P  complete       new\n"
                                       "S             @S  complete       new\n"
                                       "N             -         no-connection  new\n"
                                       "(substation)  @A                 new\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(file.Path()), ConnectedStation());
    const QByteArray saved = ReadFile(output);
    const QByteArray ied = "<Private type=\"IED virtual terminal conection CRC\"";
    QCOMPARE(StoredCode(saved, "<IED name=\"P\""), ied + ">" + codes.p.toUtf8());
    QCOMPARE(StoredCode(saved, "<IED name=\"S\""), ied + ">" + codes.s.toUtf8());
    QCOMPARE(StoredCode(saved, "<SCL "),
             "<Private type=\"Substation virtual terminal conection CRC\">" +
                 codes.substation.toUtf8());
    QVERIFY(saved.contains("<IED name=\"N\">\n    " + ied + "/>\n"));
}

void CrcCommandTest::updateTellsWhatWasStored()
{
    const TempFile file(ConnectedStation());
    QCOMPARE(RunCrc(file.Path(), {"--update", "-o", file.Path()}).status, 0);
    const Codes before(file.Path());
    WriteFile(file.Path(), Edited(ReadFile(file.Path()), "b1", "b2"));

    const CommandResult result = RunCrc(file.Path(), {"--update", "-o", file.Path()});

    QCOMPARE(result.output, Codes(file.Path())
                                .Fill("IED           CRC       Content        Stored\n"
                                      "P             @P  complete       unchanged\n"
                                      "S             @S  complete       was " +
                                      before.s +
                                      "\n"
                                      "N             -         no-connection  unchanged\n"
                                      "(substation)  @A                 was " +
                                      before.substation + "\n"));
    QCOMPARE(result.status, 0);
}

void CrcCommandTest::updateMayWriteItsInput()
{
    const TempFile file(ConnectedStation());
    const Codes codes(file.Path());

    const CommandResult result = RunCrc(file.Path(), {"--update", "-o", file.Path(), "--json"});

    QCOMPARE(JsonOf(result)["substation"].toObject(),
             (QJsonObject{{"crc", codes.substation}, {"stored", QJsonValue()}, {"holds", false}}));
    QCOMPARE(result.status, 0);
    QCOMPARE(RunCrc(file.Path(), {}).status, 0);
}

void CrcCommandTest::updatingTwiceChangesNothing()
{
    const TempFile file(ConnectedStation());
    QCOMPARE(RunCrc(file.Path(), {"--update", "-o", file.Path()}).status, 0);
    const QByteArray once = ReadFile(file.Path());

    QCOMPARE(RunCrc(file.Path(), {"--update", "-o", file.Path()}).status, 0);

    QCOMPARE(ReadFile(file.Path()), once);
}

void CrcCommandTest::withoutASchemaNothingIsDone_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<QString>("options");

    const QByteArray other = SmallSchema().replace("61850", "61851");
    QTest::newRow("missing") << QByteArray() << "";
    QTest::newRow("a station") << ConnectedStation() << "--update --output=@";
    QTest::newRow("other namespace") << other << "--canonical --ied=P";
}

void CrcCommandTest::withoutASchemaNothingIsDone()
{
    QFETCH(const QByteArray, schema);
    QFETCH(QString, options);
    const QString file = m_folder.Write("file.scd", ConnectedStation());
    const QString schemaPath = m_folder.Path("x.xsd");
    QFile::remove(schemaPath);
    if (!schema.isNull())
        WriteFile(schemaPath, schema);
    options.replace('@', file);

    const CommandResult result =
        RunCommand(QStringList{"crc", "--schema", schemaPath, file} +
                   (options.isEmpty() ? QStringList() : options.split(' ')));

    QVERIFY(result.errors.startsWith("corvane: " + schemaPath + ": "));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(file), ConnectedStation());
}

void CrcCommandTest::aFileThatCannotBeReadHasStatus2()
{
    const QString file = m_folder.Write("cut.scd", "<SCL>\n<IED>");

    const CommandResult result = RunCrc(file, {"--update", "-o", file});

    QVERIFY(result.errors.startsWith("corvane: " + file + ": Row 2, Col "));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(file), QByteArray("<SCL>\n<IED>"));
}

void CrcCommandTest::anIedThatIsNotThereIsAWrongUse()
{
    const TempFile file(ConnectedStation());

    for (const char* option : {"--json", "--canonical"}) {
        const CommandResult result = RunCrc(file.Path(), {option, "--ied=X"});
        QVERIFY(result.errors.startsWith("corvane: crc: there is no IED 'X'\n"));
        QCOMPARE(result.output, QString());
        QCOMPARE(result.status, 2);
    }
}

void CrcCommandTest::theSampleCanBeUpdated()
{
    const QString output = m_folder.Path("station.scd");

    QCOMPARE(RunCrc(SampleStation(), {"--update", "-o", output}).status, 0);

    const CommandResult result = RunCrc(output, {});
    QVERIFY2(result.output.endsWith("\nAll stored codes hold.\n"), qPrintable(result.output));
    QVERIFY(!result.output.contains("incomplete"));
    QCOMPARE(result.status, 0);
    QCOMPARE(RunCommand({"validate", "--schema", schemaFile, output}).output, QString());
}

void CrcCommandTest::theHelpTellsTheOptions()
{
    CompareHelp("crc", {"--schema <XSD>", "--ied <NAME>", "--update", "-o, --output <OUT>",
                        "--canonical", "--readable", "--json", "FILE"});
}

void CrcCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(reason);
    };
    row("no schema", "crc a", "the option --schema is missing");
    row("no file", "crc --schema x", "no file is given");
    row("two files", "crc --schema x a b", "more than one file is given");
    row("no output", "crc --schema x a --update", "the option --output is missing");
    row("output alone", "crc --schema x a -o b", "--output does not go without --update");
    row("empty output", "crc --schema x a --update -o @", "the option -o has an empty value");
    row("update of some", "crc --schema x a --update -o b --ied P",
        "--update does not go with --ied, --canonical and --readable");
    row("update and content", "crc --schema x a --update -o b --readable",
        "--update does not go with --ied, --canonical and --readable");
    row("two forms", "crc --schema x a --canonical --readable --ied P",
        "--canonical and --readable exclude each other");
    row("content of all", "crc --schema x a --canonical",
        "--canonical and --readable need one --ied");
    row("content of two", "crc --schema x a --readable --ied P --ied S",
        "--canonical and --readable need one --ied");
    row("content in JSON", "crc --schema x a --readable --ied P --json",
        "--json does not go with --canonical and --readable");
}

void CrcCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(CrcCommandTest)
#include "CrcCommandTest.moc"
