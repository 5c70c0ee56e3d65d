#include "image_test_support.h"
#include "test_support.h"

#include "../../qt_halvo/images/image_decoder_p.h"

using namespace OrvantaQT;

namespace {

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
        Columns<QSize, QSize, QSize>({"source", "bounds", "fitted"});
        QTest::newRow("wide into a square") << QSize(400, 300) << QSize(200, 200) << QSize(200, 150);
        QTest::newRow("one side too large") << QSize(100, 400) << QSize(200, 200) << QSize(50, 200);
        QTest::newRow("smaller: never enlarged") << QSize(100, 50) << QSize(200, 200) << QSize(100, 50);
        QTest::newRow("empty bounds keep it") << QSize(400, 300) << QSize(0, 10) << QSize(400, 300);
        QTest::newRow("a sliver keeps a pixel") << QSize(1000, 2) << QSize(100, 100) << QSize(100, 1);
    }
    void fitInto()
    {
        auto [source, bounds, fitted] = Row<QSize, QSize, QSize>({"source", "bounds", "fitted"});
        QCOMPARE(FitInto(source, bounds), fitted);
    }

    void shrinkInto()
    {
        QImage wide(400, 200, QImage::Format_RGB32);
        wide.fill(Qt::red);
        QCOMPARE(ShrinkInto(wide, {100, 100}).size(), QSize(100, 50));
        // A picture that fits is handed back as it is, not copied nor enlarged.
        QCOMPARE(ShrinkInto(wide, {800, 800}).cacheKey(), wide.cacheKey());
        QCOMPARE(ShrinkInto(wide, {}).cacheKey(), wide.cacheKey());
    }

    void decode_data()
    {
        // result: hues a quarter in from top left and bottom right, or the error
        Columns<QByteArray, QSize, qint64, QSize, QSize, QString>(
            {"bytes", "bounds", "maxPixels", "size", "source", "result"});
        const QByteArray jpeg = Halves({400, 200}, "jpg");
        const qint64 many = 1 << 24;
        const QSize square(100, 100), wide(400, 200), tall(200, 400);
        QTest::newRow("PNG scaled") << Halves(wide) << square << many << QSize(100, 50) << wide << "red blue";
        QTest::newRow("JPEG scaled") << jpeg << QSize(50, 50) << many << QSize(50, 25) << wide << "red blue";
        QTest::newRow("EXIF 6: turned right") << WithOrientation(jpeg, 6) << square << many << QSize(50, 100) << tall
                                              << "red blue";
        QTest::newRow("EXIF 8: turned left") << WithOrientation(jpeg, 8) << QSize(400, 400) << many << tall << tall
                                             << "blue red";
        QTest::newRow("EXIF 3: upside down") << WithOrientation(jpeg, 3) << square << many << QSize(100, 50) << wide
                                             << "blue red";
        QTest::newRow("EXIF 2: mirrored") << WithOrientation(jpeg, 2) << QSize() << many << wide << wide << "blue red";
        QTest::newRow("at the limit") << Halves(wide) << square << qint64(400 * 200) << QSize(100, 50) << wide
                                      << "red blue";
        QTest::newRow("bomb refused") << Halves({3000, 3000}) << square << qint64(1000 * 1000) << QSize(0, 0) << QSize()
                                      << "the picture has 3000 x 3000 pixels, more than the 1000000 allowed";
        QTest::newRow("garbage") << QByteArray(500, 'x') << square << many << QSize(0, 0) << QSize()
                                 << "not a picture Qt can read";
        // What libjpeg makes of the missing part is its own business; the size is ours.
        QTest::newRow("cut short") << jpeg.left(jpeg.size() / 3) << square << many << QSize(100, 50) << wide << "";
    }
    void decode()
    {
        auto [bytes, bounds, maxPixels, size, source, result] =
            Row<QByteArray, QSize, qint64, QSize, QSize, QString>(
                {"bytes", "bounds", "maxPixels", "size", "source", "result"});
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
