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

#include <atomic>
#include <memory>
#include <stdexcept>
#include <vector>

using OrvantaQT::RunAsync;
using Watcher = QPointer<QFutureWatcher<void>>;

namespace {

const int kErrorLevel = 4;

// What a task saw, written on a pool thread.
struct TaskRecord
{
    std::atomic<int> runs{0};
    std::atomic<QThread*> thread{nullptr};

    std::function<void()> Task()
    {
        return [this] {
            thread = QThread::currentThread();
            ++runs;
        };
    }
};

// What a callback saw. The callback may run on another thread than the test's.
struct CallbackRecord
{
    std::atomic<int> runs{0};
    std::atomic<QThread*> thread{nullptr};
    std::atomic<int> taskRunsSeen{-1};

    std::function<void()> Callback(const TaskRecord* task = nullptr)
    {
        return [this, task] {
            thread = QThread::currentThread();
            if (task)
                taskRunsSeen = task->runs.load();
            ++runs;
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

} // namespace

class TestRunAsync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    // The three forms
    void taskRunsOnThePoolThenCallbackInTheReceiversThread();
    void ownerServesAsReceiver();
    void formWithoutCallback();
    void emptyCallbackOnlyDeletesTheWatcher();
    void callbackRunsInAReceiverOnAnotherThread();
    void manyCallsEachCompleteOnce();

    // Lifetimes
    void ownerNullAtTheCall();
    void neitherOwnerNorReceiver();
    void receiverDestroyedBeforeTheTaskEnds();
    void ownerDestroyedWhileTheTaskRuns();
    void ownerDestroyedBeforeTheTaskStarts();
    void ownerDestroyedAfterCompletion();

    // Failures
    void emptyTaskIsLoggedAndNotRun();
    void taskThrowingWhileItsOwnerIsDestroyedIsLogged();
};

void TestRunAsync::cleanup()
{
    // No task of one test may still run in the next.
    QVERIFY(QThreadPool::globalInstance()->waitForDone(30000));
    RunPendingEvents();
}

// ---------------------------------------------------------------------------------------
// The three forms

void TestRunAsync::taskRunsOnThePoolThenCallbackInTheReceiversThread()
{
    QObject owner;
    QObject receiver;
    TaskRecord task;
    CallbackRecord callback;

    const Watcher watcher = RunAsync(task.Task(), callback.Callback(&task), &receiver, &owner);
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), &owner);
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);

    QTRY_COMPARE(callback.runs.load(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(task.runs.load(), 1);
    QVERIFY(task.thread.load() != QThread::currentThread());
    QCOMPARE(callback.thread.load(), QThread::currentThread());
    QCOMPARE(callback.taskRunsSeen.load(), 1); // the task had returned when the callback ran

    // The watcher deletes itself after the callback, and only then.
    QTRY_VERIFY(watcher.isNull());
    RunPendingEvents();
    QCOMPARE(callback.runs.load(), 1);
    QCOMPARE(task.runs.load(), 1);
}

void TestRunAsync::ownerServesAsReceiver()
{
    QObject owner;
    TaskRecord task;
    CallbackRecord callback;

    const Watcher watcher = RunAsync(task.Task(), callback.Callback(&task), &owner);
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), &owner);

    QTRY_COMPARE(callback.runs.load(), 1);
    QCOMPARE(callback.thread.load(), QThread::currentThread());
    QCOMPARE(callback.taskRunsSeen.load(), 1);
    QTRY_VERIFY(watcher.isNull());
}

void TestRunAsync::formWithoutCallback()
{
    QObject owner;
    QSemaphore mayReturn;
    std::atomic<bool> returned{false};

    const Watcher watcher = RunAsync(
        [&] {
            mayReturn.tryAcquire(1, 10000);
            returned = true;
        },
        &owner);
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), &owner);

    // The returned watcher follows the task.
    QVERIFY(!watcher->isFinished());
    mayReturn.release();
    watcher->waitForFinished();
    QVERIFY(returned.load());
    QTRY_VERIFY(watcher.isNull());
}

void TestRunAsync::emptyCallbackOnlyDeletesTheWatcher()
{
    QObject owner;
    QObject receiver;
    TaskRecord task;
    const LogCapture::Mark mark;

    const Watcher watcher = RunAsync(task.Task(), std::function<void()>(), &receiver, &owner);
    QVERIFY(watcher);
    QSignalSpy destroyed(watcher.data(), &QObject::destroyed);
    QTRY_COMPARE(destroyed.count(), 1);
    QCOMPARE(task.runs.load(), 1);
    QVERIFY(mark.Since().isEmpty());
}

