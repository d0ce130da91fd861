// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"

#include <memorykeymodel/memory_key_list_model.h>
#include <session/sample_stream.h>

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <utility>

using namespace Velk;

namespace {

QSet<MemoryKey> unknownKeys(const QStringList& keyNames)
{
    return keySet(keyNames, UnknownNature);
}

// "A DATA, X UNKNOWN"
QString text(const QSet<MemoryKey>& keys)
{
    QStringList lines;
    for (const MemoryKey& key : keys)
        lines << key.name() + ' ' + key.natureToString();
    lines.sort();
    return lines.join(", ");
}

} // namespace

class TestRobotSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<MemoryKeyListModel*>(); } // for the spies

    // Catalogue and readiness
    void everyConnectionBringsACatalogue();
    void theCatalogueBeforeIsDeletedAfterItsSuccessorIsAnnounced();
    void aCatalogueOfABrokenConnectionIsNotUsed();
    void aCatalogueThatIsNotWantedIsNotFetched();
    void aCatalogueThatIsNotWantedAnyMoreIsDropped();
    void aCatalogueThatIsNotWantedAnyMoreIsNotWaitedFor();
    void aCatalogueThatIsWantedDuringAConnectionIsFetchedAtOnce();
    void aCatalogueThatIsWantedAgainIsFetchedAgain();
    void aCatalogueThatIsWantedWhenTheRobotConnectsIsFetchedOnce();
    void theSessionIsReadyOnceForEachConnection();
    void theSessionIsReadyWhenTheLastAnswerIsIn_data();
    void theSessionIsReadyWhenTheLastAnswerIsIn();
    void theWatchedKeysAreDisplayedBeforeTheSessionIsReady();

    // Keys
    void aKeyIsWatchedAtOnceWhenTheSessionIsReady();
    void aKeyThatWasWatchedBeforeTheConnectionIsWatchedWithIt();
    void aKeyThatIsWatchedWhileTheKeysAreRebuiltIsNotLost();
    void aKeyThatIsUnwatchedWhileTheKeysAreRebuiltDoesNotComeBack();
    void aKeyHasTheNatureThatTheRobotGivesIt_data();
    void aKeyHasTheNatureThatTheRobotGivesIt();
    void aNameThatTheRobotListsIsNoUserKey();
    void aNameThatTheRobotDoesNotListIsAUserKeyOfEveryCatalogue();
    void anEmptyNameIsNoKey();
    void changesInTheDisplayedKeySetItselfAreKept();
    void aDisplayedKeySetThatDeliversWhileItIsRebuiltLosesNothing();
    void aCatalogueThatIsLateLosesNothing();
    void aKeyThatASlotUnwatchesIsNotDisplayed();
    void aKeyThatASlotRemovesFromTheSetIsNotWatched();
    void aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys_data();
    void aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys();
    void aKeyThatASlotOfTheErrorUnwatchesIsNotWatched();
    void theRebuiltKeysAreReportedBeforeTheChangesToThem();

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

void TestRobotSession::everyConnectionBringsACatalogue()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::catalogueReady);
    QVERIFY(!f.session.catalogue());

    f.becomeReady();
    QCOMPARE(text(f.session.catalogue()->keys()), QString("A DATA, B DATA, E EVENT"));
    f.link->lose();
    QVERIFY(f.session.catalogue());
    f.becomeReady();

    QCOMPARE(ready.count(), 2);
}

void TestRobotSession::theCatalogueBeforeIsDeletedAfterItsSuccessorIsAnnounced()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    const QPointer<MemoryKeyListModel> former = f.session.catalogue();
    bool wasThere = false;
    connect(&f.session, &RobotSession::catalogueReady, this, [&] { wasThere = former; });

    f.link->lose();
    f.becomeReady();

    QVERIFY(wasThere);
    QVERIFY(!former);
    QVERIFY(f.session.catalogue());
}

void TestRobotSession::aCatalogueOfABrokenConnectionIsNotUsed()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::catalogueReady);
    f.connectRobot();

    f.link->lose();
    f.finishAllFetches();

    QCOMPARE(ready.count(), 0);
    QVERIFY(!f.session.catalogue());
}

