#include <qt_halvo/layouts/show_on_top.h>

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/platform/window_activation_p.h>

#include <QtGui/QGuiApplication>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

// The native window ids the platform unit understands.
bool NativeWindowsAreOurs()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("xcb") || platform == QLatin1String("windows");
}

} // namespace

void ShowOnTop(QWidget* widget)
{
    if (!widget) {
        QTH_LOG_ERROR("ShowOnTop: no widget to bring to the front");
        return;
    }
    QWidget* window = widget->window();
    if (window->isMinimized())
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
    if (NativeWindowsAreOurs() && !Platform::ActivateNativeWindow(window->winId()))
        QTH_LOG_WARNING("ShowOnTop: the window system refused to bring the window to the front");
}

void AllowOtherProcessesToShowOnTop()
{
    if (!Platform::AllowOtherProcessesToActivate())
        QTH_LOG_WARNING("ShowOnTop: other processes may not take the foreground");
}

} // namespace OrvantaQT
