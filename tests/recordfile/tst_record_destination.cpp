// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "record_files.h"
#include "support/file_size_limit.h"

#include <recordfile/record_file_saver.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Velk;

namespace {

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file.");
}

int permissionsOf(const QString& path)
{
    struct stat status;
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 0777) : -1;
}

} // namespace

/// Where a recording is saved: permissions, existing files, destinations that are refused or fail.
class TestRecordDestination : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSavedFileHasThePermissionsOfANewFile_data();
    void aSavedFileHasThePermissionsOfANewFile();
    void anExistingFileIsKept();
    void anExistingFileIsKeptByACopyToo();
    void anExistingFileIsReplacedWhenAskedFor();
    void aReplacedFileKeepsItsPermissions();
    void theFileBehindALinkIsReplaced();
    void aDestinationIsRefusedBeforehand_data();
    void aDestinationIsRefusedBeforehand();
    void aDestinationThatCannotBeWrittenLeavesTheRecording();
    void aFullDiskAtTheDestinationLeavesTheRecording();
    void afterAFailureAnotherDestinationCanBeTried();
};

void TestRecordDestination::aSavedFileHasThePermissionsOfANewFile_data()
{
    QTest::addColumn<QString>("destination");
    QTest::newRow("moved") << QDir::tempPath() + "/record-XXXXXX";
    QTest::newRow("copied") << "/dev/shm/record-XXXXXX";
}

void TestRecordDestination::aSavedFileHasThePermissionsOfANewFile()
{
    QFETCH(QString, destination);
    QTemporaryDir directory;
    QTemporaryDir target(destination);
    const mode_t mask = ::umask(027);
    RecordFileSaver saver(recordFile(directory.path(), record));

    const RecordSaveResult result = saver.save(target.filePath(QStringLiteral("run.csv")));
    const mode_t maskAfter = ::umask(mask);

    QCOMPARE(result.outcome, RecordSaveResult::Saved);
    QCOMPARE(permissionsOf(target.filePath(QStringLiteral("run.csv"))), 0640);
    QCOMPARE(int(maskAfter), 027);
}

void TestRecordDestination::anExistingFileIsKept()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    writeFile(path, "precious");
    RecordFileSaver saver(recordFile(directory.path(), record));

    const RecordSaveResult result = saver.save(path);

    QCOMPARE(result.outcome, RecordSaveResult::Exists);
    QVERIFY2(result.message.contains(path), qPrintable(result.message));
    QVERIFY2(result.message.contains(saver.temporaryPath()), qPrintable(result.message));
    QCOMPARE(contentOf(path), QByteArray("precious"));
    QCOMPARE(contentOf(saver.temporaryPath()), record);
}

void TestRecordDestination::anExistingFileIsKeptByACopyToo()
{
    QTemporaryDir directory;
    QTemporaryDir destination(QStringLiteral("/dev/shm/record-XXXXXX"));
    const QString path = destination.filePath(QStringLiteral("run.csv"));
    writeFile(path, "precious");
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(path).outcome, RecordSaveResult::Exists);

    QCOMPARE(contentOf(path), QByteArray("precious"));
    QCOMPARE(namesIn(destination.path()), QStringList{QStringLiteral("run.csv")});
    QCOMPARE(contentOf(saver.temporaryPath()), record);
}

void TestRecordDestination::anExistingFileIsReplacedWhenAskedFor()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    writeFile(path, QByteArray("old").repeated(1000));
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(path, RecordFileSaver::ReplaceExisting).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(path), record);
}

void TestRecordDestination::aReplacedFileKeepsItsPermissions()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    writeFile(path, "old");
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0604), 0);
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(path, RecordFileSaver::ReplaceExisting).outcome, RecordSaveResult::Saved);

    QCOMPARE(permissionsOf(path), 0604);
}

void TestRecordDestination::theFileBehindALinkIsReplaced()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    const QString link = directory.filePath(QStringLiteral("newest.csv"));
    writeFile(path, "old");
    QVERIFY(QFile::link(path, link));
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(link, RecordFileSaver::ReplaceExisting).outcome, RecordSaveResult::Saved);

    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(contentOf(path), record);
}

