// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_recording.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file.");
}

} // namespace

class TestVelkRecordFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anExistingFileIsKept();
    void anExistingFileIsReplacedWithForce();
    void aFileThatComesUpMeanwhileIsKept();
    void aDirectoryThatGoesAwayLeavesTheRecordingInItsTemporaryFile();
    void aLostConnectionSavesWhatThereIs();
    void aLostConnectionAndAFailureToSaveAreBothReported();
    void aFullDiskSavesTheCompleteRows();
    void aFullDiskThatOnlyClosingFindsSavesTheCompleteRows();
    void aRecordFileThatCannotBeMadeIsAnError();
};

void TestVelkRecordFaults::anExistingFileIsKept()
{
    const RecordDirectory records;
    writeFile(records.file, "precious");
    VelkRun velk;

    // A robot out of reach: the file is looked at before the robot is.
    QCOMPARE(
        velk.run(record(records.file, QStringLiteral("--all --timeout 1000"), QStringLiteral("test:?out-of-reach"))),
        8);

    QVERIFY2(velk.messages().contains(records.file), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("--force")), qPrintable(velk.messages()));
    QCOMPARE(contentOf(records.file), QByteArray("precious"));
}

void TestVelkRecordFaults::anExistingFileIsReplacedWithForce()
{
    const RecordDirectory records;
    writeFile(records.file, "old");
    VelkRun velk;

    QCOMPARE(velk.run(record(records.file, QStringLiteral("--all --period 10 --for 0.5 --force"))), 0);

    QCOMPARE(shapeOf(contentOf(records.file)),
             QStringLiteral("%1 lines of 7 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecordFaults::aFileThatComesUpMeanwhileIsKept()
{
    const RecordDirectory records;
    VelkRun velk;
    QVERIFY2(startRecording(velk, records.file), qPrintable(velk.messages()));
    writeFile(records.file, "precious");

    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 8);
    QCOMPARE(contentOf(records.file), QByteArray("precious"));
    const QStringList kept = filesIn(velk.temporaryDirectory());
    QCOMPARE(kept.size(), 1);
    QVERIFY2(velk.messages().contains(kept.first()), qPrintable(velk.messages()));
    QVERIFY(contentOf(QDir(velk.temporaryDirectory()).filePath(kept.first())).startsWith("Time;"));
}

void TestVelkRecordFaults::aDirectoryThatGoesAwayLeavesTheRecordingInItsTemporaryFile()
{
    QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("runs")));
    VelkRun velk;
    QVERIFY2(startRecording(velk, directory.filePath(QStringLiteral("runs/run.csv"))), qPrintable(velk.messages()));
    QVERIFY(QDir(directory.path()).rmdir(QStringLiteral("runs")));

    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 8);
    QCOMPARE(filesIn(velk.temporaryDirectory()).size(), 1);
    QVERIFY2(velk.messages().contains(filesIn(velk.temporaryDirectory()).first()), qPrintable(velk.messages()));
}

void TestVelkRecordFaults::aLostConnectionSavesWhatThereIs()
{
    const RecordDirectory records;
    VelkTerminal velk;
    velk.start(record(records.file, QStringLiteral("--all --period 10 --for 1000")));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d* rows")), qPrintable(velk.text()));

    velk.sendSignal(SIGUSR1);

    QCOMPARE(velk.end(), 5);
    QVERIFY2(velk.text().contains(QStringLiteral("connection was lost: the recording ends there")),
             qPrintable(velk.text()));
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    QCOMPARE(shapeOf(contentOf(records.file)), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecordFaults::aLostConnectionAndAFailureToSaveAreBothReported()
{
    const RecordDirectory records;
    VelkRun velk;
    QVERIFY2(startRecording(velk, records.file), qPrintable(velk.messages()));
    writeFile(records.file, "precious");

    velk.sendSignal(SIGUSR1);

    QCOMPARE(velk.end(), 8);
    QVERIFY2(velk.messages().contains(QStringLiteral("The connection was lost")), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("exists already")), qPrintable(velk.messages()));
}

void TestVelkRecordFaults::aFullDiskSavesTheCompleteRows()
{
    const RecordDirectory records;
    VelkRun velk;
    velk.setFileSizeLimit(100); // 51200 bytes, past what the file object keeps in its buffer

    // 200 keys fill that within a few batches; nothing but the full disk ends this recording.
    QCOMPARE(velk.run(record(records.file, QStringLiteral("Extra/* --period 10"), QStringLiteral("test:?keys=200"))),
             7);

    const QByteArray content = contentOf(records.file);
    QVERIFY2(content.size() <= 51200 && content.size() > 40000, qPrintable(QString::number(content.size())));
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 201 cells").arg(savedRows(velk.messages()) + 1));
    QVERIFY2(velk.messages().contains(QStringLiteral("Could not write data")), qPrintable(velk.messages()));
    QCOMPARE(velk.messages().count(QStringLiteral("Could not write data")), 1);
}

void TestVelkRecordFaults::aFullDiskThatOnlyClosingFindsSavesTheCompleteRows()
{
    const RecordDirectory records;
    VelkTerminal velk(QStringLiteral("/bin/sh"));
    // 512 bytes, much less than the file object keeps in its buffer.
    velk.start(QStringList{QStringLiteral("-c"), QStringLiteral("ulimit -f 1; exec \"$0\" \"$@\""), testVelkProgram} +
               record(records.file, QStringLiteral("--all --period 10")));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d\\d+ rows")), qPrintable(velk.text()));

    velk.typeCtrlC();

    QCOMPARE(velk.end(), 7);
    QVERIFY2(velk.text().contains(QStringLiteral("Recording incomplete")), qPrintable(velk.text()));
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    const QByteArray content = contentOf(records.file);
    QVERIFY(content.size() <= 512);
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecordFaults::aRecordFileThatCannotBeMadeIsAnError()
{
    const RecordDirectory records;
    VelkRun velk;
    velk.setVariable(QStringLiteral("TMPDIR"), QStringLiteral("/proc"));

    QCOMPARE(velk.run(record(records.file, QStringLiteral("--all --period 10"))), 8);

    QVERIFY2(velk.messages().contains(QStringLiteral("Could not open temporary file")), qPrintable(velk.messages()));
    QCOMPARE(filesIn(records.directory.path()), QStringList());
}

QTEST_GUILESS_MAIN(TestVelkRecordFaults)

#include "tst_velk_record_faults.moc"
