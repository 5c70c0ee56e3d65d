#include <qt_halvo/widgets/navigation/tool_bar.h>

#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/navigation/tool_bar_button.h>
#include <qt_halvo/widgets/navigation/tool_bar_picture_p.h>

#include <QtGui/QActionEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QWidgetAction>

#include <algorithm>

namespace OrvantaQT {

namespace {

const char kDefaultImage[] = ":/tool_bar_background.png";
constexpr int kDefaultBorder = 6;
// Inside the picture's one-pixel border and clear of its rounded corners.
constexpr int kDefaultMargin = 3;

// The line between groups of items, drawn by the style as QToolBar's is.
class Separator : public QWidget
{
public:
    explicit Separator(QWidget* parent)
        : QWidget(parent)
    {
        NameChild(this, "ToolBar", "Separator");
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    }

    QSize sizeHint() const override
    {
        QStyleOption option;
        option.initFrom(this);
        const int extent = style()->pixelMetric(QStyle::PM_ToolBarSeparatorExtent, &option, this);
        return QSize(extent, extent);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        option.state |= QStyle::State_Horizontal; // the bar's orientation
        style()->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &option, &painter, this);
    }
};

QSize PreferredSize(const QWidget* widget)
{
    QSize hint = widget->sizeHint();
    if (!hint.isValid())
        hint = widget->minimumSizeHint().expandedTo(QSize(0, 0));
    return hint.expandedTo(widget->minimumSize()).boundedTo(widget->maximumSize());
}

} // namespace

ToolBar::ToolBar(QWidget* parent)
    : QWidget(parent)
    , m_overflowButton(NameChild(new ToolBarButton(this), "ToolBar", "OverflowButton"))
    , m_overflowMenu(NameChild(new QMenu(this), "ToolBar", "OverflowMenu"))
    , m_picture(std::make_unique<ToolBarPicture>("ToolBar", QLatin1String(kDefaultImage), kDefaultBorder))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setContentsMargins(kDefaultMargin, kDefaultMargin, kDefaultMargin, kDefaultMargin);

    m_overflowButton->setFocusPolicy(Qt::NoFocus);
    m_overflowButton->setPopupMode(QToolButton::InstantPopup);
    m_overflowButton->setMenu(m_overflowMenu);
    m_overflowButton->SetMenuIndicatorVisible(false); // the icon says it already
    m_overflowButton->setToolTip(tr("More"));
    m_overflowButton->setAccessibleDescription(tr("More"));
    m_overflowButton->setIcon(style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, this));
    m_overflowButton->hide();
    ApplyIconSize();

    connect(m_overflowMenu, &QMenu::aboutToShow, this, &ToolBar::SyncProxies);
    connect(m_overflowMenu, &QMenu::triggered, this, [this](QAction* action) {
        // A button reports its action however triggered, and a proxy clicks its button:
        // the menu adds the rest, the actions of buttons' menus above all.
        const bool reported = std::any_of(m_items.cbegin(), m_items.cend(), [action](const Item& item) {
            return item.proxy == action || (item.Button() && item.action == action);
        });
        if (!reported)
            Q_EMIT ActionTriggered(action);
    });
}

ToolBar::~ToolBar()
{
    // Its children are deleted after its members are gone: none may call back.
    for (Item& item : m_items)
        LetGoOfWidget(item);
}

ToolBarButton* ToolBar::AddAction(QAction* action)
{
    if (!action) {
        QTH_LOG_WARNING("ToolBar: no action to add");
        return nullptr;
    }
    addAction(action);
    return ButtonForAction(action);
}

ToolBarButton* ToolBar::AddAction(const QString& text)
{
    return AddAction(new QAction(text, this));
}

ToolBarButton* ToolBar::AddAction(const QIcon& icon, const QString& text)
{
    return AddAction(new QAction(icon, text, this));
}

ToolBarButton* ToolBar::InsertAction(QAction* before, QAction* action)
{
    if (!action) {
        QTH_LOG_WARNING("ToolBar: no action to insert");
        return nullptr;
    }
    insertAction(before, action);
    return ButtonForAction(action);
}

ToolBarButton* ToolBar::AddMenu(QMenu* menu)
{
    if (!menu) {
        QTH_LOG_WARNING("ToolBar: no menu to add");
        return nullptr;
    }
    return AddAction(menu->menuAction());
}

