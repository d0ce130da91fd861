// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <QTest>

using namespace Velk;

class TestDisplayedKeyChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // adding
    void aNewKeyIsWatchedWithTheSamplingPeriodThenTheWatcherStarts();
    void aNewKeyIsInItsInitialState();
    void aDisplayedKeyIsNotWatchedAgainButTheWatcherIsStarted();
    void onlyNewKeysAreWatchedAndAnnounced();
    void addingNoKeyStartsNoWatcherWhileNoneIsDisplayed();
    void addingNoKeyStartsTheWatcherWhileOneIsDisplayed();
    void keysAreDisplayedWhenTheyAreAnnounced();
    void addingWithoutARobotDisplaysTheKeysAndReportsIt();
    void addingWithoutAMemoryInterfaceDisplaysTheKeysAndReportsIt();
    void namesThatDifferInCaseAreDifferentKeys();

    // removing
    void aRemovedKeyIsUnwatchedAndAnnouncedAsItWasStored();
    void removingTheLastKeyStopsTheWatcher();
    void aKeyThatIsNotDisplayedIsUnwatchedToo();
    void removingNoKeyStopsTheWatcherWhileNoneIsDisplayed();
    void aRemovedKeyLeavesTheSelection();
    void removingWithoutAMemoryInterfaceSendsNothing();
    void keysRemovedWhileConnectedAreNotWatchedAgain();
};

namespace {

struct WatchedRobot
{
    WatchedRobot()
        : model(&connection)
    {
        connection.connected = true;
        logSignals(model, connection);
    }

    QStringList takeLog() { return connection.takeLog(); }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
};

} // namespace

void TestDisplayedKeyChanges::aNewKeyIsWatchedWithTheSamplingPeriodThenTheWatcherStarts()
{
    WatchedRobot robot;
    robot.model.setSamplingPeriod(300);
    robot.takeLog();

    robot.model.addKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(), (QStringList{"watchKey Arm 300", "startWatcher 300 300", "keysAdded Arm"}));
    QCOMPARE(names(robot.model.keys()), QStringList{"Arm"});
}

void TestDisplayedKeyChanges::aNewKeyIsInItsInitialState()
{
    WatchedRobot robot;

    robot.model.addKeys({MemoryKey("Arm", "the arm", EventNature)});

    const DisplayedMemoryKey arm = displayedKey(robot.model, "Arm");
    QCOMPARE(described({arm.key()}), QStringList{"Arm EVENT (the arm)"});
    QCOMPARE(arm.displayFlag(), true);
    QCOMPARE(arm.color(), QColor("chartreuse"));
    QCOMPARE(arm.watchPeriod(), 100);
    QVERIFY(arm.valueHistory().isEmpty());
}

void TestDisplayedKeyChanges::aDisplayedKeyIsNotWatchedAgainButTheWatcherIsStarted()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.stopWatcher();
    robot.takeLog();

    robot.model.addKeys({MemoryKey("Arm", "another text", EventNature)});

    QCOMPARE(robot.takeLog(), (QStringList{"startWatcher 1000 1000", "keysAdded"}));
    QCOMPARE(described(robot.model.keys()), QStringList{"Arm DATA (Arm desc)"});
}

void TestDisplayedKeyChanges::onlyNewKeysAreWatchedAndAnnounced()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.takeLog();

    robot.model.addKeys(keySet({"Arm", "Leg"}));

    QCOMPARE(robot.takeLog(), (QStringList{"watchKey Leg 1000", "keysAdded Leg"}));
    QCOMPARE(names(robot.model.keys()), (QStringList{"Arm", "Leg"}));
}

void TestDisplayedKeyChanges::addingNoKeyStartsNoWatcherWhileNoneIsDisplayed()
{
    WatchedRobot robot;

    robot.model.addKeys({});

    QCOMPARE(robot.takeLog(), QStringList{"keysAdded"});
}

void TestDisplayedKeyChanges::addingNoKeyStartsTheWatcherWhileOneIsDisplayed()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.model.stopWatcher();
    robot.takeLog();

    robot.model.addKeys({});

    QCOMPARE(robot.takeLog(), (QStringList{"startWatcher 1000 1000", "keysAdded"}));
}

void TestDisplayedKeyChanges::keysAreDisplayedWhenTheyAreAnnounced()
{
    WatchedRobot robot;
    QStringList displayedAtSignal;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysAdded, this,
            [&] { displayedAtSignal = names(robot.model.keys()); });

    robot.model.addKeys(keySet({"Arm"}));

    QCOMPARE(displayedAtSignal, QStringList{"Arm"});
}

