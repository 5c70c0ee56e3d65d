#include <qt_halvo/utilities/paint_utilities.h>

#include <QtGui/QPainter>
#include <QtTest/QtTest>

using namespace OrvantaQT;
using PaintUtilities::Alignment;

namespace {

QImage Solid(QSize size, const QColor& colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

// The rectangle of the red pixels.
QRect RedArea(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

} // namespace

class TestPaintUtilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void compoundImage_data();
    void compoundImage();
    void tintKeepsWhiteAndTransparency();
    void iconBandsFromAStrip();
    void overlayOnAnIcon();

private:
    QTemporaryDir m_folder;
};

void TestPaintUtilities::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(Solid(QSize(31, 31), Qt::white).save(m_folder.filePath(QStringLiteral("background.png"))));
    QVERIFY(Solid(QSize(16, 16), Qt::red).save(m_folder.filePath(QStringLiteral("overlay.png"))));
    QVERIFY(QDir::setCurrent(m_folder.path())); // the paths hold one dot only
}

void TestPaintUtilities::compoundImage_data()
{
    QTest::addColumn<QString>("background");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QRect>("overlay"); // where it lands; none: a null image
    // 31 - 16 = 15 each way; halves truncate to 7.
    const QVector<QPoint> places{{0, 0}, {7, 0}, {15, 0}, {0, 7}, {7, 7}, {15, 7}, {0, 15}, {7, 15}, {15, 15}};
    for (int alignment = 0; alignment < places.size(); ++alignment)
        QTest::addRow("alignment %d", alignment)
            << "background.png" << alignment << QRect(places.at(alignment), QSize(16, 16));
    QTest::newRow("out of range") << "background.png" << 42 << QRect(0, 0, 16, 16);
    // Each path needs a name and one extension.
    QTest::newRow("two dots") << "a.b.png" << int(PaintUtilities::Center) << QRect();
    QTest::newRow("no dot") << "background" << int(PaintUtilities::Center) << QRect();
    QTest::newRow("missing file") << "nothing.png" << int(PaintUtilities::Center) << QRect();
}

void TestPaintUtilities::compoundImage()
{
    QFETCH(QString, background);
    QFETCH(int, alignment);
    QFETCH(QRect, overlay);
    const QImage compound =
        PaintUtilities::BuildCompoundImage(background, QStringLiteral("overlay.png"), Alignment(alignment));
    if (overlay.isNull()) {
        QVERIFY(compound.isNull());
        return;
    }
    QCOMPARE(compound.size(), QSize(31, 31));
    QCOMPARE(RedArea(compound), overlay);
}

// Black takes the colour, white stays white, a transparent pixel stays transparent and
// a half-transparent one keeps its alpha.
void TestPaintUtilities::tintKeepsWhiteAndTransparency()
{
    QImage source(4, 1, QImage::Format_ARGB32);
    source.setPixel(0, 0, qRgba(0, 0, 0, 255));
    source.setPixel(1, 0, qRgba(255, 255, 255, 255));
    source.setPixel(2, 0, qRgba(0, 0, 0, 0));
    source.setPixel(3, 0, qRgba(0, 0, 0, 128));
    const QColor colour(200, 40, 90);
    const QImage tinted = PaintUtilities::TintedImage(QPixmap::fromImage(source), colour).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(tinted.pixelColor(0, 0), colour);
    QCOMPARE(tinted.pixelColor(1, 0), QColor(Qt::white));
    QCOMPARE(qAlpha(tinted.pixel(2, 0)), 0);
    QCOMPARE(qAlpha(tinted.pixel(3, 0)), 128);

    // Grey by the qGray weights: (r × 11 + g × 16 + b × 5) / 32, then screened.
    QImage grey(1, 1, QImage::Format_RGB32);
    grey.setPixel(0, 0, qRgb(100, 50, 10));
    const int g = (100 * 11 + 50 * 16 + 10 * 5) / 32;
    const QColor screened = PaintUtilities::TintedImage(QPixmap::fromImage(grey), QColor(0, 0, 0)).pixelColor(0, 0);
    QCOMPARE(screened, QColor(g, g, g));

    // No colour: unchanged.
    QCOMPARE(PaintUtilities::TintedImage(QPixmap::fromImage(source), QColor()).convertToFormat(QImage::Format_ARGB32), source);
}

void TestPaintUtilities::iconBandsFromAStrip()
{
    QImage strip(20, 100, QImage::Format_ARGB32);
    const QColor colours[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 20; ++x)
            strip.setPixelColor(x, y, colours[std::min(y / 33, 3)]);
    const QString path = m_folder.filePath(QStringLiteral("strip.png"));
    QVERIFY(strip.save(path));

    const QIcon triple = IconTripleFromResource(path);
    QCOMPARE(triple.availableSizes(QIcon::Normal), QList<QSize>{QSize(20, 33)});
    const QPair<QIcon::Mode, QColor> modes[] = {{QIcon::Normal, Qt::red}, {QIcon::Active, Qt::green}, {QIcon::Disabled, Qt::blue}};
    for (const auto& mode : modes) {
        const QImage band = triple.pixmap(QSize(20, 33), mode.first).toImage();
        QCOMPARE(band.height(), 33);
        QCOMPARE(band.pixelColor(10, 0), mode.second);
        QCOMPARE(band.pixelColor(10, 32), mode.second); // the 100th row is left out
    }
    const QIcon quadruple = IconQuadrupleFromResource(path);
    QCOMPARE(quadruple.pixmap(QSize(20, 25), QIcon::Selected).toImage().pixelColor(10, 0), QColor(Qt::green)); // row 50
}

void TestPaintUtilities::overlayOnAnIcon()
{
    QPixmap base(20, 20);
    base.fill(Qt::white);
    QIcon icon(base);
    QPixmap badge(6, 6);
    badge.fill(Qt::red);
    AddOverlayToIcon(icon, QPoint(14, 14), badge);
    const QImage result = icon.pixmap(QSize(20, 20)).toImage();
    QCOMPARE(RedArea(result), QRect(14, 14, 6, 6));
    QCOMPARE(icon.availableSizes().size(), 1);
}

QTEST_MAIN(TestPaintUtilities)
#include "tst_paint_utilities.moc"
