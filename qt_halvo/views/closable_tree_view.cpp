#include <qt_halvo/views/closable_tree_view.h>

#include "closable_view_p.h"

#include <QtGui/QPainter>

namespace OrvantaQT {

ClosableTreeView::ClosableTreeView(QWidget* parent)
    : QTreeView(parent)
    , m_helper(new ClosableViewHelper(
          this, {[](QAbstractItemView* view, const QModelIndex& index) {
                     Q_EMIT static_cast<ClosableTreeView*>(view)->CloseRequested(index);
                 },
                 [](QAbstractItemView* view) { static_cast<ClosableTreeView*>(view)->executeDelayedItemsLayout(); }}))
{
}

// The helper goes first, while the view it watches is still whole.
ClosableTreeView::~ClosableTreeView()
{
    delete m_helper;
}

QModelIndex ClosableTreeView::CloseButtonIndex() const
{
    return m_helper->CloseButtonIndex();
}

QRect ClosableTreeView::CloseButtonRect() const
{
    return m_helper->CloseButtonRect();
}

void ClosableTreeView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    QPainter painter(viewport());
    m_helper->Paint(&painter);
}

void ClosableTreeView::setupViewport(QWidget* viewport)
{
    QTreeView::setupViewport(viewport);
    m_helper->FollowViewport();
}

} // namespace OrvantaQT
