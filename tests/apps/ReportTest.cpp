// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Report.h"

#include <QtTest>

using namespace Corvane::Command;

class ReportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatMisleadsATerminalIsEscaped_data();
    void whatMisleadsATerminalIsEscaped();
    void quotesInsideQuotesAreEscaped();
    void systemTextsAreTheSystemsOwn();
};

void ReportTest::whatMisleadsATerminalIsEscaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("escaped");

    const auto row = [](const char* name, const QString& text, const char* escaped) {
        QTest::newRow(name) << text << QString::fromUtf8(escaped);
    };
    const QString umlaut = QString::fromUtf8("Süd 变电站");
    row("empty", "", "");
    row("plain", umlaut, "Süd 变电站");
    row("line ends", "a\r\nb", "a\\r\\nb");
    row("tab", "\t", "\\t");
    row("escape", "\x1b[2J", "\\u001b[2J");
    row("NUL", QString(QChar(0)), "\\u0000");
    row("delete", "\x7f", "\\u007f");
    row("C1", QString(QChar(0x9b)), "\\u009b");
    row("first above C1", QString(QChar(0xa0)), "\xC2\xA0");
    row("line separator", QString(QChar(0x2028)), "\\u2028");
    row("right to left", QString(QChar(0x202e)) + 'x', "\\u202ex");
    row("isolate", QString(QChar(0x2066)), "\\u2066");
    row("byte order mark", QString(QChar(0xfeff)), "\\ufeff");
    row("backslash", "\\n", "\\\\n");
    row("pair", QString::fromUtf8("\xF0\x9F\x98\x80"), "\xF0\x9F\x98\x80");
    row("lone high", QString(QChar(0xd83d)) + 'x', "\\ud83dx");
    row("lone low", 'x' + QString(QChar(0xde00)), "x\\ude00");
}

void ReportTest::whatMisleadsATerminalIsEscaped()
{
    QFETCH(const QString, text);
    QFETCH(const QString, escaped);
    QCOMPARE(Escaped(text), escaped);
}

void ReportTest::quotesInsideQuotesAreEscaped()
{
    QCOMPARE(Quoted("a \"b\" \\"), QStringLiteral("\"a \\\"b\\\" \\\\\""));
}

void ReportTest::systemTextsAreTheSystemsOwn()
{
    QCOMPARE(SystemText(ENOENT), QStringLiteral("No such file or directory"));
}

QTEST_GUILESS_MAIN(ReportTest)
#include "ReportTest.moc"
