#include <qt_halvo/widgets/window/popup_message.h>

#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/widgets/window/notification_background_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/window/popup_message_queue.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtGui/QAccessible>
#include <QtWidgets/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolButton>

namespace OrvantaQT {

namespace {

constexpr int kFadeIn = 150;
constexpr int kFadeOut = 200;
// Lines of the text wrap at this many average characters.
constexpr int kLineCharacters = 36;
constexpr qreal kCornerRadius = 6;
// Text on the default backgrounds, which are all light.
const QColor kDefaultTextColor(0x1f, 0x23, 0x28);

} // namespace

PopupMessage::PopupMessage(QWidget* parent)
    : PopupMessage(NotificationType::Information, QString(), parent)
{
}

PopupMessage::PopupMessage(NotificationType::Type type, const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_icon(NameChild(new QLabel(this), "PopupMessage", "Icon"))
    , m_text(NameChild(new QLabel(this), "PopupMessage", "Text"))
    , m_countLabel(NameChild(new QLabel(this), "PopupMessage", "Count"))
    , m_actionButton(NameChild(new QPushButton(this), "PopupMessage", "ActionButton"))
    , m_closeButton(NameChild(new QToolButton(this), "PopupMessage", "CloseButton"))
    , m_fade(new AnimatedOpacityEffect(this, kFadeIn, 0.0, 1.0, this, kFadeOut, true))
{
    if (!NotificationType::IsValid(type)) {
        QTH_LOG_WARNING("PopupMessage: an unknown type %d is shown as Information", static_cast<int>(type));
        type = NotificationType::Information;
    }
    m_type = type;
    setProperty("NotificationType", NotificationType::Name(type));
    setAccessibleName(NotificationType::DisplayName(type));
    setAttribute(Qt::WA_Hover);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 8, 8);
    layout->setSpacing(8);
    layout->addWidget(m_icon, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_countLabel);
    layout->addWidget(m_actionButton);
    layout->addWidget(m_closeButton, 0, Qt::AlignTop);

    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setText(text);
    setAccessibleDescription(text);
    m_countLabel->setVisible(false);
    m_actionButton->setVisible(false);
    // A toast never takes the focus from what the user works in; the keyboard reaches it.
    m_actionButton->setFocusPolicy(Qt::TabFocus);
    m_closeButton->setFocusPolicy(Qt::TabFocus);
    m_closeButton->setAutoRaise(true);
    m_closeButton->setToolTip(tr("Close"));
    connect(m_actionButton, &QPushButton::clicked, this, [this] {
        if (m_action)
            m_action->trigger();
    });
    connect(m_closeButton, &QToolButton::clicked, this, &PopupMessage::Dismiss);
    connect(m_fade, &AnimatedEffect::FinishedBackward, this, &PopupMessage::Finish);
    UpdateIcon();
    UpdateDefaultLook();
}

PopupMessage::~PopupMessage()
{
    if (!m_closed) {
        m_closed = true;
        Q_EMIT Closed();
    }
}

quint64 PopupMessage::Post(QWidget* window, NotificationType::Type type, const QString& text, int timeoutMs,
                           QAction* action)
{
    PopupMessageQueue* queue = PopupMessageQueue::ForWindow(window);
    return queue ? queue->Post(type, text, timeoutMs, action) : 0;
}

NotificationType::Type PopupMessage::GetType() const
{
    return m_type;
}

void PopupMessage::SetType(NotificationType::Type type)
{
    if (!NotificationType::IsValid(type)) {
        QTH_LOG_WARNING("PopupMessage: an unknown type %d is ignored", static_cast<int>(type));
        return;
    }
    if (type == m_type)
        return;
    m_type = type;
    setAccessibleName(NotificationType::DisplayName(type));
    // Polished again, with its parts, so that rules on the property apply.
    SetStyleProperty(this, "NotificationType", NotificationType::Name(type), testAttribute(Qt::WA_WState_Polished));
    UpdateIcon();
    update();
}

QString PopupMessage::GetText() const
{
    return m_text->text();
}

void PopupMessage::SetText(const QString& text)
{
    if (text == m_text->text())
        return;
    m_text->setText(text);
    setAccessibleDescription(text);
    updateGeometry();
}

QAction* PopupMessage::GetAction() const
{
    return m_action;
}

void PopupMessage::SetAction(QAction* action)
{
    if (action == m_action)
        return;
    if (m_action)
        disconnect(m_action, nullptr, this, nullptr);
    m_action = action;
    if (action) {
        connect(action, &QAction::changed, this, &PopupMessage::UpdateActionButton);
        connect(action, &QAction::triggered, this, &PopupMessage::OnActionTriggered);
        connect(action, &QObject::destroyed, this, &PopupMessage::UpdateActionButton);
    }
    UpdateActionButton();
}

bool PopupMessage::IsClosable() const
{
    return !m_closeButton->isHidden();
}

void PopupMessage::SetClosable(bool closable)
{
    if (closable == IsClosable())
        return;
    m_closeButton->setVisible(closable);
    updateGeometry();
}

int PopupMessage::GetTimeout() const
{
    return m_timeout;
}

void PopupMessage::SetTimeout(int timeoutMs)
{
    if (timeoutMs == m_timeout)
        return;
    m_timeout = timeoutMs;
    m_remaining = timeoutMs;
    m_timer.stop();
    UpdateTimer();
}

int PopupMessage::GetRemainingTime() const
{
    if (m_timeout <= 0)
        return -1;
    if (!m_timer.isActive())
        return m_remaining;
    return qMax(0, m_remaining - static_cast<int>(m_clock.elapsed()));
}

bool PopupMessage::IsCountingDown() const
{
    return m_timer.isActive();
}

void PopupMessage::RestartTimeout()
{
    m_remaining = m_timeout;
    m_timer.stop();
    UpdateTimer();
}

int PopupMessage::GetCount() const
{
    return m_count;
}

void PopupMessage::SetCount(int count)
{
    if (count < 1) {
        QTH_LOG_WARNING("PopupMessage: a count of %d is ignored; it is at least 1", count);
        return;
    }
    if (count == m_count)
        return;
    m_count = count;
    m_countLabel->setText(tr("×%1").arg(count));
    m_countLabel->setVisible(count > 1);
}

bool PopupMessage::IsClosing() const
{
    return m_closing;
}

QSize PopupMessage::sizeHint() const
{
    // As wide as the text needs on one line up to the bound, then wrapped; Qt's own hint
    // of a word-wrapped label would wrap short texts too.
    QLayout* own = layout();
    const QFontMetrics metrics = m_text->fontMetrics();
    const int bound = metrics.averageCharWidth() * kLineCharacters;
    const int textWidth =
        qMin(bound, metrics.boundingRect(QRect(0, 0, bound, 1 << 20), Qt::TextWordWrap, m_text->text()).width());
    const int labelHint = own->itemAt(own->indexOf(m_text))->sizeHint().width();
    const int width = own->sizeHint().width() - labelHint + textWidth;
    return QSize(width, heightForWidth(width));
}

void PopupMessage::Dismiss()
{
    if (m_closing)
        return;
    m_closing = true;
    UpdateTimer();
    if (m_onScreen && WidgetAnimationsEnabled(this))
        m_fade->PlayBackward();
    else
        Finish();
}

void PopupMessage::Finish()
{
    if (m_closed)
        return;
    m_closing = true;
    m_closed = true;
    m_timer.stop();
    hide();
    Q_EMIT Closed();
    deleteLater();
}

void PopupMessage::OnActionTriggered()
{
    Q_EMIT ActionTriggered();
    Dismiss();
}

void PopupMessage::UpdateTimer()
{
    const bool run = m_timeout > 0 && !m_closing && !m_hovered && m_onScreen;
    if (run == m_timer.isActive())
        return;
    if (run) {
        m_clock.start();
        m_timer.start(qMax(0, m_remaining), this);
    } else {
        m_remaining = qMax(0, m_remaining - static_cast<int>(m_clock.elapsed()));
        m_timer.stop();
    }
}

void PopupMessage::UpdateIcon()
{
    const int extent = style()->pixelMetric(QStyle::PM_ToolBarIconSize, nullptr, this);
    m_icon->setPixmap(NotificationType::Icon(m_type, this).pixmap(extent, extent));
    m_closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton, nullptr, this));
}

