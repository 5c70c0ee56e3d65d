#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include "log_capture.h"
#include "test_support.h"

#include <QtCore/QEventTransition>
#include <QtCore/QFinalState>
#include <QtCore/QSignalTransition>
#include <QtCore/QStateMachine>

#include <functional>
#include <memory>

using OrvantaQT::StateMachineTracer;

namespace {

class Emitter : public QObject
{
    Q_OBJECT
Q_SIGNALS:
    void go();
    void back();
};

// Machine m, owned by a QTimer:  a --go--> b --go--> a,  a --back--> (no target),
// b --back--> c --back--> a;  c holds a parallel group of regions r0 and r1, each
// x<i> --go--> y<i>;  end is final and never reached.
struct Machine
{
    QTimer owner;
    Emitter emitter;
    QStateMachine* machine = new QStateMachine(&owner);
    QState* a = State("a", machine);
    QState* b = State("b", machine);
    QState* c = State("c", machine);
    QState* group = State("group", c, QState::ParallelStates);
    Machine()
    {
        machine->setObjectName(QStringLiteral("m"));
        a->addTransition(&emitter, SIGNAL(go()), b);
        a->addTransition(new QSignalTransition(&emitter, SIGNAL(back())));
        b->addTransition(&emitter, &Emitter::go, a);
        b->addTransition(&emitter, SIGNAL(back()), c);
        c->addTransition(&emitter, SIGNAL(back()), a);
        for (const char* region : {"0", "1"}) {
            QState* r = State(QByteArray("r") + region, group);
            r->setInitialState(State(QByteArray("x") + region, r));
            static_cast<QState*>(r->initialState())->addTransition(&emitter, SIGNAL(go()), State(QByteArray("y") + region, r));
        }
        c->setInitialState(group);
        (new QFinalState(machine))->setObjectName(QStringLiteral("end"));
        machine->setInitialState(a);
    }
    static QState* State(const QByteArray& name, QState* parent, QState::ChildMode mode = QState::ExclusiveStates)
    {
        auto* state = new QState(mode, parent);
        state->setObjectName(QString::fromLatin1(name));
        return state;
    }
    void Start()
    {
        machine->start();
        QTRY_VERIFY(machine->isRunning());
    }
};

QString Line(const StateMachineTracer::Transition& t)
{
    const QString targets = t.targets.isEmpty() ? QStringLiteral("(no target)") : t.targets.join(QLatin1Char(','));
    return QStringLiteral("%1 -> %2 on %3").arg(t.source, targets, t.trigger);
}

QStringList Lines(const StateMachineTracer& tracer)
{
    QStringList lines;
    for (const StateMachineTracer::Transition& t : tracer.History())
        lines << Line(t);
    return lines;
}

QString Address(const QObject* object, const char* className)
{
    return QStringLiteral("%1(0x%2)").arg(QLatin1String(className)).arg(quintptr(object), 0, 16);
}

using Change = std::function<void(Machine&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class TestStateMachineTracer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void transitionsInOrder_data()
    {
        QTest::addColumn<QString>("sent");    // g: go(), b: back()
        QTest::addColumn<int>("attachAfter"); // signals sent before the tracer comes
        QTest::addColumn<bool>("logging");
        QTest::addColumn<QStringList>("expected");
        const QStringList toggle{"a -> b on go()", "b -> a on go()", "a -> b on go()"};
        QTest::newRow("toggle") << "ggg" << 0 << true << toggle;
        QTest::newRow("logging off") << "ggg" << 0 << false << toggle;
        QTest::newRow("no target") << "bg" << 0 << true << QStringList{"a -> (no target) on back()", "a -> b on go()"};
        QTest::newRow("nested, parallel") << "gbgb" << 0 << true
                                          << QStringList{"a -> b on go()", "b -> c on back()", "x0 -> y0 on go()",
                                                         "x1 -> y1 on go()", "c -> a on back()"};
        QTest::newRow("attached while running")
            << "gbg" << 1 << true << QStringList{"b -> c on back()", "x0 -> y0 on go()", "x1 -> y1 on go()"};
    }
    void transitionsInOrder()
    {
        QFETCH(QString, sent);
        QFETCH(int, attachAfter);
        QFETCH(bool, logging);
        QFETCH(QStringList, expected);
        Machine m;
        m.Start();
        std::unique_ptr<StateMachineTracer> tracer;
        QStringList announced;
        const LogCapture::Mark mark;
        for (int i = 0; i < sent.size(); ++i) {
            if (i == attachAfter) {
                tracer = std::make_unique<StateMachineTracer>(m.machine);
                QVERIFY(tracer->IsLogging());
                tracer->SetLogging(logging);
                connect(tracer.get(), &StateMachineTracer::TransitionTraced, this,
                        [&announced](const StateMachineTracer::Transition& t) { announced << Line(t); });
            }
            sent[i] == QLatin1Char('g') ? m.emitter.go() : m.emitter.back();
        }
        QCOMPARE(Lines(*tracer), expected);
        QCOMPARE(announced, expected);
        QStringList logged;
        for (const QString& line : expected)
            logged << QStringLiteral("2 StateMachineTracer: m (QTimer): ") + line;
        QCOMPARE(mark.Texts(), logging ? logged : QStringList());
        const StateMachineTracer::Transition first = tracer->History().first();
        QCOMPARE(first.machine + QLatin1Char(' ') + first.owner, QStringLiteral("m QTimer"));
        QVERIFY(qAbs(first.time.secsTo(QDateTime::currentDateTimeUtc())) < 3600);
        tracer->ClearHistory();
        QVERIFY(tracer->History().isEmpty());
    }

    void triggers_data()
    {
        QTest::addColumn<Change>("install"); // another way out of a, before the start
        QTest::addColumn<Change>("fire");    // after the start
        QTest::addColumn<QString>("trigger");
        const Change none = [](Machine&) {};
        QTest::newRow("signal") << none << Change([](Machine& m) { m.emitter.go(); }) << "go()";
        QTest::newRow("signal with arguments")
            << Change([](Machine& m) { m.a->addTransition(&m.owner, SIGNAL(objectNameChanged(QString)), m.b); })
            << Change([](Machine& m) { m.owner.setObjectName(QStringLiteral("renamed")); })
            << "objectNameChanged(QString)";
        QTest::newRow("properties assigned") << Change([](Machine& m) {
            m.a->assignProperty(&m.owner, "interval", 5);
            m.a->addTransition(m.a, &QState::propertiesAssigned, m.b);
        }) << none << "propertiesAssigned";
        QTest::newRow("immediate") << Change([](Machine& m) { m.a->addTransition(m.b); }) << none << "immediate";
        QTest::newRow("event") << Change([](Machine& m) {
            (new QEventTransition(&m.owner, QEvent::DynamicPropertyChange, m.a))->setTargetState(m.b);
        }) << Change([](Machine& m) { m.owner.setProperty("poke", 1); }) << "DynamicPropertyChange";
    }
    void triggers()
    {
        QFETCH(Change, install);
        QFETCH(Change, fire);
        Machine m;
        StateMachineTracer tracer(m.machine);
        install(m);
        m.Start();
        fire(m);
        QTRY_COMPARE(tracer.History().size(), 1);
        QTEST(tracer.History().first().trigger, "trigger");
        QCOMPARE(tracer.History().first().targets, QStringList{"b"});
    }

    void followsWhatIsAddedLater_data()
    {
        QTest::addColumn<Change>("change"); // adds d, a --back--> d and d (or a child) --go--> a
        QTest::addColumn<bool>("running");
        const Change added = [](Machine& m) {
            auto* d = new QState;
            d->setObjectName(QStringLiteral("d"));
            m.machine->addState(d);
            m.a->addTransition(&m.emitter, SIGNAL(back()), d);
            d->addTransition(&m.emitter, SIGNAL(go()), m.a);
        };
        // Children announced half-built are looked at back in the event loop.
        const Change madeWithParents = [](Machine& m) {
            QState* d = Machine::State("d", m.machine);
            (new QSignalTransition(&m.emitter, SIGNAL(back()), m.a))->setTargetState(d);
            (new QSignalTransition(&m.emitter, SIGNAL(go()), d))->setTargetState(m.a);
            QCoreApplication::processEvents();
        };
        QTest::newRow("added, running") << added << true;
        QTest::newRow("added, stopped") << added << false;
        QTest::newRow("made with parents, running") << madeWithParents << true;
        QTest::newRow("made with parents, stopped") << madeWithParents << false;
        QTest::newRow("nested state made with its parent") << Change([](Machine& m) {
            QState* d = Machine::State("d", m.machine);
            d->setInitialState(Machine::State("inner", d));
            m.a->addTransition(&m.emitter, SIGNAL(back()), d);
            static_cast<QState*>(d->initialState())->addTransition(&m.emitter, SIGNAL(go()), m.a);
        }) << true;
    }
    void followsWhatIsAddedLater()
    {
        QFETCH(Change, change);
        QFETCH(bool, running);
        Machine m;
        qDeleteAll(m.a->transitions());
        StateMachineTracer tracer(m.machine);
        if (running)
            m.Start();
        change(m);
        if (!running)
            m.Start();
        m.emitter.back();
        m.emitter.go();
        const QStringList lines = Lines(tracer);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.first(), QStringLiteral("a -> d on back()"));
        QVERIFY(lines.last().endsWith(QLatin1String(" -> a on go()")));
    }

