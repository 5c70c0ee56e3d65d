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

struct ProbeLine
{
    QString level;
    QString tag;
    QString text;
};

// Lines the default logging library writes: "<date> <time> <LEVEL> [<tag>] <text>".
QVector<ProbeLine> ParseDefaultLines(const QString& output, QStringList* unparsed)
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} (INFO|WARNING|ERROR) \\[([^\\]]*)\\] (.*)$"));
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

struct ProbeRun
{
    QString standardError;
    int exitCode = -1;
};

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
    return run;
}

// Every thread's lines arrived once, whole and in order.
void VerifyProbeLines(const QStringList& texts, int threads, int lines)
{
    QCOMPARE(texts.size(), threads * lines);
    for (int t = 0; t < threads; ++t) {
        QStringList expected;
        QStringList seen;
        for (int i = 0; i < lines; ++i)
            expected << QStringLiteral("probe thread %1 line %2").arg(t).arg(i);
        for (const QString& text : texts) {
            if (text.startsWith(QStringLiteral("probe thread %1 ").arg(t)))
                seen << text;
        }
        QCOMPARE(seen, expected);
    }
}

} // namespace

class TestLogging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void firstLineSaysWhereLoggingGoes();
    void linesCarryTheirCallSite();
    void messagesAreFormattedOnceAndWhole();
    void chooseSkipsUnusableLibraries();
    void chooseFallsBackToQt_data();
    void chooseFallsBackToQt();

    void defaultLibraryWritesTaggedLinesFromManyThreads();
    void defaultLibraryAlsoWritesTheLogFile();
    void unwritableLogFileKeepsStderr();
    void unusableNamedLibraryFallsBackToDefault_data();
    void unusableNamedLibraryFallsBackToDefault();
    void missingDefaultLibraryFallsBackToQt();

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

void TestLogging::firstLineSaysWhereLoggingGoes()
{
    QTH_LOG_INFO("first");
    const QVector<LoggedLine> lines = LogCapture::Lines();
    QVERIFY(lines.size() >= 2);
    QCOMPARE(lines[0].level, int(Information));
    QVERIFY2(lines[0].tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:")), qPrintable(lines[0].tag));
    QVERIFY2(lines[0].tag.endsWith(QLatin1String("InstallSink")), qPrintable(lines[0].tag));
    QCOMPARE(lines[0].text, QStringLiteral("Logging through ") + kCaptureLibrary);
}

void TestLogging::linesCarryTheirCallSite()
{
    const LogCapture::Mark mark;
    QStringList tags;
    for (int i = 0; i < 2; ++i) {
        QTH_LOG_WARNING("warning %d", i); const int warningLine = __LINE__;
        QTH_LOG_ERROR("error %s", "text"); const int errorLine = __LINE__;
        tags << QStringLiteral("tests\\utilities\\tst_logging:%1 TestLogging::linesCarryTheirCallSite").arg(warningLine)
             << QStringLiteral("tests\\utilities\\tst_logging:%1 TestLogging::linesCarryTheirCallSite").arg(errorLine);
    }
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0].level, int(Warning));
    QCOMPARE(lines[0].text, QStringLiteral("warning 0"));
    QCOMPARE(lines[1].level, int(Error));
    QCOMPARE(lines[1].text, QStringLiteral("error text"));
    QCOMPARE(lines[2].text, QStringLiteral("warning 1"));
    for (int i = 0; i < lines.size(); ++i)
        QCOMPARE(lines[i].tag, tags[i]);
}

void TestLogging::messagesAreFormattedOnceAndWhole()
{
    const LogCapture::Mark mark;
    // Text that looks like a format must reach the library as it is.
    QTH_LOG_INFO("%s", "100% sure, %d %s %n");
    const QByteArray longText(20000, 'x');
    QTH_LOG_INFO("[%s]", longText.constData());
    QTH_LOG_INFO("%s", "");
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0].text, QStringLiteral("100% sure, %d %s %n"));
    QCOMPARE(lines[1].text.size(), longText.size() + 2);
    QVERIFY(lines[1].text.endsWith(QLatin1String("xx]")));
    QCOMPARE(lines[2].text, QString());
}

