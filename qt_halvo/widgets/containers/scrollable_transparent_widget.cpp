#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>

#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/widgets/containers/transparent_widget.h>

#include <QtCore/QEvent>

namespace OrvantaQT {

namespace {

void ClearBackground(QWidget* widget)
{
    if (!widget)
        return;
    if (widget->autoFillBackground())
        widget->setAutoFillBackground(false);
    widget->setAttribute(Qt::WA_StyledBackground, false);
}

} // namespace

ScrollableTransparentWidget::ScrollableTransparentWidget(QWidget* parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    // A TransparentWidget keeps itself clear of what the area and style sheets set on it.
    setViewport(new TransparentWidget);
    ClearBackground(viewport());
    viewport()->installEventFilter(this);
    setWidgetResizable(true);
    setWidget(NameChild(new TransparentWidget, "ScrollableTransparentWidget", "Content"));
    ClearBackground(widget());
    ClearBackground(this);
}

ScrollableTransparentWidget::~ScrollableTransparentWidget() = default;

QWidget* ScrollableTransparentWidget::GetContent() const
{
    return widget();
}

bool ScrollableTransparentWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport()) {
        switch (event->type()) {
        case QEvent::ChildAdded:
            // setWidget() turns the content's fill on after it takes it; undone before the
            // next paint.
            QMetaObject::invokeMethod(
                this, [this] { ClearBackground(widget()); }, Qt::QueuedConnection);
            break;
        case QEvent::ChildPolished:
            ClearBackground(widget());
            break;
        default:
            break;
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

bool ScrollableTransparentWidget::event(QEvent* event)
{
    // After QScrollArea's handling: its Polish is where the style polishes the area.
    const bool result = QScrollArea::event(event);
    switch (event->type()) {
    case QEvent::Polish:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
        ClearBackground(this);
        ClearBackground(widget());
        break;
    default:
        break;
    }
    return result;
}

} // namespace OrvantaQT
