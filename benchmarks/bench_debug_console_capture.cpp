// Messages per second that 4 threads get through qWarning and the library's log with the
// debug console's capture on, beside the same run with it off: Qt's handler chain ending
// in a handler that drops everything, and the library's log into a library that does.

#include <qt_halvo/diagnostics/debug_console_capture.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtTest/QtTest>

#include <cstdio>
#include <thread>
#include <vector>

using namespace OrvantaQT;

namespace {

constexpr int kThreads = 4;
constexpr int kEach = 100000;

void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

class BenchDebugConsoleCapture : public QObject
{
    Q_OBJECT

    QtMessageHandler m_testLibHandler = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
        QTH_LOG_INFO("loads the logging library before the clock runs");
        m_testLibHandler = qInstallMessageHandler(DropMessage);
    }

    void cleanupTestCase() { qInstallMessageHandler(m_testLibHandler); }

    void messages_data()
    {
        QTest::addColumn<bool>("library");
        QTest::addColumn<bool>("capture");
        QTest::newRow("qWarning, Qt's chain only (peer)") << false << false;
        QTest::newRow("qWarning, captured") << false << true;
        QTest::newRow("library log, no capture (peer)") << true << false;
        QTest::newRow("library log, captured") << true << true;
    }
    void messages()
    {
        QFETCH(bool, library);
        QFETCH(bool, capture);
        if (capture)
            QVERIFY(InstallDebugConsoleCapture(100000));
        const quint64 first = DebugConsoleLastSequence();
        QElapsedTimer timer;
        qint64 nanoseconds = 0;
        QBENCHMARK_ONCE {
            timer.start();
            std::vector<std::thread> threads;
            for (int t = 0; t < kThreads; ++t) {
                threads.emplace_back([t, library] {
                    for (int i = 0; i < kEach; ++i) {
                        if (library)
                            QTH_LOG_WARNING("message %d from thread %d", i, t);
                        else
                            qWarning("message %d from thread %d", i, t);
                    }
                });
            }
            for (std::thread& thread : threads)
                thread.join();
            nanoseconds = timer.nsecsElapsed();
        }
        UninstallDebugConsoleCapture();
        ClearDebugConsoleCapture();
        QCOMPARE(DebugConsoleLastSequence() - first, capture ? quint64(kThreads) * kEach : 0);
        std::printf("  %-36s %10.0f messages/s\n", QTest::currentDataTag(),
                    double(kThreads) * kEach * 1e9 / double(nanoseconds));
    }
};

QTEST_GUILESS_MAIN(BenchDebugConsoleCapture)
#include "bench_debug_console_capture.moc"
