#pragma once

#include <QtGui/QAccessible>

namespace OrvantaQT {

// The interfaces of the library's own widgets, one function per family, each making the
// interface for objects of its classes or returning nullptr; the factory asks them in turn.
QAccessibleInterface* CheckBoxHeaderAccessible(const QString& className, QObject* object);
QAccessibleInterface* ClosableViewAccessible(const QString& className, QObject* object);

} // namespace OrvantaQT
