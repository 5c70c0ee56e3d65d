#include <qt_halvo/layouts/layout_spacing_p.h>

#include <QtWidgets/QLayout>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace OrvantaQT {

int ParentSpacing(const QLayout* layout, QStyle::PixelMetric metric)
{
    QObject* parentObject = layout->parent();
    if (!parentObject)
        return -1;
    if (!parentObject->isWidgetType())
        return static_cast<QLayout*>(parentObject)->spacing();
    auto* parentWidget = static_cast<QWidget*>(parentObject);
    return parentWidget->style()->pixelMetric(metric, nullptr, parentWidget);
}

bool LayoutGaps::FromStyle(QLayoutItem* item, int* spaceX, int* spaceY)
{
    const QWidget* widget = item->widget();
    if (!widget) {
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

} // namespace OrvantaQT
