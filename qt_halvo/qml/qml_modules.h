#pragma once

#include <qt_halvo/qt_halvo_global.h>

class QQmlEngine;

namespace OrvantaQT {

// Makes "import Orvanta.Controls 1.0" and "import Orvanta.Styles 1.0" work in every QML
// engine of the process. The modules' qmldir, type information and QML files are in the
// library's resources under qrc:/qt-project.org/imports, which Qt's engines search by
// default; the C++ types and the two singletons of Orvanta.Styles are registered here:
// - Colors: the colour table, as BuildQmlColorsMap gives it ("rgba(…)" values as colours,
//   "#RRGGBB" strings as strings);
// - Constants: the constants of the current global sheet, colours merged.
// Both follow every load of the colour table or of the global sheet in place, and every
// binding with them. A name that neither has reads as undefined, told once in the log.
//
// Done by itself whenever an application object is made; calling it again is harmless.
// With an engine whose import paths were replaced, it also gives that engine the
// resources' import path back.
QT_HALVO_EXPORT void RegisterQmlModules(QQmlEngine* engine = nullptr);

} // namespace OrvantaQT
