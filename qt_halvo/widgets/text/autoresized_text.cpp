#include <qt_halvo/widgets/text/autoresized_text.h>

#include "line_break_pattern_p.h"

#include <qt_halvo/styles/style_sheet.h>

#include <QtGui/QLinearGradient>
#include <QtGui/QMouseEvent>

#include <algorithm>

namespace OrvantaQT {

AutoresizedText::AutoresizedText(const QString& text, QWidget* parent)
    : QLabel(parent)
    , m_text(text)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    UpdateText();
}

AutoresizedText::AutoresizedText(QWidget* parent)
    : AutoresizedText(QString(), parent)
{
}

AutoresizedText::~AutoresizedText() = default;

QString AutoresizedText::text() const
{
    return m_text;
}

Qt::TextElideMode AutoresizedText::elideMode() const
{
    return m_elideMode;
}

bool AutoresizedText::hoverUnderline() const
{
    return m_hoverUnderline;
}

QString AutoresizedText::hoverStyle() const
{
    return m_hoverStyle;
}

bool AutoresizedText::fadeElide() const
{
    return m_fadeElide;
}

QStringList AutoresizedText::strings() const
{
    QStringList texts;
    for (const Phrasing& phrasing : m_strings)
        texts << phrasing.text;
    return texts;
}

void AutoresizedText::setElideMode(Qt::TextElideMode elide)
{
    m_elideMode = elide;
    UpdateText();
}

void AutoresizedText::setHoverUnderline(bool value)
{
    m_hoverUnderline = value;
}

void AutoresizedText::setHoverStyle(const QString& styleString)
{
    m_hoverStyle = styleString;
}

void AutoresizedText::setFadeElide(bool fade)
{
    m_fadeElide = fade;
    UpdateText();
}

void AutoresizedText::setStrings(const QStringList& strings)
{
    m_strings.clear();
    for (const QString& text : strings)
        m_strings.append(Phrasing{text, 0});
    m_measured = false;
    UpdateText();
}

void AutoresizedText::setText(const QString& newText)
{
    m_text = newText;
    UpdateText();
}

QSize AutoresizedText::sizeHint() const
{
    const QString& widest = m_strings.isEmpty() ? m_text : m_strings.last().text;
    return QSize(fontMetrics().horizontalAdvance(widest), QLabel::sizeHint().height());
}

QSize AutoresizedText::minimumSizeHint() const
{
    static const QString kEllipsis = QStringLiteral("...");
    const QString& narrowest = m_strings.isEmpty() ? kEllipsis : m_strings.first().text;
    return QSize(fontMetrics().horizontalAdvance(narrowest), QLabel::minimumSizeHint().height());
}

// Widths in the current font, sorted narrowest first; measured again only when the
// phrasings or the font changed.
void AutoresizedText::MeasureStrings()
{
    if (m_measured && m_measuredFont == font())
        return;
    const QFontMetrics metrics = fontMetrics();
    for (Phrasing& phrasing : m_strings)
        phrasing.width = metrics.horizontalAdvance(phrasing.text);
    std::sort(m_strings.begin(), m_strings.end(),
              [](const Phrasing& a, const Phrasing& b) { return a.width < b.width; });
    m_measuredFont = font();
    m_measured = true;
}

// A foreground that runs out to transparent at the right edge. The stop is an integer
// share of the room the text does not need: 0 in every ordinary case, so the fade spans
// the whole contents. When the text is over twice as wide the stop is negative and only
// the transparent stop is set: that is the gradient Qt would keep, without its warning.
void AutoresizedText::ApplyFade()
{
    QPalette faded = palette();
    // Setting the faded palette brings us here again, with the gradient as the foreground:
    // the fade starts from the colour the foreground had before any fade.
    const QBrush foreground = faded.brush(foregroundRole());
    if (!foreground.gradient())
        m_fadeFrom = foreground.color();
    const int w = width();
    const qreal stop = w == 0 ? 0.0 : qreal((w - sizeHint().width()) / w);
    const QRect contents = contentsRect();
    QLinearGradient gradient(contents.left(), contents.top(), contents.right(), contents.top());
    if (stop >= 0.0)
        gradient.setColorAt(stop, m_fadeFrom);
    gradient.setColorAt(1.0, Qt::transparent);
    faded.setBrush(QPalette::All, foregroundRole(), QBrush(gradient));
    setPalette(faded);
}

QString AutoresizedText::PlainElided(int width) const
{
    QStringList lines = m_text.split(LineBreakPattern());
    const QFontMetrics metrics = fontMetrics();
    for (QString& line : lines)
        line = metrics.elidedText(line, m_elideMode, width, 0);
    return lines.join(QStringLiteral("<br>"));
}

void AutoresizedText::UpdateText()
{
    const int width = contentsRect().width();
    QString displayed = m_text;
    QString tip;
    if (m_strings.isEmpty()) {
        if (m_elideMode == Qt::ElideNone && width > fontMetrics().horizontalAdvance(m_text)) {
            // Fits as it is.
        } else if (m_fadeElide) {
            ApplyFade();
            tip = m_text;
        } else {
            displayed = PlainElided(width);
            tip = m_text;
        }
    } else {
        MeasureStrings();
        displayed = m_strings.first().text;
        if (width < m_strings.last().width) {
            // The widest fits when exactly as wide; the others must be narrower.
            for (int i = m_strings.size() - 2; i >= 0; --i) {
                if (width > m_strings.at(i).width) {
                    displayed = m_strings.at(i).text;
                    tip = m_strings.last().text;
                    break;
                }
            }
        } else {
            displayed = m_strings.last().text;
        }
    }
    QLabel::setText(displayed);
    setToolTip(m_elideMode != Qt::ElideNone && displayed != m_text ? tip : QString());
    update();
}

void AutoresizedText::changeEvent(QEvent* event)
{
    UpdateText();
    QLabel::changeEvent(event);
}

void AutoresizedText::resizeEvent(QResizeEvent* event)
{
    UpdateText();
    QWidget::resizeEvent(event);
}

void AutoresizedText::enterEvent(QEvent* event)
{
    if (isEnabled() && m_hoverUnderline) {
        setCursor(Qt::PointingHandCursor);
        SetStyleProperty(this, "hovered", true, true);
    }
    QWidget::enterEvent(event);
}

void AutoresizedText::leaveEvent(QEvent* event)
{
    if (isEnabled()) {
        unsetCursor();
        SetStyleProperty(this, "hovered", false, true);
    }
    QWidget::leaveEvent(event);
}

void AutoresizedText::mouseReleaseEvent(QMouseEvent* event)
{
    if (isEnabled() && m_hoverUnderline && event->button() == Qt::LeftButton) {
        Q_EMIT clicked();
        return;
    }
    QLabel::mouseReleaseEvent(event);
}

void AutoresizedText::mouseDoubleClickEvent(QMouseEvent*)
{
    if (isEnabled())
        Q_EMIT doubleClicked();
}

} // namespace OrvantaQT
