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

// ---------------------------------------------------------------------------------------
// Commands and threads

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

// Counts the command events (type 1000) that reach the application.
class CommandEventCounter : public QObject
{
public:
    int Count() const { return m_count; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == qApp && event->type() == QEvent::User)
            ++m_count;
        return false;
    }

private:
    int m_count = 0;
};

// Worker threads, one body each. They are std::threads signalling through a std::mutex,
// so that ThreadSanitizer sees what waiting for them orders. A worker that never
// returns is detached when the test gives up on it, so that the failure is reported
// instead of the run being aborted.
class Workers
{
public:
    Workers(int count, const std::function<void(int)>& body) : m_state(std::make_shared<State>()), m_count(count)
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
        for (std::thread& thread : m_threads) {
            if (returned)
                thread.join();
            else
                thread.detach();
        }
        if (!returned)
            qWarning("A worker thread is stuck; it is left running");
    }

    bool AllReturned() const
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        return m_state->returned == m_count;
    }

    // Waits without running the main thread's events, so that nothing posted to the
    // main thread meanwhile can run.
    bool Join(int timeoutMs)
    {
        std::unique_lock<std::mutex> lock(m_state->mutex);
        return m_state->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                         [this] { return m_state->returned == m_count; });
    }

    // Runs the main thread's events until every body has returned; a short timer wakes
    // the event loop to look.
    bool Wait(int timeoutMs)
    {
        QTimer tick;
        tick.start(5);
        const QDeadlineTimer deadline(timeoutMs);
        while (!AllReturned() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return AllReturned();
    }

private:
    struct State
    {
        std::mutex mutex;
        std::condition_variable changed;
        int returned = 0;
    };

    std::shared_ptr<State> m_state;
    const int m_count;
    std::vector<std::thread> m_threads;
};

// Quitting is for good: once emitted, blocking commands from other threads are refused
// for the rest of the run, so only the last tests do it.
void EmitAboutToQuit()
{
    QVERIFY(QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection));
}

// ---------------------------------------------------------------------------------------
// "styles.qss"

const QString kSheetFile = QStringLiteral("styles.qss");

QString SheetSource(const QString& linkColor, const QString& selector = QStringLiteral("QLabel#Link"))
{
    return QStringLiteral("/* Stylesheet Constants\nlinkColor = %1\n*/\n%2 { color: @linkColor; }\n")
        .arg(linkColor, selector);
}

// The sheet Qt is given: the constants block cut off and the references replaced.
QString ProcessedSheet(const QString& linkColor, const QString& selector = QStringLiteral("QLabel#Link"))
{
    return QStringLiteral("\n%2 { color: %1; }\n").arg(linkColor, selector);
}

bool WriteFile(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = text.toUtf8();
    return file.write(bytes) == bytes.size();
}

QColor LinkColor()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Link);
}

// The link colours of every colour group, visited or not.
QVector<QColor> AllLinkColors()
{
    const QPalette palette = QGuiApplication::palette();
    QVector<QColor> colors;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colors << palette.color(group, QPalette::Link) << palette.color(group, QPalette::LinkVisited);
    }
    return colors;
}

// ---------------------------------------------------------------------------------------
// The start-up probe: a fresh Application in a child process

// In the child: optionally sets a default locale, constructs the application and prints
// what it set up, one "key=value" a line.
int RunStartUpProbe(char** argv)
{
    const QString initialLocale = QString::fromLocal8Bit(argv[2]);
    const unsigned int languageIndex = QByteArray(argv[3]).toUInt();
    const QString suffix = QString::fromLocal8Bit(argv[4]);
    if (initialLocale != QLatin1String("-"))
        QLocale::setDefault(QLocale(initialLocale));

    auto print = [](const char* key, const QString& value) {
        std::printf("%s=%s\n", key, value.toUtf8().constData());
    };
    auto flag = [](bool value) { return value ? QStringLiteral("1") : QStringLiteral("0"); };

    print("mainThreadWithoutApplication", flag(OrvantaQT::IsMainThread()));
    print("instanceWithoutApplication", flag(Application::instance() != nullptr));

    int applicationArgc = 1;
    Application application(applicationArgc, argv, languageIndex, suffix);
    print("instance", flag(Application::instance() == &application));
    print("mainThread", flag(OrvantaQT::IsMainThread()));

    const QLocale locale;
    print("locale", locale.name());
    print("language", QString::number(int(locale.language())));
    print("country", QString::number(int(locale.country())));

    const QList<QTranslator*> translators = application.findChildren<QTranslator*>();
    print("translators", QString::number(translators.size()));
    if (!translators.isEmpty()) {
        QTranslator* translator = translators.first();
        print("translatorFile", translator->filePath());
        print("translatorLanguage", translator->language());
        // Removing succeeds only for a translator that was installed.
        print("translatorInstalled", flag(QCoreApplication::removeTranslator(translator)));
    }
    print("styleSheetLength", QString::number(application.styleSheet().size()));
    print("globalStyleSheetLength", QString::number(OrvantaQT::GetGlobalStyleSheet().size()));
    std::fflush(stdout);
    return 0;
}

