// RunAsync: a task on Qt's global thread pool and a callback in the receiver's thread,
// each guarded by the lifetime of the object it belongs to.

#include <qt_halvo/application/run_async.h>

#include "log_capture.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QScopeGuard>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtTest/QtTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <vector>

using OrvantaQT::RunAsync;
using Watcher = QPointer<QFutureWatcher<void>>;

namespace {

const int kErrorLevel = 4;

// One call's task and callback, and what they saw. The task runs on a pool thread and,
// gated, returns once released; the callback may run on another thread than the test's.
struct Record
{
    std::atomic<int> taskRuns{0};
    std::atomic<int> callbackRuns{0};
    std::atomic<int> taskRunsAtCallback{-1};
    std::atomic<QThread*> taskThread{nullptr};
    std::atomic<QThread*> callbackThread{nullptr};
    QSemaphore started;
    QSemaphore gate;

    std::function<void()> Task(bool gated = false)
    {
        return [this, gated] {
            taskThread = QThread::currentThread();
            started.release();
            if (gated)
                gate.tryAcquire(1, 10000);
            ++taskRuns;
        };
    }

    std::function<void()> Callback()
    {
        return [this] {
            callbackThread = QThread::currentThread();
            taskRunsAtCallback = taskRuns.load();
            ++callbackRuns;
        };
    }
};

// Gives a queued callback or a deferred deletion that should not happen the chance to.
void RunPendingEvents()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Runs events until the spy has seen its signal, at once when it has.
bool Seen(QSignalSpy& spy)
{
    return !spy.isEmpty() || spy.wait(10000);
}

// The texts of the lines logged since mark, marked when they are not errors.
QStringList Logged(const LogCapture::Mark& mark)
{
    QStringList texts;
    for (const LoggedLine& line : mark.Since())
        texts << (line.level == kErrorLevel ? QString() : QStringLiteral("level %1: ").arg(line.level)) + line.text;
    return texts;
}

} // namespace

class TestRunAsync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void completion_data();
    void completion();
    void manyCallsEachCompleteOnce();
    void destroyedWhileTheTaskRuns_data();
    void destroyedWhileTheTaskRuns();
    void ownerDestroyedBeforeTheTaskStarts();
};

void TestRunAsync::cleanup()
{
    // No task of one test may still run in the next.
    QVERIFY(QThreadPool::globalInstance()->waitForDone(30000));
    RunPendingEvents();
}

void TestRunAsync::completion_data()
{
    // What RunAsync is given: 4 arguments (task, callback, receiver, owner), 3 (the owner
    // receives) or 2 (no callback)...
    QTest::addColumn<int>("arguments");
    QTest::addColumn<bool>("withOwner");
    QTest::addColumn<bool>("receiverOnAnotherThread");
    QTest::addColumn<bool>("withTask");
    QTest::addColumn<bool>("withCallback");
    // ...and what follows.
    QTest::addColumn<bool>("taskRuns");
    QTest::addColumn<bool>("callbackRuns");
    QTest::addColumn<bool>("watcherDeletesItself");

    QTest::newRow("owner and receiver") << 4 << true << false << true << true << true << true << true;
    QTest::newRow("receiver on another thread") << 4 << true << true << true << true << true << true << true;
    QTest::newRow("owner as receiver") << 3 << true << false << true << true << true << true << true;
    QTest::newRow("without callback") << 2 << true << false << true << false << true << false << true;
    QTest::newRow("empty callback") << 4 << true << false << true << false << true << false << true;
    // Logged; the rest goes on as for a task that did nothing.
    QTest::newRow("empty task") << 3 << true << false << false << true << false << true << true;
    // The task belongs to no live owner and is skipped, but completion still comes.
    QTest::newRow("no owner") << 4 << false << false << true << true << false << true << true;
    // Nothing runs and nothing deletes the watcher: it is left to the caller.
    QTest::newRow("neither owner nor receiver") << 3 << false << false << true << true << false << false << false;
}

