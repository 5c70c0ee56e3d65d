#include <qt_halvo/animation/graphics_background_blur_effect.h>

#include <qt_halvo/utilities/hidpi_utils.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QPainter>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

GraphicsBackgroundBlurEffect::GraphicsBackgroundBlurEffect(QWidget* widget, QWidget* foreground)
    : QGraphicsBlurEffect(widget)
    , m_foreground(foreground)
    , m_widget(widget)
{
    if (!widget)
        QTH_LOG_ERROR("GraphicsBackgroundBlurEffect: no blurred widget; nothing is kept sharp");
}

GraphicsBackgroundBlurEffect::~GraphicsBackgroundBlurEffect() = default;

void GraphicsBackgroundBlurEffect::draw(QPainter* painter)
{
    // Below a radius of 1 the base class paints the widget through this painter's
    // engine with painters of its own, which leave the engine holding a state that is
    // gone; restore() hands it this painter's state again.
    painter->save();
    QGraphicsBlurEffect::draw(painter);
    painter->restore();
    if (!m_widget || !m_foreground)
        return;
    // The painter is in the blurred widget's coordinates; the foreground may sit
    // anywhere below it in the widget tree.
    const QPoint position = m_widget->mapFromGlobal(m_foreground->mapToGlobal(QPoint(0, 0)));
    const QPixmap picture = GrabHiDpiPixmap(m_foreground);
    painter->drawPixmap(QPointF(position), picture);
}

} // namespace OrvantaQT
