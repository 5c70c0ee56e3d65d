#include <qt_halvo/utilities/colorized_image.h>

#include <qt_halvo/utilities/paint_utilities.h>

#include <QtGui/QPainter>

namespace OrvantaQT {

ColorizedImage::ColorizedImage(QWidget* parent)
    : QWidget(parent)
{
}

QString ColorizedImage::ImagePath() const
{
    return m_imagePath;
}

void ColorizedImage::SetImagePath(const QString& path)
{
    if (path == m_imagePath)
        return;
    m_icon = QIcon(path);
    m_imagePath = path;
    update();
    Q_EMIT ImagePathChanged();
}

QColor ColorizedImage::Color() const
{
    return m_color;
}

void ColorizedImage::SetColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
    Q_EMIT ColorChanged();
}

QPixmap ColorizedImage::Pixmap()
{
    QPixmap pixmap = m_icon.pixmap(size(), QIcon::Normal, QIcon::Off);
    if (pixmap.isNull()) {
        m_icon = QIcon(m_imagePath);
        pixmap = m_icon.pixmap(size(), QIcon::Normal, QIcon::Off);
    }
    return pixmap;
}

void ColorizedImage::paintEvent(QPaintEvent*)
{
    const QPixmap pixmap = Pixmap();
    if (pixmap.isNull())
        return;
    QPainter painter(this);
    PaintUtilities::DrawTintedPixmap(&painter, QRect(QPoint(0, 0), size()), pixmap, m_color);
}

} // namespace OrvantaQT
