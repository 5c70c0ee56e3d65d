// The application object: what its constructor sets up (default locale, translator,
// the watched "styles.qss" of the current folder) and the dispatch of commands from any
// thread to the main thread.
//
// The test runs inside an OrvantaQT::Application made by main() in a temporary current
// folder holding a "styles.qss". What needs a fresh application (the locale table, the
// catalogue, a folder without a sheet) runs in a child process of this executable
// started with "--start-up-probe".

#include <qt_halvo/application/application.h>
#include <qt_halvo/styles/style_sheet.h>

#include "log_capture.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtGui/QPalette>
#include <QtTest/QtTest>

#include <atomic>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <memory>
#include <mutex>
#include <numeric>
#include <stdexcept>
#include <thread>
#include <vector>

using OrvantaQT::Application;
using OrvantaQT::ApplicationCommand;

namespace {

const char kProbeOption[] = "--start-up-probe";
const int kErrorLevel = 4;

class FunctionCommand : public ApplicationCommand
{
public:
    explicit FunctionCommand(std::function<void()> function) : m_function(std::move(function)) {}
    void Execute() override { m_function(); }

private:
    std::function<void()> m_function;
};

std::shared_ptr<ApplicationCommand> Command(std::function<void()> function)
{
    return std::make_shared<FunctionCommand>(std::move(function));
}

Application* App()
{
    return Application::instance();
}

enum Call { Blocking, NonBlocking, Posted };

void Issue(Call call, std::shared_ptr<ApplicationCommand> command)
{
    if (call == Posted)
        App()->PostEvent(std::move(command));
    else
        App()->ExecuteInMainThread(std::move(command), call == Blocking);
}

// Counts the command events (type 1000) that reach the application while it lives.
class CommandEventCounter : public QObject
{
public:
    CommandEventCounter() { qApp->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == qApp && event->type() == QEvent::User)
            ++count;
        return false;
    }
};

// Worker threads, one body each. They are std::threads signalling through a std::mutex,
// so that ThreadSanitizer sees what waiting for them orders. A worker that never
// returns is detached when the test gives up on it, so that the failure is reported
// instead of the run being aborted.
class Workers
{
public:
    Workers(int count, const std::function<void(int)>& body) : m_count(count)
    {
        for (int i = 0; i < count; ++i) {
            m_threads.emplace_back([state = m_state, body, i] {
                body(i);
                const std::lock_guard<std::mutex> lock(state->mutex);
                ++state->returned;
                state->changed.notify_all();
            });
        }
    }

    ~Workers()
    {
        const bool returned = Join(10000);
        for (std::thread& thread : m_threads)
            returned ? thread.join() : thread.detach();
        if (!returned)
            qWarning("A worker thread is stuck; it is left running");
    }

    // Without running the main thread's events, so that nothing posted to it meanwhile
    // can run.
    bool Join(int timeoutMs)
    {
        std::unique_lock<std::mutex> lock(m_state->mutex);
        return m_state->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                         [this] { return m_state->returned == m_count; });
    }

    // Running the main thread's events; a short timer wakes the event loop to look.
    bool Wait(int timeoutMs)
    {
        QTimer tick;
        tick.start(5);
        const QDeadlineTimer deadline(timeoutMs);
        while (!Join(0) && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return Join(0);
    }

private:
    struct State
    {
        std::mutex mutex;
        std::condition_variable changed;
        int returned = 0;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
    const int m_count;
    std::vector<std::thread> m_threads;
};

// Quitting is for good: once emitted, blocking commands from other threads are refused
// for the rest of the run, so only the last tests do it.
void EmitAboutToQuit()
{
    QVERIFY(QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection));
}

const QString kSheetFile = QStringLiteral("styles.qss");

QString SheetSource(const QString& linkColor)
{
    return QStringLiteral("/* Stylesheet Constants\nlinkColor = %1\n*/\nQLabel#Link { color: @linkColor; }\n").arg(linkColor);
}

