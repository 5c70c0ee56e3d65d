#include <qt_halvo/charts/pie_chart.h>

#include "pie_chart_painter_p.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>

namespace OrvantaQT {

PieChart::PieChart(QWidget* parent)
    : QWidget(parent)
    , m_painter(new PieChartPainter)
{
}

PieChart::~PieChart() = default;

int PieChart::value() const
{
    return m_painter->value;
}

int PieChart::maximum() const
{
    return m_painter->maximum;
}

int PieChart::borderWidth() const
{
    return m_painter->borderWidth;
}

QColor PieChart::borderColor() const
{
    return m_borderColor;
}

int PieChart::innerSize() const
{
    return m_painter->innerSize;
}

QString PieChart::cssClass() const
{
    return QStringLiteral("pieWidget");
}

void PieChart::Invalidate(bool geometry)
{
    m_painter->Invalidate(geometry);
    update();
}

void PieChart::setValue(int value)
{
    if (value == m_painter->value)
        return;
    m_painter->value = value;
    Invalidate(false);
}

void PieChart::resetValue()
{
    setValue(0);
}

void PieChart::setMaximum(int maximum)
{
    if (maximum == m_painter->maximum)
        return;
    m_painter->maximum = maximum;
    Invalidate(false);
}

void PieChart::resetMaximum()
{
    setMaximum(100);
}

void PieChart::setBorderWidth(int width)
{
    if (width == m_painter->borderWidth)
        return;
    m_painter->borderWidth = width;
    Invalidate(true);
}

void PieChart::resetBorderWidth()
{
    setBorderWidth(2);
}

void PieChart::setBorderColor(QColor color)
{
    m_borderColor = color;
    update();
}

void PieChart::resetBorderColor()
{
    setBorderColor(Qt::black);
}

void PieChart::setInnerSize(int size)
{
    if (size == m_painter->innerSize)
        return;
    m_painter->innerSize = size;
    Invalidate(true);
}

void PieChart::resetInnerSize()
{
    setInnerSize(-10);
}

QPainterPath PieChart::RingPath() const
{
    m_painter->SetSize(size());
    return m_painter->RingPath();
}

QPainterPath PieChart::SlicePath() const
{
    m_painter->SetSize(size());
    return m_painter->SlicePath();
}

void PieChart::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        m_painter->InvalidatePicture();
    QWidget::changeEvent(event);
}

void PieChart::resizeEvent(QResizeEvent* event)
{
    m_painter->SetSize(size());
    QWidget::resizeEvent(event);
}

void PieChart::paintEvent(QPaintEvent*)
{
    m_painter->SetSize(size());
    QPainter painter(this);
    m_painter->Paint(painter, palette().brush(QPalette::Current, QPalette::WindowText),
                     palette().brush(QPalette::Current, QPalette::Window), devicePixelRatioF());
}

} // namespace OrvantaQT
