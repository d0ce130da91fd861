// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/file_size_limit.h"
#include "support/recording_robot.h"

#include <QFileInfo>
#include <QTemporaryFile>
#include <QTest>

using namespace Velk;

namespace {

const QString cannotWriteHeader = "error [Memory recording] Could not write data.\n"
                                  "Your disk may be full or inaccessible.\n"
                                  "Please check your permissions.";
const QString cannotWriteRow = "error [Memory recording] Could not write data.\n"
                               "Your disk may be full or inaccessible.\n"
                               "Please move your recorded data to another disk.";

// Longer than the buffer of the file object, so that a write reaches the disk at once.
const QString longText = QString(20000, 'x');

/// While it lives, no temporary file can be created.
class NoTemporaryDirectory
{
public:
    NoTemporaryDirectory() { qputenv("TMPDIR", "/proc"); }
    ~NoTemporaryDirectory() { m_before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_before); }

private:
    const QByteArray m_before = qgetenv("TMPDIR");
};

} // namespace

class TestRecordingFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileThatCannotBeOpenedIsReportedWithItsPath();
    void aRecordingCanBeTriedAgainAfterTheFileCouldNotBeOpened();
    void aHeaderThatCannotBeWrittenIsReported();
    void aHeldFileIsDroppedWhenItsNextHeaderCannotBeWritten();
    void aRowThatCannotBeWrittenEndsTheRecording();
    void theFileIsKeptWithTheRowsBefore();
    void everyRemainingRowIsReported();
    void batchesAreBlockedWhileTheFailureIsReported();
    void aFailureWithoutAMemoryInterfaceIsReportedToo();
    void theNextBatchEndsARecordingWhoseFileWasTaken();
    void anEmptyBatchDoesNotEndARecordingWhoseFileWasTaken();
    void aRecordingCanBeStartedAfterAFailure();
    void whatCouldNotBeWrittenAtTheCloseShowsInTheFile();
};

void TestRecordingFailures::aFileThatCannotBeOpenedIsReportedWithItsPath()
{
    RecordingRobot robot({"A"});
    const NoTemporaryDirectory none;
    QString path;
    connect(&robot.model, &DisplayedMemoryKeyListModel::error, this,
            [&] { path = QFileInfo(*robot.recordFile()).absoluteFilePath(); });

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{"error [Memory recording] Could not open temporary file for writing.\n"
                                          "Please check your permissions for accessing " +
                                          path});
    QVERIFY(!robot.model.isRecording());
    QVERIFY(!robot.recordFile());
    QVERIFY(!robot.model.takeRecordFile());
}

void TestRecordingFailures::aRecordingCanBeTriedAgainAfterTheFileCouldNotBeOpened()
{
    RecordingRobot robot({"A"});
    {
        const NoTemporaryDirectory none;
        robot.model.startRecording();
    }
    robot.takeLog();

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{"recording true"});
    QCOMPARE(robot.recorded(), robot.header());
}

void TestRecordingFailures::aHeaderThatCannotBeWrittenIsReported()
{
    RecordingRobot robot({longText});
    const FileSizeLimit full(100);

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{cannotWriteHeader});
    QVERIFY(!robot.model.isRecording());
    QVERIFY(!robot.recordFile());
    QVERIFY(!robot.model.takeRecordFile());
}

void TestRecordingFailures::aHeldFileIsDroppedWhenItsNextHeaderCannotBeWritten()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.stopRecording();
    const QString fileName = robot.recordFile()->fileName();
    robot.model.addKeys(keySet({longText}));
    robot.takeLog();
    const FileSizeLimit full(100);

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{cannotWriteHeader});
    QVERIFY(!robot.model.takeRecordFile());
    QVERIFY(!QFileInfo::exists(fileName));
}

void TestRecordingFailures::aRowThatCannotBeWrittenEndsTheRecording()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.takeLog();
    const FileSizeLimit full(100);

    robot.deliver({{"A", {{1.0, longText}}}});

    QCOMPARE(robot.takeLog(), (QStringList{"keysUpdated A", cannotWriteRow, "recording false"}));
    QVERIFY(!robot.model.isRecording());
    QVERIFY(!robot.recordFile()->isOpen());
}

