// SPDX-License-Identifier: Apache-2.0
#include "apps/command/SaveFolder.h"

#include "tests/support/TempFile.h"

#include <QDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Corvane::Test;
using namespace Corvane::Command;

namespace
{

QByteArray Path(const TempFolder& folder, const QString& name)
{
    return QFile::encodeName(folder.Path(name));
}

FileHandle Open(const TempFolder& folder, const QString& name = QStringLiteral("."))
{
    return FileHandle(open(Path(folder, name).constData(), O_RDONLY | O_DIRECTORY));
}

QStringList AllBelow(const TempFolder& folder)
{
    QStringList names;
    QDirIterator entries(folder.Path(),
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        names.append(QDir(folder.Path()).relativeFilePath(entries.next()));
    names.sort();
    return names;
}

void MakeFolder(const TempFolder& folder, const QString& name, mode_t mode = 0700)
{
    QCOMPARE(mkdir(Path(folder, name).constData(), 0700), 0);
    QCOMPARE(chmod(Path(folder, name).constData(), mode), 0);
}

} // namespace

class SaveFolderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderLivesWithItsObject();
    void aTakenNameIsPassedOver();
    void aNameThatIsTooLongIsRefused();
    void aFolderThatCannotBeMadeIsExplained();
    void leftoversAreCleared_data();
    void leftoversAreCleared();
    void whatIsNoLeftoverStays_data();
    void whatIsNoLeftoverStays();
    void aFolderInUseStays();
    void aLinkIsNotFollowed();
    void aFolderOfSomeoneElseStays();
};

void SaveFolderTest::aFolderLivesWithItsObject()
{
    const TempFolder parent;
    const FileHandle handle = Open(parent);
    {
        SaveFolder folder;
        QCOMPARE(folder.Make(handle.Get(), "a.scd"), QString());

        const QString name = QStringLiteral(".corvane-save-%1").arg(getpid());
        QCOMPARE(QString::fromUtf8(folder.Name()), name);
        QCOMPARE(AllBelow(parent), (QStringList{name, name + "/a.scd"}));
        struct stat state = {};
        QCOMPARE(fstat(folder.Get(), &state), 0);
        QCOMPARE(state.st_mode & 0777, mode_t(0700));
    }
    QCOMPARE(AllBelow(parent), QStringList());
}

void SaveFolderTest::aTakenNameIsPassedOver()
{
    const TempFolder parent;
    const FileHandle handle = Open(parent);
    const QString taken = QStringLiteral(".corvane-save-%1").arg(getpid());
    parent.Write(taken, "mine");
    {
        SaveFolder folder;
        QCOMPARE(folder.Make(handle.Get(), "a"), QString());
        QCOMPARE(QString::fromUtf8(folder.Name()), taken + "-1");
    }
    QCOMPARE(AllBelow(parent), QStringList{taken});
    QCOMPARE(ReadFile(parent.Path(taken)), QByteArray("mine"));
}

void SaveFolderTest::aNameThatIsTooLongIsRefused()
{
    const TempFolder parent;
    const FileHandle handle = Open(parent);
    {
        SaveFolder folder;
        QCOMPARE(folder.Make(handle.Get(), QByteArray(256, 'x')),
                 QStringLiteral("cannot make a temporary file: File name too long"));
    }
    QCOMPARE(AllBelow(parent), QStringList());
}

void SaveFolderTest::aFolderThatCannotBeMadeIsExplained()
{
    SaveFolder folder;
    QCOMPARE(folder.Make(-1, "a"),
             QStringLiteral("cannot make a temporary folder beside it: Bad file descriptor"));
}

void SaveFolderTest::leftoversAreCleared_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("empty") << ".corvane-save-1"
                           << "";
    QTest::newRow("with a file") << ".corvane-save-4194304"
                                 << "station.scd";
    QTest::newRow("with a hidden file") << ".corvane-save-77"
                                        << ".scd";
    QTest::newRow("with a number") << ".corvane-save-77-12"
                                   << "station.scd";
}

