// What the widgets that cover their container (the curtains) share.
#pragma once

#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// A widget the container gets while `cover` is over it goes beneath the cover.
inline void StackNewChildUnder(QWidget* cover, QEvent* event)
{
    if (event->type() != QEvent::ChildAdded || cover->isHidden())
        return;
    QObject* child = static_cast<QChildEvent*>(event)->child();
    if (child != cover && child->isWidgetType())
        static_cast<QWidget*>(child)->stackUnder(cover);
}

} // namespace OrvantaQT
