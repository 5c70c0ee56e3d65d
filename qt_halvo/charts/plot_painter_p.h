#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>

class QPainter;

namespace OrvantaQT {

// What an activity graph draws and how, for PlotWidget and the QML Plot: the newest
// samples of a history and the live value as a filled polygon with rounded corners,
// slid left by the polling period's progress (1 when it is over or not running).
struct PlotPainter
{
    // The live point moves at about 60 frames a second between samples taken every
    // pollingTimeout milliseconds; the widget and the item time them alike.
    static constexpr int kRefreshInterval = 17;
    static constexpr int kDefaultPolling = 5000;

    QList<int> history{0, 2, 5, 3, 1, 5, 3, 3, 1, 4, 2, 0, 2, 5, 1, 0};
    int radius = 10;
    bool showPoly = false;
    QColor brushColor = Qt::transparent;
    bool useShading = false;
    int value = 0;
    int previousValue = 0;
    int minValue = 10;
    int pointsOnScreen = 10;

    // The polygon before scaling, and scaled into a size, larger values up.
    QPolygonF Polygon(qreal progress) const;
    QPolygonF Map(const QPolygonF& polygon, qreal progress, const QSize& size) const;
    // The polygon's corners rounded with radius; logged and empty below three points.
    static QPainterPath RoundedPath(const QPolygonF& polygon, int radius);

    void Paint(QPainter& painter, const QSize& size, qreal progress) const;
};

} // namespace OrvantaQT
