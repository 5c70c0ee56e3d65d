#include "line_break_pattern_p.h"

namespace OrvantaQT {

namespace {

const QRegExp kLineBreak(QStringLiteral("\\r\\n|\\n|\\r|<br>"), Qt::CaseSensitive, QRegExp::RegExp);

} // namespace

const QRegExp& LineBreakPattern()
{
    return kLineBreak;
}

} // namespace OrvantaQT
