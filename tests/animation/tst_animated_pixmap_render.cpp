#include <qt_halvo/animation/animated_pixmap_render.h>

#include <QtTest/QtTest>

using OrvantaQT::AnimatedPixmapRender;

namespace {

const QSize kSize(200, 100);

// Every pixel names its picture and its place: red and green the low bits of x and y,
// blue their high bits and, in its top bit, which picture it is.
QPixmap Labelled(bool incoming)
{
    QImage image(kSize, QImage::Format_RGB32);
    for (int y = 0; y < kSize.height(); ++y) {
        for (int x = 0; x < kSize.width(); ++x)
            image.setPixel(x, y, qRgb(x & 255, y & 255, (incoming ? 0x80 : 0) | ((x >> 8) << 2) | (y >> 8)));
    }
    return QPixmap::fromImage(image);
}

struct Source
{
    bool incoming;
    QPoint point;
    bool operator==(const Source& other) const { return incoming == other.incoming && point == other.point; }
};

Source Decode(QRgb pixel)
{
    const int blue = qBlue(pixel);
    return {bool(blue & 0x80), QPoint(qRed(pixel) | (((blue >> 2) & 3) << 8), qGreen(pixel) | ((blue & 3) << 8))};
}

// What the slide shows at (x, y) on frame f with no offset: the page being left moved on
// by f pixels, and the page coming in right behind it.
Source Expected(int direction, int f, int x, int y)
{
    const int w = kSize.width();
    const int h = kSize.height();
    switch (direction) {
    case 0:
        return x < w - f ? Source{false, {x + f, y}} : Source{true, {x - (w - f), y}};
    case 1:
        return x >= f ? Source{false, {x - f, y}} : Source{true, {x + w - f, y}};
    case 2:
        return y < h - f ? Source{false, {x, y + f}} : Source{true, {x, y - (h - f)}};
    default:
        return y >= f ? Source{false, {x, y - f}} : Source{true, {x, y + h - f}};
    }
}

// Moves the render's time line to the first moment it shows this frame.
bool GoToFrame(AnimatedPixmapRender& render, int frame)
{
    QTimeLine& timeLine = render.TimeLine();
    for (int time = 0; time <= timeLine.duration(); ++time) {
        timeLine.setCurrentTime(time);
        if (timeLine.currentFrame() == frame)
            return true;
    }
    return false;
}

QImage Paint(AnimatedPixmapRender& render)
{
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(Qt::black);
    render.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace

class TestAnimatedPixmapRender : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFrameFollowsTheSlide_data();
    void everyFrameFollowsTheSlide();
    void offsetEndsTheSlideShort_data();
    void offsetEndsTheSlideShort();
};

void TestAnimatedPixmapRender::everyFrameFollowsTheSlide_data()
{
    QTest::addColumn<int>("direction");
    for (int direction = 0; direction < 4; ++direction)
        QTest::addRow("direction %d", direction) << direction;
}

void TestAnimatedPixmapRender::everyFrameFollowsTheSlide()
{
    QFETCH(int, direction);
    AnimatedPixmapRender render;
    render.resize(kSize);
    render.SetDirection(direction);
    render.SetPictures(Labelled(false), Labelled(true));
    const int extent = direction < 2 ? kSize.width() : kSize.height();
    render.TimeLine().setEasingCurve(QEasingCurve::Linear);
    render.TimeLine().setFrameRange(0, extent);

    for (int frame = 0; frame <= extent; frame += 7) {
        QVERIFY(GoToFrame(render, frame));
        const QImage image = Paint(render);
        for (int y = 0; y < kSize.height(); y += 3) {
            for (int x = 0; x < kSize.width(); x += 3) {
                const Source actual = Decode(image.pixel(x, y));
                const Source expected = Expected(direction, frame, x, y);
                if (!(actual == expected))
                    QFAIL(qPrintable(QStringLiteral("frame %1 at (%2, %3): %4 picture's (%5, %6), expected %7 picture's (%8, %9)")
                                         .arg(frame).arg(x).arg(y)
                                         .arg(actual.incoming ? "incoming" : "leaving").arg(actual.point.x()).arg(actual.point.y())
                                         .arg(expected.incoming ? "incoming" : "leaving").arg(expected.point.x()).arg(expected.point.y())));
            }
        }
    }
}

void TestAnimatedPixmapRender::offsetEndsTheSlideShort_data()
{
    everyFrameFollowsTheSlide_data();
}

// With an offset the slide is that much shorter: on its last frame the incoming picture
// is at its place, and a strip as wide as the offset at the end still shows the page left.
void TestAnimatedPixmapRender::offsetEndsTheSlideShort()
{
    QFETCH(int, direction);
    const int offset = 15;
    AnimatedPixmapRender render;
    render.resize(kSize);
    render.SetDirection(direction);
    render.SetOffset(offset);
    render.SetPictures(Labelled(false), Labelled(true));
    const bool horizontal = direction < 2;
    const int length = horizontal ? kSize.width() : kSize.height();
    render.TimeLine().setFrameRange(0, length - offset);
    QVERIFY(GoToFrame(render, length - offset));
    const QImage image = Paint(render);
    for (int y = 0; y < kSize.height(); y += 3) {
        for (int x = 0; x < kSize.width(); x += 3) {
            const Source actual = Decode(image.pixel(x, y));
            QCOMPARE(actual.incoming, (horizontal ? x : y) < length - offset);
            if (actual.incoming)
                QCOMPARE(actual.point, QPoint(x, y));
        }
    }
}

QTEST_MAIN(TestAnimatedPixmapRender)
#include "tst_animated_pixmap_render.moc"
