// The library's logging: its lines and their call-site tags in this process, which logs
// through the capture library, and the choice of the logging library with its fallbacks
// in log_probe processes, whose threads all start logging at once.

#include <qt_halvo/utilities/logging_p.h>

#include "test_support.h"

using namespace OrvantaQT::Logging;

namespace {

const QString kDefaultLibrary = QStringLiteral(QT_HALVO_DEFAULT_LOGGING_LIBRARY);
const QString kBrokenLibrary = QStringLiteral(QT_HALVO_BROKEN_LOGGING_LIBRARY);
const QString kFileName = QStringLiteral(QT_HALVO_LOGGING_FILE_NAME);
const QString kHalfInterface = QStringLiteral("it does not export Logging_BuildLineTag and Logging_LogWithTag");

// Whether text is the pattern, where "*" stands for any text that is not empty.
bool Matches(const QString& text, const QString& pattern)
{
    QStringList parts = pattern.split(QLatin1Char('*'));
    for (QString& part : parts)
        part = QRegularExpression::escape(part);
    return QRegularExpression(QLatin1Char('^') + parts.join(QLatin1String(".+")) + QLatin1Char('$')).match(text).hasMatch();
}

// What the probe wrote on stderr; empty when it failed.
QString RunProbe(const QString& program, const QStringList& environment, int threads, int lines)
{
    QProcessEnvironment changed = QProcessEnvironment::systemEnvironment();
    changed.remove(QStringLiteral("QT_HALVO_LOG_LIBRARY")); // the capture library, for this process only
    for (const QString& assignment : environment)
        changed.insert(assignment.section(QLatin1Char('='), 0, 0), assignment.section(QLatin1Char('='), 1));
    QProcess probe;
    probe.setProcessEnvironment(changed);
    probe.start(program, {QString::number(threads), QString::number(lines)});
    const bool ran = probe.waitForFinished(60000) && probe.exitStatus() == QProcess::NormalExit && probe.exitCode() == 0;
    return ran ? QString::fromUtf8(probe.readAllStandardError()) : QString();
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT

    bool m_defaultOnSystemPath = false;

private Q_SLOTS:
    void initTestCase()
    {
        // Asked before this process loads the default library, which the system would
        // then find by its name.
        m_defaultOnSystemPath = QLibrary(kFileName).load();
    }

    void linesCarryTheirCallSiteAndWholeText()
    {
        // The process's first log call: the capture library is loaded, and says so first.
        const QString tag = QStringLiteral("tests\\utilities\\tst_logging:%1 TestLogging::linesCarryTheirCallSiteAndWholeText");
        QStringList expected;
        for (int i = 0; i < 2; ++i) { // a call site's tag is built once and kept
            QTH_LOG_WARNING("warning %d", i); const int warningLine = __LINE__;
            QTH_LOG_ERROR("error %s", "text"); const int errorLine = __LINE__;
            expected << QStringLiteral("3 [%1] warning %2").arg(tag.arg(warningLine)).arg(i)
                     << QStringLiteral("4 [%1] error text").arg(tag.arg(errorLine));
        }
        // Text that looks like a format reaches the library as it is, long texts whole.
        const QByteArray longText(20000, 'x');
        QTH_LOG_INFO("%s", "100% sure, %d %s %n"); const int formatLine = __LINE__;
        QTH_LOG_INFO("%s", longText.constData()); const int longLine = __LINE__;
        expected << QStringLiteral("2 [%1] 100% sure, %d %s %n").arg(tag.arg(formatLine))
                 << QStringLiteral("2 [%1] ").arg(tag.arg(longLine)) + QString::fromLatin1(longText);
        QStringList logged;
        for (const LoggedLine& line : LogCapture::Lines())
            logged << QStringLiteral("%1 [%2] ").arg(line.level).arg(line.tag) + line.text;
        QCOMPARE(logged.mid(1), expected);
        QVERIFY2(Matches(logged.first(), QStringLiteral("2 [qt_halvo\\utilities\\logging:* *InstallSink] Logging through ")
                                             + QStringLiteral(QT_HALVO_LOG_CAPTURE_LIBRARY)),
                 qPrintable(logged.first()));
    }

    void chooseLogSink()
    {
        // The first usable candidate; why each one before it is not goes to failures.
        std::vector<std::string> failures;
        LogSink sink = ChooseLogSink(
            {"/nonexistent/libnothing.so", kBrokenLibrary.toStdString(), kDefaultLibrary.toStdString()}, &failures);
        QCOMPARE(QString::fromStdString(sink.origin), kDefaultLibrary);
        QCOMPARE(failures.size(), std::size_t(2));
        QVERIFY(Matches(QString::fromStdString(failures[0]), QStringLiteral("/nonexistent/libnothing.so: *")));
        QCOMPARE(QString::fromStdString(failures[1]), kBrokenLibrary + QLatin1String(": ") + kHalfInterface);

        // None usable: Qt's message handler, at the message type of each level.
        sink = ChooseLogSink({kBrokenLibrary.toStdString()}, nullptr);
        QCOMPARE(QString::fromStdString(sink.origin), QStringLiteral("Qt's message handler"));
        char tag[64];
        sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 12);
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
        const std::pair<int, QtMsgType> types[] = {
            {Information, QtInfoMsg}, {Warning, QtWarningMsg}, {Error, QtCriticalMsg}, {1, QtDebugMsg}};
        for (const auto& [level, type] : types) {
            QTest::ignoreMessage(type, "[qt_halvo\\a:12 OrvantaQT::f] value 42 of 7");
            sink.logWithTag(level, tag, "value %d of %s", 42, "7");
        }
        QLoggingCategory::setFilterRules(QString());
    }

