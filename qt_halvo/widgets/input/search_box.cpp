#include <qt_halvo/widgets/input/search_box.h>

#include <qt_halvo/utilities/border_pixmap_painter.h>

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

namespace OrvantaQT {

namespace {

constexpr int kTypingDelay = 1000;
// The rounded corners of the button picture, kept when it stretches.
const QMargins kButtonBorders(3, 3, 3, 3);

// Placed centred in the rectangle, one pixel right; dy moves it up or down.
QPoint Centred(const QRect& rect, const QSize& size, int dy)
{
    return QPoint(rect.left() + 1 + (rect.width() - size.width()) / 2, rect.top() + dy + (rect.height() - size.height()) / 2);
}

} // namespace

SearchBox::SearchBox(QWidget* parent)
    : QLineEdit(parent)
    , m_typingTimer(new QTimer(this))
    , m_magnifier(QStringLiteral(":/search_box_image_magnifier.png"))
    , m_arrow(QStringLiteral(":/search_box_image_arrow.png"))
    , m_cancel(QStringLiteral(":/search_box_image_cancel.png"))
    , m_button(QStringLiteral(":/search_box_button.png"))
{
    setAttribute(Qt::WA_MouseTracking);
    setStyleSheet(QStringLiteral("border: 1px solid #848180;\nborder-radius: 2px;\n"));
    m_typingTimer->setSingleShot(true);
    m_typingTimer->setTimerType(Qt::PreciseTimer); // a coarse one may come 5 % early
    m_typingTimer->setInterval(kTypingDelay);
    connect(m_typingTimer, &QTimer::timeout, this, &SearchBox::OnTypingTimeout);
    connect(this, &QLineEdit::textChanged, this, &SearchBox::OnTextChanged);
    connect(this, &QLineEdit::returnPressed, this, &SearchBox::OnEnterPressed);
    UpdateTextMargins();
}

SearchBox::~SearchBox() = default;

bool SearchBox::GetShowSearchButton() const
{
    return m_showSearchButton;
}

void SearchBox::SetShowSearchButton(bool show)
{
    m_showSearchButton = show;
    update();
}

bool SearchBox::GetShowHistoryButton() const
{
    return m_showHistoryButton;
}

void SearchBox::SetShowHistoryButton(bool show)
{
    m_showHistoryButton = show;
    UpdateTextMargins();
}

int SearchBox::GetButtonSearchWidth() const
{
    return m_searchWidth;
}

void SearchBox::SetButtonSearchWidth(int width)
{
    m_searchWidth = width;
    UpdateTextMargins();
}

int SearchBox::GetButtonHistoryWidth() const
{
    return m_historyWidth;
}

void SearchBox::SetButtonHistoryWidth(int width)
{
    m_historyWidth = width;
    UpdateTextMargins();
}

bool SearchBox::GetCancelMode() const
{
    return m_cancelMode;
}

void SearchBox::SetCancelMode(bool cancel)
{
    m_cancelMode = cancel;
    update();
}

QString SearchBox::GetCueText() const
{
    return m_cueText;
}

void SearchBox::SetCueText(const QString& text)
{
    m_cueText = text;
    update();
}

int SearchBox::State() const
{
    return m_state;
}

QSize SearchBox::sizeHint() const
{
    QSize hint = QLineEdit::sizeHint();
    hint.setWidth(150);
    return hint;
}

int SearchBox::GetCueTextLeftPad() const
{
    return 3;
}

void SearchBox::UpdateTextMargins()
{
    setTextMargins(0, 0, m_searchWidth + (m_showHistoryButton ? m_historyWidth : 0), 0);
    update();
}

QRect SearchBox::GetButtonHistoryRect() const
{
    return QRect(QPoint(width() - m_historyWidth, 1), QPoint(width() - 2, height() - 2));
}

QRect SearchBox::GetButtonRect() const
{
    if (!m_showHistoryButton)
        return QRect(QPoint(width() - m_searchWidth, 1), QPoint(width() - 2, height() - 2));
    const QRect history = GetButtonHistoryRect();
    const int left = width() - 1 - m_searchWidth - (history.right() - history.left());
    return QRect(QPoint(left, 1), QPoint(left + m_searchWidth - 2, height() - 2));
}

void SearchBox::SetState(int state)
{
    if (state != m_state) {
        m_state = state;
        update();
    }
    setCursor(m_state != NoButton ? Qt::ArrowCursor : Qt::IBeamCursor);
}

bool SearchBox::IsSearchButtonHovered(const QPoint& point) const
{
    return (m_showSearchButton || m_cancelMode) && GetButtonRect().contains(point);
}

bool SearchBox::IsHistoryButtonHovered(const QPoint& point) const
{
    return m_showHistoryButton && GetButtonHistoryRect().contains(point);
}

void SearchBox::paintEvent(QPaintEvent* event)
{
    PaintText(event);
    PaintButtons(event);
}

void SearchBox::PaintText(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
}

// The band of the button picture for a state: top hovered, middle pressed, bottom normal.
QRect SearchBox::Band(int width, int hovered, int pressed) const
{
    const int band = m_button.height() / 3;
    const int top = m_state == hovered ? 0 : m_state == pressed ? band : 2 * m_button.height() / 3;
    return QRect(0, top, width, band);
}

void SearchBox::PaintButtons(QPaintEvent*)
{
    QPainter painter(this);
    if (!hasFocus() && text().isEmpty()) {
        QFont italic = QApplication::font();
        italic.setItalic(true);
        painter.setFont(italic);
        painter.setPen(Qt::darkGray);
        painter.drawText(QRect(GetCueTextLeftPad(), 0, width() - m_searchWidth, height()), Qt::AlignLeft | Qt::AlignVCenter,
                         m_cueText);
    }

    const QRect button = GetButtonRect();
    const bool searchShown = m_showSearchButton || m_cancelMode;
    if (searchShown)
        DrawBorderPixmap(&painter, button, m_button, Band(m_searchWidth, SearchHovered, SearchPressed), kButtonBorders);
    // Either icon goes into the magnifier's size.
    const QImage& icon = searchShown && m_cancelMode ? m_cancel : m_magnifier;
    painter.drawImage(QRect(Centred(button, icon.size(), 0), m_magnifier.size()), icon);

    if (m_showHistoryButton) {
        const QRect history = GetButtonHistoryRect();
        DrawBorderPixmap(&painter, history, m_button, Band(m_historyWidth, HistoryHovered, HistoryPressed), kButtonBorders);
        painter.drawImage(Centred(history, m_arrow.size(), -2), m_arrow);
    }
}

void SearchBox::keyPressEvent(QKeyEvent* event)
{
    QLineEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->accept();
}

void SearchBox::leaveEvent(QEvent* event)
{
    SetState(NoButton);
    QWidget::leaveEvent(event);
}

void SearchBox::mouseMoveEvent(QMouseEvent* event)
{
    if (IsSearchButtonHovered(event->pos())) {
        SetState(SearchHovered);
        QWidget::mouseMoveEvent(event);
    } else if (IsHistoryButtonHovered(event->pos())) {
        SetState(HistoryHovered);
        QWidget::mouseMoveEvent(event);
    } else {
        SetState(NoButton);
        QLineEdit::mouseMoveEvent(event);
    }
}

void SearchBox::mousePressEvent(QMouseEvent* event)
{
    if (IsSearchButtonHovered(event->pos())) {
        SetState(SearchPressed);
        QWidget::mousePressEvent(event);
    } else if (IsHistoryButtonHovered(event->pos())) {
        SetState(HistoryPressed);
        QWidget::mousePressEvent(event);
    } else {
        SetState(NoButton);
        QLineEdit::mousePressEvent(event);
    }
}

void SearchBox::mouseReleaseEvent(QMouseEvent* event)
{
    if (IsSearchButtonHovered(event->pos())) {
        SetState(SearchHovered);
        QWidget::mouseReleaseEvent(event);
        m_typingTimer->stop();
        if (m_cancelMode) {
            clear();
            Q_EMIT resetSearch();
            SetCancelMode(false);
        } else if (m_showSearchButton) {
            StartSearch();
        }
    } else if (IsHistoryButtonHovered(event->pos())) {
        SetState(HistoryHovered);
        QWidget::mouseReleaseEvent(event);
        Q_EMIT historyBrowse();
    } else {
        SetState(NoButton);
        QLineEdit::mouseReleaseEvent(event);
    }
}

void SearchBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (IsSearchButtonHovered(event->pos()) || IsHistoryButtonHovered(event->pos()))
        QWidget::mouseDoubleClickEvent(event);
    else
        QLineEdit::mouseDoubleClickEvent(event);
}

void SearchBox::OnTextChanged(const QString& text)
{
    if (m_showSearchButton)
        return;
    m_typingTimer->stop();
    if (text.isEmpty()) {
        Q_EMIT resetSearch();
        SetCancelMode(false);
    } else {
        m_typingTimer->start();
    }
}

void SearchBox::OnTypingTimeout()
{
    StartSearch();
}

void SearchBox::OnEnterPressed()
{
    m_typingTimer->stop();
    if (!text().isEmpty())
        StartSearch();
}

void SearchBox::StartSearch()
{
    Q_EMIT searchStarted();
    SetCancelMode(true);
}

} // namespace OrvantaQT
