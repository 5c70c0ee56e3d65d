// For the tests of widgets that open and close with an animation.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVector>

// Records the rest-state signals (Collapsed() and Expanded() with and without their
// bool) by name, in the order they come.
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

// Whether the values only rise (or only fall), as an animation's steps should.
inline bool IsMonotonic(const QVector<int>& values, bool rising)
{
    for (int i = 1; i < values.size(); ++i) {
        if (rising ? values[i] < values[i - 1] : values[i] > values[i - 1])
            return false;
    }
    return true;
}
