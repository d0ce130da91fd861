// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <QTest>

using namespace Velk;

class TestWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startingSendsThePeriodsToTheRobot_data();
    void startingSendsThePeriodsToTheRobot();
    void startingTwiceStartsOnce();
    void startWithoutARobotReportsIt();
    void startWithoutAMemoryInterfaceReportsIt();
    void aFailedStartCanBeTriedAgain();
    void stoppingDisconnectsThenStops();
    void stoppingTwiceStopsOnce();
    void stoppingDoesNotNeedTheConnection();
    void stoppingWithoutAMemoryInterfaceStillStops();
    void noBatchIsTakenInTwiceAfterTheInterfaceWasMissingAtTheStop();
    void noBatchIsTakenInAfterTheStop();

    void aPeriodIsKeptWithinTheLimits_data();
    void aPeriodIsKeptWithinTheLimits();
    void aNewPeriodIsSentToTheRobotThenAnnounced();
    void theGatherPeriodHasItsOwnMinimum();
    void thePresentPeriodIsNotSetAgain();
    void aPeriodReachesTheRobotWhetherOrNotTheWatcherRuns();
    void aPeriodSetWithoutARobotIsStoredWithoutASignal();
    void aPeriodSetWithoutAMemoryInterfaceIsStoredWithoutASignal();

    void theMinimumFollowsTheRobotsAnswer();
    void theMinimumIsAnnouncedOnChangeOnly();
    void aNewConnectionResetsTheMinimum();
    void aHigherMinimumLeavesThePeriodAsItIs();
};

namespace {

const QString notConnected = "error [Not connected to a robot] Cannot retrieve memory value if no robot is connected.";
const QString noMemory =
    "error [Missing memory interface] Cannot retrieve memory values as no memory interface was found.";

struct WatchedRobot
{
    WatchedRobot()
        : model(&connection)
    {
        connection.establish();
        logSignals(model, connection);
        connection.takeLog();
    }

    QStringList takeLog() { return connection.takeLog(); }
    void setRealTime(bool supported)
    {
        QVERIFY(connection.memory->answerRealTimeSupported(supported));
        takeLog();
    }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
};

} // namespace

void TestWatcher::startingSendsThePeriodsToTheRobot_data()
{
    QTest::addColumn<int>("period");
    QTest::addColumn<bool>("ownPeriods");
    QTest::addColumn<QString>("call");
    QTest::newRow("the sampling period twice") << 1000 << false << "startWatcher 1000 1000";
    QTest::newRow("each key at its own period") << 1000 << true << "startWatcher 1000 0";
    QTest::newRow("deliveries not faster than 200 ms") << 10 << false << "startWatcher 200 10";
    QTest::newRow("own periods, deliveries not faster than 200 ms") << 10 << true << "startWatcher 200 0";
    QTest::newRow("just above the minimum") << 201 << false << "startWatcher 201 201";
}

void TestWatcher::startingSendsThePeriodsToTheRobot()
{
    QFETCH(int, period);
    QFETCH(bool, ownPeriods);
    QFETCH(QString, call);
    WatchedRobot robot;
    robot.setRealTime(true);
    robot.model.setSamplingPeriod(period);
    robot.takeLog();

    robot.model.startWatcher(ownPeriods);

    QCOMPARE(robot.takeLog(), QStringList{call});
    QCOMPARE(robot.connection.memory->dataGatheredReceivers(), 1);
}

void TestWatcher::startingTwiceStartsOnce()
{
    WatchedRobot robot;

    robot.model.startWatcher(false);
    robot.model.startWatcher(true);

    QCOMPARE(robot.takeLog(), QStringList{"startWatcher 1000 1000"});
    QCOMPARE(robot.connection.memory->dataGatheredReceivers(), 1);
}

void TestWatcher::startWithoutARobotReportsIt()
{
    WatchedRobot robot;
    robot.connection.connected = false;

    robot.model.startWatcher(false);

    QCOMPARE(robot.takeLog(), QStringList{notConnected});
    QCOMPARE(robot.connection.memory->dataGatheredReceivers(), 0);
}

void TestWatcher::startWithoutAMemoryInterfaceReportsIt()
{
    WatchedRobot robot;
    robot.connection.memory.reset();

    robot.model.startWatcher(false);

    QCOMPARE(robot.takeLog(), QStringList{noMemory});
}

