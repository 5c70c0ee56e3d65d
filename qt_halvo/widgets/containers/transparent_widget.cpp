#include <qt_halvo/widgets/containers/transparent_widget.h>

#include <QtCore/QEvent>

namespace OrvantaQT {

namespace {

// What makes Qt paint a widget's background before its paint event: the fill from the
// palette, and a style sheet's background (QStyleSheetStyle turns the styled background
// on for plain widgets and frames).
void ClearBackground(QWidget* widget)
{
    if (widget->autoFillBackground())
        widget->setAutoFillBackground(false);
    widget->setAttribute(Qt::WA_StyledBackground, false);
}

} // namespace

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
