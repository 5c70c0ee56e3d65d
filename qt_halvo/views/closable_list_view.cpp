#include <qt_halvo/views/closable_list_view.h>

#include "closable_view_p.h"

#include <QtGui/QPainter>

namespace OrvantaQT {

ClosableListView::ClosableListView(QWidget* parent)
    : QListView(parent)
    , m_helper(new ClosableViewHelper(
          this, {[](QAbstractItemView* view, const QModelIndex& index) {
                     Q_EMIT static_cast<ClosableListView*>(view)->CloseRequested(index);
                 },
                 [](QAbstractItemView* view) { static_cast<ClosableListView*>(view)->executeDelayedItemsLayout(); }}))
{
}

// The helper goes first, while the view it watches is still whole.
ClosableListView::~ClosableListView()
{
    delete m_helper;
}

QModelIndex ClosableListView::CloseButtonIndex() const
{
    return m_helper->CloseButtonIndex();
}

QRect ClosableListView::CloseButtonRect() const
{
    return m_helper->CloseButtonRect();
}

void ClosableListView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    QPainter painter(viewport());
    m_helper->Paint(&painter);
}

void ClosableListView::setupViewport(QWidget* viewport)
{
    QListView::setupViewport(viewport);
    m_helper->FollowViewport();
}

} // namespace OrvantaQT
