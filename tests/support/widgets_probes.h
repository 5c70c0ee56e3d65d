// What the tests of the input and text widgets share.
#pragma once

#include "test_support.h"

namespace WidgetsProbes {

// DejaVu Sans (installed by the test set-up) at a pixel size: the same widths everywhere.
inline QFont TestFont(int pixelSize = 13)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    return font;
}

// The bounds of the pixels in area where the pictures differ.
inline QRect Changed(const QImage& a, const QImage& b, const QRect& area = QRect(0, 0, 9999, 9999))
{
    QRect changed;
    for (int y = area.top(); y <= std::min(area.bottom(), a.height() - 1); ++y)
        for (int x = area.left(); x <= std::min(area.right(), a.width() - 1); ++x)
            changed |= a.pixel(x, y) != b.pixel(x, y) ? QRect(x, y, 1, 1) : QRect();
    return changed;
}

} // namespace WidgetsProbes
