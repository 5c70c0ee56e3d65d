// The named event between real processes: this executable started again with
// "--signal <name> <count>" opens the event and signals it.

#include <qt_halvo/application/inter_process_event.h>

#include "log_capture.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>
#include <QtCore/QUuid>
#include <QtTest/QtTest>

#include <atomic>
#include <stdexcept>
#include <thread>

using OrvantaQT::CreateInterProcessEvent;
using OrvantaQT::InterProcessEvent;

namespace {

QString UniqueName()
{
    return QStringLiteral("qt_halvo_test_") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

bool SignalFromAnotherProcess(const QString& name, int count)
{
    return QProcess::execute(QCoreApplication::applicationFilePath(),
                             {QStringLiteral("--signal"), name, QString::number(count)}) == 0;
}

// Counts callbacks and lets the test wait for them.
struct Callbacks
{
    std::atomic<int> count{0};
    QSemaphore arrived;

    std::function<void()> Callback()
    {
        return [this] {
            ++count;
            arrived.release();
        };
    }

    // Whether the callbacks so far come to exactly `total`, with no more within a grace period.
    bool Exactly(int total)
    {
        const bool came = arrived.tryAcquire(total - taken, 10000);
        taken = total;
        return came && !arrived.tryAcquire(1, 300) && count.load() == total;
    }

    int taken = 0;
};

// Where Linux keeps the events' shared memory; elsewhere there is nothing to list.
QStringList SharedMemoryObjects()
{
    return QDir(QStringLiteral("/dev/shm")).entryList({QStringLiteral("qt_halvo_event_*")}, QDir::Files);
}

} // namespace

class TestInterProcessEvent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSignalFromAnotherProcessWakesOneListener();
    void signalsBeforeListeningAreKeptAndMerged();
    void destroyingWaitsForTheListenersLoop();
    void faultyCallbacksAreLoggedAndListeningGoesOn();
};

void TestInterProcessEvent::eachSignalFromAnotherProcessWakesOneListener()
{
    const QStringList before = SharedMemoryObjects();
    const QString name = UniqueName();
    {
        Callbacks callbacks;
        auto first = CreateInterProcessEvent(name);
        auto second = CreateInterProcessEvent(name);
        first->StartListening(callbacks.Callback());
        second->StartListening(callbacks.Callback());
        for (int total = 1; total <= 2; ++total) {
            QVERIFY(SignalFromAnotherProcess(name, 1));
            QVERIFY(callbacks.Exactly(total));
        }
#if defined(Q_OS_LINUX)
        QCOMPARE(SharedMemoryObjects().size(), before.size() + 1);
#endif
    }
    // The last object of a name takes its shared memory with it.
    QCOMPARE(SharedMemoryObjects(), before);
}

void TestInterProcessEvent::signalsBeforeListeningAreKeptAndMerged()
{
    const QString name = UniqueName();
    auto event = CreateInterProcessEvent(name);
    QVERIFY(SignalFromAnotherProcess(name, 3));
    event->Signal();
    Callbacks callbacks;
    event->StartListening(callbacks.Callback());
    QVERIFY(callbacks.Exactly(1));
}

void TestInterProcessEvent::destroyingWaitsForTheListenersLoop()
{
    // Never listened: destroyed at once.
    CreateInterProcessEvent(UniqueName()).reset();

    const QString name = UniqueName();
    QSemaphore entered;
    std::atomic<bool> finished{false};
    auto event = CreateInterProcessEvent(name);
    event->StartListening([&] {
        entered.release();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        finished = true;
    });
    event->Signal();
    QVERIFY(entered.tryAcquire(1, 10000));
    event.reset();
    QVERIFY2(finished.load(), "the object was destroyed while its listener still ran");

    // Destroyed while waiting, with nothing signalled: it stops at once.
    auto waiting = CreateInterProcessEvent(name);
    waiting->StartListening([] {});
    waiting.reset();
}

void TestInterProcessEvent::faultyCallbacksAreLoggedAndListeningGoesOn()
{
    const QString name = UniqueName();
    const LogCapture::Mark mark;
    std::atomic<int> calls{0};
    QSemaphore arrived;
    auto event = CreateInterProcessEvent(name);
    event->StartListening([&] {
        arrived.release();
        if (++calls == 1)
            throw std::runtime_error("broken listener");
    });
    event->Signal();
    QVERIFY(arrived.tryAcquire(1, 10000));
    QTRY_VERIFY(mark.Contains(4, QStringLiteral("InterProcessEvent: the callback of \"%1\" threw: broken listener").arg(name)));
    event->Signal();
    QVERIFY(arrived.tryAcquire(1, 10000));
    event.reset();

    auto empty = CreateInterProcessEvent(name);
    empty->StartListening(std::function<void()>());
    QVERIFY(mark.Contains(4, QStringLiteral("InterProcessEvent: \"%1\" has an empty callback; its signals are only taken").arg(name)));
    empty->Signal();
    empty.reset();
}

int main(int argc, char** argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--signal") == 0) {
        auto event = CreateInterProcessEvent(QString::fromLocal8Bit(argv[2]));
        for (int i = 0; i < QByteArray(argv[3]).toInt(); ++i)
            event->Signal();
        return 0;
    }
    QCoreApplication application(argc, argv);
    TestInterProcessEvent test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_inter_process_event.moc"
