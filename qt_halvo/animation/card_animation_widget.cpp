#include <qt_halvo/animation/card_animation_widget.h>

#include "blur_pyramid_p.h"

#include <QtCore/QVariant>
#include <QtGui/QPainter>

#include <algorithm>

namespace OrvantaQT {

namespace {

qreal Clamped(qreal value)
{
    return std::clamp<qreal>(value, 0, 1);
}

} // namespace

CardAnimationWidget::CardAnimationWidget(unsigned int blurRadius, QWidget* parent)
    : QWidget(parent)
    , m_blurRadius(blurRadius)
{
}

CardAnimationWidget::~CardAnimationWidget() = default;

void CardAnimationWidget::SetPictures(const QPixmap& first, const QPixmap& second)
{
    m_first = first;
    m_second = second;
    m_firstBlurred = std::make_unique<BlurPyramid>(first.toImage(), m_blurRadius * first.devicePixelRatioF());
    update();
}

void CardAnimationWidget::SetDuration(int duration)
{
    m_duration = duration;
}

int CardAnimationWidget::GetDuration() const
{
    return m_duration;
}

void CardAnimationWidget::SetOverlayEasing(const QEasingCurve& easing)
{
    m_overlayEasing = easing;
    update();
}

void CardAnimationWidget::SetBlurEasing(const QEasingCurve& easing)
{
    m_blurEasing = easing;
    update();
}

void CardAnimationWidget::SetOpening(bool opening)
{
    m_opening = opening;
    update();
}

int CardAnimationWidget::GetProgress() const
{
    return m_progress;
}

void CardAnimationWidget::SetProgress(int progress)
{
    m_progress = progress;
    repaint();
}

void CardAnimationWidget::OnProgressChanged(const QVariant& value)
{
    SetProgress(value.toInt());
}

// Closing (progress 0 to 100), the first face is blurred away over the first half of the
// way and the second face comes up over the second half. Opening (100 to 0), both undo
// themselves over the whole way, the easings measured from the start of the opening.
int CardAnimationWidget::BlurAmount() const
{
    const qreal progress = std::clamp(m_progress, 0, 100);
    const qreal eased = m_opening ? 1 - m_blurEasing.valueForProgress(Clamped((100 - progress) / 100))
                                  : m_blurEasing.valueForProgress(Clamped(progress / 50));
    return qRound(eased * height());
}

int CardAnimationWidget::OverlayOffset() const
{
    const qreal progress = std::clamp(m_progress, 0, 100);
    const qreal eased = m_opening ? 1 - m_overlayEasing.valueForProgress(Clamped((100 - progress) / 100))
                                  : m_overlayEasing.valueForProgress(Clamped((progress - 50) / 50));
    const qreal secondHeight = m_second.height() / m_second.devicePixelRatioF();
    return qRound(eased * secondHeight);
}

void CardAnimationWidget::paintEvent(QPaintEvent*)
{
    if (m_first.isNull() || height() <= 0)
        return;
    QPainter painter(this);
    const int amount = BlurAmount();
    if (amount < height()) {
        painter.setOpacity(1.0 - qreal(amount) / height());
        const qreal radius = qreal(amount) / height() * m_blurRadius * m_first.devicePixelRatioF();
        m_firstBlurred->Draw(painter, rect(), radius);
        painter.setOpacity(1.0);
    }

    const int offset = OverlayOffset();
    if (offset > 0 && !m_second.isNull())
        painter.drawPixmap(QPointF(0, height() - offset), m_second);
}

} // namespace OrvantaQT