void TestRobotSession::aCatalogueThatIsNotWantedIsNotFetched()
{
    SessionOnFakeRobot f;
    f.session.setCatalogueWanted(false);

    f.becomeReady();

    QCOMPARE(f.link->memory->fetchCount(), 1); // that of the displayed key set
    QVERIFY(f.session.isReady());
    QVERIFY(!f.session.catalogue());
}

void TestRobotSession::aCatalogueThatIsNotWantedAnyMoreIsDropped()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    const QPointer<MemoryKeyListModel> catalogue = f.session.catalogue();

    f.session.setCatalogueWanted(false);

    QVERIFY(!f.session.catalogue());
    QVERIFY(f.session.isReady());
    QTRY_VERIFY(!catalogue);
}

void TestRobotSession::aCatalogueThatIsNotWantedAnyMoreIsNotWaitedFor()
{
    SessionOnFakeRobot f;
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);
    f.connectRobot();
    f.finishFetch(0);
    QVERIFY(!f.session.isReady());

    f.session.setCatalogueWanted(false);

    QVERIFY(f.session.isReady());
    f.finishAllFetches();
    QCOMPARE(catalogueReady.count(), 0);
}

void TestRobotSession::aCatalogueThatIsWantedDuringAConnectionIsFetchedAtOnce()
{
    SessionOnFakeRobot f;
    f.session.setCatalogueWanted(false);
    f.becomeReady();
    f.session.watchByName("X");
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);
    QSignalSpy readyChanged(&f.session, &RobotSession::readyChanged);

    f.session.setCatalogueWanted(true);
    f.session.watch(unknownKeys({"E"}));
    f.finishFetch(1);

    QCOMPARE(catalogueReady.count(), 1);
    QCOMPARE(text(f.session.catalogue()->keys()), QString("A DATA, B DATA, E EVENT, X UNKNOWN"));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("E EVENT, X UNKNOWN"));
    QCOMPARE(readyChanged.count(), 0);
}

void TestRobotSession::aCatalogueThatIsWantedAgainIsFetchedAgain()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);

    f.session.setCatalogueWanted(true); // it is: nothing happens
    QCOMPARE(f.link->memory->fetchCount(), 2);
    f.session.setCatalogueWanted(false);
    f.session.setCatalogueWanted(true);
    QCOMPARE(f.link->memory->fetchCount(), 3);
    f.finishFetch(2);

    QCOMPARE(catalogueReady.count(), 1);
    QVERIFY(f.session.catalogue());
}

void TestRobotSession::aCatalogueThatIsWantedWhenTheRobotConnectsIsFetchedOnce()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);
    f.session.setCatalogueWanted(false);
    connect(f.link, &RobotLink::stateChanged, this, [&] { f.session.setCatalogueWanted(true); });

    f.becomeReady();

    QCOMPARE(f.link->memory->fetchCount(), 1);
    QVERIFY(f.session.isReady());
    QVERIFY(f.session.catalogue());
}

void TestRobotSession::theSessionIsReadyOnceForEachConnection()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::readyChanged);

    f.becomeReady();
    f.session.watch(keySet({"A"}));
    QCOMPARE(ready.count(), 1);
    QVERIFY(f.session.isReady());
    f.link->lose();
    QCOMPARE(ready.count(), 2);
    QVERIFY(!f.session.isReady());
    f.becomeReady();
    QCOMPARE(ready.count(), 3);
    f.link->close();

    QCOMPARE(ready.count(), 4);
    QVERIFY(!f.session.isReady());
}

