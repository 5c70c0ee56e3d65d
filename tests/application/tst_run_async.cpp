// RunAsync: a task on Qt's global thread pool and a callback in the receiver's thread,
// each guarded by the lifetime of the object it belongs to.

#include <qt_halvo/application/run_async.h>

#include "test_support.h"

#include <atomic>
#include <stdexcept>

class TestRunAsync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runAsync_data()
    {
        // RunAsync with 4 arguments (task, callback, receiver, owner), 3 (the owner receives) or 2 (no
        // callback); a receiver of its own has a thread of its own unless the row destroys it.
        QTest::addColumn<int>("arguments");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("expected"); // task and callback runs, whether the watcher is left
        QTest::addColumn<QString>("logged");   // an error
        QTest::newRow("receiver on another thread") << 4 << "" << "1 1 gone" << "";
        QTest::newRow("owner as receiver") << 3 << "" << "1 1 gone" << "";
        QTest::newRow("without callback") << 2 << "" << "1 0 gone" << "";
        QTest::newRow("empty task") << 3 << "no task" << "0 1 gone" << "RunAsync: the task is empty and is not run";
        // The task belongs to no live owner and is skipped, but the callback still comes.
        QTest::newRow("no owner") << 4 << "no owner" << "0 1 gone" << "";
        // Nothing runs and nothing deletes the watcher: it is the caller's.
        QTest::newRow("neither owner nor receiver") << 3 << "no owner" << "0 0 left" << "";
        // Destroying the owner waits for the running task, and the watcher goes with it. What waiting
        // rethrows stays there (Qt's pool passes on only QExceptions: others arrive as a std::exception).
        QTest::newRow("owner destroyed while the task runs") << 4 << "owner goes" << "1 0 gone" << "";
        QTest::newRow("owner destroyed while the task runs, which throws")
            << 4 << "owner goes, task throws" << "1 0 gone" << "RunAsync: the task threw: std::exception";
        QTest::newRow("receiver destroyed while the task runs") << 4 << "receiver goes" << "1 0 left" << "";
    }
    void runAsync()
    {
        QFETCH(int, arguments);
        QFETCH(QString, row);
        QFETCH(QString, expected);
        QFETCH(QString, logged);
        QPointer<QObject> owner = row == QLatin1String("no owner") ? nullptr : new QObject;
        QObject* receiver = arguments == 4 ? new QObject : nullptr;
        QThread receiving;
        if (receiver && row != QLatin1String("receiver goes")) {
            receiver->moveToThread(&receiving);
            connect(&receiving, &QThread::finished, receiver, &QObject::deleteLater);
            receiving.start();
        }
        const QThread* callbackThread = receiving.isRunning() ? &receiving : QThread::currentThread();
        // What the task and callback saw. The task goes on once released: at once, or when
        // what the row destroys begins to go.
        std::atomic<int> ranTasks{0}, ranCallbacks{0}, tasksAtCallback{-1};
        std::atomic<const QThread*> taskOn{nullptr}, callbackOn{nullptr};
        QSemaphore started, released;
        // Nothing may outlive what it refers to, also when the test fails.
        const auto stop = qScopeGuard([&] {
            released.release(100);
            QThreadPool::globalInstance()->waitForDone(30000);
            receiving.quit();
            receiving.wait();
        });
        QObject* going = row.startsWith(QLatin1String("owner goes")) ? owner.data() : row == QLatin1String("receiver goes") ? receiver : nullptr;
        // Connected before RunAsync connects its own handler, so it runs first.
        if (going)
            connect(going, &QObject::destroyed, [&released] { released.release(); });
        else
            released.release();
        std::function<void()> task = [&, row] {
            taskOn = QThread::currentThread();
            started.release();
            released.tryAcquire(1, 10000);
            // Still busy a little after being released, so that a destruction that does
            // not wait is over before the task is.
            if (row == QLatin1String("owner goes"))
                QThread::msleep(100);
            ++ranTasks;
            if (row.endsWith(QLatin1String("throws")))
                throw std::runtime_error("task failed");
        };
        if (row == QLatin1String("no task"))
            task = nullptr;
        const auto callback = [&] {
            callbackOn = QThread::currentThread();
            tasksAtCallback = ranTasks.load();
            ++ranCallbacks;
        };

        const LogCapture::Mark mark;
        const QPointer<QFutureWatcher<void>> watcher = arguments == 4 ? OrvantaQT::RunAsync(task, callback, receiver, owner)
                                                       : arguments == 3 ? OrvantaQT::RunAsync(task, callback, owner)
                                                                        : OrvantaQT::RunAsync(task, owner);
        QSignalSpy finished(watcher.data(), &QFutureWatcherBase::finished);
        QVERIFY(!going || started.tryAcquire(1, 10000));
        delete going;
        if (row.startsWith(QLatin1String("owner goes")))
            QVERIFY2(ranTasks.load() == 1, "destroying the owner did not wait for its running task");
        QVERIFY(watcher.isNull() || !finished.isEmpty() || finished.wait(10000));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const auto seen = [&] {
            return QStringLiteral("%1 %2 %3").arg(ranTasks.load()).arg(ranCallbacks.load()).arg(QLatin1String(watcher ? "left" : "gone"));
        };
        QTRY_COMPARE(seen(), expected);
        // Once it has all happened, the owner's end changes nothing.
        delete watcher.data();
        delete owner.data();
        QVERIFY(QThreadPool::globalInstance()->waitForDone(10000));
        QCoreApplication::processEvents();
        QCOMPARE(seen(), expected.left(4) + QLatin1String("gone"));
        QVERIFY(taskOn.load() != QThread::currentThread());
        QCOMPARE(callbackOn.load(), ranCallbacks.load() ? callbackThread : nullptr);
        QCOMPARE(tasksAtCallback.load(), ranCallbacks.load() ? ranTasks.load() : -1);
        QCOMPARE(mark.Texts(), logged.isEmpty() ? QStringList() : QStringList("4 " + logged));
    }
};

QTEST_GUILESS_MAIN(TestRunAsync)
#include "tst_run_async.moc"
