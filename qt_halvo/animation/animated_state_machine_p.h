// The state machine of an animated widget: named states that remember the property
// values they assign, transitions on the widget's trigger signals that carry its
// animations, and requests that before the machine runs (it starts on the next pass of
// the event loop) put the wanted state's values in place at once and start there.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <functional>
#include <initializer_list>

class QAbstractAnimation;
class QState;
class QStateMachine;

namespace OrvantaQT {

class QT_HALVO_AUTOTEST_EXPORT AnimatedStateMachine
{
public:
    struct Assignment
    {
        QPointer<QObject> target;
        QByteArray property;
        QVariant value;
    };

    // The machine is a child of owner.
    explicit AnimatedStateMachine(QObject* owner);

    QStateMachine* Machine() const { return m_machine; }

    // A state named objectName, owned by the machine, that assigns these values.
    QState* AddState(const char* objectName, std::initializer_list<Assignment> assignments = {});

    // Assigns value when the state is entered from now on (replacing an earlier value for
    // the same target and property); the target itself is not touched.
    void SetAssignment(QState* state, const Assignment& assignment);

    // From `from` to `to` when sender emits signal (a SIGNAL() string), animated by
    // animations (may be empty).
    void AddTransition(QState* from, QObject* sender, const char* signal, QState* to,
                       std::initializer_list<QAbstractAnimation*> animations = {});

    // From `from` to `to` as soon as `from` is entered.
    void AddImmediateTransition(QState* from, QState* to);

    // Calls the owner's enteredSlot and exitedSlot (SLOT() strings; null for none) when
    // the state is entered and left.
    void Notify(QState* state, QObject* receiver, const char* enteredSlot, const char* exitedSlot);

    // Whether the machine's current configuration holds any of these states.
    bool IsInAnyOf(std::initializer_list<QState*> states) const;

    // Starts the machine in `initial`; it runs from the next pass of the event loop.
    void Start(QState* initial);

    // Asks for `state`: through trigger() when the machine runs (a request that does not
    // fit the current state is then ignored by the machine); before that, by assigning
    // the state's values at once and making it the state the machine starts in.
    void Request(QState* state, const std::function<void()>& trigger);

private:
    struct StateAssignments
    {
        QState* state;
        QVector<Assignment> assignments;
    };
    StateAssignments& AssignmentsOf(QState* state);

    QStateMachine* m_machine;
    QVector<StateAssignments> m_states;
};

} // namespace OrvantaQT
