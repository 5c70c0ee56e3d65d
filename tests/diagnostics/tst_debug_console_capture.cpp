// The debug console's capture: Qt messages and library lines in a bounded ring, each
// message still passed on, unchanged, to the handler installed before.

#include <qt_halvo/diagnostics/debug_console_capture.h>
#include <qt_halvo/utilities/logging_p.h>

#include "test_support.h"

#include <climits>
#include <cstdio>
#include <mutex>
#include <thread>

using namespace OrvantaQT;

namespace {

QtMessageHandler g_top = nullptr; // when set, the previous handler calls it from inside
QtMessageHandler g_hostPrevious = nullptr;
std::mutex g_passedMutex; // seen by ThreadSanitizer, unlike QMutex's slow path
QStringList g_passed; // "type category file:line function|text" of each message passed on

QString OrNull(const char* text) { return text ? QString::fromUtf8(text) : QStringLiteral("-"); }

void PreviousHandler(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    {
        std::lock_guard<std::mutex> lock(g_passedMutex);
        g_passed << QStringLiteral("%1 %2 %3:%4 %5|").arg(type).arg(OrNull(context.category), OrNull(context.file))
                        .arg(context.line).arg(OrNull(context.function)) + text;
    }
    // Logs from inside the chain: through Qt (which then uses its default handler), or
    // straight to the handler on top, as a forwarding host handler might.
    if (text == QLatin1String("outer"))
        g_top ? g_top(QtWarningMsg, context, QStringLiteral("inner")) : qWarning("inner");
}

void HostHandler(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    g_hostPrevious(type, context, QStringLiteral("host: ") + text);
}

QStringList PassedTexts()
{
    std::lock_guard<std::mutex> lock(g_passedMutex);
    QStringList texts;
    for (const QString& passed : qAsConst(g_passed))
        texts << passed.section(QLatin1Char('|'), 1);
    return texts;
}

QString Describe(const DebugConsoleLine& line)
{
    return QStringLiteral("%1 %2 %3 %4:%5 %6|").arg(line.origin == DebugConsoleLine::Origin::Qt ? "qt" : "library")
               .arg(line.level).arg(line.category, line.file).arg(line.line).arg(line.function) + line.text;
}

QStringList Texts(const QVector<DebugConsoleLine>& lines)
{
    QStringList texts;
    for (const DebugConsoleLine& line : lines)
        texts << line.text;
    return texts;
}

QVector<DebugConsoleLine> Since(quint64 sequence) { return DebugConsoleLinesAfter(sequence, INT_MAX); }

Q_LOGGING_CATEGORY(childCategory, "child.category")

// With QT_MESSAGE_PATTERN from the parent: a library line through a logging library that
// writes through Qt, two messages, then what the capture holds on stdout.
int RunChild()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_QT_FORWARDING_LOGGING_LIBRARY);
    if (!InstallDebugConsoleCapture(4))
        return 1;
    QTH_LOG_WARNING("library line");
    qWarning("child warning");
    qCCritical(childCategory) << "child critical";
    for (const DebugConsoleLine& line : DebugConsoleLinesAfter(0, 10))
        std::printf("%llu %s %d %s|%s\n", static_cast<unsigned long long>(line.sequence),
                    line.origin == DebugConsoleLine::Origin::Qt ? "qt" : "library", line.level,
                    qPrintable(line.category), qPrintable(line.text));
    return 0;
}

} // namespace

class TestDebugConsoleCapture : public QObject
{
    Q_OBJECT

    QtMessageHandler m_testLibHandler = nullptr;

private Q_SLOTS:
    void init()
    {
        g_passed.clear();
        m_testLibHandler = qInstallMessageHandler(PreviousHandler);
        QVERIFY(InstallDebugConsoleCapture(1000));
    }

    void cleanup()
    {
        UninstallDebugConsoleCapture();
        ClearDebugConsoleCapture();
        qInstallMessageHandler(m_testLibHandler);
    }

