// The machine shared by the widgets that open and close with an animation (the
// collapsing pane, the card): rest states "OpenedState" and "ClosedState", moving states
// "OpeningState" and "ClosingState" that end when their values are in place, and
// pass-through states on the way out of a rest state.
#pragma once

class QObject;
class QState;

namespace OrvantaQT {

class AnimatedStateMachine;

struct ExpandCollapseStates
{
    QState* initial = nullptr;
    QState* opened = nullptr;
    QState* opening = nullptr;
    // Between opened and closing on DoCollapse(); may be null, and DoCollapse() then
    // goes straight to closing.
    QState* openedAfter = nullptr;
    QState* closing = nullptr;
    QState* closed = nullptr;
    QState* closedAfter = nullptr;
};

// Adds the transitions on the owner's DoHide(), DoShow(), DoCollapse(), DoExpand() and
// ReverseState() signals, in the order the machine gives them precedence, and connects
// the initial and rest states to the owner's On<State>Entered/Exited slots.
void AddExpandCollapseTransitions(AnimatedStateMachine& machine, QObject* owner, const ExpandCollapseStates& states);

} // namespace OrvantaQT
