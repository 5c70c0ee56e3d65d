#include <qt_halvo/application/application.h>

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/thread_sanitizer_p.h>

#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QLocale>
#include <QtCore/QThread>
#include <QtCore/QTranslator>
#include <QtGui/QColor>
#include <QtGui/QPalette>

#include <condition_variable>
#include <exception>

namespace OrvantaQT {

namespace {

constexpr QEvent::Type kCommandEventType = QEvent::Type(1000);
const QLatin1String kStylesheetFile("styles.qss");

struct LocaleRow
{
    int language; // QLocale::Language
    int country;  // QLocale::Country
};

// Indexed by the host's language number; the repeated rows are intended.
constexpr LocaleRow kLocales[] = {
    {96, 0},  {31, 0},  {42, 0},   {66, 0},  {59, 0},  {90, 0},  {30, 0},  {37, 0},  {28, 0},
    {59, 0},  {37, 0},  {91, 30},  {111, 197}, {25, 44}, {25, 208}, {58, 0}, {120, 0}, {37, 0},
    {108, 0}, {91, 173}, {42, 0},  {37, 0},  {31, 224}, {43, 0},  {125, 0}, {52, 0},  {50, 0},
    {111, 0}, {29, 0},  {20, 0},   {85, 0},  {114, 0}, {36, 0},  {100, 0}, {76, 0},  {125, 0},
};

void ChooseDefaultLocale(unsigned int languageIndex)
{
    const unsigned int rows = sizeof kLocales / sizeof kLocales[0];
    const LocaleRow& row = kLocales[languageIndex < rows ? languageIndex : 1];
    const auto language = QLocale::Language(row.language);
    if (QLocale().language() != language)
        QLocale::setDefault(QLocale(language, QLocale::Country(row.country)));
}

class CommandEvent : public QEvent
{
public:
    CommandEvent() : QEvent(kCommandEventType) {}
    virtual void Run() = 0;
};

// Posts a command event built on this thread to the application's thread.
void Post(QCoreApplication* application, CommandEvent* event)
{
    QTH_HANDED_OVER(event);
    QCoreApplication::postEvent(application, event, Qt::NormalEventPriority);
}

class CommandEventAsync : public CommandEvent
{
public:
    explicit CommandEventAsync(std::shared_ptr<ApplicationCommand> command) : m_command(std::move(command)) {}
    // Also destroyed undelivered, by the thread that drops it.
    ~CommandEventAsync() override { QTH_TAKEN_OVER(this); }
    void Run() override { m_command->Execute(); }

private:
    std::shared_ptr<ApplicationCommand> m_command;
};

// Wakes its waiter after running or, dropped undelivered, when destroyed, so that the
// caller is released either way. The waiter holds the mutex
// from posting until it waits: taking the mutex before notifying makes sure it is
// waiting, so the wake-up cannot come too early and be lost.
class CommandEventSync : public CommandEvent
{
public:
    CommandEventSync(std::shared_ptr<ApplicationCommand> command, std::shared_ptr<std::condition_variable> done,
                     std::mutex& mutex)
        : m_command(std::move(command))
        , m_done(std::move(done))
        , m_mutex(mutex)
    {
    }

    ~CommandEventSync() override
    {
        QTH_TAKEN_OVER(this);
        if (!m_notified)
            Notify();
    }

    void Run() override
    {
        m_command->Execute();
        Notify();
    }

private:
    void Notify()
    {
        { const std::lock_guard<std::mutex> waiterIsWaiting(m_mutex); }
        m_done->notify_all();
        m_notified = true;
    }

