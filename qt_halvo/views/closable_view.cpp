#include "closable_view_p.h"

#include "accessibility_factory_p.h"

#include <QtWidgets/QAbstractItemView>

namespace OrvantaQT {

ClosableViewHelper::ClosableViewHelper(QAbstractItemView* view,
                                       void (*requestClose)(QAbstractItemView*, const QModelIndex&))
    : QObject(view)
    , m_view(view)
    , m_requestClose(requestClose)
{
}

QModelIndex ClosableViewHelper::CloseButtonIndex() const
{
    return QModelIndex();
}

QRect ClosableViewHelper::CloseButtonRect() const
{
    return QRect();
}

void ClosableViewHelper::Paint(QPainter*)
{
}

QAccessibleInterface* ClosableViewAccessible(const QString&, QObject*)
{
    return nullptr;
}

} // namespace OrvantaQT
