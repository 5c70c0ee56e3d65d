// The background a notification or a popup message paints when no style sheet styles it:
// a rounded rectangle in its type's default colour, with a slightly darker edge.
#pragma once

#include <qt_halvo/widgets/window/notification_type.h>

#include <QtCore/QRectF>
#include <QtGui/QPainter>

namespace OrvantaQT {

inline void PaintDefaultNotificationBackground(QPainter& painter, const QRect& area, NotificationType::Type type,
                                               qreal cornerRadius)
{
    const QColor fill = NotificationType::DefaultColor(type);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(fill.darker(120));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.restore();
}

} // namespace OrvantaQT
