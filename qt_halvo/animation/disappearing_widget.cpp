#include <qt_halvo/animation/disappearing_widget.h>

#include "disappearing_widget_p.h"

#include <qt_halvo/animation/two_state_animator.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QGlobalStatic>
#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QLayout>

namespace OrvantaQT {

namespace {

// Used on the GUI thread only, so without a lock.
Q_GLOBAL_STATIC(QVector<DisappearingWidget*>, liveWidgets)

int ClampPercent(int value, const char* which)
{
    const int clamped = qBound(0, value, 100);
    if (clamped != value)
        QTH_LOG_ERROR("DisappearingWidget: %s opacity %d%% is outside 0..100; %d%% is used", which, value, clamped);
    return clamped;
}

// Read through a float and truncated, so that a few levels (53, 59) read back one lower.
int Percent(const QVariant& opacity)
{
    return static_cast<int>(opacity.toFloat() * 100);
}

} // namespace

QVector<DisappearingWidget*> LiveDisappearingWidgets()
{
    return liveWidgets.exists() ? *liveWidgets : QVector<DisappearingWidget*>();
}

DisappearingWidget::DisappearingWidget(QWidget* parent)
    : QWidget(parent)
{
    m_effect = new QGraphicsOpacityEffect(this);
    setGraphicsEffect(m_effect);
    m_animation = new QPropertyAnimation(m_effect, "opacity", this);
    // The first state is the invisible one, the second the visible one.
    m_animator = new TwoStateAnimator(m_animation, 0, 1, this);

    connect(m_animator, QOverload<>::of(&TwoStateAnimator::FirstStateEntered), this,
            QOverload<>::of(&DisappearingWidget::Disappeared));
    connect(m_animator, QOverload<bool>::of(&TwoStateAnimator::FirstStateEntered), this,
            QOverload<bool>::of(&DisappearingWidget::Disappeared));
    connect(m_animator, QOverload<>::of(&TwoStateAnimator::SecondStateEntered), this,
            QOverload<>::of(&DisappearingWidget::Appeared));
    connect(m_animator, QOverload<bool>::of(&TwoStateAnimator::SecondStateEntered), this,
            QOverload<bool>::of(&DisappearingWidget::Appeared));
    connect(m_animator, QOverload<bool>::of(&TwoStateAnimator::FirstStateEntered), this, [this](bool entered) {
        if (entered)
            ReportStateEntered(false);
    });
    connect(m_animator, QOverload<bool>::of(&TwoStateAnimator::SecondStateEntered), this, [this](bool entered) {
        if (entered)
            ReportStateEntered(true);
    });

    setAttribute(Qt::WA_TranslucentBackground, true);
    if (!liveWidgets.isDestroyed())
        liveWidgets->append(this);
}

DisappearingWidget::~DisappearingWidget()
{
    if (!liveWidgets.isDestroyed())
        liveWidgets->removeOne(this);
    // The animator uses the animation without owning it; as children they would go in
    // the order they were made, the animation first.
    delete m_animator;
}

int DisappearingWidget::duration() const
{
    return m_animation->duration();
}

QEasingCurve::Type DisappearingWidget::easing() const
{
    return m_animation->easingCurve().type();
}

bool DisappearingWidget::initialyVisible() const
{
    return m_initialyVisible;
}

int DisappearingWidget::getInvisibleOpacity() const
{
    return Percent(m_animator->GetFirstValue());
}

int DisappearingWidget::getVisibleOpacity() const
{
    return Percent(m_animator->GetSecondValue());
}

void DisappearingWidget::UpdateAllVisibleWidgets()
{
    if (!liveWidgets.exists())
        return;
    const QVector<DisappearingWidget*> widgets = *liveWidgets;
    for (DisappearingWidget* widget : widgets) {
        // The effect's signals can run code that deletes another widget of the copy.
        if (liveWidgets->contains(widget))
            widget->Rerender();
    }
}

QSize DisappearingWidget::sizeHint() const
{
    if (QLayout* own = layout())
        return own->sizeHint();
    return QWidget::sizeHint();
}

QSize DisappearingWidget::minimumSizeHint() const
{
    if (QLayout* own = layout())
        return own->totalMinimumSize();
    return QWidget::minimumSizeHint();
}

void DisappearingWidget::Update()
{
    if (HasEffect("Update"))
        Rerender();
}

void DisappearingWidget::Rerender()
{
    if (!m_effect)
        return;
    // Switching the effect off and on drops the source picture it has cached.
    m_effect->setEnabled(false);
    m_effect->setEnabled(true);
    m_effect->update();
    update();
}

bool DisappearingWidget::HasEffect(const char* operation) const
{
    if (m_effect)
        return true;
    QTH_LOG_ERROR("DisappearingWidget::%s: its opacity effect was replaced with setGraphicsEffect(); nothing is done",
                  operation);
    return false;
}

void DisappearingWidget::setDuration(int duration)
{
    if (duration < 0) {
        QTH_LOG_ERROR("DisappearingWidget: negative duration %d ms is ignored", duration);
        return;
    }
    m_animation->setDuration(duration);
}

void DisappearingWidget::setEasing(QEasingCurve::Type type)
{
    // Custom needs a function, which a type alone cannot give.
    if (type < QEasingCurve::Linear || type >= QEasingCurve::Custom) {
        QTH_LOG_ERROR("DisappearingWidget: easing curve type %d is not a predefined curve and is ignored",
                      static_cast<int>(type));
        return;
    }
    m_animation->setEasingCurve(QEasingCurve(type));
}

void DisappearingWidget::setInitialyVisible(bool value)
{
    m_initialyVisible = value;
    if (HasEffect("setInitialyVisible"))
        m_animator->setSecondState(value);
}

void DisappearingWidget::setInvisibleOpacity(int value)
{
    if (HasEffect("setInvisibleOpacity"))
        m_animator->setFirstValue(ClampPercent(value, "invisible") * 0.01);
}

void DisappearingWidget::setVisibleOpacity(int value)
{
    if (HasEffect("setVisibleOpacity"))
        m_animator->setSecondValue(ClampPercent(value, "visible") * 0.01);
}

void DisappearingWidget::setAppeared(bool appeared)
{
    if (HasEffect("setAppeared"))
        m_animator->setSecondState(appeared);
}

void DisappearingWidget::setDisappeared(bool disappeared)
{
    if (HasEffect("setDisappeared"))
        m_animator->setFirstState(disappeared);
}

void DisappearingWidget::appear()
{
    if (HasEffect("appear"))
        m_animator->setSecondState();
}

void DisappearingWidget::disappear()
{
    if (HasEffect("disappear"))
        m_animator->setFirstState();
}

void DisappearingWidget::ReportStateEntered(bool visible)
{
    const QString name = objectName().isEmpty() ? QString::fromLatin1(metaObject()->className()) : objectName();
    const QVariant opacity = visible ? m_animator->GetSecondValue() : m_animator->GetFirstValue();
    Q_EMIT DebugOutput(QStringLiteral("%1: %2 to opacity %3 in %4 ms")
                           .arg(name, visible ? QStringLiteral("appears") : QStringLiteral("disappears"))
                           .arg(opacity.toDouble())
                           .arg(m_animation->duration()));
}

} // namespace OrvantaQT
