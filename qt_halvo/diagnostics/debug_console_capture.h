// Records the library's log lines and Qt's messages for the debug console: a bounded,
// thread-safe ring that every thread writes into and the GUI thread reads in batches.
// Each message still goes on to the handler installed before, so QT_MESSAGE_PATTERN,
// log files and a host's own handler keep working.
#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QVector>

namespace OrvantaQT {

struct QT_HALVO_EXPORT DebugConsoleLine
{
    enum class Origin
    {
        Library, // a QTH_LOG_* line of the library
        Qt       // qDebug, qInfo, qWarning, qCritical, qFatal and their categories
    };
    Origin origin = Origin::Qt;
    // Library lines: 0 information, 1 warning, 2 error. Qt messages: their QtMsgType.
    int level = 0;
    // Library lines: the call site's tag. Qt messages: the category ("default" without one).
    QString category;
    QString text;
    // Qt messages where the context has them; empty and 0 otherwise.
    QString file;
    int line = 0;
    QString function;
    QDateTime time;
    quint64 threadId = 0;
    // From 1 in the order lines were recorded; a gap is lines the ring dropped.
    quint64 sequence = 0;
};

// Starts recording into a ring of capacity lines (at least 1). Installing again changes
// nothing but the capacity; false when it could not be installed.
QT_HALVO_EXPORT bool InstallDebugConsoleCapture(int capacity = 100000);
// Stops recording and puts the message handler that was there before back.
QT_HALVO_EXPORT void UninstallDebugConsoleCapture();
QT_HALVO_EXPORT bool IsDebugConsoleCaptureInstalled();

// At most maxLines of the lines recorded after the one numbered `after`, oldest first;
// dropped (when given) is set to the number of such lines the ring no longer holds.
QT_HALVO_EXPORT QVector<DebugConsoleLine> DebugConsoleLinesAfter(quint64 after, int maxLines, quint64* dropped = nullptr);
// The number of the last line recorded; 0 before any.
QT_HALVO_EXPORT quint64 DebugConsoleLastSequence();
// Empties the ring; numbering goes on.
QT_HALVO_EXPORT void ClearDebugConsoleCapture();

} // namespace OrvantaQT
