// Main-thread dispatch from a worker thread: a blocking ExecuteInMainThread round trip
// and the throughput of non-blocking posts, next to QMetaObject::invokeMethod with
// Qt::BlockingQueuedConnection and Qt::QueuedConnection doing the same work.

#include <qt_halvo/application/application.h>

#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include <atomic>

using OrvantaQT::Application;
using OrvantaQT::ApplicationCommand;

namespace {

constexpr int kCalls = 2000;

struct Count : ApplicationCommand
{
    explicit Count(std::atomic<int>& counter) : counter(counter) {}
    void Execute() override { counter.fetch_add(1, std::memory_order_relaxed); }
    std::atomic<int>& counter;
};

// Runs work on a worker thread while the main thread serves its events, until the
// worker has finished and the main thread has run `expected` commands.
void Serve(const std::function<void()>& work, const std::atomic<int>& counter, int expected)
{
    QEventLoop loop;
    QThread* worker = QThread::create(work);
    QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
    worker->start();
    loop.exec();
    worker->wait();
    delete worker;
    while (counter.load() < expected)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace

enum class Way { Library, InvokeMethod };
Q_DECLARE_METATYPE(Way)

class BenchApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dispatch_data();
    void dispatch();
};

void BenchApplication::dispatch_data()
{
    QTest::addColumn<Way>("way");
    QTest::addColumn<bool>("blocking");
    QTest::newRow("blocking ExecuteInMainThread, 2000 calls") << Way::Library << true;
    QTest::newRow("blocking invokeMethod, 2000 calls") << Way::InvokeMethod << true;
    QTest::newRow("non-blocking ExecuteInMainThread, 2000 posts") << Way::Library << false;
    QTest::newRow("queued invokeMethod, 2000 posts") << Way::InvokeMethod << false;
}

void BenchApplication::dispatch()
{
    QFETCH(Way, way);
    QFETCH(bool, blocking);
    Application* application = Application::instance();
    const Qt::ConnectionType connection = blocking ? Qt::BlockingQueuedConnection : Qt::QueuedConnection;
    QBENCHMARK {
        std::atomic<int> counter{0};
        Serve(
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    if (way == Way::Library)
                        application->ExecuteInMainThread(std::make_shared<Count>(counter), blocking);
                    else
                        QMetaObject::invokeMethod(application, [&counter] { counter.fetch_add(1); }, connection);
                }
            },
            counter, kCalls);
    }
}

int main(int argc, char** argv)
{
    Application application(argc, argv, 1, QStringLiteral("en"));
    BenchApplication benchmark;
    return QTest::qExec(&benchmark, argc, argv);
}

#include "bench_application.moc"
