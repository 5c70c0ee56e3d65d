// The library's logging: lines and call-site tags in this process (through the capture
// library), and the choice of a logging library in log_probe processes of eight threads.

#include <qt_halvo/utilities/logging_p.h>

#include "test_support.h"

#include <dlfcn.h>

using namespace OrvantaQT::Logging;

namespace {

const QString kBrokenLibrary = QStringLiteral(QT_HALVO_BROKEN_LOGGING_LIBRARY); // it exports one function of two
const QString kFileName = QStringLiteral(QT_HALVO_LOGGING_FILE_NAME); // of the default library

// Whether each line is its pattern, where "*" stands for any text that is not empty.
void VerifyLines(const QStringList& lines, const QStringList& patterns)
{
    QCOMPARE(lines.size(), patterns.size());
    for (int i = 0; i < lines.size(); ++i) {
        QStringList parts = patterns[i].split('*');
        for (QString& part : parts)
            part = QRegularExpression::escape(part);
        QVERIFY2(QRegularExpression('^' + parts.join(".+") + '$').match(lines[i]).hasMatch(), qPrintable(lines[i]));
    }
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesCarryTheirCallSiteAndWholeText()
    {
        for (int i = 0; i < 2; ++i) { // a call site's tag is built once and kept
            QTH_LOG_WARNING("warning %d", i);
            QTH_LOG_ERROR("error %s", "text");
        }
        // Text that looks like a format reaches the library as it is, long texts whole.
        const QByteArray longText(20000, 'x');
        QTH_LOG_INFO("%s", "100% sure, %d %s %n");
        QTH_LOG_INFO("%s", longText.constData());
        QStringList logged;
        for (const LoggedLine& line : LogCapture::Lines())
            logged << QStringLiteral("%1 [%2] ").arg(line.level).arg(line.tag) + line.text;
        // These were the process's first log calls: the capture library was loaded, and said so.
        const QString site = "[tests\\utilities\\tst_logging:* TestLogging::linesCarryTheirCallSiteAndWholeText] ";
        VerifyLines(logged, {"2 [qt_halvo\\utilities\\logging:* *InstallSink] Logging through " QT_HALVO_LOG_CAPTURE_LIBRARY,
                             "3 " + site + "warning 0", "4 " + site + "error text", "3 " + site + "warning 1",
                             "4 " + site + "error text", "2 " + site + "100% sure, %d %s %n", "2 " + site + longText});
    }

    // Where no library is usable: Qt's message handler, at the message type of each level.
    void qtMessageHandlerTakesOver()
    {
        const LogSink sink = ChooseLogSink({kBrokenLibrary.toStdString()}, nullptr);
        QCOMPARE(QString::fromStdString(sink.origin), QStringLiteral("Qt's message handler"));
        QVERIFY2(!dlopen(QT_HALVO_BROKEN_LOGGING_LIBRARY, RTLD_NOW | RTLD_NOLOAD), "an unusable library stays loaded");
        char tag[64];
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
        const std::pair<int, QtMsgType> types[] = {{2, QtInfoMsg}, {3, QtWarningMsg}, {4, QtCriticalMsg}, {1, QtDebugMsg}};
        for (const auto& [level, type] : types) {
            QTest::ignoreMessage(type, "[qt_halvo\\a:12 OrvantaQT::f] value 42 of 7");
            sink.logWithTag(level, sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 12), "value %d of %s", 42, "7");
        }
        QLoggingCategory::setFilterRules(QString());
    }

    void probesLogEveryLineOnce_data()
    {
        QTest::addColumn<QString>("named"); // in QT_HALVO_LOG_LIBRARY
        QTest::addColumn<QStringList>("leading"); // what comes before the probe's lines; <dir> is a temporary folder
        const QString site = "[qt_halvo\\utilities\\logging:* *InstallSink] ";
        const QString through = "INFO " + site + "Logging through " + QFileInfo(QT_HALVO_DEFAULT_LOGGING_LIBRARY).path() + '/' + kFileName;
        const QString cannot = site + "Cannot use the logging library ";
        QTest::newRow("unwritable log file, half an interface")
            << kBrokenLibrary
            << QStringList{"WARNING [qt_halvo_logging] cannot open the log file \"<dir>/missing/host.log\" (*); logging to stderr only",
                           "WARNING " + cannot + kBrokenLibrary + ": it does not export Logging_BuildLineTag and Logging_LogWithTag",
                           through};
        // qt_halvo and the probe in <dir>, with no default library: Qt writes lines without a level.
        QTest::newRow("no library") << "/nonexistent/liblogger.so"
                                    << QStringList{cannot + "/nonexistent/liblogger.so: *", cannot + "<dir>/" + kFileName + ": *",
                                                   cannot + kFileName + ": *", site + "Logging through Qt's message handler"};
    }

    void probesLogEveryLineOnce()
    {
        QFETCH(QString, named);
        QFETCH(QStringList, leading);
        QTemporaryDir dir;
        leading.replaceInStrings("<dir>", dir.path());
        QString probe = QStringLiteral(QT_HALVO_LOG_PROBE);
        const bool withoutDefault = leading.last().endsWith("Qt's message handler");
        if (withoutDefault) {
            // This process has not loaded the default library, so the system finds it only by its name.
            if (QLibrary(kFileName).load())
                QSKIP("A logging library is installed where the system finds it");
            QVERIFY(QFile::copy(QT_HALVO_LIBRARY_FILE, dir.filePath(QFileInfo(QT_HALVO_LIBRARY_FILE).fileName())));
            QVERIFY(QFile::copy(probe, dir.filePath("log_probe")));
            probe = dir.filePath("log_probe");
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_HALVO_LOG_FILE", dir.filePath("missing/host.log"));
        environment.insert("QT_HALVO_LOG_LIBRARY", named);
        environment.insert("LD_LIBRARY_PATH", dir.path());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(probe, {"8", "50"}); // threads and lines of each
        QVERIFY(process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0);
        // The default library's lines start with the time: "2026-11-21 22:16:11.423 ".
        QStringList logged = QString::fromUtf8(process.readAllStandardError()).split('\n', Qt::SkipEmptyParts);
        logged.replaceInStrings(QRegularExpression("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} "), QString());
        // Every thread's lines came once, whole and in order, at their level.
        const auto thread = [](const QString& line) { return line.section(' ', -3, -3); };
        std::stable_sort(logged.begin() + std::min(leading.size(), logged.size()), logged.end(),
                         [&thread](const QString& a, const QString& b) { return thread(a) < thread(b); });
        for (int t = 0; t < 8; ++t) {
            for (int i = 0; i < 50; ++i)
                leading << (withoutDefault ? "" : "WARNING ") + QStringLiteral("[tests\\support\\log_probe:* main] probe thread %1 line %2").arg(t).arg(i);
        }
        VerifyLines(logged, leading);
    }
};

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
