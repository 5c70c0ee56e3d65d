// The qt_halvo gallery: one live page per widget family.
//   qt_halvo_gallery                       shows the gallery
//   qt_halvo_gallery --dark                starts in the dark theme
//   qt_halvo_gallery --screenshots DIR     writes a picture of every page into DIR and exits

#include "gallery_pages.h"
#include "gallery_theme.h"
#include "gallery_window.h"
#include "page_renderer.h"

#include <qt_halvo/application/application.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/hidpi_utils.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QTextStream>
#include <QtQuick/QQuickWindow>

namespace {

// The row of the library's locale table that stands for English; its catalogue suffix is "en".
constexpr unsigned int kEnglish = 1;

} // namespace

int main(int argc, char** argv)
{
    // The graphics back-end and the scale factor are chosen before the application object
    // exists; the theme's constants say how small the gallery's window may get.
    OrvantaQT::LoadGlobalStyleSheet(GalleryTheme::SheetPath());
    OrvantaQT::InitGraphicalBackend();
    OrvantaQT::EnableHiDpiScaling(OrvantaQT::GetMinimumConsoleSize());

    // The QML page draws with Qt Quick's software renderer unless told otherwise: the same
    // pictures with or without OpenGL, the offscreen platform of --screenshots included.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);

    OrvantaQT::Application application(argc, argv, kEnglish, QStringLiteral("en"));
    QApplication::setApplicationName(QStringLiteral("qt_halvo gallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate("Gallery", "The qt_halvo widget gallery"));
    parser.addHelpOption();
    const QCommandLineOption screenshots(
        QStringLiteral("screenshots"),
        QCoreApplication::translate("Gallery", "Write a picture of every page into <folder> and exit."),
        //: Value name of a command-line option, shown in the help as <folder>.
        QCoreApplication::translate("Gallery", "folder"));
    const QCommandLineOption size(QStringLiteral("size"),
                                  QCoreApplication::translate("Gallery", "Window size, WIDTHxHEIGHT."),
                                  //: Value name of a command-line option, shown in the help as <size>.
                                  QCoreApplication::translate("Gallery", "size"), QStringLiteral("960x640"));
    const QCommandLineOption dark(QStringLiteral("dark"),
                                  QCoreApplication::translate("Gallery", "Start in the dark theme."));
    parser.addOption(screenshots);
    parser.addOption(size);
    parser.addOption(dark);
    parser.process(application);

    GalleryTheme theme;
    theme.Apply(parser.isSet(dark) ? GalleryTheme::Variant::Dark : GalleryTheme::Variant::Light);

    const QStringList dimensions = parser.value(size).split(QLatin1Char('x'));
    const int width = dimensions.value(0).toInt();
    const int height = dimensions.value(1).toInt();

    GalleryWindow window(GalleryPages(theme), theme);
    window.resize(width > 0 ? width : 960, height > 0 ? height : 640);

    if (parser.isSet(screenshots)) {
        const QString folder = QDir(parser.value(screenshots)).absolutePath();
        const int failures = RenderAllPages(window, folder);
        QTextStream(stdout) << "Wrote " << window.PageCount() - failures << " page pictures to " << folder << "\n";
        return failures == 0 ? 0 : 1;
    }
    window.show();
    return application.exec();
}
