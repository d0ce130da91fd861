// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/file_size_limit.h"

#include <recordfile/record_file_saver.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using namespace Velk;

namespace {

const QByteArray record = "Time;\"Arm/Position\"\n0;1.5\n0.2;1.75\n";

/// A record file as the displayed key set leaves it after a recording, closed, but in the given directory.
QTemporaryFile* recordFile(const QString& directory, const QByteArray& content)
{
    auto* file = new QTemporaryFile(QDir(directory).filePath(QStringLiteral("MemoryWatcher")));
    if (!file->open() || file->write(content) != content.size())
        qFatal("The test cannot write its record file.");
    file->close();
    return file;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file.");
}

QStringList namesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

int permissionsOf(const QString& path)
{
    struct stat status;
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 0777) : -1;
}

} // namespace

class TestRecordFileSaver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordingIsMovedToItsDestination();
    void aRecordingIsCopiedToAnotherFileSystem();
    void aRecordingWhoseTemporaryFileWasDeletedIsSaved();
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
    void aPartlyWrittenLineIsCutOffAndReported();
    void rowsThatClosingCouldNotWriteAreReported();
    void aFileWithoutACompleteLineIsNotSaved();
    void noRecordingIsAnError();
    void aFileThatIsStillOpenIsClosedFirst();
    void aFileThatWasCutMeanwhileIsNotSavedByACopy();
    void anUnsavedRecordingOutlivesTheSaverAndTheModel();
    void aRecordingIsSavedAfterItsModelWasDeleted();
    void aDiscardedRecordingIsRemoved();
};

void TestRecordFileSaver::aRecordingIsMovedToItsDestination()
{
    QTemporaryDir directory;
    QTemporaryDir destination;
    const QString path = destination.filePath(QStringLiteral("run.csv"));
    RecordFileSaver saver(recordFile(directory.path(), record));
    QCOMPARE(saver.rows(), qint64(2));
    QCOMPARE(saver.bytes(), qint64(record.size()));

    const RecordSaveResult result = saver.save(path);

    QCOMPARE(result.outcome, RecordSaveResult::Saved);
    QCOMPARE(result.message, QString());
    QCOMPARE(contentOf(path), record);
    QCOMPARE(namesIn(directory.path()), QStringList());
    QCOMPARE(namesIn(destination.path()), QStringList{QStringLiteral("run.csv")});
    QVERIFY(!saver.hasRecording());
    QCOMPARE(saver.rows(), qint64(2));
}

void TestRecordFileSaver::aRecordingIsCopiedToAnotherFileSystem()
{
    QTemporaryDir directory;
    QTemporaryDir destination(QStringLiteral("/dev/shm/record-XXXXXX"));
    QVERIFY2(QStorageInfo(directory.path()).device() != QStorageInfo(destination.path()).device(),
             "The test needs two file systems: the temporary directory and /dev/shm.");
    const QByteArray longRecord = record + QByteArray("0.4;2\n").repeated(500000); // longer than one chunk of a copy
    RecordFileSaver saver(recordFile(directory.path(), longRecord));

    const RecordSaveResult result = saver.save(destination.filePath(QStringLiteral("run.csv")));

    QCOMPARE(result.outcome, RecordSaveResult::Saved);
    QVERIFY(contentOf(destination.filePath(QStringLiteral("run.csv"))) == longRecord);
    QCOMPARE(namesIn(directory.path()), QStringList());
    QCOMPARE(namesIn(destination.path()), QStringList{QStringLiteral("run.csv")});
}

void TestRecordFileSaver::aRecordingWhoseTemporaryFileWasDeletedIsSaved()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));
    QVERIFY(QFile::remove(saver.temporaryPath()));

    const RecordSaveResult result = saver.save(directory.filePath(QStringLiteral("run.csv")));

    QCOMPARE(result.outcome, RecordSaveResult::Saved);
    QCOMPARE(contentOf(directory.filePath(QStringLiteral("run.csv"))), record);
}

