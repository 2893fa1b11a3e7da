// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <sys/stat.h>

using namespace Corvane::Test;

namespace
{

// Every kind that is counted stands here another number of times.
const char* const station = R"(<SCL version="2007" revision="B" release="4">
  <Private><IED name="none"><AccessPoint><Server><LDevice/></Server></AccessPoint></IED></Private>
  <Communication><SubNetwork/><SubNetwork/><SubNetwork/></Communication>
  <IED name="A"><AccessPoint name="S"><Server>
    <LDevice inst="1">
      <LN0><DataSet/><DataSet/><DataSet/><DataSet/><DataSet/>
        <ReportControl/><ReportControl/><ReportControl/><ReportControl/><ReportControl/><ReportControl/>
        <LogControl/><LogControl/><LogControl/><LogControl/><LogControl/><LogControl/><LogControl/>
        <GSEControl/><GSEControl/>
        <SampledValueControl/>
        <Inputs><ExtRef/><ExtRef/><ExtRef/><ExtRef/></Inputs>
      </LN0>
      <LN/><LN/><LN/><LN/><LN/><LN/><LN/>
    </LDevice>
    <LDevice inst="2"><LN0><SettingControl/><SettingControl/><SettingControl/></LN0></LDevice>
    <LDevice inst="3"/><LDevice inst="4"/><LDevice inst="5"/><LDevice inst="6"/>
  </Server><LN/></AccessPoint></IED>
  <IED name="B"/>
</SCL>)";

QJsonObject Json(const CommandResult& result)
{
    return QJsonDocument::fromJson(result.output.toUtf8()).object();
}

} // namespace

class InfoCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextCountsAllKinds();
    void theJsonCountsAllKinds();
    void anEditionThatIsNotStatedIsToldSo();
    void controlCharactersOfTheEditionAreEscaped();
    void theSampleIsCounted();
    void whatCannotBeReadHasStatus2_data();
    void whatCannotBeReadHasStatus2();
    void whatIsNoRegularFileIsRefusedWithoutWaiting_data();
    void whatIsNoRegularFileIsRefusedWithoutWaiting();
    void aFileWithoutPermissionIsRefused();
};

