// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"
#include "support/patient_try.h"

#include <session/sample_stream.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

class TestRobotSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theExampleOfTheClassCommentWatchesAKey();

    // Failures
    void aFailureOfTheLinkIsReported();
    void aLinkThatGivesUpIsReportedAndLeavesEverythingForTheNextOpening_data();
    void aLinkThatGivesUpIsReportedAndLeavesEverythingForTheNextOpening();
    void watchingWithoutAConnectionIsNoFailure();
    void anErrorOfTheDisplayedKeySetIsReported();
    void anErrorThatRepeatsItselfIsReportedOnce();

    // Listing only
    void aSessionThatListsAsksForTheKeysOnce();
    void aSessionThatListsReportsBatches();
    void aSessionThatListsWatchesNothing();
    void aSessionThatListsAsksWhetherTheRobotIsFastOnDemand();
};

void TestRobotSession::theExampleOfTheClassCommentWatchesAKey()
{
    auto link = std::make_unique<FakeRobotLink>();
    FakeRobotLink* const robot = link.get();

#include "robot_session_example.inc"

    QCOMPARE(robot->state(), RobotLink::Connecting);
    robot->establish();
    for (int fetch = 0; fetch < robot->memory->fetchCount(); ++fetch)
        robot->memory->finishLists({"Arm/Position"}, {}, {}, fetch);
    robot->answerRealTimeSupported(true);
    QTRY_VERIFY(session.isReady());
    QCOMPARE(text(session.displayedKeys()->keys()), QStringLiteral("Arm/Position DATA"));
    QCOMPARE(session.grantedPeriod(), 100);
    QVERIFY(session.isWatcherRunning());
}

void TestRobotSession::aFailureOfTheLinkIsReported()
{
    SessionOnFakeRobot f;
    QSignalSpy failed(&f.session, &RobotSession::failed);

    f.link->reportFailure("Not reached", "No answer.");
    f.link->reportFailure("Not reached", "No answer.");

    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.at(0), QVariantList({"Not reached", "No answer."}));
}

void TestRobotSession::aLinkThatGivesUpIsReportedAndLeavesEverythingForTheNextOpening_data()
{
    QTest::addColumn<QString>("beginning");
    QTest::newRow("never connected") << "";
    QTest::newRow("while the lists are fetched") << "connect";
    QTest::newRow("when it is ready") << "ready";
    QTest::newRow("after a loss") << "lost";
}

void TestRobotSession::aLinkThatGivesUpIsReportedAndLeavesEverythingForTheNextOpening()
{
    QFETCH(QString, beginning);
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(50);
    f.session.watch(keySet({"A"}));
    if (beginning == "connect")
        f.connectRobot();
    else if (!beginning.isEmpty())
        f.becomeReady(true);
    if (beginning == "lost")
        f.link->lose();
    QSignalSpy failed(&f.session, &RobotSession::failed);

    f.link->giveUp();
    f.session.watch(keySet({"B"}));
    f.finishAllFetches(); // too late

    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.at(0).at(0).toString(), QString("Given up"));
    QCOMPARE(f.link->state(), RobotLink::Disconnected);
    QVERIFY(!f.session.isReady());
    QVERIFY(!f.session.isWatcherRunning());
    QCOMPARE(names(f.session.watchedKeys()), QStringList({"A", "B"}));

    f.becomeReady(true);
    QVERIFY(f.session.isReady());
    QVERIFY(f.session.isWatcherRunning());
    QCOMPARE(f.displayed(), QStringList({"A", "B"}));
    QCOMPARE(f.session.grantedPeriod(), 50);
    QCOMPARE(failed.count(), 1);
}

void TestRobotSession::watchingWithoutAConnectionIsNoFailure()
{
    SessionOnFakeRobot f;
    QSignalSpy failed(&f.session, &RobotSession::failed);

    f.session.watch(keySet({"A"}));

    QCOMPARE(failed.count(), 0);
}

void TestRobotSession::anErrorOfTheDisplayedKeySetIsReported()
{
    SessionOnFakeRobot f;
    QSignalSpy failed(&f.session, &RobotSession::failed);

    f.session.displayedKeys()->startWatcher(false);

    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.at(0).at(0).toString(), QString("Not connected to a robot"));
}

void TestRobotSession::anErrorThatRepeatsItselfIsReportedOnce()
{
    SessionOnFakeRobot f;
    QSignalSpy failed(&f.session, &RobotSession::failed);

    f.session.displayedKeys()->startWatcher(false);
    f.session.displayedKeys()->startWatcher(false);
    QCOMPARE(failed.count(), 1);
    f.deliverQueuedEvents();
    f.session.displayedKeys()->startWatcher(false);

    QCOMPARE(failed.count(), 2);
}

void TestRobotSession::aSessionThatListsAsksForTheKeysOnce()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);
    QSignalSpy ready(&f.session, &RobotSession::readyChanged);
    f.connectRobot();
    QCOMPARE(f.link->log, QStringList({"getDataList", "getEventList", "getMicroEventList"}));
    QCOMPARE(ready.count(), 0);

    f.finishFetch(0);

    QCOMPARE(ready.count(), 1);
    QCOMPARE(text(f.session.catalogue()->keys()), QString("A DATA, B DATA, E EVENT"));
}

void TestRobotSession::aSessionThatListsReportsBatches()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);
    QSignalSpy batches(f.session.samples(), &SampleStream::batchReceived);
    f.connectRobot();

    f.link->memory->deliver({{"A", {{1, 1}}}});

    QCOMPARE(batches.count(), 1);
}

void TestRobotSession::aSessionThatListsWatchesNothing()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);

    f.session.watch(keySet({"A"}));
    f.session.watchByName("B");
    f.session.unwatch(keySet({"A"}));
    f.session.setWantedPeriod(10);
    f.session.setWatcherWanted(false);
    f.connectRobot();

    QVERIFY(!f.session.displayedKeys());
    QCOMPARE(f.session.watchedKeys(), QSet<MemoryKey>());
    QCOMPARE(f.session.wantedPeriod(), 0);
    QCOMPARE(f.session.grantedPeriod(), 0);
    QVERIFY(!f.session.isWatcherRunning());
}

void TestRobotSession::aSessionThatListsAsksWhetherTheRobotIsFastOnDemand()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);
    QSignalSpy answered(f.link, &RobotLink::realTimeSupportAnswered);
    f.session.askRealTimeSupport(); // nobody to ask yet
    f.connectRobot();
    QCOMPARE(f.link->log.filter("isRealTimeSupported").size(), 0);

    f.session.askRealTimeSupport();
    QCOMPARE(f.link->log.filter("isRealTimeSupported").size(), 1);
    f.answerRealTimeSupported(true);

    QCOMPARE(answered.count(), 1);
}

QTEST_GUILESS_MAIN(TestRobotSession)

#include "tst_robot_session.moc"
