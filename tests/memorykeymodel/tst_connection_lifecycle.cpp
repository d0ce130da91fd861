// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"
#include "support/patient_try.h"
#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

using namespace Velk;

class TestConnectionLifecycle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aConnectionSubscribesTheKeysAndFetchesTheCatalogue();
    void aKeyIsWatchedWithItsOwnPeriodOnConnection();
    void aConnectionDoesNotStartTheWatcher();
    void aCatalogueThatIsReadyAtOnceIsUsedBeforeTheConnectionIsAnnounced();
    void aConnectionWithoutAMemoryInterfaceChangesAndEmitsNothing();
    void aLostConnectionStopsRecordingThenWatcherThenIsAnnounced();
    void everySignalOfTheConnectionIsFollowed_data();
    void everySignalOfTheConnectionIsFollowed();
    void twoSignalsWhileDisconnectedAreAnnouncedTwice();
    void twoSignalsWhileConnectedSubscribeTwice();
    void keysSurviveTheDisconnection();
    void keysAddedWhileDisconnectedAreSubscribedOnConnection();
    void keysAreDroppedThatAreAddedBeforeTheSetIsRebuilt();
    void keysAreKeptThatAreAddedWhenTheSetIsRebuilt();
    void theModelGivesTheNewCatalogueItsDisplayedKeys();
    void valuesAreRecordedFromTheConnectionToTheFile();
    void sequencesOfEventsLeaveAConsistentModel_data();
    void sequencesOfEventsLeaveAConsistentModel();
};

namespace {

struct WatchedRobot
{
    WatchedRobot()
        : model(&connection)
    {
        logSignals(model, connection);
    }

    QStringList takeLog() { return connection.takeLog(); }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
};

} // namespace

void TestConnectionLifecycle::aConnectionSubscribesTheKeysAndFetchesTheCatalogue()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.takeLog();

    robot.connection.establish();

    QCOMPARE(robot.takeLog(), (QStringList{"isRealTimeSupported gotRealTimeSupported", "unwatchAll", "watchKey Arm 100",
                                           "getDataList", "getEventList", "getMicroEventList", "robotConnected true"}));
}

void TestConnectionLifecycle::aKeyIsWatchedWithItsOwnPeriodOnConnection()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.takeLog();
    robot.model.setSamplingPeriod(300);
    robot.model.addKeys(keySet({"Arm"}));
    QCOMPARE(robot.takeLog().filter("watchKey"), QStringList{"watchKey Arm 300"});

    robot.connection.establish();

    QCOMPARE(robot.takeLog().filter("watchKey"), QStringList{"watchKey Arm 100"});
}

void TestConnectionLifecycle::aConnectionDoesNotStartTheWatcher()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.model.addKeys(keySet({"Arm"}));
    robot.connection.lose();
    robot.takeLog();

    robot.connection.establish();
    QCOMPARE(robot.takeLog().filter("startWatcher"), QStringList());

    robot.model.addKeys({});
    QCOMPARE(robot.takeLog().filter("startWatcher"), QStringList{"startWatcher 1000 1000"});
}

void TestConnectionLifecycle::aCatalogueThatIsReadyAtOnceIsUsedBeforeTheConnectionIsAnnounced()
{
    // The memory service disappears between the two calls of memoryInterface().
    class FleetingConnection : public FakeConnectionManager
    {
    public:
        boost::shared_ptr<MemoryInterface> memoryInterface() override
        {
            return --remaining < 0 ? boost::shared_ptr<MemoryInterface>() : FakeConnectionManager::memoryInterface();
        }
        int remaining = 0;
    };
    FleetingConnection connection;
    DisplayedMemoryKeyListModel model(&connection);
    logSignals(model, connection);
    model.addKeys(keySet({"Arm"}));
    connection.takeLog();
    connection.remaining = 1;

    connection.establish();

    QCOMPARE(connection.takeLog(), (QStringList{"isRealTimeSupported gotRealTimeSupported", "unwatchAll",
                                                "watchKey Arm 100", "keysUpdated Arm", "robotConnected true"}));
    QCOMPARE(described(model.keys()), QStringList{"Arm UNKNOWN (Arm desc)"});
    QCOMPARE(connection.findChildren<MemoryKeyListModel*>().size(), 0);
}

