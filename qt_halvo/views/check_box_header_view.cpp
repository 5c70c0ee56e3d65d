#include <qt_halvo/views/check_box_header_view.h>

#include "accessibility_factory_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QItemSelectionModel>
#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPointer>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStyleOptionHeader>
#include <QtWidgets/QStyleOptionViewItem>

namespace OrvantaQT {

namespace {

// What the header keeps of a row's check cell, one byte a row.
enum RowState : qint8 { NotCounted = -1, RowUnchecked, RowPartly, RowChecked };

// Pixels of the section's own drawing cut on the box's side of the label's part, where
// styles draw a bevel: the part under the box covers them.
constexpr int kSeam = 2;

bool HasBox(const CheckBoxHeaderView* header)
{
    const int column = header->GetCheckColumn();
    return header->model() && column >= 0 && column < header->model()->columnCount();
}

} // namespace

struct CheckBoxHeaderView::Private
{
    explicit Private(CheckBoxHeaderView* header) : q(header) {}

    CheckBoxHeaderView* q;
    QPointer<QAbstractItemModel> model;
    QVector<QMetaObject::Connection> connections;
    int checkColumn = 0;
    bool columnValid = false;
    bool outOfRangeLogged = false;
    QVector<qint8> rows; // one a top-level row of the model, in its order
    int counted = 0;
    int checked = 0;
    int partly = 0;
    Qt::CheckState state = Qt::Unchecked;
    bool enabled = false; // the box as last settled: any row to count
    int batch = 0; // while Toggle() writes: one signal at its end
    // QHeaderView's own are private; the part under the box follows them from the same events.
    int hoverSection = -1;
    int pressedSection = -1;
    bool hoverBox = false;
    bool pressedBox = false;

    RowState Read(int row) const
    {
        const QModelIndex index = model->index(row, checkColumn);
        if (!(model->flags(index) & Qt::ItemIsUserCheckable))
            return NotCounted;
        const QVariant value = model->data(index, Qt::CheckStateRole);
        if (!value.isValid())
            return NotCounted;
        const int state = value.toInt();
        return state == Qt::Checked ? RowChecked : state == Qt::PartiallyChecked ? RowPartly : RowUnchecked;
    }

    void Count(qint8 row, int sign)
    {
        counted += sign * (row != NotCounted);
        checked += sign * (row == RowChecked);
        partly += sign * (row == RowPartly);
    }

    void Reread(int row)
    {
        const RowState now = Read(row);
        Count(rows[row], -1);
        rows[row] = now;
        Count(now, 1);
    }

    void Rebuild()
    {
        rows.clear();
        counted = checked = partly = 0;
        const int columns = model ? model->columnCount() : 0;
        columnValid = checkColumn >= 0 && checkColumn < columns;
        // A model without columns yet is not one the column is wrong for.
        if (columns > 0 && checkColumn >= columns && !std::exchange(outOfRangeLogged, true))
            QTH_LOG_WARNING("CheckBoxHeaderView: check column %d is out of range (the model has %d columns); no check box",
                            checkColumn, columns);
        if (columnValid) {
            rows.fill(NotCounted, model->rowCount());
            for (int row = 0; row < rows.size(); ++row)
                Reread(row);
        }
        q->viewport()->update();
        Settle();
    }

    // Whatever the roles: a change of flags (checkable or not) comes under roles of its own.
    void DataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
    {
        if (!columnValid || topLeft.parent().isValid() || checkColumn < topLeft.column()
            || checkColumn > bottomRight.column())
            return;
        const int last = qMin(bottomRight.row(), rows.size() - 1);
        for (int row = qMax(topLeft.row(), 0); row <= last; ++row)
            Reread(row);
        Settle();
    }

    void RowsInserted(const QModelIndex& parent, int first, int last)
    {
        if (!columnValid || parent.isValid())
            return;
        const int count = last - first + 1;
        // A model whose signals do not add up is read again rather than trusted.
        if (first < 0 || first > rows.size() || count < 1 || rows.size() + count != model->rowCount())
            return Rebuild();
        rows.insert(first, count, NotCounted);
        for (int row = first; row <= last; ++row)
            Reread(row);
        Settle();
    }

    void RowsRemoved(const QModelIndex& parent, int first, int last)
    {
        if (!columnValid || parent.isValid())
            return;
        const int count = last - first + 1;
        if (first < 0 || count < 1 || last >= rows.size() || rows.size() - count != model->rowCount())
            return Rebuild();
        for (int row = first; row <= last; ++row)
            Count(rows[row], -1);
        rows.remove(first, count);
        Settle();
    }

