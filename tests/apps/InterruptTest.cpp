// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SlowSave.h"

#include <QtTest>

using namespace Corvane::Test;

class InterruptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anInterruptLeavesTheOldFileAndNothingElse_data();
    void anInterruptLeavesTheOldFileAndNothingElse();
    void aSignalIgnoredFromTheBeginningStaysIgnored();
    void anInterruptOutsideOfASaveIsToldToo();

private:
    CommandFolder m_folder;
};

void InterruptTest::anInterruptLeavesTheOldFileAndNothingElse_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void InterruptTest::anInterruptLeavesTheOldFileAndNothingElse()
{
    QFETCH(const int, number);
    const QString output = m_folder.Write("old.scd", "old");
    SlowSave save(m_folder, output);

    save.Signal(number);

    const CommandResult result = save.Finish();
    QCOMPARE(result.errors, QStringLiteral("corvane: interrupted\n"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(output), QByteArray("old"));
    QCOMPARE(SaveFolders(m_folder.Path()), QStringList());
}

void InterruptTest::aSignalIgnoredFromTheBeginningStaysIgnored()
{
    const QString output = m_folder.Write("old.scd", "old");
    SlowSave save(m_folder, output, [] { std::signal(SIGHUP, SIG_IGN); });

    save.Signal(SIGHUP);

    QCOMPARE(save.Finish().status, 0);
    QVERIFY(ReadFile(output).endsWith("</SCL>\n"));
}

void InterruptTest::anInterruptOutsideOfASaveIsToldToo()
{
    const TempFile file(LargeStation());
    CommandProcess process;
    process.Start({"tree", file.Path()});
    // It fills the pipe and waits for a reader.
    QVERIFY(process.waitForReadyRead(60000));

    process.terminate();

    const CommandResult result = ResultOf(process);
    QCOMPARE(result.errors, QStringLiteral("corvane: interrupted\n"));
    QCOMPARE(result.status, 2);
}

QTEST_GUILESS_MAIN(InterruptTest)
#include "InterruptTest.moc"
