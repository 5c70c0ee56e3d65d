#include <qt_halvo/widgets/window/notification_widget.h>

#include <qt_halvo/animation/show_hide_machine_p.h>
#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/widgets/window/notification_background_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/views/accessibility_factory_p.h>

#include <QtCore/QEvent>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QtMath>
#include <QtGui/QAccessible>
#include <QtGui/QActionEvent>
#include <QtGui/QPainter>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolButton>

#include <algorithm>

namespace OrvantaQT {

namespace {

constexpr qreal kCornerRadius = 4;
// Widths laid out and kept: a layout pass asks a few, an animation step the same again.
constexpr int kKeptArrangements = 4;
// The narrowest text column the minimum size allows, in average characters.
constexpr int kMinimumTextCharacters = 12;
// Longer texts wrap at the preferred width.
constexpr int kPreferredTextCharacters = 60;

QString PlainTextOf(const QString& richText)
{
    QTextDocument document;
    document.setHtml(richText);
    return document.toPlainText();
}

// Screen readers take the notification for an alert: its name is the type, its
// description the text.
class NotificationAccessible : public QAccessibleWidget
{
public:
    explicit NotificationAccessible(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::AlertMessage)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const auto* notification = static_cast<const NotificationWidget*>(widget());
        if (kind == QAccessible::Name && notification->accessibleName().isEmpty())
            return NotificationType::DisplayName(notification->GetType());
        if (kind == QAccessible::Description && notification->accessibleDescription().isEmpty())
            return PlainTextOf(notification->GetText());
        return QAccessibleWidget::text(kind);
    }
};

bool LayoutHolds(const QLayout* layout, const QWidget* widget)
{
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget() == widget || (item->layout() && LayoutHolds(item->layout(), widget)))
            return true;
    }
    return false;
}

int Metric(const QWidget* widget, QStyle::PixelMetric metric, int fallback)
{
    const int value = widget->style()->pixelMetric(metric, nullptr, widget);
    return value >= 0 ? value : fallback;
}

// What a word-wrapped QLabel adds around its text when it measures its height for a
// width: its contents margins, its margin on each side, and an indent of an 'x' when it
// has a frame (a style sheet's border or padding gives it one) but no indent of its own.
QSize LabelExtent(const QLabel* label)
{
    const QMargins margins = label->contentsMargins();
    const int margin = label->margin();
    QSize extent(margins.left() + margins.right() + 2 * margin, margins.top() + margins.bottom() + 2 * margin);
    int indent = label->indent();
    if (indent < 0 && label->frameWidth() > 0)
        indent = label->fontMetrics().horizontalAdvance(QLatin1Char('x')) - 2 * margin;
    if (indent > 0) {
        const Qt::Alignment alignment = label->alignment();
        if (alignment & (Qt::AlignLeft | Qt::AlignRight))
            extent.rwidth() += indent;
        if (alignment & (Qt::AlignTop | Qt::AlignBottom))
            extent.rheight() += indent;
    }
    return extent;
}

// Centres an extent of `size` in a band of `band` starting at `start`.
int Centred(int start, int band, int size)
{
    return start + qMax(0, band - size) / 2;
}

} // namespace

NotificationWidget::NotificationWidget(QWidget* parent)
    : NotificationWidget(NotificationType::Information, QString(), parent)
{
}