void TestConnectionLifecycle::aConnectionWithoutAMemoryInterfaceChangesAndEmitsNothing()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.connection.memory->answerRealTimeSupported(true);
    robot.takeLog();
    robot.connection.memory.reset();

    robot.connection.establish();

    QCOMPARE(robot.takeLog(), QStringList());
    QCOMPARE(robot.model.minSamplingPeriod(), 10);
    QCOMPARE(robot.connection.findChildren<MemoryKeyListModel*>().size(), 1);
}

void TestConnectionLifecycle::aLostConnectionStopsRecordingThenWatcherThenIsAnnounced()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.startRecording();
    robot.takeLog();

    robot.connection.lose();

    QCOMPARE(robot.takeLog(), (QStringList{"recording false", "stopWatcher", "robotConnected false"}));
}

void TestConnectionLifecycle::everySignalOfTheConnectionIsFollowed_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("connected");
    QTest::newRow("established") << "established" << true;
    QTest::newRow("lost") << "lost" << false;
    QTest::newRow("disconnected") << "disconnected" << false;
    QTest::newRow("established, but disconnected since") << "established" << false;
    QTest::newRow("lost, but connected again since") << "lost" << true;
}

void TestConnectionLifecycle::everySignalOfTheConnectionIsFollowed()
{
    QFETCH(QString, signal);
    QFETCH(bool, connected);
    WatchedRobot robot;
    robot.connection.connected = connected;

    if (signal == "established")
        emit robot.connection.connectionEstablished();
    else if (signal == "lost")
        emit robot.connection.connectionLost();
    else
        emit robot.connection.disconnected();

    QCOMPARE(robot.takeLog().last(), connected ? QString("robotConnected true") : QString("robotConnected false"));
}

void TestConnectionLifecycle::twoSignalsWhileDisconnectedAreAnnouncedTwice()
{
    WatchedRobot robot;

    robot.connection.lose();
    robot.connection.close();

    QCOMPARE(robot.takeLog(), (QStringList{"robotConnected false", "robotConnected false"}));
}

void TestConnectionLifecycle::twoSignalsWhileConnectedSubscribeTwice()
{
    WatchedRobot robot;

    robot.connection.establish();
    robot.connection.establish();

    QCOMPARE(robot.takeLog().filter("unwatchAll").size(), 2);
    QCOMPARE(robot.connection.findChildren<MemoryKeyListModel*>().size(), 2);
}

void TestConnectionLifecycle::keysSurviveTheDisconnection()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.setSelectedKeys(keySet({"Arm"}));
    robot.connection.memory->deliver({{"Arm", {{1.0, 5}}}});

    robot.connection.lose();

    QCOMPARE(histories(robot.model.displayedKeys()), QStringList{"Arm: 1=5"});
    QCOMPARE(names(robot.model.selectedKeys()), QStringList{"Arm"});
}

void TestConnectionLifecycle::keysAddedWhileDisconnectedAreSubscribedOnConnection()
{
    WatchedRobot robot;
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.connection.memory;
    robot.connection.memory.reset();
    robot.model.addKeys(keySet({"Arm"}));
    robot.connection.memory = memory;
    robot.takeLog();

    robot.connection.establish();

    QCOMPARE(robot.takeLog().filter("watchKey"), QStringList{"watchKey Arm 100"});
}

void TestConnectionLifecycle::keysAreDroppedThatAreAddedBeforeTheSetIsRebuilt()
{
    WatchedRobot robot;
    QSignalSpy updated(&robot.model, &DisplayedMemoryKeyListModel::keysUpdated);
    robot.connection.establish();

    robot.model.addKeys(keySet({"Arm"}));
    robot.takeLog();
    robot.connection.memory->finishLists({"Arm"});

    QTRY_COMPARE(updated.count(), 1);
    QCOMPARE(names(robot.model.keys()), QStringList());
    QCOMPARE(robot.takeLog(), QStringList("keysUpdated")); // the robot goes on sampling Arm
}