    void statesMovedToAnotherMachineAreLeft_data()
    {
        QTest::addColumn<bool>("halfBuilt"); // made with the machine as parent, moved before the event loop
        QTest::newRow("added whole") << false;
        QTest::newRow("made with its parent") << true;
    }
    void statesMovedToAnotherMachineAreLeft()
    {
        QFETCH(bool, halfBuilt);
        Machine m;
        StateMachineTracer tracer(m.machine);
        auto* holder = halfBuilt ? new QState(m.machine) : new QState;
        auto* x = new QState(holder);
        auto* y = new QState(holder);
        holder->setInitialState(x);
        if (!halfBuilt)
            m.machine->addState(holder);
        QStateMachine other;
        other.addState(holder);
        x->addTransition(&m.emitter, SIGNAL(go()), y);
        other.setInitialState(holder);
        other.start();
        QTRY_VERIFY(other.isRunning());
        m.emitter.go();
        QVERIFY(other.configuration().contains(y));
        QVERIFY(tracer.History().isEmpty());
        QVERIFY(!tracer.StructureText().contains(QLatin1String("QState(0x")));
    }

    void unnamedObjects()
    {
        Machine m;
        for (QObject* object : std::initializer_list<QObject*>{m.machine, m.a, m.b})
            object->setObjectName(QString());
        std::unique_ptr<QStateMachine> machine(m.machine);
        m.machine->setParent(nullptr);
        StateMachineTracer tracer(m.machine);
        m.Start();
        const LogCapture::Mark mark;
        m.emitter.go();
        QCOMPARE(tracer.History().value(0).owner, QString());
        QCOMPARE(mark.Texts(), QStringList{QStringLiteral("2 StateMachineTracer: %1: %2 -> %3 on go()")
                                               .arg(Address(m.machine, "QStateMachine"), Address(m.a, "QState"),
                                                    Address(m.b, "QState"))});
    }

