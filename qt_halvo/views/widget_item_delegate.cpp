#include <qt_halvo/views/widget_item_delegate.h>

#include <QtCore/QPointer>
#include <QtWidgets/QAbstractItemView>

namespace OrvantaQT {

class WidgetItemDelegate::Private
{
public:
    QPointer<QAbstractItemView> view;
};

WidgetItemDelegate::WidgetItemDelegate(QAbstractItemView* view, QObject* parent)
    : QStyledItemDelegate(parent)
    , d(new Private)
{
    d->view = view;
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
    return QPersistentModelIndex();
}

void WidgetItemDelegate::SetBlockedEventTypes(QWidget*, const QList<QEvent::Type>&)
{
}

QList<QEvent::Type> WidgetItemDelegate::BlockedEventTypes(QWidget*) const
{
    return {};
}

int WidgetItemDelegate::LiveWidgetSetCount() const
{
    return 0;
}

void WidgetItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
}

} // namespace OrvantaQT
