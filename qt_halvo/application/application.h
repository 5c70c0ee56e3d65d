#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>

#include <memory>
#include <mutex>

class QFileSystemWatcher;
class QTranslator;

namespace OrvantaQT {

// A unit of work to run on the main thread (see Application::ExecuteInMainThread).
struct QT_HALVO_EXPORT ApplicationCommand
{
    virtual ~ApplicationCommand() = default;
    virtual void Execute() = 0;
};

// The library's application object: create one in place of a QApplication. It sets the
// default locale, installs the library's translations, applies "styles.qss" from the
// current folder when there is one (and re-applies it whenever it is edited), and lets
// any thread run commands on the main thread.
class QT_HALVO_EXPORT Application : public QApplication
{
    Q_OBJECT

public:
    // languageIndex picks a row of a fixed table of 36 locales (36 and more count as 1,
    // English); translationSuffix picks the catalogue ":/translations/qt_halvo_<suffix>".
    Application(int& argc, char** argv, unsigned int languageIndex, const QString& translationSuffix);
    ~Application() override;

    // The running application object, or null when it is not an Application.
    static Application* instance();

    // Runs command on the main thread: at once when called there; otherwise posted, and
    // with wait the caller blocks until it has run. Once the application is about to
    // quit, blocking calls from other threads return without running anything.
    void ExecuteInMainThread(std::shared_ptr<ApplicationCommand> command, bool wait);

    // Posts command to the main thread's event loop from any thread, the main one included.
    void PostEvent(std::shared_ptr<ApplicationCommand> command);

protected:
    void customEvent(QEvent* event) override;

private Q_SLOTS:
    void AboutToQuit();
    void OnStylesheetChanged();

private:
    void WatchStylesheetFile();

    std::mutex m_commandMutex;
    bool m_acceptingCommands = true;
    QTranslator* m_translator = nullptr;
    QPointer<QFileSystemWatcher> m_stylesheetWatcher;
};

// True on the thread of the application object.
QT_HALVO_EXPORT bool IsMainThread();

// Kept for host programs; this library sets no plug-in folder and returns false.
QT_HALVO_EXPORT bool InitializePluginsDir();

} // namespace OrvantaQT