// The sheet Qt was given and the link colours of every colour group, visited or not.
QString Applied()
{
    QString applied = App()->styleSheet();
    const QPalette palette = QGuiApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        applied += QLatin1Char(' ') + palette.color(group, QPalette::Link).name() + QLatin1Char(' ')
                   + palette.color(group, QPalette::LinkVisited).name();
    return applied;
}

// What Applied() gives for SheetSource(linkColor): the constants block cut off and the
// reference replaced, the colour everywhere.
QString AppliedFrom(const QString& linkColor)
{
    return QStringLiteral("\nQLabel#Link { color: %1; }\n").arg(linkColor) + QString(QLatin1Char(' ') + linkColor).repeated(6);
}

bool WriteFile(const QString& path, const QString& text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// In the child process: sets a default locale, constructs a fresh application and prints
// what it set up.
int RunStartUpProbe(char** argv)
{
    QLocale::setDefault(QLocale(QString::fromLocal8Bit(argv[2])));
    const auto flag = [](bool value) { return value ? '1' : '0'; };
    const char isMainWithout = flag(OrvantaQT::IsMainThread());
    const char instanceWithout = flag(Application::instance() != nullptr);

    int applicationArgc = 1;
    Application application(applicationArgc, argv, QByteArray(argv[3]).toUInt(), QString::fromLocal8Bit(argv[4]));
    const QList<QTranslator*> translators = application.findChildren<QTranslator*>();
    QTranslator* translator = translators.value(0);
    // Removing succeeds only for a translator that was installed.
    std::printf("mainThread=%c%c%c%c locale=%s translator=%d %c %s %s styleSheet=%d %d\n", isMainWithout, instanceWithout,
                flag(Application::instance() == &application), flag(OrvantaQT::IsMainThread()), qPrintable(QLocale().name()),
                int(translators.size()), flag(translator && QCoreApplication::removeTranslator(translator)),
                qPrintable(translator ? translator->filePath() : QString()),
                qPrintable(translator ? translator->language() : QString()), int(application.styleSheet().size()),
                int(OrvantaQT::GetGlobalStyleSheet().size()));
    return 0;
}

// Runs the probe in an empty folder (so without a "styles.qss"); what it printed.
QString StartUpProbe(const QString& initialLocale, unsigned int languageIndex, const QString& suffix)
{
    QTemporaryDir folder;
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    probe.setProcessEnvironment(environment);
    probe.setWorkingDirectory(folder.path());
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    probe.start(QCoreApplication::applicationFilePath(),
                {QLatin1String(kProbeOption), initialLocale, QString::number(languageIndex), suffix});
    if (!probe.waitForFinished(120000) || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return QStringLiteral("the start-up probe failed");
    return QString::fromUtf8(probe.readAllStandardOutput());
}

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    // Start-up and run time
    void startUp_data();
    void startUp();
    void styleSheetFileIsFollowed_data();
    void styleSheetFileIsFollowed();

    // Commands on the main thread
    void commandOnTheMainThread_data();
    void commandOnTheMainThread();
    void commandsFromWorkersArriveInOrderOnTheMainThread();
    void blockingCallReturnsOnlyAfterTheCommandRan_data();
    void blockingCallReturnsOnlyAfterTheCommandRan();
    void throwingCommandIsLogged_data();
    void throwingCommandIsLogged();

    // Quitting: these come last, as aboutToQuit cannot be undone
    void stressWithQuitMidway();
    void afterQuitOnlyBlockingCallsFromWorkersAreRefused();
};

void TestApplication::cleanup()
{
    // Nothing a test posted may run in the next one.
    QCoreApplication::sendPostedEvents();
}

void TestApplication::startUp_data()
{
    QTest::addColumn<QString>("initial"); // the default locale before
    QTest::addColumn<uint>("index");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("catalogue"); // its language; empty: none loaded

    QTest::newRow("0 Russian") << "de_DE" << 0u << "ru" << "ru_RU" << "ru_RU";
    QTest::newRow("1 English") << "de_DE" << 1u << "de" << "en_US" << "de_DE";
    // A catalogue the library does not ship is no error: the texts stay as written.
    QTest::newRow("11 Portuguese, Brazil") << "de_DE" << 11u << "xx" << "pt_BR" << "";
    // The last row of the table, and the first index past it.
    QTest::newRow("35 Turkish") << "de_DE" << 35u << "xx" << "tr_TR" << "";
    QTest::newRow("36 falls back to English") << "de_DE" << 36u << "xx" << "en_US" << "";
    QTest::newRow("UINT_MAX falls back to English") << "de_DE" << uint(UINT_MAX) << "xx" << "en_US" << "";
    // Only the language is compared with the current default: the country is not changed.
    QTest::newRow("11 keeps Portuguese, Portugal") << "pt_PT" << 11u << "xx" << "pt_PT" << "";
}

void TestApplication::startUp()
{
    QFETCH(QString, initial);
    QFETCH(uint, index);
    QFETCH(QString, suffix);
    QFETCH(QString, locale);
    QFETCH(QString, catalogue);

    const QString file = catalogue.isEmpty() ? QString() : QStringLiteral(":/translations/qt_halvo_%1.qm").arg(suffix);
    // Without an application nothing is the main thread; with one, its thread is. No
    // "styles.qss" in the folder: no sheet.
    QCOMPARE(StartUpProbe(initial, index, suffix),
             QStringLiteral("mainThread=0011 locale=%1 translator=1 1 %2 %3 styleSheet=0 0\n").arg(locale, file, catalogue));
}

enum SheetChange { AtStartUp, Edited, SavedByRename, DeletedThenRecreated, DeletedAndRecreatedAtOnce };

void TestApplication::styleSheetFileIsFollowed_data()
{
    QTest::addColumn<int>("change");
    QTest::addColumn<QString>("linkColor");
    QTest::addColumn<QString>("editedAfterwards"); // the file now in place is watched in turn

    // main() wrote the sheet before the application existed.
    QTest::newRow("at start-up") << int(AtStartUp) << "#123456" << "#abcdef";
    QTest::newRow("edited") << int(Edited) << "#010203" << "#040506";
    // Editors that save atomically write a new file and rename it over the old one.
    QTest::newRow("saved by rename") << int(SavedByRename) << "#200000" << "#210000";
    // The application sees the file gone before it comes back, or only once it is back.
    QTest::newRow("deleted, then recreated") << int(DeletedThenRecreated) << "#300000" << "#310000";
    QTest::newRow("deleted and recreated at once") << int(DeletedAndRecreatedAtOnce) << "#320000" << "#330000";
}

void TestApplication::styleSheetFileIsFollowed()
{
    QFETCH(int, change);
    QFETCH(QString, linkColor);
    QFETCH(QString, editedAfterwards);

    const QString newFile = kSheetFile + QStringLiteral(".new");
    switch (change) {
    case Edited:
        QVERIFY(WriteFile(kSheetFile, SheetSource(linkColor)));
        break;
    case SavedByRename:
        QVERIFY(WriteFile(newFile, SheetSource(linkColor)));
        QCOMPARE(std::rename(QFile::encodeName(newFile).constData(), QFile::encodeName(kSheetFile).constData()), 0);
        break;
    case DeletedThenRecreated:
    case DeletedAndRecreatedAtOnce:
        QVERIFY(QFile::remove(kSheetFile));
        // A sheet that cannot be read is an empty one.
        if (change == DeletedThenRecreated)
            QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), QString(), 10000);
        QVERIFY(WriteFile(kSheetFile, SheetSource(linkColor)));
        break;
    }
    QTRY_COMPARE_WITH_TIMEOUT(Applied(), AppliedFrom(linkColor), 10000);
    QVERIFY(WriteFile(kSheetFile, SheetSource(editedAfterwards)));
    QTRY_COMPARE_WITH_TIMEOUT(Applied(), AppliedFrom(editedAfterwards), 10000);
}

