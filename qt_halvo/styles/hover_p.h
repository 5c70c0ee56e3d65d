#pragma once

#include <QApplication>
#include <QCursor>
#include <QWidget>

namespace OrvantaQT {

// A Leave with the pointer still over the widget or one of its children (a native child,
// or a popup that came and went) is not the pointer leaving the whole.
inline bool PointerStillOver(const QWidget* widget)
{
    const QWidget* under = QApplication::widgetAt(QCursor::pos());
    return under && (under == widget || widget->isAncestorOf(under));
}

} // namespace OrvantaQT
