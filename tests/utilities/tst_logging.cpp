// The library's logging: its lines and their call-site tags in this process, which logs
// through the capture library, and the choice of the logging library with its
// fallbacks, also in log_probe processes.

#include <qt_halvo/utilities/logging_p.h>

#include "log_capture.h"

#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace OrvantaQT::Logging;

namespace {

const QString kCaptureLibrary = QStringLiteral(QT_HALVO_LOG_CAPTURE_LIBRARY);
const QString kDefaultLibrary = QStringLiteral(QT_HALVO_DEFAULT_LOGGING_LIBRARY);
const QString kBrokenLibrary = QStringLiteral(QT_HALVO_BROKEN_LOGGING_LIBRARY);
const QString kHalfInterface = QStringLiteral("it does not export Logging_BuildLineTag and Logging_LogWithTag");

struct ProbeLine
{
    QString level;
    QString tag;
    QString text;
};

struct ProbeRun
{
    int exitCode = -1;
    QString standardError;
    QVector<ProbeLine> lines; // parsed from standardError
    QStringList unparsed;
};

// Lines the default logging library writes, "<date> <time> <LEVEL> [<tag>] <text>", or
// Qt's message handler, "[<tag>] <text>".
QVector<ProbeLine> ParseLines(const QString& output, QStringList* unparsed)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(?:\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} (INFO|WARNING|ERROR) )?\\[([^\\]]*)\\] (.*)$"));
    QVector<ProbeLine> lines;
    for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = pattern.match(line);
        if (match.hasMatch())
            lines.append(ProbeLine{match.captured(1), match.captured(2), match.captured(3)});
        else
            unparsed->append(line);
    }
    return lines;
}

ProbeRun RunProbe(const QStringList& environment, int threads, int lines,
                  const QString& program = QStringLiteral(QT_HALVO_LOG_PROBE))
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_HALVO_LOG_LIBRARY"));
    env.remove(QStringLiteral("QT_HALVO_LOG_FILE"));
    for (const QString& assignment : environment)
        env.insert(assignment.section(QLatin1Char('='), 0, 0), assignment.section(QLatin1Char('='), 1));
    QProcess probe;
    probe.setProcessEnvironment(env);
    probe.start(program, {QString::number(threads), QString::number(lines)});
    ProbeRun run;
    if (!probe.waitForFinished(60000))
        return run;
    run.standardError = QString::fromUtf8(probe.readAllStandardError());
    run.exitCode = probe.exitStatus() == QProcess::NormalExit ? probe.exitCode() : -1;
    run.lines = ParseLines(run.standardError, &run.unparsed);
    return run;
}

// Every thread's lines arrived once, whole and in order, at the level and tagged with
// the probe's call site.
void VerifyProbeLines(const QVector<ProbeLine>& parsed, const QString& level, int threads, int lines)
{
    static const QRegularExpression tag(QStringLiteral("^tests\\\\support\\\\log_probe:\\d+ main$"));
    QCOMPARE(parsed.size(), threads * lines);
    QStringList texts;
    for (const ProbeLine& line : parsed) {
        QCOMPARE(line.level, level);
        QVERIFY2(tag.match(line.tag).hasMatch(), qPrintable(line.tag));
        texts << line.text;
    }
    for (int t = 0; t < threads; ++t) {
        QStringList expected;
        for (int i = 0; i < lines; ++i)
            expected << QStringLiteral("probe thread %1 line %2").arg(t).arg(i);
        QCOMPARE(texts.filter(QStringLiteral("probe thread %1 ").arg(t)), expected);
    }
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void linesCarryTheirCallSiteAndWholeText();
    void chooseLogSink();

    void defaultLibraryWritesStderrAndTheLogFile_data();
    void defaultLibraryWritesStderrAndTheLogFile();
    void fallbacks_data();
    void fallbacks();

private:
    bool m_defaultLibraryInstalledSystemWide = false;
};

void TestLogging::initTestCase()
{
    // Asked before this process loads the default library, which the system would
    // then find by its name.
    QLibrary systemWide(QStringLiteral(QT_HALVO_LOGGING_FILE_NAME));
    m_defaultLibraryInstalledSystemWide = systemWide.load();
}

