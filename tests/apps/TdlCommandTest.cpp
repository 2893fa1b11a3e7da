// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

const char* const station = R"(<SCL>
  <IED name="A"><AccessPoint><Server><LDevice>
    <LN lnClass="PTRC" lnType="N"><DOI name="Tr"/><DOI name="Beh"/><DOI name="Odd"/></LN>
  </LDevice></Server></AccessPoint></IED>
  <DataTypeTemplates>
    <LNodeType id="N"><DO name="Tr" type="D"/><DO name="Beh" type="Enc"/></LNodeType>
    <DOType id="D" cdc="ACT"><DA name="q" bType="Quality"/><DA name="general" bType="BOOLEAN"/>
      <DA name="s" bType="Struct" type="Used"/><SDO name="sub" type="Enc"/></DOType>
    <DOType id="Enc" cdc="ENC"><DA name="stVal" bType="Enum" type="E"/></DOType>
    <DOType id="Both"><DA name="a" bType="INT32"/></DOType>
    <DOType id="Empty&#9;"/>
    <DOType id="Lacking"><SDO name="good" type="Enc"/><SDO name="bad" type="None"/></DOType>
    <DAType id="Used"><BDA name="f" bType="FLOAT32"/><BDA name="o\" bType="Octet64"/></DAType>
    <DAType id="Unused"><BDA name="u" bType="Struct" type="Used"/></DAType>
    <DAType id="Both"><BDA name="b" bType="INT8"/></DAType>
    <DAType id="Bare"/>
    <EnumType id="E"/>
  </DataTypeTemplates></SCL>)";

const QString lnPath = QStringLiteral("IED/AccessPoint/Server/LDevice/LN");

// Place markers in names have the whole text looked through again at each of them.
QByteArray Costly()
{
    return "<SCL><DataTypeTemplates><DAType id=\"a\">" +
           QByteArray("<BDA name=\"%9\" bType=\"INT8\"/>").repeated(8000) +
           "</DAType><DOType id=\"d\"><DA name=\"c\" bType=\"Struct\" type=\"a\"/></DOType>"
           "</DataTypeTemplates></SCL>";
}

CommandResult RunOnAttribute(const char* doName, const char* daName,
                             const QString& option = QStringLiteral("--"))
{
    return RunOn(station,
                 {QStringLiteral("tdl"), QStringLiteral("--ln"), lnPath, QStringLiteral("--do"),
                  QLatin1String(doName), QStringLiteral("--da"), QLatin1String(daName), option});
}

} // namespace

class TdlCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTypeHasAText_data();
    void aTypeHasAText();
    void theJsonTellsTheKind_data();
    void theJsonTellsTheKind();
    void aTypeWithoutTextHasStatus1_data();
    void aTypeWithoutTextHasStatus1();
    void aTypeThatGrowsTooLargeHasStatus1_data();
    void aTypeThatGrowsTooLargeHasStatus1();
    void anAttributeHasAWord_data();
    void anAttributeHasAWord();
    void theJsonOfAnAttributeTellsTheWord();
    void anAttributeWithoutWordHasStatus1_data();
    void anAttributeWithoutWordHasStatus1();
    void aPathThatLeadsNowhereHasStatus1();
    void theSampleHasTexts_data();
    void theSampleHasTexts();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void TdlCommandTest::aTypeHasAText_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("text");

    QTest::newRow("DOType") << "Enc"
                            << "{(stVal)Byte}";
    QTest::newRow("DOType with structures")
        << "D"
        << "{(sub){(stVal)Byte},(q)BVstring13,(general)Bool,(s){(f)Float,(o\\\\)Ostring64}}";
    QTest::newRow("DAType") << "Used"
                            << "{(f)Float,(o\\\\)Ostring64}";
    QTest::newRow("DAType that nothing refers to") << "Unused"
                                                   << "{(u){(f)Float,(o\\\\)Ostring64}}";
    QTest::newRow("id of both kinds") << "Both"
                                      << "{(a)Long}";
}

