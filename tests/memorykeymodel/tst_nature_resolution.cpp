// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QTest>

using namespace Velk;

/// The natures of the catalogue: how they are resolved, and queries by nature.
class TestNatureResolution : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNameInDataAndEventListsIsAnEventKey();
    void beforeReadinessASharedNameIsInBothSets();
    void aSelectedKeyGetsTheCataloguesElement_data();
    void aSelectedKeyGetsTheCataloguesElement();
    void aSelectedKeyThatNoListHoldsStaysSelectedAsUnknown();
    void aMaskSelectsTheNatures_data();
    void aMaskSelectsTheNatures();
    void resolvingTwiceChangesNothing();
    void resultsOfQueriesAreCopies();
    void aQueryAfterAListShowsTheList();
};

void TestNatureResolution::aNameInDataAndEventListsIsAnEventKey()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Both"}));

    connection.memory->finishLists({"Both", "Arm"}, {"Both"});
    QCoreApplication::processEvents();

    QCOMPARE(names(catalogue.keys(DataNature)), QStringList{"Arm"});
    QCOMPARE(described(catalogue.keys(EventNature)), QStringList{"Both EVENT (Both desc)"});
    QCOMPARE(described(catalogue.keys()), (QStringList{"Arm DATA (Arm desc)", "Both EVENT (Both desc)"}));
    QCOMPARE(described(catalogue.selectedKeys()), QStringList{"Both EVENT (Both desc)"});
}

void TestNatureResolution::beforeReadinessASharedNameIsInBothSets()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Selected"}));

    connection.memory->finishDataList({"Both"});
    connection.memory->finishMicroEventList({"Both"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys(DataNature)), QStringList{"Both DATA (Both desc)"});
    QCOMPARE(described(catalogue.keys(EventNature)), QStringList{"Both EVENT (Both desc)"});
    QCOMPARE(described(catalogue.keys()), QStringList{"Both DATA (Both desc)"});
}

void TestNatureResolution::aSelectedKeyGetsTheCataloguesElement_data()
{
    QTest::addColumn<QStringList>("data");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QStringList>("microEvents");
    QTest::addColumn<QString>("userKey");
    QTest::addColumn<QString>("selected");
    const QStringList arm{"Arm"};
    const QStringList none;
    QTest::newRow("data") << arm << none << none << QString() << "Arm DATA (Arm desc)";
    QTest::newRow("event") << none << arm << none << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("micro-event") << none << none << arm << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("data and event") << arm << arm << none << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("user key and data") << arm << none << none << "Arm"
                                       << "Arm DATA (Arm desc)";
    QTest::newRow("user key and event") << none << arm << none << "Arm"
                                        << "Arm EVENT (Arm desc)";
    QTest::newRow("nowhere") << none << none << none << QString() << "Arm UNKNOWN (given text)";
    QTest::newRow("user key only") << none << none << none << "Arm"
                                   << "Arm UNKNOWN (given text)";
}

void TestNatureResolution::aSelectedKeyGetsTheCataloguesElement()
{
    QFETCH(QStringList, data);
    QFETCH(QStringList, events);
    QFETCH(QStringList, microEvents);
    QFETCH(QString, userKey);
    QFETCH(QString, selected);
    FakeConnectionManager connection;
    // The nature that the key had on an earlier connection has no effect.
    MemoryKeyListModel catalogue(&connection,
                                 {MemoryKey("Arm", "given text", events.isEmpty() ? EventNature : DataNature)});
    if (!userKey.isNull())
        catalogue.addUserKey(userKey);

    connection.memory->finishLists(data, events, microEvents);
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()), QStringList{selected});
    QCOMPARE(described(catalogue.keys()), QStringList{selected});
    const bool isUnknown = !userKey.isNull() || selected.contains("UNKNOWN");
    QCOMPARE(names(catalogue.keys(UnknownNature)), isUnknown ? QStringList{"Arm"} : QStringList());
}

