#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace OrvantaQT {

class AnimatedBlurEffect;
class OpacityAnimationController;

// Shows an overlay over a container while the mouse hovers a watched widget (which needs
// Qt::WA_Hover to report hovering): the container can blur, keeping a foreground widget
// sharp, and the overlay can fade in and out. The watched widget shows a pointing hand
// meanwhile. Disabling the watched widget ends a hover at once, without fading.
class QT_HALVO_EXPORT OverlayHoverController : public QObject
{
    Q_OBJECT

public:
    enum Effect : unsigned { BlurContainer = 1, FadeOverlay = 2, ShowOverlay = 4 };

    OverlayHoverController(QWidget* watched, QWidget* container, QWidget* overlay, QWidget* foreground, QObject* parent,
                           unsigned effects);
    ~OverlayHoverController() override;

    void SetEffects(unsigned effects);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void StartHovering();
    void StopHovering();
    void CancelHover();

    QPointer<QWidget> m_watched;
    QPointer<QWidget> m_overlay;
    AnimatedBlurEffect* m_blur = nullptr;
    int m_blurDuration = 400;
    int m_blurBackwardDuration = 125;
    double m_blurStartRadius = 1.0;
    double m_blurEndRadius = 20.0;
    OpacityAnimationController* m_fade = nullptr; // a child
    int m_fadeDuration = 250;
    int m_fadeBackwardDuration = 250;
    double m_fadeStartOpacity = 0.0;
    double m_fadeEndOpacity = 0.8;
    unsigned m_effects;
};

} // namespace OrvantaQT
