#include <qt_halvo/utilities/decorated_border.h>

#include <QtCore/QEvent>
#include <QtGui/QIcon>
#include <QtGui/QPainter>

#include <algorithm>

namespace OrvantaQT {

DecoratedBorder::DecoratedBorder(QWidget* parent)
    : QFrame(parent)
{
    installEventFilter(this);
    UpdateSizePolicy();
}

int DecoratedBorder::decorationMargin() const
{
    return m_decorationMargin;
}

void DecoratedBorder::setDecorationMargin(int margin)
{
    m_decorationMargin = margin;
}

QString DecoratedBorder::decorationUrl() const
{
    return m_decorationUrl;
}

void DecoratedBorder::setDecorationUrl(const QString& url)
{
    if (url == m_decorationUrl)
        return;
    m_decorationUrl = url;
    const QIcon icon(url);
    if (icon.isNull())
        return;
    const QList<QSize> sizes = icon.availableSizes();
    if (sizes.isEmpty())
        return;
    m_decorationSize = *std::min_element(sizes.begin(), sizes.end(),
                                         [](const QSize& a, const QSize& b) { return a.width() < b.width(); });
    const qreal ratio = devicePixelRatioF();
    const QPixmap source = icon.pixmap(ratio > 1.0 ? m_decorationSize * 2 : m_decorationSize);
    m_decoration = source.scaled(m_decorationSize * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    m_decoration.setDevicePixelRatio(ratio);
    UpdateDecorationRect();
}

unsigned DecoratedBorder::orientation() const
{
    return m_orientation;
}

void DecoratedBorder::setOrientation(unsigned orientation)
{
    m_orientation = orientation;
    UpdateSizePolicy();
    UpdateDecorationRect();
}

unsigned DecoratedBorder::position() const
{
    return m_position;
}

void DecoratedBorder::setPosition(unsigned position)
{
    m_position = position;
}

QRect DecoratedBorder::DecorationRect() const
{
    return m_decorationRect;
}

void DecoratedBorder::UpdateSizePolicy()
{
    const bool horizontal = m_orientation == Qt::Horizontal;
    setSizePolicy(QSizePolicy(horizontal ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                              horizontal ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::DefaultType));
}

void DecoratedBorder::UpdateDecorationRect()
{
    const bool horizontal = m_orientation == Qt::Horizontal;
    const int w = m_decorationSize.width();
    const int h = m_decorationSize.height();
    int offset = m_decorationMargin;
    if (m_position == 2)
        offset = horizontal ? width() / 2 - w / 2 : height() / 2 - h / 2;
    else if (m_position == 1)
        offset = width() - w - m_decorationMargin; // the width in both orientations, as intended
    m_decorationRect = horizontal ? QRect(offset, 0, w, h) : QRect(0, offset, w, h);
    update();
}

bool DecoratedBorder::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == this && event->type() == QEvent::Resize)
        UpdateDecorationRect();
    return QFrame::eventFilter(watched, event);
}

void DecoratedBorder::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.fillRect(rect(), Qt::transparent);
    if (!m_decoration.isNull())
        painter.drawPixmap(m_decorationRect, m_decoration);
}

} // namespace OrvantaQT