void TestLogging::chooseSkipsUnusableLibraries()
{
    std::vector<std::string> failures;
    const LogSink sink = ChooseLogSink(
        {"/nonexistent/libnothing.so", kBrokenLibrary.toStdString(), kDefaultLibrary.toStdString()}, &failures);
    QCOMPARE(QString::fromStdString(sink.origin), kDefaultLibrary);
    QCOMPARE(int(failures.size()), 2);
    QVERIFY(QString::fromStdString(failures[0]).startsWith(QLatin1String("/nonexistent/libnothing.so: ")));
    QVERIFY(failures[0].size() > std::string("/nonexistent/libnothing.so: ").size());
    QCOMPARE(QString::fromStdString(failures[1]),
             kBrokenLibrary + QLatin1String(": it does not export Logging_BuildLineTag and Logging_LogWithTag"));

    char tag[16];
    QCOMPARE(QByteArray(sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "f", 7)), QByteArray("qt_halvo\\a:7 f"));
    QCOMPARE(QByteArray(sink.buildLineTag(tag, 6, "qt_halvo\\a", "f", 7)), QByteArray("qt_ha"));
    QVERIFY(sink.buildLineTag(nullptr, 0, "a", "f", 1) == nullptr);
}

void TestLogging::chooseFallsBackToQt_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("messageType");
    QTest::newRow("information") << int(Information) << int(QtInfoMsg);
    QTest::newRow("warning") << int(Warning) << int(QtWarningMsg);
    QTest::newRow("error") << int(Error) << int(QtCriticalMsg);
    QTest::newRow("other") << 1 << int(QtDebugMsg);
}

void TestLogging::chooseFallsBackToQt()
{
    QFETCH(int, level);
    QFETCH(int, messageType);
    std::vector<std::string> failures;
    const LogSink sink = ChooseLogSink({"/nonexistent/libnothing.so"}, &failures);
    QCOMPARE(QString::fromStdString(sink.origin), QStringLiteral("Qt's message handler"));
    QCOMPARE(int(failures.size()), 1);

    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    char tag[64];
    sink.buildLineTag(tag, sizeof tag, "qt_halvo\\a", "OrvantaQT::f", 12);
    QTest::ignoreMessage(QtMsgType(messageType), "[qt_halvo\\a:12 OrvantaQT::f] value 42 of 7");
    sink.logWithTag(level, tag, "value %d of %s", 42, "7");
    QLoggingCategory::setFilterRules(QString());
}

void TestLogging::defaultLibraryWritesTaggedLinesFromManyThreads()
{
    const int threads = 8;
    const int lines = 50;
    const ProbeRun run = RunProbe({}, threads, lines);
    QCOMPARE(run.exitCode, 0);
    QStringList unparsed;
    const QVector<ProbeLine> parsed = ParseDefaultLines(run.standardError, &unparsed);
    QVERIFY2(unparsed.isEmpty(), qPrintable(unparsed.join(QLatin1Char('\n'))));

    QCOMPARE(parsed.first().level, QStringLiteral("INFO"));
    QVERIFY(parsed.first().tag.startsWith(QLatin1String("qt_halvo\\utilities\\logging:")));
    const QString loadedFrom = parsed.first().text.mid(int(qstrlen("Logging through ")));
    QCOMPARE(QFileInfo(loadedFrom).canonicalFilePath(), QFileInfo(kDefaultLibrary).canonicalFilePath());

    QStringList texts;
    for (const ProbeLine& line : parsed.mid(1)) {
        QCOMPARE(line.level, QStringLiteral("WARNING"));
        QVERIFY2(QRegularExpression(QStringLiteral("^tests\\\\support\\\\log_probe:\\d+ main$")).match(line.tag).hasMatch(),
                 qPrintable(line.tag));
        texts << line.text;
    }
    VerifyProbeLines(texts, threads, lines);
}

void TestLogging::defaultLibraryAlsoWritesTheLogFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("host.log"));
    const ProbeRun run = RunProbe({QStringLiteral("QT_HALVO_LOG_FILE=") + path}, 2, 3);
    QCOMPARE(run.exitCode, 0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString written = QString::fromUtf8(file.readAll());
    QCOMPARE(written, run.standardError);
    QStringList unparsed;
    QCOMPARE(ParseDefaultLines(written, &unparsed).size(), 1 + 2 * 3);
    QVERIFY(unparsed.isEmpty());

    // A second process appends.
    QCOMPARE(RunProbe({QStringLiteral("QT_HALVO_LOG_FILE=") + path}, 1, 1).exitCode, 0);
    file.seek(0);
    QCOMPARE(ParseDefaultLines(QString::fromUtf8(file.readAll()), &unparsed).size(), 1 + 2 * 3 + 1 + 1);
}

