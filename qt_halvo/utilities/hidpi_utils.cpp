#include <qt_halvo/utilities/hidpi_utils.h>

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/utilities/platform/display_info_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSysInfo>
#include <QtGui/QOpenGLContext>
#include <QtGui/QRegion>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

void UseSystemScaling()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QTH_LOG_INFO("EnableHiDpiScaling - use system scaling.");
}

void UseFactor(double factor)
{
    QTH_LOG_WARNING("EnableHiDpiScaling - console doesn't fit monitor resolution with system scaling. Set scale to %f.",
                    factor);
    if (factor > 1.0) {
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    } else {
        QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling, true);
    }
    qputenv("QT_SCALE_FACTOR", QString::number(factor, 'g', 6).toUtf8());
}

} // namespace

void EnableHiDpiScaling(const QSize& minimumConsoleSize)
{
    const Platform::DisplayInfo& info = Platform::CachedDisplayInfo();
    if (info.valid)
        QTH_LOG_INFO("GetDisplayInfo succeeded: %s", Platform::DescribeDisplayInfo(info).c_str());
    else
        QTH_LOG_ERROR("GetDisplayInfo failed");
    const Platform::ScalingChoice choice =
        Platform::ChooseScaling(info, {minimumConsoleSize.width(), minimumConsoleSize.height()});
    if (choice.systemScaling)
        UseSystemScaling();
    else
        UseFactor(choice.factor);
}

double GetQtScaleFactor()
{
    static const double factor = [] {
        const QByteArray text = qgetenv("QT_SCALE_FACTOR");
        bool ok = false;
        const double value = QString::fromLocal8Bit(text).toDouble(&ok);
        return !text.isEmpty() && ok ? value : 1.0;
    }();
    return factor;
}

QSize GetMinimumConsoleSize()
{
    return QSize(GetCSSData(QStringLiteral("minConsoleWidth")).toInt(),
                 GetCSSData(QStringLiteral("minConsoleHeight")).toInt());
}

void InitGraphicalBackend()
{
    if (qEnvironmentVariableIsSet("QT_OPENGL")) {
        QTH_LOG_INFO("Graphical backend will be set by Qt framework");
        return;
    }
#if defined(Q_OS_WIN)
    if (QSysInfo::windowsVersion() >= QSysInfo::WV_WINDOWS10)
        QCoreApplication::setAttribute(Qt::AA_UseOpenGLES);
    qputenv("QT_ANGLE_PLATFORM", "warp");
#endif
}

QString GetOpenGLImplementation()
{
    if (QOpenGLContext::openGLModuleType() == QOpenGLContext::LibGLES)
        return QStringLiteral("angle");
    if (QOpenGLContext::supportsThreadedOpenGL())
        return QStringLiteral("desktopGl");
    return QStringLiteral("software");
}

QPixmap GrabHiDpiPixmap(QWidget* widget)
{
    if (!widget) {
        QTH_LOG_ERROR("GrabHiDpiPixmap: no widget");
        return QPixmap();
    }
    const qreal ratio = widget->devicePixelRatioF();
    QPixmap pixmap(widget->rect().size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    widget->render(&pixmap, QPoint(0, 0), QRegion(), QWidget::DrawChildren);
    return pixmap;
}

} // namespace OrvantaQT
