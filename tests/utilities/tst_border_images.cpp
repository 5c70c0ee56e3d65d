#include <qt_halvo/utilities/border_image_widget.h>
#include <qt_halvo/utilities/border_pixmap_painter.h>
#include <qt_halvo/utilities/colorized_image.h>
#include <qt_halvo/utilities/decorated_border.h>

#include "test_support.h"

using namespace OrvantaQT;
using namespace TestSupport;

class TestBorderImages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Without a colour the image is drawn as it is; each change is signalled once. The border
    // image fills the inside of its margins.
    void drawsInTheColourAndInsideTheMargins()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("glyph.png"));
        QPixmap black(8, 8), blue(4, 4);
        black.fill(Qt::black);
        blue.fill(Qt::blue);
        QVERIFY(black.save(path));
        ColorizedImage image;
        image.resize(8, 8);
        SignalLog log(&image, {"ImagePathChanged()", "ColorChanged()"});
        image.SetImagePath(path);
        image.SetImagePath(path);
        QCOMPARE(Render(&image).pixelColor(4, 4), QColor(Qt::black));
        image.SetColor(QColor(30, 140, 60));
        image.SetColor(QColor(30, 140, 60));
        QCOMPARE(Render(&image).pixelColor(4, 4), QColor(30, 140, 60));
        QCOMPARE(log.Take(), Words("ImagePathChanged() ColorChanged()"));

        BorderImageWidget widget;
        widget.resize(40, 30);
        widget.setBorderIcon(QIcon(blue));
        widget.setBorderMargins(QMargins(5, 6, 7, 8));
        QImage expected(40, 30, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        QPainter(&expected).fillRect(5, 6, 40 - 5 - 7, 30 - 6 - 8, Qt::blue);
        QCOMPARE(Render(&widget), expected);
    }

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
        DrawBorderPixmap(&painter, image.rect(), strip, QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
        DrawBorderPixmap(&painter, QRect(), strip, QRect(0, 12, 12, 12), QMargins(3, 3, 3, 3));
        DrawBorderPixmap(&painter, image.rect(), QPixmap(), QRect(0, 12, 12, 12), {});
        DrawBorderPixmap(nullptr, image.rect(), strip, QRect(0, 12, 12, 12), {});
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_Destination);
        painter.end();
        QCOMPARE(image, expected);
        QCOMPARE(mark.Since().size(), 2);
    }

    void decorationPlace_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<unsigned>("position");
        QTest::addColumn<QRect>("expected"); // a 10 x 6 picture on a 200 x 80 strip, margin 5
        QTest::newRow("horizontal start") << int(Qt::Horizontal) << 0u << QRect(5, 0, 10, 6);
        QTest::newRow("horizontal end") << int(Qt::Horizontal) << 1u << QRect(200 - 10 - 5, 0, 10, 6);
        QTest::newRow("horizontal centre") << int(Qt::Horizontal) << 2u << QRect(95, 0, 10, 6);
        QTest::newRow("vertical start") << int(Qt::Vertical) << 0u << QRect(0, 5, 10, 6);
        QTest::newRow("vertical end") << int(Qt::Vertical) << 1u << QRect(0, 200 - 10 - 5, 10, 6); // on the width as well
        QTest::newRow("vertical centre") << int(Qt::Vertical) << 2u << QRect(0, 37, 10, 6);
    }
    // Placed on the strip's size as shown, and drawn there.
    void decorationPlace()
    {
        QFETCH(int, orientation);
        QFETCH(unsigned, position);
        QFETCH(QRect, expected);
        QTemporaryDir folder;
        QImage picture(10, 6, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(folder.filePath(QStringLiteral("mark.png"))));
        QWidget window;
        auto* border = new DecoratedBorder(&window);
        border->setDecorationMargin(5);
        border->setPosition(position);
        border->setOrientation(unsigned(orientation));
        border->setDecorationUrl(folder.filePath(QStringLiteral("mark.png")));
        border->setGeometry(0, 0, 200, 80);
        QVERIFY(ShowAndWait(&window));
        QCOMPARE(border->DecorationRect(), expected);
        QCOMPARE(int(border->sizePolicy().expandingDirections()), orientation);
        if (expected.bottom() < 80) // the vertical end lies beyond the short strip
            QCOMPARE(Render(border).pixelColor(expected.center()), QColor(Qt::red));
    }
};

QTEST_MAIN(TestBorderImages)
#include "tst_border_images.moc"
