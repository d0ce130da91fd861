// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/plot_curve.h>

#include <QLocale>
#include <QTest>

using namespace Velk;

namespace {

QString text(const QVector<CurveReading>& readings)
{
    QStringList words;
    for (const CurveReading& reading : readings)
        words << QStringLiteral("%1=%2").arg(reading.name, reading.text);
    return words.join(QLatin1Char(' '));
}

PlotCurve curve(PlotCurve::Kind kind, const QVector<CurvePoint>& points)
{
    return {QStringLiteral("K"), Qt::red, kind, points};
}

} // namespace

class TestPlotCurve : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void readingsAtATime_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<double>("time");
        QTest::addColumn<QString>("text");
        QTest::newRow("on a sample") << int(PlotCurve::Line) << 1.0 << QStringLiteral("K=0.5");
        QTest::newRow("between samples the earlier one counts")
            << int(PlotCurve::Line) << 1.9 << QStringLiteral("K=0.5");
        QTest::newRow("before the first sample") << int(PlotCurve::Line) << 0.9 << QString();
        QTest::newRow("in a gap") << int(PlotCurve::Line) << 3.5 << QString();
        QTest::newRow("after the newest sample") << int(PlotCurve::Line) << 9.0 << QStringLiteral("K=0");
        QTest::newRow("a truth value") << int(PlotCurve::Steps) << 2.0 << QStringLiteral("K=true");
        QTest::newRow("a false one") << int(PlotCurve::Steps) << 4.0 << QStringLiteral("K=false");
        QTest::newRow("near an event") << int(PlotCurve::Marks) << 2.1 << QStringLiteral("K=event");
        QTest::newRow("away from any event") << int(PlotCurve::Marks) << 1.5 << QString();
        QTest::newRow("a key that cannot be plotted") << int(PlotCurve::None) << 2.0 << QString();
    }

    void readingsAtATime()
    {
        QFETCH(int, kind);
        QFETCH(double, time);
        const PlotCurve key = curve(PlotCurve::Kind(kind), {{1, 0.5}, {2, 1}, gapAt(3), {4, 0}});

        QTEST(text(readingsAt({key}, time, 0.2)), "text");
    }

    void numbersHaveSensibleDigits()
    {
        const PlotCurve key = curve(PlotCurve::Line, {{0, 1.0 / 3}});

        QCOMPARE(text(readingsAt({key}, 0, 0)), QStringLiteral("K=0.333333"));
    }

    void readingsKeepTheOrderAndTheColour()
    {
        PlotCurve first = curve(PlotCurve::Line, {{0, 1}});
        PlotCurve second = first;
        second.name = QStringLiteral("L");
        second.color = Qt::blue;

        const QVector<CurveReading> readings = readingsAt({second, first}, 0, 0);

        QCOMPARE(text(readings), QStringLiteral("L=1 K=1"));
        QCOMPARE(readings.first().color, QColor(Qt::blue));
    }
};

QTEST_APPLESS_MAIN(TestPlotCurve)
#include "tst_plot_curve.moc"
