#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QAbstractTransition>
#include <QtCore/QChildEvent>
#include <QtCore/QEventTransition>
#include <QtCore/QFinalState>
#include <QtCore/QHash>
#include <QtCore/QHistoryState>
#include <QtCore/QList>
#include <QtCore/QMetaEnum>
#include <QtCore/QSignalTransition>
#include <QtCore/QState>
#include <QtCore/QStateMachine>

#include <utility>

namespace OrvantaQT {

namespace {

// A machine left traced for hours must not grow without bound.
constexpr int HistoryLimit = 10000;

QString NameOf(const QObject* object)
{
    if (!object)
        return QString();
    if (!object->objectName().isEmpty())
        return object->objectName();
    return QStringLiteral("%1(0x%2)")
        .arg(QLatin1String(object->metaObject()->className()))
        .arg(quintptr(object), 0, 16);
}

QString TriggerOf(const QAbstractTransition* transition)
{
    if (const auto* signalTransition = qobject_cast<const QSignalTransition*>(transition)) {
        QByteArray signal = signalTransition->signal();
        // SIGNAL() marks its text with a leading '2'; method names never start with a digit.
        if (signal.startsWith('2'))
            signal.remove(0, 1);
        if (signal == "propertiesAssigned()" && qobject_cast<const QState*>(signalTransition->senderObject()))
            return QStringLiteral("propertiesAssigned");
        return QString::fromLatin1(signal);
    }
    if (const auto* eventTransition = qobject_cast<const QEventTransition*>(transition)) {
        const int type = eventTransition->eventType();
        const char* key = QMetaEnum::fromType<QEvent::Type>().valueToKey(type);
        return key ? QString::fromLatin1(key) : QString::number(type);
    }
    // QState::addTransition(target) makes a transition of no class of its own.
    if (transition->metaObject() == &QAbstractTransition::staticMetaObject)
        return QStringLiteral("immediate");
    return QString::fromLatin1(transition->metaObject()->className());
}

QString Targets(const QStringList& targets)
{
    return targets.isEmpty() ? QStringLiteral("(no target)") : targets.join(QLatin1String(", "));
}

QString Marks(const QAbstractState* state)
{
    QStringList marks;
    const auto* parent = qobject_cast<const QState*>(state->parent());
    if (parent && parent->childMode() == QState::ExclusiveStates && parent->initialState() == state)
        marks << QStringLiteral("initial");
    if (const auto* compound = qobject_cast<const QState*>(state)) {
        if (compound->childMode() == QState::ParallelStates)
            marks << QStringLiteral("parallel");
    } else if (qobject_cast<const QFinalState*>(state)) {
        marks << QStringLiteral("final");
    } else if (const auto* history = qobject_cast<const QHistoryState*>(state)) {
        marks << (history->historyType() == QHistoryState::DeepHistory ? QStringLiteral("deep history")
                                                                          : QStringLiteral("history"));
    }
    return marks.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(marks.join(QLatin1String(", ")));
}

QList<QAbstractState*> ChildStates(const QObject* state)
{
    QList<QAbstractState*> states;
    for (QObject* child : state->children()) {
        if (auto* childState = qobject_cast<QAbstractState*>(child))
            states << childState;
    }
    return states;
}

QStringList TargetNames(const QAbstractTransition* transition)
{
    QStringList names;
    for (const QAbstractState* target : transition->targetStates())
        names << NameOf(target);
    return names;
}

QString DotText(QString text)
{
    return text.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
}

} // namespace

struct StateMachineTracer::Private
{
    StateMachineTracer* q = nullptr;
    QPointer<QStateMachine> machine;
    QList<Transition> history;
    bool logging = true;
    // What is followed; a null pointer under a key means the object there has gone.
    QHash<QObject*, QPointer<QObject>> followed;
    // Children announced while still under construction, looked at once they are built.
    QVector<QPointer<QObject>> pending;

