#include <qt_halvo/animation/movie_widget.h>

#include "frame_sheet_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QTimerEvent>
#include <QtGui/QPainter>

namespace OrvantaQT {

MovieWidget::MovieWidget(QWidget* parent)
    : QLabel(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

MovieWidget::~MovieWidget() = default;

QPixmap MovieWidget::multiPixmap() const
{
    return m_multiPixmap;
}

void MovieWidget::setMultiPixmap(const QPixmap& strip)
{
    m_multiPixmap = strip;
    UpdateScaledPixmap();
    update();
}

QPixmap MovieWidget::multiPixmapHiDpi() const
{
    return m_multiPixmapHiDpi;
}

void MovieWidget::setMultiPixmapHiDpi(const QPixmap& strip)
{
    m_multiPixmapHiDpi = strip;
    UpdateScaledPixmap();
    update();
}

int MovieWidget::quantity() const
{
    return m_quantity;
}

void MovieWidget::setQuantity(int quantity)
{
    if (quantity < 0)
        QTH_LOG_WARNING("MovieWidget: a negative number of frames (%d) leaves no frames", quantity);
    m_quantity = quantity;
    UpdateScaledPixmap();
    update();
}

int MovieWidget::timeout() const
{
    return m_timeout;
}

void MovieWidget::setTimeout(int timeout)
{
    StartTimer(false);
    m_timeout = timeout;
    if (m_playing && isVisible())
        StartTimer(true);
}

bool MovieWidget::vertical() const
{
    return m_vertical;
}

void MovieWidget::setVertical(bool vertical)
{
    m_vertical = vertical;
    UpdateScaledPixmap();
    update();
}

int MovieWidget::startupIndex() const
{
    return m_startupIndex;
}

void MovieWidget::setStartupIndex(int index)
{
    m_startupIndex = index;
    m_currentIndex = index;
    m_playing = true;
    StartTimer(true);
}

bool MovieWidget::repeatAnimation() const
{
    return m_repeatAnimation;
}

void MovieWidget::setRepeatAnimation(bool repeat)
{
    m_repeatAnimation = repeat;
}

int MovieWidget::currentIndex() const
{
    return m_currentIndex;
}

bool MovieWidget::isPlaying() const
{
    return m_playing;
}

void MovieWidget::start()
{
    m_playing = true;
    StartTimer(true);
}

void MovieWidget::stop()
{
    m_playing = false;
    StartTimer(false);
    Q_EMIT Finished();
    m_currentIndex = m_startupIndex;
    update();
}

void MovieWidget::pause()
{
    m_playing = false;
    StartTimer(false);
    Q_EMIT Finished();
}

void MovieWidget::restart()
{
    m_currentIndex = m_startupIndex;
    m_playing = true;
    StartTimer(true);
}

void MovieWidget::StartTimer(bool start)
{
    if (start && m_timerId == 0) {
        m_timerId = startTimer(m_timeout, Qt::CoarseTimer);
    } else if (!start && m_timerId != 0) {
        killTimer(m_timerId);
        m_timerId = 0;
    }
}

bool MovieWidget::HasFrameSize() const
{
    return m_frameWidth >= 0 && m_frameHeight >= 0;
}

void MovieWidget::UpdateScaledPixmap()
{
    m_frames.clear();
    if (m_multiPixmap.isNull() || m_quantity == 0)
        return;
    // In the strip's own pixels, whatever device pixel ratio it was loaded with.
    const int stripWidth = m_multiPixmap.width();
    const int stripHeight = m_multiPixmap.height();
    m_frameWidth = m_vertical ? stripWidth : stripWidth / m_quantity;
    m_frameHeight = m_vertical ? stripHeight / m_quantity : stripHeight;
    if (m_quantity < 0)
        return;
    // Until the first resize there is no contents rectangle; the frames keep their size.
    const QSize target = m_targetRect.isEmpty() ? QSize(m_frameWidth, m_frameHeight) : m_targetRect.size();
    m_frames = FrameSheet::Cut(m_multiPixmap, m_multiPixmapHiDpi, m_quantity, m_vertical ? 1 : m_quantity,
                               QSize(m_frameWidth, m_frameHeight), target);
}

void MovieWidget::paintEvent(QPaintEvent*)
{
    if (m_currentIndex < 0 || m_currentIndex >= m_frames.size())
        return;
    QPainter painter(this);
    m_frames[m_currentIndex].paint(&painter, m_targetRect, Qt::AlignCenter, QIcon::Normal, QIcon::Off);
}

void MovieWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timerId) {
        QLabel::timerEvent(event);
        return;
    }
    if (m_currentIndex >= m_quantity - 1) {
        if (!m_repeatAnimation) {
            m_playing = false;
            StartTimer(false);
            Q_EMIT Finished();
            return;
        }
        m_currentIndex = 0;
    } else {
        ++m_currentIndex;
    }
    Q_EMIT FrameChanged(m_currentIndex);
    update();
}

void MovieWidget::resizeEvent(QResizeEvent* event)
{
    m_targetRect = contentsRect();
    UpdateScaledPixmap();
    QLabel::resizeEvent(event);
}

void MovieWidget::showEvent(QShowEvent* event)
{
    if (m_playing)
        StartTimer(true);
    QLabel::showEvent(event);
}

void MovieWidget::hideEvent(QHideEvent* event)
{
    StartTimer(false);
    QLabel::hideEvent(event);
}

QSize MovieWidget::sizeHint() const
{
    return HasFrameSize() ? QSize(m_frameWidth, m_frameHeight) : QLabel::sizeHint();
}

void MovieWidget::RenderTo(QPainter* painter, const QRect& rect, int alignment)
{
    if (!painter || m_currentIndex < 0 || m_currentIndex >= m_frames.size())
        return;
    const QSize size = HasFrameSize() ? QSize(m_frameWidth, m_frameHeight) : QLabel::sizeHint();
    painter->drawPixmap(FrameSheet::Align(size, rect, alignment),
                        m_frames[m_currentIndex].pixmap(size, QIcon::Normal, QIcon::Off));
}

} // namespace OrvantaQT
