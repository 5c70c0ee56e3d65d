#include <qt_halvo/layouts/display_watcher.h>

#include <qt_halvo/utilities/platform/win32_messages_p.h>

#include <QtCore/QTimerEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

namespace OrvantaQT {

namespace {

constexpr int kQuietMilliseconds = 1000;

} // namespace

DisplayWatcher::DisplayWatcher(QObject* parent)
    : QObject(parent)
{
    if (!qGuiApp)
        return;
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        WatchScreen(screen);
        Changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &DisplayWatcher::Changed);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &DisplayWatcher::Changed);
    for (QScreen* screen : QGuiApplication::screens())
        WatchScreen(screen);
}

DisplayWatcher::~DisplayWatcher() = default;

void DisplayWatcher::WatchScreen(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &DisplayWatcher::Changed);
    connect(screen, &QScreen::availableGeometryChanged, this, &DisplayWatcher::Changed);
}

bool DisplayWatcher::nativeEventFilter(const QByteArray& eventType, void* message, long*)
{
    if (eventType != "windows_generic_MSG" || !message)
        return false;
    const unsigned int id = static_cast<const Platform::WindowsMessageHeader*>(message)->message;
    if (id == Platform::kWmDisplayChange || id == Platform::kWmSettingChange)
        Changed();
    return false;
}

void DisplayWatcher::Changed()
{
    if (m_pending)
        return;
    m_pending = true;
    m_timerId = startTimer(kQuietMilliseconds, Qt::CoarseTimer);
}

void DisplayWatcher::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timerId) {
        QObject::timerEvent(event);
        return;
    }
    m_pending = false;
    killTimer(m_timerId);
    m_timerId = 0;
    Q_EMIT DisplayChanged();
}

} // namespace OrvantaQT
