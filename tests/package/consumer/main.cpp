// A host program built against an installed qt_halvo.

#include <qt_halvo/qt_halvo.h>

#include <QtCore/QFile>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextStream out(stdout);
    if (OrvantaQT::VersionString() != QLatin1String(QT_HALVO_VERSION_STRING)) {
        out << "version mismatch: " << OrvantaQT::VersionString() << "\n";
        return 1;
    }
    if (!QFile::exists(QStringLiteral(":/translations/qt_halvo_de.qm"))) {
        out << "the library's resources are not registered\n";
        return 1;
    }
    out << "qt_halvo " << OrvantaQT::VersionString() << " works\n";
    return 0;
}