    void Connect(QAbstractItemModel* to)
    {
        for (const QMetaObject::Connection& connection : std::exchange(connections, {}))
            QObject::disconnect(connection);
        model = to;
        if (!to)
            return;
        const auto rebuild = [this] { Rebuild(); };
        // Rows and columns within rows are not the check column's.
        const auto topLevel = [this](const QModelIndex& parent) {
            if (!parent.isValid())
                Rebuild();
        };
        const auto moved = [this](const QModelIndex& from, int, int, const QModelIndex& to) {
            if (!from.isValid() || !to.isValid())
                Rebuild();
        };
        connections = {
            QObject::connect(to, &QAbstractItemModel::dataChanged, q,
                             [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                                 DataChanged(topLeft, bottomRight);
                             }),
            QObject::connect(to, &QAbstractItemModel::rowsInserted, q,
                    [this](const QModelIndex& parent, int first, int last) { RowsInserted(parent, first, last); }),
            QObject::connect(to, &QAbstractItemModel::rowsRemoved, q,
                    [this](const QModelIndex& parent, int first, int last) { RowsRemoved(parent, first, last); }),
            QObject::connect(to, &QAbstractItemModel::modelReset, q, rebuild),
            QObject::connect(to, &QAbstractItemModel::layoutChanged, q, rebuild),
            QObject::connect(to, &QAbstractItemModel::rowsMoved, q, moved),
            QObject::connect(to, &QAbstractItemModel::columnsInserted, q, topLevel),
            QObject::connect(to, &QAbstractItemModel::columnsRemoved, q, topLevel),
            QObject::connect(to, &QAbstractItemModel::columnsMoved, q, moved),
            QObject::connect(to, &QObject::destroyed, q, rebuild),
        };
    }

    // The box's state from the counts: repainted, announced and signalled when it changed.
    void Settle()
    {
        if (batch > 0)
            return;
        const Qt::CheckState now = counted > 0 && checked == counted ? Qt::Checked
            : checked + partly > 0                                   ? Qt::PartiallyChecked
                                                                     : Qt::Unchecked;
        if (enabled != (counted > 0)) {
            enabled = counted > 0;
            q->updateSection(checkColumn);
        }
        if (now == state)
            return;
        const Qt::CheckState before = std::exchange(state, now);
        q->updateSection(checkColumn);
        // Without a box there is no child to announce (its interface is gone with it).
        if (columnValid && QAccessible::isActive()) {
            QAccessible::State changed;
            changed.checked = (before == Qt::Checked) != (now == Qt::Checked);
            changed.checkStateMixed = (before == Qt::PartiallyChecked) != (now == Qt::PartiallyChecked);
            QAccessibleStateChangeEvent event(q, changed);
            event.setChild(0);
            QAccessible::updateAccessibility(&event);
        }
        Q_EMIT q->CheckStateChanged(now);
    }

    // The box as a cell of the column would place its check indicator, in the viewport.
    QRect Box() const
    {
        if (!columnValid || q->isSectionHidden(checkColumn))
            return QRect();
        QStyleOptionViewItem cell;
        cell.initFrom(q);
        cell.rect = Section();
        cell.features = QStyleOptionViewItem::HasCheckIndicator;
        cell.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        return q->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &cell, q);
    }

    // The part of the box that shows, where a press reaches it.
    QRect Hit() const { return Box().intersected(Section()); }

    QRect Section() const
    {
        return QRect(q->sectionViewportPosition(checkColumn), 0, q->sectionSize(checkColumn), q->viewport()->height());
    }

    void SetHover(int section, bool overBox)
    {
        if (section != hoverSection && (hoverSection == checkColumn || section == checkColumn))
            q->updateSection(checkColumn);
        hoverSection = section;
        if (std::exchange(hoverBox, overBox) != overBox)
            q->updateSection(checkColumn);
    }
};

CheckBoxHeaderView::CheckBoxHeaderView(QWidget* parent)
    : HeaderView(Qt::Horizontal, parent)
    , d(new Private(this))
{
    qRegisterMetaType<Qt::CheckState>(); // for queued connections to CheckStateChanged
    connect(this, &QHeaderView::sectionPressed, this, [this](int logicalIndex) { d->pressedSection = logicalIndex; });
}

CheckBoxHeaderView::~CheckBoxHeaderView()
{
    // No model signal may reach a half-destroyed header.
    d->Connect(nullptr);
    delete d;
}

int CheckBoxHeaderView::GetCheckColumn() const
{
    return d->checkColumn;
}

void CheckBoxHeaderView::SetCheckColumn(int column)
{
    if (column < -1) {
        QTH_LOG_WARNING("CheckBoxHeaderView: check column %d is out of range; no check box", column);
        column = -1;
    }
    if (column == d->checkColumn)
        return;
    d->checkColumn = column;
    d->outOfRangeLogged = false;
    d->Rebuild();
}

Qt::CheckState CheckBoxHeaderView::GetCheckState() const
{
    return d->state;
}

int CheckBoxHeaderView::RowCount() const
{
    return d->counted;
}