void TestLogging::linesCarryTheirCallSiteAndWholeText()
{
    // The process's first log call; Since() leaves out the line about the choice.
    const LogCapture::Mark mark;
    QStringList expected;
    const QString tag = QStringLiteral("tests\\utilities\\tst_logging:%1 TestLogging::linesCarryTheirCallSiteAndWholeText");
    for (int i = 0; i < 2; ++i) { // the tag of a call site is built once and kept
        QTH_LOG_WARNING("warning %d", i); const int warningLine = __LINE__;
        QTH_LOG_ERROR("error %s", "text"); const int errorLine = __LINE__;
        expected << QStringLiteral("3 [%1] warning %2").arg(tag.arg(warningLine)).arg(i)
                 << QStringLiteral("4 [%1] error text").arg(tag.arg(errorLine));
    }
    // Text that looks like a format reaches the library as it is, long texts whole.
    QTH_LOG_INFO("%s", "100% sure, %d %s %n"); const int formatLine = __LINE__;
    const QByteArray longText(20000, 'x');
    QTH_LOG_INFO("%s", longText.constData()); const int longLine = __LINE__;
    QTH_LOG_INFO("%s", ""); const int emptyLine = __LINE__;
    expected << QStringLiteral("2 [%1] 100% sure, %d %s %n").arg(tag.arg(formatLine))
             << QStringLiteral("2 [%1] ").arg(tag.arg(longLine)) + QString::fromLatin1(longText)
             << QStringLiteral("2 [%1] ").arg(tag.arg(emptyLine));
    QStringList logged;
    for (const LoggedLine& line : mark.Since())
        logged << QStringLiteral("%1 [%2] ").arg(line.level).arg(line.tag) + line.text;
    QCOMPARE(logged, expected);

    const LoggedLine first = LogCapture::Lines().first();
    QCOMPARE(first.level, int(Information));
    QVERIFY2(first.tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:")) && first.tag.endsWith(QLatin1String("InstallSink")),
             qPrintable(first.tag));
    QCOMPARE(first.text, QStringLiteral("Logging through ") + kCaptureLibrary);
}

void TestLogging::chooseLogSink()
{
    // The first usable candidate; why each one before it is not goes to failures.
    std::vector<std::string> failures;
    LogSink sink = ChooseLogSink(
        {"/nonexistent/libnothing.so", kBrokenLibrary.toStdString(), kDefaultLibrary.toStdString()}, &failures);
    QCOMPARE(QString::fromStdString(sink.origin), kDefaultLibrary);
    QCOMPARE(int(failures.size()), 2);
    QVERIFY(QString::fromStdString(failures[0]).startsWith(QLatin1String("/nonexistent/libnothing.so: ")));
    QVERIFY(failures[0].size() > std::string("/nonexistent/libnothing.so: ").size());
    QCOMPARE(QString::fromStdString(failures[1]), kBrokenLibrary + QLatin1String(": ") + kHalfInterface);
    char tag[64];
    QCOMPARE(QByteArray(sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "f", 7)), QByteArray("qt_halvo\\a:7 f"));
    QCOMPARE(QByteArray(sink.buildLineTag(tag, 6, "qt_halvo\\a", "f", 7)), QByteArray("qt_ha"));
    QVERIFY(sink.buildLineTag(nullptr, 0, "a", "f", 1) == nullptr);

    // None usable: Qt's message handler, at the message type of each level.
    failures.clear();
    sink = ChooseLogSink({"/nonexistent/libnothing.so"}, &failures);
    QCOMPARE(QString::fromStdString(sink.origin), QStringLiteral("Qt's message handler"));
    QCOMPARE(int(failures.size()), 1);
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

void TestLogging::defaultLibraryWritesStderrAndTheLogFile_data()
{
    QTest::addColumn<QString>("file"); // in a temporary folder
    QTest::addColumn<bool>("writable");
    QTest::newRow("log file") << "host.log" << true;
    QTest::newRow("unwritable log file") << "missing/folder/host.log" << false;
}

