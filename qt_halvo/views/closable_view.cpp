#include "closable_view_p.h"

#include "accessibility_factory_p.h"

#include <qt_halvo/styles/hover_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QAccessibleObject>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleOptionFocusRect>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QTreeView>

#include <utility>

namespace OrvantaQT {

namespace {

// Room between the button and the row's trailing end, and before its text.
constexpr int kMargin = 3;

bool IsPlainDelete(const QKeyEvent* event)
{
    return event->key() == Qt::Key_Delete && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

// The cell that stands for the row (its first shown column) and the row's whole extent.
QModelIndex RowOf(const QAbstractItemView* view, const QModelIndex& index, QRect* extent = nullptr)
{
    QModelIndex first;
    QRect row;
    if (!index.isValid())
        return first;
    for (int column = 0, count = index.model()->columnCount(index.parent()); column < count; ++column) {
        const QModelIndex cell = index.sibling(index.row(), column);
        const QRect rect = view->visualRect(cell);
        if (rect.isEmpty()) // a hidden column, or one a list does not show
            continue;
        if (!first.isValid())
            first = cell;
        row |= rect;
    }
    // A tree's row runs under every column, whether or not it has cells there.
    if (const auto* tree = qobject_cast<const QTreeView*>(view); tree && first.isValid()) {
        for (int column = 0; column < tree->header()->count(); ++column) {
            if (!tree->isColumnHidden(column))
                row |= QRect(tree->columnViewportPosition(column), row.top(), tree->columnWidth(column), row.height());
        }
    }
    if (extent)
        *extent = row;
    return first;
}

// The row at a point of the viewport; a tree's child row may have no cell in the column
// under the point, so its other columns are tried.
QModelIndex RowAt(const QAbstractItemView* view, const QPoint& point)
{
    QModelIndex index = view->indexAt(point);
    if (const auto* tree = qobject_cast<const QTreeView*>(view)) {
        for (int column = 0; !index.isValid() && column < tree->header()->count(); ++column) {
            if (!tree->isColumnHidden(column))
                index = view->indexAt(QPoint(tree->columnViewportPosition(column), point.y()));
        }
    }
    return RowOf(view, index);
}

// Whether the row is drawn with the alternate base: lists alternate by row, trees by the
// rows shown above it.
bool IsAlternate(const QAbstractItemView* view, const QModelIndex& index, const QRect& row)
{
    if (!view->alternatingRowColors())
        return false;
    const auto* tree = qobject_cast<const QTreeView*>(view);
    if (!tree)
        return index.row() & 1;
    int above = 0;
    const QModelIndex top = RowAt(view, QPoint(row.left(), 0));
    for (QModelIndex at = index; at.isValid() && at != top; at = RowOf(view, tree->indexAbove(at)))
        ++above;
    const QScrollBar* bar = tree->verticalScrollBar();
    const int first = tree->verticalScrollMode() == QAbstractItemView::ScrollPerItem
        ? bar->value()
        : bar->value() / std::max(1, row.height());
    return (first + above) & 1;
}

class CloseButtonAccessible : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    explicit CloseButtonAccessible(ClosableViewCloseButton* button)
        : QAccessibleObject(button)
    {
    }

    ClosableViewHelper* Helper() const
    {
        const auto* button = static_cast<ClosableViewCloseButton*>(object());
        return button ? button->Helper() : nullptr;
    }

    bool isValid() const override { return QAccessibleObject::isValid() && Helper() && Helper()->View(); }
    QAccessible::Role role() const override { return QAccessible::Button; }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isValid() ? Helper()->ButtonName() : QString();
    }
    QRect rect() const override { return isValid() ? Helper()->ScreenRect() : QRect(); }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        ClosableViewHelper* helper = Helper();
        if (!isValid() || !helper->CloseButtonIndex().isValid()) {
            state.invisible = true;
            return state;
        }
        state.disabled = !helper->View()->isEnabled();
        state.hotTracked = helper->IsHovered();
        state.pressed = helper->IsSunken();
        return state;
    }