int CheckBoxHeaderView::CheckedCount() const
{
    return d->checked;
}

QRect CheckBoxHeaderView::CheckBoxRect() const
{
    return d->Hit().translated(viewport()->pos());
}

void CheckBoxHeaderView::setModel(QAbstractItemModel* model)
{
    if (model == d->model)
        return;
    HeaderView::setModel(model);
    d->Connect(model);
    d->outOfRangeLogged = false;
    d->Rebuild();
}

void CheckBoxHeaderView::Toggle()
{
    if (!d->columnValid || d->counted == 0)
        return;
    const int target = d->state == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    // The rows to write are taken first: writing one may sort, filter or reset the rows
    // shown, and a slot may replace the model or delete the header.
    QVector<QPersistentModelIndex> cells;
    for (int row = 0; row < d->rows.size(); ++row) {
        if (d->rows[row] != NotCounted && d->rows[row] != (target == Qt::Checked ? RowChecked : RowUnchecked))
            cells.append(d->model->index(row, d->checkColumn));
    }
    const QPointer<CheckBoxHeaderView> self(this);
    const QPointer<QAbstractItemModel> model = d->model;
    ++d->batch;
    for (const QPersistentModelIndex& cell : qAsConst(cells)) {
        if (!model || model != d->model)
            break;
        if (cell.isValid())
            model->setData(cell, target, Qt::CheckStateRole);
        if (!self)
            return;
    }
    --d->batch;
    d->Settle();
}

void CheckBoxHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    const QRect box = logicalIndex == d->checkColumn ? d->Box() : QRect();
    if (box.isEmpty()) {
        HeaderView::paintSection(painter, rect, logicalIndex);
        return;
    }
    // The title moves past the box: QHeaderView draws the section beside it, and the
    // section's background is drawn again under the box.
    const bool rightToLeft = isRightToLeft();
    QRect beside = rect;
    QRect under = rect;
    if (rightToLeft) {
        beside.setRight(box.left() - 1);
        under.setLeft(box.left() - kSeam);
    } else {
        beside.setLeft(box.right() + 1);
        under.setRight(box.right() + kSeam);
    }
    painter->save();
    painter->setClipRect(beside.adjusted(rightToLeft ? 0 : kSeam, 0, rightToLeft ? -kSeam : 0, 0), Qt::IntersectClip);
    HeaderView::paintSection(painter, beside, logicalIndex);
    painter->restore();

    QStyleOptionHeader section;
    initStyleOption(&section);
    section.rect = rect;
    section.section = logicalIndex;
    if (window()->isActiveWindow())
        section.state |= QStyle::State_Active;
    if (sectionsClickable()) {
        if (d->hoverSection == logicalIndex)
            section.state |= QStyle::State_MouseOver;
        const QItemSelectionModel* selection = selectionModel();
        if (d->pressedSection == logicalIndex)
            section.state |= QStyle::State_Sunken;
        else if (highlightSections() && selection && selection->columnIntersectsSelection(logicalIndex, rootIndex()))
            section.state |= selection->isColumnSelected(logicalIndex, rootIndex()) ? QStyle::State_On | QStyle::State_Sunken
                                                                                     : QStyle::State_On;
    }
    const QVariant background = d->model->headerData(logicalIndex, Qt::Horizontal, Qt::BackgroundRole);
    if (background.canConvert<QBrush>()) {
        section.palette.setBrush(QPalette::Button, qvariant_cast<QBrush>(background));
        section.palette.setBrush(QPalette::Window, qvariant_cast<QBrush>(background));
    }
    painter->save();
    painter->setClipRect(under, Qt::IntersectClip);
    style()->drawControl(QStyle::CE_HeaderSection, &section, painter, this);

    QStyleOptionButton check;
    check.initFrom(this);
    check.rect = box;
    check.state = QStyle::State_None;
    if (isEnabled() && d->counted > 0)
        check.state |= QStyle::State_Enabled;
    if (window()->isActiveWindow())
        check.state |= QStyle::State_Active;
    if (d->hoverBox)
        check.state |= QStyle::State_MouseOver;
    if (d->pressedBox && d->hoverBox && d->counted > 0)
        check.state |= QStyle::State_Sunken;
    check.state |= d->state == Qt::Checked ? QStyle::State_On
        : d->state == Qt::PartiallyChecked ? QStyle::State_NoChange
                                           : QStyle::State_Off;
    painter->setClipRect(d->Section(), Qt::IntersectClip);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &check, painter, this);
    painter->restore();
}

void CheckBoxHeaderView::mousePressEvent(QMouseEvent* event)
{
    // A disabled box takes its presses too: they are not the section's.
    if (event->button() == Qt::LeftButton && d->Hit().contains(event->pos())) {
        d->pressedBox = true;
        d->hoverBox = true;
        updateSection(d->checkColumn);
        event->accept();
        return;
    }
    HeaderView::mousePressEvent(event);
}

