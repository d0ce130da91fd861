// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <QTemporaryFile>
#include <QTest>

using namespace Velk;

class TestDataIntake : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKeyKeepsTheNewestSampleOnly_data();
    void aKeyKeepsTheNewestSampleOnly();
    void aLaterBatchReplacesTheHistory();
    void anEarlierTimeStampInALaterBatchReplacesItToo();
    void onlyTheKeysThatGotAValueAreAnnounced();
    void aBatchWithoutDisplayedKeysIsStillAnnounced();
    void anEmptyBatchIsStillAnnounced();
    void keysHoldTheirNewValuesWhenTheyAreAnnounced();
    void anUpdateKeepsFlagColourAndPeriod();
    void copiesOfTheApplicationKeepTheirValues_data();
    void copiesOfTheApplicationKeepTheirValues();
    void exchangedKeysAreAnnouncedWithTheirOwnValues_data();
    void exchangedKeysAreAnnouncedWithTheirOwnValues();
    void namesThatShareTheirCharactersAreTwoNames();
    void rowsAreWrittenAfterTheAnnouncement();
};

namespace {

struct WatchedRobot
{
    explicit WatchedRobot(const QStringList& names)
        : model(&connection)
    {
        connection.connected = true;
        model.addKeys(keySet(names));
        QObject::connect(&model, &DisplayedMemoryKeyListModel::keysUpdated, &connection,
                         [this](const QSet<DisplayedMemoryKey>& keys) { updates << histories(keys); });
    }

    void deliver(const Batch& batch) { connection.memory->deliver(batch); }
    QStringList displayed() const { return histories(model.displayedKeys()); }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
    QList<QStringList> updates;
};

} // namespace

void TestDataIntake::aKeyKeepsTheNewestSampleOnly_data()
{
    QTest::addColumn<Batch>("batch");
    QTest::addColumn<QStringList>("displayed");
    QTest::addColumn<QStringList>("updated");
    QTest::newRow("two samples") << Batch{{"A", {{1.0, 5}, {2.0, 7}}}} << QStringList{"A: 2=7"}
                                 << QStringList{"A: 2=7"};
    QTest::newRow("negative times") << Batch{{"A", {{-2.0, 5}, {-1.0, 7}}}} << QStringList{"A: -1=7"}
                                    << QStringList{"A: -1=7"};
    QTest::newRow("an invalid value") << Batch{{"A", {{1.0, QVariant()}}}} << QStringList{"A: 1="}
                                      << QStringList{"A: 1="};
    QTest::newRow("no samples") << Batch{{"A", {}}} << QStringList{"A: "} << QStringList();
    QTest::newRow("other case") << Batch{{"a", {{1.0, 5}}}} << QStringList{"A: "} << QStringList();
    QTest::newRow("other name") << Batch{{"B", {{1.0, 5}}}} << QStringList{"A: "} << QStringList();
}

void TestDataIntake::aKeyKeepsTheNewestSampleOnly()
{
    QFETCH(Batch, batch);
    QFETCH(QStringList, displayed);
    QFETCH(QStringList, updated);
    WatchedRobot robot({"A"});

    robot.deliver(batch);

    QCOMPARE(robot.displayed(), displayed);
    QCOMPARE(robot.updates, QList<QStringList>{updated});
}

void TestDataIntake::aLaterBatchReplacesTheHistory()
{
    WatchedRobot robot({"A"});

    robot.deliver({{"A", {{1.0, 5}, {2.0, 7}}}});
    robot.deliver({{"A", {{3.0, 8}}}});

    QCOMPARE(robot.displayed(), QStringList{"A: 3=8"});
}

void TestDataIntake::anEarlierTimeStampInALaterBatchReplacesItToo()
{
    WatchedRobot robot({"A"});

    robot.deliver({{"A", {{2.0, 7}}}});
    robot.deliver({{"A", {{1.0, 5}}}});

    QCOMPARE(robot.displayed(), QStringList{"A: 1=5"});
}

void TestDataIntake::onlyTheKeysThatGotAValueAreAnnounced()
{
    WatchedRobot robot({"A", "B", "C"});
    robot.deliver({{"A", {{1.0, 1}}}, {"B", {{1.0, 2}}}, {"C", {{1.0, 3}}}});
    robot.updates.clear();

    robot.deliver({{"B", {{2.0, 4}}}, {"C", {}}, {"D", {{2.0, 5}}}});

    QCOMPARE(robot.updates, QList<QStringList>{{"B: 2=4"}});
    QCOMPARE(robot.displayed(), (QStringList{"A: 1=1", "B: 2=4", "C: 1=3"}));
}

void TestDataIntake::aBatchWithoutDisplayedKeysIsStillAnnounced()
{
    WatchedRobot robot({"A"});

    robot.deliver({{"B", {{1.0, 5}}}});

    QCOMPARE(robot.updates, QList<QStringList>{{}});
}

void TestDataIntake::anEmptyBatchIsStillAnnounced()
{
    WatchedRobot robot({"A"});

    robot.deliver({});

    QCOMPARE(robot.updates, QList<QStringList>{{}});
}

