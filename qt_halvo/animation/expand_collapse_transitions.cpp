#include "expand_collapse_transitions_p.h"

#include "animated_state_machine_p.h"

#include <QtCore/QState>

namespace OrvantaQT {

void AddExpandCollapseTransitions(AnimatedStateMachine& machine, QObject* owner, const ExpandCollapseStates& states)
{
    QState* const initial = states.initial;
    QState* const opened = states.opened;
    QState* const opening = states.opening;
    QState* const closing = states.closing;
    QState* const closed = states.closed;

    machine.AddTransition(initial, owner, SIGNAL(DoHide()), closed);
    machine.AddTransition(initial, owner, SIGNAL(DoShow()), opened);
    machine.AddTransition(opening, owner, SIGNAL(DoCollapse()), closing);
    machine.AddTransition(opening, opening, SIGNAL(propertiesAssigned()), opened);
    machine.AddTransition(opening, owner, SIGNAL(DoHide()), closed);
    machine.AddTransition(opening, owner, SIGNAL(DoShow()), opened);
    machine.AddTransition(closing, owner, SIGNAL(DoExpand()), opening);
    machine.AddTransition(closing, closing, SIGNAL(propertiesAssigned()), closed);
    machine.AddTransition(closing, owner, SIGNAL(DoHide()), closed);
    machine.AddTransition(closing, owner, SIGNAL(DoShow()), opened);
    machine.AddTransition(opened, owner, SIGNAL(DoCollapse()), states.openedAfter ? states.openedAfter : closing);
    machine.AddTransition(opened, owner, SIGNAL(DoHide()), closed);
    if (states.openedAfter)
        machine.AddImmediateTransition(states.openedAfter, closing);
    machine.AddTransition(closed, owner, SIGNAL(DoExpand()), states.closedAfter);
    machine.AddTransition(closed, owner, SIGNAL(DoShow()), opened);
    machine.AddImmediateTransition(states.closedAfter, opening);
    // Reversal from a rest state goes straight to the moving state, past the
    // pass-through states that DoCollapse() and DoExpand() take.
    machine.AddTransition(opening, owner, SIGNAL(ReverseState()), closing);
    machine.AddTransition(closing, owner, SIGNAL(ReverseState()), opening);
    machine.AddTransition(opened, owner, SIGNAL(ReverseState()), closing);
    machine.AddTransition(closed, owner, SIGNAL(ReverseState()), opening);

    machine.Notify(closed, owner, SLOT(OnClosedStateEntered()), SLOT(OnClosedStateExited()));
    machine.Notify(opened, owner, SLOT(OnOpenedStateEntered()), SLOT(OnOpenedStateExited()));
    machine.Notify(initial, owner, SLOT(OnInitialStateEntered()), nullptr);
}

} // namespace OrvantaQT
