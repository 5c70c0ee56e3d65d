#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMargins>
#include <QtCore/QRect>

class QPainter;
class QPixmap;

namespace OrvantaQT {

// Draws the source rectangle of a pixmap into target, stretched without stretching its
// borders: the corners keep their size, the edges stretch along their length and the
// middle both ways. A border is at most half of the source and half of the target in its
// direction. Every piece is drawn opaque (source over, the pixmap's own alpha kept).
// For button, tab and toolbar backgrounds cut from a picture.
QT_HALVO_EXPORT void DrawBorderPixmap(QPainter* painter, const QRect& target, const QPixmap& pixmap,
                                      const QRect& source, const QMargins& borders);

} // namespace OrvantaQT
