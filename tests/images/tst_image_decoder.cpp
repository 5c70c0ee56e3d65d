#include "test_support.h"

#include "../../qt_halvo/images/image_decoder_p.h"

using namespace OrvantaQT;
using TestSupport::Pixels;

namespace {

// Red left half, blue right half: where the halves end up shows the orientation.
QImage Halves(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    return image;
}

QByteArray Encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 90);
    return bytes;
}

// Qt writes no EXIF: an APP1 segment holding only the orientation goes after the SOI marker.
QByteArray WithOrientation(QByteArray jpeg, quint16 orientation)
{
    QByteArray tiff = QByteArray("MM\0\x2a\0\0\0\x08", 8) + QByteArray("\0\x01\x01\x12\0\x03\0\0\0\x01", 10);
    tiff += char(orientation >> 8);
    tiff += char(orientation & 0xff);
    tiff += QByteArray(6, '\0');  // padding of the value, no next IFD
    const QByteArray payload = QByteArray("Exif\0\0", 6) + tiff;
    const int length = payload.size() + 2;
    jpeg.insert(2, QByteArray("\xff\xe1", 2) + char(length >> 8) + char(length & 0xff) + payload);
    return jpeg;
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
        QTest::newRow("tall into a square") << QSize(300, 600) << QSize(200, 200) << QSize(100, 200);
        QTest::newRow("smaller is never enlarged") << QSize(100, 50) << QSize(200, 200) << QSize(100, 50);
        QTest::newRow("one side too large") << QSize(100, 400) << QSize(200, 200) << QSize(50, 200);
        QTest::newRow("empty bounds keep it") << QSize(400, 300) << QSize(0, 10) << QSize(400, 300);
        QTest::newRow("a sliver keeps a pixel") << QSize(1000, 2) << QSize(100, 100) << QSize(100, 1);
        QTest::newRow("nothing stays nothing") << QSize(0, 0) << QSize(10, 10) << QSize(0, 0);
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
        // Colours at the top-left and bottom-right quarter points, or the error.
        QTest::addColumn<QString>("result");
        const QImage halves = Halves(QSize(400, 200));
        const QByteArray jpeg = Encoded(halves, "jpg");
        const qint64 plenty = 1 << 24;
        QTest::newRow("PNG scaled") << Encoded(halves, "png") << QSize(100, 100) << plenty << QSize(100, 50)
                                    << QSize(400, 200) << "#ffff0000 #ff0000ff";
        QTest::newRow("PNG unscaled") << Encoded(halves, "png") << QSize(800, 800) << plenty << QSize(400, 200)
                                      << QSize(400, 200) << "#ffff0000 #ff0000ff";
        QTest::newRow("JPEG scaled while decoding") << jpeg << QSize(50, 50) << plenty << QSize(50, 25)
                                                    << QSize(400, 200) << "red blue";
        QTest::newRow("JPEG turned right (6)") << WithOrientation(jpeg, 6) << QSize(100, 100) << plenty
                                               << QSize(50, 100) << QSize(200, 400) << "red blue";
        QTest::newRow("JPEG upside down (3)") << WithOrientation(jpeg, 3) << QSize(100, 100) << plenty
                                              << QSize(100, 50) << QSize(400, 200) << "blue red";
        QTest::newRow("JPEG mirrored (2)") << WithOrientation(jpeg, 2) << QSize(400, 400) << plenty << QSize(400, 200)
                                           << QSize(400, 200) << "blue red";
        QTest::newRow("JPEG turned left (8)") << WithOrientation(jpeg, 8) << QSize(400, 400) << plenty
                                              << QSize(200, 400) << QSize(200, 400) << "blue red";
        QTest::newRow("bomb refused") << Encoded(QImage(3000, 3000, QImage::Format_Mono), "png") << QSize(100, 100)
                                      << qint64(1000 * 1000) << QSize(0, 0) << QSize()
                                      << "the picture has 3000 x 3000 pixels, more than the 1000000 allowed";
        QTest::newRow("just under the limit") << Encoded(halves, "png") << QSize(100, 100) << qint64(400 * 200)
                                              << QSize(100, 50) << QSize(400, 200) << "#ffff0000 #ff0000ff";
        QTest::newRow("garbage") << QByteArray(500, 'x') << QSize(100, 100) << plenty << QSize(0, 0) << QSize()
                                 << "not a picture Qt can read";
        // What libjpeg makes of the missing part is its own business; the size is ours.
        QTest::newRow("cut short") << jpeg.left(jpeg.size() / 3) << QSize(100, 100) << plenty << QSize(100, 50)
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
        QCOMPARE(decoded.image.size(), size);
        QCOMPARE(decoded.source, source);
        if (decoded.image.isNull()) {
            QCOMPARE(decoded.error, result);
            return;
        }
        QVERIFY(decoded.error.isEmpty());
        const QImage& image = decoded.image;
        const QStringList colours = Pixels(image, {QPoint(image.width() / 4, image.height() / 4),
                                                   QPoint(image.width() * 3 / 4, image.height() * 3 / 4)});
        // JPEG shades are near, not exact: the hue decides.
        QStringList hues;
        for (const QString& colour : colours)
            hues << (QColor(colour).red() > 200 && QColor(colour).blue() < 60   ? "red"
                     : QColor(colour).blue() > 200 && QColor(colour).red() < 60 ? "blue"
                                                                                : colour);
        if (result.isEmpty())
            return;
        if (result.startsWith('#'))
            QCOMPARE(colours.join(' '), result);
        else
            QCOMPARE(hues.mid(0, result.count(' ') + 1).join(' '), result);
    }

    void noDevice()
    {
        const DecodedImage decoded = DecodeImage(nullptr, QSize(10, 10), 100);
        QVERIFY(decoded.image.isNull());
        QCOMPARE(decoded.error, QStringLiteral("no data"));
    }
};

QTEST_MAIN(TestImageDecoder)
#include "tst_image_decoder.moc"
