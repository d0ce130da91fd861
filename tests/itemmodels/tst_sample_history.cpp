// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/sample_history.h>

#include "model_text.h"
#include "watched_robot.h"

#include <session/sample_stream.h>

#include <QtTest>

#include <cmath>

using namespace Velk;

namespace {

/// "time=value" of each sample; a "|" before one that comes after a gap.
QString spanText(const HistorySpan& span)
{
    QStringList samples;
    for (const HistorySample& sample : span)
        samples << (sample.isAfterGap ? QStringLiteral("| ") : QString()) +
                       QStringLiteral("%1=%2").arg(sample.time).arg(sample.value.toString());
    return samples.join(QLatin1Char(' '));
}

struct TestedHistory
{
    QString samples(const char* name) const { return spanText(history.samples(text(name))); }

    WatchedRobot robot;
    SampleHistory history{robot.keys};
};

} // namespace

class TestSampleHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEverySampleOfABatch();
    void takesOnlyDisplayedKeys();
    void givesWhatAPlotDraws();
    void endsEachBatchWithASignal();
    void isBoundedByCount();
    void isBoundedByTime();
    void appliesNewBoundsAtOnce();
    void staysInOneRowHoweverManyWereDropped();
    void findsTheSamplesOfARange_data();
    void findsTheSamplesOfARange();
    void marksTheGapOfADisconnection();
    void marksTheGapOfAWatcherThatTheApplicationStopped();
    void marksTheGapOfASilentWatcher();
    void marksNoGapBeforeTheFirstSample();
    void keepsAGapOpenWhenTheLastSampleIsDeliveredOnceMore();
    void listensToTheInterfaceOfEachConnection();
    void listensOnceToAnInterfaceThatComesBack();
    void listensToAnInterfaceThatComesLate();
    void worksWhenItIsMadeWithoutARobot();
    void keepsSamplesOverAReconnection();
    void forgetsRemovedKeys();
    void forgetsKeysThatTheSynchronisationDropped();
    void takesInKeysThatTheSynchronisationBroughtBack();
    void replacesASampleOfTheSameTime();
    void putsALateSampleInItsPlace();
    void startsAgainWithTheRobotsClock();
    void startsAgainWithAClockThatJumpedBack();
    void ignoresATimeThatIsNoFiniteNumber();
    void aRevisionChangesWithEveryChangeOfTheSamples();
    void aKeyWithoutSamplesHasNoRevision();
    void aRevisionIsNeverUsedAgain();
    void takesTheSamplesOfAGivenStream();
    void followsAnotherStreamOfTheSameSet();
    void keepsItsSamplesWhenTheStreamDies();
    void followsAnotherSet();
    void isEmptyWhenTheSetDies();
    void isEmptyWhenTheConnectionManagerDies();
};

void TestSampleHistory::keepsEverySampleOfABatch()
{
    TestedHistory tested;
    tested.robot.display(list("A|B"));

    tested.robot.deliver({{text("A"), {{1.0, 5}, {1.5, 6}, {2.0, 7}}}, {text("B"), {{1.0, text("x")}}}});
    tested.robot.deliver({{text("A"), {{2.5, 8}}}});

    QCOMPARE(tested.samples("A"), text("1=5 1.5=6 2=7 2.5=8"));
    QCOMPARE(tested.samples("B"), text("1=x"));
    QCOMPARE(tested.history.newestTime(), 2.5);
}

void TestSampleHistory::takesOnlyDisplayedKeys()
{
    TestedHistory tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("B"), {{1.0, 5}}}});
    tested.robot.display(list("B"));
    tested.robot.deliver({{text("B"), {{2.0, 6}}}});

    QCOMPARE(tested.samples("B"), text("2=6"));
    QVERIFY(tested.history.samples(text("A")).isEmpty());
    QVERIFY(tested.history.samples(text("C")).isEmpty());
}

void TestSampleHistory::givesWhatAPlotDraws()
{
    TestedHistory tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 5}, {2.0, true}, {3.0, text("x")}, {4.0, 2.5}}}});

    const HistorySpan span = tested.history.samples(text("A"));
    QCOMPARE(span.size(), 4);
    QCOMPARE(span.at(0).number, 5.0);
    QCOMPARE(span.at(1).number, 1.0);
    QVERIFY(std::isnan(span.at(2).number));
    QCOMPARE(span.last().number, 2.5);
    QCOMPARE(span.first().time, 1.0);
}

void TestSampleHistory::endsEachBatchWithASignal()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    int samplesInSlot = 0;
    connect(&tested.history, &SampleHistory::samplesAdded, &tested.history,
            [&] { samplesInSlot = tested.history.samples(text("A")).size(); });
    QSignalSpy added(&tested.history, &SampleHistory::samplesAdded);

    tested.robot.deliver({{text("A"), {{1.0, 5}, {2.0, 6}}}});
    QCOMPARE(added.count(), 1);
    QCOMPARE(samplesInSlot, 2);

    tested.robot.deliver({{text("A"), {}}, {text("B"), {{3.0, 5}}}});
    tested.robot.deliver({});
    QCOMPARE(added.count(), 1);
}