void TestRecordFileSaver::aSavedFileHasThePermissionsOfANewFile_data()
{
    QTest::addColumn<QString>("destination");
    QTest::newRow("moved") << QDir::tempPath() + "/record-XXXXXX";
    QTest::newRow("copied") << "/dev/shm/record-XXXXXX";
}

void TestRecordFileSaver::aSavedFileHasThePermissionsOfANewFile()
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

void TestRecordFileSaver::anExistingFileIsKept()
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

void TestRecordFileSaver::anExistingFileIsKeptByACopyToo()
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

void TestRecordFileSaver::anExistingFileIsReplacedWhenAskedFor()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    writeFile(path, QByteArray("old").repeated(1000));
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(path, RecordFileSaver::ReplaceExisting).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(path), record);
}

void TestRecordFileSaver::aReplacedFileKeepsItsPermissions()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    writeFile(path, "old");
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0604), 0);
    RecordFileSaver saver(recordFile(directory.path(), record));

    QCOMPARE(saver.save(path, RecordFileSaver::ReplaceExisting).outcome, RecordSaveResult::Saved);

    QCOMPARE(permissionsOf(path), 0604);
}

void TestRecordFileSaver::theFileBehindALinkIsReplaced()
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

void TestRecordFileSaver::aDestinationIsRefusedBeforehand_data()
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

void TestRecordFileSaver::aDestinationIsRefusedBeforehand()
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

void TestRecordFileSaver::aDestinationThatCannotBeWrittenLeavesTheRecording()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));

    const RecordSaveResult result = saver.save(QStringLiteral("/proc/run.csv"));

    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QVERIFY2(result.message.contains(saver.temporaryPath()), qPrintable(result.message));
    QCOMPARE(contentOf(saver.temporaryPath()), record);
}

void TestRecordFileSaver::aFullDiskAtTheDestinationLeavesTheRecording()
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

void TestRecordFileSaver::afterAFailureAnotherDestinationCanBeTried()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));
    QCOMPARE(saver.save(QStringLiteral("/proc/run.csv")).outcome, RecordSaveResult::NotSaved);

    QCOMPARE(saver.save(directory.filePath(QStringLiteral("run.csv"))).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(directory.filePath(QStringLiteral("run.csv"))), record);
    QCOMPARE(namesIn(directory.path()), QStringList{QStringLiteral("run.csv")});
}

void TestRecordFileSaver::aPartlyWrittenLineIsCutOffAndReported()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    RecordFileSaver saver(recordFile(directory.path(), record + "0.4;"));
    QVERIFY(saver.isIncomplete());
    QCOMPARE(saver.partialLineBytes(), qint64(4));

    const RecordSaveResult result = saver.save(path);

    QCOMPARE(result.outcome, RecordSaveResult::SavedIncomplete);
    QVERIFY2(result.message.contains(path + QStringLiteral(": 2;")), qPrintable(result.message));
    QCOMPARE(contentOf(path), record);
}

void TestRecordFileSaver::rowsThatClosingCouldNotWriteAreReported()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("run.csv"));
    auto* file = new QTemporaryFile(directory.filePath(QStringLiteral("MemoryWatcher")));
    QVERIFY(file->open());
    {
        const FileSizeLimit full(
            8009); // the header and 2000 rows: nothing in the file shows that more rows are missing
        QCOMPARE(file->write(QByteArray("Time;\"A\"\n")), qint64(9));
        // Within the buffer of the file object: each write succeeds, and closing fails because the disk is full.
        QCOMPARE(file->write(QByteArray("0;1\n").repeated(2500)), qint64(10000));
        file->close();
    }
    RecordFileSaver saver(file);
    QVERIFY(saver.isIncomplete());

    const RecordSaveResult result = saver.save(path);

    QCOMPARE(result.outcome, RecordSaveResult::SavedIncomplete);
    QCOMPARE(saver.partialLineBytes(), qint64(0));
    QCOMPARE(saver.rows(), qint64(2000));
    QVERIFY2(result.message.contains(path + QStringLiteral(": 2000;")), qPrintable(result.message));
    QCOMPARE(contentOf(path), QByteArray("Time;\"A\"\n") + QByteArray("0;1\n").repeated(2000));
}

