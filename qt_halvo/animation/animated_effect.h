#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QAbstractAnimation>
#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVariant>

class QGraphicsEffect;
class QPropertyAnimation;
class QWidget;

namespace OrvantaQT {

// A graphics effect on a widget and an animation of one of its properties, played
// forwards (start value to end value) or backwards. The effect is switched off whenever
// it is not needed: at rest, and after every backward run; after a forward run it stays
// on and holds the end value, unless it was made to stop after forward runs too.
// A play call during a run turns the run round from the property's current value, also
// when the two directions take different times. A receiver of FinishedForward() or
// FinishedBackward() may start a new run; it may delete this object only with deleteLater().
class QT_HALVO_EXPORT AnimatedEffect : public QObject
{
    Q_OBJECT

public:
    ~AnimatedEffect() override;

    void PlayForward();
    void PlayBackward();
    // Stops a run where it is and switches the effect off.
    void Stop();

Q_SIGNALS:
    void FinishedForward();
    void FinishedBackward();

protected:
    // The effect is owned by its widget; it is switched off here.
    AnimatedEffect(QGraphicsEffect* effect, QObject* parent, bool stopAfterForward);

    // The effect's property to animate, and the durations of each direction in ms.
    void SetAnimator(int forwardDuration, const QByteArray& propertyName, QVariant startValue, QVariant endValue,
                     int backwardDuration);

    // The effect, or null once its widget has deleted it.
    QGraphicsEffect* GetEffect() const;

private Q_SLOTS:
    void OnAnimationFinished();

private:
    void Play(int duration, QAbstractAnimation::Direction direction);

    QPointer<QGraphicsEffect> m_effect;
    QPointer<QPropertyAnimation> m_animation;
    int m_forwardDuration = 100;
    int m_backwardDuration = 100;
    bool m_stopAfterForward = false;
};

// Fades a widget through a QGraphicsOpacityEffect put on it. A backward duration below 1
// means the forward duration.
class QT_HALVO_EXPORT AnimatedOpacityEffect : public AnimatedEffect
{
    Q_OBJECT

public:
    AnimatedOpacityEffect(QWidget* widget, int duration, double startValue, double endValue, QObject* parent,
                          int backwardDuration, bool stopAfterForward);
};

// Blurs a widget by animating the blur radius of a GraphicsBackgroundBlurEffect put on
// it; the foreground widget, if any, stays sharp. A backward duration below 1 means the
// forward duration.
class QT_HALVO_EXPORT AnimatedBlurEffect : public AnimatedEffect
{
    Q_OBJECT

public:
    AnimatedBlurEffect(QWidget* widget, int duration, double startValue, double endValue, QObject* parent,
                       int backwardDuration, bool stopAfterForward, QWidget* foreground);
};

} // namespace OrvantaQT
