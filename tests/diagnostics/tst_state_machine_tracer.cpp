#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include "log_capture.h"
#include "test_support.h"

#include <QtCore/QEventTransition>
#include <QtCore/QSignalTransition>
#include <QtCore/QState>
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

// a --go--> b --go--> a;  b --back--> c --(immediate)--> a.  Owned by a QTimer to name an owner.
struct Machine
{
    QTimer owner;
    Emitter emitter;
    QStateMachine* machine = new QStateMachine(&owner);
    QState* a = new QState(machine);
    QState* b = new QState(machine);
    QState* c = new QState(machine);
    Machine()
    {
        machine->setObjectName(QStringLiteral("m"));
        a->setObjectName(QStringLiteral("a"));
        b->setObjectName(QStringLiteral("b"));
        c->setObjectName(QStringLiteral("c"));
        a->addTransition(&emitter, SIGNAL(go()), b);
        b->addTransition(&emitter, &Emitter::go, a);
        b->addTransition(&emitter, SIGNAL(back()), c);
        c->addTransition(a);
        machine->setInitialState(a);
    }
    void Start()
    {
        machine->start();
        QTRY_VERIFY(machine->isRunning());
    }
    void Emit(const QString& signal) { signal == QLatin1String("go") ? emitter.go() : emitter.back(); }
};

