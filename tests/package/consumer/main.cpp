// A host program built against an installed qt_halvo: it runs the version it was built
// with, and sees the library's resources without calling anything to register them.

#include <qt_halvo/qt_halvo.h>

#include <QtCore/QFile>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const bool registered = QFile::exists(QStringLiteral(":/translations/qt_halvo_de.qm"));
    QTextStream(stdout) << "qt_halvo " << OrvantaQT::VersionString() << " (built with " << QT_HALVO_VERSION_STRING << ")"
                        << (registered ? " works\n" : ": its resources are not registered\n");
    return OrvantaQT::VersionString() == QLatin1String(QT_HALVO_VERSION_STRING) && registered ? 0 : 1;
}
