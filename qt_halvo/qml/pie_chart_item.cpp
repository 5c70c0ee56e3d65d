#include <qt_halvo/qml/pie_chart_item.h>

#include "qt_halvo/charts/pie_chart_painter_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtQuick/QQuickWindow>

namespace OrvantaQT {

namespace {

constexpr int kImplicitSide = 100;

} // namespace

PieChartItem::PieChartItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_color(QGuiApplication::palette().color(QPalette::WindowText))
    , m_ringColor(QGuiApplication::palette().color(QPalette::Window))
    , m_painter(new PieChartPainter)
{
    setImplicitSize(kImplicitSide, kImplicitSide);
}

PieChartItem::~PieChartItem() = default;

int PieChartItem::value() const
{
    return m_painter->value;
}

// A negative value sweeps the other way, as in the widget; told, as it is most likely a
// mistake.
void PieChartItem::setValue(int value)
{
    if (value == m_painter->value)
        return;
    if (value < 0)
        QTH_LOG_WARNING("PieChart: value %d is negative; the slice runs counter-clockwise", value);
    m_painter->value = value;
    m_painter->Invalidate(false);
    update();
    Q_EMIT valueChanged();
}

int PieChartItem::maximum() const
{
    return m_painter->maximum;
}

void PieChartItem::setMaximum(int maximum)
{
    if (maximum == m_painter->maximum)
        return;
    if (maximum <= 0)
        QTH_LOG_WARNING("PieChart: maximum %d is not positive; a positive value fills the ring", maximum);
    m_painter->maximum = maximum;
    m_painter->Invalidate(false);
    update();
    Q_EMIT maximumChanged();
}

int PieChartItem::borderWidth() const
{
    return m_painter->borderWidth;
}

void PieChartItem::setBorderWidth(int width)
{
    if (width < 0) {
        QTH_LOG_WARNING("PieChart: borderWidth %d is negative; 0 is used", width);
        width = 0;
    }
    if (width == m_painter->borderWidth)
        return;
    m_painter->borderWidth = width;
    m_painter->Invalidate(true);
    update();
    Q_EMIT borderWidthChanged();
}

int PieChartItem::innerSize() const
{
    return m_painter->innerSize;
}

void PieChartItem::setInnerSize(int size)
{
    if (size == m_painter->innerSize)
        return;
    m_painter->innerSize = size;
    m_painter->Invalidate(true);
    update();
    Q_EMIT innerSizeChanged();
}

QColor PieChartItem::color() const
{
    return m_color;
}

void PieChartItem::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    m_painter->InvalidatePicture();
    update();
    Q_EMIT colorChanged();
}

QColor PieChartItem::ringColor() const
{
    return m_ringColor;
}

void PieChartItem::setRingColor(const QColor& color)
{
    if (color == m_ringColor)
        return;
    m_ringColor = color;
    m_painter->InvalidatePicture();
    update();
    Q_EMIT ringColorChanged();
}

void PieChartItem::paint(QPainter* painter)
{
    m_painter->SetSize(size().toSize());
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    m_painter->Paint(*painter, m_color, m_ringColor, ratio);
}

} // namespace OrvantaQT
