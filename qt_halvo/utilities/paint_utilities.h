#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

class QPainter;

namespace OrvantaQT {

namespace PaintUtilities {

enum Alignment {
    TopLeft,
    TopCenter,
    TopRight,
    MiddleLeft,
    Center,
    MiddleRight,
    BottomLeft,
    BottomCenter,
    BottomRight
};

// The background with the overlay painted on it at the alignment. Each path is a name
// and one extension ("icons/file.png"); anything else gives a null image.
QT_HALVO_EXPORT QImage BuildCompoundImage(const QString& backgroundPath, const QString& overlayPath, Alignment alignment);

// The picture in the colour: black takes the colour, white stays white (a screen blend
// over the picture in grey), transparency is kept. An invalid colour leaves it as it is.
QT_HALVO_EXPORT QImage TintedImage(const QPixmap& pixmap, const QColor& color);
QT_HALVO_EXPORT void DrawTintedPixmap(QPainter* painter, const QRect& target, const QPixmap& pixmap, const QColor& color);

} // namespace PaintUtilities

// Paints the overlay onto the pixmap with its top-left at position (in the pixmap's
// device-independent pixels).
QT_HALVO_EXPORT void AddOverlayToPixmap(QPixmap& pixmap, const QPoint& position, const QPixmap& overlay);

// The same on the icon's first size; the icon keeps only that one picture.
QT_HALVO_EXPORT void AddOverlayToIcon(QIcon& icon, const QPoint& position, const QPixmap& overlay);

// An icon from a strip of three equal bands stacked top to bottom: normal, active, disabled.
QT_HALVO_EXPORT QIcon IconTripleFromResource(const QString& path);

// An icon from a strip of four bands: normal, active, selected, disabled.
QT_HALVO_EXPORT QIcon IconQuadrupleFromResource(const QString& path);

} // namespace OrvantaQT
