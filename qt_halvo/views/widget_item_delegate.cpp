#include <qt_halvo/views/widget_item_delegate.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace OrvantaQT {

namespace {

// A click on a widget of a row is the widget's, not the row's, unless the host says so.
const QList<QEvent::Type> kDefaultBlocked{QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                          QEvent::MouseButtonDblClick};
// Where a widget keeps the event types its host blocked: set from CreateItemWidgets(), before
// the widget belongs to a set.
constexpr char kBlockedProperty[] = "_qth_blockedEventTypes";
// Sets kept hidden for rows about to come into view, beyond those the view shows.
constexpr int kSpareSets = 4;
// Rows tried for a widget to give the focus to, and indexes stepped over looking for the
// next one this delegate paints: bounded, so that a huge model with no such row cannot hang.
constexpr int kRowsTried = 32;
constexpr int kStepsTried = 4096;

bool IsPointer(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease
        || type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

bool IsKey(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::KeyRelease;
}

// What an input event looks like as it goes from a widget up to its parents: a copy per
// parent for the mouse and the wheel, the same object for keys.
struct InputMark
{
    QEvent::Type type = QEvent::None;
    ulong timestamp = 0;
    QPoint globalPos;
    int detail = 0;
    const QEvent* event = nullptr;

    bool operator==(const InputMark& other) const
    {
        return type == other.type && timestamp == other.timestamp && globalPos == other.globalPos
            && detail == other.detail && event == other.event;
    }
};

InputMark MarkOf(const QEvent* event)
{
    const QEvent::Type type = event->type();
    if (IsPointer(type)) {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        return {type, mouse->timestamp(), mouse->globalPos(), int(mouse->buttons()), nullptr};
    }
    if (type == QEvent::Wheel) {
        const auto* wheel = static_cast<const QWheelEvent*>(event);
        return {type, wheel->timestamp(), wheel->globalPosition().toPoint(), 0, nullptr};
    }
    if (IsKey(type)) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        return {type, key->timestamp(), QPoint(), key->key(), event};
    }
    return {};
}

bool CanTabTo(const QWidget* widget)
{
    return widget && !widget->isHidden() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus);
}

// Whether index is, or lies under, one of the rows (or columns) first to last of parent.
bool Within(QModelIndex index, const QModelIndex& parent, int first, int last, bool rows)
{
    for (; index.isValid(); index = index.parent()) {
        const int at = rows ? index.row() : index.column();
        if (index.parent() == parent && at >= first && at <= last)
            return true;
    }
    return false;
}

// The widgets of one index, shown for it or kept for the next one.
struct WidgetSet
{
    QVector<QPointer<QWidget>> widgets;
    QVector<QPoint> relative; // each widget's place in the row, as the host last put it
    QPersistentModelIndex index;
    bool inUse = false;
    bool dirty = true;
    QRect rect;    // the index's rect in the viewport when the widgets were placed
    QPoint anchor; // the first widget's position then: a scroll of the viewport moves it

    QList<QWidget*> List() const
    {
        QList<QWidget*> list;
        for (const QPointer<QWidget>& widget : widgets)
            list << widget.data();
        return list;
    }
    QWidget* First() const { return widgets.isEmpty() ? nullptr : widgets.first().data(); }
    QPoint Offset() const { return First() ? rect.topLeft() + First()->pos() - anchor : rect.topLeft(); }
    // The widgets are where they belong for the index at rect.
    void Placed(const QRect& at)
    {
        rect = at;
        anchor = First() ? First()->pos() : QPoint();
    }
    bool HasFocus() const
    {
        const QWidget* focus = QApplication::focusWidget();
        for (const QPointer<QWidget>& widget : widgets) {
            if (widget && focus && (widget == focus || widget->isAncestorOf(focus)))
                return true;
        }
        return false;
    }
    QWidget* Edge(bool first) const
    {
        for (int i = 0; i < widgets.size(); ++i) {
            QWidget* widget = widgets.at(first ? i : widgets.size() - 1 - i);
            if (CanTabTo(widget))
                return widget;
        }
        return nullptr;
    }
};

} // namespace

