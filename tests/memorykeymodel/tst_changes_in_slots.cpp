// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/calling_memory_interface.h"
#include "support/file_size_limit.h"
#include "support/recording_robot.h"

#include <QTemporaryFile>
#include <QTest>

#include <memory>

using namespace Velk;

namespace {

using Model = DisplayedMemoryKeyListModel;

} // namespace

/// What a slot may change while a recording, a batch or a call is under way.
class TestChangesInSlots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordingStartedWhenAnotherEndsKeepsItsOwnOrigin();
    void aRecordingThatIsEndedAtItsStartWritesNoRow();
    void aRecordingThatIsRestartedAtItsStartHasItsInitialValuesOnce();
    void aFileThatASlotRecordsToAfterAFailureIsKept();
    void aRecordingStartedDuringAFailureGetsNoRowsOfTheFailedOne();
    void aFileTakenDuringAFailureBelongsToTheApplication();
    void anInterfaceThatDisappearsDuringAFailureIsUnblocked();
    void keysRemovedWhileABatchIsAnnouncedAreNotRecorded();
    void theSendersBatchMayChangeWhileItIsAnnounced();
    void theRequestedSetMayBeTheOneThatASlotChanges();
    void theRequestedSetMayBeTheOneThatTheMemoryServiceChanges();
};

void TestChangesInSlots::aRecordingStartedWhenAnotherEndsKeepsItsOwnOrigin()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{10.0, 1}}}});
    bool again = true;
    connect(&robot.model, &Model::recording, this, [&](bool isRecording) {
        if (isRecording || !again)
            return;
        again = false;
        delete robot.model.takeRecordFile();
        robot.model.startRecording();
    });

    robot.model.stopRecording();
    robot.deliver({{"A", {{12.0, 2}}}});

    QVERIFY(robot.model.isRecording());
    QCOMPARE(robot.rows(), QByteArray("0;1\n2;2\n"));
}

void TestChangesInSlots::aRecordingThatIsEndedAtItsStartWritesNoRow()
{
    RecordingRobot robot({"A"});
    robot.deliver({{"A", {{10.0, 1}}}});
    connect(&robot.model, &Model::recording, this, [&](bool isRecording) {
        if (isRecording)
            robot.model.stopRecording();
    });
    robot.takeLog();

    robot.model.startRecording();

    QCOMPARE(robot.takeLog(), (QStringList{"recording true", "recording false"}));
    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n"));
}

void TestChangesInSlots::aRecordingThatIsRestartedAtItsStartHasItsInitialValuesOnce()
{
    RecordingRobot robot({"A"});
    robot.deliver({{"A", {{10.0, 1}}}});
    bool again = true;
    connect(&robot.model, &Model::recording, this, [&](bool isRecording) {
        if (!isRecording || !again)
            return;
        again = false;
        robot.model.stopRecording();
        robot.model.startRecording();
    });

    robot.model.startRecording();

    QVERIFY(robot.model.isRecording());
    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n0;1\n"));
}

void TestChangesInSlots::aFileThatASlotRecordsToAfterAFailureIsKept()
{
    RecordingRobot robot({QString(20000, 'x')});
    auto full = std::make_unique<FileSizeLimit>(100);
    connect(&robot.model, &Model::error, this, [&] {
        full.reset();
        robot.recordFile()->close();
        robot.model.startRecording();
    });

    robot.model.startRecording();

    QVERIFY(robot.model.isRecording());
    QCOMPARE(robot.recorded(), robot.header());
}

void TestChangesInSlots::aRecordingStartedDuringAFailureGetsNoRowsOfTheFailedOne()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    const QString longText(20000, 'x');
    connect(&robot.model, &Model::recording, this, [&](bool isRecording) {
        if (isRecording)
            return;
        delete robot.model.takeRecordFile();
        robot.model.startRecording();
    });
    const FileSizeLimit full(100);

    robot.deliver({{"A", {{10.0, longText}, {11.0, 1}, {12.0, 2}}}});
    robot.deliver({{"A", {{13.0, 3}}}});

    QVERIFY(robot.model.isRecording());
    QCOMPARE(robot.recorded(), QByteArray("Time;\"A\"\n0;2\n1;3\n"));
}

void TestChangesInSlots::aFileTakenDuringAFailureBelongsToTheApplication()
{
    RecordingRobot robot({QString(20000, 'x')});
    QPointer<QTemporaryFile> taken;
    connect(&robot.model, &Model::error, this, [&] { taken = robot.model.takeRecordFile(); });
    const FileSizeLimit full(100);

    robot.model.startRecording();

    QVERIFY(taken);
    QVERIFY(!robot.model.takeRecordFile());
}

void TestChangesInSlots::anInterfaceThatDisappearsDuringAFailureIsUnblocked()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.connection.memory;
    connect(&robot.model, &Model::error, this, [&] { robot.connection.memory.reset(); });
    {
        const FileSizeLimit full(100);
        robot.deliver({{"A", {{10.0, QString(20000, 'x')}}}});
    }

    QVERIFY(!memory->signalsBlocked());
}

void TestChangesInSlots::keysRemovedWhileABatchIsAnnouncedAreNotRecorded()
{
    RecordingRobot robot({"A", "B"});
    robot.model.startRecording();
    connect(&robot.model, &Model::keysUpdated, this, [&] { robot.model.removeKeys(keySet({"A"})); });

    robot.deliver({{"A", {{10.0, 1}}}, {"B", {{10.0, 2}}}});

    QCOMPARE(robot.rows(), QByteArray("0;2\n"));
}

void TestChangesInSlots::theSendersBatchMayChangeWhileItIsAnnounced()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    Batch pending{{"A", {{10.0, 1}}}};
    connect(&robot.model, &Model::keysUpdated, this, [&] { pending.clear(); });

    robot.connection.memory->dataGathered(pending);

    QCOMPARE(robot.rows(), QByteArray("0;1\n"));
}

void TestChangesInSlots::theRequestedSetMayBeTheOneThatASlotChanges()
{
    RecordingRobot robot({"A", "B"});
    QSet<MemoryKey> wanted = keySet({"C", "D"});
    connect(&robot.model, &Model::keysAdded, this, [&] { wanted.clear(); });

    robot.model.addKeys(wanted);

    QCOMPARE(names(robot.model.keys()), (QStringList{"A", "B", "C", "D"}));
}

void TestChangesInSlots::theRequestedSetMayBeTheOneThatTheMemoryServiceChanges()
{
    FakeConnectionManager connection;
    QSet<MemoryKey> wanted = keySet({"A", "B", "C"});
    connection.memory = boost::make_shared<CallingMemoryInterface>(&connection.log, [&](const QString& call, QObject*) {
        if (call.startsWith("watchKey") || call.startsWith("unwatchKey"))
            wanted = keySet({"D"});
    });
    Model model(&connection);

    model.addKeys(wanted);
    QCOMPARE(names(model.keys()), (QStringList{"A", "B", "C"}));

    wanted = keySet({"A", "B"});
    model.removeKeys(wanted);
    QCOMPARE(names(model.keys()), QStringList{"C"});
}

QTEST_GUILESS_MAIN(TestChangesInSlots)
#include "tst_changes_in_slots.moc"