using ProbeOutput = QMap<QString, QString>;

// Runs the probe in an empty folder (so without a "styles.qss").
ProbeOutput StartUpProbe(const QString& initialLocale, unsigned int languageIndex, const QString& suffix)
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
    ProbeOutput output;
    if (!probe.waitForFinished(120000) || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return output;
    const QString text = QString::fromUtf8(probe.readAllStandardOutput());
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        output.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
    return output;
}

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    // The application object
    void isMainThreadOnlyOnTheApplicationsThread();
    void withoutApplicationNothingIsTheMainThread();

    // Start-up: locale and translator
    void defaultLocaleFollowsTheLanguageIndex_data();
    void defaultLocaleFollowsTheLanguageIndex();
    void translatorLoadsTheLibrarysCatalogue_data();
    void translatorLoadsTheLibrarysCatalogue();

    // Start-up and run time: "styles.qss"
    void withoutStyleSheetFileNoSheetIsApplied();
    void styleSheetFileOfTheCurrentFolderIsApplied();
    void editedStyleSheetIsReapplied();
    void styleSheetSavedByRenameIsFollowed();
    void deletedAndRecreatedStyleSheetIsFollowed_data();
    void deletedAndRecreatedStyleSheetIsFollowed();

    // Commands on the main thread
    void commandOnTheMainThreadRunsInline_data();
    void commandOnTheMainThreadRunsInline();
    void nullCommandIsIgnored();
    void postEventOnTheMainThreadIsQueued();
    void commandsFromWorkersArriveInOrderOnTheMainThread();
    void blockingCallReturnsOnlyAfterTheCommandRan();
    void droppedBlockingCommandReleasesItsCaller();
    void otherCustomEventsAreIgnored();
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

// ---------------------------------------------------------------------------------------
// The application object

void TestApplication::isMainThreadOnlyOnTheApplicationsThread()
{
    QVERIFY(OrvantaQT::IsMainThread());

    std::atomic<int> onWorker{-1};
    std::atomic<int> inCommand{-1};
    Workers worker(1, [&](int) {
        onWorker = OrvantaQT::IsMainThread() ? 1 : 0;
        App()->ExecuteInMainThread(Command([&] { inCommand = OrvantaQT::IsMainThread() ? 1 : 0; }), true);
    });
    QVERIFY(worker.Wait(10000));
    QCOMPARE(onWorker.load(), 0);
    QCOMPARE(inCommand.load(), 1);
}

void TestApplication::withoutApplicationNothingIsTheMainThread()
{
    const ProbeOutput probe = StartUpProbe(QStringLiteral("-"), 1, QStringLiteral("en"));
    QVERIFY2(!probe.isEmpty(), "the start-up probe failed");
    QCOMPARE(probe.value(QStringLiteral("mainThreadWithoutApplication")), QStringLiteral("0"));
    QCOMPARE(probe.value(QStringLiteral("instanceWithoutApplication")), QStringLiteral("0"));
    QCOMPARE(probe.value(QStringLiteral("instance")), QStringLiteral("1"));
    QCOMPARE(probe.value(QStringLiteral("mainThread")), QStringLiteral("1"));
}

// ---------------------------------------------------------------------------------------
// Start-up: locale and translator

