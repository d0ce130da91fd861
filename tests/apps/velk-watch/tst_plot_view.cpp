// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/plot_view.h>

#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

using namespace Velk;

namespace {

PlotCurve curveOf(const QString& name, PlotCurve::Kind kind, const QColor& color, const QVector<CurvePoint>& points)
{
    return {name, color, kind, points};
}

PlotCurve line(const QVector<CurvePoint>& points)
{
    return curveOf(QStringLiteral("Line"), PlotCurve::Line, Qt::red, points);
}

// One point each 10 ms from 0 to 100 s.
QVector<CurvePoint> longHistory()
{
    QVector<CurvePoint> points;
    for (int index = 0; index <= 10000; ++index)
        points.append({index * 0.01, double(index % 100)});
    return points;
}

QCustomPlot* plotOf(const PlotView& view)
{
    return view.findChild<QCustomPlot*>(QStringLiteral("plot"));
}

// A curve may cover a pixel in part: its colour is then mixed with the background, which keeps the hue.
bool shows(const QColor& pixel, const QColor& color)
{
    constexpr int quarter = 64; // of full saturation: the background, the grid and the text are grey
    const int difference = std::abs(pixel.hsvHue() - color.hsvHue());
    return pixel.hsvSaturation() >= quarter && std::min(difference, 360 - difference) <= 5;
}

// The pixels between two times, in seconds relative to now, that show the colour. Only the area of the curves counts:
// how wide the labels beside it are depends on the font.
int pixelsOf(const PlotView& view, const QColor& color, double from, double to)
{
    const QCustomPlot* plot = plotOf(view);
    const QImage picture = const_cast<QCustomPlot*>(plot)->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect area = plot->axisRect()->rect();
    const auto scaled = [&](double position) { return int(std::lround(position * picture.devicePixelRatio())); };
    const int left = std::max(area.left(), int(std::ceil(plot->xAxis->coordToPixel(from))));
    const int right = std::min(area.right(), int(std::floor(plot->xAxis->coordToPixel(to))));
    int count = 0;
    for (int y = scaled(area.top()); y < scaled(area.bottom()); ++y) {
        for (int x = scaled(left); x < scaled(right); ++x)
            count += shows(picture.pixelColor(x, y), color) ? 1 : 0;
    }
    return count;
}

} // namespace

