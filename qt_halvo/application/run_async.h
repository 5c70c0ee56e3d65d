#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QPointer>

#include <functional>

namespace OrvantaQT {

// Runs task on Qt's global thread pool and then onFinished in receiver's thread. The
// task runs only while owner lives; the callback only while receiver lives. Destroying
// owner while the task runs blocks the destroying thread until the task has returned,
// and the callback is not called. The returned watcher deletes itself after the
// callback, so it may be null later.
QT_HALVO_EXPORT QPointer<QFutureWatcher<void>> RunAsync(std::function<void()> task, std::function<void()> onFinished,
                                                        QPointer<QObject> receiver, QPointer<QObject> owner);

// The same with owner as the receiver.
QT_HALVO_EXPORT QPointer<QFutureWatcher<void>> RunAsync(std::function<void()> task, std::function<void()> onFinished,
                                                        QPointer<QObject> owner);

// The same without a callback.
QT_HALVO_EXPORT QPointer<QFutureWatcher<void>> RunAsync(std::function<void()> task, QPointer<QObject> owner);

} // namespace OrvantaQT
