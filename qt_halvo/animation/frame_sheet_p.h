// Cutting a sheet of animation frames, a strip or a grid of rows x columns, into one icon
// per frame, and placing a frame in a rectangle. Shared by the frame-playing widgets.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QRect>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

namespace OrvantaQT::FrameSheet {

// One icon per frame, frames laid out `columns` to a row, each of frameSize pixels of the
// sheet, scaled to target; the double-resolution sheet, when not null, adds a pixmap of
// twice the size to each icon.
QT_HALVO_AUTOTEST_EXPORT QVector<QIcon> Cut(const QPixmap& sheet, const QPixmap& hiDpiSheet, int quantity, int columns,
                                            const QSize& frameSize, const QSize& target);

// Where a frame of `size` goes inside rect: at the edge the alignment names, or centred.
QT_HALVO_AUTOTEST_EXPORT QRect Align(const QSize& size, const QRect& rect, int alignment);

} // namespace OrvantaQT::FrameSheet
