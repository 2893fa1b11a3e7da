// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Corvane::Test;

namespace
{

const char* const station = R"(<SCL><Header id="h"/>
  <IED name="A"><AccessPoint name="P"/><AccessPoint name="Q"><Server/></AccessPoint></IED>
  <IED name="B" desc="say &quot;x&quot;"><Text>a&#9;b&#x1F600;</Text></IED></SCL>)";

QByteArray Nested(int depth)
{
    return "<SCL>" + QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth) +
           "</SCL>";
}

} // namespace

class TreeCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachElementHasALine();
    void theTreeBeginsAndEndsAsAskedFor_data();
    void theTreeBeginsAndEndsAsAskedFor();
    void aPathThatLeadsNowhereHasStatus1();
    void controlCharactersAreEscaped();
    void theJsonListsTheElements();
    void theJsonGoesAsDeepAsAskedFor();
    void aVeryDeepFileIsShown_data();
    void aVeryDeepFileIsShown();
};

void TreeCommandTest::eachElementHasALine()
{
    const TempFile file(station);

    const CommandResult result = RunCommand({QStringLiteral("tree"), file.Path()});

    QCOMPARE(result.output, QString::fromUtf8("SCL\n"
                                              "  Header id=\"h\"\n"
                                              "  IED name=\"A\"\n"
                                              "    AccessPoint name=\"P\"\n"
                                              "    AccessPoint name=\"Q\"\n"
                                              "      Server\n"
                                              "  IED name=\"B\" desc=\"say \\\"x\\\"\"\n"
                                              "    Text \"a\\tb\xF0\x9F\x98\x80\"\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TreeCommandTest::theTreeBeginsAndEndsAsAskedFor_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("output");

    QTest::newRow("depth 0") << QStringList{"--depth", "0"} << "SCL ...\n";
    QTest::newRow("depth 1") << QStringList{"--depth", "1"}
                             << "SCL\n  Header id=\"h\"\n  IED name=\"A\" ...\n"
                                "  IED name=\"B\" desc=\"say \\\"x\\\"\" ...\n";
    QTest::newRow("path") << QStringList{"--path", "IED[name=A]/AccessPoint[2]"}
                          << "AccessPoint name=\"Q\"\n  Server\n";
    QTest::newRow("path and depth") << QStringList{"--path", "SCL/IED", "--depth=1"}
                                    << "IED name=\"A\"\n  AccessPoint name=\"P\"\n"
                                       "  AccessPoint name=\"Q\" ...\n";
    QTest::newRow("path of the root")
        << QStringList{"--path", "SCL", "--depth", "0"} << "SCL ...\n";
}

void TreeCommandTest::theTreeBeginsAndEndsAsAskedFor()
{
    QFETCH(const QStringList, options);
    QFETCH(const QString, output);
    const TempFile file(station);

    const CommandResult result =
        RunCommand(QStringList{QStringLiteral("tree")} + options + QStringList{file.Path()});

    QCOMPARE(result.output, output);
    QCOMPARE(result.status, 0);
}

void TreeCommandTest::aPathThatLeadsNowhereHasStatus1()
{
    const TempFile file(station);

    const CommandResult result = RunCommand(
        {QStringLiteral("tree"), file.Path(), QStringLiteral("--path"), QStringLiteral("IED[3]")});

    QCOMPARE(result.errors,
             QStringLiteral("corvane: %1: there is no element at IED[3]\n").arg(file.Path()));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void TreeCommandTest::controlCharactersAreEscaped()
{
    const TempFile file("<SCL a='&#x1B;&#10;&#x85;\\'><T>&#x202E;\n&#13;x</T></SCL>");

    const CommandResult result = RunCommand({QStringLiteral("tree"), file.Path()});

    // The reader does not take U+001B, so the command must say so and print none.
    QCOMPARE(result.status, 2);
    QVERIFY(!result.errors.contains(QChar(0x1B)));

    const TempFile legal("<SCL a='&#10;&#x85;\\'><T>&#x202E;\n&#13;x</T></SCL>");
    QCOMPARE(RunCommand({QStringLiteral("tree"), legal.Path()}).output,
             QStringLiteral("SCL a=\"\\n\\u0085\\\\\"\n  T \"\\u202e\\n\\rx\"\n"));
}

void TreeCommandTest::theJsonListsTheElements()
{
    const TempFile file("<SCL><IED name=\"A\"/><Text>x</Text></SCL>");

    const CommandResult result =
        RunCommand({QStringLiteral("tree"), QStringLiteral("--json"), file.Path()});

    const QJsonObject none;
    const QJsonArray expected{
        QJsonObject{
            {"depth", 0}, {"tag", "SCL"}, {"attributes", none}, {"value", ""}, {"children", 2}},
        QJsonObject{{"depth", 1},
                    {"tag", "IED"},
                    {"attributes", QJsonObject{{"name", "A"}}},
                    {"value", ""},
                    {"children", 0}},
        QJsonObject{
            {"depth", 1}, {"tag", "Text"}, {"attributes", none}, {"value", "x"}, {"children", 0}},
    };
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(result.output.toUtf8(), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(json.object().keys(), QStringList{"elements"});
    QCOMPARE(json.object()["elements"].toArray(), expected);
    QCOMPARE(result.status, 0);
}

void TreeCommandTest::theJsonGoesAsDeepAsAskedFor()
{
    const TempFile file(station);

    const CommandResult result = RunCommand(
        {QStringLiteral("tree"), QStringLiteral("--json"), QStringLiteral("--path"),
         QStringLiteral("IED"), QStringLiteral("--depth"), QStringLiteral("1"), file.Path()});

    QStringList tags;
    const QJsonArray elements =
        QJsonDocument::fromJson(result.output.toUtf8()).object()["elements"].toArray();
    for (const QJsonValue& element : elements)
        tags.append(element.toObject()["tag"].toString());
    QCOMPARE(tags, (QStringList{"IED", "AccessPoint", "AccessPoint"}));
}

void TreeCommandTest::aVeryDeepFileIsShown_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("lastLine");

    QTest::newRow("text") << "--depth=999999999"
                          << QString(80, QLatin1Char(' ')) + QStringLiteral("(300000) a");
    QTest::newRow("JSON") << "--json"
                          << "]}";
}

void TreeCommandTest::aVeryDeepFileIsShown()
{
    QFETCH(const QString, option);
    QFETCH(const QString, lastLine);
    const TempFile file(Nested(300000));

    const CommandResult result = RunCommand({QStringLiteral("tree"), option, file.Path()});

    QCOMPARE(result.status, 0);
    QCOMPARE(result.output.section(QLatin1Char('\n'), -2, -2), lastLine);
}

QTEST_GUILESS_MAIN(TreeCommandTest)
#include "TreeCommandTest.moc"
