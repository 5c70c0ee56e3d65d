#include <qt_halvo/layouts/popup_placement.h>

#include <qt_halvo/layouts/popup_placement_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <climits>

namespace OrvantaQT {

namespace {

// Edges with exclusive right and bottom, so that an empty target is a point and no
// arithmetic is off by QRect's one.
struct Box
{
    int left, top, right, bottom;

    static Box From(const QRect& rect)
    {
        return {rect.x(), rect.y(), rect.x() + std::max(0, rect.width()), rect.y() + std::max(0, rect.height())};
    }
    qint64 Overlap(const Box& other) const
    {
        const qint64 width = std::min(right, other.right) - std::max(left, other.left);
        const qint64 height = std::min(bottom, other.bottom) - std::max(top, other.top);
        return width > 0 && height > 0 ? width * height : 0;
    }
    qint64 DistanceTo(int x, int y) const
    {
        const qint64 dx = x < left ? left - x : (x > right ? x - right : 0);
        const qint64 dy = y < top ? top - y : (y > bottom ? y - bottom : 0);
        return dx * dx + dy * dy;
    }
};

// The one-dimensional rule for the axis along a side: start as aligned, then stay inside.
int Aligned(int start, int end, int length, bool atStart, bool centred)
{
    if (centred)
        return start + ((end - start) - length) / 2;
    return atStart ? start : end - length;
}

int Inside(int position, int length, int low, int high)
{
    return std::max(low, std::min(position, high - length));
}

const PopupScreen* ScreenHolding(const Box& target, const QVector<PopupScreen>& screens)
{
    const PopupScreen* best = nullptr;
    qint64 bestOverlap = 0;
    qint64 bestDistance = LLONG_MAX;
    const int x = (target.left + target.right) / 2;
    const int y = (target.top + target.bottom) / 2;
    for (const PopupScreen& screen : screens) {
        const Box box = Box::From(screen.geometry);
        const qint64 overlap = box.Overlap(target);
        const qint64 distance = box.DistanceTo(x, y);
        // A point target overlaps nothing: it is held by the screen it lies on (distance 0).
        if (overlap > bestOverlap || (bestOverlap == 0 && overlap == 0 && distance < bestDistance)) {
            best = &screen;
            bestOverlap = overlap;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace

PopupSides DefaultPopupSides()
{
    return {PopupSide::Below, PopupSide::Above, PopupSide::Right, PopupSide::Left};
}

QRect PlacePopup(const QRect& target, const QSize& popupSize, const QVector<PopupScreen>& screens,
                 const PopupSides& sides, Qt::Alignment alignment, int gap)
{
    const Box aim = Box::From(target);
    const PopupScreen* screen = ScreenHolding(aim, screens);
    const QRect work = !screen ? QRect() : (screen->availableGeometry.isEmpty() ? screen->geometry : screen->availableGeometry);
    // Without a screen there is nothing to stay inside.
    const Box area = screen ? Box::From(work) : Box{INT_MIN / 4, INT_MIN / 4, INT_MAX / 4, INT_MAX / 4};
    const int width = std::min(std::max(0, popupSize.width()), area.right - area.left);
    const int height = std::min(std::max(0, popupSize.height()), area.bottom - area.top);
    gap = std::max(0, gap);

    const bool left = !(alignment & (Qt::AlignRight | Qt::AlignHCenter));
    const bool hCentred = (alignment & Qt::AlignHCenter) != 0;
    const bool top = !(alignment & (Qt::AlignBottom | Qt::AlignVCenter));
    const bool vCentred = (alignment & Qt::AlignVCenter) != 0;

    struct Candidate
    {
        QRect rect;
        int room; // how far the popup's extent across the side fits; negative when short
    };
    const auto place = [&](PopupSide side) -> Candidate {
        int x = 0;
        int y = 0;
        int room = 0;
        // A target beyond the work area's edge leaves the popup at that edge.
        switch (side) {
        case PopupSide::Below:
            y = std::max(aim.bottom + gap, area.top);
            room = area.bottom - y - height;
            break;
        case PopupSide::Above:
            y = std::min(aim.top - gap - height, area.bottom - height);
            room = y - area.top;
            break;
        case PopupSide::Right:
            x = std::max(aim.right + gap, area.left);
            room = area.right - x - width;
            break;
        case PopupSide::Left:
            x = std::min(aim.left - gap - width, area.right - width);
            room = x - area.left;
            break;
        }
        if (side == PopupSide::Below || side == PopupSide::Above)
            x = Inside(Aligned(aim.left, aim.right, width, left, hCentred), width, area.left, area.right);
        else
            y = Inside(Aligned(aim.top, aim.bottom, height, top, vCentred), height, area.top, area.bottom);
        return {QRect(x, y, width, height), room};
    };

    const PopupSides order = sides.isEmpty() ? DefaultPopupSides() : sides;
    Candidate best{};
    bool first = true;
    for (PopupSide side : order) {
        const Candidate candidate = place(side);
        if (candidate.room >= 0)
            return candidate.rect;
        if (first || candidate.room > best.room)
            best = candidate;
        first = false;
    }
    QRect rect = best.rect;
    rect.moveTo(Inside(rect.x(), width, area.left, area.right), Inside(rect.y(), height, area.top, area.bottom));
    return rect;
}

QVector<PopupScreen> CurrentPopupScreens()
{
    QVector<PopupScreen> screens;
    const auto all = QGuiApplication::screens();
    screens.reserve(all.size());
    for (const QScreen* screen : all)
        screens.push_back({screen->geometry(), screen->availableGeometry()});
    return screens;
}

QRect PlacePopupOnScreens(const QRect& target, const QSize& popupSize, const PopupSides& sides,
                          Qt::Alignment alignment, int gap)
{
    return PlacePopup(target, popupSize, CurrentPopupScreens(), sides, alignment, gap);
}

QRect PopupPlacement::Place(const QRect& target, const QSize& popupSize) const
{
    return PlacePopup(target, popupSize, CurrentPopupScreens(), sides, alignment, gap);
}

bool PopupPlacement::operator==(const PopupPlacement& other) const
{
    return sides == other.sides && alignment == other.alignment && gap == other.gap;
}

PopupPlacement CheckedPlacement(const PopupPlacement& placement, const char* owner)
{
    PopupPlacement checked = placement;
    if (checked.gap < 0) {
        QTH_LOG_WARNING("%s: a gap of %d is taken as 0", owner, checked.gap);
        checked.gap = 0;
    }
    return checked;
}

QRect GlobalRect(const QWidget* widget)
{
    return widget ? QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()) : QRect();
}

} // namespace OrvantaQT
