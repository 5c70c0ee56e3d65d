#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QVector>

namespace OrvantaQT {

// What a frameless window shows where, in its own coordinates (device-independent pixels).
struct WindowHitRegions
{
    // The band along the window's edges that resizes it; 0 while maximised or full screen.
    int resizeBorder = 0;
    // The title bar's part that moves the window.
    QRect caption;
    // Parts of the caption that keep their clicks: buttons and the host's widgets.
    QVector<QRect> controls;
};

// Where a point falls: the resize band (with the edges it moves), the caption or the
// client area.
struct WindowHit
{
    enum Area { Client, Caption, Resize };
    Area area = Client;
    Qt::Edges edges;

    bool operator==(const WindowHit& other) const { return area == other.area && edges == other.edges; }
    bool operator!=(const WindowHit& other) const { return !(*this == other); }
};

// The hit test of a frameless window, in device pixels (what the window system reports):
// a point of a window of deviceSize at devicePixelRatio. The resize band is
// resizeBorder device-independent pixels, rounded to whole device pixels and at least
// one; its corners reach twice as far along each edge, so that a corner is easy to grab.
// The band comes before the caption, and controls before the caption.
QT_HALVO_EXPORT WindowHit HitTestWindow(const QPoint& devicePoint, const QSize& deviceSize, qreal devicePixelRatio,
                                        const WindowHitRegions& regions);

} // namespace OrvantaQT