void TestWatcher::aFailedStartCanBeTriedAgain()
{
    WatchedRobot robot;
    robot.connection.connected = false;
    robot.model.startWatcher(false);
    robot.connection.connected = true;
    robot.takeLog();

    robot.model.startWatcher(false);

    QCOMPARE(robot.takeLog(), QStringList{"startWatcher 1000 1000"});
}

void TestWatcher::stoppingDisconnectsThenStops()
{
    // The signal is disconnected before stopWatcher() is called.
    class ObservantMemory : public FakeMemoryInterface
    {
    public:
        using FakeMemoryInterface::FakeMemoryInterface;
        void stopWatcher() override
        {
            receiversAtStop = dataGatheredReceivers();
            FakeMemoryInterface::stopWatcher();
        }
        int receiversAtStop = -1;
    };
    WatchedRobot robot;
    const auto memory = boost::make_shared<ObservantMemory>(&robot.connection.log);
    robot.connection.memory = memory;
    robot.model.startWatcher(false);
    robot.takeLog();

    robot.model.stopWatcher();

    QCOMPARE(robot.takeLog(), QStringList{"stopWatcher"});
    QCOMPARE(memory->receiversAtStop, 0);
}

void TestWatcher::stoppingTwiceStopsOnce()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    robot.takeLog();

    robot.model.stopWatcher();
    robot.model.stopWatcher();

    QCOMPARE(robot.takeLog(), QStringList{"stopWatcher"});
}

void TestWatcher::stoppingDoesNotNeedTheConnection()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    robot.connection.connected = false;
    robot.takeLog();

    robot.model.stopWatcher();

    QCOMPARE(robot.takeLog(), QStringList{"stopWatcher"});
}

void TestWatcher::stoppingWithoutAMemoryInterfaceStillStops()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.connection.memory;
    robot.connection.memory.reset();
    robot.takeLog();

    robot.model.stopWatcher();
    QCOMPARE(robot.takeLog(), QStringList());
    robot.connection.memory = memory;
    robot.model.startWatcher(false);

    QCOMPARE(robot.takeLog(), QStringList{"startWatcher 1000 1000"});
}

void TestWatcher::noBatchIsTakenInTwiceAfterTheInterfaceWasMissingAtTheStop()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.connection.memory;
    robot.connection.memory.reset();
    robot.model.stopWatcher();
    robot.connection.memory = memory;
    robot.model.startWatcher(false);
    robot.takeLog();

    memory->deliver({});

    QCOMPARE(robot.takeLog(), QStringList{"keysUpdated"});
}

void TestWatcher::noBatchIsTakenInAfterTheStop()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.stopWatcher();
    robot.takeLog();

    robot.connection.memory->deliver({{"Arm", {{1.0, 5}}}});

    QCOMPARE(robot.takeLog(), QStringList());
    QCOMPARE(histories(robot.model.displayedKeys()), QStringList{"Arm: "});
}

void TestWatcher::aPeriodIsKeptWithinTheLimits_data()
{
    QTest::addColumn<bool>("realTime");
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("granted");
    QTest::newRow("below the minimum") << false << 5 << 200;
    QTest::newRow("at the minimum") << false << 200 << 200;
    QTest::newRow("above the minimum") << false << 201 << 201;
    QTest::newRow("zero") << false << 0 << 200;
    QTest::newRow("negative") << false << -1 << 200;
    QTest::newRow("at the maximum") << false << 9999990 << 9999990;
    QTest::newRow("above the maximum") << false << 9999991 << 9999990;
    QTest::newRow("far above the maximum") << false << std::numeric_limits<int>::max() << 9999990;
    QTest::newRow("real time, below the minimum") << true << 5 << 10;
    QTest::newRow("real time, above the minimum") << true << 11 << 11;
}

void TestWatcher::aPeriodIsKeptWithinTheLimits()
{
    QFETCH(bool, realTime);
    QFETCH(int, asked);
    QFETCH(int, granted);
    WatchedRobot robot;
    robot.setRealTime(realTime);

    robot.model.setSamplingPeriod(asked);

    QCOMPARE(robot.model.samplingPeriod(), granted);
}

