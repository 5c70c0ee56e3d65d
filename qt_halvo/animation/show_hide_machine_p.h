// The four states of a widget that is shown and hidden with an animation: "HiddenState",
// "ShowingState", "ShownState" and "HidingState". The owner's DoShow() and DoHide()
// signals are the triggers; a moving state ends when the sender of `Ends` emits its
// signal, or, without a sender, when the state's properties have been assigned. The owner's
// slots OnShowingEntered(), OnShownEntered(), OnShownExited(), OnHidingEntered(),
// OnHiddenEntered() and OnHiddenExited() are called as the states change.
#pragma once

#include "animated_state_machine_p.h"

class QAbstractAnimation;

namespace OrvantaQT {

class ShowHideMachine
{
public:
    struct Ends
    {
        QObject* sender = nullptr;
        const char* shown = nullptr;  // SIGNAL() that ends the showing state
        const char* hidden = nullptr; // and the hiding state
    };

    // The showing and shown states assign shownValues, the hiding and hidden ones
    // hiddenValues; the animation, if any, carries every change between them.
    ShowHideMachine(QObject* owner, QAbstractAnimation* animation, const Ends& ends,
                    const QVector<AnimatedStateMachine::Assignment>& shownValues,
                    const QVector<AnimatedStateMachine::Assignment>& hiddenValues);

    // Asks for the shown or the hidden state (see AnimatedStateMachine::Request).
    void Request(bool shown);
    bool IsShown() const;

private:
    QObject* m_owner;
    AnimatedStateMachine m_machine;
    QState* m_hidden;
    QState* m_showing;
    QState* m_shown;
    QState* m_hiding;
};

} // namespace OrvantaQT
