// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/curve_decimation.h>

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Velk;

namespace {

// "0:1 1:- 2:3": times to values, a dash for a gap.
QString text(const QVector<CurvePoint>& points)
{
    QStringList words;
    for (const CurvePoint& point : points)
        words << QStringLiteral("%1:%2")
                     .arg(point.time)
                     .arg(isGap(point) ? QStringLiteral("-") : QString::number(point.value));
    return words.join(QLatin1Char(' '));
}

// `count` points, one each millisecond from 0 on, of value 0.
QVector<CurvePoint> flat(int count)
{
    QVector<CurvePoint> points;
    for (int index = 0; index < count; ++index)
        points.append({index * 0.001, 0.0});
    return points;
}

qint64 gapsIn(const QVector<CurvePoint>& points)
{
    return std::count_if(points.cbegin(), points.cend(), isGap);
}

} // namespace

class TestCurveDecimation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fewPointsStayAsTheyAre()
    {
        const QVector<CurvePoint> points{{0, 1}, gapAt(1), {2, 3}};

        QCOMPARE(text(decimated(points, -1, 5, 100)), QStringLiteral("0:1 1:- 2:3"));
    }

    void theNeighboursOfTheRangeAreKept()
    {
        const QVector<CurvePoint> points{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}};

        QCOMPARE(text(decimated(points, 1.5, 3.5, 100)), QStringLiteral("1:1 2:2 3:3 4:4"));
    }

    void aRangeBetweenTwoPointsKeepsBoth()
    {
        QCOMPARE(text(decimated({{0, 0}, {10, 1}}, 4, 5, 100)), QStringLiteral("0:0 10:1"));
    }

    void aColumnKeepsItsLowestAndItsHighestValue()
    {
        QVector<CurvePoint> points = flat(1000);
        points[300].value = 7;
        points[400].value = -7;

        QCOMPARE(text(decimated(points, 0, 2, 1)), QStringLiteral("0.3:7 0.4:-7"));
    }

    void aSinglePeakIsNeverLost()
    {
        QVector<CurvePoint> points = flat(10000);
        points[6543].value = 99;

        const QVector<CurvePoint> shown = decimated(points, 0, 10, 50);

        QCOMPARE(std::count(shown.cbegin(), shown.cend(), CurvePoint({6543 * 0.001, 99})), 1);
    }

    void noMorePointsThanTheScreenCanShow_data()
    {
        QTest::addColumn<int>("gapEvery");
        QTest::newRow("no gaps") << 0;
        QTest::newRow("a gap in every column") << 200;
        QTest::newRow("every other point is a gap") << 2;
        QTest::newRow("nothing but gaps") << 1;
    }

    void noMorePointsThanTheScreenCanShow()
    {
        QFETCH(int, gapEvery);
        QVector<CurvePoint> points = flat(10000);
        for (int index = 0; gapEvery > 0 && index < points.size(); index += gapEvery)
            points[index] = gapAt(points[index].time);
        for (int index = 0; index < points.size(); index += 3)
            points[index].value += index % 7;

        const QVector<CurvePoint> shown = decimated(points, 1, 9, 80);

        QVERIFY2(shown.size() <= 80 * pointsPerColumn + 2, qPrintable(QString::number(shown.size())));
    }

    void timesAscend()
    {
        QVector<CurvePoint> points = flat(10000);
        for (int index = 0; index < points.size(); ++index)
            points[index].value = std::sin(index * 0.7) * index;

        const QVector<CurvePoint> shown = decimated(points, 0.5, 9.5, 37);

        QVERIFY(std::is_sorted(shown.cbegin(), shown.cend(),
                               [](const CurvePoint& a, const CurvePoint& b) { return a.time < b.time; }));
    }

    void aGapWithinAColumnIsAGap()
    {
        QVector<CurvePoint> points = flat(1000);
        points[200].value = 3;
        points[500] = gapAt(0.5);
        points[800].value = 4;

        QCOMPARE(text(decimated(points, 0, 2, 1)), QStringLiteral("0:0 0.2:3 0.5:- 0.501:0 0.8:4"));
    }

    void pointsAfterALongGapAreNotJoined()
    {
        // Two gaps in one column; the second is the long one.
        QVector<CurvePoint> points = flat(1000);
        points[10] = gapAt(points[10].time);
        points.append(gapAt(1.0));
        points.append({9.5, 1});

        const QVector<CurvePoint> shown = decimated(points, 0, 10, 5);

        QCOMPARE(gapsIn(shown), 2);
        QCOMPARE(text(shown.mid(shown.size() - 2)), QStringLiteral("1:- 9.5:1"));
    }

    void nothingToShow_data()
    {
        QTest::addColumn<double>("to");
        QTest::addColumn<int>("columns");
        QTest::newRow("no columns") << 1.0 << 0;
        QTest::newRow("an empty range") << 0.0 << 10;
        QTest::newRow("a range that runs backwards") << -1.0 << 10;
        QTest::newRow("a range that is no number") << double(NAN) << 10;
    }

    void nothingToShow()
    {
        QFETCH(double, to);
        QFETCH(int, columns);

        QCOMPARE(text(decimated({{0, 1}, {0.5, 1}}, 0, to, columns)), QString());
    }

    void noPointsGiveNoCurve() { QCOMPARE(text(decimated({}, 0, 1, 10)), QString()); }
};

QTEST_APPLESS_MAIN(TestCurveDecimation)
#include "tst_curve_decimation.moc"
