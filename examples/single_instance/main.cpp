// One instance at a time: the first start shows a window and listens on a named event; a
// later start wakes it, which brings its window to the front, and quits at once.
//
//   qt_halvo_single_instance            the first: a window
//   qt_halvo_single_instance            again: the first window comes to the front
//
// --report prints each wake-up and whether the window is then in front; --quit-after N
// quits after N wake-ups (both for the example's test).
#include <qt_halvo/application/application.h>
#include <qt_halvo/application/inter_process_event.h>
#include <qt_halvo/layouts/show_on_top.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QLockFile>
#include <QtCore/QTimer>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <cstdio>
#include <functional>
#include <memory>

namespace {

const QString EventName = QStringLiteral("qt_halvo_single_instance_example");

// A function as a command for the main thread.
struct Command : OrvantaQT::ApplicationCommand
{
    explicit Command(std::function<void()> function) : function(std::move(function)) {}
    void Execute() override { function(); }
    std::function<void()> function;
};

} // namespace

int main(int argc, char** argv)
{
    OrvantaQT::Application application(argc, argv, 1, QStringLiteral("en"));
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption report(QStringLiteral("report"), QStringLiteral("Print each wake-up."));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"), QStringLiteral("Quit after N wake-ups."),
                                       QStringLiteral("N"));
    parser.addOptions({report, quitAfter});
    parser.process(application);

    // The lock file tells whether an instance runs; the event is how it is woken.
    QLockFile lock(QDir::temp().filePath(EventName + QStringLiteral(".lock")));
    const std::shared_ptr<OrvantaQT::InterProcessEvent> event = OrvantaQT::CreateInterProcessEvent(EventName);
    if (!lock.tryLock(0)) {
        OrvantaQT::AllowOtherProcessesToShowOnTop();
        event->Signal();
        return 0;
    }

    QWidget window;
    window.setWindowTitle(QStringLiteral("Single instance"));
    auto* layout = new QVBoxLayout(&window);
    auto* text = new QLabel(QStringLiteral("Start this program again, or put another window over this one first:\n"
                                           "the second start brings this window to the front and quits."),
                            &window);
    auto* count = new QLabel(&window);
    layout->addWidget(text);
    layout->addWidget(count);
    window.show();

    int wakes = 0;
    const int quitAt = parser.value(quitAfter).toInt();
    const bool printing = parser.isSet(report);
    const auto woken = [&] {
        OrvantaQT::ShowOnTop(&window);
        count->setText(QStringLiteral("Woken %1 times.").arg(++wakes));
        // The window system answers a moment later.
        QTimer::singleShot(300, &window, [&, wake = wakes] {
            if (printing) {
                std::printf("woken %d, in front: %s\n", wake, QApplication::activeWindow() == &window ? "yes" : "no");
                std::fflush(stdout);
            }
            if (quitAt > 0 && wake >= quitAt)
                QApplication::quit();
        });
    };
    // The listener calls from a pool thread: the window is touched on the main thread.
    event->StartListening([&application, woken] {
        application.ExecuteInMainThread(std::make_shared<Command>(woken), false);
    });
    if (printing) {
        std::printf("listening\n");
        std::fflush(stdout);
    }
    return application.exec();
}
