// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/value_axis.h>

#include <QTest>

#include <cmath>
#include <limits>

using namespace Velk;

namespace {

QVector<PlotCurve> lineOf(const QVector<CurvePoint>& points)
{
    return {{QStringLiteral("K"), Qt::red, PlotCurve::Line, points}};
}

} // namespace

class TestValueAxis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itShowsAllValuesOfTheTimeThatIsShown()
    {
        ValueAxis axis;

        axis.fit(lineOf({{0, 1000}, {1, 10}, {2, 20}, {3, -1000}}), 0.5, 2.5);

        QVERIFY(axis.lower() < 10 && axis.lower() > 8);
        QVERIFY(axis.upper() > 20 && axis.upper() < 22);
    }

    void rangesThatAreTooNarrowOrTooWide_data()
    {
        QTest::addColumn<QVector<double>>("values");
        const double infinity = std::numeric_limits<double>::infinity();
        const double greatest = std::numeric_limits<double>::max();
        QTest::newRow("a level curve") << QVector<double>{5, 5};
        QTest::newRow("a level curve at zero") << QVector<double>{0, 0};
        QTest::newRow("differences near the precision of doubles") << QVector<double>{1, 1 + 1e-15};
        QTest::newRow("the greatest doubles") << QVector<double>{-greatest, greatest};
        QTest::newRow("infinity") << QVector<double>{-infinity, 1, infinity};
        QTest::newRow("gaps") << QVector<double>{std::nan(""), 3, std::nan("")};
        QTest::newRow("the smallest doubles") << QVector<double>{std::numeric_limits<double>::denorm_min(), 0};
    }

    void rangesThatAreTooNarrowOrTooWide()
    {
        QFETCH(QVector<double>, values);
        QVector<CurvePoint> points;
        for (const double value : values)
            points.append({double(points.size()), value});
        ValueAxis axis;

        axis.fit(lineOf(points), 0, 10);

        QVERIFY(std::isfinite(axis.lower()) && std::isfinite(axis.upper()));
        QVERIFY(axis.upper() > axis.lower());
        QVERIFY(std::isfinite(axis.upper() - axis.lower()));
    }

    void withoutValuesTheRangeStays()
    {
        ValueAxis axis;
        axis.fit(lineOf({{0, 10}, {1, 20}}), 0, 1);
        const double lower = axis.lower();

        axis.fit(lineOf({{0, 10}, {1, 20}}), 5, 6);

        QCOMPARE(axis.lower(), lower);
    }

    void eventsHaveNoValue()
    {
        ValueAxis axis;

        axis.fit({{QStringLiteral("E"), Qt::red, PlotCurve::Marks, {{0, 1000}}}}, 0, 1);

        QCOMPARE(axis.upper(), 1.0);
    }

    void zoomingKeepsTheValueUnderTheMouseAndEndsTheFitting()
    {
        ValueAxis axis; // 0 to 1

        axis.zoom(2, 0.25);

        QCOMPARE(axis.lower(), -0.25);
        QCOMPARE(axis.upper(), 1.75);
        QVERIFY(!axis.isFitting());
        axis.fit(lineOf({{0, 100}, {1, 200}}), 0, 1);
        QCOMPARE(axis.upper(), 1.75);
    }

    void panningMovesTheRange()
    {
        ValueAxis axis;

        axis.pan(2);

        QCOMPARE(axis.lower(), 2.0);
        QCOMPARE(axis.upper(), 3.0);
        QVERIFY(!axis.isFitting());
    }

    void zoomingFarKeepsTheRangeFinite()
    {
        ValueAxis axis;
        for (int step = 0; step < 5000; ++step)
            axis.zoom(2, 0.5);
        QVERIFY(std::isfinite(axis.upper()));

        for (int step = 0; step < 10000; ++step)
            axis.zoom(0.5, 0.5);
        QVERIFY(axis.upper() > axis.lower());
    }

    void resetFitsAgain()
    {
        ValueAxis axis;
        axis.pan(100);

        axis.reset();
        axis.fit(lineOf({{0, 0}, {1, 1}}), 0, 1);

        QVERIFY(axis.upper() < 2);
    }
};

QTEST_APPLESS_MAIN(TestValueAxis)
#include "tst_value_axis.moc"
