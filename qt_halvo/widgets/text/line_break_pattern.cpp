#include "line_break_pattern_p.h"

namespace OrvantaQT {

namespace {

const QRegExp kLineBreak(QStringLiteral("\\r\\n|\\n|\\r|<br>"), Qt::CaseSensitive, QRegExp::RegExp);

} // namespace

const QRegExp& LineBreakPattern()
{
    return kLineBreak;
}

int CountLineBreaks(const QString& text)
{
    QRegExp pattern = kLineBreak;
    int count = 0;
    for (int at = pattern.indexIn(text); at >= 0; at = pattern.indexIn(text, at + pattern.matchedLength()))
        ++count;
    return count;
}

} // namespace OrvantaQT