void TestRobotSession::theSessionIsReadyWhenTheLastAnswerIsIn_data()
{
    QTest::addColumn<bool>("isReconnection");
    QTest::addColumn<QString>("order");
    QTest::addColumn<bool>("isRealTime");

    // d: the lists of the displayed key set, c: those of the catalogue, r: whether the robot samples in real time
    QString order("cdr");
    do {
        for (const bool isReconnection : {false, true}) {
            for (const bool isRealTime : {false, true})
                QTest::addRow("%s, %s, %s", isReconnection ? "again" : "first", qPrintable(order),
                              isRealTime ? "fast" : "slow")
                    << isReconnection << order << isRealTime;
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

void TestRobotSession::theSessionIsReadyWhenTheLastAnswerIsIn()
{
    QFETCH(bool, isReconnection);
    QFETCH(QString, order);
    QFETCH(bool, isRealTime);
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(50);
    f.session.watch(keySet({"A"}));
    if (isReconnection) {
        f.becomeReady();
        f.link->lose();
    }
    QSignalSpy ready(&f.session, &RobotSession::readyChanged);
    f.connectRobot();

    for (const QChar answer : order) {
        QCOMPARE(ready.count(), 0);
        if (answer == 'd')
            f.finishFetch(0);
        else if (answer == 'c')
            f.finishFetch(1);
        else
            f.answerRealTimeSupported(isRealTime);
    }

    QCOMPARE(ready.count(), 1);
    QCOMPARE(f.session.grantedPeriod(), isRealTime ? 50 : 200);
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A DATA"));
    QVERIFY(f.session.isWatcherRunning());
}

void TestRobotSession::theWatchedKeysAreDisplayedBeforeTheSessionIsReady()
{
    SessionOnFakeRobot f;
    QStringList displayed;
    connect(&f.session, &RobotSession::readyChanged, this, [&] { displayed = f.displayed(); });
    f.connectRobot();
    f.session.watch(keySet({"A"}));

    f.finishAllFetches();

    QCOMPARE(displayed, QStringList("A"));
}

void TestRobotSession::aKeyIsWatchedAtOnceWhenTheSessionIsReady()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    f.link->takeLog();
    QSignalSpy watched(&f.session, &RobotSession::watchedKeysChanged);

    f.session.watch(keySet({"A"}));
    QCOMPARE(f.link->takeLog(), QStringList({"watchKey A 1000", "startWatcher 1000 1000"}));
    f.session.watch(keySet({"A"}));
    QCOMPARE(f.link->takeLog(), QStringList());
    f.session.unwatch(keySet({"A"}));
    QCOMPARE(f.link->takeLog(), QStringList({"unwatchKey A", "stopWatcher"}));

    QCOMPARE(watched.count(), 2);
    QVERIFY(!f.session.isWatcherRunning());
}

void TestRobotSession::aKeyThatWasWatchedBeforeTheConnectionIsWatchedWithIt()
{
    SessionOnFakeRobot f;
    f.session.watch(unknownKeys({"A"}));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A UNKNOWN"));

    f.becomeReady();

    QCOMPARE(f.link->takeLog(), QStringList({"unwatchAll", "watchKey A 100", "startWatcher 1000 1000"}));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A DATA"));
}

void TestRobotSession::aKeyThatIsWatchedWhileTheKeysAreRebuiltIsNotLost()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.connectRobot();

    f.session.watch(keySet({"B"}));
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList({"A", "B"}));
    QVERIFY(f.session.isWatcherRunning());
    QVERIFY(f.link->takeLog().contains("watchKey B 1000"));
}

void TestRobotSession::aKeyThatIsUnwatchedWhileTheKeysAreRebuiltDoesNotComeBack()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A", "B"}));
    f.connectRobot();

    f.session.unwatch(keySet({"B"}));
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList({"A"}));
    QVERIFY(f.link->takeLog().contains("unwatchKey B"));
}

void TestRobotSession::aKeyHasTheNatureThatTheRobotGivesIt_data()
{
    QTest::addColumn<QString>("watchedAt");
    QTest::newRow("watched before the connection") << "before";
    QTest::newRow("watched while the lists are fetched") << "fetching";
    QTest::newRow("watched when the set is rebuilt and the catalogue is not ready") << "rebuilt";
    QTest::newRow("watched when everything is known") << "ready";
}

void TestRobotSession::aKeyHasTheNatureThatTheRobotGivesIt()
{
    QFETCH(QString, watchedAt);
    SessionOnFakeRobot f;
    const auto watchAt = [&](const char* moment) {
        if (watchedAt == moment)
            f.session.watch(unknownKeys({"A", "E", "X"}));
    };

    watchAt("before");
    f.connectRobot();
    watchAt("fetching");
    f.finishFetch(0);
    watchAt("rebuilt");
    f.finishFetch(1);
    watchAt("ready");

    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A DATA, E EVENT, X UNKNOWN"));
}

void TestRobotSession::aNameThatTheRobotListsIsNoUserKey()
{
    SessionOnFakeRobot f;
    f.becomeReady();

    f.session.watchByName("E");

    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("E EVENT"));
    QCOMPARE(text(f.session.catalogue()->keys(UnknownNature)), QString());
}

