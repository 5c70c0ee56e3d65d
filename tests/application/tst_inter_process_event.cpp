// The named event between real processes: this executable started again with
// "--signal <name> <count>" opens the event and signals it.

#include <qt_halvo/application/inter_process_event.h>

#include "test_support.h"

#include <atomic>
#include <stdexcept>

using OrvantaQT::CreateInterProcessEvent;

class TestInterProcessEvent : public QObject
{
    Q_OBJECT

    const QString m_name = QStringLiteral("qt_halvo_test_") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    QSemaphore m_calls;

private Q_SLOTS:
    void eachSignalWakesOneListener()
    {
        // Where Linux keeps the events' shared memory.
        const auto sharedMemory = [] { return QDir(QStringLiteral("/dev/shm")).entryList({QStringLiteral("qt_halvo_event_*")}); };
        const QStringList before = sharedMemory();
        {
            auto first = CreateInterProcessEvent(m_name);
            auto second = CreateInterProcessEvent(m_name);
            // Signals before anyone listens are kept, and merge into one.
            QCOMPARE(TestSupport::RunSelf({QStringLiteral("--signal"), m_name, QStringLiteral("3")}).exitCode, 0);
            first->Signal();
            first->StartListening([this] { m_calls.release(); });
            QVERIFY(m_calls.tryAcquire(1, 10000));
            second->StartListening([this] { m_calls.release(); });
            for (int i = 0; i < 2; ++i) {
                QCOMPARE(TestSupport::RunSelf({QStringLiteral("--signal"), m_name, QStringLiteral("1")}).exitCode, 0);
                QVERIFY(m_calls.tryAcquire(1, 10000));
            }
            // Longer than a listener's idle wait (half a second), which calls nothing.
            QVERIFY2(!m_calls.tryAcquire(1, 1200), "a callback came without its own signal");
            QCOMPARE(sharedMemory().size(), before.size() + 1);
        }
        // The last object of a name takes its shared memory with it.
        QCOMPARE(sharedMemory(), before);
    }

    void listenerOutlivesFaultyCallbacksAndIsAwaited()
    {
        const LogCapture::Mark mark;
        std::atomic<int> calls{0};
        std::atomic<bool> finished{false};
        auto event = CreateInterProcessEvent(m_name);
        event->StartListening([&] {
            m_calls.release();
            if (++calls == 1)
                throw std::runtime_error("broken listener");
            if (calls == 2)
                throw 42;
            QThread::msleep(300);
            finished = true;
        });
        for (int i = 0; i < 3; ++i) {
            event->Signal();
            QVERIFY(m_calls.tryAcquire(1, 10000));
        }
        event.reset();
        QVERIFY2(finished.load(), "the object was destroyed while its listener still ran");
        // Never listened, or listening with nothing signalled: destroyed at once.
        CreateInterProcessEvent(m_name).reset();
        CreateInterProcessEvent(m_name)->StartListening(std::function<void()>());
        const QString threw = QStringLiteral("InterProcessEvent: the callback of \"%1\" threw").arg(m_name);
        QCOMPARE(mark.Texts(), QStringList({"4 " + threw + ": broken listener", "4 " + threw + " an exception",
                                            QStringLiteral("4 InterProcessEvent: \"%1\" has an empty callback; its signals are only taken").arg(m_name)}));
    }
};

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
