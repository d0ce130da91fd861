// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_VIEW_H
#define APPS_VELK_WATCH_PLOT_VIEW_H

#include "plot_curve.h"
#include "time_axis.h"
#include "value_axis.h"

#include <QPointF>
#include <QVector>
#include <QWidget>

#include <memory>
#include <optional>

class QLabel;

namespace Velk {

class PlotCanvas;
class PlotReadings;

/// The live plot: one curve per key, against the seconds before now.
///
/// By mouse: the wheel zooms the time, with Ctrl the values; a drag moves the view; a double click shows the newest
/// samples again; the reading line follows the pointer.
/// By keyboard: Left and Right, Up and Down move the view; + and - zoom the time, with Ctrl the values; Space follows
/// or freezes; Home shows the newest samples again; Shift with Left and Right moves the reading line, Escape removes
/// it.
class PlotView : public QWidget
{
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);
    ~PlotView() override;

    /// Sets the curves, and the time stamp of the newest sample. They are drawn with the next refresh of the screen,
    /// once, however often this is called until then. The points are shared, not copied.
    void setCurves(const QVector<PlotCurve>& curves, double newestTime);
    /// Forgets the curves and the time, for another robot.
    void clear();

    const TimeAxis& timeAxis() const { return m_time; }
    const ValueAxis& valueAxis() const { return m_values; }
    bool isFollowing() const { return m_time.isFollowing(); }

    /// The readings at the reading line; empty without one.
    QVector<CurveReading> readings() const;
    /// The time of the reading line, in seconds relative to now.
    std::optional<double> readingTime() const;

    /// The number of points in the last drawing, of all curves together.
    int drawnPoints() const { return m_drawnPoints; }
    /// Draws at once, without waiting for a refresh of the screen: for measurements and pictures.
    void drawNow();

public Q_SLOTS:
    void setFollowing(bool isFollowing);
    void zoomIn();
    void zoomOut();
    void zoomValuesIn();
    void zoomValuesOut();
    void panToPast();
    void panToNow();
    void resetView();

Q_SIGNALS:
    void followingChanged(bool isFollowing);
    /// The plot was drawn.
    void drawn();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void scheduleDrawing();
    void draw();
    void updateReadings();
    void afterTimeChange(bool wasFollowing);
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);
    void moveReading(int pixels);

    std::unique_ptr<PlotCanvas> m_canvas;
    QWidget* m_plot; // of the canvas
    PlotReadings* m_readings;
    QLabel* m_hint;
    QVector<PlotCurve> m_curves;
    TimeAxis m_time;
    ValueAxis m_values;
    std::optional<double> m_readingX; // pixels: the line stays where the pointer is while time goes on
    std::optional<QPointF> m_dragFrom;
    int m_drawnPoints = 0;
    bool m_isDrawingScheduled = false;
};

} // namespace Velk

#endif
