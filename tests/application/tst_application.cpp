// The test runs inside an OrvantaQT::Application made by main() in a temporary current
// folder holding a "styles.qss". What needs a fresh application (the locale, the
// catalogue, a folder without a sheet) runs in a child process of this executable.

#include <qt_halvo/application/application.h>
#include <qt_halvo/styles/style_sheet.h>

#include "test_support.h"

#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <thread>

using OrvantaQT::Application;
using OrvantaQT::ApplicationCommand;

namespace {

// Worker threads, one body each: std::threads, so that ThreadSanitizer sees what waiting
// for them orders (Qt is not built with it). One that never returns is detached when the
// test gives up on it, so that the failure is reported instead of the run being aborted.
class Workers
{
public:
    Workers(int count, const std::function<void(int)>& body) : m_count(count)
    {
        for (int i = 0; i < count; ++i)
            m_threads.emplace_back([returned = m_returned, body, i] { body(i), ++*returned; });
    }
    ~Workers()
    {
        const bool returned = Join(30000);
        for (std::thread& thread : m_threads)
            returned ? thread.join() : thread.detach();
    }
    // Without running the main thread's events, so that nothing posted to it can run.
    bool Join(int timeoutMs)
    {
        const QDeadlineTimer deadline(timeoutMs);
        while (*m_returned < m_count && !deadline.hasExpired())
            QThread::msleep(1);
        return *m_returned == m_count;
    }

private:
    const std::shared_ptr<std::atomic<int>> m_returned = std::make_shared<std::atomic<int>>(0);
    const int m_count;
    std::vector<std::thread> m_threads;
};

struct Command : ApplicationCommand
{
    explicit Command(std::function<void()> function) : function(std::move(function)) {}
    void Execute() override { function(); }
    std::function<void()> function;
};

enum Call { Blocking, NonBlocking, Posted };

void Issue(Call call, const std::shared_ptr<ApplicationCommand>& command)
{
    call == Posted ? Application::instance()->PostEvent(command) : Application::instance()->ExecuteInMainThread(command, call == Blocking);
}

// A sheet whose constant linkColor is used in a rule.
bool WriteSheet(const char* path, const QString& linkColor)
{
    QFile file(QString::fromLatin1(path));
    const QString sheet = QStringLiteral("/* Stylesheet Constants\nlinkColor = %1\n*/\nQLabel#Link { color: @linkColor; }\n");
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(sheet.arg(linkColor).toUtf8()) > 0;
}

// The sheet Qt was given and the link colours of every colour group, visited or not.
QString Applied()
{
    QString applied = qApp->styleSheet();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const QPalette::ColorRole role : {QPalette::Link, QPalette::LinkVisited})
            applied += QLatin1Char(' ') + QGuiApplication::palette().color(group, role).name();
    }
    return applied;
}

// What Applied() gives for the sheet of WriteSheet(): the constants cut off and replaced.
QString AppliedFrom(const QString& linkColor)
{
    return QStringLiteral("\nQLabel#Link { color: %1; }\n").arg(linkColor) + QString(QLatin1Char(' ') + linkColor).repeated(6);
}