QAction* ToolBar::AddSeparator()
{
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    addAction(separator);
    return separator;
}

QAction* ToolBar::AddWidget(QWidget* widget)
{
    if (!widget) {
        QTH_LOG_WARNING("ToolBar: no widget to add");
        return nullptr;
    }
    auto* action = new QWidgetAction(this);
    action->setDefaultWidget(widget);
    addAction(action);
    return action;
}

ToolBarButton* ToolBar::AddButton(ToolBarButton* button)
{
    if (!button) {
        QTH_LOG_WARNING("ToolBar: no button to add");
        return nullptr;
    }
    auto* owner = qobject_cast<ToolBar*>(button->parentWidget());
    if (button == m_overflowButton || (owner && owner->ActionForButton(button))) {
        QTH_LOG_WARNING("ToolBar: the button is already on a tool bar");
        return nullptr;
    }
    QAction* action = button->defaultAction();
    if (action && IndexOf(action) >= 0) {
        QTH_LOG_WARNING("ToolBar: the button's action \"%s\" is already on the bar", qPrintable(action->text()));
        return nullptr;
    }
    if (!action)
        action = new QAction(button->icon(), button->text(), this);
    m_adopting = button;
    addAction(action);
    m_adopting = nullptr;
    return button;
}

QWidget* ToolBar::WidgetForAction(QAction* action) const
{
    const int index = IndexOf(action);
    return index >= 0 ? m_items.at(index).widget.data() : nullptr;
}

ToolBarButton* ToolBar::ButtonForAction(QAction* action) const
{
    const int index = IndexOf(action);
    return index >= 0 ? m_items.at(index).Button() : nullptr;
}

QAction* ToolBar::ActionForButton(ToolBarButton* button) const
{
    if (!button)
        return nullptr;
    for (const Item& item : m_items) {
        if (item.Button() == button)
            return item.action;
    }
    return nullptr;
}

QVector<QAction*> ToolBar::OverflowActions() const
{
    QVector<QAction*> actions;
    for (int i = m_overflowFrom; i < m_items.size(); ++i) {
        QAction* entry = m_items.at(i).entry;
        if (entry && entry->isVisible())
            actions << entry;
    }
    return actions;
}

ToolBarButton* ToolBar::OverflowButton() const
{
    return m_overflowButton;
}

QMenu* ToolBar::OverflowMenu() const
{
    return m_overflowMenu;
}

QString ToolBar::GetBackgroundImage() const
{
    return m_picture->Path();
}

void ToolBar::SetBackgroundImage(const QString& path)
{
    if (m_picture->SetPath(path))
        update();
}

QMargins ToolBar::GetBackgroundBorders() const
{
    return m_picture->Borders();
}

void ToolBar::SetBackgroundBorders(const QMargins& borders)
{
    if (m_picture->SetBorders(borders))
        update();
}

int ToolBar::GetBackgroundBorder() const
{
    return m_picture->Borders().left();
}

void ToolBar::SetBackgroundBorder(int border)
{
    SetBackgroundBorders(QMargins(border, border, border, border));
}

int ToolBar::GetSpacing() const
{
    return m_spacing >= 0 ? m_spacing : style()->pixelMetric(QStyle::PM_ToolBarItemSpacing, nullptr, this);
}

void ToolBar::SetSpacing(int spacing)
{
    if (spacing < 0) {
        QTH_LOG_WARNING("ToolBar: a negative spacing (%d) ignored", spacing);
        return;
    }
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    ItemsChanged();
}

void ToolBar::ResetSpacing()
{
    if (m_spacing < 0)
        return;
    m_spacing = -1;
    ItemsChanged();
}

QSize ToolBar::GetIconSize() const
{
    if (m_iconSize.isValid())
        return m_iconSize;
    const int extent = style()->pixelMetric(QStyle::PM_ToolBarIconSize, nullptr, this);
    return QSize(extent, extent);
}

void ToolBar::SetIconSize(const QSize& size)
{
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    ApplyIconSize();
    ItemsChanged();
}

void ToolBar::ResetIconSize()
{
    SetIconSize(QSize());
}

Qt::ToolButtonStyle ToolBar::GetToolButtonStyle() const
{
    return m_toolButtonStyle;
}

