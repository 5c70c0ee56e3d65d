#include <qt_halvo/views/check_box_header_view.h>

#include "accessibility_factory_p.h"

namespace OrvantaQT {

struct CheckBoxHeaderView::Private
{
    int checkColumn = 0;
};

CheckBoxHeaderView::CheckBoxHeaderView(QWidget* parent)
    : HeaderView(Qt::Horizontal, parent)
    , d(new Private)
{
}

CheckBoxHeaderView::~CheckBoxHeaderView()
{
    delete d;
}

int CheckBoxHeaderView::GetCheckColumn() const
{
    return d->checkColumn;
}

void CheckBoxHeaderView::SetCheckColumn(int column)
{
    d->checkColumn = column;
}

Qt::CheckState CheckBoxHeaderView::GetCheckState() const
{
    return Qt::Unchecked;
}

int CheckBoxHeaderView::RowCount() const
{
    return 0;
}

int CheckBoxHeaderView::CheckedCount() const
{
    return 0;
}

QRect CheckBoxHeaderView::CheckBoxRect() const
{
    return QRect();
}

void CheckBoxHeaderView::setModel(QAbstractItemModel* model)
{
    HeaderView::setModel(model);
}

void CheckBoxHeaderView::Toggle()
{
}

void CheckBoxHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    HeaderView::paintSection(painter, rect, logicalIndex);
}

void CheckBoxHeaderView::mousePressEvent(QMouseEvent* event)
{
    HeaderView::mousePressEvent(event);
}

void CheckBoxHeaderView::mouseReleaseEvent(QMouseEvent* event)
{
    HeaderView::mouseReleaseEvent(event);
}

QAccessibleInterface* CheckBoxHeaderAccessible(const QString&, QObject*)
{
    return nullptr;
}

} // namespace OrvantaQT
