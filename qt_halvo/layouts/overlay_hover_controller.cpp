#include <qt_halvo/layouts/overlay_hover_controller.h>

#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/opacity_animation_controller.h>
#include <qt_halvo/layouts/overlay_simple_controller.h>

#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

OverlayHoverController::OverlayHoverController(QWidget* watched, QWidget* container, QWidget* overlay,
                                               QWidget* foreground, QObject* parent, unsigned effects)
    : QObject(parent)
    , m_watched(watched)
    , m_overlay(overlay)
    , m_effects(effects)
{
    if (overlay)
        overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (watched)
        watched->installEventFilter(this);
    new OverlaySimpleController(container, overlay, this, nullptr, QPoint(0, 0), OverlaySimpleController::AnchorPosition);
    if (overlay)
        overlay->hide();
    m_blur = new AnimatedBlurEffect(container, m_blurDuration, m_blurStartRadius, m_blurEndRadius, this,
                                    m_blurBackwardDuration, false, foreground);
    m_fade = new OpacityAnimationController(overlay, m_fadeDuration, m_fadeStartOpacity, m_fadeEndOpacity,
                                            m_fadeBackwardDuration, this, true);
}

OverlayHoverController::~OverlayHoverController() = default;

void OverlayHoverController::SetEffects(unsigned effects)
{
    m_effects = effects;
    if (!(effects & BlurContainer))
        m_blur->Stop();
    if (!(effects & FadeOverlay))
        m_fade->StopAnimation();
    if (!(effects & ShowOverlay) && m_overlay && m_overlay->isVisible())
        m_overlay->hide();
}

bool OverlayHoverController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_watched || !m_watched)
        return QObject::eventFilter(watched, event);
    if (m_watched->isEnabled()) {
        if (event->type() == QEvent::HoverEnter)
            StartHovering();
        else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::FocusOut)
            StopHovering();
    } else if (event->type() == QEvent::EnabledChange) {
        CancelHover();
    }
    return QObject::eventFilter(watched, event);
}

void OverlayHoverController::StartHovering()
{
    if ((m_effects & ShowOverlay) && m_overlay) {
        if (m_effects & FadeOverlay)
            m_fade->ShowAnimated();
        else
            m_overlay->show();
    }
    m_watched->setCursor(Qt::PointingHandCursor);
    if (m_effects & BlurContainer)
        m_blur->PlayForward();
}

void OverlayHoverController::StopHovering()
{
    if (m_effects & BlurContainer)
        m_blur->PlayBackward();
    m_watched->unsetCursor();
    if ((m_effects & ShowOverlay) && m_overlay) {
        if (m_effects & FadeOverlay)
            m_fade->HideAnimated();
        else
            m_overlay->hide();
    }
}

void OverlayHoverController::CancelHover()
{
    if (!m_overlay || !m_overlay->isVisible())
        return;
    m_blur->Stop();
    m_fade->StopAnimation(); // no fade-out, and no fade-in still under way either
    m_watched->unsetCursor();
    m_overlay->hide();
}

} // namespace OrvantaQT
