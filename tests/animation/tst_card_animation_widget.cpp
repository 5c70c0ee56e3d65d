#include <qt_halvo/animation/card_animation_widget.h>

#include <QtTest/QtTest>

using OrvantaQT::CardAnimationWidget;

namespace {

QPixmap Solid(const QColor& colour, QSize size = QSize(200, 100))
{
    QPixmap pixmap(size);
    pixmap.fill(colour);
    return pixmap;
}

} // namespace

class TestCardAnimationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blurAndOverlayFollowTheProgress_data();
    void blurAndOverlayFollowTheProgress();
    void paintsTheFadingFaceAndTheOverlay_data();
    void paintsTheFadingFaceAndTheOverlay();
};

void TestCardAnimationWidget::blurAndOverlayFollowTheProgress_data()
{
    QTest::addColumn<bool>("opening");
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("blur");    // in pixels of the 100-pixel height
    QTest::addColumn<int>("overlay"); // in pixels of the 100-pixel face

    // Closing: blurred away over the first half, covered over the second.
    QTest::newRow("closing 0") << false << 0 << 0 << 0;
    QTest::newRow("closing 25") << false << 25 << 50 << 0;
    QTest::newRow("closing 50") << false << 50 << 100 << 0;
    QTest::newRow("closing 75") << false << 75 << 100 << 50;
    QTest::newRow("closing 100") << false << 100 << 100 << 100;
    // Opening: both undone over the whole way.
    QTest::newRow("opening 100") << true << 100 << 100 << 100;
    QTest::newRow("opening 75") << true << 75 << 75 << 75;
    QTest::newRow("opening 20") << true << 20 << 20 << 20;
    QTest::newRow("opening 0") << true << 0 << 0 << 0;
    QTest::newRow("out of range") << false << 180 << 100 << 100;
}

void TestCardAnimationWidget::blurAndOverlayFollowTheProgress()
{
    QFETCH(bool, opening);
    QFETCH(int, progress);
    QFETCH(int, blur);
    QFETCH(int, overlay);
    CardAnimationWidget widget(30, nullptr);
    widget.resize(200, 100);
    widget.SetPictures(Solid(Qt::red), Solid(Qt::blue));
    widget.SetOpening(opening);
    widget.OnProgressChanged(progress);
    QCOMPARE(widget.GetProgress(), progress);
    QCOMPARE(widget.BlurAmount(), blur);
    QCOMPARE(widget.OverlayOffset(), overlay);
}

void TestCardAnimationWidget::paintsTheFadingFaceAndTheOverlay_data()
{
    QTest::addColumn<int>("progress");
    QTest::addColumn<QColor>("top");
    QTest::addColumn<QColor>("bottom");
    QTest::newRow("first face alone") << 0 << QColor(Qt::red) << QColor(Qt::red);
    QTest::newRow("half faded, overlay half way up") << 50 << QColor(255, 128, 128) << QColor(Qt::blue);
    QTest::newRow("second face over all") << 100 << QColor(Qt::blue) << QColor(Qt::blue);
}

// Opening, on white: at 50 the first face is drawn at half opacity and the second face
// covers the bottom half.
void TestCardAnimationWidget::paintsTheFadingFaceAndTheOverlay()
{
    QFETCH(int, progress);
    QFETCH(QColor, top);
    QFETCH(QColor, bottom);
    CardAnimationWidget widget(30, nullptr);
    widget.resize(200, 100);
    widget.SetPictures(Solid(Qt::red), Solid(Qt::blue));
    widget.SetOpening(true);
    widget.SetProgress(progress);

    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    const auto near = [](const QColor& actual, const QColor& expected) {
        return qAbs(actual.red() - expected.red()) <= 3 && qAbs(actual.green() - expected.green()) <= 3
            && qAbs(actual.blue() - expected.blue()) <= 3;
    };
    // Away from the edges, where a blurred solid face stays solid.
    QVERIFY2(near(image.pixelColor(100, 20), top), qPrintable(image.pixelColor(100, 20).name()));
    QVERIFY2(near(image.pixelColor(100, 80), bottom), qPrintable(image.pixelColor(100, 80).name()));
}

QTEST_MAIN(TestCardAnimationWidget)
#include "tst_card_animation_widget.moc"