void TestDisplayedKeyChanges::addingWithoutARobotDisplaysTheKeysAndReportsIt()
{
    WatchedRobot robot;
    robot.connection.connected = false;
    robot.connection.memory.reset();

    robot.model.addKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(),
             (QStringList{"error [Not connected to a robot] Cannot retrieve memory value if no robot is connected.",
                          "keysAdded Arm"}));
    QCOMPARE(names(robot.model.keys()), QStringList{"Arm"});
}

void TestDisplayedKeyChanges::addingWithoutAMemoryInterfaceDisplaysTheKeysAndReportsIt()
{
    WatchedRobot robot;
    robot.connection.memory.reset();

    robot.model.addKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(), (QStringList{"error [Missing memory interface] Cannot retrieve memory values as no "
                                           "memory interface was found.",
                                           "keysAdded Arm"}));
}

void TestDisplayedKeyChanges::namesThatDifferInCaseAreDifferentKeys()
{
    WatchedRobot robot;

    robot.model.addKeys(keySet({"Arm"}));
    robot.model.addKeys(keySet({"arm"}));

    QCOMPARE(names(robot.model.keys()), (QStringList{"Arm", "arm"}));
}

void TestDisplayedKeyChanges::aRemovedKeyIsUnwatchedAndAnnouncedAsItWasStored()
{
    WatchedRobot robot;
    robot.model.addKeys({MemoryKey("Arm", "the arm", EventNature), key("Leg")});
    robot.connection.memory->deliver({{"Arm", {{1.0, 5}}}});
    QStringList removedKeys;
    QStringList removedHistories;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysRemoved, this,
            [&](const QSet<DisplayedMemoryKey>& removed) {
                removedHistories = histories(removed);
                for (const DisplayedMemoryKey& displayed : removed)
                    removedKeys << described({displayed.key()});
            });
    robot.takeLog();

    robot.model.removeKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(), (QStringList{"unwatchKey Arm", "keysRemoved Arm"}));
    QCOMPARE(removedKeys, QStringList{"Arm EVENT (the arm)"});
    QCOMPARE(removedHistories, QStringList{"Arm: 1=5"});
    QCOMPARE(names(robot.model.keys()), QStringList{"Leg"});
}

void TestDisplayedKeyChanges::removingTheLastKeyStopsTheWatcher()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.takeLog();

    robot.model.removeKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(), (QStringList{"unwatchKey Arm", "stopWatcher", "keysRemoved Arm"}));
}

void TestDisplayedKeyChanges::aKeyThatIsNotDisplayedIsUnwatchedToo()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.takeLog();

    robot.model.removeKeys(keySet({"Tail"}));

    QCOMPARE(robot.takeLog(), (QStringList{"unwatchKey Tail", "keysRemoved"}));
}

void TestDisplayedKeyChanges::removingNoKeyStopsTheWatcherWhileNoneIsDisplayed()
{
    WatchedRobot robot;
    robot.model.startWatcher(false);
    robot.takeLog();

    robot.model.removeKeys(keySet({"Tail"}));

    QCOMPARE(robot.takeLog(), (QStringList{"unwatchKey Tail", "stopWatcher", "keysRemoved"}));
}

void TestDisplayedKeyChanges::aRemovedKeyLeavesTheSelection()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm", "Leg"}));
    robot.model.setSelectedKeys(keySet({"Arm", "Leg"}));

    robot.model.removeKeys(keySet({"Arm"}));

    QCOMPARE(names(robot.model.selectedKeys()), QStringList{"Leg"});
}

void TestDisplayedKeyChanges::removingWithoutAMemoryInterfaceSendsNothing()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm"}));
    robot.connection.memory.reset();
    robot.takeLog();

    robot.model.removeKeys(keySet({"Arm"}));

    QCOMPARE(robot.takeLog(), QStringList{"keysRemoved Arm"});
    QCOMPARE(names(robot.model.keys()), QStringList());
}

void TestDisplayedKeyChanges::keysRemovedWhileConnectedAreNotWatchedAgain()
{
    WatchedRobot robot;
    robot.model.addKeys(keySet({"Arm", "Leg"}));
    robot.model.removeKeys(keySet({"Leg"}));
    robot.takeLog();

    robot.connection.establish();

    QCOMPARE(robot.takeLog().filter("watchKey"), QStringList{"watchKey Arm 100"});
}

QTEST_GUILESS_MAIN(TestDisplayedKeyChanges)
#include "tst_displayed_key_changes.moc"
