// The spacing rule the library's own layouts share: a spacing of the layout's own when it
// has one, else the parent's, else the spacing the items' styles give push buttons.
#pragma once

#include <QtWidgets/QStyle>

class QLayout;
class QLayoutItem;

namespace OrvantaQT {

// What a layout without a spacing of its own takes from its parent: a parent layout's
// spacing, or the parent widget's style metric. -1 without a parent, or when the parent
// leaves it to the items.
int ParentSpacing(const QLayout* layout, QStyle::PixelMetric metric);

// The gaps of one layout pass, from the layout's spacing across and down (its own or its
// parent's, read once). Where that is -1 the item's style decides, looked up again only
// when the style changes from one item to the next.
class LayoutGaps
{
public:
    LayoutGaps(int horizontal, int vertical) : m_horizontal(horizontal), m_vertical(vertical) {}

    // False for an item without a widget to ask when the layout gives nothing; the gap
    // it has no value for is then 0.
    bool For(QLayoutItem* item, int* spaceX, int* spaceY)
    {
        // Inline, since layouts ask once per item and mostly have a spacing.
        if (m_horizontal != -1 && m_vertical != -1) {
            *spaceX = m_horizontal;
            *spaceY = m_vertical;
            return true;
        }
        return FromStyle(item, spaceX, spaceY);
    }

private:
    bool FromStyle(QLayoutItem* item, int* spaceX, int* spaceY);

    int m_horizontal;
    int m_vertical;
    const QStyle* m_style = nullptr;
    int m_styleX = 0;
    int m_styleY = 0;
};

} // namespace OrvantaQT
