// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_canvas.h"

#include <QCoreApplication>
#include <QFont>
#include <QPalette>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

constexpr int maxSmoothCurves = 12; // wide and smooth lines cost ten times as much as thin ones
constexpr double firstLane = 0.06;  // of the height: events are drawn in lanes above the time axis
constexpr double laneHeight = 0.045;
constexpr int lanes = 8;

// Zero is now; a time to the left of it is labelled with its age.
class SecondsBeforeNowTicker : public QCPAxisTicker
{
protected:
    QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override
    {
        return QCPAxisTicker::getTickLabel(tick == 0.0 ? 0.0 : -tick, locale, format, precision);
    }
};

QColor mixed(const QColor& a, const QColor& b, double part)
{
    return QColor::fromRgbF(float(a.redF() * (1 - part) + b.redF() * part),
                            float(a.greenF() * (1 - part) + b.greenF() * part),
                            float(a.blueF() * (1 - part) + b.blueF() * part));
}

// A filled triangle, which no curve hides.
QCPScatterStyle eventMark(const QColor& color)
{
    QPainterPath triangle;
    triangle.addPolygon(QPolygonF{{-3.0, 2.5}, {0.0, -3.0}, {3.0, 2.5}, {-3.0, 2.5}});
    return QCPScatterStyle(triangle, QPen(color), color, 10);
}

} // namespace

PlotCanvas::PlotCanvas(QWidget* parent)
    : m_plot(new QCustomPlot(parent))
    , m_readingLine(new QCPItemLine(m_plot))
{
    m_plot->xAxis->setTicker(QSharedPointer<SecondsBeforeNowTicker>::create());
    m_plot->xAxis->setNumberFormat(QStringLiteral("gb"));
    m_plot->yAxis->setNumberFormat(QStringLiteral("gb"));
    m_plot->yAxis->setNumberPrecision(5);
    m_plot->yAxis2->setRange(0.0, 1.0); // the lanes of the events
    m_plot->axisRect()->setupFullAxesBox(false);
    m_plot->xAxis2->setTicks(false);
    m_plot->yAxis2->setTicks(false);
    m_plot->axisRect()->setMinimumMargins(QMargins(56, 10, 14, 8));

    m_readingLine->setVisible(false);
    m_readingLine->start->setTypeX(QCPItemPosition::ptAbsolute);
    m_readingLine->start->setTypeY(QCPItemPosition::ptAxisRectRatio);
    m_readingLine->end->setTypeX(QCPItemPosition::ptAbsolute);
    m_readingLine->end->setTypeY(QCPItemPosition::ptAxisRectRatio);
}

QWidget* PlotCanvas::widget() const
{
    return m_plot;
}

QRect PlotCanvas::area() const
{
    return m_plot->axisRect()->rect();
}

int PlotCanvas::columns() const
{
    return std::max(1, int(std::ceil(m_plot->axisRect()->width() * m_plot->bufferDevicePixelRatio())));
}

double PlotCanvas::timeAt(double x) const
{
    return m_plot->xAxis->pixelToCoord(x);
}

double PlotCanvas::valueAt(double y) const
{
    return m_plot->yAxis->pixelToCoord(y);
}

void PlotCanvas::setColors(const QPalette& colors, const QFont& font)
{
    const QColor ground = colors.color(QPalette::Base);
    const QColor text = colors.color(QPalette::Text);
    m_plot->setBackground(ground);
    for (QCPAxis* axis : {m_plot->xAxis, m_plot->yAxis, m_plot->xAxis2, m_plot->yAxis2}) {
        const QPen line(mixed(ground, text, 0.6));
        axis->setBasePen(line);
        axis->setTickPen(line);
        axis->setSubTickPen(line);
        axis->setTickLabelColor(text);
        axis->setLabelColor(text);
        axis->setTickLabelFont(font);
        axis->setLabelFont(font);
        axis->grid()->setPen(QPen(mixed(ground, text, 0.16), 1, Qt::SolidLine));
        axis->grid()->setZeroLinePen(QPen(mixed(ground, text, 0.3), 1, Qt::SolidLine));
    }
    m_readingLine->setPen(QPen(text, 1, Qt::DashLine));
}

