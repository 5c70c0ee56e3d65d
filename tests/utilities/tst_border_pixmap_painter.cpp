#include <qt_halvo/utilities/border_pixmap_painter.h>

#include "log_capture.h"

#include <QtGui/QPainter>
#include <QtTest/QtTest>

using OrvantaQT::DrawBorderPixmap;

namespace {

// 12 x 12: a red frame 3 pixels wide around a blue middle, on a strip that starts at y = 12.
QPixmap Frame()
{
    QPixmap pixmap(12, 24);
    pixmap.fill(Qt::green);
    QPainter painter(&pixmap);
    painter.fillRect(0, 12, 12, 12, Qt::red);
    painter.fillRect(3, 15, 6, 6, Qt::blue);
    return pixmap;
}

QImage Draw(QSize size, const QMargins& borders)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    DrawBorderPixmap(&painter, image.rect(), Frame(), QRect(0, 12, 12, 12), borders);
    return image;
}

} // namespace

class TestBorderPixmapPainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bordersKeepTheirSize_data();
    void bordersKeepTheirSize();
    void nothingToDrawIsReported();
};

void TestBorderPixmapPainter::bordersKeepTheirSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("border"); // as drawn
    QTest::newRow("stretched wide") << QSize(60, 20) << 3;
    QTest::newRow("stretched tall") << QSize(20, 50) << 3;
    QTest::newRow("smaller than the borders allow") << QSize(4, 4) << 2;
}

void TestBorderPixmapPainter::bordersKeepTheirSize()
{
    QFETCH(QSize, size);
    QFETCH(int, border);
    const QImage image = Draw(size, QMargins(3, 3, 3, 3));
    const int w = size.width();
    const int h = size.height();
    // The frame is exactly `border` pixels wide on every side, the middle blue, and
    // nothing of the strip's other band comes in.
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const bool frame = x < border || y < border || x >= w - border || y >= h - border;
            const QColor expected = frame ? QColor(Qt::red) : QColor(Qt::blue);
            if (image.pixelColor(x, y) != expected)
                QFAIL(qPrintable(QStringLiteral("(%1, %2) is %3").arg(x).arg(y).arg(image.pixelColor(x, y).name())));
        }
    }
}

void TestBorderPixmapPainter::nothingToDrawIsReported()
{
    const LogCapture::Mark mark;
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    DrawBorderPixmap(nullptr, QRect(0, 0, 10, 10), Frame(), QRect(0, 0, 12, 12), {});
    DrawBorderPixmap(&painter, QRect(0, 0, 10, 10), QPixmap(), QRect(0, 0, 12, 12), {});
    DrawBorderPixmap(&painter, QRect(), Frame(), QRect(0, 0, 12, 12), {});
    QCOMPARE(mark.Since().size(), 2);
}

QTEST_MAIN(TestBorderPixmapPainter)
#include "tst_border_pixmap_painter.moc"