void PopupMessage::UpdateActionButton()
{
    const bool shown = m_action && m_action->isVisible();
    if (m_action) {
        m_actionButton->setText(m_action->text());
        m_actionButton->setToolTip(m_action->toolTip());
        m_actionButton->setEnabled(m_action->isEnabled());
    }
    if (shown == !m_actionButton->isHidden())
        return;
    m_actionButton->setVisible(shown);
    updateGeometry();
}

// Dark text on the light default background. A style sheet that styles the toast colours
// the text of its parts too (OrvantaQT--PopupMessage[NotificationType="Error"] QLabel).
void PopupMessage::UpdateDefaultLook()
{
    if (testAttribute(Qt::WA_StyleSheetTarget) || palette().color(QPalette::WindowText) == kDefaultTextColor)
        return;
    QPalette dark = palette();
    dark.setColor(QPalette::WindowText, kDefaultTextColor);
    setPalette(dark);
}

bool PopupMessage::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Enter:
        m_hovered = true;
        UpdateTimer();
        break;
    case QEvent::Leave:
        m_hovered = false;
        UpdateTimer();
        break;
    case QEvent::Polish: {
        // After the style's polish, which tells whether a style sheet rule styles the toast;
        // before the parts', which take its palette.
        const bool done = QWidget::event(event);
        UpdateDefaultLook();
        return done;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

void PopupMessage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!testAttribute(Qt::WA_StyleSheetTarget))
        PaintDefaultNotificationBackground(painter, rect(), m_type, kCornerRadius);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void PopupMessage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_fadedIn && !event->spontaneous()) {
        m_fadedIn = true;
        if (WidgetAnimationsEnabled(this))
            m_fade->PlayForward();
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    m_onScreen = true;
    UpdateTimer();
}

void PopupMessage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_onScreen = false;
    UpdateTimer();
}

void PopupMessage::closeEvent(QCloseEvent* event)
{
    event->accept();
    Finish();
}

void PopupMessage::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
        UpdateIcon();
        UpdateDefaultLook();
        updateGeometry();
    }
}

void PopupMessage::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_timer.stop();
    m_remaining = 0;
    Dismiss();
}

} // namespace OrvantaQT