void TestApplication::defaultLocaleFollowsTheLanguageIndex_data()
{
    QTest::addColumn<QString>("initial");
    QTest::addColumn<uint>("index");
    QTest::addColumn<QString>("expected");

    const QString german = QStringLiteral("de_DE");
    QTest::newRow("0 Russian") << german << 0u << QStringLiteral("ru_RU");
    QTest::newRow("1 English") << german << 1u << QStringLiteral("en_US");
    QTest::newRow("11 Portuguese, Brazil") << german << 11u << QStringLiteral("pt_BR");
    QTest::newRow("13 Chinese, China") << german << 13u << QStringLiteral("zh_CN");
    QTest::newRow("14 Chinese, Taiwan") << german << 14u << QStringLiteral("zh_TW");
    QTest::newRow("19 Portuguese, Portugal") << german << 19u << QStringLiteral("pt_PT");
    QTest::newRow("22 English, United Kingdom") << german << 22u << QStringLiteral("en_GB");
    QTest::newRow("35 Turkish") << german << 35u << QStringLiteral("tr_TR");
    QTest::newRow("36 falls back to English") << german << 36u << QStringLiteral("en_US");
    QTest::newRow("100 falls back to English") << german << 100u << QStringLiteral("en_US");
    QTest::newRow("UINT_MAX falls back to English") << german << uint(UINT_MAX) << QStringLiteral("en_US");
    // Only the language is compared with the current default: the country is not changed.
    QTest::newRow("11 keeps Portuguese, Portugal") << QStringLiteral("pt_PT") << 11u << QStringLiteral("pt_PT");
    QTest::newRow("22 keeps English, United States") << QStringLiteral("en_US") << 22u << QStringLiteral("en_US");
    QTest::newRow("2 keeps German, Austria") << QStringLiteral("de_AT") << 2u << QStringLiteral("de_AT");
    QTest::newRow("36 keeps English, United Kingdom") << QStringLiteral("en_GB") << 36u << QStringLiteral("en_GB");
}

void TestApplication::defaultLocaleFollowsTheLanguageIndex()
{
    QFETCH(QString, initial);
    QFETCH(uint, index);
    QFETCH(QString, expected);

    const ProbeOutput probe = StartUpProbe(initial, index, QStringLiteral("en"));
    QVERIFY2(!probe.isEmpty(), "the start-up probe failed");
    const QLocale expectedLocale(expected);
    QCOMPARE(probe.value(QStringLiteral("locale")), expected);
    QCOMPARE(probe.value(QStringLiteral("language")).toInt(), int(expectedLocale.language()));
    QCOMPARE(probe.value(QStringLiteral("country")).toInt(), int(expectedLocale.country()));
}

void TestApplication::translatorLoadsTheLibrarysCatalogue_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("language");

    QTest::newRow("Russian") << QStringLiteral("ru") << QStringLiteral(":/translations/qt_halvo_ru.qm")
                             << QStringLiteral("ru_RU");
    // A catalogue the library does not ship is no error: the texts stay as written.
    QTest::newRow("missing") << QStringLiteral("xx") << QString() << QString();
}

void TestApplication::translatorLoadsTheLibrarysCatalogue()
{
    QFETCH(QString, suffix);
    QFETCH(QString, file);
    QFETCH(QString, language);

    const ProbeOutput probe = StartUpProbe(QStringLiteral("-"), 0, suffix);
    QVERIFY2(!probe.isEmpty(), "the start-up probe failed");
    QCOMPARE(probe.value(QStringLiteral("translators")), QStringLiteral("1"));
    QCOMPARE(probe.value(QStringLiteral("translatorFile")), file);
    QCOMPARE(probe.value(QStringLiteral("translatorLanguage")), language);
    QCOMPARE(probe.value(QStringLiteral("translatorInstalled")), QStringLiteral("1"));
}

// ---------------------------------------------------------------------------------------
// "styles.qss"

void TestApplication::withoutStyleSheetFileNoSheetIsApplied()
{
    const ProbeOutput probe = StartUpProbe(QStringLiteral("-"), 1, QStringLiteral("en"));
    QVERIFY2(!probe.isEmpty(), "the start-up probe failed");
    QCOMPARE(probe.value(QStringLiteral("styleSheetLength")), QStringLiteral("0"));
    QCOMPARE(probe.value(QStringLiteral("globalStyleSheetLength")), QStringLiteral("0"));
}

void TestApplication::styleSheetFileOfTheCurrentFolderIsApplied()
{
    // main() wrote the sheet with linkColor #123456 before the application existed.
    const QString expected = ProcessedSheet(QStringLiteral("#123456"));
    QCOMPARE(App()->styleSheet(), expected);
    QCOMPARE(OrvantaQT::GetGlobalStyleSheet(), expected);
    QCOMPARE(OrvantaQT::GetCSSData(QStringLiteral("linkColor")).toString(), QStringLiteral("#123456"));
    QCOMPARE(AllLinkColors(), QVector<QColor>(6, QColor(0x12, 0x34, 0x56)));
}