void TestSampleHistory::isBoundedByCount()
{
    TestedHistory tested;
    QCOMPARE(tested.history.maximumCount(), 10000);
    tested.history.setMaximumCount(3);
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}});
    tested.robot.deliver({{text("A"), {{3.0, 3}, {4.0, 4}, {5.0, 5}}}});

    QCOMPARE(tested.samples("A"), text("3=3 4=4 5=5"));
}

void TestSampleHistory::isBoundedByTime()
{
    TestedHistory tested;
    tested.history.setMaximumAge(2.0);
    tested.robot.display(list("A|B"));

    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}, {text("B"), {{1.0, 1}}}});
    tested.robot.deliver({{text("A"), {{3.5, 3}, {4.0, 4}}}});

    QCOMPARE(tested.samples("A"), text("2=2 3.5=3 4=4"));
    QCOMPARE(tested.samples("B"), text("1=1")); // by the newest of its own
}

void TestSampleHistory::appliesNewBoundsAtOnce()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}, {3.0, 3}, {4.0, 4}}}});

    tested.history.setMaximumAge(2.5);
    QCOMPARE(tested.samples("A"), text("2=2 3=3 4=4"));
    tested.history.setMaximumCount(0);
    QCOMPARE(tested.history.maximumCount(), 1);
    QCOMPARE(tested.samples("A"), text("4=4"));
}

void TestSampleHistory::staysInOneRowHoweverManyWereDropped()
{
    TestedHistory tested;
    tested.history.setMaximumCount(100);
    tested.robot.display(list("A"));

    for (int i = 0; i < 5000; ++i)
        tested.robot.deliver({{text("A"), {{double(i), i}}}});

    const HistorySpan span = tested.history.samples(text("A"));
    QCOMPARE(span.size(), 100);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(span.at(i).value.toInt(), 4900 + i);
}

void TestSampleHistory::findsTheSamplesOfARange_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QString>("expected");

    QTest::newRow("with one on either side") << 2.5 << 3.5 << text("2=2 3=3 4=4");
    QTest::newRow("from a sample to a sample") << 2.0 << 3.0 << text("1=1 2=2 3=3 4=4");
    QTest::newRow("between two") << 2.2 << 2.8 << text("2=2 3=3");
    QTest::newRow("all") << -10.0 << 10.0 << text("1=1 2=2 3=3 4=4");
    QTest::newRow("before") << -2.0 << 0.0 << text("1=1");
    QTest::newRow("after") << 8.0 << 9.0 << text("4=4");
}

void TestSampleHistory::findsTheSamplesOfARange()
{
    QFETCH(double, from);
    QFETCH(double, to);
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}, {3.0, 3}, {4.0, 4}}}});

    QTEST(spanText(tested.history.samples(text("A"), from, to)), "expected");
    QVERIFY(tested.history.samples(text("B"), from, to).isEmpty());
}

void TestSampleHistory::marksTheGapOfADisconnection()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}});
    QSignalSpy gap(&tested.history, &SampleHistory::gapBegan);

    tested.robot.manager.lose();
    QCOMPARE(gap.count(), 1);
    tested.robot.reconnect(list("A"));
    tested.robot.deliver({{text("A"), {{5.0, 5}, {6.0, 6}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=2 | 5=5 6=6"));
    QCOMPARE(gap.count(), 1);
}

void TestSampleHistory::marksTheGapOfAWatcherThatTheApplicationStopped()
{
    TestedHistory tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}, {text("B"), {{1.0, 1}}}});

    tested.robot.keys->stopWatcher();
    tested.history.markGap();
    tested.robot.keys->startWatcher(false);
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    tested.robot.deliver({{text("A"), {{3.0, 3}}}, {text("B"), {{3.0, 3}}}});

    QCOMPARE(tested.samples("A"), text("1=1 | 2=2 3=3"));
    QCOMPARE(tested.samples("B"), text("1=1 | 3=3"));
}

void TestSampleHistory::marksTheGapOfASilentWatcher()
{
    TestedHistory tested;
    tested.robot.keys->setSamplingPeriod(200);
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    QSignalSpy gap(&tested.history, &SampleHistory::gapBegan);

    QVERIFY(gap.wait(30000));
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(tested.samples("A"), text("1=1 | 2=2"));
}

void TestSampleHistory::marksNoGapBeforeTheFirstSample()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    QSignalSpy gap(&tested.history, &SampleHistory::gapBegan);

    tested.history.markGap();
    tested.robot.manager.lose();
    tested.robot.reconnect(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});

    QCOMPARE(tested.samples("A"), text("1=1"));
    QCOMPARE(gap.count(), 0);
}