void TestRunAsync::completion()
{
    QFETCH(int, arguments);
    QFETCH(bool, withOwner);
    QFETCH(bool, receiverOnAnotherThread);
    QFETCH(bool, withTask);
    QFETCH(bool, withCallback);
    QFETCH(bool, taskRuns);
    QFETCH(bool, callbackRuns);
    QFETCH(bool, watcherDeletesItself);

    auto owner = withOwner ? std::make_unique<QObject>() : nullptr;
    QObject here;
    QThread receiverThread;
    const auto stopReceiverThread = qScopeGuard([&receiverThread] {
        receiverThread.quit();
        receiverThread.wait();
    });
    QObject* receiverObject = arguments == 4 ? &here : owner.get();
    if (receiverOnAnotherThread) {
        receiverObject = new QObject;
        receiverObject->moveToThread(&receiverThread);
        connect(&receiverThread, &QThread::finished, receiverObject, &QObject::deleteLater);
        receiverThread.start();
    }
    Record record;
    const std::function<void()> task = withTask ? record.Task(taskRuns) : std::function<void()>();
    const std::function<void()> callback = withCallback ? record.Callback() : std::function<void()>();
    const LogCapture::Mark mark;
    const Watcher watcher = arguments == 4   ? RunAsync(task, callback, receiverObject, owner.get())
                            : arguments == 3 ? RunAsync(task, callback, owner.get())
                                             : RunAsync(task, owner.get());
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), owner.get());
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);
    QSignalSpy destroyed(watcher.data(), &QObject::destroyed);
    if (taskRuns) {
        // The watcher follows the task, and the callback waits for it.
        QVERIFY(record.started.tryAcquire(1, 10000));
        QVERIFY(record.taskThread.load() != QThread::currentThread());
        QVERIFY(!watcher->isFinished());
        QCOMPARE(record.callbackRuns.load(), 0);
        record.gate.release();
    }

    QVERIFY(Seen(finished));
    QVERIFY(!watcherDeletesItself || Seen(destroyed));
    RunPendingEvents();
    QCOMPARE(record.callbackRuns.load(), callbackRuns ? 1 : 0);
    if (callbackRuns) {
        QCOMPARE(record.callbackThread.load(), receiverObject->thread());
        QCOMPARE(record.taskRunsAtCallback.load(), record.taskRuns.load());
    }
    QCOMPARE(watcher.isNull(), watcherDeletesItself);
    QCOMPARE(record.taskRuns.load(), taskRuns ? 1 : 0);
    QCOMPARE(Logged(mark), withTask ? QStringList() : QStringList{QStringLiteral("RunAsync: the task is empty and is not run")});

    // Once it has all happened, the owner's end changes nothing.
    owner.reset();
    RunPendingEvents();
    QCOMPARE(record.callbackRuns.load(), callbackRuns ? 1 : 0);
    QCOMPARE(record.taskRuns.load(), taskRuns ? 1 : 0);
    delete watcher.data();
}

void TestRunAsync::manyCallsEachCompleteOnce()
{
    QObject owner;
    QObject receiver;
    std::vector<std::unique_ptr<Record>> records;
    QVector<Watcher> watchers;
    for (int i = 0; i < 200; ++i) {
        records.push_back(std::make_unique<Record>());
        watchers << RunAsync(records.back()->Task(), records.back()->Callback(), &receiver, &owner);
    }
    // Each watcher deletes itself after its callback.
    QTRY_VERIFY_WITH_TIMEOUT(std::all_of(watchers.cbegin(), watchers.cend(), [](const Watcher& watcher) { return watcher.isNull(); }),
                             30000);
    for (const auto& record : records) {
        QCOMPARE(record->taskRuns.load(), 1);
        QCOMPARE(record->callbackRuns.load(), 1);
        QCOMPARE(record->taskRunsAtCallback.load(), 1);
    }
}

