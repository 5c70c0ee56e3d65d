#include <qt_halvo/animation/busy_indicator_ring.h>

#include "widget_animations_p.h"

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/views/accessibility_factory_p.h>

#include <QtCore/QTimerEvent>
#include <QtCore/QtMath>
#include <QtGui/QPainter>
#include <QtWidgets/QAccessibleWidget>

namespace OrvantaQT {

namespace {

class RingAccessible : public QAccessibleWidget
{
public:
    explicit RingAccessible(QWidget* ring)
        : QAccessibleWidget(ring, QAccessible::Animation)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.busy = static_cast<const BusyIndicatorRing*>(widget())->IsRunning();
        return state;
    }
};

// The dimmest dot keeps this share of the colour's alpha.
constexpr qreal kTailAlpha = 0.15;

} // namespace

BusyIndicatorRing::BusyIndicatorRing(QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(tr("Busy"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    UpdateShades();
}

BusyIndicatorRing::~BusyIndicatorRing() = default;

// Made through the library's accessibility factory.
QAccessibleInterface* BusyRingAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::BusyIndicatorRing") && object && object->isWidgetType())
        return new RingAccessible(static_cast<QWidget*>(object));
    return nullptr;
}

bool BusyIndicatorRing::IsRunning() const
{
    return m_running;
}

QColor BusyIndicatorRing::GetColor() const
{
    return m_color;
}

int BusyIndicatorRing::GetThickness() const
{
    return m_thickness;
}

int BusyIndicatorRing::GetPeriod() const
{
    return m_period;
}

int BusyIndicatorRing::CurrentStep() const
{
    return m_step;
}

bool BusyIndicatorRing::IsAnimating() const
{
    return m_timer.isActive();
}

QSize BusyIndicatorRing::sizeHint() const
{
    const int side = 2 * fontMetrics().height();
    return QSize(side, side);
}

QSize BusyIndicatorRing::minimumSizeHint() const
{
    const int side = fontMetrics().height();
    return QSize(side, side);
}

void BusyIndicatorRing::Start()
{
    SetRunning(true);
}

void BusyIndicatorRing::Stop()
{
    SetRunning(false);
}

void BusyIndicatorRing::SetRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    UpdateTimer();
    update();
    QAccessible::State busy;
    busy.busy = true;
    QAccessibleStateChangeEvent change(this, busy);
    QAccessible::updateAccessibility(&change);
}

void BusyIndicatorRing::SetColor(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    UpdateShades();
    update();
}

void BusyIndicatorRing::SetThickness(int thickness)
{
    if (thickness < 0) {
        QTH_LOG_WARNING("BusyIndicatorRing: a negative thickness (%d) is ignored", thickness);
        return;
    }
    if (m_thickness == thickness)
        return;
    m_thickness = thickness;
    UpdateDots();
    update();
}

void BusyIndicatorRing::SetPeriod(int period)
{
    if (period < kDots) {
        QTH_LOG_WARNING("BusyIndicatorRing: a turn of %d ms is too short; it stays at %d ms", period, m_period);
        return;
    }
    if (m_period == period)
        return;
    m_period = period;
    m_timer.stop();
    UpdateTimer();
}

void BusyIndicatorRing::UpdateTimer()
{
    // isVisible() stays true in a minimised window, whose widgets are sent hide events.
    const bool animate = m_running && isVisible() && !window()->isMinimized() && WidgetAnimationsEnabled(this);
    if (!animate)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(m_period / kDots, this);
}

void BusyIndicatorRing::UpdateDots()
{
    m_dots.clear();
    const qreal side = qMin(width(), height());
    if (side <= 0)
        return;
    const qreal diameter = m_thickness > 0 ? qMin<qreal>(m_thickness, side / 2) : side / 6;
    const qreal radius = (side - diameter) / 2;
    const QPointF centre = QRectF(rect()).center();
    for (int i = 0; i < kDots; ++i) {
        const qreal angle = 2 * M_PI * i / kDots;
        const QPointF at = centre + QPointF(radius * qSin(angle), -radius * qCos(angle));
        m_dots.append(QRectF(at - QPointF(diameter / 2, diameter / 2), QSizeF(diameter, diameter)));
    }
}

void BusyIndicatorRing::UpdateShades()
{
    m_shades.clear();
    const QColor color = m_color.isValid() ? m_color : palette().color(QPalette::Highlight);
    for (int behind = 0; behind < kDots; ++behind) {
        QColor shade = color;
        shade.setAlphaF(color.alphaF() * (1 - (1 - kTailAlpha) * behind / (kDots - 1)));
        m_shades.append(shade);
    }
}

void BusyIndicatorRing::paintEvent(QPaintEvent*)
{
    if (m_dots.isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kDots; ++i) {
        // Standing still, the ring shows every dot alike.
        const int behind = m_running ? (m_step - i + kDots) % kDots : kDots / 2;
        painter.setBrush(m_shades[behind]);
        painter.drawEllipse(m_dots[i]);
    }
}

void BusyIndicatorRing::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_step = (m_step + 1) % kDots;
    update();
}

void BusyIndicatorRing::resizeEvent(QResizeEvent* event)
{
    UpdateDots();
    QWidget::resizeEvent(event);
}

void BusyIndicatorRing::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    UpdateTimer();
}

void BusyIndicatorRing::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void BusyIndicatorRing::changeEvent(QEvent* event)
{
    // The base repaints.
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        UpdateShades();
    else if (event->type() == QEvent::StyleChange)
        UpdateTimer();
}

} // namespace OrvantaQT
