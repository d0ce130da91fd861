// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/time_axis.h>

#include <QTest>

using namespace Velk;

class TestTimeAxis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nowIsTheNewestSample()
    {
        TimeAxis axis;
        QVERIFY(!axis.hasNow());

        axis.setNewest(1000);

        QVERIFY(axis.hasNow());
        QCOMPARE(axis.now(), 1000.0);
        QCOMPARE(axis.from(), 970.0);
        QCOMPARE(axis.to(), 1000.0);
        QCOMPARE(axis.left(), -30.0);
        QCOMPARE(axis.right(), 0.0);
    }

    void itFollows()
    {
        TimeAxis axis;
        axis.setNewest(1000);

        axis.setNewest(1001);

        QCOMPARE(axis.to(), 1001.0);
    }

    void aClockThatStartsAgainIsFollowed()
    {
        TimeAxis axis;
        axis.setNewest(1000);

        axis.setNewest(1);

        QCOMPARE(axis.now(), 1.0);
    }

    void anotherRobotHasAnotherClock()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.setFollowing(false);

        axis.restart();
        axis.setNewest(5);

        QCOMPARE(axis.now(), 5.0);
    }

    void aFrozenAxisStandsStill()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.setFollowing(false);

        axis.setNewest(1060);

        QCOMPARE(axis.from(), 970.0);
        QCOMPARE(axis.to(), 1000.0);
    }

    void followingAgainReturnsToTheNewestSample()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.pan(-100);
        axis.setNewest(1060);

        axis.setFollowing(true);

        QCOMPARE(axis.to(), 1060.0);
        QCOMPARE(axis.right(), 0.0);
    }

    void panningFreezes()
    {
        TimeAxis axis;
        axis.setNewest(1000);

        axis.pan(-10);

        QVERIFY(!axis.isFollowing());
        QCOMPARE(axis.left(), -40.0);
        QCOMPARE(axis.right(), -10.0);
    }

    void panningEndsAtNow()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.pan(-10);

        axis.pan(25);

        QCOMPARE(axis.right(), 0.0);
    }

    void panningByNothingDoesNotFreeze()
    {
        TimeAxis axis;

        axis.pan(0);

        QVERIFY(axis.isFollowing());
    }

    void zoomingWhileItFollowsKeepsTheRightEdge()
    {
        TimeAxis axis;
        axis.setNewest(1000);

        axis.zoom(0.5, -30);

        QVERIFY(axis.isFollowing());
        QCOMPARE(axis.left(), -15.0);
        QCOMPARE(axis.right(), 0.0);
    }

    void zoomingWhileFrozenKeepsTheTimeUnderTheMouse()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.pan(-10); // -40 to -10

        axis.zoom(0.5, -20);

        QCOMPARE(axis.left(), -30.0);
        QCOMPARE(axis.right(), -15.0);
    }

    void zoomingOutEndsAtNow()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.pan(-1);

        axis.zoom(10, -31);

        QCOMPARE(axis.right(), 0.0);
        QCOMPARE(axis.span(), 300.0);
    }

    void theSpanHasLimits()
    {
        TimeAxis axis;

        axis.zoom(1e-12, 0);
        QCOMPARE(axis.span(), TimeAxis::minSpan);

        axis.zoom(1e12, 0);
        QCOMPARE(axis.span(), TimeAxis::maxSpan);
    }

    void anInvalidFactorIsIgnored_data()
    {
        QTest::addColumn<double>("factor");
        QTest::newRow("zero") << 0.0;
        QTest::newRow("negative") << -2.0;
        QTest::newRow("no number") << double(qQNaN());
    }

    void anInvalidFactorIsIgnored()
    {
        QFETCH(double, factor);
        TimeAxis axis;

        axis.zoom(factor, 0);

        QCOMPARE(axis.span(), TimeAxis::initialSpan);
    }

    void resetShowsTheNewestSamplesAgain()
    {
        TimeAxis axis;
        axis.setNewest(1000);
        axis.pan(-100);
        axis.zoom(3, -100);

        axis.reset();

        QVERIFY(axis.isFollowing());
        QCOMPARE(axis.left(), -30.0);
        QCOMPARE(axis.right(), 0.0);
    }
};

QTEST_APPLESS_MAIN(TestTimeAxis)
#include "tst_time_axis.moc"