void ToolBar::SetToolButtonStyle(Qt::ToolButtonStyle style)
{
    if (style == m_toolButtonStyle)
        return;
    m_toolButtonStyle = style;
    for (const Item& item : qAsConst(m_items)) {
        if (ToolBarButton* button = item.Button())
            button->setToolButtonStyle(style);
    }
    ItemsChanged();
}

QSize ToolBar::sizeHint() const
{
    MeasureItems();
    int height = m_overflowHint.height();
    for (const Item& item : m_items) {
        if (IsShown(item))
            height = std::max(height, item.hint.height());
    }
    const QMargins margins = contentsMargins();
    return QSize(ItemsWidth() + margins.left() + margins.right(), height + margins.top() + margins.bottom());
}

QSize ToolBar::minimumSizeHint() const
{
    MeasureItems();
    const QMargins margins = contentsMargins();
    return QSize(m_overflowHint.width() + margins.left() + margins.right(), sizeHint().height());
}

bool ToolBar::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::LayoutRequest:
        // Showing and hiding items asks too; only new sizes matter.
        if (MeasureItems(true)) {
            updateGeometry();
            Relayout();
        }
        return true;
    case QEvent::Show:
        // Hidden, the items asked for no layout when they changed.
        m_measured = false;
        Relayout();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void ToolBar::actionEvent(QActionEvent* event)
{
    QAction* action = event->action();
    switch (event->type()) {
    case QEvent::ActionAdded: {
        // Resized while hidden, the bar has not laid out at its width yet: the new item
        // goes to the right side of the cut.
        if (contentsRect().size() != m_laidOutSize)
            Relayout();
        const int before = IndexOf(event->before());
        InsertItem(before >= 0 ? before : m_items.size(), action);
        ItemsChanged();
        break;
    }
    case QEvent::ActionChanged: {
        const int index = IndexOf(action);
        if (index < 0)
            break;
        Item& item = m_items[index];
        if (item.entry)
            SyncProxy(item);
        // A check or a new text changes no size here (the button asks when its own does);
        // showing or hiding the action does.
        if (item.actionVisible != action->isVisible()) {
            item.actionVisible = action->isVisible();
            ItemsChanged();
        }
        break;
    }
    case QEvent::ActionRemoved: {
        const int index = IndexOf(action);
        if (index >= 0) {
            RemoveItem(index);
            ItemsChanged();
        }
        break;
    }
    default:
        break;
    }
    QWidget::actionEvent(event);
}

void ToolBar::changeEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::StyleChange:
        m_overflowButton->setIcon(style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, this));
        if (!m_iconSize.isValid())
            ApplyIconSize();
        ItemsChanged();
        break;
    case QEvent::LayoutDirectionChange:
        Relayout();
        break;
    default:
        break;
    }
    QWidget::changeEvent(event);
}

void ToolBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (testAttribute(Qt::WA_StyleSheetTarget)) {
        QStyleOption option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
        return;
    }
    m_picture->Draw(&painter, rect());
}

void ToolBar::resizeEvent(QResizeEvent*)
{
    Relayout();
}

void ToolBar::InsertItem(int index, QAction* action)
{
    Item item;
    item.action = action;
    item.actionVisible = action->isVisible();
    auto* widgetAction = qobject_cast<QWidgetAction*>(action);
    if (m_adopting) {
        m_adopting->setParent(this);
        SetupButton(m_adopting, false);
        if (!m_adopting->defaultAction()) {
            // The bar's own action stands for the button in the overflow menu.
            item.proxy = action;
            connect(action, &QAction::triggered, this, &ToolBar::OnProxyTriggered);
            connect(m_adopting, &QAbstractButton::clicked, this,
                    [this, action] { Q_EMIT ActionTriggered(action); });
        }
        item.widget = m_adopting;
    } else if (action->isSeparator()) {
        item.kind = Kind::Separator;
        item.widget = new Separator(this);
    } else if (QWidget* widget = widgetAction ? widgetAction->requestWidget(this) : nullptr) {
        item.kind = Kind::Custom;
        item.widget = widget;
    } else {
        // A QWidgetAction that gives no widget gets a button, as in QToolBar.
        auto* button = new ToolBarButton(action, this);
        if (action->menu())
            button->setPopupMode(QToolButton::InstantPopup);
        SetupButton(button, true);
        item.widget = button;
    }
    connect(item.widget, &QObject::destroyed, this, &ToolBar::OnWidgetDestroyed, Qt::UniqueConnection);
    if (item.kind != Kind::Custom) {
        // Hidden in the overflow, a button still tells the bar when its size changes.
        QSizePolicy policy = item.widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        item.widget->setSizePolicy(policy);
    }

    const int count = m_items.size();
    m_items.insert(index, item);
    if (index < m_overflowFrom || m_overflowFrom == count) {
        ++m_overflowFrom;
        return;
    }
    // Among the items in the overflow menu: there until the bar lays out again.
    MeasureItem(m_items[index]);
    MoveToMenu(m_items[index], index + 1 < m_items.size() ? m_items.at(index + 1).entry.data() : nullptr);
    m_overflowChanged = true;
}

