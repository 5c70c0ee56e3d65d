#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace OrvantaQT {

class AnimatedOpacityEffect;

// Shows a widget at once and fades it in, and fades it out before hiding it. The fade
// runs from startValue (hidden) to endValue (shown); a backward duration below 1 means
// the same duration both ways. With stopAfterForward the fade effect is switched off
// once the widget is fully shown.
class QT_HALVO_EXPORT OpacityAnimationController : public QObject
{
    Q_OBJECT

public:
    OpacityAnimationController(QWidget* widget, int duration, double startValue, double endValue,
                               int backwardDuration, QObject* parent, bool stopAfterForward);
    ~OpacityAnimationController() override;

    void ShowAnimated();
    // The widget is hidden when the fade-out has ended; showing it again before then
    // turns the fade round and keeps it.
    void HideAnimated();
    // Stops a fade where it is and switches the effect off; the widget keeps its visibility.
    void StopAnimation();

private:
    QPointer<AnimatedOpacityEffect> m_effect;
    QPointer<QWidget> m_widget;
};

} // namespace OrvantaQT