void PlotCanvas::setRange(const TimeAxis& time, const ValueAxis& values)
{
    m_plot->yAxis->setRange(values.lower(), values.upper());
    m_plot->xAxis->setRange(time.left(), time.right());
}

int PlotCanvas::setCurves(const QVector<PlotCurve>& curves, const TimeAxis& time)
{
    m_plot->xAxis->setLabel(time.isFollowing()
                                ? QCoreApplication::translate("Velk::PlotCanvas", "Seconds before now")
                                : QCoreApplication::translate("Velk::PlotCanvas", "Seconds before now (frozen)"));
    while (m_graphs.size() < curves.size()) {
        QCPGraph* const graph = m_plot->addGraph();
        graph->setAdaptiveSampling(false);
        m_graphs.append(graph);
    }
    while (m_graphs.size() > curves.size())
        m_plot->removeGraph(m_graphs.takeLast());

    // Drawn line by line, wide and smooth curves take a twentieth of the time; thin ones take twice as long.
    const bool isSmooth = curves.size() <= maxSmoothCurves;
    m_plot->setPlottingHint(QCP::phFastPolylines, isSmooth);
    int points = 0;
    int marks = 0;
    for (int index = 0; index < curves.size(); ++index) {
        const PlotCurve& curve = curves.at(index);
        points += setCurve(m_graphs.at(index), curve, time, marks, isSmooth);
        marks += curve.kind == PlotCurve::Marks ? 1 : 0;
    }
    return points;
}

int PlotCanvas::setCurve(QCPGraph* graph, const PlotCurve& curve, const TimeAxis& time, int lane, bool isSmooth)
{
    const bool isMarks = curve.kind == PlotCurve::Marks;
    graph->setValueAxis(isMarks ? m_plot->yAxis2 : m_plot->yAxis);
    graph->setLineStyle(isMarks                          ? QCPGraph::lsNone
                        : curve.kind == PlotCurve::Steps ? QCPGraph::lsStepLeft
                                                         : QCPGraph::lsLine);

    QVector<CurvePoint> points;
    if (curve.kind != PlotCurve::None && time.hasNow())
        points = decimated(curve.points, time.from(), time.to(), columns());
    graph->setPen(QPen(curve.color, isSmooth ? 1.6 : 1.0));
    graph->setAntialiased(isSmooth && curve.kind == PlotCurve::Line);
    // A single sample, as between two gaps, is not visible as a line.
    const bool isSparse = points.size() * 8 < columns();
    graph->setScatterStyle(isMarks    ? eventMark(curve.color)
                           : isSparse ? QCPScatterStyle(QCPScatterStyle::ssDisc, curve.color, 4)
                                      : QCPScatterStyle());

    // The newest value of a step holds until now.
    if (curve.kind == PlotCurve::Steps && !points.isEmpty() && !isGap(points.last()) && points.last().time < time.to())
        points.append({time.to(), points.last().value});

    QVector<QCPGraphData> drawing;
    drawing.reserve(points.size());
    const double now = time.now();
    const double laneValue = firstLane + laneHeight * (lane % lanes);
    for (const CurvePoint& point : std::as_const(points))
        drawing.append({point.time - now, isMarks && !isGap(point) ? laneValue : point.value});
    graph->data()->set(drawing, true);
    return int(drawing.size());
}

void PlotCanvas::setReadingLine(std::optional<double> x)
{
    m_readingLine->setVisible(x.has_value());
    if (!x)
        return;
    m_readingLine->start->setCoords(*x, 0);
    m_readingLine->end->setCoords(*x, 1);
}

void PlotCanvas::refresh()
{
    m_plot->replot(QCustomPlot::rpImmediateRefresh);
}

} // namespace Velk