QString Line(const StateMachineTracer::Transition& t)
{
    return QStringLiteral("%1 -> %2 on %3").arg(t.source, t.targets.join(QLatin1Char(',')), t.trigger);
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
        QTest::addColumn<QStringList>("sent");
        QTest::addColumn<int>("attachAfter"); // signals sent before the tracer comes
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("toggle") << QStringList{"go", "go", "go"} << 0
                                << QStringList{"a -> b on go()", "b -> a on go()", "a -> b on go()"};
        QTest::newRow("then immediate") << QStringList{"go", "back"} << 0
                                        << QStringList{"a -> b on go()", "b -> c on back()", "c -> a on immediate"};
        QTest::newRow("attached while running") << QStringList{"go", "back", "go"} << 1
                                                << QStringList{"b -> c on back()", "c -> a on immediate",
                                                               "a -> b on go()"};
        QTest::newRow("unhandled signal") << QStringList{"back", "go"} << 0 << QStringList{"a -> b on go()"};
    }
    void transitionsInOrder()
    {
        QFETCH(QStringList, sent);
        QFETCH(int, attachAfter);
        Machine m;
        m.Start();
        std::unique_ptr<StateMachineTracer> tracer;
        QStringList announced;
        for (int i = 0; i < sent.size(); ++i) {
            if (i == attachAfter) {
                tracer = std::make_unique<StateMachineTracer>(m.machine);
                connect(tracer.get(), &StateMachineTracer::TransitionTraced, this,
                        [&announced](const StateMachineTracer::Transition& t) { announced << Line(t); });
            }
            m.Emit(sent[i]);
        }
        QFETCH(QStringList, expected);
        QCOMPARE(Lines(*tracer), expected);
        QCOMPARE(announced, expected);
        const StateMachineTracer::Transition first = tracer->History().first();
        QCOMPARE(first.machine, QStringLiteral("m"));
        QCOMPARE(first.owner, QStringLiteral("QTimer"));
        QVERIFY(first.time.isValid() && qAbs(first.time.secsTo(QDateTime::currentDateTimeUtc())) < 3600);
    }

    void nestedAndParallel()
    {
        Machine m;
        auto* group = new QState(QState::ParallelStates, m.c);
        group->setObjectName(QStringLiteral("group"));
        QState* regions[2] = {new QState(group), new QState(group)};
        for (int r = 0; r < 2; ++r) {
            regions[r]->setObjectName(QStringLiteral("r%1").arg(r));
            auto* from = new QState(regions[r]);
            auto* to = new QState(regions[r]);
            from->setObjectName(QStringLiteral("r%1.from").arg(r));
            to->setObjectName(QStringLiteral("r%1.to").arg(r));
            from->addTransition(&m.emitter, SIGNAL(go()), to);
            regions[r]->setInitialState(from);
        }
        m.c->setInitialState(group);
        qDeleteAll(m.c->transitions());
        m.c->addTransition(&m.emitter, SIGNAL(back()), m.a);
        StateMachineTracer tracer(m.machine);
        m.Start();
        for (const char* signal : {"go", "back", "go", "back"})
            m.Emit(QLatin1String(signal));
        QCOMPARE(Lines(tracer), (QStringList{"a -> b on go()", "b -> c on back()", "r0.from -> r0.to on go()",
                                             "r1.from -> r1.to on go()", "c -> a on back()"}));
    }

    void triggers_data()
    {
        QTest::addColumn<Change>("install"); // another way out of a, before the start
        QTest::addColumn<Change>("fire");    // after the start
        QTest::addColumn<QString>("trigger");
        const Change none = [](Machine&) {};
        QTest::newRow("signal") << none << Change([](Machine& m) { m.emitter.go(); }) << "go()";
        QTest::newRow("signal with arguments") << Change([](Machine& m) {
            m.a->addTransition(&m.owner, SIGNAL(objectNameChanged(QString)), m.b);
        }) << Change([](Machine& m) { m.owner.setObjectName(QStringLiteral("renamed")); })
                                               << "objectNameChanged(QString)";
        QTest::newRow("properties assigned") << Change([](Machine& m) {
            m.a->assignProperty(&m.owner, "interval", 5);
            m.a->addTransition(m.a, &QState::propertiesAssigned, m.b);
        }) << none << "propertiesAssigned";
        QTest::newRow("immediate") << Change([](Machine& m) { m.a->addTransition(m.b); }) << none << "immediate";
        QTest::newRow("event") << Change([](Machine& m) {
            auto* transition = new QEventTransition(&m.owner, QEvent::DynamicPropertyChange);
            transition->setTargetState(m.b);
            m.a->addTransition(transition);
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
        QTest::addColumn<Change>("change"); // adds d and a --back--> d, d --go--> a
        QTest::addColumn<bool>("running");
        const Change addState = [](Machine& m) {
            auto* d = new QState;
            d->setObjectName(QStringLiteral("d"));
            m.machine->addState(d);
            m.a->addTransition(&m.emitter, SIGNAL(back()), d);
            d->addTransition(&m.emitter, SIGNAL(go()), m.a);
        };
        const Change makeWithParents = [](Machine& m) {
            auto* d = new QState(m.machine);
            d->setObjectName(QStringLiteral("d"));
            (new QSignalTransition(&m.emitter, SIGNAL(back()), m.a))->setTargetState(d);
            (new QSignalTransition(&m.emitter, SIGNAL(go()), d))->setTargetState(m.a);
            // Children announced half-built are looked at back in the event loop.
            QCoreApplication::processEvents();
        };
        QTest::newRow("added, running") << addState << true;
        QTest::newRow("added, stopped") << addState << false;
        QTest::newRow("made with parents, running") << makeWithParents << true;
        QTest::newRow("made with parents, stopped") << makeWithParents << false;
        QTest::newRow("nested state made with its parent") << Change([](Machine& m) {
            auto* d = new QState(m.machine);
            auto* inner = new QState(d);
            d->setObjectName(QStringLiteral("d"));
            inner->setObjectName(QStringLiteral("inner"));
            d->setInitialState(inner);
            m.a->addTransition(&m.emitter, SIGNAL(back()), d);
            inner->addTransition(&m.emitter, SIGNAL(go()), m.a);
        }) << true;
    }
    void followsWhatIsAddedLater()
    {
        QFETCH(Change, change);
        QFETCH(bool, running);
        Machine m;
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
        x->addTransition(&m.emitter, SIGNAL(go()), new QState(holder));
        holder->setInitialState(x);
        if (!halfBuilt)
            m.machine->addState(holder);
        QStateMachine other;
        other.addState(holder);
        other.setInitialState(holder);
        other.start();
        QTRY_VERIFY(other.isRunning());
        m.emitter.go();
        QVERIFY(!other.configuration().contains(x));
        QVERIFY(tracer.History().isEmpty());
        QVERIFY(!tracer.StructureText().contains(QLatin1String("QState(0x")));
    }

    void unnamedObjects()
    {
        Machine m;
        for (QObject* object : {static_cast<QObject*>(m.machine), static_cast<QObject*>(m.a), static_cast<QObject*>(m.b)})
            object->setObjectName(QString());
        m.machine->setParent(nullptr);
        std::unique_ptr<QStateMachine> machine(m.machine);
        StateMachineTracer tracer(m.machine);
        m.Start();
        m.emitter.go();
        const StateMachineTracer::Transition t = tracer.History().value(0);
        QCOMPARE(t.machine, Address(m.machine, "QStateMachine"));
        QCOMPARE(t.owner, QString());
        QCOMPARE(t.source, Address(m.a, "QState"));
        QCOMPARE(t.targets, QStringList{Address(m.b, "QState")});
    }

    void machineDeletedWhileTraced()
    {
        auto m = std::make_unique<Machine>();
        StateMachineTracer tracer(m->machine);
        m->Start();
        m->emitter.go();
        const LogCapture::Mark mark;
        delete m->machine;
        m->emitter.go();
        QCOMPARE(tracer.Machine(), nullptr);
        QCOMPARE(Lines(tracer), QStringList{"a -> b on go()"});
        QCOMPARE(tracer.StructureText(), QString());
        QCOMPARE(tracer.StructureDot(), QString());
        m.reset();
        QCOMPARE(mark.Texts(), QStringList());
    }

    void tracerDeletedFirst()
    {
        Machine m;
        auto* tracer = new StateMachineTracer(m.machine);
        int traced = 0;
        connect(tracer, &StateMachineTracer::TransitionTraced, this, [&traced] { ++traced; });
        m.Start();
        m.emitter.go();
        delete tracer;
        const LogCapture::Mark mark;
        m.emitter.back();
        new QState(m.machine);
        m.a->addTransition(&m.emitter, SIGNAL(back()), m.b);
        QCoreApplication::processEvents();
        QCOMPARE(m.machine->configuration(), (QSet<QAbstractState*>{m.a}));
        QCOMPARE(traced, 1);
        QCOMPARE(mark.Texts(), QStringList());
    }

    void logging_data()
    {
        QTest::addColumn<bool>("logging");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("on") << true
                            << QStringList{"2 StateMachineTracer: m (QTimer): a -> b on go()",
                                           "2 StateMachineTracer: m (QTimer): b -> c on back()",
                                           "2 StateMachineTracer: m (QTimer): c -> a on immediate"};
        QTest::newRow("off") << false << QStringList();
    }
    void logging()
    {
        QFETCH(bool, logging);
        Machine m;
        StateMachineTracer tracer(m.machine);
        QVERIFY(tracer.IsLogging());
        tracer.SetLogging(logging);
        QCOMPARE(tracer.IsLogging(), logging);
        m.Start();
        const LogCapture::Mark mark;
        m.emitter.go();
        m.emitter.back();
        QTEST(mark.Texts(), "expected");
        QCOMPARE(tracer.History().size(), 3);
        tracer.ClearHistory();
        QVERIFY(tracer.History().isEmpty());
    }

    void unownedMachineAndTargetlessTransitionLog()
    {
        QStateMachine machine;
        machine.setObjectName(QStringLiteral("free"));
        Emitter emitter;
        auto* only = new QState(&machine);
        only->setObjectName(QStringLiteral("only"));
        only->addTransition(new QSignalTransition(&emitter, SIGNAL(go())));
        machine.setInitialState(only);
        StateMachineTracer tracer(&machine);
        machine.start();
        QTRY_VERIFY(machine.isRunning());
        const LogCapture::Mark mark;
        emitter.go();
        QCOMPARE(mark.Texts(), QStringList{"2 StateMachineTracer: free: only -> (no target) on go()"});
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
        QCOMPARE(lines.first(), QStringLiteral("b -> a on go()"));
        QCOMPARE(lines.last(), QStringLiteral("a -> b on go()"));
    }

    void nullMachine()
    {
        const LogCapture::Mark mark;
        StateMachineTracer tracer(nullptr);
        QCOMPARE(mark.Texts(), QStringList{"3 StateMachineTracer: no machine to trace"});
        QCOMPARE(tracer.Machine(), nullptr);
        QCOMPARE(tracer.StructureText(), QString());
        QCOMPARE(tracer.StructureDot(), QString());
    }

    void structure()
    {
        Machine m;
        auto* group = new QState(QState::ParallelStates, m.c);
        group->setObjectName(QStringLiteral("group"));
        auto* left = new QState(group);
        left->setObjectName(QStringLiteral("left"));
        auto* right = new QState(group);
        right->setObjectName(QStringLiteral("right"));
        auto* end = new QFinalState(m.machine);
        end->setObjectName(QStringLiteral("end"));
        m.c->setInitialState(group);
        left->addTransition(&m.emitter, SIGNAL(back()), end);
        StateMachineTracer tracer(m.machine);
        QCOMPARE(tracer.StructureText(), QStringLiteral("m\n"
                                                        "  a [initial]\n"
                                                        "    -> b on go()\n"
                                                        "  b\n"
                                                        "    -> a on go()\n"
                                                        "    -> c on back()\n"
                                                        "  c\n"
                                                        "    -> a on immediate\n"
                                                        "    group [initial, parallel]\n"
                                                        "      left\n"
                                                        "        -> end on back()\n"
                                                        "      right\n"
                                                        "  end [final]\n"));
        QCOMPARE(tracer.StructureDot(),
                 QStringLiteral("digraph \"m\" {\n"
                                "  compound=true;\n"
                                "  subgraph \"cluster_s0\" {\n"
                                "    label=\"m\";\n"
                                "    \"s0\" [shape=point, style=invis];\n"
                                "    \"s1\" [label=\"a [initial]\", shape=box, style=rounded];\n"
                                "    \"s2\" [label=\"b\", shape=box, style=rounded];\n"
                                "    subgraph \"cluster_s3\" {\n"
                                "      label=\"c\";\n"
                                "      \"s3\" [shape=point, style=invis];\n"
                                "      subgraph \"cluster_s4\" {\n"
                                "        label=\"group [initial, parallel]\";\n"
                                "        style=dashed;\n"
                                "        \"s4\" [shape=point, style=invis];\n"
                                "        \"s5\" [label=\"left\", shape=box, style=rounded];\n"
                                "        \"s6\" [label=\"right\", shape=box, style=rounded];\n"
                                "      }\n"
                                "    }\n"
                                "    \"s7\" [label=\"end [final]\", shape=doublecircle];\n"
                                "  }\n"
                                "  \"s0_initial\" [shape=point];\n"
                                "  \"s3_initial\" [shape=point];\n"
                                "  \"s0_initial\" -> \"s1\";\n"
                                "  \"s1\" -> \"s2\" [label=\"go()\"];\n"
                                "  \"s2\" -> \"s1\" [label=\"go()\"];\n"
                                "  \"s2\" -> \"s3\" [label=\"back()\", lhead=\"cluster_s3\"];\n"
                                "  \"s3_initial\" -> \"s4\" [lhead=\"cluster_s4\"];\n"
                                "  \"s3\" -> \"s1\" [label=\"immediate\", ltail=\"cluster_s3\"];\n"
                                "  \"s5\" -> \"s7\" [label=\"back()\"];\n"
                                "}\n"));
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
        QCOMPARE(tracers.first()->Machine(), machines.first());
        // The pane settles out of its initial state when the event loop first runs.
        QTRY_VERIFY(!tracers.first()->History().isEmpty());
        QCOMPARE(tracers.first()->History().first().source, QStringLiteral("InitialState"));
        QCOMPARE(tracers.first()->History().first().owner, QStringLiteral("OrvantaQT::CollapsingPane"));
    }
};

QTEST_MAIN(TestStateMachineTracer)
#include "tst_state_machine_tracer.moc"
