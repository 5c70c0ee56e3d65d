#include <qt_halvo/animation/alpha_animation_controller.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

AlphaAnimationController::AlphaAnimationController(QWidget* parent, QColor color)
    : QObject(parent)
    , m_color(color)
    , m_endAlpha(color.isValid() ? color.alpha() : 0)
    // A child of the controller, so that it goes with it (and with the parent widget).
    , m_animation(new QPropertyAnimation(this, "alpha", this))
{
    if (!parent)
        QTH_LOG_ERROR("AlphaAnimationController: no parent widget; there is no background to fade");
    if (!color.isValid())
        QTH_LOG_ERROR("AlphaAnimationController: invalid colour; the parent's style sheet is left alone");
    m_animation->setDuration(m_duration);
    m_animation->setStartValue(m_startAlpha);
    m_animation->setEndValue(m_endAlpha);
    m_animation->setEasingCurve(m_easing);
    setAlpha(0);
}

AlphaAnimationController::~AlphaAnimationController() = default;

int AlphaAnimationController::alpha() const
{
    return m_alpha;
}

void AlphaAnimationController::setAlpha(int alpha)
{
    if (alpha < 0 || alpha > 255) {
        QTH_LOG_ERROR("AlphaAnimationController: alpha %d is outside 0..255 and is ignored", alpha);
        return;
    }
    m_alpha = alpha;
    auto* widget = qobject_cast<QWidget*>(parent());
    if (!widget || !m_color.isValid())
        return;
    widget->setStyleSheet(QStringLiteral("background-color: rgb(%1,%2,%3,%4);")
                              .arg(m_color.red())
                              .arg(m_color.green())
                              .arg(m_color.blue())
                              .arg(alpha));
}

void AlphaAnimationController::Start()
{
    m_animation->start(QAbstractAnimation::KeepWhenStopped);
}

} // namespace OrvantaQT
