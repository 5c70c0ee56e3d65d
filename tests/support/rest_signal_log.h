// Records the rest-state signals of a widget that opens and closes (Collapsed() and
// Expanded() with and without their bool) by name, in the order they come.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

template <typename Widget>
void RecordRestSignals(Widget* widget, QStringList* log)
{
    const auto named = [](const char* name, bool on) {
        return QStringLiteral("%1(%2)").arg(QLatin1String(name), on ? QStringLiteral("true") : QStringLiteral("false"));
    };
    QObject::connect(widget, QOverload<>::of(&Widget::Collapsed), [log] { *log << QStringLiteral("Collapsed()"); });
    QObject::connect(widget, QOverload<bool>::of(&Widget::Collapsed), [log, named](bool on) { *log << named("Collapsed", on); });
    QObject::connect(widget, QOverload<>::of(&Widget::Expanded), [log] { *log << QStringLiteral("Expanded()"); });
    QObject::connect(widget, QOverload<bool>::of(&Widget::Expanded), [log, named](bool on) { *log << named("Expanded", on); });
}