    void probesLogEveryLineOnce_data()
    {
        QTest::addColumn<QString>("logFile"); // in the folder <dir>, a temporary one
        QTest::addColumn<QString>("named");   // in QT_HALVO_LOG_LIBRARY
        QTest::addColumn<bool>("withoutDefault"); // none beside qt_halvo or on the system's path
        QTest::addColumn<QStringList>("leading"); // what comes before the probe's lines
        const QString site = QStringLiteral("[qt_halvo\\utilities\\logging:* *InstallSink] ");
        const QString through = site + QLatin1String("Logging through ") + QFileInfo(kDefaultLibrary).absolutePath() + QLatin1Char('/') + kFileName;
        const QString cannot = site + QLatin1String("Cannot use the logging library ");
        QTest::newRow("log file") << "<dir>/host.log" << "" << false << QStringList{"INFO " + through};
        QTest::newRow("unwritable log file, half an interface")
            << "<dir>/missing/host.log" << kBrokenLibrary << false
            << QStringList{"WARNING [qt_halvo_logging] cannot open the log file \"<dir>/missing/host.log\" (*); logging to stderr only",
                           "WARNING " + cannot + kBrokenLibrary + ": " + kHalfInterface, "INFO " + through};
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
        logFile.replace(QLatin1String("<dir>"), dir.path());
        leading.replaceInStrings(QStringLiteral("<dir>"), dir.path());
        QString program = QStringLiteral(QT_HALVO_LOG_PROBE);
        if (withoutDefault) {
            if (m_defaultOnSystemPath)
                QSKIP("A logging library is installed where the system finds it");
            // qt_halvo and the probe in a folder without the default logging library.
            const QString soname = QFileInfo(QStringLiteral(QT_HALVO_LIBRARY_FILE)).fileName();
            QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LIBRARY_FILE), dir.filePath(soname)));
            program = dir.filePath(QStringLiteral("log_probe"));
            QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LOG_PROBE), program));
        }
        const QStringList environment{"QT_HALVO_LOG_FILE=" + logFile, "QT_HALVO_LOG_LIBRARY=" + named, "LD_LIBRARY_PATH=" + dir.path()};
        const int threads = 8;
        const int lines = 50;
        const QString output = RunProbe(program, environment, threads, lines);
        // The default library's lines start with the time: "2026-11-21 22:16:11.423 ".
        QStringList logged = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        logged.replaceInStrings(QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} ")), QString());
        QCOMPARE(logged.size(), leading.size() + threads * lines);
        for (int i = 0; i < leading.size(); ++i)
            QVERIFY2(Matches(logged[i], leading[i]), qPrintable(logged[i]));
        // Every thread's lines came once, whole and in order, at their level.
        const QString level = withoutDefault ? QString() : QStringLiteral("WARNING ");
        for (int t = 0; t < threads; ++t) {
            const QStringList ofThread = logged.filter(QStringLiteral("] probe thread %1 ").arg(t));
            QCOMPARE(ofThread.size(), lines);
            for (int i = 0; i < lines; ++i) {
                const QString line = QStringLiteral("[tests\\support\\log_probe:* main] probe thread %1 line %2").arg(t).arg(i);
                QVERIFY2(Matches(ofThread[i], level + line), qPrintable(ofThread[i]));
            }
        }

        // A log file where one can be written has every line, and later processes add theirs.
        if (logFile.isEmpty() || !QFileInfo(logFile).dir().exists())
            return;
        QFile file(logFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()), output);
        const QString more = RunProbe(program, environment, 1, 1);
        QVERIFY(file.seek(0));
        QCOMPARE(QString::fromUtf8(file.readAll()), output + more);
    }
};

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