void ToolBar::RemoveItem(int index)
{
    Item item = m_items.takeAt(index);
    if (index < m_overflowFrom) {
        --m_overflowFrom;
    } else if (item.entry) {
        // The menu gives a QWidgetAction's widget back to its action.
        m_overflowMenu->removeAction(item.entry);
        if (item.proxy)
            item.proxy->setMenu(nullptr);
        m_overflowChanged = true;
    }
    LetGoOfWidget(item);
    if (item.widget) { // the bar's own button or separator
        item.widget->hide();
        // Later: the action being removed may be in its destructor, still using it.
        item.widget->deleteLater();
    }
    if (item.proxy)
        item.proxy->deleteLater();
}

ToolBarButton* ToolBar::Item::Button() const
{
    return kind == Kind::Button ? static_cast<ToolBarButton*>(widget.data()) : nullptr;
}

int ToolBar::IndexOf(const QAction* action) const
{
    if (!action)
        return -1;
    for (int i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i).action == action)
            return i;
    }
    return -1;
}

bool ToolBar::IsShown(const Item& item) const
{
    return item.action && item.action->isVisible() && item.hint.isValid() && (item.widget || item.entry);
}

bool ToolBar::MeasureItem(const Item& item) const
{
    // A QWidgetAction's widget in the menu keeps the size it had on the bar.
    if (!item.widget || item.widget->parentWidget() != this)
        return false;
    const QSize hint = PreferredSize(item.widget);
    const QSizePolicy policy = item.widget->sizePolicy();
    const bool expanding = policy.horizontalPolicy() & QSizePolicy::ExpandFlag;
    const bool growsVertically = policy.verticalPolicy() & QSizePolicy::GrowFlag;
    const bool changed = hint != item.hint || expanding != item.expanding || growsVertically != item.growsVertically;
    item.hint = hint;
    item.expanding = expanding;
    item.growsVertically = growsVertically;
    return changed;
}

bool ToolBar::MeasureItems(bool again) const
{
    // Hidden, the bar hears of no item's new size: it measures every time.
    if (m_measured && isVisible() && !again)
        return false;
    bool changed = false;
    for (const Item& item : m_items)
        changed |= MeasureItem(item);
    const QSize overflowHint = PreferredSize(m_overflowButton);
    changed |= overflowHint != m_overflowHint;
    m_overflowHint = overflowHint;
    m_measured = true;
    return changed;
}

int ToolBar::ItemsWidth() const
{
    int width = 0;
    int shown = 0;
    for (const Item& item : m_items) {
        if (IsShown(item)) {
            width += item.hint.width();
            ++shown;
        }
    }
    return width + std::max(0, shown - 1) * GetSpacing();
}

