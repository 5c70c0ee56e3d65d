#include <qt_halvo/views/table_view.h>

#include "cut_text_tip_p.h"

#include <qt_halvo/layouts/info_overlay_widget.h>
#include <qt_halvo/styles/hover_p.h>
#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/views/header_view.h>

#include <QtGui/QMouseEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QTextLayout>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyledItemDelegate>

#include <utility>

namespace OrvantaQT {

namespace {

// QStyledItemDelegate::initStyleOption() is protected; a delegate's own override of it
// decides what a cell shows, so it is the one to ask.
struct StyledDelegate : QStyledItemDelegate
{
    using QStyledItemDelegate::initStyleOption;
};

// Whether the text, laid out as QCommonStyle lays out item text, overflows the rectangle
// either way: the style then elides it or cuts its last lines.
bool TextOverflows(const QStyleOptionViewItem& option, const QRect& textRect)
{
    QTextOption textOption;
    const bool wrap = option.features & QStyleOptionViewItem::WrapText;
    textOption.setWrapMode(wrap ? QTextOption::WordWrap : QTextOption::ManualWrap);
    textOption.setTextDirection(option.direction);
    QTextLayout layout(option.text, option.font);
    layout.setTextOption(textOption);
    layout.beginLayout();
    qreal height = 0;
    bool tooWide = false;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(textRect.width());
        height += line.height();
        tooWide = tooWide || line.naturalTextWidth() > textRect.width();
    }
    layout.endLayout();
    return tooWide || height > textRect.height();
}

} // namespace

struct TableView::Private
{
    explicit Private(TableView* view) : q(view) {}

    QRect RowStrip(int row) const;
    void UpdateHoveredRow();
    void FollowPointer();
    void UpdateOverlay();
    void MakeOverlay();
    void Refresh();
    void Disconnect();
    QString CutText(const QModelIndex& index) const;
    bool ShowCutText(QHelpEvent* event);

    TableView* q;
    QPointer<InfoOverlayWidget> overlay;
    QPointer<QAbstractItemModel> model;
    QVector<QMetaObject::Connection> modelConnections;
    QString emptyText;
    int hoveredRow = -1;
    bool pointerOver = false;
    QPoint pointer;
    bool paintingHoveredRow = false;
};

QRect TableView::Private::RowStrip(int row) const
{
    // Empty for -1, a hidden row or one that is gone: their height is 0.
    return QRect(0, q->rowViewportPosition(row), q->viewport()->width(), q->rowHeight(row));
}

void TableView::Private::UpdateHoveredRow()
{
    const QModelIndex index = pointerOver ? q->indexAt(pointer) : QModelIndex();
    const int row = index.isValid() ? index.row() : -1;
    if (row == hoveredRow)
        return;
    q->viewport()->update(RowStrip(std::exchange(hoveredRow, row)));
    q->viewport()->update(RowStrip(row));
    Q_EMIT q->HoveredRowChanged(row);
}

void TableView::Private::FollowPointer()
{
    // QAbstractItemView's own hovered cell is a persistent index: it follows the data, not
    // the pointer, when rows come, go or move. It is put back under the pointer.
    QHoverEvent move(QEvent::HoverMove, pointerOver ? pointer : QPoint(-1, -1), QPoint(-1, -1));
    q->QTableView::viewportEvent(&move);
    UpdateHoveredRow();
}

void TableView::Private::UpdateOverlay()
{
    if (!overlay)
        return;
    // The QPointer is null already while the model is being destroyed.
    const bool empty = !model || model->rowCount(q->rootIndex()) == 0;
    overlay->setVisible(empty && !emptyText.isEmpty());
}

void TableView::Private::MakeOverlay()
{
    // The overlay belongs to the viewport it covers; over a new one, a new overlay shows
    // what the old one did.
    const QPointer<InfoOverlayWidget> old = overlay;
    overlay = NameChild(new InfoOverlayWidget(q->viewport()), "TableView", "EmptyOverlay");
    overlay->SetText(emptyText);
    if (old) {
        overlay->SetIcon(old->GetIcon());
        overlay->SetIconSize(old->GetIconSize());
        overlay->SetTitle(old->GetTitle());
        overlay->SetBusy(old->IsBusy());
        overlay->SetActionText(old->GetActionText());
        overlay->setStyleSheet(old->styleSheet());
        delete old;
    }
    UpdateOverlay();
}

