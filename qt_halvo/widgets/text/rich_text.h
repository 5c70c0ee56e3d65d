#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QStringList>

class QLabel;

namespace OrvantaQT {

// The text with every line break ("\r\n", "\n", "\r" or "<br>") written as "<br>".
QT_HALVO_EXPORT QString ConvertToRichText(const QString& text);

// format with its placeholders filled, in order, by the arguments, each elided in the
// middle to the label's whole width.
QT_HALVO_EXPORT QString FormatElidedTextForLabel(QLabel* label, const QString& format, const QStringList& args);

} // namespace OrvantaQT