NotificationWidget::NotificationWidget(NotificationType::Type type, const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_content(NameChild(new QWidget(this), "NotificationWidget", "Content"))
    , m_iconLabel(NameChild(new QLabel(m_content), "NotificationWidget", "Icon"))
    , m_text(NameChild(new QLabel(m_content), "NotificationWidget", "Text"))
    , m_closeButton(NameChild(new QToolButton(m_content), "NotificationWidget", "CloseButton"))
    , m_measure(std::make_unique<QTextDocument>())
{
    QWidget::setVisible(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);

    m_text->setTextFormat(Qt::RichText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextBrowserInteraction);
    m_text->setOpenExternalLinks(false);
    connect(m_text, &QLabel::linkActivated, this, &NotificationWidget::LinkActivated);
    m_measure->setDocumentMargin(0);
    QTextOption wrapping = m_measure->defaultTextOption();
    wrapping.setWrapMode(QTextOption::WordWrap);
    m_measure->setDefaultTextOption(wrapping);
    m_measure->setDefaultFont(m_text->font());

    m_closeButton->setAutoRaise(true);
    m_closeButton->setToolTip(tr("Close"));
    m_closeButton->setAccessibleDescription(tr("Close"));
    connect(m_closeButton, &QToolButton::clicked, this, [this] {
        Q_EMIT CloseRequested();
        AnimatedHide();
    });

    // Children that change their size hint ask the content, which has no layout, to lay
    // out again; the label's font and margins come from style sheets.
    m_content->installEventFilter(this);
    m_text->installEventFilter(this);
    m_arrangements.setMaxCost(kKeptArrangements);

    m_animation = new QPropertyAnimation(this, "position", this);
    m_animation->setEasingCurve(QEasingCurve::OutCubic);
    ApplyDuration();
    m_machine = std::make_unique<ShowHideMachine>(
        this, m_animation, ShowHideMachine::Ends{},
        QVector<AnimatedStateMachine::Assignment>{{this, "position", 1.0}},
        QVector<AnimatedStateMachine::Assignment>{{this, "position", 0.0}});

    if (NotificationType::IsValid(type))
        m_type = type;
    else
        QTH_LOG_WARNING("NotificationWidget: %d is not a notification type; Information is used",
                        static_cast<int>(type));
    SetStyleProperty(this, "NotificationType", NotificationType::Name(m_type), false);
    m_text->setText(text);
    m_measure->setHtml(text);
    UpdateCloseIcon();
    UpdateIcon();
}

NotificationWidget::~NotificationWidget() = default;

// Made through the library's accessibility factory.
QAccessibleInterface* NotificationWidgetAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::NotificationWidget") && object && object->isWidgetType())
        return new NotificationAccessible(static_cast<QWidget*>(object));
    return nullptr;
}

NotificationType::Type NotificationWidget::GetType() const
{
    return m_type;
}

void NotificationWidget::SetType(NotificationType::Type type)
{
    if (!NotificationType::IsValid(type)) {
        QTH_LOG_WARNING("NotificationWidget: %d is not a notification type; the type stays %s",
                        static_cast<int>(type), qPrintable(NotificationType::Name(m_type)));
        return;
    }
    if (type == m_type)
        return;
    m_type = type;
    SetStyleProperty(this, "NotificationType", NotificationType::Name(type), true);
    if (m_icon.isNull())
        UpdateIcon();
    update();
    if (m_onScreen)
        Announce();
}

QString NotificationWidget::GetText() const
{
    return m_text->text();
}

void NotificationWidget::SetText(const QString& text)
{
    if (text.isEmpty())
        QTH_LOG_WARNING("NotificationWidget: an empty text; only the icon and the buttons show");
    if (text == m_text->text())
        return;
    m_text->setText(text);
    m_measure->setHtml(text);
    ContentChanged();
    if (m_onScreen)
        Announce();
}

QIcon NotificationWidget::GetIcon() const
{
    return m_icon;
}

void NotificationWidget::SetIcon(const QIcon& icon)
{
    if (icon.cacheKey() == m_icon.cacheKey())
        return;
    m_icon = icon;
    UpdateIcon();
}

bool NotificationWidget::IsCloseButtonVisible() const
{
    return m_closeButtonVisible;
}

void NotificationWidget::SetCloseButtonVisible(bool visible)
{
    if (visible == m_closeButtonVisible)
        return;
    m_closeButtonVisible = visible;
    m_closeButton->setVisible(visible);
    ContentChanged();
}

void NotificationWidget::AddAction(QAction* action)
{
    if (!action) {
        QTH_LOG_WARNING("NotificationWidget: no action to add");
        return;
    }
    addAction(action);
}

