// Compiled into every test executable: before main runs, name the capture library as
// the logging library, so the library's first log call loads it.

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

namespace {

[[maybe_unused]] const bool captureInstalled = qputenv("QT_HALVO_LOG_LIBRARY", QByteArrayLiteral(QT_HALVO_LOG_CAPTURE_LIBRARY));

} // namespace
