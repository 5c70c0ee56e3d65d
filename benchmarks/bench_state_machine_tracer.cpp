// What tracing adds to one transition of a QStateMachine: the same two-state machine,
// toggled by a signal, untouched (Qt alone), after a tracer came and went, and traced
// with and without its log line (written to a logging library that drops it).

#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include <QtCore/QState>
#include <QtCore/QStateMachine>
#include <QtTest/QtTest>

#include <memory>

using OrvantaQT::StateMachineTracer;

class BenchStateMachineTracer : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void go();

private Q_SLOTS:
    void initTestCase() { qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY); }

    void transition_data()
    {
        QTest::addColumn<QString>("tracing");
        for (const char* tracing : {"none (Qt alone)", "tracer deleted", "traced, logging off", "traced, logging on"})
            QTest::newRow(tracing) << QString::fromLatin1(tracing);
    }
    void transition()
    {
        QFETCH(QString, tracing);
        QStateMachine machine;
        auto* a = new QState(&machine);
        auto* b = new QState(&machine);
        a->setObjectName(QStringLiteral("a"));
        b->setObjectName(QStringLiteral("b"));
        a->addTransition(this, &BenchStateMachineTracer::go, b);
        b->addTransition(this, &BenchStateMachineTracer::go, a);
        machine.setInitialState(a);
        std::unique_ptr<StateMachineTracer> tracer;
        if (tracing != QLatin1String("none (Qt alone)"))
            tracer = std::make_unique<StateMachineTracer>(&machine);
        if (tracing == QLatin1String("tracer deleted"))
            tracer.reset();
        if (tracer)
            tracer->SetLogging(tracing.endsWith(QLatin1String("on")));
        machine.start();
        QTRY_VERIFY(machine.isRunning());
        QBENCHMARK {
            Q_EMIT go();
        }
        QVERIFY(!tracer || !tracer->History().isEmpty());
    }
};

QTEST_GUILESS_MAIN(BenchStateMachineTracer)
#include "bench_state_machine_tracer.moc"
