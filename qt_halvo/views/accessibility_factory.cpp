#include <qt_halvo/views/accessibility_factory.h>

#include "accessibility_factory_p.h"

#include <QtCore/QCoreApplication>

namespace OrvantaQT {

namespace {

QAccessibleInterface* LibraryAccessibleFactory(const QString& className, QObject* object)
{
    if (!object || !className.startsWith(QLatin1String("OrvantaQT::")))
        return nullptr;
    for (const auto make : {CheckBoxHeaderAccessible, ClosableViewAccessible}) {
        if (QAccessibleInterface* accessible = make(className, object))
            return accessible;
    }
    return nullptr;
}

} // namespace

void InstallAccessibilityFactory()
{
    static bool installed = false;
    if (std::exchange(installed, true))
        return;
    QAccessible::installFactory(LibraryAccessibleFactory);
}

// With the application object, so that hosts need not call it; Application's own
// constructor stays as it is.
Q_COREAPP_STARTUP_FUNCTION(InstallAccessibilityFactory)

} // namespace OrvantaQT
