#include <qt_halvo/utilities/paint_utilities.h>

#include "test_support.h"

using namespace OrvantaQT;

namespace {

QRect RedArea(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            area |= image.pixelColor(x, y) == QColor(Qt::red) ? QRect(x, y, 1, 1) : QRect();
    return area;
}

} // namespace

class TestPaintUtilities : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

private Q_SLOTS:
    // A strip of 100 rows: 33 red, 33 green, 33 blue, one yellow; white and red squares.
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_folder.path())); // the paths hold one dot only
        QImage strip(20, 100, QImage::Format_RGB32), background(31, 31, strip.format()), overlay(16, 16, strip.format());
        strip.fill(Qt::yellow);
        background.fill(Qt::white);
        overlay.fill(Qt::red);
        const QColor bands[] = {Qt::red, Qt::green, Qt::blue};
        for (int band = 0; band < 3; ++band)
            QPainter(&strip).fillRect(0, 33 * band, 20, 33, bands[band]);
        QVERIFY(strip.save(QStringLiteral("strip.png")) && background.save(QStringLiteral("background.png"))
                && overlay.save(QStringLiteral("overlay.png")));
    }
    void compoundImage_data()
    {
        QTest::addColumn<QString>("background");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QRect>("overlay"); // where it lands; none: a null image
        // 31 - 16 = 15 each way; halves truncate to 7.
        const QVector<QPoint> places{{0, 0}, {7, 0}, {15, 0}, {0, 7}, {7, 7}, {15, 7}, {0, 15}, {7, 15}, {15, 15}, {0, 0}};
        for (int alignment = 0; alignment < places.size(); ++alignment) // the last one out of range
            QTest::addRow("alignment %d", alignment) << "background.png" << alignment << QRect(places[alignment], QSize(16, 16));
        QTest::newRow("two dots") << "a.b.png" << 4 << QRect();
        QTest::newRow("no dot") << "background" << 4 << QRect();
        QTest::newRow("missing file") << "nothing.png" << 4 << QRect();
    }
    void compoundImage()
    {
        QFETCH(QString, background);
        QFETCH(int, alignment);
        QFETCH(QRect, overlay);
        const QImage compound = PaintUtilities::BuildCompoundImage(background, QStringLiteral("overlay.png"),
                                                                   PaintUtilities::Alignment(alignment));
        QCOMPARE(compound.size(), overlay.isNull() ? QSize(0, 0) : QSize(31, 31));
        QCOMPARE(RedArea(compound), overlay);
    }
    // Tinting: black takes the colour, white stays white, grey is screened by it, the alpha and
    // the pixel ratio are kept; no colour leaves the picture as it is, drawn or not. Icons from
    // the strip's bands (the rows left over left out); an overlay on an icon's picture, then its
    // only one.
    void tintIconsAndOverlays()
    {
        QImage source(5, 1, QImage::Format_ARGB32);
        const QRgb pixels[] = {qRgb(0, 0, 0), qRgb(255, 255, 255), qRgba(0, 0, 0, 0), qRgba(0, 0, 0, 128), qRgb(100, 50, 10)};
        for (int x = 0; x < 5; ++x)
            source.setPixel(x, 0, pixels[x]);
        const QImage tinted = PaintUtilities::TintedImage(QPixmap::fromImage(source), QColor(200, 40, 90));
        QCOMPARE(tinted.pixelColor(0, 0), QColor(200, 40, 90));
        QCOMPARE(tinted.pixelColor(1, 0), QColor(Qt::white));
        QCOMPARE(QPoint(qAlpha(tinted.pixel(2, 0)), qAlpha(tinted.pixel(3, 0))), QPoint(0, 128)); // the alphas
        const int g = (100 * 11 + 50 * 16 + 10 * 5) / 32; // qGray's weights; screening with black keeps them
        QCOMPARE(PaintUtilities::TintedImage(QPixmap::fromImage(source), Qt::black).pixelColor(4, 0), QColor(g, g, g));
        QCOMPARE(PaintUtilities::TintedImage(QPixmap::fromImage(source), QColor()).convertToFormat(source.format()), source);
        QPixmap hiDpi(4, 4);
        hiDpi.fill(Qt::black);
        hiDpi.setDevicePixelRatio(2);
        QCOMPARE(PaintUtilities::TintedImage(hiDpi, Qt::red).devicePixelRatio(), 2.0);
        QImage drawn(5, 2, QImage::Format_ARGB32);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        PaintUtilities::DrawTintedPixmap(&painter, QRect(0, 0, 5, 1), QPixmap::fromImage(source), QColor());
        PaintUtilities::DrawTintedPixmap(&painter, QRect(0, 1, 5, 1), QPixmap::fromImage(source), QColor(200, 40, 90));
        painter.end();
        QCOMPARE(drawn.pixelColor(0, 0).name() + drawn.pixelColor(0, 1).name(), QStringLiteral("#000000#c8285a"));
        const QIcon triple = IconTripleFromResource(QStringLiteral("strip.png"));
        QCOMPARE(triple.availableSizes(QIcon::Normal), QList<QSize>{QSize(20, 33)});
        QStringList colours;
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Disabled})
            colours << triple.pixmap(QSize(20, 33), mode).toImage().pixelColor(10, 0).name()
                    << triple.pixmap(QSize(20, 33), mode).toImage().pixelColor(10, 32).name();
        const QIcon quadruple = IconQuadrupleFromResource(QStringLiteral("strip.png"));
        colours << quadruple.pixmap(QSize(20, 25), QIcon::Selected).toImage().pixelColor(10, 0).name(); // row 50
        QCOMPARE(colours, TestSupport::Words("#ff0000 #ff0000 #00ff00 #00ff00 #0000ff #0000ff #00ff00"));
        QVERIFY(IconTripleFromResource(QStringLiteral("none.png")).isNull());
        QIcon icon(QStringLiteral("background.png"));
        QPixmap badge(6, 6);
        badge.fill(Qt::red);
        AddOverlayToIcon(icon, QPoint(14, 14), badge);
        QCOMPARE(RedArea(icon.pixmap(QSize(31, 31)).toImage()), QRect(14, 14, 6, 6));
        QCOMPARE(icon.availableSizes().size(), 1);
    }
};

QTEST_MAIN(TestPaintUtilities)
#include "tst_paint_utilities.moc"
