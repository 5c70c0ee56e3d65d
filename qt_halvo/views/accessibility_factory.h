#pragma once

#include <qt_halvo/qt_halvo_global.h>

namespace OrvantaQT {

// Makes the library's painted widgets visible to screen readers: the charts, the
// auto-resized text (with its whole text), the link label, the busy ring, the check box of
// CheckBoxHeaderView and the close buttons of the closable views. Done once when the
// application object starts; calling it again does nothing.
QT_HALVO_EXPORT void InstallAccessibilityFactory();

} // namespace OrvantaQT
