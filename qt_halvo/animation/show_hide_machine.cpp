#include "show_hide_machine_p.h"

#include <QtCore/QMetaObject>
#include <QtCore/QState>

namespace OrvantaQT {

namespace {

QState* AddState(AnimatedStateMachine& machine, const char* name,
                 const QVector<AnimatedStateMachine::Assignment>& values)
{
    QState* state = machine.AddState(name);
    for (const AnimatedStateMachine::Assignment& value : values)
        machine.SetAssignment(state, value);
    return state;
}

} // namespace

ShowHideMachine::ShowHideMachine(QObject* owner, QAbstractAnimation* animation, const Ends& ends,
                                 const QVector<AnimatedStateMachine::Assignment>& shownValues,
                                 const QVector<AnimatedStateMachine::Assignment>& hiddenValues)
    : m_owner(owner)
    , m_machine(owner)
    , m_hidden(AddState(m_machine, "HiddenState", hiddenValues))
    , m_showing(AddState(m_machine, "ShowingState", shownValues))
    , m_shown(AddState(m_machine, "ShownState", shownValues))
    , m_hiding(AddState(m_machine, "HidingState", hiddenValues))
{
    const auto addTransition = [this, owner, animation](QState* from, const char* signal, QState* to) {
        if (animation)
            m_machine.AddTransition(from, owner, signal, to, {animation});
        else
            m_machine.AddTransition(from, owner, signal, to);
    };
    // An opposite request while moving turns round from where the animation is.
    for (QState* from : {m_hidden, m_hiding})
        addTransition(from, SIGNAL(DoShow()), m_showing);
    for (QState* from : {m_shown, m_showing})
        addTransition(from, SIGNAL(DoHide()), m_hiding);
    if (ends.sender) {
        m_machine.AddTransition(m_showing, ends.sender, ends.shown, m_shown);
        m_machine.AddTransition(m_hiding, ends.sender, ends.hidden, m_hidden);
    } else {
        m_machine.AddTransition(m_showing, m_showing, SIGNAL(propertiesAssigned()), m_shown);
        m_machine.AddTransition(m_hiding, m_hiding, SIGNAL(propertiesAssigned()), m_hidden);
    }
    m_machine.Notify(m_showing, owner, SLOT(OnShowingEntered()), nullptr);
    m_machine.Notify(m_shown, owner, SLOT(OnShownEntered()), SLOT(OnShownExited()));
    m_machine.Notify(m_hiding, owner, SLOT(OnHidingEntered()), nullptr);
    m_machine.Notify(m_hidden, owner, SLOT(OnHiddenEntered()), SLOT(OnHiddenExited()));
    m_machine.Start(m_hidden);
}

void ShowHideMachine::Request(bool shown)
{
    QObject* owner = m_owner;
    m_machine.Request(shown ? m_shown : m_hidden, [owner, shown] {
        QMetaObject::invokeMethod(owner, shown ? "DoShow" : "DoHide", Qt::DirectConnection);
    });
}

bool ShowHideMachine::IsShown() const
{
    return m_machine.IsInAnyOf({m_shown});
}

} // namespace OrvantaQT
