// A fast Gaussian-like blur for pictures that are blurred at many radii in turn, as in a
// transition: the picture is halved a few times once, and each radius is then blurred on
// the level where it spans one to two pixels, with three box passes, and drawn scaled up.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QVector>
#include <QtGui/QImage>

class QPainter;
class QRectF;

namespace OrvantaQT {

class QT_HALVO_AUTOTEST_EXPORT BlurPyramid
{
public:
    BlurPyramid() = default;
    // The source in device pixels; levels are made down to about maxRadius.
    BlurPyramid(const QImage& source, qreal maxRadius);

    bool IsNull() const { return m_levels.isEmpty(); }

    // The source blurred by radius (in source pixels, roughly 2.5 standard deviations, as
    // for QGraphicsBlurEffect), at the resolution of the level chosen for it.
    QImage Blurred(qreal radius) const;

    // Draws the blurred source into target (logical coordinates of painter).
    void Draw(QPainter& painter, const QRectF& target, qreal radius) const;

private:
    QVector<QImage> m_levels; // level k is the source halved k times
};

// Three box blurs of this radius one after the other, in place; edges are clamped.
QT_HALVO_AUTOTEST_EXPORT void BoxBlur3(QImage& image, int boxRadius);

} // namespace OrvantaQT
