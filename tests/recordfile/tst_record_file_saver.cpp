// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "record_files.h"
#include "support/file_size_limit.h"

#include <recordfile/record_file_saver.h>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <memory>

using namespace Velk;

class TestRecordFileSaver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordingIsMovedToItsDestination();
    void aRecordingIsCopiedToAnotherFileSystem();
    void aRecordingWhoseTemporaryFileWasDeletedIsSaved();
    void aPartlyWrittenLineIsCutOffAndReported();
    void rowsThatClosingCouldNotWriteAreReported();
    void aFileWithoutACompleteLineIsNotSaved();
    void noRecordingIsAnError();
    void aFileThatIsStillOpenIsClosedFirst();
    void aFileThatWasCutMeanwhileIsNotSavedByACopy();
    void aRecordingIsSavedAfterItsModelWasDeleted();
    void anUnsavedRecordingOutlivesTheSaverAndTheModel();
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