void TestConnectionLifecycle::keysAreKeptThatAreAddedWhenTheSetIsRebuilt()
{
    WatchedRobot robot;
    DisplayedMemoryKeyListModel& model = robot.model;
    const QSet<MemoryKey> keys = keySet({"Arm"});

    // The example in the comment of the class.
#include "displayed_memory_key_list_model_example.inc"

    robot.connection.establish();
    robot.connection.memory->finishLists({"Arm"});

    QTRY_COMPARE(names(model.keys()), QStringList("Arm"));
    robot.connection.memory->deliver({{"Arm", {{1.0, 5}}}});
    QCOMPARE(histories(model.displayedKeys()), QStringList("Arm: 1=5"));
}

void TestConnectionLifecycle::theModelGivesTheNewCatalogueItsDisplayedKeys()
{
    WatchedRobot robot;
    robot.model.addKeys({MemoryKey("Arm", "the arm", DataNature)});

    robot.connection.establish();

    const QList<MemoryKeyListModel*> catalogues = robot.connection.findChildren<MemoryKeyListModel*>();
    QCOMPARE(catalogues.size(), 1);
    QCOMPARE(catalogues.first()->parent(), &robot.connection);
    QCOMPARE(described(catalogues.first()->selectedKeys()), QStringList{"Arm DATA (the arm)"});
}

void TestConnectionLifecycle::valuesAreRecordedFromTheConnectionToTheFile()
{
    WatchedRobot robot;
    robot.connection.establish();
    robot.connection.memory->finishLists({"Arm"}, {"Bumper"});
    QCoreApplication::processEvents();
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.startRecording();
    robot.takeLog();

    robot.connection.memory->deliver({{"Arm", {{10.0, 1}, {10.5, 2}}}});
    robot.connection.lose();

    QCOMPARE(robot.takeLog(),
             (QStringList{"keysUpdated Arm", "recording false", "stopWatcher", "robotConnected false"}));
    QTemporaryFile* const file = robot.model.takeRecordFile();
    QVERIFY(file->open());
    QCOMPARE(file->readAll(), QByteArray("Time;\"Arm\"\n0;1\n0.5;2\n"));
}

void TestConnectionLifecycle::sequencesOfEventsLeaveAConsistentModel_data()
{
    QTest::addColumn<QStringList>("events");
    const QStringList events{"connect", "lose", "close", "ready", "deliver", "add", "remove", "record", "forget"};
    for (const QString& first : events) {
        for (const QString& second : events) {
            for (const QString& third : events)
                QTest::newRow(qPrintable(first + ", " + second + ", " + third)) << QStringList{first, second, third};
        }
    }
}

void TestConnectionLifecycle::sequencesOfEventsLeaveAConsistentModel()
{
    QFETCH(QStringList, events);
    WatchedRobot robot;
    robot.connection.establish();
    robot.model.addKeys(keySet({"Arm", "Leg"}));

    int fetches = 1;
    int finished = 0;
    for (const QString& event : events) {
        if (event == "connect") {
            robot.connection.establish();
            ++fetches;
        } else if (event == "lose") {
            robot.connection.lose();
        } else if (event == "close") {
            robot.connection.close();
        } else if (event == "ready") {
            if (finished < fetches)
                robot.connection.memory->finishLists({"Arm"}, {}, {}, finished++);
            QCoreApplication::processEvents();
        } else if (event == "deliver") {
            robot.connection.memory->deliver({{"Arm", {{1.0, 5}}}});
        } else if (event == "add") {
            robot.model.addKeys(keySet({"Head"}));
        } else if (event == "remove") {
            robot.model.removeKeys(keySet({"Arm"}));
        } else if (event == "record") {
            robot.model.startRecording();
        } else if (event == "forget") {
            qDeleteAll(robot.connection.findChildren<MemoryKeyListModel*>());
            finished = fetches;
        }
        // A batch arrives once at most, and never while the robot is disconnected.
        QVERIFY(robot.connection.memory->dataGatheredReceivers() <= (robot.connection.connected ? 1 : 0));
        QVERIFY(!(event == "lose" || event == "close") || !robot.model.isRecording());
    }
    for (; finished < fetches; ++finished)
        robot.connection.memory->finishLists({"Arm"}, {}, {}, finished);
    QCoreApplication::processEvents();
    robot.model.removeKeys(robot.model.keys());
    QCOMPARE(names(robot.model.keys()), QStringList());
    QCOMPARE(robot.connection.memory->dataGatheredReceivers(), 0);
}

QTEST_GUILESS_MAIN(TestConnectionLifecycle)
#include "tst_connection_lifecycle.moc"
