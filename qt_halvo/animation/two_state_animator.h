#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <memory>

class QPropertyAnimation;
class QState;
class QWidget;

namespace OrvantaQT {

class AnimatedStateMachine;

// Keeps one property of one object at one of two values and animates every change
// between them with the given animation, which names the object and the property.
// Before the event loop has run, a request sets the value at once, without animation;
// a request during an animation turns it round from the property's current value.
class QT_HALVO_EXPORT TwoStateAnimator : public QObject
{
    Q_OBJECT

public:
    // The animation is not owned and must outlive the animator.
    TwoStateAnimator(QPropertyAnimation* animation, const QVariant& first, const QVariant& second, QWidget* parent);
    ~TwoStateAnimator() override;

    QVariant GetFirstValue() const;
    QVariant GetSecondValue() const;

public Q_SLOTS:
    void setFirstState();
    void setFirstState(bool newValue);
    void setSecondState();
    void setSecondState(bool newValue);
    // The new value shows the next time the state is entered.
    void setFirstValue(const QVariant& value);
    void setSecondValue(const QVariant& value);

Q_SIGNALS:
    // (false) when the state is left; () and then (true) when it is entered, which is when
    // the animation towards it starts.
    void SecondStateEntered(bool isSecondState);
    void SecondStateEntered();
    void FirstStateEntered(bool isFirstState);
    void FirstStateEntered();
    // The transition triggers: emitting one is asking for that state.
    void EnterSecondState();
    void EnterFirstState();

protected Q_SLOTS:
    void OnSecondStateEntered();
    void OnSecondStateExited();
    void OnFirstStateEntered();
    void OnFirstStateExited();

private:
    QPropertyAnimation* m_animation;
    QVariant m_firstValue;
    QVariant m_secondValue;
    std::unique_ptr<AnimatedStateMachine> m_machine;
    QState* m_firstState = nullptr;
    QState* m_secondState = nullptr;
};

} // namespace OrvantaQT