class WidgetItemDelegate::Private : public QObject
{
public:
    explicit Private(WidgetItemDelegate* owner)
        : q(owner)
    {
        trim.setSingleShot(true);
        connect(&trim, &QTimer::timeout, this, &Private::Trim);
    }
    ~Private() override
    {
        owners.clear();
        if (viewport)
            viewport->removeEventFilter(this);
        for (const auto& set : sets) {
            for (const QPointer<QWidget>& widget : set->widgets)
                delete widget.data();
        }
    }

    void Attach();
    void Place(const QModelIndex& index, const QStyleOptionViewItem& option);
    void Update(WidgetSet* set, const QStyleOptionViewItem& option);
    WidgetSet* NewSet(const QModelIndex& index);
    WidgetSet* SetOf(const QModelIndex& index) const;
    WidgetSet* Owner(QObject* object, QWidget** top) const;
    void Sweep();
    void Prepare(const QRect& area);
    const WidgetSet* Entry(bool forward) const;
    bool BacktabIn(const QFocusEvent* event, const QWidget* landed);
    void Release(WidgetSet* set);
    void ReleaseWhere(const std::function<bool(const QModelIndex&)>& removed);
    void Discard(WidgetSet* set);
    void Trim();
    bool Paints(const QModelIndex& index) const;
    QModelIndex NextRow(const QModelIndex& index, bool forward) const;
    QModelIndex Step(QModelIndex at, bool forward) const;
    bool TabFrom(const WidgetSet* set, QWidget* top, bool forward);
    bool Blocked(QWidget* watched, QWidget* top, QEvent::Type type) const;
    bool Propagated(const QObject* watched, const QEvent* event) const;
    bool HostedEvent(QWidget* watched, QEvent* event);
    bool ViewportEvent(QEvent* event);
    bool ViewEvent(QEvent* event);
    bool eventFilter(QObject* watched, QEvent* event) override;

    WidgetItemDelegate* q;
    QPointer<QAbstractItemView> view;
    QPointer<QWidget> viewport;
    QPointer<QAbstractItemModel> model;
    QVector<QMetaObject::Connection> connections;
    std::vector<std::unique_ptr<WidgetSet>> sets;
    QHash<const QObject*, WidgetSet*> owners; // the widgets CreateItemWidgets() gave
    QTimer trim;
    InputMark handled; // the input event last dealt with at a widget of a set
    bool forwarding = false;
    bool pressForwarded = false;
    bool updating = false;
    bool tabbing = false; // the focus moves from one widget of a set to another by Tab
    bool loggedNull = false;
    bool loggedTwice = false;
};

// Follows the view's model and viewport, which the view may replace at any time: the sets
// of the old ones are of no use.
void WidgetItemDelegate::Private::Attach()
{
    if (!view)
        return;
    QWidget* port = view->viewport();
    if (port != viewport) {
        while (!sets.empty())
            Discard(sets.back().get());
        if (viewport)
            viewport->removeEventFilter(this);
        viewport = port;
        if (port) {
            port->installEventFilter(this);
            // Its children, the widgets, go with it.
            connect(port, &QObject::destroyed, this, [this] {
                owners.clear();
                sets.clear();
            });
        }
    }
    QAbstractItemModel* current = view->model();
    if (current == model)
        return;
    for (const QMetaObject::Connection& connection : qAsConst(connections))
        disconnect(connection);
    connections.clear();
    ReleaseWhere([](const QModelIndex&) { return true; });
    model = current;
    if (!current)
        return;
    connections << connect(current, &QAbstractItemModel::dataChanged, this,
                           [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                               for (const auto& set : sets) {
                                   const QModelIndex& index = set->index;
                                   if (set->inUse && index.parent() == topLeft.parent() && index.row() >= topLeft.row()
                                       && index.row() <= bottomRight.row() && index.column() >= topLeft.column()
                                       && index.column() <= bottomRight.column())
                                       set->dirty = true;
                               }
                           });
    connections << connect(current, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                           [this](const QModelIndex& parent, int first, int last) {
                               ReleaseWhere([&](const QModelIndex& index) { return Within(index, parent, first, last, true); });
                           });
    connections << connect(current, &QAbstractItemModel::columnsAboutToBeRemoved, this,
                           [this](const QModelIndex& parent, int first, int last) {
                               ReleaseWhere([&](const QModelIndex& index) { return Within(index, parent, first, last, false); });
                           });
    connections << connect(current, &QAbstractItemModel::modelAboutToBeReset, this,
                           [this] { ReleaseWhere([](const QModelIndex&) { return true; }); });
}

