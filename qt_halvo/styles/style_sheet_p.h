#pragma once

#include "stylesheet_constants_p.h"

#include <functional>

namespace OrvantaQT {

// Replaces the colour table with the file's JSON object; on failure logs and keeps it.
QT_HALVO_AUTOTEST_EXPORT void LoadGlobalColors(const QString& path);

// Every colour, in key order, replaces the constant of its name.
QT_HALVO_AUTOTEST_EXPORT void MergeGlobalColors(StyleConstants& constants);

// A colour-table value as QML gets it: "rgba(r, g, b, a)" strings as QColor, the rest
// unchanged. BuildQmlColorsMap is made of it, and so are the live QML singletons.
QVariant QmlColorValue(const QVariant& value);

// The constants of the current global sheet, colours merged; empty before one is loaded.
StyleConstants CurrentStyleConstants();

// Called, on the GUI thread, after the colour table was replaced or the global sheet
// (re)computed. Listeners live as long as the process; ResetStyleState keeps them.
void AddStyleChangeListener(std::function<void()> listener);

// Forgets every sheet, constant and colour, as at the start of the process.
QT_HALVO_AUTOTEST_EXPORT void ResetStyleState();

} // namespace OrvantaQT
