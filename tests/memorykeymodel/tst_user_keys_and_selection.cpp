// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QTest>

using namespace Velk;

/// The keys that the user typed into the catalogue, and its selection.
class TestUserKeysAndSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // user keys
    void aUserKeyIsUnknownAndAnnouncedAfterItCanBeQueried();
    void aUserKeyIsAnnouncedEveryTimeAndStoredOnce();
    void aUserKeyThatTheRobotListsIsInBothSets();
    void anEmptyNameIsAUserKey();
    void addingAUserKeyDoesNotSelectIt();
    void aSelectedUserKeyKeepsTheSelectionsDescription();
    void userKeysAreKeptWhenTheListsArrive();

    // selection
    void selectingReplacesTheWholeSelection();
    void selectingEmitsNothing();
    void deselectingAnUnknownKeyDropsItAtOnceButNotAUserKey();
    void anEmptySelectionLeavesTheUserKeysUnknown();
    void aReferenceToTheSelectionShowsLaterChanges();
    void aSelectionBeforeReadinessIsResolvedWithTheListsSoFar();
    void theInitialSelectionIsUnchangedUntilTheFirstResolution();
};

void TestUserKeysAndSelection::aUserKeyIsUnknownAndAnnouncedAfterItCanBeQueried()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    QStringList keysAtSignal;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this, [&](const MemoryKey& key) {
        announced << described({key});
        keysAtSignal = names(catalogue.keys(UnknownNature));
    });

    catalogue.addUserKey("Mine");

    QCOMPARE(announced, QStringList{"Mine UNKNOWN (Mine desc)"});
    QCOMPARE(keysAtSignal, QStringList{"Mine"});
}

void TestUserKeysAndSelection::aUserKeyIsAnnouncedEveryTimeAndStoredOnce()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey("Mine");
    catalogue.addUserKey("Mine");

    const QString mine = "Mine UNKNOWN (Mine desc)";
    QCOMPARE(announced, (QStringList{mine, mine}));
    QCOMPARE(described(catalogue.keys()), QStringList{mine});
}

void TestUserKeysAndSelection::aUserKeyThatTheRobotListsIsInBothSets()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey("Arm");

    const QStringList asUnknown{"Arm UNKNOWN (Arm desc)"};
    QCOMPARE(announced, asUnknown);
    QCOMPARE(described(catalogue.keys()), QStringList{"Arm DATA (Arm desc)"});
    QCOMPARE(described(catalogue.keys(DataNature)), QStringList{"Arm DATA (Arm desc)"});
    QCOMPARE(described(catalogue.keys(UnknownNature)), asUnknown);
}

void TestUserKeysAndSelection::anEmptyNameIsAUserKey()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey(QString());

    QCOMPARE(announced, QStringList{" UNKNOWN ( desc)"});
    QCOMPARE(described(catalogue.keys()), QStringList{" UNKNOWN ( desc)"});
}

void TestUserKeysAndSelection::addingAUserKeyDoesNotSelectIt()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Arm"}));

    catalogue.addUserKey("Mine");

    QCOMPARE(names(catalogue.selectedKeys()), QStringList{"Arm"});
}

void TestUserKeysAndSelection::aSelectedUserKeyKeepsTheSelectionsDescription()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {MemoryKey("Mine", "given text", DataNature)});

    catalogue.addUserKey("Mine");

    const QStringList mine{"Mine UNKNOWN (given text)"};
    QCOMPARE(described(catalogue.selectedKeys()), mine);
    QCOMPARE(described(catalogue.keys()), mine);
}

void TestUserKeysAndSelection::userKeysAreKeptWhenTheListsArrive()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");

    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys()), (QStringList{"Arm DATA (Arm desc)", "Mine UNKNOWN (Mine desc)"}));
}

void TestUserKeysAndSelection::selectingReplacesTheWholeSelection()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Old"}));
    connection.memory->finishLists({"Arm"}, {"Bumper"});
    QCoreApplication::processEvents();

    catalogue.selectKeys({MemoryKey("Bumper", "given text", DataNature), MemoryKey("Gone", "given text", DataNature)});

    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Bumper EVENT (Bumper desc)", "Gone UNKNOWN (given text)"}));
}

void TestUserKeysAndSelection::selectingEmitsNothing()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    int emitted = 0;
    connect(&catalogue, &MemoryKeyListModel::ready, this, [&] { ++emitted; });
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this, [&] { ++emitted; });

    catalogue.selectKeys(keySet({"Arm"}));
    QCoreApplication::processEvents();

    QCOMPARE(emitted, 0);
}

void TestUserKeysAndSelection::deselectingAnUnknownKeyDropsItAtOnceButNotAUserKey()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");
    catalogue.selectKeys(keySet({"Gone", "Mine"}));
    QCOMPARE(names(catalogue.keys()), (QStringList{"Gone", "Mine"}));

    catalogue.selectKeys(keySet({"Other"}));

    QCOMPARE(names(catalogue.keys()), (QStringList{"Mine", "Other"}));
}

void TestUserKeysAndSelection::anEmptySelectionLeavesTheUserKeysUnknown()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Gone"}));
    catalogue.addUserKey("Mine");

    catalogue.selectKeys({});

    QCOMPARE(names(catalogue.selectedKeys()), QStringList());
    QCOMPARE(names(catalogue.keys(UnknownNature)), QStringList{"Mine"});
}

void TestUserKeysAndSelection::aReferenceToTheSelectionShowsLaterChanges()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Old"}));
    const QSet<MemoryKey>& selection = catalogue.selectedKeys();

    catalogue.selectKeys(keySet({"New"}));

    QCOMPARE(names(selection), QStringList{"New"});
    QCOMPARE(&selection, &catalogue.selectedKeys());
}

void TestUserKeysAndSelection::aSelectionBeforeReadinessIsResolvedWithTheListsSoFar()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishDataList({"Both"});
    QCoreApplication::processEvents();

    catalogue.selectKeys(keySet({"Both", "Bumper"}));
    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Both DATA (Both desc)", "Bumper UNKNOWN (Bumper desc)"}));
    connection.memory->finishEventList({"Both", "Bumper"});
    connection.memory->finishMicroEventList({});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Both EVENT (Both desc)", "Bumper EVENT (Bumper desc)"}));
}

void TestUserKeysAndSelection::theInitialSelectionIsUnchangedUntilTheFirstResolution()
{
    FakeConnectionManager connection;
    const MemoryKeyListModel catalogue(&connection, {MemoryKey("Arm", "given text", EventNature)});

    connection.memory->finishDataList({"Arm"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()), QStringList{"Arm EVENT (given text)"});
    QCOMPARE(described(catalogue.keys(UnknownNature)), QStringList());
}

QTEST_GUILESS_MAIN(TestUserKeysAndSelection)
#include "tst_user_keys_and_selection.moc"
