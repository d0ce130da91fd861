// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"

#include <session/sample_stream.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

class TestRobotSessionSampling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Watcher
    void theWatcherRunsAgainAfterAReconnection();
    void theWatcherIsKnownToHaveStoppedWhenTheStateChanges();
    void aWatcherThatIsNotWantedStaysStopped();
    void aWatcherThatIsStoppedLeavesAGap();
    void closingStopsTheWatcherAndKeepsTheKeys();

    // Period
    void thePeriodOfTheDisplayedKeySetIsWantedAtFirst();
    void aPeriodIsTakenWithoutAConnection();
    void aPeriodBelowTheLimitIsGrantedWhenTheRobotAllowsIt();
    void aPeriodBelowTheLimitIsNotGrantedByASlowRobot();
    void aPeriodIsAskedForAgainOnEveryConnection();
    void aPeriodThatEveryRobotGrantsWaitsForNoAnswer();
    void theRobotIsAskedOnceWhetherItIsFast();
};

void TestRobotSessionSampling::theWatcherRunsAgainAfterAReconnection()
{
    SessionOnFakeRobot f;
    QSignalSpy failed(&f.session, &RobotSession::failed);
    f.session.watch(keySet({"A", "B"}));
    f.becomeReady();
    QVERIFY(f.session.isWatcherRunning());
    f.link->lose();
    QVERIFY(!f.session.isWatcherRunning());
    f.link->takeLog();

    f.becomeReady();

    QVERIFY(f.session.isWatcherRunning());
    QStringList log = f.link->takeLog();
    QCOMPARE(log.takeLast(), QString("startWatcher 1000 1000"));
    log.sort();
    QCOMPARE(log, QStringList({"unwatchAll", "watchKey A 100", "watchKey B 100"}));
    QCOMPARE(failed.count(), 1); // the loss
}

void TestRobotSessionSampling::theWatcherIsKnownToHaveStoppedWhenTheStateChanges()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.becomeReady();
    bool isRunning = true;
    connect(f.link, &RobotLink::stateChanged, this, [&] { isRunning = f.session.isWatcherRunning(); });

    f.link->lose();

    QVERIFY(!isRunning);
}

void TestRobotSessionSampling::aWatcherThatIsNotWantedStaysStopped()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.session.setWatcherWanted(false);
    f.becomeReady();
    f.link->lose();
    f.becomeReady();
    f.session.watch(keySet({"B"}));

    QCOMPARE(f.displayed(), QStringList({"A", "B"}));
    QVERIFY(!f.session.isWatcherRunning());
    QCOMPARE(f.link->memory->dataGatheredReceivers(), 1); // the stream
    f.session.setWatcherWanted(true);
    QVERIFY(f.session.isWatcherRunning());
    QCOMPARE(f.link->memory->dataGatheredReceivers(), 2);
}

void TestRobotSessionSampling::aWatcherThatIsStoppedLeavesAGap()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.becomeReady();
    f.link->memory->deliver({{"A", {{1, 1}}}});
    QSignalSpy gap(f.session.samples(), &SampleStream::gapBegan);

    f.session.setWatcherWanted(false);

    QCOMPARE(gap.count(), 1);
}

void TestRobotSessionSampling::closingStopsTheWatcherAndKeepsTheKeys()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.becomeReady();
    QSignalSpy watcher(&f.session, &RobotSession::watcherChanged);

    f.link->close();

    QVERIFY(!f.session.isWatcherRunning());
    QCOMPARE(watcher.count(), 1);
    QCOMPARE(names(f.session.watchedKeys()), QStringList("A"));
    QCOMPARE(f.displayed(), QStringList("A"));
}

void TestRobotSessionSampling::thePeriodOfTheDisplayedKeySetIsWantedAtFirst()
{
    SessionOnFakeRobot f;

    QCOMPARE(f.session.wantedPeriod(), 1000);
    QCOMPARE(f.session.grantedPeriod(), 1000);
}

void TestRobotSessionSampling::aPeriodIsTakenWithoutAConnection()
{
    SessionOnFakeRobot f;
    QSignalSpy changed(&f.session, &RobotSession::periodChanged);

    f.session.setWantedPeriod(300);

    QCOMPARE(f.session.grantedPeriod(), 300);
    QCOMPARE(changed.count(), 1);
}

void TestRobotSessionSampling::aPeriodBelowTheLimitIsGrantedWhenTheRobotAllowsIt()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(10);
    f.connectRobot();
    QCOMPARE(f.session.grantedPeriod(), 200);
    QSignalSpy changed(&f.session, &RobotSession::periodChanged);

    f.answerRealTimeSupported(true);

    QCOMPARE(f.session.wantedPeriod(), 10);
    QCOMPARE(f.session.grantedPeriod(), 10);
    QVERIFY(changed.count() > 0);
}

void TestRobotSessionSampling::aPeriodBelowTheLimitIsNotGrantedByASlowRobot()
{
    SessionOnFakeRobot f;
    f.becomeReady(true);
    f.session.setWantedPeriod(10);
    QCOMPARE(f.session.grantedPeriod(), 10);

    f.link->lose();
    f.becomeReady(false);

    QCOMPARE(f.session.wantedPeriod(), 10);
    QCOMPARE(f.session.grantedPeriod(), 200);
}

void TestRobotSessionSampling::aPeriodIsAskedForAgainOnEveryConnection()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(10);
    f.becomeReady(false);
    QCOMPARE(f.session.grantedPeriod(), 200);

    f.link->lose();
    f.becomeReady(true);

    QCOMPARE(f.session.grantedPeriod(), 10);
}

void TestRobotSessionSampling::aPeriodThatEveryRobotGrantsWaitsForNoAnswer()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(200);

    f.connectRobot();
    f.finishAllFetches();

    QVERIFY(f.session.isReady());
}

void TestRobotSessionSampling::theRobotIsAskedOnceWhetherItIsFast()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(10);
    f.session.watch(keySet({"A"}));

    f.becomeReady(true);

    QCOMPARE(f.link->log.filter("isRealTimeSupported").size(), 1);
}

QTEST_GUILESS_MAIN(TestRobotSessionSampling)

#include "tst_robot_session_sampling.moc"
