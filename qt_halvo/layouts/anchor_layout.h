#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/layouts/anchor_controller.h>

#include <QtCore/QMargins>
#include <QtCore/QRect>

#include <utility>
#include <vector>

class QWindow;

namespace OrvantaQT {

class AnchorController;

// Pins edges and centre lines of widgets to points of other widgets, or of the primary
// screen's work area: a widget anchored by both opposite edges stretches, otherwise it
// moves. Rectangles use Qt's inclusive right and bottom edges; windows are placed by
// their frame. The anchors of a widget live in its AnchorController.
class QT_HALVO_EXPORT AnchorLayout
{
public:
    using Anchors = QVector<AnchorController::Anchor>;

    AnchorLayout& operator=(const AnchorLayout&) = default;

    static void AddAnchor(QWidget* target, Qt::AnchorPoint targetPoint, QWidget* widget, Qt::AnchorPoint widgetPoint);
    // Left and right (horizontal) or top and bottom: the widget stretches with the target.
    static void AddAnchors(QWidget* target, QWidget* widget, Qt::Orientation orientation);
    // Own point, then target and its point, for each anchor.
    static void SetupAnchors(QWidget* widget,
                             const std::vector<std::pair<Qt::AnchorPoint, std::pair<QWidget*, Qt::AnchorPoint>>>& anchors,
                             const QMargins& margins);
    static void SetAnchorMargins(QWidget* widget, const QMargins& margins);
    static QMargins GetAnchorMargins(QWidget* widget);
    static Anchors WidgetAnchors(QWidget* widget);
    // Applies one anchor now: a child gets its geometry, a window its frame.
    static void UpdateAnchor(const QWidget* target, Qt::AnchorPoint targetPoint, QWidget* widget,
                             Qt::AnchorPoint widgetPoint, const QMargins& margins, bool stretch);

    // Anchors to the primary screen's work area, which the anchors follow when displays change.
    static void SetDesktopPrimaryScreenAnchor(Qt::AnchorPoint screenPoint, QWidget* widget, Qt::AnchorPoint widgetPoint);
    // To the screen corner nearest pos.
    static void SetDesktopPrimaryScreenAnchor(const QPoint& pos, QWidget* widget);
    static void SetDesktopPrimaryScreenAnchor(const QPoint& pos, QWidget* widget, const QMargins& margins);
    static void SetDesktopPrimaryScreenAnchor(const Qt::Alignment& alignment, QWidget* widget, const QMargins& margins);
    // Places the window once, by alignment and inset by the margins; nothing is kept.
    static void AlignToDesktopPrimaryScreen(const Qt::Alignment& alignment, QWindow* window, const QMargins& margins);
    // Removes all the widget's anchors, desktop or not.
    static void RemoveAllDesktopAnchors(QWidget* widget);
    // The horizontal and the vertical point of rect's corner nearest pos.
    static std::vector<Qt::AnchorPoint> CalcNearestCorner(const QRect& rect, const QPoint& pos);

private:
    static QRect CalculateAnchoredRect(const QWidget* target, Qt::AnchorPoint targetPoint, const QWidget* widget,
                                       Qt::AnchorPoint ownPoint, const QMargins& margins, const QRect& rect, bool stretch);
    static QRect CalculateHorizontal(const QRect& rect, Qt::AnchorPoint ownPoint, int edge, bool stretch,
                                     const QMargins& margins);
    static QRect CalculateVertical(const QRect& rect, Qt::AnchorPoint ownPoint, int edge, bool stretch,
                                   const QMargins& margins);
    static int SafeEdge(const QRect& rect, Qt::AnchorPoint point, bool* vertical);
    static Qt::AnchorPoint OppositeEdge(Qt::AnchorPoint point);
    static QRect MapRect(const QRect& rect, const QWidget* from, const QWidget* to);
    static QWidget* RootParent(const QWidget* a, const QWidget* b);
    static AnchorController* GetAnchorController(QWidget* widget);

    friend class AnchorController;
};

} // namespace OrvantaQT