void TestApplication::commandOnTheMainThread_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<bool>("withCommand");
    QTest::addColumn<bool>("runsInline");
    QTest::addColumn<int>("errors"); // lines logged
    QTest::newRow("blocking") << int(Blocking) << true << true << 0;
    QTest::newRow("non-blocking") << int(NonBlocking) << true << true << 0;
    // Posting queues even on the main thread.
    QTest::newRow("posted") << int(Posted) << true << false << 0;
    // No command is ignored, also from a worker; posting none is logged, from either thread.
    QTest::newRow("blocking, no command") << int(Blocking) << false << false << 0;
    QTest::newRow("non-blocking, no command") << int(NonBlocking) << false << false << 0;
    QTest::newRow("posted, no command") << int(Posted) << false << false << 2;
}

void TestApplication::commandOnTheMainThread()
{
    QFETCH(int, call);
    QFETCH(bool, withCommand);
    QFETCH(bool, runsInline);
    QFETCH(int, errors);
    const CommandEventCounter counter;
    const LogCapture::Mark mark;
    // Custom events of other types are no commands.
    QEvent sent(QEvent::Type(QEvent::User + 1));
    QCoreApplication::sendEvent(App(), &sent);
    QCoreApplication::postEvent(App(), new QEvent(QEvent::Type(QEvent::User + 500)));
    QCoreApplication::postEvent(App(), new QEvent(QEvent::MaxUser));

    int runs = 0;
    Issue(Call(call), withCommand ? Command([&] { ++runs; }) : nullptr);
    QCOMPARE(runs, runsInline ? 1 : 0);
    if (!withCommand) {
        // The main thread runs no events until the worker has returned: a blocking call
        // must not wait for a command that was never posted.
        Workers worker(1, [&](int) { Issue(Call(call), nullptr); });
        QVERIFY2(worker.Join(10000), "a call with no command waited");
    }
    QTRY_COMPARE(runs, withCommand ? 1 : 0);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCOMPARE(runs, withCommand ? 1 : 0);
    QCOMPARE(counter.count, withCommand && !runsInline ? 1 : 0);
    QStringList logged;
    for (const LoggedLine& line : mark.Since())
        logged << QString::number(line.level) + QLatin1Char(' ') + line.text;
    QStringList expected;
    while (expected.size() < errors)
        expected << QStringLiteral("4 Application::PostEvent: no command to post");
    QCOMPARE(logged, expected);
}

