#pragma once

#include <QtCore/QObject>
#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPointer>
#include <QtCore/QRect>

class QAbstractItemView;
class QPainter;

namespace OrvantaQT {

// What ClosableListView and ClosableTreeView share: the hovered row, the close button's
// place, painting and clicks.
class ClosableViewHelper : public QObject
{
    Q_OBJECT

public:
    ClosableViewHelper(QAbstractItemView* view, void (*requestClose)(QAbstractItemView*, const QModelIndex&));

    QModelIndex CloseButtonIndex() const;
    QRect CloseButtonRect() const;
    void Paint(QPainter* painter);

private:
    QPointer<QAbstractItemView> m_view;
    void (*m_requestClose)(QAbstractItemView*, const QModelIndex&);
};

} // namespace OrvantaQT
