#include <qt_halvo/animation/card_animation_widget.h>

#include "test_support.h"

class TestCardAnimationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheProgress_data()
    {
        QTest::addColumn<bool>("opening");
        QTest::addColumn<int>("progress");
        QTest::addColumn<QString>("expected"); // blur and overlay in pixels of the 100 high faces; painted 20 px in from top and bottom
        // Closing, the red first face blurs and fades away over the first half, and the blue second face
        // comes up over the second half; opening undoes both over the whole way.
        QTest::newRow("closing 25") << false << 25 << "50 0 #ff8080 #ff8080";
        QTest::newRow("closing 50") << false << 50 << "100 0 #ffffff #ffffff";
        QTest::newRow("closing 75") << false << 75 << "100 50 #ffffff #0000ff";
        QTest::newRow("out of range") << false << 180 << "100 100 #0000ff #0000ff";
        QTest::newRow("opening 75") << true << 75 << "75 75 #ffbfbf #0000ff";
        QTest::newRow("opening 20") << true << 20 << "20 20 #ff3333 #0000ff";
        QTest::newRow("opening 0") << true << 0 << "0 0 #ff0000 #ff0000";
    }
    void followsTheProgress()
    {
        QFETCH(bool, opening);
        QFETCH(int, progress);
        QFETCH(QString, expected);
        OrvantaQT::CardAnimationWidget widget(30, nullptr);
        widget.resize(200, 100);
        QPixmap first(200, 100), second(200, 100);
        first.fill(Qt::red), second.fill(Qt::blue);
        widget.SetPictures(first, second);
        widget.SetOpening(opening);
        widget.OnProgressChanged(progress);
        const QImage image = TestSupport::Render(&widget, 1, Qt::white);
        QCOMPARE(QString("%1 %2").arg(widget.BlurAmount()).arg(widget.OverlayOffset()), expected.section(' ', 0, 1));
        for (const int i : {0, 1}) { // away from the edges, where a blurred solid face stays solid
            const QColor actual = image.pixelColor(100, i ? 80 : 20), wanted(expected.section(' ', i + 2, i + 2));
            QVERIFY2(std::max({qAbs(actual.red() - wanted.red()), qAbs(actual.green() - wanted.green()), qAbs(actual.blue() - wanted.blue())}) <= 3,
                     qPrintable(actual.name()));
        }
    }
};

QTEST_MAIN(TestCardAnimationWidget)
#include "tst_card_animation_widget.moc"
