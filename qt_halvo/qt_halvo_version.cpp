#include <qt_halvo/qt_halvo_version.h>

namespace OrvantaQT {

QString VersionString()
{
    return QStringLiteral(QT_HALVO_VERSION_STRING);
}

} // namespace OrvantaQT
