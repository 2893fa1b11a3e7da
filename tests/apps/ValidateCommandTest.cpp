// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <sys/stat.h>

using namespace Corvane::Test;

namespace
{

QByteArray ValidStation()
{
    return StationBegin() + "<Header id='a'/></SCL>";
}

} // namespace

class ValidateCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void validFilesAreSilent();
    void messagesStandOnePerLine();
    void anInvalidFileAmongValidOnesHasStatus1();
    void anUnreadableFileDoesNotHideTheOthers();
    void theJsonHoldsVerdictAndMessages();
    void aFileOfAnotherKindIsNotValid_data();
    void aFileOfAnotherKindIsNotValid();
    void namesOutsideLatin1Serve();
    void namesWithControlCharactersAreEscaped();
    void withoutASchemaNothingIsValid_data();
    void withoutASchemaNothingIsValid();
    void theSampleIsValid();

private:
    QStringList Arguments(const QStringList& files) const
    {
        return QStringList{"validate", "--schema", m_folder.Schema()} + files;
    }

    CommandFolder m_folder;
};

void ValidateCommandTest::validFilesAreSilent()
{
    const QString file = m_folder.Write("good.scd", ValidStation());

    const CommandResult result = RunCommand(Arguments({file, file}));

    QCOMPARE(result.output, QString());
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void ValidateCommandTest::messagesStandOnePerLine()
{
    const QString file =
        m_folder.Write("bad.scd", StationBegin() + "\n<Header id='a'/>\n <Bay/>\n<IED/></SCL>");

    const CommandResult result = RunCommand(Arguments({file}));

    const QStringList lines = result.output.split('\n');
    const QRegularExpression form(
        QStringLiteral("\\A%1: ERROR Ln [34], Col [0-9]+: .+\\z").arg(file));
    QVERIFY(lines.size() >= 3);
    for (int i = 0; i + 1 < lines.size(); ++i)
        QVERIFY2(form.match(lines[i]).hasMatch(), qPrintable(lines[i]));
    QVERIFY2(lines[0].contains("Ln 3, Col 8: ") && lines[0].contains("Bay"), qPrintable(lines[0]));
    QCOMPARE(lines.constLast(), QString());
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 1);
}

void ValidateCommandTest::anInvalidFileAmongValidOnesHasStatus1()
{
    const QString good = m_folder.Write("good.scd", ValidStation());
    const QString bad = m_folder.Write("bad.scd", StationBegin() + "</SCL>");

    const CommandResult result = RunCommand(Arguments({bad, good}));

    QVERIFY(result.output.startsWith(bad + ": ERROR Ln 1, Col "));
    QVERIFY(!result.output.contains(good));
    QCOMPARE(result.status, 1);
}

void ValidateCommandTest::anUnreadableFileDoesNotHideTheOthers()
{
    const QString bad = m_folder.Write("bad.scd", StationBegin());
    const QString missing = m_folder.Path("missing.scd");

    const CommandResult result = RunCommand(Arguments({missing, bad}));

    QVERIFY(result.output.contains(bad + ": FATAL Ln 1, Col "));
    QCOMPARE(result.errors,
             QStringLiteral("corvane: %1: No such file or directory\n").arg(missing));
    QCOMPARE(result.status, 2);
}

void ValidateCommandTest::theJsonHoldsVerdictAndMessages()
{
    const QString good = m_folder.Write("good.scd", ValidStation());
    const QString bad = m_folder.Write("bad.scd", StationBegin() + "\n<Bay>\n</SCL>");

    const CommandResult result = RunCommand(Arguments({"--json", good, bad}));

    const QJsonArray files =
        QJsonDocument::fromJson(result.output.toUtf8()).object()["files"].toArray();
    QCOMPARE(files.size(), 2);
    QCOMPARE(files[0].toObject(),
             (QJsonObject{{"file", good}, {"valid", true}, {"messages", QJsonArray()}}));
    QCOMPARE(files[1].toObject()["file"].toString(), bad);
    QCOMPARE(files[1].toObject()["valid"], QJsonValue(false));
    const QJsonArray messages = files[1].toObject()["messages"].toArray();
    const QJsonObject first = messages.first().toObject();
    QCOMPARE(first["level"].toString(), QStringLiteral("ERROR"));
    QCOMPARE(first["line"].toInt(), 2);
    QCOMPARE(first["column"].toInt(), 6);
    QVERIFY(first["text"].toString().contains("Bay"));
    QCOMPARE(messages.last().toObject()["level"].toString(), QStringLiteral("FATAL"));
    QCOMPARE(messages.last().toObject()["line"].toInt(), 3);
    QCOMPARE(result.status, 1);
}

