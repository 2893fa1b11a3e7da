// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

const char* const station = R"(<SCL><Header id="h"/>
  <IED name="A" desc="Bay&#9;1"><AccessPoint name="S"><Server>
    <LDevice inst="L"><LN0 lnClass="LLN0"><GSEControl name="g"/></LN0></LDevice>
  </Server></AccessPoint></IED></SCL>)";

QByteArray Nested(const QByteArray& tag, int depth)
{
    return "<SCL>" + ("<" + tag + " name=\"x\">").repeated(depth) +
           ("</" + tag + ">").repeated(depth) + "</SCL>";
}

QStringList Texts(const QJsonArray& elements, const char* member)
{
    QStringList texts;
    for (const auto& element : elements)
        texts.append(element.toObject()[QLatin1String(member)].toString());
    return texts;
}

} // namespace

class NamesCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachElementWithANameIsListed();
    void theJsonListsTheNames();
    void aPathGivesOneElement_data();
    void aPathGivesOneElement();
    void theJsonOfAPathHasOneElement();
    void aPathWithoutNameHasStatus1_data();
    void aPathWithoutNameHasStatus1();
    void theListingLeavesOutWhatGrowsTooLong_data();
    void theListingLeavesOutWhatGrowsTooLong();
    void whatComesAfterALongNameIsListed();
    void aPathGivesWhatTheListingLeavesOut();
    void theSampleNamesItsControlBlocks();
    void eachPathOfTheSampleLeadsToTheSameNames();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void NamesCommandTest::eachElementWithANameIsListed()
{
    const CommandResult result = RunOn(station, {QStringLiteral("names")});

    QCOMPARE(result.output,
             QStringLiteral(
                 "SCL/IED\n"
                 "  info:      IED name = A\n"
                 "  label:     A:Bay\\t1\n"
                 "SCL/IED/AccessPoint\n"
                 "  info:      IED name = A, AccessPoint name = S\n"
                 "  label:     S\n"
                 "SCL/IED/AccessPoint/Server/LDevice\n"
                 "  info:      IED name = A, AccessPoint name = S, LDevice inst = L\n"
                 "  label:     L\n"
                 "SCL/IED/AccessPoint/Server/LDevice/LN0\n"
                 "  info:      IED name = A, AccessPoint name = S, LDevice inst = L, LN = LLN0\n"
                 "  reference: AL/LLN0\n"
                 "  MMS:       AL/LLN0\n"
                 "  label:     LLN0\n"
                 "SCL/IED/AccessPoint/Server/LDevice/LN0/GSEControl\n"
                 "  info:      IED name = A, AccessPoint name = S, LDevice inst = L, LN = LLN0, "
                 "GSEControl name = g\n"
                 "  reference: AL/LLN0.g\n"
                 "  MMS:       AL/LLN0$GO$g\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void NamesCommandTest::theJsonListsTheNames()
{
    const CommandResult result = RunOn(R"(<SCL><Header/><IED name="A" desc="&#9;"/></SCL>)",
                                       {QStringLiteral("names"), QStringLiteral("--json")});

    const QJsonObject ied{{"path", "SCL/IED"},
                          {"info", "IED name = A"},
                          {"reference", ""},
                          {"mmsReference", ""},
                          {"label", "A:\t"}};
    QCOMPARE(JsonOf(result), (QJsonObject{{"elements", QJsonArray{ied}}}));
    QCOMPARE(result.status, 0);
}

void NamesCommandTest::aPathGivesOneElement_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("output");

    QTest::newRow("by name") << "IED[name=A]/AccessPoint"
                             << "SCL/IED/AccessPoint\n"
                                "  info:      IED name = A, AccessPoint name = S\n"
                                "  label:     S\n";
    QTest::newRow("control block")
        << "SCL/IED/AccessPoint/Server/LDevice/LN0/GSEControl"
        << "SCL/IED/AccessPoint/Server/LDevice/LN0/GSEControl\n"
           "  info:      IED name = A, AccessPoint name = S, LDevice inst = L, LN = LLN0, "
           "GSEControl name = g\n"
           "  reference: AL/LLN0.g\n"
           "  MMS:       AL/LLN0$GO$g\n";
}

void NamesCommandTest::aPathGivesOneElement()
{
    QFETCH(const QString, path);
    QFETCH(const QString, output);

    const CommandResult result =
        RunOn(station, {QStringLiteral("names"), QStringLiteral("--path"), path});

    QCOMPARE(result.output, output);
    QCOMPARE(result.status, 0);
}

void NamesCommandTest::theJsonOfAPathHasOneElement()
{
    const CommandResult result = RunOn(station, {QStringLiteral("names"), QStringLiteral("--json"),
                                                 QStringLiteral("--path"), QStringLiteral("IED")});

    QCOMPARE(Texts(JsonOf(result)["elements"].toArray(), "path"), QStringList("SCL/IED"));
    QCOMPARE(result.status, 0);
}

void NamesCommandTest::aPathWithoutNameHasStatus1_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no element") << "IED[2]"
                                << "there is no element at IED[2]";
    QTest::newRow("no name") << "Header"
                             << "the element has no name at Header";
    QTest::newRow("control characters") << "IED[name=\n]"
                                        << "there is no element at IED[name=\\n]";
}

void NamesCommandTest::aPathWithoutNameHasStatus1()
{
    QFETCH(const QString, path);
    QFETCH(const QString, reason);

    const CommandResult result =
        RunOn(station, {QStringLiteral("names"), QStringLiteral("--path"), path});

    QCOMPARE(ReasonOf(result), reason);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void NamesCommandTest::theListingLeavesOutWhatGrowsTooLong_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("leftOut");

    // A path of 1000 characters has 249 steps behind the root.
    QTest::newRow("deep instances") << Nested("SDI", 300000) << 300000 - 249;
    QTest::newRow("deep devices") << Nested("LDevice", 1000) << 1000 - 124;
    QTest::newRow("deep, without names") << Nested("SDX", 300000) << 300000 - 249;
    QTest::newRow("wide below a long name")
        << "<SCL><IED name=\"" + QByteArray(5000, 'x') + "\">" +
               QByteArray("<AccessPoint/>").repeated(100) + "</IED></SCL>"
        << 101;
}

void NamesCommandTest::theListingLeavesOutWhatGrowsTooLong()
{
    QFETCH(const QByteArray, text);
    QFETCH(const int, leftOut);

    const CommandResult result = RunOn(text, {QStringLiteral("names")});

    QCOMPARE(
        ReasonOf(result),
        QStringLiteral("%1 elements are left out: their paths or names are too long for a list")
            .arg(leftOut));
    QVERIFY(result.output.size() < 1000000);
    QCOMPARE(result.status, 1);
}

void NamesCommandTest::whatComesAfterALongNameIsListed()
{
    const CommandResult result = RunOn("<SCL><IED name=\"" + QByteArray(5000, 'x') +
                                           "\"><AccessPoint/></IED><IED name=\"B\"/></SCL>",
                                       {QStringLiteral("names"), QStringLiteral("--json")});

    QCOMPARE(Texts(JsonOf(result)["elements"].toArray(), "path"), QStringList("SCL/IED[2]"));
    QCOMPARE(result.status, 1);
}

void NamesCommandTest::aPathGivesWhatTheListingLeavesOut()
{
    const QString name(5000, QLatin1Char('x'));

    const CommandResult result =
        RunOn("<SCL><IED name=\"" + name.toUtf8() + "\"/></SCL>",
              {QStringLiteral("names"), QStringLiteral("--path"), QStringLiteral("IED")});

    QCOMPARE(result.output, QStringLiteral("SCL/IED\n  info:      IED name = %1\n"
                                           "  label:     %1\n")
                                .arg(name));
    QCOMPARE(result.status, 0);
}

void NamesCommandTest::theSampleNamesItsControlBlocks()
{
    const QJsonArray elements = JsonOf(RunCommand(
        {QStringLiteral("names"), QStringLiteral("--json"), SampleStation()}))["elements"]
                                    .toArray();

    QStringList controlBlocks;
    const QStringList references = Texts(elements, "mmsReference");
    for (const QString& reference : references) {
        if (reference.contains(QLatin1Char('$')))
            controlBlocks.append(reference);
    }
    controlBlocks.sort();
    QCOMPARE(controlBlocks, (QStringList{"E01F1CTRL/LLN0$GO$gocbILK", "E01F1MEAS/LLN0$GO$gocbMEAS",
                                         "E01F1PIGO/LLN0$GO$gocb0", "E01U1MU01/LLN0$MS$smvcb0",
                                         "E01U1RPIT/LLN0$GO$gocb0", "E01U1RPIT/LLN0$GO$gocb1",
                                         "E02F1CTRL/LLN0$GO$gocbILK", "E02F1PIGO/LLN0$GO$gocb0",
                                         "E02U1MU01/LLN0$MS$smvcb0", "E02U1RPIT/LLN0$GO$gocb0",
                                         "E02U1RPIT/LLN0$GO$gocb1"}));
}

void NamesCommandTest::eachPathOfTheSampleLeadsToTheSameNames()
{
    const QJsonArray elements = JsonOf(RunCommand(
        {QStringLiteral("names"), QStringLiteral("--json"), SampleStation()}))["elements"]
                                    .toArray();
    QVERIFY(elements.size() > 2000);
    for (int i = 0; i < elements.size(); i += 200) {
        const CommandResult one =
            RunCommand({QStringLiteral("names"), QStringLiteral("--json"), QStringLiteral("--path"),
                        elements[i].toObject()["path"].toString(), SampleStation()});
        QCOMPARE(JsonOf(one)["elements"].toArray(), QJsonArray{elements[i]});
    }
}

void NamesCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("names"), {"--path <P>", "--json", "FILE"});
}

void NamesCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no file") << "names"
                             << "no file is given";
    QTest::newRow("two files") << "names a b"
                               << "more than one file is given";
    QTest::newRow("empty path") << "names --path @ a"
                                << "the option --path has an empty value";
    QTest::newRow("two paths") << "names --path A --path B a"
                               << "the option --path is given twice";
    QTest::newRow("wrong path") << "names --path A] a"
                                << "the path is wrong: '/' or '[' is missing at character 2";
    QTest::newRow("unknown option") << "names --depth 1 a"
                                    << "Unknown option 'depth'.";
}

void NamesCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(NamesCommandTest)
#include "NamesCommandTest.moc"
