// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

#include <corvane/documents/SCLBinaryCheck.h>
#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>

#include <sys/resource.h>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

CommandResult Pack(const QString& station, const QString& image,
                   const std::function<void()>& setUp = {})
{
    return RunCommand({"pack", station, "-o", image}, setUp);
}

/// What the library itself makes of a station file.
QByteArray ImageOf(const QString& station)
{
    SCLDocControl control;
    SCLDocument* document = control.OpenDocument(station, false);
    return document ? document->WriteBinary() : QByteArray();
}

} // namespace

class PackCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theImageIsThatOfTheLibrary();
    void theSampleIsPackedWhole();
    void anOldImageIsReplaced();
    void inputAndOutputMayBeOneFile();
    void aStationThatCannotBeReadLeavesTheOutputAlone_data();
    void aStationThatCannotBeReadLeavesTheOutputAlone();
    void anImageThatCannotBeWrittenLeavesTheOldOne();
    void wrongUseIsTold_data();
    void wrongUseIsTold();
    void helpNamesTheOptions();

private:
    TempFolder m_folder;
};

void PackCommandTest::theImageIsThatOfTheLibrary()
{
    const QString station = m_folder.Write("small.scd", SmallStation());
    const QString image = m_folder.Path("small.image");

    const CommandResult result = Pack(station, image);

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
    QVERIFY(!ReadFile(image).isEmpty());
    QCOMPARE(ReadFile(image), ImageOf(station));
    QCOMPARE(ReadFile(station), SmallStation());
}

void PackCommandTest::theSampleIsPackedWhole()
{
    const QString image = m_folder.Path("sample.image");

    QCOMPARE(Pack(SampleStation(), image).status, 0);

    QVERIFY(SCLBinaryCheck::Of(ReadFile(image)).IsWhole());
    QVERIFY(ReadFile(image) == ImageOf(SampleStation()));
}

void PackCommandTest::anOldImageIsReplaced()
{
    const QString station = m_folder.Write("new.scd", SmallStation());
    const QString image = m_folder.Write("old.image", QByteArray(100000, 'x'));

    QCOMPARE(Pack(station, image).status, 0);

    QCOMPARE(ReadFile(image), ImageOf(station));
}

void PackCommandTest::inputAndOutputMayBeOneFile()
{
    const QString file = m_folder.Write("same.scd", SmallStation());
    const QByteArray image = ImageOf(file);

    QCOMPARE(Pack(file, file).status, 0);

    QCOMPARE(ReadFile(file), image);
}

void PackCommandTest::aStationThatCannotBeReadLeavesTheOutputAlone_data()
{
    QTest::addColumn<QByteArray>("station");
    QTest::addColumn<QString>("reason");
    QTest::newRow("cut") << QByteArray("<SCL>\n<IED>") << "Row 2, Col ";
    QTest::newRow("no station") << QByteArray("<other/>") << "Row 1, Col ";
}

void PackCommandTest::aStationThatCannotBeReadLeavesTheOutputAlone()
{
    QFETCH(const QByteArray, station);
    QFETCH(const QString, reason);
    const QString file = m_folder.Write("broken.scd", station);
    const QString image = m_folder.Write("kept.image", "old");

    const CommandResult result = Pack(file, image);

    QVERIFY2(ReasonOf(result).startsWith(reason), qPrintable(result.errors));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(image), QByteArray("old"));
}

void PackCommandTest::anImageThatCannotBeWrittenLeavesTheOldOne()
{
    const QString image = m_folder.Write("limited.image", "old");
    const auto limit = [] {
        const rlimit size{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &size);
    };

    const CommandResult result = Pack(SampleStation(), image, limit);

    QVERIFY2(result.errors.startsWith("corvane: " + image + ": cannot be written"),
             qPrintable(result.errors));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(image), QByteArray("old"));
}

void PackCommandTest::wrongUseIsTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no output") << "pack a.scd"
                               << "the option -o is missing";
    QTest::newRow("no file") << "pack -o b"
                             << "no file is given";
    QTest::newRow("two files") << "pack a.scd b.scd -o c"
                               << "more than one file is given";
}

void PackCommandTest::wrongUseIsTold()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, reason);

    CompareWrongUse(arguments, reason);
}

void PackCommandTest::helpNamesTheOptions()
{
    CompareHelp("pack", {"FILE", "IMAGE", "--output"});
}

QTEST_GUILESS_MAIN(PackCommandTest)
#include "PackCommandTest.moc"