// The view paints index at option.rect: its set goes there, filled for it when it is new
// there, its data changed or its size did. A scroll of the viewport moved the widgets along
// already.
void WidgetItemDelegate::Private::Place(const QModelIndex& index, const QStyleOptionViewItem& option)
{
    if (updating)
        return;
    Attach();
    if (!index.isValid() || !model || index.model() != model)
        return;
    WidgetSet* set = SetOf(index);
    if (!set) {
        for (const auto& spare : sets) {
            if (!spare->inUse) {
                set = spare.get();
                break;
            }
        }
        if (!set)
            set = NewSet(index);
        if (!set)
            return;
        set->index = index;
        set->inUse = true;
        set->dirty = true;
    }
    if (!set->dirty && set->rect.size() == option.rect.size() && set->Offset() == option.rect.topLeft()) {
        set->Placed(option.rect);
        return;
    }
    Update(set, option);
}

void WidgetItemDelegate::Private::Update(WidgetSet* set, const QStyleOptionViewItem& option)
{
    const QPoint to = option.rect.topLeft();
    QVector<QPoint> before;
    for (int i = 0; i < set->widgets.size(); ++i) {
        QWidget* widget = set->widgets.at(i);
        if (widget) {
            widget->move(set->relative.at(i) + to);
            widget->show();
        }
        before << (widget ? widget->pos() : QPoint());
    }
    // The host places the widgets in the row's coordinates, or leaves them where they are.
    updating = true;
    q->UpdateItemWidgets(set->List(), option, set->index);
    updating = false;
    for (int i = 0; i < set->widgets.size(); ++i) {
        QWidget* widget = set->widgets.at(i);
        if (widget && widget->pos() != before.at(i)) {
            set->relative[i] = widget->pos();
            widget->move(widget->pos() + to);
        }
    }
    set->Placed(option.rect);
    set->dirty = false;
}

WidgetSet* WidgetItemDelegate::Private::NewSet(const QModelIndex& index)
{
    updating = true;
    const QList<QWidget*> made = q->CreateItemWidgets(index);
    updating = false;
    if (!viewport)
        return nullptr;
    auto set = std::make_unique<WidgetSet>();
    for (QWidget* widget : made) {
        if (!widget) {
            if (!std::exchange(loggedNull, true))
                QTH_LOG_WARNING("WidgetItemDelegate: CreateItemWidgets gave a null widget; the row goes on without it");
            continue;
        }
        if (owners.contains(widget) || set->widgets.contains(widget)) {
            if (!std::exchange(loggedTwice, true))
                QTH_LOG_WARNING("WidgetItemDelegate: CreateItemWidgets gave a widget that is in a row already; it stays there");
            continue;
        }
        if (widget->parentWidget() != viewport)
            widget->setParent(viewport);
        widget->installEventFilter(this);
        for (QWidget* child : widget->findChildren<QWidget*>())
            child->installEventFilter(this);
        set->widgets << widget;
        set->relative << widget->pos();
        owners.insert(widget, set.get());
    }
    sets.push_back(std::move(set));
    return sets.back().get();
}

WidgetSet* WidgetItemDelegate::Private::SetOf(const QModelIndex& index) const
{
    for (const auto& set : sets) {
        if (set->inUse && set->index == index)
            return set.get();
    }
    return nullptr;
}