void TestRecordDestination::aDestinationIsRefusedBeforehand_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no name") << QString() << "No file name";
    QTest::newRow("a directory") << "directory"
                                 << "is a directory";
    QTest::newRow("a name that ends like a directory") << "directory/"
                                                       << "is a directory";
    QTest::newRow("a directory that does not exist") << "nowhere/run.csv"
                                                     << "nowhere does not exist";
    QTest::newRow("a directory that is a file") << "file/run.csv"
                                                << "file does not exist";
    QTest::newRow("a pipe") << "pipe"
                            << "not a regular file";
    QTest::newRow("a link to a file that does not exist") << "link"
                                                          << "is a symbolic link to a file that does not exist";
}

void TestRecordDestination::aDestinationIsRefusedBeforehand()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    // Everything that a broken saver could replace is in this folder.
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("directory"));
    writeFile(folder.filePath("file"), "precious");
    QCOMPARE(::mkfifo(QFile::encodeName(folder.filePath("pipe")).constData(), 0600), 0);
    QVERIFY(QFile::link(folder.filePath("missing"), folder.filePath("link")));
    const QString path = name.isEmpty() ? QString() : folder.filePath(name);
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));
    const auto names = [&] { return QDir(folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden); };
    const QStringList namesBefore = names();

    const RecordSaveResult check = RecordFileSaver::checkDestination(path, RecordFileSaver::ReplaceExisting);
    const RecordSaveResult result = saver.save(path, RecordFileSaver::ReplaceExisting);
    const RecordSaveResult keptResult = saver.save(path, RecordFileSaver::KeepExisting);

    QCOMPARE(check.outcome, RecordSaveResult::NotSaved);
    QVERIFY2(check.message.contains(reason), qPrintable(check.message));
    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QVERIFY2(result.message.startsWith(check.message), qPrintable(result.message));
    QCOMPARE(keptResult.message, result.message);
    QCOMPARE(contentOf(saver.temporaryPath()), record);
    QCOMPARE(names(), namesBefore);
    QCOMPARE(contentOf(folder.filePath("file")), QByteArray("precious"));
}

void TestRecordDestination::aDestinationThatCannotBeWrittenLeavesTheRecording()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));

    const RecordSaveResult result = saver.save(QStringLiteral("/proc/run.csv"));

    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QVERIFY2(result.message.contains(saver.temporaryPath()), qPrintable(result.message));
    QCOMPARE(contentOf(saver.temporaryPath()), record);
}

void TestRecordDestination::aFullDiskAtTheDestinationLeavesTheRecording()
{
    QTemporaryDir directory;
    QTemporaryDir destination(QStringLiteral("/dev/shm/record-XXXXXX"));
    const QByteArray longRecord = record + QByteArray("0.4;2\n").repeated(50000);
    RecordFileSaver saver(recordFile(directory.path(), longRecord));

    RecordSaveResult result;
    {
        const FileSizeLimit full(100000);
        result = saver.save(destination.filePath(QStringLiteral("run.csv")));
    }

    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QCOMPARE(namesIn(destination.path()), QStringList());
    QVERIFY2(result.message.contains(saver.temporaryPath()), qPrintable(result.message));
    QVERIFY(contentOf(saver.temporaryPath()) == longRecord);
}

void TestRecordDestination::afterAFailureAnotherDestinationCanBeTried()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));
    QCOMPARE(saver.save(QStringLiteral("/proc/run.csv")).outcome, RecordSaveResult::NotSaved);

    QCOMPARE(saver.save(directory.filePath(QStringLiteral("run.csv"))).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(directory.filePath(QStringLiteral("run.csv"))), record);
    QCOMPARE(namesIn(directory.path()), QStringList{QStringLiteral("run.csv")});
}

QTEST_GUILESS_MAIN(TestRecordDestination)

#include "tst_record_destination.moc"
