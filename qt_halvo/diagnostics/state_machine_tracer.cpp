#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include <QtCore/QStateMachine>

namespace OrvantaQT {

struct StateMachineTracer::Private
{
    QPointer<QStateMachine> machine;
    QVector<Transition> history;
    bool logging = true;
};

StateMachineTracer::StateMachineTracer(QStateMachine* machine, QObject* parent) : QObject(parent), d(new Private)
{
    d->machine = machine;
}

StateMachineTracer::~StateMachineTracer() { delete d; }
QStateMachine* StateMachineTracer::Machine() const { return d->machine; }
QVector<StateMachineTracer::Transition> StateMachineTracer::History() const { return d->history; }
void StateMachineTracer::ClearHistory() { d->history.clear(); }
bool StateMachineTracer::IsLogging() const { return d->logging; }
void StateMachineTracer::SetLogging(bool logging) { d->logging = logging; }
QString StateMachineTracer::StructureText() const { return QString(); }
QString StateMachineTracer::StructureDot() const { return QString(); }
bool StateMachineTracer::TracingRequested() { return false; }

} // namespace OrvantaQT
