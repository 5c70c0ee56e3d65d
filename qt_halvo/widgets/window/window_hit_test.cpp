#include <qt_halvo/widgets/window/window_hit_test.h>

#include <QtCore/QtMath>

namespace OrvantaQT {

namespace {

// A rectangle in device-independent pixels as the device pixels it covers.
QRect ToDevice(const QRect& rect, qreal ratio)
{
    const int left = qFloor(rect.x() * ratio);
    const int top = qFloor(rect.y() * ratio);
    const int right = qCeil((rect.x() + rect.width()) * ratio);
    const int bottom = qCeil((rect.y() + rect.height()) * ratio);
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}

} // namespace

WindowHit HitTestWindow(const QPoint& devicePoint, const QSize& deviceSize, qreal devicePixelRatio,
                        const WindowHitRegions& regions)
{
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    const QRect window(QPoint(0, 0), deviceSize);
    if (!window.contains(devicePoint))
        return WindowHit();

    if (regions.resizeBorder > 0) {
        const int border = qMax(1, qRound(regions.resizeBorder * ratio));
        const int corner = 2 * border;
        const int x = devicePoint.x();
        const int y = devicePoint.y();
        const int width = deviceSize.width();
        const int height = deviceSize.height();
        const bool nearLeft = x < border, nearRight = x >= width - border;
        const bool nearTop = y < border, nearBottom = y >= height - border;
        if (nearLeft || nearRight || nearTop || nearBottom) {
            Qt::Edges edges;
            // Within a corner's reach along one edge, the other edge joins in.
            if (nearLeft || ((nearTop || nearBottom) && x < corner))
                edges |= Qt::LeftEdge;
            if (nearRight || ((nearTop || nearBottom) && x >= width - corner))
                edges |= Qt::RightEdge;
            if (nearTop || ((nearLeft || nearRight) && y < corner))
                edges |= Qt::TopEdge;
            if (nearBottom || ((nearLeft || nearRight) && y >= height - corner))
                edges |= Qt::BottomEdge;
            // A window narrower than two corners: the nearer edge wins.
            if ((edges & Qt::LeftEdge) && (edges & Qt::RightEdge))
                edges &= ~(x < width / 2 ? Qt::RightEdge : Qt::LeftEdge);
            if ((edges & Qt::TopEdge) && (edges & Qt::BottomEdge))
                edges &= ~(y < height / 2 ? Qt::BottomEdge : Qt::TopEdge);
            return WindowHit{WindowHit::Resize, edges};
        }
    }

    for (const QRect& control : regions.controls) {
        if (ToDevice(control, ratio).contains(devicePoint))
            return WindowHit();
    }
    if (!regions.caption.isEmpty() && ToDevice(regions.caption, ratio).contains(devicePoint))
        return WindowHit{WindowHit::Caption, {}};
    return WindowHit();
}

} // namespace OrvantaQT
