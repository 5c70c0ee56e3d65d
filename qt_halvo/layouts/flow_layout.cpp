#include <qt_halvo/layouts/flow_layout.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace OrvantaQT {

namespace {

// The gaps of one layout pass. The stored or parent spacing is read once; where it gives
// nothing (-1), the item's style decides, looked up again only when the style changes.
class Gaps
{
public:
    Gaps(int horizontal, int vertical) : m_horizontal(horizontal), m_vertical(vertical) {}

    // False (and logged once per pass) for an item without a widget to ask.
    bool For(QLayoutItem* item, int* spaceX, int* spaceY)
    {
        if (m_horizontal != -1 && m_vertical != -1) {
            *spaceX = m_horizontal;
            *spaceY = m_vertical;
            return true;
        }
        const QWidget* widget = item->widget();
        if (!widget) {
            if (!m_reported)
                QTH_LOG_ERROR("FlowLayout: an item without a widget needs a spacing, and none is set; using 0");
            m_reported = true;
            *spaceX = std::max(m_horizontal, 0);
            *spaceY = std::max(m_vertical, 0);
            return false;
        }
        QStyle* style = widget->style();
        if (style != m_style) {
            m_style = style;
            m_styleX = style->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Horizontal);
            m_styleY = style->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Vertical);
        }
        *spaceX = m_horizontal == -1 ? m_styleX : m_horizontal;
        *spaceY = m_vertical == -1 ? m_styleY : m_vertical;
        return true;
    }

private:
    int m_horizontal;
    int m_vertical;
    const QStyle* m_style = nullptr;
    int m_styleX = 0;
    int m_styleY = 0;
    bool m_reported = false;
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
    QObject* parentObject = parent();
    if (!parentObject)
        return -1;
    if (!parentObject->isWidgetType())
        return static_cast<QLayout*>(parentObject)->spacing();
    auto* parentWidget = static_cast<QWidget*>(parentObject);
    return parentWidget->style()->pixelMetric(metric, nullptr, parentWidget);
}

int FlowLayout::doLayout(const QRect& rect, bool testOnly) const
{
    const QMargins margins = contentsMargins();
    const QRect effective = rect.adjusted(margins.left(), margins.top(), -margins.right(), -margins.bottom());
    int x = effective.x();
    int y = effective.y();
    int lineHeight = 0;
    int itemsInRow = 0;
    Gaps gaps(horizontalSpacing(), verticalSpacing());
    QVector<QRect> places;
    if (!testOnly)
        places.reserve(m_items.size());

    for (QLayoutItem* item : m_items) {
        int spaceX = 0;
        int spaceY = 0;
        gaps.For(item, &spaceX, &spaceY);
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
            places.append(QRect(QPoint(x, y), hint));
        x = nextX;
        lineHeight = std::max(lineHeight, hint.height());
    }

    if (!testOnly) {
        int maxRight = effective.left();
        int maxBottom = effective.top();
        for (const QRect& place : qAsConst(places)) {
            maxRight = std::max(maxRight, place.right());
            maxBottom = std::max(maxBottom, place.bottom());
        }
        // Halves of the free room on each side: negative when the block overflows.
        const QPoint offset((effective.right() + 1 - maxRight) / 2, (effective.bottom() + 1 - maxBottom) / 2);
        for (int i = 0; i < places.size(); ++i)
            m_items.at(i)->setGeometry(places.at(i).translated(offset));
    }
    return y + lineHeight - rect.top() + margins.bottom();
}

} // namespace OrvantaQT
