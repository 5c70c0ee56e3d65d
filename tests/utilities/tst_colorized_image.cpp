#include <qt_halvo/utilities/border_image_widget.h>
#include <qt_halvo/utilities/colorized_image.h>

#include "test_support.h"

using namespace OrvantaQT;
using namespace TestSupport;

class TestColorizedImage : public QObject
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
};

QTEST_MAIN(TestColorizedImage)
#include "tst_colorized_image.moc"
