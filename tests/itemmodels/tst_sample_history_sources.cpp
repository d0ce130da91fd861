// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/sample_history.h>

#include "tested_history.h"

#include <session/sample_stream.h>

#include <QtTest>

using namespace Velk;

class TestSampleHistorySources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listensToTheInterfaceOfEachConnection();
    void listensOnceToAnInterfaceThatComesBack();
    void listensToAnInterfaceThatComesLate();
    void worksWhenItIsMadeWithoutARobot();
    void keepsSamplesOverAReconnection();
    void forgetsRemovedKeys();
    void forgetsKeysThatTheSynchronisationDropped();
    void takesInKeysThatTheSynchronisationBroughtBack();
    void takesTheSamplesOfAGivenStream();
    void followsAnotherStreamOfTheSameSet();
    void keepsItsSamplesWhenTheStreamDies();
    void followsAnotherSet();
    void isEmptyWhenTheSetDies();
    void isEmptyWhenTheConnectionManagerDies();
};

void TestSampleHistorySources::listensToTheInterfaceOfEachConnection()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    const boost::shared_ptr<FakeMemoryInterface> former = tested.robot.manager.memory;
    tested.robot.manager.lose();
    tested.robot.manager.memory = boost::make_shared<FakeMemoryInterface>(&tested.robot.manager.log);
    tested.robot.reconnect(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    former->deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(tested.samples("A"), text("1=1"));
}

void TestSampleHistorySources::listensOnceToAnInterfaceThatComesBack()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    QSignalSpy added(&tested.history, &SampleHistory::samplesAdded);

    tested.robot.manager.lose();
    tested.robot.manager.establish();
    tested.robot.manager.establish();
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});

    QCOMPARE(added.count(), 1);
    QCOMPARE(tested.samples("A"), text("1=1"));
}

void TestSampleHistorySources::listensToAnInterfaceThatComesLate()
{
    WatchedRobot robot;
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.manager.memory;
    robot.manager.memory.reset();
    SampleHistory history(robot.keys);

    robot.manager.memory = memory;
    robot.display(list("A"));
    robot.deliver({{text("A"), {{1.0, 1}}}});

    QCOMPARE(spanText(history.samples(text("A"))), text("1=1"));
}

void TestSampleHistorySources::worksWhenItIsMadeWithoutARobot()
{
    WatchedRobot robot;
    robot.manager.connected = false;
    const boost::shared_ptr<FakeMemoryInterface> memory = robot.manager.memory;
    robot.manager.memory.reset();
    robot.display(list("A"));
    SampleHistory history(robot.keys);

    robot.manager.memory = memory;
    robot.manager.establish();
    robot.deliver({{text("A"), {{1.0, 1}}}});

    QCOMPARE(spanText(history.samples(text("A"))), text("1=1"));
}

void TestSampleHistorySources::keepsSamplesOverAReconnection()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    QSignalSpy dropped(&tested.history, &SampleHistory::samplesDropped);

    tested.robot.manager.lose();
    tested.robot.reconnect(list("A"));

    QCOMPARE(tested.samples("A"), text("1=1"));
    QCOMPARE(dropped.count(), 0);
}

void TestSampleHistorySources::forgetsRemovedKeys()
{
    TestedHistory tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}, {text("B"), {{1.0, 1}}}});
    QSignalSpy dropped(&tested.history, &SampleHistory::samplesDropped);

    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.robot.display(list("A"));

    QVERIFY(tested.history.samples(text("A")).isEmpty());
    QCOMPARE(tested.samples("B"), text("1=1"));
    QCOMPARE(dropped.count(), 1);
}

void TestSampleHistorySources::forgetsKeysThatTheSynchronisationDropped()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.manager.establish();
    tested.robot.display(list("B"));
    tested.robot.deliver({{text("B"), {{1.0, 1}}}});
    QCOMPARE(tested.samples("B"), text("1=1"));

    tested.robot.finishLists(list("A|B"));
    tested.robot.deliver({{text("B"), {{2.0, 2}}}});

    QVERIFY(tested.history.samples(text("B")).isEmpty());
}

void TestSampleHistorySources::takesInKeysThatTheSynchronisationBroughtBack()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.manager.establish();
    tested.robot.keys->removeKeys(keySet(list("A")));

    tested.robot.finishLists(list("A"));
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(tested.samples("A"), text("2=2"));
}

void TestSampleHistorySources::takesTheSamplesOfAGivenStream()
{
    WatchedRobot robot;
    robot.display(list("A"));
    SampleStream stream(&robot.manager, robot.keys);
    SampleHistory history;

    history.setDisplayedKeys(robot.keys, &stream);
    robot.deliver({{text("A"), {{1.0, 1}}}});
    stream.markGap();
    robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(spanText(history.samples(text("A"))), text("1=1 | 2=2"));
    QCOMPARE(robot.manager.memory->dataGatheredReceivers(), 2); // the displayed key set and the stream
}

void TestSampleHistorySources::followsAnotherStreamOfTheSameSet()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    SampleStream stream(&tested.robot.manager, tested.robot.keys);
    const auto receivers = [&] { return tested.robot.manager.memory->dataGatheredReceivers(); };
    QCOMPARE(receivers(), 3);

    tested.history.setDisplayedKeys(tested.robot.keys, &stream);
    QCOMPARE(receivers(), 2);
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    tested.history.setDisplayedKeys(tested.robot.keys, &stream); // nothing new
    QCOMPARE(tested.samples("A"), text("1=1"));

    tested.history.setDisplayedKeys(tested.robot.keys);
    QCOMPARE(receivers(), 3);
    QSignalSpy added(&tested.history, &SampleHistory::samplesAdded);
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    QCOMPARE(added.count(), 1);
    tested.history.setDisplayedKeys(tested.robot.keys); // nothing new
    QCOMPARE(tested.samples("A"), text("2=2"));
}

void TestSampleHistorySources::keepsItsSamplesWhenTheStreamDies()
{
    WatchedRobot robot;
    robot.display(list("A"));
    auto stream = std::make_unique<SampleStream>(&robot.manager, robot.keys);
    SampleHistory history;
    history.setDisplayedKeys(robot.keys, stream.get());
    robot.deliver({{text("A"), {{1.0, 1}}}});

    stream.reset();
    robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(spanText(history.samples(text("A"))), text("1=1"));
}

void TestSampleHistorySources::followsAnotherSet()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    WatchedRobot other;
    other.display(list("A"));

    tested.history.setDisplayedKeys(other.keys);
    QVERIFY(tested.history.samples(text("A")).isEmpty());
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    other.deliver({{text("A"), {{3.0, 3}}}});

    QCOMPARE(tested.samples("A"), text("3=3"));
}

void TestSampleHistorySources::isEmptyWhenTheSetDies()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});

    delete tested.robot.keys;
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    tested.robot.manager.lose();
    tested.robot.manager.establish();

    QVERIFY(tested.history.samples(text("A")).isEmpty());
    QVERIFY(!tested.history.displayedKeys());
}

void TestSampleHistorySources::isEmptyWhenTheConnectionManagerDies()
{
    auto* const manager = new FakeConnectionManager;
    SampleHistory history(new DisplayedMemoryKeyListModel(manager));

    delete manager;

    QVERIFY(!history.displayedKeys());
    history.markGap();
    history.setDisplayedKeys(nullptr);
}

QTEST_GUILESS_MAIN(TestSampleHistorySources)

#include "tst_sample_history_sources.moc"
