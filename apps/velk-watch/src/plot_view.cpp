// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_view.h"

#include "plot_canvas.h"
#include "plot_readings.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

constexpr int refreshMs = 16;     // one frame of a usual screen
constexpr double zoomStep = 1.25; // one notch of the wheel, one key press
constexpr double panStep = 0.1;   // of the view
constexpr int markTolerance = 5;  // pixels between the reading line and an event
constexpr int dragTolerance = 8;  // pixels of a drag along the time that do not move the values

} // namespace

PlotView::PlotView(QWidget* parent)
    : QWidget(parent)
    , m_canvas(std::make_unique<PlotCanvas>(this))
    , m_plot(m_canvas->widget())
    , m_readings(new PlotReadings(m_plot))
    , m_hint(new QLabel(m_plot))
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

    m_hint->setObjectName(QStringLiteral("plotHint"));
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_hint->setAutoFillBackground(true);
    m_hint->setMargin(4);
    m_hint->setBackgroundRole(QPalette::Base);
    m_hint->hide();

    m_canvas->setColors(palette(), font());
    scheduleDrawing();
}

PlotView::~PlotView() = default;

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
    // The margins, and with them the width in pixels, depend on the labels of the value axis.
    m_values.fit(m_curves, m_time.from(), m_time.to());
    m_canvas->setRange(m_time, m_values);
    m_drawnPoints = m_canvas->setCurves(m_curves, m_time);

    const bool hasCurve = std::any_of(m_curves.cbegin(), m_curves.cend(),
                                      [](const PlotCurve& curve) { return curve.kind != PlotCurve::None; });
    m_hint->setText(m_curves.isEmpty() ? tr("Nothing to plot yet: watch a key, and show it.")
                                       : tr("The keys that are shown have no value yet that can be plotted."));
    m_hint->setVisible(!hasCurve);
    m_hint->adjustSize();
    m_hint->move((m_plot->width() - m_hint->width()) / 2, (m_plot->height() - m_hint->height()) / 2);

    updateReadings();
    m_canvas->refresh();
    emit drawn();
}

// Reading

std::optional<double> PlotView::readingTime() const
{
    if (!m_readingX || !m_time.hasNow())
        return std::nullopt;
    return m_canvas->timeAt(*m_readingX);
}

QVector<CurveReading> PlotView::readings() const
{
    const std::optional<double> time = readingTime();
    if (!time)
        return {};
    const double tolerance = m_time.span() / std::max(1, m_canvas->area().width()) * markTolerance;
    return readingsAt(m_curves, m_time.now() + *time, tolerance);
}

void PlotView::updateReadings()
{
    const std::optional<double> time = readingTime();
    m_canvas->setReadingLine(time ? m_readingX : std::nullopt);
    m_readings->setVisible(time.has_value());
    if (!time) {
        m_plot->setAccessibleDescription(QString());
        return;
    }
    m_readings->setReadings(readings(), std::max(0.0, -*time), m_time.span() < 5 ? 3 : 1);
    m_readings->placeBeside(int(*m_readingX), m_canvas->area().top());
    m_plot->setAccessibleDescription(m_readings->plainText());
}

void PlotView::moveReading(int pixels)
{
    const QRect rect = m_canvas->area();
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
    // While following the view is at now already, and goes on following.
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
            m_values.zoom(factor, m_canvas->valueAt(wheel->position().y()));
        else
            m_time.zoom(factor, m_canvas->timeAt(wheel->position().x()));
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
            m_time.pan(m_canvas->timeAt(m_dragFrom->x()) - m_canvas->timeAt(position.x()));
            // A drag along the time must not end the fitting of the values because it rises by a pixel or two.
            const double difference = m_dragFrom->y() - position.y();
            if (!m_values.isFitting() || std::abs(difference) > dragTolerance) {
                m_values.pan(m_canvas->valueAt(m_dragFrom->y()) - m_canvas->valueAt(position.y()));
                m_dragFrom->setY(position.y());
            }
            m_dragFrom->setX(position.x());
            m_canvas->setRange(m_time, m_values);
        }
        const QRect rect = m_canvas->area();
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
        m_canvas->setColors(palette(), font());
        scheduleDrawing();
    }
}

void PlotView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    scheduleDrawing();
}

} // namespace Velk
