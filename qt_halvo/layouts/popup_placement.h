#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QRect>
#include <QtCore/QVector>

class QWidget;

namespace OrvantaQT {

// The sides of a target a popup can open on.
enum class PopupSide { Below, Above, Right, Left };
using PopupSides = QVector<PopupSide>;

// Below first, then above, right and left: where menus and drop-downs open.
QT_HALVO_EXPORT PopupSides DefaultPopupSides();

// A screen as placement sees it, in Qt's global coordinates: under per-screen scale factors
// a screen keeps its native top-left corner and has its size divided by its own ratio, so
// two screens side by side may leave a gap between them.
struct PopupScreen
{
    QRect geometry;
    QRect availableGeometry; // its work area, without panels and task bars
};

// Where a popup of that size goes next to target (global coordinates; an empty target is a
// point), on the screen that holds the most of the target (or the nearest one), inside that
// screen's work area:
// - on the first of the sides that has room, gap pixels away from the target;
// - along the side as the alignment says (left, right or centred for below and above; top,
//   bottom or centred for right and left; left and top by default), shifted to stay inside
//   the work area;
// - when no side has room, on the side with the most room, shifted inside: the only case
//   where it covers the target. A popup larger than the work area is cut to its size.
// Pure: the screens are given, nothing is read or logged.
QT_HALVO_EXPORT QRect PlacePopup(const QRect& target, const QSize& popupSize, const QVector<PopupScreen>& screens,
                                 const PopupSides& sides = DefaultPopupSides(),
                                 Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop, int gap = 0);

// The application's screens now.
QT_HALVO_EXPORT QVector<PopupScreen> CurrentPopupScreens();

// PlacePopup on the application's screens now.
QT_HALVO_EXPORT QRect PlacePopupOnScreens(const QRect& target, const QSize& popupSize,
                                          const PopupSides& sides = DefaultPopupSides(),
                                          Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop, int gap = 0);

// How a popup goes beside its target: the sides in order, the alignment along the side and
// the gap, for PlacePopupOnScreens. The popup helpers take one each.
struct QT_HALVO_EXPORT PopupPlacement
{
    PopupSides sides = DefaultPopupSides();
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    int gap = 0;

    // Where a popup of that size goes beside target on the application's screens now.
    QRect Place(const QRect& target, const QSize& popupSize) const;

    bool operator==(const PopupPlacement& other) const;
    bool operator!=(const PopupPlacement& other) const { return !(*this == other); }
};

// A widget's rectangle in global coordinates; empty for null.
QT_HALVO_EXPORT QRect GlobalRect(const QWidget* widget);

} // namespace OrvantaQT