void TestSampleHistory::keepsAGapOpenWhenTheLastSampleIsDeliveredOnceMore()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}});

    tested.history.markGap();
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    tested.robot.deliver({{text("A"), {{9.0, 9}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=2 | 9=9"));
}

void TestSampleHistory::listensToTheInterfaceOfEachConnection()
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

void TestSampleHistory::listensOnceToAnInterfaceThatComesBack()
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

void TestSampleHistory::listensToAnInterfaceThatComesLate()
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

void TestSampleHistory::worksWhenItIsMadeWithoutARobot()
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

void TestSampleHistory::keepsSamplesOverAReconnection()
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

void TestSampleHistory::forgetsRemovedKeys()
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

void TestSampleHistory::forgetsKeysThatTheSynchronisationDropped()
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

void TestSampleHistory::takesInKeysThatTheSynchronisationBroughtBack()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.manager.establish();
    tested.robot.keys->removeKeys(keySet(list("A")));

    tested.robot.finishLists(list("A"));
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(tested.samples("A"), text("2=2"));
}

void TestSampleHistory::replacesASampleOfTheSameTime()
{
    TestedHistory tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}});
    tested.robot.deliver({{text("A"), {{2.0, 22}, {3.0, 3}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=22 3=3"));
}

void TestSampleHistory::putsALateSampleInItsPlace()
{
    TestedHistory tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 1}, {3.0, 3}}}});
    tested.robot.deliver({{text("A"), {{2.0, 2}, {4.0, 4}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=2 3=3 4=4"));
}

void TestSampleHistory::startsAgainWithTheRobotsClock()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{100.0, 1}, {101.0, 2}}}});

    tested.robot.manager.lose();
    tested.robot.reconnect(list("A"));
    tested.robot.deliver({{text("A"), {{0.5, 3}, {1.0, 4}}}});

    QCOMPARE(tested.samples("A"), text("| 0.5=3 1=4"));
    QCOMPARE(tested.history.newestTime(), 1.0);
}

void TestSampleHistory::startsAgainWithAClockThatJumpedBack()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{100.0, 1}, {101.0, 2}}}});

    tested.robot.deliver({{text("A"), {{50.0, 3}, {51.0, 4}}}});

    QCOMPARE(tested.samples("A"), text("| 50=3 51=4"));
}

void TestSampleHistory::ignoresATimeThatIsNoFiniteNumber()
{
    TestedHistory tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{-HUGE_VAL, 0}, {1.0, 1}, {HUGE_VAL, 2}}}});
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=2"));
    QCOMPARE(tested.history.newestTime(), 2.0);
}

void TestSampleHistory::aRevisionChangesWithEveryChangeOfTheSamples()
{
    TestedHistory tested;
    tested.robot.display(list("A|B"));
    QList<quint64> revisions;
    const auto note = [&] { revisions << tested.history.revision(text("A")); };

    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}, {3.0, 3}, {9.0, 9}}}});
    note();
    tested.robot.deliver({{text("A"), {{2.0, 22}}}});
    note();
    tested.history.setMaximumCount(3);
    note();
    tested.history.setMaximumAge(1.0);
    note();
    QCOMPARE(tested.samples("A"), text("9=9"));
    for (int i = 0; i < revisions.size(); ++i)
        QCOMPARE(revisions.indexOf(revisions.at(i)), i); // all different

    const quint64 last = revisions.last();
    tested.robot.deliver({{text("B"), {{1.0, 1}}}});
    tested.robot.deliver({{text("A"), {{HUGE_VAL, 1}}}});
    tested.history.setMaximumCount(2);
    tested.history.markGap();
    QCOMPARE(tested.history.revision(text("A")), last);
}

void TestSampleHistory::aKeyWithoutSamplesHasNoRevision()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    QCOMPARE(tested.history.revision(text("A")), quint64(0));
    QCOMPARE(tested.history.revision(text("not displayed")), quint64(0));
    tested.robot.deliver({{text("A"), {{HUGE_VAL, 1}}}});
    QCOMPARE(tested.history.revision(text("A")), quint64(0));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    QVERIFY(tested.history.revision(text("A")) > 0);

    tested.history.clear();

    QCOMPARE(tested.history.revision(text("A")), quint64(0));
    QVERIFY(tested.history.samples(text("A")).isEmpty());
    QCOMPARE(tested.history.newestTime(), 0.0);
}

void TestSampleHistory::aRevisionIsNeverUsedAgain()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}});
    const quint64 former = tested.history.revision(text("A"));

    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 2}}}});
    QVERIFY(tested.history.revision(text("A")) > former);

    tested.history.clear();
    tested.robot.deliver({{text("A"), {{1.0, 3}}}});
    QVERIFY(tested.history.revision(text("A")) > former + 1);
}

void TestSampleHistory::takesTheSamplesOfAGivenStream()
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

void TestSampleHistory::followsAnotherStreamOfTheSameSet()
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

void TestSampleHistory::keepsItsSamplesWhenTheStreamDies()
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

void TestSampleHistory::followsAnotherSet()
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

void TestSampleHistory::isEmptyWhenTheSetDies()
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

void TestSampleHistory::isEmptyWhenTheConnectionManagerDies()
{
    auto* const manager = new FakeConnectionManager;
    SampleHistory history(new DisplayedMemoryKeyListModel(manager));

    delete manager;

    QVERIFY(!history.displayedKeys());
    history.markGap();
    history.setDisplayedKeys(nullptr);
}

QTEST_GUILESS_MAIN(TestSampleHistory)

#include "tst_sample_history.moc"