void TestLogging::unwritableLogFileKeepsStderr()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("missing/folder/host.log"));
    const ProbeRun run = RunProbe({QStringLiteral("QT_HALVO_LOG_FILE=") + path}, 1, 3);
    QCOMPARE(run.exitCode, 0);
    QStringList unparsed;
    const QVector<ProbeLine> parsed = ParseDefaultLines(run.standardError, &unparsed);
    QCOMPARE(parsed.size(), 1 + 1 + 3);
    QCOMPARE(parsed[0].level, QStringLiteral("WARNING"));
    QCOMPARE(parsed[0].tag, QStringLiteral("qt_halvo_logging"));
    QVERIFY2(parsed[0].text.startsWith(QStringLiteral("cannot open the log file \"%1\" (").arg(path)),
             qPrintable(parsed[0].text));
    QVERIFY(parsed[0].text.endsWith(QLatin1String("); logging to stderr only")));
    QVERIFY(!QFile::exists(path));
}

void TestLogging::unusableNamedLibraryFallsBackToDefault_data()
{
    QTest::addColumn<QString>("named");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing file") << QStringLiteral("/nonexistent/liblogger.so") << QString();
    QTest::newRow("not a library") << QStringLiteral(__FILE__) << QString();
    QTest::newRow("a folder") << QStringLiteral("/") << QString();
    QTest::newRow("half the interface")
        << kBrokenLibrary << QStringLiteral("it does not export Logging_BuildLineTag and Logging_LogWithTag");
}

void TestLogging::unusableNamedLibraryFallsBackToDefault()
{
    QFETCH(QString, named);
    QFETCH(QString, reason);
    const ProbeRun run = RunProbe({QStringLiteral("QT_HALVO_LOG_LIBRARY=") + named}, 2, 2);
    QCOMPARE(run.exitCode, 0);
    QStringList unparsed;
    const QVector<ProbeLine> parsed = ParseDefaultLines(run.standardError, &unparsed);
    QVERIFY2(unparsed.isEmpty(), qPrintable(run.standardError));
    QCOMPARE(parsed.size(), 2 + 4);
    QCOMPARE(parsed[0].level, QStringLiteral("WARNING"));
    const QString prefix = QStringLiteral("Cannot use the logging library ") + named + QLatin1String(": ");
    QVERIFY2(parsed[0].text.startsWith(prefix), qPrintable(parsed[0].text));
    QVERIFY(parsed[0].text.size() > prefix.size());
    if (!reason.isEmpty())
        QCOMPARE(parsed[0].text, prefix + reason);
    QVERIFY(parsed[1].text.startsWith(QLatin1String("Logging through ")));
    QVERIFY(parsed[1].text.endsWith(QStringLiteral(QT_HALVO_LOGGING_FILE_NAME)));
}

void TestLogging::missingDefaultLibraryFallsBackToQt()
{
#if !defined(Q_OS_LINUX)
    QSKIP("Relies on LD_LIBRARY_PATH");
#endif
    if (m_defaultLibraryInstalledSystemWide)
        QSKIP("A logging library is installed where the system finds it");

    // qt_halvo and the probe in a folder without the default logging library.
    QTemporaryDir dir;
    const QString soname = QFileInfo(QStringLiteral(QT_HALVO_LIBRARY_FILE)).fileName();
    QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LIBRARY_FILE), dir.filePath(soname)));
    const QString probe = dir.filePath(QStringLiteral("log_probe"));
    QVERIFY(QFile::copy(QStringLiteral(QT_HALVO_LOG_PROBE), probe));

    const ProbeRun run = RunProbe({QStringLiteral("LD_LIBRARY_PATH=") + dir.path(),
                                   QStringLiteral("QT_HALVO_LOG_LIBRARY=/nonexistent/liblogger.so")},
                                  2, 2, probe);
    QCOMPARE(run.exitCode, 0);
    const QStringList lines = run.standardError.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3 + 1 + 4);
    QVERIFY(lines[0].contains(QLatin1String("Cannot use the logging library /nonexistent/liblogger.so: ")));
    QVERIFY(lines[1].contains(QLatin1String("Cannot use the logging library ") + dir.path()));
    QVERIFY(lines[2].contains(QLatin1String("Cannot use the logging library " QT_HALVO_LOGGING_FILE_NAME ": ")));
    QVERIFY(lines[3].endsWith(QLatin1String("] Logging through Qt's message handler")));
    QStringList texts;
    for (const QString& line : lines.mid(4)) {
        QVERIFY2(line.startsWith(QLatin1String("[tests\\support\\log_probe:")), qPrintable(line));
        texts << line.section(QLatin1String("] "), 1);
    }
    VerifyProbeLines(texts, 2, 2);
}

QTEST_GUILESS_MAIN(TestLogging)
#include "tst_logging.moc"
