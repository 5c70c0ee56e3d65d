#include <qt_halvo/views/header_view.h>

namespace OrvantaQT {

HeaderView::HeaderView(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent)
{
}

HeaderView::~HeaderView() = default;

int HeaderView::HoveredSection() const
{
    return m_hoveredSection;
}

bool HeaderView::viewportEvent(QEvent* event)
{
    return QHeaderView::viewportEvent(event);
}

} // namespace OrvantaQT
