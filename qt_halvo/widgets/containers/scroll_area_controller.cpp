#include <qt_halvo/widgets/containers/scroll_area_controller.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QDragMoveEvent>
#include <QtGui/QFocusEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QScroller>
#include <QtWidgets/QScrollerProperties>

#include <algorithm>

namespace OrvantaQT {

namespace {

constexpr qreal kMetresPerInch = 0.0254;
// 60 ticks a second, as QScroller's own frames.
constexpr int kAutoScrollInterval = 16;

// QScroller measures in metres through the physical resolution of the target's screen
// (in logical pixels per inch, so a scale factor is in it); a distance of pixels in
// metres there. Half a pixel less, as the scroller starts only beyond the distance.
qreal PixelsToMetres(const QWidget* widget, int pixels)
{
    const QScreen* screen = widget->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen || pixels <= 0)
        return 0;
    const qreal dpi = (screen->physicalDotsPerInchX() + screen->physicalDotsPerInchY()) / 2;
    if (dpi <= 0)
        return 0;
    return (pixels - 0.5) * kMetresPerInch / dpi;
}

bool IsKeyboardReason(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason
        || reason == Qt::OtherFocusReason;
}

// How far to scroll one axis so that [start, end) plus the margin shows in [0, extent);
// a part larger than the extent shows its start.
int ScrollToShow(int start, int end, int extent, int margin)
{
    if (start - margin < 0 || end - start + 2 * margin > extent)
        return start - margin;
    if (end + margin > extent)
        return end + margin - extent;
    return 0;
}

// The scroll of one tick along an axis at pos in [0, extent): towards the nearer edge
// inside the band, the more the nearer to it.
int EdgeStep(int pos, int extent, int band, int step)
{
    if (band <= 0 || extent <= 0)
        return 0;
    band = std::min(band, extent / 2);
    if (pos < band)
        return -std::max(1, step * (band - pos) / band);
    if (pos >= extent - band)
        return std::max(1, step * (pos - (extent - band) + 1) / band);
    return 0;
}

// Passes the events of everything but the viewport to the controller.
class ChildEvents : public QObject
{
public:
    ChildEvents(ScrollAreaController* controller, const QWidget* viewport)
        : QObject(controller)
        , m_controller(controller)
        , m_viewport(viewport)
    {
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return watched != m_viewport && m_controller->eventFilter(watched, event);
    }

private:
    ScrollAreaController* m_controller;
    const QWidget* m_viewport;
};

} // namespace

ScrollAreaController::ScrollAreaController(QAbstractScrollArea* area)
    : QObject(area)
    , m_area(area)
    , m_dragStartDistance(QApplication::startDragDistance())
    , m_autoScrollTimer(new QTimer(this))
    , m_childEvents(new ChildEvents(this, area ? area->viewport() : nullptr))
{
    m_autoScrollTimer->setInterval(kAutoScrollInterval);
    connect(m_autoScrollTimer, &QTimer::timeout, this, &ScrollAreaController::AutoScrollTick);
    if (!area) {
        QTH_LOG_WARNING("ScrollAreaController: no scroll area; the controller does nothing");
        return;
    }
    setObjectName(QStringLiteral("ScrollAreaController"));
    m_viewport = area->viewport();
    QScroller::grabGesture(m_viewport, QScroller::LeftMouseButtonGesture);
    ApplyScrollerProperties();
    m_viewport->installEventFilter(this);
    if (m_viewport->isVisible())
        WatchWhileShown();
}

ScrollAreaController::~ScrollAreaController()
{
    qApp->removeEventFilter(m_childEvents);
    // Deleted alone, it takes the kinetic scrolling with it.
    if (m_viewport)
        QScroller::ungrabGesture(m_viewport);
}

