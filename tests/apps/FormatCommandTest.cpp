// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QtTest>

using namespace Corvane::Test;

class FormatCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void childrenStandInSchemaOrder();
    void theIdFollowsFromTheOutput();
    void inputAndOutputMayBeOneFile();
    void formattingTwiceChangesNothing();
    void whatSavingLosesIsNoObstacle();
    void withoutASchemaNothingIsWritten_data();
    void withoutASchemaNothingIsWritten();
    void anInputThatCannotBeReadLeavesTheOutputAlone();
    void theSampleStaysValidAndStable();

private:
    CommandFolder m_folder;
};

void FormatCommandTest::childrenStandInSchemaOrder()
{
    const QString input = m_folder.Write("in.scd", SmallStation());
    const QString output = m_folder.Path("out.scd");

    const CommandResult result = RunCommand(m_folder.FormatArguments(input, output));

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(output), SmallStationSaved("out"));
    QCOMPARE(ReadFile(input), SmallStation());
}

void FormatCommandTest::theIdFollowsFromTheOutput()
{
    const QString input = m_folder.Write("in.scd", SmallStation());
    const QString output = m_folder.Path("a.b.scd");

    QCOMPARE(RunCommand(m_folder.FormatArguments(input, output)).status, 0);

    QCOMPARE(ReadFile(output), SmallStationSaved("a"));
}

void FormatCommandTest::inputAndOutputMayBeOneFile()
{
    const QString file = m_folder.Write("same.scd", SmallStation());

    QCOMPARE(RunCommand(m_folder.FormatArguments(file, file)).status, 0);

    QCOMPARE(ReadFile(file), SmallStationSaved("same"));
}

void FormatCommandTest::formattingTwiceChangesNothing()
{
    const QString file = m_folder.Write("twice.scd", SmallStation());
    QCOMPARE(RunCommand(m_folder.FormatArguments(file, file)).status, 0);
    const QByteArray once = ReadFile(file);

    QCOMPARE(RunCommand(m_folder.FormatArguments(file, file)).status, 0);

    QCOMPARE(ReadFile(file), once);
}

void FormatCommandTest::whatSavingLosesIsNoObstacle()
{
    const QString input = m_folder.Write(
        "losses.scd", "<!-- c --><SCL><Unknown>mixed<b/>text</Unknown><T a='&#9;&#10;&#13; x '> "
                      " &#13;&#10;y&#13;</T><T>  &lt;<![CDATA[ ]]>&gt; </T><T>&#13;</T><T "
                      "b='&lt;&quot;'/><T>&#xFFFD;&#x10FFFF;</T></SCL>");
    const QString output = m_folder.Path("losses.out.scd");

    const CommandResult result = RunCommand(m_folder.FormatArguments(input, output));

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QVERIFY(ReadFile(output).contains("<Unknown>\n    <b/>\n  </Unknown>"));
}

void FormatCommandTest::withoutASchemaNothingIsWritten_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("a station") << SmallStation();
    QTest::newRow("other namespace") << SmallSchema().replace("61850", "61851");
}

void FormatCommandTest::withoutASchemaNothingIsWritten()
{
    QFETCH(const QByteArray, schema);
    const TempFolder folder;
    const QString schemaFile = folder.Path("x.xsd");
    if (!schema.isNull())
        WriteFile(schemaFile, schema);
    const QString file = folder.Write("file.scd", SmallStation());

    const CommandResult result = RunCommand({"format", "--schema", schemaFile, file, "-o", file});

    QVERIFY(result.errors.startsWith("corvane: " + schemaFile + ": "));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(file), SmallStation());
}

void FormatCommandTest::anInputThatCannotBeReadLeavesTheOutputAlone()
{
    const QString input = m_folder.Write("cut.scd", "<SCL>\n<IED>");
    const QString output = m_folder.Write("old.scd", "old");

    const CommandResult result = RunCommand(m_folder.FormatArguments(input, output));

    QVERIFY(result.errors.startsWith("corvane: " + input + ": Row 2, Col "));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(output), QByteArray("old"));
}

void FormatCommandTest::theSampleStaysValidAndStable()
{
    const QString schema = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");
    const QString sample = QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd");
    const QString output = m_folder.Path("station.scd");
    const QByteArray before = ReadFile(sample);

    QCOMPARE(RunCommand({"format", "--schema", schema, sample, "-o", output}).status, 0);
    const QByteArray once = ReadFile(output);
    QVERIFY(once.size() > before.size() / 2);
    QCOMPARE(ReadFile(sample), before);

    QCOMPARE(RunCommand({"format", "--schema", schema, output, "-o", output}).status, 0);
    QCOMPARE(ReadFile(output), once);
    QCOMPARE(RunCommand({"validate", "--schema", schema, output}).status, 0);
    QCOMPARE(RunCommand({"info", output}).output, RunCommand({"info", sample}).output);
}

QTEST_GUILESS_MAIN(FormatCommandTest)
#include "FormatCommandTest.moc"