void TestRecordingFailures::theFileIsKeptWithTheRowsBefore()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{1.0, 1}}}});
    robot.recorded(); // flushes the file
    {
        const FileSizeLimit full(100);
        robot.deliver({{"A", {{2.0, longText}}}});
    }

    const QByteArray recorded = robot.recorded();
    QTemporaryFile* const file = robot.model.takeRecordFile();

    QVERIFY(file);
    QVERIFY(recorded.startsWith("Time;\"A\"\n0;1\n"));
    QVERIFY(recorded.size() <= 100);
}

void TestRecordingFailures::everyRemainingRowIsReported()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.takeLog();
    const FileSizeLimit full(100);

    robot.deliver({{"A", {{1.0, longText}, {2.0, 2}, {3.0, 3}}}});

    QCOMPARE(robot.takeLog(),
             (QStringList{"keysUpdated A", cannotWriteRow, "recording false", cannotWriteRow, cannotWriteRow}));
}

void TestRecordingFailures::batchesAreBlockedWhileTheFailureIsReported()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    bool blockedAtSignal = false;
    connect(&robot.model, &DisplayedMemoryKeyListModel::error, this, [&] {
        blockedAtSignal = robot.connection.memory->signalsBlocked();
        robot.deliver({{"A", {{9.0, 9}}}}); // dropped, not delayed
    });
    {
        const FileSizeLimit full(100);
        robot.deliver({{"A", {{1.0, longText}}}});
    }
    robot.takeLog();

    QVERIFY(blockedAtSignal);
    QVERIFY(!robot.connection.memory->signalsBlocked());
    robot.deliver({{"A", {{2.0, 2}}}});
    QCOMPARE(robot.takeLog(), QStringList{"keysUpdated A"});
    QCOMPARE(histories(robot.model.displayedKeys()), QStringList{"A: 2=2"});
}

void TestRecordingFailures::aFailureWithoutAMemoryInterfaceIsReportedToo()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.takeLog();
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.connection.memory;
    robot.connection.memory.reset();
    const FileSizeLimit full(100);

    memory->deliver({{"A", {{1.0, longText}}}});

    QCOMPARE(robot.takeLog(), (QStringList{"keysUpdated A", cannotWriteRow, "recording false"}));
    QVERIFY(!memory->signalsBlocked());
}

void TestRecordingFailures::theNextBatchEndsARecordingWhoseFileWasTaken()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    QTemporaryFile* const file = robot.model.takeRecordFile();
    QVERIFY(robot.model.isRecording());
    robot.takeLog();

    robot.deliver({{"A", {{1.0, 1}, {2.0, 2}}}});

    QCOMPARE(robot.takeLog(), (QStringList{"keysUpdated A", cannotWriteRow, "recording false", cannotWriteRow}));
    QVERIFY(!robot.model.isRecording());
    QVERIFY(file->isOpen());
}

void TestRecordingFailures::anEmptyBatchDoesNotEndARecordingWhoseFileWasTaken()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.takeRecordFile();
    robot.takeLog();

    robot.deliver({});

    QCOMPARE(robot.takeLog(), QStringList{"keysUpdated"});
    QVERIFY(robot.model.isRecording());
}

void TestRecordingFailures::aRecordingCanBeStartedAfterAFailure()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    {
        const FileSizeLimit full(100);
        robot.deliver({{"A", {{1.0, longText}}}});
    }
    delete robot.model.takeRecordFile();
    robot.deliver({{"A", {{5.0, 5}}}});

    robot.model.startRecording();

    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n0;5\n"));
}

void TestRecordingFailures::whatCouldNotBeWrittenAtTheCloseShowsInTheFile()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{1.0, QString(200, 'x')}}}});
    robot.takeLog();
    const FileSizeLimit full(100);

    robot.model.stopRecording();

    QCOMPARE(robot.takeLog(), QStringList{"recording false"});
    QVERIFY(robot.model.takeRecordFile()->error() != QFileDevice::NoError);
}

QTEST_GUILESS_MAIN(TestRecordingFailures)
#include "tst_recording_failures.moc"
