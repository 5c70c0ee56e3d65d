#include <qt_halvo/layouts/universal_layout.h>

#include <qt_halvo/layouts/layout_spacing_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QVector>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace OrvantaQT {

namespace {

// An item that takes room, with its size hint read once per pass, the gaps that come
// before it, and its size along the line while the pass shares out the room.
struct Cell
{
    QLayoutItem* item = nullptr;
    QSize hint;
    int gapX = 0; // after the previous item that is not empty: across in a row
    int gapY = 0; // and down in a column
    int along = 0;
    int limit = 0; // while sharing: how far it may grow or shrink
};

// All items but hidden widgets, as in QBoxLayout. Empty items such as spacers keep their
// size but have no gaps around them.
QVector<Cell> VisibleCells(const QList<QLayoutItem*>& items, int horizontal, int vertical, bool* reported)
{
    QVector<Cell> cells;
    cells.reserve(items.size());
    LayoutGaps gaps(horizontal, vertical);
    bool afterItem = false;
    for (QLayoutItem* item : items) {
        const bool empty = item->isEmpty();
        if (empty && item->widget())
            continue;
        Cell cell;
        cell.item = item;
        cell.hint = item->sizeHint();
        if (!empty) {
            if (afterItem && !gaps.For(item, &cell.gapX, &cell.gapY) && !*reported) {
                QTH_LOG_WARNING("UniversalLayout: an item without a widget needs a spacing, and none is set; using 0");
                *reported = true;
            }
            afterItem = true;
        }
        cells.append(cell);
    }
    return cells;
}

// What the cells take with one of their sizes each (hint or minimum): a row across, a
// column down.
template <typename SizeOf>
QSize Outline(const QVector<Cell>& cells, Qt::Orientation orientation, SizeOf sizeOf)
{
    QSize row(0, 0);
    QSize column(0, 0);
    for (const Cell& cell : cells) {
        const QSize each = sizeOf(cell);
        row = QSize(row.width() + cell.gapX + each.width(), std::max(row.height(), each.height()));
        column = QSize(std::max(column.width(), each.width()), column.height() + cell.gapY + each.height());
    }
    return orientation == Qt::Horizontal ? row : column;
}

QSize Hint(const Cell& cell)
{
    return cell.hint;
}

QSize Minimum(const Cell& cell)
{
    return cell.item->minimumSize();
}

int NeededRowWidth(const QVector<Cell>& cells, const QMargins& margins)
{
    return Outline(cells, Qt::Horizontal, Hint).width() + margins.left() + margins.right();
}

int HeightFor(const Cell& cell, int width)
{
    return cell.item->hasHeightForWidth() ? cell.item->heightForWidth(width) : cell.hint.height();
}

// Brings the cells' sizes along the line to room in all: more room goes evenly to the
// cells that expand that way, up to their maximum, and less is taken evenly from those
// above their minimum.
void Share(QVector<Cell>& cells, int room, Qt::Orientation orientation)
{
    int rest = room;
    for (const Cell& cell : cells)
        rest -= cell.along;
    if (rest == 0)
        return;
    const bool growing = rest > 0;
    const auto along = [orientation](QSize size) { return orientation == Qt::Horizontal ? size.width() : size.height(); };
    // Read here, as most passes have nothing to share.
    for (Cell& cell : cells) {
        if (!growing)
            cell.limit = along(cell.item->minimumSize());
        else if (cell.item->expandingDirections().testFlag(orientation))
            cell.limit = along(cell.item->maximumSize());
        else
            cell.limit = cell.along;
    }
    const auto takes = [growing](const Cell& cell) { return growing ? cell.along < cell.limit : cell.along > cell.limit; };
    const int sign = growing ? 1 : -1;
    // A round ends with nothing left or with a cell at its limit, which leaves the next.
    while (rest != 0) {
        const int takers = int(std::count_if(cells.cbegin(), cells.cend(), takes));
        if (takers == 0)
            return;
        const int each = rest / takers;
        int odd = rest % takers; // a pixel more for the first ones
        for (Cell& cell : cells) {
            if (!takes(cell))
                continue;
            int step = each;
            if (odd != 0) {
                step += sign;
                odd -= sign;
            }
            step = growing ? std::min(step, cell.limit - cell.along) : std::max(step, cell.limit - cell.along);
            cell.along += step;
            rest -= step;
        }
    }
}

} // namespace

