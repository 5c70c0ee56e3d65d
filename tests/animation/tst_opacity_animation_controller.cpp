#include <qt_halvo/animation/opacity_animation_controller.h>

#include "log_capture.h"

#include <qt_halvo_logging.h>

#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <QtWidgets/QWidget>

using OrvantaQT::OpacityAnimationController;

namespace {

// Bounds the waits for fades to end; none takes more than half a second.
constexpr int kWait = 20000;
constexpr double kHidden = 0.1;
constexpr double kShown = 0.8;

// The opacity its widget had each time it was hidden: a widget hidden before the end of
// its fade-out shows up here above the hidden opacity.
struct HideWatcher : QObject
{
    HideWatcher(QWidget* widget, QGraphicsOpacityEffect* effect) : effect(effect) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Hide)
            hiddenAt.append(effect ? effect->opacity() : -1.0);
        return false;
    }
    QPointer<QGraphicsOpacityEffect> effect;
    QVector<double> hiddenAt;
};

} // namespace

class TestOpacityAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showsAtOnceAndHidesAfterTheFadeOut_data();
    void showsAtOnceAndHidesAfterTheFadeOut();
    void showingOrStoppingDuringTheFadeOutKeepsTheWidget_data();
    void showingOrStoppingDuringTheFadeOutKeepsTheWidget();
    void withoutAWidgetItDoesNothing();

private:
    void Make(int duration, int backward, bool stopAfterForward);
    double Opacity() const { return m_effect->opacity(); }
    QPropertyAnimation* Fade() const { return m_controller->findChild<QPropertyAnimation*>(); }
    bool FadeStopped() const { return Fade()->state() == QAbstractAnimation::Stopped; }

    QWidget* m_window = nullptr;
    QPointer<QWidget> m_overlay;
    QPointer<QGraphicsOpacityEffect> m_effect;
    OpacityAnimationController* m_controller = nullptr;
    std::unique_ptr<HideWatcher> m_hides;
};

void TestOpacityAnimationController::init()
{
    m_window = new QWidget;
    m_window->resize(200, 150);
    m_overlay = new QWidget(m_window);
    m_overlay->setGeometry(20, 20, 100, 80);
    m_overlay->hide();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestOpacityAnimationController::cleanup()
{
    m_hides.reset();
    delete m_window;
}

void TestOpacityAnimationController::Make(int duration, int backward, bool stopAfterForward)
{
    m_controller = new OpacityAnimationController(m_overlay, duration, kHidden, kShown, backward, m_window,
                                                  stopAfterForward);
    m_effect = qobject_cast<QGraphicsOpacityEffect*>(m_overlay->graphicsEffect());
    QVERIFY(m_effect);
    QVERIFY(!m_effect->isEnabled());
    m_hides = std::make_unique<HideWatcher>(m_overlay, m_effect);
}

void TestOpacityAnimationController::showsAtOnceAndHidesAfterTheFadeOut_data()
{
    QTest::addColumn<bool>("stopAfterForward");
    QTest::addColumn<bool>("shownAnimated");
    QTest::newRow("after a fade-in, holding") << false << true;
    QTest::newRow("after a fade-in, stopping after it") << true << true;
    QTest::newRow("shown without a fade") << false << false;
}

void TestOpacityAnimationController::showsAtOnceAndHidesAfterTheFadeOut()
{
    QFETCH(bool, stopAfterForward);
    QFETCH(bool, shownAnimated);
    // The fade-out has a duration of its own.
    Make(150, 200, stopAfterForward);
    // Shown at once without a fade, it then fades in after the fade-out.
    for (int round = 0; round < (shownAnimated ? 1 : 2); ++round) {
        if (shownAnimated || round > 0) {
            m_controller->ShowAnimated();
            QVERIFY(m_overlay->isVisible());
            QVERIFY(m_effect->isEnabled());
            QCOMPARE(Opacity(), kHidden);
            QCOMPARE(Fade()->duration(), 150);
            QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
            QCOMPARE(Opacity(), kShown);
            QCOMPARE(m_effect->isEnabled(), !stopAfterForward);
        } else {
            m_overlay->show();
        }
        QVERIFY(m_hides->hiddenAt.isEmpty());

        m_controller->HideAnimated();
        QVERIFY(m_overlay->isVisible());
        QVERIFY(m_effect->isEnabled());
        QCOMPARE(Opacity(), kShown);
        QCOMPARE(Fade()->duration(), 200);
        QTRY_VERIFY_WITH_TIMEOUT(!m_overlay->isVisible(), kWait);
        // Hidden once, at the end of the fade-out, with the effect switched off.
        QCOMPARE(m_hides->hiddenAt, QVector<double>{kHidden});
        QVERIFY(FadeStopped());
        QVERIFY(!m_effect->isEnabled());
        m_hides->hiddenAt.clear();
    }
}

void TestOpacityAnimationController::showingOrStoppingDuringTheFadeOutKeepsTheWidget_data()
{
    QTest::addColumn<bool>("stop");
    QTest::newRow("shown again") << false;
    QTest::newRow("stopped") << true;
}

void TestOpacityAnimationController::showingOrStoppingDuringTheFadeOutKeepsTheWidget()
{
    QFETCH(bool, stop);
    Make(300, 0, false);
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
    m_controller->HideAnimated();
    // Half way, as the fade's clock would put it.
    Fade()->setCurrentTime(150);
    const double partWay = Opacity();
    QVERIFY(partWay > kHidden && partWay < kShown);

    if (stop) {
        // Where it is, with the effect off.
        m_controller->StopAnimation();
        QVERIFY(FadeStopped());
        QVERIFY(!m_effect->isEnabled());
        QCoreApplication::processEvents();
        QCOMPARE(Opacity(), partWay);
    } else {
        // Back up from where it was.
        m_controller->ShowAnimated();
        QVERIFY(qAbs(Opacity() - partWay) < 0.01);
        QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
        QCOMPARE(Opacity(), kShown);
        QVERIFY(m_effect->isEnabled());
    }
    QVERIFY(m_overlay->isVisible());
    QVERIFY(m_hides->hiddenAt.isEmpty());
}

// None given, which is logged, or deleted during the fade-out.
void TestOpacityAnimationController::withoutAWidgetItDoesNothing()
{
    const LogCapture::Mark mark;
    OpacityAnimationController none(nullptr, 50, 0.0, 1.0, 0, nullptr, false);
    QCOMPARE(mark.Since().size(), 1);
    QCOMPARE(mark.Since().first().level, Logging_LevelError);
    Make(150, 0, false);
    m_controller->ShowAnimated();
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
    m_controller->HideAnimated();
    m_hides.reset();
    delete m_overlay;
    QVERIFY(!m_effect);

    for (OpacityAnimationController* controller : {&none, m_controller}) {
        controller->ShowAnimated();
        controller->HideAnimated();
        controller->StopAnimation();
        controller->HideAnimated();
    }
    QTRY_VERIFY_WITH_TIMEOUT(FadeStopped(), kWait);
    QCOMPARE(mark.Since().size(), 1);
}

QTEST_MAIN(TestOpacityAnimationController)
#include "tst_opacity_animation_controller.moc"
