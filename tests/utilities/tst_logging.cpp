// The library's logging: its lines and their call-site tags in this process, which logs
// through the capture library, and the choice of the logging library with its fallbacks
// in log_probe processes, whose threads all start logging at once.

#include <qt_halvo/utilities/logging_p.h>

#include "test_support.h"

using namespace OrvantaQT::Logging;

namespace {

const QString kBrokenLibrary = QStringLiteral(QT_HALVO_BROKEN_LOGGING_LIBRARY); // it exports one function of two
const QString kFileName = QStringLiteral(QT_HALVO_LOGGING_FILE_NAME); // of the default library

// Whether text is the pattern, where "*" stands for any text that is not empty.
bool Matches(const QString& text, const QString& pattern)
{
    QStringList parts = pattern.split('*');
    for (QString& part : parts)
        part = QRegularExpression::escape(part);
    return QRegularExpression('^' + parts.join(".+") + '$').match(text).hasMatch();
}

// What log_probe wrote on stderr with QT_HALVO_LOG_FILE and QT_HALVO_LOG_LIBRARY as given.
QString RunProbe(const QString& program, const QString& logFile, const QString& named, int threads, int lines)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_HALVO_LOG_FILE", logFile);
    environment.insert("QT_HALVO_LOG_LIBRARY", named);
    environment.insert("LD_LIBRARY_PATH", QFileInfo(program).path());
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(program, {QString::number(threads), QString::number(lines)});
    const bool ran = probe.waitForFinished(60000) && probe.exitStatus() == QProcess::NormalExit && probe.exitCode() == 0;
    return ran ? QString::fromUtf8(probe.readAllStandardError()) : QStringLiteral("the probe failed");
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT

    bool m_defaultOnSystemPath = false;

private Q_SLOTS:
    // Before this process loads the default library, which the system would then find by name.
    void initTestCase() { m_defaultOnSystemPath = QLibrary(kFileName).load(); }

    void linesCarryTheirCallSiteAndWholeText()
    {
        const QString tag = QStringLiteral("[tests\\utilities\\tst_logging:%1 TestLogging::linesCarryTheirCallSiteAndWholeText] ");
        QStringList expected;
        for (int i = 0; i < 2; ++i) { // a call site's tag is built once and kept
            QTH_LOG_WARNING("warning %d", i); const int warningLine = __LINE__;
            QTH_LOG_ERROR("error %s", "text"); const int errorLine = __LINE__;
            expected << "3 " + tag.arg(warningLine) + "warning " + QString::number(i) << "4 " + tag.arg(errorLine) + "error text";
        }
        // Text that looks like a format reaches the library as it is, long texts whole.
        const QByteArray longText(20000, 'x');
        QTH_LOG_INFO("%s", "100% sure, %d %s %n"); const int formatLine = __LINE__;
        QTH_LOG_INFO("%s", longText.constData()); const int longLine = __LINE__;
        expected << "2 " + tag.arg(formatLine) + "100% sure, %d %s %n" << "2 " + tag.arg(longLine) + longText;
        QStringList logged;
        for (const LoggedLine& line : LogCapture::Lines())
            logged << QStringLiteral("%1 [%2] ").arg(line.level).arg(line.tag) + line.text;
        // These were the process's first log calls: the capture library was loaded, and said so.
        const QString first = logged.takeFirst();
        QVERIFY2(Matches(first, "2 [qt_halvo\\utilities\\logging:* *InstallSink] Logging through " QT_HALVO_LOG_CAPTURE_LIBRARY), qPrintable(first));
        QCOMPARE(logged, expected);
    }

