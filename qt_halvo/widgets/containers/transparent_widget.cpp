#include <qt_halvo/widgets/containers/transparent_widget.h>
#include <qt_halvo/widgets/containers/transparent_widget_p.h>

#include <QtCore/QEvent>

namespace OrvantaQT {

void ClearBackground(QWidget* widget)
{
    widget->setAutoFillBackground(false);
    widget->setAttribute(Qt::WA_StyledBackground, false);
}

TransparentWidget::TransparentWidget(QWidget* parent)
    : QWidget(parent)
{
}

TransparentWidget::~TransparentWidget() = default;

bool TransparentWidget::event(QEvent* event)
{
    // After QWidget's handling: its Polish is where the style polishes the widget.
    const bool result = QWidget::event(event);
    switch (event->type()) {
    case QEvent::Polish:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
    // QScrollArea::setWidget() turns the fill on before it shows its new widget.
    case QEvent::Show:
        ClearBackground(this);
        break;
    default:
        break;
    }
    return result;
}

} // namespace OrvantaQT
