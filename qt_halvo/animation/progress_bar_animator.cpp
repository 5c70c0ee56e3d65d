#include <qt_halvo/animation/progress_bar_animator.h>

#include "widget_animations_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QProgressBar>

namespace OrvantaQT {

ProgressBarAnimator::ProgressBarAnimator(QProgressBar* bar)
    : QObject(bar)
    , m_bar(bar)
{
    if (!bar) {
        QTH_LOG_ERROR("ProgressBarAnimator: no progress bar to drive; it does nothing");
        return;
    }
    m_animation = new QPropertyAnimation(bar, "value", this);
    m_animation->setDuration(400);
    m_animation->setEasingCurve(QEasingCurve::OutCubic);
}

ProgressBarAnimator::~ProgressBarAnimator() = default;

int ProgressBarAnimator::GetValue() const
{
    if (!m_bar)
        return 0;
    if (m_busy)
        return m_valueAfterBusy;
    // A reset bar reads one below its minimum.
    return IsAnimating() ? m_animation->endValue().toInt() : qMax(m_bar->value(), m_bar->minimum());
}

bool ProgressBarAnimator::IsBusy() const
{
    return m_busy;
}

int ProgressBarAnimator::GetDuration() const
{
    return m_animation ? m_animation->duration() : 0;
}

void ProgressBarAnimator::SetDuration(int duration)
{
    if (duration < 0) {
        QTH_LOG_WARNING("ProgressBarAnimator: a negative duration (%d ms) is ignored", duration);
        return;
    }
    if (m_animation)
        m_animation->setDuration(duration);
}

QEasingCurve ProgressBarAnimator::GetEasing() const
{
    return m_animation ? m_animation->easingCurve() : QEasingCurve();
}

void ProgressBarAnimator::SetEasing(const QEasingCurve& easing)
{
    if (m_animation)
        m_animation->setEasingCurve(easing);
}

bool ProgressBarAnimator::IsAnimating() const
{
    return m_animation && m_animation->state() == QAbstractAnimation::Running;
}

void ProgressBarAnimator::SetValue(int value)
{
    if (!m_bar)
        return;
    const int minimum = m_busy ? m_minimum : m_bar->minimum();
    const int maximum = m_busy ? m_maximum : m_bar->maximum();
    const int bounded = qBound(minimum, value, maximum);
    if (bounded != value)
        QTH_LOG_WARNING("ProgressBarAnimator: %d is outside the bar's range %d..%d; %d is shown", value, minimum,
                        maximum, bounded);
    if (m_busy) {
        m_valueAfterBusy = bounded;
        return;
    }
    // Already there, or on the way there.
    if (IsAnimating() ? m_animation->endValue().toInt() == bounded : m_bar->value() == bounded)
        return;
    const int from = qMax(m_bar->value(), m_bar->minimum());
    m_animation->stop();
    if (from == bounded || m_animation->duration() == 0 || !WidgetAnimationsEnabled(m_bar)) {
        m_bar->setValue(bounded);
        return;
    }
    m_animation->setStartValue(from);
    m_animation->setEndValue(bounded);
    m_animation->start();
}

void ProgressBarAnimator::SetBusy(bool busy)
{
    if (!m_bar || busy == m_busy)
        return;
    if (busy) {
        m_valueAfterBusy = GetValue();
        m_busy = true;
        m_animation->stop();
        m_minimum = m_bar->minimum();
        m_maximum = m_bar->maximum();
        m_bar->setRange(0, 0);
        return;
    }
    m_busy = false;
    // A range the host set meanwhile stays.
    if (m_bar->minimum() == 0 && m_bar->maximum() == 0)
        m_bar->setRange(m_minimum, m_maximum);
    m_bar->setValue(qBound(m_bar->minimum(), m_valueAfterBusy, m_bar->maximum()));
}

} // namespace OrvantaQT