void SaveFolderTest::leftoversAreCleared()
{
    QFETCH(const QString, name);
    QFETCH(const QString, file);
    const TempFolder parent;
    MakeFolder(parent, name);
    if (!file.isEmpty())
        parent.Write(name + '/' + file, "half a station");
    parent.Write("station.scd", "whole");

    SaveFolder::ClearLeftovers(Open(parent).Get());

    QCOMPARE(AllBelow(parent), QStringList{"station.scd"});
}

void SaveFolderTest::whatIsNoLeftoverStays_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("files");

    const QStringList one{"file"};
    QTest::newRow("no number") << ".corvane-save-" << 0700 << one;
    QTest::newRow("a word") << ".corvane-save-notes" << 0700 << one;
    QTest::newRow("a longer name") << ".corvane-save-1.old" << 0700 << one;
    QTest::newRow("a line end") << ".corvane-save-1\n" << 0700 << one;
    QTest::newRow("something in front") << "x.corvane-save-1" << 0700 << one;
    QTest::newRow("foreign digits") << QString(".corvane-save-") + QChar(0x0661) << 0700 << one;
    QTest::newRow("open to others") << ".corvane-save-1" << 0755 << one;
    QTest::newRow("two files") << ".corvane-save-1" << 0700 << QStringList{"a", "b"};
    QTest::newRow("a folder within") << ".corvane-save-1" << 0700 << QStringList{"sub/"};
    QTest::newRow("a link within") << ".corvane-save-1" << 0700 << QStringList{"link@"};
}

// In the table, a name that ends in / is a folder, and one that ends in @ a link.
void SaveFolderTest::whatIsNoLeftoverStays()
{
    QFETCH(const QString, name);
    QFETCH(const int, mode);
    QFETCH(const QStringList, files);
    const TempFolder parent;
    MakeFolder(parent, name, static_cast<mode_t>(mode));
    for (const QString& file : files) {
        const QString path = name + '/' + file;
        if (file.endsWith('/'))
            QVERIFY(QDir(parent.Path()).mkpath(path));
        else if (file.endsWith('@'))
            QVERIFY(QFile::link("/dev/null", parent.Path(path)));
        else
            parent.Write(path, "mine");
    }
    const QStringList before = AllBelow(parent);

    SaveFolder::ClearLeftovers(Open(parent).Get());

    QCOMPARE(AllBelow(parent), before);
    QCOMPARE(before.size(), files.size() + 1);
}

void SaveFolderTest::aFolderInUseStays()
{
    const TempFolder parent;
    const FileHandle handle = Open(parent);
    SaveFolder folder;
    QCOMPARE(folder.Make(handle.Get(), "a"), QString());
    const QStringList before = AllBelow(parent);

    SaveFolder::ClearLeftovers(handle.Get());

    QCOMPARE(AllBelow(parent), before);
    QCOMPARE(before.size(), 2);
}

void SaveFolderTest::aLinkIsNotFollowed()
{
    const TempFolder elsewhere;
    MakeFolder(elsewhere, "kept");
    elsewhere.Write("kept/file", "mine");
    const TempFolder parent;
    QVERIFY(QFile::link(elsewhere.Path("kept"), parent.Path(".corvane-save-1")));

    SaveFolder::ClearLeftovers(Open(parent).Get());

    QCOMPARE(AllBelow(elsewhere), (QStringList{"kept", "kept/file"}));
    QCOMPARE(AllBelow(parent).size(), 1);
}

// Only the superuser can make such a folder; others find one that belongs to the superuser.
void SaveFolderTest::aFolderOfSomeoneElseStays()
{
    const TempFolder parent;
    MakeFolder(parent, ".corvane-save-1");
    const bool given = chown(Path(parent, ".corvane-save-1").constData(), 12345, 12345) == 0;
    QCOMPARE(given, geteuid() == 0);

    SaveFolder::ClearLeftovers(Open(parent).Get());

    QCOMPARE(AllBelow(parent).size(), given ? 1 : 0);
}

QTEST_GUILESS_MAIN(SaveFolderTest)
#include "SaveFolderTest.moc"