void TestApplication::editedStyleSheetIsReapplied()
{
    QVERIFY(WriteFile(kSheetFile, SheetSource(QStringLiteral("#abcdef"))));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#abcdef")), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(0xab, 0xcd, 0xef), 10000);
    QCOMPARE(AllLinkColors(), QVector<QColor>(6, QColor(0xab, 0xcd, 0xef)));

    // And again: the watch goes on after the first change.
    QVERIFY(WriteFile(kSheetFile, SheetSource(QStringLiteral("#010203"), QStringLiteral("QPushButton"))));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#010203"), QStringLiteral("QPushButton")),
                              10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(0x01, 0x02, 0x03), 10000);
}

void TestApplication::styleSheetSavedByRenameIsFollowed()
{
    // Editors that save atomically write a new file and rename it over the old one.
    const QString newFile = kSheetFile + QStringLiteral(".new");
    QVERIFY(WriteFile(newFile, SheetSource(QStringLiteral("#200000"))));
    QCOMPARE(std::rename(QFile::encodeName(newFile).constData(), QFile::encodeName(kSheetFile).constData()), 0);
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#200000")), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(0x20, 0x00, 0x00), 10000);

    // The file now in place is the one watched: an edit of it is seen,
    QVERIFY(WriteFile(kSheetFile, SheetSource(QStringLiteral("#210000"))));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#210000")), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(0x21, 0x00, 0x00), 10000);

    // and so is a second save by rename.
    QVERIFY(WriteFile(newFile, SheetSource(QStringLiteral("#220000"))));
    QCOMPARE(std::rename(QFile::encodeName(newFile).constData(), QFile::encodeName(kSheetFile).constData()), 0);
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#220000")), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(0x22, 0x00, 0x00), 10000);
    QVERIFY(WriteFile(kSheetFile, SheetSource(QStringLiteral("#230000"))));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(QStringLiteral("#230000")), 10000);
}

void TestApplication::deletedAndRecreatedStyleSheetIsFollowed_data()
{
    QTest::addColumn<bool>("seenMissing");
    QTest::addColumn<QString>("recreated");
    QTest::addColumn<QString>("editedAfterwards");

    // The application sees the file gone before it comes back,
    QTest::newRow("after a pause") << true << QStringLiteral("#300000") << QStringLiteral("#310000");
    // or only once it is already back.
    QTest::newRow("at once") << false << QStringLiteral("#320000") << QStringLiteral("#330000");
}

void TestApplication::deletedAndRecreatedStyleSheetIsFollowed()
{
    QFETCH(bool, seenMissing);
    QFETCH(QString, recreated);
    QFETCH(QString, editedAfterwards);

    // Start from a sheet in place and applied.
    const QString before = QStringLiteral("#2f0000");
    QVERIFY(WriteFile(kSheetFile, SheetSource(before)));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(before), 10000);

    QVERIFY(QFile::remove(kSheetFile));
    if (seenMissing) {
        // A sheet that cannot be read is an empty one.
        QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), QString(), 10000);
    }
    QVERIFY(WriteFile(kSheetFile, SheetSource(recreated)));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(recreated), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(recreated), 10000);

    // The new file is watched in turn.
    QVERIFY(WriteFile(kSheetFile, SheetSource(editedAfterwards)));
    QTRY_COMPARE_WITH_TIMEOUT(App()->styleSheet(), ProcessedSheet(editedAfterwards), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(LinkColor(), QColor(editedAfterwards), 10000);
}

// ---------------------------------------------------------------------------------------
// Commands on the main thread

void TestApplication::commandOnTheMainThreadRunsInline_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("blocking") << true;
    QTest::newRow("non-blocking") << false;
}

void TestApplication::commandOnTheMainThreadRunsInline()
{
    QFETCH(bool, wait);
    CommandEventCounter counter;
    App()->installEventFilter(&counter);

    int runs = 0;
    App()->ExecuteInMainThread(Command([&] { ++runs; }), wait);
    QCOMPARE(runs, 1);

    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCOMPARE(runs, 1);
    QCOMPARE(counter.Count(), 0);
    App()->removeEventFilter(&counter);
}