void TestLogging::defaultLibraryWritesStderrAndTheLogFile()
{
    QFETCH(QString, file);
    QFETCH(bool, writable);
    QTemporaryDir dir;
    const QString path = dir.filePath(file);
    const ProbeRun run = RunProbe({QStringLiteral("QT_HALVO_LOG_FILE=") + path}, 8, 50);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.unparsed.isEmpty(), qPrintable(run.unparsed.join(QLatin1Char('\n'))));
    QVector<ProbeLine> parsed = run.lines;
    QCOMPARE(parsed.size(), int(!writable) + 1 + 8 * 50);
    if (!writable) {
        // Said first, by the library itself; the lines then go to stderr only.
        QCOMPARE(parsed[0].level, QStringLiteral("WARNING"));
        QCOMPARE(parsed[0].tag, QStringLiteral("qt_halvo_logging"));
        QVERIFY2(parsed[0].text.startsWith(QStringLiteral("cannot open the log file \"%1\" (").arg(path))
                     && parsed[0].text.endsWith(QLatin1String("); logging to stderr only")),
                 qPrintable(parsed[0].text));
        QVERIFY(!QFile::exists(path));
        parsed.removeFirst();
    }

    QCOMPARE(parsed.first().level, QStringLiteral("INFO"));
    QVERIFY(parsed.first().tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:")));
    const QString loadedFrom = parsed.first().text.mid(int(qstrlen("Logging through ")));
    QCOMPARE(QFileInfo(loadedFrom).canonicalFilePath(), QFileInfo(kDefaultLibrary).canonicalFilePath());
    VerifyProbeLines(parsed.mid(1), QStringLiteral("WARNING"), 8, 50);
    if (!writable)
        return;

    QFile log(path);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(log.readAll()), run.standardError);
    // A second process appends.
    QCOMPARE(RunProbe({QStringLiteral("QT_HALVO_LOG_FILE=") + path}, 1, 1).exitCode, 0);
    log.seek(0);
    QStringList unparsed;
    QCOMPARE(ParseLines(QString::fromUtf8(log.readAll()), &unparsed).size(), parsed.size() + 1 + 1);
    QVERIFY(unparsed.isEmpty());
}

void TestLogging::fallbacks_data()
{
    QTest::addColumn<QString>("named"); // in QT_HALVO_LOG_LIBRARY
    QTest::addColumn<QString>("reason"); // why it is not used; empty: the system's words
    QTest::addColumn<bool>("withoutDefault"); // no default library beside qt_halvo or on the system's path
    QTest::newRow("named library with half the interface") << kBrokenLibrary << kHalfInterface << false;
    QTest::newRow("named and default library missing") << "/nonexistent/liblogger.so" << "" << true;
}

void TestLogging::fallbacks()
{
    QFETCH(QString, named);
    QFETCH(QString, reason);
    QFETCH(bool, withoutDefault);
    QStringList environment{QStringLiteral("QT_HALVO_LOG_LIBRARY=") + named};
    QString probe = QStringLiteral(QT_HALVO_LOG_PROBE);
    QStringList unusable{named};
    QTemporaryDir dir;
    if (withoutDefault) {
#if !defined(Q_OS_LINUX)
        QSKIP("Relies on LD_LIBRARY_PATH");
#endif
        if (m_defaultLibraryInstalledSystemWide)
            QSKIP("A logging library is installed where the system finds it");
        // qt_halvo and the probe in a folder without the default logging library.
        const QString soname = QFileInfo(QStringLiteral(QT_HALVO_LIBRARY_FILE)).fileName();
        QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LIBRARY_FILE), dir.filePath(soname)));
        probe = dir.filePath(QStringLiteral("log_probe"));
        QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LOG_PROBE), probe));
        environment << QStringLiteral("LD_LIBRARY_PATH=") + dir.path();
        unusable << dir.filePath(QStringLiteral(QT_HALVO_LOGGING_FILE_NAME)) << QStringLiteral(QT_HALVO_LOGGING_FILE_NAME);
    }
    const ProbeRun run = RunProbe(environment, 2, 2, probe);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.unparsed.isEmpty(), qPrintable(run.standardError));
    const QVector<ProbeLine>& parsed = run.lines;
    QCOMPARE(parsed.size(), unusable.size() + 1 + 2 * 2);
    // Qt's message handler writes no level: only the default library's lines have one.
    const QString warning = withoutDefault ? QString() : QStringLiteral("WARNING");
    for (int i = 0; i < unusable.size(); ++i) {
        const QString prefix = QStringLiteral("Cannot use the logging library ") + unusable[i] + QLatin1String(": ");
        QCOMPARE(parsed[i].level, warning);
        QVERIFY2(parsed[i].text.startsWith(prefix) && parsed[i].text.size() > prefix.size(), qPrintable(parsed[i].text));
    }
    if (!reason.isEmpty())
        QCOMPARE(parsed[0].text, QStringLiteral("Cannot use the logging library ") + named + QLatin1String(": ") + reason);
    const QString origin = parsed[unusable.size()].text;
    QVERIFY2(withoutDefault ? origin == QLatin1String("Logging through Qt's message handler")
                            : origin.startsWith(QLatin1String("Logging through ")) && origin.endsWith(QLatin1String(QT_HALVO_LOGGING_FILE_NAME)),
             qPrintable(origin));
    VerifyProbeLines(parsed.mid(unusable.size() + 1), warning, 2, 2);
}

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
