// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SlowSave.h"

#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Corvane::Test;

namespace
{

QByteArray Native(const QString& path)
{
    return QFile::encodeName(path);
}

struct stat StateOf(const QString& path)
{
    struct stat state = {};
    if (lstat(Native(path).constData(), &state) != 0)
        qFatal("%s is missing", qPrintable(path));
    return state;
}

mode_t ModeOf(const QString& path)
{
    return StateOf(path).st_mode & 07777;
}

QString LinkText(const QString& path)
{
    char text[4096];
    const ssize_t length = readlink(Native(path).constData(), text, sizeof text);
    return length < 0 ? QString() : QFile::decodeName(QByteArray(text, static_cast<int>(length)));
}

std::function<void()> LimitFileSize(rlim_t bytes)
{
    return [bytes] {
        const rlimit limit{bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
}

void BindSocket(const QString& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray native = Native(path);
    QVERIFY(native.size() < static_cast<int>(sizeof address.sun_path));
    std::memcpy(address.sun_path, native.constData(), static_cast<std::size_t>(native.size()));
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(listener);
}

} // namespace

class StationSaveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFullDiskLeavesTheOldFile_data();
    void aFullDiskLeavesTheOldFile();
    void aReadOnlyFileIsNotReplaced();
    void aReadOnlyFolderIsLeftAlone();
    void aMissingFolderIsTold();

    void aKilledSaveLeavesTheOldFileAndOneFolder();
    void theFolderOfALivingSaveStays();
    void aFileThatChangedMeanwhileIsNotReplaced();
    void aFileThatCameUpMeanwhileIsNotReplaced();

    void theFileIsOnTheDiskBeforeItReplacesTheOld();
    void aDiskThatFailsLeavesTheOldFile();

    void aLinkStaysAndItsTargetIsReplaced_data();
    void aLinkStaysAndItsTargetIsReplaced();
    void aLinkToNothingMakesItsTarget();
    void theTemporaryFolderStandsBesideTheTarget();
    void aLoopOfLinksIsRefused();

    void permissionsAreKept_data();
    void permissionsAreKept();
    void theOwnerIsKeptWhereAllowed();
    void aNewFileFollowsTheMask();
    void theLongestNameServes();
    void aNameThatIsTooLongIsRefused();
    void aFileWithHardLinksIsRefused();

    void whatIsNoRegularFileIsRefusedOnBothSides_data();
    void whatIsNoRegularFileIsRefusedOnBothSides();

private:
    CommandResult Format(const QString& output, const std::function<void()>& setUp = {}) const
    {
        return RunCommand(m_folder->FormatArguments(m_input, output), setUp);
    }
    QString Complaint(const QString& file, const QString& reason) const
    {
        return QStringLiteral("corvane: %1: %2\n").arg(file, reason);
    }
    CommandResult FormatWatched(const QString& output, bool fail) const;

    std::unique_ptr<CommandFolder> m_folder;
    QString m_input;
    QString m_output;
};

void StationSaveTest::init()
{
    m_folder = std::make_unique<CommandFolder>();
    m_input = m_folder->Write("in.scd", SmallStation());
    m_output = m_folder->Write("out.scd", "old");
}

// Whatever happens, nothing may be left beside the file.
void StationSaveTest::cleanup()
{
    QCOMPARE(SaveFolders(m_folder->Path()), QStringList());
    m_folder.reset();
}

void StationSaveTest::aFullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("bytes");
    const int whole = static_cast<int>(SmallStationSaved("out").size());
    QTest::newRow("nothing fits") << 0;
    QTest::newRow("one byte fits") << 1;
    QTest::newRow("half of it fits") << whole / 2;
    QTest::newRow("the end does not fit") << whole - 2;
}

