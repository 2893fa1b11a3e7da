// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SchemaFiles.h>

#include <corvane/schema/XercesText.h>

#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QDir>
#include <QTest>

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>

#include <memory>

using namespace Corvane::Internal;
using namespace Corvane::Test;
using Resource = xercesc::XMLResourceIdentifier;

class SchemaFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void locationsLeadToLocalFiles_data();
    void locationsLeadToLocalFiles();
    void otherLocationsCountAsNotGiven_data();
    void otherLocationsCountAsNotGiven();
    void externalEntitiesAreEmpty();
    void aMissingFileIsEmpty();
    void aFileBeyondBoundsIsEmptyAndCountsAsRefused();
    void aSchemaOfTooManyFilesIsRefused();

private:
    using Source = std::unique_ptr<xercesc::InputSource>;

    Source Resolve(SchemaFiles& files, const QString& location,
                   Resource::ResourceIdentifierType type = Resource::SchemaInclude);

    TestControl m_control;
};

namespace
{

QByteArray ContentOf(const xercesc::InputSource& source)
{
    const std::unique_ptr<xercesc::BinInputStream> stream(source.makeStream());
    QByteArray content(10000, '\0');
    content.resize(static_cast<int>(stream->readBytes(reinterpret_cast<XMLByte*>(content.data()),
                                                      static_cast<XMLSize_t>(content.size()))));
    return content;
}

} // namespace

SchemaFilesTest::Source SchemaFilesTest::Resolve(SchemaFiles& files, const QString& location,
                                                 Resource::ResourceIdentifierType type)
{
    const std::vector<XMLCh> base = ToXerces(m_control.Folder().Path(QStringLiteral("base.xsd")));
    const std::vector<XMLCh> systemId = ToXerces(location);
    Resource identifier(type, systemId.data(), nullptr, nullptr, base.data());
    return Source(files.resolveEntity(&identifier));
}

void SchemaFilesTest::locationsLeadToLocalFiles_data()
{
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("fileName");
    const QString chinese = QString::fromUtf8("\xE5\x8F\x98.xsd");
    QTest::newRow("name") << "a.xsd"
                          << "a.xsd";
    QTest::newRow("blank") << "a b.xsd"
                           << "a b.xsd";
    QTest::newRow("escaped blank") << "a%20b.xsd"
                                   << "a b.xsd";
    QTest::newRow("a name that looks escaped") << "c%20d.xsd"
                                               << "c%20d.xsd";
    QTest::newRow("Chinese") << chinese << chinese;
    QTest::newRow("escaped Chinese") << "%E5%8F%98.xsd" << chinese;
    QTest::newRow("number sign") << "a#b.xsd"
                                 << "a#b.xsd";
    QTest::newRow("roundabout") << "./x/../a.xsd"
                                << "a.xsd";
    QTest::newRow("absolute path") << m_control.Folder().Path("a.xsd") << "a.xsd";
    QTest::newRow("file URL") << QUrl::fromLocalFile(m_control.Folder().Path("a b.xsd")).toString()
                              << "a b.xsd";
}

void SchemaFilesTest::locationsLeadToLocalFiles()
{
    QFETCH(QString, location);
    QFETCH(QString, fileName);
    QDir(m_control.Folder().Path()).mkdir(QStringLiteral("x"));
    const QString path = m_control.Folder().Write(fileName, SmallSclSchema());
    SchemaFiles files;

    const Source source = Resolve(files, location);

    QVERIFY(source);
    QCOMPARE(FromXerces(source->getSystemId()), QFileInfo(path).canonicalFilePath());
    QCOMPARE(ContentOf(*source), SmallSclSchema());
}

void SchemaFilesTest::otherLocationsCountAsNotGiven_data()
{
    QTest::addColumn<QString>("location");
    QTest::newRow("missing file") << "missing.xsd";
    QTest::newRow("folder") << ".";
    QTest::newRow("empty") << "";
    QTest::newRow("http") << "http://127.0.0.1/a.xsd";
    QTest::newRow("https") << "https://127.0.0.1/a.xsd";
    QTest::newRow("ftp") << "ftp://127.0.0.1/a.xsd";
    QTest::newRow("file on another machine") << "file://server/a.xsd";
    QTest::newRow("network share") << "//server/share/a.xsd";
    QTest::newRow("network share, back slashes") << "\\\\server\\share\\a.xsd";
    QTest::newRow("escaped network share") << "%2F%2Fserver/share/a.xsd";
    QTest::newRow("no regular file") << "/dev/zero";
}

void SchemaFilesTest::otherLocationsCountAsNotGiven()
{
    QFETCH(QString, location);
    SchemaFiles files;

    QVERIFY(!Resolve(files, location));
    QVERIFY(!files.HasRefused());
}

void SchemaFilesTest::externalEntitiesAreEmpty()
{
    m_control.Folder().Write(QStringLiteral("a.ent"), "<!ENTITY a 'a'>");
    SchemaFiles files;

    const Source source = Resolve(files, QStringLiteral("a.ent"), Resource::ExternalEntity);

    QVERIFY(source);
    QCOMPARE(ContentOf(*source), QByteArray());
}

void SchemaFilesTest::aMissingFileIsEmpty()
{
    SchemaFiles files;

    const Source source(files.Open(m_control.Folder().Path(QStringLiteral("missing.xsd"))));

    QCOMPARE(ContentOf(*source), QByteArray());
    QVERIFY(!files.HasRefused());
}

void SchemaFilesTest::aFileBeyondBoundsIsEmptyAndCountsAsRefused()
{
    const QString path =
        m_control.Folder().Write(QStringLiteral("bad.xsd"), QByteArray("<a>").repeated(1000));
    SchemaFiles files;

    const Source source(files.Open(path));

    QCOMPARE(ContentOf(*source), QByteArray());
    QVERIFY(files.HasRefused());
}

void SchemaFilesTest::aSchemaOfTooManyFilesIsRefused()
{
    SchemaFiles files;
    for (int i = 0; i < 256; ++i)
        Source(files.Open(m_control.Folder().Write(QStringLiteral("%1.xsd").arg(i), "<a/>")));
    QVERIFY(!files.HasRefused());

    const Source last(files.Open(m_control.Folder().Write(QStringLiteral("256.xsd"), "<a/>")));

    QVERIFY(files.HasRefused());
}

QTEST_GUILESS_MAIN(SchemaFilesTest)
#include "SchemaFilesTest.moc"
