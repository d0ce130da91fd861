// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/sample_history.h>

#include "tested_history.h"

#include <QtTest>

using namespace Velk;

class TestSampleHistoryGaps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksTheGapOfADisconnection();
    void marksTheGapOfAWatcherThatTheApplicationStopped();
    void marksTheGapOfASilentWatcher();
    void marksNoGapBeforeTheFirstSample();
    void keepsAGapOpenWhenTheLastSampleIsDeliveredOnceMore();
};

void TestSampleHistoryGaps::marksTheGapOfADisconnection()
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

void TestSampleHistoryGaps::marksTheGapOfAWatcherThatTheApplicationStopped()
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

void TestSampleHistoryGaps::marksTheGapOfASilentWatcher()
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

void TestSampleHistoryGaps::marksNoGapBeforeTheFirstSample()
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

void TestSampleHistoryGaps::keepsAGapOpenWhenTheLastSampleIsDeliveredOnceMore()
{
    TestedHistory tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 1}, {2.0, 2}}}});

    tested.history.markGap();
    tested.robot.deliver({{text("A"), {{2.0, 2}}}});
    tested.robot.deliver({{text("A"), {{9.0, 9}}}});

    QCOMPARE(tested.samples("A"), text("1=1 2=2 | 9=9"));
}

QTEST_GUILESS_MAIN(TestSampleHistoryGaps)

#include "tst_sample_history_gaps.moc"