void TestNatureResolution::aSelectedKeyThatNoListHoldsStaysSelectedAsUnknown()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {MemoryKey("Gone", "its own text", DataNature)});

    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    const QStringList gone{"Gone UNKNOWN (its own text)"};
    QCOMPARE(described(catalogue.selectedKeys()), gone);
    QCOMPARE(described(catalogue.keys(UnknownNature)), gone);
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Gone"}));
}

void TestNatureResolution::aMaskSelectsTheNatures_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QStringList>("keys");
    const QString data = "Arm DATA (Arm desc)";
    const QString dataUser = "Typed DATA (Typed desc)";
    const QString event = "Bumper EVENT (Bumper desc)";
    const QString unknown = "Mine UNKNOWN (Mine desc)";
    const QString unknownUser = "Typed UNKNOWN (Typed desc)";
    QTest::newRow("0: none") << 0 << QStringList();
    QTest::newRow("1: data") << 1 << QStringList{data, dataUser};
    QTest::newRow("2: event") << 2 << QStringList{event};
    QTest::newRow("3: data and event") << 3 << QStringList{data, event, dataUser};
    QTest::newRow("4: a user key is unknown even when the robot lists it") << 4 << QStringList{unknown, unknownUser};
    QTest::newRow("5: the earlier set wins") << 5 << QStringList{data, unknown, dataUser};
    QTest::newRow("6: event and unknown") << 6 << QStringList{event, unknown, unknownUser};
    QTest::newRow("7: all") << 7 << QStringList{data, event, unknown, dataUser};
    QTest::newRow("8: no nature") << 8 << QStringList();
    QTest::newRow("9: other bits are ignored") << 9 << QStringList{data, dataUser};
}

void TestNatureResolution::aMaskSelectsTheNatures()
{
    QFETCH(int, mask);
    QFETCH(QStringList, keys);
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");
    catalogue.addUserKey("Typed");
    connection.memory->finishLists({"Arm", "Typed"}, {"Bumper"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys(MemoryKeyNature(mask))), keys);
    QCOMPARE(described(catalogue.keys()), described(catalogue.keys(MemoryKeyNature(7))));
}

void TestNatureResolution::resolvingTwiceChangesNothing()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Arm", "Gone"}));
    catalogue.addUserKey("Mine");
    connection.memory->finishLists({"Arm", "Both"}, {"Both"});
    QCoreApplication::processEvents();
    const QStringList keys = described(catalogue.keys());
    const QStringList unknownKeys = described(catalogue.keys(UnknownNature));
    const QStringList selectedKeys = described(catalogue.selectedKeys());

    catalogue.selectKeys(catalogue.selectedKeys()); // the set itself, which changes while it is resolved

    QCOMPARE(described(catalogue.keys()), keys);
    QCOMPARE(described(catalogue.keys(UnknownNature)), unknownKeys);
    QCOMPARE(described(catalogue.selectedKeys()), selectedKeys);
}

void TestNatureResolution::resultsOfQueriesAreCopies()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    QSet<MemoryKey> keys = catalogue.keys();
    keys.clear();
    const QSet<MemoryKey> before = catalogue.keys();
    catalogue.addUserKey("Mine");

    QCOMPARE(names(before), QStringList{"Arm"});
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Mine"}));
}

void TestNatureResolution::aQueryAfterAListShowsTheList()
{
    FakeConnectionManager connection;
    const MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishDataList({"Arm"});
    QCoreApplication::processEvents();
    QCOMPARE(names(catalogue.keys()), QStringList{"Arm"});
    QCOMPARE(names(catalogue.keys(EventNature)), QStringList());

    connection.memory->finishEventList({"Bumper"});
    QCoreApplication::processEvents();

    QVERIFY(!catalogue.isReady());
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Bumper"}));
    QCOMPARE(names(catalogue.keys(EventNature)), QStringList{"Bumper"});
}

QTEST_GUILESS_MAIN(TestNatureResolution)
#include "tst_nature_resolution.moc"
