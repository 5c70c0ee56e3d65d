#include <qt_halvo/utilities/border_pixmap_painter.h>

#include "test_support.h"

using OrvantaQT::DrawBorderPixmap;

class TestBorderPixmapPainter : public QObject
{
    Q_OBJECT

    // A green band over a 12 x 12 band (from y = 12) of a red frame 3 pixels wide around a blue middle.
    QPixmap m_strip{12, 24};

private Q_SLOTS:
    void initTestCase()
    {
        m_strip.fill(Qt::green);
        QPainter painter(&m_strip);
        painter.fillRect(0, 12, 12, 12, Qt::red);
        painter.fillRect(3, 15, 6, 6, Qt::blue);
    }
    void bordersKeepTheirSize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("border"); // as drawn
        QTest::newRow("stretched wide") << QSize(60, 20) << 3;
        QTest::newRow("stretched tall") << QSize(20, 50) << 3;
        QTest::newRow("smaller than the borders allow") << QSize(4, 4) << 2;
    }
    // The frame is exactly `border` pixels wide on every side, the middle blue, and nothing of
    // the strip's other band comes in, whatever the painter's composition mode.
    void bordersKeepTheirSize()
    {
        QFETCH(QSize, size);
        QFETCH(int, border);
        QImage image(size, QImage::Format_ARGB32_Premultiplied), expected(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        expected.fill(Qt::red);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Destination);
        DrawBorderPixmap(&painter, image.rect(), m_strip, QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_Destination);
        painter.end();
        QPainter(&expected).fillRect(expected.rect().marginsRemoved(QMargins(border, border, border, border)), Qt::blue);
        QCOMPARE(image, expected);
    }
    // No painter or no picture is logged; an empty target is simply nothing to draw.
    void nothingToDrawIsReported()
    {
        const LogCapture::Mark mark;
        QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        DrawBorderPixmap(nullptr, QRect(0, 0, 10, 10), m_strip, QRect(0, 0, 12, 12), {});
        DrawBorderPixmap(&painter, QRect(0, 0, 10, 10), QPixmap(), QRect(0, 0, 12, 12), {});
        DrawBorderPixmap(&painter, QRect(), m_strip, QRect(0, 0, 12, 12), {});
        QCOMPARE(mark.Since().size(), 2);
    }
};

QTEST_MAIN(TestBorderPixmapPainter)
#include "tst_border_pixmap_painter.moc"