void TableView::Private::Refresh()
{
    UpdateOverlay();
    FollowPointer();
}

void TableView::Private::Disconnect()
{
    for (const QMetaObject::Connection& connection : std::exchange(modelConnections, {}))
        QObject::disconnect(connection);
}

QString TableView::Private::CutText(const QModelIndex& index) const
{
    QStyleOptionViewItem option = q->viewOptions();
    option.rect = q->visualRect(index);
    option.widget = q;
    option.locale = q->locale();
    option.locale.setNumberOptions(QLocale::OmitGroupSeparator);
    if (q->wordWrap())
        option.features |= QStyleOptionViewItem::WrapText;
    QAbstractItemDelegate* delegate = q->itemDelegate(index);
    auto* styled = qobject_cast<QStyledItemDelegate*>(delegate);
    if (!styled) {
        // Any other delegate tells by the size it would need.
        const QSize needed = delegate ? delegate->sizeHint(option, index) : QSize();
        const bool cut = needed.width() > option.rect.width() || needed.height() > option.rect.height();
        return cut ? index.data(Qt::DisplayRole).toString() : QString();
    }
    (styled->*&StyledDelegate::initStyleOption)(&option, index);
    if (!(option.features & QStyleOptionViewItem::HasDisplay) || option.text.isEmpty())
        return QString();
    const QStyle* style = q->style();
    // QCommonStyle keeps this margin on both sides of the text.
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, q) + 1;
    const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &option, q).adjusted(margin, 0, -margin, 0);
    if (!TextOverflows(option, textRect))
        return QString();
    return option.text.replace(QChar::LineSeparator, QLatin1Char('\n'));
}

bool TableView::Private::ShowCutText(QHelpEvent* event)
{
    // The model's own tip is the delegate's to show, as in any QTableView.
    const QModelIndex index = q->indexAt(event->pos());
    if (!index.isValid() || !index.data(Qt::ToolTipRole).toString().isEmpty())
        return false;
    // And the view's own tip, over text that fits, is QAbstractItemView's to show.
    return ShowCutTextTip(event, CutText(index), q->viewport(), q->visualRect(index));
}