void NotificationWidget::RemoveAction(QAction* action)
{
    if (!action) {
        QTH_LOG_WARNING("NotificationWidget: no action to remove");
        return;
    }
    if (!actions().contains(action)) {
        QTH_LOG_WARNING("NotificationWidget: the action \"%s\" to remove is not one of its own",
                        qPrintable(action->text()));
        return;
    }
    removeAction(action);
}

QVector<QPushButton*> NotificationWidget::ActionButtons() const
{
    QVector<QPushButton*> buttons;
    buttons.reserve(m_buttons.size());
    for (const ActionButton& entry : m_buttons)
        buttons.append(entry.button);
    return buttons;
}

int NotificationWidget::GetDuration() const
{
    return m_duration;
}

void NotificationWidget::SetDuration(int duration)
{
    if (duration < 0) {
        QTH_LOG_WARNING("NotificationWidget: a negative duration (%d ms) is ignored", duration);
        return;
    }
    if (duration == m_duration)
        return;
    m_duration = duration;
    ApplyDuration();
}

QEasingCurve NotificationWidget::GetEasing() const
{
    return m_animation->easingCurve();
}

void NotificationWidget::SetEasing(const QEasingCurve& easing)
{
    if (easing == m_animation->easingCurve())
        return;
    m_animation->setEasingCurve(easing);
}

qreal NotificationWidget::GetPosition() const
{
    return m_position;
}

bool NotificationWidget::IsShown() const
{
    return m_machine->IsShown();
}

bool NotificationWidget::IsAnimating() const
{
    return m_animation->state() == QAbstractAnimation::Running;
}

QSize NotificationWidget::sizeHint() const
{
    ensurePolished();
    MeasureNaturalText();
    const int text = qMin(m_natural.width(), fontMetrics().averageCharWidth() * kPreferredTextCharacters);
    const int row = ButtonRowWidth();
    // The buttons beside a text that needs no wrapping, else below it.
    const int column = row > 0 && text == m_natural.width()
        ? text + Metric(this, QStyle::PM_LayoutHorizontalSpacing, 6) + row
        : qMax(text, row);
    const int width = qMax(ColumnAround() + column, minimumSizeHint().width());
    return QSize(width, heightForWidth(width));
}

QSize NotificationWidget::minimumSizeHint() const
{
    ensurePolished();
    int column = fontMetrics().averageCharWidth() * kMinimumTextCharacters;
    for (const ActionButton& entry : m_buttons) {
        if (!entry.button->isHidden())
            column = qMax(column, entry.button->sizeHint().width());
    }
    const int width = ColumnAround() + column;
    return QSize(width, heightForWidth(width));
}

bool NotificationWidget::hasHeightForWidth() const
{
    return true;
}

int NotificationWidget::heightForWidth(int width) const
{
    return qRound(m_position * FullHeightFor(width));
}

void NotificationWidget::setVisible(bool visible)
{
    Request(visible, false);
}

void NotificationWidget::AnimatedShow()
{
    Request(true, true);
}

void NotificationWidget::AnimatedHide()
{
    Request(false, true);
}

void NotificationWidget::OnShowingEntered()
{
    m_machineStarted = true;
    m_onScreen = true;
    // The height follows the position from here.
    QWidget::setVisible(true);
    Announce();
}

void NotificationWidget::OnShownEntered()
{
    m_machineStarted = true;
    QWidget::setVisible(true);
    // Shown at once, when the machine started here: not announced on the way.
    if (!m_onScreen) {
        m_onScreen = true;
        Announce();
    }
    Q_EMIT Shown();
    Q_EMIT Shown(true);
}

void NotificationWidget::OnShownExited()
{
    Q_EMIT Shown(false);
}

void NotificationWidget::OnHidingEntered()
{
    m_machineStarted = true;
    m_onScreen = false;
}

void NotificationWidget::OnHiddenEntered()
{
    m_machineStarted = true;
    m_onScreen = false;
    QWidget::setVisible(false);
    Q_EMIT Hidden();
    Q_EMIT Hidden(true);
}

void NotificationWidget::OnHiddenExited()
{
    Q_EMIT Hidden(false);
}

