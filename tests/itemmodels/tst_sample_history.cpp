// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/sample_history.h>

#include "tested_history.h"

#include <QtTest>

#include <cmath>

using namespace Velk;

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
    void replacesASampleOfTheSameTime();
    void putsALateSampleInItsPlace();
    void startsAgainWithTheRobotsClock();
    void startsAgainWithAClockThatJumpedBack();
    void ignoresATimeThatIsNoFiniteNumber();
    void aRevisionChangesWithEveryChangeOfTheSamples();
    void aKeyWithoutSamplesHasNoRevision();
    void aRevisionIsNeverUsedAgain();
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

QTEST_GUILESS_MAIN(TestSampleHistory)

#include "tst_sample_history.moc"