TableView::TableView(QWidget* parent)
    : QTableView(parent)
    , d(new Private(this))
{
    setHorizontalHeader(new HeaderView(Qt::Horizontal, this));
    // QTableView ties the arrow to sortingEnabled, off here; the header's default stands
    // (hosts that sort by sectionClicked need it), until setSortingEnabled() says otherwise.
    horizontalHeader()->setSortIndicatorShown(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    // Left to itself, QTableView makes a per-pixel step of the viewport's height over the
    // number of rows: two pixels a notch in a long table, a page in a short one. A row's
    // height per line of a notch (QApplication::wheelScrollLines()) instead.
    const int step = verticalHeader()->defaultSectionSize();
    verticalScrollBar()->setSingleStep(step);
    horizontalScrollBar()->setSingleStep(step);
    // Hover events also keep QAbstractItemView's own hovered cell.
    viewport()->setAttribute(Qt::WA_Hover);
    d->emptyText = tr("No items");
    d->MakeOverlay();
}

TableView::~TableView()
{
    // A model among the children is deleted after d: its signals must not reach us then.
    d->Disconnect();
    delete d;
}

QString TableView::GetEmptyText() const
{
    return d->emptyText;
}

void TableView::SetEmptyText(const QString& text)
{
    if (text == d->emptyText)
        return;
    d->emptyText = text;
    if (d->overlay)
        d->overlay->SetText(text);
    d->UpdateOverlay();
}

InfoOverlayWidget* TableView::EmptyOverlay() const
{
    return d->overlay;
}

int TableView::HoveredRow() const
{
    return d->hoveredRow;
}

void TableView::setModel(QAbstractItemModel* model)
{
    d->Disconnect();
    QTableView::setModel(model);
    d->model = model;
    if (model) {
        // After QTableView's own handlers (its headers connected first), so rows and
        // sections are up to date.
        const auto refresh = [this] { d->Refresh(); };
        d->modelConnections = {
            connect(model, &QAbstractItemModel::rowsInserted, this, refresh),
            connect(model, &QAbstractItemModel::rowsRemoved, this, refresh),
            connect(model, &QAbstractItemModel::rowsMoved, this, refresh),
            connect(model, &QAbstractItemModel::columnsInserted, this, refresh),
            connect(model, &QAbstractItemModel::columnsRemoved, this, refresh),
            connect(model, &QAbstractItemModel::modelReset, this, refresh),
            connect(model, &QAbstractItemModel::layoutChanged, this, refresh),
            connect(model, &QObject::destroyed, this, refresh),
        };
    }
    d->Refresh();
}

void TableView::setRootIndex(const QModelIndex& index)
{
    if (index.isValid() && index.model() != model()) {
        QTH_LOG_WARNING("TableView: a root index of another model is ignored; the root stays");
        return;
    }
    QTableView::setRootIndex(index);
    d->Refresh();
}

bool TableView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::MouseMove:
        d->pointerOver = true;
        d->pointer = event->type() == QEvent::MouseMove ? static_cast<QMouseEvent*>(event)->pos()
                                                        : static_cast<QHoverEvent*>(event)->pos();
        d->UpdateHoveredRow();
        break;
    case QEvent::Leave:
    case QEvent::HoverLeave:
        if (PointerStillOver(viewport()))
            break;
        d->pointerOver = false;
        d->UpdateHoveredRow();
        break;
    case QEvent::Hide:
        d->pointerOver = false;
        d->FollowPointer();
        break;
    case QEvent::ToolTip:
        if (d->ShowCutText(static_cast<QHelpEvent*>(event)))
            return true;
        break;
    default:
        break;
    }
    const bool handled = QTableView::viewportEvent(event);
    // Past this filter, QWidget repaints all of a widget with WA_Hover when the pointer
    // comes or goes; the rows' strips are enough.
    return handled || event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave;
}

void TableView::paintEvent(QPaintEvent* event)
{
    // QTableView marks only the cell under the pointer. The hovered row's strip is painted
    // in a pass of its own, in which viewOptions() adds State_MouseOver to every cell, so
    // that any delegate and "::item:hover" rules see the whole row.
    const QRect strip = d->RowStrip(d->hoveredRow);
    const QRegion hovered = event->region() & strip;
    if (hovered.isEmpty()) {
        QTableView::paintEvent(event);
        return;
    }
    const QRegion rest = event->region() - strip;
    if (!rest.isEmpty()) {
        QPaintEvent restEvent(rest);
        QTableView::paintEvent(&restEvent);
    }
    QPaintEvent rowEvent(hovered);
    d->paintingHoveredRow = true;
    QTableView::paintEvent(&rowEvent);
    d->paintingHoveredRow = false;
}

QStyleOptionViewItem TableView::viewOptions() const
{
    QStyleOptionViewItem option = QTableView::viewOptions();
    if (d->paintingHoveredRow)
        option.state |= QStyle::State_MouseOver;
    return option;
}

void TableView::setupViewport(QWidget* viewport)
{
    QTableView::setupViewport(viewport);
    viewport->setAttribute(Qt::WA_Hover);
    d->MakeOverlay();
    // The pointer's place on the old viewport means nothing on the new one until it moves.
    d->pointerOver = false;
    d->FollowPointer();
}

void TableView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    // A wheel turned under a still pointer brings other rows under it.
    d->FollowPointer();
}

void TableView::updateGeometries()
{
    QTableView::updateGeometries();
    // Rows resized, hidden or laid out again.
    d->FollowPointer();
}

} // namespace OrvantaQT
