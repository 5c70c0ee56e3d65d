// Records the transitions of a QStateMachine as they happen: which machine, from which
// state to which, on what, and when; logs each at information level, keeps the history,
// and writes the machine's structure as text or as a Graphviz DOT document.
#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVector>

class QStateMachine;

namespace OrvantaQT {

class QT_HALVO_EXPORT StateMachineTracer : public QObject
{
    Q_OBJECT

public:
    struct Transition
    {
        QString machine;  // the machine's object name, or its class and address
        QString owner;    // the class of the machine's parent, if any
        QString source;   // the source state's object name, or its class and address
        QStringList targets;
        // The sender's signal ("clicked()"), "propertiesAssigned" or "immediate"; the event
        // type of a QEventTransition ("MouseButtonPress"), else the transition's class.
        QString trigger;
        QDateTime time;
    };

    // Follows machine from now on, whether it runs already or not; states and transitions
    // added later are followed too. A null machine is logged and traces nothing.
    explicit StateMachineTracer(QStateMachine* machine, QObject* parent = nullptr);
    ~StateMachineTracer() override;

    QStateMachine* Machine() const;
    // The transitions traced so far, oldest first; the latest 10000 at most.
    QVector<Transition> History() const;
    void ClearHistory();

    // Whether each transition also goes to the library's log (on by default).
    bool IsLogging() const;
    void SetLogging(bool logging);

    // The machine's states (nested and parallel ones indented) and transitions as text.
    QString StructureText() const;
    // The same as a Graphviz DOT document.
    QString StructureDot() const;

    // Whether QT_HALVO_TRACE_STATE_MACHINES=1 asks for a tracer on every machine the
    // library makes; read once.
    static bool TracingRequested();

Q_SIGNALS:
    void TransitionTraced(const OrvantaQT::StateMachineTracer::Transition& transition);

protected:
    // Follows the states and transitions added to the machine's states; consumes nothing.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
