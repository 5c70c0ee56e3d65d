// The text algorithms of stylesheet constants: the constants block, the one-pass
// resolution of references between constants and the substitution of "@name" in a
// sheet. Pure functions of their arguments; the process-wide state is style_sheet.cpp's.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace OrvantaQT {

using StyleConstants = QHash<QString, QVariant>;

// Reads the "/* Stylesheet Constants" block at the start of text into constants and
// cuts it from text. Without both markers nothing changes.
QT_HALVO_AUTOTEST_EXPORT void ParseStylesheetConstants(QString& text, StyleConstants& constants);

// One pass in hash order: every "@A" in every value is replaced by A's current value.
// A constant whose value then refers to itself (and would be found again in what it
// inserts, for ever) is reported, and references to it are left as written.
QT_HALVO_AUTOTEST_EXPORT void ResolveConstantReferences(StyleConstants& constants);

// Replaces every "@name" of a constant in text by its value, constant by constant in
// hash order; each search resumes at the start of the replacement just made. Constants
// that refer to themselves are reported and their references left as written.
QT_HALVO_AUTOTEST_EXPORT QString SubstituteConstants(const QString& text, const StyleConstants& constants);

// The same, always the constant-by-constant way; the fast path falls back to it and
// the tests hold the two against each other.
QT_HALVO_AUTOTEST_EXPORT QString SubstituteConstantsOneByOne(const QString& text, const StyleConstants& constants);

} // namespace OrvantaQT
