// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/rebuilt_keys.h>

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <QCoreApplication>
#include <QTest>

using namespace Velk;

namespace {

/// A connected robot with a displayed key set, and a receiver of its signals. `answers` has the result of isRebuilt()
/// for each keysUpdated().
struct Receiver
{
    Receiver() { robot.connected = true; }

    void connectSlots()
    {
        QObject::connect(keys, &DisplayedMemoryKeyListModel::keysAdded, keys,
                         [this](const QSet<DisplayedMemoryKey>& added) { knownCount += int(added.size()); });
        QObject::connect(keys, &DisplayedMemoryKeyListModel::keysUpdated, keys,
                         [this](const QSet<DisplayedMemoryKey>& updated) {
                             answers.append(isRebuilt(updated, *keys, knownCount));
                             knownCount = int(keys->displayedKeys().size());
                         });
    }
    void reconnect()
    {
        robot.lose();
        robot.establish();
    }
    /// Finishes the lists, and waits for the rebuilt set.
    void rebuild(const QStringList& data = {})
    {
        const auto count = answers.size();
        robot.memory->finishLists(data);
        while (answers.size() == count)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    FakeConnectionManager robot;
    DisplayedMemoryKeyListModel* keys = new DisplayedMemoryKeyListModel(&robot);
    int knownCount = 0;
    QList<bool> answers;
};

} // namespace

class TestRebuiltKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeysAreRebuiltOnceAfterAConnection()
    {
        Receiver f;
        f.connectSlots();
        f.keys->addKeys(keySet({"A", "B"}));
        f.robot.memory->deliver({{"A", {{1, 10}}}, {"B", {{1, 11}}}});
        f.reconnect();

        f.rebuild({"A", "B"});
        f.keys->startWatcher(false);
        f.robot.memory->deliver({{"A", {{2, 20}}}});

        QCOMPARE(f.answers, QList<bool>({false, true, false}));
    }

    void aBatchWithoutAValueIsNotARebuiltSet_data()
    {
        QTest::addColumn<bool>("isBeforeTheRebuiltSet");
        QTest::newRow("while the keys are displayed") << false;
        QTest::newRow("before the keys of a connection are rebuilt") << true;
    }
    void aBatchWithoutAValueIsNotARebuiltSet()
    {
        QFETCH(bool, isBeforeTheRebuiltSet);
        Receiver f;
        f.connectSlots();
        f.keys->addKeys(keySet({"A"}));
        if (isBeforeTheRebuiltSet) {
            f.reconnect();
            f.keys->addKeys(keySet({"B"}));
        }

        f.robot.memory->deliver({{"not displayed", {{1, 10}}}});

        QCOMPARE(f.answers, QList<bool>({false}));
    }

    void aSetWithoutKeysIsRebuilt()
    {
        Receiver f;
        f.connectSlots();
        f.reconnect();

        f.rebuild({"A"});

        QCOMPARE(f.answers, QList<bool>({true}));
    }

    void aSetThatLosesAllKeysIsRebuilt()
    {
        Receiver f;
        f.connectSlots();
        f.reconnect();
        f.keys->addKeys(keySet({"Too early"}));

        f.rebuild();

        QCOMPARE(f.keys->displayedKeys().size(), 0);
        QCOMPARE(f.answers, QList<bool>({true}));
    }

    void aSetThatLosesAllKeysIsRebuiltAlthoughASlotAddsAnother()
    {
        Receiver f;
        QObject::connect(f.keys, &DisplayedMemoryKeyListModel::keysUpdated, f.keys,
                         [keys = f.keys] { keys->addKeys(keySet({"A"})); });
        f.connectSlots();
        f.reconnect();
        f.keys->addKeys(keySet({"Too early"}));

        f.rebuild();

        QCOMPARE(f.keys->displayedKeys().size(), 1);
        QCOMPARE(f.answers, QList<bool>({true}));
    }
};

QTEST_GUILESS_MAIN(TestRebuiltKeys)
#include "tst_rebuilt_keys.moc"
