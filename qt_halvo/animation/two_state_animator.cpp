#include <qt_halvo/animation/two_state_animator.h>

#include "animated_state_machine_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPropertyAnimation>
#include <QtCore/QState>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

TwoStateAnimator::TwoStateAnimator(QPropertyAnimation* animation, const QVariant& first, const QVariant& second,
                                   QWidget* parent)
    : QObject(parent)
    , m_animation(animation)
    , m_firstValue(first)
    , m_secondValue(second)
{
    if (!animation || !animation->targetObject()) {
        QTH_LOG_ERROR("TwoStateAnimator: no animation or no animated object; the animator does nothing");
        return;
    }
    m_machine = std::make_unique<AnimatedStateMachine>(this);
    QObject* target = animation->targetObject();
    const QByteArray property = animation->propertyName();
    m_firstState = m_machine->AddState("FirstState", {{target, property, first}});
    m_secondState = m_machine->AddState("SecondState", {{target, property, second}});
    m_machine->AddTransition(m_firstState, this, SIGNAL(EnterSecondState()), m_secondState, {animation});
    m_machine->AddTransition(m_secondState, this, SIGNAL(EnterFirstState()), m_firstState, {animation});
    m_machine->Notify(m_secondState, this, SLOT(OnSecondStateEntered()), SLOT(OnSecondStateExited()));
    m_machine->Notify(m_firstState, this, SLOT(OnFirstStateEntered()), SLOT(OnFirstStateExited()));
    m_machine->Start(m_firstState);
}

TwoStateAnimator::~TwoStateAnimator() = default;

QVariant TwoStateAnimator::GetFirstValue() const
{
    return m_firstValue;
}

QVariant TwoStateAnimator::GetSecondValue() const
{
    return m_secondValue;
}

void TwoStateAnimator::setFirstState()
{
    setFirstState(true);
}

void TwoStateAnimator::setFirstState(bool newValue)
{
    if (!m_machine)
        return;
    if (newValue)
        m_machine->Request(m_firstState, [this] { Q_EMIT EnterFirstState(); });
    else
        m_machine->Request(m_secondState, [this] { Q_EMIT EnterSecondState(); });
}

void TwoStateAnimator::setSecondState()
{
    setFirstState(false);
}

void TwoStateAnimator::setSecondState(bool newValue)
{
    setFirstState(!newValue);
}

void TwoStateAnimator::setFirstValue(const QVariant& value)
{
    m_firstValue = value;
    if (m_machine)
        m_machine->SetAssignment(m_firstState, {m_animation->targetObject(), m_animation->propertyName(), value});
}

void TwoStateAnimator::setSecondValue(const QVariant& value)
{
    m_secondValue = value;
    if (m_machine)
        m_machine->SetAssignment(m_secondState, {m_animation->targetObject(), m_animation->propertyName(), value});
}

void TwoStateAnimator::OnSecondStateEntered()
{
    Q_EMIT SecondStateEntered();
    Q_EMIT SecondStateEntered(true);
}

void TwoStateAnimator::OnSecondStateExited()
{
    Q_EMIT SecondStateEntered(false);
}

void TwoStateAnimator::OnFirstStateEntered()
{
    Q_EMIT FirstStateEntered();
    Q_EMIT FirstStateEntered(true);
}

void TwoStateAnimator::OnFirstStateExited()
{
    Q_EMIT FirstStateEntered(false);
}

} // namespace OrvantaQT
