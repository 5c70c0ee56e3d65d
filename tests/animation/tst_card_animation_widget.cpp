#include <qt_halvo/animation/card_animation_widget.h>

#include <QtTest/QtTest>

using OrvantaQT::CardAnimationWidget;

namespace {

QPixmap Solid(const QColor& colour)
{
    QPixmap pixmap(200, 100);
    pixmap.fill(colour);
    return pixmap;
}

// The red first face drawn at this opacity over white.
QColor Red(qreal opacity)
{
    const int other = qRound(255 * (1 - opacity));
    return QColor(255, other, other);
}

} // namespace

class TestCardAnimationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blurOverlayAndPaintingFollowTheProgress_data();
    void blurOverlayAndPaintingFollowTheProgress();
};

void TestCardAnimationWidget::blurOverlayAndPaintingFollowTheProgress_data()
{
    QTest::addColumn<bool>("opening");
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("blur");    // in pixels of the 100-pixel height
    QTest::addColumn<int>("overlay"); // in pixels of the 100-pixel face
    QTest::addColumn<QColor>("top");  // painted on white, 20 px from the top and the bottom
    QTest::addColumn<QColor>("bottom");
    const QColor blue(Qt::blue);
    const QColor white(Qt::white);

    // Closing: blurred and faded away over the first half, covered over the second.
    QTest::newRow("closing 0") << false << 0 << 0 << 0 << Red(1) << Red(1);
    QTest::newRow("closing 25") << false << 25 << 50 << 0 << Red(0.5) << Red(0.5);
    QTest::newRow("closing 50") << false << 50 << 100 << 0 << white << white;
    QTest::newRow("closing 75") << false << 75 << 100 << 50 << white << blue;
    QTest::newRow("closing 100") << false << 100 << 100 << 100 << blue << blue;
    // Opening: both undone over the whole way.
    QTest::newRow("opening 100") << true << 100 << 100 << 100 << blue << blue;
    QTest::newRow("opening 75") << true << 75 << 75 << 75 << Red(0.25) << blue;
    QTest::newRow("opening 50") << true << 50 << 50 << 50 << Red(0.5) << blue;
    QTest::newRow("opening 20") << true << 20 << 20 << 20 << Red(0.8) << blue;
    QTest::newRow("opening 0") << true << 0 << 0 << 0 << Red(1) << Red(1);
    QTest::newRow("out of range") << false << 180 << 100 << 100 << blue << blue;
}

void TestCardAnimationWidget::blurOverlayAndPaintingFollowTheProgress()
{
    QFETCH(bool, opening);
    QFETCH(int, progress);
    QFETCH(int, blur);
    QFETCH(int, overlay);
    QFETCH(QColor, top);
    QFETCH(QColor, bottom);
    CardAnimationWidget widget(30, nullptr);
    widget.resize(200, 100);
    widget.SetPictures(Solid(Qt::red), Solid(Qt::blue));
    widget.SetOpening(opening);
    widget.OnProgressChanged(progress);
    QCOMPARE(widget.BlurAmount(), blur);
    QCOMPARE(widget.OverlayOffset(), overlay);

    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    // Away from the edges, where a blurred solid face stays solid.
    for (const auto& [y, expected] : {std::pair(20, top), std::pair(80, bottom)}) {
        const QColor actual = image.pixelColor(100, y);
        QVERIFY2(qAbs(actual.red() - expected.red()) <= 3 && qAbs(actual.green() - expected.green()) <= 3
                     && qAbs(actual.blue() - expected.blue()) <= 3,
                 qPrintable(QStringLiteral("y %1: %2").arg(y).arg(actual.name())));
    }
}

QTEST_MAIN(TestCardAnimationWidget)
#include "tst_card_animation_widget.moc"