void TestDataIntake::keysHoldTheirNewValuesWhenTheyAreAnnounced()
{
    WatchedRobot robot({"A"});
    QStringList displayedAtSignal;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysUpdated, this,
            [&] { displayedAtSignal = robot.displayed(); });

    robot.deliver({{"A", {{1.0, 5}}}});

    QCOMPARE(displayedAtSignal, QStringList{"A: 1=5"});
}

void TestDataIntake::anUpdateKeepsFlagColourAndPeriod()
{
    WatchedRobot robot({"A"});

    robot.deliver({{"A", {{1.0, 5}}}});

    const DisplayedMemoryKey a = displayedKey(robot.model, "A");
    QCOMPARE(a.displayFlag(), true);
    QCOMPARE(a.color(), QColor("chartreuse"));
    QCOMPARE(a.watchPeriod(), 100);
    QCOMPARE(described({a.key()}), QStringList{"A DATA (A desc)"});
}

void TestDataIntake::copiesOfTheApplicationKeepTheirValues_data()
{
    QTest::addColumn<Batch>("first");
    QTest::addColumn<Batch>("second");
    const Batch ab{{"A", {{1.0, 1}}}, {"B", {{1.0, 2}}}};
    QTest::newRow("a batch of all keys") << Batch{{"A", {{1.0, 1}}}, {"B", {{1.0, 2}}}, {"C", {{1.0, 3}}}}
                                         << Batch{{"A", {{2.0, 4}}}, {"B", {{2.0, 5}}}, {"C", {{2.0, 6}}}};
    QTest::newRow("a batch of the same keys again") << ab << Batch{{"A", {{2.0, 4}}}, {"B", {{2.0, 5}}}};
    QTest::newRow("a batch of other keys") << ab << Batch{{"B", {{2.0, 4}}}, {"C", {{2.0, 5}}}};
}

void TestDataIntake::copiesOfTheApplicationKeepTheirValues()
{
    QFETCH(Batch, first);
    QFETCH(Batch, second);
    WatchedRobot robot({"A", "B", "C"});
    QList<QSet<DisplayedMemoryKey>> announced;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysUpdated, this,
            [&](const QSet<DisplayedMemoryKey>& keys) { announced << keys; });
    robot.deliver(first);
    const QStringList firstDisplayed = robot.displayed();
    const QSet<DisplayedMemoryKey> copy = robot.model.displayedKeys();
    const DisplayedMemoryKey b = *copy.constFind(DisplayedMemoryKey(key("B")));

    robot.deliver(second);
    robot.deliver(second);

    QCOMPARE(histories(copy), firstDisplayed);
    QCOMPARE(samplesText(b.valueHistory()), QString("1=2"));
    QCOMPARE(announced.size(), 3);
    QCOMPARE(histories(announced[0]), robot.updates[0]);
    QCOMPARE(histories(announced[1]), robot.updates[1]);
    QVERIFY(robot.updates[0] != robot.updates[1]);
}

void TestDataIntake::exchangedKeysAreAnnouncedWithTheirOwnValues_data()
{
    // The new key has the place of the removed one in the set for some of these names.
    QTest::addColumn<QString>("name");
    for (int i = 0; i < 16; ++i)
        QTest::addRow("New%d", i) << QString("New%1").arg(i);
}

void TestDataIntake::exchangedKeysAreAnnouncedWithTheirOwnValues()
{
    QFETCH(QString, name);
    WatchedRobot robot({"A", "B"});
    robot.deliver({{"A", {{1.0, 1}}}});
    robot.model.removeKeys(keySet({"A"}));
    robot.model.addKeys(keySet({name}));
    robot.updates.clear();

    robot.deliver({{name, {{2.0, 2}}}});

    QCOMPARE(robot.updates, QList<QStringList>{{name + ": 2=2"}});
    QCOMPARE(robot.displayed(), (QStringList{"B: ", name + ": 2=2"}));
}

void TestDataIntake::namesThatShareTheirCharactersAreTwoNames()
{
    const QString characters = "Arm/Position";
    const QString arm = QString::fromRawData(characters.constData(), 3);
    WatchedRobot robot({characters});
    robot.deliver({{characters, {{1.0, 1}}}});

    robot.deliver({{arm, {{2.0, 2}}}});

    QCOMPARE(robot.displayed(), QStringList{"Arm/Position: 1=1"});
    QCOMPARE(robot.updates.last(), QStringList());
}

void TestDataIntake::rowsAreWrittenAfterTheAnnouncement()
{
    WatchedRobot robot({"A"});
    robot.model.startRecording();
    QTemporaryFile* const file = robot.connection.findChild<QTemporaryFile*>();
    qint64 sizeAtSignal = -1;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysUpdated, this, [&] { sizeAtSignal = file->pos(); });

    robot.deliver({{"A", {{1.0, 5}}}});

    QCOMPARE(sizeAtSignal, qint64(qstrlen("Time;\"A\"\n")));
    QCOMPARE(file->pos(), sizeAtSignal + qint64(qstrlen("0;5\n")));
}

QTEST_GUILESS_MAIN(TestDataIntake)
#include "tst_data_intake.moc"
