#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtGui/QColor>
#include <QtGui/QIcon>

class QWidget;

namespace OrvantaQT {

// The kind of a notification or a popup message. Widgets that show one carry its name in
// the style property "NotificationType" ("Information", "Positive", "Warning" or "Error"),
// which the style sheet colours:
//   OrvantaQT--NotificationWidget[NotificationType="Error"] { background: @errorColor; }
class QT_HALVO_EXPORT NotificationType
{
    Q_GADGET

public:
    enum Type { Information, Positive, Warning, Error };
    Q_ENUM(Type)

    // Whether a number is one of the types, for values that come from outside.
    static bool IsValid(int type);
    // The value of the "NotificationType" style property; empty for an invalid type.
    static QString Name(Type type);
    // The type in words for the user and for screen readers, translated.
    static QString DisplayName(Type type);
    // The type's icon from the widget's style (or the application's): information, a
    // check mark, warning, critical.
    static QIcon Icon(Type type, const QWidget* widget = nullptr);
    // The background a widget of this type paints when no style sheet styles it.
    static QColor DefaultColor(Type type);
};

} // namespace OrvantaQT
