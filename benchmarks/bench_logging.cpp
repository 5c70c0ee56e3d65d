// What a log call costs the caller inside qt_halvo, apart from the logging library's
// own writing: the call-site tag is built once, the message is formatted each time.

#include <qt_halvo/utilities/log_call_site_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtTest/QtTest>

class BenchLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void logLine();
    void callSiteTagFromScratch();
};

void BenchLogging::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
}

void BenchLogging::logLine()
{
    int i = 0;
    QBENCHMARK {
        QTH_LOG_INFO("[Benchmark] line %d of %s", ++i, "a typical message");
    }
}

// What every call would cost without the tag cache.
void BenchLogging::callSiteTagFromScratch()
{
    QBENCHMARK {
        const std::string path = OrvantaQT::Logging::SourcePathOf(__FILE__);
        const std::string name = OrvantaQT::Logging::FunctionNameOf(Q_FUNC_INFO);
        QVERIFY(!path.empty() && !name.empty());
    }
}

QTEST_GUILESS_MAIN(BenchLogging)
#include "bench_logging.moc"
