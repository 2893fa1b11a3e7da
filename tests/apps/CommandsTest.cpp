// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QtTest>

using namespace Corvane::Test;

class CommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongUseIsToldAndHasStatus2_data();
    void wrongUseIsToldAndHasStatus2();
    void helpIsAnAnswer_data();
    void helpIsAnAnswer();
    void versionIsAnAnswer();
    void anArgumentThatIsNotUtf8IsRefused();
    void namesInUtf8ServeInAnyLocale();
    void anOptionLikeNameFollowsTwoDashes();
    void noDisplayIsNeeded();
};

void CommandsTest::wrongUseIsToldAndHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(reason);
    };
    row("nothing", "", "no sub-command is given");
    row("unknown sub-command", "frobnicate", "there is no sub-command 'frobnicate'");
    row("unknown sub-command with control", "a\nb", "there is no sub-command 'a\\nb'");
    row("sub-command in capitals", "INFO", "there is no sub-command 'INFO'");
    row("unknown option of the whole", "--frob", "there is no sub-command '--frob'");
    row("info: no file", "info", "info: no file is given");
    row("info: two files", "info a b", "info: more than one file is given");
    row("info: empty file", "info @", "info: the name of a file is empty");
    row("info: unknown option", "info --frob a", "info: Unknown option 'frob'.");
    row("info: schema", "info --schema x a", "info: Unknown option 'schema'.");
    row("info: value for a flag", "info --json=1 a", "info: Unexpected value after '--json'.");
    row("tree: no file", "tree", "tree: no file is given");
    row("tree: no path", "tree a --path", "tree: Missing value after '--path'.");
    row("tree: empty path", "tree --path @ a", "tree: the option --path has an empty value");
    row("tree: two paths", "tree --path A --path B a", "tree: the option --path is given twice");
    row("tree: wrong path", "tree --path A[ a",
        "tree: the path is wrong: an attribute or a position is missing at character 3");
    row("tree: depth in words", "tree --depth two a",
        "tree: the depth is no number from 0 to 999999999");
    row("tree: negative depth", "tree --depth -1 a",
        "tree: the depth is no number from 0 to 999999999");
    row("tree: huge depth", "tree --depth 4294967296 a",
        "tree: the depth is no number from 0 to 999999999");
    row("validate: no schema", "validate a", "validate: the option --schema is missing");
    row("validate: no file", "validate --schema s", "validate: no file is given");
    row("validate: empty schema", "validate --schema @ a",
        "validate: the option --schema has an empty value");
    row("validate: empty file", "validate --schema s a @", "validate: the name of a file is empty");
    row("format: no schema", "format a -o b", "format: the option --schema is missing");
    row("format: no output", "format --schema s a", "format: the option -o is missing");
    row("format: two outputs", "format --schema s a -o b -o c",
        "format: the option -o is given twice");
    row("format: two files", "format --schema s a b -o c", "format: more than one file is given");
    row("format: json", "format --json --schema s a -o c", "format: Unknown option 'json'.");
}

// In the table, blanks separate arguments and @ is an empty one.
void CommandsTest::wrongUseIsToldAndHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    QStringList list = arguments.isEmpty() ? QStringList() : arguments.split(QLatin1Char(' '));
    list.replaceInStrings(QStringLiteral("@"), QString());

    const CommandResult result = RunCommand(list);

    QCOMPARE(result.errors.section(QLatin1Char('\n'), 0, 0), QStringLiteral("corvane: ") + reason);
    QVERIFY(result.errors.contains(QStringLiteral("\ncorvane: try 'corvane ")));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void CommandsTest::helpIsAnAnswer_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("words");

    const QString help = QStringLiteral("--help");
    QTest::newRow("whole") << QStringList{help}
                           << QStringList{"info", "tree", "validate", "format", "--version"};
    QTest::newRow("short") << QStringList{"-h"} << QStringList{"validate"};
    QTest::newRow("info") << QStringList{"info", help} << QStringList{"--json", "FILE"};
    QTest::newRow("tree") << QStringList{"tree", help}
                          << QStringList{"--json", "--path <P>", "--depth <N>", "FILE"};
    QTest::newRow("validate") << QStringList{"validate", help}
                              << QStringList{"--json", "--schema <XSD>", "FILE..."};
    QTest::newRow("format") << QStringList{"format", help}
                            << QStringList{"--schema <XSD>", "-o, --output <OUT>", "FILE"};
    QTest::newRow("beside a lack")
        << QStringList{"format", "-h", "-o", "x"} << QStringList{"--schema <XSD>"};
}

void CommandsTest::helpIsAnAnswer()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QStringList, words);

    const CommandResult result = RunCommand(arguments);

    for (const QString& word : words)
        QVERIFY2(result.output.contains(word), qPrintable(word));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void CommandsTest::versionIsAnAnswer()
{
    const CommandResult result = RunCommand({QStringLiteral("--version")});

    const QRegularExpression pattern(QStringLiteral("\\Acorvane [0-9]+\\.[0-9]+\\.[0-9]+\\n\\z"));
    QVERIFY(pattern.match(result.output).hasMatch());
    QCOMPARE(result.status, 0);
}

void CommandsTest::anArgumentThatIsNotUtf8IsRefused()
{
    CommandProcess process;
    // The shell makes the byte that QString cannot carry.
    process.start(QStringLiteral("/bin/sh"),
                  {QStringLiteral("-c"), QStringLiteral("exec \"$0\" info \"$(printf '\\377')\""),
                   CommandPath()});

    const CommandResult result = ResultOf(process);

    QCOMPARE(result.errors, QStringLiteral("corvane: an argument is not UTF-8\n"));
    QCOMPARE(result.status, 2);
}

void CommandsTest::namesInUtf8ServeInAnyLocale()
{
    const TempFolder folder;
    const QString file = folder.Write(QString::fromUtf8("Übersicht 变电站.scd"), SmallStation());
    CommandProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.Start({QStringLiteral("info"), QStringLiteral("--json"), file});

    const CommandResult result = ResultOf(process);

    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.contains(file));
    QCOMPARE(result.status, 0);
}

void CommandsTest::anOptionLikeNameFollowsTwoDashes()
{
    const TempFolder folder;
    folder.Write(QStringLiteral("--json"), SmallStation());
    CommandProcess process;
    process.setWorkingDirectory(folder.Path());
    process.Start({QStringLiteral("info"), QStringLiteral("--"), QStringLiteral("--json")});

    const CommandResult result = ResultOf(process);

    QVERIFY(result.output.contains(QStringLiteral("Edition:")));
    QCOMPARE(result.status, 0);
}

void CommandsTest::noDisplayIsNeeded()
{
    const TempFile file(SmallStation());
    CommandProcess process;
    process.setProcessEnvironment(QProcessEnvironment());
    process.Start({QStringLiteral("info"), file.Path()});

    QCOMPARE(ResultOf(process).status, 0);
}

QTEST_GUILESS_MAIN(CommandsTest)
#include "CommandsTest.moc"