bool NotificationWidget::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        PlaceContent();
    return QWidget::event(event);
}

bool NotificationWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_content && event->type() == QEvent::LayoutRequest) {
        ContentChanged();
    } else if (watched == m_text) {
        switch (event->type()) {
        case QEvent::FontChange:
        case QEvent::StyleChange:
        case QEvent::ContentsRectChange:
            m_measure->setDefaultFont(m_text->font());
            ContentChanged();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void NotificationWidget::actionEvent(QActionEvent* event)
{
    QAction* action = event->action();
    const auto entryOf = [this](const QAction* wanted) {
        return std::find_if(m_buttons.begin(), m_buttons.end(),
                            [wanted](const ActionButton& entry) { return entry.action == wanted; });
    };
    switch (event->type()) {
    case QEvent::ActionAdded: {
        ActionButton entry{action, NameChild(new QPushButton(m_content), "NotificationWidget", "ActionButton")};
        connect(entry.button, &QPushButton::clicked, action, &QAction::trigger);
        const auto before = entryOf(event->before());
        const auto added = m_buttons.insert(event->before() ? before : m_buttons.end(), entry);
        SyncButton(*added);
        break;
    }
    case QEvent::ActionChanged: {
        const auto found = entryOf(action);
        if (found != m_buttons.end())
            SyncButton(*found);
        break;
    }
    case QEvent::ActionRemoved: {
        const auto found = entryOf(action);
        if (found != m_buttons.end()) {
            delete found->button;
            m_buttons.erase(found);
        }
        break;
    }
    default:
        break;
    }
    ContentChanged();
    QWidget::actionEvent(event);
}

void NotificationWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::StyleChange:
        ApplyDuration();
        UpdateCloseIcon();
        UpdateIcon();
        break;
    case QEvent::FontChange:
        m_measure->setDefaultFont(m_text->font());
        ContentChanged();
        break;
    default:
        break;
    }
}

void NotificationWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The background slides with the content.
    const QRect area = m_content->geometry();
    if (!testAttribute(Qt::WA_StyleSheetTarget))
        PaintDefaultNotificationBackground(painter, area, m_type, kCornerRadius);
    QStyleOption option;
    option.initFrom(this);
    option.rect = area;
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void NotificationWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    PlaceContent();
}

void NotificationWidget::SetPosition(qreal position)
{
    position = qBound<qreal>(0, position, 1);
    if (qFuzzyCompare(position + 1, m_position + 1))
        return;
    m_position = position;
    HeightChanged();
}

void NotificationWidget::Request(bool shown, bool animated)
{
    if (!m_machineStarted) {
        // The machine starts in the state asked for; the widget follows now.
        m_machine->Request(shown);
        QWidget::setVisible(shown);
        return;
    }
    if (animated) {
        m_machine->Request(shown);
        return;
    }
    // At once: a motion the same way ends now, any other change takes no time.
    if (IsAnimating() && qFuzzyCompare(m_animation->endValue().toReal(), shown ? 1.0 : 0.0)) {
        m_animation->setCurrentTime(m_animation->totalDuration());
        return;
    }
    m_animation->setDuration(0);
    m_machine->Request(shown);
    ApplyDuration();
}

void NotificationWidget::UpdateIcon()
{
    const QIcon icon = m_icon.isNull() ? NotificationType::Icon(m_type, this) : m_icon;
    const int extent = Metric(this, QStyle::PM_ToolBarIconSize, 24);
    m_iconExtent = icon.isNull() ? 0 : extent;
    m_iconLabel->setPixmap(icon.isNull() ? QPixmap() : icon.pixmap(extent, extent));
    m_iconLabel->setVisible(!icon.isNull());
    ContentChanged();
}

void NotificationWidget::UpdateCloseIcon()
{
    const int extent = Metric(this, QStyle::PM_SmallIconSize, 16);
    m_closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton, nullptr, this));
    m_closeButton->setIconSize(QSize(extent, extent));
}