class TestPlotView : public QObject
{
    Q_OBJECT

private:
    // A window of a known size, with everything drawn.
    static void show(PlotView& view)
    {
        view.resize(800, 300);
        view.show();
        view.drawNow();
    }
    static void key(const PlotView& view, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(plotOf(view), key, modifiers);
    }
    static void turnWheel(const PlotView& view, int notches, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointF center = QRectF(plotOf(view)->rect()).center();
        QWheelEvent turn(center, plotOf(view)->mapToGlobal(center), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                         modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(plotOf(view), &turn);
    }

    // As an event and not with QTest::mouseMove(), which moves the pointer of the screen: it stays on the screen, and a
    // window at twice the size is larger than that.
    static void movePointer(const PlotView& view, const QPointF& position, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent move(QEvent::MouseMove, position, plotOf(view)->mapToGlobal(position), Qt::NoButton, buttons,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(plotOf(view), &move);
    }
    // The middle of the height, at a time in seconds relative to now.
    static QPointF positionAt(const PlotView& view, double time)
    {
        return {plotOf(view)->xAxis->coordToPixel(time), double(plotOf(view)->axisRect()->rect().center().y())};
    }

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void manyUpdatesAreDrawnOnce()
    {
        PlotView view;
        show(view);
        QSignalSpy drawn(&view, &PlotView::drawn);
        QVERIFY(drawn.wait(30000)); // what showing the window asked for
        drawn.clear();

        for (int update = 0; update < 100; ++update)
            view.setCurves({line({{0, 1}, {double(update + 1), 2}})}, update + 1);
        QCOMPARE(drawn.count(), 0);

        QVERIFY(drawn.wait(30000));
        QCOMPARE(drawn.count(), 1);
    }

    void theCurveHasItsColour()
    {
        PlotView view;
        view.setCurves({line(longHistory())}, 100);
        show(view);

        QVERIFY(pixelsOf(view, Qt::red, -30, 0) > 100);
    }

    void noMoreIsDrawnThanTheScreenShows()
    {
        PlotView view;
        view.setCurves({line(longHistory())}, 100);
        show(view);

        QVERIFY(view.drawnPoints() > 500);
        QVERIFY(view.drawnPoints() <= 800 * pointsPerColumn);
    }

    void aGapStaysEmpty()
    {
        PlotView view;
        view.setCurves({line({{70, 1}, {80, 1}, gapAt(80.1), {95, 1}, {100, 1}})}, 100);
        show(view);

        QVERIFY(pixelsOf(view, Qt::red, -29, -21) > 0);
        QCOMPARE(pixelsOf(view, Qt::red, -19, -6), 0);
        QVERIFY(pixelsOf(view, Qt::red, -4, -1) > 0);
    }

    void anEventIsAMarkAndNoCurve()
    {
        PlotView view;
        view.setCurves({curveOf(QStringLiteral("Bumper"), PlotCurve::Marks, Qt::magenta, {{75, 1}, {90, 1}})}, 100);
        show(view);

        QVERIFY(pixelsOf(view, Qt::magenta, -26, -24) > 10);
        QCOMPARE(pixelsOf(view, Qt::magenta, -23, -12), 0); // between the two
        QVERIFY(pixelsOf(view, Qt::magenta, -11, -9) > 10);
    }

    void aStepHoldsUntilNow()
    {
        PlotView view;
        view.setCurves({curveOf(QStringLiteral("Docked"), PlotCurve::Steps, Qt::blue, {{75, 0}, {85, 1}})}, 100);
        show(view);

        QVERIFY(pixelsOf(view, Qt::blue, -4, -1) > 0);
    }

    void withoutCurvesItSaysWhatToDo()
    {
        PlotView view;
        show(view);

        const auto* hint = view.findChild<QLabel*>(QStringLiteral("plotHint"));
        QVERIFY(hint->isVisible());

        view.setCurves({line({{0, 1}})}, 0);
        view.drawNow();
        QVERIFY(!hint->isVisible());
    }

    void spaceFreezesAndFollows()
    {
        PlotView view;
        view.setCurves({line({{0, 1}})}, 10);
        show(view);
        QSignalSpy following(&view, &PlotView::followingChanged);

        key(view, Qt::Key_Space);
        view.setCurves({line({{0, 1}})}, 20);
        QVERIFY(!view.isFollowing());
        QCOMPARE(view.timeAxis().to(), 10.0);

        key(view, Qt::Key_Space);
        QVERIFY(view.isFollowing());
        QCOMPARE(view.timeAxis().to(), 20.0);
        QCOMPARE(following.count(), 2);
    }

    void keysMoveTheView_data()
    {
        QTest::addColumn<int>("pressed");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<double>("left");
        QTest::addColumn<double>("right");
        QTest::newRow("left") << int(Qt::Key_Left) << int(Qt::NoModifier) << -33.0 << -3.0;
        QTest::newRow("right, at now already") << int(Qt::Key_Right) << int(Qt::NoModifier) << -30.0 << 0.0;
        QTest::newRow("plus") << int(Qt::Key_Plus) << int(Qt::NoModifier) << -24.0 << 0.0;
        QTest::newRow("minus") << int(Qt::Key_Minus) << int(Qt::NoModifier) << -37.5 << 0.0;
        QTest::newRow("up changes the values only") << int(Qt::Key_Up) << int(Qt::NoModifier) << -30.0 << 0.0;
    }

    void keysMoveTheView()
    {
        QFETCH(int, pressed);
        QFETCH(int, modifiers);
        QFETCH(double, left);
        QFETCH(double, right);
        PlotView view;
        view.setCurves({line({{0, 1}})}, 100);
        show(view);

        key(view, Qt::Key(pressed), Qt::KeyboardModifiers(modifiers));

        QCOMPARE(view.timeAxis().left(), left);
        QCOMPARE(view.timeAxis().right(), right);
    }

    void theValuesAreMovedByKeyboard()
    {
        PlotView view;
        view.setCurves({line({{90, 0}, {100, 10}})}, 100);
        show(view);
        const double span = view.valueAxis().upper() - view.valueAxis().lower();

        key(view, Qt::Key_Plus, Qt::ControlModifier);

        QCOMPARE(view.valueAxis().upper() - view.valueAxis().lower(), span / 1.25);
    }

    void homeShowsTheNewestSamplesAgain()
    {
        PlotView view;
        view.setCurves({line({{0, 1}})}, 100);
        show(view);
        key(view, Qt::Key_Left);
        key(view, Qt::Key_Up);
        key(view, Qt::Key_Minus);

        key(view, Qt::Key_Home);

        QVERIFY(view.isFollowing());
        QCOMPARE(view.timeAxis().left(), -30.0);
        QVERIFY(view.valueAxis().isFitting());
    }

    void theWheelZoomsTheTime()
    {
        PlotView view;
        view.setCurves({line({{0, 1}})}, 100);
        show(view);

        turnWheel(view, 1);

        QCOMPARE(view.timeAxis().span(), 24.0);
        QVERIFY(view.valueAxis().isFitting());
    }

    void theWheelWithCtrlZoomsTheValues()
    {
        PlotView view;
        view.setCurves({line({{0, 1}})}, 100);
        show(view);

        turnWheel(view, -1, Qt::ControlModifier);

        QCOMPARE(view.timeAxis().span(), 30.0);
        QVERIFY(!view.valueAxis().isFitting());
    }

    void draggingMovesTheView()
    {
        PlotView view;
        view.setCurves({line(longHistory())}, 100);
        show(view);
        QCustomPlot* const plot = plotOf(view);
        const QPoint start = plot->rect().center();

        QTest::mousePress(plot, Qt::LeftButton, {}, start);
        movePointer(view, start + QPoint(100, 0), Qt::LeftButton);
        QTest::mouseRelease(plot, Qt::LeftButton, {}, start + QPoint(100, 0));

        QVERIFY(!view.isFollowing());
        QVERIFY(view.timeAxis().right() < -2.0);
        QVERIFY(view.valueAxis().isFitting());
    }

    void theValuesUnderThePointerAreShownWhileItRuns()
    {
        PlotView view;
        view.setCurves({line({{0, 1}, {90, 5}, {100, 7}})}, 100);
        show(view);
        QCustomPlot* const plot = plotOf(view);

        movePointer(view, positionAt(view, -15));
        view.drawNow();
        QCOMPARE(view.readings(), QVector<CurveReading>({{QStringLiteral("Line"), Qt::red, QStringLiteral("1")}}));
        auto* label = view.findChild<QLabel*>(QStringLiteral("readings"));
        QVERIFY(label->isVisible());
        QVERIFY(label->text().contains(QStringLiteral("Line")));

        // Time goes on under a pointer that rests.
        view.setCurves({line({{0, 1}, {90, 5}, {100, 7}})}, 110);
        view.drawNow();
        QCOMPARE(view.readings().value(0).text, QStringLiteral("5"));
        QVERIFY(plot->accessibleDescription().contains(QStringLiteral("Line: 5")));
    }

    void theReadingLineIsMovedByKeyboard()
    {
        PlotView view;
        view.setCurves({line({{0, 1}, {99.9, 5}})}, 100);
        show(view);
        QVERIFY(!view.readingTime());

        key(view, Qt::Key_Left, Qt::ShiftModifier);
        const double first = view.readingTime().value();
        QCOMPARE(view.readings().value(0).name, QStringLiteral("Line"));
        key(view, Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(view.readingTime().value() < first);

        key(view, Qt::Key_Escape);
        QVERIFY(!view.readingTime());
        QCOMPARE(view.readings(), QVector<CurveReading>());
    }

    void namesAreNotTakenForMarkup()
    {
        PlotView view;
        view.setCurves({curveOf(QStringLiteral("<b>&"), PlotCurve::Line, Qt::red, {{0, 1}})}, 1);
        show(view);

        key(view, Qt::Key_Left, Qt::ShiftModifier);
        view.drawNow();

        QVERIFY(view.findChild<QLabel*>(QStringLiteral("readings"))->text().contains(QStringLiteral("&lt;b&gt;&amp;")));
    }

    void thePaletteColoursThePlot()
    {
        PlotView view;
        show(view);
        QPalette dark = view.palette();
        dark.setColor(QPalette::Base, QColor(0x1b1d20));

        view.setPalette(dark);
        view.drawNow();

        const QPoint corner(1, 1); // outside the area of the curves
        QCOMPARE(view.grab().toImage().pixelColor(corner).rgb(), QColor(0x1b1d20).rgb());
    }
};

QTEST_MAIN(TestPlotView)
#include "tst_plot_view.moc"
