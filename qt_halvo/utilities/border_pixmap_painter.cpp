#include <qt_halvo/utilities/border_pixmap_painter.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QPainter>
#include <QtGui/QPixmap>

#include <algorithm>

namespace OrvantaQT {

namespace {

// The three spans (start border, middle, end border) of a length cut by two borders.
struct Spans
{
    int start;
    int middle;
    int end;
};

Spans Cut(int length, int startBorder, int endBorder)
{
    const int start = std::min(startBorder, length / 2);
    const int end = std::min(endBorder, length - start);
    return {start, std::max(0, length - start - end), end};
}

} // namespace

void DrawBorderPixmap(QPainter* painter, const QRect& target, const QPixmap& pixmap, const QRect& source,
                      const QMargins& borders)
{
    if (!painter || pixmap.isNull() || target.isEmpty() || source.isEmpty()) {
        if (!painter || pixmap.isNull())
            QTH_LOG_WARNING("DrawBorderPixmap: no painter or no picture");
        return;
    }
    // Each border is limited by the source and by the target.
    const int left = std::min({borders.left(), source.width() / 2, target.width() / 2});
    const int right = std::min({borders.right(), source.width() / 2, target.width() / 2});
    const int top = std::min({borders.top(), source.height() / 2, target.height() / 2});
    const int bottom = std::min({borders.bottom(), source.height() / 2, target.height() / 2});
    const Spans sx = Cut(source.width(), left, right);
    const Spans sy = Cut(source.height(), top, bottom);
    const Spans tx = Cut(target.width(), left, right);
    const Spans ty = Cut(target.height(), top, bottom);

    const int sourceX[] = {source.left(), source.left() + sx.start, source.left() + sx.start + sx.middle};
    const int sourceW[] = {sx.start, sx.middle, sx.end};
    const int sourceY[] = {source.top(), source.top() + sy.start, source.top() + sy.start + sy.middle};
    const int sourceH[] = {sy.start, sy.middle, sy.end};
    const int targetX[] = {target.left(), target.left() + tx.start, target.left() + tx.start + tx.middle};
    const int targetW[] = {tx.start, tx.middle, tx.end};
    const int targetY[] = {target.top(), target.top() + ty.start, target.top() + ty.start + ty.middle};
    const int targetH[] = {ty.start, ty.middle, ty.end};

    const QPainter::CompositionMode mode = painter->compositionMode();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect from(sourceX[column], sourceY[row], sourceW[column], sourceH[row]);
            const QRect to(targetX[column], targetY[row], targetW[column], targetH[row]);
            if (!from.isEmpty() && !to.isEmpty())
                painter->drawPixmap(to, pixmap, from);
        }
    }
    painter->setCompositionMode(mode);
}

} // namespace OrvantaQT
