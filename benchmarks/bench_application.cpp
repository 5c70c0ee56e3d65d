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
    void blockingRoundTrips_data();
    void blockingRoundTrips();
    void nonBlockingPosts_data();
    void nonBlockingPosts();
};

void BenchApplication::blockingRoundTrips_data()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("ExecuteInMainThread, 2000 calls") << Way::Library;
    QTest::newRow("invokeMethod blocking, 2000 calls") << Way::InvokeMethod;
}

void BenchApplication::blockingRoundTrips()
{
    QFETCH(Way, way);
    Application* application = Application::instance();
    QBENCHMARK {
        std::atomic<int> counter{0};
        Serve(
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    if (way == Way::Library)
                        application->ExecuteInMainThread(std::make_shared<Count>(counter), true);
                    else
                        QMetaObject::invokeMethod(application, [&counter] { counter.fetch_add(1); },
                                                  Qt::BlockingQueuedConnection);
                }
            },
            counter, kCalls);
    }
}

void BenchApplication::nonBlockingPosts_data()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("ExecuteInMainThread, 2000 posts") << Way::Library;
    QTest::newRow("invokeMethod queued, 2000 posts") << Way::InvokeMethod;
}

void BenchApplication::nonBlockingPosts()
{
    QFETCH(Way, way);
    Application* application = Application::instance();
    QBENCHMARK {
        std::atomic<int> counter{0};
        Serve(
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    if (way == Way::Library)
                        application->ExecuteInMainThread(std::make_shared<Count>(counter), false);
                    else
                        QMetaObject::invokeMethod(application, [&counter] { counter.fetch_add(1); },
                                                  Qt::QueuedConnection);
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