// The set that object is (or is inside) a widget of, and that widget.
WidgetSet* WidgetItemDelegate::Private::Owner(QObject* object, QWidget** top) const
{
    for (; object && object != viewport; object = object->parent()) {
        if (WidgetSet* set = owners.value(object)) {
            if (top)
                *top = static_cast<QWidget*>(object);
            return set;
        }
    }
    return nullptr;
}

// Before the viewport paints: the sets of the indexes that went out of sight (scrolled
// away, hidden, removed, painted by another delegate) are hidden and kept for others.
void WidgetItemDelegate::Private::Sweep()
{
    Attach();
    if (!view || !viewport)
        return;
    const QRect area = viewport->rect();
    for (const auto& set : sets) {
        if (set->inUse
            && (!set->index.isValid() || set->index.model() != model || view->itemDelegate(set->index) != q
                || !view->visualRect(set->index).intersects(area)))
            Release(set.get());
    }
}

// Before the view paints area: the sets of the indexes it covers, made, filled and placed,
// so that the frame shows each row with its widgets (the view places nothing outside area).
void WidgetItemDelegate::Private::Prepare(const QRect& area)
{
    if (!view || !viewport || !model || area.isEmpty())
        return;
    QModelIndex at;
    for (int y = area.top(); y <= area.bottom() && !at.isValid(); ++y) {
        at = view->indexAt(QPoint(area.left(), y));
        if (!at.isValid())
            at = view->indexAt(QPoint(area.center().x(), y));
    }
    if (!at.isValid())
        return;
    at = at.sibling(at.row(), 0);
    if (!Paints(at))
        at = Step(at, true);
    QStyleOptionViewItem option;
    option.initFrom(view);
    option.state &= ~QStyle::State_HasFocus;
    option.widget = view;
    const QItemSelectionModel* selection = view->selectionModel();
    for (int steps = 0; at.isValid() && steps < kStepsTried; ++steps, at = Step(at, true)) {
        const QRect rect = view->visualRect(at);
        if (rect.top() > area.bottom())
            break;
        if (!rect.intersects(area))
            continue;
        QStyleOptionViewItem cell = option;
        cell.rect = rect;
        if (selection && selection->isSelected(at))
            cell.state |= QStyle::State_Selected;
        if (!(model->flags(at) & Qt::ItemIsEnabled))
            cell.state &= ~QStyle::State_Enabled;
        Place(at, cell);
    }
}

void WidgetItemDelegate::Private::Release(WidgetSet* set)
{
    // Hiding the focused widget would hand the focus on to some other row's widget.
    if (view && set->HasFocus())
        view->setFocus(Qt::OtherFocusReason);
    for (const QPointer<QWidget>& widget : set->widgets) {
        if (widget)
            widget->hide();
    }
    set->inUse = false;
    set->index = QPersistentModelIndex();
    set->dirty = true;
    const auto spare = std::count_if(sets.begin(), sets.end(), [](const auto& each) { return !each->inUse; });
    if (spare > kSpareSets)
        trim.start(0);
}

void WidgetItemDelegate::Private::ReleaseWhere(const std::function<bool(const QModelIndex&)>& removed)
{
    for (const auto& set : sets) {
        if (set->inUse && removed(set->index))
            Release(set.get());
    }
}

void WidgetItemDelegate::Private::Discard(WidgetSet* set)
{
    if (view && set->HasFocus())
        view->setFocus(Qt::OtherFocusReason);
    for (const QPointer<QWidget>& widget : set->widgets) {
        owners.remove(widget.data());
        if (widget) {
            widget->hide();
            widget->deleteLater();
        }
    }
    sets.erase(std::find_if(sets.begin(), sets.end(), [set](const auto& each) { return each.get() == set; }));
}

void WidgetItemDelegate::Private::Trim()
{
    int spare = 0;
    for (std::size_t i = 0; i < sets.size();) {
        if (!sets[i]->inUse && ++spare > kSpareSets)
            Discard(sets[i].get());
        else
            ++i;
    }
}