void NotificationWidget::SyncButton(const ActionButton& entry)
{
    const QAction* action = entry.action;
    if (!action)
        return;
    entry.button->setText(action->text());
    entry.button->setIcon(action->icon());
    entry.button->setToolTip(action->toolTip());
    entry.button->setEnabled(action->isEnabled());
    entry.button->setVisible(action->isVisible());
}

void NotificationWidget::ContentChanged()
{
    m_arrangements.clear();
    m_naturalKnown = false;
    HeightChanged();
}

void NotificationWidget::HeightChanged()
{
    updateGeometry();
    // Nothing else gives it the height it asks for.
    if (!IsManagedByLayout())
        resize(width(), heightForWidth(width()));
    PlaceContent();
    update();
}

void NotificationWidget::PlaceContent()
{
    const int full = FullHeightFor(width());
    // Shown partly, the content keeps its height and its lower part shows.
    const QRect area = height() >= full ? rect() : QRect(0, height() - full, width(), full);
    m_content->setGeometry(area);
    const Arrangement& arrangement = ArrangementFor(width());
    const QRect inside(QPoint(0, 0), area.size());
    const auto place = [this, &inside](QWidget* part, const QRect& rect) {
        if (!rect.isEmpty())
            part->setGeometry(QStyle::visualRect(layoutDirection(), inside, rect));
    };
    place(m_iconLabel, arrangement.icon);
    place(m_text, arrangement.text);
    place(m_closeButton, arrangement.close);
    // Laid out for these buttons: any change of them drops the arrangements.
    for (int i = 0; i < arrangement.buttons.size(); ++i)
        place(m_buttons[i].button, arrangement.buttons[i]);
}

const NotificationWidget::Arrangement& NotificationWidget::ArrangementFor(int width) const
{
    width = qMax(0, width);
    Arrangement* arrangement = m_arrangements.object(width);
    if (!arrangement) {
        arrangement = new Arrangement(ComputeArrangement(width));
        m_arrangements.insert(width, arrangement);
    }
    return *arrangement;
}

NotificationWidget::Arrangement NotificationWidget::ComputeArrangement(int width) const
{
    Arrangement arrangement;
    arrangement.buttons.resize(m_buttons.size());
    const int marginLeft = Metric(this, QStyle::PM_LayoutLeftMargin, 9);
    const int top = Metric(this, QStyle::PM_LayoutTopMargin, 9);
    const int marginRight = Metric(this, QStyle::PM_LayoutRightMargin, 9);
    const int horizontal = Metric(this, QStyle::PM_LayoutHorizontalSpacing, 6);
    const int vertical = Metric(this, QStyle::PM_LayoutVerticalSpacing, 6);

    // The icon and the close button share the first band, centred in it.
    const QSize iconSize = m_iconExtent > 0 ? QSize(m_iconExtent, m_iconExtent) : QSize();
    const QSize closeSize = m_closeButtonVisible ? m_closeButton->sizeHint() : QSize();
    int band = qMax(iconSize.height(), closeSize.height());
    const int left = marginLeft + (iconSize.isValid() ? iconSize.width() + horizontal : 0);
    const int column = qMax(0, width - ColumnAround());

    QVector<QSize> hints(m_buttons.size()); // invalid for hidden buttons
    int row = 0;
    int visibleButtons = 0;
    for (int i = 0; i < m_buttons.size(); ++i) {
        if (m_buttons[i].button->isHidden())
            continue;
        hints[i] = m_buttons[i].button->sizeHint();
        row += (visibleButtons++ > 0 ? horizontal : 0) + hints[i].width();
    }
    // Buttons first to last, in a row that ends at the end of the column.
    const auto placeRow = [&](int first, int last, int rowWidth, int rowTop, int rowHeight) {
        int x = left + column - rowWidth;
        for (int i = first; i < last; ++i) {
            if (!hints[i].isValid())
                continue;
            arrangement.buttons[i] = QRect(QPoint(x, Centred(rowTop, rowHeight, hints[i].height())), hints[i]);
            x += hints[i].width() + horizontal;
        }
    };

    MeasureNaturalText();
    int bottom = top;
    if (visibleButtons > 0 && m_natural.width() + horizontal + row <= column) {
        // One line: the text, then the buttons.
        for (const QSize& hint : hints)
            band = qMax(band, hint.height());
        band = qMax(band, m_natural.height());
        arrangement.text = QRect(left, Centred(top, band, m_natural.height()), column - horizontal - row,
                                 m_natural.height());
        placeRow(0, hints.size(), row, top, band);
        bottom = top + band;
    } else {
        // The text wraps in the column; the buttons follow in as many rows as they need.
        const int textHeight = TextHeightFor(column);
        const int textTop = textHeight < band ? Centred(top, band, textHeight) : top;
        arrangement.text = QRect(left, textTop, column, textHeight);
        bottom = qMax(top + band, textTop + textHeight);
        int first = 0;
        while (first < hints.size()) {
            int last = first, rowWidth = 0, rowHeight = 0, inRow = 0;
            for (; last < hints.size(); ++last) {
                if (!hints[last].isValid())
                    continue;
                const int wider = rowWidth + (inRow > 0 ? horizontal : 0) + hints[last].width();
                if (inRow > 0 && wider > column)
                    break;
                rowWidth = wider;
                rowHeight = qMax(rowHeight, hints[last].height());
                ++inRow;
            }
            if (inRow == 0)
                break;
            placeRow(first, last, rowWidth, bottom + vertical, rowHeight);
            bottom += vertical + rowHeight;
            first = last;
        }
    }
    if (iconSize.isValid())
        arrangement.icon = QRect(QPoint(marginLeft, Centred(top, band, iconSize.height())), iconSize);
    if (closeSize.isValid())
        arrangement.close =
            QRect(QPoint(width - marginRight - closeSize.width(), Centred(top, band, closeSize.height())), closeSize);
    arrangement.height = bottom + Metric(this, QStyle::PM_LayoutBottomMargin, 9);
    return arrangement;
}

