#include <qt_halvo/animation/alpha_animation_controller.h>
#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/layouts/lightbox_controller.h>

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsDropShadowEffect>

using OrvantaQT::LightboxController;

namespace {

// An 800 x 600 background window with a 200 x 100 dialog on it and a shade to put between.
struct Scene
{
    explicit Scene(bool hideShade = false)
    {
        background.resize(800, 600);
        content = new QWidget(&background);
        content->resize(200, 100);
        content->hide();
        shade = new QWidget;
        lightbox = new LightboxController(content, &background, QColor(10, 20, 30, 128), hideShade);
        background.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&background); }
    int Layer(QWidget* widget) const { return background.children().indexOf(widget); }

    QWidget background;
    QWidget* content = nullptr;
    QPointer<QWidget> shade;
    LightboxController* lightbox = nullptr;
};

} // namespace

class TestLightboxController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void centresTheContentOverTheShade();
    void blurOrShadow();
    void animatedShadeAndDeactivation();
};

void TestLightboxController::centresTheContentOverTheShade()
{
    Scene scene;
    QVERIFY(scene.Exposed());
    scene.lightbox->Activate(scene.shade, false, LightboxController::Effect(2));
    QVERIFY(scene.content->isVisible());
    QCOMPARE(scene.content->pos(), QPoint(300, 225)); // 0.45 of the free height
    QCOMPARE(scene.shade->parentWidget(), &scene.background);
    QCOMPARE(scene.shade->geometry(), QRect(0, 0, 800, 600));
    QCOMPARE(scene.shade->styleSheet(), QStringLiteral("background-color: rgb(10,20,30,128);"));
    QVERIFY(scene.Layer(scene.content) > scene.Layer(scene.shade));
    QVERIFY(!scene.background.graphicsEffect() && !scene.content->graphicsEffect());

    // Children added later stay under the shade, the content over it.
    auto* late = new QWidget(&scene.background);
    late->setGeometry(0, 0, 800, 600);
    late->show();
    QVERIFY(scene.Layer(late) < scene.Layer(scene.shade));
    QCOMPARE(scene.background.childAt(10, 10), scene.shade.data());
    QCOMPARE(scene.background.childAt(400, 270), scene.content);

    // A resized background keeps both in place.
    scene.background.resize(600, 400);
    QTRY_COMPARE(scene.content->pos(), QPoint(200, 135));
    QCOMPARE(scene.shade->size(), QSize(600, 400));
}

void TestLightboxController::blurOrShadow()
{
    Scene scene;
    QVERIFY(scene.Exposed());
    scene.lightbox->Activate(scene.shade, false, LightboxController::Blur);
    QVERIFY(qobject_cast<OrvantaQT::GraphicsBackgroundBlurEffect*>(scene.background.graphicsEffect()));

    // Activated again: the blur of the first activation goes, the shadow comes.
    scene.lightbox->Activate(scene.shade, false, LightboxController::Shadow);
    QVERIFY(!scene.background.graphicsEffect());
    auto* shadow = qobject_cast<QGraphicsDropShadowEffect*>(scene.content->graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->blurRadius(), 80.0);
    QCOMPARE(shadow->xOffset(), 1.0);
}

void TestLightboxController::animatedShadeAndDeactivation()
{
    Scene scene(true);
    QVERIFY(scene.Exposed());
    scene.lightbox->Activate(scene.shade, true, LightboxController::Blur);
    QPointer<OrvantaQT::AlphaAnimationController> fade = scene.shade->findChild<OrvantaQT::AlphaAnimationController*>();
    QVERIFY(fade);
    QTRY_COMPARE(fade->alpha(), 128);

    scene.lightbox->Deactivate();
    QVERIFY(!scene.content->isVisible());
    QVERIFY(!scene.background.graphicsEffect());
    QVERIFY(!fade);
    QVERIFY(scene.shade);       // still the caller's
    QVERIFY(!scene.shade->isVisible()); // hidden, as asked at construction
}

QTEST_MAIN(TestLightboxController)
#include "tst_lightbox_controller.moc"
