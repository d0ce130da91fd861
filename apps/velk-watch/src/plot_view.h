#ifndef APPS_VELK_WATCH_PLOT_VIEW_H
#define APPS_VELK_WATCH_PLOT_VIEW_H

#include "plot_curve.h"
#include "time_axis.h"
#include "value_axis.h"

#include <QPointF>
#include <QVector>
#include <QWidget>

#include <optional>

class QCPGraph;
class QCPItemLine;
class QCustomPlot;
class QLabel;

namespace Velk {

/// The live plot: one curve per key, against the seconds before now.
///
/// By mouse: the wheel zooms the time, with Ctrl the values; dragging moves the view; a double click shows the newest
/// samples again; the values under the pointer are shown, also while the plot moves along.
/// By keyboard: Left and Right, Up and Down move the view, + and - zoom the time, with Ctrl the values, Space follows
/// or freezes, Home shows the newest samples again, Shift with Left and Right moves the reading line, Escape removes
/// it.
class PlotView : public QWidget
{
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);

    /// The curves from now on, and the time stamp of the newest sample. Drawn with the next refresh of the screen,
    /// once, however often this is called until then. The points are shared, not copied.
    void setCurves(const QVector<PlotCurve>& curves, double newestTime);
    /// Nothing is known any more, also not the time: for another robot.
    void clear();

    const TimeAxis& timeAxis() const { return m_time; }
    const ValueAxis& valueAxis() const { return m_values; }
    bool isFollowing() const { return m_time.isFollowing(); }

    /// What the reading line shows; empty without one.
    QVector<CurveReading> readings() const;
    /// Where the reading line stands, in seconds relative to now.
    std::optional<double> readingTime() const;

    /// The points that the last drawing handed to the plot, all curves together.
    int drawnPoints() const { return m_drawnPoints; }
    /// Draws at once what a refresh of the screen would draw: for measuring, and for pictures.
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
    void drawCurve(QCPGraph* graph, const PlotCurve& curve, int lane);
    void styleAxes();
    void updateReadings();
    void placeReadings(const QString& html);
    void afterTimeChange(bool wasFollowing);
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);
    void moveReading(int columns);
    int columns() const;
    double timeAt(double x) const;
    double valueAt(double y) const;

    QCustomPlot* m_plot;
    QLabel* m_readingsLabel;
    QLabel* m_hint;
    QCPItemLine* m_readingLine;
    QVector<QCPGraph*> m_graphs;
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