void NotificationWidget::MeasureNaturalText() const
{
    if (m_naturalKnown)
        return;
    m_measure->setTextWidth(-1);
    m_natural = QSize(qCeil(m_measure->size().width()), qCeil(m_measure->size().height())) + LabelExtent(m_text);
    m_naturalKnown = true;
}

int NotificationWidget::TextHeightFor(int width) const
{
    MeasureNaturalText();
    if (m_natural.width() <= width)
        return m_natural.height();
    const QSize extent = LabelExtent(m_text);
    const qreal textWidth = qMax(0, width - extent.width());
    if (m_measure->textWidth() != textWidth)
        m_measure->setTextWidth(textWidth);
    return qCeil(m_measure->size().height()) + extent.height();
}

int NotificationWidget::FullHeightFor(int width) const
{
    return ArrangementFor(width).height;
}

int NotificationWidget::ColumnAround() const
{
    const int horizontal = Metric(this, QStyle::PM_LayoutHorizontalSpacing, 6);
    int around = Metric(this, QStyle::PM_LayoutLeftMargin, 9) + Metric(this, QStyle::PM_LayoutRightMargin, 9);
    if (m_iconExtent > 0)
        around += m_iconExtent + horizontal;
    if (m_closeButtonVisible)
        around += m_closeButton->sizeHint().width() + horizontal;
    return around;
}

int NotificationWidget::ButtonRowWidth() const
{
    const int horizontal = Metric(this, QStyle::PM_LayoutHorizontalSpacing, 6);
    int row = 0;
    bool first = true;
    for (const ActionButton& entry : m_buttons) {
        if (entry.button->isHidden())
            continue;
        row += (first ? 0 : horizontal) + entry.button->sizeHint().width();
        first = false;
    }
    return row;
}

bool NotificationWidget::IsManagedByLayout() const
{
    const QWidget* parent = parentWidget();
    return !isWindow() && parent && parent->layout() && LayoutHolds(parent->layout(), this);
}

void NotificationWidget::Announce()
{
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void NotificationWidget::ApplyDuration()
{
    m_animation->setDuration(WidgetAnimationsEnabled(this) ? m_duration : 0);
}

} // namespace OrvantaQT
