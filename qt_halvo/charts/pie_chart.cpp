#include <qt_halvo/charts/pie_chart.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>

#include <QtCore/QtMath>

#include <algorithm>
#include <cmath>

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

void PieChart::Invalidate(bool geometry)
{
    if (geometry) {
        m_ringValid = false;
        m_ringPicture = QPixmap();
    }
    m_sliceValid = false;
    update();
}

void PieChart::setValue(int value)
{
    if (value == m_value)
        return;
    m_value = value;
    Invalidate(false);
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
    Invalidate(false);
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
    if (size == m_innerSize)
        return;
    m_innerSize = size;
    Invalidate(true);
}

void PieChart::resetInnerSize()
{
    setInnerSize(-10);
}

void PieChart::BuildPaths() const
{
    if (!m_ringValid) {
        const int side = std::min(width(), height());
        m_outer = QRectF(rect().left() + m_borderWidth, rect().top() + m_borderWidth, side - 2 * m_borderWidth,
                         side - 2 * m_borderWidth);
        QSizeF hole(0, 0);
        if (m_innerSize < 0)
            hole = QSizeF(m_outer.width() * -m_innerSize / 100.0, m_outer.height() * -m_innerSize / 100.0);
        else if (m_innerSize > 0)
            hole = QSizeF(std::min(side - 2 * m_borderWidth, m_innerSize), std::min(side - 2 * m_borderWidth, m_innerSize));
        m_hole = QRectF(QPointF(), hole);
        m_hole.moveCenter(QPointF(m_outer.left() + m_outer.width() * 0.5, m_outer.top() + m_outer.height() * 0.5));
        QPainterPath holePath;
        holePath.addEllipse(m_hole);
        QPainterPath ring;
        ring.addEllipse(m_outer);
        m_ring = ring.subtracted(holePath);
        m_ringValid = true;
        m_sliceValid = false;
    }
    if (m_sliceValid)
        return;
    // A value above the maximum fills the whole ring; negative sweeps run clockwise. The
    // slice of the ring is built directly, out along the outer edge and back along the
    // hole's, which is the pie slice less the hole without a boolean operation per value.
    const int scale = std::max(m_value, m_maximum);
    const qreal sweep = scale != 0 ? m_value * -360.0 / scale : 0.0;
    QPainterPath slice;
    if (m_hole.isEmpty()) {
        slice.moveTo(m_outer.center());
        slice.arcTo(m_outer, 90.0, sweep);
    } else {
        slice.arcMoveTo(m_outer, 90.0);
        slice.arcTo(m_outer, 90.0, sweep);
        slice.arcTo(m_hole, 90.0 + sweep, -sweep);
    }
    slice.closeSubpath();
    m_slice = slice;
    m_sliceEdges[0] = RadialEdge(90.0);
    m_sliceEdges[1] = RadialEdge(90.0 + sweep);
    m_sliceValid = true;
}

// The straight edge of the slice at `angle` degrees, from the hole (or the centre) out.
QLineF PieChart::RadialEdge(qreal angle) const
{
    const qreal radians = qDegreesToRadians(angle);
    const QPointF direction(std::cos(radians) * 0.5, -std::sin(radians) * 0.5);
    const QPointF centre = m_outer.center();
    return QLineF(centre + QPointF(direction.x() * m_hole.width(), direction.y() * m_hole.height()),
                  centre + QPointF(direction.x() * m_outer.width(), direction.y() * m_outer.height()));
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

void PieChart::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        m_ringPicture = QPixmap();
    QWidget::changeEvent(event);
}

void PieChart::resizeEvent(QResizeEvent* event)
{
    m_ringValid = false;
    m_ringPicture = QPixmap();
    QWidget::resizeEvent(event);
}

QPen PieChart::Pen() const
{
    if (m_borderWidth == 0)
        return QPen(Qt::NoPen);
    return QPen(palette().brush(QPalette::Current, QPalette::WindowText), m_borderWidth, Qt::SolidLine, Qt::SquareCap,
                Qt::BevelJoin);
}

// The ring does not change with the value: it is painted once into a picture.
void PieChart::PaintRing()
{
    const qreal ratio = devicePixelRatioF();
    m_ringPicture = QPixmap(size() * ratio);
    m_ringPicture.setDevicePixelRatio(ratio);
    m_ringPicture.fill(Qt::transparent);
    QPainter painter(&m_ringPicture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Pen());
    painter.setBrush(palette().brush(QPalette::Current, QPalette::Window));
    painter.drawPath(m_ring);
}

void PieChart::paintEvent(QPaintEvent*)
{
    BuildPaths();
    if (m_ringPicture.isNull())
        PaintRing();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_ringPicture);
    if (m_value == 0)
        return;
    painter.setRenderHint(QPainter::Antialiasing); // what HighQualityAntialiasing means since Qt 5.14
    // The border has the slice's colour, and along the arcs the ring's border already lies
    // under it: stroking the whole outline would only add the two straight edges, at
    // three times the cost of the fill. So the slice is filled and its edges drawn alone.
    painter.fillPath(m_slice, palette().brush(QPalette::Current, QPalette::WindowText));
    if (m_borderWidth != 0) {
        QPen edges = Pen();
        edges.setCapStyle(Qt::FlatCap);
        painter.setPen(edges);
        if (m_hole.isEmpty()) // the edges meet at the centre, with the border's join
            painter.drawPolyline(QPolygonF({m_sliceEdges[0].p2(), m_sliceEdges[0].p1(), m_sliceEdges[1].p2()}));
        else
            painter.drawLines(m_sliceEdges, 2);
    }
}

} // namespace OrvantaQT