    std::shared_ptr<ApplicationCommand> m_command;
    std::shared_ptr<std::condition_variable> m_done;
    std::mutex& m_mutex;
    bool m_notified = false; // by the thread that runs or drops the event
};

} // namespace

Application::Application(int& argc, char** argv, unsigned int languageIndex, const QString& translationSuffix)
    : QApplication(argc, argv)
    , m_translator(new QTranslator(this))
{
    connect(this, &QCoreApplication::aboutToQuit, this, &Application::AboutToQuit);
    QEvent::registerEventType(kCommandEventType);
    ChooseDefaultLocale(languageIndex);
    // A missing catalogue is not an error: the texts stay as written.
    m_translator->load(QStringLiteral(":/translations/qt_halvo_") + translationSuffix);
    QCoreApplication::installTranslator(m_translator);
    if (QDir().exists(kStylesheetFile)) {
        LoadGlobalStyleSheet(QDir().absoluteFilePath(kStylesheetFile));
        WatchStylesheetFile();
    }
    OnStylesheetChanged();
}

Application::~Application()
{
    // Queued commands wake their waiters when dropped, under the command mutex: drop
    // them while it still exists.
    QCoreApplication::removePostedEvents(this, kCommandEventType);
}

Application* Application::instance()
{
    return qobject_cast<Application*>(QCoreApplication::instance());
}

void Application::WatchStylesheetFile()
{
    m_stylesheetWatcher = new QFileSystemWatcher(QStringList() << kStylesheetFile, this);
    // Editors that save by renaming a new file over the old one end the watch on the
    // file; the folder's watch sees it come back.
    m_stylesheetWatcher->addPath(QDir::currentPath());
    const auto reapply = [this] {
        RecalculateGlobalStyleSheet();
        OnStylesheetChanged();
    };
    connect(m_stylesheetWatcher, &QFileSystemWatcher::fileChanged, this, [this, reapply] {
        if (QDir().exists(kStylesheetFile) && !m_stylesheetWatcher->files().contains(kStylesheetFile))
            m_stylesheetWatcher->addPath(kStylesheetFile);
        reapply();
    });
    connect(m_stylesheetWatcher, &QFileSystemWatcher::directoryChanged, this, [this, reapply] {
        if (!QDir().exists(kStylesheetFile) || m_stylesheetWatcher->files().contains(kStylesheetFile))
            return;
        m_stylesheetWatcher->addPath(kStylesheetFile);
        reapply();
    });
}

void Application::ExecuteInMainThread(std::shared_ptr<ApplicationCommand> command, bool wait)
{
    if (!command)
        return;
    if (QThread::currentThread() == thread()) {
        command->Execute();
        return;
    }
    if (!wait) {
        Post(this, new CommandEventAsync(std::move(command)));
        return;
    }
    std::unique_lock<std::mutex> lock(m_commandMutex);
    if (!m_acceptingCommands)
        return;
    auto done = std::make_shared<std::condition_variable>();
    Post(this, new CommandEventSync(std::move(command), done, m_commandMutex));
    // One wait, no predicate: the caller may not assume more than that the command's
    // event was handled or dropped.
    done->wait(lock);
}

void Application::PostEvent(std::shared_ptr<ApplicationCommand> command)
{
    if (!command) {
        QTH_LOG_ERROR("Application::PostEvent: no command to post");
        return;
    }
    Post(this, new CommandEventAsync(std::move(command)));
}

void Application::customEvent(QEvent* event)
{
    if (event->type() != kCommandEventType)
        return;
    QTH_TAKEN_OVER(event);
    // Exceptions must not unwind through Qt's event loop; a blocking caller is still
    // woken when the event is destroyed.
    try {
        static_cast<CommandEvent*>(event)->Run();
    } catch (const std::exception& exception) {
        QTH_LOG_ERROR("A command run on the main thread threw: %s", exception.what());
    } catch (...) {
        QTH_LOG_ERROR("A command run on the main thread threw an exception");
    }
}

void Application::AboutToQuit()
{
    const std::lock_guard<std::mutex> lock(m_commandMutex);
    m_acceptingCommands = false;
}

void Application::OnStylesheetChanged()
{
    setStyleSheet(GetGlobalStyleSheet());
    QColor link;
    link.setNamedColor(GetCSSData(QStringLiteral("linkColor")).toString());
    QPalette palette = QGuiApplication::palette();
    palette.setBrush(QPalette::All, QPalette::Link, QBrush(link));
    palette.setBrush(QPalette::All, QPalette::LinkVisited, QBrush(link));
    QApplication::setPalette(palette);
}

bool IsMainThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

bool InitializePluginsDir()
{
    static const bool initialized = false;
    return initialized;
}

} // namespace OrvantaQT
