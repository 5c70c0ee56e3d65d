#include "plot_painter_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

QPolygonF PlotPainter::Polygon(qreal progress) const
{
    const int n = std::max(pointsOnScreen, 0);
    QVector<int> samples(n, 0);
    for (int k = 0; k < std::min(n, int(history.size())); ++k)
        samples[k] = history.at(history.size() - 1 - k);
    QPolygonF polygon;
    polygon.reserve(n + 3);
    polygon << QPointF(0, 0) << QPointF(0, (1 - progress) * (value - previousValue) + previousValue);
    for (int k = 0; k < n; ++k)
        polygon << QPointF(k + 1, samples.at(k));
    polygon << QPointF(n, 0);
    return polygon;
}

// Scrolled left by the period's progress, stretched over the size, larger values up.
QPolygonF PlotPainter::Map(const QPolygonF& polygon, qreal progress, const QSize& size) const
{
    const QRectF bounds = polygon.boundingRect();
    const int n = pointsOnScreen;
    const qreal xScale = bounds.width() > 0 ? (size.width() / bounds.width()) * (n + 2) / (n + 0.5) : 1.0;
    const qreal yScale = size.height() / std::max<qreal>(minValue, bounds.height());
    QPolygonF mapped;
    mapped.reserve(polygon.size());
    for (const QPointF& point : polygon)
        mapped << QPointF((point.x() - progress) * xScale, size.height() - point.y() * yScale);
    return mapped;
}

QPainterPath PlotPainter::RoundedPath(const QPolygonF& polygon, int radius)
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

void PlotPainter::Paint(QPainter& painter, const QSize& size, qreal progress) const
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QPolygonF mapped = Map(Polygon(progress), progress, size);
    const QPainterPath path = RoundedPath(mapped, radius);

    QBrush brush(brushColor);
    if (useShading) {
        QLinearGradient gradient(0, 0, path.boundingRect().width(), 0);
        gradient.setColorAt(0, brushColor);
        gradient.setColorAt(1.0, brushColor.darker(200));
        brush = QBrush(gradient);
    }
    painter.fillPath(path, brush);

    if (showPoly) {
        painter.drawPolygon(mapped, Qt::OddEvenFill);
        for (const QPointF& point : mapped)
            painter.drawEllipse(point, 3, 3);
    }
}

} // namespace OrvantaQT