    bool IsFollowed(QObject* object) const { return followed.value(object) == object; }
    void Follow(QObject* object);
    void Unfollow(QObject* object);
    void FollowPending();
    void Record(QAbstractTransition* transition);
    void WriteText(const QAbstractState* state, int depth, QString& text) const;
    void WriteDot(const QAbstractState* state, int depth, QHash<const QAbstractState*, QString>& ids,
                  QVector<const QAbstractState*>& order, QString& nodes) const;
};

void StateMachineTracer::Private::Follow(QObject* object)
{
    if (IsFollowed(object))
        return;
    if (auto* transition = qobject_cast<QAbstractTransition*>(object)) {
        followed.insert(object, object);
        connect(transition, &QAbstractTransition::triggered, q, [this, transition] { Record(transition); });
    } else if (auto* state = qobject_cast<QState*>(object)) {
        followed.insert(object, object);
        state->installEventFilter(q);
        for (QObject* child : state->children())
            Follow(child);
    }
}

void StateMachineTracer::Private::Unfollow(QObject* object)
{
    const auto entry = followed.find(object);
    if (entry == followed.end())
        return;
    const bool gone = entry.value() != object;
    followed.erase(entry);
    // A child being destroyed is announced when half gone; only its entry is left to drop.
    if (gone)
        return;
    QObject::disconnect(object, nullptr, q, nullptr);
    object->removeEventFilter(q);
    for (QObject* child : object->children())
        Unfollow(child);
}

void StateMachineTracer::Private::FollowPending()
{
    const QVector<QPointer<QObject>> children = std::exchange(pending, {});
    for (const QPointer<QObject>& child : children) {
        if (child && IsFollowed(child->parent()))
            Follow(child);
    }
}

void StateMachineTracer::Private::Record(QAbstractTransition* transition)
{
    if (!machine)
        return;
    FollowPending();
    Transition entry;
    entry.machine = NameOf(machine);
    if (const QObject* owner = machine->parent())
        entry.owner = QLatin1String(owner->metaObject()->className());
    entry.source = NameOf(transition->sourceState());
    entry.targets = TargetNames(transition);
    entry.trigger = TriggerOf(transition);
    entry.time = QDateTime::currentDateTimeUtc();
    if (history.size() >= HistoryLimit)
        history.removeFirst();
    history.append(entry);
    if (logging) {
        const QString owner = entry.owner.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(entry.owner);
        QTH_LOG_INFO("StateMachineTracer: %s%s: %s -> %s on %s", qUtf8Printable(entry.machine),
                     qUtf8Printable(owner), qUtf8Printable(entry.source), qUtf8Printable(Targets(entry.targets)),
                     qUtf8Printable(entry.trigger));
    }
    Q_EMIT q->TransitionTraced(entry);
}

void StateMachineTracer::Private::WriteText(const QAbstractState* state, int depth, QString& text) const
{
    const QString indent(depth * 2, QLatin1Char(' '));
    text += indent + NameOf(state) + Marks(state) + QLatin1Char('\n');
    if (const auto* compound = qobject_cast<const QState*>(state)) {
        for (const QAbstractTransition* transition : compound->transitions())
            text += indent + QStringLiteral("  -> %1 on %2\n").arg(Targets(TargetNames(transition)),
                                                                  TriggerOf(transition));
    }
    for (const QAbstractState* child : ChildStates(state))
        WriteText(child, depth + 1, text);
}

void StateMachineTracer::Private::WriteDot(const QAbstractState* state, int depth,
                                           QHash<const QAbstractState*, QString>& ids,
                                           QVector<const QAbstractState*>& order, QString& nodes) const
{
    const QString indent(depth * 2 + 2, QLatin1Char(' '));
    const QString id = QStringLiteral("s%1").arg(order.size());
    ids.insert(state, id);
    order << state;
    const QString label = DotText(NameOf(state) + Marks(state));
    const QList<QAbstractState*> children = ChildStates(state);
    if (children.isEmpty()) {
        QString shape = QStringLiteral("box, style=rounded");
        if (qobject_cast<const QFinalState*>(state))
            shape = QStringLiteral("doublecircle");
        else if (qobject_cast<const QHistoryState*>(state))
            shape = QStringLiteral("circle");
        nodes += indent + QStringLiteral("\"%1\" [label=\"%2\", shape=%3];\n").arg(id, label, shape);
    } else {
        // Edges cannot end on a cluster, so each compound state has a hidden anchor in its own.
        nodes += indent + QStringLiteral("subgraph \"cluster_%1\" {\n").arg(id);
        nodes += indent + QStringLiteral("  label=\"%1\";\n").arg(label);
        if (static_cast<const QState*>(state)->childMode() == QState::ParallelStates)
            nodes += indent + QStringLiteral("  style=dashed;\n");
        nodes += indent + QStringLiteral("  \"%1\" [shape=point, style=invis];\n").arg(id);
        for (const QAbstractState* child : children)
            WriteDot(child, depth + 1, ids, order, nodes);
        nodes += indent + QStringLiteral("}\n");
    }
}

StateMachineTracer::StateMachineTracer(QStateMachine* machine, QObject* parent) : QObject(parent), d(new Private)
{
    d->q = this;
    if (!machine) {
        QTH_LOG_WARNING("StateMachineTracer: no machine to trace");
        return;
    }
    d->machine = machine;
    d->Follow(machine);
}

StateMachineTracer::~StateMachineTracer()
{
    for (auto it = d->followed.cbegin(); it != d->followed.cend(); ++it) {
        if (QObject* object = it.value()) {
            QObject::disconnect(object, nullptr, this, nullptr);
            object->removeEventFilter(this);
        }
    }
    delete d;
}

QStateMachine* StateMachineTracer::Machine() const { return d->machine; }

QVector<StateMachineTracer::Transition> StateMachineTracer::History() const { return d->history.toVector(); }

void StateMachineTracer::ClearHistory() { d->history.clear(); }

bool StateMachineTracer::IsLogging() const { return d->logging; }

void StateMachineTracer::SetLogging(bool logging) { d->logging = logging; }

QString StateMachineTracer::StructureText() const
{
    QString text;
    if (d->machine)
        d->WriteText(d->machine, 0, text);
    return text;
}

QString StateMachineTracer::StructureDot() const
{
    if (!d->machine)
        return QString();
    QHash<const QAbstractState*, QString> ids;
    QVector<const QAbstractState*> states;
    QString nodes;
    QString edges;
    d->WriteDot(d->machine, 0, ids, states, nodes);
    // Edges go last, when every state has its id; those of compound states start or end
    // at their cluster's border.
    const auto clusterOf = [&ids](const QAbstractState* state) {
        return ChildStates(state).isEmpty() ? QString() : QStringLiteral("cluster_") + ids.value(state);
    };
    for (const QAbstractState* state : qAsConst(states)) {
        const auto* compound = qobject_cast<const QState*>(state);
        if (!compound)
            continue;
        if (compound->childMode() == QState::ExclusiveStates && compound->initialState()
            && ids.contains(compound->initialState())) {
            const QString start = ids.value(state) + QStringLiteral("_initial");
            nodes += QStringLiteral("  \"%1\" [shape=point];\n").arg(start);
            const QString cluster = clusterOf(compound->initialState());
            edges += QStringLiteral("  \"%1\" -> \"%2\"%3;\n")
                         .arg(start, ids.value(compound->initialState()),
                              cluster.isEmpty() ? QString() : QStringLiteral(" [lhead=\"%1\"]").arg(cluster));
        }
        for (const QAbstractTransition* transition : compound->transitions()) {
            QList<QAbstractState*> targets = transition->targetStates();
            if (targets.isEmpty())
                targets << const_cast<QState*>(compound);
            for (const QAbstractState* target : qAsConst(targets)) {
                if (!ids.contains(target))
                    continue;
                QStringList attributes{QStringLiteral("label=\"%1\"").arg(DotText(TriggerOf(transition)))};
                if (!clusterOf(state).isEmpty())
                    attributes << QStringLiteral("ltail=\"%1\"").arg(clusterOf(state));
                if (!clusterOf(target).isEmpty())
                    attributes << QStringLiteral("lhead=\"%1\"").arg(clusterOf(target));
                edges += QStringLiteral("  \"%1\" -> \"%2\" [%3];\n")
                             .arg(ids.value(state), ids.value(target), attributes.join(QLatin1String(", ")));
            }
        }
    }
    return QStringLiteral("digraph \"%1\" {\n  compound=true;\n%2%3}\n")
        .arg(DotText(NameOf(d->machine)), nodes, edges);
}

bool StateMachineTracer::TracingRequested()
{
    static const bool requested = qEnvironmentVariable("QT_HALVO_TRACE_STATE_MACHINES") == QLatin1String("1");
    return requested;
}

bool StateMachineTracer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildAdded) {
        QObject* child = static_cast<QChildEvent*>(event)->child();
        // A child made with its parent in the constructor is announced before it is built;
        // it is looked at back in the event loop (where a start() takes effect too), or
        // earlier when the machine takes a transition.
        if (qobject_cast<QAbstractTransition*>(child) || qobject_cast<QAbstractState*>(child)) {
            d->Follow(child);
        } else if (child->metaObject() == &QObject::staticMetaObject) {
            if (d->pending.isEmpty())
                QMetaObject::invokeMethod(this, [this] { d->FollowPending(); }, Qt::QueuedConnection);
            d->pending.append(child);
        }
    } else if (event->type() == QEvent::ChildRemoved) {
        d->Unfollow(static_cast<QChildEvent*>(event)->child());
    }
    return QObject::eventFilter(watched, event);
}

} // namespace OrvantaQT
