#include <qt_halvo/widgets/window/notification_type.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

bool NotificationType::IsValid(int type)
{
    return type >= Information && type <= Error;
}

QString NotificationType::Name(Type type)
{
    switch (type) {
    case Information:
        return QStringLiteral("Information");
    case Positive:
        return QStringLiteral("Positive");
    case Warning:
        return QStringLiteral("Warning");
    case Error:
        return QStringLiteral("Error");
    }
    return QString();
}

QString NotificationType::DisplayName(Type type)
{
    switch (type) {
    case Information:
        return QCoreApplication::translate("OrvantaQT::NotificationType", "Information");
    case Positive:
        return QCoreApplication::translate("OrvantaQT::NotificationType", "Success");
    case Warning:
        return QCoreApplication::translate("OrvantaQT::NotificationType", "Warning");
    case Error:
        return QCoreApplication::translate("OrvantaQT::NotificationType", "Error");
    }
    return QString();
}

QIcon NotificationType::Icon(Type type, const QWidget* widget)
{
    const QStyle* style = widget ? widget->style() : QApplication::style();
    if (!style)
        return QIcon();
    switch (type) {
    case Information:
        return style->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, widget);
    case Positive:
        return style->standardIcon(QStyle::SP_DialogApplyButton, nullptr, widget);
    case Warning:
        return style->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, widget);
    case Error:
        return style->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, widget);
    }
    return QIcon();
}

QColor NotificationType::DefaultColor(Type type)
{
    switch (type) {
    case Information:
        return QColor(0xd6, 0xea, 0xf8);
    case Positive:
        return QColor(0xd5, 0xf0, 0xdd);
    case Warning:
        return QColor(0xfd, 0xeb, 0xd0);
    case Error:
        return QColor(0xf8, 0xd7, 0xda);
    }
    return QColor();
}

} // namespace OrvantaQT
