#include <qt_halvo/charts/pie_chart.h>

#include <QtGui/QPainter>

#include <algorithm>

namespace OrvantaQT {

PieChart::PieChart(QWidget* parent)
    : QWidget(parent)
{
}

int PieChart::value() const
{
    return m_value;
}

int PieChart::maximum() const
{
    return m_maximum;
}

int PieChart::borderWidth() const
{
    return m_borderWidth;
}

QColor PieChart::borderColor() const
{
    return m_borderColor;
}

int PieChart::innerSize() const
{
    return m_innerSize;
}

QString PieChart::cssClass() const
{
    return QStringLiteral("pieWidget");
}

void PieChart::Invalidate()
{
    m_pathsValid = false;
    update();
}

void PieChart::setValue(int value)
{
    if (value == m_value)
        return;
    m_value = value;
    Invalidate();
}

void PieChart::resetValue()
{
    setValue(0);
}

void PieChart::setMaximum(int maximum)
{
    if (maximum == m_maximum)
        return;
    m_maximum = maximum;
    Invalidate();
}

void PieChart::resetMaximum()
{
    setMaximum(100);
}

void PieChart::setBorderWidth(int width)
{
    if (width == m_borderWidth)
        return;
    m_borderWidth = width;
    Invalidate();
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
    if (size == m_innerSize)
        return;
    m_innerSize = size;
    Invalidate();
}

void PieChart::resetInnerSize()
{
    setInnerSize(-10);
}

void PieChart::BuildPaths() const
{
    if (m_pathsValid)
        return;
    const int side = std::min(width(), height());
    const QRectF outer(rect().left() + m_borderWidth, rect().top() + m_borderWidth, side - 2 * m_borderWidth,
                       side - 2 * m_borderWidth);
    QSizeF hole(0, 0);
    if (m_innerSize < 0)
        hole = QSizeF(outer.width() * -m_innerSize / 100.0, outer.height() * -m_innerSize / 100.0);
    else if (m_innerSize > 0)
        hole = QSizeF(std::min(side - 2 * m_borderWidth, m_innerSize), std::min(side - 2 * m_borderWidth, m_innerSize));
    const QPointF centre(outer.left() + outer.width() * 0.5, outer.top() + outer.height() * 0.5);
    QRectF holeRect(QPointF(), hole);
    holeRect.moveCenter(centre);

    QPainterPath holePath;
    holePath.addEllipse(holeRect);
    QPainterPath ring;
    ring.addEllipse(outer);
    m_ring = ring.subtracted(holePath);

    // A value above the maximum fills the whole ring; negative sweeps run clockwise.
    const int scale = std::max(m_value, m_maximum);
    const qreal sweep = scale != 0 ? m_value * -360.0 / scale : 0.0;
    QPainterPath slice;
    slice.moveTo(outer.center());
    slice.arcTo(outer, 90.0, sweep);
    m_slice = slice.subtracted(holePath);
    m_pathsValid = true;
}

QPainterPath PieChart::RingPath() const
{
    BuildPaths();
    return m_ring;
}

QPainterPath PieChart::SlicePath() const
{
    BuildPaths();
    return m_slice;
}

void PieChart::resizeEvent(QResizeEvent* event)
{
    m_pathsValid = false;
    QWidget::resizeEvent(event);
}

void PieChart::paintEvent(QPaintEvent*)
{
    BuildPaths();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing); // what HighQualityAntialiasing means since Qt 5.14
    const QBrush text = palette().brush(QPalette::Current, QPalette::WindowText);
    painter.setPen(m_borderWidth != 0 ? QPen(text, m_borderWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin)
                                      : QPen(Qt::NoPen));
    painter.setBrush(palette().brush(QPalette::Current, QPalette::Window));
    painter.drawPath(m_ring);
    if (m_value != 0) {
        painter.setBrush(text);
        painter.drawPath(m_slice);
    }
}

} // namespace OrvantaQT