void TestWatcher::aNewPeriodIsSentToTheRobotThenAnnounced()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    robot.takeLog();

    robot.model.setSamplingPeriod(500);

    QCOMPARE(robot.takeLog(),
             (QStringList{"setGatherPeriod 500", "setSamplingPeriod 500", "sampligPeriodUpdated 500"}));
}

void TestWatcher::theGatherPeriodHasItsOwnMinimum()
{
    WatchedRobot robot;
    robot.setRealTime(true);

    robot.model.setSamplingPeriod(50);

    QCOMPARE(robot.takeLog(), (QStringList{"setGatherPeriod 200", "setSamplingPeriod 50", "sampligPeriodUpdated 50"}));
}

void TestWatcher::thePresentPeriodIsNotSetAgain()
{
    WatchedRobot robot;

    robot.model.setSamplingPeriod(1000);

    QCOMPARE(robot.takeLog(), QStringList());
}

void TestWatcher::aPeriodReachesTheRobotWhetherOrNotTheWatcherRuns()
{
    WatchedRobot robot;

    robot.model.setSamplingPeriod(500);

    QCOMPARE(robot.takeLog(),
             (QStringList{"setGatherPeriod 500", "setSamplingPeriod 500", "sampligPeriodUpdated 500"}));
}

void TestWatcher::aPeriodSetWithoutARobotIsStoredWithoutASignal()
{
    WatchedRobot robot;
    robot.connection.connected = false;

    robot.model.setSamplingPeriod(500);
    QCOMPARE(robot.takeLog(), QStringList());
    QCOMPARE(robot.model.samplingPeriod(), 500);

    robot.connection.connected = true;
    robot.model.startWatcher(false);
    QCOMPARE(robot.takeLog(), QStringList{"startWatcher 500 500"});
}

void TestWatcher::aPeriodSetWithoutAMemoryInterfaceIsStoredWithoutASignal()
{
    WatchedRobot robot;
    robot.connection.memory.reset();

    robot.model.setSamplingPeriod(500);

    QCOMPARE(robot.takeLog(), QStringList());
    QCOMPARE(robot.model.samplingPeriod(), 500);
}

void TestWatcher::theMinimumFollowsTheRobotsAnswer()
{
    WatchedRobot robot;

    QVERIFY(robot.connection.memory->answerRealTimeSupported(true));
    QCOMPARE(robot.model.minSamplingPeriod(), 10);
    QVERIFY(robot.connection.memory->answerRealTimeSupported(false));
    QCOMPARE(robot.model.minSamplingPeriod(), 200);

    QCOMPARE(robot.takeLog(), (QStringList{"minSamplingPeriodUpdated 10", "minSamplingPeriodUpdated 200"}));
}

void TestWatcher::theMinimumIsAnnouncedOnChangeOnly()
{
    WatchedRobot robot;

    QVERIFY(robot.connection.memory->answerRealTimeSupported(false));
    QVERIFY(robot.connection.memory->answerRealTimeSupported(true));
    QVERIFY(robot.connection.memory->answerRealTimeSupported(true));

    QCOMPARE(robot.takeLog(), QStringList{"minSamplingPeriodUpdated 10"});
}

void TestWatcher::aNewConnectionResetsTheMinimum()
{
    WatchedRobot robot;
    robot.setRealTime(true);

    robot.connection.establish();

    QCOMPARE(robot.model.minSamplingPeriod(), 200);
    QCOMPARE(robot.takeLog().first(), QString("minSamplingPeriodUpdated 200"));
}

void TestWatcher::aHigherMinimumLeavesThePeriodAsItIs()
{
    WatchedRobot robot;
    robot.setRealTime(true);
    robot.model.setSamplingPeriod(10);
    robot.takeLog();

    robot.setRealTime(false);
    QCOMPARE(robot.model.samplingPeriod(), 10);
    robot.model.startWatcher(false);
    QCOMPARE(robot.takeLog(), QStringList{"startWatcher 200 10"});

    robot.model.setSamplingPeriod(10);
    QCOMPARE(robot.model.samplingPeriod(), 200);
}

QTEST_GUILESS_MAIN(TestWatcher)
#include "tst_watcher.moc"