UniversalLayout::UniversalLayout(QWidget* parent, int hSpacing, int vSpacing)
    : QLayout(parent)
    , m_horizontalSpacing(hSpacing)
    , m_verticalSpacing(vSpacing)
{
    // Qt leaves it unregistered; OrientationChanged could not be queued otherwise.
    qRegisterMetaType<Qt::Orientation>();
}

UniversalLayout::~UniversalLayout()
{
    // Not through takeAt(), which would ask a parent being destroyed to lay out again.
    qDeleteAll(m_items);
}

void UniversalLayout::addWidget(QWidget* widget)
{
    // QLayout::addWidget would dereference it.
    if (!widget) {
        QTH_LOG_WARNING("UniversalLayout: a null widget cannot be added; ignored");
        return;
    }
    QLayout::addWidget(widget);
}

void UniversalLayout::addItem(QLayoutItem* item)
{
    if (!item) {
        QTH_LOG_WARNING("UniversalLayout: a null item cannot be added; ignored");
        return;
    }
    m_items.append(item);
    invalidate();
}

int UniversalLayout::count() const
{
    return m_items.size();
}

QLayoutItem* UniversalLayout::itemAt(int index) const
{
    return index >= 0 && index < m_items.size() ? m_items.at(index) : nullptr;
}

QLayoutItem* UniversalLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    QLayoutItem* item = m_items.takeAt(index);
    invalidate();
    return item;
}

Qt::Orientations UniversalLayout::expandingDirections() const
{
    Qt::Orientations directions;
    for (QLayoutItem* item : m_items) {
        if (!item->isEmpty() || !item->widget())
            directions |= item->expandingDirections();
    }
    return directions;
}

bool UniversalLayout::hasHeightForWidth() const
{
    return true;
}

int UniversalLayout::heightForWidth(int width) const
{
    Qt::Orientation orientation;
    return DoLayout(QRect(0, 0, width, 0), false, &orientation);
}

void UniversalLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    Qt::Orientation orientation;
    DoLayout(rect, true, &orientation);
    if (orientation == m_orientation)
        return;
    m_orientation = orientation;
    // The sizes and heights for widths differ by orientation: the layouts above ask again.
    update();
    Q_EMIT OrientationChanged(orientation);
}

QSize UniversalLayout::minimumSize() const
{
    const QVector<Cell> cells = VisibleCells(m_items, horizontalSpacing(), verticalSpacing(), &m_spacingReported);
    // As narrow as a column at any time, so that narrowing can make one.
    const int width = Outline(cells, Qt::Vertical, Minimum).width();
    return QSize(width, Outline(cells, m_orientation, Minimum).height()).grownBy(contentsMargins());
}

QSize UniversalLayout::sizeHint() const
{
    const QVector<Cell> cells = VisibleCells(m_items, horizontalSpacing(), verticalSpacing(), &m_spacingReported);
    QSize size = Outline(cells, m_orientation, Hint).grownBy(contentsMargins());
    // A row must reach a breakpoint of its own to stay one.
    if (m_orientation == Qt::Horizontal)
        size.setWidth(std::max(size.width(), m_breakpoint));
    return size;
}

void UniversalLayout::setSpacing(int spacing)
{
    m_horizontalSpacing = spacing;
    m_verticalSpacing = spacing;
    invalidate();
}

int UniversalLayout::spacing() const
{
    const int horizontal = horizontalSpacing();
    return horizontal == verticalSpacing() ? horizontal : -1;
}

int UniversalLayout::horizontalSpacing() const
{
    return m_horizontalSpacing >= 0 ? m_horizontalSpacing : ParentSpacing(this, QStyle::PM_LayoutHorizontalSpacing);
}

