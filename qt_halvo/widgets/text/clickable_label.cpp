#include <qt_halvo/widgets/text/clickable_label.h>

namespace OrvantaQT {

ClickableLabel::ClickableLabel(QWidget* parent)
    : QLabel(parent)
{
}

void ClickableLabel::SetLinkActivated(bool activated)
{
    m_linkActivated = activated;
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    // The label activates a link during its own release handling.
    QLabel::mouseReleaseEvent(event);
    if (!m_linkActivated)
        Q_EMIT Clicked();
    m_linkActivated = false;
}

} // namespace OrvantaQT
