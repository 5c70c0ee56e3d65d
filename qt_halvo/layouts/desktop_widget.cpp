#include <qt_halvo/layouts/desktop_widget.h>

#include <qt_halvo/layouts/display_watcher.h>
#include <qt_halvo/utilities/hidpi_utils.h>
#include <qt_halvo/utilities/platform/display_info_p.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QMoveEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QScreen>

namespace OrvantaQT {

DesktopWidget::DesktopWidget()
    : QWidget(nullptr, Qt::Desktop)
    , m_watcher(new DisplayWatcher(this))
{
    hide();
    setGeometry(PrimaryScreenRect());
    QCoreApplication::instance()->installNativeEventFilter(m_watcher);
    connect(m_watcher, &DisplayWatcher::DisplayChanged, this, &DesktopWidget::OnDisplayChanged);
}

DesktopWidget::~DesktopWidget()
{
    QCoreApplication::instance()->removeNativeEventFilter(m_watcher);
}

DisplayWatcher* DesktopWidget::Watcher() const
{
    return m_watcher;
}

QRect DesktopWidget::PrimaryScreenRect()
{
    QScreen* screen = QGuiApplication::primaryScreen();
    const Platform::DisplayInfo info = Platform::GatherDisplayInfo();
    const Platform::MonitorRecord* primary = Platform::PrimaryMonitor(info);
    if (!primary)
        return screen ? screen->availableGeometry() : QRect();
    qreal divisor = GetQtScaleFactor();
    if (QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling) && screen && screen->devicePixelRatio() > 0)
        divisor = screen->devicePixelRatio();
    if (divisor <= 0)
        divisor = 1;
    const QSize size(int(primary->workWidth / divisor), int(primary->workHeight / divisor));
    return QRect(QPoint(primary->workLeft, primary->workTop), size);
}

void DesktopWidget::OnDisplayChanged()
{
    setGeometry(PrimaryScreenRect());
    QMoveEvent move(pos(), pos());
    QCoreApplication::sendEvent(this, &move);
    QResizeEvent resize(size(), QSize(-1, -1));
    QCoreApplication::sendEvent(this, &resize);
}

} // namespace OrvantaQT
