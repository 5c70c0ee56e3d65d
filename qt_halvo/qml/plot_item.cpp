#include <qt_halvo/qml/plot_item.h>

#include "qt_halvo/charts/plot_painter_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QPainter>

#include <algorithm>

namespace OrvantaQT {

namespace {

constexpr int kImplicitWidth = 200;
constexpr int kImplicitHeight = 60;

} // namespace

PlotItem::PlotItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_painter(new PlotPainter)
{
    setImplicitSize(kImplicitWidth, kImplicitHeight);
    m_pollTimer.setInterval(PlotPainter::kDefaultPolling);
    m_refreshTimer.setInterval(PlotPainter::kRefreshInterval);
    connect(&m_pollTimer, &QTimer::timeout, this, &PlotItem::Sample);
    connect(&m_refreshTimer, &QTimer::timeout, this, &PlotItem::Repaint);
}

PlotItem::~PlotItem() = default;

int PlotItem::value() const
{
    return m_painter->value;
}

void PlotItem::setValue(int value)
{
    if (value < 0) {
        QTH_LOG_WARNING("Plot: value %d is negative; it is ignored", value);
        return;
    }
    if (value == m_painter->value)
        return;
    m_painter->previousValue = m_painter->value;
    m_painter->value = value;
    Repaint();
    Q_EMIT valueChanged();
}

QList<int> PlotItem::history() const
{
    return m_painter->history;
}

int PlotItem::radius() const
{
    return m_painter->radius;
}

void PlotItem::setRadius(int radius)
{
    if (radius < 0) {
        QTH_LOG_WARNING("Plot: radius %d is negative; 0 is used", radius);
        radius = 0;
    }
    if (radius == m_painter->radius)
        return;
    m_painter->radius = radius;
    Repaint();
    Q_EMIT radiusChanged();
}

bool PlotItem::showPoly() const
{
    return m_painter->showPoly;
}

void PlotItem::setShowPoly(bool show)
{
    if (show == m_painter->showPoly)
        return;
    m_painter->showPoly = show;
    Repaint();
    Q_EMIT showPolyChanged();
}

QColor PlotItem::brushColor() const
{
    return m_painter->brushColor;
}

void PlotItem::setBrushColor(const QColor& color)
{
    if (color == m_painter->brushColor)
        return;
    m_painter->brushColor = color;
    Repaint();
    Q_EMIT brushColorChanged();
}

bool PlotItem::useShading() const
{
    return m_painter->useShading;
}

void PlotItem::setUseShading(bool shading)
{
    if (shading == m_painter->useShading)
        return;
    m_painter->useShading = shading;
    Repaint();
    Q_EMIT useShadingChanged();
}

int PlotItem::minValue() const
{
    return m_painter->minValue;
}

// The least range shown; below 1 a flat history would scale without end.
void PlotItem::setMinValue(int value)
{
    if (value < 1) {
        QTH_LOG_WARNING("Plot: minValue %d is below 1; 1 is used", value);
        value = 1;
    }
    if (value == m_painter->minValue)
        return;
    m_painter->minValue = value;
    Repaint();
    Q_EMIT minValueChanged();
}

int PlotItem::pointsOnScreen() const
{
    return m_painter->pointsOnScreen;
}

void PlotItem::setPointsOnScreen(int points)
{
    if (points < 0) {
        QTH_LOG_WARNING("Plot: pointsOnScreen %d is negative; 0 is used", points);
        points = 0;
    }
    if (points == m_painter->pointsOnScreen)
        return;
    m_painter->pointsOnScreen = points;
    Repaint();
    Q_EMIT pointsOnScreenChanged();
}

int PlotItem::pollingTimeout() const
{
    return m_pollTimer.interval();
}

void PlotItem::setPollingTimeout(int timeout)
{
    if (timeout <= 0) {
        QTH_LOG_WARNING("Plot: pollingTimeout %d is not positive; it is ignored", timeout);
        return;
    }
    if (timeout == m_pollTimer.interval())
        return;
    m_pollTimer.setInterval(timeout);
    Q_EMIT pollingTimeoutChanged();
}

bool PlotItem::polling() const
{
    return m_pollTimer.isActive();
}

void PlotItem::setPolling(bool polling)
{
    if (polling == m_pollTimer.isActive())
        return;
    if (polling)
        m_pollTimer.start();
    else
        m_pollTimer.stop();
    UpdateRefresh(window());
    Repaint();
    Q_EMIT pollingChanged();
}

void PlotItem::clear()
{
    const bool valueChanges = m_painter->value != 0;
    m_painter->previousValue = m_painter->value;
    m_painter->value = 0;
    m_painter->history.clear();
    Repaint();
    Q_EMIT historyChanged();
    if (valueChanges)
        Q_EMIT valueChanged();
}

// The counter goes into the history and starts the next period from 0.
void PlotItem::Sample()
{
    m_painter->history.append(m_painter->value);
    m_painter->previousValue = m_painter->value;
    const bool valueChanges = m_painter->value != 0;
    m_painter->value = 0;
    Repaint();
    Q_EMIT historyChanged();
    if (valueChanges)
        Q_EMIT valueChanged();
}

// The slide is only worth frames while it can be seen.
void PlotItem::UpdateRefresh(const QQuickWindow* window)
{
    if (m_pollTimer.isActive() && isVisible() && window)
        m_refreshTimer.start();
    else
        m_refreshTimer.stop();
}

void PlotItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemVisibleHasChanged)
        UpdateRefresh(window());
    else if (change == ItemSceneChange)
        UpdateRefresh(data.window);
    QQuickPaintedItem::itemChange(change, data);
}

// The period's progress is read here, in the item's thread: a timer tells its remaining
// time only there, and paint() may run in the scene graph's thread.
void PlotItem::Repaint()
{
    m_progress = 1.0;
    if (m_pollTimer.isActive() && m_pollTimer.interval() > 0)
        m_progress = qreal(m_pollTimer.remainingTime()) / m_pollTimer.interval();
    update();
}

void PlotItem::paint(QPainter* painter)
{
    m_painter->Paint(*painter, size().toSize(), m_progress);
}

} // namespace OrvantaQT