ScrollAreaController* ScrollAreaController::Of(const QAbstractScrollArea* area)
{
    return area ? area->findChild<ScrollAreaController*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

QAbstractScrollArea* ScrollAreaController::GetScrollArea() const
{
    return m_area;
}

QScroller* ScrollAreaController::GetScroller() const
{
    return m_viewport ? QScroller::scroller(m_viewport) : nullptr;
}

int ScrollAreaController::GetDragStartDistance() const
{
    return m_dragStartDistance;
}

void ScrollAreaController::SetDragStartDistance(int pixels)
{
    if (pixels < 0) {
        QTH_LOG_WARNING("ScrollAreaController: a negative drag start distance (%d) is ignored; it stays %d",
                        pixels, m_dragStartDistance);
        return;
    }
    if (pixels == m_dragStartDistance)
        return;
    m_dragStartDistance = pixels;
    ApplyScrollerProperties();
}

int ScrollAreaController::GetFocusMargin() const
{
    return m_focusMargin;
}

void ScrollAreaController::SetFocusMargin(int pixels)
{
    if (pixels < 0) {
        QTH_LOG_WARNING("ScrollAreaController: a negative focus margin (%d) is ignored; it stays %d", pixels,
                        m_focusMargin);
        return;
    }
    m_focusMargin = pixels;
}

int ScrollAreaController::GetAutoScrollMargin() const
{
    return m_autoScrollMargin;
}

void ScrollAreaController::SetAutoScrollMargin(int pixels)
{
    if (pixels < 0) {
        QTH_LOG_WARNING("ScrollAreaController: a negative auto-scroll margin (%d) is ignored; it stays %d", pixels,
                        m_autoScrollMargin);
        return;
    }
    if (pixels == m_autoScrollMargin)
        return;
    m_autoScrollMargin = pixels;
    if (pixels == 0)
        StopAutoScroll();
}

int ScrollAreaController::GetAutoScrollStep() const
{
    return m_autoScrollStep;
}

void ScrollAreaController::SetAutoScrollStep(int pixels)
{
    if (pixels <= 0) {
        QTH_LOG_WARNING("ScrollAreaController: an auto-scroll step must be positive (%d); it stays %d", pixels,
                        m_autoScrollStep);
        return;
    }
    m_autoScrollStep = pixels;
}

bool ScrollAreaController::IsAutoScrolling() const
{
    return m_autoScrollTimer->isActive();
}

void ScrollAreaController::ApplyScrollerProperties()
{
    if (!m_viewport)
        return;
    QScroller* scroller = QScroller::scroller(m_viewport);
    QScrollerProperties properties = scroller->scrollerProperties();
    properties.setScrollMetric(QScrollerProperties::DragStartDistance, PixelsToMetres(m_viewport, m_dragStartDistance));
    // A press during a fling stops it and clicks nothing, however slow the fling is by then.
    properties.setScrollMetric(QScrollerProperties::MaximumClickThroughVelocity, 0.0);
    // Desktop lists stop at their ends instead of stretching past them.
    properties.setScrollMetric(QScrollerProperties::HorizontalOvershootPolicy,
                               QVariant::fromValue(QScrollerProperties::OvershootAlwaysOff));
    properties.setScrollMetric(QScrollerProperties::VerticalOvershootPolicy,
                               QVariant::fromValue(QScrollerProperties::OvershootAlwaysOff));
    scroller->setScrollerProperties(properties);
}

void ScrollAreaController::WatchWhileShown()
{
    // Focus and drag and drop events go to the children, and those of a drop target stop
    // there: the application's filter sees them.
    qApp->installEventFilter(m_childEvents);
    // Another screen, another resolution: the same pixels are other metres.
    disconnect(m_screenWatch);
    if (QWindow* window = m_viewport->window()->windowHandle())
        m_screenWatch = connect(window, &QWindow::screenChanged, this, &ScrollAreaController::ApplyScrollerProperties);
}

void ScrollAreaController::EnsureFocusVisible(QWidget* focus)
{
    if (!m_area || !m_viewport || focus == m_viewport || !m_viewport->isAncestorOf(focus))
        return;
    const QRect rect(focus->mapTo(m_viewport, QPoint(0, 0)), focus->size());
    const int dx = ScrollToShow(rect.left(), rect.left() + rect.width(), m_viewport->width(), m_focusMargin);
    const int dy = ScrollToShow(rect.top(), rect.top() + rect.height(), m_viewport->height(), m_focusMargin);
    if (dx != 0)
        m_area->horizontalScrollBar()->setValue(m_area->horizontalScrollBar()->value() + dx);
    if (dy != 0)
        m_area->verticalScrollBar()->setValue(m_area->verticalScrollBar()->value() + dy);
}

void ScrollAreaController::UpdateAutoScroll(const QPoint& viewportPos)
{
    // Towards an end that is reached there is nothing to scroll.
    const auto open = [](const QScrollBar* bar, int step) {
        return (step < 0 && bar->value() > bar->minimum()) || (step > 0 && bar->value() < bar->maximum()) ? step : 0;
    };
    m_autoScrollDelta =
        QPoint(open(m_area->horizontalScrollBar(),
                    EdgeStep(viewportPos.x(), m_viewport->width(), m_autoScrollMargin, m_autoScrollStep)),
               open(m_area->verticalScrollBar(),
                    EdgeStep(viewportPos.y(), m_viewport->height(), m_autoScrollMargin, m_autoScrollStep)));
    if (m_autoScrollDelta.isNull() || !QRect(QPoint(0, 0), m_viewport->size()).contains(viewportPos))
        StopAutoScroll();
    else if (!m_autoScrollTimer->isActive())
        m_autoScrollTimer->start();
}

void ScrollAreaController::StopAutoScroll()
{
    m_autoScrollTimer->stop();
    m_autoScrollDelta = QPoint();
}

void ScrollAreaController::AutoScrollTick()
{
    if (!m_area || !m_viewport || !m_viewport->isVisible()) {
        StopAutoScroll();
        return;
    }
    QScrollBar* horizontal = m_area->horizontalScrollBar();
    QScrollBar* vertical = m_area->verticalScrollBar();
    const int x = horizontal->value();
    const int y = vertical->value();
    horizontal->setValue(x + m_autoScrollDelta.x());
    vertical->setValue(y + m_autoScrollDelta.y());
    // At the end there is nothing left to scroll until the drag moves.
    if (horizontal->value() == x && vertical->value() == y)
        StopAutoScroll();
}

bool ScrollAreaController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_viewport) {
        switch (event->type()) {
        case QEvent::Show:
            // The window may have gone to another screen while hidden.
            ApplyScrollerProperties();
            WatchWhileShown();
            break;
        case QEvent::Hide:
            qApp->removeEventFilter(m_childEvents);
            StopAutoScroll();
            break;
        default:
            break;
        }
    }
    if (!m_viewport || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        if (IsKeyboardReason(static_cast<QFocusEvent*>(event)->reason()))
            EnsureFocusVisible(static_cast<QWidget*>(watched));
        break;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* widget = static_cast<QWidget*>(watched);
        if (m_autoScrollMargin > 0 && (widget == m_viewport || m_viewport->isAncestorOf(widget)))
            UpdateAutoScroll(widget->mapTo(m_viewport, static_cast<QDragMoveEvent*>(event)->pos()));
        break;
    }
    case QEvent::DragLeave:
    case QEvent::Drop: {
        auto* widget = static_cast<QWidget*>(watched);
        if (widget == m_viewport || m_viewport->isAncestorOf(widget))
            StopAutoScroll();
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

ScrollAreaController* SetScroller(QAbstractScrollArea* area)
{
    if (!area) {
        QTH_LOG_WARNING("SetScroller: no scroll area to scroll");
        return nullptr;
    }
    if (ScrollAreaController* controller = ScrollAreaController::Of(area))
        return controller;
    return new ScrollAreaController(area);
}

} // namespace OrvantaQT
