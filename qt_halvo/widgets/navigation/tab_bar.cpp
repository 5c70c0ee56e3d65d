#include <qt_halvo/widgets/navigation/tab_bar.h>

#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/utilities/border_pixmap_painter.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QVariantAnimation>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>

namespace OrvantaQT {

namespace {

// One notch of a mouse wheel.
constexpr int kWheelStep = 120;

QRectF Moved(const QRectF& rect, const QMarginsF& by, qreal part)
{
    return rect.adjusted(by.left() * part, by.top() * part, by.right() * part, by.bottom() * part);
}

} // namespace

TabBar::TabBar(QWidget* parent)
    : QTabBar(parent)
    , m_slide(new QVariantAnimation(this))
{
    m_slide->setStartValue(1.0);
    m_slide->setEndValue(0.0);
    m_slide->setEasingCurve(QEasingCurve::OutCubic);
    m_slide->setDuration(m_duration);
    connect(m_slide, &QVariantAnimation::valueChanged, this, &TabBar::UpdateSelector);
    connect(this, &QTabBar::currentChanged, this, &TabBar::OnCurrentChanged);
    connect(this, &QTabBar::tabMoved, this, &TabBar::OnTabMoved);
}

TabBar::~TabBar() = default;

TabBar::Shape TabBar::GetSelectorShape() const
{
    return m_shape;
}

void TabBar::SetSelectorShape(Shape shape)
{
    if (shape != Underline && shape != Pill) {
        QTH_LOG_WARNING("TabBar: %d is not a selector shape; the shape stays as it is", static_cast<int>(shape));
        return;
    }
    if (shape == m_shape)
        return;
    m_shape = shape;
    StopSlide();
    update();
}

QColor TabBar::GetSelectorColor() const
{
    return m_color.isValid() ? m_color : palette().color(QPalette::Highlight);
}

void TabBar::SetSelectorColor(const QColor& color)
{
    if (!color.isValid())
        QTH_LOG_WARNING("TabBar: an invalid selector colour; the palette's highlight is used");
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void TabBar::ResetSelectorColor()
{
    if (!m_color.isValid())
        return;
    m_color = QColor();
    update();
}

int TabBar::GetSelectorThickness() const
{
    return m_thickness;
}

void TabBar::SetSelectorThickness(int thickness)
{
    if (thickness < 0) {
        QTH_LOG_WARNING("TabBar: a negative selector thickness (%d) is ignored", thickness);
        return;
    }
    if (thickness == m_thickness)
        return;
    m_thickness = thickness;
    update();
}

int TabBar::GetSelectorRadius() const
{
    return m_radius;
}

void TabBar::SetSelectorRadius(int radius)
{
    if (radius < 0) {
        QTH_LOG_WARNING("TabBar: a negative selector radius (%d) is ignored", radius);
        return;
    }
    if (radius == m_radius)
        return;
    m_radius = radius;
    update();
}

int TabBar::GetSelectorMargin() const
{
    return m_margin;
}

void TabBar::SetSelectorMargin(int margin)
{
    if (margin < 0) {
        QTH_LOG_WARNING("TabBar: a negative selector margin (%d) is ignored", margin);
        return;
    }
    if (margin == m_margin)
        return;
    m_margin = margin;
    update();
}

int TabBar::GetDuration() const
{
    return m_duration;
}

void TabBar::SetDuration(int duration)
{
    if (duration < 0) {
        QTH_LOG_WARNING("TabBar: a negative duration (%d ms) is ignored", duration);
        return;
    }
    // A slide on the way keeps its own.
    m_duration = duration;
}

QEasingCurve TabBar::GetEasing() const
{
    return m_slide->easingCurve();
}

void TabBar::SetEasing(const QEasingCurve& easing)
{
    if (easing == m_slide->easingCurve())
        return;
    m_slide->setEasingCurve(easing);
}

QRect TabBar::SelectorRect() const
{
    return CurrentSelector().toAlignedRect();
}

QRect TabBar::SelectorTarget() const
{
    return SelectorOn(AnchorRect()).toAlignedRect();
}

bool TabBar::IsSelectorMoving() const
{
    StartPendingSlide();
    return m_slide->state() == QAbstractAnimation::Running;
}

void TabBar::paintEvent(QPaintEvent* event)
{
    const QRectF selector = CurrentSelector();
    m_painted = selector;
    if (m_shape == Pill && !selector.isEmpty()) {
        QPainter painter(this);
        PaintPill(&painter, selector);
    }
    QTabBar::paintEvent(event);
    if (m_shape == Underline && !selector.isEmpty()) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(selector, GetSelectorColor());
    }
}

void TabBar::keyPressEvent(QKeyEvent* event)
{
    int target = -1;
    switch (event->key()) {
    case Qt::Key_Home:
        target = EnabledTab(-1, 1);
        break;
    case Qt::Key_End:
        target = EnabledTab(count(), -1);
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
        // Across a horizontal bar they belong to the parent.
        if (!IsVertical()) {
            QTabBar::keyPressEvent(event);
            return;
        }
        target = EnabledTab(currentIndex(), event->key() == Qt::Key_Up ? -1 : 1);
        break;
    default:
        QTabBar::keyPressEvent(event);
        return;
    }
    if (target >= 0)
        setCurrentIndex(target);
    event->accept();
}

void TabBar::wheelEvent(QWheelEvent* event)
{
    const QPoint angle = event->angleDelta();
    const int delta = qAbs(angle.x()) > qAbs(angle.y()) ? angle.x() : angle.y();
    // Without a turn the event stays ignored, as QWidget hands it over, for the parent.
    if (delta == 0)
        return;
    // A turn the other way starts afresh.
    if ((m_wheelRest > 0 && delta < 0) || (m_wheelRest < 0 && delta > 0))
        m_wheelRest = 0;
    m_wheelRest += delta;
    const int steps = m_wheelRest / kWheelStep;
    m_wheelRest -= steps * kWheelStep;
    // Turning up (or left) goes to the tabs before, as QTabBar does.
    int index = currentIndex();
    for (int i = 0; i < qAbs(steps); ++i) {
        const int next = EnabledTab(index, steps > 0 ? -1 : 1);
        if (next < 0)
            break;
        index = next;
    }
    if (index >= 0)
        setCurrentIndex(index);
    event->accept();
}

void TabBar::mousePressEvent(QMouseEvent* event)
{
    QTabBar::mousePressEvent(event);
    m_pressed = false;
    m_dragging = false;
    // The press makes the tab under it current; only that one can be dragged.
    if (isMovable() && event->button() == Qt::LeftButton && currentIndex() >= 0
        && tabAt(event->pos()) == currentIndex()) {
        m_pressed = true;
        m_pressPos = event->pos();
        m_dragPos = event->pos();
        m_pressTab = tabRect(currentIndex());
    }
}

void TabBar::mouseMoveEvent(QMouseEvent* event)
{
    QTabBar::mouseMoveEvent(event);
    if (!m_pressed || !(event->buttons() & Qt::LeftButton))
        return;
    // As QTabBar starts moving the tab.
    if (!m_dragging && (event->pos() - m_pressPos).manhattanLength() > QApplication::startDragDistance())
        m_dragging = true;
    if (m_dragging) {
        m_dragPos = event->pos();
        UpdateSelector();
    }
}

void TabBar::mouseReleaseEvent(QMouseEvent* event)
{
    const bool dragged = m_dragging && event->button() == Qt::LeftButton;
    const QRectF dropped = dragged ? CurrentSelector() : QRectF();
    QTabBar::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = false;
    m_dragging = false;
    if (!dragged)
        return;
    // The tab settles into its place, which QTabBar paints; the selector goes with it from
    // where it was let go.
    if (EffectiveDuration() > 0 && !dropped.isEmpty()) {
        m_from = dropped;
        m_slidePending = true;
    }
}

void TabBar::hideEvent(QHideEvent* event)
{
    StopSlide();
    m_painted = QRectF();
    m_pressed = false;
    m_dragging = false;
    QTabBar::hideEvent(event);
}

void TabBar::changeEvent(QEvent* event)
{
    // QWidget repaints on style and palette changes.
    QTabBar::changeEvent(event);
    if (event->type() == QEvent::StyleChange && EffectiveDuration() == 0)
        StopSlide();
}

void TabBar::tabInserted(int index)
{
    QTabBar::tabInserted(index);
    m_shownIndex = currentIndex();
}

void TabBar::tabRemoved(int index)
{
    QTabBar::tabRemoved(index);
    // QTabBar reports the current tab as changed when a tab before it goes; it is the same
    // tab, which the selector follows without a slide.
    if (m_lastChange.count == count() && m_lastChange.from > index)
        m_slidePending = m_lastChange.wasPending;
    m_lastChange = Change();
    m_shownIndex = currentIndex();
    m_pressed = false;
    m_dragging = false;
}

// QTabBar repaints as its current tab changes, which places the selector.
void TabBar::OnCurrentChanged(int index)
{
    m_lastChange = Change{m_shownIndex, count(), m_slidePending};
    m_shownIndex = index;
    // Without tabs the bar may not be painted again; the next selector starts afresh.
    if (index < 0)
        m_painted = QRectF();
    // QTabBar moves the dragged tab past the others as it goes; the selector stays on it.
    if (m_dragging && index >= 0)
        return;
    if (!isVisible() || m_painted.isEmpty() || index < 0 || EffectiveDuration() == 0) {
        StopSlide();
        return;
    }
    // The tabs may not be laid out yet (a tab is being removed): the slide starts from
    // where the selector was drawn when the selector is next placed.
    m_from = m_painted;
    m_slidePending = true;
}

void TabBar::OnTabMoved(int, int)
{
    // QTabBar has repainted; a change of the current tab may follow.
    m_shownIndex = currentIndex();
}

void TabBar::StartPendingSlide() const
{
    if (!m_slidePending)
        return;
    m_slidePending = false;
    const QRectF target = SelectorOn(AnchorRect());
    m_slide->stop();
    if (target.isEmpty() || m_from.isEmpty())
        return;
    m_delta = QMarginsF(m_from.left() - target.left(), m_from.top() - target.top(), m_from.right() - target.right(),
                        m_from.bottom() - target.bottom());
    m_slide->setDuration(EffectiveDuration());
    m_slide->start();
}

void TabBar::StopSlide()
{
    m_slidePending = false;
    m_slide->stop();
}

QRectF TabBar::CurrentSelector() const
{
    StartPendingSlide();
    const QRectF target = SelectorOn(AnchorRect());
    // A stopped slide rests at 0; a paused one stays where it is.
    const qreal progress = m_slide->state() == QAbstractAnimation::Stopped ? 0 : m_slide->currentValue().toReal();
    if (target.isEmpty() || progress <= 0)
        return target;
    return Moved(target, m_delta, progress);
}

QRectF TabBar::SelectorOn(const QRectF& tab) const
{
    if (tab.isEmpty())
        return QRectF();
    if (m_shape == Pill) {
        const QRectF pill = tab.adjusted(m_margin, m_margin, -m_margin, -m_margin);
        return pill.isEmpty() ? QRectF() : pill;
    }
    const qreal thickness = m_thickness;
    switch (shape()) {
    case RoundedSouth:
    case TriangularSouth:
        return QRectF(tab.left(), tab.top(), tab.width(), thickness);
    case RoundedWest:
    case TriangularWest:
        return QRectF(tab.right() - thickness, tab.top(), thickness, tab.height());
    case RoundedEast:
    case TriangularEast:
        return QRectF(tab.left(), tab.top(), thickness, tab.height());
    default:
        return QRectF(tab.left(), tab.bottom() - thickness, tab.width(), thickness);
    }
}

QRectF TabBar::AnchorRect() const
{
    if (m_dragging) {
        const QPoint moved = m_dragPos - m_pressPos;
        return IsVertical() ? m_pressTab.translated(0, moved.y()) : m_pressTab.translated(moved.x(), 0);
    }
    return QRectF(tabRect(currentIndex()));
}

void TabBar::PaintPill(QPainter* painter, const QRectF& rect)
{
    // In device pixels, where the pill's picture is drawn one to one; those of the device
    // painted on, which a rendering into an image may choose.
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QRect target = QRectF(rect.topLeft() * ratio, rect.size() * ratio).toRect();
    if (target.isEmpty())
        return;
    const int radius = qMin(qRound(m_radius * ratio), qMin(target.width(), target.height()) / 2);
    const QPixmap& pill = PillPixmap(GetSelectorColor(), radius, ratio);
    painter->save();
    painter->scale(1 / ratio, 1 / ratio);
    DrawBorderPixmap(painter, target, pill, pill.rect(), QMargins(radius, radius, radius, radius));
    painter->restore();
}

const QPixmap& TabBar::PillPixmap(const QColor& color, int radius, qreal ratio)
{
    if (!m_pill.isNull() && m_pillKey.color == color.rgba() && m_pillKey.radius == radius
        && qFuzzyCompare(m_pillKey.ratio, ratio))
        return m_pill;
    // Round corners around one pixel that stretches.
    const int side = 2 * radius + 1;
    m_pill = QPixmap(side, side);
    m_pill.fill(Qt::transparent);
    QPainter painter(&m_pill);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0, 0, side, side), radius, radius);
    painter.end();
    m_pillKey = PillKey{color.rgba(), radius, ratio};
    return m_pill;
}

int TabBar::EnabledTab(int from, int step) const
{
    for (int index = from + step; index >= 0 && index < count(); index += step) {
        if (isTabEnabled(index) && isTabVisible(index))
            return index;
    }
    return -1;
}

bool TabBar::IsVertical() const
{
    switch (shape()) {
    case RoundedWest:
    case RoundedEast:
    case TriangularWest:
    case TriangularEast:
        return true;
    default:
        return false;
    }
}

int TabBar::EffectiveDuration() const
{
    return WidgetAnimationsEnabled(this) ? m_duration : 0;
}

void TabBar::UpdateSelector()
{
    const QRect now = CurrentSelector().toAlignedRect();
    update((now | m_painted.toAlignedRect()).adjusted(-1, -1, 1, 1));
}

} // namespace OrvantaQT
