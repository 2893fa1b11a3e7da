// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

using namespace Corvane::Test;

namespace
{

// A uses all but what has "Spare" in its id; B uses nothing but NB.
const char* const station = R"(<SCL>
  <IED name="A"><AccessPoint><Server><LDevice><LN0 lnType="NA"/></LDevice></Server></AccessPoint></IED>
  <IED name="B"><AccessPoint><Server><LDevice><LN lnType="NB"/></LDevice></Server></AccessPoint></IED>
  <IED name="C&#9;"/>
  <DataTypeTemplates>
    <LNodeType id="NA"><DO name="d" type="D1"/></LNodeType>
    <LNodeType id="NB"/>
    <LNodeType id="Spare&#9;N"/>
    <DOType id="D2"><DA bType="Struct" type="S"/></DOType>
    <DOType id="D1"><SDO type="D2"/></DOType>
    <DAType id="S"><BDA bType="Enum" type="E"/></DAType>
    <DAType id="SpareS"/>
    <EnumType id="E"/>
    <EnumType id="SpareE"/>
  </DataTypeTemplates></SCL>)";

QJsonObject Ids(const QStringList& nodes, const QStringList& dataObjects,
                const QStringList& attributes, const QStringList& enums)
{
    return {{"LNodeType", QJsonArray::fromStringList(nodes)},
            {"DOType", QJsonArray::fromStringList(dataObjects)},
            {"DAType", QJsonArray::fromStringList(attributes)},
            {"EnumType", QJsonArray::fromStringList(enums)}};
}

QString IedOption(const char* name)
{
    return QStringLiteral("--ied=") + QLatin1String(name);
}

} // namespace

class TypesCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextListsWhatIsUsedAndWhatIsNot();
    void theTextNamesTheIeds();
    void theJsonGoesByTheIeds_data();
    void theJsonGoesByTheIeds();
    void allIedsOfANameCount();
    void ofTwoTemplatesWithOneIdTheSecondIsUnused();
    void anIedThatIsNotThereIsAWrongUse();
    void withoutTemplatesNothingIsListed();
    void theSampleHasThreeSpareTemplates();
    void allTemplatesOfTheSampleAreListedOnce();
    void theHelpTellsTheOptions();
    void wrongUseHasStatus2_data();
    void wrongUseHasStatus2();
};

void TypesCommandTest::theTextListsWhatIsUsedAndWhatIsNot()
{
    const CommandResult result = RunOn(station, {QStringLiteral("types")});

    QCOMPARE(result.output, QStringLiteral("Used by the IEDs of the file:\n"
                                           "  LNodeType: 2\n"
                                           "    NA\n"
                                           "    NB\n"
                                           "  DOType: 2\n"
                                           "    D1\n"
                                           "    D2\n"
                                           "  DAType: 1\n"
                                           "    S\n"
                                           "  EnumType: 1\n"
                                           "    E\n"
                                           "Used by no IED of the file:\n"
                                           "  LNodeType: 1\n"
                                           "    Spare\\tN\n"
                                           "  DOType: 0\n"
                                           "  DAType: 1\n"
                                           "    SpareS\n"
                                           "  EnumType: 1\n"
                                           "    SpareE\n"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TypesCommandTest::theTextNamesTheIeds()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("types"), IedOption("B"), IedOption("C\t")});

    QCOMPARE(result.output.section(QLatin1Char('\n'), 0, 2),
             QStringLiteral("Used by B, C\\t:\n  LNodeType: 1\n    NB"));
}

void TypesCommandTest::theJsonGoesByTheIeds_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("ieds");
    QTest::addColumn<QJsonObject>("used");

    QTest::newRow("all") << QStringList() << QStringList{"A", "B", "C\t"}
                         << Ids({"NA", "NB"}, {"D1", "D2"}, {"S"}, {"E"});
    QTest::newRow("one") << QStringList{IedOption("B")} << QStringList{"B"}
                         << Ids({"NB"}, {}, {}, {});
    QTest::newRow("without nodes")
        << QStringList{IedOption("C\t")} << QStringList{"C\t"} << Ids({}, {}, {}, {});
    QTest::newRow("two in another order")
        << QStringList{IedOption("B"), IedOption("A")} << QStringList{"A", "B"}
        << Ids({"NA", "NB"}, {"D1", "D2"}, {"S"}, {"E"});
    QTest::newRow("one twice") << QStringList{IedOption("B"), IedOption("B")} << QStringList{"B"}
                               << Ids({"NB"}, {}, {}, {});
}

