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
// Below this standard deviation (in pixels of a level) there is nothing to blur.
constexpr qreal kNoBlurSigma = 0.5;
// What halving a picture and drawing it scaled up again spreads, in pixels of the level.
constexpr qreal kResamplingSigma = 0.5;

// Channel sums of a sliding window, for one pixel position.
struct Sum
{
    quint32 a = 0, r = 0, g = 0, b = 0;

    void Add(QRgb pixel, int times = 1)
    {
        a += qAlpha(pixel) * times;
        r += qRed(pixel) * times;
        g += qGreen(pixel) * times;
        b += qBlue(pixel) * times;
    }
    void Move(QRgb entering, QRgb leaving)
    {
        a += qAlpha(entering) - qAlpha(leaving);
        r += qRed(entering) - qRed(leaving);
        g += qGreen(entering) - qGreen(leaving);
        b += qBlue(entering) - qBlue(leaving);
    }
    // The sums divided by the window's width, given as the rounded 2^32 / width: a
    // multiplication instead of four divisions per pixel.
    QRgb Average(quint64 reciprocal) const
    {
        const auto divide = [reciprocal](quint32 sum) { return int((sum * reciprocal + (1ull << 31)) >> 32); };
        return qRgba(divide(r), divide(g), divide(b), divide(a));
    }
};

quint64 Reciprocal(quint32 width)
{
    return ((1ull << 32) + width / 2) / width;
}

// One horizontal box pass over a row, from the contiguous copy `in` back into `out`.
void BoxRow(const QRgb* in, QRgb* out, int count, int radius)
{
    const auto at = [in, count](int index) { return in[std::clamp(index, 0, count - 1)]; };
    const quint64 reciprocal = Reciprocal(2 * radius + 1);
    Sum sum;
    sum.Add(in[0], radius + 1);
    for (int i = 1; i <= radius; ++i)
        sum.Add(at(i));
    for (int i = 0; i < count; ++i) {
        out[i] = sum.Average(reciprocal);
        sum.Move(at(i + radius + 1), at(i - radius));
    }
}

// One vertical box pass over the whole image, row by row, with a running sum per column.
void BoxColumns(QRgb* pixels, int width, int height, int stride, int radius, QVector<Sum>& sums, QVector<QRgb>& copy)
{
    const quint64 reciprocal = Reciprocal(2 * radius + 1);
    std::copy(pixels, pixels + stride * height, copy.begin());
    const auto row = [&copy, height, stride](int y) { return copy.constData() + std::clamp(y, 0, height - 1) * stride; };
    std::fill(sums.begin(), sums.end(), Sum());
    for (int y = -radius; y <= radius; ++y) {
        const QRgb* source = row(y);
        for (int x = 0; x < width; ++x)
            sums[x].Add(source[x]);
    }
    for (int y = 0; y < height; ++y) {
        QRgb* out = pixels + y * stride;
        const QRgb* entering = row(y + radius + 1);
        const QRgb* leaving = row(y - radius);
        for (int x = 0; x < width; ++x) {
            out[x] = sums[x].Average(reciprocal);
            sums[x].Move(entering[x], leaving[x]);
        }
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
    auto* pixels = reinterpret_cast<QRgb*>(image.bits());
    QVector<QRgb> line(width);
    QVector<QRgb> copy(stride * height);
    QVector<Sum> sums(width);
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y) {
            QRgb* row = pixels + y * stride;
            std::copy(row, row + width, line.begin());
            BoxRow(line.constData(), row, width, boxRadius);
        }
        BoxColumns(pixels, width, height, stride, boxRadius, sums, copy);
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
    const qreal sigma = std::max<qreal>(radius, 0) * kSigmaPerRadius;
    if (sigma < kNoBlurSigma || m_levels.size() == 1) {
        QImage image = m_levels.first();
        if (sigma >= kNoBlurSigma)
            BoxBlur3(image, BoxRadiusFor(sigma));
        return image;
    }
    // Never the full picture, where box passes cost the most: halving and scaling back up
    // spreads by about half a pixel of the level, and the box passes add the rest.
    int level = 1;
    qreal levelSigma = sigma / 2;
    while (levelSigma > kLevelSigma && level + 1 < m_levels.size()) {
        levelSigma /= 2;
        ++level;
    }
    QImage image = m_levels[level];
    const qreal rest = std::sqrt(std::max<qreal>(0, levelSigma * levelSigma - kResamplingSigma * kResamplingSigma));
    if (rest >= kNoBlurSigma)
        BoxBlur3(image, BoxRadiusFor(rest));
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
