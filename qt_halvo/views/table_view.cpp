#include <qt_halvo/views/table_view.h>

#include <qt_halvo/layouts/info_overlay_widget.h>
#include <qt_halvo/views/header_view.h>

namespace OrvantaQT {

struct TableView::Private
{
    InfoOverlayWidget* overlay = nullptr;
    int hoveredRow = -1;
};

TableView::TableView(QWidget* parent)
    : QTableView(parent)
    , d(new Private)
{
    setHorizontalHeader(new HeaderView(Qt::Horizontal, this));
}

TableView::~TableView()
{
    delete d;
}

QString TableView::GetEmptyText() const
{
    return QString();
}

void TableView::SetEmptyText(const QString&)
{
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
    QTableView::setModel(model);
}

bool TableView::viewportEvent(QEvent* event)
{
    return QTableView::viewportEvent(event);
}

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
}

QStyleOptionViewItem TableView::viewOptions() const
{
    return QTableView::viewOptions();
}

} // namespace OrvantaQT
