#include <qt_halvo/widgets/containers/icon_with_label.h>

#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtGui/QKeySequence>
#include <QtGui/QShortcutEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

namespace OrvantaQT {

namespace {

const QChar kEllipsis(0x2026);

// The text as shown: "&&" is an "&", any other "&" marks the letter after it.
QString WithoutMnemonics(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&') && i + 1 < text.size())
            ++i;
        plain += text.at(i);
    }
    return plain;
}

class IconPart : public QWidget
{
public:
    explicit IconPart(QWidget* parent)
        : QWidget(parent)
    {
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    void Set(const QIcon& icon, const QSize& extent)
    {
        m_icon = icon;
        setFixedSize(extent);
        setVisible(!icon.isNull());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        m_icon.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }

private:
    QIcon m_icon;
};

// A label that elides its one line at the right and paints the mnemonic underline itself,
// so that the full text's letter stays the mnemonic; QLabel's own text is the full text
// without the marks, for screen readers.
class LabelPart : public QLabel
{
public:
    explicit LabelPart(QWidget* parent)
        : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
    }

    void SetFullText(const QString& text)
    {
        m_full = text;
        setText(WithoutMnemonics(text));
        setVisible(!text.isEmpty());
        Elide();
    }

    void SetMnemonicShown(bool shown)
    {
        if (m_mnemonicShown == shown)
            return;
        m_mnemonicShown = shown;
        update();
    }

    QString Shown() const { return WithoutMnemonics(m_shown); }
    bool IsElided() const { return m_elided; }

    QSize sizeHint() const override
    {
        return Extent() + QSize(fontMetrics().horizontalAdvance(text()), fontMetrics().height());
    }

    QSize minimumSizeHint() const override
    {
        const int width = text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(kEllipsis);
        return Extent() + QSize(width, fontMetrics().height());
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        Elide();
    }

    void changeEvent(QEvent* event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
            Elide();
            updateGeometry();
        }
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        drawFrame(&painter);
        int flags = int(alignment()) | Qt::TextSingleLine | Qt::TextShowMnemonic;
        QStyleOption option;
        option.initFrom(this);
        if (!m_mnemonicShown || !style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this))
            flags |= Qt::TextHideMnemonic;
        style()->drawItemText(&painter, TextRect(), flags, palette(), isEnabled(), m_shown, foregroundRole());
    }

private:
    // What the frame, the contents margins and the margin take around the text.
    QSize Extent() const
    {
        return rect().size() - contentsRect().size() + QSize(2 * margin(), 2 * margin());
    }

    QRect TextRect() const
    {
        return contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    }

    void Elide()
    {
        // elidedText() elides a text exactly as wide as the room, which is what the size
        // hint asks for.
        const int room = qMax(0, TextRect().width());
        const QString shown = fontMetrics().horizontalAdvance(text()) <= room
            ? m_full
            : fontMetrics().elidedText(m_full, Qt::ElideRight, room, Qt::TextShowMnemonic);
        const bool elided = WithoutMnemonics(shown) != text();
        if (shown == m_shown && elided == m_elided)
            return;
        m_shown = shown;
        m_elided = elided;
        setToolTip(elided ? text() : QString());
        update();
    }

    QString m_full;
    QString m_shown;
    bool m_elided = false;
    bool m_mnemonicShown = false;
};

} // namespace

IconWithLabel::IconWithLabel(QWidget* parent)
    : IconWithLabel(QIcon(), QString(), parent)
{
}

IconWithLabel::IconWithLabel(const QIcon& icon, const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_icon(icon)
    , m_text(text)
    , m_iconPart(NameChild(new IconPart(this), "IconWithLabel", "Icon"))
    , m_label(NameChild(new LabelPart(this), "IconWithLabel", "Label"))
    , m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_iconPart);
    m_layout->addWidget(m_label, 1);
    ApplyOrientation();
    UpdateIconSize();
    static_cast<LabelPart*>(m_label)->SetFullText(text);
}

IconWithLabel::~IconWithLabel() = default;

QIcon IconWithLabel::GetIcon() const
{
    return m_icon;
}

void IconWithLabel::SetIcon(const QIcon& icon)
{
    if (icon.cacheKey() == m_icon.cacheKey())
        return;
    m_icon = icon;
    static_cast<IconPart*>(m_iconPart)->Set(m_icon, m_iconSize);
}

