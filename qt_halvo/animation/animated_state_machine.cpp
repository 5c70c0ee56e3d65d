#include "animated_state_machine_p.h"

#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include <QtCore/QAbstractAnimation>
#include <QtCore/QSignalTransition>
#include <QtCore/QState>
#include <QtCore/QStateMachine>

#include <algorithm>

namespace OrvantaQT {

AnimatedStateMachine::AnimatedStateMachine(QObject* owner)
    : m_machine(new QStateMachine(owner))
{
    if (StateMachineTracer::TracingRequested())
        new StateMachineTracer(m_machine, m_machine);
}

QState* AnimatedStateMachine::AddState(const char* objectName, std::initializer_list<Assignment> assignments)
{
    auto* state = new QState;
    state->setObjectName(QLatin1String(objectName));
    m_machine->addState(state);
    m_states.append(StateAssignments{state, {}});
    for (const Assignment& assignment : assignments)
        SetAssignment(state, assignment);
    return state;
}

AnimatedStateMachine::StateAssignments& AnimatedStateMachine::AssignmentsOf(QState* state)
{
    for (StateAssignments& entry : m_states) {
        if (entry.state == state)
            return entry;
    }
    m_states.append(StateAssignments{state, {}});
    return m_states.last();
}

void AnimatedStateMachine::SetAssignment(QState* state, const Assignment& assignment)
{
    QVector<Assignment>& assignments = AssignmentsOf(state).assignments;
    const auto same = [&assignment](const Assignment& other) {
        return other.target == assignment.target && other.property == assignment.property;
    };
    assignments.erase(std::remove_if(assignments.begin(), assignments.end(), same), assignments.end());
    assignments.append(assignment);
    state->assignProperty(assignment.target, assignment.property.constData(), assignment.value);
}

void AnimatedStateMachine::AddTransition(QState* from, QObject* sender, const char* signal, QState* to,
                                         std::initializer_list<QAbstractAnimation*> animations)
{
    QSignalTransition* transition = from->addTransition(sender, signal, to);
    for (QAbstractAnimation* animation : animations)
        transition->addAnimation(animation);
}

void AnimatedStateMachine::AddImmediateTransition(QState* from, QState* to)
{
    from->addTransition(to);
}

void AnimatedStateMachine::Notify(QState* state, QObject* receiver, const char* enteredSlot, const char* exitedSlot)
{
    if (enteredSlot)
        QObject::connect(state, SIGNAL(entered()), receiver, enteredSlot);
    if (exitedSlot)
        QObject::connect(state, SIGNAL(exited()), receiver, exitedSlot);
}

bool AnimatedStateMachine::IsInAnyOf(std::initializer_list<QState*> states) const
{
    const QSet<QAbstractState*> configuration = m_machine->configuration();
    return std::any_of(states.begin(), states.end(),
                       [&configuration](QState* state) { return state && configuration.contains(state); });
}

void AnimatedStateMachine::Start(QState* initial)
{
    m_machine->setInitialState(initial);
    m_machine->start();
}

void AnimatedStateMachine::Request(QState* state, const std::function<void()>& trigger)
{
    if (m_machine->isRunning()) {
        trigger();
        return;
    }
    for (const Assignment& assignment : AssignmentsOf(state).assignments) {
        if (assignment.target)
            assignment.target->setProperty(assignment.property.constData(), assignment.value);
    }
    Start(state);
}

} // namespace OrvantaQT
