// For the tests of the charts: repaints asked for, properties reset to what they were, and
// the colours of pictures.
#pragma once

#include "test_support.h"

#include <functional>

namespace StylesProbes {

// Whether the widget, shown, is painted again after change(), as it must ask for.
inline bool Repaints(QWidget* widget, const std::function<void()>& change)
{
    struct Counter : QObject
    {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override { paints += event->type() == QEvent::Paint; return false; }
    } counter;
    QCoreApplication::processEvents();
    widget->installEventFilter(&counter);
    change();
    return QTest::qWaitFor([&counter] { return counter.paints > 0; });
}

// The first of the properties, each given with another value than its first, whose reset
// does not bring back its first value; empty when all do.
inline QString FirstNotReset(QObject* object, std::initializer_list<std::pair<const char*, QVariant>> properties)
{
    for (const auto& [name, other] : properties) {
        const QVariant first = object->property(name);
        const QMetaProperty property = object->metaObject()->property(object->metaObject()->indexOfProperty(name));
        if (!object->setProperty(name, other) || object->property(name) == first || !property.reset(object)
            || object->property(name) != first)
            return QLatin1String(name);
    }
    return QString();
}

// The colours of the image at the points, named "#aarrggbb" (as QColor::name() does).
inline QStringList Pixels(const QImage& image, const QVector<QPoint>& points)
{
    QStringList names;
    for (const QPoint& point : points)
        names << image.pixelColor(point).name(QColor::HexArgb);
    return names;
}

// Colours by name ("red #808080 transparent"), as Pixels() gives them.
inline QStringList Colours(const char* names)
{
    QStringList colours;
    for (const QString& name : TestSupport::Words(names))
        colours << QColor(name).name(QColor::HexArgb);
    return colours;
}

} // namespace StylesProbes
