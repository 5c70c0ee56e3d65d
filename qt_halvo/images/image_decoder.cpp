#include "image_decoder_p.h"

#include <QtCore/QIODevice>
#include <QtGui/QImageIOHandler>
#include <QtGui/QImageReader>

namespace OrvantaQT {

QSize FitInto(const QSize& source, const QSize& bounds)
{
    if (source.isEmpty() || bounds.isEmpty())
        return source;
    if (source.width() <= bounds.width() && source.height() <= bounds.height())
        return source;
    QSize fitted = source.scaled(bounds, Qt::KeepAspectRatio);
    // A sliver of a picture keeps at least one pixel across.
    return fitted.expandedTo(QSize(1, 1));
}

QImage ShrinkInto(const QImage& image, const QSize& bounds)
{
    const QSize fitted = FitInto(image.size(), bounds);
    return fitted == image.size() ? image : image.scaled(fitted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

DecodedImage DecodeImage(QIODevice* device, const QSize& bounds, qint64 maxPixels, const QByteArray& format)
{
    DecodedImage result;
    if (!device) {
        result.error = QStringLiteral("no data");
        return result;
    }
    QImageReader reader(device, format);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    if (!stored.isValid()) {
        result.error = reader.canRead() ? QStringLiteral("the picture does not tell its size")
                                        : QStringLiteral("not a picture Qt can read");
        return result;
    }
    if (qint64(stored.width()) * stored.height() > maxPixels) {
        result.error = QStringLiteral("the picture has %1 x %2 pixels, more than the %3 allowed")
                           .arg(stored.width())
                           .arg(stored.height())
                           .arg(maxPixels);
        return result;
    }
    // The reader scales before it turns the picture: the fit is worked out upright and
    // asked for in the stored orientation.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize upright = turned ? stored.transposed() : stored;
    result.source = upright;
    const QSize fitted = FitInto(upright, bounds);
    if (fitted != upright)
        reader.setScaledSize(turned ? fitted.transposed() : fitted);
    QImage image = reader.read();
    if (image.isNull()) {
        result.error = QStringLiteral("the picture cannot be decoded (%1)").arg(reader.errorString());
        return result;
    }
    // Some formats ignore the scaled size; never hand out more than was asked for.
    result.image = ShrinkInto(image, fitted);
    return result;
}

} // namespace OrvantaQT
