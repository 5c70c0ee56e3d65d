#include <qt_halvo/widgets/text/multi_line_label.h>

#include "line_break_pattern_p.h"

namespace OrvantaQT {

MultiLineLabel::MultiLineLabel(const QString& text, QWidget* parent)
    : QLabel(parent)
    , m_multilineText(text)
{
    QLabel::setText(Format(text));
}

MultiLineLabel::MultiLineLabel(QWidget* parent)
    : MultiLineLabel(QString(), parent)
{
}

MultiLineLabel::~MultiLineLabel() = default;

int MultiLineLabel::lineHeight() const
{
    return m_lineHeight;
}

QString MultiLineLabel::multilineText() const
{
    return m_multilineText;
}

void MultiLineLabel::setLineHeight(int spacingType)
{
    m_lineHeight = spacingType;
    QLabel::setText(Format(m_multilineText));
}

void MultiLineLabel::setMultilineText(const QString& text)
{
    m_multilineText = text;
    QLabel::setText(Format(m_multilineText));
}

QString MultiLineLabel::Format(const QString& text) const
{
    const QString lines = QString(text).replace(LineBreakPattern(), QStringLiteral("<br/>"));
    return QStringLiteral("<p style = \"line-height:%1\">%2</p>").arg(m_lineHeight).arg(lines);
}

QPoint MultiLineLabel::LastLineTopRight() const
{
    const int lastBreak = m_multilineText.lastIndexOf(LineBreakPattern());
    QString lastLine = lastBreak < 0 ? m_multilineText : m_multilineText.mid(lastBreak);
    lastLine.remove(LineBreakPattern());
    const QFontMetrics metrics = fontMetrics();
    const int x = lastLine.isEmpty() ? 0 : metrics.boundingRect(lastLine).width() + metrics.averageCharWidth();
    const int breaks = CountLineBreaks(m_multilineText);
    return QPoint(x, breaks * (metrics.height() * m_lineHeight / 100));
}

} // namespace OrvantaQT