    QAccessibleInterface* parent() const override
    {
        return isValid() ? QAccessible::queryAccessibleInterface(Helper()->View()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override
    {
        if (name == pressAction() && isValid())
            Helper()->PressButton();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
};

} // namespace

ClosableViewCloseButton::ClosableViewCloseButton(ClosableViewHelper* helper, QAbstractItemView* view)
    : QObject(view)
    , m_helper(helper)
{
    setObjectName(QStringLiteral("CloseButton"));
}

ClosableViewHelper::ClosableViewHelper(QAbstractItemView* view, Hooks hooks)
    : QObject(view)
    , m_view(view)
    , m_hooks(hooks)
    , m_button(new ClosableViewCloseButton(this, view))
{
    FollowViewport();
    view->installEventFilter(this);
}

void ClosableViewHelper::FollowViewport()
{
    QWidget* viewport = m_view ? m_view->viewport() : nullptr;
    if (viewport == m_viewport)
        return;
    if (m_viewport)
        m_viewport->removeEventFilter(this);
    m_viewport = viewport;
    m_pointerInside = m_pressing = m_middlePressing = false;
    if (!viewport)
        return;
    // Moves without a button pressed tell which row is hovered (the view follows them too).
    viewport->setMouseTracking(true);
    viewport->installEventFilter(this);
    Sync();
}

ClosableViewHelper::~ClosableViewHelper()
{
    if (m_viewport)
        m_viewport->removeEventFilter(this);
    if (m_view)
        m_view->removeEventFilter(this);
    delete m_button;
}

QModelIndex ClosableViewHelper::CloseButtonIndex()
{
    Sync();
    return m_place.index;
}

QRect ClosableViewHelper::CloseButtonRect()
{
    Sync();
    return m_place.button;
}

QRect ClosableViewHelper::ScreenRect()
{
    const QRect button = CloseButtonRect();
    return button.isEmpty() || !m_viewport ? QRect() : QRect(m_viewport->mapToGlobal(button.topLeft()), button.size());
}

QString ClosableViewHelper::ButtonName()
{
    const QModelIndex index = CloseButtonIndex();
    const QString text = index.data(Qt::DisplayRole).toString();
    return text.isEmpty() ? tr("Close") : tr("Close %1").arg(text);
}

void ClosableViewHelper::PressButton()
{
    const QModelIndex index = CloseButtonIndex();
    if (!index.isValid()) {
        QTH_LOG_WARNING("ClosableView: the close button was pressed while no row shows it; nothing is closed");
        return;
    }
    if (RequestClose(index))
        Sync();
}

void ClosableViewHelper::Rewire()
{
    QAbstractItemModel* model = m_view->model();
    QItemSelectionModel* selection = m_view->selectionModel();
    if (model == m_model && selection == m_selectionModel)
        return;
    for (const QMetaObject::Connection& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_model = model;
    m_selectionModel = selection;
    if (model) {
        // Rows that come and go move others under the pointer; once for many changes.
        const auto later = [this] {
            if (!std::exchange(m_syncQueued, true))
                QMetaObject::invokeMethod(this, [this] { m_syncQueued = false; Sync(); }, Qt::QueuedConnection);
        };
        m_connections << connect(model, &QAbstractItemModel::rowsInserted, this, later)
                      << connect(model, &QAbstractItemModel::rowsRemoved, this, later)
                      << connect(model, &QAbstractItemModel::rowsMoved, this, later)
                      << connect(model, &QAbstractItemModel::columnsInserted, this, later)
                      << connect(model, &QAbstractItemModel::columnsRemoved, this, later)
                      << connect(model, &QAbstractItemModel::layoutChanged, this, later)
                      << connect(model, &QAbstractItemModel::modelReset, this, later);
        m_connections << connect(model, &QAbstractItemModel::dataChanged, this,
                                 [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                                     const QModelIndex& shown = m_place.index;
                                     if (shown.isValid() && shown.parent() == topLeft.parent()
                                         && shown.row() >= topLeft.row() && shown.row() <= bottomRight.row())
                                         Announce(QAccessible::NameChanged);
                                 });
    }
    if (selection)
        m_connections << connect(selection, &QItemSelectionModel::currentChanged, this, [this] { Sync(); });
}

ClosableViewHelper::Place ClosableViewHelper::Target()
{
    Place place;
    QAbstractItemView* view = m_view;
    if (!view || !view->model() || !view->isEnabled() || !view->isVisible())
        return place;
    QModelIndex index;
    if (m_pressing) {
        index = m_pressed; // the button stays on the row pressed on
    } else {
        // Rows removed a moment ago are laid out on a timer: the row under the pointer is
        // the one after it.
        m_hooks.layoutNow(view);
        if (m_pointerInside)
            index = RowAt(view, m_pointer);
        if (!index.isValid() && view->hasFocus())
            index = view->currentIndex();
    }
    QRect row;
    index = RowOf(view, index, &row);
    const QRect area = m_viewport->rect();
    row.setLeft(std::max(row.left(), area.left()));
    row.setRight(std::min(row.right(), area.right()));
    if (!index.isValid() || !row.intersects(area))
        return place;
    QStyle* style = view->style();
    const QSize size(std::min(style->pixelMetric(QStyle::PM_TabCloseIndicatorWidth, nullptr, view), row.height()),
                     std::min(style->pixelMetric(QStyle::PM_TabCloseIndicatorHeight, nullptr, view), row.height()));
    const int x = view->isRightToLeft() ? row.left() + kMargin : row.right() - kMargin - size.width() + 1;
    place.index = index;
    place.row = row;
    place.button = QRect(QPoint(x, row.top() + (row.height() - size.height()) / 2), size);
    return place;
}

void ClosableViewHelper::Sync()
{
    if (!m_view || !m_viewport)
        return;
    Rewire();
    const Place next = Target();
    const Place previous = std::exchange(m_place, next);
    const bool hovered = m_pointerInside && next.button.contains(m_pointer);
    const bool sunken = hovered && m_pressing;
    const bool wasShown = !previous.button.isNull();
    const bool shown = !next.button.isNull();
    const bool moved = previous.index != next.index || (wasShown && !previous.index.isValid());
    const bool shifted = previous.button != next.button;

    const auto wholeRow = [this](const QRect& row) { return QRect(0, row.top(), m_viewport->width(), row.height()); };
    if (moved || shifted) {
        if (wasShown)
            m_viewport->update(wholeRow(previous.row));
        if (shown)
            m_viewport->update(wholeRow(next.row));
    } else if (hovered != m_hovered || sunken != m_sunken) {
        m_viewport->update(next.button);
    }
    m_hovered = hovered;
    m_sunken = sunken;

    // Views drop their hovered row when rows go and find it again only on the next move.
    if (moved && m_pointerInside)
        QCoreApplication::postEvent(m_viewport, new QHoverEvent(QEvent::HoverMove, m_pointer, m_pointer));

    if (!wasShown && shown) {
        Announce(QAccessible::ObjectShow);
        Announce(QAccessible::NameChanged);
        Announce(QAccessible::LocationChanged);
    } else if (wasShown && !shown) {
        Announce(QAccessible::ObjectHide);
    } else if (shown && moved) {
        Announce(QAccessible::NameChanged);
        Announce(QAccessible::LocationChanged);
    } else if (shown && shifted) {
        Announce(QAccessible::LocationChanged);
    }
}

void ClosableViewHelper::Announce(QAccessible::Event type)
{
    QAccessibleEvent event(m_button, type);
    QAccessible::updateAccessibility(&event);
}

bool ClosableViewHelper::RequestClose(const QModelIndex& index)
{
    const QPointer<ClosableViewHelper> alive(this);
    m_hooks.requestClose(m_view, index);
    return alive && m_view;
}

void ClosableViewHelper::Paint(QPainter* painter)
{
    Sync();
    if (m_place.button.isNull())
        return;
    QAbstractItemView* view = m_view;
    QStyle* style = view->style();
    const QRect& row = m_place.row;
    const QRect& button = m_place.button;
    const bool selected = view->selectionModel() && view->selectionModel()->isSelected(m_place.index);

    // The button's room is the row's background again, so that no text shows under it;
    // a pixel is left at the row's edges for the focus frame.
    QStyleOptionViewItem item;
    item.initFrom(view);
    item.rect = row;
    item.state &= ~QStyle::State_HasFocus;
    item.state.setFlag(QStyle::State_Selected, selected);
    item.state.setFlag(QStyle::State_MouseOver, m_pointerInside && row.contains(m_pointer));
    item.features.setFlag(QStyleOptionViewItem::Alternate, IsAlternate(view, m_place.index, row));
    item.backgroundBrush = qvariant_cast<QBrush>(m_place.index.data(Qt::BackgroundRole));
    const QRect room = view->isRightToLeft()
        ? QRect(QPoint(row.left() + 1, row.top() + 1), QPoint(button.right() + kMargin, row.bottom() - 1))
        : QRect(QPoint(button.left() - kMargin, row.top() + 1), QPoint(row.right() - 1, row.bottom() - 1));
    painter->save();
    painter->setClipRect(room);
    painter->fillRect(room, item.palette.brush(item.features & QStyleOptionViewItem::Alternate ? QPalette::AlternateBase
                                                                                               : QPalette::Base));
    style->drawPrimitive(QStyle::PE_PanelItemViewRow, &item, painter, view);
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, view);
    // The focus frame of the current cell, as item views draw it, where it runs under the room.
    const QModelIndex current = view->currentIndex();
    if (view->hasFocus() && current.isValid() && view->visualRect(current).intersects(room)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(item);
        focus.rect = view->visualRect(current);
        focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
        focus.backgroundColor = item.palette.color(selected ? QPalette::Highlight : QPalette::Window);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, view);
    }
    painter->restore();

    QStyleOption option;
    option.initFrom(view);
    option.rect = button;
    option.state &= ~QStyle::State_HasFocus;
    option.state |= QStyle::State_AutoRaise;
    option.state.setFlag(QStyle::State_MouseOver, m_hovered);
    option.state.setFlag(QStyle::State_Raised, m_hovered && !m_sunken);
    option.state.setFlag(QStyle::State_Sunken, m_sunken);
    option.state.setFlag(QStyle::State_Selected, selected);
    style->drawPrimitive(QStyle::PE_IndicatorTabClose, &option, painter, view);
}

bool ClosableViewHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_view || !m_viewport)
        return false;
    if (watched == m_viewport)
        return ViewportEvent(event);
    if (watched == m_view)
        return ViewEvent(event);
    return false;
}

