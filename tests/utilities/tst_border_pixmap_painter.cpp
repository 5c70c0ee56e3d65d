#include <qt_halvo/utilities/border_pixmap_painter.h>

#include "test_support.h"

class TestBorderPixmapPainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bordersKeepTheirSize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("border"); // as drawn
        QTest::newRow("stretched wide") << QSize(60, 20) << 3;
        QTest::newRow("stretched tall") << QSize(20, 50) << 3;
        QTest::newRow("smaller than the borders allow") << QSize(4, 4) << 2;
    }
    // The lower band of a strip, a red frame 3 px wide round a blue middle, drawn stretched
    // whatever the painter's composition mode: the frame keeps its width and nothing of the
    // green band above comes in. No painter or no picture is logged.
    void bordersKeepTheirSize()
    {
        QFETCH(QSize, size);
        QFETCH(int, border);
        QPixmap strip(12, 24);
        strip.fill(Qt::green);
        QPainter(&strip).fillRect(0, 12, 12, 12, Qt::red);
        QPainter(&strip).fillRect(3, 15, 6, 6, Qt::blue);
        QImage image(size, QImage::Format_ARGB32_Premultiplied), expected(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        expected.fill(Qt::red);
        QPainter(&expected).fillRect(expected.rect().marginsRemoved(QMargins(border, border, border, border)), Qt::blue);
        const LogCapture::Mark mark;
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Destination);
        OrvantaQT::DrawBorderPixmap(&painter, image.rect(), strip, QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
        OrvantaQT::DrawBorderPixmap(&painter, QRect(), strip, QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
        OrvantaQT::DrawBorderPixmap(&painter, image.rect(), QPixmap(), QRect(0, 12, 12, 12), {});
        OrvantaQT::DrawBorderPixmap(nullptr, image.rect(), strip, QRect(0, 12, 12, 12), {});
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_Destination);
        painter.end();
        QCOMPARE(image, expected);
        QCOMPARE(mark.Since().size(), 2);
    }
};

QTEST_MAIN(TestBorderPixmapPainter)
#include "tst_border_pixmap_painter.moc"
