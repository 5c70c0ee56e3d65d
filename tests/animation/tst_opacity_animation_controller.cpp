#include <qt_halvo/animation/opacity_animation_controller.h>

#include "test_support.h"

using OrvantaQT::OpacityAnimationController;

class TestOpacityAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // In from 0.1 to 0.8 in 150 ms and out in 200 ms, the way out left alone or interrupted.
    void showsAtOnceAndHidesAfterTheFadeOut_data()
    {
        QTest::addColumn<bool>("stopAfterForward");
        QTest::addColumn<QString>("halfWayOut");
        QTest::newRow("holding") << false << QString();
        QTest::newRow("stopping after the fade-in") << true << QString();
        QTest::newRow("shown again") << false << "show";
        QTest::newRow("stopped") << true << "stop";
    }
    void showsAtOnceAndHidesAfterTheFadeOut()
    {
        QFETCH(bool, stopAfterForward);
        QFETCH(QString, halfWayOut);
        QWidget window;
        QVERIFY(TestSupport::ShowAndWait(&window));
        QPointer<QWidget> overlay = new QWidget(&window); // hidden
        auto* controller = new OpacityAnimationController(overlay, 150, 0.1, 0.8, 200, &window, stopAfterForward);
        auto* effect = static_cast<QGraphicsOpacityEffect*>(overlay->graphicsEffect());
        auto* fade = controller->findChild<QPropertyAnimation*>();
        controller->ShowAnimated();
        QVERIFY(overlay->isVisible());
        QTRY_COMPARE(fade->state(), QAbstractAnimation::Stopped);
        QCOMPARE(effect->isEnabled(), !stopAfterForward);
        // Hidden when the fade-out ends, not before; shown again or stopped, not at all.
        controller->HideAnimated();
        QVERIFY(overlay->isVisible());
        if (!halfWayOut.isEmpty()) {
            fade->setCurrentTime(100); // as the fade's clock would put it
            halfWayOut == "show" ? controller->ShowAnimated() : controller->StopAnimation();
        }
        QTRY_COMPARE(fade->state(), QAbstractAnimation::Stopped);
        QCOMPARE(effect->opacity(), halfWayOut.isEmpty() ? 0.1 : halfWayOut == "show" ? 0.8 : 0.45);
        QCOMPARE(effect->isEnabled(), halfWayOut == "show");
        QCOMPARE(overlay->isVisible(), !halfWayOut.isEmpty());
        // Without the widget, or without one from the start (which is logged), nothing is done.
        const LogCapture::Mark mark;
        OpacityAnimationController none(nullptr, 50, 0.0, 1.0, 0, nullptr, false);
        delete overlay;
        for (OpacityAnimationController* each : {&none, controller}) {
            each->ShowAnimated();
            each->HideAnimated();
        }
        QCOMPARE(mark.Since().size(), 1);
    }
};

QTEST_MAIN(TestOpacityAnimationController)
#include "tst_opacity_animation_controller.moc"