QString IconWithLabel::GetText() const
{
    return m_text;
}

void IconWithLabel::SetText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    static_cast<LabelPart*>(m_label)->SetFullText(text);
    UpdateShortcut();
}

QString IconWithLabel::GetShownText() const
{
    return static_cast<LabelPart*>(m_label)->Shown();
}

bool IconWithLabel::IsElided() const
{
    return static_cast<LabelPart*>(m_label)->IsElided();
}

QSize IconWithLabel::GetIconSize() const
{
    return m_iconSize;
}

void IconWithLabel::SetIconSize(const QSize& size)
{
    if (size.isEmpty()) {
        QTH_LOG_WARNING("IconWithLabel: an icon size of %dx%d is ignored; it stays %dx%d", size.width(), size.height(),
                        m_iconSize.width(), m_iconSize.height());
        return;
    }
    m_iconSizeSet = true;
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    static_cast<IconPart*>(m_iconPart)->Set(m_icon, m_iconSize);
}

void IconWithLabel::ResetIconSize()
{
    m_iconSizeSet = false;
    UpdateIconSize();
}

Qt::Orientation IconWithLabel::GetOrientation() const
{
    return m_orientation;
}

void IconWithLabel::SetOrientation(Qt::Orientation orientation)
{
    if (orientation != Qt::Horizontal && orientation != Qt::Vertical) {
        QTH_LOG_WARNING("IconWithLabel: %d is not an orientation; it stays %s", static_cast<int>(orientation),
                        m_orientation == Qt::Horizontal ? "horizontal" : "vertical");
        return;
    }
    if (orientation == m_orientation)
        return;
    m_orientation = orientation;
    ApplyOrientation();
}

QWidget* IconWithLabel::GetBuddy() const
{
    return m_buddy;
}

void IconWithLabel::SetBuddy(QWidget* buddy)
{
    if (buddy == m_buddy)
        return;
    disconnect(m_buddyGone);
    m_buddy = buddy;
    if (buddy)
        m_buddyGone = connect(buddy, &QObject::destroyed, this, &IconWithLabel::UpdateShortcut);
    UpdateShortcut();
}

bool IconWithLabel::event(QEvent* event)
{
    if (event->type() == QEvent::Shortcut) {
        auto* shortcut = static_cast<QShortcutEvent*>(event);
        if (shortcut->shortcutId() == m_shortcutId) {
            // As QLabel does for its buddy.
            if (m_buddy) {
                if (m_buddy->focusPolicy() != Qt::NoFocus)
                    m_buddy->setFocus(Qt::ShortcutFocusReason);
                auto* button = qobject_cast<QAbstractButton*>(m_buddy.data());
                if (button && !shortcut->isAmbiguous())
                    button->animateClick();
                else
                    window()->setAttribute(Qt::WA_KeyboardFocusChange);
            }
            return true;
        }
    }
    if (event->type() == QEvent::StyleChange)
        UpdateIconSize();
    return QWidget::event(event);
}

void IconWithLabel::UpdateShortcut()
{
    if (m_shortcutId != 0) {
        releaseShortcut(m_shortcutId);
        m_shortcutId = 0;
    }
    const QKeySequence mnemonic = QKeySequence::mnemonic(m_text);
    if (m_buddy && !mnemonic.isEmpty())
        m_shortcutId = grabShortcut(mnemonic);
    static_cast<LabelPart*>(m_label)->SetMnemonicShown(m_shortcutId != 0);
}

void IconWithLabel::UpdateIconSize()
{
    if (m_iconSizeSet)
        return;
    const int extent = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const QSize size(extent, extent);
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    static_cast<IconPart*>(m_iconPart)->Set(m_icon, m_iconSize);
}

void IconWithLabel::ApplyOrientation()
{
    const bool horizontal = m_orientation == Qt::Horizontal;
    m_layout->setDirection(horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_layout->setAlignment(m_iconPart, horizontal ? Qt::AlignVCenter : Qt::AlignHCenter);
    m_label->setAlignment(horizontal ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignHCenter | Qt::AlignTop);
}

} // namespace OrvantaQT
