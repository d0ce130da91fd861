// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/recording_robot.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QTest>

using namespace Velk;

class TestRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheHeaderAndIsAnnounced();
    void theFileIsInTheTemporaryDirectory();
    void aRecordingWithoutDisplayedKeysHasATimeColumnOnly();
    void startsWithTheNewestKnownValues();
    void theInitialValuesComeAfterTheAnnouncement();
    void startingTwiceStartsOnce();
    void stoppingClosesTheFileAndAnnouncesItOnce();
    void stoppingWithoutARecordingDoesNothing();
    void nothingIsRecordedAfterTheStop();
    void takingReturnsTheClosedFileOnce();
    void aNewFileIsMadeAfterTheLastOneWasTaken();
    void aFileThatWasNotTakenIsUsedAgainAndNotEmptied();
    void theFileIsDeletedWithTheModel();
    void takingKeepsTheParentAndTheAutomaticRemoval();
};

void TestRecording::writesTheHeaderAndIsAnnounced()
{
    RecordingRobot robot({"A", "B"});

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{"recording true"});
    QVERIFY(robot.model.isRecording());
    QCOMPARE(robot.recorded(), robot.header());
}

void TestRecording::theFileIsInTheTemporaryDirectory()
{
    RecordingRobot robot({"A"});

    robot.model.startRecording();

    const QFileInfo file(robot.recordFile()->fileName());
    QCOMPARE(file.absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
    QVERIFY(file.fileName().startsWith("MemoryWatcher"));
    QCOMPARE(robot.recordFile()->parent(), &robot.model);
    QCOMPARE(robot.recordFile()->openMode() & QIODevice::ReadWrite, QIODevice::ReadWrite);
}

void TestRecording::aRecordingWithoutDisplayedKeysHasATimeColumnOnly()
{
    RecordingRobot robot({});
    robot.model.startWatcher(false);

    robot.model.startRecording();
    robot.deliver({{"A", {{1.0, 5}}}});

    QCOMPARE(robot.recorded(), QByteArray("Time\n"));
}

void TestRecording::startsWithTheNewestKnownValues()
{
    RecordingRobot robot({"A"});
    robot.deliver({{"A", {{9.0, 0}, {10.0, 1}}}});

    robot.model.startRecording();
    robot.deliver({{"A", {{12.5, 2}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n2.5;2\n"));
}

void TestRecording::theInitialValuesComeAfterTheAnnouncement()
{
    RecordingRobot robot({"A"});
    robot.deliver({{"A", {{10.0, 1}}}});
    QByteArray recordedAtSignal;
    connect(&robot.model, &DisplayedMemoryKeyListModel::recording, this, [&] { recordedAtSignal = robot.recorded(); });

    robot.model.startRecording();

    QCOMPARE(recordedAtSignal, QByteArray("Time;\"A\"\n"));
    QCOMPARE(robot.rows(), QByteArray("0;1\n"));
}

void TestRecording::startingTwiceStartsOnce()
{
    RecordingRobot robot({"A"});

    robot.model.startRecording();
    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), QStringList{"recording true"});
    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n"));
}

void TestRecording::stoppingClosesTheFileAndAnnouncesItOnce()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.takeLog();
    bool openAtSignal = true;
    connect(&robot.model, &DisplayedMemoryKeyListModel::recording, this,
            [&] { openAtSignal = robot.recordFile()->isOpen(); });

    robot.model.stopRecording();
    robot.model.stopRecording();

    QCOMPARE(robot.takeLog(), QStringList{"recording false"});
    QVERIFY(!robot.model.isRecording());
    QVERIFY(!openAtSignal);
}

void TestRecording::stoppingWithoutARecordingDoesNothing()
{
    RecordingRobot robot({"A"});

    robot.model.stopRecording();

    QCOMPARE(robot.takeLog(), QStringList());
}

void TestRecording::nothingIsRecordedAfterTheStop()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.stopRecording();
    robot.takeLog();

    robot.deliver({{"A", {{10.0, 1}}}});

    QCOMPARE(robot.takeLog(), QStringList{"keysUpdated A"});
    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n"));
}

void TestRecording::takingReturnsTheClosedFileOnce()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.stopRecording();

    QTemporaryFile* const file = robot.model.takeRecordFile();

    QVERIFY(file);
    QVERIFY(!file->isOpen());
    QCOMPARE(file->error(), QFileDevice::NoError);
    QVERIFY(QFileInfo::exists(file->fileName()));
    QVERIFY(!robot.model.takeRecordFile());
}

void TestRecording::aNewFileIsMadeAfterTheLastOneWasTaken()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.stopRecording();
    QTemporaryFile* const first = robot.model.takeRecordFile();

    robot.model.startRecording();
    robot.model.stopRecording();
    QTemporaryFile* const second = robot.model.takeRecordFile();

    QVERIFY(second && second != first);
    QVERIFY(second->fileName() != first->fileName());
}

void TestRecording::aFileThatWasNotTakenIsUsedAgainAndNotEmptied()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{1.0, "a long first recording"}}}});
    robot.model.stopRecording();
    QTemporaryFile* const first = robot.recordFile();
    robot.model.removeKeys(keySet({"A"}));
    robot.model.addKeys(keySet({"B"}));

    robot.model.startRecording();

    QCOMPARE(robot.recordFile(), first);
    QCOMPARE(robot.recorded(), QByteArray("Time;\"B\"\n0;\"a long first recording\"\n"));
}

void TestRecording::theFileIsDeletedWithTheModel()
{
    QString fileName;
    {
        RecordingRobot robot({"A"});
        robot.model.startRecording();
        fileName = robot.recordFile()->fileName();
        QVERIFY(QFileInfo::exists(fileName));
    }
    QVERIFY(!QFileInfo::exists(fileName));
}

void TestRecording::takingKeepsTheParentAndTheAutomaticRemoval()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.model.stopRecording();

    QTemporaryFile* const file = robot.model.takeRecordFile();

    QCOMPARE(file->parent(), &robot.model);
    QVERIFY(file->autoRemove());
}

QTEST_GUILESS_MAIN(TestRecording)
#include "tst_recording.moc"
