// The four spellings of a line break that the text widgets all understand.
#pragma once

#include <QtCore/QRegExp>

namespace OrvantaQT {

// "\r\n|\n|\r|<br>", case-sensitive; made once, when the library loads.
const QRegExp& LineBreakPattern();

} // namespace OrvantaQT