void ToolBar::Relayout()
{
    if (m_inRelayout)
        return;
    m_inRelayout = true;
    MeasureItems();
    const QRect area = contentsRect();
    m_laidOutSize = area.size();
    const int spacing = GetSpacing();
    const int count = m_items.size();
    const int total = ItemsWidth();

    // The first item that does not fit beside the overflow button, when not all fit.
    int fit = count;
    if (total > area.width()) {
        const int limit = area.width() - m_overflowHint.width();
        int end = 0; // of the last item that fits, and the spacing after it
        for (int i = 0; i < count; ++i) {
            const Item& item = m_items.at(i);
            if (!IsShown(item))
                continue;
            end += item.hint.width() + spacing;
            if (end > limit) {
                fit = i;
                break;
            }
        }
    }
    // Separators neither end the bar nor open the menu: those at the cut are hidden.
    const auto isGap = [this](int i) {
        return m_items.at(i).kind == Kind::Separator || !IsShown(m_items.at(i));
    };
    int barEnd = fit;
    if (fit < count) {
        while (barEnd > 0 && isGap(barEnd - 1))
            --barEnd;
    }
    int from = fit;
    while (from < count && isGap(from))
        ++from;
    SetOverflowFrom(from);

    int expanding = 0;
    for (int i = 0; i < barEnd; ++i) {
        if (IsShown(m_items.at(i)) && m_items.at(i).expanding)
            ++expanding;
    }
    int extra = from == count && expanding > 0 ? std::max(0, area.width() - total) : 0;

    int x = area.left();
    for (int i = 0; i < count; ++i) {
        const Item& item = m_items.at(i);
        QWidget* widget = item.widget;
        if (!widget || widget->parentWidget() != this)
            continue;
        if (i >= barEnd || !IsShown(item)) {
            if (!widget->isHidden())
                widget->hide();
            continue;
        }
        int width = item.hint.width();
        if (item.expanding && expanding > 0) {
            const int share = extra / expanding--;
            width += share;
            extra -= share;
        }
        const int height = item.growsVertically
            ? std::max(widget->minimumHeight(), std::min(area.height(), widget->maximumHeight()))
            : std::min(item.hint.height(), area.height());
        const QRect place(x, area.top() + (area.height() - height) / 2, width, height);
        const QRect geometry = QStyle::visualRect(layoutDirection(), rect(), place);
        if (widget->geometry() != geometry)
            widget->setGeometry(geometry);
        if (widget->isHidden())
            widget->show();
        x += width + spacing;
    }

    if (from < count) {
        const int height = std::min(area.height(), m_overflowButton->maximumHeight());
        const QRect place(area.right() + 1 - m_overflowHint.width(), area.top() + (area.height() - height) / 2,
                          m_overflowHint.width(), height);
        const QRect geometry = QStyle::visualRect(layoutDirection(), rect(), place);
        if (m_overflowButton->geometry() != geometry)
            m_overflowButton->setGeometry(geometry);
        if (m_overflowButton->isHidden())
            m_overflowButton->show();
    } else if (!m_overflowButton->isHidden()) {
        m_overflowButton->hide();
    }
    // Buttons hidden in the overflow may have changed unseen; an added button's action
    // follows it on the bar too.
    SyncProxies();
    m_inRelayout = false;
    // Last: a receiver may change the bar.
    if (m_overflowChanged) {
        m_overflowChanged = false;
        Q_EMIT OverflowChanged();
    }
}

void ToolBar::SetOverflowFrom(int from)
{
    if (from == m_overflowFrom)
        return;
    if (from < m_overflowFrom) {
        QAction* before = m_overflowFrom < m_items.size() ? m_items.at(m_overflowFrom).entry.data() : nullptr;
        for (int i = from; i < m_overflowFrom; ++i)
            MoveToMenu(m_items[i], before);
    } else {
        for (int i = m_overflowFrom; i < from; ++i)
            MoveToBar(m_items[i]);
    }
    m_overflowFrom = from;
    m_overflowChanged = true;
}

void ToolBar::MoveToMenu(Item& item, QAction* before)
{
    QAction* entry = EntryFor(item);
    if (!entry)
        return;
    if (item.kind == Kind::Custom)
        LetGoOfWidget(item); // released, a default widget is free for the menu to take
    else if (item.widget && !item.widget->isHidden())
        item.widget->hide();
    item.entry = entry;
    SyncProxy(item);
    m_overflowMenu->insertAction(before, entry);
}

void ToolBar::LetGoOfWidget(Item& item)
{
    if (!item.widget)
        return;
    disconnect(item.widget, &QObject::destroyed, this, &ToolBar::OnWidgetDestroyed);
    // A QWidgetAction's widget goes back to its action, as from a QToolBar; one in the
    // overflow menu has gone back already.
    if (item.kind != Kind::Custom)
        return;
    if (auto* widgetAction = qobject_cast<QWidgetAction*>(item.action.data()))
        widgetAction->releaseWidget(item.widget);
    item.widget = nullptr;
}