void TestRunAsync::callbackRunsInAReceiverOnAnotherThread()
{
    QObject owner;
    QThread receiverThread;
    auto* receiver = new QObject;
    receiver->moveToThread(&receiverThread);
    connect(&receiverThread, &QThread::finished, receiver, &QObject::deleteLater);
    receiverThread.start();
    const auto stopReceiverThread = qScopeGuard([&receiverThread] {
        receiverThread.quit();
        receiverThread.wait();
    });

    TaskRecord task;
    CallbackRecord callback;
    const Watcher watcher = RunAsync(task.Task(), callback.Callback(&task), receiver, &owner);
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), &owner);

    QTRY_COMPARE(callback.runs.load(), 1);
    QCOMPARE(callback.thread.load(), &receiverThread);
    QCOMPARE(callback.taskRunsSeen.load(), 1);
    // Deleted later in its own thread, the test's.
    QTRY_VERIFY(watcher.isNull());
}

void TestRunAsync::manyCallsEachCompleteOnce()
{
    const int calls = 200;
    QObject owner;
    QObject receiver;
    std::vector<std::unique_ptr<TaskRecord>> tasks;
    std::vector<std::unique_ptr<CallbackRecord>> callbacks;
    QVector<Watcher> watchers;
    for (int i = 0; i < calls; ++i) {
        tasks.push_back(std::make_unique<TaskRecord>());
        callbacks.push_back(std::make_unique<CallbackRecord>());
        watchers << RunAsync(tasks.back()->Task(), callbacks.back()->Callback(tasks.back().get()), &receiver, &owner);
    }
    const auto completed = [&] {
        int count = 0;
        for (const auto& callback : callbacks)
            count += callback->runs.load();
        return count;
    };
    QTRY_COMPARE_WITH_TIMEOUT(completed(), calls, 30000);
    for (int i = 0; i < calls; ++i) {
        QCOMPARE(tasks[i]->runs.load(), 1);
        QCOMPARE(callbacks[i]->taskRunsSeen.load(), 1);
    }
    const auto remaining = [&] {
        int count = 0;
        for (const Watcher& watcher : watchers)
            count += watcher.isNull() ? 0 : 1;
        return count;
    };
    QTRY_COMPARE(remaining(), 0);
}

// ---------------------------------------------------------------------------------------
// Lifetimes

void TestRunAsync::ownerNullAtTheCall()
{
    QObject receiver;
    TaskRecord task;
    CallbackRecord callback;

    const Watcher watcher = RunAsync(task.Task(), callback.Callback(), &receiver, nullptr);
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), nullptr);
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);

    // The task belongs to no live owner and is skipped, but completion still comes.
    QTRY_COMPARE(callback.runs.load(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(callback.thread.load(), QThread::currentThread());
    QTRY_VERIFY(watcher.isNull());
    QCOMPARE(task.runs.load(), 0);
}

void TestRunAsync::neitherOwnerNorReceiver()
{
    TaskRecord task;
    CallbackRecord callback;

    Watcher watcher = RunAsync(task.Task(), callback.Callback(), QPointer<QObject>());
    QVERIFY(watcher);
    QCOMPARE(watcher->parent(), nullptr);
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);
    QTRY_COMPARE(finished.count(), 1);
    RunPendingEvents();

    // Nothing runs, and nothing deletes the watcher: it is left to the caller.
    QCOMPARE(task.runs.load(), 0);
    QCOMPARE(callback.runs.load(), 0);
    QVERIFY(!watcher.isNull());
    delete watcher.data();
}

void TestRunAsync::receiverDestroyedBeforeTheTaskEnds()
{
    QObject owner;
    auto* receiver = new QObject;
    QSemaphore started;
    QSemaphore mayReturn;
    std::atomic<int> taskRuns{0};
    CallbackRecord callback;

    const Watcher watcher = RunAsync(
        [&] {
            started.release();
            mayReturn.tryAcquire(1, 10000);
            ++taskRuns;
        },
        callback.Callback(), receiver, &owner);
    QVERIFY(watcher);
    QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);

    QVERIFY(started.tryAcquire(1, 10000));
    delete receiver;
    mayReturn.release();

    QTRY_COMPARE(finished.count(), 1);
    RunPendingEvents();
    QCOMPARE(taskRuns.load(), 1);
    QCOMPARE(callback.runs.load(), 0);
    // No callback, so no self-deletion: the watcher stays with its owner.
    QVERIFY(!watcher.isNull());
    QCOMPARE(watcher->parent(), &owner);
}