void TdlCommandTest::aTypeHasAText()
{
    QFETCH(const QString, id);
    QFETCH(const QString, text);

    const CommandResult result = RunOn(station, {QStringLiteral("tdl"), id});

    QCOMPARE(result.output, text + QLatin1Char('\n'));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TdlCommandTest::theJsonTellsTheKind_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QJsonObject>("json");

    QTest::newRow("DOType") << "Enc"
                            << QJsonObject{
                                   {"kind", "DOType"}, {"id", "Enc"}, {"tdl", "{(stVal)Byte}"}};
    QTest::newRow("DAType") << "Used"
                            << QJsonObject{{"kind", "DAType"},
                                           {"id", "Used"},
                                           {"tdl", "{(f)Float,(o\\)Ostring64}"}};
}

void TdlCommandTest::theJsonTellsTheKind()
{
    QFETCH(const QString, id);
    QFETCH(const QJsonObject, json);

    const CommandResult result =
        RunOn(station, {QStringLiteral("tdl"), id, QStringLiteral("--json")});

    QCOMPARE(JsonOf(result), json);
    QCOMPARE(result.status, 0);
}

void TdlCommandTest::aTypeWithoutTextHasStatus1_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown") << "None\t"
                             << "there is no DOType or DAType 'None\\t'";
    QTest::newRow("other kind") << "E"
                                << "there is no DOType or DAType 'E'";
    QTest::newRow("DOType without members")
        << "Empty\t"
        << "the DOType 'Empty\\t' has no TDL type: it has neither SDO nor DA";
    QTest::newRow("SDO without type")
        << "Lacking"
        << "the DOType 'Lacking' has no TDL type: its SDO 'bad' refers to no DOType";
    QTest::newRow("DAType without members") << "Bare"
                                            << "the DAType 'Bare' has no TDL type: it has no BDA";
}

void TdlCommandTest::aTypeWithoutTextHasStatus1()
{
    QFETCH(const QString, id);
    QFETCH(const QString, reason);

    const CommandResult result =
        RunOn(station, {QStringLiteral("tdl"), id, QStringLiteral("--json")});

    QCOMPARE(ReasonOf(result), reason);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void TdlCommandTest::aTypeThatGrowsTooLargeHasStatus1_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("reason");

    QTest::newRow("DOType") << "d"
                            << "the DOType 'd' has no TDL type: it is too large";
    QTest::newRow("DAType") << "a"
                            << "the DAType 'a' has no TDL type: it is too large";
}

void TdlCommandTest::aTypeThatGrowsTooLargeHasStatus1()
{
    QFETCH(const QString, id);
    QFETCH(const QString, reason);

    const CommandResult result = RunOn(Costly(), {QStringLiteral("tdl"), id});

    QCOMPARE(ReasonOf(result), reason);
    QCOMPARE(result.status, 1);
}

void TdlCommandTest::anAttributeHasAWord_data()
{
    QTest::addColumn<QByteArray>("doName");
    QTest::addColumn<QByteArray>("daName");
    QTest::addColumn<QString>("output");

    QTest::newRow("ACT") << QByteArray("Tr") << QByteArray("general") << "Type: Bool\nACT:  yes\n";
    QTest::newRow("in a structure")
        << QByteArray("Tr") << QByteArray("s.f") << "Type: Float\nACT:  yes\n";
    QTest::newRow("other class") << QByteArray("Beh") << QByteArray("stVal")
                                 << "Type: Byte\nACT:  no\n";
    QTest::newRow("sub data object")
        << QByteArray("Tr.sub") << QByteArray("stVal") << "Type: Byte\nACT:  no\n";
}

