#include <qt_halvo/application/run_async.h>

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/thread_sanitizer_p.h>

#include <QtConcurrent/QtConcurrentRun>

#include <exception>

namespace OrvantaQT {

namespace {

using Watcher = QPointer<QFutureWatcher<void>>;

// Where a task's closure passes from the starting thread to the pool and back.
const char kTaskHandOver = 0;

// The owner is gone: the callback may no longer run, and the task may still be
// running, so the destroying thread waits for it.
void StopWatching(const Watcher& watcher)
{
    if (!watcher)
        return;
    QObject::disconnect(watcher, nullptr, nullptr, nullptr);
    try {
        watcher->waitForFinished();
        QTH_TAKEN_OVER(&kTaskHandOver);
    } catch (const std::exception& exception) {
        QTH_LOG_ERROR("RunAsync: the task threw: %s", exception.what());
    } catch (...) {
        QTH_LOG_ERROR("RunAsync: the task threw an exception");
    }
}

} // namespace

Watcher RunAsync(std::function<void()> task, std::function<void()> onFinished, QPointer<QObject> receiver,
                 QPointer<QObject> owner)
{
    if (!task)
        QTH_LOG_ERROR("RunAsync: the task is empty and is not run");
    Watcher watcher = new QFutureWatcher<void>(owner ? owner.data() : nullptr);
    QTH_HANDED_OVER(&kTaskHandOver);
    watcher->setFuture(QtConcurrent::run([task = std::move(task), owner] {
        QTH_TAKEN_OVER(&kTaskHandOver);
        if (owner && task)
            task();
        QTH_HANDED_OVER(&kTaskHandOver);
    }));
    if (owner)
        QObject::connect(owner.data(), &QObject::destroyed, watcher.data(), [watcher] { StopWatching(watcher); });
    // Without a live receiver the callback never runs; the watcher then stands in as context.
    QObject::connect(watcher.data(), &QFutureWatcherBase::finished, receiver ? receiver.data() : watcher.data(),
                     [onFinished = std::move(onFinished), watcher, receiver] {
                         QTH_TAKEN_OVER(&kTaskHandOver);
                         if (!receiver)
                             return;
                         if (onFinished)
                             onFinished();
                         if (watcher)
                             watcher->deleteLater();
                     });
    return watcher;
}

Watcher RunAsync(std::function<void()> task, std::function<void()> onFinished, QPointer<QObject> owner)
{
    return RunAsync(std::move(task), std::move(onFinished), owner, owner);
}

Watcher RunAsync(std::function<void()> task, QPointer<QObject> owner)
{
    return RunAsync(std::move(task), std::function<void()>(), owner);
}

} // namespace OrvantaQT
