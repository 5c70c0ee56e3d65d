#include <qt_halvo/animation/freeze_pixmap_wrapper.h>

#include <QtGui/QPainter>

namespace OrvantaQT {

FreezePixmapWrapper::FreezePixmapWrapper(const QPixmap& picture, QWidget* parent)
    : QWidget(parent)
    , m_picture(picture)
{
}

QPixmap FreezePixmapWrapper::Picture() const
{
    return m_picture;
}

void FreezePixmapWrapper::paintEvent(QPaintEvent*)
{
    QPainter(this).drawPixmap(0, 0, m_picture);
}

} // namespace OrvantaQT
