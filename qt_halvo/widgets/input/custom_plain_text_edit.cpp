#include <qt_halvo/widgets/input/custom_plain_text_edit.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocumentFragment>
#include <QtGui/QTextLayout>
#include <QtWidgets/QScrollBar>

#include <cmath>

namespace OrvantaQT {

namespace {

// QPlainTextEdit takes its last line for cut off, and lets the text scroll by a line,
// unless one pixel more than the text and its margins is shown.
constexpr int kSparePixel = 1;

// Whether QPlainTextEdit would type the key's text or start a line with it. This follows
// Qt's rule for text edits: Ctrl alone or with Shift types nothing, AltGr does.
bool Types(const QKeyEvent* event)
{
    if (event->matches(QKeySequence::InsertParagraphSeparator) || event->matches(QKeySequence::InsertLineSeparator))
        return true;
    const QString text = event->text();
    if (text.isEmpty())
        return false;
    const QChar first = text.at(0);
    if (first.category() == QChar::Other_Format)
        return true;
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (modifiers == Qt::ControlModifier || modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        return false;
    return first.isPrint() || first.category() == QChar::Other_PrivateUse || first == QLatin1Char('\t')
        || (first.isHighSurrogate() && text.size() > 1 && text.at(1).isLowSurrogate());
}

// The mime data as the plain text it adds: CR LF becomes one line break, as the document
// takes it, and images leave no object marker behind.
QString PlainText(const QMimeData& source)
{
    QString text = source.hasText() ? source.text()
        : source.hasHtml()         ? QTextDocumentFragment::fromHtml(source.html()).toPlainText()
                                   : QString();
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.remove(QChar::ObjectReplacementCharacter);
    return text;
}

// The first characters of the text, at most room of them, not ending inside a surrogate pair.
QString Fitting(const QString& text, int room)
{
    if (room > 0 && room < text.size() && text.at(room - 1).isHighSurrogate())
        --room;
    return text.left(qMax(0, room));
}

} // namespace

CustomPlainTextEdit::CustomPlainTextEdit(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setSizePolicy(sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    // QPlainTextEdit reports another document as a change of its text.
    connect(this, &QPlainTextEdit::textChanged, this, &CustomPlainTextEdit::Watch);
    Watch();
}

CustomPlainTextEdit::~CustomPlainTextEdit() = default;

int CustomPlainTextEdit::GetMinimumLines() const
{
    return m_minimumLines;
}

void CustomPlainTextEdit::SetMinimumLines(int lines)
{
    const int used = qBound(1, lines, m_maximumLines);
    if (used != lines)
        QTH_LOG_WARNING("CustomPlainTextEdit: a minimum of %d lines is outside 1 to %d (the maximum); %d is used", lines,
                        m_maximumLines, used);
    if (used == m_minimumLines)
        return;
    m_minimumLines = used;
    Remeasure();
}

int CustomPlainTextEdit::GetMaximumLines() const
{
    return m_maximumLines;
}

void CustomPlainTextEdit::SetMaximumLines(int lines)
{
    const int used = qMax(lines, m_minimumLines);
    if (used != lines)
        QTH_LOG_WARNING("CustomPlainTextEdit: a maximum of %d lines is below the minimum of %d; %d is used", lines,
                        m_minimumLines, used);
    if (used == m_maximumLines)
        return;
    m_maximumLines = used;
    Remeasure();
}

int CustomPlainTextEdit::GetMaximumLength() const
{
    return m_maximumLength;
}

void CustomPlainTextEdit::SetMaximumLength(int length)
{
    if (length < 0) {
        QTH_LOG_WARNING("CustomPlainTextEdit: a maximum length of %d characters is taken as none", length);
        length = 0;
    }
    m_maximumLength = length;
}

int CustomPlainTextEdit::ContentLines() const
{
    return CountLines(nullptr);
}

QSize CustomPlainTextEdit::sizeHint() const
{
    return QSize(QPlainTextEdit::sizeHint().width(), m_height);
}

QSize CustomPlainTextEdit::minimumSizeHint() const
{
    return QSize(QPlainTextEdit::minimumSizeHint().width(), m_height);
}

bool CustomPlainTextEdit::canInsertFromMimeData(const QMimeData* source) const
{
    return source && (source->hasText() || source->hasHtml());
}

void CustomPlainTextEdit::insertFromMimeData(const QMimeData* source)
{
    if (!source || isReadOnly())
        return;
    QString text = PlainText(*source);
    const int room = Room();
    const bool cut = m_maximumLength > 0 && text.size() > room;
    if (cut)
        text = Fitting(text, room);
    if (!text.isEmpty()) {
        insertPlainText(text);
        ensureCursorVisible();
    }
    if (cut)
        Q_EMIT MaximumLengthReached();
}

void CustomPlainTextEdit::keyPressEvent(QKeyEvent* event)
{
    if (m_maximumLength > 0 && !isReadOnly() && Types(event)) {
        const bool newLine = event->matches(QKeySequence::InsertParagraphSeparator)
            || event->matches(QKeySequence::InsertLineSeparator);
        const QTextCursor cursor = textCursor();
        // In overwrite mode a typed character takes the place of the next one in its line.
        const int overwritten = !newLine && overwriteMode() && !cursor.hasSelection() && !cursor.atBlockEnd() ? 1 : 0;
        if ((newLine ? 1 : event->text().size()) - overwritten > Room()) {
            event->accept(); // taken here: a refused Return must not reach a dialog's default button
            Q_EMIT MaximumLengthReached();
            return;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

void CustomPlainTextEdit::inputMethodEvent(QInputMethodEvent* event)
{
    const QString commit = event->commitString();
    const int room = Room() + event->replacementLength();
    if (m_maximumLength <= 0 || isReadOnly() || commit.size() <= room) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent fitted(*event);
    fitted.setCommitString(Fitting(commit, room), event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&fitted);
    Q_EMIT MaximumLengthReached();
}

void CustomPlainTextEdit::resizeEvent(QResizeEvent* event)
{
    // Another width wraps the text anew; QPlainTextEdit lays it out again lazily, without
    // telling the document's size.
    QPlainTextEdit::resizeEvent(event);
    Remeasure();
}

void CustomPlainTextEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    // A style's frame comes as a change of the contents' rectangle.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ContentsRectChange)
        Remeasure();
}

// The lines from the first block on, until past the maximum, and the height they take.
// Blocks QPlainTextEdit has not laid out yet at the present width count one line each in
// its own tally, so these are laid out here.
int CustomPlainTextEdit::CountLines(qreal* textHeight) const
{
    const QAbstractTextDocumentLayout* layout = document()->documentLayout();
    int lines = 0;
    qreal height = 0;
    for (QTextBlock block = document()->firstBlock(); block.isValid() && lines <= m_maximumLines; block = block.next()) {
        layout->blockBoundingRect(block); // lays the block out if it is not yet
        const int count = block.lineCount(); // none when the block is hidden
        if (count == 0)
            continue;
        const QTextLayout* text = block.layout();
        if (lines + count <= m_maximumLines) {
            height += text->boundingRect().height();
        } else if (lines < m_maximumLines) {
            // Past the maximum the edit shows just the lines up to it, as they are laid out.
            const QTextLine last = text->lineAt(m_maximumLines - lines - 1);
            height += last.y() + last.height() - text->lineAt(0).y();
        }
        lines += count;
    }
    if (textHeight)
        *textHeight = height;
    return lines;
}

// The height of a block of one line in the document's font. Lines wrapped within a block
// may stand closer together (with a negative leading), never further apart.
qreal CustomPlainTextEdit::LineHeight() const
{
    const QFont font = document()->defaultFont();
    if (m_lineHeight < 0 || font != m_lineFont) {
        QTextLayout layout(QStringLiteral(" "), font);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLeadingIncluded(true);
        layout.endLayout();
        m_lineFont = font;
        m_lineHeight = line.height();
    }
    return m_lineHeight;
}

// Characters that input may still add in place of the selection.
int CustomPlainTextEdit::Room() const
{
    const QTextCursor cursor = textCursor();
    return m_maximumLength - (document()->characterCount() - 1) + cursor.selectionEnd() - cursor.selectionStart();
}

// Follows the layout of the document, or of another one set since.
void CustomPlainTextEdit::Watch()
{
    QAbstractTextDocumentLayout* layout = document()->documentLayout();
    if (layout == m_watched)
        return;
    if (m_watched)
        disconnect(m_watched, nullptr, this, nullptr);
    m_watched = layout;
    // Typing within a line changes no size, and needs no new height.
    connect(layout, &QAbstractTextDocumentLayout::documentSizeChanged, this, &CustomPlainTextEdit::Remeasure);
    Remeasure();
}

void CustomPlainTextEdit::Remeasure()
{
    // Laying blocks out, or the scroll bar coming or going, reports back here.
    if (m_measuring)
        return;
    const QScopedValueRollback<bool> measuring(m_measuring, true);
    // The scroll bar narrows the text, which then wraps to as many lines or more: text
    // that does not fit beside it may fit without it. With more blocks than lines allowed
    // it cannot, else the text is counted without the bar.
    if (verticalScrollBarPolicy() == Qt::ScrollBarAsNeeded && document()->blockCount() <= m_maximumLines)
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    qreal textHeight = 0;
    int lines = CountLines(&textHeight);
    const Qt::ScrollBarPolicy policy = lines > m_maximumLines ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    if (policy != verticalScrollBarPolicy()) {
        // Counted again at the new width, the text stays on the same side of the maximum.
        setVerticalScrollBarPolicy(policy);
        lines = CountLines(&textHeight);
    }
    const qreal text = lines > m_maximumLines ? textHeight : qMax(textHeight, m_minimumLines * LineHeight());
    const QMargins frame = contentsMargins(); // QFrame keeps its frame's width in them
    const QMargins viewport = viewportMargins();
    // Past the maximum the margin below the text would show the top of the next line.
    const int margins = lines > m_maximumLines ? 1 : 2;
    qreal height = text + margins * document()->documentMargin() + kSparePixel + frame.top() + frame.bottom()
        + viewport.top() + viewport.bottom();
    if (horizontalScrollBar()->isVisibleTo(this))
        height += horizontalScrollBar()->sizeHint().height();
    const int fixed = int(std::min<qreal>(std::ceil(height), QWIDGETSIZE_MAX));
    if (fixed == m_height)
        return;
    m_height = fixed;
    updateGeometry();
}

} // namespace OrvantaQT
