// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QtTest>

#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace Corvane::Test;

namespace
{

// Enough for loading and saving to take longer than the bar waits.
#ifdef __SANITIZE_ADDRESS__
constexpr int ieds = 150000; // all else takes longer there
#else
constexpr int ieds = 600000;
#endif

/// A terminal of given width, for the standard error of a process.
class Terminal
{
public:
    explicit Terminal(unsigned short columns) : m_master(posix_openpt(O_RDWR | O_NOCTTY))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            qFatal("there is no pseudo terminal");
        m_slave = open(ptsname(m_master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        winsize size = {};
        size.ws_col = columns;
        ioctl(m_slave, TIOCSWINSZ, &size);
        fcntl(m_master, F_SETFL, O_NONBLOCK);
        fcntl(m_master, F_SETFD, FD_CLOEXEC);
    }
    ~Terminal()
    {
        close(m_slave);
        close(m_master);
    }

    int Slave() const { return m_slave; }
    /// Takes what has been written.
    void Read()
    {
        char buffer[4096];
        for (ssize_t length = 1; length > 0;) {
            length = read(m_master, buffer, sizeof buffer);
            m_text.append(buffer, static_cast<int>(std::max<ssize_t>(length, 0)));
        }
    }
    QString Text() const { return QString::fromUtf8(m_text); }

private:
    int m_master;
    int m_slave = -1;
    QByteArray m_text;
};

QString RunOnTerminal(const QStringList& arguments, unsigned short columns, int& status)
{
    Terminal terminal(columns);
    const int slave = terminal.Slave();
    CommandProcess process([slave] { dup2(slave, STDERR_FILENO); });
    process.Start(arguments);
    while (!process.waitForFinished(5) && process.state() != QProcess::NotRunning)
        terminal.Read();
    terminal.Read();
    status = ResultOf(process).status;
    return terminal.Text();
}

} // namespace

class ProgressBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aTerminalShowsHowFarLoadingAndSavingAre();
    void theLineIsBlankInTheEnd();
    void theBarFitsIntoTheTerminal_data();
    void theBarFitsIntoTheTerminal();
    void anErrorStandsOnALineOfItsOwn();
    void whatIsNoTerminalShowsNothing();

private:
    QStringList Arguments() const { return m_folder.FormatArguments(m_large, m_output); }

    CommandFolder m_folder;
    QString m_large;
    QString m_output;
};

void ProgressBarTest::initTestCase()
{
    m_large = m_folder.Write("large.scd", LargeStation(ieds));
    m_output = m_folder.Path("output.scd");
}

void ProgressBarTest::aTerminalShowsHowFarLoadingAndSavingAre()
{
    int status = -1;
    const QString text = RunOnTerminal(Arguments(), 80, status);

    QCOMPARE(status, 0);
    const QRegularExpression parsing("\\rParsing +[0-9]+ % \\[#* *\\]");
    const QRegularExpression saving("\\rSaving +[0-9]+ % \\[#* *\\]");
    QVERIFY2(parsing.match(text).hasMatch(), qPrintable(text));
    QVERIFY2(saving.match(text).hasMatch(), qPrintable(text));
    QVERIFY(!text.contains('\n'));

    int last = 0;
    QRegularExpressionMatchIterator values =
        QRegularExpression("\\rSaving +([0-9]+) % \\[(#*)").globalMatch(text);
    while (values.hasNext()) {
        const QRegularExpressionMatch match = values.next();
        const int percent = match.captured(1).toInt();
        QVERIFY(percent >= last && percent <= 100);
        QCOMPARE(static_cast<int>(match.captured(2).size()), 40 * percent / 100);
        last = percent;
    }
    QVERIFY(last > 50);
}

void ProgressBarTest::theLineIsBlankInTheEnd()
{
    int status = -1;
    const QString text = RunOnTerminal(Arguments(), 80, status);

    QCOMPARE(status, 0);
    QVERIFY(QRegularExpression("\\r[^\\r]*[#%][^\\r]*\\r +\\r\\z").match(text).hasMatch());
}

void ProgressBarTest::theBarFitsIntoTheTerminal_data()
{
    QTest::addColumn<int>("columns");
    QTest::newRow("30") << 30;
    QTest::newRow("15") << 15;
    QTest::newRow("unknown") << 0;
}

void ProgressBarTest::theBarFitsIntoTheTerminal()
{
    QFETCH(const int, columns);
    int status = -1;
    const QString text = RunOnTerminal(Arguments(), static_cast<unsigned short>(columns), status);

    QCOMPARE(status, 0);
    QVERIFY(text.contains("\rSaving "));
    const QStringList lines = text.split('\r');
    for (const QString& line : lines)
        QVERIFY2(line.size() < (columns == 0 ? 80 : columns), qPrintable(line));
}

void ProgressBarTest::anErrorStandsOnALineOfItsOwn()
{
    const QString cut = m_folder.Write("cut.scd", LargeStation(ieds).chopped(6));
    int status = -1;

    const QString text = RunOnTerminal({"info", cut}, 80, status);

    QCOMPARE(status, 2);
    QVERIFY(text.contains("\rParsing "));
    const QRegularExpression end("\\r +\\rcorvane: %1: Row %2, Col [^\\r]+\\r\\n\\z");
    QVERIFY2(QRegularExpression(end.pattern().arg(cut).arg(ieds + 1)).match(text).hasMatch(),
             qPrintable(text.right(300)));
}

void ProgressBarTest::whatIsNoTerminalShowsNothing()
{
    const CommandResult result = RunCommand(Arguments());

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
}

QTEST_GUILESS_MAIN(ProgressBarTest)
#include "ProgressBarTest.moc"