    // Where no library is usable (probesLogEveryLineOnce shows the choice in full): Qt's
    // message handler, at the message type of each level.
    void qtMessageHandlerTakesOver()
    {
        const LogSink sink = ChooseLogSink({kBrokenLibrary.toStdString()}, nullptr);
        QCOMPARE(QString::fromStdString(sink.origin), QStringLiteral("Qt's message handler"));
        char tag[64];
        sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 12);
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
        const std::pair<int, QtMsgType> types[] = {{Information, QtInfoMsg}, {Warning, QtWarningMsg}, {Error, QtCriticalMsg}, {1, QtDebugMsg}};
        for (const auto& [level, type] : types) {
            QTest::ignoreMessage(type, "[qt_halvo\\a:12 OrvantaQT::f] value 42 of 7");
            sink.logWithTag(level, tag, "value %d of %s", 42, "7");
        }
        QLoggingCategory::setFilterRules(QString());
    }

    void probesLogEveryLineOnce_data()
    {
        QTest::addColumn<QString>("logFile"); // <dir> is a temporary folder
        QTest::addColumn<QString>("named"); // in QT_HALVO_LOG_LIBRARY
        QTest::addColumn<bool>("withoutDefault"); // none beside qt_halvo nor on the system's path
        QTest::addColumn<QStringList>("leading"); // what comes before the probe's lines
        const QString site = "[qt_halvo\\utilities\\logging:* *InstallSink] ";
        const QString through = "INFO " + site + "Logging through " + QFileInfo(QT_HALVO_DEFAULT_LOGGING_LIBRARY).path() + '/' + kFileName;
        const QString cannot = site + "Cannot use the logging library ";
        QTest::newRow("log file") << "<dir>/host.log" << "" << false << QStringList{through};
        QTest::newRow("unwritable log file, half an interface")
            << "<dir>/missing/host.log" << kBrokenLibrary << false
            << QStringList{"WARNING [qt_halvo_logging] cannot open the log file \"<dir>/missing/host.log\" (*); logging to stderr only",
                           "WARNING " + cannot + kBrokenLibrary + ": it does not export Logging_BuildLineTag and Logging_LogWithTag",
                           through};
        // Then Qt's message handler writes the lines, without a level.
        QTest::newRow("no library") << "" << "/nonexistent/liblogger.so" << true
                                    << QStringList{cannot + "/nonexistent/liblogger.so: *", cannot + "<dir>/" + kFileName + ": *",
                                                   cannot + kFileName + ": *", site + "Logging through Qt's message handler"};
    }

    void probesLogEveryLineOnce()
    {
        QFETCH(QString, logFile);
        QFETCH(QString, named);
        QFETCH(bool, withoutDefault);
        QFETCH(QStringList, leading);
        QTemporaryDir dir;
        logFile.replace("<dir>", dir.path());
        leading.replaceInStrings("<dir>", dir.path());
        QString probe = QStringLiteral(QT_HALVO_LOG_PROBE);
        if (withoutDefault) {
            if (m_defaultOnSystemPath)
                QSKIP("A logging library is installed where the system finds it");
            // qt_halvo and the probe in a folder without the default logging library.
            QVERIFY(QFile::copy(QT_HALVO_LIBRARY_FILE, dir.filePath(QFileInfo(QT_HALVO_LIBRARY_FILE).fileName())));
            QVERIFY(QFile::copy(probe, dir.filePath("log_probe")));
            probe = dir.filePath("log_probe");
        }
        const QString output = RunProbe(probe, logFile, named, 8, 50);
        // The default library's lines start with the time: "2026-11-21 22:16:11.423 ".
        QStringList logged = output.split('\n', Qt::SkipEmptyParts);
        logged.replaceInStrings(QRegularExpression("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} "), QString());
        QCOMPARE(logged.size(), leading.size() + 8 * 50);
        for (int i = 0; i < leading.size(); ++i)
            QVERIFY2(Matches(logged[i], leading[i]), qPrintable(logged[i]));
        // Every thread's lines came once, whole and in order, at their level.
        logged.replaceInStrings(QRegularExpression("^(\\w* ?\\[tests\\\\support\\\\log_probe:)\\d+ "), "\\1N ");
        for (int thread = 0; thread < 8; ++thread) {
            QStringList expected;
            for (int i = 0; i < 50; ++i)
                expected << (withoutDefault ? "" : "WARNING ") + QStringLiteral("[tests\\support\\log_probe:N main] probe thread %1 line %2").arg(thread).arg(i);
            QCOMPARE(logged.filter(QStringLiteral("] probe thread %1 ").arg(thread)), expected);
        }

        // A log file where one can be written has every line, and later processes add theirs.
        QFile file(logFile);
        if (!logFile.isEmpty() && QFileInfo(logFile).dir().exists()) {
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(QString::fromUtf8(file.readAll()), output);
            const QString more = RunProbe(probe, logFile, named, 1, 1);
            QCOMPARE(QString::fromUtf8(file.readAll()), more);
        }
    }
};

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