void TestRobotSession::aNameThatTheRobotDoesNotListIsAUserKeyOfEveryCatalogue()
{
    SessionOnFakeRobot f;
    f.session.watchByName("X");
    f.becomeReady();
    QCOMPARE(text(f.session.catalogue()->keys(UnknownNature)), QString("X UNKNOWN"));
    f.session.watchByName("Y");
    QCOMPARE(text(f.session.catalogue()->keys(UnknownNature)), QString("X UNKNOWN, Y UNKNOWN"));

    f.link->lose();
    f.becomeReady();

    QCOMPARE(text(f.session.catalogue()->keys(UnknownNature)), QString("X UNKNOWN, Y UNKNOWN"));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("X UNKNOWN, Y UNKNOWN"));
}

void TestRobotSession::anEmptyNameIsNoKey()
{
    SessionOnFakeRobot f;

    f.session.watchByName(QString());

    QCOMPARE(f.session.watchedKeys(), QSet<MemoryKey>());
}

void TestRobotSession::changesInTheDisplayedKeySetItselfAreKept()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.connectRobot();

    f.session.displayedKeys()->addKeys(keySet({"B"}));
    f.session.displayedKeys()->removeKeys(keySet({"A"}));
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList("B"));
    QCOMPARE(names(f.session.watchedKeys()), QStringList("B"));
    QVERIFY(f.session.isWatcherRunning());
}

void TestRobotSession::aDisplayedKeySetThatDeliversWhileItIsRebuiltLosesNothing()
{
    SessionOnFakeRobot f;
    f.connectRobot();
    f.session.displayedKeys()->addKeys(keySet({"A"})); // starts the watcher

    f.link->memory->deliver({{"A", {{1, 1}}}});
    f.session.watch(keySet({"B"}));
    f.link->memory->deliver({});
    f.deliverQueuedEvents();
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList({"A", "B"}));
}

void TestRobotSession::aCatalogueThatIsLateLosesNothing()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.connectRobot();
    f.link->lose();
    f.session.watch(keySet({"B"}));
    f.session.unwatch(keySet({"A"}));

    f.finishFetch(0); // gives the set the keys of the connection: A

    QCOMPARE(f.displayed(), QStringList("B"));
    QCOMPARE(names(f.session.watchedKeys()), QStringList("B"));
    QVERIFY(!f.session.isWatcherRunning());
}

void TestRobotSession::aKeyThatASlotUnwatchesIsNotDisplayed()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    f.session.watch(keySet({"A"}));
    connect(f.session.displayedKeys(), &DisplayedMemoryKeyListModel::keysRemoved, this,
            [&] { f.session.unwatch(keySet({"B"})); });

    f.link->lose();
    f.connectRobot();
    f.session.watch(keySet({"B"}));
    f.session.unwatch(keySet({"A"}));
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList());
    QCOMPARE(names(f.session.watchedKeys()), QStringList());
}

void TestRobotSession::aKeyThatASlotRemovesFromTheSetIsNotWatched()
{
    SessionOnFakeRobot f;
    DisplayedMemoryKeyListModel* const set = f.session.displayedKeys();
    connect(set, &DisplayedMemoryKeyListModel::error, this, [set] { set->removeKeys(keySet({"A"})); });

    set->addKeys(keySet({"A"})); // an error, there being no connection, and only then keysAdded()

    QCOMPARE(f.displayed(), QStringList());
    QCOMPARE(names(f.session.watchedKeys()), QStringList());
}

void TestRobotSession::aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys_data()
{
    QTest::addColumn<bool>("isSlotOfTheSet");
    QTest::addColumn<bool>("isWatching");
    QTest::addColumn<QStringList>("displayed");
    QTest::newRow("watched, on the set's signal") << true << true << QStringList({"A", "B", "C"});
    QTest::newRow("watched, on the session's signal") << false << true << QStringList({"A", "B", "C"});
    QTest::newRow("unwatched, on the set's signal") << true << false << QStringList({"B"});
    QTest::newRow("unwatched, on the session's signal") << false << false << QStringList({"B"});
}