    void lifetime_data()
    {
        QTest::addColumn<bool>("machineFirst"); // else the tracer goes first
        QTest::newRow("machine deleted while traced") << true;
        QTest::newRow("tracer deleted first") << false;
    }
    void lifetime()
    {
        QFETCH(bool, machineFirst);
        Machine m;
        auto tracer = std::make_unique<StateMachineTracer>(m.machine);
        m.Start();
        m.emitter.go();
        const LogCapture::Mark mark;
        machineFirst ? delete m.machine : tracer.reset();
        m.emitter.go();
        if (machineFirst) {
            QCOMPARE(tracer->Machine(), nullptr);
            QCOMPARE(Lines(*tracer), QStringList{"a -> b on go()"});
            QCOMPARE(tracer->StructureText() + tracer->StructureDot(), QString());
        } else {
            new QState(m.machine);
            m.a->addTransition(&m.emitter, SIGNAL(back()), m.b);
            QCoreApplication::processEvents();
            QCOMPARE(m.machine->configuration(), (QSet<QAbstractState*>{m.a}));
        }
        QCOMPARE(mark.Texts(), QStringList());
    }

    void historyKeepsTheLatest()
    {
        Machine m;
        StateMachineTracer tracer(m.machine);
        tracer.SetLogging(false);
        m.Start();
        for (int i = 0; i < 10001; ++i)
            m.emitter.go();
        const QStringList lines = Lines(tracer);
        QCOMPARE(lines.size(), 10000);
        QCOMPARE(lines.first() + QLatin1Char('|') + lines.last(), QStringLiteral("b -> a on go()|a -> b on go()"));
    }