void TestApplication::nullCommandIsIgnored()
{
    CommandEventCounter counter;
    App()->installEventFilter(&counter);
    const LogCapture::Mark mark;

    App()->ExecuteInMainThread(nullptr, true);
    App()->ExecuteInMainThread(nullptr, false);
    App()->PostEvent(nullptr);
    // From a worker the blocking call must not wait for a command that was never posted:
    // the main thread runs no events until the worker has returned.
    Workers worker(1, [](int) {
        App()->ExecuteInMainThread(nullptr, true);
        App()->ExecuteInMainThread(nullptr, false);
        App()->PostEvent(nullptr);
    });
    QVERIFY2(worker.Join(10000), "a blocking call with no command waited");

    QCoreApplication::sendPostedEvents();
    QCOMPARE(counter.Count(), 0);
    int errors = 0;
    for (const LoggedLine& line : mark.Since()) {
        if (line.level == kErrorLevel && line.text == QLatin1String("Application::PostEvent: no command to post"))
            ++errors;
    }
    QCOMPARE(errors, 2);
    App()->removeEventFilter(&counter);
}

void TestApplication::postEventOnTheMainThreadIsQueued()
{
    CommandEventCounter counter;
    App()->installEventFilter(&counter);

    int runs = 0;
    App()->PostEvent(Command([&] { ++runs; }));
    QCOMPARE(runs, 0);
    QTRY_COMPARE(runs, 1);
    QCOMPARE(counter.Count(), 1);

    QCoreApplication::processEvents();
    QCOMPARE(runs, 1);
    App()->removeEventFilter(&counter);
}

void TestApplication::commandsFromWorkersArriveInOrderOnTheMainThread()
{
    const int workerCount = 4;
    const int commandsPerWorker = 1000;
    const QThread* mainThread = QThread::currentThread();
    // Written on the main thread only, by the commands.
    QVector<QVector<int>> arrived(workerCount);
    int offMainThread = 0;

    Workers workers(workerCount, [&](int worker) {
        for (int i = 0; i < commandsPerWorker; ++i) {
            auto command = Command([&arrived, &offMainThread, mainThread, worker, i] {
                if (QThread::currentThread() != mainThread)
                    ++offMainThread;
                arrived[worker].append(i);
            });
            // Both ways of posting share one queue.
            if (i % 2 == 0)
                App()->ExecuteInMainThread(command, false);
            else
                App()->PostEvent(command);
        }
    });
    QVERIFY(workers.Wait(20000));

    const auto total = [&] {
        int count = 0;
        for (const QVector<int>& sequence : arrived)
            count += sequence.size();
        return count;
    };
    QTRY_COMPARE_WITH_TIMEOUT(total(), workerCount * commandsPerWorker, 20000);
    QCOMPARE(offMainThread, 0);
    QVector<int> expected(commandsPerWorker);
    std::iota(expected.begin(), expected.end(), 0);
    for (int worker = 0; worker < workerCount; ++worker)
        QCOMPARE(arrived[worker], expected);
}

void TestApplication::blockingCallReturnsOnlyAfterTheCommandRan()
{
    const QThread* mainThread = QThread::currentThread();
    QSemaphore calling;
    // ranOn is written by the command on the main thread and read by the worker once the
    // call has returned: the call itself must order the two.
    const QThread* ranOn = nullptr;
    std::atomic<const QThread*> seenAtReturn{nullptr};
    Workers worker(1, [&](int) {
        calling.release();
        App()->ExecuteInMainThread(Command([&] { ranOn = QThread::currentThread(); }), true);
        seenAtReturn = ranOn;
    });

    QVERIFY(calling.tryAcquire(1, 10000));
    // The main thread runs no events here, so the command cannot run and the call
    // cannot return.
    QVERIFY2(!worker.Join(300), "a blocking call returned before its command ran");
    QVERIFY(ranOn == nullptr);

    QVERIFY(worker.Wait(10000));
    QVERIFY(worker.Join(10000));
    QCOMPARE(ranOn, mainThread);
    QCOMPARE(seenAtReturn.load(), mainThread);
}

void TestApplication::droppedBlockingCommandReleasesItsCaller()
{
    // A command event removed from the queue undelivered (as when the event loop is torn
    // down) must still wake the thread waiting for it.
    std::atomic<bool> ran{false};
    Workers worker(1, [&](int) { App()->ExecuteInMainThread(Command([&] { ran = true; }), true); });

    QElapsedTimer timer;
    timer.start();
    while (!worker.AllReturned() && timer.elapsed() < 10000) {
        QCoreApplication::removePostedEvents(App(), QEvent::User);
        QThread::yieldCurrentThread();
    }
    QVERIFY2(worker.AllReturned(), "a blocking call whose event was dropped did not return");
    QVERIFY(worker.Join(10000));
    QCoreApplication::sendPostedEvents();
    QVERIFY(!ran.load());
}

