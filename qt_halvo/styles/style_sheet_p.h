#pragma once

#include "stylesheet_constants_p.h"

namespace OrvantaQT {

// Replaces the colour table with the file's JSON object; on failure logs and keeps it.
QT_HALVO_AUTOTEST_EXPORT void LoadGlobalColors(const QString& path);

// Every colour, in key order, replaces the constant of its name.
QT_HALVO_AUTOTEST_EXPORT void MergeGlobalColors(StyleConstants& constants);

// Forgets every sheet, constant and colour, as at the start of the process.
QT_HALVO_AUTOTEST_EXPORT void ResetStyleState();

} // namespace OrvantaQT
