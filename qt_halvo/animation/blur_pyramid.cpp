#include "blur_pyramid_p.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

namespace {

// Standard deviation per unit of radius; QGraphicsBlurEffect's radius spans about 2.5 of them.
constexpr qreal kSigmaPerRadius = 1.0 / 2.5;
// A level is used while the standard deviation there stays within this many pixels.
constexpr qreal kLevelSigma = 2.0;
constexpr int kSmallestSide = 8;

// One box pass over `count` pixels, from the contiguous `in` to `out`, whose pixels lie
// `stride` apart.
void BoxLine(const QRgb* in, QRgb* out, int count, int stride, int radius)
{
    const int width = 2 * radius + 1;
    quint32 sum[4] = {0, 0, 0, 0};
    const auto add = [&sum](QRgb pixel, int times) {
        sum[0] += qAlpha(pixel) * times;
        sum[1] += qRed(pixel) * times;
        sum[2] += qGreen(pixel) * times;
        sum[3] += qBlue(pixel) * times;
    };
    const auto at = [in, count](int index) { return in[std::clamp(index, 0, count - 1)]; };
    add(at(0), radius + 1);
    for (int i = 1; i <= radius; ++i)
        add(at(i), 1);
    for (int i = 0; i < count; ++i) {
        out[i * stride] = qRgba((sum[1] + width / 2) / width, (sum[2] + width / 2) / width,
                                (sum[3] + width / 2) / width, (sum[0] + width / 2) / width);
        const QRgb entering = at(i + radius + 1);
        const QRgb leaving = at(i - radius);
        sum[0] += qAlpha(entering) - qAlpha(leaving);
        sum[1] += qRed(entering) - qRed(leaving);
        sum[2] += qGreen(entering) - qGreen(leaving);
        sum[3] += qBlue(entering) - qBlue(leaving);
    }
}

// The box radius whose three passes come closest to this standard deviation.
int BoxRadiusFor(qreal sigma)
{
    return std::max(1, qRound((std::sqrt(4 * sigma * sigma + 1) - 1) / 2));
}

} // namespace

void BoxBlur3(QImage& image, int boxRadius)
{
    if (image.isNull() || boxRadius < 1)
        return;
    if (image.format() != QImage::Format_ARGB32_Premultiplied)
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int width = image.width();
    const int height = image.height();
    const int stride = image.bytesPerLine() / 4;
    QVector<QRgb> line(std::max(width, height));
    auto* pixels = reinterpret_cast<QRgb*>(image.bits());
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y) {
            QRgb* row = pixels + y * stride;
            std::copy(row, row + width, line.begin());
            BoxLine(line.constData(), row, width, 1, boxRadius);
        }
        for (int x = 0; x < width; ++x) {
            for (int y = 0; y < height; ++y)
                line[y] = pixels[y * stride + x];
            BoxLine(line.constData(), pixels + x, height, stride, boxRadius);
        }
    }
}

BlurPyramid::BlurPyramid(const QImage& source, qreal maxRadius)
{
    if (source.isNull())
        return;
    m_levels.append(source.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    qreal sigma = maxRadius * kSigmaPerRadius;
    while (sigma > kLevelSigma && std::min(m_levels.last().width(), m_levels.last().height()) >= 2 * kSmallestSide) {
        const QImage& last = m_levels.last();
        m_levels.append(last.scaled(last.width() / 2, last.height() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        sigma /= 2;
    }
}

QImage BlurPyramid::Blurred(qreal radius) const
{
    if (IsNull())
        return QImage();
    qreal sigma = std::max<qreal>(radius, 0) * kSigmaPerRadius;
    int level = 0;
    while (sigma > kLevelSigma && level + 1 < m_levels.size()) {
        sigma /= 2;
        ++level;
    }
    QImage image = m_levels[level];
    if (sigma >= 0.5)
        BoxBlur3(image, BoxRadiusFor(sigma));
    return image;
}

void BlurPyramid::Draw(QPainter& painter, const QRectF& target, qreal radius) const
{
    const QImage image = Blurred(radius);
    if (image.isNull())
        return;
    const bool smooth = painter.testRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.drawImage(target, image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
}

} // namespace OrvantaQT