void InfoCommandTest::theTextCountsAllKinds()
{
    const TempFile file(station);

    const CommandResult result = RunCommand({QStringLiteral("info"), file.Path()});

    QCOMPARE(result.output, QStringLiteral("Edition:               2007B4\n"
                                           "IEDs:                  2\n"
                                           "Logical devices:       6\n"
                                           "Logical nodes:         10\n"
                                           "Control blocks:\n"
                                           "  ReportControl:       6\n"
                                           "  LogControl:          7\n"
                                           "  GSEControl:          2\n"
                                           "  SampledValueControl: 1\n"
                                           "  SettingControl:      3\n"
                                           "Data sets:             5\n"
                                           "ExtRefs:               4\n"
                                           "Sub-networks:          3\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void InfoCommandTest::theJsonCountsAllKinds()
{
    const TempFile file(station);

    const CommandResult result =
        RunCommand({QStringLiteral("info"), QStringLiteral("--json"), file.Path()});

    const QJsonObject expected{
        {"file", file.Path()},
        {"edition", QJsonObject{{"version", "2007"}, {"revision", "B"}, {"release", "4"}}},
        {"ieds", 2},
        {"logicalDevices", 6},
        {"logicalNodes", 10},
        {"controlBlocks", QJsonObject{{"ReportControl", 6},
                                      {"LogControl", 7},
                                      {"GSEControl", 2},
                                      {"SampledValueControl", 1},
                                      {"SettingControl", 3}}},
        {"dataSets", 5},
        {"extRefs", 4},
        {"subNetworks", 3}};
    QCOMPARE(Json(result), expected);
    QCOMPARE(result.status, 0);
}

void InfoCommandTest::anEditionThatIsNotStatedIsToldSo()
{
    const TempFile file("<SCL/>");

    const CommandResult result = RunCommand({QStringLiteral("info"), file.Path()});

    QVERIFY(result.output.startsWith(QStringLiteral("Edition:               not stated\n")));
}

void InfoCommandTest::controlCharactersOfTheEditionAreEscaped()
{
    const TempFile file("<SCL version=\"&#10;&#x9b;2J\"/>");

    const CommandResult result = RunCommand({QStringLiteral("info"), file.Path()});

    QVERIFY(result.output.startsWith(QStringLiteral("Edition:               \\n\\u009b2J\n")));
}

void InfoCommandTest::theSampleIsCounted()
{
    const QString sample = QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd");
    const QByteArray text = ReadFile(sample);
    const auto count = [&text](const char* tag) {
        const QRegularExpression start(QStringLiteral("<%1[\\s/>]").arg(QLatin1String(tag)));
        return QString::fromUtf8(text).count(start);
    };

    const QJsonObject facts =
        Json(RunCommand({QStringLiteral("info"), QStringLiteral("--json"), sample}));

    QVERIFY(count("IED") > 0);
    QCOMPARE(facts["ieds"].toInt(), count("IED"));
    QCOMPARE(facts["logicalDevices"].toInt(), count("LDevice"));
    QCOMPARE(facts["logicalNodes"].toInt(), count("LN0") + count("LN"));
    QCOMPARE(facts["controlBlocks"].toObject()["GSEControl"].toInt(), count("GSEControl"));
    QCOMPARE(facts["dataSets"].toInt(), count("DataSet"));
    QCOMPARE(facts["extRefs"].toInt(), count("ExtRef"));
    QCOMPARE(facts["subNetworks"].toInt(), count("SubNetwork"));
}

void InfoCommandTest::whatCannotBeReadHasStatus2_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const QByteArray& text, const char* reason) {
        QTest::newRow(name) << text << QString::fromLatin1(reason);
    };
    row("missing", QByteArray(), "No such file or directory\n");
    row("empty", "", "Row 1, Col 0: .+\n");
    row("not XML", "station", "Row 1, Col [0-9]+: .+\n");
    row("other root", "<Station/>", "Row 1, Col [0-9]+: The file is not an SCL file\\.\n");
    row("cut off", "<SCL>\n<IED", "Row 2, Col [0-9]+: .+\n");
    row("not closed", "<SCL>\n <IED>\n</SCL>", "Row 3, Col [0-9]+: .+\n");
    row("attribute twice", "<SCL>\n<IED a='' a=''/></SCL>", "Row 2, Col [0-9]+: .+\n");
}

void InfoCommandTest::whatCannotBeReadHasStatus2()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QString, reason);
    const TempFolder folder;
    const QString file = folder.Path(QStringLiteral("file.scd"));
    if (!text.isNull())
        WriteFile(file, text);

    const CommandResult result = RunCommand({QStringLiteral("info"), file});

    const QRegularExpression expected(QStringLiteral("\\Acorvane: %1: %2\\z").arg(file, reason));
    QVERIFY2(expected.match(result.errors).hasMatch(), qPrintable(result.errors));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void InfoCommandTest::whatIsNoRegularFileIsRefusedWithoutWaiting_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("kind");

    QTest::newRow("FIFO") << "fifo"
                          << "a FIFO";
    QTest::newRow("link to a FIFO") << "link"
                                    << "a FIFO";
    QTest::newRow("directory") << "."
                               << "a directory";
    QTest::newRow("device") << "/dev/zero"
                            << "a device";
    QTest::newRow("terminal") << "/dev/ptmx"
                              << "a device";
    QTest::newRow("standard input") << "/dev/stdin"
                                    << "a FIFO";
}

void InfoCommandTest::whatIsNoRegularFileIsRefusedWithoutWaiting()
{
    QFETCH(const QString, file);
    QFETCH(const QString, kind);
    const TempFolder folder;
    QCOMPARE(mkfifo(QFile::encodeName(folder.Path(QStringLiteral("fifo"))).constData(), 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("fifo"), folder.Path(QStringLiteral("link"))));
    CommandProcess process;
    process.setWorkingDirectory(folder.Path());
    process.Start({QStringLiteral("info"), file});

    const CommandResult result = ResultOf(process);

    QCOMPARE(result.errors,
             QStringLiteral("corvane: %1: is no regular file but %2\n").arg(file, kind));
    QCOMPARE(result.status, 2);
}

void InfoCommandTest::aFileWithoutPermissionIsRefused()
{
    const TempFile file(SmallStation());
    QVERIFY(QFile::setPermissions(file.Path(), QFile::WriteOwner));

    const CommandResult result =
        RunCommand({QStringLiteral("info"), file.Path()}, RespectPermissions);

    QCOMPARE(result.errors, QStringLiteral("corvane: %1: Permission denied\n").arg(file.Path()));
    QCOMPARE(result.status, 2);
}

QTEST_GUILESS_MAIN(InfoCommandTest)
#include "InfoCommandTest.moc"
