#include <qt_halvo/animation/animated_pixmap_render.h>

#include <QtGui/QPainter>

namespace OrvantaQT {

AnimatedPixmapRender::AnimatedPixmapRender(QWidget* parent)
    : QWidget(parent)
{
}

AnimatedPixmapRender::~AnimatedPixmapRender() = default;

int AnimatedPixmapRender::GetDirection() const
{
    return m_direction;
}

void AnimatedPixmapRender::SetDirection(int direction)
{
    m_direction = direction;
}

void AnimatedPixmapRender::SetPictures(const QPixmap& from, const QPixmap& to)
{
    m_from = from;
    m_to = to;
}

void AnimatedPixmapRender::SetOffset(int offset)
{
    m_offset = offset;
}

QTimeLine& AnimatedPixmapRender::TimeLine()
{
    return m_timeLine;
}

void AnimatedPixmapRender::OnFrameChanged(int)
{
    repaint();
}

namespace {

// QPainter takes an empty source rectangle for "the whole picture"; here it means nothing.
void DrawPart(QPainter& painter, const QPoint& at, const QPixmap& pixmap, const QRect& source)
{
    if (!source.isEmpty())
        painter.drawPixmap(at, pixmap, source);
}

} // namespace

// The frame is a position on the widget and a pixel position in the pictures at once;
// the two agree at a device pixel ratio of 1.
void AnimatedPixmapRender::paintEvent(QPaintEvent*)
{
    const int f = m_timeLine.currentFrame();
    const qreal ratio = devicePixelRatioF();
    const int w = qRound(width() * ratio);
    const int h = qRound(height() * ratio);
    const int o = m_offset;
    QPainter painter(this);
    switch (m_direction) {
    case 0:
        DrawPart(painter, QPoint(0, 0), m_from, QRect(f, 0, w - f, h));
        DrawPart(painter, QPoint(w - o - f, 0), m_to, QRect(0, 0, f, h));
        break;
    case 1:
        DrawPart(painter, QPoint(f, 0), m_from, QRect(0, 0, w - f, h));
        DrawPart(painter, QPoint(0, 0), m_to, QRect(w - o - f, 0, f, h));
        break;
    case 2:
        DrawPart(painter, QPoint(0, 0), m_from, QRect(0, f, w, h - f));
        DrawPart(painter, QPoint(0, h - o - f), m_to, QRect(0, 0, w, f));
        break;
    case 3:
        DrawPart(painter, QPoint(0, f), m_from, QRect(0, 0, w, h - f));
        DrawPart(painter, QPoint(0, 0), m_to, QRect(0, h - o - f, w, f));
        break;
    default:
        break;
    }
}

} // namespace OrvantaQT
