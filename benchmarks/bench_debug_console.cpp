// The debug console open and filtering while 4 threads write 100,000 messages each
// through qWarning and the library's log: messages per second captured, the time the GUI
// thread spends per second, its longest single event (a frame the user would wait for),
// and lines lost. The same run with the console hidden is the peer: the GUI thread's
// own cost without the console.

#include <qt_halvo/diagnostics/debug_console.h>
#include <qt_halvo/diagnostics/debug_console_capture.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

using namespace OrvantaQT;

namespace {

constexpr int kThreads = 4;
constexpr int kEach = 100000;

void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

// Times every event the GUI thread delivers.
class TimedApplication : public QApplication
{
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override
    {
        // Only the outermost event counts: nested ones are inside its time.
        if (QThread::currentThread() != thread())
            return QApplication::notify(receiver, event);
        if (m_depth > 0) {
            ++m_depth;
            const bool result = QApplication::notify(receiver, event);
            --m_depth;
            return result;
        }
        ++m_depth;
        QElapsedTimer timer;
        timer.start();
        const bool result = QApplication::notify(receiver, event);
        --m_depth;
        const qint64 spent = timer.nsecsElapsed();
        busy += spent;
        longest = qMax(longest, spent);
        return result;
    }
    qint64 busy = 0;
    qint64 longest = 0;

private:
    int m_depth = 0;
};

} // namespace

class BenchDebugConsole : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
        QTH_LOG_INFO("loads the logging library before the clock runs");
        qInstallMessageHandler(DropMessage);
        QVERIFY(InstallDebugConsoleCapture(100000));
    }

    void withConsole_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::newRow("console shown, text filter on") << true;
        QTest::newRow("peer: console hidden") << false;
    }
    void withConsole()
    {
        QFETCH(bool, shown);
        auto* app = static_cast<TimedApplication*>(qApp);
        DebugConsole console;
        console.resize(900, 500);
        console.SetTextFilter(QStringLiteral("7$"));
        console.Clear();
        if (shown) {
            console.show();
            QVERIFY(QTest::qWaitForWindowExposed(&console));
        }
        app->busy = 0;
        app->longest = 0;
        const quint64 first = DebugConsoleLastSequence();
        std::atomic<int> done{0};
        QElapsedTimer clock;
        clock.start();
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([t, &done] {
                for (int i = 0; i < kEach; ++i) {
                    if (i % 2)
                        qWarning("thread %d message %d", t, i);
                    else
                        QTH_LOG_WARNING("thread %d message %d", t, i);
                }
                ++done;
            });
        }
        // The GUI thread goes on with its event loop meanwhile.
        while (done < kThreads)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        const double seconds = clock.nsecsElapsed() / 1e9;
        const qint64 busy = app->busy;
        for (auto& thread : threads)
            thread.join();
        QTest::qWait(300);
        const quint64 recorded = DebugConsoleLastSequence() - first;
        // Qt messages go nowhere here; the figures go straight to the output.
        std::printf("%s: %.0f messages/s captured (%llu of %d), GUI thread busy %.0f ms per second, longest event %.1f ms, "
              "console holds %d lines, %llu dropped by the ring\n",
              QTest::currentDataTag(), recorded / seconds, recorded, kThreads * kEach,
              busy / 1e6 / seconds, app->longest / 1e6, console.LineCount(), console.DroppedLineCount());
        std::fflush(stdout);
        QTest::setBenchmarkResult(recorded / seconds, QTest::Events);
    }
};

int main(int argc, char** argv)
{
    TimedApplication app(argc, argv);
    BenchDebugConsole bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_debug_console.moc"
