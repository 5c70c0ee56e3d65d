// The qt_halvo gallery: one live page per widget family.
//   qt_halvo_gallery                       shows the gallery
//   qt_halvo_gallery --screenshots DIR     writes a picture of every page into DIR and exits

#include "gallery_pages.h"
#include "gallery_window.h"
#include "page_renderer.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qt_halvo gallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The qt_halvo widget gallery"));
    parser.addHelpOption();
    const QCommandLineOption screenshots(QStringLiteral("screenshots"),
                                         QStringLiteral("Write a picture of every page into <folder> and exit."),
                                         QStringLiteral("folder"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Window size, WIDTHxHEIGHT."),
                                  QStringLiteral("size"), QStringLiteral("960x640"));
    parser.addOption(screenshots);
    parser.addOption(size);
    parser.process(application);

    const QStringList dimensions = parser.value(size).split(QLatin1Char('x'));
    const int width = dimensions.value(0).toInt();
    const int height = dimensions.value(1).toInt();

    GalleryWindow window(GalleryPages());
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
