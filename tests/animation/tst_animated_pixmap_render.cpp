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

// What the slide shows at p on frame f: the page being left moved on by f pixels, and the
// page coming in right behind it, short of its place by the offset o.
Source Expected(int direction, int f, int o, QPoint p)
{
    const bool horizontal = direction < 2;
    const int length = horizontal ? kSize.width() : kSize.height();
    int& along = horizontal ? p.rx() : p.ry();
    if (direction % 2 == 0) { // towards the start
        const bool incoming = along >= length - o - f && along < length - o;
        along += incoming ? -(length - o - f) : f;
        return {incoming, p};
    }
    const bool incoming = along < f;
    along += incoming ? length - o - f : -f;
    return {incoming, p};
}

QString Described(const Source& source)
{
    return QStringLiteral("%1 picture's (%2, %3)")
        .arg(source.incoming ? "incoming" : "leaving")
        .arg(source.point.x())
        .arg(source.point.y());
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
};

void TestAnimatedPixmapRender::everyFrameFollowsTheSlide_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("offset");
    for (const int offset : {0, 15}) {
        for (int direction = 0; direction < 4; ++direction)
            QTest::addRow("direction %d, offset %d", direction, offset) << direction << offset;
    }
}

// With an offset the slide is that much shorter, and on its last frame the incoming
// picture is at its place; only the incoming picture is followed then.
void TestAnimatedPixmapRender::everyFrameFollowsTheSlide()
{
    QFETCH(int, direction);
    QFETCH(int, offset);
    AnimatedPixmapRender render;
    render.resize(kSize);
    render.SetDirection(direction);
    render.SetOffset(offset);
    render.SetPictures(Labelled(false), Labelled(true));
    const int last = (direction < 2 ? kSize.width() : kSize.height()) - offset;
    render.TimeLine().setEasingCurve(QEasingCurve::Linear);
    render.TimeLine().setFrameRange(0, last);

    for (int frame = 0;; frame = std::min(frame + 7, last)) {
        QVERIFY(GoToFrame(render, frame));
        const QImage image = Paint(render);
        for (int y = 0; y < kSize.height(); y += 3) {
            for (int x = 0; x < kSize.width(); x += 3) {
                const Source actual = Decode(image.pixel(x, y));
                const Source expected = Expected(direction, frame, offset, QPoint(x, y));
                const bool matches = actual.incoming == expected.incoming
                    && (actual.point == expected.point || (offset > 0 && !actual.incoming));
                if (!matches)
                    QFAIL(qPrintable(QStringLiteral("frame %1 at (%2, %3): %4, expected %5")
                                         .arg(frame).arg(x).arg(y).arg(Described(actual), Described(expected))));
            }
        }
        if (frame == last)
            break;
    }
}

QTEST_MAIN(TestAnimatedPixmapRender)
#include "tst_animated_pixmap_render.moc"
