#include <qt_halvo/utilities/border_image_widget.h>
#include <qt_halvo/utilities/colorized_image.h>

#include <QtTest/QtTest>

using namespace OrvantaQT;

class TestColorizedImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsTheImageInTheColour();
    void borderImageInsideTheMargins();
};

void TestColorizedImage::drawsTheImageInTheColour()
{
    QTemporaryDir folder;
    QImage black(8, 8, QImage::Format_ARGB32);
    black.fill(Qt::black);
    const QString path = folder.filePath(QStringLiteral("glyph.png"));
    QVERIFY(black.save(path));

    ColorizedImage image;
    image.resize(8, 8);
    QSignalSpy pathChanged(&image, &ColorizedImage::ImagePathChanged);
    QSignalSpy colourChanged(&image, &ColorizedImage::ColorChanged);
    image.SetImagePath(path);
    image.SetImagePath(path);
    QCOMPARE(pathChanged.count(), 1);
    QCOMPARE(image.grab().toImage().pixelColor(4, 4), QColor(Qt::black)); // no colour: as it is

    image.SetColor(QColor(30, 140, 60));
    image.SetColor(QColor(30, 140, 60));
    QCOMPARE(colourChanged.count(), 1);
    QCOMPARE(image.grab().toImage().pixelColor(4, 4), QColor(30, 140, 60));
}

void TestColorizedImage::borderImageInsideTheMargins()
{
    QPixmap fill(4, 4);
    fill.fill(Qt::blue);
    BorderImageWidget widget;
    widget.resize(40, 30);
    widget.setBorderIcon(QIcon(fill));
    widget.setBorderMargins(QMargins(5, 6, 7, 8));
    const QImage shown = widget.grab().toImage();
    QCOMPARE(shown.pixelColor(5, 6), QColor(Qt::blue));
    QCOMPARE(shown.pixelColor(40 - 8, 30 - 9), QColor(Qt::blue));
    QVERIFY(shown.pixelColor(4, 6) != QColor(Qt::blue));
    QVERIFY(shown.pixelColor(40 - 7, 10) != QColor(Qt::blue));
}

QTEST_MAIN(TestColorizedImage)
#include "tst_colorized_image.moc"