void TestApplication::commandsFromWorkersArriveInOrderOnTheMainThread()
{
    const int workerCount = 4;
    const int commandsPerWorker = 1000;
    const QThread* mainThread = QThread::currentThread();
    // Written on the main thread only, by the commands.
    QVector<QVector<int>> arrived(workerCount);
    int offMainThread = 0;
    int total = 0;

    Workers workers(workerCount, [&](int worker) {
        for (int i = 0; i < commandsPerWorker; ++i) {
            // Both ways of queueing share one queue.
            Issue(i % 2 == 0 ? NonBlocking : Posted, Command([&arrived, &offMainThread, &total, mainThread, worker, i] {
                      offMainThread += QThread::currentThread() != mainThread ? 1 : 0;
                      arrived[worker].append(i);
                      ++total;
                  }));
        }
    });
    QVERIFY(workers.Wait(20000));
    QTRY_COMPARE_WITH_TIMEOUT(total, workerCount * commandsPerWorker, 20000);
    QCOMPARE(offMainThread, 0);
    QVector<int> expected(commandsPerWorker);
    std::iota(expected.begin(), expected.end(), 0);
    for (int worker = 0; worker < workerCount; ++worker)
        QCOMPARE(arrived[worker], expected);
}

void TestApplication::blockingCallReturnsOnlyAfterTheCommandRan_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::newRow("run") << false;
    // A command event removed from the queue undelivered (as when the event loop is torn
    // down) must still wake the thread waiting for it.
    QTest::newRow("dropped undelivered") << true;
}

