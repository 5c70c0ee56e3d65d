#include <qt_halvo/animation/animated_effect.h>

#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

int BackwardOrForward(int backwardDuration, int forwardDuration)
{
    return backwardDuration >= 1 ? backwardDuration : forwardDuration;
}

} // namespace

AnimatedEffect::AnimatedEffect(QGraphicsEffect* effect, QObject* parent, bool stopAfterForward)
    : QObject(parent)
    , m_effect(effect)
    , m_animation(new QPropertyAnimation(this))
    , m_stopAfterForward(stopAfterForward)
{
    if (!effect)
        QTH_LOG_ERROR("AnimatedEffect: no graphics effect; playing it does nothing");
    else
        effect->setEnabled(false);
    connect(m_animation, &QAbstractAnimation::finished, this, &AnimatedEffect::OnAnimationFinished);
}

AnimatedEffect::~AnimatedEffect() = default;

void AnimatedEffect::SetAnimator(int forwardDuration, const QByteArray& propertyName, QVariant startValue,
                                 QVariant endValue, int backwardDuration)
{
    m_forwardDuration = forwardDuration;
    m_backwardDuration = backwardDuration;
    if (!m_animation)
        return;
    m_animation->setTargetObject(m_effect);
    m_animation->setPropertyName(propertyName);
    m_animation->setDuration(forwardDuration);
    m_animation->setStartValue(startValue);
    m_animation->setEndValue(endValue);
}

QGraphicsEffect* AnimatedEffect::GetEffect() const
{
    return m_effect;
}

void AnimatedEffect::PlayForward()
{
    Play(m_forwardDuration, QAbstractAnimation::Forward);
}

void AnimatedEffect::PlayBackward()
{
    Play(m_backwardDuration, QAbstractAnimation::Backward);
}

void AnimatedEffect::Play(int duration, QAbstractAnimation::Direction direction)
{
    if (!m_effect || !m_animation)
        return;
    // Qt ends a backward run of 1 ms at the wrong end, without finished(); 2 ms look the same.
    if (direction == QAbstractAnimation::Backward && duration == 1)
        duration = 2;
    const int oldDuration = m_animation->duration();
    const int oldTime = m_animation->currentTime();
    const bool running = m_animation->state() == QAbstractAnimation::Running;
    if (running && oldDuration > 0 && duration > 1 && duration != oldDuration) {
        // The two directions may take different times: keep the run's progress, so that it
        // turns round at the current value instead of jumping. Stay off the end it heads
        // for, which would finish it here. The new duration alone shows a wrong value for
        // a moment, which the effect keeps to itself.
        int time = qRound(static_cast<double>(oldTime) * duration / oldDuration);
        time = direction == QAbstractAnimation::Forward ? qMin(time, duration - 1) : qMax(time, 1);
        const QSignalBlocker quiet(m_effect.data());
        m_animation->setDirection(direction);
        m_animation->setDuration(duration);
        m_animation->setCurrentTime(time);
    } else {
        m_animation->setDirection(direction);
        m_animation->setDuration(duration);
    }
    m_effect->setEnabled(true);
    // Does nothing to a running animation, which keeps going from where it is.
    m_animation->start();
}

void AnimatedEffect::Stop()
{
    if (m_animation)
        m_animation->stop();
    if (m_effect)
        m_effect->setEnabled(false);
}

void AnimatedEffect::OnAnimationFinished()
{
    if (!m_effect || !m_animation)
        return;
    const bool finishedBackward = m_animation->currentValue() == m_animation->startValue();
    if (finishedBackward)
        Q_EMIT FinishedBackward();
    else
        Q_EMIT FinishedForward();
    // A receiver may have started a new run, which must go on.
    if (m_animation && m_animation->state() == QAbstractAnimation::Running)
        return;
    if (finishedBackward || m_stopAfterForward)
        Stop();
}

AnimatedOpacityEffect::AnimatedOpacityEffect(QWidget* widget, int duration, double startValue, double endValue,
                                             QObject* parent, int backwardDuration, bool stopAfterForward)
    : AnimatedEffect(widget ? new QGraphicsOpacityEffect(widget) : nullptr, parent, stopAfterForward)
{
    if (!widget) {
        QTH_LOG_ERROR("AnimatedOpacityEffect: no widget to fade; it does nothing");
        return;
    }
    SetAnimator(duration, "opacity", startValue, endValue, BackwardOrForward(backwardDuration, duration));
    widget->setGraphicsEffect(GetEffect());
}

AnimatedBlurEffect::AnimatedBlurEffect(QWidget* widget, int duration, double startValue, double endValue,
                                       QObject* parent, int backwardDuration, bool stopAfterForward,
                                       QWidget* foreground)
    : AnimatedEffect(widget ? new GraphicsBackgroundBlurEffect(widget, foreground) : nullptr, parent,
                     stopAfterForward)
{
    if (!widget) {
        QTH_LOG_ERROR("AnimatedBlurEffect: no widget to blur; it does nothing");
        return;
    }
    auto* effect = static_cast<QGraphicsBlurEffect*>(GetEffect());
    effect->setBlurHints(QGraphicsBlurEffect::AnimationHint);
    SetAnimator(duration, "blurRadius", startValue, endValue, BackwardOrForward(backwardDuration, duration));
    widget->setGraphicsEffect(effect);
}

} // namespace OrvantaQT
