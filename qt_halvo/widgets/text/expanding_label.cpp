#include <qt_halvo/widgets/text/expanding_label.h>

#include "line_break_pattern_p.h"

#include <QtCore/QUrl>

namespace OrvantaQT {

namespace {

const QString kExpand = QStringLiteral("expand");
const QString kCollapse = QStringLiteral("collapse");
const QRegExp kTag(QStringLiteral("<[^>]*>"), Qt::CaseSensitive, QRegExp::RegExp);

} // namespace

ExpandingLabel::ExpandingLabel(const QString& text, QWidget* parent)
    : QTextBrowser(parent)
    , m_fullText(text)
    //: Link after a shortened text that shows the whole text.
    , m_showMoreText(tr("Show more"))
    //: Link after a whole text that shortens it again.
    , m_showLessText(tr("Show less"))
{
    setReadOnly(true);
    setOpenLinks(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QTextBrowser::anchorClicked, this, &ExpandingLabel::OnLinkClicked);
}

ExpandingLabel::ExpandingLabel(QWidget* parent)
    : ExpandingLabel(QString(), parent)
{
}

ExpandingLabel::~ExpandingLabel() = default;

QString ExpandingLabel::fullText() const
{
    return m_fullText;
}

QString ExpandingLabel::showMoreText() const
{
    return m_showMoreText;
}

QString ExpandingLabel::showLessText() const
{
    return m_showLessText;
}

bool ExpandingLabel::isCollapsed() const
{
    return m_isCollapsed;
}

int ExpandingLabel::collapsedLines() const
{
    return m_collapsedLines;
}

void ExpandingLabel::setFullText(const QString& text)
{
    m_fullText = text;
    UpdateText();
}

void ExpandingLabel::setShowMoreText(const QString& text)
{
    m_showMoreText = text;
    UpdateText();
}

void ExpandingLabel::setShowLessText(const QString& text)
{
    m_showLessText = text;
    UpdateText();
}

void ExpandingLabel::setIsCollapsed(bool collapsed)
{
    m_isCollapsed = collapsed;
    UpdateText();
}

void ExpandingLabel::setCollapsedLines(int lines)
{
    m_collapsedLines = lines;
    UpdateText();
}

QSize ExpandingLabel::minimumSizeHint() const
{
    return QSize(QAbstractScrollArea::sizeHint().width(), m_height);
}

void ExpandingLabel::resizeEvent(QResizeEvent* event)
{
    UpdateText();
    QTextEdit::resizeEvent(event);
}

void ExpandingLabel::changeEvent(QEvent* event)
{
    UpdateText();
    QTextEdit::changeEvent(event);
}

void ExpandingLabel::OnLinkClicked(const QUrl& url)
{
    if (url != QUrl(kCollapse) && url != QUrl(kExpand))
        return;
    m_isCollapsed = url == QUrl(kCollapse);
    UpdateText();
}

int ExpandingLabel::EffectiveWidth() const
{
    const QMargins margins = contentsMargins();
    return int(width() - (2 * document()->documentMargin() + margins.left() + margins.right()));
}

void ExpandingLabel::UpdateText()
{
    const QRect bounds = fontMetrics().boundingRect(QRect(0, 0, EffectiveWidth(), maximumSize().height()),
                                                    Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextWrapAnywhere,
                                                    m_fullText);
    const int lines = bounds.height() / fontMetrics().lineSpacing();
    if (lines <= m_collapsedLines)
        ShowText(m_fullText, QString(), QString(), false);
    else if (m_isCollapsed)
        Collapse();
    else
        ShowText(m_fullText, m_showLessText, kCollapse, true);
}

// Fills collapsedLines - 1 visual lines, a source line at a time, breaking long lines at
// their last space that fits; the last line is the rest, shortened to leave room for the link.
void ExpandingLabel::Collapse()
{
    QStringList lines = m_fullText.split(LineBreakPattern());
    const QFontMetrics metrics = fontMetrics();
    const int limit = m_collapsedLines - 1;
    QString result;
    int used = 0;
    int i = 0;
    while (i < lines.size()) {
        if (used >= limit)
            break;
        if (i > 0) {
            result += QStringLiteral("<br>");
            ++used;
        }
        while (used < limit) {
            QString& line = lines[i];
            const int available = EffectiveWidth();
            QString piece;
            if (metrics.horizontalAdvance(line) > available) {
                const QString elided = metrics.elidedText(line, Qt::ElideRight, available, 0);
                const int space = elided.lastIndexOf(QLatin1Char(' '));
                piece = space >= 0 ? elided.left(space) : elided.left(elided.size() - 1);
            } else {
                piece = metrics.elidedText(line, Qt::ElideNone, available, 0);
            }
            result += piece;
            line = line.right(line.size() - piece.size());
            if (line.isEmpty())
                break;
            ++used;
        }
        ++i;
    }
    const int linkWidth =
        metrics.boundingRect(QRect(QPoint(0, 0), maximumSize()), Qt::TextSingleLine, QStringLiteral("   %1").arg(m_showMoreText))
            .width();
    // Below 2 collapsed lines nothing was visited: the first line stands for the text.
    const QString& last = i > 0 ? lines.at(i - 1) : lines.first();
    const QString lastPiece = metrics.elidedText(last, Qt::ElideRight, EffectiveWidth() - linkWidth, 0);
    ShowText(result + lastPiece, m_showMoreText, kExpand, false);
}

void ExpandingLabel::ShowText(const QString& text, const QString& linkText, const QString& target, bool linkOnNewLine)
{
    QString html = QString(text).replace(LineBreakPattern(), QStringLiteral("<br>"));
    if (!linkText.isEmpty()) {
        html = QStringLiteral("%1%4<a href=\"%2\">%3</a>")
                   .arg(html)
                   .arg(target)
                   .arg(linkText)
                   .arg(linkOnNewLine ? QStringLiteral("<br>") : QStringLiteral(" "));
    }
    document()->setHtml(html);

    // The "<br>"s are measured as text and each adds a line as well: both are meant.
    QStringList parts = html.split(LineBreakPattern());
    for (QString& part : parts)
        part.remove(kTag);
    const QString measured = parts.join(QStringLiteral("<br>"));
    const QRect bounds = fontMetrics().boundingRect(QRect(0, 0, EffectiveWidth(), maximumSize().height()),
                                                    Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere,
                                                    measured);
    const QMargins margins = contentsMargins();
    m_height = bounds.height() + int(2 * document()->documentMargin() + margins.top() + margins.bottom() + 2 * frameWidth())
        + measured.count(QStringLiteral("<br>")) * fontMetrics().lineSpacing();
    setMinimumSize(minimumSize().width(), m_height);
    setMaximumSize(maximumSize().width(), m_height);
    update();
}

} // namespace OrvantaQT