void TdlCommandTest::anAttributeHasAWord()
{
    QFETCH(const QByteArray, doName);
    QFETCH(const QByteArray, daName);
    QFETCH(const QString, output);

    const CommandResult result = RunOnAttribute(doName.constData(), daName.constData());

    QCOMPARE(result.output, output);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TdlCommandTest::theJsonOfAnAttributeTellsTheWord()
{
    const CommandResult result = RunOnAttribute("Tr", "q", QStringLiteral("--json"));

    QCOMPARE(JsonOf(result),
             (QJsonObject{
                 {"ln", lnPath}, {"do", "Tr"}, {"da", "q"}, {"tdl", "BVstring13"}, {"act", true}}));
    QCOMPARE(result.status, 0);
}

void TdlCommandTest::anAttributeWithoutWordHasStatus1_data()
{
    QTest::addColumn<QByteArray>("doName");
    QTest::addColumn<QByteArray>("daName");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* doName, const char* daName,
                        const QString& reason) {
        QTest::newRow(name) << QByteArray(doName) << QByteArray(daName) << reason;
    };
    row("no DOI", "None\t.sub", "q", QStringLiteral("there is no DOI 'None\\t' at ") + lnPath);
    row("no DO", "Odd", "q",
        QStringLiteral("the templates have no data object 'Odd' for ") + lnPath);
    row("no SDO", "Tr.none", "q",
        QStringLiteral("the templates have no data object 'Tr.none' for ") + lnPath);
    row("no DA", "Tr", "none",
        QStringLiteral("the data object 'Tr' has no attribute 'none' with a TDL word"));
    row("structure", "Tr", "s",
        QStringLiteral("the data object 'Tr' has no attribute 's' with a TDL word"));
}

void TdlCommandTest::anAttributeWithoutWordHasStatus1()
{
    QFETCH(const QByteArray, doName);
    QFETCH(const QByteArray, daName);
    QFETCH(const QString, reason);

    const CommandResult result = RunOnAttribute(doName.constData(), daName.constData());

    QCOMPARE(ReasonOf(result), reason);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 1);
}

void TdlCommandTest::aPathThatLeadsNowhereHasStatus1()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("tdl"), QStringLiteral("--ln=IED[2]"),
                        QStringLiteral("--do=Tr"), QStringLiteral("--da=q")});

    QCOMPARE(ReasonOf(result), QStringLiteral("there is no element at IED[2]"));
    QCOMPARE(result.status, 1);
}

void TdlCommandTest::theSampleHasTexts_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("output");

    const QString ln = QStringLiteral("--ln=IED[name=E01F1]/AccessPoint[name=S1]/Server/");
    QTest::newRow("spare DAType") << QStringList{"Curve_Spare"} << "{(crvArray)Vstring255}\n";
    QTest::newRow("switch position")
        << QStringList{ln + "LDevice[inst=CTRL]/LN[lnClass=CSWI]", "--do=Pos", "--da=stVal"}
        << "Type: Bstring2\nACT:  no\n";
    QTest::newRow("trip") << QStringList{ln + "LDevice[inst=PROT]/LN[lnClass=PTRC]", "--do=Tr",
                                         "--da=general"}
                          << "Type: Bool\nACT:  yes\n";
}

void TdlCommandTest::theSampleHasTexts()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, output);

    const CommandResult result =
        RunCommand(QStringList{QStringLiteral("tdl"), SampleStation()} + arguments);

    QCOMPARE(result.output, output);
    QCOMPARE(result.status, 0);
}

void TdlCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("tdl"),
                {"--ln <P>", "--do <NAME>", "--da <NAME>", "--json", "FILE", "[TYPE-ID]"});
}

void TdlCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const char* arguments, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(reason);
    };
    row("no file", "tdl", "no file is given");
    row("empty file", "tdl @ T", "the name of a file is empty");
    row("empty type", "tdl a @", "the argument TYPE-ID is empty");
    row("two types", "tdl a T U", "more than one TYPE-ID is given");
    row("nothing asked for", "tdl a", "neither a TYPE-ID nor --ln, --do and --da are given");
    row("type and options", "tdl a T --do D", "--ln, --do and --da do not go with a TYPE-ID");
    row("no node", "tdl a --do D --da d", "the option --ln is missing");
    row("no data object", "tdl a --ln L --da d", "the option --do is missing");
    row("no attribute", "tdl a --ln L --do D", "the option --da is missing");
    row("empty data object", "tdl a --ln L --do @ --da d", "the option --do has an empty value");
    row("two nodes", "tdl a --ln L --ln M --do D --da d", "the option --ln is given twice");
    row("wrong path", "tdl a --ln L[ --do D --da d",
        "the path is wrong: an attribute or a position is missing at character 3");
}

void TdlCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(TdlCommandTest)
#include "TdlCommandTest.moc"
