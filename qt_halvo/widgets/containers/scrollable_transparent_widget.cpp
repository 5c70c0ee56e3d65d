#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>

#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/widgets/containers/transparent_widget.h>
#include <qt_halvo/widgets/containers/transparent_widget_p.h>

#include <QtCore/QEvent>

namespace OrvantaQT {

ScrollableTransparentWidget::ScrollableTransparentWidget(QWidget* parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    // A TransparentWidget keeps itself clear of what the area and style sheets set on it.
    setViewport(new TransparentWidget);
    setWidgetResizable(true);
    setWidget(NameChild(new TransparentWidget, "ScrollableTransparentWidget", "Content"));
}

ScrollableTransparentWidget::~ScrollableTransparentWidget() = default;

QWidget* ScrollableTransparentWidget::GetContent() const
{
    return widget();
}

bool ScrollableTransparentWidget::eventFilter(QObject* watched, QEvent* event)
{
    // QScrollArea filters its widget's events. setWidget() turns the widget's fill on
    // before it shows it, and the style polishes it before it is shown or after a change.
    const bool result = QScrollArea::eventFilter(watched, event);
    if (watched == widget()
        && (event->type() == QEvent::Show || event->type() == QEvent::StyleChange
            || event->type() == QEvent::PaletteChange))
        ClearBackground(widget());
    return result;
}

bool ScrollableTransparentWidget::event(QEvent* event)
{
    // After QScrollArea's handling: its Polish is where the style polishes the area.
    const bool result = QScrollArea::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange)
        ClearBackground(this);
    return result;
}

} // namespace OrvantaQT