void TypesCommandTest::theJsonGoesByTheIeds()
{
    QFETCH(const QStringList, options);
    QFETCH(const QStringList, ieds);
    QFETCH(const QJsonObject, used);
    const TempFile file(station);

    const CommandResult result = RunCommand(
        QStringList{QStringLiteral("types"), QStringLiteral("--json"), file.Path()} + options);

    // What no IED uses stays the same, whichever IEDs are asked for.
    const QJsonObject expected{{"file", file.Path()},
                               {"ieds", QJsonArray::fromStringList(ieds)},
                               {"used", used},
                               {"unused", Ids({"Spare\tN"}, {}, {"SpareS"}, {"SpareE"})}};
    QCOMPARE(JsonOf(result), expected);
    QCOMPARE(result.status, 0);
}

void TypesCommandTest::allIedsOfANameCount()
{
    QByteArray text = station;
    text.replace("name=\"B\"", "name=\"A\"");

    const CommandResult result =
        RunOn(text, {QStringLiteral("types"), QStringLiteral("--json"), IedOption("A")});

    QCOMPARE(JsonOf(result)["ieds"].toArray(), (QJsonArray{"A", "A"}));
    QCOMPARE(JsonOf(result)["used"].toObject()["LNodeType"].toArray(), (QJsonArray{"NA", "NB"}));
}

void TypesCommandTest::ofTwoTemplatesWithOneIdTheSecondIsUnused()
{
    QByteArray text = station;
    text.replace("SpareE", "E");

    const QJsonObject json =
        JsonOf(RunOn(text, {QStringLiteral("types"), QStringLiteral("--json")}));

    QCOMPARE(json["used"].toObject()["EnumType"].toArray(), QJsonArray{"E"});
    QCOMPARE(json["unused"].toObject()["EnumType"].toArray(), QJsonArray{"E"});
}

void TypesCommandTest::anIedThatIsNotThereIsAWrongUse()
{
    const CommandResult result =
        RunOn(station, {QStringLiteral("types"), IedOption("A"), IedOption("X\t")});

    QCOMPARE(result.errors, QStringLiteral("corvane: types: there is no IED 'X\\t'\n"
                                           "corvane: try 'corvane types --help'\n"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 2);
}

void TypesCommandTest::withoutTemplatesNothingIsListed()
{
    const QJsonObject json =
        JsonOf(RunOn("<SCL/>", {QStringLiteral("types"), QStringLiteral("--json")}));

    QCOMPARE(json["ieds"].toArray(), QJsonArray());
    QCOMPARE(json["used"].toObject(), Ids({}, {}, {}, {}));
    QCOMPARE(json["unused"].toObject(), Ids({}, {}, {}, {}));
}

void TypesCommandTest::theSampleHasThreeSpareTemplates()
{
    const CommandResult result =
        RunCommand({QStringLiteral("types"), QStringLiteral("--json"), SampleStation()});

    QCOMPARE(JsonOf(result)["unused"].toObject(),
             Ids({"EX_YLTC_Spare"}, {}, {"Curve_Spare"}, {"TapStateKind_Spare"}));
    QCOMPARE(result.status, 0);
}

void TypesCommandTest::allTemplatesOfTheSampleAreListedOnce()
{
    const QString text = QString::fromUtf8(ReadFile(SampleStation()));
    const QJsonObject json =
        JsonOf(RunCommand({QStringLiteral("types"), QStringLiteral("--json"), SampleStation()}));

    for (const char* kind : {"LNodeType", "DOType", "DAType", "EnumType"}) {
        QStringList ids;
        const QRegularExpression start(
            QStringLiteral("<%1\\s[^>]*\\bid=\"([^\"]*)\"").arg(QLatin1String(kind)));
        auto matches = start.globalMatch(text);
        while (matches.hasNext())
            ids.append(matches.next().captured(1));
        QVERIFY(!ids.isEmpty());
        QStringList listed;
        for (const char* list : {"used", "unused"}) {
            const QJsonArray array =
                json[QLatin1String(list)].toObject()[QLatin1String(kind)].toArray();
            for (const auto& id : array)
                listed.append(id.toString());
        }
        ids.sort();
        listed.sort();
        QCOMPARE(listed, ids);
    }
}

void TypesCommandTest::theHelpTellsTheOptions()
{
    CompareHelp(QStringLiteral("types"), {"--ied <NAME>", "--json", "FILE"});
}

void TypesCommandTest::wrongUseHasStatus2_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no file") << "types --ied A"
                             << "no file is given";
    QTest::newRow("two files") << "types a b"
                               << "more than one file is given";
    QTest::newRow("empty name") << "types --ied A --ied @ a"
                                << "the option --ied has an empty value";
    QTest::newRow("no name") << "types a --ied"
                             << "Missing value after '--ied'.";
    QTest::newRow("unknown option") << "types --path A a"
                                    << "Unknown option 'path'.";
}

void TypesCommandTest::wrongUseHasStatus2()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);
    CompareWrongUse(arguments, reason);
}

QTEST_GUILESS_MAIN(TypesCommandTest)
#include "TypesCommandTest.moc"