bool WidgetItemDelegate::Private::Paints(const QModelIndex& index) const
{
    if (!index.isValid() || view->itemDelegate(index) != q)
        return false;
    if (const auto* list = qobject_cast<const QListView*>(view))
        return index.column() == list->modelColumn() && !list->isRowHidden(index.row());
    if (const auto* table = qobject_cast<const QTableView*>(view))
        return !table->isColumnHidden(index.column()) && !table->isRowHidden(index.row());
    if (const auto* tree = qobject_cast<const QTreeView*>(view))
        return !tree->isColumnHidden(index.column()) && !tree->isRowHidden(index.row(), index.parent());
    return true;
}

QModelIndex WidgetItemDelegate::Private::NextRow(const QModelIndex& index, bool forward) const
{
    if (const auto* tree = qobject_cast<const QTreeView*>(view))
        return forward ? tree->indexBelow(index) : tree->indexAbove(index);
    return index.sibling(index.row() + (forward ? 1 : -1), index.column());
}

// The index after (or before) at, across and then down, that this delegate paints.
QModelIndex WidgetItemDelegate::Private::Step(QModelIndex at, bool forward) const
{
    for (int step = 0; step < kStepsTried && at.isValid(); ++step) {
        int column = at.column() + (forward ? 1 : -1);
        if (column < 0 || column >= model->columnCount(at.parent())) {
            at = NextRow(at, forward);
            if (!at.isValid())
                break;
            column = forward ? 0 : model->columnCount(at.parent()) - 1;
        }
        at = at.sibling(at.row(), column);
        if (Paints(at))
            return at;
    }
    return QModelIndex();
}

// Tab and Backtab from a widget of a set: the next widget of the set, else the first (last)
// of the next index's, scrolled into view; past the last one the focus leaves the view.
bool WidgetItemDelegate::Private::TabFrom(const WidgetSet* set, QWidget* top, bool forward)
{
    const Qt::FocusReason reason = forward ? Qt::TabFocusReason : Qt::BacktabFocusReason;
    const int step = forward ? 1 : -1;
    for (int i = set->widgets.indexOf(top) + step; i >= 0 && i < set->widgets.size(); i += step) {
        if (CanTabTo(set->widgets.at(i))) {
            const QScopedValueRollback<bool> steering(tabbing, true);
            set->widgets.at(i)->setFocus(reason);
            return true;
        }
    }
    QModelIndex index = set->index;
    for (int rows = 0; rows < kRowsTried && model && view && viewport; ++rows) {
        index = Step(index, forward);
        if (!index.isValid())
            break;
        view->scrollTo(index);
        viewport->repaint(view->visualRect(index)); // places its set now
        const WidgetSet* next = SetOf(index);
        if (QWidget* widget = next ? next->Edge(forward) : nullptr) {
            const QScopedValueRollback<bool> steering(tabbing, true);
            widget->setFocus(reason);
            return true;
        }
    }
    if (!view)
        return false;
    if (forward) {
        for (QWidget* widget = view->nextInFocusChain(); widget && widget != view; widget = widget->nextInFocusChain()) {
            if (!view->isAncestorOf(widget) && widget->isVisible() && CanTabTo(widget)) {
                widget->setFocus(reason);
                return true;
            }
        }
    }
    const QScopedValueRollback<bool> steering(tabbing, true);
    view->setFocus(reason);
    return true;
}

bool WidgetItemDelegate::Private::Blocked(QWidget* watched, QWidget* top, QEvent::Type type) const
{
    for (QWidget* widget = watched; widget; widget = widget->parentWidget()) {
        const QVariant types = widget->property(kBlockedProperty);
        if (types.isValid())
            return types.value<QList<int>>().contains(type);
        if (widget == top)
            break;
    }
    return kDefaultBlocked.contains(type);
}

// Whether the event is one dealt with already at a widget below watched, on its way up.
bool WidgetItemDelegate::Private::Propagated(const QObject* watched, const QEvent* event) const
{
    if (!(MarkOf(event) == handled))
        return false;
    return IsKey(event->type()) ? watched != QApplication::focusWidget() : !event->spontaneous();
}

