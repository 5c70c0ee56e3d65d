#include <qt_halvo/layouts/flow_layout.h>

#include <qt_halvo/layouts/layout_spacing_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtWidgets/QWidget>

#include <algorithm>
#include <memory>

namespace OrvantaQT {

namespace {

// Where one item goes before the block is centred; plain ints, so that new[] leaves a
// pass's array of them unwritten until the pass fills it.
struct Place
{
    int x;
    int y;
    int width;
    int height;
};

} // namespace

FlowLayout::FlowLayout(QWidget* parent, int hSpacing, int vSpacing)
    : QLayout(parent)
    , m_horizontalSpacing(hSpacing)
    , m_verticalSpacing(vSpacing)
{
}

FlowLayout::~FlowLayout()
{
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.append(item);
}

int FlowLayout::count() const
{
    return m_items.size();
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < m_items.size() ? m_items.at(index) : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

Qt::Orientations FlowLayout::expandingDirections() const
{
    return {};
}

bool FlowLayout::hasHeightForWidth() const
{
    return true;
}

int FlowLayout::heightForWidth(int width) const
{
    return doLayout(QRect(0, 0, width, 0), true);
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    doLayout(rect, false);
}

QSize FlowLayout::minimumSize() const
{
    QSize size(-1, -1);
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize FlowLayout::sizeHint() const
{
    return minimumSize();
}

int FlowLayout::horizontalSpacing() const
{
    return m_horizontalSpacing >= 0 ? m_horizontalSpacing : smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int FlowLayout::verticalSpacing() const
{
    return m_verticalSpacing >= 0 ? m_verticalSpacing : smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

void FlowLayout::SetMaxWidgetsPerRow(int count)
{
    m_maxWidgetsPerRow = count;
    doLayout(geometry(), false);
}

int FlowLayout::MaxWidgetsPerRow() const
{
    return m_maxWidgetsPerRow;
}

int FlowLayout::smartSpacing(QStyle::PixelMetric metric) const
{
    return ParentSpacing(this, metric);
}

int FlowLayout::doLayout(const QRect& rect, bool testOnly) const
{
    const QMargins margins = contentsMargins();
    const QRect effective = rect.adjusted(margins.left(), margins.top(), -margins.right(), -margins.bottom());
    int x = effective.x();
    int y = effective.y();
    int lineHeight = 0;
    int itemsInRow = 0;
    int maxRight = effective.left();
    int maxBottom = effective.top();
    LayoutGaps gaps(horizontalSpacing(), verticalSpacing());
    bool reported = false;
    // Where each item goes before centring, in item order for the second loop.
    std::unique_ptr<Place[]> places(testOnly ? nullptr : new Place[size_t(m_items.size())]);
    Place* next = places.get();

    for (QLayoutItem* item : m_items) {
        int spaceX = 0;
        int spaceY = 0;
        if (!gaps.For(item, &spaceX, &spaceY) && !reported) {
            QTH_LOG_ERROR("FlowLayout: an item without a widget needs a spacing, and none is set; using 0");
            reported = true;
        }
        QSize hint = item->sizeHint();
        if (hint.width() > effective.width())
            hint = QSize(effective.width(), item->minimumHeightForWidth(effective.width()));
        int nextX = x + hint.width() + spaceX;
        const bool rowFull = itemsInRow == m_maxWidgetsPerRow;
        if (rowFull || (nextX - spaceX > effective.right() && lineHeight > 0)) {
            y = y + lineHeight + spaceY;
            x = effective.x();
            nextX = x + hint.width() + spaceX;
            lineHeight = 0;
            itemsInRow = 0;
        }
        ++itemsInRow;
        if (!testOnly)
            *next++ = {x, y, hint.width(), hint.height()};
        maxRight = std::max(maxRight, x + hint.width() - 1);
        maxBottom = std::max(maxBottom, y + hint.height() - 1);
        x = nextX;
        lineHeight = std::max(lineHeight, hint.height());
    }

    if (!testOnly) {
        // Halves of the free room on each side: negative when the block overflows.
        const QPoint offset((effective.right() + 1 - maxRight) / 2, (effective.bottom() + 1 - maxBottom) / 2);
        const Place* place = places.get();
        for (QLayoutItem* item : m_items) {
            item->setGeometry(QRect(place->x + offset.x(), place->y + offset.y(), place->width, place->height));
            ++place;
        }
    }
    return y + lineHeight - rect.top() + margins.bottom();
}

} // namespace OrvantaQT
