// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"

#include <QSignalSpy>
#include <QTest>

#include <utility>

using namespace Velk;

class TestRobotSessionKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

void TestRobotSessionKeys::aKeyIsWatchedAtOnceWhenTheSessionIsReady()
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

void TestRobotSessionKeys::aKeyThatWasWatchedBeforeTheConnectionIsWatchedWithIt()
{
    SessionOnFakeRobot f;
    f.session.watch(unknownKeys({"A"}));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A UNKNOWN"));

    f.becomeReady();

    QCOMPARE(f.link->takeLog(), QStringList({"unwatchAll", "watchKey A 100", "startWatcher 1000 1000"}));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A DATA"));
}

void TestRobotSessionKeys::aKeyThatIsWatchedWhileTheKeysAreRebuiltIsNotLost()
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

void TestRobotSessionKeys::aKeyThatIsUnwatchedWhileTheKeysAreRebuiltDoesNotComeBack()
{
    SessionOnFakeRobot f;
    f.session.watch(keySet({"A", "B"}));
    f.connectRobot();

    f.session.unwatch(keySet({"B"}));
    f.finishAllFetches();

    QCOMPARE(f.displayed(), QStringList({"A"}));
    QVERIFY(f.link->takeLog().contains("unwatchKey B"));
}

void TestRobotSessionKeys::aKeyHasTheNatureThatTheRobotGivesIt_data()
{
    QTest::addColumn<QString>("watchedAt");
    QTest::newRow("watched before the connection") << "before";
    QTest::newRow("watched while the lists are fetched") << "fetching";
    QTest::newRow("watched when the set is rebuilt and the catalogue is not ready") << "rebuilt";
    QTest::newRow("watched when everything is known") << "ready";
}

void TestRobotSessionKeys::aKeyHasTheNatureThatTheRobotGivesIt()
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

void TestRobotSessionKeys::aNameThatTheRobotListsIsNoUserKey()
{
    SessionOnFakeRobot f;
    f.becomeReady();

    f.session.watchByName("E");

    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("E EVENT"));
    QCOMPARE(text(f.session.catalogue()->keys(UnknownNature)), QString());
}

void TestRobotSessionKeys::aNameThatTheRobotDoesNotListIsAUserKeyOfEveryCatalogue()
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

void TestRobotSessionKeys::anEmptyNameIsNoKey()
{
    SessionOnFakeRobot f;

    f.session.watchByName(QString());

    QCOMPARE(f.session.watchedKeys(), QSet<MemoryKey>());
}

void TestRobotSessionKeys::changesInTheDisplayedKeySetItselfAreKept()
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

void TestRobotSessionKeys::aDisplayedKeySetThatDeliversWhileItIsRebuiltLosesNothing()
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

void TestRobotSessionKeys::aCatalogueThatIsLateLosesNothing()
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

void TestRobotSessionKeys::aKeyThatASlotUnwatchesIsNotDisplayed()
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

void TestRobotSessionKeys::aKeyThatASlotRemovesFromTheSetIsNotWatched()
{
    SessionOnFakeRobot f;
    DisplayedMemoryKeyListModel* const set = f.session.displayedKeys();
    connect(set, &DisplayedMemoryKeyListModel::error, this, [set] { set->removeKeys(keySet({"A"})); });

    set->addKeys(keySet({"A"})); // an error, there being no connection, and only then keysAdded()

    QCOMPARE(f.displayed(), QStringList());
    QCOMPARE(names(f.session.watchedKeys()), QStringList());
}

void TestRobotSessionKeys::aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys_data()
{
    QTest::addColumn<bool>("isSlotOfTheSet");
    QTest::addColumn<bool>("isWatching");
    QTest::addColumn<QStringList>("displayed");
    QTest::newRow("watched, on the set's signal") << true << true << QStringList({"A", "B", "C"});
    QTest::newRow("watched, on the session's signal") << false << true << QStringList({"A", "B", "C"});
    QTest::newRow("unwatched, on the set's signal") << true << false << QStringList({"B"});
    QTest::newRow("unwatched, on the session's signal") << false << false << QStringList({"B"});
}

void TestRobotSessionKeys::aKeyThatIsAddedToTheSetIsKeptWhenASlotOfTheErrorChangesTheKeys()
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

void TestRobotSessionKeys::aKeyThatASlotOfTheErrorUnwatchesIsNotWatched()
{
    SessionOnFakeRobot f;
    connect(&f.session, &RobotSession::failed, this, [&] { f.session.unwatch(keySet({"A"})); });

    f.session.displayedKeys()->addKeys(keySet({"A"}));

    QCOMPARE(f.displayed(), QStringList());
    QCOMPARE(names(f.session.watchedKeys()), QStringList());
}

void TestRobotSessionKeys::theRebuiltKeysAreReportedBeforeTheChangesToThem()
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

QTEST_GUILESS_MAIN(TestRobotSessionKeys)

#include "tst_robot_session_keys.moc"