void TestRunAsync::destroyedWhileTheTaskRuns_data()
{
    QTest::addColumn<bool>("ownerDestroyed"); // else the receiver
    QTest::addColumn<bool>("taskThrows");
    QTest::newRow("receiver") << false << false;
    QTest::newRow("owner") << true << false;
    // Waiting for the task rethrows what it threw: that must not escape the owner's end.
    QTest::newRow("owner, task throws") << true << true;
}

void TestRunAsync::destroyedWhileTheTaskRuns()
{
    QFETCH(bool, ownerDestroyed);
    QFETCH(bool, taskThrows);
    auto* owner = new QObject;
    auto* receiver = new QObject;
    const auto deleteTheOther = qScopeGuard([&] { delete (ownerDestroyed ? receiver : owner); });
    QObject* destroyed = ownerDestroyed ? owner : receiver;
    Record record;

    // Connected before RunAsync connects its own handler, so it runs first: the task is
    // released only once the destruction has begun.
    connect(destroyed, &QObject::destroyed, this, [&] { record.gate.release(); });
    const Watcher watcher = RunAsync(
        [&] {
            record.started.release();
            record.gate.tryAcquire(1, 10000);
            // Still busy a little after being released, so that a destruction that does
            // not wait is over before the task is.
            if (ownerDestroyed && !taskThrows)
                QThread::msleep(100);
            ++record.taskRuns;
            if (taskThrows)
                throw std::runtime_error("task failed");
        },
        record.Callback(), receiver, owner);
    QVERIFY(watcher);
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);
    QVERIFY(record.started.tryAcquire(1, 10000));

    const LogCapture::Mark mark;
    delete destroyed;
    if (ownerDestroyed) {
        QVERIFY2(record.taskRuns.load() == 1, "destroying the owner did not wait for its running task");
        QVERIFY(watcher.isNull()); // it went with its owner
    } else {
        QVERIFY(Seen(finished));
    }
    RunPendingEvents();
    QCOMPARE(record.taskRuns.load(), 1);
    QCOMPARE(record.callbackRuns.load(), 0);
    // Without a callback the watcher does not delete itself: it stays with its owner.
    QCOMPARE(watcher.isNull(), ownerDestroyed);
    const QStringList logged = Logged(mark);
    QCOMPARE(logged.size(), taskThrows ? 1 : 0);
    if (taskThrows)
        QVERIFY2(logged[0].startsWith(QLatin1String("RunAsync: the task threw")), qPrintable(logged[0]));
}

void TestRunAsync::ownerDestroyedBeforeTheTaskStarts()
{
    // Every pool thread is kept busy, so the task is still queued when its owner goes.
    QThreadPool* pool = QThreadPool::globalInstance();
    const int busyThreads = pool->maxThreadCount();
    QSemaphore busy;
    QSemaphore mayReturn;
    QVector<QFuture<void>> blockers;
    for (int i = 0; i < busyThreads; ++i) {
        blockers << QtConcurrent::run([&] {
            busy.release();
            mayReturn.tryAcquire(1, 10000);
        });
    }
    QVERIFY(busy.tryAcquire(busyThreads, 10000));

    auto* owner = new QObject;
    QObject receiver;
    Record record;
    const Watcher watcher = RunAsync(record.Task(), record.Callback(), &receiver, owner);
    QVERIFY(watcher);
    QVERIFY(!watcher->isFinished());

    delete owner;
    mayReturn.release(busyThreads);
    for (QFuture<void>& blocker : blockers)
        blocker.waitForFinished();
    QVERIFY(pool->waitForDone(10000));
    RunPendingEvents();

    QVERIFY(watcher.isNull());
    QCOMPARE(record.taskRuns.load(), 0);
    QCOMPARE(record.callbackRuns.load(), 0);
}

QTEST_GUILESS_MAIN(TestRunAsync)
#include "tst_run_async.moc"
