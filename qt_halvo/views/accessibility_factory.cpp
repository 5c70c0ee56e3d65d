#include <qt_halvo/views/accessibility_factory.h>

#include <QtCore/QCoreApplication>

namespace OrvantaQT {

void InstallAccessibilityFactory()
{
}

} // namespace OrvantaQT