void CheckBoxHeaderView::mouseReleaseEvent(QMouseEvent* event)
{
    if (d->pressedBox) {
        if (event->button() != Qt::LeftButton)
            return event->accept();
        d->pressedBox = false;
        updateSection(d->checkColumn);
        event->accept();
        if (d->Hit().contains(event->pos()))
            Toggle();
        return;
    }
    d->pressedSection = -1;
    HeaderView::mouseReleaseEvent(event);
}

void CheckBoxHeaderView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second click of a quick pair on the box is a click too, as on a check box.
    if (event->button() == Qt::LeftButton && d->Hit().contains(event->pos()))
        return mousePressEvent(event);
    HeaderView::mouseDoubleClickEvent(event);
}

bool CheckBoxHeaderView::event(QEvent* event)
{
    // The section under the pointer as QHeaderView has it: from the hover events the header
    // itself gets (only when the style asks for them), as QHeaderView takes them.
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        d->SetHover(logicalIndexAt(static_cast<QHoverEvent*>(event)->pos()), d->hoverBox);
        break;
    case QEvent::HoverLeave:
        d->SetHover(-1, d->hoverBox);
        break;
    default:
        break;
    }
    return HeaderView::event(event);
}

bool CheckBoxHeaderView::viewportEvent(QEvent* event)
{
    // The box under the pointer, from moves.
    switch (event->type()) {
    case QEvent::MouseMove:
        d->SetHover(d->hoverSection, d->Hit().contains(static_cast<QMouseEvent*>(event)->pos()));
        break;
    case QEvent::Leave:
    case QEvent::HoverLeave:
    case QEvent::Hide:
        d->SetHover(-1, false);
        break;
    default:
        break;
    }
    return HeaderView::viewportEvent(event);
}

namespace {

// The box, for screen readers: an interface without an object of its own, made and
// deleted by the header's.
class CheckBoxAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    explicit CheckBoxAccessible(CheckBoxHeaderView* header)
        : m_header(header)
    {
    }

    bool IsEnabled() const { return m_header->isEnabled() && m_header->RowCount() > 0; }

    bool isValid() const override { return m_header && HasBox(m_header); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_header ? m_header->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_header); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::CheckBox; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !isValid())
            return QString();
        return m_header->model()->headerData(m_header->GetCheckColumn(), Qt::Horizontal).toString();
    }

    QRect rect() const override
    {
        if (!isValid())
            return QRect();
        const QRect box = m_header->CheckBoxRect();
        return QRect(m_header->mapToGlobal(box.topLeft()), box.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.checkable = true;
        state.checked = m_header->GetCheckState() == Qt::Checked;
        state.checkStateMixed = m_header->GetCheckState() == Qt::PartiallyChecked;
        state.disabled = !IsEnabled();
        state.invisible = !m_header->isVisible() || m_header->CheckBoxRect().isEmpty();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {toggleAction(), pressAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    void doAction(const QString& name) override
    {
        if (isValid() && IsEnabled() && (name == toggleAction() || name == pressAction()))
            m_header->Toggle();
    }

private:
    QPointer<CheckBoxHeaderView> m_header;
};

// A header whose one child is the box.
class CheckBoxHeaderViewAccessible : public QAccessibleWidget
{
public:
    explicit CheckBoxHeaderViewAccessible(CheckBoxHeaderView* header)
        : QAccessibleWidget(header, QAccessible::ColumnHeader)
    {
    }

    ~CheckBoxHeaderViewAccessible() override
    {
        if (m_box)
            QAccessible::deleteAccessibleInterface(m_box);
    }

    const CheckBoxHeaderView* Header() const { return static_cast<const CheckBoxHeaderView*>(object()); }

    int childCount() const override { return HasBox(Header()) ? 1 : 0; }

    QAccessibleInterface* child(int index) const override
    {
        if (index != 0 || !HasBox(Header()))
            return nullptr;
        if (!m_box) {
            auto* header = const_cast<CheckBoxHeaderView*>(Header());
            m_box = QAccessible::registerAccessibleInterface(new CheckBoxAccessible(header));
        }
        return QAccessible::accessibleInterface(m_box);
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child && m_box && child == QAccessible::accessibleInterface(m_box) ? 0 : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        QAccessibleInterface* box = child(0);
        return box && box->rect().contains(x, y) ? box : nullptr;
    }

private:
    mutable QAccessible::Id m_box = 0;
};

} // namespace

QAccessibleInterface* CheckBoxHeaderAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::CheckBoxHeaderView"))
        return new CheckBoxHeaderViewAccessible(static_cast<CheckBoxHeaderView*>(object));
    return nullptr;
}

} // namespace OrvantaQT