bool WidgetItemDelegate::Private::HostedEvent(QWidget* watched, QEvent* event)
{
    QWidget* top = nullptr;
    WidgetSet* set = Owner(watched, &top);
    if (!set)
        return false;
    const QEvent::Type type = event->type();
    if (type == QEvent::FocusIn) {
        // Backtab from a widget after the view walks the focus chain to whichever widget was
        // made last; Qt's views come back to the current index instead.
        if (BacktabIn(static_cast<QFocusEvent*>(event), top))
            return false;
        // A click that focuses a widget changes the current index only through the press.
        if (set->inUse && view && view->selectionModel()
            && static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason && view->currentIndex() != set->index)
            view->selectionModel()->setCurrentIndex(set->index, QItemSelectionModel::NoUpdate);
        return false;
    }
    if (type == QEvent::KeyPress && set->inUse) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            if (key->key() == Qt::Key_Backtab || (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier)))
                return TabFrom(set, top, false);
            if (key->key() == Qt::Key_Tab)
                return TabFrom(set, top, true);
        }
    }
    const InputMark mark = MarkOf(event);
    if (mark.type == QEvent::None || Propagated(watched, event))
        return false;
    const bool blocked = Blocked(watched, top, type);
    if (!IsPointer(type)) {
        if (blocked)
            handled = mark;
        return false;
    }
    // The mouse goes to the view only through here, so that the parts of a gesture the
    // widget lets pass do not come twice and a blocked press is not followed by the rest.
    handled = mark;
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    bool forward = !blocked;
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)
        pressForwarded = forward;
    else if (type == QEvent::MouseButtonRelease)
        forward = forward && std::exchange(pressForwarded, false);
    else if (mouse->buttons() != Qt::NoButton)
        forward = forward && pressForwarded;
    if (!forward || !viewport)
        return false;
    QMouseEvent copy(type, viewport->mapFromGlobal(mouse->globalPos()), mouse->windowPos(), mouse->screenPos(),
                     mouse->button(), mouse->buttons(), mouse->modifiers(), mouse->source());
    copy.setTimestamp(mouse->timestamp());
    const QPointer<QWidget> alive(watched);
    forwarding = true;
    QCoreApplication::sendEvent(viewport, &copy);
    forwarding = false;
    return !alive;
}

bool WidgetItemDelegate::Private::ViewportEvent(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::Paint) {
        Sweep();
        Prepare(static_cast<QPaintEvent*>(event)->rect() & viewport->rect());
    } else if (type == QEvent::ChildRemoved) {
        // The viewport deleting its children sends none of these: the host deleted (or took)
        // a widget of a set, which is made again for its index.
        const QObject* child = static_cast<QChildEvent*>(event)->child();
        if (WidgetSet* set = owners.value(child)) {
            QTH_LOG_WARNING("WidgetItemDelegate: a widget of a row was deleted or taken by the host; the "
                            "delegate owns them, and makes the row's widgets again");
            owners.remove(child);
            const QPersistentModelIndex index = set->index;
            Discard(set);
            if (view && index.isValid())
                viewport->update(view->visualRect(index));
        }
    } else if (!forwarding && MarkOf(event) == handled && (IsKey(type) || !event->spontaneous())) {
        event->accept();
        return true;
    }
    return false;
}

// Tab on the view goes into the widgets of the current row, or of the topmost one shown;
// Backtab into the view from a widget after it, into those of the current or bottom row.
bool WidgetItemDelegate::Private::ViewEvent(QEvent* event)
{
    if (view->tabKeyNavigation())
        return false;
    if (event->type() == QEvent::FocusIn) {
        BacktabIn(static_cast<QFocusEvent*>(event), view);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->key() != Qt::Key_Tab || key->modifiers() != Qt::NoModifier)
        return false;
    const WidgetSet* target = Entry(true);
    if (!target)
        return false;
    target->Edge(true)->setFocus(Qt::TabFocusReason);
    return true;
}