    void nullMachine()
    {
        const LogCapture::Mark mark;
        StateMachineTracer tracer(nullptr);
        QCOMPARE(mark.Texts(), QStringList{"3 StateMachineTracer: no machine to trace"});
        QCOMPARE(tracer.Machine(), nullptr);
        QCOMPARE(tracer.StructureText() + tracer.StructureDot(), QString());
    }

    void structure()
    {
        Machine m;
        StateMachineTracer tracer(m.machine);
        QCOMPARE(tracer.StructureText(), QStringLiteral("m\n  a [initial]\n    -> b on go()\n"
                                                        "    -> (no target) on back()\n  b\n    -> a on go()\n"
                                                        "    -> c on back()\n  c\n    -> a on back()\n"
                                                        "    group [initial, parallel]\n      r0\n"
                                                        "        x0 [initial]\n          -> y0 on go()\n"
                                                        "        y0\n      r1\n        x1 [initial]\n"
                                                        "          -> y1 on go()\n        y1\n  end [final]\n"));
        const QString dot = tracer.StructureDot();
        QVERIFY(dot.startsWith(QLatin1String("digraph \"m\" {\n  compound=true;\n")));
        QCOMPARE(dot.count(QLatin1Char('{')), dot.count(QLatin1Char('}')));
        // s0 m, s1 a, s2 b, s3 c, s4 group, s5 r0, s6 x0, s7 y0, s8 r1, s9 x1, s10 y1, s11 end
        for (const char* line :
             {"subgraph \"cluster_s4\" {\n        label=\"group [initial, parallel]\";\n        style=dashed;\n"
              "        \"s4\" [shape=point, style=invis];\n        subgraph \"cluster_s5\" {\n",
              "\n          \"s6\" [label=\"x0 [initial]\", shape=box, style=rounded];\n",
              "\n    \"s11\" [label=\"end [final]\", shape=doublecircle];\n  }\n", "\n  \"s0_initial\" -> \"s1\";\n",
              "\n  \"s1\" -> \"s1\" [label=\"back()\"];\n", "\n  \"s2\" -> \"s3\" [label=\"back()\", lhead=\"cluster_s3\"];\n",
              "\n  \"s3_initial\" -> \"s4\" [lhead=\"cluster_s4\"];\n",
              "\n  \"s3\" -> \"s1\" [label=\"back()\", ltail=\"cluster_s3\"];\n", "\n  \"s9\" -> \"s10\" [label=\"go()\"];\n"})
            QVERIFY2(dot.contains(QLatin1String(line)), line);
    }

    // Run twice by ctest, the second time with QT_HALVO_TRACE_STATE_MACHINES=1.
    void libraryMachinesTracedOnRequest()
    {
        const bool requested = qgetenv("QT_HALVO_TRACE_STATE_MACHINES") == "1";
        QCOMPARE(StateMachineTracer::TracingRequested(), requested);
        OrvantaQT::CollapsingPane pane;
        const QList<QStateMachine*> machines = pane.findChildren<QStateMachine*>();
        QCOMPARE(machines.size(), 1);
        const QList<StateMachineTracer*> tracers = machines.first()->findChildren<StateMachineTracer*>();
        QCOMPARE(tracers.size(), requested ? 1 : 0);
        if (!requested)
            return;
        // The pane settles out of its initial state when the event loop first runs.
        QTRY_VERIFY(!tracers.first()->History().isEmpty());
        QCOMPARE(tracers.first()->History().first().source, QStringLiteral("InitialState"));
        QCOMPARE(tracers.first()->History().first().owner, QStringLiteral("OrvantaQT::CollapsingPane"));
    }
};

QTEST_MAIN(TestStateMachineTracer)
#include "tst_state_machine_tracer.moc"