void ToolBar::MoveToBar(Item& item)
{
    if (item.entry) {
        // Cleared first: the proxy's changes below come back as ActionChanged.
        QAction* entry = item.entry;
        item.entry = nullptr;
        m_overflowMenu->removeAction(entry);
        if (item.proxy)
            item.proxy->setMenu(nullptr); // gives the menu its own menu action back
    }
    if (item.kind != Kind::Custom)
        return;
    auto* widgetAction = qobject_cast<QWidgetAction*>(item.action.data());
    QWidget* widget = widgetAction ? widgetAction->requestWidget(this) : nullptr;
    item.widget = widget;
    if (!widget)
        return;
    connect(widget, &QObject::destroyed, this, &ToolBar::OnWidgetDestroyed, Qt::UniqueConnection);
    widget->hide();
    MeasureItem(item);
}

QAction* ToolBar::EntryFor(Item& item)
{
    ToolBarButton* button = item.Button();
    if (!button)
        return item.action;
    // A menu the action does not carry goes into the overflow menu on a proxy.
    QMenu* menu = button->menu();
    if (!item.proxy && menu && (!item.action || item.action->menu() != menu))
        item.proxy = new QAction(this); // a submenu's title: nothing to trigger
    return item.proxy ? item.proxy : item.action;
}

void ToolBar::SyncProxy(const Item& item)
{
    ToolBarButton* button = item.Button();
    if (!item.proxy || !button)
        return;
    QAction* proxy = item.proxy;
    // Each setter that changes something reports it to the bar: only changes are set.
    proxy->setText(button->text());
    if (proxy->icon().cacheKey() != button->icon().cacheKey())
        proxy->setIcon(button->icon());
    proxy->setToolTip(button->toolTip());
    proxy->setEnabled(button->isEnabled());
    proxy->setCheckable(button->isCheckable());
    proxy->setChecked(button->isChecked());
    if (proxy != item.action)
        proxy->setVisible(!item.action || item.action->isVisible());
    // Only in the overflow menu: a menu's menu action is the last action given it.
    QMenu* menu = item.entry ? button->menu() : nullptr;
    if (proxy->menu() != menu)
        proxy->setMenu(menu);
}

void ToolBar::SyncProxies()
{
    for (const Item& item : qAsConst(m_items))
        SyncProxy(item);
}

void ToolBar::SetupButton(ToolBarButton* button, bool madeHere)
{
    button->setIconSize(GetIconSize());
    button->setToolButtonStyle(m_toolButtonStyle);
    if (madeHere)
        button->setFocusPolicy(Qt::NoFocus); // as QToolBar's buttons
    connect(button, &QToolButton::triggered, this, &ToolBar::ActionTriggered);
}

void ToolBar::ApplyIconSize()
{
    const QSize size = GetIconSize();
    m_overflowButton->setIconSize(size);
    for (const Item& item : qAsConst(m_items)) {
        if (ToolBarButton* button = item.Button())
            button->setIconSize(size);
    }
}

void ToolBar::ItemsChanged()
{
    m_measured = false;
    updateGeometry();
    Relayout();
}

void ToolBar::OnWidgetDestroyed(QObject* widget)
{
    // A button or a separator deleted from outside takes its item along; the action
    // stays the caller's. A QWidgetAction's item stays, empty, for its action.
    bool changed = false;
    for (int i = m_items.size() - 1; i >= 0; --i) {
        Item& item = m_items[i];
        // A widget's guards are cleared after it signals.
        if (item.widget && item.widget != widget)
            continue;
        item.widget = nullptr;
        if (item.kind == Kind::Custom)
            continue;
        QAction* ownAction = item.proxy == item.action ? item.action.data() : nullptr;
        RemoveItem(i);
        if (ownAction)
            removeAction(ownAction);
        changed = true;
    }
    if (changed)
        ItemsChanged();
}

void ToolBar::OnProxyTriggered()
{
    QObject* proxy = sender();
    const auto item = std::find_if(m_items.cbegin(), m_items.cend(),
                                   [proxy](const Item& item) { return item.proxy == proxy; });
    if (item == m_items.cend() || !item->Button())
        return;
    // A receiver of the click may change the bar: the items are looked at again after.
    item->Button()->click();
    SyncProxies();
}

} // namespace OrvantaQT
