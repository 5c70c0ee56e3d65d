#include <qt_halvo/animation/graphics_background_blur_effect.h>
#include <qt_halvo/layouts/overlay_hover_controller.h>

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsOpacityEffect>

using OrvantaQT::OverlayHoverController;

namespace {

// A picture (the watched widget and the container at once) with a caption overlay, and
// a place elsewhere in the window for the mouse to rest.
struct Scene
{
    explicit Scene(unsigned effects)
    {
        window.resize(400, 300);
        picture = new QWidget(&window);
        picture->setGeometry(20, 20, 200, 150);
        picture->setAttribute(Qt::WA_Hover);
        overlay = new QWidget(&window);
        controller = new OverlayHoverController(picture, picture, overlay, nullptr, &window, effects);
        window.show();
    }
    // Shown, with the mouse resting away from the picture.
    bool Exposed()
    {
        if (!QTest::qWaitForWindowExposed(&window))
            return false;
        Leave();
        return true;
    }
    void Enter() { QTest::mouseMove(picture, picture->rect().center()); }
    void Leave() { QTest::mouseMove(&window, QPoint(350, 250)); }
    bool Blurring() const
    {
        auto* blur = qobject_cast<OrvantaQT::GraphicsBackgroundBlurEffect*>(picture->graphicsEffect());
        return blur && blur->isEnabled();
    }

    QWidget window;
    QWidget* picture = nullptr;
    QWidget* overlay = nullptr;
    OverlayHoverController* controller = nullptr;
};

} // namespace

class TestOverlayHoverController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hoverShowsTheOverlay_data();
    void hoverShowsTheOverlay();
    void disablingWhileHoveredHidesAtOnce();
    void switchingEffectsOff();
};

void TestOverlayHoverController::hoverShowsTheOverlay_data()
{
    QTest::addColumn<unsigned>("effects");
    QTest::newRow("show") << 4u;
    QTest::newRow("show and fade") << 6u;
    QTest::newRow("show, fade and blur") << 7u;
    QTest::newRow("blur only") << 1u;
}

void TestOverlayHoverController::hoverShowsTheOverlay()
{
    QFETCH(unsigned, effects);
    Scene scene(effects);
    QVERIFY(scene.Exposed());
    QVERIFY(!scene.overlay->isVisible());
    QVERIFY(scene.overlay->testAttribute(Qt::WA_TransparentForMouseEvents));

    scene.Enter();
    QTRY_COMPARE(scene.picture->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(scene.overlay->isVisible(), bool(effects & 4));
    if (effects & 4)
        QCOMPARE(scene.overlay->geometry(), scene.picture->geometry()); // over the container exactly, at once
    if (effects & 2) {
        auto* fade = qobject_cast<QGraphicsOpacityEffect*>(scene.overlay->graphicsEffect());
        QVERIFY(fade && fade->isEnabled());
        QTRY_COMPARE(fade->opacity(), 0.8);
    }
    QCOMPARE(scene.Blurring(), bool(effects & 1));

    scene.Leave();
    QTRY_VERIFY(!scene.overlay->isVisible());
    QTRY_VERIFY(!scene.Blurring());
    QCOMPARE(scene.picture->cursor().shape(), Qt::ArrowCursor);
}

void TestOverlayHoverController::disablingWhileHoveredHidesAtOnce()
{
    Scene scene(7);
    QVERIFY(scene.Exposed());
    scene.Enter();
    QTRY_VERIFY(scene.overlay->isVisible());
    scene.picture->setEnabled(false);
    QVERIFY(!scene.overlay->isVisible());
    QVERIFY(!scene.Blurring());
    QCOMPARE(scene.picture->cursor().shape(), Qt::ArrowCursor);
    // Nothing comes back later from a fade under way.
    QTest::qWait(400);
    QVERIFY(!scene.overlay->isVisible());
}

void TestOverlayHoverController::switchingEffectsOff()
{
    Scene scene(5);
    QVERIFY(scene.Exposed());
    scene.Enter();
    QTRY_VERIFY(scene.overlay->isVisible() && scene.Blurring());
    scene.controller->SetEffects(0);
    QVERIFY(!scene.overlay->isVisible());
    QVERIFY(!scene.Blurring());
}

QTEST_MAIN(TestOverlayHoverController)
#include "tst_overlay_hover_controller.moc"
