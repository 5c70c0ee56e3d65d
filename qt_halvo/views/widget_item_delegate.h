#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEvent>
#include <QtCore/QPersistentModelIndex>
#include <QtWidgets/QStyledItemDelegate>

class QAbstractItemView;

namespace OrvantaQT {

// A delegate whose rows host real widgets (buttons, check boxes, line edits), as KDE's
// KWidgetItemDelegate. The host subclasses it: CreateItemWidgets() makes the widgets of
// one row (children of the view's viewport, made by the delegate when it needs a new set),
// UpdateItemWidgets() places and fills them for a row. Live sets exist only for the rows
// that can be seen, pooled and given to other rows while scrolling: at most the visible
// rows plus a few, whatever the size of the model. Tab and Backtab move the focus through
// the widgets of a row and on to the next; the events of the types blocked for a widget
// do not reach the view. Under the widgets the delegate paints the row's background,
// selection and focus as a QStyledItemDelegate does, without the text, icon or check that
// the widgets show instead.
class QT_HALVO_EXPORT WidgetItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // The view whose rows the widgets live in; the delegate sets itself as its item
    // delegate. Without a view it logs and paints as a QStyledItemDelegate.
    explicit WidgetItemDelegate(QAbstractItemView* view, QObject* parent = nullptr);
    ~WidgetItemDelegate() override;

    QAbstractItemView* ItemView() const;
    // The row whose widget has the focus, or an invalid index.
    QPersistentModelIndex FocusedIndex() const;

    // Events of these types sent to the widget (or its children) stop there and do not
    // reach the view; by default mouse presses, releases and double clicks. The mouse
    // events of the other types also reach the view, as if the widget were not there (a
    // click selects the row). Const so that CreateItemWidgets() can call it.
    void SetBlockedEventTypes(QWidget* widget, const QList<QEvent::Type>& types) const;
    QList<QEvent::Type> BlockedEventTypes(QWidget* widget) const;

    // Widget sets alive now, shown or pooled.
    int LiveWidgetSetCount() const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    // The widgets of one row, made once per set and owned by the delegate (which makes them
    // children of the viewport); none is fine.
    virtual QList<QWidget*> CreateItemWidgets(const QModelIndex& index) const = 0;
    // Places (in the row's coordinates, option.rect's size) and fills the widgets of a set
    // for the row at index. The widgets of a set that served another row come shown, at
    // the places given last; hide the ones this row does not use.
    virtual void UpdateItemWidgets(const QList<QWidget*>& widgets, const QStyleOptionViewItem& option,
                                   const QPersistentModelIndex& index) const = 0;

private:
    class Private;
    Private* d;
};

} // namespace OrvantaQT
