#include <qt_halvo/charts/plot_widget.h>

#include "plot_painter_p.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace OrvantaQT {

PlotWidget::PlotWidget(QWidget* parent)
    : QWidget(parent)
    , m_painter(new PlotPainter)
{
    m_pollTimer.setInterval(PlotPainter::kDefaultPolling);
    m_refreshTimer.setInterval(PlotPainter::kRefreshInterval);
}

PlotWidget::~PlotWidget() = default;

int PlotWidget::radius() const
{
    return m_painter->radius;
}

bool PlotWidget::showPoly() const
{
    return m_painter->showPoly;
}

QColor PlotWidget::brushColor() const
{
    return m_painter->brushColor;
}

bool PlotWidget::useShading() const
{
    return m_painter->useShading;
}

int PlotWidget::value() const
{
    return m_painter->value;
}

int PlotWidget::minValue() const
{
    return m_painter->minValue;
}

int PlotWidget::pointsOnScreen() const
{
    return m_painter->pointsOnScreen;
}

int PlotWidget::pollingTimeout() const
{
    return m_pollTimer.interval();
}

QList<int> PlotWidget::History() const
{
    return m_painter->history;
}

void PlotWidget::setRadius(int radius)
{
    radius = std::max(radius, 0);
    if (radius == m_painter->radius)
        return;
    m_painter->radius = radius;
    update();
}

void PlotWidget::resetRadius()
{
    setRadius(10);
}

void PlotWidget::setShowPoly(bool show)
{
    if (show == m_painter->showPoly)
        return;
    m_painter->showPoly = show;
    update();
}

void PlotWidget::resetShowPoly()
{
    setShowPoly(false);
}

void PlotWidget::setBrushColor(QColor color)
{
    if (color == m_painter->brushColor)
        return;
    m_painter->brushColor = color;
    update();
}

void PlotWidget::resetBrushColor()
{
    setBrushColor(Qt::transparent);
}

void PlotWidget::setUseShading(bool shading)
{
    if (shading == m_painter->useShading)
        return;
    m_painter->useShading = shading;
    update();
}

void PlotWidget::resetUseShading()
{
    setUseShading(false);
}

void PlotWidget::setValue(int value)
{
    Q_EMIT DebugEvents(QStringLiteral("new value: %1 (old: %2)").arg(value).arg(m_painter->value));
    if (value < 0)
        return;
    m_painter->previousValue = m_painter->value;
    m_painter->value = value;
    if (m_pollTimer.isActive())
        update();
}

void PlotWidget::resetValue()
{
    m_painter->previousValue = m_painter->value;
    m_painter->value = 0;
    m_painter->history.clear();
    update();
}

void PlotWidget::setMinValue(int value)
{
    if (value == m_painter->minValue)
        return;
    m_painter->minValue = value;
    update();
}

void PlotWidget::resetMinValue()
{
    setMinValue(10);
}

void PlotWidget::setPointsOnScreen(int points)
{
    if (points == m_painter->pointsOnScreen)
        return;
    m_painter->pointsOnScreen = points;
    update();
}

void PlotWidget::resetPointsOnScreen()
{
    setPointsOnScreen(10);
}

void PlotWidget::setPollingTimeout(int timeout)
{
    m_pollTimer.setInterval(timeout);
}

void PlotWidget::resetPollingTimeout()
{
    setPollingTimeout(PlotPainter::kDefaultPolling);
}

void PlotWidget::startPolling(bool enable)
{
    if (!enable) {
        m_pollTimer.stop();
        m_refreshTimer.stop();
        update();
        return;
    }
    connect(&m_pollTimer, &QTimer::timeout, this, &PlotWidget::onTimer, Qt::UniqueConnection);
    m_pollTimer.start();
    connect(&m_refreshTimer, &QTimer::timeout, this, &PlotWidget::onRefresh, Qt::UniqueConnection);
    m_refreshTimer.start(PlotPainter::kRefreshInterval);
}

void PlotWidget::onTimer()
{
    m_painter->history.append(m_painter->value);
    setValue(0);
    update();
}

void PlotWidget::onRefresh()
{
    update();
}

qreal PlotWidget::Progress() const
{
    if (m_pollTimer.isActive() && m_pollTimer.interval() > 0)
        return qreal(m_pollTimer.remainingTime()) / m_pollTimer.interval();
    return 1.0;
}

QPolygonF PlotWidget::Polygon(qreal* progress) const
{
    const qreal f = Progress();
    if (progress)
        *progress = f;
    return m_painter->Polygon(f);
}

QPolygonF PlotWidget::MappedPolygon() const
{
    const qreal progress = Progress();
    return m_painter->Map(m_painter->Polygon(progress), progress, size());
}

QPainterPath PlotWidget::RoundedPath(const QPolygonF& polygon, int radius)
{
    return PlotPainter::RoundedPath(polygon, radius);
}

void PlotWidget::paintEvent(QPaintEvent*)
{
    const qreal progress = Progress();
    Q_EMIT DebugEvents(QStringLiteral("dxv: %1 (%2)").arg(progress, 0, 'g').arg(m_painter->pointsOnScreen));
    QPainter painter(this);
    m_painter->Paint(painter, size(), progress);
}

} // namespace OrvantaQT