    void messagesAreRecordedAndPassedOn_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("file"); // null ones stay null in the context
        QTest::addColumn<QByteArray>("function");
        QTest::addColumn<QByteArray>("category");
        QTest::addColumn<QString>("passed");
        QTest::addColumn<QString>("recorded");
        QTest::newRow("warning in a category") << int(QtWarningMsg) << QByteArray("a/b.cpp") << QByteArray("void f()")
            << QByteArray("orvanta.x") << "1 orvanta.x a/b.cpp:7 void f()|t\u00e9" << "qt 1 orvanta.x a/b.cpp:7 void f()|t\u00e9";
        QTest::newRow("critical") << int(QtCriticalMsg) << QByteArray("c.cpp") << QByteArray("g") << QByteArray("default")
                                  << "2 default c.cpp:7 g|t\u00e9" << "qt 2 default c.cpp:7 g|t\u00e9";
        QTest::newRow("default context") << int(QtInfoMsg) << QByteArray() << QByteArray() << QByteArray()
                                         << "4 - -:0 -|t\u00e9" << "qt 4 default :0 |t\u00e9";
    }
    void messagesAreRecordedAndPassedOn()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, function);
        QFETCH(QByteArray, category);
        QFETCH(QString, passed);
        QFETCH(QString, recorded);
        const auto orNull = [](const QByteArray& text) { return text.isNull() ? nullptr : text.constData(); };
        const QMessageLogContext context(orNull(file), file.isNull() ? 0 : 7, orNull(function), orNull(category));
        const quint64 before = DebugConsoleLastSequence();
        const QDateTime start = QDateTime::currentDateTime();
        qt_message_output(QtMsgType(type), context, QStringLiteral("t\u00e9"));
        const QVector<DebugConsoleLine> lines = Since(before);
        QCOMPARE(g_passed, QStringList{passed});
        QCOMPARE(lines.size(), 1);
        QCOMPARE(Describe(lines[0]), recorded);
        QCOMPARE(lines[0].sequence, before + 1);
        QCOMPARE(DebugConsoleLastSequence(), before + 1);
        QVERIFY(lines[0].time >= start.addMSecs(-1) && lines[0].time <= QDateTime::currentDateTime().addMSecs(1));
        QCOMPARE(lines[0].threadId, quint64(reinterpret_cast<quintptr>(QThread::currentThreadId())));
    }

    // QT_MESSAGE_PATTERN still shapes what the default handler writes, and a library line
    // that reaches Qt's handler through the logging library is recorded once, as the library's.
    void messagePatternAndLibraryLinesThroughQt()
    {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("P %{type} %{category}: %{message}"));
        environment.insert(QStringLiteral("QTH_CAPTURE_CHILD"), QStringLiteral("1"));
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), QStringList());
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitCode(), 0);
        const QString logging = QStringLiteral("Logging through " QT_HALVO_QT_FORWARDING_LOGGING_LIBRARY);
        const QRegularExpression site(QStringLiteral("site \\d+"));
        const auto lines = [&site](const QByteArray& text) {
            return QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts).replaceInStrings(site, "site");
        };
        QCOMPARE(lines(child.readAllStandardError()),
                 QStringList({"P warning : [site] " + logging, "P warning : [site] library line",
                              "P warning default: child warning", "P critical child.category: child critical"}));
        // The logging set-up's own line goes to the library without Write, so it is Qt's here.
        QCOMPARE(lines(child.readAllStandardOutput()),
                 QStringList({"1 qt 1 default|[site] " + logging, "2 library 1 site|library line",
                              "3 qt 1 default|child warning", "4 qt 2 child.category|child critical"}));
    }

    void messageFromInsideTheHandlerIsOnlyPassedOn_data()
    {
        QTest::addColumn<bool>("direct");
        QTest::addColumn<QStringList>("passed");
        QTest::newRow("qWarning") << false << QStringList{"outer"};
        QTest::newRow("the installed handler called") << true << QStringList{"outer", "inner"};
    }
    void messageFromInsideTheHandlerIsOnlyPassedOn()
    {
        QFETCH(bool, direct);
        QFETCH(QStringList, passed);
        if (direct)
            qInstallMessageHandler(g_top = qInstallMessageHandler(PreviousHandler));
        const quint64 before = DebugConsoleLastSequence();
        qWarning("outer");
        g_top = nullptr;
        QCOMPARE(PassedTexts(), passed);
        QCOMPARE(Texts(Since(before)), QStringList({"outer"}));
    }

    void uninstallPutsThePreviousHandlerBack_data()
    {
        QTest::addColumn<bool>("hostOnTop");
        QTest::newRow("capture on top") << false;
        QTest::newRow("host installed over the capture") << true;
    }
    void uninstallPutsThePreviousHandlerBack()
    {
        QFETCH(bool, hostOnTop);
        const LogCapture::Mark mark;
        if (hostOnTop)
            g_hostPrevious = qInstallMessageHandler(HostHandler);
        qWarning("before");
        UninstallDebugConsoleCapture();
        QVERIFY(!IsDebugConsoleCaptureInstalled());
        const quint64 before = DebugConsoleLastSequence();
        qWarning("after");
        QCOMPARE(PassedTexts(), QStringList({hostOnTop ? "host: before" : "before", "after"}));
        QCOMPARE(DebugConsoleLastSequence(), before);
        QVERIFY(qInstallMessageHandler(PreviousHandler) == PreviousHandler);
        QCOMPARE(mark.Texts(), hostOnTop ? QStringList({"3 A message handler installed after the debug console's "
                                                        "capture was replaced by the one before it"})
                                         : QStringList());
        g_passed.clear(); // installed again: recorded once, passed on once
        QVERIFY(InstallDebugConsoleCapture(10));
        qWarning("again");
        QCOMPARE(PassedTexts(), QStringList({"again"}));
        QCOMPARE(Texts(Since(before)), QStringList({"again"}));
    }

    void installingTwiceChangesTheCapacityOnly()
    {
        const quint64 before = DebugConsoleLastSequence();
        for (const char* text : {"a", "b", "c"})
            qWarning("%s", text);
        QVERIFY(InstallDebugConsoleCapture(2));
        quint64 dropped = 0;
        QCOMPARE(Texts(DebugConsoleLinesAfter(before, 10, &dropped)), QStringList({"b", "c"}));
        QCOMPARE(dropped, quint64(1));
        QVERIFY(InstallDebugConsoleCapture(5));
        qWarning("d");
        QCOMPARE(Texts(DebugConsoleLinesAfter(before, 10, &dropped)), QStringList({"b", "c", "d"}));
        QCOMPARE(PassedTexts(), QStringList({"a", "b", "c", "d"}));
    }

    void ringKeepsTheNewestLines_data()
    {
        QTest::addColumn<int>("capacity");
        QTest::addColumn<int>("written");
        QTest::addColumn<bool>("clear");
        QTest::addColumn<int>("after");
        QTest::addColumn<int>("maxLines");
        QTest::addColumn<QString>("expected"); // texts, which are the lines' numbers
        QTest::addColumn<int>("dropped");
        QTest::newRow("full, nothing lost") << 4 << 4 << false << 0 << 9 << "1 2 3 4" << 0;
        QTest::newRow("overflow") << 4 << 10 << false << 0 << 9 << "7 8 9 10" << 6;
        QTest::newRow("after a held line") << 4 << 10 << false << 8 << 9 << "9 10" << 0;
        QTest::newRow("after a dropped line") << 4 << 10 << false << 3 << 9 << "7 8 9 10" << 3;
        QTest::newRow("at most maxLines") << 8 << 6 << false << 1 << 2 << "2 3" << 0;
        QTest::newRow("none asked") << 8 << 6 << false << 0 << 0 << "" << 0;
        QTest::newRow("after the last") << 8 << 6 << false << 6 << 9 << "" << 0;
        QTest::newRow("one line") << 1 << 3 << false << 0 << 9 << "3" << 2;
        QTest::newRow("cleared") << 8 << 6 << true << 2 << 9 << "" << 4;
    }
    void ringKeepsTheNewestLines()
    {
        QFETCH(int, capacity);
        QFETCH(int, written);
        QFETCH(bool, clear);
        QFETCH(int, after);
        QFETCH(int, maxLines);
        QFETCH(QString, expected);
        QFETCH(int, dropped);
        QVERIFY(InstallDebugConsoleCapture(capacity));
        const quint64 before = DebugConsoleLastSequence();
        for (int i = 1; i <= written; ++i)
            qWarning("%d", i);
        if (clear)
            ClearDebugConsoleCapture();
        quint64 droppedLines = 99;
        const QVector<DebugConsoleLine> lines = DebugConsoleLinesAfter(before + after, maxLines, &droppedLines);
        QCOMPARE(Texts(lines).join(' '), expected);
        for (const DebugConsoleLine& line : lines)
            QCOMPARE(line.sequence, before + line.text.toULongLong());
        QCOMPARE(droppedLines, quint64(dropped));
        QCOMPARE(DebugConsoleLastSequence(), before + written);
        QCOMPARE(g_passed.size(), written);
    }

    void libraryLinesCarryLevelAndTag_data()
    {
        QTest::addColumn<int>("level");
        QTest::newRow("information") << 0;
        QTest::newRow("warning") << 1;
        QTest::newRow("error") << 2;
    }
    void libraryLinesCarryLevelAndTag()
    {
        QFETCH(int, level);
        const LogCapture::Mark mark;
        const quint64 before = DebugConsoleLastSequence();
        QTH_LOG_AT(Logging::Level(Logging::Information + level), "library %d", level);
        UninstallDebugConsoleCapture();
        QTH_LOG_WARNING("not recorded");
        const QVector<LoggedLine> logged = mark.Since(); // both still reach the logging library
        QCOMPARE(logged.size(), 2);
        const QVector<DebugConsoleLine> lines = Since(before);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(Describe(lines[0]), QStringLiteral("library %1 %2 :0 |library %1").arg(level).arg(logged[0].tag));
        QVERIFY(logged[0].tag.contains(QLatin1String("libraryLinesCarryLevelAndTag")));
        QVERIFY(lines[0].time.isValid());
    }

    void callerErrorsAreLogged()
    {
        const LogCapture::Mark mark;
        QVERIFY(!InstallDebugConsoleCapture(0));
        QVERIFY(!InstallDebugConsoleCapture(INT_MAX));
        quint64 dropped = 7;
        QVERIFY(DebugConsoleLinesAfter(0, -1, &dropped).isEmpty());
        QCOMPARE(dropped, quint64(0));
        QCOMPARE(mark.Texts(), QStringList({"3 The debug console's capacity must be from 1 to 4194304 lines, not 0",
                                            "3 The debug console's capacity must be from 1 to 4194304 lines, not 2147483647",
                                            "3 Cannot read -1 lines of the debug console"}));
        QVERIFY(IsDebugConsoleCaptureInstalled()); // a refused install leaves the capture as it was
    }

    // Every line of 4 threads, each thread's in its order, numbered without gaps.
    void concurrentWritersKeepTheirOrder()
    {
        constexpr int kThreads = 4, kEach = 2000;
        QVERIFY(InstallDebugConsoleCapture(kThreads * kEach));
        const quint64 before = DebugConsoleLastSequence();
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([t] {
                for (int i = 0; i < kEach; ++i) {
                    if (i % 2)
                        qWarning("%d %d", t, i);
                    else
                        QTH_LOG_INFO("%d %d", t, i);
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        quint64 dropped = 1;
        const QVector<DebugConsoleLine> lines = DebugConsoleLinesAfter(before, INT_MAX, &dropped);
        QCOMPARE(lines.size(), kThreads * kEach);
        QCOMPARE(dropped, quint64(0));
        QVector<int> next(kThreads, 0);
        QHash<int, quint64> threadIds;
        for (int i = 0; i < lines.size(); ++i) {
            QCOMPARE(lines[i].sequence, before + 1 + i);
            const int t = lines[i].text.section(' ', 0, 0).toInt();
            QCOMPARE(lines[i].text.section(' ', 1).toInt(), next[t]);
            QCOMPARE(lines[i].origin, next[t]++ % 2 ? DebugConsoleLine::Origin::Qt : DebugConsoleLine::Origin::Library);
            QCOMPARE(threadIds.value(t, lines[i].threadId), lines[i].threadId);
            threadIds[t] = lines[i].threadId;
        }
        QCOMPARE(QSet<quint64>(threadIds.cbegin(), threadIds.cend()).size(), kThreads);
        QCOMPARE(g_passed.size(), kThreads * kEach / 2);
    }

    void hugeMessagesAreCut_data()
    {
        QTest::addColumn<bool>("library");
        QTest::addColumn<QString>("character");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("kept"); // UTF-16 units: at most 64 KiB in UTF-8, whole characters
        QTest::newRow("qt, 5 MB") << false << "x" << 5000000 << 65536;
        QTest::newRow("qt, exactly 64 KiB") << false << "x" << 65536 << 65536;
        QTest::newRow("qt, two-byte characters") << false << "\u00e9" << 100000 << 32768;
        QTest::newRow("qt, three-byte characters") << false << "\u0800" << 30000 << 21845;
        QTest::newRow("qt, four-byte characters") << false << "\U0001F600" << 20000 << 32768;
        QTest::newRow("library, 3 MB") << true << "y" << 3000000 << 65536;
        QTest::newRow("library, exactly 64 KiB") << true << "y" << 65536 << 65536;
        QTest::newRow("library, three-byte characters") << true << "\u20ac" << 30000 << 21845;
    }
    void hugeMessagesAreCut()
    {
        QFETCH(bool, library);
        QFETCH(QString, character);
        QFETCH(int, count);
        QFETCH(int, kept);
        const QString text = character.repeated(count);
        const quint64 before = DebugConsoleLastSequence();
        if (library)
            QTH_LOG_INFO("%s", text.toUtf8().constData());
        else
            qWarning("%s", qUtf8Printable(text));
        const QVector<DebugConsoleLine> lines = Since(before);
        QCOMPARE(lines.size(), 1);
        const int cut = text.toUtf8().size() - text.left(kept).toUtf8().size();
        const QString expected = text.left(kept) + (cut ? QStringLiteral(" \u2026 [cut: %1 bytes]").arg(cut) : QString());
        QCOMPARE(lines[0].text.size(), expected.size());
        QVERIFY(lines[0].text == expected);
        QVERIFY(library || PassedTexts().value(0) == text); // passed on whole
    }
};

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("QTH_CAPTURE_CHILD"))
        return RunChild();
    QCoreApplication app(argc, argv);
    TestDebugConsoleCapture test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_debug_console_capture.moc"
