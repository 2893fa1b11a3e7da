// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Corvane::Test;

namespace
{

void CloseStandardDescriptors()
{
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
}

void UseFullDisk()
{
    dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
}

void UseClosedPipe()
{
    int ends[2];
    if (pipe(ends) != 0)
        _exit(99);
    close(ends[0]);
    dup2(ends[1], STDOUT_FILENO);
}

void CloseOutput()
{
    close(STDOUT_FILENO);
}

} // namespace

class StandardOutputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAnswerThatCannotBeWrittenHasStatus2_data();
    void anAnswerThatCannotBeWrittenHasStatus2();
    void aReaderThatGoesAwayEndsALongAnswer();
    void closedDescriptorsDoNotSpoilAFile();
    void aSlowReaderGetsAll();
};

void StandardOutputTest::anAnswerThatCannotBeWrittenHasStatus2_data()
{
    QTest::addColumn<QStringList>("arguments");
    const TempFolder folder;
    QTest::newRow("help") << QStringList{"--help"};
    QTest::newRow("help of one") << QStringList{"tree", "--help"};
    QTest::newRow("version") << QStringList{"--version"};
    QTest::newRow("info") << QStringList{"info", "FILE"};
    QTest::newRow("info in JSON") << QStringList{"info", "--json", "FILE"};
    QTest::newRow("tree") << QStringList{"tree", "FILE"};
    QTest::newRow("tree in JSON") << QStringList{"tree", "--json", "FILE"};
    QTest::newRow("validate") << QStringList{"validate", "--schema", "XSD", "FILE"};
    QTest::newRow("validate in JSON")
        << QStringList{"validate", "--json", "--schema", "XSD", "FILE"};
}

// The file is not valid, so that validation has something to say too.
void StandardOutputTest::anAnswerThatCannotBeWrittenHasStatus2()
{
    QFETCH(QStringList, arguments);
    const CommandFolder folder;
    arguments.replaceInStrings("FILE", folder.Write("a.scd", StationBegin() + "</SCL>"));
    arguments.replaceInStrings("XSD", folder.Schema());
    const QString head = "corvane: cannot write to standard output: ";

    const CommandResult full = RunCommand(arguments, UseFullDisk);
    QCOMPARE(full.errors, head + "No space left on device\n");
    QCOMPARE(full.status, 2);

    const CommandResult piped = RunCommand(arguments, UseClosedPipe);
    QCOMPARE(piped.errors, head + "Broken pipe\n");
    QCOMPARE(piped.status, 2);

    const CommandResult closed = RunCommand(arguments, CloseOutput);
    QCOMPARE(closed.errors, head + "Bad file descriptor\n");
    QCOMPARE(closed.status, 2);
}

void StandardOutputTest::aReaderThatGoesAwayEndsALongAnswer()
{
    const TempFile file(LargeStation());
    int ends[2];
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    CommandProcess process([&ends] { dup2(ends[1], STDOUT_FILENO); });
    process.Start({"tree", file.Path()});
    QVERIFY(process.waitForStarted());
    close(ends[1]);
    char first = 0;
    QCOMPARE(read(ends[0], &first, 1), ssize_t(1));

    close(ends[0]);

    const CommandResult result = ResultOf(process);
    QCOMPARE(result.errors, QString("corvane: cannot write to standard output: Broken pipe\n"));
    QCOMPARE(result.status, 2);
}

void StandardOutputTest::closedDescriptorsDoNotSpoilAFile()
{
    const CommandFolder folder;
    const QString file = folder.Write("a.scd", SmallStation());

    QCOMPARE(RunCommand(folder.FormatArguments(file, file), CloseStandardDescriptors).status, 0);
    QCOMPARE(ReadFile(file), SmallStationSaved("a"));

    QCOMPARE(RunCommand({"info", file}, CloseStandardDescriptors).status, 2);
    QCOMPARE(ReadFile(file), SmallStationSaved("a"));
}

void StandardOutputTest::aSlowReaderGetsAll()
{
    const TempFile file(LargeStation(20000));
    int ends[2];
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    // The other end of a pipe may have made it non-blocking, which shows on this one.
    CommandProcess process([&ends] {
        dup2(ends[1], STDOUT_FILENO);
        fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
    });
    process.Start({"tree", file.Path()});
    QVERIFY(process.waitForStarted());
    close(ends[1]);
    QTest::qWait(500);

    QByteArray text;
    char buffer[4096];
    for (ssize_t length = 1; length > 0;) {
        length = read(ends[0], buffer, sizeof buffer);
        text.append(buffer, static_cast<int>(std::max<ssize_t>(length, 0)));
    }
    close(ends[0]);

    QCOMPARE(ResultOf(process).status, 0);
    QCOMPARE(text.count('\n'), 20002);
    QVERIFY(text.endsWith("IED name=\"IED19999\" desc=\"one of many\"\n"));
}

QTEST_GUILESS_MAIN(StandardOutputTest)
#include "StandardOutputTest.moc"
