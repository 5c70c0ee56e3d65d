#include <qt_halvo/animation/opacity_animation_controller.h>

#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtWidgets/QWidget>

namespace OrvantaQT {

OpacityAnimationController::OpacityAnimationController(QWidget* widget, int duration, double startValue,
                                                       double endValue, int backwardDuration, QObject* parent,
                                                       bool stopAfterForward)
    : QObject(parent)
    , m_widget(widget)
{
    if (!widget) {
        QTH_LOG_ERROR("OpacityAnimationController: no widget to show and hide; it does nothing");
        return;
    }
    m_effect = new AnimatedOpacityEffect(widget, duration, startValue, endValue, this, backwardDuration,
                                         stopAfterForward);
    connect(m_effect, &AnimatedEffect::FinishedBackward, this, [this] {
        if (m_widget)
            m_widget->hide();
    });
}

OpacityAnimationController::~OpacityAnimationController() = default;

void OpacityAnimationController::ShowAnimated()
{
    if (m_widget)
        m_widget->show();
    if (m_effect)
        m_effect->PlayForward();
}

void OpacityAnimationController::HideAnimated()
{
    if (m_effect)
        m_effect->PlayBackward();
}

void OpacityAnimationController::StopAnimation()
{
    if (m_effect)
        m_effect->Stop();
}

} // namespace OrvantaQT
