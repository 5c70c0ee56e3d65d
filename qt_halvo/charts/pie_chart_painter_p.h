#pragma once

#include <QtCore/QLineF>
#include <QtCore/QRectF>
#include <QtGui/QBrush>
#include <QtGui/QImage>
#include <QtGui/QPainterPath>

class QPainter;

namespace OrvantaQT {

// What a ring chart draws and how, for the widget PieChart and the QML PieChart: one
// value against a maximum as a slice from 12 o'clock, clockwise, over a ring with a hole
// (innerSize: negative, a percentage of the diameter; 0, none; positive, pixels). The
// ring sits at the top left of a size that is not square.
struct PieChartPainter
{
    int value = 0;
    int maximum = 100;
    int borderWidth = 2;
    int innerSize = -10;

    // The geometry changes with the size, border and hole; the slice with the value too.
    void SetSize(const QSize& size);
    void Invalidate(bool geometry);
    // The ring is kept painted; its colours changed, it must be painted again.
    void InvalidatePicture();

    QPainterPath RingPath() const;
    QPainterPath SlicePath() const;

    // The slice and outline in foreground, the ring in background; the ring's picture is
    // made at ratio device pixels per pixel.
    void Paint(QPainter& painter, const QBrush& foreground, const QBrush& background, qreal ratio);

private:
    void BuildPaths() const;
    QPen Pen(const QBrush& foreground) const;
    QLineF RadialEdge(qreal angle) const;

    QSize m_size;
    // Rebuilt when a property or the size changes, not per paint; a new value rebuilds
    // only the slice.
    mutable QPainterPath m_ring;
    mutable QPainterPath m_slice;
    mutable QLineF m_sliceEdges[2];
    mutable QRectF m_outer;
    mutable QRectF m_hole;
    mutable bool m_ringValid = false;
    mutable bool m_sliceValid = false;
    QImage m_ringPicture; // the ring as painted; null when it must be painted again
};

} // namespace OrvantaQT
