#include <qt_halvo/utilities/border_image_widget.h>

#include <QtGui/QPainter>

namespace OrvantaQT {

BorderImageWidget::BorderImageWidget(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_NoSystemBackground);
}

QIcon BorderImageWidget::borderIcon() const
{
    return m_borderIcon;
}

void BorderImageWidget::setBorderIcon(const QIcon& icon)
{
    m_borderIcon = icon;
    update();
}

void BorderImageWidget::setDefaultBorderIcon(const QIcon& icon)
{
    m_defaultBorderIcon = icon;
    update();
}

QMargins BorderImageWidget::borderMargins() const
{
    return m_borderMargins;
}

void BorderImageWidget::setBorderMargins(const QMargins& margins)
{
    if (margins == m_borderMargins)
        return;
    m_borderMargins = margins;
    update();
}

void BorderImageWidget::paintEvent(QPaintEvent* event)
{
    if (m_borderIcon.isNull()) {
        QWidget::paintEvent(event);
        return;
    }
    const QRect target = rect().adjusted(m_borderMargins.left(), m_borderMargins.top(), -m_borderMargins.right(),
                                         -m_borderMargins.bottom());
    const QSize size = (QSizeF(target.size()) * devicePixelRatioF()).toSize();
    QPixmap pixmap = m_borderIcon.pixmap(size);
    if (pixmap.isNull())
        pixmap = m_defaultBorderIcon.pixmap(size);
    QPainter painter(this);
    painter.drawPixmap(target, pixmap);
}

} // namespace OrvantaQT