void TestApplication::otherCustomEventsAreIgnored()
{
    const LogCapture::Mark mark;
    int runs = 0;
    App()->PostEvent(Command([&] { ++runs; }));

    QEvent sent(QEvent::Type(QEvent::User + 1));
    QCoreApplication::sendEvent(App(), &sent);
    QCoreApplication::postEvent(App(), new QEvent(QEvent::Type(QEvent::User + 500)));
    QCoreApplication::postEvent(App(), new QEvent(QEvent::MaxUser));
    QTRY_COMPARE(runs, 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(runs, 1);
    QVERIFY(mark.Since().isEmpty());
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

// ---------------------------------------------------------------------------------------
// Quitting

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
    std::atomic<int> blockingReturned{0};
    std::atomic<int> blockingSkipped{0};
    std::atomic<int> skippedBeforeQuit{0};
    std::atomic<int> ranAfterQuit{0};
    std::atomic<int> queuedPosted{0};
    // Main thread only.
    int blockingRuns = 0;
    int queuedRuns = 0;
    int outOfOrder = 0;
    QVector<int> lastSequence(workerCount, -1);

    const auto arrived = [&](int worker, int sequence) {
        if (QThread::currentThread() != mainThread)
            ++offMainThread;
        if (sequence <= lastSequence[worker])
            ++outOfOrder;
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
                                           if (afterQuit)
                                               ++ranAfterQuit;
                                           if (++blockingRuns == blockingTotal / 2) {
                                               quitStarted = true;
                                               EmitAboutToQuit();
                                               quitFinished = true;
                                           }
                                       }),
                                       true);
            ++sequence;
            ++blockingReturned;
            if (!ran) {
                ++blockingSkipped;
                if (!quitStarted.load())
                    ++skippedBeforeQuit;
            }

            const auto queued = [&, worker, sequence] {
                arrived(worker, sequence);
                ++queuedRuns;
            };
            App()->ExecuteInMainThread(Command(queued), false);
            ++sequence;
            ++queuedPosted;
            App()->PostEvent(Command([&, worker, sequence] {
                arrived(worker, sequence);
                ++queuedRuns;
            }));
            ++sequence;
            ++queuedPosted;
        }
    });
    QVERIFY2(workers.Wait(10000), "workers did not all return: a blocking call is stuck");
    QTRY_COMPARE_WITH_TIMEOUT(queuedRuns, queuedPosted.load(), 10000);

    QCOMPARE(aboutToQuit.count(), 1);
    QCOMPARE(blockingReturned.load(), blockingTotal);
    QCOMPARE(offMainThread.load(), 0);
    QCOMPARE(outOfOrder, 0);
    QCOMPARE(queuedPosted.load(), 2 * blockingTotal);
    QCOMPARE(skippedBeforeQuit.load(), 0);
    QCOMPARE(ranAfterQuit.load(), 0);
    QCOMPARE(blockingRuns + blockingSkipped.load(), blockingTotal);
    // Quitting happened midway: calls ran before it and were refused after it.
    QVERIFY(blockingRuns >= blockingTotal / 2);
    QVERIFY(blockingSkipped.load() > 0);
}

void TestApplication::afterQuitOnlyBlockingCallsFromWorkersAreRefused()
{
    EmitAboutToQuit();
    std::atomic<bool> ran{false};
    Workers worker(1, [&](int) { App()->ExecuteInMainThread(Command([&] { ran = true; }), true); });
    // The main thread runs no events meanwhile: the call has to return by itself.
    QVERIFY2(worker.Join(10000), "a blocking call after aboutToQuit waited");
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QVERIFY(!ran.load());

    const QThread* mainThread = QThread::currentThread();
    const QThread* executed = nullptr;
    const QThread* posted = nullptr;
    Workers poster(1, [&](int) {
        App()->ExecuteInMainThread(Command([&] { executed = QThread::currentThread(); }), false);
        App()->PostEvent(Command([&] { posted = QThread::currentThread(); }));
    });
    QVERIFY(poster.Wait(10000));
    QTRY_COMPARE(executed, mainThread);
    QTRY_COMPARE(posted, mainThread);

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
    if (!folder.isValid() || !QDir::setCurrent(folder.path())) {
        std::fprintf(stderr, "cannot make a temporary current folder\n");
        return 1;
    }
    if (!WriteFile(kSheetFile, SheetSource(QStringLiteral("#123456")))) {
        std::fprintf(stderr, "cannot write styles.qss\n");
        return 1;
    }

    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    Application application(argc, argv, 1, QStringLiteral("en"));
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
