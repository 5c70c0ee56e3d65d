#include "frame_sheet_p.h"

namespace OrvantaQT::FrameSheet {

namespace {

// Frame `index` of a sheet whose frames are `scale` times frameSize, scaled to target.
QPixmap Frame(const QPixmap& sheet, int index, int columns, const QSize& frameSize, int scale, const QSize& target)
{
    const QPoint origin(index % columns * frameSize.width(), index / columns * frameSize.height());
    QPixmap frame = sheet.copy(QRect(origin * scale, frameSize * scale));
    frame.setDevicePixelRatio(1);
    return frame.scaled(target * scale, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

} // namespace

QVector<QIcon> Cut(const QPixmap& sheet, const QPixmap& hiDpiSheet, int quantity, int columns, const QSize& frameSize,
                   const QSize& target)
{
    QVector<QIcon> frames;
    if (sheet.isNull() || quantity <= 0 || columns <= 0)
        return frames;
    frames.reserve(quantity);
    for (int i = 0; i < quantity; ++i) {
        QIcon icon;
        icon.addPixmap(Frame(sheet, i, columns, frameSize, 1, target), QIcon::Normal, QIcon::Off);
        if (!hiDpiSheet.isNull())
            icon.addPixmap(Frame(hiDpiSheet, i, columns, frameSize, 2, target), QIcon::Normal, QIcon::Off);
        frames.append(icon);
    }
    return frames;
}

QRect Align(const QSize& size, const QRect& rect, int alignment)
{
    int y = rect.top() + (rect.height() - size.height()) / 2;
    if (alignment & Qt::AlignTop)
        y = rect.top();
    else if (alignment & Qt::AlignBottom)
        y = rect.bottom() - size.height();
    int x = rect.left() + (rect.width() - size.width()) / 2;
    if (alignment & Qt::AlignLeft)
        x = rect.left();
    else if (alignment & Qt::AlignRight)
        x = rect.right() - size.width();
    return QRect(QPoint(x, y), size);
}

} // namespace OrvantaQT::FrameSheet
