#include <qt_halvo/widgets/window/window_hit_test.h>

#include "test_support.h"

using OrvantaQT::HitTestWindow;
using OrvantaQT::WindowHit;
using OrvantaQT::WindowHitRegions;

Q_DECLARE_METATYPE(WindowHit)

namespace QTest {
template <>
char* toString(const WindowHit& hit)
{
    static const char* const areas[] = {"Client", "Caption", "Resize"};
    QByteArray text = areas[hit.area];
    if (hit.edges & Qt::LeftEdge)
        text += " left";
    if (hit.edges & Qt::RightEdge)
        text += " right";
    if (hit.edges & Qt::TopEdge)
        text += " top";
    if (hit.edges & Qt::BottomEdge)
        text += " bottom";
    return qstrdup(text.constData());
}
} // namespace QTest

namespace {

// A 400 × 300 window with a 5-pixel band, a 32-pixel caption, a close button at its right
// end and a host's search field in the middle of it.
WindowHitRegions Regions(int border = 5)
{
    WindowHitRegions regions;
    regions.resizeBorder = border;
    regions.caption = QRect(0, 0, 400, 32);
    regions.controls = {QRect(360, 0, 40, 32), QRect(150, 4, 100, 24)};
    return regions;
}

WindowHit Resize(Qt::Edges edges)
{
    return WindowHit{WindowHit::Resize, edges};
}

const WindowHit client{WindowHit::Client, {}};
const WindowHit caption{WindowHit::Caption, {}};

} // namespace

class TstWindowHitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Points in device pixels of the 400 × 300 window at ratios 1 and 2: the band is 5
    // device-independent pixels, so 5 device pixels at 1 and 10 at 2; corners reach twice
    // as far along the edges.
    void hitTest_data()
    {
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<WindowHit>("expected");

        struct Row
        {
            const char* name;
            QPoint at1;
            QPoint at2;
            WindowHit expected;
        };
        const Row rows[] = {
            {"middle", {200, 150}, {400, 300}, client},
            {"caption", {60, 16}, {120, 32}, caption},
            {"caption right of the field", {300, 16}, {600, 32}, caption},
            {"close button", {380, 16}, {760, 32}, client},
            {"host field", {200, 16}, {400, 32}, client},
            {"host field under the band", {150, 4}, {300, 8}, Resize(Qt::TopEdge)},
            {"host field's first pixel below the band", {150, 5}, {300, 10}, client},
            {"just below the field", {200, 28}, {400, 56}, caption},
            {"field's last row", {200, 27}, {400, 55}, client},
            {"field's last column", {249, 16}, {499, 32}, client},
            {"just right of the field", {250, 16}, {500, 32}, caption},
            {"below the caption", {200, 32}, {400, 64}, client},
            {"left edge", {0, 150}, {0, 300}, Resize(Qt::LeftEdge)},
            {"left band's last pixel", {4, 150}, {9, 300}, Resize(Qt::LeftEdge)},
            {"past the left band", {5, 150}, {10, 300}, client},
            {"right edge", {399, 150}, {799, 300}, Resize(Qt::RightEdge)},
            {"right band's first pixel", {395, 150}, {790, 300}, Resize(Qt::RightEdge)},
            {"before the right band", {394, 150}, {789, 300}, client},
            {"top edge over the caption", {60, 0}, {120, 0}, Resize(Qt::TopEdge)},
            {"top edge over the close button", {380, 2}, {760, 4}, Resize(Qt::TopEdge)},
            {"bottom edge", {200, 299}, {400, 599}, Resize(Qt::BottomEdge)},
            {"top-left corner", {0, 0}, {0, 0}, Resize(Qt::TopEdge | Qt::LeftEdge)},
            {"top-left corner along the top", {9, 0}, {19, 0}, Resize(Qt::TopEdge | Qt::LeftEdge)},
            {"past the corner along the top", {10, 0}, {20, 0}, Resize(Qt::TopEdge)},
            {"top-left corner along the left", {0, 9}, {0, 19}, Resize(Qt::TopEdge | Qt::LeftEdge)},
            {"past the corner along the left", {0, 10}, {0, 20}, Resize(Qt::LeftEdge)},
            {"top-right corner", {399, 0}, {799, 0}, Resize(Qt::TopEdge | Qt::RightEdge)},
            {"bottom-left corner", {2, 297}, {4, 594}, Resize(Qt::BottomEdge | Qt::LeftEdge)},
            {"bottom-right corner", {399, 299}, {799, 599}, Resize(Qt::BottomEdge | Qt::RightEdge)},
            {"bottom-right along the bottom", {390, 299}, {780, 599}, Resize(Qt::BottomEdge | Qt::RightEdge)},
            {"bottom-right along the right", {399, 290}, {799, 580}, Resize(Qt::BottomEdge | Qt::RightEdge)},
            {"past the corner up the right", {399, 289}, {799, 579}, Resize(Qt::RightEdge)},
            {"outside", {400, 150}, {800, 300}, client},
            {"outside above", {200, -1}, {400, -1}, client},
        };
        for (const Row& row : rows) {
            QTest::addRow("%s at 1", row.name) << qreal(1) << row.at1 << row.expected;
            QTest::addRow("%s at 2", row.name) << qreal(2) << row.at2 << row.expected;
        }
        // At 1.5 the band is 7.5 device pixels, rounded to 8.
        QTest::addRow("band at 1.5") << qreal(1.5) << QPoint(7, 225) << Resize(Qt::LeftEdge);
        QTest::addRow("past the band at 1.5") << qreal(1.5) << QPoint(8, 225) << client;
    }
    void hitTest()
    {
        QFETCH(qreal, ratio);
        QFETCH(QPoint, point);
        QFETCH(WindowHit, expected);
        const QSize size(qRound(400 * ratio), qRound(300 * ratio));
        QCOMPARE(HitTestWindow(point, size, ratio, Regions()), expected);
    }

    // Maximised or full screen there is no band: the edges are the caption's or the client's.
    void noBandWithoutBorder_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<WindowHit>("expected");
        QTest::newRow("top-left") << QPoint(0, 0) << caption;
        QTest::newRow("left") << QPoint(0, 150) << client;
        QTest::newRow("bottom-right") << QPoint(399, 299) << client;
        QTest::newRow("close button at the top") << QPoint(399, 0) << client;
    }
    void noBandWithoutBorder()
    {
        QFETCH(QPoint, point);
        QFETCH(WindowHit, expected);
        QCOMPARE(HitTestWindow(point, QSize(400, 300), 1.0, Regions(0)), expected);
    }

    // A window narrower and lower than two corners still gives one edge per side, the nearer.
    void smallWindow_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<WindowHit>("expected");
        QTest::newRow("left half of the top") << QPoint(6, 0) << Resize(Qt::TopEdge | Qt::LeftEdge);
        QTest::newRow("right half of the top") << QPoint(10, 0) << Resize(Qt::TopEdge | Qt::RightEdge);
        QTest::newRow("upper half of the right") << QPoint(15, 6) << Resize(Qt::TopEdge | Qt::RightEdge);
        QTest::newRow("lower half of the right") << QPoint(15, 9) << Resize(Qt::BottomEdge | Qt::RightEdge);
        QTest::newRow("middle of the right") << QPoint(15, 8) << Resize(Qt::BottomEdge | Qt::RightEdge);
    }
    void smallWindow()
    {
        QFETCH(QPoint, point);
        QFETCH(WindowHit, expected);
        WindowHitRegions regions;
        regions.resizeBorder = 5;
        QCOMPARE(HitTestWindow(point, QSize(16, 16), 1.0, regions), expected);
    }

    // A ratio of 0 or below is taken as 1, and a band below one device pixel is one pixel.
    void oddRatios()
    {
        WindowHitRegions regions;
        regions.resizeBorder = 1;
        QCOMPARE(HitTestWindow(QPoint(0, 50), QSize(100, 100), 0, regions), Resize(Qt::LeftEdge));
        QCOMPARE(HitTestWindow(QPoint(1, 50), QSize(100, 100), -2, regions), client);
        QCOMPARE(HitTestWindow(QPoint(0, 50), QSize(100, 100), 0.25, regions), Resize(Qt::LeftEdge));
        QCOMPARE(HitTestWindow(QPoint(1, 50), QSize(100, 100), 0.25, regions), client);
    }
};

QTEST_MAIN(TstWindowHitTest)
#include "tst_window_hit_test.moc"