void ValidateCommandTest::aFileOfAnotherKindIsNotValid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("other root") << QByteArray("<Station/>");
    QTest::newRow("no namespace") << QByteArray("<SCL><Header id='a'/></SCL>");
    QTest::newRow("other namespace") << QByteArray("<SCL xmlns='urn:x'><Header id='a'/></SCL>");
    QTest::newRow("a schema") << SmallSchema();
    QTest::newRow("empty") << QByteArray("");
}

void ValidateCommandTest::aFileOfAnotherKindIsNotValid()
{
    QFETCH(const QByteArray, text);
    const QString file = m_folder.Write("other.scd", text);

    const CommandResult result = RunCommand(Arguments({file}));

    QVERIFY(result.output.startsWith(file + ": "));
    QCOMPARE(result.status, 1);
}

void ValidateCommandTest::namesOutsideLatin1Serve()
{
    const QString name = QString::fromUtf8("变电站 Süd.scd");
    const QString good = m_folder.Write(name, ValidStation());
    QCOMPARE(RunCommand(Arguments({good})).status, 0);

    const QString bad = m_folder.Write(name, StationBegin() + "</SCL>");
    const CommandResult result = RunCommand(Arguments({bad}));
    QVERIFY(result.output.startsWith(bad + ": ERROR Ln 1"));
    QCOMPARE(result.status, 1);
}

void ValidateCommandTest::namesWithControlCharactersAreEscaped()
{
    const QString bad = m_folder.Write("a\nb\x1b.scd", StationBegin() + "</SCL>");

    const CommandResult result = RunCommand(Arguments({bad}));

    QVERIFY(result.output.startsWith(m_folder.Path("a\\nb\\u001b.scd: ERROR Ln 1")));
}

void ValidateCommandTest::withoutASchemaNothingIsValid_data()
{
    QTest::addColumn<QString>("schema");
    QTest::addColumn<QString>("reason");
    const QString unusable = "is no schema of IEC 61850-6 that can be used";
    QTest::newRow("missing") << "missing.xsd"
                             << "No such file or directory";
    QTest::newRow("directory") << "."
                               << "is no regular file but a directory";
    QTest::newRow("FIFO") << "fifo"
                          << "is no regular file but a FIFO";
    QTest::newRow("empty") << "empty.xsd" << unusable;
    QTest::newRow("station") << "good.scd" << unusable;
    QTest::newRow("other schema") << "other.xsd" << unusable;
}

void ValidateCommandTest::withoutASchemaNothingIsValid()
{
    QFETCH(const QString, schema);
    QFETCH(const QString, reason);
    const TempFolder folder;
    folder.Write("empty.xsd", "");
    folder.Write("other.xsd", SmallSchema().replace("61850", "61851"));
    const QString good = folder.Write("good.scd", ValidStation());
    QCOMPARE(mkfifo(QFile::encodeName(folder.Path("fifo")).constData(), 0600), 0);
    const QString path = folder.Path(schema);

    const CommandResult result = RunCommand({"validate", "--schema", path, good});

    QCOMPARE(result.errors, QStringLiteral("corvane: %1: %2\n").arg(path, reason));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void ValidateCommandTest::theSampleIsValid()
{
    const CommandResult result =
        RunCommand({"validate", "--schema", QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd"),
                    QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd")});

    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
}

QTEST_GUILESS_MAIN(ValidateCommandTest)
#include "ValidateCommandTest.moc"
