#include "pie_chart_painter_p.h"

#include <QtCore/QtMath>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

void PieChartPainter::SetSize(const QSize& size)
{
    if (size == m_size)
        return;
    m_size = size;
    Invalidate(true);
}

void PieChartPainter::Invalidate(bool geometry)
{
    if (geometry) {
        m_ringValid = false;
        m_ringPicture = QImage();
    }
    m_sliceValid = false;
}

void PieChartPainter::InvalidatePicture()
{
    m_ringPicture = QImage();
}

void PieChartPainter::BuildPaths() const
{
    if (!m_ringValid) {
        const int side = std::min(m_size.width(), m_size.height());
        m_outer = QRectF(borderWidth, borderWidth, side - 2 * borderWidth, side - 2 * borderWidth);
        QSizeF hole(0, 0);
        if (innerSize < 0)
            hole = QSizeF(m_outer.width() * -innerSize / 100.0, m_outer.height() * -innerSize / 100.0);
        else if (innerSize > 0)
            hole = QSizeF(std::min(side - 2 * borderWidth, innerSize), std::min(side - 2 * borderWidth, innerSize));
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
    const int scale = std::max(value, maximum);
    const qreal sweep = scale != 0 ? value * -360.0 / scale : 0.0;
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
QLineF PieChartPainter::RadialEdge(qreal angle) const
{
    const qreal radians = qDegreesToRadians(angle);
    const QPointF direction(std::cos(radians) * 0.5, -std::sin(radians) * 0.5);
    const QPointF centre = m_outer.center();
    return QLineF(centre + QPointF(direction.x() * m_hole.width(), direction.y() * m_hole.height()),
                  centre + QPointF(direction.x() * m_outer.width(), direction.y() * m_outer.height()));
}

QPainterPath PieChartPainter::RingPath() const
{
    BuildPaths();
    return m_ring;
}

QPainterPath PieChartPainter::SlicePath() const
{
    BuildPaths();
    return m_slice;
}

QPen PieChartPainter::Pen(const QBrush& foreground) const
{
    if (borderWidth == 0)
        return QPen(Qt::NoPen);
    return QPen(foreground, borderWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

void PieChartPainter::Paint(QPainter& painter, const QBrush& foreground, const QBrush& background, qreal ratio)
{
    BuildPaths();
    // The ring does not change with the value: it is painted once into a picture.
    if (m_ringPicture.isNull()) {
        m_ringPicture = QImage(m_size * ratio, QImage::Format_ARGB32_Premultiplied);
        m_ringPicture.setDevicePixelRatio(ratio);
        m_ringPicture.fill(Qt::transparent);
        QPainter ring(&m_ringPicture);
        ring.setRenderHint(QPainter::Antialiasing);
        ring.setPen(Pen(foreground));
        ring.setBrush(background);
        ring.drawPath(m_ring);
    }
    painter.drawImage(0, 0, m_ringPicture);
    if (value == 0)
        return;
    painter.setRenderHint(QPainter::Antialiasing); // what HighQualityAntialiasing means since Qt 5.14
    // The border has the slice's colour, and along the arcs the ring's border already lies
    // under it: stroking the whole outline would only add the two straight edges, at
    // three times the cost of the fill. So the slice is filled and its edges drawn alone.
    painter.fillPath(m_slice, foreground);
    if (borderWidth != 0) {
        QPen edges = Pen(foreground);
        edges.setCapStyle(Qt::FlatCap);
        painter.setPen(edges);
        if (m_hole.isEmpty()) // the edges meet at the centre, with the border's join
            painter.drawPolyline(QPolygonF({m_sliceEdges[0].p2(), m_sliceEdges[0].p1(), m_sliceEdges[1].p2()}));
        else
            painter.drawLines(m_sliceEdges, 2);
    }
}

} // namespace OrvantaQT
