#include <qt_halvo/utilities/border_pixmap_painter.h>

#include "log_capture.h"

#include <QtGui/QPainter>
#include <QtTest/QtTest>

using OrvantaQT::DrawBorderPixmap;

namespace {

// A green band over a 12 x 12 band (from y = 12) of a red frame 3 pixels wide around a blue middle.
QPixmap Frame()
{
    QPixmap pixmap(12, 24);
    pixmap.fill(Qt::green);
    QPainter painter(&pixmap);
    painter.fillRect(0, 12, 12, 12, Qt::red);
    painter.fillRect(3, 15, 6, 6, Qt::blue);
    return pixmap;
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

// The frame is exactly `border` pixels wide on every side, the middle blue, and nothing
// of the strip's other band comes in.
void TestBorderPixmapPainter::bordersKeepTheirSize()
{
    QFETCH(QSize, size);
    QFETCH(int, border);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    DrawBorderPixmap(&painter, image.rect(), Frame(), QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
    painter.end();
    const QRect middle = image.rect().marginsRemoved(QMargins(border, border, border, border));
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QColor expected = middle.contains(x, y) ? QColor(Qt::blue) : QColor(Qt::red);
            if (image.pixelColor(x, y) != expected)
                QFAIL(qPrintable(QStringLiteral("(%1, %2) is %3").arg(x).arg(y).arg(image.pixelColor(x, y).name())));
        }
    }
}

// No painter or no picture is logged; an empty target is simply nothing to draw.
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