void TestRunAsync::ownerDestroyedWhileTheTaskRuns()
{
    auto* owner = new QObject;
    QObject receiver;
    QSemaphore started;
    QSemaphore mayReturn;
    std::atomic<bool> returned{false};
    CallbackRecord callback;

    // Connected before RunAsync connects its own handler, so it runs first when the owner
    // is destroyed: the task is released only once the destruction has begun.
    connect(owner, &QObject::destroyed, this, [&] { mayReturn.release(); });

    const Watcher watcher = RunAsync(
        [&] {
            started.release();
            mayReturn.tryAcquire(1, 10000);
            // Still busy a little after being released, so that a destruction that does
            // not wait is over before the task is.
            QThread::msleep(100);
            returned = true;
        },
        callback.Callback(), &receiver, owner);
    QVERIFY(watcher);

    QVERIFY(started.tryAcquire(1, 10000));
    delete owner;
    QVERIFY2(returned.load(), "destroying the owner did not wait for its running task");
    QVERIFY(watcher.isNull()); // it went with its owner

    RunPendingEvents();
    QCOMPARE(callback.runs.load(), 0);
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
    TaskRecord task;
    CallbackRecord callback;
    const Watcher watcher = RunAsync(task.Task(), callback.Callback(), &receiver, owner);
    QVERIFY(watcher);
    QVERIFY(!watcher->isFinished());

    delete owner;
    mayReturn.release(busyThreads);
    for (QFuture<void>& blocker : blockers)
        blocker.waitForFinished();
    QVERIFY(pool->waitForDone(10000));
    RunPendingEvents();

    QVERIFY(watcher.isNull());
    QCOMPARE(task.runs.load(), 0);
    QCOMPARE(callback.runs.load(), 0);
}

void TestRunAsync::ownerDestroyedAfterCompletion()
{
    auto* owner = new QObject;
    TaskRecord task;
    CallbackRecord callback;
    const Watcher watcher = RunAsync(task.Task(), callback.Callback(), owner);
    QTRY_VERIFY(watcher.isNull());
    QCOMPARE(callback.runs.load(), 1);

    delete owner;
    RunPendingEvents();
    QCOMPARE(task.runs.load(), 1);
    QCOMPARE(callback.runs.load(), 1);
}

// ---------------------------------------------------------------------------------------
// Failures

void TestRunAsync::emptyTaskIsLoggedAndNotRun()
{
    QObject owner;
    CallbackRecord callback;
    const LogCapture::Mark mark;

    const Watcher watcher = RunAsync(std::function<void()>(), callback.Callback(), &owner);
    QVERIFY(watcher);
    QVERIFY(mark.Contains(kErrorLevel, QStringLiteral("RunAsync: the task is empty and is not run")));

    // Completion still comes.
    QTRY_COMPARE(callback.runs.load(), 1);
    QTRY_VERIFY(watcher.isNull());
}

void TestRunAsync::taskThrowingWhileItsOwnerIsDestroyedIsLogged()
{
    // Waiting for the task rethrows what it threw; that must not escape the owner's
    // destruction.
    auto* owner = new QObject;
    QObject receiver;
    QSemaphore started;
    QSemaphore mayThrow;
    CallbackRecord callback;
    connect(owner, &QObject::destroyed, this, [&] { mayThrow.release(); });

    const Watcher watcher = RunAsync(
        [&] {
            started.release();
            mayThrow.tryAcquire(1, 10000);
            throw std::runtime_error("task failed");
        },
        callback.Callback(), &receiver, owner);
    QVERIFY(watcher);
    QVERIFY(started.tryAcquire(1, 10000));

    const LogCapture::Mark mark;
    delete owner;
    QVERIFY(watcher.isNull());
    bool logged = false;
    for (const LoggedLine& line : mark.Since())
        logged = logged || (line.level == kErrorLevel && line.text.startsWith(QLatin1String("RunAsync: the task threw")));
    QVERIFY2(logged, "the task's exception was not logged");
    RunPendingEvents();
    QCOMPARE(callback.runs.load(), 0);
}

QTEST_GUILESS_MAIN(TestRunAsync)
#include "tst_run_async.moc"
