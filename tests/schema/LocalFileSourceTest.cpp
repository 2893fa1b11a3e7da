// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/LocalFileSource.h>

#include <corvane/schema/XercesText.h>

#include "tests/support/TestControl.h"

#include <QTest>

#include <xercesc/util/BinInputStream.hpp>

#include <memory>

using namespace Corvane::Internal;
using namespace Corvane::Test;

class LocalFileSourceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBytesOfTheFileAreReadInPieces();
    void theSystemIdIsThePath();
    void whatCannotBeOpenedGivesNoStream();

private:
    TestControl m_control;
};

void LocalFileSourceTest::theBytesOfTheFileAreReadInPieces()
{
    const LocalFileSource source(m_control.Folder().Write(QStringLiteral("a"), "abcde"));
    const std::unique_ptr<xercesc::BinInputStream> stream(source.makeStream());
    XMLByte bytes[4] = {};

    QCOMPARE(stream->readBytes(bytes, 4), XMLSize_t(4));
    QCOMPARE(QByteArray(reinterpret_cast<char*>(bytes), 4), QByteArray("abcd"));
    QCOMPARE(stream->curPos(), XMLFilePos(4));
    QCOMPARE(stream->readBytes(bytes, 4), XMLSize_t(1));
    QCOMPARE(stream->readBytes(bytes, 4), XMLSize_t(0));
}

void LocalFileSourceTest::theSystemIdIsThePath()
{
    const QString path = QString::fromUtf8("/x/a b%20#\xE5\x8F\x98.scd");

    QCOMPARE(FromXerces(LocalFileSource(path).getSystemId()), path);
}

void LocalFileSourceTest::whatCannotBeOpenedGivesNoStream()
{
    QVERIFY(!LocalFileSource(m_control.Folder().Path(QStringLiteral("missing"))).makeStream());
    QVERIFY(!LocalFileSource(m_control.Folder().Path()).makeStream());
}

QTEST_GUILESS_MAIN(LocalFileSourceTest)
#include "LocalFileSourceTest.moc"
