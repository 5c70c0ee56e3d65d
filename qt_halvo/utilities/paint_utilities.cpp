#include <qt_halvo/utilities/paint_utilities.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QPainter>

namespace OrvantaQT {

namespace {

// "name.png" read as the file "name" in the format "png": the reader tries the format's
// file suffixes itself. Null for anything but one name and one extension.
QImage LoadByParts(const QString& path)
{
    const QStringList parts = path.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.size() != 2) {
        QTH_LOG_WARNING("BuildCompoundImage: \"%s\" is not a name with one extension", qPrintable(path));
        return QImage();
    }
    return QImage(parts.at(0), parts.at(1).toLatin1().constData());
}

QPoint AlignedOffset(PaintUtilities::Alignment alignment, int dx, int dy)
{
    switch (alignment) {
    case PaintUtilities::TopLeft:
        return {0, 0};
    case PaintUtilities::TopCenter:
        return {dx / 2, 0};
    case PaintUtilities::TopRight:
        return {dx, 0};
    case PaintUtilities::MiddleLeft:
        return {0, dy / 2};
    case PaintUtilities::Center:
        return {dx / 2, dy / 2};
    case PaintUtilities::MiddleRight:
        return {dx, dy / 2};
    case PaintUtilities::BottomLeft:
        return {0, dy};
    case PaintUtilities::BottomCenter:
        return {dx / 2, dy};
    case PaintUtilities::BottomRight:
        return {dx, dy};
    }
    return {0, 0};
}

// The strip's bands, each of height / count rows, as the icon's modes in order.
QIcon IconFromBands(const QString& path, std::initializer_list<QIcon::Mode> modes)
{
    const QPixmap strip(path);
    if (strip.isNull()) {
        QTH_LOG_WARNING("IconFromResource: cannot read \"%s\"", qPrintable(path));
        return QIcon();
    }
    const int band = strip.height() / int(modes.size());
    QIcon icon;
    int top = 0;
    for (const QIcon::Mode mode : modes) {
        icon.addPixmap(strip.copy(0, top, strip.width(), band), mode, QIcon::Off);
        top += band;
    }
    return icon;
}

} // namespace

QImage PaintUtilities::BuildCompoundImage(const QString& backgroundPath, const QString& overlayPath, Alignment alignment)
{
    QImage background = LoadByParts(backgroundPath);
    const QImage overlay = LoadByParts(overlayPath);
    if (background.isNull() || overlay.isNull())
        return QImage();
    const int ratio = int(background.devicePixelRatioF());
    QPoint offset = AlignedOffset(alignment, background.width() - overlay.width(), background.height() - overlay.height());
    if (ratio > 0)
        offset /= ratio;
    QPainter painter(&background);
    painter.drawImage(offset, overlay);
    return background;
}

QImage PaintUtilities::TintedImage(const QPixmap& pixmap, const QColor& color)
{
    QImage source = pixmap.toImage();
    if (!color.isValid() || source.isNull())
        return source;
    const bool alpha = source.hasAlphaChannel();
    source = source.convertToFormat(alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    QImage tinted(source.size(), source.format());
    tinted.setDevicePixelRatio(source.devicePixelRatioF());
    for (int y = 0; y < source.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(tinted.scanLine(y));
        for (int x = 0; x < source.width(); ++x) {
            const int grey = qGray(in[x]);
            out[x] = qRgba(grey, grey, grey, qAlpha(in[x]));
        }
    }
    QPainter painter(&tinted);
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    painter.fillRect(tinted.rect(), color);
    painter.end();
    if (alpha)
        tinted.setAlphaChannel(source.convertToFormat(QImage::Format_Alpha8));
    return tinted;
}

void PaintUtilities::DrawTintedPixmap(QPainter* painter, const QRect& target, const QPixmap& pixmap, const QColor& color)
{
    if (!painter)
        return;
    if (!color.isValid()) {
        painter->drawPixmap(target, pixmap);
        return;
    }
    painter->drawImage(target, TintedImage(pixmap, color));
}

void AddOverlayToPixmap(QPixmap& pixmap, const QPoint& position, const QPixmap& overlay)
{
    QPainter painter(&pixmap);
    painter.drawPixmap(position, overlay);
}

void AddOverlayToIcon(QIcon& icon, const QPoint& position, const QPixmap& overlay)
{
    const QList<QSize> sizes = icon.availableSizes(QIcon::Normal, QIcon::Off);
    if (sizes.isEmpty()) {
        QTH_LOG_WARNING("AddOverlayToIcon: the icon has no picture to add to");
        return;
    }
    QPixmap pixmap = icon.pixmap(sizes.first(), QIcon::Normal, QIcon::Off);
    AddOverlayToPixmap(pixmap, position, overlay);
    icon = QIcon(pixmap);
}

QIcon IconTripleFromResource(const QString& path)
{
    return IconFromBands(path, {QIcon::Normal, QIcon::Active, QIcon::Disabled});
}

QIcon IconQuadrupleFromResource(const QString& path)
{
    return IconFromBands(path, {QIcon::Normal, QIcon::Active, QIcon::Selected, QIcon::Disabled});
}

} // namespace OrvantaQT
