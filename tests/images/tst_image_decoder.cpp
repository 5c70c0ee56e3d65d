#include "test_support.h"

#include "../../qt_halvo/images/image_decoder_p.h"

using namespace OrvantaQT;

namespace {

// Red left half, blue right half, encoded: where the halves land shows the orientation.
QByteArray Halves(const QSize& size, const char* format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 90);
    return bytes;
}

// Qt writes no EXIF: an APP1 segment holding only the orientation goes after the SOI marker.
QByteArray WithOrientation(QByteArray jpeg, char orientation)
{
    const QByteArray app1 = QByteArray("\xff\xe1\0\x22" "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 29)
        + orientation + QByteArray(6, '\0');
    return jpeg.insert(2, app1);
}

// "red" or "blue" where the hue is clear (JPEG shades are near, not exact).
QString Hue(const QImage& image, int x, int y)
{
    const QColor c = image.pixelColor(x, y);
    return c.red() > 200 && c.blue() < 60 ? "red" : c.blue() > 200 && c.red() < 60 ? "blue" : c.name();
}

} // namespace

class TestImageDecoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitInto_data()
    {
        QTest::addColumn<QSize>("source");
        QTest::addColumn<QSize>("bounds");
        QTest::addColumn<QSize>("fitted");
        QTest::newRow("wide into a square") << QSize(400, 300) << QSize(200, 200) << QSize(200, 150);
        QTest::newRow("one side too large") << QSize(100, 400) << QSize(200, 200) << QSize(50, 200);
        QTest::newRow("smaller: never enlarged") << QSize(100, 50) << QSize(200, 200) << QSize(100, 50);
        QTest::newRow("empty bounds keep it") << QSize(400, 300) << QSize(0, 10) << QSize(400, 300);
        QTest::newRow("a sliver keeps a pixel") << QSize(1000, 2) << QSize(100, 100) << QSize(100, 1);
    }
    void fitInto()
    {
        QFETCH(QSize, source);
        QFETCH(QSize, bounds);
        QFETCH(QSize, fitted);
        QCOMPARE(FitInto(source, bounds), fitted);
    }

    void decode_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("bounds");
        QTest::addColumn<qint64>("maxPixels");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("source");
        QTest::addColumn<QString>("result");  // hues a quarter in from top left and bottom right, or the error
        const QByteArray jpeg = Halves({400, 200}, "jpg");
        const qint64 many = 1 << 24;
        QTest::newRow("PNG scaled") << Halves({400, 200}, "png") << QSize(100, 100) << many << QSize(100, 50)
                                    << QSize(400, 200) << "red blue";
        QTest::newRow("JPEG scaled") << jpeg << QSize(50, 50) << many << QSize(50, 25) << QSize(400, 200) << "red blue";
        QTest::newRow("EXIF 6: turned right") << WithOrientation(jpeg, 6) << QSize(100, 100) << many << QSize(50, 100)
                                              << QSize(200, 400) << "red blue";
        QTest::newRow("EXIF 8: turned left") << WithOrientation(jpeg, 8) << QSize(400, 400) << many << QSize(200, 400)
                                             << QSize(200, 400) << "blue red";
        QTest::newRow("EXIF 3: upside down") << WithOrientation(jpeg, 3) << QSize(100, 100) << many << QSize(100, 50)
                                             << QSize(400, 200) << "blue red";
        QTest::newRow("EXIF 2: mirrored") << WithOrientation(jpeg, 2) << QSize() << many << QSize(400, 200)
                                          << QSize(400, 200) << "blue red";
        QTest::newRow("at the limit") << Halves({400, 200}, "png") << QSize(100, 100) << qint64(400 * 200)
                                      << QSize(100, 50) << QSize(400, 200) << "red blue";
        QTest::newRow("bomb refused") << Halves({3000, 3000}, "png") << QSize(100, 100) << qint64(1000 * 1000)
                                      << QSize(0, 0) << QSize()
                                      << "the picture has 3000 x 3000 pixels, more than the 1000000 allowed";
        QTest::newRow("garbage") << QByteArray(500, 'x') << QSize(100, 100) << many << QSize(0, 0) << QSize()
                                 << "not a picture Qt can read";
        // What libjpeg makes of the missing part is its own business; the size is ours.
        QTest::newRow("cut short") << jpeg.left(jpeg.size() / 3) << QSize(100, 100) << many << QSize(100, 50)
                                   << QSize(400, 200) << "";
    }
    void decode()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, bounds);
        QFETCH(qint64, maxPixels);
        QFETCH(QSize, size);
        QFETCH(QSize, source);
        QFETCH(QString, result);
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const DecodedImage decoded = DecodeImage(&buffer, bounds, maxPixels);
        const QImage& image = decoded.image;
        QCOMPARE(image.size(), size);
        QCOMPARE(decoded.source, source);
        QCOMPARE(decoded.error, image.isNull() ? result : QString());
        if (!image.isNull() && !result.isEmpty())
            QCOMPARE(Hue(image, image.width() / 4, image.height() / 4) + ' '
                         + Hue(image, image.width() * 3 / 4, image.height() * 3 / 4),
                     result);
        QCOMPARE(DecodeImage(nullptr, bounds, maxPixels).error, QString("no data"));
    }
};

QTEST_MAIN(TestImageDecoder)
#include "tst_image_decoder.moc"