void StationSaveTest::aFullDiskLeavesTheOldFile()
{
    QFETCH(const int, bytes);

    const CommandResult result = Format(m_output, LimitFileSize(static_cast<rlim_t>(bytes)));

    QCOMPARE(result.errors, Complaint(m_output, "cannot be written: File too large"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("old"));

    const rlim_t enough = static_cast<rlim_t>(SmallStationSaved("out").size());
    QCOMPARE(Format(m_output, LimitFileSize(enough)).status, 0);
}

void StationSaveTest::aReadOnlyFileIsNotReplaced()
{
    QCOMPARE(chmod(Native(m_output).constData(), 0444), 0);

    const CommandResult result = Format(m_output, RespectPermissions);

    QCOMPARE(result.errors, Complaint(m_output, "cannot be replaced: Permission denied"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
    QCOMPARE(ModeOf(m_output), mode_t(0444));
}

void StationSaveTest::aReadOnlyFolderIsLeftAlone()
{
    QCOMPARE(chmod(Native(m_folder->Path()).constData(), 0555), 0);

    const CommandResult result = Format(m_output, RespectPermissions);

    QCOMPARE(chmod(Native(m_folder->Path()).constData(), 0700), 0);
    QCOMPARE(result.errors,
             Complaint(m_output, "cannot make a temporary folder beside it: Permission denied"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
}

void StationSaveTest::aMissingFolderIsTold()
{
    const QString output = m_folder->Path("none/out.scd");

    const CommandResult result = Format(output);

    QCOMPARE(result.errors, Complaint(output, "cannot open its folder: No such file or directory"));
    QCOMPARE(result.status, 2);
}

void StationSaveTest::aKilledSaveLeavesTheOldFileAndOneFolder()
{
    {
        SlowSave save(*m_folder, m_output);
        save.Signal(SIGKILL);
        QCOMPARE(save.Finish().status, -1);
    }
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
    const QStringList left = SaveFolders(m_folder->Path());
    QCOMPARE(left.size(), 1);
    QVERIFY(QRegularExpression("\\A\\.corvane-save-[0-9]+\\z").match(left[0]).hasMatch());
    QCOMPARE(QDir(m_folder->Path(left[0])).entryList(QDir::Files), QStringList{"out.scd"});

    QCOMPARE(Format(m_output).status, 0);

    QCOMPARE(SaveFolders(m_folder->Path()), QStringList());
    QCOMPARE(ReadFile(m_output), SmallStationSaved("out"));
}

void StationSaveTest::theFolderOfALivingSaveStays()
{
    SlowSave save(*m_folder, m_output);
    save.Stop();
    const QStringList inUse = SaveFolders(m_folder->Path());
    QCOMPARE(inUse.size(), 1);

    QCOMPARE(Format(m_folder->Path("other.scd")).status, 0);

    QCOMPARE(SaveFolders(m_folder->Path()), inUse);
    save.Signal(SIGCONT);
    const CommandResult result = save.Finish();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QVERIFY(ReadFile(m_output).endsWith("</SCL>\n"));
}

void StationSaveTest::aFileThatChangedMeanwhileIsNotReplaced()
{
    SlowSave save(*m_folder, m_output);
    save.Stop();
    WriteFile(m_output, "new");
    save.Signal(SIGCONT);

    const CommandResult result = save.Finish();

    QCOMPARE(result.errors, Complaint(m_output, "was changed by someone else meanwhile"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("new"));
}

void StationSaveTest::aFileThatCameUpMeanwhileIsNotReplaced()
{
    const QString output = m_folder->Path("fresh.scd");
    SlowSave save(*m_folder, output);
    save.Stop();
    WriteFile(output, "new");
    save.Signal(SIGCONT);

    QCOMPARE(save.Finish().status, 2);
    QCOMPARE(ReadFile(output), QByteArray("new"));
}

CommandResult StationSaveTest::FormatWatched(const QString& output, bool fail) const
{
    CommandProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_PRELOAD", CORVANE_BIN_DIR "/corvane-sync-witness.so");
    environment.insert("CORVANE_WITNESS_LOG", m_folder->Path("calls"));
    // A sanitizer wants to be the first to be loaded, and can do without.
    environment.insert("ASAN_OPTIONS", "verify_asan_link_order=0");
    if (fail)
        environment.insert("CORVANE_WITNESS_FAIL", "1");
    process.setProcessEnvironment(environment);
    process.Start(m_folder->FormatArguments(m_input, output));
    return ResultOf(process);
}

void StationSaveTest::theFileIsOnTheDiskBeforeItReplacesTheOld()
{
    QCOMPARE(FormatWatched(m_output, false).status, 0);

    QCOMPARE(ReadFile(m_folder->Path("calls")), QByteArray("fsync file\nrename\nfsync folder\n"));
    QCOMPARE(ReadFile(m_output), SmallStationSaved("out"));
}

void StationSaveTest::aDiskThatFailsLeavesTheOldFile()
{
    const CommandResult result = FormatWatched(m_output, true);

    QCOMPARE(result.errors, Complaint(m_output, "cannot be written: Input/output error"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_folder->Path("calls")), QByteArray("fsync file\n"));
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
}

void StationSaveTest::aLinkStaysAndItsTargetIsReplaced_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("beside it") << "out.scd";
    QTest::newRow("by a roundabout way") << "sub/../out.scd";
    QTest::newRow("through another link") << "second";
    QTest::newRow("absolute") << "/";
}

void StationSaveTest::aLinkStaysAndItsTargetIsReplaced()
{
    QFETCH(QString, target);
    if (target == "/")
        target = m_output;
    QVERIFY(QDir(m_folder->Path()).mkdir("sub"));
    QCOMPARE(symlink("sub/../out.scd", Native(m_folder->Path("second")).constData()), 0);
    const QString link = m_folder->Path("link.scd");
    QCOMPARE(symlink(Native(target).constData(), Native(link).constData()), 0);

    const CommandResult result = Format(link);

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(LinkText(link), target);
    QVERIFY(S_ISREG(StateOf(m_output).st_mode));
    QCOMPARE(ReadFile(m_output), SmallStationSaved("link"));
}

void StationSaveTest::aLinkToNothingMakesItsTarget()
{
    const QString link = m_folder->Path("link.scd");
    QCOMPARE(symlink("fresh.scd", Native(link).constData()), 0);

    QCOMPARE(Format(link).status, 0);

    QCOMPARE(LinkText(link), QString("fresh.scd"));
    QCOMPARE(ReadFile(m_folder->Path("fresh.scd")), SmallStationSaved("link"));
}

void StationSaveTest::theTemporaryFolderStandsBesideTheTarget()
{
    const TempFolder links;
    const QString link = links.Path("link.scd");
    QCOMPARE(symlink(Native(m_output).constData(), Native(link).constData()), 0);
    QCOMPARE(chmod(Native(links.Path()).constData(), 0555), 0);

    const CommandResult result = Format(link, RespectPermissions);

    QCOMPARE(chmod(Native(links.Path()).constData(), 0700), 0);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(m_output), SmallStationSaved("link"));
}

void StationSaveTest::aLoopOfLinksIsRefused()
{
    const QString link = m_folder->Path("loop");
    QCOMPARE(symlink("loop", Native(link).constData()), 0);

    const CommandResult result = Format(link);

    QCOMPARE(result.errors, Complaint(link, "Too many levels of symbolic links"));
    QCOMPARE(result.status, 2);
    QCOMPARE(LinkText(link), QString("loop"));
}

void StationSaveTest::permissionsAreKept_data()
{
    QTest::addColumn<int>("mode");
    for (int mode : {0600, 0640, 0664, 0666, 0755, 0606})
        QTest::newRow(QByteArray::number(mode, 8).constData()) << mode;
}

void StationSaveTest::permissionsAreKept()
{
    QFETCH(const int, mode);
    QCOMPARE(chmod(Native(m_output).constData(), static_cast<mode_t>(mode)), 0);

    QCOMPARE(Format(m_output, [] { umask(027); }).status, 0);

    QCOMPARE(ModeOf(m_output), static_cast<mode_t>(mode));
    QCOMPARE(ReadFile(m_output), SmallStationSaved("out"));
}

// Only the superuser has files of others to give back; for the rest the owner stays by itself.
void StationSaveTest::theOwnerIsKeptWhereAllowed()
{
    const bool given = chown(Native(m_output).constData(), 12345, 23456) == 0;
    QCOMPARE(given, geteuid() == 0);
    const struct stat before = StateOf(m_output);

    QCOMPARE(Format(m_output).status, 0);

    const struct stat after = StateOf(m_output);
    QVERIFY(after.st_ino != before.st_ino);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
}

void StationSaveTest::aNewFileFollowsTheMask()
{
    const QString output = m_folder->Path("fresh.scd");

    QCOMPARE(Format(output, [] { umask(026); }).status, 0);

    QCOMPARE(ModeOf(output), mode_t(0640));
}

void StationSaveTest::theLongestNameServes()
{
    const QString name = QString(251, 'n') + ".scd";
    const QString output = m_folder->Write(name, "old");

    const CommandResult result = Format(output);

    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(ReadFile(output), SmallStationSaved(QByteArray(251, 'n')));
}

void StationSaveTest::aNameThatIsTooLongIsRefused()
{
    const QString output = m_folder->Path(QString(256, 'n'));

    const CommandResult result = Format(output);

    QCOMPARE(result.errors, Complaint(output, "File name too long"));
    QCOMPARE(result.status, 2);
}

void StationSaveTest::aFileWithHardLinksIsRefused()
{
    const QString other = m_folder->Path("other.scd");
    QCOMPARE(link(Native(m_output).constData(), Native(other).constData()), 0);

    const CommandResult result = Format(m_output);

    QCOMPARE(result.errors, Complaint(m_output, "cannot be replaced: it has 2 hard links, and "
                                                "the others would keep the old content"));
    QCOMPARE(result.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
    QCOMPARE(StateOf(other).st_ino, StateOf(m_output).st_ino);
}

void StationSaveTest::whatIsNoRegularFileIsRefusedOnBothSides_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::newRow("FIFO") << "fifo"
                          << "a FIFO";
    QTest::newRow("link to a FIFO") << "link"
                                    << "a FIFO";
    QTest::newRow("directory") << "sub"
                               << "a directory";
    QTest::newRow("socket") << "socket"
                            << "a socket";
    QTest::newRow("device") << "terminal"
                            << "a device";
    QTest::newRow("standard input") << "/dev/stdin"
                                    << "a FIFO";
}

void StationSaveTest::whatIsNoRegularFileIsRefusedOnBothSides()
{
    QFETCH(const QString, name);
    QFETCH(const QString, kind);
    QCOMPARE(mkfifo(Native(m_folder->Path("fifo")).constData(), 0600), 0);
    QCOMPARE(symlink("fifo", Native(m_folder->Path("link")).constData()), 0);
    QVERIFY(QDir(m_folder->Path()).mkdir("sub"));
    BindSocket(m_folder->Path("socket"));
    // Of all devices this is the one that even the superuser cannot replace, should the command
    // try.
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    QCOMPARE(symlink(ptsname(terminal), Native(m_folder->Path("terminal")).constData()), 0);
    const QString path = name.startsWith('/') ? name : m_folder->Path(name);
    const QString complaint = Complaint(path, "is no regular file but " + kind);

    const CommandResult writing = Format(path);
    QCOMPARE(writing.errors, complaint);
    QCOMPARE(writing.status, 2);

    const CommandResult reading = RunCommand(m_folder->FormatArguments(path, m_output));
    QCOMPARE(reading.errors, complaint);
    QCOMPARE(reading.status, 2);
    QCOMPARE(ReadFile(m_output), QByteArray("old"));
    close(terminal);
}

QTEST_GUILESS_MAIN(StationSaveTest)
#include "StationSaveTest.moc"
