// Decoding of pictures for the loader and the preview provider, on any thread.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

class QIODevice;

namespace OrvantaQT {

struct DecodedImage
{
    QImage image;   // null on failure
    QString error;  // why, on failure
    QSize source;   // the picture's own size, the orientation applied; invalid when unknown
};

// The fit of a picture of size `source` into `bounds` (aspect ratio kept, never enlarged);
// an empty bounds leaves the picture its own size.
QT_HALVO_AUTOTEST_EXPORT QSize FitInto(const QSize& source, const QSize& bounds);

// The image itself when it fits into `bounds`, else a smooth copy at its fit.
QT_HALVO_AUTOTEST_EXPORT QImage ShrinkInto(const QImage& image, const QSize& bounds);

// Reads the picture in device, decoding it at its fit into `bounds` (the reader scales
// while decoding where the format can, as JPEG does) with the EXIF orientation applied.
// A picture of more than maxPixels pixels, or of a size the reader cannot tell, is refused
// before it is decoded. `format` may be empty (guessed from the content).
QT_HALVO_AUTOTEST_EXPORT DecodedImage DecodeImage(QIODevice* device, const QSize& bounds, qint64 maxPixels,
                                                  const QByteArray& format = QByteArray());

} // namespace OrvantaQT