// The set the focus enters the view at: the current index's, else the topmost (bottommost)
// shown one with a widget to take it.
const WidgetSet* WidgetItemDelegate::Private::Entry(bool forward) const
{
    const WidgetSet* target = view ? SetOf(view->currentIndex()) : nullptr;
    if (target && target->Edge(forward))
        return target;
    target = nullptr;
    for (const auto& set : sets) {
        if (set->inUse && set->Edge(forward)
            && (!target || (qMakePair(set->rect.top(), set->rect.left()) < qMakePair(target->rect.top(), target->rect.left())) == forward))
            target = set.get();
    }
    return target;
}

// A focus that Backtab brought into the view (at landed) from outside moves on to the last
// widget of the entry set; true when it did.
bool WidgetItemDelegate::Private::BacktabIn(const QFocusEvent* event, const QWidget* landed)
{
    const WidgetSet* entry = tabbing || event->reason() != Qt::BacktabFocusReason ? nullptr : Entry(false);
    if (!entry || entry->Edge(false) == landed)
        return false;
    const QScopedValueRollback<bool> steering(tabbing, true);
    entry->Edge(false)->setFocus(Qt::BacktabFocusReason);
    return true;
}

bool WidgetItemDelegate::Private::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport)
        return ViewportEvent(event);
    if (watched == view)
        return ViewEvent(event);
    return watched->isWidgetType() && HostedEvent(static_cast<QWidget*>(watched), event);
}

WidgetItemDelegate::WidgetItemDelegate(QAbstractItemView* view, QObject* parent)
    : QStyledItemDelegate(parent)
    , d(new Private(this))
{
    d->view = view;
    if (!view) {
        QTH_LOG_WARNING("WidgetItemDelegate: no view to host the widgets of the rows in; it paints as a "
                        "QStyledItemDelegate");
        return;
    }
    view->installEventFilter(d);
    view->setItemDelegate(this);
    d->Attach();
}

WidgetItemDelegate::~WidgetItemDelegate()
{
    delete d;
}

QAbstractItemView* WidgetItemDelegate::ItemView() const
{
    return d->view;
}

QPersistentModelIndex WidgetItemDelegate::FocusedIndex() const
{
    const WidgetSet* set = d->Owner(QApplication::focusWidget(), nullptr);
    return set && set->inUse ? set->index : QPersistentModelIndex();
}

void WidgetItemDelegate::SetBlockedEventTypes(QWidget* widget, const QList<QEvent::Type>& types) const
{
    if (!widget) {
        QTH_LOG_WARNING("WidgetItemDelegate: no widget to block events of");
        return;
    }
    QList<int> values;
    for (QEvent::Type type : types)
        values << type;
    widget->setProperty(kBlockedProperty, QVariant::fromValue(values));
}

QList<QEvent::Type> WidgetItemDelegate::BlockedEventTypes(QWidget* widget) const
{
    if (!widget) {
        QTH_LOG_WARNING("WidgetItemDelegate: no widget to tell the blocked events of");
        return {};
    }
    const QVariant values = widget->property(kBlockedProperty);
    if (!values.isValid())
        return kDefaultBlocked;
    QList<QEvent::Type> types;
    for (int value : values.value<QList<int>>())
        types << QEvent::Type(value);
    return types;
}

int WidgetItemDelegate::LiveWidgetSetCount() const
{
    return int(d->sets.size());
}

void WidgetItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!d->view) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // The widgets show the row's data: only what is under them is painted here.
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = QIcon();
    background.features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration
                             | QStyleOptionViewItem::HasCheckIndicator);
    const QWidget* widget = option.widget;
    (widget ? widget->style() : QApplication::style())->drawControl(QStyle::CE_ItemViewItem, &background, painter, widget);
    // Only the view's own painting shows where the index is; not a drag picture.
    if (painter && painter->device() == d->viewport.data())
        d->Place(index, option);
}

} // namespace OrvantaQT
