#include "plot_view.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

constexpr int refreshMs = 16;       // one frame of a usual screen
constexpr double zoomStep = 1.25;   // one notch of the wheel, one key press
constexpr double panStep = 0.1;     // of the view
constexpr int maxReadings = 12;     // lines that still let the curves be seen
constexpr int markTolerance = 5;    // pixels between the reading line and an event
constexpr int maxSmoothCurves = 12; // wide and smooth lines cost ten times as much as thin ones
constexpr double firstLane = 0.06;  // of the height: events stand in lanes above the time axis
constexpr double laneHeight = 0.045;
constexpr int lanes = 8;

// Zero is now, and what lies to the left of it is that many seconds old.
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

// A filled triangle, which stands out from every curve.
QCPScatterStyle eventMark(const QColor& color)
{
    QPainterPath triangle;
    triangle.addPolygon(QPolygonF{{-3.0, 2.5}, {0.0, -3.0}, {3.0, 2.5}, {-3.0, 2.5}});
    return QCPScatterStyle(triangle, QPen(color), color, 10);
}

} // namespace

PlotView::PlotView(QWidget* parent)
    : QWidget(parent)
    , m_plot(new QCustomPlot(this))
    , m_readingsLabel(new QLabel(m_plot))
    , m_hint(new QLabel(m_plot))
    , m_readingLine(new QCPItemLine(m_plot))
{
    setObjectName(QStringLiteral("plotView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_plot);
    setMinimumHeight(120);

    m_plot->setObjectName(QStringLiteral("plot"));
    m_plot->setAccessibleName(tr("Plot of the watched keys"));
    m_plot->setFocusPolicy(Qt::StrongFocus);
    m_plot->setMouseTracking(true);
    m_plot->installEventFilter(this);
    setFocusProxy(m_plot);

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

    for (QLabel* label : {m_readingsLabel, m_hint}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        label->setAutoFillBackground(true);
        label->setMargin(4);
        label->hide();
    }
    m_readingsLabel->setObjectName(QStringLiteral("readings"));
    m_readingsLabel->setFrameStyle(QFrame::Box | QFrame::Plain);
    m_readingsLabel->setBackgroundRole(QPalette::ToolTipBase);
    m_readingsLabel->setForegroundRole(QPalette::ToolTipText);
    m_hint->setObjectName(QStringLiteral("plotHint"));
    m_hint->setBackgroundRole(QPalette::Base);

    styleAxes();
    scheduleDrawing();
}

void PlotView::setCurves(const QVector<PlotCurve>& curves, double newestTime)
{
    m_curves = curves;
    m_time.setNewest(newestTime);
    scheduleDrawing();
}

void PlotView::clear()
{
    m_curves.clear();
    m_time.restart();
    scheduleDrawing();
}

// Drawing

void PlotView::scheduleDrawing()
{
    if (m_isDrawingScheduled)
        return;
    m_isDrawingScheduled = true;
    QTimer::singleShot(refreshMs, Qt::PreciseTimer, this, [this] {
        m_isDrawingScheduled = false;
        draw();
    });
}

void PlotView::drawNow()
{
    draw();
}

void PlotView::draw()
{
    // The margins, and with them the width in pixels, follow from the labels of the value axis.
    m_values.fit(m_curves, m_time.from(), m_time.to());
    m_plot->yAxis->setRange(m_values.lower(), m_values.upper());
    m_plot->xAxis->setRange(m_time.left(), m_time.right());
    m_plot->xAxis->setLabel(isFollowing() ? tr("Seconds before now") : tr("Seconds before now (frozen)"));

    while (m_graphs.size() < m_curves.size()) {
        QCPGraph* const graph = m_plot->addGraph();
        graph->setAdaptiveSampling(false);
        m_graphs.append(graph);
    }
    while (m_graphs.size() > m_curves.size())
        m_plot->removeGraph(m_graphs.takeLast());

    // Line by line, wide and smooth curves take a twentieth of the time; thin ones take twice as long.
    m_plot->setPlottingHint(QCP::phFastPolylines, m_curves.size() <= maxSmoothCurves);
    m_drawnPoints = 0;
    int marks = 0;
    bool isAnythingDrawn = false;
    for (int index = 0; index < m_curves.size(); ++index) {
        const PlotCurve& curve = m_curves.at(index);
        drawCurve(m_graphs.at(index), curve, marks);
        marks += curve.kind == PlotCurve::Marks ? 1 : 0;
        isAnythingDrawn = isAnythingDrawn || curve.kind != PlotCurve::None;
    }
    m_hint->setText(m_curves.isEmpty() ? tr("Nothing to plot yet: watch a key, and show it.")
                                       : tr("The keys that are shown have no value yet that can be plotted."));
    m_hint->setVisible(!isAnythingDrawn);
    m_hint->adjustSize();
    m_hint->move((m_plot->width() - m_hint->width()) / 2, (m_plot->height() - m_hint->height()) / 2);

    updateReadings();
    m_plot->replot(QCustomPlot::rpImmediateRefresh);
    emit drawn();
}

void PlotView::drawCurve(QCPGraph* graph, const PlotCurve& curve, int lane)
{
    const bool isMarks = curve.kind == PlotCurve::Marks;
    graph->setValueAxis(isMarks ? m_plot->yAxis2 : m_plot->yAxis);
    graph->setLineStyle(isMarks                          ? QCPGraph::lsNone
                        : curve.kind == PlotCurve::Steps ? QCPGraph::lsStepLeft
                                                         : QCPGraph::lsLine);

    QVector<CurvePoint> points;
    if (curve.kind != PlotCurve::None && m_time.hasNow())
        points = decimated(curve.points, m_time.from(), m_time.to(), columns());
    const bool isSmooth = m_curves.size() <= maxSmoothCurves;
    graph->setPen(QPen(curve.color, isSmooth ? 1.6 : 1.0));
    graph->setAntialiased(isSmooth && curve.kind == PlotCurve::Line);
    // A curve of single samples, as between two gaps, would not be seen as a line.
    const bool isSparse = points.size() * 8 < columns();
    graph->setScatterStyle(isMarks    ? eventMark(curve.color)
                           : isSparse ? QCPScatterStyle(QCPScatterStyle::ssDisc, curve.color, 4)
                                      : QCPScatterStyle());

    // The newest value of a step holds until now.
    if (curve.kind == PlotCurve::Steps && !points.isEmpty() && !isGap(points.last()) &&
        points.last().time < m_time.to())
        points.append({m_time.to(), points.last().value});

    QVector<QCPGraphData> drawing;
    drawing.reserve(points.size());
    const double now = m_time.now();
    const double laneValue = firstLane + laneHeight * (lane % lanes);
    for (const CurvePoint& point : std::as_const(points))
        drawing.append({point.time - now, isMarks && !isGap(point) ? laneValue : point.value});
    m_drawnPoints += int(drawing.size());
    graph->data()->set(drawing, true);
}

void PlotView::styleAxes()
{
    const QPalette colors = palette();
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
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
        axis->grid()->setPen(QPen(mixed(ground, text, 0.16), 1, Qt::SolidLine));
        axis->grid()->setZeroLinePen(QPen(mixed(ground, text, 0.3), 1, Qt::SolidLine));
    }
    m_readingLine->setPen(QPen(text, 1, Qt::DashLine));
}

int PlotView::columns() const
{
    return std::max(1, int(std::ceil(m_plot->axisRect()->width() * m_plot->bufferDevicePixelRatio())));
}

// Reading

double PlotView::timeAt(double x) const
{
    return m_plot->xAxis->pixelToCoord(x);
}

double PlotView::valueAt(double y) const
{
    return m_plot->yAxis->pixelToCoord(y);
}

std::optional<double> PlotView::readingTime() const
{
    if (!m_readingX || !m_time.hasNow())
        return std::nullopt;
    return timeAt(*m_readingX);
}

QVector<CurveReading> PlotView::readings() const
{
    const std::optional<double> time = readingTime();
    if (!time)
        return {};
    const double tolerance = m_time.span() / std::max(1, m_plot->axisRect()->width()) * markTolerance;
    return readingsAt(m_curves, m_time.now() + *time, tolerance);
}

void PlotView::updateReadings()
{
    const std::optional<double> time = readingTime();
    m_readingLine->setVisible(time.has_value());
    m_readingsLabel->setVisible(time.has_value());
    if (!time) {
        m_plot->setAccessibleDescription(QString());
        return;
    }
    m_readingLine->start->setCoords(*m_readingX, 0);
    m_readingLine->end->setCoords(*m_readingX, 1);

    const QVector<CurveReading> all = readings();
    const QString age = QLocale().toString(std::max(0.0, -*time), 'f', m_time.span() < 5 ? 3 : 1);
    QStringList rows{
        QStringLiteral("<tr><td colspan='3'>%1</td></tr>").arg(tr("%1 s before now").arg(age).toHtmlEscaped())};
    QStringList plain{tr("%1 s before now").arg(age)};
    for (const CurveReading& reading : all.mid(0, maxReadings)) {
        rows << QStringLiteral("<tr><td><span style='color:%1'>&#9632;</span></td><td>%2&nbsp;&nbsp;</td>"
                               "<td align='right'>%3</td></tr>")
                    .arg(reading.color.name(), reading.name.toHtmlEscaped(), reading.text.toHtmlEscaped());
        plain << QStringLiteral("%1: %2").arg(reading.name, reading.text);
    }
    if (all.size() > maxReadings)
        rows << QStringLiteral("<tr><td colspan='3'>%1</td></tr>")
                    .arg(tr("and %n more", nullptr, int(all.size()) - maxReadings).toHtmlEscaped());
    m_plot->setAccessibleDescription(plain.join(QLatin1Char('\n')));
    placeReadings(QStringLiteral("<table cellspacing='1'>%1</table>").arg(rows.join(QString())));
}

void PlotView::placeReadings(const QString& html)
{
    if (m_readingsLabel->text() != html)
        m_readingsLabel->setText(html);
    m_readingsLabel->adjustSize();
    // Beside the line, on the side where there is room.
    const int distance = 10;
    const int x = int(*m_readingX);
    const bool isLeft = x + distance + m_readingsLabel->width() > m_plot->width();
    m_readingsLabel->move(std::max(0, isLeft ? x - distance - m_readingsLabel->width() : x + distance),
                          m_plot->axisRect()->top() + distance);
}

void PlotView::moveReading(int pixels)
{
    const QRect rect = m_plot->axisRect()->rect();
    const double x = m_readingX ? *m_readingX + pixels : rect.right();
    m_readingX = std::clamp<double>(x, rect.left(), rect.right());
    scheduleDrawing();
}

// Moving the view

void PlotView::afterTimeChange(bool wasFollowing)
{
    scheduleDrawing();
    if (wasFollowing != isFollowing())
        emit followingChanged(isFollowing());
}

void PlotView::setFollowing(bool following)
{
    const bool wasFollowing = isFollowing();
    if (wasFollowing == following)
        return;
    m_time.setFollowing(following);
    afterTimeChange(wasFollowing);
}

void PlotView::zoomIn()
{
    m_time.zoom(1 / zoomStep, readingTime().value_or((m_time.left() + m_time.right()) / 2));
    scheduleDrawing();
}

void PlotView::zoomOut()
{
    m_time.zoom(zoomStep, readingTime().value_or((m_time.left() + m_time.right()) / 2));
    scheduleDrawing();
}

void PlotView::zoomValuesIn()
{
    m_values.zoom(1 / zoomStep, (m_values.lower() + m_values.upper()) / 2);
    scheduleDrawing();
}

void PlotView::zoomValuesOut()
{
    m_values.zoom(zoomStep, (m_values.lower() + m_values.upper()) / 2);
    scheduleDrawing();
}

void PlotView::panToPast()
{
    const bool wasFollowing = isFollowing();
    m_time.pan(-m_time.span() * panStep);
    afterTimeChange(wasFollowing);
}

void PlotView::panToNow()
{
    const bool wasFollowing = isFollowing();
    // Nothing is newer than now: going there while following is no reason to stop.
    if (!wasFollowing)
        m_time.pan(m_time.span() * panStep);
    afterTimeChange(wasFollowing);
}

void PlotView::resetView()
{
    const bool wasFollowing = isFollowing();
    m_time.reset();
    m_values.reset();
    afterTimeChange(wasFollowing);
}

bool PlotView::handleKey(int key, Qt::KeyboardModifiers modifiers)
{
    const double valueStep = (m_values.upper() - m_values.lower()) * panStep;
    const bool isControl = modifiers & Qt::ControlModifier;
    const bool isShift = modifiers & Qt::ShiftModifier;
    switch (key) {
    case Qt::Key_Left:
        isShift ? moveReading(isControl ? -1 : -8) : panToPast();
        return true;
    case Qt::Key_Right:
        isShift ? moveReading(isControl ? 1 : 8) : panToNow();
        return true;
    case Qt::Key_Up:
        m_values.pan(valueStep);
        scheduleDrawing();
        return true;
    case Qt::Key_Down:
        m_values.pan(-valueStep);
        scheduleDrawing();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        isControl ? zoomValuesIn() : zoomIn();
        return true;
    case Qt::Key_Minus:
        isControl ? zoomValuesOut() : zoomOut();
        return true;
    case Qt::Key_Space:
        setFollowing(!isFollowing());
        return true;
    case Qt::Key_Home:
        resetView();
        return true;
    case Qt::Key_Escape:
        if (!m_readingX)
            return false;
        m_readingX.reset();
        scheduleDrawing();
        return true;
    default:
        return false;
    }
}

bool PlotView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_plot)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (handleKey(key->key(), key->modifiers()))
            return true;
        break;
    }
    case QEvent::Wheel: {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        // Shift or Alt turn the wheel sideways on some desktops.
        const QPoint turn = wheel->angleDelta();
        const double factor = std::pow(zoomStep, -(turn.y() != 0 ? turn.y() : turn.x()) / 120.0);
        if (wheel->modifiers() & Qt::ControlModifier)
            m_values.zoom(factor, valueAt(wheel->position().y()));
        else
            m_time.zoom(factor, timeAt(wheel->position().x()));
        scheduleDrawing();
        return true;
    }
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton)
            m_dragFrom = mouse->position();
        break;
    }
    case QEvent::MouseButtonRelease:
        m_dragFrom.reset();
        break;
    case QEvent::MouseButtonDblClick:
        m_dragFrom.reset();
        resetView();
        return true;
    case QEvent::MouseMove: {
        const QPointF position = static_cast<QMouseEvent*>(event)->position();
        const bool wasFollowing = isFollowing();
        if (m_dragFrom) {
            m_time.pan(timeAt(m_dragFrom->x()) - timeAt(position.x()));
            // A hand that drags along the time does not mean to end the fitting of the values by a pixel or two.
            const double difference = m_dragFrom->y() - position.y();
            if (!m_values.isFitting() || std::abs(difference) > 8) {
                m_values.pan(valueAt(m_dragFrom->y()) - valueAt(position.y()));
                m_dragFrom->setY(position.y());
            }
            m_dragFrom->setX(position.x());
            m_plot->xAxis->setRange(m_time.left(), m_time.right());
            m_plot->yAxis->setRange(m_values.lower(), m_values.upper());
        }
        const QRect rect = m_plot->axisRect()->rect();
        if (rect.contains(position.toPoint()))
            m_readingX = position.x();
        else
            m_readingX.reset();
        afterTimeChange(wasFollowing);
        break;
    }
    case QEvent::Leave:
        m_readingX.reset();
        scheduleDrawing();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void PlotView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        styleAxes();
        scheduleDrawing();
    }
}

void PlotView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    scheduleDrawing();
}

} // namespace Velk
