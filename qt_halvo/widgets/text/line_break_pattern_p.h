// The four spellings of a line break that the text widgets all understand.
#pragma once

#include <QtCore/QRegExp>

namespace OrvantaQT {

// "\r\n|\n|\r|<br>", case-sensitive; made once, when the library loads.
const QRegExp& LineBreakPattern();

// The line breaks in the text one after the other ("\r\n" is one), unlike
// QString::count, which would also count the "\n" inside a "\r\n".
int CountLineBreaks(const QString& text);

} // namespace OrvantaQT