void TestApplication::blockingCallReturnsOnlyAfterTheCommandRan()
{
    QFETCH(bool, dropped);
    const QThread* mainThread = QThread::currentThread();
    QSemaphore calling;
    // ranOn is written by the command on the main thread and read by the worker once the
    // call has returned: the call itself must order the two.
    const QThread* ranOn = nullptr;
    std::atomic<const QThread*> seenAtReturn{nullptr};
    std::atomic<bool> mainThreadOnWorker{true};
    Workers worker(1, [&](int) {
        mainThreadOnWorker = OrvantaQT::IsMainThread();
        calling.release();
        App()->ExecuteInMainThread(Command([&] { ranOn = QThread::currentThread(); }), true);
        seenAtReturn = ranOn;
    });

    QVERIFY(calling.tryAcquire(1, 10000));
    if (dropped) {
        QElapsedTimer timer;
        timer.start();
        while (!worker.Join(0) && timer.elapsed() < 10000) {
            QCoreApplication::removePostedEvents(App(), QEvent::User);
            QThread::yieldCurrentThread();
        }
        QVERIFY2(worker.Join(0), "a blocking call whose event was dropped did not return");
    } else {
        // The main thread runs no events here, so the command cannot run and the call
        // cannot return.
        QVERIFY2(!worker.Join(300), "a blocking call returned before its command ran");
        QVERIFY(ranOn == nullptr);
    }
    QVERIFY(worker.Wait(10000));
    QCOMPARE(ranOn, dropped ? nullptr : mainThread);
    QCOMPARE(seenAtReturn.load(), ranOn);
    QVERIFY(!mainThreadOnWorker.load());
}

void TestApplication::throwingCommandIsLogged_data()
{
    QTest::addColumn<bool>("standardException");
    QTest::addColumn<bool>("blockingFromWorker");
    QTest::addColumn<QString>("logged");

    const QString standard = QStringLiteral("A command run on the main thread threw: broken command");
    const QString other = QStringLiteral("A command run on the main thread threw an exception");
    QTest::newRow("std::exception, posted") << true << false << standard;
    QTest::newRow("std::exception, blocking from a worker") << true << true << standard;
    QTest::newRow("other exception, posted") << false << false << other;
    QTest::newRow("other exception, blocking from a worker") << false << true << other;
}

void TestApplication::throwingCommandIsLogged()
{
    QFETCH(bool, standardException);
    QFETCH(bool, blockingFromWorker);
    QFETCH(QString, logged);

    const LogCapture::Mark mark;
    auto throwing = Command([standardException] {
        if (standardException)
            throw std::runtime_error("broken command");
        throw 42;
    });
    if (blockingFromWorker) {
        Workers worker(1, [&](int) { App()->ExecuteInMainThread(throwing, true); });
        QVERIFY2(worker.Wait(10000), "the caller of a throwing command was not released");
    } else {
        App()->PostEvent(throwing);
    }
    QTRY_VERIFY(mark.Contains(kErrorLevel, logged));

    // The main thread goes on running commands.
    int runs = 0;
    App()->PostEvent(Command([&] { ++runs; }));
    QTRY_COMPARE(runs, 1);
}

