#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QByteArray>
#include <QtCore/QRegExp>
#include <QtCore/QString>

namespace OrvantaQT {

// The two validators are shared: matching records its captures in the QRegExp, so use
// them from one thread, or match on a copy.
//
// One e-mail address, for QRegExpValidator or QRegExp::exactMatch: a local part without
// white space, controls, comma, colon, semicolon, angle brackets or square brackets; an
// at sign; a domain without white space, controls, "!" to "'", comma or ";" to "@". No
// dot is required, and characters above ASCII pass, so internationalised domains do too.
QT_HALVO_EXPORT const QRegExp& EmailValidator();

// Addresses separated by commas or semicolons, with white space around them allowed.
// Not anchored: use it with exactMatch or a validator.
QT_HALVO_EXPORT const QRegExp& MultiEmailValidator();

// The domain in its ASCII form ("xn--..."); the input as it is when it cannot be converted.
QT_HALVO_EXPORT QString ConvertToAce(const QString& domain);

// The domain from its ASCII form; the bytes as a string when they cannot be converted.
QT_HALVO_EXPORT QString ConvertFromAce(const QByteArray& ace);

} // namespace OrvantaQT
