// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"
#include "tests/support/ImageBytes.h"

using namespace Corvane::Test;

class UnpackCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStationStandsInSchemaOrder();
    void theSampleComesBackAsFormatWritesIt();
    void aDamagedImageIsRefusedWithTheOffset_data();
    void aDamagedImageIsRefusedWithTheOffset();
    void anImageOfNoStationIsRefused();
    void anImageThatXmlCannotHoldIsRefused();
    void withoutASchemaNothingIsWritten_data();
    void withoutASchemaNothingIsWritten();
    void anImageThatIsNotThereIsTold();
    void wrongUseIsTold_data();
    void wrongUseIsTold();
    void helpNamesTheOptions();

private:
    CommandResult Unpack(const QString& image, const QString& station) const
    {
        return RunCommand({"unpack", image, "--schema", m_folder.Schema(), "-o", station});
    }
    QString Packed(const QString& station) const
    {
        const QString image = m_folder.Path("packed.image");
        const CommandResult result = RunCommand({"pack", station, "-o", image});
        if (result.status != 0)
            qFatal("%s", qPrintable(result.errors));
        return image;
    }

    CommandFolder m_folder;
};

void UnpackCommandTest::theStationStandsInSchemaOrder()
{
    const QString image = Packed(m_folder.Write("in.scd", SmallStation()));
    const QString station = m_folder.Path("out.scd");

    const CommandResult result = Unpack(image, station);

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(station), SmallStationSaved("out"));
}

void UnpackCommandTest::theSampleComesBackAsFormatWritesIt()
{
    const QString schema = QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd");
    const TempFolder folder;
    const QString formatted = folder.Path("a.scd");
    const QString image = Packed(SampleStation());
    QCOMPARE(RunCommand({"format", SampleStation(), "--schema", schema, "-o", formatted}).status,
             0);
    const QByteArray expected = ReadFile(formatted);

    QCOMPARE(RunCommand({"unpack", image, "--schema", schema, "-o", formatted}).status, 0);

    QVERIFY(!expected.isEmpty());
    QVERIFY(ReadFile(formatted) == expected);
}

void UnpackCommandTest::aDamagedImageIsRefusedWithTheOffset_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("reason");
    const QString head = QStringLiteral("is no image or a damaged one, at offset ");
    QTest::newRow("empty") << QByteArray() << head + "0: The image ends before its record does.";
    QTest::newRow("a station") << SmallStation()
                               << head + "0: A text is longer than the rest of the image.";
    QTest::newRow("cut") << Head("SCL", 0).chopped(1)
                         << head + "18: The image ends before its record does.";
    QTest::newRow("a count of two billion")
        << Head("SCL", 0x7FFFFFFF)
        << head + "18: A count promises more than the rest of the image can hold.";
    QTest::newRow("bytes behind") << Head("SCL", 0) + "x"
                                  << head + "22: Bytes follow behind the record.";
}

void UnpackCommandTest::aDamagedImageIsRefusedWithTheOffset()
{
    QFETCH(const QByteArray, image);
    QFETCH(const QString, reason);
    const QString station = m_folder.Write("kept.scd", "old");

    const CommandResult result = Unpack(m_folder.Write("damaged.image", image), station);

    QCOMPARE(ReasonOf(result), reason);
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(station), QByteArray("old"));
}

void UnpackCommandTest::anImageOfNoStationIsRefused()
{
    const QString station = m_folder.Write("kept.scd", "old");

    const CommandResult result =
        Unpack(m_folder.Write("private.image", Head("Private", 0)), station);

    QCOMPARE(ReasonOf(result), QString("is the image of no station: its root is not SCL"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(station), QByteArray("old"));
}

// The check looks at lengths and counts alone; what was written is read back.
void UnpackCommandTest::anImageThatXmlCannotHoldIsRefused()
{
    const QString station = m_folder.Write("kept.scd", "old");
    const QByteArray image = Head("SCL", 1) + Head("no name", 0);

    const CommandResult result = Unpack(m_folder.Write("odd.image", image), station);

    QVERIFY2(result.errors.startsWith("corvane: " + station + ": what was written "),
             qPrintable(result.errors));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(station), QByteArray("old"));
}

void UnpackCommandTest::withoutASchemaNothingIsWritten_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("a station") << SmallStation();
}

void UnpackCommandTest::withoutASchemaNothingIsWritten()
{
    QFETCH(const QByteArray, schema);
    const TempFolder folder;
    const QString schemaFile = folder.Path("x.xsd");
    if (!schema.isNull())
        WriteFile(schemaFile, schema);
    const QString image = folder.Write("a.image", Head("SCL", 0));
    const QString station = folder.Path("out.scd");

    const CommandResult result =
        RunCommand({"unpack", "--schema", schemaFile, image, "-o", station});

    QVERIFY(result.errors.startsWith("corvane: " + schemaFile + ": "));
    QCOMPARE(result.status, 2);
    QVERIFY(!QFile::exists(station));
}

void UnpackCommandTest::anImageThatIsNotThereIsTold()
{
    const QString image = m_folder.Path("missing.image");

    const CommandResult result = Unpack(image, m_folder.Path("none.scd"));

    QVERIFY2(result.errors.startsWith("corvane: " + image + ": "), qPrintable(result.errors));
    QCOMPARE(result.status, 2);
}

void UnpackCommandTest::wrongUseIsTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no schema") << "unpack a -o b"
                               << "the option --schema is missing";
    QTest::newRow("no output") << "unpack a --schema s"
                               << "the option -o is missing";
    QTest::newRow("no file") << "unpack --schema s -o b"
                             << "no file is given";
}

void UnpackCommandTest::wrongUseIsTold()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);

    CompareWrongUse(arguments, reason);
}

void UnpackCommandTest::helpNamesTheOptions()
{
    CompareHelp("unpack", {"FILE", "--schema", "--output"});
}

QTEST_GUILESS_MAIN(UnpackCommandTest)
#include "UnpackCommandTest.moc"