void TestRecordFileSaver::aFileWithoutACompleteLineIsNotSaved()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), "Time;\"Arm"));

    const RecordSaveResult result = saver.save(directory.filePath(QStringLiteral("run.csv")));

    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QCOMPARE(saver.rows(), qint64(0));
    QVERIFY2(result.message.contains(QStringLiteral("no complete line")), qPrintable(result.message));
    QVERIFY(!QFileInfo::exists(directory.filePath(QStringLiteral("run.csv"))));
}

void TestRecordFileSaver::noRecordingIsAnError()
{
    QTemporaryDir directory;
    RecordFileSaver saver(nullptr);

    const RecordSaveResult result = saver.save(directory.filePath(QStringLiteral("run.csv")));

    QCOMPARE(result.outcome, RecordSaveResult::NotSaved);
    QVERIFY2(result.message.contains(QStringLiteral("no recording")), qPrintable(result.message));
    QCOMPARE(namesIn(directory.path()), QStringList());
}

void TestRecordFileSaver::aFileThatIsStillOpenIsClosedFirst()
{
    QTemporaryDir directory;
    auto* file = new QTemporaryFile(directory.filePath(QStringLiteral("MemoryWatcher")));
    QVERIFY(file->open());
    QCOMPARE(file->write(record), qint64(record.size()));
    RecordFileSaver saver(file);

    QCOMPARE(saver.save(directory.filePath(QStringLiteral("run.csv"))).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(directory.filePath(QStringLiteral("run.csv"))), record);
}

void TestRecordFileSaver::aFileThatWasCutMeanwhileIsNotSavedByACopy()
{
    QTemporaryDir directory;
    QTemporaryDir destination(QStringLiteral("/dev/shm/record-XXXXXX"));
    RecordFileSaver saver(recordFile(directory.path(), record));
    QVERIFY(QFile::resize(saver.temporaryPath(), 10));

    QCOMPARE(saver.save(destination.filePath("run.csv")).outcome, RecordSaveResult::NotSaved);

    QCOMPARE(namesIn(destination.path()), QStringList());
    QVERIFY(saver.hasRecording());
}

void TestRecordFileSaver::aRecordingIsSavedAfterItsModelWasDeleted()
{
    QTemporaryDir directory;
    auto model = std::make_unique<QObject>();
    QTemporaryFile* const file = recordFile(directory.path(), record);
    file->setParent(model.get());
    RecordFileSaver saver(file);
    model.reset();

    QCOMPARE(saver.save(directory.filePath("run.csv")).outcome, RecordSaveResult::Saved);

    QCOMPARE(contentOf(directory.filePath("run.csv")), record);
}

void TestRecordFileSaver::anUnsavedRecordingOutlivesTheSaverAndTheModel()
{
    QTemporaryDir directory;
    QString path;
    {
        QObject model;
        QTemporaryFile* file = recordFile(directory.path(), record);
        file->setParent(&model);
        RecordFileSaver saver(file);
        path = saver.temporaryPath();
    }

    QCOMPARE(contentOf(path), record);
}

void TestRecordFileSaver::aDiscardedRecordingIsRemoved()
{
    QTemporaryDir directory;
    RecordFileSaver saver(recordFile(directory.path(), record));

    saver.discard();

    QCOMPARE(namesIn(directory.path()), QStringList());
    QVERIFY(!saver.hasRecording());
    QCOMPARE(saver.save(directory.filePath(QStringLiteral("run.csv"))).outcome, RecordSaveResult::NotSaved);
}

QTEST_GUILESS_MAIN(TestRecordFileSaver)

#include "tst_record_file_saver.moc"