// In the child: after the default locale given, a fresh application with the language
// index and catalogue suffix given; prints what it set up.
int StartUpProbe(char** argv)
{
    QLocale::setDefault(QLocale(QString::fromLatin1(argv[2])));
    const bool mainThreadBefore = OrvantaQT::IsMainThread() || Application::instance();
    int argc = 1;
    Application application(argc, argv, QByteArray(argv[3]).toUInt(), QString::fromLatin1(argv[4]));
    const bool mainThreadAfter = OrvantaQT::IsMainThread() && Application::instance() == &application;
    bool onAnotherThread = true;
    std::thread([&] { onAnotherThread = OrvantaQT::IsMainThread(); }).join();
    const QStringList paths = QCoreApplication::libraryPaths();
    const bool pluginsSet = OrvantaQT::InitializePluginsDir() || QCoreApplication::libraryPaths() != paths;
    QTranslator* translator = application.findChild<QTranslator*>();
    // Only an installed translator can be removed.
    std::printf("main thread %d %d %d, plug-ins %d, sheet %d, installed %d, %s %s %s\n", mainThreadBefore, mainThreadAfter,
                onAnotherThread, pluginsSet, int(application.styleSheet().size() + OrvantaQT::GetGlobalStyleSheet().size()),
                QCoreApplication::removeTranslator(translator), qPrintable(QLocale().name()),
                qPrintable(translator->filePath()), qPrintable(translator->language()));
    return 0;
}

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QCoreApplication::sendPostedEvents(); } // nothing a test posted runs in the next

    void startUp_data()
    {
        QTest::addColumn<QString>("arguments"); // the default locale before, language index, catalogue suffix
        QTest::addColumn<QString>("expected");  // the default locale after and the catalogue loaded
        QTest::newRow("0 Russian") << "de_DE 0 ru" << "ru_RU :/translations/qt_halvo_ru.qm ru_RU";
        // The catalogue follows the suffix, not the locale.
        QTest::newRow("1 English") << "de_DE 1 de" << "en_US :/translations/qt_halvo_de.qm de_DE";
        // A catalogue the library does not ship is no error: the texts stay as written.
        QTest::newRow("11 Portuguese, Brazil") << "de_DE 11 xx" << "pt_BR  ";
        QTest::newRow("35 Turkish, the last") << "de_DE 35 xx" << "tr_TR  ";
        QTest::newRow("36 falls back to English") << "de_DE 36 xx" << "en_US  ";
        QTest::newRow("UINT_MAX falls back to English") << "de_DE 4294967295 xx" << "en_US  ";
        // Only the language is compared with the current default: the country stays.
        QTest::newRow("11 keeps Portuguese, Portugal") << "pt_PT 11 xx" << "pt_PT  ";
    }
    void startUp()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        const QTemporaryDir folder; // without a "styles.qss"
        const TestSupport::ChildResult probe = TestSupport::RunSelf(
            QStringList(QStringLiteral("--start-up-probe")) + arguments.split(QLatin1Char(' ')), {"QT_QPA_PLATFORM=offscreen"}, folder.path());
        QCOMPARE(probe.exitCode, 0);
        QCOMPARE(probe.output, QStringLiteral("main thread 0 1 0, plug-ins 0, sheet 0, installed 1, %1\n").arg(expected));
    }

    void styleSheetFileIsFollowed_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("linkColor");
        // main() wrote the sheet before the application existed.
        QTest::newRow("at start-up") << "none" << "#123456";
        QTest::newRow("edited") << "edit" << "#010203";
        // Editors that save atomically write a new file and rename it over the old one.
        QTest::newRow("saved by rename") << "rename" << "#200000";
        // The application sees the file gone before it comes back, or only once it is back.
        QTest::newRow("deleted, then recreated") << "delete, wait" << "#300000";
        QTest::newRow("deleted and recreated at once") << "delete" << "#320000";
    }
    void styleSheetFileIsFollowed()
    {
        QFETCH(QString, change);
        QFETCH(QString, linkColor);
        if (change == QLatin1String("rename")) {
            QVERIFY(WriteSheet("styles.qss.new", linkColor));
            QCOMPARE(std::rename("styles.qss.new", "styles.qss"), 0);
        } else if (change != QLatin1String("none")) {
            if (change.startsWith(QLatin1String("delete")))
                QVERIFY(QFile::remove(QStringLiteral("styles.qss")));
            // A sheet that cannot be read is an empty one.
            if (change == QLatin1String("delete, wait"))
                QTRY_COMPARE_WITH_TIMEOUT(qApp->styleSheet(), QString(), 10000);
            QVERIFY(WriteSheet("styles.qss", linkColor));
        }
        QTRY_COMPARE_WITH_TIMEOUT(Applied(), AppliedFrom(linkColor), 10000);
        QVERIFY(WriteSheet("styles.qss", QStringLiteral("#abcdef"))); // the file now in place is watched in turn
        QTRY_COMPARE_WITH_TIMEOUT(Applied(), AppliedFrom(QStringLiteral("#abcdef")), 10000);
    }

    void commands_data()
    {
        QTest::addColumn<bool>("fromWorker");
        QTest::addColumn<int>("call");
        QTest::addColumn<QString>("made");     // the command: "runs", "throws", "throws 42", "dropped" or none
        QTest::addColumn<QString>("runs");     // when the call returned, as its caller saw, and in the end
        QTest::addColumn<QString>("logged");   // an error
        QTest::newRow("main thread, blocking") << false << int(Blocking) << "runs" << "1 1" << "";
        QTest::newRow("main thread, non-blocking") << false << int(NonBlocking) << "runs" << "1 1" << "";
        // Posting queues even on the main thread.
        QTest::newRow("main thread, posted") << false << int(Posted) << "runs" << "0 1" << "";
        QTest::newRow("worker, blocking") << true << int(Blocking) << "runs" << "1 1" << "";
        QTest::newRow("worker, non-blocking") << true << int(NonBlocking) << "runs" << "0 1" << "";
        // As when the event loop is torn down: an event removed undelivered releases its caller.
        QTest::newRow("worker, blocking, dropped") << true << int(Blocking) << "dropped" << "0 0" << "";
        // A blocking call does not wait for no command; posting none is logged.
        QTest::newRow("worker, blocking, no command") << true << int(Blocking) << "" << "0 0" << "";
        QTest::newRow("main thread, posted, no command") << false << int(Posted) << "" << "0 0" << "Application::PostEvent: no command to post";
        // A command that throws is logged, and its blocking caller is still released.
        const QString threw = QStringLiteral("A command run on the main thread threw");
        QTest::newRow("main thread, posted, throws") << false << int(Posted) << "throws" << "0 1" << threw + ": broken command";
        QTest::newRow("worker, blocking, throws 42") << true << int(Blocking) << "throws 42" << "1 1" << threw + " an exception";
    }
    void commands()
    {
        QFETCH(bool, fromWorker);
        QFETCH(int, call);
        QFETCH(QString, made);
        QFETCH(QString, runs);
        QFETCH(QString, logged);
        const LogCapture::Mark mark;
        // Custom events of other types are no commands.
        QCoreApplication::postEvent(qApp, new QEvent(QEvent::Type(QEvent::User + 1)));
        QVERIFY(QEvent::registerEventType(QEvent::User) != QEvent::User); // the commands' type, taken
        // Written by the command on the main thread: a blocking call orders that before its caller reads it.
        int ran = 0;
        int ranAtReturn = -1;
        const std::shared_ptr<ApplicationCommand> command = made.isEmpty() ? nullptr : std::make_shared<Command>([&ran, made] {
            ++ran;
            if (made == QLatin1String("throws"))
                throw std::runtime_error("broken command");
            if (made == QLatin1String("throws 42"))
                throw 42;
        });
        const auto issue = [&] {
            Issue(Call(call), command);
            ranAtReturn = ran;
        };
        if (fromWorker) {
            Workers worker(1, [&](int) { issue(); });
            if (call == Blocking && command) {
                // The main thread runs no events here, so the command can neither run nor be dropped.
                QVERIFY2(!worker.Join(300), "a blocking call returned before its command ran");
                for (QDeadlineTimer deadline(10000); made == QLatin1String("dropped") && !worker.Join(0) && !deadline.hasExpired();)
                    QCoreApplication::removePostedEvents(qApp, QEvent::User);
                QTRY_VERIFY_WITH_TIMEOUT(worker.Join(0), 10000);
            }
            QVERIFY(worker.Join(10000)); // without running events: a call returns by itself
        } else {
            issue();
        }
        QCoreApplication::sendPostedEvents();
        QCOMPARE(QStringLiteral("%1 %2").arg(ranAtReturn).arg(ran), runs);
        QCOMPARE(mark.Texts(), logged.isEmpty() ? QStringList() : QStringList("4 " + logged));
    }

    // Quitting cannot be undone: this comes last.
    void quittingMidwayRefusesLaterBlockingCallsFromWorkers()
    {
        // Workers issue rounds of a blocking call, a non-blocking call and a post, to run in that order on
        // the main thread; halfway through the blocking calls the application announces that it quits.
        const int workerCount = 8;
        const int rounds = 1000;
        std::atomic<bool> quitting{false}; // once aboutToQuit has been emitted
        std::atomic<int> refused{0}, ranAfterQuit{0};
        int blockingRuns = 0, queuedRuns = 0, misplaced = 0; // on the main thread only
        QVector<int> lastSequence(workerCount, -1);
        const auto arrived = [&, mainThread = QThread::currentThread()](int worker, int sequence) {
            misplaced += sequence <= lastSequence[worker] || QThread::currentThread() != mainThread ? 1 : 0;
            lastSequence[worker] = sequence;
        };
        Workers workers(workerCount, [&](int worker) {
            for (int sequence = 0; sequence < 3 * rounds; sequence += 3) {
                bool ran = false;
                Issue(Blocking, std::make_shared<Command>([&, worker, sequence, afterQuit = quitting.load()] {
                          arrived(worker, sequence);
                          ran = true;
                          ranAfterQuit += afterQuit ? 1 : 0;
                          if (++blockingRuns == workerCount * rounds / 2)
                              quitting = QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
                      }));
                refused += ran ? 0 : 1;
                for (const Call call : {NonBlocking, Posted})
                    Issue(call, std::make_shared<Command>([&, worker, queued = sequence + (call == Posted ? 2 : 1)] {
                              arrived(worker, queued);
                              ++queuedRuns;
                          }));
            }
        });
        QTRY_VERIFY2_WITH_TIMEOUT(workers.Join(0), "workers did not all return: a blocking call is stuck", 60000);
        // Queued calls still run after quitting.
        QTRY_COMPARE_WITH_TIMEOUT(queuedRuns, 2 * workerCount * rounds, 30000);
        QCOMPARE(misplaced, 0);
        QVERIFY(quitting && refused.load() > 0);
        QCOMPARE(ranAfterQuit.load(), 0);
        // On the main thread a blocking call still runs at once.
        int runs = 0;
        Issue(Blocking, std::make_shared<Command>([&runs] { ++runs; }));
        QCOMPARE(runs, 1);
    }
};

int main(int argc, char** argv)
{
    if (argc == 5 && qstrcmp(argv[1], "--start-up-probe") == 0)
        return StartUpProbe(argv);
    // The application picks up "styles.qss" from the current folder when it is made.
    QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path()) || !WriteSheet("styles.qss", QStringLiteral("#123456")))
        qFatal("cannot write styles.qss to a temporary current folder");
    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    Application application(argc, argv, 1, QStringLiteral("en"));
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
