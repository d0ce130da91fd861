// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_CANVAS_H
#define APPS_VELK_WATCH_PLOT_CANVAS_H

#include "plot_curve.h"
#include "time_axis.h"
#include "value_axis.h"

#include <QRect>
#include <QVector>

#include <optional>

class QCPGraph;
class QCPItemLine;
class QCustomPlot;
class QFont;
class QPalette;
class QWidget;

namespace Velk {

/// The widget on which a plot is drawn: axes, curves and the reading line. It draws what it is given, and handles no
/// input.
class PlotCanvas
{
public:
    /// Creates the widget as a child of `parent`, which owns it.
    explicit PlotCanvas(QWidget* parent);

    QWidget* widget() const;
    /// The part of the widget between the axes, in its pixels.
    QRect area() const;
    /// The number of pixel columns of the area, in pixels of the screen; at least 1.
    int columns() const;
    /// The time at a horizontal position, in seconds relative to now. Positions are in pixels of the widget.
    double timeAt(double x) const;
    /// The value at a vertical position.
    double valueAt(double y) const;

    void setColors(const QPalette& colors, const QFont& font);
    /// Takes the edges of both axes.
    void setRange(const TimeAxis& time, const ValueAxis& values);
    /// Passes the visible points of the curves to the widget, for the next refresh(). Returns their number.
    int setCurves(const QVector<PlotCurve>& curves, const TimeAxis& time);
    /// Puts the reading line at a horizontal position; hides it without one.
    void setReadingLine(std::optional<double> x);
    /// Draws all that was set.
    void refresh();

private:
    int setCurve(QCPGraph* graph, const PlotCurve& curve, const TimeAxis& time, int lane, bool isSmooth);

    QCustomPlot* m_plot;
    QCPItemLine* m_readingLine;
    QVector<QCPGraph*> m_graphs;
};

} // namespace Velk

#endif