void TestRobotSession::aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys()
{
    QFETCH(bool, isSlotOfTheSet);
    QFETCH(bool, isWatching);
    QFETCH(QStringList, displayed);
    SessionOnFakeRobot f;
    DisplayedMemoryKeyListModel* const set = f.session.displayedKeys();
    f.session.watch(keySet({"A"}));
    bool isFirst = true;
    const auto changeKeys = [&] {
        if (!std::exchange(isFirst, false))
            return; // adding without a connection is an error again
        if (isWatching)
            f.session.watch(keySet({"C"}));
        else
            f.session.unwatch(keySet({"A"}));
    };
    if (isSlotOfTheSet)
        connect(set, &DisplayedMemoryKeyListModel::error, this, changeKeys);
    else
        connect(&f.session, &RobotSession::failed, this, changeKeys);

    set->addKeys(keySet({"B"})); // an error, there being no connection

    QVERIFY(!isFirst);
    QCOMPARE(f.displayed(), displayed);
    QCOMPARE(names(f.session.watchedKeys()), displayed);
    f.becomeReady();
    QCOMPARE(f.displayed(), displayed);
}

void TestRobotSession::aKeyThatASlotOfTheErrorUnwatchesIsNotWatched()
{
    SessionOnFakeRobot f;
    connect(&f.session, &RobotSession::failed, this, [&] { f.session.unwatch(keySet({"A"})); });

    f.session.displayedKeys()->addKeys(keySet({"A"}));

    QCOMPARE(f.displayed(), QStringList());
    QCOMPARE(names(f.session.watchedKeys()), QStringList());
}

void TestRobotSession::theRebuiltKeysAreReportedBeforeTheChangesToThem()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.connectRobot();
    f.session.watch(keySet({"B"}));
    f.finishFetch(1);
    QStringList reports;
    using Model = DisplayedMemoryKeyListModel;
    connect(f.session.displayedKeys(), &Model::keysUpdated, this, [&] { reports << "updated"; });
    connect(f.session.displayedKeys(), &Model::keysAdded, this, [&] { reports << "added"; });

    f.finishFetch(0);

    QCOMPARE(reports, QStringList({"updated", "added"}));
}

void TestRobotSession::theWatcherRunsAgainAfterAReconnection()
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

void TestRobotSession::theWatcherIsKnownToHaveStoppedWhenTheStateChanges()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.becomeReady();
    bool isRunning = true;
    connect(f.link, &RobotLink::stateChanged, this, [&] { isRunning = f.session.isWatcherRunning(); });

    f.link->lose();

    QVERIFY(!isRunning);
}

void TestRobotSession::aWatcherThatIsNotWantedStaysStopped()
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

void TestRobotSession::aWatcherThatIsStoppedLeavesAGap()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A"}));
    f.becomeReady();
    f.link->memory->deliver({{"A", {{1, 1}}}});
    QSignalSpy gap(f.session.samples(), &SampleStream::gapBegan);

    f.session.setWatcherWanted(false);

    QCOMPARE(gap.count(), 1);
}

void TestRobotSession::closingStopsTheWatcherAndKeepsTheKeys()
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

void TestRobotSession::thePeriodOfTheDisplayedKeySetIsWantedAtFirst()
{
    SessionOnFakeRobot f;

    QCOMPARE(f.session.wantedPeriod(), 1000);
    QCOMPARE(f.session.grantedPeriod(), 1000);
}

void TestRobotSession::aPeriodIsTakenWithoutAConnection()
{
    SessionOnFakeRobot f;
    QSignalSpy changed(&f.session, &RobotSession::periodChanged);

    f.session.setWantedPeriod(300);

    QCOMPARE(f.session.grantedPeriod(), 300);
    QCOMPARE(changed.count(), 1);
}

void TestRobotSession::aPeriodBelowTheLimitIsGrantedWhenTheRobotAllowsIt()
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

void TestRobotSession::aPeriodBelowTheLimitIsNotGrantedByASlowRobot()
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

void TestRobotSession::aPeriodIsAskedForAgainOnEveryConnection()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(10);
    f.becomeReady(false);
    QCOMPARE(f.session.grantedPeriod(), 200);

    f.link->lose();
    f.becomeReady(true);

    QCOMPARE(f.session.grantedPeriod(), 10);
}

void TestRobotSession::aPeriodThatEveryRobotGrantsWaitsForNoAnswer()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(200);

    f.connectRobot();
    f.finishAllFetches();

    QVERIFY(f.session.isReady());
}

void TestRobotSession::theRobotIsAskedOnceWhetherItIsFast()
{
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(10);
    f.session.watch(keySet({"A"}));

    f.becomeReady(true);

    QCOMPARE(f.link->log.filter("isRealTimeSupported").size(), 1);
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
