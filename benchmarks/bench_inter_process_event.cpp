// The inter-process event across two processes: the latency from Signal() to the
// callback (a ping answered by a pong from a child process: one way is half the round
// trip), and the CPU an idle listener costs, next to a loop that waits 1 ms at a time.

#include <qt_halvo/application/inter_process_event.h>
#include <qt_halvo/utilities/platform/named_event_p.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>
#include <QtCore/QUuid>
#include <QtTest/QtTest>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <thread>

using namespace OrvantaQT;

namespace {

constexpr int kRoundTrips = 1000;
constexpr int kIdleMilliseconds = 3000;

double ProcessCpuMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1e3 + time.tv_nsec / 1e6;
}

double Percentile(QVector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    return values[qMin(values.size() - 1, int(values.size() * fraction))];
}

// Measures the CPU this process uses while `idle` runs for kIdleMilliseconds.
double CpuPercentWhile(const std::function<void(const std::atomic<bool>&)>& idle)
{
    std::atomic<bool> stop{false};
    const double before = ProcessCpuMilliseconds();
    std::thread thread([&] { idle(stop); });
    std::this_thread::sleep_for(std::chrono::milliseconds(kIdleMilliseconds));
    stop = true;
    thread.join();
    return (ProcessCpuMilliseconds() - before) / kIdleMilliseconds * 100.0;
}

} // namespace

class BenchInterProcessEvent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalToCallbackLatency();
    void idleListenerCpu();
};

void BenchInterProcessEvent::signalToCallbackLatency()
{
    const QString ping = QStringLiteral("qt_halvo_bench_ping_") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString pong = ping + QStringLiteral("_pong");
    auto pingEvent = CreateInterProcessEvent(ping);
    auto pongEvent = CreateInterProcessEvent(pong);
    QSemaphore answered;
    pongEvent->StartListening([&answered] { answered.release(); });

    QProcess echo;
    echo.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--echo"), ping, pong});
    QVERIFY(echo.waitForReadyRead(10000)); // the child listens

    QVector<double> roundTrips;
    QElapsedTimer timer;
    for (int i = 0; i < kRoundTrips; ++i) {
        timer.start();
        pingEvent->Signal();
        QVERIFY(answered.tryAcquire(1, 5000));
        roundTrips.append(timer.nsecsElapsed() / 1e3);
    }
    echo.closeWriteChannel(); // the child ends
    QVERIFY(echo.waitForFinished(10000));

    QTextStream(stdout) << QStringLiteral("signal to callback over %1 round trips: round trip median %2 us, 99th "
                                          "percentile %3 us; one way about %4 us median, %5 us 99th percentile\n")
                               .arg(kRoundTrips)
                               .arg(Percentile(roundTrips, 0.5), 0, 'f', 1)
                               .arg(Percentile(roundTrips, 0.99), 0, 'f', 1)
                               .arg(Percentile(roundTrips, 0.5) / 2, 0, 'f', 1)
                               .arg(Percentile(roundTrips, 0.99) / 2, 0, 'f', 1);
}

void BenchInterProcessEvent::idleListenerCpu()
{
    const QString name = QStringLiteral("qt_halvo_bench_idle_") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    const double listener = CpuPercentWhile([&name](const std::atomic<bool>& stop) {
        auto event = CreateInterProcessEvent(name);
        event->StartListening([] {});
        while (!stop.load())
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    });
    const double polling = CpuPercentWhile([&name](const std::atomic<bool>& stop) {
        Platform::NamedEvent event(name.toStdString());
        while (!stop.load())
            event.Wait(1);
    });
    QTextStream(stdout) << QStringLiteral("idle listener: %1 % of a core (waits of %2 ms, stopped by an interrupt); "
                                          "waiting 1 ms at a time instead: %3 % of a core\n")
                               .arg(listener, 0, 'f', 2)
                               .arg(Platform::NamedEvent::kListenerWaitMilliseconds)
                               .arg(polling, 0, 'f', 2);
}

int main(int argc, char** argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--echo") == 0) {
        QCoreApplication application(argc, argv);
        auto pong = CreateInterProcessEvent(QString::fromLocal8Bit(argv[3]));
        auto ping = CreateInterProcessEvent(QString::fromLocal8Bit(argv[2]));
        ping->StartListening([pong] { pong->Signal(); });
        std::fputs("listening\n", stdout);
        std::fflush(stdout);
        // Until the parent closes our input.
        while (std::fgetc(stdin) != EOF) {
        }
        return 0;
    }
    QCoreApplication application(argc, argv);
    BenchInterProcessEvent benchmark;
    return QTest::qExec(&benchmark, argc, argv);
}

#include "bench_inter_process_event.moc"
