#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/layouts/lightbox_controller.h>

#include "test_support.h"

using OrvantaQT::LightboxController;

class TestLightboxController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void activationAndDeactivation_data()
    {
        QTest::addColumn<int>("effect"); // a blur goes with a fading shade hidden after, a shadow with one kept
        QTest::newRow("blur") << int(LightboxController::Blur);
        QTest::newRow("shadow") << int(LightboxController::Shadow);
    }
    void activationAndDeactivation()
    {
        QFETCH(int, effect);
        const bool blur = effect == LightboxController::Blur; // animated, and the shade hidden after
        QWidget background;
        background.resize(800, 600);
        auto* content = new QWidget(&background);
        content->resize(200, 100);
        content->hide();
        auto* shade = new QWidget;
        auto* lightbox = new LightboxController(content, &background, QColor(10, 20, 30, 128), blur);
        QVERIFY(TestSupport::ShowAndWait(&background));
        lightbox->Activate(shade, blur, LightboxController::Effect(effect));
        QCOMPARE(content->pos(), QPoint(300, 225)); // at 0.45 of the free height
        QCOMPARE(shade->geometry(), QRect(0, 0, 800, 600));
        QTRY_COMPARE(shade->styleSheet(), QStringLiteral("background-color: rgb(10,20,30,128);")); // at once, or faded in
        QCOMPARE(bool(qobject_cast<OrvantaQT::GraphicsBackgroundBlurEffect*>(background.graphicsEffect())), blur);
        QCOMPARE(bool(qobject_cast<QGraphicsDropShadowEffect*>(content->graphicsEffect())), !blur);
        auto* late = new QWidget(&background); // added later: under the shade, the dialog still over it
        late->setGeometry(0, 0, 800, 600);
        late->show();
        new QObject(&background);
        QCOMPARE(background.childAt(10, 10), shade);
        QCOMPARE(background.childAt(400, 270), content);
        lightbox->Deactivate();
        QVERIFY(!content->isVisible() && !background.graphicsEffect());
        QCOMPARE(shade->isVisible(), !blur); // still the caller's
    }
};

QTEST_MAIN(TestLightboxController)
#include "tst_lightbox_controller.moc"