bool ClosableViewHelper::ViewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Enter:
        m_pointerInside = true;
        m_pointer = static_cast<QEnterEvent*>(event)->pos();
        Sync();
        return false;
    case QEvent::Leave:
        if (PointerStillOver(m_viewport))
            return false;
        m_pointerInside = false;
        Sync();
        return false;
    case QEvent::MouseMove: {
        const QPoint pos = static_cast<QMouseEvent*>(event)->pos();
        m_pointerInside = m_viewport->rect().contains(pos);
        m_pointer = pos;
        Sync();
        return m_pressing; // a press on the button selects nothing and drags nothing
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_pointerInside = true;
        m_pointer = mouse->pos();
        Sync();
        if (mouse->button() == Qt::LeftButton && m_place.button.contains(mouse->pos())) {
            m_pressing = true;
            m_pressed = m_place.index;
            Sync();
            return true;
        }
        if (mouse->button() == Qt::MiddleButton) {
            m_middlePressed = RowAt(m_view, mouse->pos());
            m_middlePressing = m_middlePressed.isValid();
            return m_middlePressing;
        }
        return m_pressing || m_middlePressing;
    }
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_pointer = mouse->pos();
        m_pointerInside = m_viewport->rect().contains(m_pointer);
        const bool left = mouse->button() == Qt::LeftButton && std::exchange(m_pressing, false);
        const bool middle = mouse->button() == Qt::MiddleButton && std::exchange(m_middlePressing, false);
        const QPersistentModelIndex pressed = left ? std::exchange(m_pressed, {}) : middle ? std::exchange(m_middlePressed, {}) : QPersistentModelIndex();
        Sync();
        if (!left && !middle)
            return false;
        const bool close = pressed.isValid()
            && (left ? m_place.index == pressed && m_place.button.contains(m_pointer) : RowAt(m_view, m_pointer) == pressed);
        // The view may go with the row: nothing of it is touched after that.
        if (close && RequestClose(pressed))
            Sync();
        return true;
    }
    default:
        return false;
    }
}

bool ClosableViewHelper::ViewEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::EnabledChange:
    case QEvent::Hide:
    case QEvent::Show:
        Sync();
        return false;
    case QEvent::ShortcutOverride: {
        // Delete closes the current row before any shortcut of the window gets it.
        auto* key = static_cast<QKeyEvent*>(event);
        if (IsPlainDelete(key) && m_view->currentIndex().isValid()) {
            key->accept();
            return true;
        }
        return false;
    }
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex current = RowOf(m_view, m_view->currentIndex());
        if (!IsPlainDelete(key) || !current.isValid())
            return false;
        if (RequestClose(current))
            Sync();
        return true;
    }
    default:
        return false;
    }
}

QAccessibleInterface* ClosableViewAccessible(const QString& className, QObject* object)
{
    if (object && className == QLatin1String("OrvantaQT::ClosableViewCloseButton"))
        return new CloseButtonAccessible(static_cast<ClosableViewCloseButton*>(object));
    return nullptr;
}

} // namespace OrvantaQT