void TestApplication::stressWithQuitMidway()
{
    // Eight workers each issue rounds of a blocking call, a non-blocking call and a
    // post; halfway through the blocking calls the application announces that it quits.
    const int workerCount = 8;
    const int rounds = 1000;
    const int blockingTotal = workerCount * rounds;
    const QThread* mainThread = QThread::currentThread();
    QSignalSpy aboutToQuit(qApp, &QCoreApplication::aboutToQuit);

    std::atomic<bool> quitStarted{false};  // set before aboutToQuit is emitted
    std::atomic<bool> quitFinished{false}; // set once it has been
    std::atomic<int> offMainThread{0};
    std::atomic<int> blockingSkipped{0};
    std::atomic<int> skippedBeforeQuit{0};
    std::atomic<int> ranAfterQuit{0};
    // Main thread only.
    int blockingRuns = 0;
    int queuedRuns = 0;
    int outOfOrder = 0;
    QVector<int> lastSequence(workerCount, -1);

    const auto arrived = [&](int worker, int sequence) {
        offMainThread += QThread::currentThread() != mainThread ? 1 : 0;
        outOfOrder += sequence <= lastSequence[worker] ? 1 : 0;
        lastSequence[worker] = sequence;
    };

    Workers workers(workerCount, [&](int worker) {
        int sequence = 0;
        for (int round = 0; round < rounds; ++round) {
            const bool afterQuit = quitFinished.load();
            bool ran = false;
            App()->ExecuteInMainThread(Command([&, worker, afterQuit, sequence] {
                                           arrived(worker, sequence);
                                           ran = true;
                                           ranAfterQuit += afterQuit ? 1 : 0;
                                           if (++blockingRuns == blockingTotal / 2) {
                                               quitStarted = true;
                                               EmitAboutToQuit();
                                               quitFinished = true;
                                           }
                                       }),
                                       true);
            ++sequence;
            if (!ran) {
                ++blockingSkipped;
                skippedBeforeQuit += quitStarted.load() ? 0 : 1;
            }
            for (const Call call : {NonBlocking, Posted}) {
                Issue(call, Command([&, worker, sequence] {
                          arrived(worker, sequence);
                          ++queuedRuns;
                      }));
                ++sequence;
            }
        }
    });
    QVERIFY2(workers.Wait(10000), "workers did not all return: a blocking call is stuck");
    QTRY_COMPARE_WITH_TIMEOUT(queuedRuns, 2 * blockingTotal, 10000);

    QCOMPARE(aboutToQuit.count(), 1);
    QCOMPARE(offMainThread.load(), 0);
    QCOMPARE(outOfOrder, 0);
    QCOMPARE(skippedBeforeQuit.load(), 0);
    QCOMPARE(ranAfterQuit.load(), 0);
    QCOMPARE(blockingRuns + blockingSkipped.load(), blockingTotal);
    // Quitting happened midway: calls ran before it and were refused after it.
    QVERIFY(blockingRuns >= blockingTotal / 2);
    QVERIFY(blockingSkipped.load() > 0);
}

void TestApplication::afterQuitOnlyBlockingCallsFromWorkersAreRefused()
{
    // That queued calls still run after quitting is stressWithQuitMidway's.
    EmitAboutToQuit();
    std::atomic<bool> ran{false};
    Workers worker(1, [&](int) { App()->ExecuteInMainThread(Command([&] { ran = true; }), true); });
    // The main thread runs no events meanwhile: the call has to return by itself.
    QVERIFY2(worker.Join(10000), "a blocking call after aboutToQuit waited");
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QVERIFY(!ran.load());

    int runs = 0;
    App()->ExecuteInMainThread(Command([&] { ++runs; }), true);
    QCOMPARE(runs, 1);
}

int main(int argc, char** argv)
{
    if (argc == 5 && qstrcmp(argv[1], kProbeOption) == 0)
        return RunStartUpProbe(argv);

    // The application picks up "styles.qss" from the current folder when it is made.
    QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path()) || !WriteFile(kSheetFile, SheetSource(QStringLiteral("#123456")))) {
        std::fprintf(stderr, "cannot write styles.qss to a temporary current folder\n");
        return 1;
    }
    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    Application application(argc, argv, 1, QStringLiteral("en"));
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
