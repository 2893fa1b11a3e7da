// SPDX-License-Identifier: Apache-2.0
#include "apps/command/FileCheck.h"

#include "tests/support/TempFile.h"

#include <QtTest>

#include <array>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Corvane::Test;
using namespace Corvane::Command;

class FileCheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyRegularFilesAreReadable();
    void aSocketIsNotReadable();
};

void FileCheckTest::onlyRegularFilesAreReadable()
{
    const TempFolder folder;
    const QString file = folder.Write("file", "");
    const QString fifo = folder.Path("fifo");
    QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QVERIFY(QFile::link("file", folder.Path("link")));
    QVERIFY(QFile::link("loop", folder.Path("loop")));

    QCOMPARE(WhyUnreadable(file), QString());
    QCOMPARE(WhyUnreadable(folder.Path("link")), QString());
    QCOMPARE(WhyUnreadable(fifo), QStringLiteral("is no regular file but a FIFO"));
    QCOMPARE(WhyUnreadable(folder.Path()), QStringLiteral("is no regular file but a directory"));
    QCOMPARE(WhyUnreadable("/dev/null"), QStringLiteral("is no regular file but a device"));
    QCOMPARE(WhyUnreadable(folder.Path("none")), QStringLiteral("No such file or directory"));
    QCOMPARE(WhyUnreadable(file + "/"), QStringLiteral("Not a directory"));
    QCOMPARE(WhyUnreadable(folder.Path("loop")),
             QStringLiteral("Too many levels of symbolic links"));
}

void FileCheckTest::aSocketIsNotReadable()
{
    const TempFolder folder;
    const QByteArray path = QFile::encodeName(folder.Path("socket"));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(path.size() < static_cast<int>(sizeof address.sun_path));
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    QCOMPARE(WhyUnreadable(folder.Path("socket")),
             QStringLiteral("is no regular file but a socket"));

    close(listener);
}

QTEST_GUILESS_MAIN(FileCheckTest)
#include "FileCheckTest.moc"
