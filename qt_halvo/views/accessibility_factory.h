#pragma once

#include <qt_halvo/qt_halvo_global.h>

namespace OrvantaQT {

// Makes the library's painted widgets visible to screen readers: the charts, the
// auto-resized text (with its whole text), the link label, the busy ring, the check box of
// CheckBoxHeaderView and the close buttons of the closable views. Done by itself whenever
// an application object is made, and at once when the library is loaded after one; calling
// it again does nothing, and calling it before an application exists is safe.
QT_HALVO_EXPORT void InstallAccessibilityFactory();

} // namespace OrvantaQT
