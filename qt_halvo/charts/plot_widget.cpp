#include <qt_halvo/charts/plot_widget.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

namespace {

constexpr int kRefreshInterval = 17;
constexpr int kDefaultPolling = 5000;

} // namespace

PlotWidget::PlotWidget(QWidget* parent)
    : QWidget(parent)
{
    m_pollTimer.setInterval(kDefaultPolling);
    m_refreshTimer.setInterval(kRefreshInterval);
}

int PlotWidget::radius() const
{
    return m_radius;
}

bool PlotWidget::showPoly() const
{
    return m_showPoly;
}

QColor PlotWidget::brushColor() const
{
    return m_brushColor;
}

bool PlotWidget::useShading() const
{
    return m_useShading;
}

int PlotWidget::value() const
{
    return m_value;
}

int PlotWidget::minValue() const
{
    return m_minValue;
}

int PlotWidget::pointsOnScreen() const
{
    return m_pointsOnScreen;
}

int PlotWidget::pollingTimeout() const
{
    return m_pollTimer.interval();
}

QList<int> PlotWidget::History() const
{
    return m_history;
}

void PlotWidget::setRadius(int radius)
{
    radius = std::max(radius, 0);
    if (radius == m_radius)
        return;
    m_radius = radius;
    update();
}

void PlotWidget::resetRadius()
{
    setRadius(10);
}

void PlotWidget::setShowPoly(bool show)
{
    if (show == m_showPoly)
        return;
    m_showPoly = show;
    update();
}

void PlotWidget::resetShowPoly()
{
    setShowPoly(false);
}

void PlotWidget::setBrushColor(QColor color)
{
    if (color == m_brushColor)
        return;
    m_brushColor = color;
    update();
}

void PlotWidget::resetBrushColor()
{
    setBrushColor(Qt::transparent);
}

void PlotWidget::setUseShading(bool shading)
{
    if (shading == m_useShading)
        return;
    m_useShading = shading;
    update();
}

void PlotWidget::resetUseShading()
{
    setUseShading(false);
}

void PlotWidget::setValue(int value)
{
    Q_EMIT DebugEvents(QStringLiteral("new value: %1 (old: %2)").arg(value).arg(m_value));
    if (value < 0)
        return;
    m_previousValue = m_value;
    m_value = value;
    if (m_pollTimer.isActive())
        update();
}

void PlotWidget::resetValue()
{
    m_previousValue = m_value;
    m_value = 0;
    m_history.clear();
    update();
}

void PlotWidget::setMinValue(int value)
{
    if (value == m_minValue)
        return;
    m_minValue = value;
    update();
}

void PlotWidget::resetMinValue()
{
    setMinValue(10);
}

void PlotWidget::setPointsOnScreen(int points)
{
    if (points == m_pointsOnScreen)
        return;
    m_pointsOnScreen = points;
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
    setPollingTimeout(kDefaultPolling);
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
    m_refreshTimer.start(kRefreshInterval);
}

void PlotWidget::onTimer()
{
    m_history.append(m_value);
    setValue(0);
    update();
}

void PlotWidget::onRefresh()
{
    update();
}

QPolygonF PlotWidget::Polygon(qreal* progress) const
{
    const int n = std::max(m_pointsOnScreen, 0);
    QVector<int> samples(n, 0);
    for (int k = 0; k < std::min(n, int(m_history.size())); ++k)
        samples[k] = m_history.at(m_history.size() - 1 - k);
    qreal f = 1.0;
    if (m_pollTimer.isActive() && m_pollTimer.interval() > 0)
        f = qreal(m_pollTimer.remainingTime()) / m_pollTimer.interval();
    if (progress)
        *progress = f;

    QPolygonF polygon;
    polygon.reserve(n + 3);
    polygon << QPointF(0, 0) << QPointF(0, (1 - f) * (m_value - m_previousValue) + m_previousValue);
    for (int k = 0; k < n; ++k)
        polygon << QPointF(k + 1, samples.at(k));
    polygon << QPointF(n, 0);
    return polygon;
}

// Scrolled left by the period's progress, stretched over the widget, larger values up.
QPolygonF PlotWidget::Map(const QPolygonF& polygon, qreal progress) const
{
    const QRectF bounds = polygon.boundingRect();
    const int n = m_pointsOnScreen;
    const qreal xScale = bounds.width() > 0 ? (width() / bounds.width()) * (n + 2) / (n + 0.5) : 1.0;
    const qreal yScale = height() / std::max<qreal>(m_minValue, bounds.height());
    QPolygonF mapped;
    mapped.reserve(polygon.size());
    for (const QPointF& point : polygon)
        mapped << QPointF((point.x() - progress) * xScale, height() - point.y() * yScale);
    return mapped;
}

QPolygonF PlotWidget::MappedPolygon() const
{
    qreal progress = 1.0;
    const QPolygonF polygon = Polygon(&progress);
    return Map(polygon, progress);
}

QPainterPath PlotWidget::RoundedPath(const QPolygonF& polygon, int radius)
{
    QPainterPath path;
    const int m = polygon.size();
    if (m < 3) {
        QTH_LOG_WARNING("Polygon should have at least 3 points!");
        return path;
    }
    const auto nearStart = [&polygon, radius, m](int i) {
        const QPointF from = polygon.at(i);
        const QPointF to = polygon.at((i + 1) % m);
        const float length = std::hypot(float(to.x() - from.x()), float(to.y() - from.y()));
        const qreal t = length > 0 ? std::min<qreal>(radius / length, 0.5) : 0.0;
        return QPair<QPointF, QPointF>(from + (to - from) * t, to - (to - from) * t);
    };
    for (int i = 0; i < m; ++i) {
        const QPair<QPointF, QPointF> edge = nearStart(i);
        if (i == 0)
            path.moveTo(polygon.at(0));
        else
            path.quadTo(polygon.at(i), edge.first);
        path.lineTo(i == m - 1 ? polygon.at(i) : edge.second);
    }
    path.lineTo(polygon.at(0));
    return path;
}

void PlotWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    Paint(painter);
}

void PlotWidget::Paint(QPainter& painter)
{
    qreal progress = 1.0;
    const QPolygonF polygon = Polygon(&progress);
    const QPolygonF mapped = Map(polygon, progress);
    Q_EMIT DebugEvents(QStringLiteral("dxv: %1 (%2)").arg(progress, 0, 'g').arg(m_pointsOnScreen));
    const QPainterPath path = RoundedPath(mapped, m_radius);

    QBrush brush(m_brushColor);
    if (m_useShading) {
        QLinearGradient gradient(0, 0, path.boundingRect().width(), 0);
        gradient.setColorAt(0, m_brushColor);
        gradient.setColorAt(1.0, m_brushColor.darker(200));
        brush = QBrush(gradient);
    }
    painter.fillPath(path, brush);

    if (m_showPoly) {
        painter.drawPolygon(mapped, Qt::OddEvenFill);
        for (const QPointF& point : mapped)
            painter.drawEllipse(point, 3, 3);
    }
}

} // namespace OrvantaQT
