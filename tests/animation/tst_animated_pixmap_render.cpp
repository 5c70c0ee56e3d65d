#include <qt_halvo/animation/animated_pixmap_render.h>

#include "test_support.h"

class TestAnimatedPixmapRender : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFrameFollowsTheSlide_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("offset");
        for (int row = 0; row < 8; ++row)
            QTest::addRow("direction %d, offset %d", row % 4, row / 4 * 15) << row % 4 << row / 4 * 15;
    }
    // On frame f the page being left has moved on by f pixels and the page coming in follows right behind it; with an
    // offset the slide is that much shorter and ends with the incoming picture in place, and only that one is followed.
    void everyFrameFollowsTheSlide()
    {
        QFETCH(int, direction);
        QFETCH(int, offset);
        QImage leaving(200, 100, QImage::Format_RGB32), incoming = leaving; // each pixel names its place and its picture
        for (int i = 0; i < 200 * 100; ++i)
            leaving.setPixel(i % 200, i / 200, qRgb(i % 200, i / 200, 0)), incoming.setPixel(i % 200, i / 200, qRgb(i % 200, i / 200, 255));
        const bool across = direction < 2, back = direction % 2 == 1; // back: the content moves right or down
        const int last = (across ? 200 : 100) - offset;
        OrvantaQT::AnimatedPixmapRender render;
        render.resize(200, 100);
        render.SetDirection(direction), render.SetOffset(offset);
        render.SetPictures(QPixmap::fromImage(leaving), QPixmap::fromImage(incoming));
        QTimeLine& timeLine = render.TimeLine();
        timeLine.setEasingCurve(QEasingCurve::Linear), timeLine.setFrameRange(0, last);
        for (int frame = 0, time = 0; frame <= last; frame = frame == last ? last + 1 : std::min(frame + 7, last)) {
            while (timeLine.currentFrame() != frame && time <= timeLine.duration()) // the first moment of the frame
                timeLine.setCurrentTime(time++);
            const QImage image = TestSupport::Render(&render, 1, Qt::black);
            for (int i = 0; i < 200 * 100; i += 7) { // every 7th pixel, in a different column on each row
                const int x = i % 200, y = i / 200, along = across ? x : y;
                const bool in = back ? along < frame : along >= last - frame && along < last;
                const int shift = (back ? -1 : 1) * (in ? frame - last : frame);
                const QRgb expected = qRgb(x + (across ? shift : 0), y + (across ? 0 : shift), in ? 255 : 0), actual = image.pixel(x, y);
                if (qBlue(actual) != qBlue(expected) || (actual != expected && (in || !offset)))
                    QFAIL(qPrintable(QString("frame %1 at (%2, %3): %4, expected %5").arg(frame).arg(x).arg(y).arg(actual, 0, 16).arg(expected, 0, 16)));
            }
        }
    }
};

QTEST_MAIN(TestAnimatedPixmapRender)
#include "tst_animated_pixmap_render.moc"