int UniversalLayout::verticalSpacing() const
{
    return m_verticalSpacing >= 0 ? m_verticalSpacing : ParentSpacing(this, QStyle::PM_LayoutVerticalSpacing);
}

void UniversalLayout::SetBreakpoint(int width)
{
    if (width < 0) {
        QTH_LOG_WARNING("UniversalLayout: a breakpoint of %d px is negative; using 0, the width the row needs", width);
        width = 0;
    }
    m_breakpoint = width;
    Relayout();
}

int UniversalLayout::Breakpoint() const
{
    return m_breakpoint;
}

void UniversalLayout::SetHysteresis(int pixels)
{
    if (pixels < 0) {
        QTH_LOG_WARNING("UniversalLayout: a hysteresis of %d px is negative; using 0", pixels);
        pixels = 0;
    }
    m_hysteresis = pixels;
    Relayout();
}

int UniversalLayout::Hysteresis() const
{
    return m_hysteresis;
}

int UniversalLayout::RowWidth() const
{
    return NeededRowWidth(VisibleCells(m_items, horizontalSpacing(), verticalSpacing(), &m_spacingReported),
                          contentsMargins());
}

Qt::Orientation UniversalLayout::CurrentOrientation() const
{
    return m_orientation;
}

Qt::Orientation UniversalLayout::OrientationFor(int width, int rowWidth) const
{
    const int breakpoint = m_breakpoint > 0 ? m_breakpoint : rowWidth;
    // A column widens back into a row only past the hysteresis.
    const int needed = m_orientation == Qt::Vertical ? breakpoint + m_hysteresis : breakpoint;
    return width >= needed ? Qt::Horizontal : Qt::Vertical;
}

int UniversalLayout::DoLayout(const QRect& rect, bool place, Qt::Orientation* orientation) const
{
    QVector<Cell> cells = VisibleCells(m_items, horizontalSpacing(), verticalSpacing(), &m_spacingReported);
    const QMargins margins = contentsMargins();
    const QRect effective = rect.marginsRemoved(margins);
    *orientation = OrientationFor(rect.width(), NeededRowWidth(cells, margins));
    const bool row = *orientation == Qt::Horizontal;

    int extent = 0; // the row's height, or the column's natural length
    if (row) {
        int gaps = 0;
        for (Cell& cell : cells) {
            cell.along = cell.hint.width();
            gaps += cell.gapX;
        }
        Share(cells, effective.width() - gaps, Qt::Horizontal);
        for (const Cell& cell : cells)
            extent = std::max(extent, HeightFor(cell, cell.along));
    } else {
        int gaps = 0;
        for (Cell& cell : cells) {
            const bool aligned = cell.item->alignment() & Qt::AlignHorizontal_Mask;
            cell.along = HeightFor(cell, aligned ? std::min(cell.hint.width(), effective.width()) : effective.width());
            gaps += cell.gapY;
            extent += cell.gapY + cell.along;
        }
        if (place && effective.height() > extent)
            Share(cells, effective.height() - gaps, Qt::Vertical);
    }

    if (place) {
        const QWidget* parent = parentWidget();
        const Qt::LayoutDirection direction = parent ? parent->layoutDirection() : Qt::LeftToRight;
        int position = row ? effective.left() : effective.top();
        // The items align themselves in their cells, as they do in Qt's layouts.
        for (const Cell& cell : cells) {
            position += row ? cell.gapX : cell.gapY;
            const QRect logical = row ? QRect(position, effective.top(), cell.along, extent)
                                      : QRect(effective.left(), position, effective.width(), cell.along);
            cell.item->setGeometry(QStyle::visualRect(direction, effective, logical));
            position += cell.along;
        }
    }
    return margins.top() + extent + margins.bottom();
}

void UniversalLayout::Relayout()
{
    const QRect rect = geometry();
    invalidate();
    if (rect.isValid())
        setGeometry(rect);
}

} // namespace OrvantaQT
